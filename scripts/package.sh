#!/usr/bin/env bash
# Builds the packages in build/packages and tries each where nothing of the project is: the Debian
# ones in a bare Debian (needs root and mmdebstrap; else they are only unpacked), the archive in
# another folder, the zip for Windows under wine (needs scripts/setup.sh --windows). Whatever is run
# must give the bytes that the build's own program gives.
# Usage: package.sh [STEP...]; the steps, all of them unless some are named: linux (builds the Debian
# packages and the archive) debian archive windows python.
set -euo pipefail
cd "$(dirname "$0")/.."

source=$PWD
packages=$source/build/packages
tried=$source/build/packages/tried
rm -rf "$tried"
mkdir -p "$tried"
fit=(fit - --target default --weight weight --exclude grade --json)
data=$source/examples/data/loans.csv

# model <program>...: what it prints for the example's data.
model() { "$@" "${fit[@]}" <"$data" 2>/dev/null; }

say() { printf 'package: %s\n' "$*"; }

# same <model> <what made it>: the model is the one that the build's own program makes.
same() {
  model build/release/cli/mcbin | cmp "$1" - || { say "$2 gives another model" >&2 && exit 1; }
  say "$2 runs and gives the same model"
}

# build <preset> <generator>...
build() {
  say "building with the preset $1"
  cmake --preset "$1" >/dev/null
  cmake --build --preset "$1" -j "$(nproc)" --target mcbin mcbinning MCCOMVOR VORLWCOM >/dev/null
  for generator in "${@:2}"; do
    (cd "build/$1" && cpack -G "$generator" >"$tried/cpack.log") || { cat "$tried/cpack.log" >&2 && exit 1; }
  done
}

# use <prefix>: a consumer finds, links and runs the library below the prefix.
use() {
  cmake -S tests/consumers/installed -B "$tried/consumer" -DCMAKE_PREFIX_PATH="$1" >/dev/null
  cmake --build "$tried/consumer" >/dev/null
  "$tried/consumer/consumer" >/dev/null
  rm -r "$tried/consumer"
  say "a consumer of $1 runs"
}

try_in_bare_debian() {
  local root=$tried/debian
  say "making a bare Debian"
  mmdebstrap --quiet --variant=minbase --include=g++,cmake,make bookworm "$root"
  cp "$packages"/*.deb "$data" "$root/tmp"
  cp -r tests/consumers "$root/tmp/consumers"
  chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin sh -euc '
    cd /tmp
    apt-get update -qq
    DEBIAN_FRONTEND=noninteractive apt-get install -qq -y ./*.deb >install.log 2>&1 || { cat install.log; exit 1; }
    mcbin "$@" <loans.csv >model.json 2>/dev/null
    cmake -S consumers/installed -B consumer >/dev/null
    cmake --build consumer >/dev/null
    consumer/consumer >/dev/null
    apt-get remove -qq -y mcbin libmcbinning1 >/dev/null 2>&1
    test ! -e /usr/bin/mcbin' sh "${fit[@]}"
  same "$root/tmp/model.json" "the Debian package in a bare Debian, with a consumer,"
  rm -rf "$root"
}

try_unpacked_debian() {
  say "notice: without root and mmdebstrap the Debian packages are unpacked, not installed"
  for package in "$packages"/*.deb; do
    dpkg -x "$package" "$tried/unpacked"
  done
  model "$tried/unpacked/usr/bin/mcbin" >"$tried/model.json"
  same "$tried/model.json" "the unpacked Debian package"
  use "$tried/unpacked/usr"
}

try_zip() {
  local folder=$tried/windows wine=(env WINEPREFIX="$source/build/wine" WINEDEBUG=-all wine)
  python3 -m zipfile -e "$packages"/*.zip "$folder"
  mv "$folder"/*/* "$folder"
  model "${wine[@]}" "$folder/bin/mcbin.exe" >"$tried/model.json"
  same "$tried/model.json" "the zip for Windows under wine"
  x86_64-w64-mingw32-g++-posix -std=c++17 -static -I"$folder/include" tests/consumers/consumer.cpp \
    "$folder"/lib/lib{mcbinning,MCCOMVOR}.dll.a -o "$folder/bin/consumer.exe"
  "${wine[@]}" "$folder/bin/consumer.exe" >/dev/null
  say "a consumer of the zip runs under wine"
}

make_linux() {
  rm -rf "$packages"
  mkdir -p "$tried"
  build release DEB TGZ
}

try_debian() {
  if [ "$(id -u)" -eq 0 ] && command -v mmdebstrap >/dev/null; then
    try_in_bare_debian
  else
    try_unpacked_debian
  fi
}

try_archive() {
  tar xzf "$packages"/*-Linux-*.tar.gz -C "$tried"
  model "$tried"/mcbinning-*/bin/mcbin >"$tried/model.json"
  same "$tried/model.json" "the archive in another folder"
  use "$(echo "$tried"/mcbinning-*)"
}

[ $# -gt 0 ] || set -- linux debian archive windows python
for step in "$@"; do
  case $step in
    linux) make_linux ;;
    debian) try_debian ;;
    archive) try_archive ;;
    windows)
      if [ -e build/windows-libraries/complete ]; then
        build windows ZIP
        try_zip
      else
        say "notice: no zip for Windows; scripts/setup.sh --windows installs what it needs"
      fi ;;
    python) scripts/package_python.sh ;;
    *) say "there is no step $step" >&2 && exit 2 ;;
  esac
done
rm -rf "$tried" "$packages/_CPack_Packages"
say "done: $(ls "$packages" | tr '\n' ' ')"
