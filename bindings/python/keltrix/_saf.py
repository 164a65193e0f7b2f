"""Members from workbooks in the Structural Analysis Format (SAF), and results back into them."""

from __future__ import annotations

import math
import os
import re
import tempfile
from collections.abc import Iterable, Mapping, Sequence
from dataclasses import replace
from pathlib import Path
from typing import Any

from . import _keltrix
from ._errors import Diagnostic, InputError, input_error
from ._imports import Imported, from_table
from ._results import Result

__all__ = ["read_saf", "write_saf"]

_ACTIONS = ("N", "Vy", "Vz", "Mx", "My", "Mz")
_RESULT_CAPTIONS = (
    "Member",
    "Load combination",
    "Section",
    "Grade",
    "Design code",
    "Status",
    "Utilisation",
    "Rule",
    "Clause",
    "From [m]",
    "To [m]",
    "Warnings",
)


def _openpyxl() -> Any:
    try:
        import openpyxl
    except ImportError:
        raise InputError("workbooks are read with openpyxl, which is not installed (Debian: python3-openpyxl)") from None
    return openpyxl


def _open(path: str | os.PathLike[str], **how: Any) -> Any:
    """The workbook; OSError for a file that cannot be read."""
    openpyxl = _openpyxl()
    with open(path, "rb"):
        pass
    try:
        return openpyxl.load_workbook(path, **how)
    except Exception as error:  # openpyxl lets out whatever its reading of the archive meets
        raise InputError(f"{os.fspath(path)}: no workbook that can be read: {error}") from None


class _Sheet:
    """A sheet as a list of rows by caption; captions count without their unit, blanks and letter case."""

    def __init__(self, name: str, sheet: Any) -> None:
        self.name = name
        rows = sheet.iter_rows(values_only=True)
        captions = [str(one) if one is not None else "" for one in next(rows, ())]
        self.units = {self._key(one): self._unit(one) for one in captions if one}
        keys = [self._key(one) for one in captions if one]
        for key in keys:
            if keys.count(key) > 1:
                raise InputError(f"sheet {name}: the column {key!r} stands twice")
        self.rows = [
            (number, dict(zip(map(self._key, captions), row)))
            for number, row in enumerate(rows, 2)
            if any(cell is not None for cell in row)
        ]

    @staticmethod
    def _key(caption: str) -> str:
        return re.sub(r"\s+", "", re.sub(r"\[.*\]", "", caption)).lower()

    @staticmethod
    def _unit(caption: str) -> str:
        match = re.search(r"\[(.*)\]", caption)
        return match.group(1).strip() if match else ""

    def require(self, *captions: str) -> None:
        for caption in captions:
            if self._key(caption) not in self.units:
                raise InputError(f"sheet {self.name}: there is no column {caption!r}")

    def unit(self, caption: str, expected: str) -> None:
        unit = self.units[self._key(caption)]
        if unit not in ("", expected):
            raise InputError(f"sheet {self.name}, column {caption!r}: got the unit [{unit}], expected [{expected}]")

    def text(self, row: tuple[int, dict[str, Any]], caption: str) -> str:
        value = row[1].get(self._key(caption))
        return "" if value is None else str(value).strip()

    def number(self, row: tuple[int, dict[str, Any]], caption: str) -> float:
        value = row[1].get(self._key(caption))
        if isinstance(value, bool) or not isinstance(value, (int, float)) or not math.isfinite(value):
            got = "nothing" if value is None else repr(value)
            raise InputError(f"sheet {self.name}, row {row[0]}, {caption}: got {got}, expected a number")
        return float(value)

    def by_name(self) -> dict[str, tuple[int, dict[str, Any]]]:
        self.require("Name")
        found: dict[str, tuple[int, dict[str, Any]]] = {}
        for row in self.rows:
            name = self.text(row, "Name")
            if name in found:
                raise InputError(f"sheet {self.name}, row {row[0]}, Name: got {name!r}, which row {found[name][0]} has")
            found[name] = row
        return found


def _sheet(book: Any, name: str) -> _Sheet:
    if name not in book.sheetnames:
        raise InputError(f"there is no sheet {name}")
    return _Sheet(name, book[name])


def _plain(name: str) -> str:
    return re.sub(r"[\s_]", "", name).replace("/", "x").replace("×", "x").lower()


def _designation(profile: str, sections: Mapping[str, str]) -> str:
    """The designation of a profile: as it is given, or that of the catalogue that is written alike but for blanks."""
    if profile in sections:
        return sections[profile]
    alike = [name for name in _keltrix.designations("") if _plain(name) == _plain(profile)]
    return alike[0] if len(alike) == 1 else profile


