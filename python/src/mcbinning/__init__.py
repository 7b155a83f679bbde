"""Supervised and equal-frequency binning of numeric columns.

Examples
--------
>>> import mcbinning as mb
>>> data = {"age": [21, 22, 25, 30, 41, 45, 52, 60] * 5, "bought": list("nnnnyyyy") * 5}
>>> model = mb.fit(data, target="bought")
>>> model.transform({"age": [20, None, 50]})
{'age_bin': array([ 0, -1,  1], dtype=int32)}
"""

from mcbinning._core import version as __version__
from mcbinning.errors import DataError, OptionError
from mcbinning.fitting import fit, fit_equal_frequency
from mcbinning.model import Attribute, Model, from_json, load
from mcbinning.scoring import AttributeScore, Score, score

__all__ = [
    "Attribute",
    "AttributeScore",
    "DataError",
    "Model",
    "OptionError",
    "Score",
    "__version__",
    "fit",
    "fit_equal_frequency",
    "from_json",
    "load",
    "score",
]
