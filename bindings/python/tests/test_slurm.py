"""The script of an array job, by tasks that are started here, and by Slurm where it runs on this machine."""

from __future__ import annotations

import json
import os
import shutil
import subprocess
from pathlib import Path
from typing import Any

import pytest
from support import KSTEEL, MEMBER, SOURCE

SCRIPT = SOURCE / "examples" / "slurm" / "check_array.sh"
TASKS = 3


def environment(**more: str) -> dict[str, str]:
    return {**os.environ, "PATH": f"{Path(KSTEEL).parent}:{os.environ['PATH']}", **more}


def run(*arguments: object, **more: str) -> subprocess.CompletedProcess[str]:
    return subprocess.run(
        [str(SCRIPT), *map(str, arguments)], env=environment(**more), capture_output=True, encoding="utf-8", check=False
    )


def task(number: int, *arguments: object) -> subprocess.CompletedProcess[str]:
    return run(*arguments, SLURM_ARRAY_TASK_ID=str(number), SLURM_ARRAY_TASK_COUNT=str(TASKS))


def members(folder: Path) -> Path:
    """Seven members, of which the fifth fails; END lines as people write them."""
    path = folder / "members.csv"
    texts = [MEMBER.replace("TITLE,Beam", f"TITLE,M{i}") for i in range(7)]
    texts[4] = texts[4].replace("5000,", "900000,").replace("-12500,", "-2250000,")
    texts[1] = texts[1].replace("END\n", "end,,\n")
    path.write_text("".join(texts), encoding="utf-8")
    return path


def found(folder: Path) -> list[dict[str, Any]]:
    return [json.loads(line) for part in sorted(folder.glob("part-*.jsonl")) for line in part.read_text(encoding="utf-8").splitlines()]


def test_the_parts_are_the_whole(tmp_path: Path) -> None:
    path = members(tmp_path)
    for number in range(1, TASKS + 1):
        done = task(number, path, tmp_path / "results", "--code", "bs5950")
        assert done.returncode == 0, done.stderr
    rows = found(tmp_path / "results")
    assert sorted(row["title"] for row in rows) == [f"M{i}" for i in range(7)]
    assert [row["status"] for row in rows if row["title"] == "M4"] == ["fail"]
    whole = subprocess.run([KSTEEL, "check", str(path), "--format", "jsonl", "--report", "table"], capture_output=True, encoding="utf-8", check=False)
    want = {row["title"]: row["overall"] for row in map(json.loads, whole.stdout.splitlines())}
    assert {row["title"]: row["overall"] for row in rows} == want
    assert sorted(one.name for one in (tmp_path / "results").iterdir()) == [f"part-0000{i}.jsonl" for i in (1, 2, 3)]


def test_a_refused_member_fails_its_task_and_stays_in_its_part(tmp_path: Path) -> None:
    path = members(tmp_path)
    path.write_text(path.read_text(encoding="utf-8").replace("TITLE,M0", "TITLE,M0", 1).replace("UB 457x191x67", "UB 1", 1), encoding="utf-8")
    assert [task(number, path, tmp_path / "results").returncode for number in range(1, TASKS + 1)] == [2, 0, 0]
    assert len(found(tmp_path / "results")) == 7


def test_a_task_without_members_has_an_empty_part(tmp_path: Path) -> None:
    path = tmp_path / "one.csv"
    path.write_text(MEMBER, encoding="utf-8")
    assert [task(number, path, tmp_path / "results").returncode for number in range(1, TASKS + 1)] == [0, 0, 0]
    assert len(found(tmp_path / "results")) == 1 and len(list((tmp_path / "results").iterdir())) == TASKS


def test_what_is_missing_is_said_and_nothing_is_written(tmp_path: Path) -> None:
    path = members(tmp_path)
    results = tmp_path / "results"
    assert run(path, results).returncode != 0 and "array job" in run(path, results).stderr
    assert task(4, path, results).returncode == 3 and "from 1" in task(4, path, results).stderr
    assert task(0, path, results).returncode == 3
    assert task(1, tmp_path / "none.csv", results).returncode == 3
    assert task(1, path).returncode == 3
    assert task(1, path, results, "--code", "xx").returncode == 2
    assert found(results) == [] and not any(results.glob("*"))


def test_slurm_runs_it(tmp_path: Path) -> None:
    if not shutil.which("sbatch") or subprocess.run(["sinfo", "-h"], capture_output=True, check=False).returncode != 0:
        pytest.skip("Left out: a running Slurm takes the array job (Debian: slurm-wlm, configured for this machine)")
    path = members(tmp_path)
    subprocess.run(
        ["sbatch", "--wait", f"--array=1-{TASKS}", "--chdir", str(tmp_path), str(SCRIPT), str(path), str(tmp_path / "results")],
        env=environment(), check=True, timeout=300,
    )
    assert sorted(row["title"] for row in found(tmp_path / "results")) == [f"M{i}" for i in range(7)]
