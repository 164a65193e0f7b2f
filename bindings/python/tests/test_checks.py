"""Checks of texts and files: the same as ksteel's, bit for bit."""

from __future__ import annotations

import os

import pytest
from support import BEAM_FILES, CODES, EXAMPLES, MEMBER, MEMBER_FILES, SOURCE, ksteel, ksteel_json, settings

import keltrix as kx


@pytest.fixture(autouse=True)
def _in_the_sources(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.chdir(SOURCE)


def test_there_are_examples() -> None:
    assert len(MEMBER_FILES) >= 8 and len(BEAM_FILES) >= 4


@pytest.mark.parametrize(("code", "annex"), CODES)
@pytest.mark.parametrize("path", EXAMPLES, ids=str)
def test_json_is_that_of_the_command_line(path: os.PathLike[str], code: str, annex: str) -> None:
    assert kx.check_file(path, code, annex).to_json() == ksteel(
        "check", path, *settings(code, annex), "--format", "json"
    )


@pytest.mark.parametrize(("code", "annex"), CODES)
@pytest.mark.parametrize("path", EXAMPLES, ids=str)
def test_attributes_are_what_the_json_says(path: os.PathLike[str], code: str, annex: str) -> None:
    records = ksteel_json("check", path, *settings(code, annex))
    results = kx.check_file(path, code, annex)
    assert len(records) == len(results) > 0
    for record, result in zip(records, results):
        assert result.status == record["status"]
        assert result.passed == (record["status"] == "pass")
        assert result.utilisation == record["overall"]
        assert (result.title, result.section, result.grade) == (record["title"], record["section"], record["grade"])
        assert (result.code, result.annex) == (record["code"], record["annex"])
        assert (result.section_class, result.design_strength) == (record["class"], record["design_strength"])
        assert [(one.severity, one.code, one.line, one.advice) for one in result.warnings] == [
            (one["severity"], one["code"], one["line"], one["text"]) for one in record["warnings"]
        ]
        assert len(result.findings) == len(record["checks"])
        for finding, check in zip(result.findings, record["checks"]):
            for name in ("rule", "topic", "clause", "status", "reason", "start", "end", "symbol", "quantity"):
                assert getattr(finding, name) == check[name]
            assert finding.utilisation == check["utilisation"] or check["utilisation"] is None
            assert finding.resistance == check["resistance"]
            assert finding.governing == check["governing"]
            assert finding.slenderness == check["slenderness"]
            assert finding.combination == check.get("combination", "")
            assert finding.demand == check.get("demand")
        governing = result.governing
        assert (governing is None) == (record["governing"] is None)
        if governing is not None:
            assert governing.rule == record["governing"]["rule"]
            assert governing.clause == record["governing"]["clause"]


@pytest.mark.parametrize("path", EXAMPLES, ids=str)
def test_the_sheet_is_that_of_the_command_line(path: os.PathLike[str]) -> None:
    html = kx.report(kx.check_file(path), job="Unit 7", by="A. N. Other", date="1 May")
    assert html == ksteel("report", path, "-o", "-", "--job", "Unit 7", "--by", "A. N. Other", "--date", "1 May")


def test_the_short_sheet_is_shorter() -> None:
    results = kx.check_file("examples/floor_beam.toml")
    brief = kx.report(results, brief=True)
    assert brief == ksteel("report", "examples/floor_beam.toml", "-o", "-", "--brief")
    assert len(brief) < len(kx.report(results))


def test_sheets_of_several_results_are_one_document() -> None:
    results = [kx.check_file(path)[0] for path in MEMBER_FILES[:2]]
    html = kx.report(results)
    assert html.count("<article") == 2
    assert html == ksteel("report", *MEMBER_FILES[:2], "-o", "-")


def test_a_result_shows_its_sheet_in_a_notebook() -> None:
    result = kx.check_text(MEMBER)[0]
    shown = result._repr_html_()
    assert shown.startswith("<iframe ") and "&lt;!DOCTYPE html&gt;" in shown and "<script" not in shown


def test_the_report_is_the_text_of_the_command_line() -> None:
    result = kx.check_file("examples/floor_beam.csv")[0]
    text = ksteel("check", "examples/floor_beam.csv")
    assert "lateral-torsional" in result.report().lower()
    assert text.startswith(result.report().split("\n\n")[0])


def test_options_are_those_of_the_design_code() -> None:
    for options, arguments in (
        ({"ltb": "elastic"}, ["--ltb", "elastic"]),
        ({"simple_column": True}, ["--simple-column"]),
        ({"bearing": 0.1}, ["--bearing", "0.1"]),
        ({"simple_column": False}, []),
    ):
        found = kx.check_file("examples/column.csv", "bs5950", **options)  # type: ignore[arg-type]
        assert found.to_json() == ksteel("check", "examples/column.csv", "--format", "json", *arguments)


def test_published_resistance() -> None:
    # Steelwork design guide to BS 5950-1:2000, volume 1: Mb = 196 kNm at 5 m; the file asks for a factor of 1.
    result = kx.check_text(MEMBER, "bs5950")[0]
    assert result.utilisation == pytest.approx(12.5 / 196.0, rel=0.01)
    assert result.governing is not None and result.governing.rule == "lateral-torsional buckling"
    assert result.governing.resistance == pytest.approx(196e3, rel=0.01)
    moments = {one.symbol: one.value for one in result.resistances if one.start is None}
    assert moments["Mcx"] == pytest.approx(404e3, rel=0.01)


def test_findings_have_their_calculation() -> None:
    result = kx.check_text(MEMBER, "ec3")[0]
    assert result.governing is not None
    steps = result.governing.steps
    assert steps and any(step.formula for step in steps)
    assert any(step.symbol and step.value is not None for step in steps)


def test_nothing_is_true_by_being_there() -> None:
    failing = kx.check_text(MEMBER.replace("12500", "1250000").replace("5000,0", "500000,0"))
    assert failing[0].status == "fail" and not failing[0].passed and not failing.passed
    design = kx.design(MEMBER, "UB", count=1)
    for one in (failing[0], failing, failing[0].findings[0], design, design.passing[0], kx.buckling(MEMBER)):
        with pytest.raises(TypeError, match="truth value"):
            bool(one)
    with pytest.raises(TypeError, match="use .passed"):
        assert not failing[0]


def test_a_refused_member_keeps_none_of_the_others() -> None:
    results = kx.check_text(MEMBER.replace("2.5,Free", "2.5m,Free") + MEMBER, name="beams.csv")
    assert [one.status for one in results] == ["refused", "pass"]
    assert not results.passed and results[1].passed
    refused = results[0]
    assert refused.utilisation != refused.utilisation
    assert refused.section is None and refused.findings == () and refused.resistances == () and refused.governing is None
    error = refused.diagnostics[0]
    assert (error.severity, error.line, error.keyword, error.field) == ("error", 13, "MEMBERPOINT", "position")
    assert (error.got, error.expected, error.advice) == ('"2.5m"', "a number in m", "write 2.5")
    for ask in (refused.to_json, refused.to_dict, refused.report):
        with pytest.raises(kx.InputError) as caught:
            ask()
        assert caught.value.diagnostics == refused.diagnostics
    assert "2.5m" in kx.report(results) and kx.report(results).count("<article") == 1
    assert results.to_json() == ksteel_text(MEMBER.replace("2.5,Free", "2.5m,Free") + MEMBER)


def ksteel_text(text: str) -> str:
    import subprocess

    from support import KSTEEL

    done = subprocess.run(
        [KSTEEL, "check", "-", "--format", "json"], input=text, capture_output=True, encoding="utf-8", check=False
    )
    return done.stdout.replace('"standard input"', '"beams.csv"')


def test_what_is_between_members_counts() -> None:
    text = MEMBER + "no line of a member\n" + MEMBER
    lenient = kx.check_text(text)
    assert [one.severity for one in lenient.diagnostics] == ["warning"] and lenient.passed
    strict = kx.check_text(text, strict=True)
    assert all(one.passed for one in strict)
    assert [(one.severity, one.line) for one in strict.diagnostics] == [("error", 19)]
    assert not strict.passed


def test_a_text_without_members_is_an_error() -> None:
    for text in ("", b"\xff\xfe\x00", "a\0b"):
        with pytest.raises(kx.InputError) as caught:
            kx.check_text(text, name="odd.csv")
        assert caught.value.diagnostics and "odd.csv" in str(caught.value)
    results = kx.check_text("no member at all\n")
    assert [one.status for one in results] == ["refused"] and results[0].diagnostics[0].line == 1


@pytest.mark.parametrize("path", EXAMPLES, ids=str)
def test_validate_is_that_of_the_command_line(path: os.PathLike[str]) -> None:
    subject = kx.Beam.from_file(path) if str(path).endswith(".toml") else kx.Member.from_file(path)
    for code in (None, "bs5950"):
        defects = ksteel_json("validate", path, *(["--code", code] if code else []))[0]["defects"]
        assert [one.__dict__ for one in kx.validate(subject, code)] == defects


def test_validate_finds_what_the_code_refuses_only_where_it_is_asked() -> None:
    text = MEMBER.replace("GRADE,S275", "GRADE,S111")
    assert not kx.validate(text)
    found = kx.validate(text, "")
    assert [one.code for one in found] == ["code-grade"] and found[0].line == 4


def test_strict_and_gaps() -> None:
    padded = MEMBER.replace("MEMBERPOINT,1,0,Pinned,0\n", "MEMBERPOINT,1,0,Pinned,0,,\n")
    assert kx.check_text(padded)[0].passed
    assert kx.check_text(padded, strict=True)[0].status == "refused"
    gap = MEMBER.replace("SUBSPAN,2", "SUBSPAN,7")
    assert kx.check_text(gap)[0].status == "refused"
    assert kx.check_text(gap, allow_gaps=True)[0].passed


def test_codes_are_those_of_the_command_line() -> None:
    records = ksteel_json("codes")
    codes = kx.codes()
    assert [(one.id, one.title, one.default) for one in codes] == [(r["id"], r["title"], r["default"]) for r in records]
    for code, record in zip(codes, records):
        assert [grade.name for grade in code.grades] == [one["name"] for one in record["grades"]]
        assert [(option.name, option.kind) for option in code.options] == [
            (one["name"], one["kind"]) for one in record["options"]
        ]
