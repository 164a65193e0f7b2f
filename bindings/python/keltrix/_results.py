"""What came of a check."""

from __future__ import annotations

import hashlib
import json
from collections.abc import Sequence
from dataclasses import dataclass
from functools import cached_property
from typing import Any, Iterable, Iterator, NoReturn, overload

from . import _keltrix
from ._errors import Diagnostic, InputError, diagnostics_of, input_error
from ._settings import Settings

__all__ = ["Finding", "Resistance", "Result", "Results", "Step"]


@dataclass(frozen=True)
class Step:
    """One step of the calculation of a rule: symbol = formula = values = value, note.

    Attributes
    ----------
    symbol : str
    quantity : str
        "force" (N), "moment" (N.m), "stress" (Pa), "length" (m, of a section), "distance" (m, along the member), "area" (m²),
        "modulus" (m³), or "" for a bare number.
    value : float
        In SI; infinite where there is no limit.
    formula : str
        In symbols; may be empty.
    values : str
        The formula with its numbers, in the units of the reports (m, kN, kNm, N/mm²); may be empty.
    note : str
        What belongs to the value, as "curve b"; may be empty.
    clause : str
    """

    symbol: str
    quantity: str
    value: float
    formula: str
    values: str
    note: str
    clause: str


@dataclass(frozen=True)
class Finding:
    """What one rule gave at one place.

    Attributes
    ----------
    rule : str
        Name of the rule.
    clause : str
        Clause or table that was applied.
    topic : str
        What the rule is about, whatever the design code calls it.
    status : str
        "passed", "failed", "not applicable", "not evaluated", "outside the input" or "information".
    reason : str
        Why it was not applicable, not evaluated, or failed without a number.
    start, end : float or None
        Where along the member, m; equal at a position, None of the member as a whole.
    utilisation : float
        0 where nothing was evaluated; of information what it would be.
    demand : float or None
        What is compared with the resistance where that is a limit of deflection, m.
    resistance : float or None
        In SI, by `quantity`.
    symbol : str
        Of the resistance: "Mcx".
    quantity : str
        "force" (N), "moment" (N.m), "stress" (Pa), "length" (m) or "".
    slenderness : float or None
    governing : bool
        Whether it has the largest utilisation of the whole member.
    combination : str
        Load combination of a beam from which it comes; empty without one.
    steps : tuple of Step
        The calculation, where the design code gives it; of a beam that of `combination`. Limits of deflection have
        none.
    """

    rule: str
    clause: str
    topic: str
    status: str
    reason: str
    start: float | None
    end: float | None
    utilisation: float
    demand: float | None
    resistance: float | None
    symbol: str
    quantity: str
    slenderness: float | None
    governing: bool
    combination: str
    steps: tuple[Step, ...] = ()

    def __bool__(self) -> NoReturn:
        raise TypeError("a finding has no truth value: compare its status, as finding.status == 'passed'")


@dataclass(frozen=True)
class Resistance:
    """A resistance by its symbol.

    Attributes
    ----------
    symbol : str
    quantity : str
        "force" (N), "moment" (N.m), "stress" (Pa) or "".
    value : float or None
        None where its rule was not applied.
    start, end : float or None
        The span that it belongs to, m; None of a cross-section.
    """

    symbol: str
    quantity: str
    value: float | None
    start: float | None
    end: float | None


