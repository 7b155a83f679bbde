"""Estimators for scikit-learn's pipelines.

Examples
--------
>>> import numpy as np
>>> from mcbinning.sklearn import SupervisedBinner
>>> X = np.repeat(np.arange(8.0), 5).reshape(-1, 1)
>>> SupervisedBinner().fit_transform(X, X[:, 0] > 3)[::10, 0]
array([0, 0, 1, 1], dtype=int32)
"""

from __future__ import annotations

from collections.abc import Sequence
from typing import Any, Literal

import numpy as np
import numpy.typing as npt
from sklearn.base import BaseEstimator, TransformerMixin
from sklearn.utils import Tags
from sklearn.utils.multiclass import check_classification_targets
from sklearn.utils.validation import (
    _check_feature_names_in,
    _check_sample_weight,
    check_is_fitted,
    validate_data,
)

from mcbinning import _core
from mcbinning.encoding import Encoding, encoded, one_hot_suffixes
from mcbinning.errors import in_python_words
from mcbinning.fitting import job_count
from mcbinning.model import Model
from mcbinning.sources import add_array

Encode = Literal["ordinal", "interval", "onehot", "woe"]
_ENCODINGS: dict[str, Encoding] = {
    "ordinal": "index",
    "interval": "interval",
    "onehot": "onehot",
    "woe": "woe",
}


class _Binner(TransformerMixin, BaseEstimator):  # type: ignore[misc]
    """What both estimators share: a model is fitted, and rows are put into its bins."""

    encode: Encode
    left_closed: bool
    missing: Sequence[float] | None
    weight_rounding: Literal["truncate", "round"] | None
    n_jobs: int | None

    def _fit_model(
        self,
        X: npt.NDArray[np.float64],
        y: npt.NDArray[Any] | None,
        sample_weight: Any,  # noqa: ANN401
        request: _core.FitRequest,
    ) -> None:
        if self.encode not in _ENCODINGS:
            raise ValueError(f"encode is one of {', '.join(_ENCODINGS)}, not {self.encode!r}")
        names = self._names()
        source = _core.MemoryColumns()
        for column, name in enumerate(names):
            add_array(source, name, X[:, column])
        if y is not None:
            request.target = _new_name("target", names)
            add_array(source, request.target, y)
        if sample_weight is not None:
            request.weight = _new_name("weight", names)
            add_array(source, request.weight, self._checked(sample_weight, X))
        missing = ",".join(repr(float(value)) for value in self.missing or ())
        request.attributes = names
        request.missing = [f"{name}={missing}" for name in names if missing]
        request.left_closed = self.left_closed
        request.round_weights = self.weight_rounding == "round"
        with in_python_words():
            core, _ = _core.fit_source(source, request, None, job_count(self.n_jobs), None)
            self.model_ = Model(core)

    def _names(self) -> list[str]:
        names = getattr(self, "feature_names_in_", None)
        return [str(n) for n in _check_feature_names_in(self, names)]

    def _checked(self, sample_weight: Any, X: npt.NDArray[np.float64]) -> npt.NDArray[np.float64]:  # noqa: ANN401
        weight: npt.NDArray[np.float64] = _check_sample_weight(
            sample_weight, X, dtype=np.float64, ensure_non_negative=True
        )
        if not weight.any():
            raise ValueError("Sample weights must contain at least one non-zero number.")
        if self.weight_rounding is None and (weight != np.floor(weight)).any():
            raise ValueError(
                "sample weights are numbers of cases and must be whole; weight_rounding rounds them"
            )
        return weight

    def transform(self, X: Any) -> npt.NDArray[Any]:  # noqa: ANN401
        """Put rows into the bins.

        Parameters
        ----------
        X : array-like of shape (n_samples, n_features)
            NaN is missing.

        Returns
        -------
        ndarray
            One column per feature, or per bin with ``onehot``.
        """
        check_is_fitted(self)
        X = validate_data(self, X, reset=False, dtype=np.float64, ensure_all_finite="allow-nan")
        source = _core.MemoryColumns()
        for column, name in enumerate(self.model_):
            add_array(source, name, X[:, column])
        numbers = _core.bin_source(self.model_.core, source, None)
        encoding = _ENCODINGS[self.encode]
        columns = [
            column
            for attribute, bins in zip(self.model_.values(), numbers, strict=True)
            for column in encoded(attribute, bins, encoding).values()
        ]
        return np.column_stack(columns)

    def get_feature_names_out(self, input_features: Any = None) -> npt.NDArray[Any]:  # noqa: ANN401
        """Give the names of the columns that :meth:`transform` makes."""
        check_is_fitted(self)
        features = _check_feature_names_in(self, input_features)
        if self.encode != "onehot":
            return np.asarray(features, dtype=object)
        names = [
            f"{feature}_{suffix}"
            for feature, attribute in zip(features, self.model_.values(), strict=True)
            for suffix in one_hot_suffixes(len(attribute.cut_points) + 1)
        ]
        return np.asarray(names, dtype=object)

    def __sklearn_tags__(self) -> Tags:
        tags = super().__sklearn_tags__()
        tags.input_tags.allow_nan = True
        tags.transformer_tags.preserves_dtype = []
        return tags