def _require_metric(book: Any) -> None:
    if "Model" not in book.sheetnames:
        return
    for row in book["Model"].iter_rows(values_only=True):
        words = [str(cell).strip().lower() for cell in row if cell is not None]
        if any("unit" in word for word in words[:1]) and "imperial" in words:
            raise InputError("sheet Model: the workbook is in imperial units, expected metric ones")


class _Members:
    """What the sheets of members, cross-sections and materials say."""

    def __init__(self, book: Any, grades: Mapping[str, str], sections: Mapping[str, str]) -> None:
        self.members = _sheet(book, "StructuralCurveMember")
        self.members.require("Cross section")
        self.rows = self.members.by_name()
        self.cross_sections = _sheet(book, "StructuralCrossSection")
        self.cross_sections.require("Material", "Profile")
        self.cross_rows = self.cross_sections.by_name()
        self.materials = _sheet(book, "StructuralMaterial")
        self.materials.require("Quality")
        self.material_rows = self.materials.by_name()
        self.grades = grades
        self.sections = sections

    def _row(self, sheet: _Sheet, rows: Mapping[str, Any], name: str, asked_by: str) -> tuple[int, dict[str, Any]]:
        if name not in rows:
            raise InputError(f"{asked_by}: got {name!r}, which sheet {sheet.name} does not have")
        row: tuple[int, dict[str, Any]] = rows[name]
        return row

    def length(self, name: str) -> float | None:
        """m; None where the sheet does not say it."""
        row = self.rows[name]
        if "length" not in self.members.units or row[1].get("length") is None:
            return None
        self.members.unit("Length", "m")
        return self.members.number(row, "Length")

    def section_and_grade(self, name: str) -> tuple[str, str]:
        member = self.rows[name]
        where = f"sheet {self.members.name}, row {member[0]}, Cross section"
        cross = self._row(self.cross_sections, self.cross_rows, self.members.text(member, "Cross section"), where)
        where = f"sheet {self.cross_sections.name}, row {cross[0]}, "
        profile = self.cross_sections.text(cross, "Profile")
        if not profile:
            raise InputError(f"{where}Profile: got nothing, expected a section of the catalogue")
        material = self._row(
            self.materials, self.material_rows, self.cross_sections.text(cross, "Material"), f"{where}Material"
        )
        quality = self.materials.text(material, "Quality")
        grade = self.grades.get(quality, quality.replace(" ", ""))
        return _designation(profile, self.sections), grade


def _case_of(sheet: _Sheet, row: tuple[int, dict[str, Any]]) -> tuple[str, bool]:
    """The name of the combination or case of a row, and whether it is a combination."""
    kind = sheet.text(row, "Result for").lower()
    if kind == "load combination":
        name, key = sheet.text(row, "Load combination"), sheet.text(row, "Combination key")
        return (f"{name}: {key}" if key else name), True
    if kind == "load case":
        return sheet.text(row, "Load case"), False
    raise InputError(
        f"sheet {sheet.name}, row {row[0]}, Result for: got {sheet.text(row, 'Result for')!r}, "
        "expected Load case or Load combination"
    )


Place = tuple[str, int]  # a sheet and a row of it


def _forces(book: Any, chosen: set[str] | None, load_cases: bool) -> tuple[dict[str, list[Any]], list[Place]]:
    """The table of forces in the order of its sections, and where its rows stand in the workbook."""
    sheets = [_Sheet(name, book[name]) for name in book.sheetnames if name.startswith("ResultInternalForce1D")]
    if not sheets:
        raise InputError("there is no sheet ResultInternalForce1D: the workbook has no internal forces")
    found: list[tuple[str, str, float, tuple[Any, ...]]] = []
    places: dict[tuple[str, str, float], Place] = {}
    for sheet in sheets:
        sheet.require("Result on", "Member", "Result for", "Section at", "Index", *_ACTIONS)
        sheet.unit("Section at", "m")
        for action in _ACTIONS:
            sheet.unit(action, "kN" if action[0] in "NV" else "kNm")
        for row in sheet.rows:
            member = sheet.text(row, "Member")
            kind = sheet.text(row, "Result on")
            if kind.lower() == "on rib":
                continue
            if kind.lower() != "on beam":
                raise InputError(f"sheet {sheet.name}, row {row[0]}, Result on: got {kind!r}, expected On beam or On rib")
            if not member:
                raise InputError(f"sheet {sheet.name}, row {row[0]}, Member: got nothing, expected the name of a member")
            if chosen is not None and member not in chosen:
                continue
            case, is_combination = _case_of(sheet, row)
            if is_combination == load_cases:
                continue
            values = (sheet.number(row, "Section at"), *(sheet.number(row, action) for action in _ACTIONS))
            index = sheet.number(row, "Index")
            other = places.setdefault((member, case, index), (sheet.name, row[0]))
            if other != (sheet.name, row[0]):
                raise InputError(
                    f"sheet {sheet.name}, row {row[0]}, Index: got {index:g} of member {member!r} in {case!r} again, which sheet "
                    f"{other[0]}, row {other[1]} has"
                )
            found.append((member, case, index, values))
    order: dict[tuple[str, str], int] = {}
    for member, case, _, _ in found:
        order.setdefault((member, case), len(order))
    found.sort(key=lambda one: (order[one[0], one[1]], one[2]))
    captions = ("station [m]", "N [kN]", "Vy [kN]", "Vz [kN]", "T [kNm]", "My [kNm]", "Mz [kNm]")
    table: dict[str, list[Any]] = {"member": [one[0] for one in found], "case": [one[1] for one in found]}
    for i, caption in enumerate(captions):
        table[caption] = [one[3][i] for one in found]
    return table, [places[one[0], one[1], one[2]] for one in found]


