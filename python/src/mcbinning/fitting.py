"""Fitting models."""

from __future__ import annotations

import os
import warnings
from collections.abc import Iterable, Mapping, Sequence
from typing import Any, Literal, cast

import numpy as np

from mcbinning import _core
from mcbinning.errors import OptionError, in_python_words
from mcbinning.model import Model
from mcbinning.progress import Callback, Progress, progress_callback
from mcbinning.sources import dataset_of_folder, frame_kind, is_read_again, source_of

# Rows from which data that are read again for every pass are binned in rounds.
ROUNDS_FROM = 10_000_000

Missing = Mapping[str, Sequence[float | str]]
Ranges = Mapping[str, tuple[float | None, float | None]]
Types = Mapping[str, Literal["scale", "category"]]
Cuts = Mapping[str, Sequence[float]] | str | os.PathLike[str] | Model


def fit(
    data: Any,  # noqa: ANN401
    *,
    target: str,
    weight: str | None = None,
    attributes: Sequence[str] = (),
    exclude: Sequence[str] = (),
    types: Types | None = None,
    na: Sequence[str] | None = None,
    missing: Missing | None = None,
    missing_range: Ranges | None = None,
    weight_rounding: Literal["truncate", "round"] = "truncate",
    bins: int = _core.default_pre_bins,
    threshold: int = 0,
    small_bins: float = 0.0,
    min_bin_share: float | None = None,
    min_bin_weight: float | None = None,
    max_bins: int | None = None,
    cuts: Cuts | None = None,
    event: float | str | None = None,
    woe_adjustment: float | None = None,
    left_closed: bool = False,
    source: str = "",
    progress: Progress = None,
    n_jobs: int | None = None,
) -> Model:
    """Cut numeric columns into bins that separate the classes of a target.

    Parameters
    ----------
    data
        A pandas, polars or pyarrow table, a DuckDB relation, a ``pyarrow.dataset``, anything with
        ``__arrow_c_stream__``, an iterable of Arrow batches, a NumPy array (columns ``x0``,
        ``x1``, ...), a mapping of columns, the path of a file that ``mcbin`` reads or of a folder
        of Parquet files. Numeric columns are read where they lie. Readers that give their rows only
        once are kept in memory. Datasets, folders and relations of ten million rows or more are
        binned in rounds: read again for each, in memory that does not grow with the rows.
    target
        Column whose classes the bins are to separate, 2 to 256 of them. Numbers sort as numbers,
        other classes by their bytes; truth values are the classes ``false`` and ``true``.
    weight
        Column of frequency weights.
    attributes, exclude
        Names or patterns (``*``, ``?``, ``[...]``) of the columns to cut, by default all that hold
        numbers, and of those to leave out.
    types
        ``scale`` or ``category`` for columns by name.
    na
        Texts that stand for a missing value, by default those of ``mcbin``. None and NaN always
        are missing.
    missing, missing_range
        Values, and a range with both ends included (None for an open end), that are declared
        missing: they have a row of their own in the tables and the bin number -2.
    weight_rounding
        How weights become whole numbers; a case whose weight is then not positive is dropped.
    bins
        Pre-bins of an attribute with more distinct values than `threshold`.
    threshold
        Attributes with more distinct values are cut into `bins` bins of equal weight first; 0 for
        never.
    small_bins
        Merge an inner bin lighter than this fraction of its lighter neighbour; 0 for never.
    min_bin_share, min_bin_weight, max_bins
        While an attribute breaks one of these limits, the two neighbouring bins whose joining loses
        the least information become one, down to one bin. The share is of the weight of all cases,
        0 to 1.
    cuts
        Cut points that stand in place of a search: a mapping of columns to numbers, a model, or the
        path of a file with a model or with lines ``COLUMN=NUMBER,NUMBER...``. Attributes of a model
        that are not cut now are left alone.
    event
        The class whose rate and evidence tables show, of a target with two; by default the one that
        sorts last.
    woe_adjustment
        Added to both counts of a bin in which one of two classes does not occur, for its weight of
        evidence; by default 0.5.
    left_closed
        Bins ``[a, b)`` in place of ``(a, b]``.
    source
        What the model is to call its data; a path stands for itself.
    progress
        True for a bar (needs tqdm), None for a bar when standard error is a terminal, or a
        callable ``(task, share, count, unit)``. What it raises ends the fit.
    n_jobs
        Threads that bin attributes at the same time, or that count in a round; -1 for one per
        processor, None is 1. The model does not depend on it, memory grows with it. Files, lazy
        frames and, but for rounds, DuckDB relations are read by one.

    Returns
    -------
    Model
        The same, byte for byte, as ``mcbin fit`` makes of the same data.

    Raises
    ------
    DataError
        The data cannot be used; a ``ValueError`` that names the column and the row, counted from 0.
    OptionError
        Options contradict each other; a ``ValueError``.
    TypeError
        Data of a kind that is not supported.

    Warns
    -----
    UserWarning
        No case has a value that `missing` or `missing_range` declares.

    Examples
    --------
    >>> import mcbinning as mb
    >>> ages = {"age": [21, 22, 25, 30, 41, 45, 52, 60] * 5, "bought": [0, 0, 0, 0, 1, 1, 1, 1] * 5}
    >>> model = mb.fit(ages, target="bought")
    >>> model["age"].cut_points
    [30.0]
    >>> given = mb.fit(ages, target="bought", cuts={"age": [25, 50]}, event=0)
    >>> given["age"].intervals, given["age"].remark
    (['(-inf, 25]', '(25, 50]', '(50, inf)'], 'cut points given')
    >>> mb.fit(ages, target="bought", cuts=given, left_closed=True)
    Traceback (most recent call last):
    mcbinning.errors.OptionError: cuts: the bins of the model are (a, b]: leave left_closed=True out
    >>> limited = mb.fit(ages, target="bought", min_bin_share=0.6)
    >>> limited["age"].remark
    '2 bins joined into 1: under 60% of the weight'
    """
    request = _core.FitRequest()
    request.target = _name("target", target)
    request.bins = _in_range("bins", bins, 2, 2**31 - 1)
    request.threshold = _in_range("threshold", threshold, 0, 2**31 - 1)
    if not 0.0 <= small_bins <= 1.0:
        raise OptionError("small_bins must be from 0 to 1")
    request.small_bins = small_bins
    request.min_bin_share = None if min_bin_share is None else float(min_bin_share)
    request.min_bin_weight = None if min_bin_weight is None else float(min_bin_weight)
    request.max_bins = None if max_bins is None else _in_range("max_bins", max_bins, -1, 2**31 - 1)
    request.event = None if event is None else _class_text(event)
    request.woe_adjustment = None if woe_adjustment is None else float(woe_adjustment)
    _add_cuts(request, cuts)
    _set_columns(request, weight, attributes, exclude, types, weight_rounding, left_closed)
    _set_missing(request, target, na, missing, missing_range)
    return _run(data, request, source, progress, n_jobs)


