#!/usr/bin/env bash
# Runs a selection of the release build's tests under valgrind, which unlike the sanitizers also sees
# reads of what was never written; fails on any error and on any leak.
set -euo pipefail
cd "$(dirname "$0")/.."

cmake --preset release >/dev/null
cmake --build --preset release -j "$(nproc)" \
  --target model_tests api_tests ef_tests plain_model_tests >/dev/null

check() {
  echo "memory: $1"
  valgrind --quiet --error-exitcode=99 --leak-check=full --show-leak-kinds=all \
    --errors-for-leak-kinds=all "build/release/tests/$@" --gtest_brief=1
}

check model/model_tests
# Valgrind keeps files open of its own, beyond the limit that this test sets.
check api/api_tests --gtest_filter='-*.Code120021'
check ef/ef_tests
MCB_RUNS=200 check plain_model/plain_model_tests --gtest_filter='PlainModel.*'
echo "memory: ok"
