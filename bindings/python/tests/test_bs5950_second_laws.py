"""Laws that checks to BS 5950-1:2000 keep: a section that is turned with everything that acts on it is the same member.

Random members: KELTRIX_TEST_SCALE multiplies their number. A failure prints seed, number and both members.
"""

from __future__ import annotations

import math
import random
from collections import Counter, defaultdict

import pytest
import second_bs5950 as bs
import second_members as members
from second_members import HELD, Piece
from test_ec3_second import cases

import keltrix as kx

SIDES = {"Top flange lateral": "Bottom flange lateral", "Bottom flange lateral": "Top flange lateral"}
BEARING = ("web bearing under concentrated loads", "web buckling under concentrated loads")
ALONG, ACROSS = "shear capacity along the web", "shear capacity along the flanges"


def member_of(
    name: str, made: str, grade: str, stations: list[float], held: list[str], pieces: list[Piece], along: list[str] | None = None
) -> kx.Member:
    member = kx.Member(name, grade, type=made)
    for x, what in zip(stations, held):
        member.add_point(x, what)
    for i, piece in enumerate(pieces):
        left, right = piece.ends
        member.add_sub_span(
            forces_left=(left[0], left[4], left[2]), forces_right=(right[0], right[4], right[2]),
            moments_left=(0.0, left[1], left[3]), moments_right=(0.0, right[1], right[3]), holds=along[i] if along else "Free",
        )
    return member


def random_pieces(rng: random.Random, stations: list[float], Wx: float, Wy: float, A: float) -> list[Piece]:
    py = 300e6
    N = A * py * rng.choice([0.0, 0.0, rng.uniform(-0.8, 0.8), rng.uniform(-0.4, 0.1)])
    length = stations[-1]
    My, Mz = (W * py * rng.choice([0.0, 1.0, 1.0]) * rng.uniform(-1, 1) for W in (Wx, Wy))
    Vz, Vy = (rng.choice([0.0, 1.0, 1.0]) * W * py * rng.uniform(-2, 2) / length for W in (Wx, Wy))
    pieces = []
    for start, end in zip(stations, stations[1:]):
        L = end - start
        w, wy = (rng.choice([0.0, 1.0]) * W * py * rng.uniform(-4, 4) / length**2 for W in (Wx, Wy))
        pieces.append(Piece(start, L, N, (Vz, Vz + w * L), My, (Vy, Vy + wy * L), Mz))
        _, My, Vz, Mz, Vy = pieces[-1].at(L)
        Vz += rng.choice([0.0, 1.0]) * Wx * py * rng.uniform(-4, 4) / length
        Vy += rng.choice([0.0, 1.0]) * Wy * py * rng.uniform(-4, 4) / length
    return pieces


def swapped(pieces: list[Piece]) -> list[Piece]:
    """A quarter turn: dMy/dx = Fz and dMz/dx = -Fy stay."""
    return [Piece(p.start, p.length, p.N, (-p.Vy[0], -p.Vy[1]), p.Mz, (-p.Vz[0], -p.Vz[1]), p.My) for p in pieces]


def worst(result: kx.Result, names: dict[str, str]) -> dict[str, tuple[float, tuple[str, ...]]]:
    """The largest utilisation of each rule and its states, under other names."""
    rows: dict[str, list[kx.Finding]] = defaultdict(list)
    for finding in result.findings:
        if finding.status != "information":
            rows[names.get(finding.rule, finding.rule)].append(finding)
    telling = ("failed", "not evaluated", "outside the input")
    return {rule: (max(f.utilisation for f in found), tuple(sorted({f.status for f in found if f.status in telling}))) for rule, found in rows.items()}


def turned_names() -> dict[str, str]:
    pairs = [(ALONG, ACROSS), ("moment capacity, major axis", "moment capacity, minor axis"), ("compression buckling, major axis", "compression buckling, minor axis")]
    return {a: b for pair in pairs for a, b in (pair, pair[::-1])}


def hold(
    counts: Counter[str], one: kx.Result, other: kx.Result, where: str, names: dict[str, str], but: tuple[str, ...] = (), tolerance: float = 1e-7
) -> None:
    first, second = worst(one, {}), worst(other, names)
    for rule in sorted(first.keys() | second.keys()):
        if rule in but:
            continue
        counts[rule] += 1
        assert rule in first and rule in second, f"{where}: {rule}: {first.get(rule)} {second.get(rule)}"
        (a, s), (b, t) = first[rule], second[rule]
        assert a == b or abs(a - b) <= tolerance * max(a, b, 1e-6), f"{where}: {rule}: {a} {s}, turned {b} {t}"
        assert s == t, f"{where}: {rule}: {a} {s}, turned {b} {t}"


