"""The estimators against scikit-learn's own checks, and in its tools."""

import pickle

import joblib
import numpy as np
import pandas as pd
import polars as pl
import pytest
import sklearn
from sklearn.base import clone
from sklearn.linear_model import LogisticRegression
from sklearn.model_selection import GridSearchCV
from sklearn.pipeline import make_pipeline
from sklearn.utils.estimator_checks import parametrize_with_checks

import mcbinning as mb
from mcbinning.sklearn import EqualFrequencyBinner, SupervisedBinner


# Not with encode="interval": the checks compare numbers, and it makes texts. With "woe" they fit
# targets of three classes, which have no evidence.
@parametrize_with_checks(
    [
        SupervisedBinner(),
        SupervisedBinner(encode="onehot", left_closed=True),
        SupervisedBinner(threshold=5, pre_bins=4),
        SupervisedBinner(missing=[0.0], small_bins=0.1),
        EqualFrequencyBinner(),
        EqualFrequencyBinner(bins=3, encode="onehot"),
        EqualFrequencyBinner(left_closed=True, missing=[1.0]),
    ]
)
def test_estimator_checks(estimator, check):
    check(estimator)


@pytest.fixture
def data():
    rng = np.random.default_rng(7)
    frame = pd.DataFrame({"a": rng.normal(size=400), "b": rng.normal(size=400)})
    frame.loc[::9, "b"] = np.nan
    return frame, np.where(frame["a"] + rng.normal(size=400) > 0, "yes", "no")


def test_the_model_is_that_of_fit(data):
    X, y = data
    model = SupervisedBinner().fit(X, y).model_
    plain = mb.fit(X.assign(target=y), target="target", na=[], attributes=["a", "b"])
    assert model == plain


@pytest.mark.parametrize("encode", ["ordinal", "interval", "onehot", "woe"])
@pytest.mark.parametrize("kind", ["pandas", "polars"])
def test_set_output_names_the_columns(data, encode, kind):
    X, y = data
    binner = SupervisedBinner(encode=encode).set_output(transform=kind)
    out = binner.fit_transform(X, y)
    assert isinstance(out, pd.DataFrame if kind == "pandas" else pl.DataFrame)
    assert list(out.columns) == list(binner.get_feature_names_out())
    assert len(out) == len(X)


def test_woe_is_that_of_the_tables(data):
    X, y = data
    binner = SupervisedBinner(encode="woe").fit(X, y)
    evidence = binner.model_["b"].weight_of_evidence
    assert binner.transform(X)[0, 1] == evidence[-2]


def test_woe_needs_two_classes(data):
    X, _ = data
    with pytest.raises(ValueError, match="two classes"):
        SupervisedBinner(encode="woe").fit(X, np.arange(400) % 3)


def test_pipelines_search_clone_and_pickle(data):
    X, y = data
    pipeline = make_pipeline(SupervisedBinner(encode="woe"), LogisticRegression())
    search = GridSearchCV(pipeline, {"supervisedbinner__small_bins": [0.0, 0.2]}, cv=3)
    search.fit(X, y)
    assert search.best_score_ > 0.6
    again = pickle.loads(pickle.dumps(search.best_estimator_))
    np.testing.assert_array_equal(again.predict(X), search.predict(X))
    assert clone(pipeline).get_params()["supervisedbinner__encode"] == "woe"


@pytest.mark.parametrize("backend", ["threading", "loky"])
def test_joblib_fits_and_stores(data, backend, tmp_path):
    X, y = data
    alone = SupervisedBinner().fit(X, y).model_
    fits = [joblib.delayed(SupervisedBinner(n_jobs=2).fit)(X, y) for _ in range(4)]
    fitted = joblib.Parallel(n_jobs=2, backend=backend)(fits)
    assert [binner.model_ for binner in fitted] == [alone] * 4
    joblib.dump(fitted[0], tmp_path / "binner.joblib")
    again = joblib.load(tmp_path / "binner.joblib")
    np.testing.assert_array_equal(again.transform(X), fitted[0].transform(X))


def test_sample_weight_is_routed(data):
    X, y = data
    weight = np.arange(400) % 3
    with sklearn.config_context(enable_metadata_routing=True):
        binner = SupervisedBinner().set_fit_request(sample_weight=True)
        model = LogisticRegression().set_fit_request(sample_weight=False)
        pipeline = make_pipeline(binner, model)
        X = X.fillna(0.0)
        pipeline.fit(X, y, sample_weight=weight)
    alone = SupervisedBinner().fit(X, y, sample_weight=weight)
    assert pipeline[0].model_ == alone.model_
    repeated = SupervisedBinner().fit(X.loc[X.index.repeat(weight)], np.repeat(y, weight))
    assert [a.cut_points for a in alone.model_.values()] == [
        a.cut_points for a in repeated.model_.values()
    ]


def test_weights_that_are_not_whole_are_refused_unless_rounded(data):
    X, y = data
    weight = np.full(400, 1.5)
    with pytest.raises(ValueError, match="whole"):
        SupervisedBinner().fit(X, y, sample_weight=weight)
    model = SupervisedBinner(weight_rounding="round").fit(X, y, sample_weight=weight).model_
    assert model["a"].weights.sum() == 800


@pytest.mark.parametrize(
    ("y", "message"),
    [(np.zeros(400), "one class"), (np.tile(["a", "b", "b "], 134)[:400], "blanks")],
)
def test_bad_targets(data, y, message):
    with pytest.raises(ValueError, match=message):
        SupervisedBinner().fit(data[0], y)


def test_a_column_without_values_is_named(data):
    X, y = data
    with pytest.raises(ValueError, match=r"column cannot be cut.*no case has a value"):
        SupervisedBinner().fit(X.assign(c=np.nan), y)
