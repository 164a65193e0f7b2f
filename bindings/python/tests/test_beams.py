"""Beams from their loads."""

from __future__ import annotations

import numpy as np
import pytest
from support import BEAM_FILES, SOURCE, ksteel

import keltrix as kx


def floor_beam() -> kx.Beam:
    beam = kx.Beam(
        "UB 533x210x82",
        "S275",
        title="Primary floor beam",
        length=9.0,
        supports="pinned",
        deflection={"imposed": 360, "total": 250},
    )
    beam.restrain("top", at=[3.0, 6.0])
    beam.add_point(30.0, at=[3.0, 6.0], case="Dead", kind="permanent")
    beam.add_point(45.0, at=[3.0, 6.0], case="Imposed", kind="imposed", category="B")
    return beam


def figures(result: kx.Result) -> dict[str, object]:
    """The findings without the places of the file."""
    found = result.to_dict()
    for name in ("file", "line", "warnings"):
        del found[name]
    return found


@pytest.mark.parametrize("code", ["bs5950", "ec3"])
def test_a_beam_from_calls_is_that_of_its_file(code: str) -> None:
    from_file = kx.Beam.from_file(SOURCE / "examples/floor_beam.toml").check(code)
    assert figures(floor_beam().check(code)) == figures(from_file)