class Source:
    """A text with its settings, and what came of its check."""

    def __init__(self, text: bytes, name: str, settings: Settings) -> None:
        self.text = text
        self.name = name
        self.settings = settings

    @cached_property
    def checked(self) -> tuple[list[_keltrix.Outcome], tuple[Diagnostic, ...]]:
        """The outcomes of the members, and what is wrong between them."""
        outcomes, diagnostics = _keltrix.check(self.text, self.name, self.settings.native)
        return outcomes, diagnostics_of(diagnostics)

    def results(self) -> Results:
        """All members; InputError where the text holds none."""
        outcomes, between = self.checked
        if not outcomes:
            raise input_error(between or (Diagnostic("error", f"{self.name}: holds no member"),))
        return Results([Result(self, i) for i in range(len(outcomes))], between)

    def result(self) -> Result:
        """The only member; InputError where it is refused or there are several."""
        results = self.results()
        if len(results) > 1:
            raise InputError(
                f"{self.name}: holds {len(results)} members where one is expected; "
                "check_text and check_file take several"
            )
        errors = [one for one in results.diagnostics if one.severity == "error"]
        result = results[0]
        if result.status == "refused" or errors:
            raise input_error((*result.diagnostics, *results.diagnostics))
        return result

    def __reduce__(self) -> tuple[Any, ...]:
        return Source, (self.text, self.name, self.settings)


def _restored(source: Source, place: int, digest: str, version: str) -> Result:
    outcomes, _ = source.checked
    result = Result(source, place) if place < len(outcomes) else None
    if result is None or result._digest != digest:
        raise InputError(
            f"{source.name}: this result was made by keltrix {version}, and the keltrix "
            f"{_keltrix.__version__} of this process finds something else for the same input"
        )
    return result


class Result:
    """What the check of one member or beam found.

    A result has no truth value, because an object that exists is no pass: ask `passed`.

    It can be pickled: its input is kept and checked again where it is unpickled, which is an error if the findings
    differ from those that were pickled.

    Attributes
    ----------
    status : str
        "pass" where every rule that applies was evaluated and none failed, "fail", "not checked" where a rule that
        applies was not evaluated, or "refused" where the input cannot be read or the design code does not take it.
    passed : bool
        Whether `status` is "pass".
    utilisation : float
        The largest of all rules; not-a-number where the member is refused.
    title, section, grade : str
        As the check took them; section and grade are None where it is refused.
    code, annex : str
        The design code's id and its national annex.
    section_class : int
        Governing class, 1 to 4, 0 where there is none.
    design_strength : float
        Pa.
    line : int
        Line of the text at which the member begins.
    summary : str
        Rule, clause and place of the largest utilisation.
    """

    title: str
    line: int
    status: str
    utilisation: float
    summary: str
    section: str | None
    grade: str | None
    code: str | None
    annex: str | None
    section_class: int | None
    design_strength: float | None

    def __init__(self, source: Source, place: int) -> None:
        self._source = source
        self._place = place
        self._outcome = source.checked[0][place]
        head = self._outcome.head()
        self.title = head["title"]
        self.line = head["line"]
        self.status = head["status"]
        self.utilisation = head["utilisation"]
        self.summary = head["summary"]
        self.section = head["section"]
        self.grade = head["grade"]
        self.code = head["code"]
        self.annex = head["annex"]
        self.section_class = head["section_class"]
        self.design_strength = head["design_strength"]

    @property
    def passed(self) -> bool:
        """Whether every rule that applies was evaluated and none failed."""
        return self.status == "pass"

    @cached_property
    def findings(self) -> tuple[Finding, ...]:
        """One finding for each rule at least, several where it was applied span by span."""
        made = []
        for record in self._outcome.findings():
            record["steps"] = tuple(Step(*step) for step in record["steps"])
            made.append(Finding(**record))
        return tuple(made)

    @property
    def governing(self) -> Finding | None:
        """The finding of the largest utilisation; None without one."""
        for finding in self.findings:
            if finding.governing:
                return finding
        return None

    @cached_property
    def diagnostics(self) -> tuple[Diagnostic, ...]:
        """What reading and checking found in the input, in the order of its lines."""
        return diagnostics_of(self._outcome.diagnostics())

    @cached_property
    def warnings(self) -> tuple[Diagnostic, ...]:
        """The warnings and notes that stand in every report of the member."""
        return diagnostics_of(self._outcome.warnings())

    @cached_property
    def resistances(self) -> tuple[Resistance, ...]:
        """Those of cross-sections, then those of spans; empty where the member is refused."""
        if self._outcome.is_refused:
            return ()
        found = self.to_dict()["resistances"]
        records = found["list"] if isinstance(found, dict) else found
        return tuple(Resistance(**record) for record in records)

    def to_json(self) -> str:
        """The findings as the command line writes them with ``check --format json``.

        Returns
        -------
        str
            One JSON object.

        Raises
        ------
        InputError
            For a refused member, which has no findings.
        """
        if self._outcome.is_refused:
            raise input_error(self.diagnostics)
        return self._outcome.json(0)

    def to_dict(self) -> dict[str, Any]:
        """The same as a new dictionary."""
        return dict(json.loads(self.to_json()))

    def report(self) -> str:
        """The report as plain text: summary and calculation.

        Raises
        ------
        InputError
            For a refused member, which has no report.
        """
        if self._outcome.is_refused:
            raise input_error(self.diagnostics)
        return self._outcome.report()

    def html(self) -> str:
        """The calculation sheet as one HTML document; of a refused member the messages."""
        return _keltrix.html([self._outcome], [], [(self._source.name, self._source.text)], [], False)

    def _repr_html_(self) -> str:
        # A document within a document: a notebook shows it in a frame, which keeps their styles apart.
        import html

        return (
            '<iframe style="width:100%;height:40em;border:0" srcdoc="'
            + html.escape(self.html())
            + '"></iframe>'
        )

    @property
    def _digest(self) -> str:
        if self._outcome.is_refused:
            text = "\n".join(one.message for one in self.diagnostics)
        else:
            text = self._outcome.json(-1)
        return hashlib.sha256(text.encode()).hexdigest()

    def __reduce__(self) -> tuple[Any, ...]:
        return _restored, (self._source, self._place, self._digest, _keltrix.__version__)

    def __bool__(self) -> NoReturn:
        raise TypeError("a result has no truth value: use .passed, which is true for the status 'pass' alone")

    def __repr__(self) -> str:
        if self._outcome.is_refused:
            first = next((one.message for one in self.diagnostics if one.severity == "error"), "")
            return f"<Result refused: {first}>"
        utilisation = _keltrix.utilisation_text(self.utilisation)
        return f"<Result {self.status}: utilisation {utilisation}, {self.summary}>"


