"""Slender sections without symmetry about y-y, and angles in bending, to EN 1993-1-1 against a second calculation of the clauses.

Random members: KELTRIX_TEST_SCALE multiplies their number. A failure prints seed, number, section, options and both figures.

Tolerances: those of test_ec3_second. 1e-4 where the elastic critical moment comes from its closed form, of
plates: 1e-3 with root fillets.
"""

from __future__ import annotations

import math
import random
from collections import Counter

import pytest
import second_ec3 as ec3
import second_ec3_slender as slender
import second_members as members
from second_members import BRACED, HELD, Case
from test_ec3_second import (
    CHANNEL, NOTHING, SLENDER, Comparison, Lateral, Struts, acting_of, cases, compare_lateral, compare_struts, compression, extreme, held_lengths,
    moment_factor,
)

import keltrix as kx

MAJOR = "bending and axial compression, major axis"
MINOR = "bending and axial compression, minor axis"
CLOSED = 1e-4


def wagner(s: ec3.Section) -> float:
    """The constant of bending about y-y, m, of three plates."""
    down = s.ybar - s.h  # of the upper face, z downwards from the centroid
    lower = 0.0 if s.shape == "tee" else s.t2
    plates = [(down, down + s.t1, s.b1), (down + s.t1, s.ybar - lower, s.tw), (s.ybar - lower, s.ybar, s.b2)]
    total = 0.0
    for top, bottom, width in plates:
        total += width * (bottom**4 - top**4) / 4 + width**3 / 12 * (bottom**2 - top**2) / 2
    centre = abs(ec3.shear_centre(s)) if s.shape == "tee" else ec3.shear_centre(s)  # above the centroid
    return total / s.Iy + 2 * centre


def least_uniform_moment(s: ec3.Section, length: float) -> float:
    """Mcr between forks under a uniform moment of the worse sense."""
    Nz, half = ec3.euler(s.Iz, length), abs(wagner(s)) / 2
    return Nz * (math.sqrt(half**2 + (s.Iw + ec3.G * s.It * length**2 / (math.pi**2 * ec3.E)) / s.Iz) - half)


def slender_case(rng: random.Random) -> Case:
    return members.random_case(rng, ["unequal I", "welded tee", "welded tee", "tee", "welded channel", "channel"], True)


def compare_slender(case: Case, where: str) -> Counter[str]:
    """6.2.5, 6.2.9, 6.3.2 and 6.3.3 of class 4 with the moments NEd eN."""
    try:
        result = case.member.check("ec3", case.annex)
    except kx.InputError as error:
        assert "beyond the thicknesses" in str(error), f"{where}: {error}"
        return Counter()
    c = Comparison(case, result, where)
    s, choices = case.section, ec3.ANNEXES[case.annex]
    fy = ec3.yield_strength(s, case.grade, choices)
    assert fy is not None
    acting = acting_of(case, fy)
    number = ec3.classify(s, fy, acting)
    if number < 4:
        return c.counts
    r, shift_z = slender.resistances(s, number, fy, choices, acting)
    for rule, which, resistance in (("bending moment, major axis", 1, min(r.My_sag, r.My_hog)), ("bending moment, minor axis", 3, r.Mz)):
        row = c.row(rule)
        assert row is not None
        if extreme(case, which) > 2e-6 * resistance:
            c.hold(f"6.2.5 {rule}, {s.shape}", resistance, row.resistance, SLENDER)
    struts, lateral = compare_struts(c, r), compare_lateral(c, r)
    compare_sum(c, r, shift_z)
    for a, b in held_lengths(case, (HELD, BRACED)):
        compare_members(c, r, struts, lateral, shift_z, a, b)
    return c.counts


