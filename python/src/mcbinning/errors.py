"""What goes wrong, in Python's words."""

from __future__ import annotations

import re
from collections.abc import Iterator
from contextlib import contextmanager

from mcbinning import _core

_OPTIONS = {
    "--attribute": "attributes",
    "--exclude": "exclude",
    "--target": "target",
    "--weight": "weight",
    "--no-target": "target=False",
    "--no-weight": "weight=False",
    "--weight-rounding": "weight_rounding",
    "--type": "types",
    "--na": "na",
    "--missing": "missing",
    "--missing-range": "missing_range",
    "--delimiter": "delimiter",
    "--event": "event",
    "--woe-adjustment": "woe_adjustment",
    "--cuts": "cuts",
    "--left-closed": "left_closed=True",
    "--min-bin-share": "min_bin_share",
    "--min-bin-weight": "min_bin_weight",
    "--max-bins": "max_bins",
}
_OPTION = re.compile(r"(?<![\w-])--[a-z]+(?:-[a-z]+)*(?![\w-])")


class DataError(ValueError):
    """The data, a file or a model cannot be used; the text names the column and the place."""


class OptionError(ValueError):
    """The options contradict each other."""


def _reworded(text: str) -> str:
    return _OPTION.sub(lambda option: _OPTIONS.get(option[0], option[0]), text)


@contextmanager
def in_python_words() -> Iterator[None]:
    """Raise the errors of the core as those of this module."""
    try:
        yield
    except _core.DataError as error:
        raise DataError(_reworded(str(error))) from None
    except _core.UsageError as error:
        raise OptionError(_reworded(str(error))) from None