def fit_equal_frequency(
    data: Any,  # noqa: ANN401
    *,
    bins: int = _core.default_equal_frequency_bins,
    weight: str | None = None,
    attributes: Sequence[str] = (),
    exclude: Sequence[str] = (),
    types: Types | None = None,
    na: Sequence[str] | None = None,
    missing: Missing | None = None,
    missing_range: Ranges | None = None,
    weight_rounding: Literal["truncate", "round"] = "truncate",
    left_closed: bool = False,
    source: str = "",
    progress: Progress = None,
    n_jobs: int | None = None,
) -> Model:
    """Cut numeric columns into `bins` bins of equal weight, without a target.

    Parameters and errors are those of :func:`fit`.

    Examples
    --------
    >>> import mcbinning as mb
    >>> mb.fit_equal_frequency({"x": range(8)}, bins=4)["x"].cut_points
    [1.5, 3.5, 5.5]
    """
    request = _core.FitRequest()
    request.equal_frequency = True
    request.bins = _in_range("bins", bins, 2, 2**31 - 1)
    _set_columns(request, weight, attributes, exclude, types, weight_rounding, left_closed)
    _set_missing(request, None, na, missing, missing_range)
    return _run(data, request, source, progress, n_jobs)


def _add_cuts(request: _core.FitRequest, cuts: Cuts | None) -> None:
    with in_python_words():
        if isinstance(cuts, Model):
            request.add_cuts_of(cuts.core)
        elif isinstance(cuts, Mapping):
            for column, points in cast("Mapping[str, Sequence[float]]", cuts).items():
                request.add_cuts(f"{column}={','.join(map(_number_text, points))}")
        elif cuts is not None:
            request.add_cuts(os.fspath(cuts))


def _class_text(value: float | str) -> str:
    return str(value).lower() if isinstance(value, bool | np.bool_) else _number_text(value)


