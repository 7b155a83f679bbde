"""Answers of parts of a table to a question, with NumPy alone, to be added up in any order.

An answer is the tuple of arrays that the core calls a plain answer: sums, extremes,
and of fetched values the item that asked, the value, the class and the weight. This module is sent
to the workers of a cluster, which need not have the package: it imports nothing of it.
"""

from __future__ import annotations

from collections.abc import Sequence
from dataclasses import dataclass
from typing import Any

import numpy as np
import numpy.typing as npt

Doubles = npt.NDArray[np.float64]
Codes = npt.NDArray[np.int32]
Item = tuple[int, Doubles, Doubles, Doubles, bool]
Answer = tuple[Doubles, Doubles, Doubles, Codes, Doubles, Codes, Doubles]
Range = tuple[float, float] | None


@dataclass(frozen=True)
class Question:
    """What a round asks of every part."""

    items: Sequence[Item]
    """Attribute, borders, low and high ends of ranges, unused; see ``BINAttributeQuestion``."""
    classes: int
    """How many classes the target has; 1 without a target."""
    missing: Sequence[tuple[Sequence[float], Range]]
    """The values, and a range, that are declared missing, by attribute."""


def count(
    question: Question, codes: Codes | None, weights: Doubles | None, columns: Sequence[Doubles]
) -> Answer:
    """Answer for some cases.

    Parameters
    ----------
    question
        What is asked.
    codes
        The class of each case, negative for none; None without a target.
    weights
        Positive whole numbers; None for 1 each.
    columns
        The values of each item's attribute; NaN is missing.
    """
    size = len(columns[0])
    codes = np.zeros(size, np.int32) if codes is None else codes
    weights = np.ones(size) if weights is None else weights
    classes = question.classes
    known = codes >= 0
    sums: list[Doubles] = [
        np.array([size, weights[~known].sum()], np.float64),
        _by_class(codes[known], weights[known], classes),
    ]
    lows, highs = [], []
    fetched: list[tuple[Any, ...]] = []
    for place, (item, column) in enumerate(zip(question.items, columns, strict=True)):
        attribute, borders, starts, ends, _ = item
        values, own, heavy = column[known] + 0.0, codes[known], weights[known]
        missing = np.isnan(values)
        declared = _declared(values, *question.missing[attribute])
        there = ~(missing | declared)
        beside = [_by_class(own[part], heavy[part], classes) for part in (missing, declared)]
        values, own, heavy = values[there], own[there], heavy[there]
        # Borders below a value, and borders not above it, add up to the number of its cell.
        cells = np.searchsorted(borders, values, "left") + np.searchsorted(borders, values, "right")
        keys = cells * classes + own
        sums.append(_by_class(keys, heavy, (2 * len(borders) + 1) * classes))
        sums += beside
        lows.append(values.min(initial=np.inf))
        highs.append(values.max(initial=-np.inf))
        if len(starts):
            at = np.searchsorted(starts, values, "left") - 1
            inside = (at >= 0) & (values < ends[at])
            fetched.append((place, values[inside], own[inside], heavy[inside]))
    items = np.concatenate([np.full(len(v), p, np.int32) for p, v, _, _ in fetched] or [_NO_CODES])
    joined = [np.concatenate([part[k] for part in fetched] or [_NO_DOUBLES]) for k in (1, 2, 3)]
    merged = _merged(items, joined[0], joined[1].astype(np.int32), joined[2])
    return (np.concatenate(sums), np.array(lows), np.array(highs), *merged)


def add(first: Answer, second: Answer) -> Answer:
    """Add up the answers of two parts."""
    values = [np.concatenate([a, b]) for a, b in zip(first[3:], second[3:], strict=True)]
    return (
        first[0] + second[0],
        np.minimum(first[1], second[1]),
        np.maximum(first[2], second[2]),
        *_merged(*values),
    )


_NO_CODES = np.empty(0, np.int32)
_NO_DOUBLES = np.empty(0)


def _by_class(codes: npt.NDArray[Any], weights: Doubles, classes: int) -> Doubles:
    return np.bincount(codes, weights, classes).astype(np.float64)


def _declared(values: Doubles, discrete: Sequence[float], limits: Range) -> npt.NDArray[np.bool_]:
    declared = np.isin(values, np.array(discrete, np.float64))
    if limits is not None:
        declared |= (limits[0] <= values) & (values <= limits[1])
    return declared


def _merged(
    items: Codes, values: Doubles, codes: Codes, weights: Doubles
) -> tuple[Codes, Doubles, Codes, Doubles]:
    """Give each value of an item and class once."""
    if not len(items):
        return items, values, codes, weights
    order = np.lexsort((codes, values, items))
    items, values, codes, weights = items[order], values[order], codes[order], weights[order]
    is_new = np.ones(len(items), bool)
    is_new[1:] = (items[1:] != items[:-1]) | (values[1:] != values[:-1]) | (codes[1:] != codes[:-1])
    return (
        items[is_new],
        values[is_new],
        codes[is_new],
        np.add.reduceat(weights, is_new.nonzero()[0]),
    )
