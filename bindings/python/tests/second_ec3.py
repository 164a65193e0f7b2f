"""EN 1993-1-1:2005+A1:2014 a second time: its formulas in Python, for tests to hold the library against.

Written from the clauses alone. Units are N and m, compression is above zero, y-y is the major axis. Section properties and elastic critical
moments are given, because other tests hold them to published figures; all else, effective sections among it, is worked out here.
"""

from __future__ import annotations

import math
from collections.abc import Mapping
from dataclasses import dataclass, field

E = 210e9
G = 81e9
MM = 1e-3
MPA = 1e6


# 3.2.1: yield strengths in N/mm2 by the thickness in mm up to which they hold.
PRODUCT_YIELD = {
    "S235": [(16, 235), (40, 225), (100, 215), (150, 195)],
    "S275": [(16, 275), (40, 265), (63, 255), (80, 245), (100, 235), (150, 225)],
    "S355": [(16, 355), (40, 345), (63, 335), (80, 325), (100, 315), (150, 295)],
    "S420": [(16, 420), (40, 400), (63, 390), (80, 370), (100, 360)],
    "S460": [(16, 460), (40, 440), (63, 430), (80, 410), (100, 400)],
}
PRODUCT_YIELD_HOT_HOLLOW = {
    "S235": [(16, 235), (40, 225), (100, 215), (120, 195)],
    "S275": [(16, 275), (40, 265), (63, 255), (80, 245), (100, 235), (120, 225)],
    "S355": [(16, 355), (40, 345), (63, 335), (80, 325), (100, 315), (120, 295)],
    "S420": [(16, 420), (40, 400), (65, 390)],
    "S460": [(16, 460), (40, 440), (65, 430)],
}
PRODUCT_YIELD_COLD_HOLLOW = {name: [row for row in rows if row[0] <= 40] for name, rows in PRODUCT_YIELD.items()}
TABLE_31 = {
    "S235": [(40, 235), (80, 215)],
    "S275": [(40, 275), (80, 255)],
    "S355": [(40, 355), (80, 335)],
    "S420": [(40, 420), (80, 390)],
    "S460": [(40, 460), (80, 430)],
}
TABLE_31_COLD_HOLLOW = {name: rows[:1] for name, rows in TABLE_31.items()}


@dataclass(frozen=True)
class Choices:
    """National choices."""

    product_standards: bool
    gamma_m0: float
    gamma_m1: float
    gamma_m2: float
    rolled_lambda0: float
    rolled_beta: float
    rolled_curves: tuple[tuple[float, str], ...]
    welded_lambda0: float
    welded_beta: float
    welded_curves: tuple[tuple[float, str], ...]
    hot_hollow_as_rolled: bool
    plateau_flange: float = 0.4
    factor_flange: float = 1.0


ANNEXES = {
    "uk": Choices(True, 1.0, 1.0, 1.1, 0.4, 0.75, ((2.0, "b"), (3.1, "c"), (math.inf, "d")), 0.2, 1.0, ((2.0, "c"), (3.1, "d")), True),
    "recommended": Choices(
        False, 1.0, 1.0, 1.25, 0.4, 0.75, ((2.0, "b"), (math.inf, "c")), 0.4, 0.75, ((2.0, "c"), (math.inf, "d")), False, 0.5, 1.1
    ),
}
IMPERFECTION = {"a0": 0.13, "a": 0.21, "b": 0.34, "c": 0.49, "d": 0.76}


@dataclass(frozen=True)
class Section:
    """A section by its dimensions (m) and gross properties. Flange 1 is the upper one."""

    shape: str  # "I", "RHS", "CHS", "channel", "tee"
    made: str  # "rolled" (hot finished hollow sections too), "welded", "formed"
    h: float
    b1: float
    b2: float
    tw: float
    t1: float
    t2: float
    r: float
    A: float
    Iy: float
    Iz: float
    Wel_y: float
    Wel_z: float
    Wpl_y: float
    Wpl_z: float
    It: float
    Iw: float
    ybar: float  # centroid above the bottom edge
    xbar: float  # centroid from the left edge

    @property
    def is_equal(self) -> bool:
        return self.b1 == self.b2 and self.t1 == self.t2

    @property
    def hw(self) -> float:
        return self.h - self.t1 - (0.0 if self.shape == "tee" else self.t2)

    @property
    def thickest(self) -> float:
        return max(self.tw, self.t1, self.t2)

    @property
    def web(self) -> float:
        """Flat width c of the web of Table 5.2."""
        if self.shape == "RHS":
            return self.h - (2 * self.t1 if self.made == "welded" else 3 * self.tw)
        if self.shape == "tee":
            return self.h - self.t1 - self.r
        return self.h - self.t1 - self.t2 - 2 * self.r

    def outstand(self, b: float) -> float:
        if self.shape == "channel":
            return b - self.tw - self.r
        return (b - self.tw - 2 * self.r) / 2

    @property
    def flange(self) -> float:
        """Flat width c of the wall b of a hollow section."""
        return self.b1 - (2 * self.tw if self.made == "welded" else 3 * self.tw)


