"""Members from a model of a frame in Python, by what its objects have and not by what they are."""

from __future__ import annotations

import math
from collections.abc import Iterator, Sequence
from typing import Any

from ._errors import InputError
from ._imports import Imported, from_table

__all__ = ["from_pynite"]

_FORCES = {"N": 1.0, "kN": 1e3, "MN": 1e6, "lbf": 4.4482216152605, "kip": 4448.2216152605}
_LENGTHS = {"m": 1.0, "cm": 1e-2, "mm": 1e-3, "in": 0.0254, "ft": 0.3048}

# A place just left of another one, in shares of the member's length.
_LEFT = 1e-7


def _factor(units: dict[str, float], what: str, unit: str) -> float:
    if unit not in units:
        raise InputError(f"{what}: got {unit!r}, expected one of {', '.join(units)}")
    return units[unit]


def _entry(model: Any, names: Sequence[str], key: str, what: str) -> Any:
    """An entry of a dictionary of the model, which has different names in its versions."""
    for name in names:
        table = getattr(model, name, None)
        if table is None:
            continue
        if key not in table:
            raise InputError(f"{what}: got {key!r}, expected one of {', '.join(map(str, table))}")
        return table[key]
    raise InputError(f"the model has no {' or '.join(names)}: it is no model of a frame as from_pynite reads it")


def _number(value: Any, what: str) -> float:
    try:
        number = float(value)
    except (TypeError, ValueError):
        raise InputError(f"{what}: got {value!r}, expected a number; was the model analysed?") from None
    if not math.isfinite(number):
        raise InputError(f"{what}: got {number!r}, expected a finite number; was the model analysed?")
    return number


def _breaks(member: Any) -> Iterator[float]:
    """Places at which forces may jump or change their law: loads, and the ends of the pieces of a member."""
    for load in getattr(member, "PtLoads", ()):
        yield _number(load[2], "place of a point load")
    for load in getattr(member, "DistLoads", ()):
        for place in load[3:5]:
            if place is not None:
                yield _number(place, "end of a distributed load")
    pieces = getattr(member, "sub_members", None) or {}
    at = 0.0
    for piece in list(pieces.values())[:-1]:
        at += _number(piece.L(), "length of a piece")
        yield at


def _places(member: Any, length: float, stations: int) -> tuple[list[float], set[float]]:
    """All places in their order, and those with a value on each side."""
    least = 1e-6 * length
    jumps: list[float] = []
    for place in sorted(_breaks(member)):
        if least < place < length - least and (not jumps or place - jumps[-1] > least):
            jumps.append(place)
    regular = [length * i / stations for i in range(stations + 1)]
    places = jumps + [x for x in regular if all(abs(x - jump) > least for jump in jumps)]
    return sorted(places), set(jumps)


class _Station:
    """The actions at one place as a member file has them, the minor-axis moment still with the model's sign; N and m."""

    def __init__(self, member: Any, x: float, combination: str, force: float, length: float) -> None:
        def got(value: Any, what: str) -> float:
            return _number(value, f"{what} of combination {combination!r}")

        # Forces and moments of the model are those of a face that looks against x: y up the web, z to the right of who looks along x.
        self.N = -force * got(member.axial(x, combination), "axial")
        self.Fz = -force * got(member.shear("Fy", x, combination), "shear Fy")
        self.Fy = force * got(member.shear("Fz", x, combination), "shear Fz")
        self.T = -force * length * got(member.torque(x, combination), "torque")
        self.Myy = force * length * got(member.moment("Mz", x, combination), "moment Mz")
        self.Mzz = force * length * got(member.moment("My", x, combination), "moment My")

    def values(self, minor: float) -> tuple[float, ...]:
        return self.N, self.Fy, self.Fz, self.T, self.Myy, minor * self.Mzz


