"""Threads, processes, pickles and interpreters."""

from __future__ import annotations

import copy
import hashlib
import os
import pickle
import resource
import subprocess
import sys
import textwrap
import threading
import time
from collections.abc import Callable
from pathlib import Path
from typing import Any

import numpy as np
import pandas as pd
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


ROW: dict[str, Any] = {"section": "UB 457x191x67", "grade": "S275"}


def test_masked_cells_are_missing() -> None:
    lengths = np.ma.array([4.0, 5.0], mask=[False, True])
    assert kx.check_many({**ROW, "length": lengths, "w": 10e3})["status"].tolist() == ["pass", "refused"]
    whole = np.ma.array([4, 5], mask=[True, False])
    assert kx.check_many({**ROW, "length": [4.0, 5.0], "N": whole, "w": 10e3})["status"].tolist() == ["refused", "pass"]
    with pytest.raises(kx.InputError, match="lengths: got None"):
        kx.capacity("UB 457x191x67", "S275", lengths=lengths)
    with pytest.raises(kx.InputError, match="spans: got MaskedArray"):
        kx.Beam(**ROW, spans=lengths).check()


@pytest.mark.parametrize(
    "lengths",
    [
        np.array([4, 5], "timedelta64[ns]"),
        np.array([4, 5], "datetime64[ns]"),
        [np.timedelta64(4, "ns")] * 2,
        pd.Series(pd.to_timedelta([4, 5], unit="ns")),
        pd.Series(pd.to_datetime([4, 5])),
    ],
    ids=["timedelta64", "datetime64", "objects", "timedeltas", "dates"],
)
def test_dates_and_durations_are_no_numbers(lengths: Any) -> None:
    found = kx.check_many({**ROW, "length": lengths, "w": 10e3})
    assert found["status"].tolist() == ["refused"] * 2 and "expected a number in m" in found["message"][0]
    with pytest.raises(kx.InputError, match="lengths: got .*expected a number"):
        kx.capacity("UB 457x191x67", "S275", lengths=lengths)


def test_values_that_stand_alone() -> None:
    alone = kx.check_many({"section": np.array("UB 457x191x67"), "grade": "S275", "length": [4.0, 5.0], "w": np.array(10e3)})
    assert alone["utilisation"].tolist() == kx.check_many({**ROW, "length": [4.0, 5.0], "w": 10e3})["utilisation"].tolist()
    assert kx.check_many({**ROW, "length": [4.0, 5.0], "title": 5})["message"].tolist() == ["title: got 5, expected a text"] * 2
    assert kx.Beam(**ROW, length=np.array(4.0)).text == kx.Beam(**ROW, length=4.0).text


def test_series_with_different_indexes_are_refused() -> None:
    lengths = pd.Series([4.0, 9.0], index=[1, 0])
    table = {"section": pd.Series(["UB 457x191x67", "UB 203x133x25"]), "grade": "S275", "length": lengths}
    with pytest.raises(kx.InputError, match="'section' and 'length' are series with different indexes"):
        kx.check_many(table)
    assert kx.check_many({**table, "length": lengths.sort_index()})["status"].tolist() == ["pass", "pass"]


def test_fields_of_members_are_texts() -> None:
    for change, part in (({"title": 5}, "title: got 5"), ({"title": "\ud800"}, "title: .*surrogates"), ({"grade": None}, "grade: got None")):
        with pytest.raises(kx.InputError, match=part):
            kx.Member(**{**ROW, **change}).add_point(0).add_point(1).add_sub_span().check()
    with pytest.raises(kx.InputError, match="restraint: got 1"):
        kx.Member(**ROW).add_point(0, 1).add_point(1).add_sub_span().check()  # type: ignore[arg-type]


def test_members_with_arrays_are_compared() -> None:
    one, other = (kx.Member(**ROW, effective_lengths=np.array([1.0, 2.0, 3.0])) for _ in range(2))
    assert one == other and one != kx.Member(**ROW, effective_lengths=np.array([1.0, 2.0, 4.0]))


def test_flags_of_numpy_are_flags() -> None:
    member = kx.Member.from_text(MEMBER)
    assert member.check("bs5950", exact=np.True_).to_json() == member.check("bs5950", exact=True).to_json()
    assert member.check("bs5950", exact=np.False_).to_json() == member.check("bs5950").to_json()


def test_each_input_of_a_report_has_its_checksum() -> None:
    beams = [kx.Beam(**ROW, length=length).add_udl(5.0, case="permanent") for length in (3.0, 4.0, 5.0)]
    document = kx.report([beam.check() for beam in (*beams, beams[0])])
    for beam in beams:
        assert document.count(hashlib.sha256(beam.text.encode()).hexdigest()) == 1


def test_options_and_title_blocks_are_texts() -> None:
    result = kx.Member.from_text(MEMBER).check()
    with pytest.raises(kx.InputError, match=r"option bearing: got \[1\]"):
        kx.Member.from_text(MEMBER).check(bearing=[1])  # type: ignore[arg-type]
    for client in (5, "\ud800"):
        with pytest.raises(kx.InputError, match="client: "):
            kx.report(result, client=client)  # type: ignore[arg-type]


@pytest.mark.skipif("asan" in os.environ.get("LD_PRELOAD", ""), reason="the address sanitizer needs more room than this test leaves")
def test_fewer_threads_than_were_asked_for() -> None:
    script = """
import resource, keltrix as kx
table = {"section": "UB 457x191x67", "grade": "S275", "length": [4.0] * 64 * 70, "w": 10e3}
want = kx.check_many(table)
used = int(open("/proc/self/statm").read().split()[0]) * resource.getpagesize()
resource.setrlimit(resource.RLIMIT_AS, (used + 100 * 2**20,) * 2)
found = kx.check_many(table, jobs=64)
assert (found["utilisation"] == want["utilisation"]).all()
"""
    done = subprocess.run([sys.executable, "-c", script], capture_output=True, encoding="utf-8", check=False)
    assert done.returncode == 0, done.stderr


@pytest.mark.skipif("asan" in os.environ.get("LD_PRELOAD", ""), reason="the address sanitizer keeps what is freed")
def test_repeats_keep_no_memory() -> None:
    def resident() -> int:
        return int(Path("/proc/self/statm").read_text().split()[1]) * resource.getpagesize()

    table = {**ROW, "length": np.linspace(3.0, 9.0, 10), "w": 10e3}
    frame = kx.Beam(**ROW, length=4.0).add_udl(4.0, case="permanent")
    result = frame.check()

    def refused() -> None:
        with pytest.raises(kx.InputError):
            kx.check_many({**table, "wide": 1.0})

    for work, times in (
        (lambda: kx.check_many(table), 10_000),
        (lambda: kx.check_many({**table, "w": ["much"] * 10}), 10_000),
        (lambda: kx.check_many(MEMBER), 2_000),
        (refused, 2_000),
        (lambda: frame.check().findings, 300),
        (lambda: pickle.loads(pickle.dumps(result)), 300),
        (lambda: kx.report(result), 100),
    ):
        for _ in range(times // 10):
            work()
        before = resident()
        for _ in range(times):
            work()
        # What a turn would keep is more: the text of a member alone has half a kilobyte, its result ten.
        assert resident() - before < max(times * 1024, 1 << 20)


def test_general_members_can_be_stopped() -> None:
    class Stop(Exception):
        pass

    def stop(done: int, members: int) -> None:
        assert 0 < done < members == 2500
        raise Stop

    with pytest.raises(Stop):
        kx.check_many(MEMBER * 2500, progress=stop)
