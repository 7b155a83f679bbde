"""What the cells of a Spark frame say, as SQL expressions with the meaning that the core has."""

from __future__ import annotations

from typing import Any

import pyarrow as pa

from mcbinning import _core
from mcbinning.errors import DataError

_NUMBER = r"^[+-]?([0-9]+\.?[0-9]*|\.[0-9]+)([eE][+-]?[0-9]+)?$"
_INFINITE = r"^(?i)[+-]?inf(inity)?$"
_LARGEST_WHOLE = 2.0**53
# The lowest double stands for a missing value inside the library.
_RESERVED = float.fromhex("-0x1.fffffffffffffp+1023")

_ARROW = {
    "boolean": pa.bool_(),
    "byte": pa.int8(),
    "short": pa.int16(),
    "integer": pa.int32(),
    "long": pa.int64(),
    "float": pa.float32(),
    "double": pa.float64(),
    "string": pa.string(),
    "char": pa.string(),
    "varchar": pa.string(),
    "date": pa.date32(),
    "timestamp": pa.timestamp("us"),
    "timestamp_ntz": pa.timestamp("us"),
    "binary": pa.binary(),
}


def empty_table(frame: Any) -> pa.Table:  # noqa: ANN401
    """Give an Arrow table without rows that has the columns of a Spark frame."""
    return pa.table(
        {field.name: pa.array([], _arrow_type(field.dataType)) for field in frame.schema.fields}
    )


def _arrow_type(kind: Any) -> pa.DataType:  # noqa: ANN401
    name = kind.typeName()
    if name == "decimal":
        return pa.decimal128(kind.precision, kind.scale)
    return _ARROW.get(name.partition("(")[0], pa.list_(pa.int8()))


class Cells:
    """The cells of one column."""

    def __init__(self, frame: Any, name: str, na: list[str]) -> None:  # noqa: ANN401
        from pyspark.sql import functions as sql

        self._sql = sql
        self._na = na
        self.name = name
        self.kind = frame.schema[name].dataType.typeName().partition("(")[0]
        self.raw = sql.col("`" + name.replace("`", "``") + "`")
        self.text = sql.btrim(self.raw.cast("string"), sql.lit(" \t"))

    @property
    def is_text(self) -> bool:
        """Whether cells are texts that may or may not be numbers."""
        return self.kind in ("string", "char", "varchar")

    @property
    def number(self) -> Any:  # noqa: ANN401
        """The number, null when the cell is missing or no number."""
        sql = self._sql
        if self.is_text:
            infinite = sql.when(self.text.startswith("-"), float("-inf")).otherwise(float("inf"))
            return (
                sql.when(self.is_missing, None)
                .when(self.text.rlike(_NUMBER), self.text.try_cast("double"))
                .when(self.text.rlike(_INFINITE), infinite)
            )
        return sql.when(~self.is_missing, self.raw.cast("double"))

    @property
    def is_missing(self) -> Any:  # noqa: ANN401
        """Whether the cell is null, NaN, blank or one of the texts that stand for that."""
        sql = self._sql
        missing = self.raw.isNull()
        if self.is_text:
            return missing | self.text.isin(["", *self._na])
        if self.kind in ("float", "double"):
            missing |= sql.isnan(self.raw)
        numbers = _core.missing_numbers(self._na)
        if not numbers:
            return missing
        if self.kind == "decimal":
            return missing | self.text.isin(self._na)
        return missing | self.raw.cast("double").isin(numbers)

    def weight(self, rules: _core.MissingRules, rounds: bool) -> Any:  # noqa: ANN401
        """Give the cell as a weight, null for one that drops the case."""
        sql = self._sql
        shifted = self.number + 0.5 if rounds else self.number
        whole = sql.when(shifted < _LARGEST_WHOLE, sql.floor(shifted).cast("double"))
        whole = whole.otherwise(shifted)
        lasts = (whole > 0) & (self.number < float("inf")) & ~declared(self.number, rules)
        return sql.when(lasts, whole)

    def sightings(self) -> list[Any]:
        """Give aggregates: a cell that is a number, one that is a text, one that is too large."""
        sql = self._sql
        if not self.is_text:
            nothing = sql.lit(None).cast("string")
            return [
                sql.min(sql.when(self.number.isNotNull(), self.raw.cast("string"))),
                nothing,
                nothing,
            ]
        is_number = self.text.rlike(_NUMBER) & ~self.is_missing
        is_large = is_number & (sql.abs(self.number) == float("inf"))
        is_text = ~is_number & ~self.text.rlike(_INFINITE) & ~self.is_missing
        parts = (self.number.isNotNull() & ~is_large, is_text, is_large)
        return [sql.min(sql.when(part, self.text)) for part in parts]

    def met(self, rules: _core.MissingRules) -> list[Any]:
        """Give aggregates: one value of each declaration that cells meet, null for none."""
        sql = self._sql
        tests = [self.number == value for value in rules.values]
        if rules.range is not None:
            tests.append(self.number.between(*rules.range))
        return [sql.min(sql.when(test, self.number)) for test in tests]

    def reserved(self) -> Any:  # noqa: ANN401
        """Give an aggregate: whether a cell is the number that the library keeps for itself."""
        return self._sql.max(self.number == _RESERVED)

    def fail_reserved(self) -> None:
        """Say so."""
        raise DataError(
            f"the frame: '{_RESERVED}' in column {self.name} is the number that stands for a "
            "missing value inside the library: name it with na if it is missing"
        )


def declared(number: Any, rules: _core.MissingRules) -> Any:  # noqa: ANN401
    """Tell whether a number is declared missing; null for a null."""
    test = number.isin(rules.values) if rules.values else number.isNaN()
    return test if rules.range is None else test | number.between(*rules.range)
