"""Binning Spark frames: the exact model, whatever the partitions, their order and retries.

The frame is projected to the class, the weight and the attributes as doubles, and cached as far as
it fits. Each round is one pass of ``mapInArrow``, whose answers Spark adds up. An attribute of few
values is grouped once and answered for on the driver.
"""

from __future__ import annotations

import logging
import math
import uuid
from typing import Any

import numpy as np

from mcbinning import _core, counting, spark_worker
from mcbinning.counting import Answer, Codes, Doubles, Item, Question
from mcbinning.errors import DataError, OptionError, in_python_words
from mcbinning.progress import Callback
from mcbinning.sources import source_of
from mcbinning.spark_columns import Cells, declared

FEW_VALUES = 1000
_MOST_CLASS_TEXTS = 10_000
_SAMPLE = 16_384
_UNKNOWN_CLASS = -2
_ADD_IN_SPARK_FROM = 8  # partitions
CACHES = True  # as far as memory goes; what does not fit is read again

_log = logging.getLogger("mcbinning")


def fit(
    frame: Any,  # noqa: ANN401
    request: _core.FitRequest,
    source: _core.Source,
    progress: Callback | None,
) -> tuple[_core.Model, list[str]]:
    """Fit a model; `source` has the columns of the frame."""
    from pyspark import StorageLevel

    send_by_value()
    facts = Facts(frame, request, source)
    cut = _core.columns_to_cut(request, source, facts.core)
    rules = [facts.plan[at].missing for at in cut]
    projected = facts.projected([facts.cells[at] for at in cut])
    if CACHES:
        projected.persist(StorageLevel.MEMORY_ONLY)
    try:
        engine = Engine(projected, facts, rules, progress)
        model = _core.fit_in_rounds(request, source, facts.core, engine.first_borders(), engine)
    finally:
        projected.unpersist()
    _log.info("%d rounds, %d bytes to the driver", engine.rounds, engine.bytes)
    return model


def send_by_value() -> None:
    """Have Spark send what its workers run along with the data."""
    from pyspark import cloudpickle

    for module in (counting, spark_worker):
        cloudpickle.register_pickle_by_value(module)


def transformed(model: _core.Model, frame: Any, encode: str) -> Any:  # noqa: ANN401
    """Put the rows of a frame into the bins of a model, by SQL alone."""
    if encode not in ("index", "interval", "woe"):
        raise OptionError("on a Spark frame encode is index, interval or woe")
    view = f"mcbinning_{uuid.uuid4().hex}"
    with in_python_words():
        sql = model.sql(encode, view, "spark")
    frame.createOrReplaceTempView(view)
    try:
        return frame.sparkSession.sql(sql.rstrip().removesuffix(";"))
    finally:
        frame.sparkSession.catalog.dropTempView(view)


class Facts:
    """What is known of a frame after one aggregate over it: the frame is planned, not yet cut."""

    def __init__(self, frame: Any, request: _core.FitRequest, source: _core.Source) -> None:  # noqa: ANN401
        self.frame = frame
        self.request = request
        self.plan = _core.plan_columns(request, source)
        self.cells = [Cells(frame, column.name, request.na) for column in self.plan]
        self.core = _core.Facts()
        self._codes: list[tuple[Any, int]] = []
        self._aggregate(source)
        for at, column in enumerate(self.plan):
            if column.use == "target" and not source.why_unfit(at):
                self._read_target(source, column.name)

    def _aggregate(self, source: _core.Source) -> None:
        from pyspark.sql import functions as sql

        asked: dict[tuple[str, int, int], Any] = {("rows", 0, 0): sql.count(sql.lit(1))}
        for at, (column, cells) in enumerate(zip(self.plan, self.cells, strict=True)):
            is_read = column.use == "weight" or (
                column.use == "attribute" and not column.is_category
            )
            if not is_read or source.why_unfit(at):
                continue
            asked |= {("sighting", at, k): a for k, a in enumerate(cells.sightings())}
            asked |= {("met", at, k): a for k, a in enumerate(cells.met(column.missing))}
            asked["reserved", at, 0] = cells.reserved()
        row = self.frame.agg(*(a.alias(f"a{k}") for k, a in enumerate(asked.values()))).first()
        found = dict(zip(asked, row, strict=True))
        columns = range(len(self.plan))
        self.core.rows = found["rows", 0, 0]
        self.core.cells = [
            (
                found.get(("sighting", at, 0)),
                found.get(("sighting", at, 1)),
                found.get(("sighting", at, 2)),
            )
            for at in columns
        ]
        self.core.met = [
            [v for (what, c, _), v in found.items() if what == "met" and c == at and v is not None]
            for at in columns
        ]
        for at in columns:
            if found.get(("reserved", at, 0)):
                self.cells[at].fail_reserved()

    def _read_target(self, source: _core.Source, name: str) -> None:
        column = Cells(self.frame, name, []).raw
        values = self.frame.select(column).distinct().limit(_MOST_CLASS_TEXTS + 1).toArrow()
        codes = _core.read_target(self.request, source, source_of(values), self.core)
        if len(codes) > _MOST_CLASS_TEXTS:
            raise DataError(f"the target {name} has more than {_MOST_CLASS_TEXTS} texts")
        self._codes = list(zip(values.column(0).to_pylist(), codes, strict=True))

    def projected(self, attributes: list[Cells]) -> Any:  # noqa: ANN401
        """Give the cases that are used: ``code`` and ``weight``, if any, ``x0``, ``x1``, ..."""
        columns: list[Any] = []
        for column, cells in zip(self.plan, self.cells, strict=True):
            if column.use == "target":
                columns.insert(0, self._code(cells.raw).alias("code"))
            if column.use == "weight":
                weight = cells.weight(column.missing, self.request.round_weights)
                columns.append(weight.alias("weight"))
        columns += [cells.number.alias(f"x{k}") for k, cells in enumerate(attributes)]
        frame = self.frame.select(*columns)
        return frame.where("weight is not null") if "weight" in frame.columns else frame

    def _code(self, raw: Any) -> Any:  # noqa: ANN401
        """Give the class of a case, -1 for none and -2 for one that was not there before."""
        from pyspark.sql import functions as sql

        values: dict[int, list[Any]] = {}
        for value, code in self._codes:
            if value is not None and value == value:  # noqa: PLR0124
                values.setdefault(code, []).append(value)
        chain = sql.when(raw.isNull(), -1)
        if isinstance(next(iter(values.values()))[0], float):
            chain = chain.when(sql.isnan(raw), -1)
        for code, own in values.items():
            chain = chain.when(raw.isin(own), code)
        return chain.otherwise(_UNKNOWN_CLASS).cast("int")


