"""Threads, processes, pickles and interpreters."""

from __future__ import annotations

import copy
import os
import pickle
import subprocess
import sys
import textwrap
import threading
import time
from collections.abc import Callable

import pytest
from support import MEMBER, SOURCE

import keltrix as kx
from keltrix import _results


def beam(udl: float = 5.0) -> kx.Beam:
    return kx.Beam("UB 457x191x67", "S275", length=8.0).add_udl(udl, case="permanent").restrain("top", 0, 8)


@pytest.mark.parametrize("protocol", range(2, pickle.HIGHEST_PROTOCOL + 1))
def test_everything_is_pickled(protocol: int) -> None:
    def again(what: object) -> object:
        return pickle.loads(pickle.dumps(what, protocol))

    member = kx.Member("UB 457x191x67", "S275").add_point(0.0, "Pinned").add_point(4.0, "Pinned").add_sub_span()
    for subject in (beam(), member, kx.Beam.from_text(beam().text), kx.Member.from_text(MEMBER)):
        assert again(subject) == subject
    result = beam().check("ec3", "uk")
    copied = again(result)
    assert isinstance(copied, kx.Result)
    assert copied.to_json() == result.to_json() and copied.findings == result.findings
    assert copied.html() == result.html() and copied.diagnostics == result.diagnostics
    results = kx.check_text(MEMBER.replace("S275", "S1") + MEMBER)
    copies = again(results)
    assert isinstance(copies, kx.Results)
    assert [one.status for one in copies] == ["refused", "pass"] and copies[0].diagnostics == results[0].diagnostics
    error = again(kx.InputError("no", results[0].diagnostics))
    assert isinstance(error, kx.InputError) and error.diagnostics == results[0].diagnostics
    for plain in (kx.design(MEMBER, "UB", count=1), result.findings, result.resistances, kx.codes()):
        assert again(plain) == plain
    assert again(kx.buckling(MEMBER)).to_dict() == kx.buckling(MEMBER).to_dict()  # type: ignore[attr-defined]


def test_results_are_copied() -> None:
    result = beam().check()
    assert copy.copy(result).to_json() == copy.deepcopy(result).to_json() == result.to_json()


def test_a_pickle_of_other_findings_is_refused() -> None:
    result = beam().check()
    remade, (source, place, digest, version) = result.__reduce__()
    assert remade(source, place, digest, version).status == "pass"
    for changed in (
        (source, place, "0" * 64, version),
        (source, place + 1, digest, version),
        (_results.Source(source.text.replace(b"5.0", b"6.0"), source.name, source.settings), place, digest, version),
    ):
        with pytest.raises(kx.InputError, match="finds something else"):
            remade(*changed)


def looks_during(work: Callable[[], object]) -> int:
    """How often this thread wakes up while another one is at work: once or twice where the work keeps the interpreter's lock."""
    state = ["before"]

    def run() -> None:
        state[0] = "at work"
        work()
        state[0] = "done"

    thread = threading.Thread(target=run)
    thread.start()
    looks = 0
    while state[0] != "done":
        looks += state[0] == "at work"
        time.sleep(0.001)
    thread.join()
    return looks


def test_the_interpreter_runs_on_during_checks() -> None:
    numbers = list(range(5_000_000))
    assert looks_during(lambda: sum(numbers)) <= 4, "work that keeps the lock"
    table = {"section": "UB 457x191x67", "grade": "S275", "length": [4.0] * 5_000, "w": 1e4}
    rows = kx._tables._Table(table, kx._settings.Settings().native)  # type: ignore[attr-defined]
    assert any(looks_during(lambda: rows.rows.check(0, 5_000, 1)) >= 8 for _ in range(20))


