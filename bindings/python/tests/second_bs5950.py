"""Parts of BS 5950-1:2000 a second time, written from the clauses alone. Units are N and m; x-x is the major axis, y-y the minor one."""

from __future__ import annotations

import math

import second_ec3 as ec3

MPA = 1e6
E = 205e9

# Table 9, least and largest thickness in mm.
TABLE_9 = {
    "S275": [(16, 275), (40, 265), (63, 255), (80, 245), (100, 235), (150, 225)],
    "S355": [(16, 355), (40, 345), (63, 335), (80, 325), (100, 315), (150, 295)],
    "S460": [(16, 460), (40, 440), (63, 430), (80, 410), (100, 400)],
}


def design_strength(s: ec3.Section, grade: str) -> float | None:
    """Table 9 by the thickest element, nothing beyond its rows."""
    t = max(s.tw, s.t1, s.t2) * 1000
    for limit, py in TABLE_9[grade]:
        if t <= limit + 1e-9:
            return py * MPA
    return None


def epsilon(py: float) -> float:
    return math.sqrt(275 * MPA / py)


def clear_depth(s: ec3.Section) -> float:
    """d of the web or of the walls along it."""
    if s.shape == "RHS" and s.made != "welded":
        return s.h - (3 if s.made == "rolled" else 5) * s.tw
    fillets = s.r if s.made == "rolled" else 0.0
    return s.h - s.t1 - s.t2 - 2 * fillets


def clear_width(s: ec3.Section) -> float:
    """The same of the walls of a box across."""
    if s.made != "welded":
        return s.b1 - (3 if s.made == "rolled" else 5) * s.tw
    return s.b1 - 2 * s.tw


def shear_areas(s: ec3.Section) -> tuple[float, float]:
    """4.2.3, along and across the web."""
    if s.shape == "RHS":
        if s.made == "welded":
            return 2 * s.tw * clear_depth(s), 2 * s.t1 * clear_width(s)
        return s.A * s.h / (s.h + s.b1), s.A * s.b1 / (s.h + s.b1)
    if s.shape == "CHS":
        return 0.6 * s.A, 0.6 * s.A
    flanges = s.b1 * s.t1 + (0.0 if s.shape == "tee" else s.b2 * s.t2)
    depth = s.h
    if s.made == "welded":
        depth -= s.t1 + (0.0 if s.shape == "tee" else s.t2)
    return s.tw * depth, 0.9 * flanges


def shear_capacities(s: ec3.Section, py: float) -> tuple[float, float]:
    along, across = shear_areas(s)
    return 0.6 * py * along, 0.6 * py * across
