"""Every kind of input gives the model that mcbin makes of the CSV of the same data."""

import datetime
import decimal

import duckdb
import nanoarrow as na
import numpy as np
import pandas as pd
import polars as pl
import pyarrow as pa
import pyarrow.csv
import pyarrow.dataset
import pyarrow.parquet
import pytest

import mcbinning as mb

OPTIONS = {
    "target": "default",
    "weight": "weight",
    "exclude": ["grade"],
    "missing": {"income": [-1], "employment_years": [999]},
}


class Stream:
    """Nothing but the Arrow C stream protocol, and only once."""

    def __init__(self, table):
        self._capsule = table.__arrow_c_stream__()

    def __arrow_c_stream__(self, requested_schema=None):
        return self._capsule


def structured(frame):
    records = frame.to_records(index=False)
    return np.ma.getdata(records).view(np.ndarray)


KINDS = {
    "pandas": lambda t: t.to_pandas(),
    "pandas with its own dtypes": lambda t: t.to_pandas().convert_dtypes(),
    "pandas with categories": lambda t: t.to_pandas().astype({"default": "category"}),
    "pandas with arrow dtypes": lambda t: t.to_pandas(types_mapper=pd.ArrowDtype),
    "polars": pl.from_arrow,
    "polars in chunks": lambda t: pl.concat(map(pl.from_arrow, t.to_batches(97)), rechunk=False),
    "polars lazy": lambda t: pl.from_arrow(t).lazy(),
    "pyarrow": lambda t: t,
    "pyarrow slices": lambda t: pa.concat_tables([t.slice(0, 5), t.slice(5, 0), t.slice(5)]),
    "dictionary": lambda t: t.set_column(
        t.column_names.index("default"), "default", t["default"].dictionary_encode()
    ),
    "large strings": lambda t: t.cast(
        pa.schema(
            [f.with_type(pa.large_string()) if f.type == pa.string() else f for f in t.schema]
        )
    ),
    "reader": lambda t: t.to_reader(333),
    "batches": lambda t: iter(t.to_batches(333)),
    "dataset": pyarrow.dataset.dataset,
    "relation": duckdb.from_arrow,
    "nanoarrow": na.ArrayStream,
    "mapping of lists": lambda t: t.to_pydict(),
    "mapping of arrays": lambda t: {n: t[n].to_numpy() for n in t.column_names},
    "structured array": lambda t: structured(t.to_pandas()),
}


@pytest.mark.parametrize("kind", KINDS)
def test_every_kind_gives_the_bytes_of_the_program(kind, loans, mcbin):
    expected = mcbin(
        "fit", loans, "--json", "--target=default", "--weight=weight", "--exclude=grade",
        "--missing=income=-1", "--missing=employment_years=999",
    )  # fmt: skip
    table = pyarrow.csv.read_csv(loans)
    assert mb.fit(KINDS[kind](table), source=loans, **OPTIONS).to_json() == expected


def test_a_file_is_read_as_the_program_reads_it(loans, mcbin):
    expected = mcbin("fit", loans, "--json", "--equal-frequency", "--bins=4", "--attribute=age")
    assert mb.fit_equal_frequency(loans, bins=4, attributes=["age"]).to_json() == expected


def test_a_stream_is_taken_once(loans):
    table = pyarrow.csv.read_csv(loans)
    stream = Stream(table)
    assert len(mb.fit(stream, **OPTIONS)) == 7
    with pytest.raises(ValueError, match="consumed before"):
        mb.fit(stream, **OPTIONS)


def test_a_parquet_data_set_is_read_twice_and_not_kept(loans, tmp_path):
    table = pyarrow.csv.read_csv(loans)
    pyarrow.parquet.write_table(table, tmp_path / "a.parquet", row_group_size=100)
    data = pyarrow.dataset.dataset(tmp_path)
    assert mb.fit(data, **OPTIONS) == mb.fit(table, **OPTIONS)


WHOLE = ["int8", "uint8", "int16", "uint16", "int32", "uint32", "int64", "uint64"]


