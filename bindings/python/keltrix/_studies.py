"""How members buckle, what sections carry, and which section would do."""

from __future__ import annotations

import json
import math
from collections.abc import Sequence
from dataclasses import dataclass
from typing import Any, NoReturn

import numpy as np
import numpy.typing as npt

from . import _keltrix
from ._beams import Beam
from ._cells import numbers_of
from ._checks import source_of
from ._errors import Diagnostic, InputError, input_error
from ._members import Member
from ._results import Source
from ._settings import OptionValue, make_settings

__all__ = ["Buckling", "Candidate", "Design", "buckling", "capacity", "design"]

_SHAPE = [("x", "f8"), ("v", "f8"), ("phi", "f8"), ("flange_1", "f8"), ("flange_2", "f8")]


def _require_readable(source: Source) -> None:
    """InputError where the text has errors, or holds no member."""
    found = json.loads(_keltrix.read(source.text, source.name, source.settings.native))
    diagnostics = [Diagnostic(**record) for record in found["defects"]]
    if any(one.severity == "error" for one in diagnostics):
        raise input_error(diagnostics)
    if not found["members"]:
        raise InputError(f"{source.name}: holds no member")


class Buckling:
    """How a member buckles elastically under its forces, all multiplied by one factor.

    Attributes
    ----------
    title : str
        Of the member; of a beam with the combination.
    factor : float or None
        By which all forces are multiplied when the member buckles; None where nothing buckles, the member is not
        held, or it cannot be analysed.
    error : float or None
        Estimated relative error of the factor.
    factor_reversed : float or None
        The same if all forces turn.
    Mcr : float or None
        Critical moment, N.m.
    Ncr : float or None
        Critical axial force, N.
    held : bool or None
        False where the restraints leave a motion that nothing resists; None where it cannot be analysed.
    refusal : str or None
        Why it cannot be analysed.
    shape : numpy.ndarray
        Buckled shape of the governing unit, or its free motion, as a structured array: "x" in m along the member,
        "v" sideways, "phi" in radians, "flange_1", "flange_2" sideways; the largest displacement is 1. Empty where
        nothing buckles.
    others : tuple of Buckling
        Of a beam the other combinations, in their order.
    """

    def __init__(self, record: dict[str, Any], others: tuple[Buckling, ...] = ()) -> None:
        self._record = record
        self.title: str = record["title"]
        self.factor: float | None = record["lambda_cr"]
        self.error: float | None = record["error"]
        self.factor_reversed: float | None = record["lambda_negative"]
        self.Mcr: float | None = record["Mcr"]
        self.Ncr: float | None = record["Ncr"]
        self.held: bool | None = record["held"]
        self.refusal: str | None = record["refusal"]
        self.others = others

    @property
    def shape(self) -> npt.NDArray[np.void]:
        """The buckled shape; see the class."""
        governing = self._record["governing"]
        if governing is None:
            return np.zeros(0, dtype=_SHAPE)
        unit = self._record["units"][governing]
        samples = unit["shape"] or unit["free_motion"]
        names = [name for name, _ in _SHAPE]
        return np.array([tuple(sample[name] for name in names) for sample in samples], dtype=_SHAPE)

    def to_dict(self) -> dict[str, Any]:
        """As the command line's ``buckling --format json`` has it."""
        return dict(self._record)

    def _rank(self) -> tuple[int, float]:
        # The worst first: not analysed, not held, the smallest factor, nothing buckles.
        if self.refusal is not None:
            return 0, 0.0
        if not self.held:
            return 1, 0.0
        return (2, self.factor) if self.factor is not None else (3, 0.0)

    def __bool__(self) -> NoReturn:
        raise TypeError("a buckling analysis has no truth value: use .factor, .held and .refusal")

    def __repr__(self) -> str:
        if self.refusal is not None:
            return f"<Buckling of {self.title}: {self.refusal}>"
        if not self.held:
            return f"<Buckling of {self.title}: not held>"
        if self.factor is None:
            return f"<Buckling of {self.title}: nothing buckles>"
        return f"<Buckling of {self.title}: at {self.factor:.4g} times its forces>"


def buckling(
    subject: Beam | Member | str | bytes,
    *,
    continuity: bool = False,
    code: str | None = "",
    annex: str = "",
) -> Buckling:
    """The elastic critical load of a member, or of a beam under the combination in which it is lowest.

    Parameters
    ----------
    subject : Beam, Member, str or bytes
        One member or beam.
    continuity : bool
        The whole member at once, instead of each length between sections that are held.
    code : str or None
        Design code that gives the moduli and, of a beam, the combinations; without it the first one. With None the
        moduli are those of the grade or of steel.
    annex : str
        Its national annex.

    Returns
    -------
    Buckling
        A combination that cannot be analysed, or is not held, is lower than any other.

    Raises
    ------
    InputError
        Where the member cannot be read.

    Examples
    --------
    >>> import keltrix as kx
    >>> beam = kx.Beam(spans=[9.0], section="UB 457x191x67", grade="S275")
    >>> shape = kx.buckling(beam.add_udl(5.0, case="permanent")).shape
    >>> float(shape["x"][-1]), float(abs(shape["flange_1"]).max())
    (9.0, 1.0)
    """
    source = source_of(subject, make_settings(code or "", annex, False, False, {}))
    _require_readable(source)
    text = _keltrix.buckling(source.text, source.name, source.settings.native, code is not None, continuity)
    records = json.loads(text)
    if not isinstance(subject, Beam) and len(records) > 1 and len({one["file"] for one in records}) == 1:
        raise InputError(f"{source.name}: holds {len(records)} members where one is expected")
    found = [Buckling(record) for record in records]
    worst = min(found, key=Buckling._rank)
    worst.others = tuple(one for one in found if one is not worst)
    return worst


