"""Tables of simple members: one row, one member."""

from __future__ import annotations

import os
from collections.abc import Callable, Mapping
from typing import TYPE_CHECKING, Any

import numpy as np
import numpy.typing as npt

from . import _keltrix
from ._cells import is_missing, is_number, objects_of, require_one_order
from ._errors import InputError
from ._imports import Imported
from ._members import Member
from ._settings import OptionValue, bytes_of, make_settings

if TYPE_CHECKING:
    import pandas  # type: ignore[import]

__all__ = ["check_many", "columns", "member_of_row"]

# Members of each thread between two looks at whether the user wants to stop.
_CHUNK = 2_000

_COLUMNS = _keltrix.row_columns()
_TEXTS = [column for column in _COLUMNS if column[1] == "text"]
_NUMBERS = [column for column in _COLUMNS if column[1] == "number"]

_RESULTS: tuple[tuple[str, Any], ...] = (
    ("status", object),
    ("utilisation", float),
    ("rule", object),
    ("clause", object),
    ("start", float),
    ("end", float),
    ("section_class", np.int32),
    ("warnings", np.int32),
    ("message", object),
)


def columns() -> dict[str, tuple[str, str]]:
    """The columns that `check_many` takes.

    Returns
    -------
    dict of str to tuple of str
        By name: the unit, empty of a text or a bare number, and the meaning. The columns "section", "grade" and
        "length" are required.

    Examples
    --------
    >>> import keltrix as kx
    >>> kx.columns()["Myy_start"]
    ('N.m', 'major-axis moment at the start, sagging below zero')
    """
    return {name: (unit, meaning) for name, _, unit, _, _, meaning in _COLUMNS}


def _is_frame(table: object) -> bool:
    return type(table).__module__.split(".")[0] == "pandas" and hasattr(table, "index")


def _require_known(names: list[Any]) -> None:
    known = [column[0] for column in _COLUMNS]
    for name in names:
        if name in known:
            continue
        nearest = _keltrix.nearest(str(name), known)
        hint = f"did you mean {nearest}?" if nearest else f"expected {', '.join(known)}"
        raise InputError(f"unknown column {str(name)!r}: {hint}")
    for name, _, _, is_required, _, _ in _COLUMNS:
        if is_required and name not in names:
            raise InputError(f"no column {name!r}, which is required")


def _length_of(cells: dict[str, Any]) -> int:
    """The number of rows; a cell that stands alone is that of all rows."""
    lengths = {}
    for name, column in cells.items():
        shape = np.shape(column)
        if len(shape) > 1:
            raise InputError(f"column {name!r}: got an array of shape {shape}, expected one dimension")
        if len(shape) == 1:
            lengths[name] = shape[0]
    if not lengths:
        return 1
    first = next(iter(lengths))
    for name, length in lengths.items():
        if length != lengths[first]:
            raise InputError(
                f"column {name!r} has {length} rows and column {first!r} has {lengths[first]}: expected the same"
            )
    return lengths[first]


class _Table:
    """The rows as the module _keltrix takes them, and what is wrong with cells that it cannot take."""

    def __init__(self, table: Mapping[str, Any] | pandas.DataFrame, settings: _keltrix.Settings) -> None:
        names: list[Any] = list(table)
        _require_known(names)
        if len(set(names)) < len(names):
            raise InputError("a column stands twice")
        cells: dict[str, Any] = {name: table[name] for name in names}
        require_one_order(cells)
        self.count = _length_of(cells)
        self.faults: dict[int, str] = {}
        texts = [self._texts(column[0], cells.get(column[0], column[4])) for column in _TEXTS]
        numbers = np.empty((len(_NUMBERS), self.count))
        for i, (name, _, unit, _, standard, _) in enumerate(_NUMBERS):
            numbers[i] = self._numbers(name, unit, cells[name]) if name in cells else (
                np.nan if standard is None else standard
            )
        self.rows = _keltrix.Rows(texts, numbers, settings)

    def _fault(self, row: int, message: str) -> None:
        self.faults.setdefault(row, message)

    def _texts(self, name: str, cells: Any) -> list[str | None]:
        values: list[Any]
        if not isinstance(cells, list) and np.ndim(cells) == 0:
            values = [cells.item() if isinstance(cells, np.ndarray) else cells] * self.count
        else:
            values = cells.tolist() if hasattr(cells, "tolist") else list(cells)
        if all(map(str.__instancecheck__, values)):
            return values
        for row, value in enumerate(values):
            if isinstance(value, str):
                continue
            values[row] = None
            if not is_missing(value):
                self._fault(row, f"{name}: got {value!r}, expected a text")
        return values

    def _numbers(self, name: str, unit: str, cells: Any) -> npt.NDArray[np.float64] | float:
        array = cells.to_numpy() if hasattr(cells, "to_numpy") else cells if isinstance(cells, np.ndarray) else np.asarray(cells)
        if array.dtype.kind in "iuf" and not isinstance(array, np.ma.MaskedArray):
            return np.asarray(array, dtype=np.float64)
        values = np.full(self.count, np.nan)
        for row, value in enumerate(np.broadcast_to(objects_of(array), (self.count,))):
            if is_number(value):
                try:
                    values[row] = float(value)
                except OverflowError:
                    self._fault(row, f"{name}: got {value!r}, expected a number in {unit}")
            elif not is_missing(value):
                expected = f"a number in {unit}" if unit else "a number"
                self._fault(row, f"{name}: got {value!r}, expected {expected}")
        return values


