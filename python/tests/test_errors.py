"""Bad input ends in an exception that names the column and the place."""

import _thread
import os
import subprocess
import sys
import threading
import time

import numpy as np
import pandas as pd
import pytest
import scipy.sparse

import mcbinning as mb

X = np.arange(6.0)
T = np.array(list("ababab"))


def fit_x(**options):
    return mb.fit({"x": X, "t": T}, target="t", **options)


BAD = {
    "no column": (lambda: mb.fit({"x": X}, target="t"), ValueError, "target: no column 't'"),
    "lengths": (
        lambda: mb.fit({"x": X, "t": T[:5]}, target="t"),
        ValueError,
        "column t has 5 rows, those before it have 6",
    ),
    "mixed": (
        lambda: mb.fit({"x": [1, "b", 3], "t": list("aba")}, target="t"),
        mb.DataError,
        "row 1: column x mixes numbers and texts: 'b' is a text",
    ),
    "complex": (
        lambda: mb.fit({"x": X * 1j, "t": T}, target="t"),
        TypeError,
        "column x is of type complex128",
    ),
    "an object": (
        lambda: mb.fit({"x": [1, 2, object()], "t": list("aba")}, target="t"),
        TypeError,
        "row 2: column x holds an object of type object",
    ),
    "sparse": (lambda: mb.fit(scipy.sparse.eye(3), target="t"), TypeError, "sparse"),
    "sparse column": (
        lambda: mb.fit(pd.DataFrame({"x": pd.arrays.SparseArray(X), "t": T}), target="t"),
        TypeError,
        "column x is sparse",
    ),
    "one class": (
        lambda: mb.fit({"x": X, "t": ["a"] * 6}, target="t"),
        mb.DataError,
        "the target t has the single category 'a'",
    ),
    "no class": (
        lambda: mb.fit({"x": X, "t": X * np.nan}, target="t"),
        mb.DataError,
        "no case has a category in the target t",
    ),
    "many classes": (
        lambda: mb.fit({"x": range(300), "t": range(300)}, target="t"),
        mb.DataError,
        "row 256: the target t has more than 256 categories",
    ),
    "an infinite class": (
        lambda: mb.fit({"x": X, "t": [0.0, 1.0, np.inf, 0, 0, 0]}, target="t"),
        mb.DataError,
        "row 2: the target t is infinite, which names no category",
    ),
    "negative weights": (
        lambda: mb.fit({"x": X, "t": T, "w": X * -1}, target="t", weight="w"),
        mb.DataError,
        "no case can be used",
    ),
    "all missing": (
        lambda: mb.fit({"x": X * np.nan, "t": T}, target="t"),
        mb.DataError,
        "x: no case has a value",
    ),
    "duplicate names": (
        lambda: mb.fit(pd.DataFrame([[1, 2, 3]], columns=["x", "x", "t"]), target="t"),
        ValueError,
        "two columns are named 'x'",
    ),
    "three dimensions": (lambda: mb.fit(np.zeros((2, 2, 2)), target="x0"), ValueError, "two dim"),
    "a matrix column": (
        lambda: mb.fit({"x": np.zeros((6, 2)), "t": T}, target="t"),
        ValueError,
        "column x must have one dimension",
    ),
    "a column twice": (
        lambda: mb.fit({"x": X, "t": T}, target="t", weight="t"),
        mb.OptionError,
        "column t cannot be named by weight and by target",
    ),
    "a text in transform": (
        lambda: mb.fit({"x": X, "t": X > 2}, target="t").transform({"x": [1, "b"]}),
        mb.DataError,
        "row 1: column x holds 'b', which is no number",
    ),
    "no column in transform": (
        lambda: mb.fit({"x": X, "t": X > 2}, target="t").transform({"y": X}),
        mb.DataError,
        "the data have no column x",
    ),
    "no such file": (lambda: mb.load("/nowhere/model.json"), mb.DataError, "/nowhere/model.json"),
    "no model": (lambda: mb.from_json("{}"), mb.DataError, "model"),
    "one text of attributes": (
        lambda: mb.fit({"x": X, "t": T}, target="t", attributes="x"),
        TypeError,
        "attributes takes a sequence",
    ),
    "bins": (lambda: mb.fit_equal_frequency({"x": X}, bins=1), mb.OptionError, "bins must be"),
    "a share": (
        lambda: fit_x(min_bin_share=2),
        mb.OptionError,
        "min_bin_share must be from 0 to 1",
    ),
    "a weight": (
        lambda: fit_x(min_bin_weight=float("inf")),
        mb.OptionError,
        "min_bin_weight must be finite and not negative",
    ),
    "one bin": (lambda: fit_x(max_bins=1), mb.OptionError, "max_bins must be at least 2"),
    "half a limit": (lambda: fit_x(max_bins=2.5), TypeError, "max_bins takes a whole number"),
    "an adjustment": (
        lambda: fit_x(woe_adjustment=0),
        mb.OptionError,
        "woe_adjustment must lie between 1e-100 and 1e+100",
    ),
    "no such event": (
        lambda: fit_x(event="c"),
        mb.DataError,
        "event c: the target t has the categories 'a' and 'b'",
    ),
    "falling cuts": (
        lambda: fit_x(cuts={"x": [2, 1]}),
        mb.OptionError,
        "cuts x=2,1: the cut points must ascend: '1' is not above the one before",
    ),
    "infinite cuts": (
        lambda: fit_x(cuts={"x": [np.nan]}),
        mb.OptionError,
        "cuts x=nan: 'nan' is not a finite number",
    ),
    "cuts of no column": (lambda: fit_x(cuts={"y": [1]}), mb.DataError, "cuts: no column 'y'"),
    "cuts of no file": (lambda: fit_x(cuts="/nowhere"), mb.DataError, "cannot open /nowhere"),
    "cuts of another side": (
        lambda: fit_x(cuts=fit_x(), left_closed=True),
        mb.OptionError,
        "the bins of the model are (a, b]: leave left_closed=True out",
    ),
    "lone surrogate": (
        lambda: mb.fit({"x": X, "t": ["a", "\ud800"] * 3}, target="t"),
        ValueError,
        "row 1: column t holds a text that is no UTF-8",
    ),
    "bytes": (
        lambda: mb.fit({"x": X, "t": [b"a", b"\xff"] * 3}, target="t"),
        ValueError,
        "row 1: column t holds bytes that are no UTF-8",
    ),
    "no attribute": (
        lambda: mb.fit({"x": X, "t": T}, target="t", attributes=["y"]),
        mb.DataError,
        "attributes: no column 'y'",
    ),
    "no weight": (
        lambda: mb.fit({"x": X, "t": T}, target="t", weight="w"),
        mb.OptionError,
        "weight: no column 'w'",
    ),
    "no column for missing": (
        lambda: mb.fit({"x": X, "t": T}, target="t", missing={"y": [1]}),
        mb.DataError,
        "missing: no column 'y'",
    ),
    "missing no sequence": (
        lambda: mb.fit({"x": X, "t": T}, target="t", missing={"x": 1}),
        TypeError,
        "missing: column x takes a sequence of values",
    ),
    "target no name": (lambda: mb.fit({"x": X}, target=0), TypeError, "target takes the name of"),
    "half a bin": (
        lambda: mb.fit_equal_frequency({"x": X}, bins=2.5),
        TypeError,
        "bins takes a whole number, not float",
    ),
    "no weight lasts": (
        lambda: mb.fit({"x": X, "t": T, "w": X * 0.1}, target="t", weight="w"),
        mb.DataError,
        "every weight in column w is missing or, truncated to a whole number, not positive "
        "(weight_rounding round",
    ),
    "weights of NaN": (
        lambda: mb.fit({"x": X, "t": T, "w": X * np.nan}, target="t", weight="w"),
        mb.DataError,
        "every weight in column w is missing",
    ),
    "texts as weights": (
        lambda: mb.fit({"x": X, "t": T, "w": ["one"] * 6}, target="t", weight="w"),
        mb.DataError,
        "row 0: 'one' in column w is not a number",
    ),
    "no rows": (
        lambda: mb.fit({"x": [], "t": []}, target="t"),
        mb.DataError,
        "the data: no case has a category in the target t",
    ),
    "a text in a row": (
        lambda: mb.fit({"x": X, "t": X > 2}, target="t").transform_row({"x": "a"}),
        TypeError,
        "column x holds 'a', which is no number",
    ),
}