class Engine:
    """Answers the questions of a fit; `rounds` and `bytes` say what it took."""

    def __init__(
        self,
        frame: Any,  # noqa: ANN401
        facts: Facts,
        rules: list[_core.MissingRules],
        progress: Callback | None,
    ) -> None:
        self._frame = frame
        self._rules = rules
        self._progress = progress
        self._classes = max(len(facts.core.categories), 1)
        self._keys = [name for name in ("code", "weight") if name in frame.columns]
        self._partitions = frame.rdd.getNumPartitions()
        self.rounds = 0
        self.bytes = 0
        self._distinct = self._count_distinct()
        self._few, self._totals = self._group_few()

    def __call__(self, items: list[Item], task: str) -> tuple[Answer, list[float]]:
        """Answer for the whole frame."""
        self.rounds += 1
        if self._progress is not None:
            self._progress(task, None, self.rounds, "rounds")
        few = [item for item in items if item[0] in self._few]
        many = [item for item in items if item[0] not in self._few]
        parts = {item[0]: self._answer_few(item) for item in few}
        totals = self._totals
        if many:
            answer = self._ask_workers(many)
            totals = answer[0][: len(totals)]
            parts |= _parted(answer, many, self._classes)
        answer = _joined(totals, [parts[item[0]] for item in items])
        return answer, [self._distinct[item[0]] for item in items]

    def first_borders(self) -> list[list[float]]:
        """Give the first borders of each attribute: its few values, or those of a small sample."""
        samples = {k: values for k, (_, _, values) in self._few.items()}
        many = [k for k in range(len(self._rules)) if k not in self._few]
        if many:
            sample = self._frame.select(*(f"x{k}" for k in many))
            if self._totals[0] > _SAMPLE:
                sample = sample.sample(fraction=_SAMPLE / self._totals[0], seed=1)
            table = self._collect(sample.limit(2 * _SAMPLE))
            samples |= {k: _numbers(table.column(f"x{k}")) for k in many}
        return [
            _core.first_borders(samples[k].tolist(), self._classes) for k in range(len(self._rules))
        ]

    def _question(self, items: list[Item]) -> Question:
        return Question(items, self._classes, [(rule.values, rule.range) for rule in self._rules])

    def _ask_workers(self, items: list[Item]) -> Answer:
        count = spark_worker.counter(
            self._question(items), "code" in self._keys, "weight" in self._keys, _core.version
        )
        frame = self._frame.select(*self._keys, *(f"x{item[0]}" for item in items))
        answers = frame.mapInArrow(count, spark_worker.SCHEMA)
        if self._partitions > _ADD_IN_SPARK_FROM:
            fewer = answers.repartition(math.isqrt(self._partitions))
            answers = fewer.mapInArrow(spark_worker.add_partition, spark_worker.SCHEMA)
        total: Answer | None = None
        for answer in spark_worker.answers_of(self._collect(answers)):
            total = answer if total is None else counting.add(total, answer)
        nothing = counting.count(
            self._question(items), *_no_cases(self._keys), [np.empty(0)] * len(items)
        )
        return nothing if total is None else total

    def _collect(self, frame: Any) -> Any:  # noqa: ANN401
        table = frame.toArrow()
        self.bytes += table.nbytes
        return table

    def _searched(self, attribute: int) -> Any:  # noqa: ANN401
        """Give the values of an attribute that count as distinct."""
        from pyspark.sql import functions as sql

        column = sql.col(f"x{attribute}")
        used = column.isNotNull() & ~declared(column, self._rules[attribute])
        if "code" in self._keys:
            used &= sql.col("code") >= 0
        return self._frame.where(used).select(column.alias("x"))

    def _count_distinct(self) -> list[float]:
        """Count exactly, each in a shuffle of one attribute."""
        from pyspark.sql import functions as sql

        counts = [
            self._searched(k)
            .agg(sql.count_distinct("x").alias("n"))
            .select(sql.lit(k).alias("k"), "n")
            for k in range(len(self._rules))
        ]
        table = self._collect(_united(counts))
        found = dict(zip(table.column("k").to_pylist(), table.column("n").to_pylist(), strict=True))
        return [float(found[k]) for k in range(len(self._rules))]

    def _group_few(self) -> tuple[dict[int, Any], Doubles]:
        """Give the rows of attributes with few values, grouped, and the totals of all cases."""
        from pyspark.sql import functions as sql

        weight = sql.col("weight") if "weight" in self._keys else sql.lit(1.0)
        code = sql.col("code") if "code" in self._keys else sql.lit(0)
        few = [k for k, count in enumerate(self._distinct) if count <= FEW_VALUES]
        groups = []
        for k in (-1, *few):
            value = sql.lit(None).cast("double") if k < 0 else sql.col(f"x{k}")
            rows = self._frame.select(code.alias("code"), value.alias("x"), weight.alias("weight"))
            grouped = rows.groupBy("code", "x").agg(
                sql.sum("weight").alias("weight"), sql.count(sql.lit(1)).alias("n")
            )
            groups.append(grouped.select(sql.lit(k).alias("k"), "code", "x", "weight", "n"))
        table = self._collect(_united(groups))
        keys = table.column("k").to_numpy()
        codes = table.column("code").to_numpy().astype(np.int32)
        weights, values = _numbers(table.column("weight")), _numbers(table.column("x"))
        if (codes == _UNKNOWN_CLASS).any():
            raise DataError("the frame changed while it was read: run it again")
        rows = {k: (codes[keys == k], weights[keys == k], values[keys == k]) for k in (-1, *few)}
        totals = np.zeros(2 + self._classes)
        totals[0] = table.column("n").to_numpy()[keys == -1].sum()
        for own, heavy in zip(*rows.pop(-1)[:2], strict=True):
            totals[own + 2 if own >= 0 else 1] += heavy
        return rows, totals

    def _answer_few(self, item: Item) -> Answer:
        codes, weights, values = self._few[item[0]]
        part = counting.count(self._question([item]), codes, weights, [values])
        return (part[0][2 + self._classes :], *part[1:])