def _jobs(jobs: int) -> int:
    if isinstance(jobs, bool) or not isinstance(jobs, (int, np.integer)) or not 0 <= jobs <= 1024:
        raise InputError(f"jobs: got {jobs!r}, expected a number of threads, or 0 for one for each processor")
    return int(jobs) or len(os.sched_getaffinity(0))


def check_many(
    table: Mapping[str, Any] | pandas.DataFrame | Imported | str | bytes,
    code: str = "",
    annex: str = "",
    *,
    jobs: int = 1,
    progress: Callable[[int, int], object] | None = None,
    **options: OptionValue,
) -> Any:
    """Checks a table of simple members, a row each, or many general members.

    A row is one member between two points with linear moments, or the parabola of a uniform load, between them.
    Its columns are those of `columns`; "section", "grade" and "length" are required. A value that stands alone in a
    dictionary is that of all rows. Lengths are in m, forces in N, moments in N.m; tension is above zero, and a member
    that sags has major-axis moments below zero, as the load `w` makes them.

    General members come from a table of members and a table of their stations by `from_table`, or as the text of
    member files.

    Parameters
    ----------
    table : pandas.DataFrame, mapping of str to array, Imported, str or bytes
        The columns, or the general members.
    code, annex : str
        Id of the design code and its national annex; without them the first ones.
    jobs : int
        Threads that share the rows; 0 is one for each processor.
    progress : callable, optional
        Called now and then with the number of rows that are done and of all rows.
    **options
        Options of the design code, with underscores in the place of hyphens.

    Returns
    -------
    pandas.DataFrame, or dict of str to numpy.ndarray
        A frame with the index of `table`, or a dictionary, with the columns "status", "utilisation", "rule",
        "clause", "start", "end" (m), "section_class", "warnings" (their number) and "message". The rule, its clause
        and its place are those of the largest utilisation. A row that cannot be checked has the status "refused",
        an utilisation that is not a number and the reason in "message"; it keeps no other row from being checked.
        Of a row that was not checked in full "message" begins with the rule that was not evaluated. Warnings and
        notes follow there. Of general members a dictionary, with their titles in the column "title".

    Raises
    ------
    InputError
        For an unknown column, with the nearest name, for columns of different lengths, and where there is no such
        code, annex or option.

    Examples
    --------
    >>> import keltrix as kx
    >>> found = kx.check_many({"section": "UB 457x191x67", "grade": "S275", "length": [4.0, 8.0], "w": 20e3})
    >>> found["status"].tolist()
    ['pass', 'fail']
    """
    settings = make_settings(code, annex, False, False, options).native
    threads = _jobs(jobs)
    if isinstance(table, (Imported, str, bytes)):
        return _check_members(table, settings, threads, progress)
    rows = _Table(table, settings)
    chunk = _CHUNK * threads
    found: dict[str, npt.NDArray[Any]] = {
        name: np.empty(rows.count, dtype=kind) for name, kind in _RESULTS
    }
    for first in range(0, rows.count, chunk):
        count = min(chunk, rows.count - first)
        part = rows.rows.check(first, count, threads)
        for name, _ in _RESULTS:
            found[name][first : first + count] = part[name]
        if progress is not None:
            progress(first + count, rows.count)
    for row, message in rows.faults.items():
        _refuse(found, row, message)
    if not _is_frame(table):
        return found
    import pandas

    return pandas.DataFrame(found, index=getattr(table, "index"))


def _check_members(
    members: Imported | str | bytes,
    settings: _keltrix.Settings,
    threads: int,
    progress: Callable[[int, int], object] | None,
) -> dict[str, npt.NDArray[Any]]:
    text = bytes_of(members.text if isinstance(members, Imported) else members)
    listed = _keltrix.Members(text, "members", settings)
    titles = listed.titles()
    if not titles:
        raise InputError("the text holds no member")
    found = {name: np.empty(len(titles), dtype=kind) for name, kind in (("title", object), *_RESULTS)}
    found["title"][:] = titles
    chunk = _CHUNK * threads
    for first in range(0, len(titles), chunk):
        count = min(chunk, len(titles) - first)
        part = listed.check(first, count, threads)
        for name, _ in _RESULTS:
            found[name][first : first + count] = part[name]
        if progress is not None:
            progress(first + count, len(titles))
    return found


def _refuse(found: dict[str, npt.NDArray[Any]], row: int, message: str) -> None:
    values: dict[str, Any] = {
        "status": "refused",
        "utilisation": np.nan,
        "rule": "",
        "clause": "",
        "start": np.nan,
        "end": np.nan,
        "section_class": 0,
        "warnings": 0,
        "message": message,
    }
    for name, value in values.items():
        found[name][row] = value


def member_of_row(table: Mapping[str, Any] | pandas.DataFrame, row: int) -> Member:
    """The member that a row of a table of `check_many` is, to be looked at by itself.

    Parameters
    ----------
    table : pandas.DataFrame, or mapping of str to array
    row : int
        Its place, counted from 0.

    Returns
    -------
    Member
        Its check finds exactly what `check_many` finds.

    Raises
    ------
    InputError
        For a row that cannot be made a member, and as `check_many`.
    IndexError
        For a row that there is not.

    Examples
    --------
    >>> import keltrix as kx
    >>> table = {"section": "UB 457x191x67", "grade": "S275", "length": 4.0, "w": 20e3}
    >>> result = kx.member_of_row(table, 0).check()
    >>> result.utilisation == kx.check_many(table)["utilisation"][0]
    True
    """
    rows = _Table(table, make_settings("", "", False, False, {}).native)
    if not 0 <= row < rows.count:
        raise IndexError(f"row {row} of a table of {rows.count}")
    if row in rows.faults:
        raise InputError(rows.faults[row])
    return Member.from_text(rows.rows.text(row), f"row {row}")
