"""Webs to BS 5950-1:2000 4.4 and 4.5 against a second calculation of the clauses.

Random members: KELTRIX_TEST_SCALE multiplies their number. A failure prints seed, number, section, the member and both figures. Both sides
are closed formulas of the same numbers and agree to 1e-9.
"""

from __future__ import annotations

import math
import random
from collections import Counter
from typing import Any

import pytest
import second_bs5950 as bs
import second_bs5950_web as web
import second_members as members
from second_members import BRACED, FREE, HELD, Case, Piece
from test_ec3_second import EXACT, Comparison, cases
from test_ec3_second_web import built, loads_of

import keltrix as kx

BEARING = "web bearing under concentrated loads"
BUCKLING = "web buckling under concentrated loads"
SHEAR = "shear buckling of the web"
ANCHORAGE = "end anchorage of a web that buckles in shear"
THICKNESS = "least thickness of the web"
MAJOR, MINOR = "moment capacity, major axis", "moment capacity, minor axis"
WITH_TENSION, WITH_COMPRESSION = "tension and moment", "compression and moment, cross-section"
TOP, BOTTOM = "Top flange lateral", "Bottom flange lateral"
HOLDS = {HELD: (True, True), BRACED: (True, True), FREE: (False, False), TOP: (True, False), BOTTOM: (False, True)}  # top, bottom
THIN = {kind: members.NAMES["I" if kind == "rolled I" else "cold"] for kind in ("rolled I", "cold")}
THIN["cold"] = [name for name in THIN["cold"] if "CHS" not in name]
GRADES = ["S275", "S355", "S460"]


def bearing_case(rng: random.Random, kinds: list[str], close: bool) -> tuple[Case, float]:
    """A member with forces near the resistance of its web, and the stiff bearing length. `close`: loads may lie upon the same part of the web."""
    name = members.random_name(rng, rng.choice(kinds))
    s = members.section_of(name, rng.choice(["", "", "", "welded"]))  # a rolled section that is called welded is taken as welded
    py = 300e6
    b1 = rng.choice([0.001, rng.uniform(0.002, 0.1), rng.uniform(0.05, 0.3), rng.uniform(0.2, 1.0)])
    spread = b1 + 5 * web.root(s)
    count = rng.choice([1, 2, 2, 3, 4])
    gaps = [spread * (rng.choice([rng.uniform(0.05, 1.2), rng.uniform(1.01, 6.0)]) if close else rng.uniform(1.01, 6.0)) for _ in range(count)]
    if rng.random() < 0.3:
        gaps[-1] += rng.uniform(0.0, 10.0)
    least = web.bearing(s, py, b1, 0.0, b1 / 2)
    most = web.bearing(s, py, b1, 10.0, 10.0)
    at_end, inside = min(least.Pbw, least.Px), min(most.Pbw, most.Px)
    force = s.A * py * rng.choice([0.0, 0.0, rng.uniform(-0.3, 0.3)])
    My = s.Wel_y * py * rng.choice([0.0, rng.uniform(-0.5, 0.5)])
    Vz = at_end * rng.choice([0.0, rng.uniform(-1.2, 1.2)])
    pieces, start = [], 0.0
    for L in gaps:
        if abs(My + Vz * L) > 0.6 * s.Wel_y * py and rng.random() < 0.8:  # the moment turns round
            Vz = -math.copysign(min(abs(Vz), s.Wel_y * py / L), My)
        w = Vz / L * rng.uniform(-1, 1) if rng.random() < 0.2 and L > 3 * (spread + s.h) else 0.0  # no spread load counts as concentrated
        pieces.append(Piece(start, L, force, (Vz, Vz + w * L), My, (0.0, 0.0), 0.0))
        _, My, Vz, _, _ = pieces[-1].at(L)
        Vz += inside * rng.choice([0.0, rng.uniform(-1.2, 1.2), rng.uniform(-0.9, 0.9)])
        start += L
    held = [rng.choice([HELD, BRACED, BRACED, TOP, BOTTOM, FREE if rng.random() < 0.3 else BRACED]) for _ in gaps[1:]]
    ends = [HELD, rng.choice([HELD, HELD, FREE, BRACED])]
    rng.shuffle(ends)
    return built(s, name, rng.choice(GRADES), "", [ends[0], *held, ends[1]], pieces, {}), b1


