#!/usr/bin/env bash
# Builds, for the preset "windows", what Debian has no cross-built package of: from its source
# packages sqlite3 and libcsv, from its GoogleTest sources; libraries of headers are copied. All of
# it goes to build/windows-libraries. Does nothing when it is there. scripts/setup.sh --windows
# installs what this needs.
set -euo pipefail
cd "$(dirname "$0")/.."

source=$PWD
prefix=$PWD/build/windows-libraries
work=$prefix/work
if [ -e "$prefix/complete" ]; then
  exit 0
fi
rm -rf "$prefix"
mkdir -p "$work/lists/partial" "$prefix"/{include,lib/cmake/fmt,share/cmake}

echo "windows libraries: getting the source packages"
cd "$work"
apt-get indextargets --format 'deb-src $(SITE) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' |
  sort -u >sources.list
apt=(apt-get -qq -o "Dir::Etc::SourceList=$work/sources.list" -o Dir::Etc::SourceParts=-
  -o "Dir::State::Lists=$work/lists" -o APT::Sandbox::User=)
"${apt[@]}" update
"${apt[@]}" source sqlite3 libcsv >log 2>&1 || { cat log >&2 && exit 1; }

# compile <library> <source> <option>...
compile() {
  x86_64-w64-mingw32-gcc-posix -O2 -c "$2" -o "$1.o" "${@:3}"
  x86_64-w64-mingw32-ar rcs "$prefix/lib/lib$1.a" "$1.o"
}

echo "windows libraries: building sqlite3, libcsv and GoogleTest"
(cd sqlite3-*/ && ./configure --disable-tcl && make sqlite3.c) >log 2>&1 || { cat log >&2 && exit 1; }
compile sqlite3 sqlite3-*/sqlite3.c -DSQLITE_OMIT_LOAD_EXTENSION
cp sqlite3-*/sqlite3.h "$prefix/include"
compile csv libcsv-*/libcsv.c
cp libcsv-*/csv.h "$prefix/include"
cmake -S /usr/src/googletest -B googletest -G Ninja -DCMAKE_BUILD_TYPE=Release \
  -DCMAKE_TOOLCHAIN_FILE="$source/cmake/toolchains/windows-x86_64.cmake" \
  -DCMAKE_INSTALL_PREFIX="$prefix" >log
cmake --build googletest --target install >log

cp -r /usr/include/{CLI,nlohmann,fmt} "$prefix/include"
cp -r /usr/share/cmake/{CLI11,nlohmann_json} "$prefix/share/cmake"
cat >"$prefix/lib/cmake/fmt/fmt-config.cmake" <<'CMAKE'
add_library(fmt::fmt INTERFACE IMPORTED)
set_target_properties(fmt::fmt PROPERTIES
  INTERFACE_INCLUDE_DIRECTORIES ${CMAKE_CURRENT_LIST_DIR}/../../../include
  INTERFACE_COMPILE_DEFINITIONS FMT_HEADER_ONLY)
CMAKE
rm -rf "$work"
touch "$prefix/complete"
echo "windows libraries: done"
