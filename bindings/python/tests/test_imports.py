"""Members from tables: the same as ksteel import makes."""

from __future__ import annotations

import io

import numpy as np
import pandas as pd
import pytest
from support import SOURCE, ksteel

import keltrix as kx

FORCES = (SOURCE / "examples/frame/forces.csv").read_text(encoding="utf-8")
MEMBERS = (SOURCE / "examples/frame/members.csv").read_text(encoding="utf-8")


def made(*arguments: str) -> str:
    return ksteel("import", "examples/frame/forces.csv", "--members", "examples/frame/members.csv", "--map", *arguments)


def test_the_text_is_that_of_the_command_line() -> None:
    found = kx.from_table(FORCES, MEMBERS, "z-down")
    assert found.text == made("z-down") and (found.members, found.cases) == (2, 4)
    assert found.text.count("TITLE,") == 4


def test_frames_and_arrays_are_the_same_as_the_text() -> None:
    forces = pd.read_csv(io.StringIO(FORCES))
    members = pd.read_csv(io.StringIO(MEMBERS), keep_default_na=False)
    assert kx.from_table(forces, members, "z-down").text == made("z-down")
    arrays = {name: forces[name].to_numpy() for name in forces}
    lists = {name: members[name].tolist() for name in members}
    assert kx.from_table(arrays, lists, "z-down").text == made("z-down")


def test_the_checks_are_those_of_the_command_line() -> None:
    results = kx.from_table(FORCES, MEMBERS, "z-down").check("bs5950")
    text = made("z-down")
    assert results.to_json().replace('"import"', '"standard input"') == ksteel(
        "check", "-", "--format", "json", text=text
    )
    assert [one.title for one in results][0] == "B1: 1.4 dead + 1.6 imposed"


def test_other_signs_do_not_balance() -> None:
    with pytest.raises(kx.InputError, match="do not balance as sagging; they would as .*z-down"):
        kx.from_table(FORCES, MEMBERS, "sagging")


def test_captions_and_units_can_be_given() -> None:
    forces = pd.read_csv(io.StringIO(FORCES)).rename(columns={"N [kN]": "Axial force", "T [kNm]": "torque"})
    with pytest.raises(kx.InputError):
        kx.from_table(forces, MEMBERS, "z-down")
    columns = {"N": "Axial force", "T": "none", "force": "kN"}
    found = kx.from_table(forces, MEMBERS, "z-down", columns=columns)
    assert found.text == made("z-down")


def test_faults_have_their_line_and_column() -> None:
    forces = pd.read_csv(io.StringIO(FORCES))
    forces["My [kNm]"] = forces["My [kNm]"].astype(object)
    forces.loc[1, "My [kNm]"] = "much"
    forces.loc[2, "Vz [kN]"] = np.nan
    with pytest.raises(kx.InputError) as caught:
        kx.from_table(forces, MEMBERS, "z-down")
    errors = caught.value.errors
    assert (errors[0].line, errors[0].got) == (3, '"much"') and "My" in errors[0].keyword
    assert any(one.line == 4 and "nan" in one.got for one in errors)


@pytest.mark.parametrize(
    ("forces", "members", "signs", "part"),
    [
        ("", MEMBERS, "z-down", ""),
        (FORCES, "", "z-down", ""),
        (FORCES, MEMBERS, "upside-down", "upside-down"),
        (FORCES, MEMBERS, "", ""),
        (b"\xff\xfe", MEMBERS, "z-down", "forces"),
        ({}, MEMBERS, "z-down", ""),
        ({"member": ["B1"], "case": []}, MEMBERS, "z-down", "forces: expected columns of one length"),
        ({"member": np.zeros((2, 2))}, MEMBERS, "z-down", "forces: expected columns of one length"),
        (FORCES, MEMBERS.replace("UB 457x191x74", "UB 1"), "z-down", "UB 1"),
        (FORCES, MEMBERS.replace("S275", "S1"), "z-down", "S1"),
    ],
)
def test_tables_that_are_none_are_refused(forces: object, members: object, signs: str, part: str) -> None:
    with pytest.raises(kx.InputError, match=part) as caught:
        kx.from_table(forces, members, signs)  # type: ignore[arg-type]
    assert caught.value.diagnostics and str(caught.value)


def test_a_cell_cannot_become_two() -> None:
    members = pd.read_csv(io.StringIO(MEMBERS), keep_default_na=False)
    members["section"] = ['UB 457x191x74,S460', 'UC 203x203x60"\nB2,']
    with pytest.raises(kx.InputError) as caught:
        kx.from_table(FORCES, members, "z-down")
    assert any("UB 457x191x74,S460" in one.message and one.line == 2 for one in caught.value.errors)
    members["section"] = ["UB 457x191x74", 'UC 203x203x60"']
    with pytest.raises(kx.InputError, match='203x203x60"'):
        kx.from_table(FORCES, members, "z-down")


def test_an_import_is_no_truth_value() -> None:
    with pytest.raises(TypeError, match="truth value"):
        bool(kx.from_table(FORCES, MEMBERS, "z-down"))


def test_masked_cells_dates_and_columns_that_stand_twice() -> None:
    forces = {"member": ["C1"] * 2, "case": ["dead"] * 2, "station [m]": [0.0, 4.5], "N [kN]": [-300.0, -300.0]}
    forces |= {caption: [0, 0] for caption in ("Vy [kN]", "Vz [kN]", "T [kNm]", "My [kNm]", "Mz [kNm]")}
    members = {"member": ["C1"], "section": ["UC 203x203x60"], "grade": ["S275"], "length [m]": [4.5], "start": ["Pinned"], "end": ["Pinned"]}
    assert kx.from_table(forces, members, "z-down").members == 1
    for cells, part in (
        (np.ma.array([-300.0, -300.0], mask=[False, True]), "forces:3: .*got nothing"),
        (np.array([5, 5], "timedelta64[ns]"), "forces:2: .*5 nanoseconds"),
        (pd.Series([-300.0, -300.0], index=[1, 0]), "forces: columns 'case' and 'N"),
    ):
        with pytest.raises(kx.InputError, match=part):
            kx.from_table({**forces, "case": pd.Series(["dead"] * 2), "N [kN]": cells}, members, "z-down")
    with pytest.raises(kx.InputError, match="members: the column 'member' stands twice"):
        kx.from_table(forces, pd.DataFrame([["C1", "C2"]], columns=["member", "member"]), "z-down")
