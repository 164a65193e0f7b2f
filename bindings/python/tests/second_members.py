"""Random members for the second calculations, and what acts in them."""

from __future__ import annotations

import math
import random
from collections import Counter
from dataclasses import dataclass, field

import second_ec3 as ec3

import keltrix as kx

HELD = "Pinned"
BRACED = "Top and Bottom flange lateral"
FREE = "Free"


def tell(seed: int, counts: Counter[str]) -> None:
    """Prints how often each thing was compared."""
    print(f"seed {seed}: {sum(counts.values())} comparisons")
    for what, times in sorted(counts.items()):
        print(f"{times:9d} {what}")


@dataclass
class Piece:
    """Forces between two points: N tension above zero, shears linear along it."""

    start: float
    length: float
    N: float
    Vz: tuple[float, float]
    My: float
    Vy: tuple[float, float]
    Mz: float

    def at(self, x: float) -> tuple[float, float, float, float, float]:
        """N, My, Vz, Mz, Vy at x from the piece's start."""
        turn = x * x / (2 * self.length)
        My = self.My + self.Vz[0] * x + (self.Vz[1] - self.Vz[0]) * turn
        Mz = self.Mz - self.Vy[0] * x - (self.Vy[1] - self.Vy[0]) * turn
        share = x / self.length
        return self.N, My, self.Vz[0] + (self.Vz[1] - self.Vz[0]) * share, Mz, self.Vy[0] + (self.Vy[1] - self.Vy[0]) * share

    @property
    def ends(self) -> tuple[tuple[float, ...], tuple[float, ...]]:
        return self.at(0.0), self.at(self.length)


@dataclass
class Case:
    section: ec3.Section
    name: str
    grade: str
    held: list[str]
    pieces: list[Piece]
    annex: str
    options: dict[str, str]
    member: kx.Member = field(repr=False)

    @property
    def length(self) -> float:
        return self.pieces[-1].start + self.pieces[-1].length

    @property
    def stations(self) -> list[float]:
        return [piece.start for piece in self.pieces] + [self.length]

    def peak(self, which: int, first: float, last: float) -> tuple[float, float]:
        """Least and largest of one component between two places."""
        values = []
        for piece in self.pieces:
            low, high = max(first, piece.start) - piece.start, min(last, piece.start + piece.length) - piece.start
            if high < low - 1e-12 or (high - low < 1e-12 and last > first):
                continue
            values += [piece.at(low)[which], piece.at(high)[which]]
            shear = {1: piece.Vz, 3: piece.Vy}.get(which)
            if shear and shear[0] != shear[1]:
                x = -shear[0] * piece.length / (shear[1] - shear[0])
                if low < x < high:
                    values.append(piece.at(x)[which])
        return min(values), max(values)

    def moment(self, which: int, x: float, left: bool = False) -> float:
        for piece in self.pieces:
            end = piece.start + piece.length
            if x < end - 1e-12 or (left and x <= end + 1e-12) or piece is self.pieces[-1]:
                return piece.at(x - piece.start)[which]
        raise AssertionError

    def column(self, which: int, first: float, last: float) -> str:
        """Which column of Table B.3 the loads between two held places ask for."""
        inside = [p for p in self.pieces if p.start >= first - 1e-9 and p.start + p.length <= last + 1e-9]
        shears = [p.Vz if which == 1 else p.Vy for p in inside]
        scale = max((abs(v) for pair in shears for v in pair), default=0.0)
        low, high = self.peak(which, first, last)
        bows = [abs(a - b) * piece.length / 8 for (a, b), piece in zip(shears, inside)]
        spread = any(bow > 1e-6 * max(-low, high) for bow in bows)
        jumps = any(abs(shears[i][1] - shears[i + 1][0]) > 1e-9 * scale for i in range(len(shears) - 1))
        return "udl" if spread and not jumps else "point" if jumps and not spread else "both" if jumps else "none"


def section_of(name: str, made: str = "") -> ec3.Section:
    """A section of the catalogue or a parametric one, by its dimensions and gross properties."""
    one = kx.sections[name]
    d = {symbol: value.value for symbol, value in one.dimensions.items()}
    p = {symbol: value.value for symbol, value in one.properties.items()}
    family = name.split()[0]
    made = made or ("formed" if family.startswith("CF") else "welded" if family in ("I", "GI", "BOX", "TUBE", "C", "TEE") else "rolled")
    shape = {"I": "I", "RHS": "RHS", "CHS": "CHS", "channel": "channel", "tee": "tee"}[one.shape]
    t = d["t"]
    b = d.get("B", d["D"])
    T = d.get("T", t)
    Wpl_y, Wpl_z = p["Sxx"], p["Syy"]
    r = d.get("r", 0.0)
    if shape == "tee":
        Wpl_y = ec3.plastic_modulus([(0.0, T, b), (T, d["D"], t)], r, T)
    if shape == "channel":
        Wpl_z = ec3.plastic_modulus([(0.0, t, d["D"]), (t, b, 2 * T)], r, t)
    return ec3.Section(
        shape, made, d["D"], b, d.get("B2", b), t, T, d.get("T2", T), d.get("r", 0.0), p["A"], p["Ixx"], p["Iyy"], p["Zxx"], p["Zyy"],
        Wpl_y, Wpl_z, p["J"], p.get("Iw", 0.0), p["Ybar"], p["Xbar"],
    )


CATALOGUE = {
    "I": ["UB", "UC", "UBP", "IPE", "HEA", "HEB", "HEM"],
    "hot": ["RHS", "SHS", "CHS"],
    "cold": ["CFRHS", "CFSHS", "CFCHS"],
    "channel": ["PFC", "UPE"],
    "tee": ["T"],
}
NAMES = {kind: [name for name in kx.sections if name.split()[0] in families] for kind, families in CATALOGUE.items()}
KINDS = ["I", "I", "I", "welded I", "welded I", "unequal I", "unequal I", "hot", "hot", "cold", "box", "tube", "channel", "welded channel", "tee", "welded tee"]


