"""Pictures; matplotlib is imported when one is asked for."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

import numpy as np

if TYPE_CHECKING:
    from mcbinning.model import Attribute


def plot_attribute(attribute: Attribute, classes: list[str], ax: Any) -> Any:  # noqa: ANN401
    """Draw the weight of each bin, and the share of each class but the first over them."""
    axes = _axes(ax)
    columns = attribute.columns()
    shown = [at for at, w in enumerate(columns["weight"]) if w > 0 or columns["bin"][at] >= 0]
    places = np.arange(len(shown))
    axes.bar(places, columns["weight"][shown], color="0.8", edgecolor="0.4")
    axes.set_ylabel("weight")
    axes.set_title(attribute.name)
    labels = [columns["interval"][at] for at in shown]
    axes.set_xticks(places, labels, rotation=45, ha="right")
    if classes:
        shares = axes.twinx()
        for category in classes[1:]:
            shares.plot(places, columns[f"share {category}"][shown], marker="o", label=category)
        shares.set_ylim(0, 1)
        shares.set_ylabel("share of class")
        shares.legend(frameon=False)
    return axes


def plot_ranking(ranked: list[Attribute], ax: Any) -> Any:  # noqa: ANN401
    """Draw the information gain of each attribute, the highest on top."""
    axes = _axes(ax)
    axes.barh([a.name for a in ranked], [a.information_gain for a in ranked], color="0.5")
    axes.invert_yaxis()
    axes.set_xlabel("information gain (bits)")
    return axes


def _axes(ax: Any) -> Any:  # noqa: ANN401
    if ax is not None:
        return ax
    import matplotlib.pyplot as plt

    return plt.subplots(layout="constrained")[1]
