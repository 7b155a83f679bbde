#!/usr/bin/env bash
# Makes build/venv, the virtual environment with the packages that python/requirements.lock pins,
# and installs the Python package from this tree into it. Does nothing that is done already.
set -euo pipefail
cd "$(dirname "$0")/.."

environment=build/venv
stamp=$environment/requirements.lock
if ! cmp -s python/requirements.lock "$stamp"; then
  echo "setup: installing the Python packages"
  python3 -m venv --clear "$environment"
  "$environment/bin/pip" install -q --disable-pip-version-check -r python/requirements.lock
  cp python/requirements.lock "$stamp"
fi

# Built in the folder of the preset release, so that nothing is compiled a second time.
echo "setup: building the Python package"
cmake --preset release >/dev/null
CMAKE_BUILD_PARALLEL_LEVEL=${CMAKE_BUILD_PARALLEL_LEVEL:-$(nproc)} \
  "$environment/bin/pip" install -q --disable-pip-version-check --no-build-isolation --no-deps \
  --force-reinstall . -C build-dir=build/release -C cmake.build-type=RelWithDebInfo \
  -C cmake.define.MCBINNING_BUILD_TESTS=ON -C cmake.define.MCBINNING_BUILD_EXAMPLES=ON \
  -C cmake.define.MCBINNING_INSTALL=ON -C "build.targets=_core;mcbin;mcbinning"