def check(case: Case, where: str, **options: Any) -> tuple[Comparison, float] | None:
    py = bs.design_strength(case.section, case.grade)
    try:
        result = case.member.check("bs5950", **options)
    except kx.InputError as error:
        assert py is None, f"{where}: {error}"
        return None
    c = Comparison(case, result, f"{where}, {options}")
    c.hold("3.1.1 design strength", py, result.design_strength)
    assert py is not None
    failed = any(f.status == "failed" for f in result.findings)
    c.hold("a failed row fails the member", "fail" if failed else result.status, result.status)
    open_rows = any(f.status == "not evaluated" for f in result.findings)
    c.hold("what is not evaluated does not pass", False, open_rows and result.passed)
    c.hold("a member that passes has no row above 1", True, not result.passed or all(f.utilisation <= 1 for f in result.findings if f.status != "information"))
    return c, py


def compare_bearing(case: Case, b1: float, where: str) -> Counter[str]:
    checked = check(case, where, bearing=b1)
    if checked is None:
        return Counter()
    c, py = checked
    s = case.section
    loads = [load for load in loads_of(case) if abs(load.F) > 1e-4 * s.hw * s.tw * py]
    held = dict(zip(case.stations, case.held))
    free = [load for load in loads if not HOLDS[held[load.x]][0 if load.F > 0 else 1]]
    if free:
        c.hold("4.5.3: buckling where the flange is not held is not evaluated", True, "not evaluated" in [f.status for f in c.rows[BUCKLING]])
        c.hold("4.5.3: and does not pass", False, c.result.passed)
    spread = b1 + 5 * web.root(s)
    thick = spread + 5 * abs(s.t1 - s.t2)
    alone = all(b - a > thick for a, b in zip(case.stations, case.stations[1:]))
    worst = {BEARING: 0.0, BUCKLING: 0.0}
    own: dict[float, web.Bearing] = {}
    for load in loads:
        edge = min(load.x, case.length - load.x)
        one = web.bearing(s, py, b1, max(0.0, edge - b1 / 2), max(edge, b1 / 2))
        own[load.x] = one
        worst[BEARING] = max(worst[BEARING], abs(load.F) / one.Pbw)
        if load not in free:
            worst[BUCKLING] = max(worst[BUCKLING], abs(load.F) / one.Px)
    # Loads on one flange that follow each other closely press together on what is between their bearings.
    for i, first in enumerate(loads):
        for last in loads[i + 1 :]:
            between = [load for load in loads if first.x <= load.x <= last.x]
            if last.x - first.x > spread or any(load.F * first.F < 0 for load in between):
                continue
            edges = first.x, case.length - last.x
            both = web.bearing(s, py, b1 + last.x - first.x, max(0.0, min(edges) - b1 / 2), max(min(edges), b1 / 2) + (last.x - first.x) / 2)
            F = abs(sum(load.F for load in between))
            c.hold("4.5.2: close loads together", True, F / both.Pbw <= max((f.utilisation for f in c.rows[BEARING]), default=0.0) * (1 + EXACT))
            if not any(load in free for load in between):
                c.hold("4.5.3: close loads together", True, F / both.Px <= max((f.utilisation for f in c.rows[BUCKLING]), default=0.0) * (1 + EXACT))
    for rule, value in worst.items():
        rows = [f for f in c.rows[rule] if f.status in ("passed", "failed")]
        found = max((f.utilisation for f in rows), default=0.0)
        number = "4.5.2" if rule == BEARING else "4.5.3"
        c.hold(f"{number}: no load is worse, {s.shape}, {s.made}", True, value <= found * (1 + EXACT))
        if alone and (rule == BEARING or not free) and value > 0:
            c.hold(f"{number}: loads on their own", value, found)
        for f in rows:
            if alone and f.start in own:
                one, shown = own[f.start], {step.symbol: step.value for step in f.steps}
                for symbol, mine in (("n", one.n), ("Pbw", one.Pbw), *((("Px", one.Px),) if rule == BUCKLING else ())):
                    c.hold(f"{number}: {symbol}", mine, shown[symbol])
    return c.counts