def random_name(rng: random.Random, kind: str) -> str:
    if kind in NAMES:
        return rng.choice(NAMES[kind])
    t = rng.choice([4, 5, 6, 8, 10, 12, 15, 20, 25, 40, 50])
    tw = rng.choice([4, 5, 6, 8, 10, 12, 15, 20])
    h = rng.randrange(120, 1500, 10)
    b = rng.randrange(60, 600, 10)
    if kind == "welded I":
        return f"I {max(h, 3 * t)}x{max(b, 3 * tw)}x{tw}x{t}"
    if kind == "unequal I":
        other = rng.choice([6, 8, 10, 12, 15, 20, 30])
        return f"GI {max(h, 3 * (t + other))}x{max(b, 3 * tw)}x{max(rng.randrange(60, 600, 10), 3 * tw)}x{tw}x{t}x{other}"
    if kind == "box":
        return f"BOX {max(h, 5 * t)}x{max(b, 5 * tw)}x{tw}x{min(t, 25)}"
    if kind == "tube":
        return f"TUBE {h}x{min(t, 20)}"
    if kind == "welded channel":
        return f"C {max(min(h, 600), 3 * t)}x{max(min(b, 200), 3 * tw)}x{tw}x{min(t, 25)}"
    if kind == "welded tee":
        return f"TEE {rng.randrange(60, 400, 5)}x{max(b, 3 * tw)}x{tw}x{min(t, 20)}"
    raise AssertionError(kind)


def random_case(rng: random.Random, kinds: list[str] | None = None, simple: bool = False) -> Case:
    """A member between held ends, with what acts scaled so that utilisations lie around 1."""
    kind = rng.choice(kinds or KINDS)
    name = random_name(rng, kind)
    section = section_of(name)
    grade = rng.choice(["S235", "S275", "S355", "S355", "S420", "S460"])
    annex = rng.choice(["uk", "uk", "recommended"])
    length = rng.choice([rng.uniform(0.4, 3.0), rng.uniform(1.0, 12.0), rng.uniform(3.0, 25.0)]) * min(1.0, section.h / 0.3 + 0.3)
    count = rng.choice([1, 1, 1, 2, 2, 3])
    cuts = sorted(rng.uniform(0.05, 0.95) for _ in range(count - 1))
    stations = [0.0, *(length * cut for cut in cuts), length]
    held = [HELD, *(rng.choice([FREE, FREE, BRACED, HELD]) for _ in range(count - 1)), HELD]
    fy = 300e6
    share = rng.choice([0.1, 0.3, 0.6, 1.0])

    def size() -> float:
        return share * rng.choice([0.0, 0.2, 1.0, 1.0]) * rng.uniform(-1, 1)

    which = rng.randrange(16)
    force = section.A * 200e6 * size() if which & 1 or which == 0 else 0.0
    jump = force * rng.uniform(-1.5, 1.5) if rng.random() < 0.25 else 0.0
    has_y, has_z = bool(which & 2), bool(which & 4)
    jump = max(-0.6 * section.A * fy, min(0.6 * section.A * fy, force + jump)) - force  # Table 5.2 says nothing beyond A fy
    spread = rng.random() < 0.4
    points = rng.random() < 0.5
    pieces = []
    My = section.Wel_y * fy * size() if has_y else 0.0
    Mz = section.Wel_z * fy * size() if has_z else 0.0
    wy = section.Wel_y * fy * size() * 8 / length**2 if has_y and spread else 0.0
    wz = section.Wel_z * fy * size() * 8 / length**2 if has_z and spread and rng.random() < 0.5 else 0.0
    Vz = (section.Wel_y * fy * size() - My) / length if has_y else 0.0
    Vy = (section.Wel_z * fy * size() - Mz) / length if has_z else 0.0
    if rng.random() < 0.1:
        Vz = section.hw * section.tw * 150e6 * rng.uniform(-1, 1)
    for i in range(count):
        L = stations[i + 1] - stations[i]
        N = force + (jump if i else 0.0)
        N = 0.0 if abs(N) < 1e-4 * section.A * fy else N  # the library takes forces within 1e-6 of the resistance as rounding
        piece = Piece(stations[i], L, N, (Vz, Vz + wy * L), My, (Vy, Vy + wz * L), Mz)
        pieces.append(piece)
        _, My, Vz, Mz, Vy = piece.at(L)
        if points and has_y:
            Vz += section.Wel_y * fy * size() * 4 / length
        if points and has_z and rng.random() < 0.5:
            Vy += section.Wel_z * fy * size() * 4 / length
    options: dict[str, str] = {}
    if not simple:
        options = rng.choice([{}, {}, {}, {"mcr": "c1"}, {"interaction": "annex-a"}, {"interaction": "general"}, {"ltb": "simplified"}])
    member = kx.Member(name, grade, title="random", type=section.made)
    for x, what in zip(stations, held):
        member.add_point(x, what)
    for piece in pieces:
        left, right = piece.ends
        member.add_sub_span(
            forces_left=(left[0], left[4], left[2]), forces_right=(right[0], right[4], right[2]),
            moments_left=(0.0, left[1], left[3]), moments_right=(0.0, right[1], right[3]),
        )
    return Case(section, name, grade, held, pieces, annex, options, member)


def is_finite(case: Case) -> bool:
    return all(math.isfinite(v) for piece in case.pieces for end in piece.ends for v in end)
