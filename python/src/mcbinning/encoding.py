"""What stands for a bin in a column."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, Literal

import numpy as np
import numpy.typing as npt

if TYPE_CHECKING:
    from mcbinning.model import Attribute

Encoding = Literal["index", "interval", "bounds", "onehot", "woe"]
Dialect = Literal["sqlite", "postgresql", "duckdb", "spark", "ansi"]


def one_hot_suffixes(bins: int) -> list[str]:
    """Name the columns of an attribute with so many bins.

    Examples
    --------
    >>> one_hot_suffixes(2)
    ['0', '1', 'missing', 'user_missing']
    """
    return [*map(str, range(bins)), "missing", "user_missing"]


def encoded(
    attribute: Attribute, numbers: npt.NDArray[np.int32], encode: Encoding
) -> dict[str, Any]:
    """Give the columns that stand for the bin numbers of an attribute."""
    name = attribute.name
    bins = len(attribute.cut_points) + 1
    # Rows stand as in the tables: bins, missing, user-missing.
    rows = np.where(numbers < 0, bins - 1 - numbers, numbers)
    if encode == "index":
        return {f"{name}_bin": numbers}
    if encode == "interval":
        return {f"{name}_bin": np.array(attribute.labels, dtype=object)[rows]}
    if encode == "bounds":
        lower = np.array([-np.inf, *attribute.cut_points, np.nan, np.nan])
        upper = np.array([*attribute.cut_points, np.inf, np.nan, np.nan])
        return {f"{name}_lower": lower[rows], f"{name}_upper": upper[rows]}
    if encode == "onehot":
        suffixes = one_hot_suffixes(bins)
        return {f"{name}_{s}": (rows == at).astype(np.int8) for at, s in enumerate(suffixes)}
    if encode == "woe":
        evidence = attribute.weight_of_evidence
        if evidence is None:
            raise ValueError("weights of evidence need a target with two classes")
        return {f"{name}_woe": evidence[rows]}
    raise ValueError(f"encode is index, interval, bounds, onehot or woe, not {encode!r}")