@pytest.mark.parametrize("seed", range(1, 3))
def test_a_square_or_round_section_turned_by_a_quarter(seed: int) -> None:
    counts: Counter[str] = Counter()
    rng = random.Random(seed)
    names = [name for name in kx.sections if name.split()[0] in ("SHS", "CFSHS", "CHS", "CFCHS")]
    for number in range(cases(150)):
        name = rng.choice([rng.choice(names), rng.choice(names), f"BOX {(b := rng.randrange(80, 600, 10))}x{b}x{(t := rng.choice([4, 5, 6, 8, 10, 12]))}x{t}"])
        s = members.section_of(name)
        length = rng.uniform(0.3, 8.0)
        stations = [0.0, length * rng.uniform(0.2, 0.8), length] if rng.random() < 0.5 else [0.0, length]
        held = [HELD, *(rng.choice([HELD, "Free"]) for _ in stations[2:]), HELD]
        pieces = random_pieces(rng, stations, s.Wel_y, s.Wel_z, s.A)
        grade, exact = rng.choice(["S275", "S355"]), rng.random() < 0.5
        one, other = (member_of(name, s.made, grade, stations, held, p) for p in (pieces, swapped(pieces)))
        where = f"seed {seed}, number {number}, exact {exact}\n{one.text}\n{other.text}"
        results = [m.check("bs5950", exact=exact) for m in (one, other)]
        hold(counts, results[0], results[1], where, turned_names(), BEARING + ("lateral-torsional buckling", "member buckling under axial force and moment"))
    print(counts)
    assert counts["moment capacity, major axis"] >= cases(150)


@pytest.mark.parametrize("seed", range(1, 3))
def test_a_box_turned_by_a_quarter(seed: int) -> None:
    """In its cross-section; its buckling about either axis has tables of its own."""
    counts: Counter[str] = Counter()
    rng = random.Random(seed)
    for number in range(cases(150)):
        h, b, t, T = rng.randrange(100, 900, 10), rng.randrange(100, 900, 10), rng.choice([4, 5, 6, 8, 10, 12]), rng.choice([4, 5, 6, 8, 10, 12])
        s = members.section_of(f"BOX {h}x{b}x{t}x{T}")
        length = rng.uniform(0.3, 3.0)
        stations = [0.0, length * rng.uniform(0.2, 0.8), length] if rng.random() < 0.5 else [0.0, length]
        held = [HELD] * len(stations)
        pieces = random_pieces(rng, stations, s.Wel_y, s.Wel_z, s.A)
        for piece in pieces:
            piece.N = max(piece.N, 0.0)  # which walls of a compressed box are its webs is said for bending alone
        grade, exact = rng.choice(["S275", "S355"]), rng.random() < 0.5
        one = member_of(f"BOX {h}x{b}x{t}x{T}", "welded", grade, stations, held, pieces)
        other = member_of(f"BOX {b}x{h}x{T}x{t}", "welded", grade, stations, held, swapped(pieces))
        where = f"seed {seed}, number {number}, exact {exact}\n{one.text}\n{other.text}"
        results = [m.check("bs5950", exact=exact) for m in (one, other)]
        hold(counts, results[0], results[1], where, turned_names(), BEARING + ("lateral-torsional buckling", "member buckling under axial force and moment"))
    print(counts)
    assert counts["shear buckling of the web"] >= cases(150)


