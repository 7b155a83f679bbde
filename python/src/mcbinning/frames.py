"""Tables as frames of the library that the data came in."""

from __future__ import annotations

from typing import Any

import numpy as np
import numpy.typing as npt

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


def shares(parts: npt.NDArray[np.float64], total: Any) -> npt.NDArray[np.float64]:  # noqa: ANN401
    """Divide by totals; 0 where a total is 0.

    Examples
    --------
    >>> shares(np.array([1.0, 3.0]), 4.0)
    array([0.25, 0.75])
    """
    totals = np.broadcast_to(total, parts.shape)
    result = np.zeros(parts.shape)
    np.divide(parts, totals, out=result, where=totals > 0)
    return result
