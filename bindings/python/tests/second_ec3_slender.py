"""Effective moduli of class 4 channels and tees to EN 1993-1-5 4.4 a second time, written from the clauses alone. Units are N and m."""

from __future__ import annotations

import math
from dataclasses import dataclass

import second_ec3 as ec3


@dataclass(frozen=True)
class Moduli:
    y_sag: float
    y_hog: float
    z: float


def moduli(s: ec3.Section, fy: float) -> Moduli:
    eps = math.sqrt(235 * ec3.MPA / fy)
    return tee(s, eps) if s.shape == "tee" else channel(s, eps)


def tee(s: ec3.Section, eps: float) -> Moduli:
    c = s.outstand(s.b1)
    gone = (1 - ec3.outstand_rho(c / s.t1, eps, 0.43)) * c
    root = s.h - s.t1 - s.r  # of the stem, above its tip
    sag = ec3.Parts(s.A, s.ybar, s.Iy)
    sag.lose(2 * gone * s.t1, s.h - s.t1 / 2, s.t1)
    if root > sag.centre:
        psi = -sag.centre / (root - sag.centre)
        compressed = s.web / (1 - psi)
        lost = (1 - ec3.outstand_rho(s.web / s.tw, eps, ec3.outstand_k_tip_tension(psi))) * compressed
        # What is kept lies at the root, what is lost at the neutral axis.
        sag.lose(lost * s.tw, root - compressed + lost / 2, lost)
    hog = ec3.Parts(s.A, s.ybar, s.Iy)
    psi = -(root - s.ybar) / s.ybar
    compressed = s.web / (1 - psi) if psi < 0 else s.web
    lost = (1 - ec3.outstand_rho(s.web / s.tw, eps, ec3.outstand_k_tip_compressed(psi))) * compressed
    hog.lose(lost * s.tw, lost / 2, lost)
    first, second = (min(s.Wel_y, part.inertia / max(part.centre, s.h - part.centre)) for part in (sag, hog))
    return Moduli(first, second, tee_minor(s, eps))


def tee_minor(s: ec3.Section, eps: float) -> float:
    """The tip that Mz compresses is lost."""
    c, part = s.outstand(s.b1), ec3.Parts(s.A, 0.0, s.Iz)
    lost = (1 - ec3.outstand_rho(c / s.t1, eps, ec3.outstand_k_tip_compressed(ec3.root_psi(s, s.b1)))) * c
    part.lose(lost * s.t1, (s.b1 - lost) / 2, lost)
    return part.inertia / (s.b1 / 2 - part.centre)


def shifts(s: ec3.Section, fy: float) -> tuple[float, float]:
    """How far the centroid of Aeff lies from that of A: across y-y, across z-z."""
    eps = math.sqrt(235 * ec3.MPA / fy)
    c = s.outstand(s.b1)
    flange = (1 - ec3.outstand_rho(c / s.t1, eps, 0.43)) * c
    if s.shape == "tee":
        stem = (1 - ec3.outstand_rho(s.web / s.tw, eps, 0.43)) * s.web
        part = ec3.Parts(s.A, s.ybar, s.Iy)
        part.lose(2 * flange * s.t1, s.h - s.t1 / 2, s.t1)
        part.lose(stem * s.tw, stem / 2, stem)
        return abs(part.centre - s.ybar), 0.0
    back = (1 - ec3.internal_rho(s.web / s.tw, eps, 1.0)) * s.web
    part = ec3.Parts(s.A, s.xbar, s.Iz)
    part.lose(2 * flange * s.t1, s.b1 - flange / 2, flange)
    part.lose(back * s.tw, s.tw / 2, s.tw)
    return 0.0, abs(part.centre - s.xbar)


def channel(s: ec3.Section, eps: float) -> Moduli:
    c = s.outstand(s.b1)
    gone = (1 - ec3.outstand_rho(c / s.t1, eps, 0.43)) * c
    part = ec3.Parts(s.A, s.h / 2, s.Iy)
    part.lose(gone * s.t1, s.h - s.t1 / 2, s.t1)
    lower, upper = s.t1 + s.r, s.h - s.t1 - s.r
    psi = (lower - part.centre) / (upper - part.centre)
    hole, first = ec3.web_kept(s.web, s.tw, eps, psi)
    part.lose(hole * s.tw, upper - first - hole / 2, hole)
    y = min(s.Wel_y, part.inertia / max(part.centre, s.h - part.centre))
    # About z-z: tips in compression, then the back.
    tips = ec3.Parts(s.A, s.xbar, s.Iz)
    root = s.tw + s.r
    psi = (root - s.xbar) / (s.b1 - s.xbar)
    compressed = c / (1 - psi) if psi < 0 else c
    lost = (1 - ec3.outstand_rho(c / s.t1, eps, ec3.outstand_k_tip_compressed(psi))) * compressed
    tips.lose(2 * lost * s.t1, s.b1 - lost / 2, lost)
    back = ec3.Parts(s.A, s.xbar, s.Iz)
    hole = (1 - ec3.internal_rho(s.web / s.tw, eps, 1.0)) * s.web
    back.lose(hole * s.tw, s.tw / 2, s.tw)
    if root < back.centre:
        psi = -(s.b1 - back.centre) / (back.centre - root)
        compressed = c / (1 - psi)
        lost = (1 - ec3.outstand_rho(c / s.t1, eps, ec3.outstand_k_tip_tension(psi))) * compressed
        back.lose(2 * lost * s.t1, root + compressed - lost / 2, lost)
    z = min(part.inertia / max(part.centre, s.b1 - part.centre) for part in (tips, back))
    return Moduli(y, y, min(s.Wel_z, z))


def resistances(s: ec3.Section, number: int, fy: float, choices: ec3.Choices, acting: ec3.Acting) -> tuple[ec3.Resistances, float]:
    """Those of 6.2, and the shift of the centroid across z-z."""
    if number < 4 or s.shape == "I":
        return ec3.resistances(s, number, fy, choices, acting), 0.0
    gross = ec3.resistances(s, 3, fy, choices, acting)
    shift_y, shift_z = shifts(s, fy)
    m, A, gamma = moduli(s, fy), ec3.effective_area(s, fy), choices.gamma_m0
    sag, hog = m.y_sag, m.y_hog
    if not (shift_y and acting.N > 0) and acting.sags != acting.hogs:
        sag = hog = sag if acting.sags else hog
    M_sag, M_hog, Mz = (W * fy / gamma for W in (sag, hog, m.z))
    found = ec3.Resistances(4, fy, A, A * fy / gamma, M_sag, M_hog, Mz, gross.Vz, gross.Vy, gross.Vbw, min(sag, hog), shift_y, m.z, gamma)
    return found, shift_z
