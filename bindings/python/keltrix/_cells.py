"""Cells of tables: what counts as a number, and what as missing."""

from __future__ import annotations

from collections.abc import Mapping
from typing import Any

import numpy as np
import numpy.typing as npt

from ._errors import InputError


def is_missing(value: Any) -> bool:
    """None, not-a-number and pandas' words for nothing."""
    if value is None or type(value).__name__ in ("NAType", "NaTType"):
        return True
    return isinstance(value, (float, np.floating)) and bool(value != value)


def is_number(value: Any) -> bool:
    """Durations and truth values are none, though numpy and Python derive them from whole numbers."""
    return isinstance(value, (int, float, np.integer, np.floating)) and not isinstance(value, (bool, np.timedelta64))


def objects_of(column: Any) -> npt.NDArray[np.object_]:
    """The cells of a column as objects; masked ones are None, and dates and durations do not become whole numbers."""
    cells: npt.NDArray[np.object_]
    if isinstance(column, np.ma.MaskedArray):
        cells = objects_of(np.ma.getdata(column))  # type: ignore[no-untyped-call]
        cells[np.ma.getmaskarray(column)] = None  # type: ignore[no-untyped-call]
        return cells
    array = column.to_numpy() if hasattr(column, "to_numpy") else np.asarray(column)
    if array.dtype.kind not in "mM":
        cells = array.astype(object)
        return cells
    cells = np.empty(array.shape, dtype=object)
    for place in np.ndindex(array.shape):
        cells[place] = array[place]
    return cells


def numbers_of(values: Any, what: str) -> list[float]:
    """A number or a row of numbers; InputError for anything else."""
    cells = np.atleast_1d(objects_of(values))
    if cells.ndim > 1:
        raise InputError(f"{what}: got an array of shape {cells.shape}, expected one dimension")
    for cell in cells:
        if not is_number(cell):
            raise InputError(f"{what}: got {cell!r}, expected a number")
    return [float(cell) for cell in cells]


def require_one_order(table: Mapping[str, Any], what: str = "") -> None:
    """InputError where series of pandas have different indexes, because their rows belong together by these."""
    first: tuple[str, Any] | None = None
    for name in table:
        column = table[name]
        if type(column).__module__.split(".")[0] != "pandas" or not hasattr(column, "index"):
            continue
        if first is None:
            first = name, column.index
        elif not first[1].equals(column.index):
            raise InputError(
                f"{what}columns {first[0]!r} and {name!r} are series with different indexes: expected the same, or a frame"
            )