def yield_strength(section: Section, grade: str, choices: Choices) -> float | None:
    hollow = section.shape in ("RHS", "CHS") and section.made != "welded"
    if choices.product_standards:
        table = PRODUCT_YIELD if not hollow else PRODUCT_YIELD_HOT_HOLLOW if section.made == "rolled" else PRODUCT_YIELD_COLD_HOLLOW
    else:
        table = TABLE_31_COLD_HOLLOW if hollow and section.made == "formed" else TABLE_31
    for thickness, strength in table[grade]:
        if section.thickest <= thickness * MM * (1 + 1e-9):
            return strength * MPA
    return None


# Table 5.2


def class_of(ratio: float, limits: tuple[float, float, float]) -> int:
    # A part has a class only where it keeps the limits of the higher classes too: the limit by psi can be below that by alpha.
    for number in (1, 2, 3):
        if all(ratio <= limit * (1 + 1e-12) for limit in limits[number - 1 :]):
            return number
    return 4


def internal_compression(eps: float) -> tuple[float, float, float]:
    return 33 * eps, 38 * eps, 42 * eps


def outstand_compression(eps: float) -> tuple[float, float, float]:
    return 9 * eps, 10 * eps, 14 * eps


def internal_bending(eps: float, alpha: float, psi: float) -> tuple[float, float, float]:
    """Sheet 1, part subject to bending and compression."""
    third = 42 * eps / (0.67 + 0.33 * psi) if psi > -1 + 1e-9 else 62 * eps * (1 - psi) * math.sqrt(-psi)
    if alpha > 0.5 + 1e-9:
        return 396 * eps / (13 * alpha - 1), 456 * eps / (13 * alpha - 1), third
    if alpha <= 0:
        return math.inf, math.inf, third
    return 36 * eps / alpha, 41.5 * eps / alpha, third


@dataclass(frozen=True)
class Acting:
    """What acts anywhere along the member."""

    N: float  # largest compression; below zero where all is tension
    sags: bool  # My below zero in the file: flange 1 compressed
    hogs: bool
    Mz: bool


def classify(s: Section, fy: float, acting: Acting) -> int:
    eps = math.sqrt(235 * MPA / fy)
    N = acting.N
    My = acting.sags or acting.hogs
    if s.shape == "CHS":
        return class_of(s.h / s.tw, (50 * eps**2, 70 * eps**2, 90 * eps**2)) if N > 0 or My or acting.Mz else 1
    if s.shape == "RHS":
        return classify_box(s, fy, eps, acting)
    if s.shape == "channel":
        return classify_channel(s, fy, eps, acting)
    if s.shape == "tee":
        return classify_tee(s, fy, eps, acting)
    found = 1
    for compressed, b, t in ((acting.sags, s.b1, s.t1), (acting.hogs, s.b2, s.t2)):
        if compressed or N > 0 or acting.Mz:
            found = max(found, class_of(s.outstand(b) / t, outstand_compression(eps)))
    ratio = s.web / s.tw
    if not My:
        return max(found, class_of(ratio, internal_compression(eps)) if N > 0 else 1)
    for acts, t_c, a_c, above in (
        (acting.sags, s.t1, s.b1 * s.t1, True),
        (acting.hogs, s.t2, s.b2 * s.t2, False),
    ):
        if acts:
            fillets = (s.A - s.b1 * s.t1 - s.b2 * s.t2 - s.hw * s.tw) / 2  # of one flange
            compressed = (s.A + N / fy) / 2 - a_c - fillets - s.r * s.tw
            alpha = min(1.0, max(0.0, compressed / (s.tw * s.web)))
            to_edge = (s.h - s.ybar if above else s.ybar) - t_c - s.r
            if to_edge > 0:
                limits = internal_bending(eps, alpha, web_psi(N, s.A, fy, to_edge, s.web))
            else:  # the centroid lies in the compressed flange, beyond the web
                axial = N / s.A
                edge = axial + (fy - axial) * to_edge / (s.h - s.ybar if above else s.ybar)
                if edge <= 0:
                    continue
                far = axial + (fy - axial) * (to_edge - s.web) / (s.h - s.ybar if above else s.ybar)
                limits = internal_bending(eps, alpha, far / edge)
            found = max(found, class_of(ratio, limits))
    return found


def web_psi(N: float, A: float, fy: float, to_edge: float, web: float) -> float:
    """Ratio of edge stresses with yield at the compressed edge, which is `to_edge` from the centroid."""
    axial = N / A
    slope = (fy - axial) / to_edge
    return min(1.0, (axial - slope * (web - to_edge)) / fy)


def classify_box(s: Section, fy: float, eps: float, acting: Acting) -> int:
    N = acting.N
    My = acting.sags or acting.hogs
    found = 1
    for across, along, c_across, t_across, c_along, t_along in (
        (My, acting.Mz, s.flange, s.t1, s.web, s.tw),
        (acting.Mz, My, s.web, s.tw, s.flange, s.t1),
    ):
        # The walls that the moment compresses as a whole, and the walls along which its stress varies.
        if across or N > 0 and not along:
            found = max(found, class_of(c_across / t_across, internal_compression(eps)))
        if across:
            alpha = min(1.0, max(0.0, 0.5 * (1 + N / (2 * fy * t_along * c_along))))
            psi = 2 * N / (s.A * fy) - 1
            found = max(found, class_of(c_along / t_along, internal_bending(eps, alpha, psi)))
    return found