def shear_case(rng: random.Random, kinds: list[str]) -> tuple[Case, float]:
    """A girder with thin webs near its resistances to shear and bending, and the distance of its stiffeners."""
    tw = rng.choice([4, 5, 6, 8, 10, 12])
    t = rng.choice([6, 8, 10, 12, 15, 20, 25, 40])
    h = max(round(tw * rng.choice([rng.uniform(55, 150), rng.uniform(60, 330)])) + 2 * t, 5 * t)
    wide = max(rng.randrange(100, 600, 10), 5 * tw)
    kind = rng.choice(kinds)
    if kind == "I":
        name = f"I {h}x{wide}x{tw}x{t}"
    elif kind == "GI":
        name = f"GI {h}x{wide}x{max(rng.randrange(100, 600, 10), 3 * tw)}x{tw}x{t}x{rng.choice([8, 10, 12, 15, 20])}"
    elif kind == "C":
        name = f"C {h}x{min(wide, 200)}x{tw}x{min(t, 25)}"
    elif kind == "BOX":
        name = f"BOX {h}x{max(rng.randrange(100, 1200, 10), 5 * tw)}x{tw}x{rng.choice([5, 6, 8, 10, 12, 15])}"
    else:
        name = rng.choice(THIN[kind])
    s = members.section_of(name)
    grade = rng.choice(GRADES)
    py = 300e6
    d = bs.clear_depth(s)
    a = rng.choice([math.inf, math.inf, d * rng.uniform(0.3, 1.2), d * rng.uniform(0.8, 3.0)])
    a = a if math.isinf(a) else min(max(a, 0.01), 100.0)
    length = rng.uniform(0.5, 6.0)
    stations = [0.0, length * rng.uniform(0.2, 0.8), length] if rng.random() < 0.5 else [0.0, length]
    first, *more = web.walls(s, py)
    V = (web.buckling_resistance(s, first, py, a) or first.Pv) * rng.uniform(-1.2, 1.2) * rng.choice([0.5, 1.0, 1.0])
    My = web.moment_of_flanges(first, py) * rng.choice([0.0, rng.uniform(-1.1, 1.1), rng.uniform(-1.1, 1.1)])
    N = s.A * py * rng.choice([0.0, 0.0, 0.0, rng.uniform(-0.4, 0.4)])
    Vy = Mz = 0.0
    if more and rng.random() < 0.5:
        Vy = (web.buckling_resistance(s, more[0], py) or more[0].Pv) * rng.uniform(-1.1, 1.1)
        Mz = web.moment_of_flanges(more[0], py) * rng.uniform(-1, 1)
    pieces = []
    for start, end in zip(stations, stations[1:]):
        L = end - start
        if abs(My + V * L) > 1.3 * s.Wel_y * py and rng.random() < 0.8:
            V = -math.copysign(V, My)
        w = rng.choice([0.0, -V / L * rng.random()])
        pieces.append(Piece(start, L, N, (V, V + w * L), My, (Vy, Vy), Mz))
        _, My, V, Mz, _ = pieces[-1].at(L)
        V *= rng.choice([1.0, rng.uniform(-1.0, 1.0)])
    return built(s, name, grade, "", [HELD, *(BRACED for _ in stations[2:]), HELD], pieces, {}), a