class Results(Sequence[Result]):
    """What the check of a text found, member by member. Refused members are among them.

    Like a result it has no truth value: ask `passed`.

    Attributes
    ----------
    diagnostics : tuple of Diagnostic
        What is wrong between the members.
    """

    diagnostics: tuple[Diagnostic, ...]

    def __init__(self, results: Iterable[Result], diagnostics: Iterable[Diagnostic] = ()) -> None:
        self._results = tuple(results)
        self.diagnostics = tuple(diagnostics)

    @overload
    def __getitem__(self, place: int) -> Result: ...

    @overload
    def __getitem__(self, place: slice) -> Results: ...

    def __getitem__(self, place: int | slice) -> Result | Results:
        if isinstance(place, slice):
            return Results(self._results[place], self.diagnostics)
        return self._results[place]

    def __len__(self) -> int:
        return len(self._results)

    def __iter__(self) -> Iterator[Result]:
        return iter(self._results)

    @property
    def passed(self) -> bool:
        """Whether there is a member, every member passes, and nothing between them is an error."""
        return (
            len(self._results) > 0
            and all(result.passed for result in self._results)
            and not any(one.severity == "error" for one in self.diagnostics)
        )

    def to_json(self) -> str:
        """The findings as the command line writes them with ``check --format json``; refused members are left out."""
        texts = [one._outcome.json(1) for one in self._results if not one._outcome.is_refused]
        return "[\n" + ",\n".join(texts) + "\n]\n" if texts else "[]\n"

    def __bool__(self) -> NoReturn:
        raise TypeError("results have no truth value: use .passed, or len() for how many there are")

    def __repr__(self) -> str:
        return f"<Results of {len(self)}: " + ", ".join(one.status for one in self._results[:8]) + (
            ", ...>" if len(self) > 8 else ">"
        )
