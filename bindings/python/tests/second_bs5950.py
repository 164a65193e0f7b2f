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


def perry(py: float, pE: float, eta: float) -> float:
    phi = (py + (eta + 1) * pE) / 2
    return pE * py / (phi + math.sqrt(phi * phi - pE * py))


def strut_curves(s: ec3.Section) -> tuple[str, str]:
    """Table 23, x-x and y-y; between 40 and 50 mm both curves of rolled sections count half: here as two letters."""
    if s.shape == "CHS" and s.made == "welded":
        return "c", "c"  # not in the table
    if s.shape in ("RHS", "CHS"):
        thick = max(s.tw, s.t1) > 0.04
        return {"rolled": ("a", "a"), "formed": ("c", "c"), "welded": ("c", "c") if thick else ("b", "b")}[s.made]
    if s.shape != "I":
        return "c", "c"
    t = max(s.t1, s.t2, s.tw) * 1000
    if s.made == "welded":
        return ("b", "c") if t <= 40 else ("b", "d")
    if s.h / max(s.b1, s.b2) > 1.2:
        thin, thick_ = ("a", "b"), ("b", "c")
    else:
        thin, thick_ = ("b", "c"), ("c", "d")
    if t <= 40:
        return thin
    if t < 50:
        return thin[0] + thick_[0], thin[1] + thick_[1]
    return thick_


ROBERTSON = {"a": 2.0, "b": 3.5, "c": 5.5, "d": 8.0}


def compressive_strength(s: ec3.Section, py: float, curve: str, slenderness: float) -> float:
    """Annex C; welded I sections and boxes with py less 20 N/mm²."""
    if s.made == "welded" and s.shape in ("I", "RHS"):
        py -= 20 * MPA
    if slenderness <= 0:
        return py
    pE = math.pi**2 * E / slenderness**2
    limit = 0.2 * math.sqrt(math.pi**2 * E / py)
    both = [perry(py, pE, max(0.0, ROBERTSON[a] * (slenderness - limit) / 1000)) for a in curve]
    return sum(both) / len(both)


def bending_strength(s: ec3.Section, py: float, slenderness: float) -> float:
    """B.2.1 and B.2.2."""
    limit = 0.4 * math.sqrt(math.pi**2 * E / py)
    if slenderness <= limit:
        return py
    eta = 7 * (slenderness - limit) / 1000
    if s.made == "welded":
        if slenderness < 2 * limit:
            eta *= 2
        elif slenderness <= 3 * limit:
            eta = 2 * 7 * limit / 1000
    return perry(py, math.pi**2 * E / slenderness**2, eta)
