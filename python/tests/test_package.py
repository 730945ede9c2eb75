"""What is installed: its texts, its types, and how soon it is there."""

import ast
import importlib
import inspect
import os
import subprocess
import sys
from pathlib import Path

import conftest
import pytest

import kvr

modules = ["kvr", "kvr.classic", "kvr.diagnostics", "kvr.files", "kvr.fixed", "kvr.memory", "kvr.word"]


@pytest.mark.parametrize("name", modules)
def test_examples_in_texts(name, monkeypatch):
    module = importlib.import_module(name)
    monkeypatch.setattr(module, "kvr", kvr, raising=False)
    failed, _ = conftest.failed_examples(module)
    assert failed == 0


def test_some_examples_are_there():
    assert sum(conftest.doctest.DocTestFinder().find(importlib.import_module(name)) != [] for name in modules) == 7


def test_everything_has_a_text():
    for name in kvr.__all__:
        thing = getattr(kvr, name)
        assert inspect.getdoc(thing), name
        if inspect.isclass(thing):
            for member, value in vars(thing).items():
                if not member.startswith("_") and (inspect.isfunction(value) or isinstance(value, property)):
                    assert inspect.getdoc(value), f"{name}.{member}"


def test_no_format_is_known_to_python():
    names = {each.name for each in kvr.formats()}
    for source in Path(kvr.__file__).parent.glob("*.py"):
        constants = {node.value for node in ast.walk(ast.parse(source.read_text())) if isinstance(node, ast.Constant)}
        assert not constants & names, source


@pytest.mark.skipif("KVR_TEST_MODULES" not in os.environ, reason="the other module is made by CMake")
def test_exceptions_of_other_modules_are_theirs(monkeypatch, tmp_path):
    monkeypatch.syspath_prepend(os.environ["KVR_TEST_MODULES"])
    other = importlib.import_module("kvr_tests_other_module")
    with pytest.raises(RuntimeError, match="of its own"):
        other.fail()
    with pytest.raises(FileNotFoundError):
        kvr.read(tmp_path / "boot.mif")


def test_the_tests_leave_no_files(tmp_path, pytestconfig):
    test = Path(__file__).with_name("test_models.py")
    command = [sys.executable, "-B", "-m", "pytest", "-q", "-p", "no:cacheprovider", "-c", pytestconfig.inipath]
    run = subprocess.run(
        [*command, f"{test}::test_words_are_those_of_a_list"], cwd=tmp_path, capture_output=True, text=True
    )
    assert run.returncode == 0 and "1 passed" in run.stdout, run.stdout
    assert list(tmp_path.iterdir()) == []


def seconds(statement):
    """Of the processor, which other programs take less from."""
    code = f"import time; before = time.process_time(); {statement}; print(time.process_time() - before)"
    run = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, check=True)
    return float(run.stdout)


@pytest.mark.skipif("LD_PRELOAD" in os.environ, reason="a sanitizer takes its time")
def test_the_import_is_hardly_longer_than_that_of_numpy():
    pairs = [(seconds("import numpy, kvr"), seconds("import numpy")) for _ in range(7)]
    both, numpy_alone = map(min, zip(*pairs))
    assert both <= 1.5 * numpy_alone