def compare_shear(case: Case, a: float, where: str) -> Counter[str]:
    checked = check(case, where, **({} if math.isinf(a) else {"stiffeners": a}))
    if checked is None:
        return Counter()
    c, py = checked
    s = case.section
    areas = web.walls(s, py)
    panels = [a, math.inf][: len(areas)]  # the stiffeners are the webs' own
    Vw = [web.buckling_resistance(s, wall, py, panel) for wall, panel in zip(areas, panels)]
    on_limit = any(abs(wall.d / wall.t / web.thin(s, py) - 1) < EXACT for wall in areas)
    peaks = [max(abs(case.peak(i, 0.0, case.length)[0]), abs(case.peak(i, 0.0, case.length)[1])) for i in (2, 4)]
    shape = f"{s.shape}, {s.made}"
    if on_limit:
        return c.counts
    if all(v is None for v in Vw):
        c.hold(f"4.4.5.1: webs that do not buckle in shear, {shape}", True, all(f.status == "not applicable" for f in c.rows[SHEAR]))
    else:
        worst = max(peak / v for peak, v in zip(peaks, Vw) if v is not None)
        if worst > 1e-4:
            c.hold(f"4.4.5.2: V/Vw, {shape}", worst, max((f.utilisation for f in c.rows[SHEAR]), default=0.0))
    compare_anchorage(c, py, areas, Vw)
    compare_thickness(c, py, areas, panels, peaks)
    told = any(f.status == "not evaluated" for f in c.rows[MAJOR])
    needed = False
    worst_moment = [0.0, 0.0]
    worst_sum = 0.0
    for piece in case.pieces:
        for k in range(41):
            N, My, V, Mz, Vy = piece.at(piece.length * k / 40)
            share = 0.0
            area = math.inf
            for i, (moment, shear) in enumerate(((My, V), (Mz, Vy))[: len(areas)]):
                v = Vw[i]
                if v is None or abs(shear) < 0.6 * v * (1 + 1e-9) or abs(moment) < 2e-6 * py * (s.Wel_z if i else s.Wel_y):
                    continue
                used = abs(moment) / web.moment_of_flanges(areas[i], py)
                worst_moment[i] = max(worst_moment[i], used)
                needed = needed or (i == 0 and N <= 0 and web.is_flange_slender(s, py, My))
                share += used
                area = min(area, sum(b * t for b, t in areas[i].flanges))
            if share:
                worst_sum = max(worst_sum, share + (abs(N) / (py * area) if abs(N) > 1e-5 * s.A * py else 0.0))
    if needed:
        c.hold(f"4.4.4.2 b: slender flanges are not evaluated, {shape}", True, told)
    for rule, worst, i in zip((MAJOR, MINOR), worst_moment, (0, 1)):
        if not worst:
            continue
        found = max((f.utilisation for f in c.rows[rule]), default=0.0)
        told = any(f.status == "not evaluated" for f in c.rows[rule])
        c.hold(f"4.4.4.2 b: nowhere worse, {shape}, axis {i}, evaluated {not told}", True, told or worst <= found * (1 + EXACT))
        if told:
            c.hold("4.4.4.2 b: slender flanges do not pass", False, c.result.passed)
    if worst_sum and not any(f.status == "not evaluated" for f in c.result.findings):
        rows = [f for rule in (WITH_TENSION, WITH_COMPRESSION, MAJOR, MINOR) for f in c.rows[rule]]
        c.hold(f"4.4.4.2 b with axial force: nowhere worse, {shape}", True, worst_sum <= max(f.utilisation for f in rows) * (1 + EXACT))
    compare_own_place(c, py, areas, Vw)
    return c.counts


def compare_own_place(c: Comparison, py: float, areas: list[web.Wall], Vw: list[float | None]) -> None:
    """The moment row at its own place, where the flanges alone carry the moment."""
    for i, rule in enumerate((MAJOR, MINOR)[: len(areas)]):
        v, row = Vw[i], c.row(rule)
        if v is None or row is None or row.start is None or any(f.status not in ("passed", "failed") for f in c.rows[rule]):
            continue
        own = []
        for piece in c.case.pieces:
            if piece.start - 1e-9 <= row.start <= piece.start + piece.length + 1e-9:
                _, My, V, Mz, Vy = piece.at(min(max(row.start - piece.start, 0.0), piece.length))
                own.append((abs(My), abs(V)) if i == 0 else (abs(Mz), abs(Vy)))
        if all(shear > 0.6 * v * (1 + 1e-6) for _, shear in own):
            used = max(moment / web.moment_of_flanges(areas[i], py) for moment, _ in own)
            c.hold(f"4.4.4.2 b at its place, axis {i}", used, row.utilisation, 1e-8)


def compare_anchorage(c: Comparison, py: float, areas: list[web.Wall], Vw: list[float | None]) -> None:
    """4.4.5.4: at the ends of the member."""
    beyond = False
    for i, (wall, v) in enumerate(zip(areas, Vw)):
        if v is None:
            continue
        ends = c.case.pieces[0].ends[0], c.case.pieces[-1].ends[1]
        shear = max(abs(end[4 if i else 2]) for end in ends)
        # Pv of the depth d that Vw has, where 4.2.3 has more of rolled and hollow sections: that Vw reaches it is then no chance of the depths.
        beyond = beyond or shear > web.critical_resistance(v, 0.6 * py * wall.count * wall.d * wall.t)
    if any(v is not None for v in Vw):
        c.hold(f"4.4.5.4: an end needs anchorage: {beyond}", beyond, any(f.status == "outside the input" for f in c.rows[ANCHORAGE]))