def classify_channel(s: Section, fy: float, eps: float, acting: Acting) -> int:
    N = acting.N
    My = acting.sags or acting.hogs
    found = 1
    if My or acting.Mz or N > 0:
        found = max(found, class_of(s.outstand(s.b1) / s.t1, outstand_compression(eps)))
    if My:
        alpha = min(1.0, max(0.0, 0.5 * (1 + N / (fy * s.tw * s.web))))
        found = max(found, class_of(s.web / s.tw, internal_bending(eps, alpha, 2 * N / (s.A * fy) - 1)))
    if acting.Mz or N > 0 and not My:
        found = max(found, class_of(s.web / s.tw, internal_compression(eps)))
    return found


def outstand_k_tip_tension(psi: float) -> float:
    """EN 1993-1-5 Table 4.2, the larger stress at the supported edge."""
    if psi >= 0:
        return 0.578 / (psi + 0.34)
    return 1.7 - 5 * max(psi, -1.0) + 17.1 * max(psi, -1.0) ** 2


def outstand_k_tip_compressed(psi: float) -> float:
    """EN 1993-1-5 Table 4.2, the larger stress at the tip."""
    psi = max(psi, -3.0)
    return 0.57 - 0.21 * psi + 0.07 * psi**2


def classify_tee(s: Section, fy: float, eps: float, acting: Acting) -> int:
    N = acting.N
    found = 1
    if acting.sags or acting.Mz or N > 0:
        found = max(found, class_of(s.outstand(s.b1) / s.t1, outstand_compression(eps)))
    ratio = s.web / s.tw
    if N > 0:
        found = max(found, class_of(ratio, outstand_compression(eps)))
    compressed_area = (s.A + N / fy) / 2
    to_root = s.h - s.ybar - s.t1 - s.r  # of the stem, above the centroid
    if acting.hogs:
        # Tip in compression: the neutral axes from the tip upwards.
        alpha = min(1.0, max(0.0, compressed_area / (s.tw * s.web)))
        axial = N / s.A
        slope = (fy - axial) / s.ybar
        psi = (axial - slope * to_root) / fy
        k = outstand_k_tip_compressed(psi)
        limits = (9 * eps / alpha, 10 * eps / alpha, 21 * eps * math.sqrt(k)) if alpha > 0 else (math.inf,) * 3
        found = max(found, class_of(ratio, limits))
    if acting.sags and to_root > 0:
        flange = s.A - s.tw * s.web
        alpha = min(1.0, max(0.0, (compressed_area - flange) / (s.tw * s.web)))
        axial = N / s.A
        slope = (fy - axial) / to_root
        psi = (axial - slope * s.ybar) / fy
        k = outstand_k_tip_tension(psi)
        first = 9 * eps / alpha**1.5 if alpha > 0 else math.inf
        second = 10 * eps / alpha**1.5 if alpha > 0 else math.inf
        found = max(found, class_of(ratio, (first, second, 21 * eps * math.sqrt(k))))
    return found


# EN 1993-1-5 4.4


def internal_k(psi: float) -> float:
    if psi >= 0:
        return 8.2 / (1.05 + psi)
    if psi >= -1 - 1e-9:  # 23.88, not 23.92: the rows of the table do not meet
        return 7.81 - 6.29 * psi + 9.78 * psi**2
    return 5.98 * (1 - max(psi, -3.0)) ** 2


def internal_rho(ratio: float, eps: float, psi: float) -> float:
    slenderness = ratio / (28.4 * eps * math.sqrt(internal_k(psi)))
    psi = max(psi, -3.0)
    if slenderness <= 0.5 + math.sqrt(0.085 - 0.055 * psi):
        return 1.0
    return min(1.0, (slenderness - 0.055 * (3 + psi)) / slenderness**2)


def outstand_rho(ratio: float, eps: float, k: float) -> float:
    slenderness = ratio / (28.4 * eps * math.sqrt(k))
    return 1.0 if slenderness <= 0.748 else min(1.0, (slenderness - 0.188) / slenderness**2)


def fillet_pair(r: float, depth: float) -> tuple[float, float]:
    """Area and first moment about the flange's face of two root fillets down to a depth below it."""
    u = min(max(depth, 0.0), r)

    def area(v: float) -> float:
        return (v * math.sqrt(max(0.0, r * r - v * v)) + r * r * math.asin(min(1.0, v / r))) / 2

    def first(v: float) -> float:
        return -(max(0.0, r * r - v * v) ** 1.5) / 3

    if r == 0:
        return 0.0, 0.0
    disc, turned = area(r) - area(r - u), first(r) - first(r - u)
    return 2 * (r * u - disc), 2 * (r * u * u / 2 - (r * disc - turned))


