"""Random tables: every kind of input gives what the program makes of the CSV of the same data."""

import subprocess

import numpy as np
import pyarrow as pa
import pytest
from hypothesis import HealthCheck, given, seed, settings
from hypothesis import strategies as st

import mcbinning as mb
from conftest import MCBIN
from test_sources import KINDS

FLOATS = st.floats(allow_nan=False, allow_infinity=False, width=64)
NUMBERS = st.none() | st.integers(-9, 9).map(float) | FLOATS
ROWS = st.lists(
    st.tuples(
        NUMBERS,
        st.none() | st.integers(-(2**40), 2**40) | st.integers(-3, 3),
        st.sampled_from([None, "p", "q"]),
        st.integers(0, 4),
        st.none() | st.sampled_from("abc"),
    ),
    min_size=1,
    max_size=60,
)
OPTIONS = st.fixed_dictionaries(
    {},
    optional={
        "weight": st.just("w"),
        "left_closed": st.just(True),
        "missing": st.just({"x": [3], "y": [-1, 2]}),
        "missing_range": st.just({"x": (5.0, None)}),
    },
)
SUPERVISED = st.fixed_dictionaries(
    {},
    optional={
        "threshold": st.just(4),
        "bins": st.just(3),
        "small_bins": st.just(0.4),
        "min_bin_share": st.just(0.3),
        "min_bin_weight": st.just(4),
        "max_bins": st.just(2),
        "cuts": st.just({"x": [-1, 2.5]}),
        "event": st.just("b"),
        "woe_adjustment": st.just(0.25),
    },
)


@pytest.fixture
def runs(request):
    """Settings of a test that runs so often."""
    return settings(
        max_examples=request.config.getoption("--random-tables"),
        deadline=None,
        database=None,
        suppress_health_check=list(HealthCheck),
    )


def table_of(rows):
    names = ["x", "y", "s", "w", "default"]
    types = [pa.float64(), pa.int64(), pa.string(), pa.int8(), pa.string()]
    columns = zip(*rows, strict=True)
    return pa.table({n: pa.array(c, t) for n, c, t in zip(names, columns, types, strict=True)})


def write_csv(table, path):
    rows = zip(*table.to_pydict().values(), strict=True)
    lines = [",".join("" if c is None else str(c) for c in row) for row in rows]
    path.write_text("\n".join([",".join(table.column_names), *lines, ""]))


def arguments_of(options):
    given = []
    for name, value in options.items():
        option = "--" + name.replace("_", "-")
        if name in ("missing", "cuts"):
            given += [f"{option}={c}={','.join(map(str, v))}" for c, v in value.items()]
        elif name == "missing_range":
            given += [f"{option}={c}={low}:{high or ''}" for c, (low, high) in value.items()]
        else:
            given.append(option if value is True else f"{option}={value}")
    return given


def words(text):
    """What an error says, without its place and without how options are named."""
    return text.strip().rpartition(": ")[-1].replace("--", "").replace("-", "_")


def by_the_program(path, arguments):
    command = [MCBIN, "fit", path, "--json", *arguments]
    run = subprocess.run(command, check=False, capture_output=True, text=True)
    if run.returncode == 0:
        return run.stdout
    assert run.returncode == 1
    return words(run.stderr.splitlines()[-1])


def by_the_package(fit):
    try:
        return fit().to_json()
    except mb.DataError as error:
        return words(str(error))


@pytest.mark.filterwarnings("ignore:column .* no case has")
def test_every_kind_of_input_gives_the_bytes_of_the_program(runs, tmp_path):
    path = tmp_path / "table.csv"

    @seed(20)
    @runs
    @given(rows=ROWS, options=OPTIONS, supervised=st.none() | SUPERVISED, jobs=st.integers(1, 3))
    def check(rows, options, supervised, jobs):
        table = table_of(rows)
        write_csv(table, path)
        if supervised is None:
            arguments = ["--equal-frequency", "--exclude=default", "--bins=3"]
            arguments += arguments_of(options)
            options = {**options, "exclude": ["default"], "bins": 3}
            fit = mb.fit_equal_frequency
        else:
            options = {**options, **supervised, "target": "default"}
            arguments = arguments_of(options)
            fit = mb.fit
        expected = by_the_program(path, arguments)
        for kind, make in KINDS.items():
            data = make(table)
            actual = by_the_package(
                lambda data=data: fit(data, source=str(path), n_jobs=jobs, **options)
            )
            assert actual == expected, kind

    check()


def test_weights_are_rows_repeated_and_one_row_is_binned_as_many(runs):
    @seed(21)
    @runs
    @given(rows=ROWS)
    def check(rows):
        table = table_of([row for row in rows if row[3] > 0] or rows)
        options = {"target": "default", "attributes": ["x", "y"]}
        try:
            weighted = mb.fit(table, weight="w", **options)
            repeated = mb.fit(table.take(np.repeat(np.arange(len(table)), table["w"])), **options)
        except mb.DataError:
            return
        for name, attribute in weighted.items():
            assert attribute.cut_points == repeated[name].cut_points
            np.testing.assert_array_equal(attribute.class_weights, repeated[name].class_weights)
        numbers = weighted.bin_numbers(table)
        for at, row in enumerate(table.to_pylist()):
            one = weighted.transform_row({name: row[name] for name in weighted})
            assert one == {name: numbers[name][at] for name in weighted}

    check()
