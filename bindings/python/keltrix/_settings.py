"""How texts are read and members checked."""

from __future__ import annotations

import os
from dataclasses import dataclass
from functools import cached_property
from typing import Union

import numpy as np

from . import _keltrix
from ._errors import InputError

OptionValue = Union[str, bool, int, float]


@dataclass(frozen=True)
class Settings:
    """A design code with its annex and options, and how strictly a text is read."""

    code: str = ""
    annex: str = ""
    options: tuple[tuple[str, str], ...] = ()
    allow_gaps: bool = False
    strict: bool = False

    @cached_property
    def native(self) -> _keltrix.Settings:
        """The same for the module _keltrix."""
        return _keltrix.Settings(
            self.code, self.annex, list(self.options), self.allow_gaps, self.strict
        )

    def __reduce__(self) -> tuple[object, ...]:
        return Settings, (self.code, self.annex, self.options, self.allow_gaps, self.strict)


def make_settings(
    code: str,
    annex: str,
    allow_gaps: bool,
    strict: bool,
    options: dict[str, OptionValue],
) -> Settings:
    """Settings from arguments: hyphens of option names are underscores, a flag is True."""
    pairs = []
    for name, value in options.items():
        if isinstance(value, np.bool_):
            value = bool(value)
        if value is False or value is None:
            continue
        try:
            text = "" if value is True else value if isinstance(value, str) else repr(float(value))
        except (TypeError, ValueError):
            raise InputError(f"option {name}: got {value!r}, expected a text, a number or True") from None
        pairs.append((name.replace("_", "-"), text))
    return Settings(code, annex, tuple(pairs), bool(allow_gaps), bool(strict))


def bytes_of(text: str | bytes) -> bytes:
    """The bytes of a text in UTF-8."""
    if isinstance(text, bytes):
        return text
    if not isinstance(text, str):
        raise TypeError(f"a text is expected, got {type(text).__name__}")
    try:
        return text.encode()
    except UnicodeEncodeError as error:
        raise InputError(f"the text has no UTF-8 form: {error.reason}") from error


def text_of(value: object, what: str) -> str:
    """A text that has a form in UTF-8; InputError for anything else."""
    if not isinstance(value, str):
        raise InputError(f"{what}: got {value!r}, expected a text")
    try:
        bytes_of(value)
    except InputError as error:
        raise InputError(f"{what}: {error}") from error
    return value


def read_file(path: str | os.PathLike[str]) -> tuple[str, bytes]:
    """The name of a file and its bytes."""
    name = os.fspath(path)
    with open(name, "rb") as file:
        return name, file.read()