def test_threads_check_what_one_thread_checks() -> None:
    want = {udl: beam(udl).check().to_json() for udl in range(1, 9)}
    found: dict[tuple[int, int], str] = {}
    shared = beam().check()

    def work(number: int) -> None:
        for udl in range(1, 9):
            found[number, udl] = beam(udl).check().to_json()
            assert shared.html() and shared.findings and shared.resistances

    threads = [threading.Thread(target=work, args=(number,)) for number in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert len(found) == 32 and all(found[number, udl] == want[udl] for number, udl in found)


@pytest.mark.skipif(not hasattr(os, "fork"), reason="there is no fork")
def test_a_forked_process_checks() -> None:
    want = beam().check().to_json()
    kx.check_many({"section": "UB 457x191x67", "grade": "S275", "length": [4.0] * 500}, jobs=2)
    read, write = os.pipe()
    process = os.fork()
    if process == 0:
        try:
            same = beam().check().to_json() == want
            table = {"section": "UB 457x191x67", "grade": "S275", "length": [4.0] * 500}
            passed = set(kx.check_many(table, jobs=2)["status"]) == {"pass"}
            os.write(write, b"yes" if same and passed else b"no")
        finally:
            os._exit(0)
    os.close(write)
    answer = os.read(read, 10)
    os.waitpid(process, 0)
    assert answer == b"yes"


def run_python(code: str) -> subprocess.CompletedProcess[str]:
    return subprocess.run(
        [sys.executable, "-B", "-c", textwrap.dedent(code)], capture_output=True, encoding="utf-8", check=False, cwd=SOURCE
    )


def test_a_subinterpreter_is_refused() -> None:
    done = run_python(
        """
        import _xxsubinterpreters as interpreters
        import keltrix
        other = interpreters.create()
        try:
            interpreters.run_string(other, "import keltrix")
        except interpreters.RunFailedError as error:
            print(error)
        """
    )
    assert done.returncode == 0, done.stderr
    assert "subinterpreters" in done.stdout or "ImportError" in done.stdout


def test_pandas_is_not_needed_for_arrays() -> None:
    done = run_python(
        """
        import sys
        import keltrix as kx
        found = kx.check_many({"section": "UB 457x191x67", "grade": "S275", "length": [4.0]})
        print(found["status"][0], "pandas" in sys.modules)
        """
    )
    assert done.stdout == "pass False\n", done.stderr


def test_objects_of_the_module_cannot_be_made_up() -> None:
    from keltrix import _keltrix

    with pytest.raises(TypeError):
        _keltrix.Outcome()
    settings = kx._settings.Settings().native  # type: ignore[attr-defined]
    import numpy as np

    for texts, numbers in (
        ([], np.zeros((15, 1))),
        ([["a"]] * 7, np.zeros(15)),
        ([["a"]] * 7, np.zeros((14, 1))),
        ([["a"]] * 7, np.zeros((15, 2))),
    ):
        with pytest.raises((ValueError, TypeError)):
            _keltrix.Rows(texts, numbers, settings)
    rows = _keltrix.Rows([["a"]] * 7, np.ones((15, 1)), settings)
    for first, count in ((0, 2), (2, 0), (2**63, 2**63)):
        with pytest.raises(IndexError):
            rows.check(first, count, 1)
    with pytest.raises(IndexError):
        rows.text(1)


@pytest.mark.parametrize("text", ["\ud800", "title = 1\ud800"])
def test_text_without_a_utf8_form_is_an_error(text: str) -> None:
    with pytest.raises(kx.InputError):
        kx.check_text(text)
    with pytest.raises(kx.InputError):
        kx.Beam("UB 457x191x67", "S275", length=4.0, title=text).check()


def test_what_is_no_text_is_a_type_error() -> None:
    for subject in (None, 5, ["TITLE"], bytearray(b"x")):
        with pytest.raises(TypeError):
            kx.check_text(subject)  # type: ignore[arg-type]


def test_names_are_shown_and_never_obeyed() -> None:
    with pytest.raises(kx.InputError) as caught:
        kx.check_text("", name="\x1b[2J\nevil")
    assert "\x1b" not in str(caught.value) and "\n" not in str(caught.value)


def test_files_that_are_not_there(tmp_path: object) -> None:
    for read in (kx.check_file, kx.Beam.from_file, kx.Member.from_file):
        with pytest.raises(FileNotFoundError):
            read(f"{tmp_path}/none.csv")
        with pytest.raises(IsADirectoryError):
            read(f"{tmp_path}")
