"""Fitted models."""

from __future__ import annotations

import json
import os
from collections.abc import Iterator, Mapping, Sequence
from functools import cached_property
from typing import Any

import numpy as np
import numpy.typing as npt

from mcbinning import _core, html, plots
from mcbinning.encoding import Dialect, Encoding, encoded
from mcbinning.errors import in_python_words
from mcbinning.frames import KINDS, frame, shares
from mcbinning.progress import Progress, progress_callback
from mcbinning.sources import frame_kind, source_of

MISSING, USER_MISSING, NO_BIN = _core.missing_bin, _core.user_missing_bin, -3


class Attribute:
    """One attribute of a model and its bins."""

    def __init__(self, model: Model, position: int) -> None:
        self._model = model
        self._position = position
        self._data = model.as_dict()["attributes"][position]

    @property
    def name(self) -> str:
        """The column that is cut."""
        return str(self._data["name"])

    @property
    def frames(self) -> str:
        """The kind of frame that tables are."""
        return self._model.frames

    @property
    def cut_points(self) -> list[float]:
        """The cut points, ascending; one fewer than there are bins."""
        return [float(value) for value in self._data["cutPoints"]]

    @property
    def remark(self) -> str:
        """Why the attribute was not cut, or what is to be noticed; empty otherwise."""
        return str(self._data["status"]["reason"])

    @property
    def information_gain(self) -> float:
        """Entropy before cutting less entropy after, in bits."""
        return float(self._model.core.information_gain(self._position))

    @property
    def gain_over_all_cases(self) -> float:
        """The same over all cases, missing and declared missing ones as bins of their own."""
        return float(self._model.core.gain_over_all_cases(self._position))

    @property
    def intervals(self) -> list[str]:
        """The bins as texts such as ``(3.5, 7]``."""
        return list(self._model.core.intervals(self._position))

    @property
    def labels(self) -> list[str]:
        """The rows of `weights` as texts: bins, ``missing``, ``user-missing``, ``in no bin``."""
        texts = [*self.intervals, "missing", "user-missing", "in no bin"]
        return texts[: len(self._rows)]

    @property
    def weights(self) -> npt.NDArray[np.float64]:
        """The weight of each bin, of missing, user-missing and, if any, cases in no bin.

        Cases in no bin have a value that the fit could count in none, such as an infinite one.
        """
        return np.array([row["weight"] for row in self._rows], np.float64)

    @property
    def class_weights(self) -> npt.NDArray[np.float64]:
        """The weight of each class (columns) in each of the rows of `weights`."""
        return np.array([row["classWeights"] for row in self._rows], np.float64)

    @property
    def information_value(self) -> float | None:
        """Information value over all rows; None unless the target has two classes."""
        evidence = self._evidence
        return None if evidence is None else evidence[1]

    @property
    def weight_of_evidence(self) -> npt.NDArray[np.float64] | None:
        """Weight of evidence of each row of `weights`; None unless the target has two classes.

        ``ln((n / N) / (e / E))`` with the row's weight ``e`` of the event, which is the class that
        sorts last, and ``n`` of the other class, and their totals ``E`` and ``N`` over all rows.
        Where one of ``e`` and ``n`` is 0, 0.5 is added to both; a row without weight has 0. A model
        of ``mcbin`` may name another event and another number than 0.5.
        """
        evidence = self._evidence
        return None if evidence is None else np.array([row[1] for row in evidence[0]])

    @property
    def table(self) -> Any:  # noqa: ANN401
        """The bins and the missing cases as a frame of the kind that came in.

        Columns are ``bin`` (-1 missing, -2 declared missing, -3 in no bin),
        ``interval``, ``lower``, ``upper``,
        ``closed``, ``weight``, ``share``, one of weights and one of shares for each class, and with
        two classes ``woe`` and ``iv``.
        """
        return frame(self.columns(), self._model.frames)

    def columns(self) -> dict[str, Any]:
        """Give the columns of `table` as lists and arrays."""
        cuts = self.cut_points
        bins = len(cuts) + 1
        beside = len(self._rows) - bins
        nothing = [float("nan")] * beside
        weights = self.weights
        columns: dict[str, Any] = {
            "bin": [*range(bins), MISSING, USER_MISSING, NO_BIN][: bins + beside],
            "interval": self.labels,
            "lower": [-np.inf, *cuts, *nothing],
            "upper": [*cuts, np.inf, *nothing],
            "closed": [self._model.closed] * (bins + beside),
            "weight": weights,
            "share": shares(weights, float(weights.sum())),
        }
        for code, category in enumerate(self._model.classes):
            columns[f"weight {category}"] = self.class_weights[:, code]
            columns[f"share {category}"] = shares(self.class_weights[:, code], weights)
        if (evidence := self._evidence) is not None:
            columns["woe"] = [row[1] for row in evidence[0]]
            columns["iv"] = [row[2] for row in evidence[0]]
        return columns

    def plot(self, ax: Any = None) -> Any:  # noqa: ANN401
        """Draw bars of the bins' weights and the class shares over them; give the Axes."""
        return plots.plot_attribute(self, self._model.target, ax)

    def main_classes(self, most: int) -> list[str]:
        """Give the classes that a picture shows: the event, else the `most` heaviest."""
        classes = self._model.classes
        event = self._model.core.event()
        if event is not None:
            return [classes[event]]
        totals = self.class_weights.sum(axis=0)
        heaviest = sorted(range(len(classes)), key=lambda code: -totals[code])[:most]
        return [classes[code] for code in sorted(heaviest)]

    @property
    def _rows(self) -> list[dict[str, Any]]:
        data = self._data
        rows = [*data["bins"], data["missingCases"], data["userMissingCases"]]
        unbinned = data.get("unbinnedCases")
        return [*rows, unbinned] if unbinned and unbinned["weight"] else rows

    @cached_property
    def _evidence(self) -> tuple[list[tuple[float, float, float]], float] | None:
        return self._model.core.evidence(self._position)

    def __repr__(self) -> str:
        return f"<Attribute {self.name!r}: {len(self.cut_points) + 1} bins>"

    def __str__(self) -> str:
        return self._model.core.attribute_text(self._position)

    def _repr_html_(self) -> str:
        return html.attribute_html(self)


