#!/usr/bin/env bash
# Builds the benchmarks with plain -O2 and prints the ratio table of docs/performance.md for 1 and
# for 10 million cases (several minutes, 6 GB of memory), then the logarithm, the search in rounds
# over up to 1,000 million rows, the reading of the program and the single stages.
# Usage: bench/run_all.sh [cases...]; the time of the stages can be cut with --no-stages first.
set -euo pipefail
cd "$(dirname "$0")/.."

stages=1
if [ "${1:-}" = --no-stages ]; then
  stages=0
  shift
fi
[ $# -gt 0 ] || set -- 1000000 10000000

cmake -S . -B build/bench -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE="-O2 -DNDEBUG" \
  -DMCBINNING_BUILD_BENCHMARKS=ON -DMCBINNING_BUILD_TESTS=OFF -DMCBINNING_BUILD_CLI=ON \
  -DMCBINNING_BUILD_EXAMPLES=OFF > /dev/null
cmake --build build/bench > /dev/null

date
grep -m 1 'model name' /proc/cpuinfo || true
for cases in "$@"; do
  echo
  build/bench/bench/mcbinning_ratios "$cases" 5
done
echo
build/bench/bench/mcbinning_logarithm
echo
build/bench/bench/mcbinning_rounds
echo
build/bench/bench/mcbin_reading 1000000 5
if [ "$stages" = 1 ] && [ -x build/bench/bench/mcbinning_stages ]; then
  echo
  build/bench/bench/mcbinning_stages
fi