@pytest.mark.parametrize("case", BAD)
def test_bad_input_is_named(case):
    action, error, text = BAD[case]
    with pytest.raises(error) as caught:
        action()
    assert text in str(caught.value)


def test_declared_values_that_never_occur_are_warned_of():
    with pytest.warns(UserWarning, match="column x: no case has the declared missing value 77"):
        mb.fit({"x": X, "t": T}, target="t", missing={"x": [77]})


LOST_FILE = """
import resource
import mcbinning as mb
def lose(task, *_):
    if task == "binning attributes":
        resource.setrlimit(resource.RLIMIT_NOFILE, (0, 100))
try:
    mb.fit({"x": range(9), "y": range(9), "t": [0] * 5 + [1] * 4}, target="t", progress=lose)
except Exception as error:
    print(error)
print("printed")
"""


def test_any_class_can_be_declared_missing():
    classes = ["a", "b", "not, known", "x=y", " 7 ", 7.5]
    data = {"x": range(60), "t": [str(c) for c in classes] * 10}
    model = mb.fit(data, target="t", missing={"t": classes[2:]})
    assert model.classes == ["a", "b"]
    assert model.as_dict()["target"]["missingTexts"] == ["not, known", "x=y", "7", "7.5"]


def test_the_library_prints_nothing():
    command = [sys.executable, "-c", LOST_FILE]
    printed = subprocess.run(command, check=True, capture_output=True, text=True).stdout
    assert printed == "cannot bin column y: Too many open files\nprinted\n"


