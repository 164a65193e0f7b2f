"""Angles to EN 1993-1-1 a second time: u-u and v-v from the legs as two plates, without root and toe radii. Units are N and m."""

from __future__ import annotations

import math
from dataclasses import dataclass

import second_ec3 as ec3


@dataclass(frozen=True)
class Angle:
    """Principal axes with the heel's corner at the origin, the long leg upwards."""

    A: float
    Iu: float
    Iv: float
    turn: float  # of u-u from the axis along the short leg
    Wu: float
    Wv: float
    u0: float  # shear centre, from the centroid
    v0: float
    It: float
    beta: float  # Wagner's constant of bending about u-u

    @property
    def polar(self) -> float:
        return (self.Iu + self.Iv) / self.A + self.u0**2 + self.v0**2


def of_legs(h: float, b: float, t: float, It: float) -> Angle:
    plates = [(0.0, t, 0.0, h), (t, b, 0.0, t)]  # x from, to; y from, to
    areas = [(x1 - x0) * (y1 - y0) for x0, x1, y0, y1 in plates]
    A = sum(areas)
    cx = sum(a * (p[0] + p[1]) / 2 for a, p in zip(areas, plates)) / A
    cy = sum(a * (p[2] + p[3]) / 2 for a, p in zip(areas, plates)) / A
    Ix = Iy = Ixy = 0.0
    for a, (x0, x1, y0, y1) in zip(areas, plates):
        dx, dy = (x0 + x1) / 2 - cx, (y0 + y1) / 2 - cy
        Ix += a * ((y1 - y0) ** 2 / 12 + dy**2)
        Iy += a * ((x1 - x0) ** 2 / 12 + dx**2)
        Ixy += a * dx * dy
    turn = 0.5 * math.atan2(-2 * Ixy, Ix - Iy)
    cos, sin = math.cos(turn), math.sin(turn)
    mean, radius = (Ix + Iy) / 2, math.hypot((Ix - Iy) / 2, Ixy)

    def turned(x: float, y: float) -> tuple[float, float]:
        return (x - cx) * cos + (y - cy) * sin, -(x - cx) * sin + (y - cy) * cos

    corners = [turned(x, y) for x, y in ((0, 0), (t, h), (0, h), (b, 0), (b, t))]
    u0, v0 = turned(t / 2, t / 2)
    Iu, Iv = mean + radius, mean - radius
    # Of v (u**2 + v**2) over both plates, by Gauss's rule, which is exact for cubes.
    g = math.sqrt(0.6)
    points = ((-g, 5 / 9), (0.0, 8 / 9), (g, 5 / 9))
    total = 0.0
    for a, (x0, x1, y0, y1) in zip(areas, plates):
        for px, wx in points:
            for py, wy in points:
                u, v = turned((x0 + x1 + px * (x1 - x0)) / 2, (y0 + y1 + py * (y1 - y0)) / 2)
                total += a * wx * wy / 4 * v * (u * u + v * v)
    return Angle(A, Iu, Iv, abs(turn), Iu / max(abs(v) for _, v in corners), Iv / max(abs(u) for u, _ in corners), u0, v0, It, total / Iu - 2 * v0)


def resolved(a: Angle, My: float, Mz: float) -> tuple[float, float]:
    """The largest Mu and Mv of either way of turning the angle. My is about the axis along the short leg."""
    cos, sin = math.cos(a.turn), math.sin(a.turn)
    return abs(My) * cos + abs(Mz) * sin, abs(My) * sin + abs(Mz) * cos


def torsional_flexural(a: Angle, length: float) -> float:
    """Least root of the characteristic equation, by bisection below the least of the three critical forces."""
    Nu, Nv, NT = ec3.euler(a.Iu, length), ec3.euler(a.Iv, length), ec3.G * a.It / a.polar
    if abs(a.v0) < 1e-9:  # equal legs: flexure about v-v stands alone
        b = 1 - a.u0**2 / a.polar
        return (Nu + NT - math.sqrt((Nu + NT) ** 2 - 4 * b * Nu * NT)) / (2 * b)

    def equation(N: float) -> float:
        return a.polar * (N - Nu) * (N - Nv) * (N - NT) - N * N * (a.v0**2 * (N - Nu) + a.u0**2 * (N - Nv))

    low, high = 0.0, min(Nu, Nv, NT)
    start = equation(low)
    for _ in range(200):
        middle = (low + high) / 2
        low, high = (middle, high) if equation(middle) * start > 0 else (low, middle)
    return low


def uniform_moment(a: Angle, length: float) -> float:
    """Mcr about u-u between forks, the worse sense, no warping."""
    Nv, half = ec3.euler(a.Iv, length), abs(a.beta) / 2
    return math.sqrt((Nv * half) ** 2 + Nv * ec3.G * a.It) - Nv * half


def factors(ny: float, nz: float, ly: float, lz: float, Cmy: float, Cmz: float, CmLT: float) -> tuple[float, float, float, float]:
    """kyy, kyz, kzy and kzz of Table B.2 in class 3, for sections that twist."""
    kyy = Cmy * (1 + 0.6 * min(1.0, ly) * ny)
    kzz = Cmz * (1 + 0.6 * min(1.0, lz) * nz)
    return kyy, kzz, 1 - 0.05 * min(1.0, lz) * nz / (CmLT - 0.25), kzz


def slender_modulus(h: float, t: float, fy: float, a: Angle) -> float:
    """Wu of equal legs of class 4, the compressed leg without its tip, bent about an axis along u-u: coupling with v-v would take more."""
    eps = math.sqrt(235 * ec3.MPA / fy)
    lost = (1 - ec3.outstand_rho(h / t, eps, ec3.outstand_k_tip_compressed(0.0))) * h
    part = ec3.Parts(a.A, 0.0, a.Iu)
    reach = a.Iu / a.Wu
    part.lose(lost * t, reach - (lost + t) / 2 / math.sqrt(2), lost / math.sqrt(2))
    return part.inertia / (reach - part.centre)
