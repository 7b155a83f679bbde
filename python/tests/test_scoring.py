"""A model on other data."""

import numpy as np
import pandas as pd
import pyarrow.csv
import pytest

import mcbinning as mb

OPTIONS = {"target": "default", "weight": "weight", "missing": {"income": [-1]}}


@pytest.fixture
def model(loans):
    return mb.fit(loans, **OPTIONS)


def test_the_data_of_the_fit_give_the_tables_of_the_fit(model, loans):
    for data in (loans, pd.read_csv(loans), pyarrow.csv.read_csv(loans)):
        score = mb.score(model, data)
        assert score.cases == 4000
        for name, attribute in model.items():
            table = score[name].table
            fitted = attribute.table
            for column in ("weight", "share", "weight yes", "share yes", "woe", "iv"):
                np.testing.assert_array_equal(table[column], fitted[column])
            assert score[name].stability_index == 0
            assert score[name].information_value == attribute.information_value
            assert score[name].information_gain == pytest.approx(attribute.information_gain)


def test_evidence_is_that_of_the_event_and_adjustment_of_the_program(mcbin, tmp_path):
    path = tmp_path / "data.csv"
    data = pd.DataFrame({"x": np.arange(100.0), "t": ["no"] * 61 + ["yes"] * 39})
    data.loc[:4, "x"] = np.nan
    data.to_csv(path, index=False)
    saved = tmp_path / "model.json"
    mcbin("fit", path, "--target=t", "--event=no", "--woe-adjustment=2", f"--output={saved}")
    applied = tmp_path / "applied.csv"
    mcbin("apply", saved, path, "--as=woe", f"--output={applied}")
    expected = pyarrow.csv.read_csv(applied)["x_woe"].to_numpy()

    model = mb.load(saved, "pandas")
    np.testing.assert_array_equal(model.transform(data, encode="woe")["x_woe"], expected)
    # Five missing cases, all of them no.
    missing = np.log(((0 + 2) / 39) / ((5 + 2) / 61))
    table = model["x"].table
    assert table.set_index("interval").loc["missing", "woe"] == pytest.approx(missing)
    score = mb.score(model, data)["x"]
    np.testing.assert_array_equal(score.table["woe"], table["woe"])
    assert score.information_value == model["x"].information_value
    assert model["x"].main_classes(8) == ["no"]


def test_the_summary_is_a_frame_of_the_kind_that_came_in(loans):
    data = pd.read_csv(loans)
    summary = mb.score(mb.fit(data, **OPTIONS), data[data["age"] < 40]).summary
    assert isinstance(summary, pd.DataFrame)
    index = summary.set_index("attribute")["stability_index"]
    assert index["age"] > 0.1
    assert index["credit_score"] < 0.01


def test_scores_are_those_of_the_program(model, loans, mcbin, tmp_path):
    saved = tmp_path / "model.json"
    model.save(saved)
    score = mb.score(model, loans)
    for form, text in (
        ("json", score.to_json()),
        ("csv", score.to_csv()),
        ("html", score.report()),
        ("text", str(score)),
    ):
        written = tmp_path / form
        mcbin("score", saved, loans, f"--to={form}", f"--output={written}")
        assert text == written.read_text()


def test_what_the_fit_never_saw_is_named(model, loans):
    data = pd.read_csv(loans)
    assert mb.score(model, data)["age"].unseen == ""
    score = mb.score(model, data.assign(age=data["age"] + 100.0))["age"]
    assert "above" in score.unseen
    assert score.stability == "large shift"


def test_without_target_and_weight_there_are_only_counts(model, loans):
    data = pd.read_csv(loans).drop(columns=["default", "weight"])
    with pytest.raises(
        mb.DataError, match=r"no column default, the target: .* target or say target=False"
    ):
        mb.score(model, data)
    score = mb.score(model, data, target=False, weight=False)
    assert list(score.summary) == ["attribute", "stability_index", "stability"]
    assert score["age"].information_gain is None
    assert score["age"].table["weight"].sum() == 4000


def test_columns_may_have_other_names(model, loans):
    data = pd.read_csv(loans).rename(columns={"default": "bad", "weight": "n"})
    score = mb.score(model, data, target="bad", weight="n")
    assert score["age"].information_value == model["age"].information_value


@pytest.mark.parametrize(
    ("change", "message"),
    [
        ({"default": ["maybe"]}, "row 0: the target default holds 'maybe', which is no class"),
        ({"age": ["old"]}, "row 0: column age holds 'old', which is no number"),
        ({"weight": [-1]}, "no case can be used"),
        ({"default": [None]}, "no case has a category in the target default"),
    ],
)
def test_what_cannot_be_scored_is_named(model, change, message):
    data = {**{name: [1.0] for name in model}, "default": ["no"], "weight": [1], **change}
    with pytest.raises(mb.DataError, match=message):
        mb.score(model, data)
