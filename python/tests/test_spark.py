"""A Spark frame gives the model of the same rows in memory."""

import os
import pickle
import subprocess
import sys
from decimal import Decimal

import numpy as np
import pyarrow as pa
import pyarrow.csv
import pytest

import mcbinning as mb
from mcbinning import counting, spark_worker
from mcbinning import spark as engine

pytest.importorskip("pyspark")
LOANS = {"target": "default", "weight": "weight", "exclude": ["grade"]}
LOANS["missing"] = {"income": [-1], "employment_years": [999]}


@pytest.fixture(scope="module")
def session(tmp_path_factory):
    from pyspark.sql import SparkSession

    os.environ["PYSPARK_PYTHON"] = sys.executable
    builder = SparkSession.builder.master("local[2,4]")
    options = {
        "spark.ui.enabled": "false",
        "spark.driver.host": "127.0.0.1",
        "spark.driver.memory": "1g",
        "spark.executor.memory": "1g",
        "spark.sql.shuffle.partitions": "2",
        "spark.local.dir": str(tmp_path_factory.mktemp("spark")),
        "spark.sql.warehouse.dir": str(tmp_path_factory.mktemp("warehouse")),
        "spark.speculation": "true",
    }
    for name, value in options.items():
        builder = builder.config(name, value)
    session = builder.getOrCreate()
    session.sparkContext.setLogLevel("OFF")
    yield session
    session.stop()


def rows(size=30_000, seed=16):
    rng = np.random.default_rng(seed)
    x = rng.normal(size=size)
    declared = np.where(rng.random(size) < 0.1, -1.0, x.round(3))
    return pa.table(
        {
            "noise": rng.normal(size=size),
            "slope": pa.array(x + rng.normal(size=size), mask=rng.random(size) < 0.05),
            "steps": np.floor(3 * x).astype(np.float32),
            "few": rng.integers(0, 4, size),
            "odd": rng.choice([-0.0, 0.0, 1.0, np.inf, -np.inf, np.nan], size),
            "declared": declared,
            "money": pa.array([Decimal(int(v)).scaleb(-2) for v in 1000 * x], pa.decimal128(9, 2)),
            "text": pa.array([f" {v:.2f}" if v > -2 else "NA" for v in x]),
            "word": rng.choice(["a", "b"], size),
            "day": pa.array(rng.integers(0, 9, size), pa.int32()).cast(pa.date32()),
            "flag": x > 1,
            "w": rng.integers(0, 9, size) / 2,
            "t": pa.array(np.where(x > rng.normal(size=size), "yes", "no"), mask=x < -2.5),
            "classes": pa.array(rng.integers(0, 5, size) / 2, mask=rng.random(size) < 0.1),
        }
    )


@pytest.mark.spark
@pytest.mark.parametrize("partitions", [1, 12])
def test_loans_give_the_bytes_of_the_program(session, loans, mcbin, partitions):
    expected = mcbin(
        "fit", loans, "--json", "--target=default", "--weight=weight", "--exclude=grade",
        "--missing=income=-1", "--missing=employment_years=999",
    )  # fmt: skip
    frame = session.read.csv(loans, header=True, inferSchema=True).repartition(partitions)
    tasks = []
    model = mb.fit(frame, source=loans, progress=lambda task, *_: tasks.append(task), **LOANS)
    assert model.to_json() == expected
    assert tasks[0].startswith("round 1: 7 of 7 attributes")


def test_a_worker_needs_nothing_of_the_package():
    from pyspark import cloudpickle

    engine.send_by_value()
    item = (0, np.array([1.0, 2.0]), np.empty(0), np.empty(0), False)
    count = spark_worker.counter(counting.Question([item], 1, [([], None)]), False, False, None)
    code = (
        "import sys, pickle; sys.modules['mcbinning'] = None\n"
        "import pyarrow as pa\n"
        "count = pickle.load(sys.stdin.buffer)\n"
        "batch = pa.RecordBatch.from_arrays([pa.array([0.5, 2.0, None])], ['x0'])\n"
        "sys.stdout.buffer.write(next(count(iter([batch])))['sums'][0].as_py())"
    )
    run = subprocess.run(
        [sys.executable, "-c", code],
        input=cloudpickle.dumps(count),
        capture_output=True,
        check=True,
    )
    assert np.frombuffer(run.stdout).tolist() == [3, 0, 3, 1, 0, 0, 1, 0, 1, 0]
    assert pickle.loads(cloudpickle.dumps(counting.add)) is not counting.add


@pytest.mark.spark
def test_transform_is_sql_without_python(session):
    table = rows(500)
    model = mb.fit(table, target="t", weight="w", missing={"declared": [-1, 77]})
    frame = model.transform(session.createDataFrame(table))
    assert frame.columns[: len(table.column_names)] == table.column_names
    plan = frame._jdf.queryExecution().toString()
    assert "Python" not in plan
    assert "InArrow" not in plan
    actual = frame.toPandas()
    expected = model.transform(table).to_pydict()
    for name, values in expected.items():
        assert actual[name].tolist() == values, name
    with pytest.raises(mb.OptionError, match="Spark frame encode is index, interval or woe"):
        model.transform(session.createDataFrame(table), "onehot")
