"""Members whose forces are known."""

from __future__ import annotations

from collections.abc import Sequence
from typing import Any

import numpy as np

from . import _keltrix
from ._errors import InputError
from ._results import Result
from ._settings import OptionValue, text_of
from ._texts import Checked

__all__ = ["Member"]

Vector = Sequence[float]
_ZERO = (0.0, 0.0, 0.0)


class Member(Checked):
    """A member of one section between points, with the forces and moments between them, as a member file has it.

    Positions are in m from the member's start, forces in N, moments in N.m. Tension is above zero, and **a member
    that sags has major-axis moments below zero**; ``dMyy/dx = Fz`` and ``dMzz/dx = -Fy``.

    Parameters
    ----------
    section : str
        Designation of the catalogue, or a parametric description.
    grade : str
        A grade of the design code.
    title : str
        Name of the member; its commas become semicolons.
    type : str
        "rolled", "welded" or "formed"; without it as the catalogue has it.
    net_to_gross : float
        Net area over gross area.
    plastic_to_elastic : float
        Limit of plastic over elastic modulus: 1.2, or 1.5 for what is no simply supported beam or cantilever.
    shear_lag : float
        For design codes that use it.
    effective_lengths : sequence of three floats, optional
        Major, minor, lateral-torsional, in m, in the place of those that follow from the restraints; below zero,
        minus a factor of the member's length.
    moment_factor : float, optional
        Equivalent uniform moment factor in the place of the computed one.

    Examples
    --------
    5 m between forks under 10 kN at mid-span:

    >>> import keltrix as kx
    >>> member = kx.Member("UB 457x191x67", "S275", title="Beam")
    >>> member.add_point(0.0, "Pinned").add_point(2.5).add_point(5.0, "Pinned")
    <Member Beam: UB 457x191x67 in S275, 3 points>
    >>> member.add_sub_span(forces_left=(0, 0, -5e3), forces_right=(0, 0, -5e3), moments_right=(0, -12.5e3, 0))
    <Member Beam: UB 457x191x67 in S275, 3 points>
    >>> member.add_sub_span(forces_left=(0, 0, 5e3), forces_right=(0, 0, 5e3), moments_left=(0, -12.5e3, 0))
    <Member Beam: UB 457x191x67 in S275, 3 points>
    >>> member.check().status
    'pass'
    """

    _WORD = "member"
    _FILE = "member"

    def __init__(
        self,
        section: str,
        grade: str,
        *,
        title: str = "Member",
        type: str = "",
        net_to_gross: float = 1.0,
        plastic_to_elastic: float = 1.2,
        shear_lag: float = 0.7,
        effective_lengths: Sequence[float] | None = None,
        moment_factor: float | None = None,
    ) -> None:
        self.section = section
        self.grade = grade
        self.title = title
        self.type = type
        self.net_to_gross = net_to_gross
        self.plastic_to_elastic = plastic_to_elastic
        self.shear_lag = shear_lag
        self.effective_lengths = effective_lengths
        self.moment_factor = moment_factor
        self._points: list[tuple[float, float, str]] = []
        self._sub_spans: list[tuple[list[float], str]] = []
        self._name = self._FILE

    def add_point(self, position: float, holds: str = "Free", *, load_height: float = 0.0) -> Member:
        """Adds a point; points come in the order of their positions, the first at 0.

        Parameters
        ----------
        position : float
            m from the start.
        holds : str
            What is held there in words: "Pinned", "Fixed", "Top flange lateral", "F1L TR" ...
        load_height : float
            Height of the load above the shear centre, m.

        Returns
        -------
        Member
            The member itself.
        """
        self._require_own()
        self._points.append((float(position), float(load_height), holds))
        return self

    def add_sub_span(
        self,
        *,
        forces_left: Vector = _ZERO,
        forces_right: Vector = _ZERO,
        moments_left: Vector = _ZERO,
        moments_right: Vector = _ZERO,
        holds: str = "Free",
        load_height: float = 0.0,
    ) -> Member:
        """Adds the piece between two points; there is one less than there are points.

        Parameters
        ----------
        forces_left, forces_right : sequence of three floats
            Fx, Fy, Fz at its ends, N.
        moments_left, moments_right : sequence of three floats
            Mxx, Myy, Mzz at its ends, N.m.
        holds : str
            What is held all along, in words.
        load_height : float
            Height of the load above the shear centre, m.

        Returns
        -------
        Member
            The member itself.
        """
        self._require_own()
        numbers: list[float] = []
        for name, vector in (
            ("forces_left", forces_left),
            ("forces_right", forces_right),
            ("moments_left", moments_left),
            ("moments_right", moments_right),
        ):
            values = [float(value) for value in vector]
            if len(values) != 3:
                raise InputError(f"{name}: got {len(values)} numbers, expected three")
            numbers += values
        self._sub_spans.append(([*numbers, float(load_height)], holds))
        return self

    def _made(self) -> bytes:
        lengths = self.effective_lengths
        if lengths is not None:
            lengths = [float(length) for length in lengths]
            if len(lengths) != 3:
                raise InputError(f"effective_lengths: got {len(lengths)} numbers, expected three")
        return _keltrix.member_text(
            text_of(self.title, "title"),
            text_of(self.section, "section"),
            text_of(self.type, "type"),
            text_of(self.grade, "grade"),
            [float(self.net_to_gross), float(self.plastic_to_elastic), float(self.shear_lag)],
            lengths,
            None if self.moment_factor is None else float(self.moment_factor),
            np.array([point[:2] for point in self._points], dtype=float).reshape(-1, 2),
            [text_of(point[2], "restraint") for point in self._points],
            np.array([numbers for numbers, _ in self._sub_spans], dtype=float).reshape(-1, 13),
            [text_of(words, "restraint") for _, words in self._sub_spans],
        ).encode()

    def check(
        self,
        code: str = "",
        annex: str = "",
        *,
        allow_gaps: bool = False,
        strict: bool = False,
        **options: OptionValue,
    ) -> Result:
        """Checks the member to a design code.

        Parameters
        ----------
        code : str
            Id of the design code (`codes`); without it the first one.
        annex : str
            Its national annex; without it the first one.
        allow_gaps : bool
            Numbers need not start at 1, nor positions at 0.
        strict : bool
            Every warning is an error.
        **options
            Options of the design code, with underscores in the place of hyphens: a flag is True, a length is in m.

        Returns
        -------
        Result

        Raises
        ------
        InputError
            Where the member cannot be read, the design code does not take it, or there is no such code, annex or
            option.
        """
        return self._source(code, annex, allow_gaps, strict, options).result()

    def __repr__(self) -> str:
        if self._given is not None:
            return f"<Member from {self._name}>"
        return f"<Member {self.title}: {self.section} in {self.grade}, {len(self._points)} points>"
