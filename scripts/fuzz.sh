#!/usr/bin/env bash
# Feeds the CSV reader and the model reader with made-up bytes, under the address and undefined
# behaviour sanitizers, for the given number of seconds each (600 by default).
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-600}

cmake --preset fuzz >/dev/null
cmake --build --preset fuzz -j "$(nproc)" --target csv_fuzz model_fuzz mcbin

corpus=$(mktemp -d)
trap 'rm -rf "$corpus"' EXIT
mkdir "$corpus/csv" "$corpus/model"
# The first byte picks separator and header.
{ printf '\003'; head -n 20 examples/data/loans.csv; } >"$corpus/csv/loans"
printf '\003a,"b\n""c""",d\r\n1,,"x,y"\r\n' >"$corpus/csv/quotes"
printf '\000a\tb\n1\t2\n' | gzip -c | { printf '\003'; cat; } >"$corpus/csv/gzip"
build/fuzz/cli/mcbin fit examples/data/loans.csv --target default --weight weight \
  --attribute age --json >"$corpus/model/supervised" 2>/dev/null
build/fuzz/cli/mcbin fit examples/data/loans.csv --equal-frequency --bins 3 --attribute age \
  --json >"$corpus/model/equal-frequency" 2>/dev/null

for target in csv model; do
  echo "fuzz: $target for $seconds s"
  build/fuzz/tests/cli/fuzz/${target}_fuzz -max_total_time="$seconds" -max_len=8192 \
    -print_final_stats=1 -verbosity=0 -artifact_prefix="$corpus/" "$corpus/$target" || {
    cp "$corpus"/crash-* "$corpus"/leak-* "$corpus"/timeout-* build/ 2>/dev/null || true
    echo "fuzz: $target failed; the input is in build/" >&2
    exit 1
  }
done
echo "fuzz: ok"
