"""Tables of members: each row is what its member is, and a row that is no member keeps no other from being checked."""

from __future__ import annotations

import random
from typing import Any

import numpy as np
import pandas as pd
import pytest
from support import MEMBER, MEMBER_FILES, SOURCE, ksteel_json, settings

import keltrix as kx

RESULTS = ["status", "utilisation", "rule", "clause", "start", "end", "section_class", "warnings", "message"]


def random_table(seed: int, rows: int) -> dict[str, Any]:
    """Members of all kinds, some of which fail and some of which are refused."""
    print(f"seed {seed}")
    rng = random.Random(seed)
    words = ["Pinned", "Pinned", "Fixed", "F1L TR", "Top flange lateral"]
    sections = ["UB 457x191x67", "UC 254x254x89", "RHS 200x100x6.3", "CHS 168.3x5", "PFC 200x90x30", "I 450x190x9x14", "UB 1"]
    return {
        "section": [rng.choice(sections) for _ in range(rows)],
        "grade": [rng.choice(["S275", "S355", "S355", "S1"]) for _ in range(rows)],
        "length": [rng.uniform(1.0, 12.0) for _ in range(rows)],
        "N": [rng.choice([0.0, 0.0, -1.0, 1.0]) * rng.uniform(0.0, 5e5) for _ in range(rows)],
        "Myy_start": [rng.uniform(-1e5, 1e5) for _ in range(rows)],
        "Myy_end": [rng.uniform(-1e5, 1e5) for _ in range(rows)],
        "Mzz_start": [rng.choice([0.0, 0.0, 1e4]) for _ in range(rows)],
        "Mzz_end": [rng.choice([0.0, 0.0, -1e4]) for _ in range(rows)],
        "w": [rng.choice([0.0, 1.0]) * rng.uniform(0.0, 2e4) for _ in range(rows)],
        "load_height": [rng.choice([0.0, 0.25]) for _ in range(rows)],
        "restraint_start": [rng.choice(words) for _ in range(rows)],
        "restraint_end": [rng.choice(words) for _ in range(rows)],
        "restraint_along": [rng.choice(["Free", "Free", "Top flange lateral", "Tap"]) for _ in range(rows)],
    }


@pytest.mark.parametrize(("code", "annex"), [("bs5950", ""), ("ec3", "uk")])
def test_each_row_is_what_its_member_is(code: str, annex: str) -> None:
    table = random_table(5, 150)
    found = kx.check_many(table, code, annex)
    seen = set()
    for row in range(150):
        seen.add(found["status"][row])
        try:
            result = kx.member_of_row(table, row).check(code, annex)
        except kx.InputError as error:
            assert found["status"][row] == "refused" and np.isnan(found["utilisation"][row])
            assert found["message"][row]
            first = next(one for one in error.diagnostics if one.severity == "error")
            assert (first.got or first.message) in found["message"][row]
            continue
        assert (found["status"][row], found["utilisation"][row]) == (result.status, result.utilisation)
        assert found["section_class"][row] == result.section_class
        assert found["warnings"][row] == sum(one.severity == "warning" for one in result.warnings)
        assert result.governing is not None
        assert (found["rule"][row], found["clause"][row]) == (result.governing.rule, result.governing.clause)
        for name in ("start", "end"):
            value = getattr(result.governing, name)
            assert found[name][row] == value or (value is None and np.isnan(found[name][row]))
    assert {"pass", "fail", "refused"} <= seen


@pytest.mark.parametrize(("code", "annex"), [("bs5950", ""), ("ec3", "uk")])
def test_rows_are_the_command_lines(code: str, annex: str) -> None:
    table = random_table(7, 40)
    found = kx.check_many(table, code, annex)
    rows = [row for row in range(40) if found["status"][row] != "refused"]
    texts = "".join(kx.member_of_row(table, row).text for row in rows)
    records = ksteel_json("check", "-", *settings(code, annex), text=texts)
    assert len(records) == len(rows) > 10
    for row, record in zip(rows, records):
        assert found["status"][row] == record["status"]
        # JSON has no infinity.
        assert found["utilisation"][row] == (np.inf if record["overall"] is None else record["overall"])


