"""Nothing is leaked: references, streams, memory, files, threads."""

import gc
import os
import resource
import subprocess
import sys

import numpy as np
import pyarrow as pa
import pytest

import mcbinning as mb


def data():
    x = np.arange(2000.0)
    return {"x": x, "y": x[::-1] % 7, "t": (x % 11 > 4).astype(np.int8)}


class Producer:
    """Counts how many of its streams and batches are alive."""

    def __init__(self, fails=False):
        self.alive = 0
        self.fails = fails
        self.table = pa.table(data())

    def __arrow_c_stream__(self, requested_schema=None):
        def batches():
            self.alive += 1
            try:
                yield from self.table.to_batches(100)
                if self.fails:
                    raise OSError("the disk is gone")
            finally:
                self.alive -= 1

        reader = pa.RecordBatchReader.from_batches(self.table.schema, batches())
        return reader.__arrow_c_stream__()


@pytest.mark.parametrize("jobs", [1, 3])
def test_references_are_given_back(jobs):
    columns = data()
    before = [sys.getrefcount(column) for column in columns.values()]
    model = mb.fit(columns, target="t", n_jobs=jobs)
    model.transform(columns)
    assert [sys.getrefcount(column) for column in columns.values()] == before


def test_references_are_given_back_after_errors():
    def progress(*_):
        raise RuntimeError("enough")

    columns = data()
    columns["s"] = np.array(["a"] * 1999 + [1], object)
    before = [sys.getrefcount(column) for column in columns.values()]
    callback_before = sys.getrefcount(progress)
    with pytest.raises(mb.DataError):
        mb.fit(columns, target="t")
    with pytest.raises(RuntimeError):
        mb.fit(columns, target="t", exclude=["s"], progress=progress)
    gc.collect()
    assert [sys.getrefcount(column) for column in columns.values()] == before
    assert sys.getrefcount(progress) == callback_before


@pytest.mark.parametrize("jobs", [1, 3])
def test_streams_and_batches_are_released(jobs):
    producer = Producer()
    allocated = pa.total_allocated_bytes()
    mb.fit(producer, target="t", n_jobs=jobs)
    gc.collect()
    assert producer.alive == 0
    assert pa.total_allocated_bytes() == allocated


def test_streams_are_released_after_a_failure():
    producer = Producer(fails=True)
    with pytest.raises(mb.DataError, match="the disk is gone"):
        mb.fit(producer, target="t")
    gc.collect()
    assert producer.alive == 0


def test_a_capsule_that_nobody_reads_is_released():
    producer = Producer()
    capsule = producer.__arrow_c_stream__()
    del capsule
    gc.collect()
    assert producer.alive == 0


def test_a_thousand_fits_do_not_grow():
    columns = data()
    table = pa.table(columns)

    def fits(count):
        for turn in range(count):
            mb.fit(columns, target="t", n_jobs=1 + turn % 2)
            mb.fit(table, target="t").transform(table)
            with pytest.raises(mb.DataError):
                mb.fit(columns, target="y", n_jobs=2, missing={"y": list(range(7))})

    def resident():
        with open("/proc/self/statm") as file:
            return int(file.read().split()[1]) * resource.getpagesize()

    fits(20)
    gc.collect()
    before, open_before = resident(), len(os.listdir("/proc/self/fd"))
    fits(330)
    gc.collect()
    assert resident() - before < 4_000_000
    assert len(os.listdir("/proc/self/fd")) == open_before


def test_the_extension_tells_of_no_leak_when_the_interpreter_ends():
    program = (
        "import mcbinning as mb\n"
        "m = mb.fit({'x': range(9), 't': [0] * 5 + [1] * 4}, target='t')\n"
        "m.transform({'x': [1]})"
    )
    command = [sys.executable, "-c", program]
    assert subprocess.run(command, check=True, capture_output=True, text=True).stderr == ""
