#!/usr/bin/env bash
# Compares the bits of all results between compilers, optimisations, processors and systems: runs the
# library's tests and random runs in every build, each run compared with the plain model, and
# compares the digests of their results.
# Usage: same_bits.sh [--short] [RUNS] [LEG...]; without a LEG, every one of: O2 O2_no_fma native O0
# clang windows. With --short: release release_no_fma native, and of the tests those of the
# logarithm. windows needs scripts/setup.sh --windows.
set -euo pipefail
cd "$(dirname "$0")/.."

short=
if [ "${1:-}" = --short ]; then
  short=1
  shift
fi
runs=$([ -n "$short" ] && echo 5000 || echo 50000)
if [[ ${1:-} =~ ^[0-9]+$ ]]; then
  runs=$1
  shift
fi
legs=("$@")
if [ $# -eq 0 ]; then
  read -ra legs <<<"$([ -n "$short" ] && echo release release_no_fma native ||
    echo O2 O2_no_fma native O0 clang windows)"
fi

# The digest that the first leg gave; legs of the same sources that are run later find it again.
sources=$(find include src host tests \( -name '*.h' -o -name '*.cpp' \) -exec sha1sum {} + | sort | sha1sum)
expected=build/same_bits/${sources:0:16}-$runs
mkdir -p build/same_bits

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

# compare <name> <build folder> [<what a program is run by>...]
compare() {
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
  [ -e "$expected" ] || echo "$digest" >"$expected"
  if [ "$digest" != "$(cat "$expected")" ]; then
    echo "same bits: the results of $name differ" >&2
    exit 1
  fi
}

no_fma=(env GLIBC_TUNABLES=glibc.cpu.hwcaps=-FMA,-AVX2_Usable,-AVX2)
wine=(env WINEPREFIX="$PWD/build/wine" WINEDEBUG=-all WINEPATH="$PWD/build/same_bits_windows/bin" wine)

leg() {
  case $1 in
    release)
      build release --preset release
      compare "release" release env ;;
    release_no_fma)
      build release --preset release
      compare "release, no fused multiply-add" release "${no_fma[@]}" ;;
    O2)
      build_with_flags same_bits_O2 -O2
      compare "g++ -O2" same_bits_O2 env ;;
    O2_no_fma)
      build_with_flags same_bits_O2 -O2
      compare "g++ -O2, no fused multiply-add" same_bits_O2 "${no_fma[@]}" ;;
    native)
      build_with_flags same_bits_native "-O3 -march=native"
      compare "g++ -O3 -march=native" same_bits_native env ;;
    O0)
      build_with_flags same_bits_O0 -O0
      compare "g++ -O0" same_bits_O0 env ;;
    clang)
      build_with_flags same_bits_clang -O2 -DCMAKE_CXX_COMPILER=clang++
      compare "clang -O2" same_bits_clang env ;;
    windows)
      if [ ! -e build/windows-libraries/complete ]; then
        echo "same bits: notice: nothing is built for Windows; scripts/setup.sh --windows makes it possible"
        return
      fi
      build_with_flags same_bits_windows -O2 \
        -DCMAKE_TOOLCHAIN_FILE=cmake/toolchains/windows-x86_64.cmake
      compare "Windows, under wine" same_bits_windows "${wine[@]}" ;;
    *)
      echo "same bits: there is no leg $1" >&2
      exit 2 ;;
  esac
}

for name in "${legs[@]}"; do
  leg "$name"
done
echo "same bits: ok"
