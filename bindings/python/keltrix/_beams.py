"""Beams and columns from their loads."""

from __future__ import annotations

import re
from collections.abc import Mapping, Sequence
from typing import Any, Union

import numpy as np

from ._cells import is_number
from ._errors import InputError
from ._results import Result
from ._settings import OptionValue, bytes_of
from ._texts import Checked

__all__ = ["Beam"]

Places = Union[float, Sequence[float]]

_FLANGES = {
    "top": "Top flange lateral",
    "bottom": "Bottom flange lateral",
    "both": "Top and Bottom flange lateral",
}


def _key(name: str) -> str:
    return name if re.fullmatch(r"[A-Za-z0-9_-]+", name) else _text(name)


def _text(text: str) -> str:
    def escaped(match: re.Match[str]) -> str:
        character = match.group()
        return "\\" + character if character in '"\\' else f"\\u{ord(character):04X}"

    return '"' + re.sub(r'["\\\x00-\x1f\x7f]', escaped, text) + '"'


def _value(value: Any, key: str) -> str:
    """A value of TOML."""
    if isinstance(value, np.ndarray) and value.ndim == 0 and not isinstance(value, np.ma.MaskedArray):
        value = value[()]
    if isinstance(value, (bool, np.bool_)):
        return "true" if value else "false"
    if is_number(value):
        return str(int(value)) if isinstance(value, (int, np.integer)) else repr(float(value))
    if isinstance(value, str):
        return _text(value)
    if isinstance(value, Mapping):
        return "{ " + ", ".join(f"{_key(str(k))} = {_value(v, key)}" for k, v in value.items()) + " }"
    if isinstance(value, (Sequence, np.ndarray)) and not isinstance(value, (bytes, bytearray, np.ma.MaskedArray)):
        return "[" + ", ".join(_value(one, key) for one in value) + "]"
    raise InputError(f"{key}: got {type(value).__name__}, expected a number, a text, a list or a dictionary")


def _lines(keys: Mapping[str, Any]) -> str:
    """Lines of TOML; keys without a value are left out."""
    return "".join(f"{_key(k)} = {_value(v, k)}\n" for k, v in keys.items() if v is not None)


def _named(keys: Mapping[str, Any]) -> dict[str, Any]:
    """Keys of the beam file from arguments: hyphens are underscores, and a trailing one keeps off Python's words."""
    return {name.rstrip("_").replace("_", "-"): value for name, value in keys.items()}


