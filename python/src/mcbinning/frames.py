"""Tables as frames of the library that the data came in."""

from __future__ import annotations

from typing import Any

import numpy as np

KINDS = ("pandas", "polars", "pyarrow", "dict")


def frame(columns: dict[str, Any], kind: str) -> Any:  # noqa: ANN401
    """Make a frame of `kind` from columns of equal length.

    Examples
    --------
    >>> frame({"a": [1, 2]}, "dict")
    {'a': array([1, 2])}
    """
    if kind == "pandas":
        import pandas as pd

        return pd.DataFrame(columns)
    if kind == "polars":
        import polars as pl

        return pl.DataFrame(columns)
    if kind == "pyarrow":
        import pyarrow as pa

        return pa.table(columns)
    return {name: np.asarray(values) for name, values in columns.items()}


def row_index(data: Any, kind: str) -> Any:  # noqa: ANN401
    """Give the index of a pandas frame, else None."""
    return data.index if kind == "pandas" else None
