"""The design codes."""

from __future__ import annotations

import json
from dataclasses import dataclass
from typing import Any

from . import _keltrix

__all__ = ["Code", "Option", "Term", "codes"]


@dataclass(frozen=True)
class Term:
    """A name and what it means.

    Attributes
    ----------
    name, meaning : str
    """

    name: str
    meaning: str


@dataclass(frozen=True)
class Option:
    """Something that an engineer says about a member beyond its input.

    Attributes
    ----------
    name : str
        As an argument its hyphens are underscores.
    kind : str
        "flag", "choice" or "length" (m).
    meaning : str
    values : tuple of Term
        Of a choice.
    least, most : float or None
        Of a length, m.
    """

    name: str
    kind: str
    meaning: str
    values: tuple[Term, ...]
    least: float | None
    most: float | None


@dataclass(frozen=True)
class Code:
    """What a design code says of itself.

    Attributes
    ----------
    id : str
        By which it is chosen.
    title, edition, scope : str
    default : bool
        Whether it is taken where none is asked for.
    families, grades, annexes : tuple of Term
        The first annex is the default.
    options : tuple of Option
    """

    id: str
    title: str
    edition: str
    default: bool
    scope: str
    families: tuple[Term, ...]
    grades: tuple[Term, ...]
    annexes: tuple[Term, ...]
    options: tuple[Option, ...]


def _terms(records: list[dict[str, str]]) -> tuple[Term, ...]:
    return tuple(Term(**record) for record in records)


def _option(record: dict[str, Any]) -> Option:
    made = dict(record)
    made["values"] = _terms(record["values"])
    return Option(**made)


def codes() -> tuple[Code, ...]:
    """The design codes that members can be checked to, the default first.

    Returns
    -------
    tuple of Code

    Examples
    --------
    >>> import keltrix as kx
    >>> [code.default for code in kx.codes()]
    [True, False]
    >>> "S275" in [grade.name for grade in kx.codes()[0].grades]
    True
    """
    made = []
    for record in json.loads(_keltrix.codes_json()):
        del record["schema"]
        for name in ("families", "grades", "annexes"):
            record[name] = _terms(record[name])
        record["options"] = tuple(_option(option) for option in record["options"])
        made.append(Code(**record))
    return tuple(made)