def _placed(diagnostics: Iterable[Diagnostic], places: Mapping[str, Sequence[Place]]) -> tuple[Diagnostic, ...]:
    """With sheets and rows of the workbook in the place of the lines of the tables that were made of them."""
    made = []
    for one in diagnostics:
        match = re.match(r"(forces|members):(\d+): ", one.message)
        if match is None or not places[match.group(1)]:
            made.append(one)
            continue
        rows = places[match.group(1)]

        def words(line: int) -> str:
            return f"sheet {rows[line - 2][0]}, row {rows[line - 2][1]}" if 2 <= line < len(rows) + 2 else f"sheet {rows[0][0]}"

        line = int(match.group(2))
        rest = re.sub(r"\bline (\d+)\b", lambda found: words(int(found.group(1))), one.message[match.end() :])
        row = rows[line - 2][1] if 2 <= line < len(rows) + 2 else 1
        made.append(replace(one, message=f"{words(line)}: {rest}", line=row))
    return tuple(made)


def read_saf(
    path: str | os.PathLike[str],
    signs: str,
    *,
    start: str,
    end: str,
    members: Sequence[str] | None = None,
    restraints: Mapping[str, str] | None = None,
    load_height: float = 0.0,
    sections: Mapping[str, str] | None = None,
    grades: Mapping[str, str] | None = None,
    load_cases: bool = False,
) -> Imported:
    """Makes members of a workbook in the Structural Analysis Format (SAF) with internal forces.

    Read are the sheets ``StructuralCurveMember`` (Name, Cross section, Length), ``StructuralCrossSection`` (Name,
    Material, Profile), ``StructuralMaterial`` (Name, Quality) and ``ResultInternalForce1D``, which may have several
    tables ("ResultInternalForce1D…"): Result on, Member, Result for, Load case, Load combination, Combination key,
    Section at, Index, N to Mz, in m, kN and kNm. Two rows at a section are its left and right side, by their index. A
    combination with several keys is a case for each; all members have the same cases. Results on ribs are passed over.

    Parameters
    ----------
    path : str or path
        The workbook (xlsx).
    signs : str
        The sign convention of the program that wrote it, by its name in `from_table`. Programs differ, and forces that
        do not balance in it are an error that names the conventions in which they would.
    start, end : str
        What is held at the ends of the members, in the words of member files: "Pinned", "Fixed" ... The format does not
        know what holds flanges and twist.
    members : sequence of str, optional
        Names of the members to read; without it all that have forces.
    restraints : dict of str to str, optional
        By member what is held elsewhere, m from the start: ``{"B1": "Top flange lateral@0:6"}``.
    load_height : float
        Height of all loads above the shear centre, m.
    sections : dict of str to str, optional
        Designations of profiles whose names are not those of the catalogue: ``{"BEAM 1": "UB 457x191x67"}``.
    grades : dict of str to str, optional
        Grades of qualities: ``{"Fe 430": "S275"}``.
    load_cases : bool
        Reads the results of load cases in the place of those of combinations. No factor is applied.

    Returns
    -------
    Imported

    Raises
    ------
    OSError
        For a file that cannot be read.
    InputError
        With sheet, row and column of what cannot be used, and as `from_table`.

    Examples
    --------
    >>> import keltrix as kx
    >>> made = kx.read_saf("model.xlsx", "z-down", start="Pinned", end="Pinned")   # doctest: +SKIP
    >>> results = made.check()                                                     # doctest: +SKIP
    >>> kx.write_saf("model.xlsx", results)                                        # doctest: +SKIP
    """
    book = _open(path, read_only=True, data_only=True)
    try:
        _require_metric(book)
        known = _Members(book, grades or {}, sections or {})
        chosen = None if members is None else set(members)
        for name in (*(chosen or ()), *(restraints or ())):
            if name not in known.rows:
                raise InputError(f"member: got {name!r}, which sheet {known.members.name} does not have")
        forces, force_places = _forces(book, chosen, load_cases)
    finally:
        book.close()
    names = list(dict.fromkeys(forces["member"]))
    if not names:
        kind = "load cases" if load_cases else "load combinations"
        raise InputError(f"sheet ResultInternalForce1D: it has no forces of {kind} on these members")
    missing = [name for name in members or () if name not in names]
    if missing:
        raise InputError(f"sheet ResultInternalForce1D: it has no forces of {', '.join(missing)}")
    for name in names:
        if name not in known.rows:
            raise InputError(f"sheet ResultInternalForce1D: member {name!r} is not in sheet {known.members.name}")
    both = [known.section_and_grade(name) for name in names]
    lengths = [known.length(name) for name in names]
    last = {name: station for name, station in zip(forces["member"], forces["station [m]"])}
    table = {
        "member": names,
        "section": [section for section, _ in both],
        "grade": [grade for _, grade in both],
        "length [m]": [last[name] if length is None else length for name, length in zip(names, lengths)],
        "start": [start] * len(names),
        "end": [end] * len(names),
        "restraints": [(restraints or {}).get(name, "") for name in names],
        "load-height [m]": [load_height] * len(names),
    }
    places = {"forces": force_places, "members": [(known.members.name, known.rows[name][0]) for name in names]}
    try:
        made = from_table(forces, table, signs)
    except InputError as error:
        raise input_error(_placed(error.diagnostics, places)) from None
    return replace(made, diagnostics=_placed(made.diagnostics, places))


