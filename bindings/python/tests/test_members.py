"""Members from points and words."""

from __future__ import annotations

import pytest
from support import MEMBER, MEMBER_FILES, SOURCE, ksteel

import keltrix as kx


def simple(**keys: object) -> kx.Member:
    member = kx.Member("UB 457x191x67", "S275", title="Beam", moment_factor=1.0, **keys)  # type: ignore[arg-type]
    member.add_point(0.0, "Pinned").add_point(2.5).add_point(5.0, "Pinned")
    member.add_sub_span(forces_left=(0, 0, -5e3), forces_right=(0, 0, -5e3), moments_right=(0, -12.5e3, 0))
    member.add_sub_span(forces_left=(0, 0, 5e3), forces_right=(0, 0, 5e3), moments_left=(0, -12.5e3, 0))
    return member


def without_captions(text: str) -> list[str]:
    return [line for line in text.splitlines() if not line.startswith("HEADINGS")]


def test_the_text_is_that_of_the_member_file() -> None:
    assert without_captions(simple().text) == without_captions(MEMBER)


def test_a_member_is_the_same_as_its_text() -> None:
    member = simple()
    result = member.check()
    again = kx.Member.from_text(member.text).check()
    assert result.passed and result.to_json() == again.to_json()
    assert result.to_json() == kx.check_text(member.text, name="member")[0].to_json()


@pytest.mark.parametrize("path", MEMBER_FILES, ids=str)
def test_from_file(path: object, monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.chdir(SOURCE)
    result = kx.Member.from_file(str(path)).check()
    assert "[\n" + result._outcome.json(1) + "\n]\n" == ksteel("check", path, "--format", "json")


def test_numbers_are_written_exactly() -> None:
    member = kx.Member("UB 457x191x67", "S275", net_to_gross=0.1 + 0.2)
    member.add_point(0.0, "Pinned").add_point(1.0 / 3.0, "Pinned").add_sub_span(forces_left=(1e-300, 0, 0))
    assert "0.30000000000000004" in member.text and "0.3333333333333333" in member.text and "1e-300" in member.text


def test_what_is_held_is_said_in_words() -> None:
    for words in ("Pinned", "fixed", "Top flange lateral", "F1L TR", "14"):
        member = kx.Member("UB 457x191x67", "S275")
        member.add_point(0.0, words).add_point(4.0, "Fixed").add_sub_span(holds=words)
        assert member.text.count(f",{words},") == 2
        assert not [one for one in kx.validate(member) if one.severity == "error"]


def test_words_that_mean_nothing_are_the_readers_errors() -> None:
    member = kx.Member("UB 457x191x67", "S275").add_point(0.0, "Pined").add_point(4.0, "Pinned").add_sub_span()
    with pytest.raises(kx.InputError) as caught:
        member.check()
    error = caught.value.diagnostics[0]
    assert (error.keyword, error.field, error.got, error.advice) == (
        "MEMBERPOINT",
        "restraint",
        '"Pined"',
        "write Pinned",
    )


@pytest.mark.parametrize(
    ("keys", "part"),
    [
        ({"section": "UB 457x191x67,ROLLED"}, "section"),
        ({"section": "UB 457x191x67\nGRADE,S460"}, "section"),
        ({"grade": "S275,1,2,3"}, "grade"),
        ({"grade": "S275\0"}, "grade"),
        ({"title": "a\nSECTION,UB 610x305x238"}, "title"),
        ({"type": "cast"}, "type"),
        ({"effective_lengths": [1.0, 2.0]}, "effective_lengths"),
    ],
)
def test_a_field_cannot_become_two(keys: dict[str, object], part: str) -> None:
    arguments: dict[str, object] = {"section": "UB 457x191x67", "grade": "S275", **keys}
    member = kx.Member(**arguments)  # type: ignore[arg-type]
    with pytest.raises(kx.InputError, match=part):
        member.check()


def test_a_restraint_cannot_become_two_fields() -> None:
    for words in ("Pinned,0\nMEMBERPOINT", "a,b"):
        with pytest.raises(kx.InputError, match="restraint"):
            kx.Member("UB 457x191x67", "S275").add_point(0.0, words).check()


def test_half_a_member_is_refused() -> None:
    member = kx.Member("UB 457x191x67", "S275")
    for step in (
        lambda: None,
        lambda: member.add_point(0.0, "Pinned"),
        lambda: member.add_point(6.0, "Pinned"),
    ):
        step()
        with pytest.raises(kx.InputError) as caught:
            member.check()
        assert caught.value.diagnostics
    assert member.add_sub_span(moments_left=(0, -1e3, 0), moments_right=(0, -1e3, 0)).check().passed


@pytest.mark.parametrize("value", [float("nan"), float("inf"), -float("inf")])
def test_numbers_that_are_none_are_refused(value: float) -> None:
    member = simple()
    member.add_point(7.0, "Pinned").add_sub_span(forces_left=(value, 0, 0))
    with pytest.raises(kx.InputError, match="Fx-L"):
        member.check()
    with pytest.raises(kx.InputError):
        kx.Member("UB 457x191x67", "S275").add_point(value).add_point(1.0).add_sub_span().check()


def test_vectors_have_three_numbers() -> None:
    with pytest.raises(kx.InputError, match="forces_left: got 2 numbers"):
        simple().add_sub_span(forces_left=(1.0, 2.0))


def test_a_section_is_made_as_the_catalogue_has_it() -> None:
    assert ",ROLLED" in simple().text
    assert ",WELDED" in simple(type="Welded").text
    assert ",FORMED" in kx.Member("CFCHS 168.3x5", "S275").text
    assert ",UNDEF" in kx.Member("I 450x190x9x14", "S275").text


def test_a_text_is_kept_as_it_is() -> None:
    member = kx.Member.from_text(MEMBER)
    assert member.text == MEMBER
    with pytest.raises(kx.InputError, match="read from a text"):
        member.add_point(1.0)
    with pytest.raises(kx.InputError, match="holds 2 members"):
        kx.Member.from_text(MEMBER * 2).check()


def test_a_grade_of_another_code_is_refused_with_its_line() -> None:
    with pytest.raises(kx.InputError) as caught:
        kx.Member.from_text(MEMBER.replace("S275", "S111")).check("bs5950")
    assert caught.value.diagnostics[0].line == 4 and caught.value.diagnostics[0].code == "code-grade"
