"""Data that are read again for every round give the model of the same data in memory."""

import duckdb
import numpy as np
import pyarrow as pa
import pyarrow.dataset
import pyarrow.parquet
import pytest
from hypothesis import HealthCheck, given, seed, settings
from hypothesis import strategies as st

import mcbinning as mb
from mcbinning import fitting
from test_random_tables import OPTIONS, ROWS, SUPERVISED, table_of


@pytest.fixture(autouse=True)
def in_rounds(monkeypatch):
    """However few rows there are."""
    monkeypatch.setattr(fitting, "ROUNDS_FROM", 0)


def outcome(fit, data, **options):
    try:
        return fit(data, **options).to_json()
    except mb.DataError as error:
        return str(error)


@pytest.mark.filterwarnings("ignore:column .* no case")
def test_any_batches_and_threads_give_the_model_of_memory(request):
    @seed(16)
    @settings(
        max_examples=10 * request.config.getoption("--random-tables"),
        deadline=None,
        database=None,
        suppress_health_check=list(HealthCheck),
    )
    @given(
        rows=ROWS,
        options=OPTIONS,
        supervised=st.none() | SUPERVISED,
        size=st.integers(1, 70),
        jobs=st.integers(1, 4),
    )
    def check(rows, options, supervised, size, jobs):
        table = table_of(rows)
        if supervised is None:
            fit, options = mb.fit_equal_frequency, {**options, "exclude": ["default"], "bins": 3}
        else:
            fit, options = mb.fit, {**options, **supervised, "target": "default"}
        expected = outcome(fit, table, **options)
        batches = pa.Table.from_batches(table.to_batches(size), table.schema)
        for data in (pyarrow.dataset.dataset(batches), duckdb.from_arrow(batches)):
            assert outcome(fit, data, n_jobs=jobs, **options) == expected

    check()


def many_rows(rows=200_000):
    rng = np.random.default_rng(16)
    x = rng.normal(size=rows)
    columns = {
        "noise": rng.normal(size=rows),
        "slope": x + rng.normal(size=rows),
        "steps": np.floor(3 * x).astype(np.float32),
        "few": rng.integers(0, 4, rows),
        "w": rng.integers(0, 4, rows),
        "t": np.where(x > 0.3 * rng.normal(size=rows), "yes", "no"),
    }
    return pa.table(columns)


def test_a_folder_of_parquet_is_counted_round_by_round(tmp_path):
    table = many_rows()
    for part in range(3):
        rows = table.slice(part * 70_000, 70_000)
        pyarrow.parquet.write_table(rows, tmp_path / f"{part}.parquet", row_group_size=9_000)
    tasks = []
    model = mb.fit(
        tmp_path, target="t", weight="w", n_jobs=3, progress=lambda task, *rest: tasks.append(task)
    )
    assert model == mb.fit(table, target="t", weight="w", source=str(tmp_path))
    assert any(task.startswith("round 1: 4 of 4 attributes") for task in tasks)
    assert any("of their weight" in task for task in tasks)


def test_an_interrupt_ends_a_round():
    def stop(task, *rest):
        raise KeyboardInterrupt

    with pytest.raises(KeyboardInterrupt):
        mb.fit(pyarrow.dataset.dataset(many_rows()), target="t", progress=stop)


def test_numbers_that_doubles_do_not_tell_apart_are_refused_by_name():
    ids = {"id": [2**53 + 1, 1, 2, 3], "t": ["a", "a", "b", "b"]}
    with pytest.raises(mb.DataError, match=r"column id: numbers as large as 9007199254740992 have"):
        mb.fit(pyarrow.dataset.dataset(pa.table(ids)), target="t")
    ids["id"][0] = 2**53 - 1
    assert len(mb.fit(pyarrow.dataset.dataset(pa.table(ids)), target="t")) == 1
    money = {"m": pa.array([10**13, 1, 2, 3], pa.decimal128(18, 2)), "t": ids["t"]}
    with pytest.raises(mb.DataError, match=r"column m: numbers as large as 10000000000000 have"):
        mb.fit(pyarrow.dataset.dataset(pa.table(money)), target="t")


def test_weights_are_rounded_first_and_may_not_add_up_to_too_much():
    table = pa.table({"x": [1, 2, 3, 4], "w": [0.9, 1.9, 2.5, 7.0], "t": ["a", "a", "b", "b"]})
    for rounding in ("truncate", "round"):
        options = {"target": "t", "weight": "w", "weight_rounding": rounding}
        assert mb.fit(pyarrow.dataset.dataset(table), **options) == mb.fit(table, **options)
    heavy = table.set_column(1, "w", pa.array([2.0**53, 1, 1, 1]))
    with pytest.raises(mb.DataError, match=r"the weights in column w add up to 2\^53 or more"):
        mb.fit(pyarrow.dataset.dataset(heavy), target="t", weight="w")


def test_data_that_change_between_rounds_end_in_an_error():
    connection = duckdb.connect()
    arrow = many_rows()  # noqa: F841
    connection.execute("create table loans as select * from arrow")

    def change(task, *rest):
        if task.startswith("round"):
            connection.cursor().execute("update loans set t = 'yes' where few = 1")

    with pytest.raises(mb.DataError, match="changed while it was read"):
        mb.fit(connection.table("loans"), target="t", progress=change)
