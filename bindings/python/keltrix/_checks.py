"""Texts and files checked, and sheets of what came of them."""

from __future__ import annotations

import json
import os
from collections.abc import Iterable
from typing import Union

from . import _keltrix
from ._beams import Beam
from ._errors import Diagnostic
from ._members import Member
from ._results import Result, Results, Source
from ._settings import OptionValue, Settings, bytes_of, make_settings, read_file, text_of

__all__ = ["check_file", "check_text", "report", "validate"]

Checkable = Union[Beam, Member, str, bytes]


def check_text(
    text: str | bytes,
    code: str = "",
    annex: str = "",
    *,
    name: str = "text",
    allow_gaps: bool = False,
    strict: bool = False,
    **options: OptionValue,
) -> Results:
    """Checks every member of a text: a member file, which may hold several, or a beam file.

    Parameters
    ----------
    text : str or bytes
        UTF-8 where it is bytes.
    code, annex : str
        Id of the design code and its national annex; without them the first ones.
    name : str
        How messages call the text. With ".toml" at its end the text is taken for a beam file.
    allow_gaps : bool
        Numbers need not start at 1, nor positions at 0.
    strict : bool
        Every warning is an error.
    **options
        Options of the design code, with underscores in the place of hyphens.

    Returns
    -------
    Results
        In their order. A member that cannot be read keeps none of the others from being checked; its status is
        "refused".

    Raises
    ------
    InputError
        For a text without any member, and where there is no such code, annex or option.
    """
    settings = make_settings(code, annex, allow_gaps, strict, options)
    return Source(bytes_of(text), name, settings).results()


def check_file(
    path: str | os.PathLike[str],
    code: str = "",
    annex: str = "",
    *,
    allow_gaps: bool = False,
    strict: bool = False,
    **options: OptionValue,
) -> Results:
    """Checks every member of a member file or beam file.

    Parameters
    ----------
    path : str or path
        The file; messages call it so.
    code, annex : str
        Id of the design code and its national annex; without them the first ones.
    allow_gaps : bool
        Numbers need not start at 1, nor positions at 0.
    strict : bool
        Every warning is an error.
    **options
        Options of the design code, with underscores in the place of hyphens.

    Returns
    -------
    Results
        As `check_text`.

    Raises
    ------
    OSError
        For a file that cannot be read.
    InputError
        As `check_text`.
    """
    name, text = read_file(path)
    settings = make_settings(code, annex, allow_gaps, strict, options)
    return Source(text, name, settings).results()


def source_of(subject: Checkable, settings: Settings) -> Source:
    """The text of something that can be checked."""
    if isinstance(subject, (Beam, Member)):
        return Source(subject._bytes(), subject._name, settings)
    return Source(bytes_of(subject), "text", settings)


def validate(
    subject: Checkable,
    code: str | None = None,
    annex: str = "",
    *,
    allow_gaps: bool = False,
    strict: bool = False,
    **options: OptionValue,
) -> tuple[Diagnostic, ...]:
    """What is wrong with a beam, a member or a text, without an exception.

    Parameters
    ----------
    subject : Beam, Member, str or bytes
    code : str, optional
        Design code whose refusals are found as well; "" is the first one. Without it the text alone is judged; a beam
        takes its modulus, its grades and its combinations from the first one then.
    annex : str
        Its national annex.
    allow_gaps, strict : bool
        As `check_text` has them.
    **options
        Options of the design code.

    Returns
    -------
    tuple of Diagnostic
        Errors, warnings and notes in the order of their lines; empty where nothing is wrong.

    Raises
    ------
    InputError
        For bytes that are no text, and where there is no such code, annex or option.

    Examples
    --------
    >>> import keltrix as kx
    >>> beam = kx.Beam(section="UB 457x191x67", grade="S275", lenght=9.0)
    >>> [one.message for one in kx.validate(beam) if one.severity == "error"][-1]
    'got unknown key "lenght"; did you mean length'
    """
    source = source_of(subject, make_settings(code or "", annex, allow_gaps, strict, options))
    text = _keltrix.validate(source.text, source.name, source.settings.native, code is not None)
    return tuple(Diagnostic(**record) for record in json.loads(text)["defects"])


def report(
    results: Result | Results | Iterable[Result],
    *,
    brief: bool = False,
    client: str = "",
    project: str = "",
    job: str = "",
    revision: str = "",
    member: str = "",
    forces: str = "",
    by: str = "",
    date: str = "",
    checked_by: str = "",
    checked_date: str = "",
    approved_by: str = "",
    approved_date: str = "",
) -> str:
    """The calculation sheets of results as one HTML document that needs nothing but itself.

    Parameters
    ----------
    results : Result, Results or iterable of Result
        Refused ones have no sheet; their messages stand in front.
    brief : bool
        Two pages for a member: the calculation of the governing position and span alone.
    client, project, job, revision, member, forces : str
        Title block: the client, the number of the project, the job, the revision, the member's mark, where the
        forces come from.
    by, date, checked_by, checked_date, approved_by, approved_date : str
        Title block: who, and when. There is no date unless it is given.

    Returns
    -------
    str
        HTML, the same as the command line's ``report`` writes.
    """
    listed = [results] if isinstance(results, Result) else list(results)
    remarks = [one.message for one in results.diagnostics] if isinstance(results, Results) else []
    # Beams that were not read from a file have one name; each of their texts is an input of its own.
    texts: dict[str, list[bytes]] = {}
    for one in listed:
        known = texts.setdefault(one._source.name, [])
        if one._source.text not in known:
            known.append(one._source.text)
    inputs = {
        f"{name} ({i})" if i > 1 else name: text for name, known in texts.items() for i, text in enumerate(known, 1)
    }
    block = [
        ("client", client),
        ("project", project),
        ("job", job),
        ("revision", revision),
        ("member", member),
        ("forces", forces),
        ("by", by),
        ("date", date),
        ("checked_by", checked_by),
        ("checked_date", checked_date),
        ("approved_by", approved_by),
        ("approved_date", approved_date),
    ]
    block = [(name, text_of(text, name)) for name, text in block]
    return _keltrix.html([one._outcome for one in listed], remarks, list(inputs.items()), block, brief)