def plastic_modulus(plates: list[tuple[float, float, float]], r: float, face: float) -> float:
    """Of plates (from, to, width) across an axis, with two root fillets that begin at `face`. Exact, the axis of equal areas by bisection."""

    def below(x: float) -> tuple[float, float]:
        A = S = 0.0
        for start, stop, width in plates:
            end = min(max(x, start), stop)
            A += (end - start) * width
            S += (end - start) * width * (start + end) / 2
        a, m = fillet_pair(r, x - face)
        return A + a, S + m + a * face

    whole, moment = below(max(stop for _, stop, _ in plates))
    low, high = 0.0, max(stop for _, stop, _ in plates)
    for _ in range(200):
        middle = (low + high) / 2
        low, high = (middle, high) if below(middle)[0] < whole / 2 else (low, middle)
    A, S = below(low)
    return low * A - S + (moment - S) - low * (whole - A)


class Parts:
    """A gross section less rectangles: area, centroid and second moment along one direction."""

    def __init__(self, A: float, centre: float, inertia: float) -> None:
        self.A = A
        self.S = A * centre
        self.I0 = inertia + A * centre**2

    def lose(self, area: float, centre: float, height: float) -> None:
        self.A -= area
        self.S -= area * centre
        self.I0 -= area * (height**2 / 12 + centre**2)

    @property
    def centre(self) -> float:
        return self.S / self.A

    @property
    def inertia(self) -> float:
        return self.I0 - self.S**2 / self.A


@dataclass(frozen=True)
class Effective:
    A: float
    Wy_sag: float
    Wy_hog: float
    Wz: float
    eN_y: float = 0.0  # how far the centroid of Aeff lies above that of A


def effective(s: Section, fy: float) -> Effective:
    eps = math.sqrt(235 * MPA / fy)
    if s.shape == "RHS":
        return effective_box(s, eps)
    if s.shape == "I":
        return effective_i(s, eps)
    raise NotImplementedError(s.shape)


def web_kept(c: float, t: float, eps: float, psi: float) -> tuple[float, float]:
    """EN 1993-1-5 Table 4.1: what is lost of an internal part, and be1 at its more compressed edge."""
    compressed = c if psi >= 0 else c / (1 - psi)
    kept = internal_rho(c / t, eps, psi) * compressed
    return compressed - kept, 0.4 * kept if psi < 0 else 2 * kept / (5 - psi)


def effective_i(s: Section, eps: float) -> Effective:
    lost = [(1 - outstand_rho(s.outstand(b) / t, eps, 0.43)) * s.outstand(b) for b, t in ((s.b1, s.t1), (s.b2, s.t2))]
    middles = [s.h - s.t1 / 2, s.t2 / 2]
    thickness = [s.t1, s.t2]
    axial = Parts(s.A, s.ybar, s.Iy)
    for gone, middle, t in zip(lost, middles, thickness):
        axial.lose(2 * gone * t, middle, t)
    gone = (1 - internal_rho(s.web / s.tw, eps, 1.0)) * s.web
    axial.lose(gone * s.tw, s.t2 + s.r + s.web / 2, gone)
    moduli = []
    for flange in (0, 1):
        part = Parts(s.A, s.ybar, s.Iy)
        part.lose(2 * lost[flange] * thickness[flange], middles[flange], thickness[flange])
        lower, upper = s.t2 + s.r, s.h - s.t1 - s.r
        edge, far = (upper, lower) if flange == 0 else (lower, upper)
        psi = (far - part.centre) / (edge - part.centre)
        if (edge > part.centre) == (flange == 0):
            hole, first = web_kept(s.web, s.tw, eps, psi)
            middle = edge + (-1 if flange == 0 else 1) * (first + hole / 2)
            part.lose(hole * s.tw, middle, hole)
        # What the web loses can move the centroid towards the fibre that governs: no more than the gross modulus.
        moduli.append(min(part.inertia / max(s.h - part.centre, part.centre), s.Wel_y))
    shift = 0.0 if s.is_equal else axial.centre - s.ybar
    return Effective(axial.A, moduli[0], moduli[1], i_minor(s, eps), shift)


def i_minor(s: Section, eps: float) -> float:
    """Flange tips on one side lost under Mz: stress from the tip to nothing at the web."""
    half = max(s.b1, s.b2) / 2
    part = Parts(s.A, 0.0, s.Iz)
    for b, t in ((s.b1, s.t1), (s.b2, s.t2)):
        c = s.outstand(b)
        gone = (1 - outstand_rho(c / t, eps, outstand_k_tip_compressed(root_psi(s, b)))) * c
        part.lose(gone * t, b / 2 - gone / 2, gone)
    return part.inertia / max(half - part.centre, half + part.centre)


def root_psi(s: Section, b: float) -> float:
    return 1 - 2 * s.outstand(b) / b


def effective_box(s: Section, eps: float) -> Effective:
    flat = {"y": s.flange, "z": s.web}
    gone_b = (1 - internal_rho(s.flange / s.t1, eps, 1.0)) * s.flange
    gone_h = (1 - internal_rho(s.web / s.tw, eps, 1.0)) * s.web
    A = s.A - 2 * gone_b * s.t1 - 2 * gone_h * s.tw
    moduli = []
    for depth, inertia, t_flange, t_web, c_web, gone in (
        (s.h, s.Iy, s.t1, s.tw, flat["z"], gone_b),
        (s.b1, s.Iz, s.tw, s.t1, flat["y"], gone_h),
    ):
        part = Parts(s.A, 0.0, inertia)
        part.lose(gone * t_flange, depth / 2 - t_flange / 2, t_flange)
        edge, far = c_web / 2, -c_web / 2
        psi = (far - part.centre) / (edge - part.centre)
        hole, first = web_kept(c_web, t_web, eps, psi)
        part.lose(2 * hole * t_web, edge - first - hole / 2, hole)
        moduli.append(part.inertia / max(depth / 2 - part.centre, depth / 2 + part.centre))
    return Effective(A, moduli[0], moduli[0], moduli[1])