@pytest.mark.parametrize("dtype", [*WHOLE, "float16", "float32", "float64", ">f8", ">i4"])
@pytest.mark.parametrize("layout", ["plain", "strided", "backwards", "fortran"])
def test_numbers_of_every_width_and_layout(dtype, layout):
    values = (np.arange(60) * 7 % 60).astype(dtype)
    expected = mb.fit({"x": values.astype(float), "t": values > 30}, target="t")
    block = np.zeros((60, 3), dtype=dtype, order="F" if layout == "fortran" else "C")
    block[:, 1] = values[::-1] if layout == "backwards" else values
    column = {"plain": values, "backwards": block[::-1, 1]}.get(layout, block[:, 1])
    assert mb.fit({"x": column, "t": values > 30}, target="t") == expected
    if "1" not in dtype and dtype[0] != ">":
        assert mb.fit(pa.table({"x": values, "t": values > 30}), target="t") == expected


def test_masked_cells_are_missing():
    mask = np.arange(60) % 7 == 0
    x = np.arange(60.0)
    classes = np.where(x > 30, "b", "a")
    masked = {"x": np.ma.array(x, mask=mask), "t": np.ma.array(classes, mask=mask[::-1])}
    plain = {"x": np.where(mask, np.nan, x), "t": np.where(mask[::-1], None, classes)}
    assert mb.fit(masked, target="t") == mb.fit(plain, target="t")
    block = np.ma.array([x, x[::-1] > 30], mask=[mask, mask & False]).T
    expected = mb.fit({"x0": plain["x"], "x1": block[:, 1].data}, target="x1")
    assert mb.fit(block, target="x1") == expected


def test_numeric_columns_are_not_copied():
    values = np.arange(1000.0)
    values.flags.writeable = False
    assert len(mb.fit({"x": values, "t": values > 5}, target="t")) == 1


def test_truth_values_are_numbers_as_attributes_and_words_as_classes():
    data = pa.table({"b": [True, False, None] * 20, "t": [True, False, False] * 20})
    model = mb.fit(data, target="t")
    assert model.classes == ["false", "true"]
    assert model["b"].cut_points == [0.0]
    assert model["b"].weights.tolist() == [20, 20, 20, 0]
    assert mb.fit(data.to_pandas(), target="t") == model
    assert mb.fit(data.to_pydict(), target="t") == model


def test_decimals_are_what_their_texts_say():
    numbers = [decimal.Decimal(i).scaleb(-2) for i in range(-20, 20)]
    data = {"t": [i > 3 for i in range(40)]}
    expected = mb.fit({"x": [float(n) for n in numbers], **data}, target="t")
    for decimals in (pa.decimal128(9, 2), pa.decimal64(9, 2), pa.decimal32(9, 2)):
        assert mb.fit(pa.table({"x": pa.array(numbers, decimals), **data}), target="t") == expected
    assert mb.fit({"x": numbers, **data}, target="t") == expected


@pytest.mark.parametrize(
    ("values", "why"),
    [
        (pa.array([datetime.date(2020, 1, 1)] * 2), "it holds dates"),
        (pa.array([datetime.datetime(2020, 1, 1)] * 2), "it holds points in time"),
        (pa.array([datetime.timedelta(1)] * 2), "it holds durations"),
        (pa.array([[1], [2]]), "it holds lists, structs or the like"),
        (pa.array([b"a", b"b"]), "it holds bytes"),
        (np.array(["2020-01-01"] * 2, "M8[D]"), "it holds points in time"),
        (pd.Series(pd.to_datetime(["2020-01-01"] * 2, utc=True)), "it holds points in time"),
    ],
)
def test_other_types_are_left_out_and_refused_as_target(values, why):
    data = {"x": np.array([1, 2]), "d": values, "t": np.array([0, 1])}
    if isinstance(values, pa.Array):
        data = pa.table(data)
    assert mb.fit(data, target="t").left_out == {"d": f"{why}, not numbers or texts"}
    with pytest.raises(mb.DataError, match=f"column d: {why}"):
        mb.fit(data, target="d")
