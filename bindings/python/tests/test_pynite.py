"""Members from models of frames. The stand-ins compute their forces as the documented layout has them, from statics by hand."""

from __future__ import annotations

from types import SimpleNamespace
from typing import Any

import pytest

import keltrix as kx


class FrameMember:
    """A beam between supports at its ends, loaded against y and z by uniform loads and against y by a point load, with an axial force and end moments
    about z. Signs: a face that looks against x, in axes with y up and z to the right of who looks along x."""

    def __init__(self, length: float, *, wy: float = 0.0, wz: float = 0.0, P: float = 0.0, a: float = 0.0, compression: float = 0.0,
                 my_below: bool = True) -> None:
        self.length, self.wy, self.wz, self.P, self.a = length, wy, wz, P, a
        self.compression = compression
        self.sign = 1.0 if my_below else -1.0
        if P:
            self.PtLoads = [("Fy", -P, a, "D")]
        self.DistLoads = [("Fy", -wy, -wy, 0.0, length, "D")]

    def L(self) -> float:
        return self.length

    def axial(self, x: float, combo_name: str = "Combo 1") -> float:
        return self.compression

    def torque(self, x: float, combo_name: str = "Combo 1") -> float:
        return 0.0

    def shear(self, Direction: str, x: float, combo_name: str = "Combo 1") -> float:
        if Direction == "Fz":
            return self.wz * (self.length / 2.0 - x)
        reaction = self.P * (self.length - self.a) / self.length
        return self.wy * (self.length / 2.0 - x) + reaction - (self.P if x >= self.a else 0.0)

    def moment(self, Direction: str, x: float, combo_name: str = "Combo 1") -> float:
        if Direction == "My":
            return -self.sign * self.wz * x * (self.length - x) / 2.0
        reaction = self.P * (self.length - self.a) / self.length
        return -(self.wy * x * (self.length - x) / 2.0 + reaction * x - self.P * max(0.0, x - self.a))


def frame(member: Any, **names: Any) -> SimpleNamespace:
    return SimpleNamespace(members={"B1": member}, load_combos={"ULS": None, "ULS 2": None}, **names)


WORDS: dict[str, Any] = {"force": "kN", "length": "m", "section": "UB 457x191x67", "grade": "S275", "start": "Pinned", "end": "Pinned"}


def test_a_beam_under_a_uniform_load_is_that_of_the_statics() -> None:
    # 6 m under 20 kN/m: 90 kNm sagging.
    beam = kx.Beam("UB 457x191x67", "S275", length=6.0, self_weight=False, deflection=False).restrain("top")
    beam.add_udl(20.0, case="permanent").add_combination("own", {"permanent": 1.0})
    made = kx.from_pynite(frame(FrameMember(6.0, wy=20.0)), "B1", "ULS", restraints="Top flange lateral@0:6", **WORDS)
    result = made.check()[0]
    assert result.passed and result.utilisation == pytest.approx(beam.check().utilisation, rel=1e-9)
    held_below = kx.from_pynite(frame(FrameMember(6.0, wy=20.0)), "B1", "ULS", restraints="Bottom flange lateral@0:6", **WORDS)
    assert held_below.check()[0].utilisation > result.utilisation, "the top flange is the compressed one"


def test_compression_is_compression() -> None:
    strut = kx.from_pynite(frame(FrameMember(6.0, compression=200.0)), "B1", "ULS", **WORDS).check()[0]
    tie = kx.from_pynite(frame(FrameMember(6.0, compression=-200.0)), "B1", "ULS", **WORDS).check()[0]
    table = {"section": "UB 457x191x67", "grade": "S275", "length": 6.0, "N": [-200e3, 200e3]}
    found = kx.check_many(table)["utilisation"]
    assert [strut.utilisation, tie.utilisation] == pytest.approx(list(found)) and strut.utilisation > tie.utilisation


def test_a_point_load_has_forces_on_both_sides() -> None:
    made = kx.from_pynite(frame(FrameMember(7.0, P=45.0, a=2.123)), "B1", "ULS", stations=3, **WORDS)
    assert ",2.123," in made.text
    beam = kx.Beam("UB 457x191x67", "S275", length=7.0, self_weight=False, deflection=False)
    beam.add_point(45.0, at=2.123, case="permanent").add_combination("own", {"permanent": 1.0})
    assert made.check()[0].utilisation == pytest.approx(beam.check().utilisation, rel=1e-4)