class Beam(Checked):
    """A beam or column of one section, from spans, supports, restraints and loads, as a beam file has it.

    Lengths are in m, loads in kN, kN/m and kNm, downwards and clockwise above zero; places count from the left end,
    of a column from its foot. Every argument is a key of the beam file, with underscores in the place of hyphens, so
    that ``self_weight=False`` or ``deflection={"total": 250}`` are what the file's ``self-weight`` and ``deflection``
    are. What is wrong with one is said when the beam is checked, with the line of `text`.

    Parameters
    ----------
    section : str
        Designation of the catalogue, or a parametric description.
    grade : str or dict
        A grade of the design code, or strengths of your own: ``{"yield": 280, "ultimate": 420, "modulus": 205000}``
        in N/mm².
    spans : float or sequence of floats, optional
        Spans in m with a support at both ends of each.
    length : float, optional
        Length in m, in the place of spans.
    title : str
        Name of the beam.
    supports : str or list of dict, optional
        What all supports hold, or each support: ``[{"at": 8.0, "holds": "Pinned", "vertical": 20000}]``.
    **keys
        Any other key of the beam file.

    Examples
    --------
    >>> import keltrix as kx
    >>> beam = kx.Beam(spans=[9.0], section="UB 533x210x82", grade="S275", title="Floor beam")
    >>> beam.add_udl(4.0, case="permanent").add_point(45.0, at=[3.0, 6.0], case="imposed").restrain("top", at=[3.0, 6.0])
    <Beam Floor beam: UB 533x210x82 in S275>
    >>> result = beam.check()
    >>> result.passed, result.governing.rule
    (True, 'lateral-torsional buckling')
    """

    _WORD = "beam"
    _FILE = "beam.toml"

    def __init__(
        self,
        section: str,
        grade: str | Mapping[str, float],
        *,
        spans: Places | None = None,
        length: float | None = None,
        title: str = "Beam",
        supports: str | Sequence[Mapping[str, Any]] | None = None,
        **keys: Any,
    ) -> None:
        self.keys: dict[str, Any] = {
            "title": title,
            "section": section,
            "grade": grade,
            "length": length,
            "spans": spans,
            "supports": supports,
            **_named(keys),
        }
        self._tables: dict[str, list[dict[str, Any]]] = {
            "restraint": [],
            "case": [],
            "load": [],
            "combination": [],
        }
        self._name = self._FILE

    def _add(self, table: str, keys: Mapping[str, Any]) -> Beam:
        self._require_own()
        self._tables[table].append(_named(keys))
        return self

    def add_load(self, *, case: str, **keys: Any) -> Beam:
        """Adds a load with the keys of the beam file.

        Parameters
        ----------
        case : str
            Name of its load case. A case whose name is a kind ("permanent", "imposed", "snow", "wind") needs no
            other word; the first load of any other case says its ``kind``.
        **keys
            ``udl``, ``trapezoid``, ``point``, ``moment``, ``axial`` or ``reaction`` with ``at``, ``from_``, ``to``,
            ``kind``, ``category``, ``height``, ``minor``, ``major`` and so on.

        Returns
        -------
        Beam
            The beam itself.
        """
        return self._add("load", {"case": case, **keys})

    def add_udl(
        self, load: float, *, case: str, from_: float | None = None, to: float | None = None, **keys: Any
    ) -> Beam:
        """Adds a uniform load.

        Parameters
        ----------
        load : float
            kN/m, downwards above zero.
        case : str
            Name of its load case, as in `add_load`.
        from_, to : float, optional
            Places in m; without them from the left end and to the right end.
        **keys
            Further keys of a load.

        Returns
        -------
        Beam
            The beam itself.
        """
        return self.add_load(case=case, udl=load, from_=from_, to=to, **keys)

    def add_point(self, load: float, *, at: Places, case: str, **keys: Any) -> Beam:
        """Adds a point load, or the same at several places.

        Parameters
        ----------
        load : float
            kN, downwards above zero.
        at : float or sequence of floats
            Places in m.
        case : str
            Name of its load case, as in `add_load`.
        **keys
            Further keys of a load.

        Returns
        -------
        Beam
            The beam itself.
        """
        return self.add_load(case=case, point=load, at=at, **keys)

    def add_moment(self, moment: float, *, at: Places, case: str, **keys: Any) -> Beam:
        """Adds a moment, or the same at several places.

        Parameters
        ----------
        moment : float
            kNm, clockwise above zero.
        at : float or sequence of floats
            Places in m.
        case : str
            Name of its load case, as in `add_load`.
        **keys
            Further keys of a load.

        Returns
        -------
        Beam
            The beam itself.
        """
        return self.add_load(case=case, moment=moment, at=at, **keys)

    def add_case(self, name: str, kind: str, **keys: Any) -> Beam:
        """Adds a load case with a name of its own.

        Parameters
        ----------
        name : str
        kind : str
            "permanent", "imposed", "snow", "snow-above-1000m" or "wind".
        **keys
            ``category``, ``by_span``.

        Returns
        -------
        Beam
            The beam itself.
        """
        return self._add("case", {"name": name, "kind": kind, **keys})

    def add_combination(self, name: str, factors: Mapping[str, Any], **keys: Any) -> Beam:
        """Adds a combination of your own, in the place of those of a standard.

        Parameters
        ----------
        name : str
        factors : dict of str to float or pair of floats
            By case: one factor, or that of an unfavourable and of a favourable action.
        **keys
            ``state``.

        Returns
        -------
        Beam
            The beam itself.
        """
        return self._add("combination", {"name": name, "factors": dict(factors), **keys})

    def restrain(
        self, holds: str, from_: float | None = None, to: float | None = None, *, at: Places | None = None
    ) -> Beam:
        """Adds what holds the beam along a length or at places, without carrying it.

        Parameters
        ----------
        holds : str
            "top", "bottom" or "both" for flanges held laterally, or any words of restraints.
        from_, to : float, optional
            The length, in m; without them from the left end and to the right end.
        at : float or sequence of floats, optional
            Places in m, in the place of a length.

        Returns
        -------
        Beam
            The beam itself.
        """
        words = _FLANGES.get(holds.lower(), holds)
        if at is None and from_ is None and to is None:
            from_ = 0.0
        return self._add("restraint", {"at": at, "from_": from_, "to": to, "holds": words})

    def _made(self) -> bytes:
        parts = [_lines(self.keys)]
        for name, tables in self._tables.items():
            parts += [f"\n[[{name}]]\n{_lines(table)}" for table in tables]
        return bytes_of("".join(parts))

    def check(
        self,
        code: str = "",
        annex: str = "",
        *,
        strict: bool = False,
        **options: OptionValue,
    ) -> Result:
        """Checks the beam under all its combinations, deflections included.

        Parameters
        ----------
        code : str
            Id of the design code (`codes`); without it the first one.
        annex : str
            Its national annex; without it the first one.
        strict : bool
            Every warning is an error.
        **options
            Options of the design code, with underscores in the place of hyphens: a flag is True, a length is in m.

        Returns
        -------
        Result
            Each rule at each place with the combination in which it is worst.

        Raises
        ------
        InputError
            Where the beam cannot be read, the design code does not take it, or there is no such code, annex or
            option.
        """
        return self._source(code, annex, False, strict, options).result()

    def __repr__(self) -> str:
        if self._given is not None:
            return f"<Beam from {self._name}>"
        return f"<Beam {self.keys['title']}: {self.keys['section']} in {self.keys['grade']}>"