def _united(frames: list[Any]) -> Any:  # noqa: ANN401
    union = frames[0]
    for frame in frames[1:]:
        union = union.unionAll(frame)
    return union


def _numbers(column: Any) -> Doubles:  # noqa: ANN401
    """Give numbers of which a null is NaN."""
    return np.asarray(column.to_numpy(), np.float64)


def _no_cases(keys: list[str]) -> tuple[Codes | None, Doubles | None]:
    codes = np.empty(0, np.int32) if "code" in keys else None
    return codes, np.empty(0) if "weight" in keys else None


def _parted(answer: Answer, items: list[Item], classes: int) -> dict[int, Answer]:
    """Give the answers about each attribute, without the totals."""
    parts: dict[int, Answer] = {}
    start = 2 + classes
    for place, item in enumerate(items):
        end = start + (2 * len(item[1]) + 3) * classes
        own = answer[3] == place
        parts[item[0]] = (
            answer[0][start:end],
            answer[1][place : place + 1],
            answer[2][place : place + 1],
            answer[3][own],
            answer[4][own],
            answer[5][own],
            answer[6][own],
        )
        start = end
    return parts


def _joined(totals: Doubles, parts: list[Answer]) -> Answer:
    places = [np.full(len(part[3]), place, np.int32) for place, part in enumerate(parts)]
    sums, lows, highs, values, codes, weights = (
        np.concatenate([part[k] for part in parts]) for k in (0, 1, 2, 4, 5, 6)
    )
    sums = np.concatenate([totals, sums])
    return sums, lows, highs, np.concatenate(places), values, codes, weights
