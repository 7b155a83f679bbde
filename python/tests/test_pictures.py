"""What a notebook shows, and the plots."""

import subprocess
import sys
from html.parser import HTMLParser

import matplotlib as mpl
import numpy as np
import pytest

import mcbinning as mb

mpl.use("agg")
import matplotlib.pyplot as plt


@pytest.fixture
def model():
    x = np.arange(100.0)
    x[:5] = np.nan
    data = {"<x>": x, "flat": np.ones(100), "t": np.where(np.arange(100) > 60, "b", "a")}
    return mb.fit(data, target="t")


class Cells(HTMLParser):
    """The texts of the rows of all tables."""

    def __init__(self, page):
        super().__init__()
        self.rows = []
        self.open = []
        self.feed(page)
        assert self.open == []

    def handle_starttag(self, tag, attrs):
        self.open.append(tag)
        if tag == "tr":
            self.rows.append([])
        elif tag in ("td", "th"):
            self.rows[-1].append("")

    def handle_endtag(self, tag):
        assert self.open.pop() == tag

    def handle_data(self, data):
        if self.open and self.open[-1] in ("td", "th"):
            self.rows[-1][-1] += data


def test_a_model_shows_its_ranking_and_its_first_tables(model):
    page = model._repr_html_()
    rows = Cells(page).rows
    assert rows[0] == ["attribute", "bins", "gain over all cases", "", "remark"]
    gain = model["<x>"].gain_over_all_cases
    assert [row[:3] for row in rows[1:3]] == [["<x>", "2", f"{gain:.4f}"], ["flat", "1", "0.0000"]]
    assert rows[3] == ["bin", "weight", "", "b", "woe", "iv"]
    assert rows[4][:4] == ["(-inf, 60]", "56", "", "0.0%"]
    assert rows[6][:2] == ["missing", "5"]
    assert page.count("<details open>") == 2


def test_no_colour_is_that_of_a_light_or_a_dark_page(model):
    page = model._repr_html_()
    assert "currentColor" in page
    assert "#" not in page
    assert "white;" not in page
    assert "black" not in page


def test_the_longest_bar_is_that_of_the_heaviest_bin_and_none_has_no_bar(model):
    page = model["<x>"]._repr_html_()
    widths = [part.split("em")[0] for part in page.split("width:")[1:]]
    assert [w for w in widths if w[0].isdigit()][1::2] == ["7.0", "4.9", "0.6"]
    assert "user-missing" not in page


def test_tables_show_the_heaviest_of_many_classes():
    data = {"x": np.arange(600), "t": np.arange(600) // 20}
    data["t"][:100] = 99
    attribute = mb.fit(data, target="t")["x"]
    assert attribute.main_classes(3) == ["5", "6", "99"]
    assert len(Cells(attribute._repr_html_()).rows[0]) == 3 + 4
    assert len(attribute.plot().figure.axes[1].get_legend().get_texts()) == 8


def test_plot_draws_each_bin_and_the_share_of_the_event(model):
    axes = model["<x>"].plot()
    assert [bar.get_height() for bar in axes.patches] == [56, 39, 5]
    labels = [label.get_text() for label in axes.get_xticklabels()]
    assert labels == ["(-inf, 60]", "(60, inf)", "missing"]
    shares = axes.figure.axes[1]
    bins, beside = shares.lines
    assert bins.get_ydata().tolist() == [0, 1]
    assert beside.get_ydata().tolist() == [0]
    assert shares.get_ylabel() == "t: share within the bin"
    assert [text.get_text() for text in shares.get_legend().get_texts()] == ["b"]


def test_plot_without_a_target_has_one_axis_and_goes_where_it_is_told():
    _, axes = plt.subplots()
    model = mb.fit_equal_frequency({"x": range(9)}, bins=3)
    assert model["x"].plot(axes) is axes
    assert len(axes.figure.axes) == 1
    assert len(axes.patches) == 3


def test_plot_ranking_has_the_highest_on_top(model):
    axes = model.plot_ranking()
    assert [label.get_text() for label in axes.get_yticklabels()] == ["<x>", "flat"]
    assert axes.yaxis_inverted()
    assert axes.patches[0].get_width() == model["<x>"].gain_over_all_cases
    assert axes.get_xlabel() == "gain over all cases (bits)"


def test_the_gain_over_all_cases_counts_missing_ones_as_a_bin(model):
    ranking = model.ranking
    # Every bin is of one class, and missing ones are all of class a, which has 61 of 100 cases.
    before = -sum(p * np.log2(p) for p in (0.61, 0.39))
    assert ranking["gain_over_all_cases"] == pytest.approx([before, 0])
    within = -sum(p * np.log2(p) for p in (56 / 95, 39 / 95))
    assert ranking["information_gain"] == pytest.approx([within, 0])


def test_matplotlib_and_the_like_are_not_imported_unless_asked_for():
    program = (
        "import sys, mcbinning as mb\n"
        "mb.fit({'x': range(9), 't': [0] * 5 + [1] * 4}, target='t')._repr_html_()\n"
        "print(*{'matplotlib', 'pandas', 'polars', 'pyarrow', 'sklearn', 'tqdm'} & {*sys.modules})"
    )
    command = [sys.executable, "-c", program]
    assert subprocess.run(command, check=True, capture_output=True, text=True).stdout == "\n"
