#!/usr/bin/env bash
# Sets the machine up, builds the project, runs the example host program and bins the example data.
set -euo pipefail
cd "$(dirname "$0")/.."

show() {
  printf '\n$ mcbin %s\n' "$*"
  build/release/cli/mcbin "$@"
}

scripts/setup.sh
echo "demo: building"
cmake --preset release >/dev/null
cmake --build --preset release -j "$(nproc)" --target minimal_host mcbin
echo "demo: running examples/minimal_host"
build/release/examples/minimal_host/minimal_host
echo "demo: binning examples/data/loans.csv"
show fit examples/data/loans.csv --target default --weight weight --exclude grade \
  --missing income=-1 --missing employment_years=999 -o build/loans.json
show fit examples/data/loans.csv --equal-frequency --bins 4 --attribute age

scripts/setup_python.sh
echo "demo: the same from Python"
build/venv/bin/python - <<'PYTHON'
import mcbinning as mb
import pandas as pd

loans = pd.read_csv("examples/data/loans.csv")
model = mb.fit(loans, target="default", weight="weight", exclude=["grade"],
               missing={"income": [-1], "employment_years": [999]})
print(model.ranking.to_string())
print(model["credit_score"].table.to_string())
print(model.transform(loans.head(), "woe").round(3).to_string())
PYTHON