class SupervisedBinner(_Binner):
    """Cut features into bins that separate the classes of the target.

    Parameters
    ----------
    encode : {'ordinal', 'interval', 'onehot', 'woe'}, default='ordinal'
        What stands for a bin. ``ordinal``: its number, -1 for missing and -2 for declared missing.
        ``interval``: its text. ``onehot``: a column for each bin, for missing and for declared
        missing. ``woe``: the weight of evidence, which needs a target with two classes.
    threshold : int, default=0
        Features with more distinct values are cut into `pre_bins` bins of equal weight first; 0
        for never.
    pre_bins : int, default=1000
        See `threshold`.
    small_bins : float, default=0
        Merge an inner bin lighter than this fraction of its lighter neighbour.
    left_closed : bool, default=False
        Bins ``[a, b)`` in place of ``(a, b]``.
    missing : sequence of float, optional
        Values that are declared missing.
    weight_rounding : {'truncate', 'round'}, optional
        How sample weights become whole numbers; by default those that are not raise ValueError.
    n_jobs : int, optional
        Threads that bin features at the same time; -1 for one per processor.

    Attributes
    ----------
    model_ : Model
        The fitted model.
    classes_ : ndarray
        The classes of the target.
    """

    def __init__(
        self,
        *,
        encode: Encode = "ordinal",
        threshold: int = 0,
        pre_bins: int = _core.default_pre_bins,
        small_bins: float = 0.0,
        left_closed: bool = False,
        missing: Sequence[float] | None = None,
        weight_rounding: Literal["truncate", "round"] | None = None,
        n_jobs: int | None = None,
    ) -> None:
        self.encode = encode
        self.threshold = threshold
        self.pre_bins = pre_bins
        self.small_bins = small_bins
        self.left_closed = left_closed
        self.missing = missing
        self.weight_rounding = weight_rounding
        self.n_jobs = n_jobs

    def fit(self, X: Any, y: Any, sample_weight: Any = None) -> SupervisedBinner:  # noqa: ANN401
        """Find the bins.

        Parameters
        ----------
        X : array-like of shape (n_samples, n_features)
            NaN is missing.
        y : array-like of shape (n_samples,)
            Classes, 2 to 256 of them.
        sample_weight : array-like of shape (n_samples,), optional
            Numbers of cases.

        Returns
        -------
        SupervisedBinner
            Itself.
        """
        X, y = validate_data(self, X, y, dtype=np.float64, ensure_all_finite="allow-nan")
        check_classification_targets(y)
        self.classes_ = np.unique(y)
        if len(self.classes_) < 2:
            raise ValueError("y holds only one class: there is nothing to tell apart")
        request = _core.FitRequest()
        request.threshold = self.threshold
        request.bins = self.pre_bins
        request.small_bins = self.small_bins
        self._fit_model(X, y, sample_weight, request)
        if len(self.model_.classes) != len(self.classes_):
            raise ValueError("y holds classes that are empty or differ only by blanks around them")
        if self.encode == "woe" and len(self.classes_) != 2:
            raise ValueError("encode='woe' needs a target with two classes")
        return self

    def __sklearn_tags__(self) -> Tags:
        tags = super().__sklearn_tags__()
        tags.target_tags.required = True
        return tags


class EqualFrequencyBinner(_Binner):
    """Cut features into bins of equal weight.

    Parameters
    ----------
    bins : int, default=10
        Number of bins; features with few distinct values get fewer.
    encode, left_closed, missing, weight_rounding, n_jobs
        As for :class:`SupervisedBinner`, but for ``woe``.

    Attributes
    ----------
    model_ : Model
        The fitted model.
    """

    def __init__(
        self,
        *,
        bins: int = _core.default_equal_frequency_bins,
        encode: Literal["ordinal", "interval", "onehot"] = "ordinal",
        left_closed: bool = False,
        missing: Sequence[float] | None = None,
        weight_rounding: Literal["truncate", "round"] | None = None,
        n_jobs: int | None = None,
    ) -> None:
        self.bins = bins
        self.encode = encode
        self.left_closed = left_closed
        self.missing = missing
        self.weight_rounding = weight_rounding
        self.n_jobs = n_jobs

    def fit(self, X: Any, y: Any = None, sample_weight: Any = None) -> EqualFrequencyBinner:  # noqa: ANN401
        """Find the bins; see :meth:`SupervisedBinner.fit`. `y` is not used."""
        X = validate_data(self, X, dtype=np.float64, ensure_all_finite="allow-nan")
        if self.encode not in ("ordinal", "interval", "onehot"):
            raise ValueError(f"encode is ordinal, interval or onehot, not {self.encode!r}")
        request = _core.FitRequest()
        request.equal_frequency = True
        request.bins = self.bins
        self._fit_model(X, None, sample_weight, request)
        return self


def _new_name(name: str, names: list[str]) -> str:
    while name in names:
        name += "_"
    return name
