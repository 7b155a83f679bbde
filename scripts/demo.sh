#!/usr/bin/env bash
# Sets the machine up, builds the project and runs the example host program.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh
echo "demo: building"
cmake --preset release >/dev/null
cmake --build --preset release -j "$(nproc)" --target minimal_host
echo "demo: running examples/minimal_host"
build/release/examples/minimal_host/minimal_host
