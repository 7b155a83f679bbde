#!/usr/bin/env bash
# Fails when a source is not formatted as .clang-format says; with --fix formats it instead.
set -euo pipefail
cd "$(dirname "$0")/.."

mode=(--dry-run --Werror)
[ "${1:-}" = --fix ] && mode=(-i)

find include src host toolkit cli python tests bench examples \( -name '*.h' -o -name '*.cpp' \) -print0 |
  xargs -0 -P "$(nproc)" -n 16 clang-format "${mode[@]}"
echo "format: ok"