def _minor_sign(lines: list[list[tuple[float, _Station]]], asked: float) -> float:
    """By what the model's My is multiplied: versions differ in its sign, and its shears tell. Where they do not, what is asked for, or 0."""
    off = {1.0: 0.0, -1.0: 0.0}
    largest = 0.0
    change = 0.0
    for line in lines:
        for (x, a), (y, b) in zip(line, line[1:]):
            by_shears = -(a.Fy + b.Fy) / 2.0 * (y - x)
            change = max(change, abs(by_shears))
            largest = max(largest, abs(a.Mzz), abs(b.Mzz))
            for sign in off:
                off[sign] = max(off[sign], abs(sign * (b.Mzz - a.Mzz) - by_shears))
    if largest == 0.0:
        return 1.0
    if change < 1e-3 * largest:
        return asked
    told = 1.0 if off[1.0] <= off[-1.0] else -1.0
    if asked == -told:
        raise InputError("minor_sags: the shears of the model tell the other sign of My, under which it changes as they say")
    return told


def from_pynite(
    model: Any,
    member: str,
    combinations: str | Sequence[str],
    *,
    force: str,
    length: str,
    grade: str,
    start: str,
    end: str,
    section: str | None = None,
    restraints: str = "",
    load_height: float = 0.0,
    stations: int = 20,
    minor_sags: str | None = None,
) -> Imported:
    """Makes members of one member of a model of a frame that was analysed, one for each combination.

    Nothing is imported: the model is taken by what it has. It is read in the layout of PyNite's ``FEModel3D``:
    ``model.members[name]`` (or ``model.Members``) with the methods ``L()``, ``axial(x, combination)``,
    ``shear("Fy" | "Fz", x, combination)``, ``moment("Mz" | "My", x, combination)`` and ``torque(x, combination)``, and
    ``model.load_combos`` (or ``model.LoadCombos``). Where the member has ``PtLoads``, ``DistLoads`` and
    ``sub_members``, their places become stations, with the forces on both sides.

    Signs are those of that layout. Local x runs along the member, y up the web and z to the right of who looks along x.
    Axial forces are above zero in compression; Fy and Fz are above zero at the left support of a beam loaded against y
    and z; a beam that sags has Mz below zero. My differs from version to version: its shears tell which it is, and
    where they do not, `minor_sags` has to. In both planes moments must change as the shears say, or it is an error, so
    that forces of a second-order analysis are refused where they matter.

    Parameters
    ----------
    model : object
        The model, analysed.
    member : str
        Name of its member.
    combinations : str or sequence of str
        Names of its load combinations.
    force, length : str
        The units of the model: "N", "kN", "MN", "lbf" or "kip", and "m", "cm", "mm", "in" or "ft".
    grade : str
        Steel grade.
    start, end : str
        What is held at the ends, in the words of member files: "Pinned", "Fixed", "Free" ... The model does not know
        what holds flanges and twist.
    section : str, optional
        Designation of the catalogue, or a parametric description; without it the name of the model's section.
    restraints : str
        What is held elsewhere, m from the start: "Top flange lateral@3 | Bottom flange lateral@0:6".
    load_height : float
        Height of all loads above the shear centre, m.
    stations : int
        Pieces of equal length between stations.
    minor_sags : str, optional
        "below zero" or "above zero": the sign of My under loads against z, where no shear tells. It is an error where
        they tell the other one.

    Returns
    -------
    Imported

    Raises
    ------
    InputError
        For a name that there is not, a model that was not analysed, and as `from_table`.

    Examples
    --------
    A stand-in for a model, with a beam of 6 m under 20 kN/m:

    >>> from types import SimpleNamespace as Thing
    >>> beam = Thing(
    ...     L=lambda: 6.0, axial=lambda x, case: 0.0, torque=lambda x, case: 0.0,
    ...     shear=lambda way, x, case: 60.0 - 20.0 * x if way == "Fy" else 0.0,
    ...     moment=lambda way, x, case: 10.0 * x * x - 60.0 * x if way == "Mz" else 0.0,
    ... )
    >>> model = Thing(members={"B1": beam}, load_combos={"1.4D + 1.6L": None})
    >>> import keltrix as kx
    >>> made = kx.from_pynite(model, "B1", "1.4D + 1.6L", force="kN", length="m", section="UB 457x191x67",
    ...                       grade="S275", start="Pinned", end="Pinned", restraints="Top flange lateral@0:6")
    >>> result = made.check()[0]
    >>> result.title, result.status, result.summary
    ('B1: 1.4D + 1.6L', 'pass', 'moment capacity, major axis (4.2.5) at 3 m')
    """
    to_newtons = _factor(_FORCES, "force", force)
    to_metres = _factor(_LENGTHS, "length", length)
    if isinstance(stations, bool) or not isinstance(stations, int) or not 1 <= stations <= 1000:
        raise InputError(f"stations: got {stations!r}, expected a whole number from 1 to 1000")
    signs = {None: 0.0, "below zero": 1.0, "above zero": -1.0}
    if minor_sags not in signs:
        raise InputError(f"minor_sags: got {minor_sags!r}, expected 'below zero' or 'above zero'")
    found = _entry(model, ("members", "Members"), member, "member")
    names = [combinations] if isinstance(combinations, str) else list(combinations)
    for name in names:
        _entry(model, ("load_combos", "LoadCombos"), name, "combination")
        if names.count(name) > 1:
            raise InputError(f"combination: got {name!r} twice")
    for method in ("L", "axial", "shear", "moment", "torque"):
        if not callable(getattr(found, method, None)):
            raise InputError(f"the member of the model has no method {method}: it is none as from_pynite reads it")
    if section is None:
        section = getattr(getattr(found, "section", None), "name", None)
        if not isinstance(section, str):
            raise InputError("section: the member of the model names none, so it has to be given")
    total = _number(found.L(), "length of the member")
    if total <= 0.0:
        raise InputError(f"length of the member: got {total!r}, expected a length above 0")
    members = {
        "member": [member],
        "section": [section],
        "grade": [grade],
        "length [m]": [total * to_metres],
        "start": [start],
        "end": [end],
        "restraints": [restraints],
        "load-height [m]": [load_height],
    }

    def made(pieces: int) -> Imported:
        lines = [_line(found, total, name, pieces, to_newtons, to_metres) for name in names]
        return from_table(_forces(member, names, lines, signs[minor_sags]), members, "member-file")

    try:
        return made(stations)
    except InputError:
        finer = min(1000, 10 * stations)
        try:
            made(finer)
        except InputError:
            finer = stations
        if finer == stations:
            raise
    raise InputError(
        f"stations: got {stations}, expected more, for example {finer}: the forces are curved too much between these to balance"
    )