@pytest.mark.parametrize("my_below", [True, False])
def test_both_signs_of_the_minor_axis_are_told_by_the_shears(my_below: bool) -> None:
    # A channel sees on which side its web is. y of a member file is to the left, so loads against z push to the left: tension on the left, Mzz below zero.
    words = {**WORDS, "section": "PFC 200x90x30"}
    made = kx.from_pynite(frame(FrameMember(4.0, wz=2.0, wy=1.0, my_below=my_below)), "B1", "ULS", stations=2, **words)
    lines = [line.split(",") for line in made.text.splitlines() if line.startswith("SUBSPAN")]
    assert float(lines[0][13]) == pytest.approx(-4e3) and float(lines[0][12]) == pytest.approx(-2e3)


def test_a_constant_minor_moment_has_no_sign_of_its_own() -> None:
    member = FrameMember(4.0, compression=50.0)
    member.moment = lambda Direction, x, combo_name: 3.0 if Direction == "My" else 0.0  # type: ignore[method-assign]
    with pytest.raises(kx.InputError, match="minor_sags"):
        kx.from_pynite(frame(member), "B1", "ULS", **WORDS)
    below = kx.from_pynite(frame(member), "B1", "ULS", minor_sags="below zero", **WORDS)
    above = kx.from_pynite(frame(member), "B1", "ULS", minor_sags="above zero", **WORDS)
    assert ",3000," in below.text and ",-3000," in above.text
    assert below.check()[0].utilisation == above.check()[0].utilisation


def test_units_and_older_names_of_the_layout() -> None:
    want = kx.from_pynite(frame(FrameMember(6.0, wy=20.0)), "B1", ["ULS", "ULS 2"], **WORDS)
    assert want.cases == 2
    older = SimpleNamespace(Members={"B1": FrameMember(6000.0, wy=20.0)}, LoadCombos={"ULS": None})
    got = kx.from_pynite(older, "B1", "ULS", **{**WORDS, "force": "N", "length": "mm"})
    assert got.check()[0].utilisation == pytest.approx(want.check()[0].utilisation, rel=1e-9)
    feet = frame(FrameMember(6.0 / 0.3048, wy=20.0 / 4.4482216152605 * 0.3048))
    kips = kx.from_pynite(feet, "B1", "ULS", **{**WORDS, "force": "kip", "length": "ft"})
    assert kips.check()[0].utilisation == pytest.approx(want.check()[0].utilisation, rel=1e-9)


def test_the_section_of_the_model_serves() -> None:
    member = FrameMember(6.0, wy=20.0)
    words = {name: word for name, word in WORDS.items() if name != "section"}
    with pytest.raises(kx.InputError, match="section: the member of the model names none"):
        kx.from_pynite(frame(member), "B1", "ULS", **words)
    member.section = SimpleNamespace(name="UC 203x203x60")  # type: ignore[attr-defined]
    assert kx.from_pynite(frame(member), "B1", "ULS", **words).check()[0].section == "UC 203x203x60"


@pytest.mark.parametrize(
    ("change", "part"),
    [
        ({"member": "B2"}, "member: got 'B2', expected one of B1"),
        ({"combinations": "SLS"}, "combination: got 'SLS', expected one of ULS, ULS 2"),
        ({"model": object()}, "no members or Members"),
        ({"force": "t"}, "force: got 't'"),
        ({"length": "yd"}, "length: got 'yd'"),
        ({"stations": 0}, "stations: got 0"),
        ({"minor_sags": "up"}, "minor_sags: got 'up'"),
        ({"grade": "S1"}, "S1"),
        ({"start": "Pined"}, "Pined"),
    ],
)
def test_what_cannot_be_read_is_named(change: dict[str, Any], part: str) -> None:
    arguments: dict[str, Any] = {"model": frame(FrameMember(6.0, wy=20.0)), "member": "B1", "combinations": "ULS", **WORDS, **change}
    with pytest.raises(kx.InputError, match=part):
        kx.from_pynite(**arguments)


def test_a_model_that_was_not_analysed_is_refused() -> None:
    member = FrameMember(6.0, wy=20.0)
    member.axial = lambda x, combo_name: None  # type: ignore[method-assign, assignment, return-value]
    with pytest.raises(kx.InputError, match="was the model analysed"):
        kx.from_pynite(frame(member), "B1", "ULS", **WORDS)
    member.axial = lambda x, combo_name: float("nan")  # type: ignore[method-assign]
    with pytest.raises(kx.InputError, match="was the model analysed"):
        kx.from_pynite(frame(member), "B1", "ULS", **WORDS)


def test_forces_that_do_not_balance_are_refused() -> None:
    member = FrameMember(6.0, wy=20.0)
    member.moment = lambda Direction, x, combo_name: 10.0 * x * (6.0 - x) if Direction == "Mz" else 0.0  # type: ignore[method-assign]
    with pytest.raises(kx.InputError, match="balance"):
        kx.from_pynite(frame(member), "B1", "ULS", **WORDS)