# 6.2


@dataclass(frozen=True)
class Resistances:
    number: int  # class
    fy: float
    A: float
    N: float  # A fy/gamma_M0
    My_sag: float
    My_hog: float
    Mz: float
    Vz: float
    Vy: float
    Vbw: float | None  # EN 1993-1-5 5, web
    Wy: float
    eN_y: float
    Wz: float
    gamma_m0: float


def shear_area_web(s: Section) -> float:
    """6.2.6(3) with eta 1.0."""
    if s.shape == "CHS":
        return 2 * s.A / math.pi
    if s.shape == "RHS":
        return 2 * s.hw * s.tw if s.made == "welded" else s.A * s.h / (s.b1 + s.h)
    if s.shape == "tee":
        return s.tw * (s.h - s.t1 / 2) if s.made == "welded" else s.A - s.b1 * s.t1 + (s.tw + 2 * s.r) * s.t1 / 2
    if s.made == "welded":
        return s.hw * s.tw
    if s.shape == "channel":
        return s.A - 2 * s.b1 * s.t1 + (s.tw + s.r) * s.t1
    return max(s.A - 2 * s.b1 * s.t1 + (s.tw + 2 * s.r) * s.t1, s.hw * s.tw)


def shear_area_flanges(s: Section) -> float:
    if s.shape == "CHS":
        return 2 * s.A / math.pi
    if s.shape == "RHS":
        return s.A - 2 * s.hw * s.tw if s.made == "welded" else s.A * s.b1 / (s.b1 + s.h)
    if s.shape == "tee":
        return 2 * s.b1 * s.t1 / 3  # no row of 6.2.6(3): the elastic distribution over a rectangle
    return s.A - s.hw * s.tw


def resistances(s: Section, number: int, fy: float, choices: Choices, acting: Acting) -> Resistances:
    gamma = choices.gamma_m0
    if number <= 2:
        A, sag, hog, Wz, shift = s.A, s.Wpl_y, s.Wpl_y, s.Wpl_z, 0.0
    elif number == 3:
        A, sag, hog, Wz, shift = s.A, s.Wel_y, s.Wel_y, s.Wel_z, 0.0
    else:
        e = effective(s, fy)
        A, sag, hog, Wz, shift = e.A, e.Wy_sag, e.Wy_hog, e.Wz, e.eN_y
    # One modulus for the member: the smaller of the senses that act; the moment of a shift can have either.
    if not (number == 4 and shift and acting.N > 0) and acting.sags != acting.hogs:
        sag = hog = sag if acting.sags else hog
    tau = fy / math.sqrt(3)
    eps = math.sqrt(235 * MPA / fy)
    webs = 2 if s.shape == "RHS" else 1
    hw = s.hw if s.made == "welded" or s.shape != "RHS" else s.h - 2 * s.t1
    Vbw = None
    if s.shape in ("I", "RHS", "channel") and hw / s.tw > 72 * eps:
        slenderness = hw / (86.4 * s.tw * eps)
        chi = 1.0 if slenderness < 0.83 else 0.83 / slenderness
        Vbw = webs * chi * hw * s.tw * tau / choices.gamma_m1
    return Resistances(
        number, fy, A, A * fy / gamma, sag * fy / gamma, hog * fy / gamma, Wz * fy / gamma, shear_area_web(s) * tau / gamma,
        shear_area_flanges(s) * tau / gamma, Vbw, min(sag, hog), shift, Wz, gamma,
    )


def cross_section(s: Section, r: Resistances, N: float, My: float, Mz: float) -> float:
    """6.2.9 and 6.2.1(7) without shear: magnitudes, My above zero where flange 1 is compressed."""
    MRy = min(r.My_sag, r.My_hog)
    NR = r.N if N > 0 else s.A * r.fy / r.gamma_m0
    y, z, n = abs(My), abs(Mz), abs(N) / r.N
    linear = s.shape in ("channel", "tee") or s.shape == "I" and not s.is_equal
    if r.number >= 3 or linear:
        if r.number == 4 and N > 0:
            y += abs(N * r.eN_y)
        if s.shape == "CHS":
            return abs(N) / NR + math.hypot(y, z) / MRy
        return abs(N) / NR + y / MRy + z / r.Mz
    if n >= 1:
        return math.inf
    if s.shape == "CHS":
        ratio_y = y / (r.My_sag * (1 - n**1.7))
        ratio_z = z / (r.Mz * (1 - n**1.7))
        return max(ratio_y**2 + ratio_z**2, ratio_y, ratio_z)
    if s.shape == "RHS":
        aw = min(0.5, (s.A - 2 * s.b1 * s.t1) / s.A)
        af = min(0.5, (s.A - 2 * s.h * s.tw) / s.A)
        ratio_y = y / min(MRy, MRy * (1 - n) / (1 - 0.5 * aw))
        ratio_z = z / min(r.Mz, r.Mz * (1 - n) / (1 - 0.5 * af))
        exponent = 1.66 / (1 - 1.13 * n**2) if 1.13 * n**2 < 1 else 6.0
        exponent = min(6.0, exponent)
        return max(ratio_y**exponent + ratio_z**exponent, ratio_y, ratio_z)
    a = min(0.5, (s.A - 2 * s.b1 * s.t1) / s.A)
    ratio_y = y / min(MRy, MRy * (1 - n) / (1 - 0.5 * a))
    ratio_z = z / (r.Mz if n <= a else r.Mz * (1 - ((n - a) / (1 - a)) ** 2))
    return max(ratio_y**2 + ratio_z ** max(1.0, 5 * n), ratio_y, ratio_z)