def odd_table(seed: int, rows: int) -> dict[str, Any]:
    """The same with effective lengths, factors, titles and numbers that nobody means, and so few words that most rows share them."""
    rng = random.Random(seed)
    table = random_table(seed, rows)
    odd = [0.0, -0.0, 1e-320, 1e-9, 1e15, 1e300, float("inf"), float("nan"), 150.0, -5.0]
    table["section"] = [rng.choice(["UB 457x191x67", "UC 254x254x89", "RHS 200x100x6.3", "UB 1"]) for _ in range(rows)]
    table["restraint_start"] = table["restraint_end"] = [rng.choice(["Pinned", "Pinned", "Free", "0"]) for _ in range(rows)]
    table["title"] = [rng.choice(["", "A, b", " # c", "END", "a\n"]) for _ in range(rows)]
    table["type"] = [rng.choice(["", "", "", "welded"]) for _ in range(rows)]
    for name in ("length", "N", "Myy_start", "w"):
        table[name] = [rng.choice(odd) if rng.random() < 0.1 else value for value in table[name]]
    given = [rng.random() < 0.3 for _ in range(rows)]
    for name in ("Lyy", "Lzz", "Llt"):
        table[name] = [(rng.choice([3.0, -0.85, 0.0, 1e300]) if one else float("nan")) for one in given]
    table["load_height"] = [rng.choice([0.0, 0.0, 0.25, 0.123456789, 6.0, -0.0]) for _ in range(rows)]
    table["moment_factor"] = [rng.choice([float("nan"), 1.0, 0.3]) for _ in range(rows)]
    table["plastic_to_elastic"] = [rng.choice([1.2, 1.2, 1.7, 0.5]) for _ in range(rows)]
    return table


@pytest.mark.parametrize(("code", "annex", "rows"), [("bs5950", "", 6000), ("ec3", "uk", 1500)])
def test_rows_that_share_their_words_are_what_each_is_alone(code: str, annex: str, rows: int) -> None:
    # The only row of a table is always read from its own text.
    table = odd_table(17, rows)
    found = kx.check_many(table, code, annex)
    for row in range(rows):
        alone = kx.check_many({name: values[row : row + 1] for name, values in table.items()}, code, annex)
        got, want = ({name: repr(one[name][at]) for name in RESULTS} for one, at in ((found, row), (alone, 0)))
        assert got == want, {name: values[row] for name, values in table.items()}
    assert {"pass", "fail", "refused"} <= set(found["status"])


def test_a_uniform_load_is_that_of_a_beam() -> None:
    # 6 m, 20 kN/m: 90 kNm at mid-span, 60 kN at the ends. A beam file has the same by its own combination.
    beam = kx.Beam("UB 457x191x67", "S275", length=6.0, self_weight=False, deflection=False)
    beam.add_udl(20.0, case="permanent").add_combination("own", {"permanent": 1.0})
    found = kx.check_many({"section": "UB 457x191x67", "grade": "S275", "length": 6.0, "w": 20e3})
    assert found["utilisation"][0] == pytest.approx(beam.check().utilisation, rel=1e-9)
    # Steelwork design guide to BS 5950-1:2000, volume 1: Mcx = 404 kNm.
    member = kx.member_of_row({"section": "UB 457x191x67", "grade": "S275", "length": 6.0, "w": 20e3}, 0)
    bending = [one for one in member.check("bs5950").findings if one.topic == "bending, major axis"]
    assert max(one.utilisation for one in bending) == pytest.approx(90.0 / 404.0, rel=0.01)


def test_published_resistance() -> None:
    # Mb = 196 kNm at 5 m: 12.5 kNm uniform moment with a factor of 1.
    table = {"section": "UB 457x191x67", "grade": "S275", "length": 5.0, "moment_factor": 1.0}
    found = kx.check_many({**table, "Myy_start": -12.5e3, "Myy_end": -12.5e3}, "bs5950")
    assert found["utilisation"][0] == pytest.approx(12.5 / 196.0, rel=0.01)
    assert found["rule"][0] == "lateral-torsional buckling"


def test_a_frame_in_a_frame_out() -> None:
    table = random_table(11, 30)
    frame = pd.DataFrame(table, index=pd.Index([f"B{i}" for i in range(30)], name="mark"))
    found = kx.check_many(frame)
    plain = kx.check_many(table)
    assert isinstance(found, pd.DataFrame) and list(found.columns) == RESULTS
    assert found.index.equals(frame.index)
    for name in RESULTS:
        assert found[name].tolist() == plain[name].tolist() or found[name].equals(pd.Series(plain[name], frame.index))
    joined = frame.join(found)
    assert len(joined) == 30


