"""Pictures; matplotlib is imported when one is asked for."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

import numpy as np

if TYPE_CHECKING:
    from mcbinning.model import Attribute


_MOST_CLASSES = 8


def plot_attribute(attribute: Attribute, target: str | None, ax: Any) -> Any:  # noqa: ANN401
    """Draw the weight of each bin, and the shares of classes over them.

    Of two classes the share of the event is drawn, of more at most the eight heaviest.
    """
    axes = _axes(ax)
    columns = attribute.columns()
    shown = [at for at, w in enumerate(columns["weight"]) if w > 0 or columns["bin"][at] >= 0]
    bins = len(attribute.cut_points) + 1
    # Rows that are no bins stand apart: they have no place in the order.
    places = np.array([at if at < bins else at + 0.5 for at in range(len(shown))])
    colors = ["0.75" if at < bins else "0.9" for at in range(len(shown))]
    axes.bar(places, columns["weight"][shown], color=colors, edgecolor="0.5", linewidth=0.8)
    axes.set_ylabel("weight")
    axes.yaxis.set_major_formatter("{x:,.0f}")
    axes.set_title(attribute.name, loc="left")
    labels = [columns["interval"][at] for at in shown]
    axes.set_xticks(places, labels, rotation=45, ha="right", rotation_mode="anchor")
    axes.spines["top"].set_visible(False)
    if target is None:
        axes.spines["right"].set_visible(False)
        return axes
    shares = axes.twinx()
    for category in attribute.main_classes(_MOST_CLASSES):
        values = columns[f"share {category}"][shown]
        (line,) = shares.plot(places[:bins], values[:bins], marker="o", label=category)
        shares.plot(places[bins:], values[bins:], "o", color=line.get_color())
    shares.set_ylim(0, 1.02)
    shares.yaxis.set_major_formatter("{x:.0%}")
    shares.set_ylabel(f"{target}: share within the bin")
    shares.spines["top"].set_visible(False)
    shares.legend(
        frameon=False,
        ncols=_MOST_CLASSES // 2,
        loc="lower right",
        bbox_to_anchor=(1.0, 1.0),
        borderaxespad=0.0,
    )
    return axes


def plot_ranking(ranked: list[Attribute], ax: Any) -> Any:  # noqa: ANN401
    """Draw the gain over all cases of each attribute, the highest on top."""
    axes = _axes(ax)
    gains = [attribute.gain_over_all_cases for attribute in ranked]
    bars = axes.barh([attribute.name for attribute in ranked], gains, color="0.6")
    axes.bar_label(bars, labels=[f"{gain:.3f}" for gain in gains], padding=3)
    axes.margins(x=0.12)
    axes.invert_yaxis()
    axes.set_xlabel("gain over all cases (bits)")
    for side in ("top", "right"):
        axes.spines[side].set_visible(False)
    return axes


def _axes(ax: Any) -> Any:  # noqa: ANN401
    if ax is not None:
        return ax
    import matplotlib.pyplot as plt

    return plt.subplots(layout="constrained")[1]
