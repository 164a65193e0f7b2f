"""Members from models of frames. The stand-ins compute their forces as the documented layout has them, from statics by hand."""

from __future__ import annotations

import math
from types import SimpleNamespace
from typing import Any

import numpy as np
import pytest
from support import ksteel_json, settings

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
        ({"combinations": ["ULS", "ULS 2", "ULS"]}, "combination: got 'ULS' twice"),
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


def test_too_few_stations_for_curved_forces_are_told() -> None:
    # A triangular load of 20 kN/m at the end of 6 m: V = 20 - 20 x²/12, M = 20 x - 20 x³/36.
    member = FrameMember(6.0)
    member.shear = lambda Direction, x, combo_name: 20.0 - 20.0 * x * x / 12.0 if Direction == "Fy" else 0.0  # type: ignore[method-assign]
    member.moment = lambda Direction, x, combo_name: 20.0 * x**3 / 36.0 - 20.0 * x if Direction == "Mz" else 0.0  # type: ignore[method-assign]
    with pytest.raises(kx.InputError, match="stations: got 3, expected more, for example 30"):
        kx.from_pynite(frame(member), "B1", "ULS", stations=3, **WORDS)
    exact = kx.from_pynite(frame(member), "B1", "ULS", stations=30, **WORDS).check()[0]
    assert exact.utilisation == pytest.approx(kx.from_pynite(frame(member), "B1", "ULS", **WORDS).check()[0].utilisation, rel=2e-3)


def portal(span: float, height: float, load: float, E: float, area: float, I: float) -> list[tuple[float, Any]]:
    """Length and end forces (axial, across, moment at start and end, in the element's axes) of a portal with pinned feet under a uniform load on its
    beam, by direct stiffness: left column upwards, beam from left to right, right column upwards."""
    nodes = np.array([(0.0, 0.0), (0.0, height), (span, height), (span, 0.0)])
    elements = [(0, 1), (1, 2), (3, 2)]
    whole, acting = np.zeros((12, 12)), np.zeros(12)
    parts = []
    for i, j in elements:
        run = nodes[j] - nodes[i]
        L = float(np.hypot(*run))
        c, s = run / L
        turn = np.kron(np.eye(2), [[c, s, 0.0], [-s, c, 0.0], [0.0, 0.0, 1.0]])
        bend = E * I / L**3 * np.array([[12, 6 * L, -12, 6 * L], [6 * L, 4 * L * L, -6 * L, 2 * L * L], [-12, -6 * L, 12, -6 * L], [6 * L, 2 * L * L, -6 * L, 4 * L * L]])
        own = np.zeros((6, 6))
        own[np.ix_([1, 2, 4, 5], [1, 2, 4, 5])] = bend
        own[np.ix_([0, 3], [0, 3])] = E * area / L * np.array([[1, -1], [-1, 1]])
        held = np.zeros(6)
        if i == 1:
            held[:] = [0.0, load * L / 2, load * L * L / 12, 0.0, load * L / 2, -load * L * L / 12]
        at = [3 * i, 3 * i + 1, 3 * i + 2, 3 * j, 3 * j + 1, 3 * j + 2]
        whole[np.ix_(at, at)] += turn.T @ own @ turn
        acting[at] -= turn.T @ held
        parts.append((L, at, own @ turn, held))
    free = [i for i in range(12) if i not in (0, 1, 9, 10)]
    moved = np.zeros(12)
    moved[free] = np.linalg.solve(whole[np.ix_(free, free)], acting[free])
    return [(L, stiffness @ moved[at] + held) for L, at, stiffness, held in parts]


class FrameElement(FrameMember):
    """A piece with known forces at its start, in kN and m."""

    def __init__(self, length: float, ends: Any, load: float = 0.0) -> None:
        super().__init__(length)
        self.ends, self.load = ends, load

    def axial(self, x: float, combo_name: str = "Combo 1") -> float:
        return float(self.ends[0])

    def shear(self, Direction: str, x: float, combo_name: str = "Combo 1") -> float:
        return float(self.ends[1] - self.load * x) if Direction == "Fy" else 0.0

    def moment(self, Direction: str, x: float, combo_name: str = "Combo 1") -> float:
        return float(self.ends[2] - self.ends[1] * x + self.load * x * x / 2.0) if Direction == "Mz" else 0.0