# 6.3.1


def strut_curves(s: Section, grade: str) -> tuple[str, str]:
    """Table 6.2: curves about y-y and z-z."""
    high = grade == "S460"
    if s.shape in ("channel", "tee"):
        return "c", "c"
    if s.shape in ("RHS", "CHS"):
        if s.made == "welded":
            # The size of the welds is not known: curve c where one of the walls is as stocky as the row of thick welds says.
            thick = s.shape == "RHS" and (s.b1 / s.t1 < 30 or s.h / s.tw < 30)
            return ("b", "b") if s.shape == "RHS" and not thick else ("c", "c")
        if s.made == "formed":
            return "c", "c"
        return ("a0", "a0") if high else ("a", "a")
    t = max(s.t1, s.t2)
    if s.made == "welded":
        return ("b", "c") if t <= 0.04 else ("c", "d")
    if s.h / min(s.b1, s.b2) > 1.2:
        if t <= 0.04:
            return ("a0", "a0") if high else ("a", "b")
        return ("a", "a") if high else ("b", "c")
    if t <= 0.1:
        return ("a", "a") if high else ("b", "c")
    return ("c", "c") if high else ("d", "d")


def chi(slenderness: float, alpha: float, lambda0: float = 0.2, beta: float = 1.0) -> float:
    if slenderness <= lambda0:
        return 1.0
    phi = 0.5 * (1 + alpha * (slenderness - lambda0) + beta * slenderness**2)
    return min(1.0, 1 / slenderness**2 if beta != 1 else 1.0, 1 / (phi + math.sqrt(phi**2 - beta * slenderness**2)))


def euler(inertia: float, length: float) -> float:
    return math.pi**2 * E * inertia / length**2


def shear_centre(s: Section) -> float:
    """Distance from the centroid along the axis of symmetry, m."""
    if s.shape == "tee":
        return s.h - s.ybar - s.t1 / 2
    if s.shape == "channel":
        b, h = s.b1 - s.tw / 2, s.h - s.t1
        return s.xbar - s.tw / 2 + b**2 * h**2 * s.t1 / (4 * s.Iy)
    if s.shape == "I" and not s.is_equal:
        first, second = s.t1 * s.b1**3, s.t2 * s.b2**3
        return s.t2 / 2 + (s.h - (s.t1 + s.t2) / 2) * first / (first + second) - s.ybar
    return 0.0


def torsional(s: Section, length: float, length_flexure: float) -> float:
    """Ncr of twist, with flexure square to the axis of symmetry on which the shear centre lies."""
    y0 = shear_centre(s)
    i0 = (s.Iy + s.Iz) / s.A + y0**2
    twist = (G * s.It + math.pi**2 * E * s.Iw / length**2) / i0
    if abs(y0) < 1e-12:
        return twist
    flexure = euler(s.Iy if s.shape == "channel" else s.Iz, length_flexure)
    b = 1 - y0**2 / i0
    return (flexure + twist - math.sqrt((flexure + twist) ** 2 - 4 * b * flexure * twist)) / (2 * b)


# 6.3.2


def lateral_curve(s: Section, choices: Choices) -> tuple[str, float, float, bool]:
    """Curve, plateau, beta and whether f of 6.3.2.3(2) counts."""
    ratio = s.h / min(s.b1, s.b2)
    if s.shape in ("RHS", "CHS"):
        if choices.hot_hollow_as_rolled and s.made == "rolled":
            return next(curve for limit, curve in choices.rolled_curves if ratio <= limit), choices.rolled_lambda0, choices.rolled_beta, True
        return "d", 0.2, 1.0, False
    if not s.is_equal:
        first, second = ("a", "b") if s.made == "rolled" else ("c", "d")
        return (first if ratio <= 2 else second), 0.2, 1.0, False
    curves = choices.rolled_curves if s.made == "rolled" else choices.welded_curves
    for limit, curve in curves:
        if ratio <= limit:
            if s.made == "rolled":
                return curve, choices.rolled_lambda0, choices.rolled_beta, True
            return curve, choices.welded_lambda0, choices.welded_beta, True
    return "d", 0.2, 1.0, False


