"""Members from tables of forces, as programs for frames export them."""

from __future__ import annotations

import csv
import io
from collections.abc import Mapping
from dataclasses import dataclass
from typing import TYPE_CHECKING, Any, NoReturn, Union

import numpy as np

from . import _keltrix
from ._cells import is_number, objects_of, require_one_order
from ._errors import Diagnostic, InputError, diagnostics_of, input_error
from ._results import Results, Source
from ._settings import OptionValue, bytes_of, make_settings

if TYPE_CHECKING:
    import pandas  # type: ignore[import]

__all__ = ["Imported", "from_table"]

Table = Union[str, bytes, Mapping[str, Any], "pandas.DataFrame"]


@dataclass(frozen=True)
class Imported:
    """Members that were made of tables.

    Attributes
    ----------
    text : str
        A member file for each member and case, one after another.
    diagnostics : tuple of Diagnostic
        What the tables have that is strange: warnings and notes.
    members : int
        How many members there are.
    cases : int
        Their cases together, each of which is a member of the text.
    """

    text: str
    diagnostics: tuple[Diagnostic, ...]
    members: int
    cases: int

    def check(self, code: str = "", annex: str = "", **options: OptionValue) -> Results:
        """Checks each case of each member.

        Parameters
        ----------
        code, annex : str
            Id of the design code and its national annex; without them the first ones.
        **options
            Options of the design code, with underscores in the place of hyphens.

        Returns
        -------
        Results
            In the order of the text; the title of a result is "member: case".
        """
        settings = make_settings(code, annex, False, False, options)
        return Source(self.text.encode(), "import", settings).results()

    def __bool__(self) -> NoReturn:
        raise TypeError("an import has no truth value: use .members, or .check() and its .passed")


def _cell(value: Any) -> str:
    """A cell as the reader of tables takes it; what is missing is empty, which the reader judges."""
    if value is None or type(value).__name__ in ("NAType", "NaTType"):
        return ""
    if not is_number(value):
        return str(value)
    return str(int(value)) if isinstance(value, (int, np.integer)) else repr(float(value))


def _csv_of(table: Table, what: str) -> bytes:
    if isinstance(table, (str, bytes)):
        return bytes_of(table)
    require_one_order(table, f"{what}: ")
    names = [str(name) for name in table]
    twice = [name for name in dict.fromkeys(names) if names.count(name) > 1]
    if twice:
        raise InputError(f"{what}: the column {twice[0]!r} stands twice")
    columns = {str(name): objects_of(table[name]) for name in table}
    lengths = {name: column.shape for name, column in columns.items()}
    if any(len(shape) != 1 for shape in lengths.values()) or len(set(lengths.values())) > 1:
        shapes = ", ".join(f"{name} {shape}" for name, shape in lengths.items())
        raise InputError(f"{what}: expected columns of one length, got {shapes}")
    text = io.StringIO()
    writer = csv.writer(text, lineterminator="\n")
    writer.writerow(columns)
    for row in zip(*columns.values()):
        writer.writerow([_cell(value) for value in row])
    return bytes_of(text.getvalue())


def from_table(
    forces: Table,
    members: Table,
    signs: str,
    *,
    columns: Mapping[str, str] | None = None,
    allow_repeats: bool = False,
    strict: bool = False,
) -> Imported:
    """Makes members of a table of forces at stations along them, and of a table of what they are.

    The captions, their units in brackets ("My [kNm]") and the signs are those of the command line's ``import``.

    Parameters
    ----------
    forces : pandas.DataFrame, mapping of str to array, or text of a CSV file
        A row for each member, case and station.
    members : pandas.DataFrame, mapping of str to array, or text of a CSV file
        A row for each member: section, grade, length, what holds it.
    signs : str
        The name of a sign convention: "member-file", "z-down" ... Forces that do not balance in it are an error. Some
        conventions differ in what no balance shows, so take that which the other program documents.
    columns : dict of str to str, optional
        What the captions do not say: ``{"N": "Axial force", "T": "none", "members.section": "Profile"}`` are
        captions of fields, ``{"force": "kN"}`` is the unit of columns without one.
    allow_repeats : bool
        Two rows of a station may be the same.
    strict : bool
        Every warning is an error.

    Returns
    -------
    Imported

    Raises
    ------
    InputError
        With every fault of both tables; lines count from the captions, which are line 1.

    Examples
    --------
    >>> import keltrix as kx
    >>> forces = {
    ...     "member": ["C1", "C1"], "case": ["dead", "dead"], "station [m]": [0.0, 4.5], "N [kN]": [-300.0, -300.0],
    ...     "Vy [kN]": [0, 0], "Vz [kN]": [0, 0], "T [kNm]": [0, 0], "My [kNm]": [0, 0], "Mz [kNm]": [0, 0],
    ... }
    >>> members = {
    ...     "member": ["C1"], "section": ["UC 203x203x60"], "grade": ["S275"], "length [m]": [4.5],
    ...     "start": ["Pinned"], "end": ["Pinned"],
    ... }
    >>> [(one.title, one.status) for one in kx.from_table(forces, members, "z-down").check()]
    [('C1: dead', 'pass')]
    """
    map_items = [signs, *(f"{key}={value}" for key, value in (columns or {}).items())]
    text, findings, count, cases = _keltrix.from_tables(
        _csv_of(forces, "forces"), _csv_of(members, "members"), map_items, allow_repeats, strict
    )
    diagnostics = diagnostics_of(findings)
    if any(one.severity == "error" for one in diagnostics):
        raise input_error(diagnostics)
    return Imported(text, diagnostics, count, cases)
