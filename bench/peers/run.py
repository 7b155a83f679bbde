"""Time and memory of binning 10 columns by this package and by others, and whether cuts agree.

    python -m venv build/peers
    build/peers/bin/pip install -r bench/peers/requirements.txt .
    build/peers/bin/python bench/peers/run.py [ROWS...]

Prints one line for each binner and number of rows: processor seconds, peak memory above the data in bytes a
row, the ratio of its time to that of this package, and in how many columns its cuts part the rows
as the exact entropy/MDL rule does. Each runs alone in a process of its own.
"""

import json
import subprocess
import sys
import time

import numpy as np

COLUMNS = 10
LIMIT_SECONDS = 600


def data(rows):
    """Normal columns, each of which says less about the class than the one before."""
    rng = np.random.default_rng(1)
    X = rng.normal(size=(rows, COLUMNS))
    score = sum(np.sin(2 * X[:, c]) / (c + 1) for c in range(COLUMNS))
    return np.asfortranarray(X), (score + rng.normal(size=rows) > 0).astype(np.int64)


def ours(X, y):
    import mcbinning as mb

    columns = {f"x{c}": X[:, c] for c in range(COLUMNS)}
    model = mb.fit({**columns, "y": y}, target="y")
    return [attribute.cut_points for attribute in model.values()]


def ours_equal_frequency(X, y):
    import mcbinning as mb

    model = mb.fit_equal_frequency(X, bins=10)
    return [attribute.cut_points for attribute in model.values()]


def quantile_binner(X, y):
    from sklearn.preprocessing import KBinsDiscretizer

    binner = KBinsDiscretizer(10, encode="ordinal", strategy="quantile", subsample=None)
    return [edges[1:-1] for edges in binner.fit(X).bin_edges_]


def mdl_table(X, y):
    from Orange.data import ContinuousVariable, DiscreteVariable, Domain, Table
    from Orange.preprocess.discretize import EntropyMDL

    columns = [ContinuousVariable(f"x{c}") for c in range(COLUMNS)]
    table = Table.from_numpy(Domain(columns, DiscreteVariable("y", ["0", "1"])), X, y)
    binner = EntropyMDL()
    return [binner(table, column).compute_value.points for column in columns]


def mdl_plain(X, y):
    from optbinning import MDLP

    return [MDLP().fit(X[:, c], y).splits for c in range(COLUMNS)]


def optimal(X, y):
    from optbinning import OptimalBinning

    return [OptimalBinning().fit(X[:, c], y).splits for c in range(COLUMNS)]


def tree(X, y):
    import pandas as pd
    from feature_engine.discretisation import DecisionTreeDiscretiser

    frame = pd.DataFrame(X, columns=[f"x{c}" for c in range(COLUMNS)])
    binner = DecisionTreeDiscretiser(regression=False, bin_output="boundaries", precision=6)
    binner.fit(frame, pd.Series(y))
    return [edges[1:-1] for edges in binner.binner_dict_.values()]


BINNERS = {f.__name__: f for f in (
    ours, mdl_table, mdl_plain, optimal, tree, ours_equal_frequency, quantile_binner,
)}  # fmt: skip


def resident(field):
    with open("/proc/self/status") as file:
        line = next(line for line in file if line.startswith(field))
    return int(line.split()[1]) * 1024


def measure(name, rows):
    """Measure one fit in this process."""
    small = data(2000)
    BINNERS[name](*small)  # what is imported and compiled is not measured
    X, y = data(rows)
    before = resident("VmRSS")
    with open("/proc/self/clear_refs", "w") as file:
        file.write("5")
    start = time.process_time()
    cuts = BINNERS[name](X, y)
    seconds = time.process_time() - start
    peak = resident("VmHWM") - before
    # The position of a cut among the ordered values, whichever value between two it is.
    places = [
        np.searchsorted(np.sort(X[:, c]), np.sort(cuts[c]), side="right").tolist()
        for c in range(COLUMNS)
    ]
    return {"seconds": seconds, "bytes": peak / rows, "places": places}


def measured(name, rows):
    """Measure one fit in a process of its own; None when it takes too long or fails."""
    command = [sys.executable, __file__, "--one", name, str(rows)]
    try:
        run = subprocess.run(
            command, check=True, capture_output=True, text=True, timeout=LIMIT_SECONDS
        )
    except (subprocess.TimeoutExpired, subprocess.CalledProcessError) as error:
        print(f"{rows:>10} {name:22} {type(error).__name__}", flush=True)
        return None
    return json.loads(run.stdout.splitlines()[-1])


def compare(rows):
    exact = equal = None
    for name in BINNERS:
        result = measured(name, rows)
        if result is None:
            continue
        if name == "ours":
            exact = result
        if name == "ours_equal_frequency":
            equal = result
        reference = exact if equal is None else equal
        same = sum(a == b for a, b in zip(result["places"], reference["places"], strict=True))
        print(
            f"{rows:>10} {name:22} {result['seconds']:9.3f} s {result['bytes']:8.1f} bytes a row"
            f" {result['seconds'] / reference['seconds']:8.1f} times"
            f" {same:3} of {COLUMNS} columns cut alike",
            flush=True,
        )


if __name__ == "__main__":
    if sys.argv[1:2] == ["--one"]:
        print(json.dumps(measure(sys.argv[2], int(sys.argv[3]))))
    else:
        for count in map(int, sys.argv[1:] or ["100000", "1000000"]):
            compare(count)