def test_columns_come_as_lists_arrays_series_and_single_values() -> None:
    want = kx.check_many({"section": "UB 457x191x67", "grade": "S275", "length": [4.0, 5.0], "N": [1000.0, 1000.0]})
    for table in (
        {"section": ["UB 457x191x67"] * 2, "grade": np.array(["S275", "S275"]), "length": (4, 5), "N": 1000},
        {"section": pd.Series(["UB 457x191x67"] * 2), "grade": "S275", "length": np.array([4, 5]), "N": np.float32(1000)},
        {"section": "UB 457x191x67", "grade": pd.Categorical(["S275"] * 2), "length": pd.array([4.0, 5.0]), "N": 1e3},
    ):
        found = kx.check_many(table)
        for name in RESULTS:
            assert list(map(repr, found[name])) == list(map(repr, want[name]))


def test_threads_find_the_same() -> None:
    table = random_table(13, 700)
    one = kx.check_many(table)
    for jobs in (0, 2, 7):
        many = kx.check_many(table, jobs=jobs)
        for name in RESULTS:
            assert list(map(repr, many[name])) == list(map(repr, one[name]))


@pytest.mark.parametrize("index", [[], pd.Index([])])
def test_an_empty_table_gives_empty_columns(index: Any) -> None:
    frame = pd.DataFrame({"section": [], "grade": [], "length": []}, index=index)
    found = kx.check_many(frame)
    assert list(found.columns) == RESULTS and len(found) == 0
    plain = kx.check_many({"section": [], "grade": [], "length": np.zeros(0)})
    assert all(len(plain[name]) == 0 for name in RESULTS) and plain["utilisation"].dtype == float


def test_unknown_and_missing_columns_are_named() -> None:
    table = {"section": "UB 457x191x67", "grade": "S275", "length": 4.0}
    with pytest.raises(kx.InputError, match="unknown column 'lenght': did you mean length"):
        kx.check_many({**table, "lenght": 4.0})
    with pytest.raises(kx.InputError, match="unknown column 'Myy': did you mean"):
        kx.check_many({**table, "Myy": 1.0})
    with pytest.raises(kx.InputError, match="unknown column 'colour of paint': expected title, section"):
        kx.check_many({**table, "colour of paint": "red"})
    with pytest.raises(kx.InputError, match="unknown column '5'"):
        kx.check_many({**table, 5: 1.0})  # type: ignore[dict-item]
    for name in table:
        with pytest.raises(kx.InputError, match=f"no column '{name}'"):
            kx.check_many({other: value for other, value in table.items() if other != name})
    twice = pd.DataFrame([["UB 457x191x67", "S275", 4.0, 5.0]], columns=["section", "grade", "length", "length"])
    with pytest.raises(kx.InputError, match="stands twice"):
        kx.check_many(twice)


def test_wrong_shapes_are_named() -> None:
    table = {"section": "UB 457x191x67", "grade": "S275", "length": [4.0, 5.0]}
    with pytest.raises(kx.InputError, match="'N' has 3 rows and column 'length' has 2"):
        kx.check_many({**table, "N": [1.0, 2.0, 3.0]})
    with pytest.raises(kx.InputError, match=r"'N': got an array of shape \(2, 2\)"):
        kx.check_many({**table, "N": np.zeros((2, 2))})
    with pytest.raises(kx.InputError, match="'N' has 0 rows"):
        kx.check_many({**table, "N": []})


