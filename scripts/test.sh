#!/usr/bin/env bash
# Sets the machine up, builds once, runs every test of that build, and checks format, layers and
# sizes. With --full it goes on with all that must hold before a change lands: the same bits from other
# builds, clang-tidy, valgrind, the sanitizers by the other compiler, and a short while of fuzzing.
# Safe to repeat.
set -euo pipefail
cd "$(dirname "$0")/.."

started=$SECONDS
step() { printf '\n== %s (%d s so far)\n' "$1" "$((SECONDS - started))"; }

build_and_test() {
  cmake --preset "$1"
  cmake --build --preset "$1" -j "$(nproc)"
  ctest --preset "$1" -j "$(nproc)" --no-tests=error --progress
}

# How many calls were made to fail in the tests just run, kind by kind.
print_fault_points() {
  grep '^faults: ' "build/$1/Testing/Temporary/LastTest.log"
}

case ${1:-} in
  '' | --full) ;;
  *) echo "usage: test.sh [--full]" >&2 && exit 2 ;;
esac

step "installing what is missing"
scripts/setup.sh

step "checking format, layers and sizes"
scripts/check_format.sh
scripts/check_layers.sh
scripts/check_sizes.py

step "building and testing: release"
build_and_test release
print_fault_points release

step "building and testing: Python package"
scripts/test_python.sh

if [ "${1:-}" != --full ]; then
  step "all tests passed"
  echo "scripts/test.sh --full adds other builds, clang-tidy, valgrind, the sanitizers by clang and fuzzing"
  exit 0
fi

step "comparing the bits of results"
scripts/same_bits.sh --short

step "checking with clang-tidy"
scripts/check_tidy.sh

step "checking memory with valgrind"
scripts/check_memory.sh

step "building and testing: thread sanitizer"
build_and_test tsan

# By clang, so that both compilers see every source with warnings as errors.
step "building and testing: address and undefined behaviour sanitizers"
build_and_test asan-clang
print_fault_points asan-clang

if [ -e build/windows-libraries/complete ]; then
  step "building and testing: Windows, under wine"
  build_and_test windows
else
  step "not testing for Windows: scripts/setup.sh --windows makes it possible"
fi

step "fuzzing the library for a short while"
scripts/fuzz.sh 15 list run ef

step "all checks passed"
