"""What beams and members have in common: the text that is checked."""

from __future__ import annotations

import os
from typing import Any, TypeVar

from ._errors import InputError
from ._results import Source
from ._settings import OptionValue, bytes_of, make_settings, read_file

Own = TypeVar("Own", bound="Checked")


class Checked:
    """Something that is checked as a text, which is made of its parts or kept as it was read."""

    # What messages call it, and its text where that has no name.
    _WORD = ""
    _FILE = ""

    _given: bytes | None = None
    _name: str

    @classmethod
    def from_text(cls: type[Own], text: str | bytes, name: str = "") -> Own:
        """A beam or member from the text of its file, which is kept as it is.

        Parameters
        ----------
        text : str or bytes
            UTF-8 where it is bytes.
        name : str
            How messages call it; without it "beam.toml" or "member".
        """
        made = cls("", "", title="")  # type: ignore[call-arg]
        made._given = bytes_of(text)
        made._name = name or cls._FILE
        return made

    @classmethod
    def from_file(cls: type[Own], path: str | os.PathLike[str]) -> Own:
        """A beam or member from its file.

        Parameters
        ----------
        path : str or path
            The file; messages call it so.

        Raises
        ------
        OSError
            For a file that cannot be read.
        """
        name, text = read_file(path)
        return cls.from_text(text, name)

    @property
    def text(self) -> str:
        """Its file: TOML of a beam; of a member lines, with every number in the fewest digits that say it exactly."""
        return self._bytes().decode(errors="replace")

    def _made(self) -> bytes:
        """The text of its parts."""
        raise NotImplementedError

    def _bytes(self) -> bytes:
        return self._made() if self._given is None else self._given

    def _require_own(self) -> None:
        if self._given is not None:
            raise InputError(f"a {self._WORD} that was read from a text cannot be added to: change its text")

    def _source(
        self, code: str, annex: str, allow_gaps: bool, strict: bool, options: dict[str, OptionValue]
    ) -> Source:
        settings = make_settings(code, annex, allow_gaps, strict, options)
        return Source(self._bytes(), self._name, settings)

    def __eq__(self, other: object) -> Any:
        if type(other) is not type(self):
            return NotImplemented
        return self._name == getattr(other, "_name") and self._bytes() == getattr(other, "_bytes")()

    __hash__ = None  # type: ignore[assignment]
