"""Tries an installed package: python smoke.py LOANS_CSV. Needs nothing but the package."""

import subprocess
import sys
from pathlib import Path

import mcbinning as mb

loans = sys.argv[1]
package = Path(mb.__file__).parent
environment = Path(sys.prefix)

assert package.is_relative_to(environment), package
program = environment / "bin" / "mcbin"
options = ["--target=default", "--weight=weight", "--exclude=grade"]
printed = subprocess.run([program, "fit", loans, "--json", *options], check=True,
                         capture_output=True, text=True).stdout  # fmt: skip
model = mb.fit(loans, target="default", weight="weight", exclude=["grade"])
assert model.to_json() == printed
assert mb.fit({"x": [1, 2, 3, 4], "t": list("aabb")}, target="t")["x"].cut_points == [2.0]

# What is loaded lies in the package or is the system's C and C++ run time.
maps = {
    line.split()[-1] for line in Path("/proc/self/maps").read_text().splitlines() if "/" in line
}
ours = [path for path in maps if any(word in path for word in ("mcbin", "csv", "fmt", "sqlite"))]
assert ours, maps
assert all(Path(path).is_relative_to(environment) for path in ours), ours

print(f"package: {len(model)} attributes by {program}, {len(ours)} libraries, all inside")
