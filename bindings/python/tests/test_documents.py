"""What is written about the package: docstrings run and are complete, the page has them, examples run."""

from __future__ import annotations

import doctest
import importlib
import inspect
import os
import pkgutil
import re
import subprocess
import sys
from pathlib import Path
from typing import Any

import pytest
import reference
from support import SOURCE

import keltrix as kx

PAGE = SOURCE / "docs" / "python.md"
PACKAGE = SOURCE / "bindings" / "python"
BEGIN = "<!-- The reference is made from the docstrings; KELTRIX_WRITE_PAGES=1 writes it anew. -->\n"
OPTIONS = doctest.NORMALIZE_WHITESPACE | doctest.ELLIPSIS


def modules() -> list[str]:
    return ["keltrix", *(f"keltrix.{one.name}" for one in pkgutil.iter_modules(kx.__path__) if one.name != "_keltrix")]


@pytest.mark.parametrize("name", modules())
def test_examples_of_docstrings_run(name: str) -> None:
    found = doctest.testmod(importlib.import_module(name), optionflags=OPTIONS)
    assert found.failed == 0


def test_there_are_examples() -> None:
    count = sum(len(test.examples) for name in modules() for test in doctest.DocTestFinder().find(importlib.import_module(name)))
    assert count >= 40


def test_examples_of_the_page_run() -> None:
    text = PAGE.read_text(encoding="utf-8").split(BEGIN)[0]
    blocks = [block for block in re.findall(r"^```python\n(.*?)^```$", text, re.MULTILINE | re.DOTALL) if ">>>" in block]
    assert len(blocks) >= 5
    test = doctest.DocTestParser().get_doctest("\n".join(blocks), {}, "docs/python.md", str(PAGE), 0)
    runner = doctest.DocTestRunner(optionflags=OPTIONS)
    runner.run(test)
    assert runner.tries >= 20 and runner.failures == 0


def test_the_page_has_the_reference() -> None:
    text = PAGE.read_text(encoding="utf-8")
    before, _, reference_text = text.partition(BEGIN)
    assert reference_text or os.environ.get("KELTRIX_WRITE_PAGES")
    if os.environ.get("KELTRIX_WRITE_PAGES"):
        PAGE.write_text(before + BEGIN + "\n" + reference.page(), encoding="utf-8")
        return
    assert reference_text == "\n" + reference.page(), "write it anew with KELTRIX_WRITE_PAGES=1"


def test_the_reference_leaves_no_name_out() -> None:
    assert sorted(name for _, names in reference.ORDER for name in names) == sorted(kx.__all__)


def documented() -> list[tuple[str, Any]]:
    found: list[tuple[str, Any]] = []
    for name in kx.__all__:
        what = getattr(kx, name)
        if inspect.isfunction(what):
            found.append((name, what))
        elif inspect.ismodule(what):
            found += [(f"{name}.{one}", getattr(what, one)) for one in what.__all__]
        elif inspect.isclass(what):
            found.append((name, what))
            found += [(f"{name}.{one}", member) for one, member in reference.members_of(what)]
    return found


@pytest.mark.parametrize(("name", "what"), documented(), ids=[name for name, _ in documented()])
def test_every_parameter_is_told(name: str, what: Any) -> None:
    doc = reference.doc_of(what)
    assert doc, f"{name} has no docstring"
    function = reference.function_of(what)
    if not inspect.isfunction(function):
        return
    listed = re.findall(r"^(?:\*\*)?[A-Za-z_][\w, ]*(?= :|$)", doc, re.MULTILINE)
    names = {one.strip("* ") for line in listed for one in line.split(",")}
    for parameter in inspect.signature(function).parameters:
        if parameter not in ("self", "cls"):
            assert parameter in names, f"{name}: {parameter} is not told"


@pytest.mark.parametrize("path", sorted((PACKAGE / "examples").glob("*.py")), ids=lambda path: path.name)
def test_examples_run(path: Path) -> None:
    for needed in re.findall(r"^import (openpyxl|distributed|matplotlib)", path.read_text(encoding="utf-8"), re.MULTILINE):
        pytest.importorskip(needed)
    done = subprocess.run([sys.executable, "-B", str(path)], capture_output=True, encoding="utf-8", check=False)
    assert done.returncode == 0, done.stderr
    assert done.stdout.count("\n") >= 3
    command = f"$ ./python bindings/python/examples/{path.name}\n"
    page = PAGE.read_text(encoding="utf-8")
    assert command not in page or command + done.stdout + "```" in page or command + done.stdout + "$" in page


def test_no_design_code_is_named_in_the_package() -> None:
    ids = "|".join(code.id for code in kx.codes())
    for path in [*(PACKAGE / "keltrix").iterdir(), *(PACKAGE / "src").iterdir(), *(PACKAGE / "bench").glob("*.py"), *(PACKAGE / "examples").iterdir()]:
        if path.suffix in (".py", ".pyi", ".cpp", ".h"):
            assert not re.search(rf"\b({ids})\b", path.read_text(encoding="utf-8"), re.IGNORECASE), path.name


def test_the_page_has_the_columns() -> None:
    rows = "".join(
        f"| `{name}` | {unit.replace('.', '·')} | {meaning} |\n" for name, (unit, meaning) in kx.columns().items()
    )
    assert "| Column | Unit | Meaning |\n|---|---|---|\n" + rows in PAGE.read_text(encoding="utf-8")
