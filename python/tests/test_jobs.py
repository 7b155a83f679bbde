"""Any number of threads gives the same model."""

import threading

import nanoarrow as na
import numpy as np
import pandas as pd
import polars as pl
import pyarrow as pa
import pyarrow.dataset
import pytest

import mcbinning as mb
from mcbinning.sklearn import EqualFrequencyBinner, SupervisedBinner


def table(rows=20_000):
    rng = np.random.default_rng(5)
    noise = {f"x{i}": rng.normal(size=rows).round(i) for i in range(5)}
    noise["x3"][::7] = np.nan
    target = np.where(noise["x0"] + noise["x4"] > rng.normal(size=rows), "yes", "no")
    return {**noise, "w": rng.integers(0, 4, rows), "t": target}


KINDS = {
    "arrays": lambda t: t,
    "pandas": pd.DataFrame,
    "polars": pl.DataFrame,
    "polars lazy": pl.LazyFrame,
    "pyarrow": pa.table,
    "reader": lambda t: pa.table(t).to_reader(999),
    "batches": lambda t: iter(pa.table(t).to_batches(999)),
    "dataset": lambda t: pyarrow.dataset.dataset(pa.table(t)),
    "nanoarrow": lambda t: na.ArrayStream(pa.table(t)),
}


@pytest.mark.parametrize("kind", KINDS)
def test_the_model_does_not_depend_on_the_number_of_jobs(kind):
    data = table()
    options = {"target": "t", "weight": "w", "missing": {"x0": [0.0]}}
    alone = mb.fit(data, **options)
    for jobs in (1, 2, 7, -1):
        assert mb.fit(KINDS[kind](data), n_jobs=jobs, **options) == alone
    alone = mb.fit_equal_frequency(data, exclude=["t"])
    assert mb.fit_equal_frequency(KINDS[kind](data), exclude=["t"], n_jobs=7) == alone


def test_a_relation_gives_the_same_with_several_jobs():
    duckdb = pytest.importorskip("duckdb")
    data = table()
    relation = duckdb.from_arrow(pa.table(data))
    assert mb.fit(relation, target="t", n_jobs=3) == mb.fit(data, target="t")


def test_estimators_take_n_jobs():
    data = table(2000)
    X, y = np.column_stack([data[f"x{i}"] for i in range(5)]), data["t"]
    assert SupervisedBinner(n_jobs=3).fit(X, y).model_ == SupervisedBinner().fit(X, y).model_
    assert EqualFrequencyBinner(n_jobs=3).fit(X).model_ == EqualFrequencyBinner().fit(X).model_


@pytest.mark.parametrize("jobs", [0, -2])
def test_a_number_of_jobs_that_makes_no_sense(jobs):
    with pytest.raises(mb.OptionError, match="n_jobs must be at least 1"):
        mb.fit(table(10), target="t", n_jobs=jobs)


def test_what_progress_raises_ends_all_jobs(tmp_path, monkeypatch):
    monkeypatch.setenv("TMPDIR", str(tmp_path))

    def progress(*_):
        raise RuntimeError("enough")

    threads = threading.active_count()
    with pytest.raises(RuntimeError, match="enough"):
        mb.fit(table(300_000), target="t", n_jobs=4, progress=progress)
    assert not list(tmp_path.iterdir())
    assert threading.active_count() == threads


@pytest.mark.parametrize("jobs", [1, 3])
def test_a_frame_that_another_thread_changes_gives_a_model_that_adds_up_or_an_error(jobs):
    data = table(50_000)
    done = threading.Event()

    def scramble():
        rng = np.random.default_rng(3)
        while not done.is_set():
            rows = rng.integers(0, 50_000, 100)
            data["t"][rows] = rng.choice(["no", "yes", "new"] if rng.random() < 0.01 else ["no"])
            data["w"][rows] = 5
            data["x3"][rows] = rng.choice([np.nan, np.inf, 1.0])

    meddler = threading.Thread(target=scramble)
    meddler.start()
    try:
        for _ in range(10):
            try:
                model = mb.fit(data, target="t", weight="w", n_jobs=jobs)
            except mb.DataError as error:
                assert "changed while" in str(error)  # noqa: PT017
                continue
            totals = {attribute.weights.sum() for attribute in model.values()}
            assert len(totals) == 1
    finally:
        done.set()
        meddler.join()
