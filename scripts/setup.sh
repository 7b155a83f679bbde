#!/usr/bin/env bash
# Installs the Debian packages that building, testing and demonstrating the project needs,
# only those that are missing. Needs root or sudo when something is missing. With --windows it adds
# what the preset "windows" needs.
set -euo pipefail
cd "$(dirname "$0")/.."

packages=(
  g++ clang cmake ninja-build make pkg-config binutils python3 python3-venv python3-dev
  libgtest-dev libgmock-dev libbenchmark-dev libmpfr-dev
  libcli11-dev libcsv-dev nlohmann-json3-dev libfmt-dev libsqlite3-dev sqlite3 zlib1g-dev
  clang-format clang-tidy python3-clang libclang-rt-14-dev abigail-tools gcovr valgrind zsh fish
)

if [ "${1:-}" = --windows ]; then
  packages+=(g++-mingw-w64-x86-64-posix libz-mingw-w64-dev wine googletest tcl dpkg-dev
    ca-certificates)
elif [ $# -gt 0 ]; then
  echo "usage: setup.sh [--windows]" >&2
  exit 2
fi

if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
  echo "setup: this is not a Debian system; install what corresponds to: ${packages[*]}" >&2
  exit 1
fi

missing=()
for package in "${packages[@]}"; do
  status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$status" = installed ] || missing+=("$package")
done

if [ ${#missing[@]} -eq 0 ]; then
  echo "setup: all ${#packages[@]} packages are installed"
  [ $# -eq 0 ] || scripts/windows_libraries.sh
  exit 0
fi

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  if ! command -v sudo >/dev/null; then
    echo "setup: run as root, or install sudo; missing: ${missing[*]}" >&2
    exit 1
  fi
  as_root=(sudo)
fi

echo "setup: installing ${missing[*]}"
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -q
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get install -q -y --no-install-recommends "${missing[@]}"
[ $# -eq 0 ] || scripts/windows_libraries.sh
echo "setup: done"