def capacity(
    section: str,
    grade: str = "",
    *,
    lengths: float | Sequence[float] | npt.NDArray[np.float64],
    code: str = "",
    annex: str = "",
    type: str = "",
    C1: float | None = None,
) -> list[dict[str, Any]]:
    """The capacity table of a section.

    Parameters
    ----------
    section : str
        Designation of the catalogue, or a parametric description.
    grade : str
        Steel grade; without it the first of the design code.
    lengths : float or sequence of floats
        Effective lengths in m.
    code, annex : str
        Id of the design code and its national annex; without them the first ones.
    type : str
        "rolled", "welded" or "formed"; without it as the catalogue has it.
    C1 : float, optional
        Shape of the moments, 1 to 5, for design codes whose tables take it.

    Returns
    -------
    list of dict
        For each length "LE" and the capacities by their symbols, in N and N.m, as the command line's
        ``capacity --format json`` has them. None where the design code gives none.

    Raises
    ------
    InputError
        Where there is no such section, grade, code or annex, or no table of it.

    Examples
    --------
    >>> import keltrix as kx
    >>> rows = kx.capacity("UB 457x191x67", "S275", lengths=[2.0, 5.0])
    >>> [row["LE"] for row in rows]
    [2.0, 5.0]
    """
    values = numbers_of(lengths, "lengths")
    settings = make_settings(code, annex, False, False, {})
    text = _keltrix.capacity(section, type, grade, values, settings.native, C1)
    return list(json.loads(text))


@dataclass(frozen=True)
class Candidate:
    """A section that was offered to a member.

    Attributes
    ----------
    section : str
    mass_per_metre : float
        kg/m.
    depth : float
        m.
    status : str
        "pass", "fail" or "not checked".
    utilisation : float
        Not-a-number where it could not be checked.
    governing : str
        Rule, clause and place of the largest utilisation, or why it could not be checked.
    """

    section: str
    mass_per_metre: float
    depth: float
    status: str
    utilisation: float
    governing: str

    def __bool__(self) -> NoReturn:
        raise TypeError("a candidate has no truth value: compare its status, as candidate.status == 'pass'")


@dataclass(frozen=True)
class Design:
    """The sections with which a member passes, the lightest or shallowest first.

    Attributes
    ----------
    chosen : str or None
        The first that passes; None where none does.
    passing : tuple of Candidate
        As many as were asked for.
    failing : tuple of Candidate
        The last ones in front of the first that passes.
    not_checked : tuple of Candidate
        Those that could not be checked: one of them might be lighter.
    """

    chosen: str | None
    passing: tuple[Candidate, ...]
    failing: tuple[Candidate, ...]
    not_checked: tuple[Candidate, ...]

    def __bool__(self) -> NoReturn:
        raise TypeError("a design has no truth value: use .chosen, which is None where no section passes")


def _candidates(records: list[dict[str, Any]]) -> tuple[Candidate, ...]:
    return tuple(
        Candidate(
            one["section"],
            one["mass_per_metre"],
            one["depth"],
            one["status"],
            math.nan if one["overall"] is None else one["overall"],
            one["governing"],
        )
        for one in records
    )


def design(
    subject: Beam | Member | str | bytes,
    family: str | Sequence[str],
    *,
    by: str = "mass",
    max_depth: float | None = None,
    count: int = 6,
    code: str = "",
    annex: str = "",
    **options: OptionValue,
) -> Design:
    """The lightest or shallowest section of families with which a member or beam passes.

    Each section of a beam is tried with its own weight and stiffness; deflections count.

    Parameters
    ----------
    subject : Beam, Member, str or bytes
        One member or beam.
    family : str or sequence of str
        Families of the catalogue.
    by : str
        "mass" or "depth": which sections come first.
    max_depth : float, optional
        Only sections of at most this depth, m.
    count : int
        How many passing sections are looked for.
    code, annex : str
        Id of the design code and its national annex; without them the first ones.
    **options
        Options of the design code, with underscores in the place of hyphens.

    Returns
    -------
    Design

    Raises
    ------
    InputError
        Where the member cannot be read, or there is no such family, code, annex or option.

    Examples
    --------
    >>> import keltrix as kx
    >>> beam = kx.Beam(spans=[6.0], section="UB 457x191x67", grade="S275")
    >>> beam.add_udl(5.0, case="permanent").add_udl(10.0, case="imposed").restrain("top")
    <Beam Beam: UB 457x191x67 in S275>
    >>> found = kx.design(beam, ["UB", "UC"], max_depth=0.31, count=1)
    >>> found.chosen == found.passing[0].section, found.passing[0].status
    (True, 'pass')
    """
    source = source_of(subject, make_settings(code, annex, False, False, options))
    _require_readable(source)
    families = [family] if isinstance(family, str) else list(family)
    text = _keltrix.design(
        source.text,
        source.name,
        source.settings.native,
        families,
        by,
        None if max_depth is None else float(max_depth),
        count,
    )
    records = json.loads(text)
    if len(records) != 1:
        raise InputError(f"{source.name}: holds {len(records)} members where one is expected")
    record = records[0]
    return Design(
        record["chosen"],
        _candidates(record["passing"]),
        _candidates(record["lighter_failing"]),
        _candidates(record["not_checked"]),
    )
