"""Which section would do, what sections carry, and how members buckle: the same as ksteel's."""

from __future__ import annotations

import math
import os

import numpy as np
import pytest
from support import BEAM_FILES, MEMBER, MEMBER_FILES, SOURCE, ksteel_json

import keltrix as kx


@pytest.fixture(autouse=True)
def _in_the_sources(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.chdir(SOURCE)


def subject_of(path: os.PathLike[str]) -> kx.Beam | kx.Member:
    return kx.Beam.from_file(path) if str(path).endswith(".toml") else kx.Member.from_file(path)


@pytest.mark.parametrize("path", [MEMBER_FILES[0], *[p for p in MEMBER_FILES if "floor" in str(p)], *BEAM_FILES[:2]], ids=str)
@pytest.mark.parametrize("code", ["bs5950", "ec3"])
def test_design_is_that_of_the_command_line(path: os.PathLike[str], code: str) -> None:
    record = ksteel_json("design", path, "--family", "UB,UC", "--count", "2", "--code", code)[0]
    found = kx.design(subject_of(path), ["UB", "UC"], count=2, code=code)
    assert found.chosen == record["chosen"]
    for candidates, records in (
        (found.passing, record["passing"]),
        (found.failing, record["lighter_failing"]),
        (found.not_checked, record["not_checked"]),
    ):
        assert [one.section for one in candidates] == [one["section"] for one in records]
        assert [one.governing for one in candidates] == [one["governing"] for one in records]
        for candidate, one in zip(candidates, records):
            assert candidate.utilisation == one["overall"] or math.isnan(candidate.utilisation)


def test_the_section_that_is_chosen_passes() -> None:
    beam = kx.Beam("UB 457x191x67", "S275", spans=[7.0]).add_udl(4.0, case="permanent").add_udl(12.0, case="imposed")
    found = kx.design(beam, "UB", by="depth", max_depth=0.6, count=1)
    assert found.chosen is not None
    beam.keys["section"] = found.chosen
    result = beam.check()
    assert result.passed and result.utilisation == found.passing[0].utilisation
    beam.keys["section"] = found.failing[-1].section
    assert not beam.check().passed


def test_a_grade_of_another_code_than_the_first_is_taken() -> None:
    beam = kx.Beam("IPE 400", "S235", spans=[6.0]).add_udl(5.0, case="permanent").add_udl(8.0, case="imposed")
    found = kx.design(beam, "IPE", count=1, code="ec3")
    assert found.chosen is not None
    with pytest.raises(kx.InputError, match="S235"):
        kx.design(beam, "IPE", count=1, code="bs5950")
    assert kx.buckling(beam, code="ec3").to_dict()["moduli_of"].startswith("EN 1993")


def test_designs_refuse_what_means_nothing() -> None:
    for keys, part in (
        ({"family": "XX"}, "the catalogue has"),
        ({"family": []}, "family"),
        ({"family": "UB", "by": "price"}, "by: got"),
        ({"family": "UB", "count": 0}, "count: got 0"),
        ({"family": "UB", "max_depth": -1.0}, "max_depth"),
        ({"family": "UB", "max_depth": float("nan")}, "max_depth"),
        ({"family": "UB", "code": "xx"}, "design code"),
    ):
        with pytest.raises(kx.InputError, match=part):
            kx.design(MEMBER, **keys)  # type: ignore[arg-type]
    with pytest.raises(kx.InputError) as caught:
        kx.design(kx.Beam("UB 457x191x67", "S275"), "UB")
    assert caught.value.diagnostics[0].keyword == "length"
    assert kx.design(MEMBER, "UB", max_depth=0.01).chosen is None


@pytest.mark.parametrize("code", ["bs5950", "ec3"])
def test_capacity_is_that_of_the_command_line(code: str) -> None:
    record = ksteel_json("capacity", "UB 457x191x67", "--grade", "S355", "--LE", "2,4.5", "--code", code)
    assert kx.capacity("UB 457x191x67", "S355", lengths=[2.0, 4.5], code=code) == record


@pytest.mark.parametrize(
    ("section", "symbol", "length", "published"),
    # Steelwork design guide to BS 5950-1:2000, volume 1, in kN and kNm.
    [
        ("UB 457x191x67", "Mcx", 5.0, 404),
        ("UB 457x191x67", "Pcy", 5.0, 906),
        ("UB 457x191x67", "Mb", 5.0, 196),
        ("UB 533x210x92", "Mcx", 5.0, 649),
        ("UB 152x89x16", "Pcy", 3.0, 164),
        ("UB 1016x305x584", "Mb", 5.0, 5750),
    ],
)
def test_published_capacities(section: str, symbol: str, length: float, published: float) -> None:
    row = kx.capacity(section, "S275", lengths=length, code="bs5950")[0]
    assert row[symbol] / 1e3 == pytest.approx(published, rel=0.01)


def test_capacity_refuses_what_means_nothing() -> None:
    for keys, part in (
        ({"lengths": []}, "lengths"),
        ({"lengths": [0.0]}, "lengths"),
        ({"lengths": [float("nan")]}, "lengths"),
        ({"lengths": 2.0, "grade": "S1"}, "S1"),
        ({"lengths": 2.0, "type": "cast"}, "type"),
        ({"lengths": 2.0, "C1": 1.5, "code": "bs5950"}, "C1"),
        ({"lengths": 2.0, "C1": 0.5, "code": "ec3"}, "C1"),
    ):
        with pytest.raises(kx.InputError, match=part):
            kx.capacity("UB 457x191x67", **keys)  # type: ignore[arg-type]
    with pytest.raises(kx.InputError, match="nearest"):
        kx.capacity("UB 1", lengths=2.0)


@pytest.mark.parametrize("path", [*MEMBER_FILES, *BEAM_FILES], ids=str)
@pytest.mark.parametrize(("code", "continuity"), [("bs5950", False), ("ec3", True)])
def test_buckling_is_that_of_the_command_line(path: os.PathLike[str], code: str, continuity: bool) -> None:
    records = ksteel_json("buckling", path, "--code", code, *(["--continuity"] if continuity else []))
    found = kx.buckling(subject_of(path), code=code, continuity=continuity)
    everything = [found, *found.others]
    assert len(everything) == len(records)
    for record in records:
        assert record in [one.to_dict() for one in everything]
    factors = [one.factor for one in everything if one.factor is not None]
    if found.refusal is None and found.held and factors:
        assert found.factor == min(factors)


def test_the_critical_moment_is_that_of_the_formula() -> None:
    # Uniform moment between forks: Mcr = π²EIz/L² (Iw/Iz + L²GIt/(π²EIz))^0.5
    member = kx.Member("UB 457x191x67", "S275").add_point(0.0, "Pinned").add_point(6.0, "Pinned")
    member.add_sub_span(moments_left=(0, -100e3, 0), moments_right=(0, -100e3, 0))
    found = kx.buckling(member)
    section = kx.sections["UB 457x191x67"]
    E = found.to_dict()["E"]
    G = found.to_dict()["G"]
    euler = math.pi**2 * E * section.Iyy / 6.0**2
    Mcr = euler * math.sqrt(section.Iw / section.Iyy + G * section.J / euler)
    assert found.Mcr == pytest.approx(Mcr, rel=1e-3) and found.factor == pytest.approx(Mcr / 100e3, rel=1e-3)
    shape = found.shape
    assert shape.dtype.names == ("x", "v", "phi", "flange_1", "flange_2")
    assert np.max(np.abs([shape["v"], shape["flange_1"], shape["flange_2"]])) == pytest.approx(1.0)
    assert shape["v"][0] == 0.0 and shape["v"][-1] == pytest.approx(0.0, abs=1e-12)


def test_what_is_not_held_or_does_not_buckle_is_told() -> None:
    loose = kx.Member("UB 457x191x67", "S275").add_point(0.0, "Free").add_point(6.0, "Free")
    loose.add_sub_span(moments_left=(0, -1e3, 0), moments_right=(0, -1e3, 0))
    found = kx.buckling(loose)
    assert found.held is False and found.factor is None and len(found.shape) > 0 and "not held" in repr(found)
    tie = kx.Member("UB 457x191x67", "S275").add_point(0.0, "Pinned").add_point(6.0, "Pinned")
    tie.add_sub_span(forces_left=(1e5, 0, 0), forces_right=(1e5, 0, 0))
    found = kx.buckling(tie)
    assert found.held and found.factor is None and len(found.shape) == 0 and "nothing buckles" in repr(found)


def test_buckling_takes_one_member() -> None:
    with pytest.raises(kx.InputError, match="holds 2 members"):
        kx.buckling(MEMBER * 2)
    with pytest.raises(kx.InputError):
        kx.buckling("")
