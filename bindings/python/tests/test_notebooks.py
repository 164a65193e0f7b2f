"""The notebooks: checked in without outputs, and they run."""

from __future__ import annotations

import ast
import contextlib
import importlib.util
import io
import json
from pathlib import Path
from typing import Any

import pytest
from support import SOURCE

import keltrix as kx

NOTEBOOKS = sorted((SOURCE / "bindings" / "python" / "examples").glob("*.ipynb"))


def cells(path: Path) -> list[dict[str, Any]]:
    return list(json.loads(path.read_text(encoding="utf-8"))["cells"])


def test_there_are_notebooks() -> None:
    assert [path.stem for path in NOTEBOOKS] == ["codes_over_lengths", "floor_of_beams", "frame_member", "sections_compared"]


@pytest.mark.parametrize("path", NOTEBOOKS, ids=lambda path: path.stem)
def test_it_has_no_outputs(path: Path) -> None:
    for cell in cells(path):
        assert cell["cell_type"] == "markdown" or (cell["outputs"], cell["execution_count"]) == ([], None)


@pytest.mark.parametrize("path", NOTEBOOKS, ids=lambda path: path.stem)
def test_its_cells_run(path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    code = ["".join(cell["source"]) for cell in cells(path) if cell["cell_type"] == "code"]
    if any("matplotlib" in one for one in code):
        pytest.importorskip("matplotlib", reason="Left out: matplotlib draws (Debian: apt-get install python3-matplotlib)")
    monkeypatch.setenv("MPLBACKEND", "Agg")
    space: dict[str, Any] = {"__name__": "__main__"}
    shown = None
    with contextlib.redirect_stdout(io.StringIO()) as printed:
        for text in code:
            tree = ast.parse(text)
            # As in a notebook the last expression of a cell is shown.
            last = tree.body.pop() if isinstance(tree.body[-1], ast.Expr) else None
            exec(compile(tree, str(path), "exec"), space)
            if last is not None:
                shown = eval(compile(ast.Expression(last.value), str(path), "eval"), space)  # type: ignore[attr-defined]
    assert printed.getvalue() or shown is not None
    if isinstance(shown, kx.Result):
        assert len(shown._repr_html_()) > 100


def test_one_runs_in_a_kernel(monkeypatch: pytest.MonkeyPatch) -> None:
    for needed in ("nbconvert", "ipykernel", "nbformat"):
        if importlib.util.find_spec(needed) is None:
            pytest.skip("Left out: nbconvert runs notebooks (Debian: apt-get install python3-nbconvert python3-ipykernel)")
    import nbformat
    from nbconvert.preprocessors import ExecutePreprocessor

    notebook = nbformat.read(str(NOTEBOOKS[1]), as_version=4)
    monkeypatch.setenv("PYTHONDONTWRITEBYTECODE", "1")
    ExecutePreprocessor(timeout=120, kernel_name="python3").preprocess(notebook, {})
    html = str(notebook.cells[-1].outputs[0].data["text/html"])
    assert "Beam B3" in html
