"""Webs to BS 5950-1:2000 4.4 and 4.5 against a second calculation of the clauses.

Random members: KELTRIX_TEST_SCALE multiplies their number. A failure prints seed, number, section, the member and both figures. Both sides
are closed formulas of the same numbers and agree to 1e-9.
"""

from __future__ import annotations

import math
import random
from collections import Counter

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
TOP, BOTTOM = "Top flange lateral", "Bottom flange lateral"
HOLDS = {HELD: (True, True), BRACED: (True, True), FREE: (False, False), TOP: (True, False), BOTTOM: (False, True)}  # top, bottom
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


def check(case: Case, where: str, **options: float) -> tuple[Comparison, float] | None:
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


@pytest.mark.parametrize("seed", range(1, 3))
@pytest.mark.parametrize("kinds, close", [(["I", "welded I", "unequal I"], False), (["channel", "welded channel"], False), (["I", "welded I", "unequal I", "channel"], True)])
def test_random_webs_under_concentrated_loads(seed: int, kinds: list[str], close: bool) -> None:
    counts: Counter[str] = Counter()
    rng = random.Random(seed)
    count = cases(250)
    for number in range(count):
        case, b1 = bearing_case(rng, kinds, close)
        counts += compare_bearing(case, b1, f"seed {seed}, {kinds}, member {number}")
    print(f"seed {seed}: {sum(counts.values())} comparisons")
    for what, times in sorted(counts.items()):
        print(f"{times:9d} {what}")
    assert counts["4.5.2: Pbw"] + counts["4.5.2: close loads together"] > 0.3 * count
    assert counts["4.5.3: Px"] > (0.3 if not close else 0.02) * count
    assert counts["4.5.3: buckling where the flange is not held is not evaluated"] > 0.1 * count
