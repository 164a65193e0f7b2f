"""Webs of I sections to EN 1993-1-5 sections 6 and 7 a second time, written from the clauses alone. Units are N and m, compression is above zero."""

from __future__ import annotations

import math
from dataclasses import dataclass

import second_ec3 as ec3


@dataclass(frozen=True)
class Transverse:
    """Resistance of an unstiffened web to a force on one flange."""

    kF: float
    m1: float
    m2: float
    ly: float
    slenderness: float
    chi: float
    F: float


def loaded_length(s: ec3.Section, t: float, ss: float, c: float, kF: float, fy: float, m1: float, m2: float) -> float:
    """(6.10) to (6.12), the least of the three."""
    le = min(kF * ec3.E * s.tw**2 / (2 * fy * s.hw), ss + c)
    return min(
        ss + 2 * t * (1 + math.sqrt(m1 + m2)),
        le + t * math.sqrt(m1 / 2 + (le / t) ** 2 + m2),
        le + t * math.sqrt(m1 + m2),
    )


def transverse(s: ec3.Section, upper: bool, fy: float, gamma_m1: float, ss: float, c: float) -> Transverse:
    """6.2 to 6.5 with the distance c from the end of the member to the stiff bearing, web and flanges of one strength."""
    b, t = (s.b1, s.t1) if upper else (s.b2, s.t2)
    ss = min(ss, s.hw)
    kF = min(6.0, 2 + 6 * (ss + c) / s.hw)
    critical = 0.9 * kF * ec3.E * s.tw**3 / s.hw
    m1 = b / s.tw
    for m2 in (0.02 * (s.hw / t) ** 2, 0.0):
        ly = loaded_length(s, t, ss, c, kF, fy, m1, m2)
        slenderness = math.sqrt(ly * s.tw * fy / critical)
        if slenderness > 0.5:
            break
    chi = min(1.0, 0.5 / slenderness)
    return Transverse(kF, m1, m2, ly, slenderness, chi, chi * ly * s.tw * fy / gamma_m1)


def longest_loaded(s: ec3.Section, upper: bool, ss: float) -> float:
    """(6.10) with m2."""
    b, t = (s.b1, s.t1) if upper else (s.b2, s.t2)
    return ss + 2 * t * (1 + math.sqrt(b / s.tw + 0.02 * (s.hw / t) ** 2))


def face(s: ec3.Section, upper: bool) -> float:
    """From the centroid to the outer face of a flange."""
    return s.h - s.ybar if upper else s.ybar


def use_of_stresses(s: ec3.Section, r: ec3.Resistances, N: float, My: float, Mz: float) -> float:
    """4.6, (4.15): eta 1 of the pressed flange by elastic moduli, of class 4 effective ones. My above zero where it compresses that flange; where it
    pulls, by the larger gross modulus."""
    Wy, Wz = (s.Wel_y, s.Wel_z) if r.number < 4 else (r.Wy, r.Wz)
    if My < 0:
        Wy = s.Iy / min(face(s, True), face(s, False))
    shifted = abs(N * r.eN_y) / (s.Wel_y if r.number < 4 else r.Wy) if N > 0 else 0.0
    return (max(N, 0.0) / r.A + My / Wy + shifted + abs(Mz) / Wz) * r.gamma_m0 / r.fy


def along_pressed_flange(s: ec3.Section, r: ec3.Resistances, upper: bool, N: float, My: float) -> float:
    """Tension along the web's edge at the pressed flange, which compression NEd does not lessen; of class 4 with equal flanges that My pulls at the
    face, by the effective modulus. My above zero where it compresses the pressed flange."""
    W = r.Wy if r.number == 4 and s.is_equal and My < 0 else s.Iy / (face(s, upper) - (s.t1 if upper else s.t2))
    return max(0.0, -N) / s.A - My / W


def yield_at_web_edge(s: ec3.Section, r: ec3.Resistances, upper: bool, along: float, V: float, F: float, ss: float, at_end: bool) -> float:
    """7.2(2) and EN 1993-1-1 (6.1), its root: across the web over se of 3.2.3, shear on the whole web."""
    t = s.t1 if upper else s.t2
    across = -F / (s.tw * (min(ss, s.hw) + (1 if at_end else 2) * t))
    tau = V / (s.hw * s.tw)
    return math.sqrt(along**2 + across**2 - along * across + 3 * tau**2) * r.gamma_m0 / r.fy


@dataclass(frozen=True)
class FlangePair:
    """Effective flanges of a section that My bends, for 7.1."""

    upper: float  # area
    lower: float
    arm: float


def flange_pair(s: ec3.Section, fy: float, sags: bool, both: bool) -> FlangePair:
    """The flange that My compresses with its effective width; both where an axial force acts."""
    eps = math.sqrt(235 * ec3.MPA / fy)

    def area(b: float, t: float, loses: bool) -> float:
        c = s.outstand(b)
        lost = 2 * (1 - ec3.outstand_rho(c / t, eps, 0.43)) * c * t if loses else 0.0
        return b * t - lost

    return FlangePair(area(s.b1, s.t1, sags or both), area(s.b2, s.t2, not sags or both), s.h - (s.t1 + s.t2) / 2)


