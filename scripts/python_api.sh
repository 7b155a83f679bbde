#!/usr/bin/env bash
# Makes the pages of the Python interface from its docstrings, in a folder (build/python-api unless
# given).
set -euo pipefail
output=$(realpath -m "${1:-$(dirname "$0")/../build/python-api}")
cd "$(dirname "$0")/.."

"${PYTHON:-build/venv/bin/python}" -m pdoc --docformat numpy --no-show-source \
  --output-directory "$output" mcbinning mcbinning.sklearn '!mcbinning._core' '!mcbinning._program'
echo "$output/index.html"