@pytest.mark.parametrize(
    ("column", "value", "part"),
    [
        ("length", float("nan"), "length: got nan"),
        ("length", 0.0, "length: got 0"),
        ("length", -4.0, "length: got -4"),
        ("length", float("inf"), "length: got inf"),
        ("N", float("nan"), "N: got nan, expected axial force"),
        ("N", "12", "N: got '12', expected a number in N"),
        ("N", True, "N: got True"),
        ("N", [1.0], "N: got"),
        ("N", 10**400, "N: got"),
        ("N", 1j, "N: got"),
        ("N", None, "N: got nan"),
        ("w", float("-inf"), "w: got -inf"),
        ("Lyy", 4.0, "Lyy, Lzz, Llt"),
        ("Lzz", float("inf"), "Lzz: got inf"),
        ("net_to_gross", float("nan"), "net_to_gross"),
        ("section", None, "section: got nothing"),
        ("section", float("nan"), "section: got nothing"),
        ("section", 457, "section: got 457"),
        ("section", "UB 457x191x67,ROLLED", "section: got"),
        ("section", "UB 457x191x67\n", "section: got"),
        ("section", "", "SECTION"),
        ("grade", "S111", "GRADE"),
        ("grade", b"S275", "grade: got b'S275'"),
        ("type", "cast", "type: got"),
        ("restraint_start", "Pined", "write Pinned"),
        ("restraint_end", None, "restraint_end: got nothing"),
        ("restraint_along", "Free\nEND", "restraint_along: got"),
        ("title", "a\nb", "title: got"),
        ("title", "\ud800", ""),
    ],
)
def test_a_bad_cell_refuses_its_row_alone(column: str, value: Any, part: str) -> None:
    table: dict[str, Any] = {"section": ["UB 457x191x67"] * 3, "grade": ["S275"] * 3, "length": [4.0] * 3}
    standard = {"Lzz": float("nan"), "Lyy": float("nan"), "net_to_gross": 1.0, "type": "", "title": "", "N": 0.0, "w": 0.0}
    words = {"restraint_start": "Pinned", "restraint_end": "Pinned", "restraint_along": "Free"}
    good = table[column][0] if column in table else {**standard, **words}[column]
    cells = np.empty(3, dtype=object)
    cells[0] = cells[2] = good
    cells[1] = value
    found = kx.check_many({**table, column: cells})
    assert found["status"].tolist() == ["pass", "refused", "pass"]
    assert part in found["message"][1] and found["message"][1]
    assert np.isnan(found["utilisation"][1]) and np.isnan(found["start"][1])
    assert found["section_class"][1] == 0 and found["rule"][1] == ""
    with pytest.raises(kx.InputError):
        kx.member_of_row({**table, column: cells}, 1).check()


def test_missing_values_of_pandas_are_not_given() -> None:
    frame = pd.DataFrame({"section": ["UB 457x191x67"] * 2, "grade": "S275", "length": 4.0})
    frame["moment_factor"] = pd.array([pd.NA, 1.0], dtype="Float64")
    frame["N"] = pd.array([pd.NA, 1000], dtype="Int64")
    frame["title"] = pd.array(["B1", pd.NA], dtype="string")
    found = kx.check_many(frame)
    assert found["status"].tolist() == ["refused", "pass"] and "N: got nan" in found["message"][0]
    assert kx.member_of_row(frame, 1).text.startswith("TITLE,row 1\n")


def test_what_was_not_evaluated_is_told() -> None:
    found = kx.check_many({"section": "L 150x75x10", "grade": "S275", "length": 2.0, "w": [1e3]}, "ec3")
    assert found["status"][0] == "not checked" and found["message"][0].startswith("not evaluated: ")


def test_options_and_settings_are_those_of_checks() -> None:
    table = {"section": "UB 457x191x67", "grade": "S275", "length": [7.0], "w": 1e4}
    elastic = kx.check_many(table, "bs5950", ltb="elastic")
    assert elastic["utilisation"][0] == kx.member_of_row(table, 0).check("bs5950", ltb="elastic").utilisation
    assert elastic["utilisation"][0] != kx.check_many(table, "bs5950")["utilisation"][0]
    for arguments, part in (
        ({"code": "xx"}, "design code"),
        ({"code": "ec3", "annex": "xx"}, "annex"),
        ({"colour": "red"}, "colour"),
        ({"jobs": -1}, "jobs"),
        ({"jobs": 1.5}, "jobs"),
        ({"jobs": True}, "jobs"),
        ({"jobs": 10**6}, "jobs"),
    ):
        with pytest.raises(kx.InputError, match=part):
            kx.check_many(table, **arguments)  # type: ignore[arg-type]
    with pytest.raises(IndexError):
        kx.member_of_row(table, 1)
    with pytest.raises(IndexError):
        kx.member_of_row(table, -1)