def compare_thickness(c: Comparison, py: float, areas: list[web.Wall], panels: list[float], peaks: list[float]) -> None:
    needed = 0.0
    s = c.case.section
    for i, (wall, panel) in enumerate(zip(areas, panels)):
        low, high = c.case.peak(3 if i else 1, 0.0, c.case.length)
        if peaks[i] > 0 or max(-low, high) > 0:
            needed = max(needed, web.least_thickness(wall, py, panel) / wall.t)
    states = {f.status for f in c.rows[THICKNESS]}
    if needed > 1 + 1e-9:
        c.hold(f"4.4.3: a web that is too thin fails, {s.shape}", True, "failed" in states)
        c.hold("4.4.3: required over actual thickness", needed, max(f.utilisation for f in c.rows[THICKNESS]))
    elif needed:
        c.hold(f"4.4.3: a web that is thick enough, {s.shape}", True, "passed" in states and "failed" not in states)


@pytest.mark.parametrize("seed", range(1, 3))
@pytest.mark.parametrize("kinds, close", [
    (["I", "welded I", "unequal I"], False), (["channel", "welded channel"], False), (["I", "welded I", "unequal I", "channel"], True),
])
def test_random_webs_under_concentrated_loads(seed: int, kinds: list[str], close: bool) -> None:
    counts: Counter[str] = Counter()
    rng = random.Random(seed)
    count = cases(250)
    for number in range(count):
        case, b1 = bearing_case(rng, kinds, close)
        counts += compare_bearing(case, b1, f"seed {seed}, {kinds}, member {number}")
    members.tell(seed, counts)
    assert counts["4.5.2: Pbw"] + counts["4.5.2: close loads together"] > 0.3 * count
    assert counts["4.5.3: Px"] > (0.3 if not close else 0.02) * count
    assert counts["4.5.3: buckling where the flange is not held is not evaluated"] > 0.1 * count


@pytest.mark.parametrize("seed", range(1, 3))
@pytest.mark.parametrize("kinds", [["I", "GI"], ["C", "BOX"], ["rolled I", "cold"]])
def test_random_webs_that_buckle_in_shear(seed: int, kinds: list[str]) -> None:
    counts: Counter[str] = Counter()
    rng = random.Random(seed)
    count = cases(250)
    for number in range(count):
        case, a = shear_case(rng, kinds)
        counts += compare_shear(case, a, f"seed {seed}, {kinds}, member {number}")
    members.tell(seed, counts)
    if kinds != ["rolled I", "cold"]:
        shapes = {"I": "I", "GI": "I", "C": "channel", "BOX": "RHS"}
        assert all(counts[f"4.4.5.2: V/Vw, {shapes[kind]}, welded"] > 0.3 * count for kind in kinds)
        assert counts["4.4.5.4: an end needs anchorage: True"] > 0.1 * count
        assert counts["4.4.3: required over actual thickness"] > 0.05 * count
        assert counts["4.4.4.2 b at its place, axis 0"] > 0.02 * count


def test_the_second_calculation_has_known_figures_of_webs() -> None:
    """Table 21 of py 275: d/t 100 with a/d 1.0 and infinite, and 4.5.2 of a published table: UB 457x191x67, S275, k 22.9 mm, 8.5 mm, 0 and 100 mm."""
    assert web.qw(55, 275e6) == pytest.approx(165e6, rel=1e-9)
    # By hand, d/t 100: qe = 100 and 175, lambda w = 1.285 and 0.971; 0.9/1.285 and (13.48 - 5.438)/9 of 165.
    assert web.qw(100, 275e6) == pytest.approx(115.6e6, rel=1e-3)
    assert web.qw(100, 275e6, 1.0) == pytest.approx(147.4e6, rel=1e-3)
    s = members.section_of("UB 457x191x67")
    at_end = web.bearing(s, 275e6, 0.0, 0.0, 0.0)
    # t 8.5, k 12.7 + 10.2: 2 x 22.9 x 8.5 x 275 = 107 kN; of it 25 x 8.5/(45.8 x 407.6)^0.5 = 1.555, half of it at the end.
    assert at_end.Pbw == pytest.approx(107.1e3, rel=2e-3)
    assert at_end.Px == pytest.approx(83.3e3, rel=3e-3)
