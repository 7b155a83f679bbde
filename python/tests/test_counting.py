"""Counting with NumPy alone gives what the core counts."""

import numpy as np
from hypothesis import given, seed, settings
from hypothesis import strategies as st

from mcbinning import _core, counting, spark_worker

VALUES = st.sampled_from([-np.inf, -2.0, -0.0, 0.0, 1.0, 1.5, 7.0, np.inf, np.nan])


@seed(17)
@settings(max_examples=200, deadline=None, database=None)
@given(
    cases=st.lists(st.tuples(st.integers(-1, 2), st.integers(1, 5), VALUES, VALUES), max_size=30),
    cut=st.integers(0, 30),
    borders=st.sets(st.sampled_from([-np.inf, -2.0, 0.0, 1.5, 7.0, np.inf])),
)
def test_counting_with_numpy_is_counting_natively(cases, cut, borders):
    codes = np.array([case[0] for case in cases], np.int32)
    weights = np.array([case[1] for case in cases], np.float64)
    columns = [np.array([case[k] for case in cases], np.float64) for k in (2, 3)]
    ends = np.array(sorted({border + 0.0 for border in borders}))
    none = np.empty(0)
    items = [(1, ends, ends[:-1], ends[1:], True), (0, ends[::2], none, none, False)]
    question = counting.Question(items, 3, [([1.5], None), ([], (6.0, np.inf))])
    native = spark_worker.native_count(_core.version)
    for has_codes in (True, False):
        own = codes if has_codes else None
        whole = counting.add(
            counting.count(question, None if own is None else own[:cut], weights[:cut],
                           [column[:cut] for column in columns]),
            counting.count(question, None if own is None else own[cut:], weights[cut:],
                           [column[cut:] for column in columns]),
        )  # fmt: skip
        expected = counting.add(
            native(question, own, weights, columns),
            counting.count(question, own if own is None else own[:0], weights[:0],
                           [column[:0] for column in columns]),
        )  # fmt: skip
        for actual, other in zip(whole, expected, strict=True):
            np.testing.assert_array_equal(actual, other)