def test_progress_and_half_a_million_rows() -> None:
    steps: list[tuple[int, int]] = []
    table = {"section": ["UB 1"] * 499_999 + ["UB 457x191x67"], "grade": "S275", "length": 4.0, "N": -1.0, "title": "a\n"}
    table["title"] = ["a\n"] * 499_999 + ["b"]  # refused before anything is read
    found = kx.check_many(table, jobs=0, progress=lambda done, all_rows: steps.append((done, all_rows)))
    assert steps[-1] == (500_000, 500_000) and len(steps) > 10 and steps == sorted(steps)
    assert found["status"][-1] == "pass" and set(found["status"][:-1]) == {"refused"}


def test_progress_can_stop_the_work() -> None:
    def stop(done: int, _: int) -> None:
        raise KeyboardInterrupt

    with pytest.raises(KeyboardInterrupt):
        kx.check_many({"section": "UB 457x191x67", "grade": "S275", "length": [4.0] * 3}, progress=stop)


def test_every_column_is_told() -> None:
    columns = kx.columns()
    assert {"section", "grade", "length", "N", "Myy_start", "restraint_along"} <= set(columns)
    assert all(meaning for _, meaning in columns.values())


@pytest.mark.parametrize(("code", "annex"), [("bs5950", ""), ("ec3", "uk")])
def test_general_members_are_the_command_lines(code: str, annex: str) -> None:
    texts = [(SOURCE / path).read_text(encoding="utf-8") for path in MEMBER_FILES]
    bad = MEMBER.replace("S275", "S1").replace("TITLE,Beam", "TITLE,Bad")
    text = "".join(texts * 20) + bad
    records = ksteel_json("check", "-", *settings(code, annex), text="".join(texts * 20))
    want = {record["title"]: record for record in records}
    for jobs in (1, 2):
        found = kx.check_many(text, code, annex, jobs=jobs)
        assert list(found) == ["title", *RESULTS] and found["status"][-1] == "refused" and "S1" in found["message"][-1]
        assert found["title"][-1] == "Bad" and np.isnan(found["utilisation"][-1])
        for row, title in enumerate(found["title"][:-1]):
            if found["status"][row] == "refused":
                assert title not in want and found["message"][row]
                continue
            record = want[title]
            governing = next((one for one in record["checks"] if one["governing"]), None)
            assert (found["status"][row], found["section_class"][row]) == (record["status"], record["class"])
            assert found["utilisation"][row] == (np.inf if record["overall"] is None else record["overall"])
            if governing is not None:
                assert (found["rule"][row], found["clause"][row], found["start"][row]) == tuple(governing[name] for name in ("rule", "clause", "start"))
    assert len(found["title"]) == 20 * len(texts) + 1


def test_member_and_station_rows() -> None:
    stations = {"member": ["B1"] * 3, "case": ["ULS"] * 3, "station [m]": [0.0, 3.0, 6.0], "Vz [kN]": [60.0, 0.0, -60.0], "My [kNm]": [0.0, 90.0, 0.0]}
    members = {"member": ["B1"], "section": ["UB 457x191x67"], "grade": ["S275"], "length [m]": [6.0], "start": ["Pinned"], "end": ["Pinned"]}
    none = {field: "none" for field in ("N", "Vy", "T", "Mz")}
    found = kx.check_many(kx.from_table(stations, members, "z-down", columns=none))
    row = kx.check_many({"section": "UB 457x191x67", "grade": "S275", "length": 6.0, "w": 20e3})
    assert found["title"].tolist() == ["B1: ULS"] and found["utilisation"][0] == pytest.approx(row["utilisation"][0], rel=1e-9)


def test_texts_without_members_are_refused() -> None:
    for text in ("\n", "# nothing\n", "x,y\n"):
        found = kx.check_many(text)
        assert set(found["status"]) == {"refused"} and all(found["message"])
    for empty in ("", b"\xff"):
        with pytest.raises(kx.InputError):
            kx.check_many(empty)


def test_lines_between_members_are_not_passed_over() -> None:
    lost = MEMBER.split("\n", 1)[1]
    with pytest.raises(kx.InputError, match="lines after END are not read"):
        kx.check_many(MEMBER + lost)
    assert kx.check_many(MEMBER + "# a comment\n\n" + MEMBER)["status"].tolist() == ["pass", "pass"]


def test_more_defects_than_are_listed() -> None:
    bad = MEMBER.replace("MEMBERPOINT,2,2.5", "MEMBERPOINT,2,two").replace("Free,0", "Fre,0")
    found = kx.check_many(bad * 600)
    assert set(found["status"]) == {"refused"} and all(found["message"])
