#!/usr/bin/env bash
# check_exported_symbols.sh LIBRARY [--update]
# Compares the dynamic symbols that LIBRARY defines with tests/abi/exported_symbols.txt and fails
# when they differ; with --update writes the list instead.
set -euo pipefail

library=${1:?usage: check_exported_symbols.sh LIBRARY [--update]}
list=$(dirname "$0")/../tests/abi/exported_symbols.txt

# Constructors and destructors have several symbols of one name.
symbols=$(nm -D --defined-only --demangle --format=posix "$library" |
  sed -E -e 's/ [A-Za-z]( [0-9a-f]+){0,2} *$//' \
    -e 's/std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >/std::string/g' |
  LC_ALL=C sort -u)

if [ "${2:-}" = --update ]; then
  printf '%s\n' "$symbols" >"$list"
  echo "symbols: wrote $(wc -l <"$list") names"
elif printf '%s\n' "$symbols" | diff -u "$list" -; then
  echo "symbols: ok"
else
  echo "symbols: $library does not export what $list says; when that is meant, update the list" >&2
  exit 1
fi
