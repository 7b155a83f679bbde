#!/usr/bin/env bash
# Compares the bits of all results between compilers, optimisations and processors: runs the tests
# and random runs in every build, each run compared with the plain model, and compares the digests
# of their results.
# Usage: same_bits.sh [--short] [RUNS]; --short leaves out the whole test suites and the builds that
# scripts/test.sh makes in another way (clang, -O0) and needs one small build.
set -euo pipefail
cd "$(dirname "$0")/.."

short=
if [ "${1:-}" = --short ]; then
  short=1
  shift
fi
runs=${1:-$([ -n "$short" ] && echo 5000 || echo 50000)}

# build <folder> <cmake option>...
build() {
  local targets=(all)
  [ -z "$short" ] || targets=(plain_model_tests numerics_tests)
  cmake -S . -B "build/$1" "${@:2}" >/dev/null
  cmake --build "build/$1" -j "$(nproc)" --target "${targets[@]}" >/dev/null
}

# build_with_flags <folder> <flags>
build_with_flags() {
  build "$1" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE="$2 -g1 -DNDEBUG" \
    -DMCBINNING_TEST_CONSUMERS=OFF
}

# leg <name> <build folder> [<what a program is run by>...]
leg() {
  local name=$1 folder=build/$2 by=("${@:3}") digest
  if [ -n "$short" ]; then
    MCB_RUNS=200 "${by[@]}" "$folder/tests/numerics/numerics_tests" --gtest_brief=1
  else
    "${by[@]}" ctest --test-dir "$folder" -j "$(nproc)" --no-tests=error --output-on-failure \
      --progress | tail -n 5
  fi
  digest=$(MCB_SEED=1 MCB_RUNS=$runs "${by[@]}" "$folder/tests/plain_model/plain_model_tests" \
    --gtest_filter='PlainModel.*' | grep '^digest ') ||
    { echo "same bits: random runs fail in $name" >&2 && exit 1; }
  printf 'same bits: %-32s %s of %s runs\n' "$name" "$digest" "$runs"
  if [ "$digest" != "${expected:=$digest}" ]; then
    echo "same bits: the results of $name differ" >&2
    exit 1
  fi
}

build release --preset release
leg "release" release env
leg "release, no fused multiply-add" release \
  env GLIBC_TUNABLES=glibc.cpu.hwcaps=-FMA,-AVX2_Usable,-AVX2
build_with_flags same_bits_native "-O3 -march=native"
leg "g++ -O3 -march=native" same_bits_native env
if [ -z "$short" ]; then
  build clang --preset clang
  leg "clang" clang env
  build_with_flags same_bits_O0 -O0
  leg "g++ -O0" same_bits_O0 env
fi
echo "same bits: ok"
