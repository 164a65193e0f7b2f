"""What is wrong with an input, as data."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Any, Iterable, Mapping

__all__ = ["Diagnostic", "InputError"]


@dataclass(frozen=True)
class Diagnostic:
    """One thing that is wrong with a text, or strange about a member in it.

    Attributes
    ----------
    severity : str
        "error", "warning" or "note".
    message : str
        All of it in one sentence, with its place.
    line : int or None
        Line of the text, counted from 1.
    code : str
        One word for each kind, such as "missing-field"; may be empty.
    keyword : str
        Keyword of the line, or key of a beam file: "MEMBERPOINT", "load.at".
    field : str
        Field of the line: "position".
    got : str
        What stands there, quoted.
    expected : str
        What was expected: "a number in m".
    advice : str
        What comes of it, or what to write instead.
    """

    severity: str
    message: str
    line: int | None = None
    code: str = ""
    keyword: str = ""
    field: str = ""
    got: str = ""
    expected: str = ""
    advice: str = ""

    def __str__(self) -> str:
        return self.message


def diagnostics_of(records: Iterable[Mapping[str, Any]]) -> tuple[Diagnostic, ...]:
    """Diagnostics from the records of the module _keltrix."""
    return tuple(Diagnostic(**record) for record in records)


class InputError(ValueError):
    """An input that cannot be used.

    Parameters
    ----------
    message : str
        What is wrong, in one sentence or several lines.
    diagnostics : iterable of Diagnostic, optional
        The same as data. Without it there is one, with the message.

    Attributes
    ----------
    diagnostics : tuple of Diagnostic
        Everything that was found, errors and others, in the order of their lines.

    Examples
    --------
    >>> import keltrix as kx
    >>> beam = kx.Beam(spans=[9.0], section="UB 457x191x67", grade="S27")
    >>> try:
    ...     beam.check()
    ... except kx.InputError as error:
    ...     first = error.errors[0]
    >>> first.keyword, first.line
    ('grade', 3)
    """

    diagnostics: tuple[Diagnostic, ...]

    def __init__(self, message: str, diagnostics: Iterable[Diagnostic] | None = None) -> None:
        super().__init__(message)
        self.diagnostics = (
            (Diagnostic("error", message),) if diagnostics is None else tuple(diagnostics)
        )

    @property
    def errors(self) -> tuple[Diagnostic, ...]:
        """The errors among the diagnostics."""
        return tuple(one for one in self.diagnostics if one.severity == "error")

    def __reduce__(self) -> tuple[Any, ...]:
        return InputError, (str(self), self.diagnostics)


def input_error(diagnostics: Iterable[Diagnostic]) -> InputError:
    """The error of diagnostics, whose message has each of their errors on a line."""
    found = tuple(diagnostics)
    errors = [one.message for one in found if one.severity == "error"]
    return InputError("\n".join(errors or [one.message for one in found]), found)
