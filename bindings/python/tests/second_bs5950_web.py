"""Webs to BS 5950-1:2000 4.4 and 4.5 a second time, written from the clauses alone. Units are N and m."""

from __future__ import annotations

import math
from dataclasses import dataclass

import second_bs5950 as bs
import second_ec3 as ec3


@dataclass(frozen=True)
class Bearing:
    """An unstiffened web under a force on one flange."""

    k: float
    n: float
    Pbw: float
    Px: float


def root(s: ec3.Section) -> float:
    """k of 4.5.2.1, from the outer face of the thinner flange to where the web begins."""
    return min(s.t1, s.t2) + (s.r if s.made == "rolled" else 0.0)


def bearing(s: ec3.Section, py: float, b1: float, be: float, ae: float) -> Bearing:
    """4.5.2.1 and 4.5.3.1: the stiff bearing ends be, and the force acts ae from the nearer end of the member. The flange neither moves nor turns."""
    k, d = root(s), bs.clear_depth(s)
    n = min(5.0, 2 + 0.6 * be / k)
    length = b1 + n * k
    Pbw = length * s.tw * py
    Px = 25 * bs.epsilon(py) * s.tw / math.sqrt(length * d) * Pbw
    if ae < 0.7 * d:
        Px *= (ae + 0.7 * d) / (1.4 * d)
    return Bearing(k, n, Pbw, Px)


def qw(ratio: float, py: float, panel: float = math.inf) -> float:
    """H.1: shear buckling strength of a web with d/t and a/d."""
    pv = 0.6 * py
    factor = 0.75 + 1 / panel**2 if panel <= 1 else 1 + 0.75 / panel**2
    qe = factor * (1000 / ratio) ** 2 * bs.MPA
    slenderness = math.sqrt(pv / qe)
    if slenderness <= 0.8:
        return pv
    if slenderness < 1.25:
        return (13.48 - 5.6 * slenderness) / 9 * pv
    return 0.9 / slenderness * pv


@dataclass(frozen=True)
class Wall:
    """What carries shear in one direction."""

    d: float
    t: float
    count: int
    Pv: float
    flanges: tuple[tuple[float, float], ...]  # breadth and thickness
    arm: float


def walls(s: ec3.Section, py: float) -> list[Wall]:
    """The webs, and of boxes the walls across."""
    Pvy, Pvx = bs.shear_capacities(s, py)
    pair = ((s.b1, s.t1), (s.b2, s.t2))
    box = s.shape == "RHS"
    found = [Wall(bs.clear_depth(s), s.tw, 2 if box else 1, Pvy, pair, s.h - (s.t1 + s.t2) / 2)]
    if box:
        found.append(Wall(bs.clear_width(s), s.t1, 2, Pvx, ((s.h, s.tw), (s.h, s.tw)), s.b1 - s.tw))
    return found


def thin(s: ec3.Section, py: float) -> float:
    """4.4.5.1: d/t beyond which a web buckles in shear."""
    return (62 if s.made == "welded" else 70) * bs.epsilon(py)


def buckling_resistance(s: ec3.Section, wall: Wall, py: float, a: float = math.inf) -> float | None:
    """4.4.5.1 and 4.4.5.2, Vw; nothing where the web cannot buckle in shear."""
    if wall.d / wall.t <= thin(s, py):
        return None
    return wall.count * wall.d * wall.t * qw(wall.d / wall.t, py, a / wall.d)


def critical_resistance(Vw: float, Pv: float) -> float:
    """4.4.5.4, Vcr."""
    if Vw >= Pv:
        return Pv
    if Vw > 0.72 * Pv:
        return (9 * Vw - 2 * Pv) / 7
    return (Vw / 0.9) ** 2 / Pv


def least_thickness(wall: Wall, py: float, a: float = math.inf) -> float:
    """4.4.3.2 and 4.4.3.3."""
    d = wall.d
    service = d / 250 * (math.sqrt(a / d) if a <= d else 1.0)
    pyf = py / bs.MPA
    flange = d / 250 * (math.sqrt(pyf / 455) if a <= 1.5 * d else pyf / 345)
    return max(service, flange)


def moment_of_flanges(wall: Wall, py: float) -> float:
    """4.4.4.2 b: the flanges alone, the weaker one at py."""
    return min(b * t for b, t in wall.flanges) * wall.arm * py


def is_flange_slender(s: ec3.Section, py: float, Mx: float) -> bool:
    """Tables 11 and 12: the compressed flange is class 4. Mx above zero compresses the bottom one; of channels nothing is said."""
    b, t = (s.b2, s.t2) if Mx > 0 else (s.b1, s.t1)
    eps = bs.epsilon(py)
    if s.shape == "RHS":
        return bs.clear_width(s) / t > (35 if s.made == "formed" else 40) * eps
    if s.shape == "I":
        return b / 2 / t > 15 * eps if s.made == "rolled" else (b - s.tw) / 2 / t > 13 * eps
    return False
