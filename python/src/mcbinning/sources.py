"""Data of any kind as a source of the core, without copies of numeric columns."""

from __future__ import annotations

import sys
from collections.abc import Callable, Iterable, Iterator, Mapping
from decimal import Decimal
from typing import Any

import numpy as np
import numpy.typing as npt

from mcbinning import _core

_NUMERIC_KINDS = "buif"


def source_of(data: Any) -> _core.Source:  # noqa: ANN401
    """Make a source of data of any kind that :func:`mcbinning.fit` takes.

    Raises
    ------
    TypeError
        The data are of no such kind, or sparse.
    ValueError
        Columns differ in length or share a name.
    """
    source = _source_of(data)
    names = source.column_names
    if len(set(names)) != len(names):
        twice = next(name for name in names if names.count(name) > 1)
        raise ValueError(f"two columns are named {twice!r}: rename one of them")
    if "" in names:
        raise ValueError("a column has no name")
    return source


def _source_of(data: Any) -> _core.Source:  # noqa: ANN401
    if _is_from("pandas", "DataFrame", data):
        return _from_pandas(data)
    if isinstance(data, np.ndarray):
        return _from_columns(_columns_of_array(data))
    if isinstance(data, Mapping):
        return _from_columns(data)
    if _is_from("polars", "LazyFrame", data):
        return _from_arrow(data.collect, _core.StreamUse.InTurn)
    if _is_from("pyarrow.dataset", "Dataset", data):
        return _from_arrow(lambda: data.scanner().to_reader(), _core.StreamUse.AtATime)
    if _is_from("duckdb", "DuckDBPyRelation", data):
        return _from_arrow(data.to_arrow_reader, _core.StreamUse.InTurn)
    if hasattr(data, "__arrow_c_stream__"):
        return _core.ArrowBatches(data.__arrow_c_stream__, _use_of(data))
    if type(data).__module__.startswith("scipy.sparse"):
        raise TypeError("sparse data are not supported: convert them with .toarray()")
    if isinstance(data, Iterable) and not isinstance(data, str | bytes):
        return _from_batches(data)
    raise TypeError(
        f"cannot read data of type {type(data).__name__}: give a data frame, an array, a mapping "
        "of columns or anything with __arrow_c_stream__"
    )


def is_read_again(data: Any) -> bool:  # noqa: ANN401
    """Tell whether data are read from where they are stored for every pass over them."""
    return _is_from("pyarrow.dataset", "Dataset", data) or _is_from(
        "duckdb", "DuckDBPyRelation", data
    )


def dataset_of_folder(path: str) -> Any:  # noqa: ANN401
    """Give the Parquet files of a folder as a dataset."""
    import pyarrow.dataset

    return pyarrow.dataset.dataset(path)


def frame_kind(data: Any) -> str:  # noqa: ANN401
    """Name the library whose frames the tables of a model are to be."""
    if _is_from("pandas", "DataFrame", data):
        return "pandas"
    if type(data).__module__.startswith("polars"):
        return "polars"
    if type(data).__module__.startswith(("pyarrow", "duckdb", "_duckdb")):
        return "pyarrow"
    return "dict"


def _is_from(module: str, name: str, data: Any) -> bool:  # noqa: ANN401
    """Tell an instance of a class of a package that need not be there."""
    loaded = sys.modules.get(module)
    return loaded is not None and isinstance(data, getattr(loaded, name, ()))


def _use_of(data: Any) -> _core.StreamUse:  # noqa: ANN401
    """Tell tables from readers; of a kind that is not known nothing is taken for granted."""
    package = type(data).__module__.partition(".")[0]
    if package in ("pyarrow", "polars") and not isinstance(data, Iterator):
        return _core.StreamUse.AtATime
    return _core.StreamUse.Once


def _from_arrow(open_reader: Callable[[], Any], use: _core.StreamUse) -> _core.Source:
    return _core.ArrowBatches(lambda: open_reader().__arrow_c_stream__(), use)


def _from_batches(batches: Iterable[Any]) -> _core.Source:
    """Read Arrow batches one after the other and keep them."""
    import pyarrow as pa

    iterator = iter(batches)
    first = next(iterator, None)
    if first is None:
        raise ValueError("there is no batch")

    def all_batches() -> Iterator[Any]:
        for batch in (first, *iterator):
            yield from pa.table(batch).to_batches()

    reader = pa.RecordBatchReader.from_batches(pa.table(first).schema, all_batches())
    return _core.ArrowBatches(reader.__arrow_c_stream__, _core.StreamUse.Once)