def _in_range(name: str, value: int, low: int, high: int) -> int:
    if isinstance(value, bool) or not isinstance(value, int | np.integer):
        raise TypeError(f"{name} takes a whole number, not {type(value).__name__}")
    if not low <= value <= high:
        raise OptionError(f"{name} must be at least {low} and at most {high}")
    return int(value)


def _name(option: str, value: str) -> str:
    if not isinstance(value, str):
        raise TypeError(f"{option} takes the name of a column, not {type(value).__name__}")
    return value


def _set_columns(
    request: _core.FitRequest,
    weight: str | None,
    attributes: Sequence[str],
    exclude: Sequence[str],
    types: Types | None,
    weight_rounding: str,
    left_closed: bool,
) -> None:
    for name, value in (("attributes", attributes), ("exclude", exclude)):
        if isinstance(value, str):
            raise TypeError(f"{name} takes a sequence of names, not one text")
    if weight_rounding not in ("truncate", "round"):
        raise OptionError("weight_rounding is truncate or round")
    request.weight = None if weight is None else _name("weight", weight)
    request.attributes = [str(name) for name in attributes]
    request.exclude = [str(name) for name in exclude]
    request.types = [f"{column}={kind}" for column, kind in (types or {}).items()]
    request.round_weights = weight_rounding == "round"
    request.left_closed = left_closed


def _set_missing(
    request: _core.FitRequest,
    target: str | None,
    na: Sequence[str] | None,
    missing: Missing | None,
    missing_range: Ranges | None,
) -> None:
    request.na = list(_core.default_na if na is None else na)
    declared = []
    classes = []
    for column, values in (missing or {}).items():
        if isinstance(values, str) or not isinstance(values, Iterable):
            raise TypeError(f"missing: column {column} takes a sequence of values")
        for value in values:
            if isinstance(value, str) and column != target:
                raise OptionError(
                    f"missing: {value!r} of column {column} is not a number; a text that stands "
                    "for a missing value is declared with na"
                )
            if column == target:
                classes.append(_number_text(value))
            else:
                declared.append(f"{column}={_number_text(value)}")
    request.missing = declared
    request.target_missing = classes
    request.missing_ranges = [
        f"{column}={_end(low)}:{_end(high)}"
        for column, (low, high) in (missing_range or {}).items()
    ]


def _number_text(value: float | str) -> str:
    if isinstance(value, str):
        return value
    return str(int(value)) if float(value).is_integer() else repr(float(value))


def _end(value: float | None) -> str:
    return "" if value is None else repr(float(value))


def _run(
    data: Any,  # noqa: ANN401
    request: _core.FitRequest,
    source: str,
    progress: Progress,
    n_jobs: int | None,
) -> Model:
    jobs = job_count(n_jobs)
    is_path = isinstance(data, str | os.PathLike)
    if is_path:
        source = os.fspath(data)
    is_file = is_path and not os.path.isdir(source)
    if is_path and not is_file:
        data = dataset_of_folder(source)
    with progress_callback(progress) as callback, in_python_words():
        request.input = _input_of(source)
        if is_file:
            core, notes = _core.fit_file(request, callback)
        else:
            core, notes = _fit_columns(data, request, callback, jobs)
    for note in notes:
        warnings.warn(note, stacklevel=3)
    return Model(core, "dict" if is_file else frame_kind(data))


def _fit_columns(
    data: Any,  # noqa: ANN401
    request: _core.FitRequest,
    callback: Callback | None,
    jobs: int,
) -> tuple[_core.Model, list[str]]:
    columns = source_of(data)
    _require(columns.column_names, request.target, "target")
    _require(columns.column_names, request.weight, "weight")
    rounds_from = ROUNDS_FROM if is_read_again(data) else None
    return _core.fit_source(columns, request, callback, jobs, rounds_from)


def job_count(n_jobs: int | None) -> int:
    """Give the number of threads that `n_jobs` asks for.

    Examples
    --------
    >>> job_count(None), job_count(3)
    (1, 3)
    """
    if n_jobs is None:
        return 1
    if n_jobs == -1:
        return len(os.sched_getaffinity(0))
    if n_jobs < 1:
        raise OptionError("n_jobs must be at least 1, or -1 for one per processor")
    return n_jobs


def _require(names: list[str], name: str | None, option: str) -> None:
    if name is not None and name not in names:
        raise OptionError(f"{option}: no column {name!r}; the columns are: {', '.join(names)}")


def _input_of(data: str) -> _core.InputOptions:
    options = _core.InputOptions()
    options.data = data
    return options
