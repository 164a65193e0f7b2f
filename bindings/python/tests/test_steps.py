"""The numbers of a step, calculated again as they are printed, give its value."""

from __future__ import annotations

import math
import random
import re
from collections.abc import Callable
from typing import Any

import keltrix as kx
import pytest

UNITS = {
    "kNm": 1e3, "kN": 1e3, "N/mm²": 1e6, "N": 1.0, "cm⁴": 1e-8, "cm³": 1e-6, "cm²": 1e-4, "cm": 1e-2, "mm": 1e-3, "m": 1.0,
}
TOKEN = re.compile(
    r"\s*(?P<number>inf|\d+\.?\d*(?:[Ee][+-]?\d+)?)(?:\s*(?P<unit>" + "|".join(UNITS) + r")(?![\w²³⁴]))?|\s*(?P<other>min|max|[-+*/^()|,²])"
)


class Expression:
    """What a hand calculation writes: numbers with units, + - * / ^ ², brackets, |x|, min and max."""

    def __init__(self, text: str) -> None:
        self.numbers: list[float] = []
        self.halves: list[float] = []
        self.tokens: list[str | int] = []
        at = 0
        while at < len(text):
            found = TOKEN.match(text, at)
            assert found, f"{text!r} is no calculation at {text[at:]!r}"
            at = found.end()
            if found["other"]:
                self.tokens.append(found["other"])
                continue
            digits, scale = found["number"], UNITS[found["unit"]] if found["unit"] else 1.0
            number = float(digits)
            # Four figures at least, from which zeros at the end are dropped; utilisations have three decimals.
            last = 10.0 ** (math.floor(math.log10(number)) - 3) if number > 0.0 and math.isfinite(number) else 0.0
            if re.fullmatch(r"\d+\.\d{3}", digits):
                last = max(last, 1e-3)
            self.tokens.append(len(self.numbers))
            self.numbers.append(number * scale)
            self.halves.append(0.5 * last * scale)

    def value(self, numbers: list[float]) -> float:
        self.at, self.given = 0, numbers
        result = self.sum()
        assert self.at == len(self.tokens), self.tokens
        return result

    def take(self, *wanted: str) -> str | None:
        if self.at < len(self.tokens) and self.tokens[self.at] in wanted:
            self.at += 1
            return str(self.tokens[self.at - 1])
        return None

    def sum(self) -> float:
        result = self.product()
        while sign := self.take("+", "-"):
            term = self.product()
            result += term if sign == "+" else -term
        return result

    def product(self) -> float:
        result = self.power()
        while sign := self.take("*", "/"):
            factor = self.power()
            result = result * factor if sign == "*" else result / factor
        return result

    def power(self) -> float:
        if self.take("-"):
            return -self.power()
        result = self.atom()
        while sign := self.take("^", "²"):
            result = result ** (2.0 if sign == "²" else self.atom())
        return result

    def atom(self) -> float:
        pick: dict[str, Callable[[list[float]], float]] = {"min": min, "max": max}
        if name := self.take("min", "max"):
            assert self.take("(")
            values = [self.sum()]
            while self.take(","):
                values.append(self.sum())
            assert self.take(")")
            return pick[name](values)
        for begin, end in (("(", ")"), ("|", "|")):
            if self.take(begin):
                inner = self.sum()
                assert self.take(end), self.tokens
                return abs(inner) if begin == "|" else inner
        place = self.tokens[self.at]
        assert isinstance(place, int), self.tokens
        self.at += 1
        return self.given[place]


def off(expression: Expression, value: float) -> float:
    """By how much the printed numbers, each rounded to its last digit, cannot be the value's; 0 where they can."""
    nominal = expression.value(expression.numbers)
    spread = 0.0
    for i, half in enumerate(expression.halves):
        sides = []
        for side in (-half, half):
            numbers = list(expression.numbers)
            numbers[i] += side
            sides.append(abs(expression.value(numbers) - nominal))
        spread += max(sides)
    # Products of two roundings are left out of the spread: a share of it.
    return max(0.0, abs(nominal - value) - 1.05 * spread - 1e-12 * abs(value))


