"""Members on many machines by Dask: the same checks, in the processes of a cluster.

Dask is imported where it is used; on Debian it is python3-dask and python3-distributed. Every process of the cluster needs this
package. A check has no effect but its result, so a task that is done again, because a worker was lost, finds the same.
"""

from __future__ import annotations

from typing import Any, Union

from ._beams import Beam
from ._checks import check_text
from ._errors import InputError
from ._members import Member
from ._results import Result
from ._tables import check_many as _check_rows

__all__ = ["check", "check_many"]

Checkable = Union[Beam, Member, str, bytes]


def _row(result: Result) -> dict[str, Any]:
    if result.status == "refused":
        errors = [one.message for one in result.diagnostics if one.severity == "error"]
        return _refused(result.title, "; ".join(errors))
    row = _refused(result.title, "")
    row.update(status=result.status, utilisation=result.utilisation)
    open_rule = [f"{one.rule} ({one.clause}): {one.reason}" for one in result.findings if one.status == "not evaluated"]
    row["message"] = "; ".join(open_rule[:1] + [one.message for one in result.warnings])
    governing = result.governing
    if governing is not None:
        for name in ("rule", "clause", "start", "end", "combination"):
            row[name] = getattr(governing, name)
    return row


def _refused(title: str, message: str) -> dict[str, Any]:
    return {
        "title": title,
        "status": "refused",
        "utilisation": float("nan"),
        "rule": "",
        "clause": "",
        "start": None,
        "end": None,
        "combination": "",
        "message": message,
    }


def _check_one(subject: Checkable, code: str, annex: str, options: dict[str, Any]) -> dict[str, Any]:
    """The row of one member; whatever is wrong with it is in its row, so that it keeps no other from being checked."""
    title = "" if isinstance(subject, (str, bytes)) else str(getattr(subject, "title", ""))
    try:
        if not isinstance(subject, (Beam, Member, str, bytes)):
            return _refused("", f"got {type(subject).__name__}, expected a Beam, a Member or a text")
        if isinstance(subject, (Beam, Member)):
            return _row(subject.check(code, annex, **options))
        results = check_text(subject, code, annex, **options)
        if len(results) != 1:
            return _refused(title, f"the text holds {len(results)} members where one is expected")
        return _row(results[0])
    except InputError as error:
        return _refused(title, str(error))
    except Exception as error:  # whatever arguments a beam of somebody else was made of
        return _refused(title, f"{type(error).__name__}: {error}")


def _require_settings(code: str, annex: str, options: dict[str, Any]) -> None:
    """What is wrong with these is told here, and not in each row."""
    _check_rows({"section": [], "grade": [], "length": []}, code, annex, **options)


def check(bag: Any, code: str = "", annex: str = "", **options: Any) -> Any:
    """Checks the members of a Dask bag.

    Parameters
    ----------
    bag : dask.bag.Bag
        Of `Beam`, `Member` or texts with one member each.
    code, annex : str
        Id of the design code and its national annex; without them the first ones.
    **options
        Options of the design code, with underscores in the place of hyphens.

    Returns
    -------
    dask.bag.Bag
        A dictionary for each, in the order of the bag: "title", "status", "utilisation", "rule", "clause", "start", "end"
        (m), "combination", "message". One that cannot be checked has the status "refused" and the reason in
        "message"; of one that was not checked in full it begins with the rule that was not evaluated. Warnings follow.

    Raises
    ------
    InputError
        Where there is no such code, annex or option.

    Examples
    --------
    >>> import keltrix as kx
    >>> import dask.bag                                                        # doctest: +SKIP
    >>> beams = dask.bag.from_sequence(thousands_of_beams, npartitions=100)    # doctest: +SKIP
    >>> rows = kx.dask.check(beams).compute()                                  # doctest: +SKIP
    """
    _require_settings(code, annex, options)
    return bag.map(_check_one, code, annex, options)


def _check_part(part: Any, code: str, annex: str, options: dict[str, Any]) -> Any:
    return _check_rows(part, code, annex, **options)


def check_many(frame: Any, code: str = "", annex: str = "", **options: Any) -> Any:
    """Checks the rows of a Dask frame, each a simple member with the columns of `keltrix.check_many`.

    Parameters
    ----------
    frame : dask.dataframe.DataFrame
    code, annex : str
        Id of the design code and its national annex; without them the first ones.
    **options
        Options of the design code, with underscores in the place of hyphens.

    Returns
    -------
    dask.dataframe.DataFrame
        With the columns of `keltrix.check_many`, and the index and divisions of `frame`.

    Raises
    ------
    InputError
        For an unknown column, and where there is no such code, annex or option.

    Examples
    --------
    >>> import keltrix as kx
    >>> import dask.dataframe                                                  # doctest: +SKIP
    >>> frame = dask.dataframe.read_csv("beams-*.csv")                         # doctest: +SKIP
    >>> kx.dask.check_many(frame).to_csv("checked-*.csv")                      # doctest: +SKIP
    """
    empty = getattr(frame, "_meta").iloc[:0]
    meta = _check_part(empty, code, annex, options)
    return frame.map_partitions(_check_part, code, annex, options, meta=meta)
