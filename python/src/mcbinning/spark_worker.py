"""What the workers of a Spark cluster do; sent to them, as is :mod:`mcbinning.counting`."""

from __future__ import annotations

from collections.abc import Callable, Iterator
from typing import Any

import numpy as np

from mcbinning import counting
from mcbinning.counting import Answer, Question

_FIELDS = ("sums", "lows", "highs", "items", "numbers", "codes", "weights")
SCHEMA = ", ".join(f"{field} binary" for field in _FIELDS)
_TYPES = (np.float64, np.float64, np.float64, np.int32, np.float64, np.int32, np.float64)

Batches = Iterator[Any]


def counter(
    question: Question, has_target: bool, has_weight: bool, version: str | None
) -> Callable[[Batches], Batches]:
    """Make the function that answers for a partition.

    Its batches have the columns of the items, in their order, before them ``code`` and ``weight``
    when there are such. Workers with the package of `version` count natively; None for none.
    """

    def count_partition(batches: Batches) -> Batches:
        count = native_count(version) or counting.count
        answer = None
        for batch in batches:
            columns = [_doubles(column) for column in batch.columns[has_target + has_weight :]]
            codes = np.asarray(batch.columns[0].to_numpy()) if has_target else None
            weights = _doubles(batch.columns[int(has_target)]) if has_weight else None
            part = count(question, codes, weights, columns)
            answer = part if answer is None else counting.add(answer, part)
        if answer is not None:
            yield _batch(answer)

    return count_partition


def add_partition(batches: Batches) -> Batches:
    """Add up the answers in a partition."""
    total = None
    for batch in batches:
        for answer in answers_of(batch):
            total = answer if total is None else counting.add(total, answer)
    if total is not None:
        yield _batch(total)


def answers_of(table: Any) -> Iterator[Answer]:  # noqa: ANN401
    """Read the answers that the rows of an Arrow table or batch hold."""
    for row in zip(*(column.to_pylist() for column in table.columns), strict=True):
        yield tuple(np.frombuffer(b, t) for b, t in zip(row, _TYPES, strict=True))  # type: ignore[misc]


def native_count(version: str | None) -> Callable[..., Answer] | None:
    """Give the counting of the core when this process has the package of that version."""
    try:
        from mcbinning import _core
    except ImportError:
        return None
    if _core.version != version:
        return None

    def count(question: Question, codes: Any, weights: Any, columns: Any) -> Answer:  # noqa: ANN401
        rules = []
        for values, limits in question.missing:
            rule = _core.MissingRules()
            rule.values, rule.range = list(values), limits
            rules.append(rule)
        answer: Any = _core.count_items(
            list(question.items), question.classes, rules, codes, weights, columns
        )
        return answer  # type: ignore[no-any-return]

    return count


def _doubles(column: Any) -> counting.Doubles:  # noqa: ANN401
    """Give numbers of which a missing one is NaN."""
    return np.ascontiguousarray(column.to_numpy(zero_copy_only=False), np.float64)


def _batch(answer: Answer) -> Any:  # noqa: ANN401
    import pyarrow as pa

    return pa.RecordBatch.from_arrays([pa.array([part.tobytes()]) for part in answer], _FIELDS)