def perry(py: float, pE: float, eta: float) -> float:
    phi = (py + (eta + 1.0) * pE) / 2.0
    return pE * py / (phi + math.sqrt(phi * phi - pE * py))


def test_a_portal_by_stiffness_and_its_column_by_hand() -> None:
    span, height, load = 12.0, 5.0, 15.0
    (_, left), (_, beam), _ = elements = portal(span, height, load, 205e6, 85.5e-4, 29380e-8)
    # Without shortening of the members the thrust is w L²/(4 h (2 h/L + 3)), 28.174 kN.
    stiff = portal(span, height, load, 205e6, 85.5, 29380e-8)
    assert -stiff[0][1][1] == pytest.approx(load * span**2 / (4.0 * height * (2.0 * height / span + 3.0)), rel=1e-6)
    model = SimpleNamespace(
        members={"C": FrameElement(height, left), "R": FrameElement(span, beam, load)}, load_combos={"ULS": None}
    )
    column, rafter = (kx.from_pynite(model, name, "ULS", **WORDS) for name in "CR")
    N, M = load * span / 2.0, -elements[0][1][1] * height  # 90 kN, 140.7 kNm at the eaves
    result = column.check("bs5950")[0]
    by_rule = {one.rule: one for one in result.findings}

    # Published properties of UB 457x191x67, in cm: A, ry, Zx, Sx, u, x; py 275 N/mm² for flanges up to 16 mm; section class 1.
    A, ry, Zx, Sx, u, X, py = 85.5, 4.12, 1296.0, 1471.0, 0.872, 37.9, 275.0
    E = 205e3
    slenderness = 100.0 * height / ry
    pE = math.pi**2 * E / slenderness**2
    pc = perry(py, pE, 0.001 * 3.5 * (slenderness - 0.2 * math.sqrt(math.pi**2 * E / py)))  # strut curve b
    v = (1.0 + 0.05 * (slenderness / X) ** 2) ** -0.25
    lambda_LT = u * v * slenderness
    pb = perry(py, math.pi**2 * E / lambda_LT**2, 0.007 * (lambda_LT - 0.4 * math.sqrt(math.pi**2 * E / py)))
    Mc = min(py * Sx, 1.2 * py * Zx) * 1e-3
    local = N / (A * py * 0.1) + M / Mc
    buckling = N / (A * pc * 0.1) + 0.6 * M / (pb * Sx * 1e-3)  # moments from 0 to M: mLT = 0.6
    assert by_rule["compression and moment, cross-section"].utilisation == pytest.approx(local, rel=2e-3)
    assert by_rule["compression buckling, minor axis"].resistance == pytest.approx(A * pc * 100.0, rel=2e-3)
    assert by_rule["member buckling under axial force and moment"].utilisation == pytest.approx(buckling, rel=2e-3)
    assert result.utilisation == pytest.approx(buckling, rel=2e-3)

    # Sagging below zero: the beam hogs at the eaves by what the column has there, and sags w L²/8 less at its middle.
    moments = [float(line.split(",")[9]) for line in rafter.text.splitlines() if line.startswith("SUBSPAN")]
    assert moments[0] == pytest.approx(M * 1e3) and moments[10] == pytest.approx((M - load * span**2 / 8.0) * 1e3)

    for made in (column, rafter):
        told = ksteel_json("check", "-", *settings("bs5950", ""), text=made.text)
        assert [one["overall"] for one in told] == [one.utilisation for one in made.check("bs5950")]


@pytest.mark.parametrize("my_below", [True, False])
def test_a_sign_against_the_shears_is_an_error(my_below: bool) -> None:
    model = frame(FrameMember(6.0, wy=20.0, wz=2.0, my_below=my_below))
    right, wrong = ("below zero", "above zero") if my_below else ("above zero", "below zero")
    assert kx.from_pynite(model, "B1", "ULS", minor_sags=right, **WORDS).text == kx.from_pynite(model, "B1", "ULS", **WORDS).text
    with pytest.raises(kx.InputError, match="minor_sags: .*the other sign"):
        kx.from_pynite(model, "B1", "ULS", minor_sags=wrong, **WORDS)


def test_what_is_no_member_of_a_frame() -> None:
    with pytest.raises(kx.InputError, match="has no method axial"):
        kx.from_pynite(frame(SimpleNamespace(L=lambda: 6.0)), "B1", "ULS", **WORDS)
