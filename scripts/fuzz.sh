#!/usr/bin/env bash
# Feeds the fuzz targets with made-up bytes, under the address and undefined behaviour sanitizers:
#   scripts/fuzz.sh [SECONDS [TARGET...]]
# SECONDS, 600 by default, are for each target; without targets all are run: list, run and ef of the
# library, csv and model of the program. Says how many inputs were run and how many branches and
# other features of the code they reached.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-600}
targets=("${@:2}")
[ ${#targets[@]} -gt 0 ] || targets=(list run ef csv model)

programs=("${targets[@]/%/_fuzz}")
case " ${targets[*]} " in *" model "*) programs+=(mcbin) ;; esac
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz -j "$(nproc)" --target "${programs[@]}"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# What a run starts from, in $corpus; inputs that it finds go there as well.
seed_csv() {
  # The first byte picks separator and header.
  { printf '\003'; head -n 20 examples/data/loans.csv; } >"$corpus/loans"
  printf '\003a,"b\n""c""",d\r\n1,,"x,y"\r\n' >"$corpus/quotes"
  printf '\000a\tb\n1\t2\n' | gzip -c | { printf '\003'; cat; } >"$corpus/gzip"
}
seed_model() {
  build/fuzz/cli/mcbin fit examples/data/loans.csv --target default --weight weight \
    --attribute age --json >"$corpus/supervised" 2>/dev/null
  build/fuzz/cli/mcbin fit examples/data/loans.csv --equal-frequency --bins 3 --attribute age \
    --json >"$corpus/equal-frequency" 2>/dev/null
}

for target in "${targets[@]}"; do
  corpus=$work/$target
  mkdir "$corpus"
  program=build/fuzz/tests/fuzz/${target}_fuzz
  length=2048
  case $target in
    csv | model)
      "seed_$target"
      program=build/fuzz/tests/toolkit/fuzz/${target}_fuzz
      length=8192
      ;;
    *) cp tests/fuzz/corpus/"$target"/* "$corpus" ;;
  esac
  # The library says on standard output which file it could not open.
  if ! "$program" -max_total_time="$seconds" -max_len=$length -entropic=0 -close_fd_mask=1 \
    -rss_limit_mb=4096 -print_final_stats=1 -artifact_prefix="$work/" "$corpus" >"$work/log" 2>&1; then
    cp "$work"/crash-* "$work"/leak-* "$work"/timeout-* "$work"/oom-* build/ 2>/dev/null || true
    tail -n 60 "$work/log" >&2
    echo "fuzz: $target failed; the input is in build/" >&2
    exit 1
  fi
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$work/log")
  reached=$(grep -oE 'cov: [0-9]+ ft: [0-9]+' "$work/log" | tail -n 1)
  echo "fuzz: $target: $runs runs in $seconds s, $reached"
done
echo "fuzz: ok"
