"""The examples of docstrings and documents run, and the stub names what is there."""

import ast
import doctest
import importlib
import os
import pkgutil
import subprocess
import sys
from pathlib import Path

import nbformat
import pytest
from nbclient import NotebookClient

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


def outputs_of(notebook):
    """Kinds and texts of what the cells put out; a picture need not be the same to the bit."""
    return [
        (kind, "" if kind == "image/png" else content)
        for cell in notebook.cells
        for output in cell.get("outputs", [])
        if output.get("name") != "stderr"  # where Matplotlib tells of its cache of fonts
        for kind, content in sorted(output.get("data", {"text": output.get("text")}).items())
    ]


def test_the_notebook_runs_and_shows_tables_and_pictures():
    notebook = nbformat.read(PYTHON / "docs" / "loans.ipynb", as_version=4)
    nbformat.validate(notebook)
    recorded = outputs_of(notebook)
    NotebookClient(notebook, resources={"metadata": {"path": PYTHON / "docs"}}).execute()
    # jupyter execute --inplace python/docs/loans.ipynb writes it anew.
    assert outputs_of(notebook) == recorded
    kinds = [kind for kind, _ in recorded]
    assert kinds.count("image/png") == 2
    assert kinds.count("text/html") == 4


def test_the_pages_of_the_interface_name_all_that_is_public(tmp_path):
    command = [PYTHON.parent / "scripts" / "python_api.sh", tmp_path]
    subprocess.run(command, check=True, env={**os.environ, "PYTHON": sys.executable})
    for module, page in (("mcbinning", "mcbinning.html"), ("mcbinning.sklearn", "sklearn.html")):
        text = next(tmp_path.rglob(page)).read_text()
        public = importlib.import_module(module)
        names = getattr(public, "__all__", ["SupervisedBinner", "EqualFrequencyBinner"])
        assert [name for name in names if f'id="{name}"' not in text] == []
        assert "<h6 id=" in text, "docstrings are laid out, not shown as they stand"


def test_the_stub_names_what_the_core_has():
    stub = ast.parse((Path(mcbinning.__file__).with_name("_core.pyi")).read_text())
    named = {
        node.target.id if isinstance(node, ast.AnnAssign) else node.name
        for node in stub.body
        if isinstance(node, ast.AnnAssign | ast.ClassDef | ast.FunctionDef)
    }
    assert named == {name for name in dir(_core) if not name.startswith("__")}
