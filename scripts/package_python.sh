#!/usr/bin/env bash
# Makes the source archive and the wheel of the Python package in a folder (build/packages unless
# given), the wheel from the archive, and tries both in fresh virtual environments.
set -euo pipefail
cd "$(dirname "$0")/.."

root=$PWD
mkdir -p "${1:-build/packages}"
output=$(cd "${1:-build/packages}" && pwd)
work=$(mktemp -d "$root/build/package.XXXXXX")
trap 'rm -rf "$work"' EXIT
lock=$root/python/requirements.lock
tools=$root/build/venv/bin

cmp -s "$lock" build/venv/requirements.lock || scripts/setup_python.sh
echo "package: source archive"
"$tools/python" -m build --sdist --no-isolation --outdir "$work" . >"$work/sdist.log"
archive=$(echo "$work"/mcbinning-*.tar.gz)

echo "package: wheel of the source archive"
CMAKE_BUILD_PARALLEL_LEVEL=${CMAKE_BUILD_PARALLEL_LEVEL:-$(nproc)} PATH=$tools:$PATH \
  "$tools/pip" wheel -q --disable-pip-version-check --no-build-isolation --no-deps \
  --wheel-dir "$work/plain" "$archive"
PATH=$tools:$PATH "$tools/auditwheel" repair --wheel-dir "$work/repaired" "$work"/plain/*.whl \
  2>"$work/repair.log" || { cat "$work/repair.log" >&2 && exit 1; }
wheel=$(echo "$work"/repaired/*.whl)

echo "package: trying $(basename "$wheel")"
python3 -m venv "$work/fresh"
"$work/fresh/bin/pip" install -q --disable-pip-version-check -c "$lock" "$wheel"
(cd "$work" && env -i PATH=/usr/bin:/bin "$work/fresh/bin/python" "$root/python/tests/smoke.py" \
  "$root/examples/data/loans.csv")

cp "$archive" "$wheel" "$output"
echo "package: $output/$(basename "$archive")"
echo "package: $output/$(basename "$wheel")"