class Model(Mapping[str, Attribute]):
    """A fitted model: its attributes by name, in the order of the columns.

    The model file is that of ``mcbin``; what either fits the other reads. Models compare equal when
    their files are the same.
    """

    def __init__(self, core: _core.Model, frames: str = "dict") -> None:
        if frames not in KINDS:
            raise ValueError(f"frames are one of {', '.join(KINDS)}, not {frames!r}")
        self.core = core
        self.frames = frames

    @cached_property
    def _data(self) -> dict[str, Any]:
        return json.loads(self.to_json())  # type: ignore[no-any-return]

    @cached_property
    def _positions(self) -> dict[str, int]:
        return {a["name"]: position for position, a in enumerate(self._data["attributes"])}

    def __getitem__(self, name: str) -> Attribute:
        """Give the attribute of that name."""
        if name not in self._positions:
            raise KeyError(f"no attribute {name!r}; there are: {', '.join(self._positions)}")
        return Attribute(self, self._positions[name])

    def __iter__(self) -> Iterator[str]:
        return iter(self._positions)

    def __len__(self) -> int:
        return len(self._positions)

    def __eq__(self, other: object) -> bool:
        return isinstance(other, Model) and self.to_json() == other.to_json()

    def __hash__(self) -> int:
        return hash(self.to_json())

    def __reduce__(self) -> tuple[Any, ...]:
        return from_json, (self.to_json(), self.frames)

    def as_dict(self) -> dict[str, Any]:
        """Give the content of the model file; not to be changed."""
        return self._data

    @property
    def classes(self) -> list[str]:
        """The classes of the target in code order; empty without a target."""
        target = self._data["target"]
        return list(target["categories"]) if target else []

    @property
    def target(self) -> str | None:
        """The column of the target; None without one."""
        target = self._data["target"]
        return str(target["name"]) if target else None

    @property
    def weight(self) -> str | None:
        """The column of the weights; None without one."""
        weight = self._data["weight"]
        return str(weight["name"]) if weight else None

    @property
    def closed(self) -> str:
        """Which end of a bin belongs to it: ``right`` or ``left``."""
        return str(self._data["options"]["closedSide"])

    @property
    def left_out(self) -> dict[str, str]:
        """Columns that were not cut, and why."""
        return {column["name"]: column["reason"] for column in self._data["leftOut"]}

    @property
    def ranked(self) -> list[Attribute]:
        """The attributes by gain over all cases, highest first."""
        return [Attribute(self, position) for position in self.core.ranking()]

    @property
    def ranking(self) -> Any:  # noqa: ANN401
        """The attributes, ranked, as a frame of the kind that came in."""
        ranked = self.ranked
        columns: dict[str, Any] = {
            "attribute": [attribute.name for attribute in ranked],
            "bins": [len(attribute.cut_points) + 1 for attribute in ranked],
            "information_gain": [attribute.information_gain for attribute in ranked],
            "gain_over_all_cases": [attribute.gain_over_all_cases for attribute in ranked],
        }
        if len(self.classes) == 2:
            columns["information_value"] = [attribute.information_value for attribute in ranked]
        columns["missing_share"] = [_missing_share(attribute) for attribute in ranked]
        columns["remark"] = [attribute.remark for attribute in ranked]
        return frame(columns, self.frames)

    def select(self, attributes: Sequence[str]) -> Model:
        """Give a model of only these attributes, by name or pattern."""
        with in_python_words():
            return Model(self.core.select(list(attributes)), self.frames)

    def to_json(self) -> str:
        """Give the text of the model file."""
        return self.core.to_json()

    def save(self, path: str | os.PathLike[str]) -> None:
        """Write the model file; it appears under its name only when it is complete."""
        with in_python_words():
            self.core.save(os.fspath(path))

    def to_sql(
        self, table: str | None = None, *, intervals: bool = False, dialect: Dialect = "sqlite"
    ) -> str:
        """Give SQL that bins as the model does: expressions, or a whole SELECT over `table`."""
        with in_python_words():
            return self.core.sql("interval" if intervals else "index", table, dialect)

    def to_markdown(self) -> str:
        """Give the tables as Markdown."""
        return self.core.export("markdown")

    def to_csv(self) -> str:
        """Give the tables as one CSV."""
        return self.core.export("csv")

    def report(self, path: str | os.PathLike[str] | None = None) -> str:
        """Give the report, one page of HTML, and write it when a path is given."""
        page = self.core.report()
        if path is not None:
            with open(path, "w", encoding="utf-8", newline="") as file:
                file.write(page)
        return page

    def bin_numbers(self, data: Any, progress: Progress = None) -> dict[str, npt.NDArray[np.int32]]:  # noqa: ANN401
        """Give the bin number of every row for each attribute.

        Numbers count from 0; -1 is missing, -2 declared missing.
        """
        with progress_callback(progress) as callback, in_python_words():
            arrays = _core.bin_source(self.core, source_of(data), callback)
        return dict(zip(self, arrays, strict=True))

    def transform(self, data: Any, encode: Encoding = "index", progress: Progress = None) -> Any:  # noqa: ANN401
        """Put rows into the bins.

        Parameters
        ----------
        data
            Data of any kind that :func:`fit` takes, with a column for every attribute.
        encode
            ``index``: bin numbers in ``NAME_bin``, -1 for missing, -2 for declared missing.
            ``interval``: texts in ``NAME_bin``. ``bounds``: ``NAME_lower`` and ``NAME_upper``, NaN
            without a bin. ``onehot``: ``NAME_0``, ..., ``NAME_missing``, ``NAME_user_missing``,
            all of them whether they occur or not. ``woe``: weights of evidence in ``NAME_woe``.
        progress
            As in :func:`fit`.

        Returns
        -------
        frame
            Of the kind of `data`; a pandas frame keeps the index.
        """
        columns: dict[str, Any] = {}
        for name, numbers in self.bin_numbers(data, progress).items():
            columns.update(encoded(self[name], numbers, encode))
        kind = frame_kind(data)
        result = frame(columns, kind)
        if kind == "pandas":
            result.index = data.index
        return result

    def transform_row(self, row: Mapping[str, float | None]) -> dict[str, int]:
        """Give the bin numbers of one row, given as a mapping of values.

        Examples
        --------
        >>> import mcbinning as mb
        >>> model = mb.fit_equal_frequency({"x": range(8)}, bins=4)
        >>> model.transform_row({"x": 5.5})
        {'x': 2}
        """
        numbers = {}
        for position, name in enumerate(self):
            value = row[name]
            if isinstance(value, str):
                raise TypeError(f"column {name} holds {value!r}, which is no number")
            is_missing = value is None or value != value  # noqa: PLR0124
            number = None if is_missing else float(value)  # type: ignore[arg-type]
            numbers[name] = _core.bin_number(self.core, position, number)
        return numbers

    def plot_ranking(self, ax: Any = None) -> Any:  # noqa: ANN401
        """Draw the gain over all cases of the attributes as bars; give the Axes."""
        return plots.plot_ranking(self.ranked, ax)

    def __repr__(self) -> str:
        return f"<Model: {len(self)} attributes, {self._data['method']}>"

    def __str__(self) -> str:
        return self.core.text()

    def _repr_html_(self) -> str:
        return html.model_html(self)


def load(path: str | os.PathLike[str], frames: str = "dict") -> Model:
    """Read a model file; tables are to be `frames`: pandas, polars, pyarrow or dict."""
    with in_python_words():
        return Model(_core.Model.load(os.fspath(path)), frames)


def from_json(text: str, frames: str = "dict") -> Model:
    """Read a model from the text of a model file."""
    with in_python_words():
        return Model(_core.Model.from_json(text, "model"), frames)


def _missing_share(attribute: Attribute) -> float:
    weights = attribute.weights
    total = float(weights.sum())
    bins = len(attribute.cut_points) + 1
    return float(weights[bins : bins + 2].sum()) / total if total > 0 else 0.0