def _columns_of_array(array: npt.NDArray[Any]) -> dict[str, npt.NDArray[Any]]:
    if array.dtype.names:
        return {name: array[name] for name in array.dtype.names}
    if array.ndim != 2:
        raise ValueError(f"an array must have two dimensions, not {array.ndim}")
    return {f"x{column}": array[:, column] for column in range(array.shape[1])}


def _from_columns(columns: Mapping[Any, Any]) -> _core.Source:
    source = _core.MemoryColumns()
    for name, values in columns.items():
        if isinstance(values, np.ndarray):
            if values.ndim != 1:
                raise ValueError(f"column {name} must have one dimension, not {values.ndim}")
            add_array(source, str(name), values)
        elif _is_from("pandas", "Series", values):
            _add_series(source, str(name), values)
        elif hasattr(values, "__arrow_c_stream__") or hasattr(values, "to_numpy"):
            add_array(source, str(name), values.to_numpy())
        else:
            _add_objects(source, str(name), values)
    return source


def add_array(
    source: _core.MemoryColumns,
    name: str,
    values: npt.NDArray[Any],
    mask: npt.NDArray[np.bool_] | None = None,
) -> None:
    """Add a one-dimensional array; `mask` is true where a number is missing."""
    if isinstance(values, np.ma.MaskedArray):
        values, mask = values.data, np.ascontiguousarray(np.ma.getmaskarray(values))
    kind = values.dtype.kind
    if kind in _NUMERIC_KINDS and values.dtype.itemsize <= 8:
        native = values if values.dtype.isnative else values.astype(values.dtype.newbyteorder("="))
        source.add_numbers(name, native, None if mask is None else mask.view(np.uint8))
    elif kind in "OUST":
        cells = values.tolist() if mask is None else np.ma.array(values, mask=mask).tolist()
        _add_objects(source, name, cells)
    elif kind == "M":
        source.add_unfit(name, "it holds points in time, not numbers or texts", len(values))
    elif kind == "m":
        source.add_unfit(name, "it holds durations, not numbers or texts", len(values))
    else:
        raise TypeError(f"column {name} is of type {values.dtype}, which is not supported")


def _add_objects(source: _core.MemoryColumns, name: str, values: Iterable[Any]) -> None:
    cells = [_plain(value, name, row) for row, value in enumerate(values)]
    there = [cell for cell in cells if cell is not None]
    if there and all(isinstance(cell, bool) for cell in there):
        add_array(source, name, np.array(cells, bool), np.array([cell is None for cell in cells]))
    else:
        source.add_objects(name, cells)


def _plain(value: Any, name: str, row: int) -> Any:  # noqa: ANN401
    """Make a scalar one of those that the core takes: str, int, float, bool or None."""
    if isinstance(value, str | float | int | None):
        return value
    if isinstance(value, np.generic):
        return value.item()
    if isinstance(value, bytes):
        try:
            return value.decode()
        except UnicodeDecodeError:
            raise ValueError(f"row {row}: column {name} holds bytes that are no UTF-8") from None
    if isinstance(value, Decimal):
        return None if value.is_nan() else str(value)
    return None if type(value).__name__ in ("NAType", "NaTType") else value


def _from_pandas(frame: Any) -> _core.Source:  # noqa: ANN401
    source = _core.MemoryColumns()
    for position, name in enumerate(frame.columns):
        _add_series(source, str(name), frame.iloc[:, position])
    return source


def _add_series(source: _core.MemoryColumns, name: str, series: Any) -> None:  # noqa: ANN401
    import pandas as pd

    dtype = series.dtype
    array = series.array
    if isinstance(dtype, pd.SparseDtype):
        raise TypeError(f"column {name} is sparse: convert it with .sparse.to_dense()")
    if isinstance(dtype, pd.CategoricalDtype):
        values = [_plain(value, name, row) for row, value in enumerate(dtype.categories)]
        source.add_codes(name, np.asarray(array.codes), values)
    elif isinstance(dtype, np.dtype):
        add_array(source, name, series.to_numpy())
    elif isinstance(
        array, pd.arrays.IntegerArray | pd.arrays.FloatingArray | pd.arrays.BooleanArray
    ):
        add_array(source, name, array._data, array._mask)
    elif isinstance(dtype, pd.DatetimeTZDtype):
        add_array(source, name, np.empty(len(series), "M8[s]"))
    elif pd.api.types.is_numeric_dtype(dtype) and not pd.api.types.is_bool_dtype(dtype):
        add_array(source, name, series.to_numpy(dtype=np.float64, na_value=np.nan))
    else:
        _add_objects(source, name, series.to_numpy(dtype=object))
