"""The examples of docstrings and documents run, and the stub names what is there."""

import ast
import doctest
import importlib
import pkgutil
from pathlib import Path

import pytest

import mcbinning
from mcbinning import _core

PYTHON = Path(__file__).parents[1]
MODULES = [f"mcbinning.{module.name}" for module in pkgutil.iter_modules(mcbinning.__path__)]


@pytest.mark.parametrize("name", ["mcbinning", *(m for m in MODULES if not m.endswith("_core"))])
def test_examples_of_docstrings(name):
    results = doctest.testmod(importlib.import_module(name))
    assert results.failed == 0


@pytest.mark.parametrize("document", ["docs/guide.md", "README.md"])
def test_examples_of_documents(document, monkeypatch, tmp_path):
    monkeypatch.chdir(PYTHON.parent)
    monkeypatch.setenv("OUTPUT", str(tmp_path))
    text = (PYTHON / document).read_text()
    # A closing fence is no output.
    test = doctest.DocTestParser().get_doctest(
        text.replace("```\n", "\n"), {}, document, document, 0
    )
    assert test.examples
    runner = doctest.DocTestRunner(optionflags=doctest.NORMALIZE_WHITESPACE)
    runner.run(test)
    assert runner.failures == 0


def test_the_stub_names_what_the_core_has():
    stub = ast.parse((Path(mcbinning.__file__).with_name("_core.pyi")).read_text())
    named = {
        node.target.id if isinstance(node, ast.AnnAssign) else node.name
        for node in stub.body
        if isinstance(node, ast.AnnAssign | ast.ClassDef | ast.FunctionDef)
    }
    assert named == {name for name in dir(_core) if not name.startswith("__")}