def random_table(seed: int, rows: int) -> dict[str, Any]:
    print(f"seed {seed}")
    rng = random.Random(seed)
    sections = [
        "UB 457x191x67", "UC 203x203x46", "UB 1016x305x222", "RHS 200x100x5", "SHS 300x300x6.3", "CHS 168.3x5", "PFC 200x90x30",
        "L 100x100x10", "L 150x75x10", "T 203x178x34", "I 900x300x6x12", "I 450x190x9x14", "BOX 400x200x8x12",
    ]
    known = [name for name in sections if name_is_taken(name)]
    assert len(known) >= 9, known
    ends = ["Pinned", "Pinned", "Fixed", "F1L TR"]
    return {
        "section": [rng.choice(known) for _ in range(rows)],
        "grade": [rng.choice(["S275", "S355"]) for _ in range(rows)],
        "length": [rng.uniform(1.0, 12.0) for _ in range(rows)],
        "N": [rng.choice([0.0, -1.0, 1.0]) * rng.uniform(0.0, 4e5) for _ in range(rows)],
        "Myy_start": [rng.uniform(-8e4, 8e4) for _ in range(rows)],
        "Myy_end": [rng.uniform(-8e4, 8e4) for _ in range(rows)],
        "Mzz_start": [rng.choice([0.0, 0.0, 8e3]) for _ in range(rows)],
        "Mzz_end": [rng.choice([0.0, 0.0, -5e3]) for _ in range(rows)],
        "w": [rng.choice([0.0, 1.0]) * rng.uniform(0.0, 2e4) for _ in range(rows)],
        "restraint_start": [rng.choice(ends) for _ in range(rows)],
        "restraint_end": [rng.choice(ends) for _ in range(rows)],
        "restraint_along": [rng.choice(["Free", "Free", "Top flange lateral"]) for _ in range(rows)],
    }


def name_is_taken(name: str) -> bool:
    try:
        kx.validate(kx.member_of_row({"section": [name], "grade": ["S275"], "length": [4.0], "N": [-1e3]}, 0))
    except (kx.InputError, KeyError):
        return False
    return True


CASES = pytest.mark.parametrize(
    ("code", "annex", "options"),
    [
        ("bs5950", "", {}),
        ("bs5950", "", {"exact": True}),
        ("ec3", "uk", {}),
        ("ec3", "recommended", {"interaction": "annex-a"}),
        ("ec3", "uk", {"mcr": "c1"}),
        ("ec3", "uk", {"interaction": "general", "ltb": "simplified", "bearing": 0.1}),
        ("bs5950", "", {"ltb": "elastic"}),
        ("bs5950", "", {"simple_column": True, "connection": "bolt"}),
    ],
)


@CASES
def test_printed_numbers_give_the_value(code: str, annex: str, options: dict[str, Any]) -> None:
    rows = 250
    table = random_table(len(code) + len(annex) + len(options), rows)
    calculated = 0
    for row in range(rows):
        result = kx.member_of_row(table, row).check(code, annex, **options)
        for finding in result.findings:
            for step in finding.steps:
                assert step.symbol
                assert not math.isnan(step.value)
                assert "%" not in step.formula + step.values + step.note
                if not step.values:
                    continue
                calculated += 1
                if math.isinf(step.value):
                    continue
                difference = off(Expression(step.values), step.value)
                assert difference == 0.0, f"row {row}, {table['section'][row]}, {finding.rule}: {step}: off by {difference}"
    assert calculated > 8 * rows


def shows(finding: kx.Finding, utilisation: float) -> bool:
    """Whether a step has the utilisation, as its value or as what is held against the resistance."""
    shown = [step.value for step in finding.steps]
    if finding.symbol and finding.resistance:
        shown += [abs(value) / finding.resistance for value in shown]
    return any(abs(value - utilisation) <= 1e-9 * utilisation for value in shown)


@CASES
def test_steps_lead_to_the_utilisation(code: str, annex: str, options: dict[str, Any]) -> None:
    rows = 250
    table = random_table(100 + len(code) + len(annex) + len(options), rows)
    judged = 0
    for row in range(rows):
        for finding in kx.member_of_row(table, row).check(code, annex, **options).findings:
            if finding.status not in ("passed", "failed") or not 0.0 < finding.utilisation < math.inf:
                continue
            judged += 1
            told = f"row {row}, {table['section'][row]}: {finding}"
            if finding.symbol:
                assert any(step.symbol == finding.symbol and step.value == finding.resistance for step in finding.steps), told
            assert shows(finding, finding.utilisation), told
    assert judged > 3 * rows