OUT_OF_MEMORY = """
import resource
import numpy as np
import mcbinning as mb
data = {f"x{i}": np.random.default_rng(i).normal(size=2_000_000) for i in range(4)}
data["t"] = np.arange(2_000_000) % 2
mb.fit({name: column[:9] for name, column in data.items()}, target="t")
pages = int(open("/proc/self/statm").read().split()[0])
limit = pages * resource.getpagesize() + 20_000_000
resource.setrlimit(resource.RLIMIT_AS, (limit, -1))
try:
    mb.fit(data, target="t")
except (MemoryError, mb.DataError) as error:
    resource.setrlimit(resource.RLIMIT_AS, (-1, -1))
    print(error)
"""


def test_no_memory_is_an_exception():
    command = [sys.executable, "-c", OUT_OF_MEMORY]
    printed = subprocess.run(command, check=True, capture_output=True, text=True).stdout
    assert "memory" in printed


def big():
    rng = np.random.default_rng(1)
    return {
        **{f"x{i}": rng.normal(size=300_000) for i in range(8)},
        "t": rng.integers(0, 2, 300_000),
    }


def test_what_progress_raises_ends_the_fit_and_leaves_no_file(tmp_path, monkeypatch):
    monkeypatch.setenv("TMPDIR", str(tmp_path))

    def progress(*_):
        raise RuntimeError("enough")

    with pytest.raises(RuntimeError, match="enough"):
        mb.fit(big(), target="t", progress=progress)
    assert not list(tmp_path.iterdir())


def test_progress_is_told_of_both_passes():
    told = []
    mb.fit(big(), target="t", progress=lambda *args: told.append(args))
    assert {task for task, *_ in told} >= {"reading cases", "binning attributes"}
    assert all(share is None or 0 <= share <= 1 for _, share, *_ in told)


def test_an_interrupt_stops_within_a_second():
    data = big()
    timer = threading.Timer(0.2, _thread.interrupt_main)
    timer.start()
    started = time.monotonic()
    with pytest.raises(KeyboardInterrupt):
        while True:
            mb.fit(data, target="t")
    assert time.monotonic() - started < 1.5


def test_other_threads_go_on():
    done = threading.Event()
    data = big()
    worker = threading.Thread(target=lambda: (mb.fit(data, target="t"), done.set()))
    worker.start()
    ticks = 0
    while not done.is_set():
        time.sleep(0.001)
        ticks += 1
    worker.join()
    assert ticks > 20


def test_fits_leave_nothing_open():
    data = {"x": np.arange(50.0), "t": np.arange(50) > 20}
    before = len(os.listdir("/proc/self/fd"))
    for _ in range(50):
        mb.fit(data, target="t")
    assert len(os.listdir("/proc/self/fd")) == before