def _forces(
    member: str, names: list[str], lines: list[list[tuple[float, _Station]]], asked: float
) -> dict[str, list[Any]]:
    """The table of forces, with the sign of My that the shears tell."""
    minor = _minor_sign(lines, asked)
    if minor == 0.0:
        raise InputError(
            "My: no shear tells its sign, which differs from version to version; expected minor_sags to say it"
        )
    rows = [
        (member, name, x, *station.values(minor)) for name, line in zip(names, lines) for x, station in line
    ]
    captions = ("member", "case", "station [m]", "N [N]", "Vy [N]", "Vz [N]", "T [Nm]", "My [Nm]", "Mz [Nm]")
    return {caption: [row[i] for row in rows] for i, caption in enumerate(captions)}


def _line(
    member: Any, total: float, combination: str, stations: int, to_newtons: float, to_metres: float
) -> list[tuple[float, _Station]]:
    """The stations of one combination with their places in m, two at a place where anything jumps."""
    places, jumps = _places(member, total, stations)

    def at(x: float) -> _Station:
        return _Station(member, x, combination, to_newtons, to_metres)

    line = []
    for x in places:
        here = at(x)
        if x in jumps:
            left = at(x - _LEFT * total)
            if left.values(1.0) != here.values(1.0):
                line.append((x * to_metres, left))
        line.append((x * to_metres, here))
    return line
