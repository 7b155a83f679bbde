#!/usr/bin/env bash
# Compares the bits of all results between compilers, optimisations, processors and systems: runs the
# library's tests and random runs in every build, each run compared with the plain model, and
# compares the digests of their results.
# Usage: same_bits.sh [--short] [RUNS]; --short takes the release build and one small build beside it,
# and of the tests those of the logarithm. The build for Windows needs scripts/setup.sh --windows.
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

# build_with_flags <folder> <flags> [<cmake option>...]
build_with_flags() {
  build "$1" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE="$2 -g0 -DNDEBUG" \
    -DMCBINNING_BUILD_CLI=OFF -DMCBINNING_BUILD_EXAMPLES=OFF -DMCBINNING_TEST_CONSUMERS=OFF "${@:3}"
}

# program <folder> <name>
program() {
  local path=build/$1/bin/$2.exe
  [ -e "$path" ] || path=$(echo "build/$1"/tests/*/"$2")
  echo "$path"
}

# leg <name> <build folder> [<what a program is run by>...]
leg() {
  local name=$1 folder=$2 by=("${@:3}") digest
  local all=("${by[@]}" ctest)
  [ "${by[-1]}" != wine ] || all=(ctest)  # which knows what its tests are run by
  if [ -n "$short" ]; then
    MCB_RUNS=200 "${by[@]}" "$(program "$folder" numerics_tests)" --gtest_brief=1
  else
    "${all[@]}" --test-dir "build/$folder" -j "$(nproc)" --no-tests=error --output-on-failure \
      --progress | tail -n 5
  fi
  digest=$(MCB_SEED=1 MCB_RUNS=$runs "${by[@]}" "$(program "$folder" plain_model_tests)" \
    --gtest_filter='PlainModel.*' | grep '^digest ' | tr -d '\r') ||
    { echo "same bits: random runs fail in $name" >&2 && exit 1; }
  printf 'same bits: %-32s %s of %s runs\n' "$name" "$digest" "$runs"
  if [ "$digest" != "${expected:=$digest}" ]; then
    echo "same bits: the results of $name differ" >&2
    exit 1
  fi
}

no_fma=(env GLIBC_TUNABLES=glibc.cpu.hwcaps=-FMA,-AVX2_Usable,-AVX2)
if [ -n "$short" ]; then
  build release --preset release
  leg "release" release env
  leg "release, no fused multiply-add" release "${no_fma[@]}"
else
  build_with_flags same_bits_O2 -O2
  leg "g++ -O2" same_bits_O2 env
  leg "g++ -O2, no fused multiply-add" same_bits_O2 "${no_fma[@]}"
fi
build_with_flags same_bits_native "-O3 -march=native"
leg "g++ -O3 -march=native" same_bits_native env
if [ -z "$short" ]; then
  build_with_flags same_bits_O0 -O0
  leg "g++ -O0" same_bits_O0 env
  build_with_flags same_bits_clang -O2 -DCMAKE_CXX_COMPILER=clang++
  leg "clang -O2" same_bits_clang env
  if [ -e build/windows-libraries/complete ]; then
    build_with_flags same_bits_windows -O2 \
      -DCMAKE_TOOLCHAIN_FILE=cmake/toolchains/windows-x86_64.cmake
    leg "Windows, under wine" same_bits_windows \
      env WINEPREFIX="$PWD/build/wine" WINEDEBUG=-all WINEPATH="$PWD/build/same_bits_windows/bin" wine
  else
    echo "same bits: notice: nothing is built for Windows; scripts/setup.sh --windows makes it possible"
  fi
fi
echo "same bits: ok"