def lateral_chi_of(row: tuple[str, float, float, bool], slenderness: float, C1: float | None) -> float:
    curve, lambda0, beta, corrected = row
    if slenderness <= lambda0:
        return 1.0
    phi = 0.5 * (1 + IMPERFECTION[curve] * (slenderness - lambda0) + beta * slenderness**2)
    reduction = min(1.0, 1 / slenderness**2, 1 / (phi + math.sqrt(phi**2 - beta * slenderness**2)))
    if not corrected or C1 is None:
        return reduction
    kc = min(1.0, 1 / math.sqrt(C1))
    f = min(1.0, 1 - 0.5 * (1 - kc) * (1 - 2 * (slenderness - 0.8) ** 2))
    return min(1.0, 1 / slenderness**2, reduction / f)


# Table B.3


def table_b3(first: float, middle: float, last: float, column: str) -> float:
    """Equivalent uniform moment factor. `column`: "none", "udl" or "point"."""
    Mh, other = (first, last) if abs(first) >= abs(last) else (last, first)
    if Mh == 0 and middle == 0:
        return 1.0
    psi = other / Mh if Mh else 1.0
    if column == "none":
        return max(0.4, 0.6 + 0.4 * psi)
    if abs(middle) <= abs(Mh):
        alpha = middle / Mh
        if alpha >= 0:
            return max(0.4, 0.2 + 0.8 * alpha)
        if column == "udl":
            return max(0.4, 0.1 - 0.8 * alpha if psi >= 0 else 0.1 * (1 - psi) - 0.8 * alpha)
        return max(0.4, -0.8 * alpha if psi >= 0 else -0.2 * psi - 0.8 * alpha)
    alpha = Mh / middle
    base, slope = (0.95, 0.05) if column == "udl" else (0.90, 0.10)
    if alpha >= 0 or psi >= 0:
        return base + slope * alpha
    return base + slope * alpha * (1 + 2 * psi)


# 6.3.3 with Annex B


@dataclass
class Interaction:
    kyy: float = 0.0
    kyz: float = 0.0
    kzy: float = 0.0
    kzz: float = 0.0
    terms: Mapping[str, float] = field(default_factory=dict)


def annex_b(s: Section, number: int, ny: float, nz: float, ly: float, lz: float, Cmy: float, Cmz: float, CmLT: float) -> Interaction:
    twists = s.shape not in ("RHS", "CHS")
    k = Interaction()
    if number <= 2 and s.shape not in ("channel", "tee"):
        k.kyy = min(Cmy * (1 + (ly - 0.2) * ny), Cmy * (1 + 0.8 * ny))
        if twists:
            k.kzz = min(Cmz * (1 + (2 * lz - 0.6) * nz), Cmz * (1 + 1.4 * nz))
        else:
            k.kzz = min(Cmz * (1 + (lz - 0.2) * nz), Cmz * (1 + 0.8 * nz))
        k.kyz = 0.6 * k.kzz
        if not twists:
            k.kzy = 0.6 * k.kyy
        else:
            bound = 1 - 0.1 * lz * nz / (CmLT - 0.25)
            k.kzy = min(0.6 + lz, bound) if lz < 0.4 else max(bound, 1 - 0.1 * nz / (CmLT - 0.25))
        return k
    k.kyy = min(Cmy * (1 + 0.6 * ly * ny), Cmy * (1 + 0.6 * ny))
    k.kzz = min(Cmz * (1 + 0.6 * lz * nz), Cmz * (1 + 0.6 * nz))
    k.kyz = k.kzz
    k.kzy = max(1 - 0.05 * lz * nz / (CmLT - 0.25), 1 - 0.05 * nz / (CmLT - 0.25)) if twists else 0.8 * k.kyy
    return k


# 6.3.3 with Annex A


@dataclass(frozen=True)
class AnnexAInput:
    """One length of a section with two axes of symmetry. Moments in N.m, forces in N."""

    number: int
    N: float
    My: float
    Mz: float
    NRk: float
    MyRd: float  # plastic, with gamma_M0
    MzRd: float
    slenderness_y: float
    slenderness_z: float
    chi_y: float
    chi_z: float
    chi_LT: float
    slenderness_0: float  # of the critical moment under uniform moment
    C1: float
    Ncr_y: float
    Ncr_z: float
    Ncr_T: float
    Cmy0: float
    Cmz0: float
    area: float  # of the class
    modulus: float
    gamma: float


def cm0_linear(psi: float, ratio: float) -> float:
    """Table A.2, end moments; `ratio` is NEd/Ncr,i."""
    return 0.79 + 0.21 * psi + 0.36 * (psi - 0.33) * ratio


