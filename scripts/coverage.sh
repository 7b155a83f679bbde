#!/usr/bin/env bash
# Prints line and branch coverage of src/ by the library's tests; details go to
# build/coverage/report. Fails when a line is not reached or less than 95 % of the branches. Run it
# as root: one test needs a root directory of its own.
#
# Not counted: the Windows code, branches that only an exception takes, which stand in every call,
# and the few lines between GCOVR_EXCL_START and GCOVR_EXCL_STOP.
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/coverage

cmake --preset coverage
find "$build" -name '*_tests' -type f -delete  # their tests may be gone
cmake --build --preset coverage -j "$(nproc)" --target library_tests
find "$build" -name '*.gcda' -delete
for program in "$build"/tests/*/*_tests; do
  echo "coverage: running ${program##*/}"
  "$program" --gtest_brief=1
done

mkdir -p "$build/report"
gcovr --root . --object-directory "$build" --filter src/ --exclude src/platform/windows/ \
  --exclude-throw-branches --exclude-unreachable-branches \
  --html-details "$build/report/index.html" --txt - --print-summary \
  --fail-under-line 100 --fail-under-branch 95 "$build/src" "$build/tests"
