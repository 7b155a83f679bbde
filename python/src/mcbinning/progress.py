"""Progress of long work."""

from __future__ import annotations

import sys
from collections.abc import Callable, Iterator
from contextlib import contextmanager
from typing import Any

Callback = Callable[[str, float | None, float, str], object]
Progress = Callback | bool | None


@contextmanager
def progress_callback(progress: Progress) -> Iterator[Callback | None]:
    """Give the callable that the core tells of progress, or None."""
    if progress is None:
        progress = sys.stderr is not None and sys.stderr.isatty() and _has_tqdm()
    if progress is False:
        yield None
    elif progress is True:
        bar = _Bar()
        try:
            yield bar
        finally:
            bar.close()
    else:
        yield progress


def _has_tqdm() -> bool:
    try:
        import tqdm  # noqa: F401
    except ImportError:
        return False
    return True


class _Bar:
    """A bar of tqdm, which goes away when the work ends."""

    def __init__(self) -> None:
        from tqdm.auto import tqdm

        self._bar: Any = tqdm(
            total=1.0, leave=False, bar_format="{desc} {percentage:3.0f}% |{bar}|"
        )

    def __call__(self, task: str, share: float | None, count: float, unit: str) -> None:
        self._bar.set_description_str(f"{task}: {count:,.0f} {unit}", refresh=False)
        self._bar.n = share or 0.0
        self._bar.refresh()

    def close(self) -> None:
        self._bar.close()