def annex_a(s: Section, a: AnnexAInput) -> Interaction:
    """Table A.1."""
    ry, rz, rT = a.N / a.Ncr_y, a.N / a.Ncr_z, a.N / a.Ncr_T
    mu_y = (1 - ry) / (1 - a.chi_y * ry)
    mu_z = (1 - rz) / (1 - a.chi_z * rz)
    wy, wz = min(1.5, s.Wpl_y / s.Wel_y), min(1.5, s.Wpl_z / s.Wel_z)
    npl = a.N / (a.NRk / a.gamma)
    aLT = max(0.0, 1 - s.It / s.Iy)
    Cmy, Cmz, CmLT = a.Cmy0, a.Cmz0, 1.0
    if a.slenderness_0 > 0.2 * math.sqrt(a.C1) * ((1 - rz) * (1 - rT)) ** 0.25:
        root = math.sqrt(a.My / a.N * a.area / a.modulus)
        Cmy = a.Cmy0 + (1 - a.Cmy0) * root * aLT / (1 + root * aLT)
        CmLT = max(1.0, Cmy**2 * aLT / math.sqrt((1 - rz) * (1 - rT)))
    k = Interaction()
    k.kyy = Cmy * CmLT * mu_y / (1 - ry)
    k.kyz = Cmz * mu_y / (1 - rz)
    k.kzy = Cmy * CmLT * mu_z / (1 - ry)
    k.kzz = Cmz * mu_z / (1 - rz)
    k.terms = {"Cmy": Cmy, "Cmz": Cmz, "CmLT": CmLT, "μy": mu_y, "μz": mu_z}
    if a.number > 2:
        return k
    longest = max(a.slenderness_y, a.slenderness_z)
    l0, lz = a.slenderness_0, a.slenderness_z
    my, mz = a.My / (a.chi_LT * a.MyRd), a.Mz / a.MzRd
    b = 0.5 * aLT * l0**2 * my * mz
    c = 10 * aLT * l0**2 / (5 + lz**4) * my / Cmy
    d = 2 * aLT * l0 / (0.1 + lz**4) * my / Cmy * mz / Cmz
    e = 1.7 * aLT * l0 / (0.1 + lz**4) * my / Cmy

    def along(w: float, Cm: float) -> float:
        return 2 - 1.6 / w * Cm**2 * longest - 1.6 / w * Cm**2 * longest**2

    Cyy = max(s.Wel_y / s.Wpl_y, 1 + (wy - 1) * (along(wy, Cmy) * npl - b))
    Cyz = max(0.6 * math.sqrt(wz / wy) * s.Wel_z / s.Wpl_z, 1 + (wz - 1) * ((2 - 14 * Cmz**2 * longest**2 / wz**5) * npl - c))
    Czy = max(0.6 * math.sqrt(wy / wz) * s.Wel_y / s.Wpl_y, 1 + (wy - 1) * ((2 - 14 * Cmy**2 * longest**2 / wy**5) * npl - d))
    Czz = max(s.Wel_z / s.Wpl_z, 1 + (wz - 1) * (along(wz, Cmz) - e) * npl)
    k.kyy /= Cyy
    k.kyz *= 0.6 * math.sqrt(wz / wy) / Cyz
    k.kzy *= 0.6 * math.sqrt(wy / wz) / Czy
    k.kzz /= Czz
    k.terms = {**k.terms, "Cyy": Cyy, "Cyz": Cyz, "Czy": Czy, "Czz": Czz}
    return k


# 6.3.2.4


def flange_strut(s: Section, fy: float, length: float, psi: float | None) -> float:
    """Slenderness of the compressed flange with a third of the compressed part of the web, of I sections with equal flanges."""
    flange, web = s.b1 * s.t1, s.hw * s.tw / 6
    radius = math.sqrt(s.t1 * s.b1**3 / 12 / (flange + web))
    kc = 1.0 if psi is None else 1 / (1.33 - 0.33 * psi)
    return kc * length / (radius * 93.9 * math.sqrt(235 * MPA / fy))


def flange_curve(s: Section, fy: float) -> str:
    return "d" if s.made == "welded" and s.h / s.t1 <= 44 * math.sqrt(235 * MPA / fy) else "c"


def critical_c1(s: Section, length: float, psi: float) -> float:
    """Mcr of published tables: equal flanges, forks at both ends, end moments."""
    Pz = euler(s.Iz, length)
    return (1.33 - 0.33 * psi) ** 2 * math.sqrt(Pz * (G * s.It + math.pi**2 * E * s.Iw / length**2))


# 6.2.8


def sheared_moment(s: Section, r: Resistances, V: float) -> float:
    """(6.30) of I sections with equal flanges in classes 1 and 2."""
    rho = max(0.0, 2 * V / r.Vz - 1) ** 2
    area = s.hw * s.tw
    return min(r.My_sag, (s.Wpl_y - min(1.0, rho) * area**2 / (4 * s.tw)) * r.fy / r.gamma_m0)


def effective_area(s: Section, fy: float) -> float:
    """Aeff of channels and tees under uniform compression: outstands lose their tips, the web of a channel its middle."""
    eps = math.sqrt(235 * MPA / fy)
    flange = s.outstand(s.b1)
    lost = 2 * (1 - outstand_rho(flange / s.t1, eps, 0.43)) * flange * s.t1
    rho = outstand_rho(s.web / s.tw, eps, 0.43) if s.shape == "tee" else internal_rho(s.web / s.tw, eps, 1.0)
    return s.A - lost - (1 - rho) * s.web * s.tw


def angle_area(A: float, h: float, b: float, t: float, fy: float) -> tuple[int, float]:
    """Class under compression (Table 5.2 sheet 3) and the area that counts."""
    eps = math.sqrt(235 * MPA / fy)
    if h / t <= 15 * eps and (h + b) / (2 * t) <= 11.5 * eps:
        return 3, A
    return 4, A - sum((1 - outstand_rho(leg / t, eps, 0.43)) * leg * t for leg in (h, b))
