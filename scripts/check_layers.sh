#!/usr/bin/env bash
# Fails when an include points from a lower layer to a higher one, when a program reaches inside
# the library, when operating-system code stands outside src/platform, or when a logarithm or a power
# is not that of src/numerics.
set -euo pipefail
cd "$(dirname "$0")/.."

# grep answers 1 when it finds nothing, which is no failure here.
search() { grep -srnE --include='*.h' --include='*.cpp' "$@" || true; }
without() { grep -vE "$@" || true; }

# only <pattern of what may be included> <folder or file>...: prints the other project includes.
only() {
  local allowed=$1
  shift
  search '^ *# *include *["<]((\.\.|mcbinning|numerics|status|model|api|data|supervised|ef|rounds|platform|tests|support|toolkit|cli|python)/|gtest|gmock)' "$@" |
    without "[\"<]($allowed)"
}

base='mcbinning/(export|status|progress|case_iterator)\.h'
model='mcbinning/(user_missing|encoders|variables|variable_list)\.h'
api='mcbinning/(settings|outputs|algorithms|factories)\.h'

# From the lowest folder to the highest; a folder sees itself and those before it.
toolkit_includes_that_point_up() {
  local seen='mcbinning/|numerics/|toolkit/(errors|monitor)\.h' folder
  for folder in text system input columns model tables fit rounds apply export report score; do
    seen+="|toolkit/$folder/"
    only "$seen" "toolkit/$folder"
  done
  only 'toolkit/(errors|monitor)\.h' toolkit/*.h
}

includes_that_point_up() {
  only 'mccomvor/|vorlwcom/' host
  only 'numerics/' src/numerics
  only 'platform/' src/platform
  only "$base|platform/|status/" src/status
  only "$base|$model|platform/|status/|model/" src/model
  only "$base|$model|$api|platform/|status/|model/|api/" src/api
  only "$base|$model|platform/|status/|model/|data/" src/data
  only "$base|$model|$api|platform/|status/|model/|api/|data/|numerics/|supervised/" src/supervised
  only "$base|$model|$api|platform/|status/|model/|api/|data/|numerics/|supervised/|ef/" src/ef
  only "mcbinning/rounds\.h|$base|$model|$api|platform/|status/|model/|api/|data/|numerics/|supervised/|rounds/" src/rounds
  only "$base" include/mcbinning/{export,status,progress,case_iterator}.h
  only "$base|$model" include/mcbinning/{user_missing,encoders,variables,variable_list}.h
  only "$base|$model|$api" include/mcbinning/{settings,outputs,algorithms,factories}.h
  only 'mcbinning/' include
  toolkit_includes_that_point_up
  only 'mcbinning/|toolkit/|cli/system/' cli/system
  only 'mcbinning/|toolkit/|cli/(system|text)/' cli/text
  only 'mcbinning/|toolkit/|cli/' cli
  only 'toolkit/|python/ext/' python/ext
  only 'mcbinning/' examples
}

operating_system_code() {
  search '^ *# *(if|ifdef|ifndef|elif)\b.*(WIN32|WIN64|_MSC_VER|__MINGW|__linux|__APPLE__|__unix)' \
    include src host toolkit cli python/ext examples | without '^src/platform/|/export\.h:'
  search '^ *# *include *<(windows|io|unistd|fcntl|dlfcn|pthread|fnmatch|sys/[a-z]+)\.h>' \
    include src host toolkit cli |
    without '^(src/platform|(toolkit|cli)/system)/(posix|windows)/|^(toolkit|cli)/system/[a-z_]+\.(h|cpp):'
}

# Every C library has its own last bits of these.
logarithms_of_the_platform() {
  search '\b(log|log2|log10|log1p|exp|exp2|expm1|pow)l?f? *\(' src include toolkit | without '^[^:]*:[0-9]+: *//'
}

found=$(includes_that_point_up; operating_system_code; logarithms_of_the_platform)
if [ -n "$found" ]; then
  printf 'layers: these lines point the wrong way, belong into src/platform or into src/numerics:\n%s\n' "$found" >&2
  exit 1
fi
echo "layers: ok"