@pytest.mark.parametrize("seed", range(1, 3))
def test_a_section_upside_down(seed: int) -> None:
    counts: Counter[str] = Counter()
    rng = random.Random(seed)
    for number in range(cases(150)):
        D, B1, B2, t = rng.randrange(150, 900, 10), rng.randrange(80, 400, 10), rng.randrange(80, 400, 10), rng.choice([5, 6, 8, 10, 15])
        T1, T2 = rng.choice([6, 8, 10, 15, 20, 25]), rng.choice([6, 8, 10, 15, 20, 25])
        s = members.section_of(f"GI {D}x{B1}x{B2}x{t}x{T1}x{T2}")
        length = rng.uniform(0.5, 10.0)
        stations = [0.0, *sorted(length * rng.uniform(0.1, 0.9) for _ in range(rng.choice([0, 1, 2]))), length]
        held = [HELD, *(rng.choice([HELD, "Free", "Free", *SIDES]) for _ in stations[2:]), HELD]
        along = [rng.choice(["Free", "Free", *SIDES]) for _ in stations[1:]]
        pieces = random_pieces(rng, stations, s.Wel_y, s.Wel_z, s.A)
        over = [Piece(p.start, p.length, p.N, (-p.Vz[0], -p.Vz[1]), -p.My, p.Vy, p.Mz) for p in pieces]
        grade, bearing = rng.choice(["S275", "S355"]), rng.choice([0.0, 0.1])
        one = member_of(f"GI {D}x{B1}x{B2}x{t}x{T1}x{T2}", "welded", grade, stations, held, pieces, along)
        other = member_of(
            f"GI {D}x{B2}x{B1}x{t}x{T2}x{T1}", "welded", grade, stations, [SIDES.get(h, h) for h in held], over, [SIDES.get(h, h) for h in along]
        )
        where = f"seed {seed}, number {number}, bearing {bearing}\n{one.text}\n{other.text}"
        results = [m.check("bs5950", bearing=bearing) if bearing else m.check("bs5950") for m in (one, other)]
        hold(counts, results[0], results[1], where, {})
    print(counts)
    assert counts["lateral-torsional buckling"] >= cases(150)


def test_the_shear_of_a_round_section_is_one_resultant() -> None:
    """4.2.3: 680 kN at 45 degrees on CHS 168.3x10, Pv 492 kN, is 1.38 of it."""
    s = members.section_of("CHS 168.3x10")
    V = 680e3 * math.sqrt(0.5)
    member = kx.Member("CHS 168.3x10", "S275", type="rolled").add_point(0.0, HELD).add_point(0.004, HELD)
    member.add_sub_span(forces_left=(0, -V, V), forces_right=(0, -V, V), moments_left=(0, -0.002 * V, -0.002 * V), moments_right=(0, 0.002 * V, 0.002 * V))
    assert math.hypot(V, V) / bs.shear_capacities(s, 275e6)[0] == pytest.approx(1.381, rel=1e-3)
    assert not member.check("bs5950").passed


def test_the_moment_of_a_round_section_under_high_shear() -> None:
    """4.2.5.3: 0.83 Pv at 45 degrees leaves (1 - 0.66**2) of py S; the resultant moment is 0.8 of py S."""
    s = members.section_of("CHS 168.3x10")
    Pv = bs.shear_capacities(s, 275e6)[0]
    V, M = 0.83 * Pv * math.sqrt(0.5), 0.8 * 275e6 * s.Wpl_y * math.sqrt(0.5)
    assert M * math.sqrt(2) / (275e6 * s.Wpl_y * (1 - (2 * 0.83 - 1) ** 2)) == pytest.approx(1.417, rel=1e-3)
    member = kx.Member("CHS 168.3x10", "S275", type="rolled").add_point(0.0, HELD).add_point(2 * M / V, HELD)
    member.add_sub_span(forces_left=(0, V, -V), forces_right=(0, V, -V), moments_left=(0, M, M), moments_right=(0, -M, -M))
    assert not member.check("bs5950", exact=True).passed


@pytest.mark.xfail(strict=True, reason="a hot-finished hollow section that is called welded gets square corners, 5 % more area")
def test_a_hot_finished_section_that_is_called_welded() -> None:
    """Of a type and a row of the catalogue that differ the less favourable counts: no capacity grows."""
    used = []
    for made in ("rolled", "welded"):
        member = kx.Member("SHS 50x50x8", "S275", type=made).add_point(0.0, HELD).add_point(0.2, HELD)
        member.add_sub_span(forces_left=(335e3, 0, 0), forces_right=(335e3, 0, 0))
        used.append(member.check("bs5950").utilisation)
    assert used[0] == pytest.approx(335e3 / (275e6 * members.section_of("SHS 50x50x8").A), rel=1e-6)
    assert used[1] >= used[0]


def test_an_angle_turned_by_a_quarter_under_high_shear() -> None:
    """Legs changed over and what acts with them: the same member."""
    used = []
    for name, pieces in (("ANGLE 150x100x12", [Piece(0.0, 0.05, 0.0, (240e3, 240e3), -6000.0, (0.0, 0.0), 2000.0)]),):
        other = name.replace("150x100", "100x150")
        for section, acting in ((name, pieces), (other, swapped(pieces))):
            member = member_of(section, "rolled", "S275", [0.0, 0.05], [HELD, HELD], acting)
            used.append(worst(member.check("bs5950"), {})["compression and moment, cross-section"][0])
    assert used[0] == pytest.approx(used[1], rel=1e-7)
