"""What a notebook shows: tables with bars, readable on light and dark pages."""

from __future__ import annotations

from html import escape
from typing import TYPE_CHECKING

if TYPE_CHECKING:
    from mcbinning.model import Attribute, Model

_SHOWN_IN_FULL = 3
_MOST_CLASSES = 4
# The colour of the text is that of the page, so bars and lines follow it.
_CELL = "padding:.15em .6em;text-align:{};border-bottom:1px solid rgba(128,128,128,.35);{}"
_SIDES = {
    "l": _CELL.format("left", "white-space:nowrap"),
    "r": _CELL.format("right", "white-space:nowrap"),
    "t": _CELL.format("left", "min-width:12em"),
}
_BAR = (
    '<div style="background:currentColor;opacity:.55;height:.7em;min-width:1px;'
    'width:{:.1f}em"></div>'
)
_BAR_WIDTH = 7.0


def model_html(model: Model) -> str:
    """Give the ranking with bars, then the first attributes in full, the rest folded up."""
    ranked = model.ranked
    most = max((attribute.gain_over_all_cases for attribute in ranked), default=0.0)
    rows = [
        [
            escape(attribute.name),
            str(len(attribute.cut_points) + 1),
            f"{attribute.gain_over_all_cases:.4f}",
            _bar(attribute.gain_over_all_cases, most),
            escape(attribute.remark),
        ]
        for attribute in ranked
    ]
    parts = [
        f"<p>{escape(str(model.as_dict()['method']))} model, {len(model)} attributes</p>",
        _table(["attribute", "bins", "gain over all cases", "", "remark"], rows, "lrrlt"),
    ]
    for position, attribute in enumerate(ranked):
        opened = " open" if position < _SHOWN_IN_FULL else ""
        parts.append(
            f"<details{opened}><summary>{escape(attribute.name)}</summary>"
            f"{_bins_html(attribute)}</details>"
        )
    return "".join(parts)


def attribute_html(attribute: Attribute) -> str:
    """Give the table of the bins with bars."""
    return f"<p><b>{escape(attribute.name)}</b></p>{_bins_html(attribute)}"


def _bins_html(attribute: Attribute) -> str:
    columns = attribute.columns()
    classes = attribute.main_classes(_MOST_CLASSES)
    most = float(max(columns["weight"], default=0.0))
    header = ["bin", "weight", "", *classes]
    rows = []
    for at, label in enumerate(columns["interval"]):
        weight = float(columns["weight"][at])
        if weight == 0 and columns["bin"][at] < 0:
            continue
        shares = [f"{100 * columns[f'share {name}'][at]:.1f}%" for name in classes]
        rows.append([escape(label), f"{weight:,.0f}", _bar(weight, most), *shares])
        if "woe" in columns:
            rows[-1] += [f"{columns['woe'][at]:.3f}", f"{columns['iv'][at]:.4f}"]
    if "woe" in columns:
        header += ["woe", "iv"]
    remark = f"<p>{escape(attribute.remark)}</p>" if attribute.remark else ""
    return remark + _table(header, rows, "lrl" + "r" * (len(header) - 3))


def _table(header: list[str], rows: list[list[str]], sides: str) -> str:
    styles = [_SIDES[side] for side in sides]
    head = "".join(
        f'<th style="{style}">{escape(text)}</th>'
        for style, text in zip(styles, header, strict=True)
    )
    body = "".join(
        "<tr>"
        + "".join(f'<td style="{s}">{cell}</td>' for s, cell in zip(styles, row, strict=True))
        + "</tr>"
        for row in rows
    )
    content = f"<thead><tr>{head}</tr></thead><tbody>{body}</tbody>"
    return f'<table style="border-collapse:collapse">{content}</table>'


def _bar(value: float, most: float) -> str:
    return _BAR.format(_BAR_WIDTH * value / most) if value > 0 else ""
