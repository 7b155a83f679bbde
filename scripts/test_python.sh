#!/usr/bin/env bash
# Builds the Python package and runs its tests, the examples of its documents and its checks.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup_python.sh
build/venv/bin/ruff check python
build/venv/bin/ruff format --check python
build/venv/bin/mypy
build/venv/bin/pytest -p no:cacheprovider
