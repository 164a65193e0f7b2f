"""Ties and bolt holes to BS 5950-1:2000 3.4.3, 4.6 and 4.2.5.5, and grades of the user, against a second calculation of the clauses.

Random members: KELTRIX_TEST_SCALE multiplies their number. A failure prints seed, number, section and both figures. Both sides are closed
formulas of the same numbers and agree to 1e-9.
"""

from __future__ import annotations

import math
import random
from collections import Counter
from typing import Any

import pytest
import second_bs5950 as bs
import second_members as members
from second_members import HELD
from test_ec3_second import EXACT, cases

import keltrix as kx

TENSION = "tension capacity"
TIE = "eccentric end connection of a tie"
HOLES = "bolt holes in the tension flange"
TOGETHER = "tension and moment"
KINDS = ["I", "welded I", "unequal I", "hot", "cold", "box", "tube", "channel", "welded channel", "tee", "welded tee", "L", "L"]
ANGLES = [name for name in kx.sections if name.startswith("L ")]


def strengths(rng: random.Random, t: float) -> tuple[str, float | None, float]:
    """A grade with its py by the thickest element (3.1.1) and Ke (3.4.3)."""
    if rng.random() < 0.6:
        grade = rng.choice(list(bs.TABLE_9))
        py = next((value * bs.MPA for limit, value in bs.TABLE_9[grade] if t * 1000 <= limit + 1e-9), None)
        return grade, py, {"S275": 1.2, "S355": 1.1, "S460": 1.0}[grade]
    Ys, factor = float(rng.randrange(200, 500, 5)), rng.choice([1.0, 1.0, 1.1, 1.25])
    Us = rng.choice([0.0, Ys * rng.uniform(1.05, 1.7), Ys * rng.uniform(1.05, 1.3)])
    py = (min(Ys, Us / 1.2) if Us else Ys) * bs.MPA / factor
    Ke = max(1.0, Us / 1.2 / Ys) if Us else 1.0  # both strengths over the same factor
    return f"User_defined,{Ys * bs.MPA!r},{Us * bs.MPA!r},205e9,{factor}", py, Ke


def compare(rng: random.Random, where: str) -> Counter[str]:
    counts: Counter[str] = Counter()
    kind = rng.choice(KINDS)
    name = rng.choice(ANGLES) if kind == "L" else members.random_name(rng, kind)
    d = {symbol: value.value for symbol, value in kx.sections[name].dimensions.items()}
    p = {symbol: value.value for symbol, value in kx.sections[name].properties.items()}
    made = "rolled" if kind == "L" else members.section_of(name).made
    t = d["t"] if kind == "L" else max(d["t"], d.get("T", 0.0), d.get("T2", 0.0))
    grade, py, Ke = strengths(rng, t)
    ratio = rng.choice([1.0, rng.uniform(0.6, 1.0), rng.uniform(0.9, 1.0)])
    ratio = round(ratio, 4)
    A = p["A"]
    F = A * 250e6 * rng.uniform(0.05, 1.3)
    M = rng.choice([0.0, 0.2, 1.0]) * p["Zxx"] * 250e6 * rng.uniform(-1, 1)
    My = rng.choice([0.0, 0.0, 0.5]) * p["Zyy"] * 250e6 * rng.uniform(-1, 1)
    if rng.random() < 0.1:
        F = -F
    hold = rng.random() < 0.2
    member = kx.Member(name, "S275", type=made, net_to_gross=ratio).add_point(0.0, HELD).add_point(0.5, HELD)
    member.add_sub_span(forces_left=(F, 0, 0), forces_right=(F, 0, 0), moments_left=(0, M, My), moments_right=(0, M, My))
    context = f"{where}: {name} {made}, {grade}, net {ratio}, F {F}, M {M} {My}, hold {hold}"
    result = kx.check_text(member.text.replace("GRADE,S275", f"GRADE,{grade}"), "bs5950", moments_hold_eccentricity=hold)[0]
    if py is None:
        assert result.status == "refused", context
        return counts

    def hold_same(what: str, expected: Any, found: Any) -> None:
        counts[what] += 1
        if isinstance(expected, float):
            assert found == pytest.approx(expected, rel=EXACT), f"{context}: {what}: expected {expected}, found {found}"
        else:
            assert expected == found, f"{context}: {what}: expected {expected}, found {found}"

    rows = {rule: [f for f in result.findings if f.rule == rule] for rule in (TENSION, TIE, HOLES, TOGETHER)}
    hold_same("3.1.1", py, result.design_strength)
    Ae = min(A, Ke * ratio * A)
    if F > 0:
        hold_same("4.6.1", F / (py * Ae), rows[TENSION][0].utilisation)
        connected = None
        if kind == "L":
            connected = d["t"] * min(d["A"], d["B"])
        elif "channel" in kind:
            connected = d["t"] * d["D"]
        elif "tee" in kind:
            connected = d["T"] * d["B"]
        if connected is not None and not hold:
            least = py * (Ae - 0.5 * (A - connected))
            hold_same(f"4.6.3.1, {kind}", F / least if least > 0 else math.inf, rows[TIE][0].utilisation)
        else:
            hold_same("4.6.3 does not apply", True, rows[TIE][0].status in ("not applicable", "outside the input"))
        if M or My:
            hold_same("4.8.2: not below the tension alone", True, max(f.utilisation for f in rows[TOGETHER]) >= F / (py * Ae))
    compressed_or_none = (M == 0 and My == 0) or ratio == 1
    told = any(f.status == "not evaluated" for f in rows[HOLES])
    if compressed_or_none:
        hold_same("4.2.5.5: no holes or no moment", False, told)
    elif kind in ("I", "welded I") and M:
        flange = d["B"] * d["T"]
        left = Ke * (flange - (1 - ratio) * A)
        if abs(left / flange - 1) > 1e-6:
            hold_same(f"4.2.5.5: holes of I sections count: {left < flange}", left < flange, told)
            if told:
                hold_same("4.2.5.5: and do not pass", False, result.passed)
    elif kind == "unequal I" and M and not My:
        area = d["B2"] * d["T2"] if M < 0 else d["B"] * d["T"]
        left = Ke * (area - (1 - ratio) * A)
        # Both flanges are in tension where the force outweighs the moment: at least the flange that the moment pulls counts.
        if left < area * (1 - 1e-6):
            hold_same("4.2.5.5: holes of unequal flanges count", True, told)
    if told:
        hold_same("what is not evaluated does not pass", False, result.passed)
    return counts


@pytest.mark.parametrize("seed", range(1, 3))
def test_random_ties(seed: int) -> None:
    counts: Counter[str] = Counter()
    rng = random.Random(seed)
    count = cases(600)
    for number in range(count):
        counts += compare(rng, f"seed {seed}, member {number}")
    members.tell(seed, counts)
    assert counts["4.6.1"] > 0.6 * count
    assert sum(times for what, times in counts.items() if what.startswith("4.6.3.1")) > 0.1 * count
    assert sum(times for what, times in counts.items() if "count" in what) > 0.05 * count