def write_saf(
    path: str | os.PathLike[str],
    results: Iterable[Result],
    output: str | os.PathLike[str] | None = None,
    *,
    sheet: str = "KeltrixResults",
) -> None:
    """Writes results to a sheet of a workbook, a row for each.

    The other sheets keep their values and formats. Pictures and charts are lost, as openpyxl does not keep them, and so are the computed
    values of formulas, until a spreadsheet program opens and saves the file. The file is replaced whole, or left as it was.

    Parameters
    ----------
    path : str or path
        The workbook that is read.
    results : iterable of Result
        Those of `Imported.check`, whose titles are "member: combination".
    output : str or path, optional
        Where the workbook is written; without it in the place of the one that was read.
    sheet : str
        Name of the sheet. One that is there with other captions is an error; one of an earlier run is replaced.

    Raises
    ------
    OSError
        For a file that cannot be read or written.
    InputError
        For a file that is no workbook, and a sheet that is something else.

    Examples
    --------
    >>> import keltrix as kx
    >>> kx.write_saf("model.xlsx", results, "checked.xlsx")                        # doctest: +SKIP
    """
    book = _open(path)
    if sheet in book.sheetnames:
        captions = tuple(cell.value for cell in next(book[sheet].iter_rows(max_row=1), ()))
        if captions != _RESULT_CAPTIONS:
            raise InputError(f"{os.fspath(path)}: the sheet {sheet} holds something else than results")
        del book[sheet]
    page = book.create_sheet(sheet)
    page.append(_RESULT_CAPTIONS)
    names = _names_of_members(book)
    for row in results:
        page.append(_cells(row, names))
        for cell in page[page.max_row]:
            if isinstance(cell.value, str):
                cell.data_type = "s"  # a text that begins with = is no formula
    target = Path(path if output is None else output)
    handle, name = tempfile.mkstemp(suffix=".xlsx", dir=target.parent)
    os.close(handle)
    try:
        book.save(name)
        os.chmod(name, target.stat().st_mode & 0o777 if target.exists() else 0o644)
        os.replace(name, target)
    except BaseException:
        os.unlink(name)
        raise


def _names_of_members(book: Any) -> list[str]:
    """The longest first, because one may be the beginning of another one."""
    if "StructuralCurveMember" not in book.sheetnames:
        return []
    sheet = _Sheet("StructuralCurveMember", book["StructuralCurveMember"])
    return sorted((sheet.text(row, "Name") for row in sheet.rows), key=len, reverse=True)


def _cells(result: Result, names: Sequence[str]) -> list[Any]:
    member, _, combination = result.title.partition(": ")
    for name in names:
        begin = name.replace(",", ";") + ": "  # as titles have it
        if name and result.title.startswith(begin):
            member, combination = name, result.title[len(begin) :]
            break
    if result.status == "refused":
        message = "; ".join(one.message for one in result.diagnostics if one.severity == "error")
        return [member, combination, None, None, None, result.status, None, message, *[None] * 4]
    governing = result.governing
    utilisation = result.utilisation if math.isfinite(result.utilisation) else str(result.utilisation)
    code = f"{result.code} ({result.annex})" if result.annex else result.code
    place = (None, None, None, None)
    if governing is not None:
        place = (governing.rule, governing.clause, governing.start, governing.end)  # type: ignore[assignment]
    warnings = "; ".join(one.message for one in result.warnings)
    return [member, combination, result.section, result.grade, code, result.status, utilisation, *place, warnings]
