"""The catalogue."""

from __future__ import annotations

import pickle

import numpy as np
import pytest
from support import ksteel_json

import keltrix as kx


@pytest.mark.parametrize(
    "name", ["UB 457x191x67", "UC 254x254x89", "PFC 200x90x30", "L 150x75x10", "T 229x191x34", "RHS 200x100x6.3", "CHS 168.3x5", "I 450x190x9x14"]
)
def test_sections_are_those_of_the_command_line(name: str) -> None:
    record = ksteel_json("section", name)
    section = kx.sections[name]
    assert (section.name, section.family, section.shape) == (record["name"], record["family"], record["shape"])
    assert section.mass_per_metre == record["mass_per_metre"]
    assert {symbol: value.value for symbol, value in section.properties.items()} == record["properties"]
    assert {symbol: value.value for symbol, value in section.dimensions.items()} == record["dimensions"]
    for symbol, value in record["properties"].items():
        assert getattr(section, symbol) == value


def test_an_angle_has_its_area_and_its_leg() -> None:
    angle = kx.sections["L 150x75x10"]
    assert angle.dimensions["A"].value == 0.15 and angle.A == angle.properties["A"].value < 0.01
    row = kx.sections.table("L")[list(kx.sections.of("L")).index("L 150x75x10")]
    assert (row["A"], row["A_dimension"]) == (angle.A, 0.15)


@pytest.mark.parametrize("family", kx.sections.families)
def test_tables_have_what_the_sections_have(family: str) -> None:
    table = kx.sections.table(family)
    names = kx.sections.of(family.lower())
    assert table["name"].tolist() == list(names) and len(table) > 0
    for row in table[:: max(1, len(table) // 3)]:
        section = kx.sections[str(row["name"])]
        assert row["mass_per_metre"] == section.mass_per_metre
        for symbol, value in section.properties.items():
            assert row[symbol] == value.value
    assert np.all(table["A"] > 0.0)


def test_published_properties() -> None:
    # UB 457x191x67 of the section tables: A 85.5 cm², Ixx 29400 cm⁴, Sxx 1470 cm³.
    section = kx.sections["457x191x67 UB"]
    assert section.A * 1e4 == pytest.approx(85.5, abs=0.05)
    assert section.Ixx * 1e8 == pytest.approx(29400, abs=50)
    assert section.Sxx * 1e6 == pytest.approx(1470, abs=5)


def test_unknown_names_say_what_there_is() -> None:
    with pytest.raises(kx.InputError, match="nearest: .*UB 457x191x67"):
        kx.sections["UB 457x191x68"]
    with pytest.raises(kx.InputError, match="the catalogue has UB, UC"):
        kx.sections.table("XX")
    for family in ("", "XX"):
        with pytest.raises(kx.InputError):
            kx.sections.of(family)
    with pytest.raises(AttributeError, match="it has A, Ixx"):
        kx.sections["UB 457x191x67"].Ixz
    with pytest.raises(AttributeError):
        kx.sections["UB 457x191x67"].__array__
    for name in ("", "\0", "a\nb", "UB" * 10_000):
        with pytest.raises(kx.InputError):
            kx.sections[name]
        assert name not in kx.sections
    assert 5 not in kx.sections and None not in kx.sections


def test_the_catalogue_is_a_mapping() -> None:
    names = list(kx.sections)
    assert len(names) == len(kx.sections) == sum(len(kx.sections.of(family)) for family in kx.sections.families)
    assert kx.sections.get("UB 457x191x67") == kx.sections["ub 457 x 191 x 67"]
    with pytest.raises(kx.InputError):
        kx.sections.get("no such section")


def test_sections_are_pickled_by_name() -> None:
    section = kx.sections["UB 457x191x67"]
    again = pickle.loads(pickle.dumps(section))
    assert again == section and again.Ixx == section.Ixx and hash(again) == hash(section)


def test_a_section_draws_itself() -> None:
    assert kx.sections["UB 457x191x67"]._repr_svg_().count("<svg") == 1
