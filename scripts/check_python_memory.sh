#!/usr/bin/env bash
# Builds the Python package with the address and undefined behaviour sanitizers and runs its tests,
# all but those that want scikit-learn, notebooks and pictures.
set -euo pipefail
cd "$(dirname "$0")/.."

environment=$PWD/build/venv
build=build/asan-python
cmp -s python/requirements.lock "$environment/requirements.lock" || scripts/setup_python.sh
echo "memory: building the Python package with the sanitizers"
flags="-O1 -g1 -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer"
CMAKE_BUILD_PARALLEL_LEVEL=${CMAKE_BUILD_PARALLEL_LEVEL:-$(nproc)} \
  "$environment/bin/pip" install -q --disable-pip-version-check --no-build-isolation --no-deps \
  --upgrade --target "$build/packages" . -C build-dir="$build" -C cmake.build-type=Debug \
  -C cmake.define.CMAKE_CXX_FLAGS="$flags" -C "build.targets=_core;mcbin;mcbinning"

# The interpreter is not built with the sanitizers, so their libraries are loaded first; its own
# memory is left to the system, and what it never frees is none of ours.
LD_PRELOAD="$(g++ -print-file-name=libasan.so) $(g++ -print-file-name=libubsan.so)" \
  ASAN_OPTIONS=detect_leaks=0:allocator_may_return_null=1 PYTHONMALLOC=malloc \
  PYTHONPATH=$PWD/$build/packages "$environment/bin/python" -m pytest -p no:cacheprovider \
  python/tests/test_{sources,errors,jobs,resources}.py --random-tables=50 "$@"
