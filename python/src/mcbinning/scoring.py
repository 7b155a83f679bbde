"""How a model does on other data."""

from __future__ import annotations

import os
from collections.abc import Iterator, Mapping
from typing import TYPE_CHECKING, Any

import numpy as np

from mcbinning import _core
from mcbinning.errors import in_python_words
from mcbinning.frames import frame, shares
from mcbinning.progress import Progress, progress_callback
from mcbinning.sources import source_of

if TYPE_CHECKING:
    from mcbinning.model import Attribute, Model


class AttributeScore:
    """One attribute of a model on other data."""

    def __init__(
        self, attribute: Attribute, core: _core.AttributeScore, classes: list[str]
    ) -> None:
        self._attribute = attribute
        self._core = core
        self._classes = classes

    @property
    def stability_index(self) -> float:
        """Population stability index.

        The sum of ``(a - e) ln(a / e)`` over the bins, missing and declared missing, with the
        row's shares ``e`` of the weight in the fit and ``a`` here. Where one of the weights is 0,
        0.5 is added to both.
        """
        return self._core.stability_index

    @property
    def stability(self) -> str:
        """The usual reading: ``stable`` below 0.1, ``some shift`` up to 0.25, ``large shift``."""
        return self._core.stability

    @property
    def unseen(self) -> str:
        """What the fit never saw: values beyond its range, bins without weight; empty if none."""
        return self._core.unseen

    @property
    def information_gain(self) -> float | None:
        """Entropy before cutting less entropy after, in bits; None without a target."""
        return self._core.information_gain

    @property
    def information_value(self) -> float | None:
        """Information value; None unless the target has two classes."""
        evidence = self._core.evidence
        return None if evidence is None else evidence[1]

    @property
    def table(self) -> Any:  # noqa: ANN401
        """The bins and the missing cases as a frame, with their shares here and in the fit.

        Columns are those of :attr:`Attribute.table`, and ``share in fit``.
        """
        fitted = self._attribute.columns()
        weights = np.array(self._core.weights)
        rows = len(weights)
        named = ("bin", "interval", "lower", "upper", "closed")
        columns = {key: fitted[key][:rows] for key in named}
        columns["weight"] = weights
        columns["share"] = shares(weights, weights.sum())
        expected = np.asarray(fitted["weight"])[:rows]
        columns["share in fit"] = shares(expected, expected.sum())
        by_class = np.array(self._core.class_weights)
        for code, category in enumerate(self._classes):
            columns[f"weight {category}"] = by_class[:, code]
            columns[f"share {category}"] = shares(by_class[:, code], weights)
        if (evidence := self._core.evidence) is not None:
            columns["woe"] = [row[1] for row in evidence[0]]
            columns["iv"] = [row[2] for row in evidence[0]]
        return frame(columns, self._attribute.frames)

    def __repr__(self) -> str:
        return f"<AttributeScore {self._attribute.name!r}: stability {self.stability_index:.4f}>"


class Score(Mapping[str, AttributeScore]):
    """A model on other data: its attributes by name."""

    def __init__(self, model: Model, core: _core.ModelScore, classes: list[str]) -> None:
        self._model = model
        self._core = core
        self._classes = classes

    @property
    def cases(self) -> int:
        """How many cases the data hold."""
        return self._core.cases

    @property
    def dropped(self) -> int:
        """How many of them have no weight, or none that is positive when it is a whole number."""
        return self._core.dropped

    @property
    def summary(self) -> Any:  # noqa: ANN401
        """The attributes as a frame: stability index, and gain and value here and in the fit."""
        fitted = [self._model[name] for name in self]
        columns: dict[str, Any] = {
            "attribute": list(self),
            "stability_index": [score.stability_index for score in self.values()],
            "stability": [score.stability for score in self.values()],
        }
        if self._classes:
            columns["information_gain"] = [score.information_gain for score in self.values()]
            columns["information_gain in fit"] = [a.information_gain for a in fitted]
        if len(self._classes) == 2:
            columns["information_value"] = [score.information_value for score in self.values()]
            columns["information_value in fit"] = [a.information_value for a in fitted]
        return frame(columns, self._model.frames)

    def __getitem__(self, name: str) -> AttributeScore:
        """Give the attribute of that name."""
        attribute = self._model[name]
        core = self._core.attribute(self._model.core, list(self._model).index(name))
        return AttributeScore(attribute, core, self._classes)

    def to_json(self) -> str:
        """Give the score as JSON, as ``mcbin score --to json``."""
        return self._core.export(self._model.core, "json")

    def to_csv(self) -> str:
        """Give the tables as one CSV."""
        return self._core.export(self._model.core, "csv")

    def report(self) -> str:
        """Give the tables as one page of HTML."""
        return self._core.export(self._model.core, "html")

    def __str__(self) -> str:
        return self._core.export(self._model.core, "text")

    def __iter__(self) -> Iterator[str]:
        return iter(self._model)

    def __len__(self) -> int:
        return len(self._model)

    def __repr__(self) -> str:
        return f"<Score: {len(self)} attributes, {self.cases} cases>"


def score(
    model: Model,
    data: Any,  # noqa: ANN401
    *,
    target: str | bool = True,
    weight: str | bool = True,
    progress: Progress = None,
) -> Score:
    """Count other data in the bins of a model.

    Parameters
    ----------
    model
        The model.
    data
        Data of any kind that :func:`fit` takes, with a column for every attribute.
    target, weight
        Columns of `data`; True for those of the fit, False for none.
    progress
        As in :func:`fit`.

    Returns
    -------
    Score
        Weights, class shares, gain, information value and stability index of every attribute.

    Raises
    ------
    DataError
        A column is not there, a cell is no number, or a class is not one of the model.

    Examples
    --------
    >>> import mcbinning as mb
    >>> model = mb.fit_equal_frequency({"x": range(8)}, bins=2)
    >>> round(mb.score(model, {"x": [1, 2, 3, 4]})["x"].stability_index, 4)
    0.2747
    """
    target_name = model.target if target is True else target or None
    weight_name = model.weight if weight is True else weight or None
    with progress_callback(progress) as callback, in_python_words():
        if isinstance(data, str | os.PathLike):
            options = _core.InputOptions()
            options.data = os.fspath(data)
            core = _core.score_file(model.core, options, target_name, weight_name, callback)
        else:
            source = source_of(data)
            core = _core.score_source(model.core, source, target_name, weight_name, callback)
    return Score(model, core, model.classes if target_name else [])
