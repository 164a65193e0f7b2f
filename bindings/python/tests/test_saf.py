"""Workbooks in the Structural Analysis Format, made here from its documented layout."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import pytest

import keltrix as kx

openpyxl = pytest.importorskip("openpyxl")

HOW: dict[str, Any] = {"start": "Pinned", "end": "Pinned"}
CAPTIONS = ["Result on", "Member", "Member Rib", "Result for", "Load case", "Load combination", "Combination key", "Section at [m]", "Index",
            "N [kN]", "Vy [kN]", "Vz [kN]", "Mx [kNm]", "My [kNm]", "Mz [kNm]"]


def beam_rows(member: str, combination: str, w: float, length: float = 6.0, key: str = "") -> list[list[Any]]:
    """Moments above zero where the beam sags, dMy/dx = Vz; the rows of mid-span first, so that their index orders them."""
    rows = []
    for index, x in [(2, length / 2.0), (1, 0.0), (3, length)]:
        values = [0.0, 0.0, w * (length / 2.0 - x), 0.0, w * x * (length - x) / 2.0, 0.0]
        rows.append(["On beam", member, None, "Load combination", None, combination, key, x, index, *values])
    return rows


def workbook(path: Path, rows: list[list[Any]], **changes: Any) -> Path:
    book = openpyxl.Workbook()
    book.remove(book.active)
    sheets: dict[str, list[list[Any]]] = {
        "Model": [["Name", "Value"], ["System of units", "Metric"]],
        "StructuralMaterial": [["Name", "Type", "Quality"], ["MAT1", "Steel", "S 275"]],
        "StructuralCrossSection": [["Name", "Material", "Cross-section type", "Profile"], ["CS1", "MAT1", "Manufactured", "UB457/191/67"]],
        "StructuralCurveMember": [["Name", "Cross section", "Nodes", "Length [m]"], ["B1", "CS1", "N1; N2", 6.0], ["B2", "CS1", "N2; N3", 6.0]],
        "ResultInternalForce1D": [CAPTIONS, *rows],
        **changes,
    }
    for name, lines in sheets.items():
        if lines is None:
            continue
        page = book.create_sheet(name)
        for line in lines:
            page.append(line)
            for cell in page[page.max_row]:
                cell.data_type = "s" if isinstance(cell.value, str) else cell.data_type  # "=ULS" is no formula
    book.save(path)
    return path


def test_a_beam_is_that_of_the_statics(tmp_path: Path) -> None:
    path = workbook(tmp_path / "model.xlsx", beam_rows("B1", "ULS 1", 20.0))
    beam = kx.Beam("UB 457x191x67", "S275", length=6.0, self_weight=False, deflection=False).restrain("top")
    beam.add_udl(20.0, case="permanent").add_combination("own", {"permanent": 1.0})
    made = kx.read_saf(path, "z-down", restraints={"B1": "Top flange lateral@0:6"}, **HOW)
    result = made.check()[0]
    assert (result.title, result.section, result.grade) == ("B1: ULS 1", "UB 457x191x67", "S275")
    assert result.utilisation == pytest.approx(beam.check().utilisation, rel=1e-9)


def test_members_combinations_and_keys(tmp_path: Path) -> None:
    rows = beam_rows("B1", "ULS", 20.0, key="1.4*LC1") + beam_rows("B1", "ULS", 25.0, key="1.4*LC1+1.6*LC2") 
    rows += beam_rows("B2", "ULS", 10.0, key="1.4*LC1") + beam_rows("B2", "ULS", 12.0, key="1.4*LC1+1.6*LC2")
    case = [row[:3] + ["Load case", "LC1", None, None] + row[7:] for row in beam_rows("B1", "", 5.0)]
    rib = [["On rib", None, "R1", *row[3:]] for row in beam_rows("B1", "ULS", 5.0)]
    path = workbook(tmp_path / "model.xlsx", rows[:5] + case + rib, ResultInternalForce1D_2=[CAPTIONS, *rows[5:]])
    made = kx.read_saf(path, "z-down", **HOW)
    assert [one.title for one in made.check()] == [
        f"{member}: ULS: {key}" for member in ("B1", "B2") for key in ("1.4*LC1", "1.4*LC1+1.6*LC2")
    ]
    assert kx.read_saf(path, "z-down", members=["B2"], **HOW).cases == 2
    assert [one.title for one in kx.read_saf(path, "z-down", load_cases=True, **HOW).check()] == ["B1: LC1"]


def test_a_member_without_a_combination_of_the_others_is_refused(tmp_path: Path) -> None:
    rows = beam_rows("B1", "ULS", 20.0) + beam_rows("B2", "ULS", 20.0) + beam_rows("B1", "ULS 2", 25.0)
    with pytest.raises(kx.InputError, match='no row of member "B2" in case "ULS 2"'):
        kx.read_saf(workbook(tmp_path / "model.xlsx", rows), "z-down", **HOW)


def test_both_sides_of_a_section(tmp_path: Path) -> None:
    # 30 kN at the middle of 6 m: 45 kNm.
    actions = [(0.0, 1, 15.0, 0.0), (3.0, 2, 15.0, 45.0), (3.0, 3, -15.0, 45.0), (6.0, 4, -15.0, 0.0)]
    rows = [["On beam", "B1", None, "Load combination", None, "ULS", None, x, i, 0, 0, V, 0, M, 0] for x, i, V, M in actions]
    made = kx.read_saf(workbook(tmp_path / "model.xlsx", rows), "z-down", **HOW)
    assert "SUBSPAN,1,0,0,-15000,0,0,-15000,0,0,0,0,-45000,0," in made.text


def test_other_signs_do_not_balance(tmp_path: Path) -> None:
    path = workbook(tmp_path / "model.xlsx", beam_rows("B1", "ULS", 20.0))
    with pytest.raises(kx.InputError, match="do not balance as z-up-sagging; they would as .*z-down"):
        kx.read_saf(path, "z-up-sagging", **HOW)


def test_names_of_profiles_and_qualities(tmp_path: Path) -> None:
    path = workbook(
        tmp_path / "model.xlsx",
        beam_rows("B1", "ULS", 20.0),
        StructuralCrossSection=[["Name", "Material", "Profile"], ["CS1", "MAT1", "Beam one"]],
        StructuralMaterial=[["Name", "Quality"], ["MAT1", "Fe 430"]],
    )
    with pytest.raises(kx.InputError, match="Beam one"):
        kx.read_saf(path, "z-down", **HOW)
    made = kx.read_saf(path, "z-down", sections={"Beam one": "UC 203x203x60"}, grades={"Fe 430": "S355"}, **HOW)
    assert (made.check()[0].section, made.check()[0].grade) == ("UC 203x203x60", "S355")


GOOD = beam_rows("B1", "ULS", 20.0)


@pytest.mark.parametrize(
    ("rows", "changes", "part"),
    [
        (GOOD, {"ResultInternalForce1D": None}, "no sheet ResultInternalForce1D"),
        (GOOD, {"StructuralCurveMember": None}, "no sheet StructuralCurveMember"),
        (GOOD, {"StructuralMaterial": [["Name", "Type"], ["MAT1", "Steel"]]}, "StructuralMaterial: there is no column 'Quality'"),
        (GOOD, {"Model": [["System of units", "Imperial"]]}, "imperial"),
        (GOOD, {"StructuralCrossSection": [["Name", "Material", "Profile"], ["CS2", "MAT1", "x"]]}, "row 2, Cross section: got 'CS1'"),
        (GOOD, {"StructuralCrossSection": [["Name", "Material", "Profile"], ["CS1", "MAT1", None]]}, "Profile: got nothing"),
        (GOOD, {"StructuralCurveMember": [["Name", "Cross section"], ["B1", "CS1"], ["B1", "CS1"]]}, "row 3, Name: got 'B1', which row 2 has"),
        (GOOD, {"StructuralCurveMember": [["Name", "Cross section", "Length [ft]"], ["B1", "CS1", 6]]}, r"unit \[ft\], expected \[m\]"),
        (GOOD, {"ResultInternalForce1D": [[*CAPTIONS[:9], "N [kip]", *CAPTIONS[10:]], *GOOD]}, r"'N': got the unit \[kip\]"),
        ([], {}, "no forces of load combinations"),
        ([*GOOD[:2], [*GOOD[2][:9], "much", *GOOD[2][10:]]], {}, "row 4, N: got 'much'"),
        ([*GOOD[:2], [*GOOD[2][:12], None, *GOOD[2][13:]]], {}, "row 4, Mx: got nothing|row 4, Vz: got nothing"),
        ([[*GOOD[0][:3], "Envelope", *GOOD[0][4:]]], {}, "Result for: got 'Envelope'"),
        (GOOD[:2], {}, ""),
        ([*GOOD[:2], [None, *GOOD[2][1:]]], {}, "row 4, Result on: got ''"),
        ([*GOOD[:2], [GOOD[2][0], None, *GOOD[2][2:]]], {}, "row 4, Member: got nothing"),
        ([*GOOD, *beam_rows("B1", "ULS", 25.0)], {}, "row 5, Index: got 2 of member 'B1' in 'ULS' again, which .* row 2 has"),
        ([], {"ResultInternalForce1D": [[*CAPTIONS, "N [kN]"], *([*row, 5.0] for row in GOOD)]}, "the column 'n' stands twice"),
        (beam_rows("B9", "ULS", 20.0), {}, "'B9' is not in sheet"),
    ],
)
def test_what_cannot_be_used_has_its_place(tmp_path: Path, rows: list[list[Any]], changes: dict[str, Any], part: str) -> None:
    with pytest.raises(kx.InputError, match=part):
        kx.read_saf(workbook(tmp_path / "model.xlsx", rows, **changes), "z-down", **HOW)


def test_a_member_that_there_is_not(tmp_path: Path) -> None:
    path = workbook(tmp_path / "model.xlsx", GOOD)
    with pytest.raises(kx.InputError, match="member: got 'B7'"):
        kx.read_saf(path, "z-down", members=["B7"], **HOW)
    with pytest.raises(kx.InputError, match="no forces of B2"):
        kx.read_saf(path, "z-down", members=["B1", "B2"], **HOW)
    with pytest.raises(kx.InputError, match="member: got 'B7'"):
        kx.read_saf(path, "z-down", restraints={"B7": "Free"}, **HOW)


def test_files_that_are_no_workbooks(tmp_path: Path) -> None:
    with pytest.raises(OSError):
        kx.read_saf(tmp_path / "none.xlsx", "z-down", **HOW)
    bad = tmp_path / "bad.xlsx"
    bad.write_bytes(b"PK\x03\x04 no archive")
    with pytest.raises(kx.InputError, match="no workbook"):
        kx.read_saf(bad, "z-down", **HOW)
    with pytest.raises(kx.InputError, match="no workbook"):
        kx.write_saf(bad, [])
    assert bad.read_bytes() == b"PK\x03\x04 no archive" and len(list(tmp_path.iterdir())) == 1


def test_results_go_back_into_the_workbook(tmp_path: Path) -> None:
    path = workbook(tmp_path / "model.xlsx", beam_rows("B1", "=ULS", 20.0) + beam_rows("B2", "=ULS", 80.0))
    results = kx.read_saf(path, "z-down", **HOW).check("bs5950")
    for _ in range(2):  # the second run replaces the sheet of the first
        kx.write_saf(path, results)
    book = openpyxl.load_workbook(path)
    assert book.sheetnames.count("KeltrixResults") == 1 and "StructuralCurveMember" in book.sheetnames
    rows = list(book["KeltrixResults"].iter_rows(values_only=True))
    assert len(rows) == 3 and rows[1][:2] == ("B1", "=ULS") and rows[2][:2] == ("B2", "=ULS")
    assert [row[5] for row in rows[1:]] == [one.status for one in results] and "fail" in rows[2]
    assert rows[1][6] == results[0].utilisation and rows[1][8] == results[0].governing.clause  # type: ignore[union-attr]
    assert kx.read_saf(path, "z-down", **HOW).text == kx.read_saf(path, "z-down", **HOW).text
    kx.write_saf(path, results, tmp_path / "other.xlsx", sheet="Checks")
    assert "Checks" in openpyxl.load_workbook(tmp_path / "other.xlsx").sheetnames
    assert sorted(one.name for one in tmp_path.iterdir()) == ["model.xlsx", "other.xlsx"]
    with pytest.raises(kx.InputError, match="holds something else"):
        kx.write_saf(path, results, sheet="Model")


def test_what_the_tables_lack_is_said_of_rows_of_the_workbook(tmp_path: Path) -> None:
    # The table of forces has mid-span in its line 3; the workbook has it in row 2.
    rows = beam_rows("B1", "ULS", 20.0)
    rows[0][13] = 0.0
    with pytest.raises(kx.InputError, match="row 2: My: got a change by 0 kNm from 0 m to 3 m") as raised:
        kx.read_saf(workbook(tmp_path / "model.xlsx", rows), "z-down", **HOW)
    assert "forces:" not in str(raised.value) and {one.line for one in raised.value.errors} <= {1, 2, 4}
    short = [["Name", "Cross section", "Length [m]"], ["B0", "CS1", 1.0], ["B1", "CS1", 6.0]]
    with pytest.raises(kx.InputError, match="^sheet StructuralCurveMember, row 3: .*S27x"):
        kx.read_saf(workbook(tmp_path / "model.xlsx", GOOD, StructuralCurveMember=short), "z-down", grades={"S 275": "S27x"}, **HOW)
    same = [*GOOD, [*GOOD[2][:8], 4, *GOOD[2][9:]]]
    with pytest.raises(kx.InputError, match="^sheet ResultInternalForce1D, row 5: .* sheet ResultInternalForce1D, row 4"):
        kx.read_saf(workbook(tmp_path / "model.xlsx", same), "z-down", **HOW)


def test_merged_cells_lose_no_row_of_chosen_members(tmp_path: Path) -> None:
    path = workbook(tmp_path / "model.xlsx", GOOD)
    book = openpyxl.load_workbook(path)
    book["ResultInternalForce1D"].merge_cells("B2:B4")
    book.save(path)
    with pytest.raises(kx.InputError, match="row 3, Member: got nothing"):
        kx.read_saf(path, "z-down", members=["B1"], **HOW)


def test_formulas_without_values_are_no_zeros(tmp_path: Path) -> None:
    path = workbook(tmp_path / "model.xlsx", GOOD)
    book = openpyxl.load_workbook(path)
    book["ResultInternalForce1D"]["N2"] = "=90"
    book.save(path)
    with pytest.raises(kx.InputError, match="row 2, My: got nothing"):
        kx.read_saf(path, "z-down", **HOW)


def test_names_with_colons_and_commas_go_back_whole(tmp_path: Path) -> None:
    names = ["B1", "B1: left", "B1, right"]
    members = [["Name", "Cross section", "Length [m]"], *([name, "CS1", 6.0] for name in names)]
    path = workbook(tmp_path / "model.xlsx", [row for name in names for row in beam_rows(name, "ULS: 1", 20.0)], StructuralCurveMember=members)
    kx.write_saf(path, kx.read_saf(path, "z-down", **HOW).check())
    rows = list(openpyxl.load_workbook(path)["KeltrixResults"].iter_rows(values_only=True))[1:]
    assert [row[:2] for row in rows] == [(name, "ULS: 1") for name in names]