def plastic_of_flanges(s: ec3.Section, weak: float, strong: float) -> float:
    """Plastic modulus of the whole web with flanges of these areas, of sections with equal flanges; root fillets as in the gross section."""
    t, web = s.t1, s.hw * s.tw
    arm = s.h - t
    fillets = s.Wpl_y - s.b1 * t * arm - web * s.hw / 4
    if strong - weak <= web:  # the axis of equal areas lies in the web, off its middle
        off = (strong - weak) / (2 * s.tw)
        return (weak + strong) * arm / 2 + s.tw * (s.hw**2 / 4 - off**2) + fillets
    inner = (strong - weak - web) / 2  # of the larger flange, on the web's side of the axis
    u = inner / strong * t
    across = strong / t
    return across * (u**2 + (t - u) ** 2) / 2 + web * (s.hw / 2 + u) + weak * (s.hw + u + t / 2) + fillets


def is_web_compressed(s: ec3.Section, r: ec3.Resistances, N: float) -> bool:
    """7.1(4): the whole web at the plastic resistance."""
    return N > s.hw * s.tw * r.fy / r.gamma_m0


def bending_with_shear_buckling(s: ec3.Section, r: ec3.Resistances, N: float, My: float, V: float) -> float:
    """7.1: the left side of (7.1), nothing where it does not reduce the moment. My above zero where flange 1 is compressed; equal flanges."""
    assert r.Vbw is not None and s.is_equal
    eta3 = min(1.0, V / r.Vbw)  # above 1 the web fails by itself
    if eta3 <= 0.5:
        return 0.0
    pair = flange_pair(s, r.fy, My > 0, abs(N) > 1e-6 * s.A * r.fy)
    web = s.hw * s.tw
    strength = r.fy / r.gamma_m0
    weak, strong = sorted((pair.upper, pair.lower))
    # 5.4(1): what the flanges bear reaches 15 epsilon t from the web.
    near = s.b1 * s.t1 - 2 * max(0.0, s.outstand(s.b1) - 15 * math.sqrt(235 * ec3.MPA / r.fy) * s.t1) * s.t1
    Mf = min(weak, near) * pair.arm * strength
    Mpl = plastic_of_flanges(s, weak, strong) * strength
    fillets = s.A - 2 * s.b1 * s.t1 - web
    lost = 2 * s.b1 * s.t1 - weak - strong
    area = s.A - lost
    n = abs(N) / (area * strength)
    if n >= 1:
        return math.inf
    a = min(0.5, (web + fillets) / area)
    MN = min(Mpl, Mpl * (1 - n) / (1 - 0.5 * a))
    Mf *= max(0.0, 1 - abs(N) / (2 * min(weak, near) * strength))
    if is_web_compressed(s, r, N):
        Mf = 0.0
    if abs(My) / MN < Mf / MN:
        return 0.0
    return abs(My) / MN + (1 - Mf / MN) * (2 * eta3 - 1) ** 2


def flange_moments(s: ec3.Section, fy: float) -> tuple[float, float, bool]:
    """Mf and Mpl of 7.1 without axial force, of I sections, channels and boxes of plates: with either flange compressed, the less of both. And whether
    the plastic axis lies in the web."""
    eps = math.sqrt(235 * ec3.MPA / fy)
    webs = 2 if s.shape == "RHS" else 1
    kept, borne = [], []
    for b, t in ((s.b1, s.t1), (s.b2, s.t2)):
        if s.shape == "RHS":
            c = s.flange
            kept.append(b - (1 - ec3.internal_rho(c / t, eps, 1.0)) * c)
            borne.append(min(kept[-1], b - max(0.0, c - 2 * 15 * eps * t)))
        else:
            c, sides = s.outstand(b), 1 if s.shape == "channel" else 2
            kept.append(b - sides * (1 - ec3.outstand_rho(c / t, eps, 0.43)) * c)
            borne.append(min(kept[-1], b - sides * max(0.0, c - 15 * eps * t)))
    arm = s.h - (s.t1 + s.t2) / 2
    plastic, in_web = [], True
    for upper, lower in ((kept[0], s.b2), (s.b1, kept[1])):
        plates = [(0.0, s.t1, upper), (s.t1, s.h - s.t2, webs * s.tw), (s.h - s.t2, s.h, lower)]
        plastic.append(ec3.plastic_modulus(plates, 0.0, 0.0) * fy)
        in_web = in_web and abs(upper * s.t1 - lower * s.t2) <= webs * s.tw * s.hw
    return min(borne[0] * s.t1, borne[1] * s.t2) * arm * fy, min(plastic), in_web