def compare_sum(c: Comparison, r: ec3.Resistances, shift_z: float) -> None:
    """6.2.9.3 where no shear reduces it: at 81 places of each piece at most that of the row."""
    case, row = c.case, c.row("bending, shear and axial force")
    assert row is not None
    if extreme(case, 2) > 0.5 * r.Vz or extreme(case, 4) > 0.5 * r.Vy or row.status not in ("passed", "failed"):
        return
    worst = 0.0
    for piece in case.pieces:
        for k in range(81):
            N, My, _, Mz, _ = piece.at(piece.length * k / 80)
            if N < -2e-6 * r.N:
                worst = max(worst, -N / r.N + (abs(My) - N * abs(r.eN_y)) / min(r.My_sag, r.My_hog) + (abs(Mz) - N * shift_z) / r.Mz)
    if worst:
        c.hold(f"6.2.9.3 with NEd eN is nowhere worse, {case.section.shape}", True, worst <= row.utilisation * (1 + SLENDER))
        if all(piece.Vz[0] == piece.Vz[1] and piece.Vy[0] == piece.Vy[1] and piece.N < 0 for piece in case.pieces):
            c.hold(f"6.2.9.3 with NEd eN, {case.section.shape}", worst, row.utilisation, SLENDER)


def compare_members(c: Comparison, r: ec3.Resistances, struts: Struts, lateral: Lateral, shift_z: float, a: float, b: float) -> None:
    case, s, choices = c.case, c.case.section, ec3.ANNEXES[c.case.annex]
    gamma, N_Rk, M_Rk = choices.gamma_m1, r.A * r.fy, r.Wy * r.fy
    upright = next((p, q) for p, q in held_lengths(case, (HELD,)) if p <= a + 1e-9 and q >= b - 1e-9)
    Ny, Nz = compression(case, *upright), compression(case, a, b)
    My, Mz = extreme(case, 1, a, b), extreme(case, 3, a, b)
    if min(Ny, Nz) <= 1e-5 * N_Rk:
        return
    major, minor = c.row(MAJOR, a, b), c.row(MINOR, a, b)
    if major is None or minor is None or "not evaluated" in (major.status, minor.status):
        c.hold("what is not evaluated does not pass", False, c.result.passed)
        return
    if s.Iy <= s.Iz or My > NOTHING and (a, b) not in lateral:
        return
    (ly, xy), (lz, xz), (lT, xT) = struts["y", *upright], struts["z", a, b], struts["T", a, b]
    lz, xz = max(lz, lT), min(xz, xT)
    if s.shape == "channel":
        ly, xy = max(ly, lT), min(xy, xT)
    ny, nz = Ny * gamma / (xy * N_Rk), Nz * gamma / (xz * N_Rk)
    Cmy, CmLT = (1.0, 1.0) if abs(r.eN_y) > 1e-9 else (moment_factor(case, 1, *upright), moment_factor(case, 1, a, b))
    k = ec3.annex_b(s, 4, ny, nz, ly, lz, Cmy, 1.0 if shift_z > 1e-9 else moment_factor(case, 3, a, b), CmLT)
    N = max(Ny, Nz)
    chi_shift = 1.0
    if abs(r.eN_y) > 1e-9:
        chi_shift = ec3.lateral_chi_of(lateral_curve(s, choices), math.sqrt(M_Rk / least_uniform_moment(s, b - a)), None)
    my = My * gamma / (lateral.get((a, b), 1.0) * M_Rk) + N * abs(r.eN_y) * gamma / (chi_shift * M_Rk)
    mz = (Mz + N * shift_z) * gamma / (r.Wz * r.fy)
    tolerance = CHANNEL if s.shape == "channel" else SLENDER if s.r else CLOSED
    for row, n, ky, kz in ((major, ny, k.kyy, k.kyz), (minor, nz, k.kzy, k.kzz)):
        c.hold(f"{row.clause} with NEd eN, {s.shape}", n + ky * my + kz * mz, row.utilisation, tolerance)


def lateral_curve(s: ec3.Section, choices: ec3.Choices) -> tuple[str, float, float, bool]:
    return ("d", 0.2, 1.0, False) if s.shape == "tee" else ec3.lateral_curve(s, choices)


@pytest.mark.parametrize("seed", range(1, 5))
def test_random_slender_sections_with_a_shift(seed: int) -> None:
    counts: Counter[str] = Counter()
    rng = random.Random(seed)
    count = cases(400)
    for number in range(count):
        counts += compare_slender(slender_case(rng), f"seed {seed}, member {number}")
    members.tell(seed, counts)
    assert sum(counts.values()) > 3 * count
