#!/usr/bin/env bash
# Prints line and branch coverage of src/ by the tests; details of what no test reaches go to
# build/coverage/report.
set -euo pipefail
cd "$(dirname "$0")/.."

cmake --preset coverage
cmake --build --preset coverage -j "$(nproc)"
find build/coverage -name '*.gcda' -delete
ctest --preset coverage -j "$(nproc)" --no-tests=error

mkdir -p build/coverage/report
# Branches that only an exception of the runtime takes are left out: they stand in every call.
gcovr --root . --object-directory build/coverage --filter src/ --exclude src/platform/windows/ \
  --exclude-throw-branches --exclude-unreachable-branches -j "$(nproc)" \
  --html-details build/coverage/report/index.html --txt build/coverage/report/lines.txt \
  --print-summary
echo "coverage: lines that no test reaches: build/coverage/report/index.html"
sed -n '/^File/,$p' build/coverage/report/lines.txt