@pytest.mark.parametrize("path", BEAM_FILES, ids=str)
def test_from_file(path: object, monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.chdir(SOURCE)
    result = kx.Beam.from_file(str(path)).check()
    assert "[\n" + result._outcome.json(1) + "\n]\n" == ksteel("check", path, "--format", "json")


def test_combinations_and_deflections_are_in_the_findings() -> None:
    result = floor_beam().check("bs5950")
    assert result.governing is not None
    assert result.governing.combination == "dead and imposed: 1.4 Dead + 1.6 Imposed"
    deflections = [one for one in result.findings if one.topic == "deflection"]
    assert deflections and all(one.quantity == "length" and one.demand is not None for one in deflections)
    # 45 kN at the thirds of 9 m: 23 P L³/(648 EI) = 23*45000*729/(648*205e9*47540e-8) m
    worst = max(one.demand for one in deflections if "variable" in one.rule and one.demand is not None)
    assert worst == pytest.approx(23 * 45e3 * 9**3 / (648 * 205e9 * 47540e-8), rel=0.002)


def test_every_value_is_written_as_toml() -> None:
    beam = kx.Beam(
        'I "x" \\ y',
        {"yield": 280, "ultimate": 420.5, "modulus": np.float64(205000)},
        spans=np.array([8.0, 6.0]),
        self_weight=np.bool_(False),
        title="Größe\n1",
        camber=(0.02, 1e-7),
    )
    beam.add_case("Wind up", "wind").add_udl(-2, case="Wind up", from_=1, to=np.int64(4), major=True)
    beam.add_combination("own", {"Wind up": [1.5, 0.0]}, state="characteristic")
    assert beam.text == (
        'title = "Größe\\u000A1"\nsection = "I \\"x\\" \\\\ y"\n'
        "grade = { yield = 280, ultimate = 420.5, modulus = 205000.0 }\nspans = [8.0, 6.0]\n"
        "self-weight = false\ncamber = [0.02, 1e-07]\n"
        '\n[[case]]\nname = "Wind up"\nkind = "wind"\n'
        '\n[[load]]\ncase = "Wind up"\nudl = -2\nfrom = 1\nto = 4\nmajor = true\n'
        '\n[[combination]]\nname = "own"\nfactors = { "Wind up" = [1.5, 0.0] }\nstate = "characteristic"\n'
    )


def test_a_text_cannot_leave_its_quotes() -> None:
    for text in ('"\nudl = 1', "\\", '\\"', "\x00", "\x7f", "a\rb", "'''", '"""', "# x", "]]"):
        beam = kx.Beam("UB 457x191x67", "S275", length=6.0, title=text)
        beam.add_udl(1.0, case="permanent")
        try:
            assert beam.check().status == "pass"
        except kx.InputError as error:
            assert {one.line for one in error.diagnostics if one.severity == "error"} == {1}


def test_errors_have_their_key_and_line() -> None:
    beam = kx.Beam("UB 457x191x67", "S275", spans=[9.0], lenght=9.0).add_udl(float("inf"), case="imposed")
    with pytest.raises(kx.InputError) as caught:
        beam.check()
    errors = [one for one in caught.value.diagnostics if one.severity == "error"]
    lines = beam.text.splitlines()
    for error in errors:
        assert error.line is not None and error.line <= len(lines)
    assert lines[next(one.line for one in errors if "lenght" in one.message) - 1].startswith("lenght")  # type: ignore[operator]
    load = next(one for one in errors if one.keyword == "load.udl")
    assert (load.got, load.expected) == ("inf", "a load in kN/m")


def test_half_a_beam_is_refused_and_says_why() -> None:
    for beam in (
        kx.Beam("", ""),
        kx.Beam("UB 457x191x67", "S275"),
        kx.Beam("UB 457x191x67", "S275", spans=[]),
        kx.Beam("UB 457x191x67", "S275", spans=[float("nan")]),
        kx.Beam("UB 457x191x67", "S275", spans=[-1.0]),
        kx.Beam("UB 457x191x67", "S275", length=6.0, self_weight=False),
        kx.Beam("UB 457x191x67", "S275", length=6.0).add_load(case="imposed"),
        kx.Beam("UB 457x191x67", "S275", length=6.0).add_point(1.0, at=7.0, case="imposed"),
        kx.Beam("UB 457x191x67", "S275", length=6.0).restrain("tap"),
    ):
        with pytest.raises(kx.InputError) as caught:
            beam.check()
        assert any(one.severity == "error" and one.message for one in caught.value.diagnostics)


def test_what_is_no_value_is_refused_by_name() -> None:
    for value in (object(), b"x", 1j, {1, 2}):
        with pytest.raises(kx.InputError, match="spans: got"):
            kx.Beam("UB 457x191x67", "S275", spans=value).text  # type: ignore[arg-type]


def test_restraints_in_words() -> None:
    held = {
        word: kx.Beam("UB 457x191x67", "S275", length=9.0).add_udl(12.0, case="permanent").restrain(word, 0, 9).check()
        for word in ("top", "bottom", "both", "Top flange lateral")
    }
    assert held["top"].to_dict()["checks"] == held["Top flange lateral"].to_dict()["checks"]
    assert held["top"].utilisation < held["bottom"].utilisation
    everywhere = kx.Beam("UB 457x191x67", "S275", length=9.0).add_udl(12.0, case="permanent").restrain("top").check()
    assert everywhere.utilisation == held["top"].utilisation


def test_an_unloaded_beam_does_not_pass() -> None:
    beam = kx.Beam("UB 457x191x67", "S275", length=6.0, self_weight=False).add_udl(0.0, case="permanent")
    assert beam.check().status == "not checked" and not beam.check().passed


def test_a_text_is_kept_as_it_is() -> None:
    text = floor_beam().text
    beam = kx.Beam.from_text(text)
    assert beam.text == text and beam.check().to_json() == floor_beam().check().to_json()
    with pytest.raises(kx.InputError, match="read from a text"):
        beam.add_udl(1.0, case="imposed")
    assert beam == kx.Beam.from_text(text) and beam == floor_beam() and beam != kx.Beam("", "")


def test_strict_makes_errors_of_warnings() -> None:
    beam = kx.Beam("UB 457x191x67", "S275", length=6.0, camber=0.01).add_udl(5.0, case="permanent")
    assert any(one.severity == "warning" for one in beam.check().warnings)
    with pytest.raises(kx.InputError):
        beam.check(strict=True)


@pytest.mark.parametrize("code", ["bs5950", "ec3"])
def test_each_finding_has_the_steps_of_its_combination(code: str) -> None:
    beam = kx.Beam("UB 457x191x67", "S275", length=6.0, self_weight=False, deflection=False).restrain("top")
    beam.add_udl(10.0, case="Dead", kind="permanent").add_udl(20.0, case="Imposed", kind="imposed", category="B")
    beam.add_load(case="Wind", kind="wind", axial=-200.0, at=6.0)
    result = beam.check(code)
    combinations = {one.combination for one in result.findings if one.steps}
    assert len(combinations) >= 2, "rules come from several combinations"
    assert result.governing is not None and result.governing.steps
    for one in result.findings:
        if one.status == "passed" and one.utilisation > 0.0 and one.topic != "deflection":
            assert one.steps, one
    # M of the combination that it names: 1.4 * 10 + 1.6 * 20 kN/m or 1.35 * 10 + 1.5 * 20 kN/m over 6 m.
    load = {"bs5950": 46.0, "ec3": 43.5}[code]
    bending = next(one for one in result.findings if one.topic == "bending, major axis" and one.steps)
    moment = load * 36.0 / 8.0
    assert any(f"{moment:.5g}" in step.values or step.value == pytest.approx(moment * 1e3) for step in bending.steps), bending.steps
