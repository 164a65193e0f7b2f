"""The script of an array job, by tasks that are started here, and by a Slurm of one machine, which is started here where its packages are."""

from __future__ import annotations

import contextlib
import getpass
import json
import os
import shutil
import socket
import subprocess
import time
from collections.abc import Callable, Iterator
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


def task(number: int, *arguments: object, numbers: str = "1 2 3") -> subprocess.CompletedProcess[str]:
    """One of the tasks with these numbers, as Slurm tells them to it."""
    every = numbers.split()
    return run(*arguments, SLURM_ARRAY_TASK_ID=str(number), SLURM_ARRAY_TASK_COUNT=str(len(every)), SLURM_ARRAY_TASK_MIN=every[0],
               SLURM_ARRAY_TASK_MAX=every[-1])


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
    assert sorted(one.name for one in (tmp_path / "results").iterdir()) == ["job", *(f"part-0000{i}.jsonl" for i in (1, 2, 3))]


def test_a_refused_member_fails_its_task_and_stays_in_its_part(tmp_path: Path) -> None:
    path = members(tmp_path)
    path.write_text(path.read_text(encoding="utf-8").replace("TITLE,M0", "TITLE,M0", 1).replace("UB 457x191x67", "UB 1", 1), encoding="utf-8")
    assert [task(number, path, tmp_path / "results").returncode for number in range(1, TASKS + 1)] == [2, 0, 0]
    assert len(found(tmp_path / "results")) == 7


def test_a_task_without_members_has_an_empty_part(tmp_path: Path) -> None:
    path = tmp_path / "one.csv"
    path.write_text(MEMBER, encoding="utf-8")
    assert [task(number, path, tmp_path / "results").returncode for number in range(1, TASKS + 1)] == [0, 0, 0]
    assert len(found(tmp_path / "results")) == 1 and len(list((tmp_path / "results").glob("part-*"))) == TASKS


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


def test_missing_tasks_are_started_again_by_their_numbers(tmp_path: Path) -> None:
    path = members(tmp_path)
    results = tmp_path / "results"
    assert task(3, path, results).returncode == 0
    done = task(1, path, results, numbers="1 2")  # 2 of 3 parts, not 2 of 2
    assert done.returncode == 0, done.stderr
    assert task(2, path, results, numbers="2").returncode == 0
    assert sorted(row["title"] for row in found(results)) == [f"M{i}" for i in range(7)]
    assert task(4, path, results, numbers="1 2 3 4").returncode == 3


def test_parts_of_different_jobs_do_not_mix(tmp_path: Path) -> None:
    path = members(tmp_path)
    results = tmp_path / "results"
    assert task(1, path, results, "--code", "bs5950").returncode == 0
    before = (results / "part-00001.jsonl").read_text(encoding="utf-8")
    other = task(2, path, results, "--code", "ec3")
    assert other.returncode == 3 and "other members or options" in other.stderr
    path.write_text(path.read_text(encoding="utf-8").replace("S275", "S355"), encoding="utf-8")
    assert task(1, path, results, "--code", "bs5950").returncode == 3
    assert (results / "part-00001.jsonl").read_text(encoding="utf-8") == before and len(found(results)) == 3


def test_a_new_folder_takes_whole_jobs(tmp_path: Path) -> None:
    path = members(tmp_path)
    for numbers, number in (("2 3", 2), ("1 3 5", 1), ("0 1 2", 1)):
        done = task(number, path, tmp_path / "results", numbers=numbers)
        assert done.returncode == 3 and "from 1" in done.stderr, numbers
    assert not (tmp_path / "results").exists()


# --- A Slurm of one machine ---

CONFIGURATION = """ClusterName=test
SlurmctldHost={host}(127.0.0.1)
SlurmUser={user}
SlurmdUser={user}
AuthType=auth/munge
AuthInfo=socket={folder}/munge.sock,cred_expire=5
CredType=cred/munge
SlurmctldPort={controller_port}
SlurmdPort={node_port}
StateSaveLocation={folder}/state
SlurmdSpoolDir={folder}/spool
SlurmctldPidFile={folder}/slurmctld.pid
SlurmdPidFile={folder}/slurmd.pid
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
JobAcctGatherType=jobacct_gather/none
AccountingStorageType=accounting_storage/none
MpiDefault=none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
SlurmdParameters=config_overrides
ReturnToService=2
KillWait=1
NodeName={host} NodeAddr=127.0.0.1 CPUs=6 State=UNKNOWN
PartitionName=all Nodes={host} Default=YES MaxTime=10 State=UP
"""


def free_ports() -> tuple[int, int]:
    with socket.socket() as one, socket.socket() as other:
        one.bind(("127.0.0.1", 0))
        other.bind(("127.0.0.1", 0))
        return one.getsockname()[1], other.getsockname()[1]


def holds(condition: Callable[[], bool], seconds: float) -> bool:
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            return False
        time.sleep(0.2)
    return True


@pytest.fixture(scope="module")
def slurm(tmp_path_factory: pytest.TempPathFactory) -> Iterator[dict[str, str]]:
    """What the commands of Slurm have to find in their environment."""
    where = f"{os.environ['PATH']}:/usr/sbin"
    programs = {name: shutil.which(name, path=where) or "" for name in ("munged", "slurmctld", "slurmd", "sbatch", "scontrol", "sinfo")}
    missing = [name for name, program in programs.items() if not program]
    if missing:
        pytest.skip(f"Left out: a Slurm of one machine needs {', '.join(missing)} (Debian: apt-get install slurm-wlm)")
    folder = tmp_path_factory.mktemp("slurm")
    for name in ("state", "spool"):
        (folder / name).mkdir()
    (folder / "munge.key").write_bytes(os.urandom(128))
    (folder / "munge.key").chmod(0o400)
    controller_port, node_port = free_ports()
    conf = folder / "slurm.conf"
    conf.write_text(
        CONFIGURATION.format(host=socket.gethostname().split(".")[0], user=getpass.getuser(), folder=folder,
                             controller_port=controller_port, node_port=node_port),
        encoding="utf-8",
    )
    variables = {"SLURM_CONF": str(conf)}
    munge = [f"--{what}-file={folder}/munge.{what}" for what in ("key", "pid", "log", "seed")]
    commands = {
        "munged": ["--foreground", "--force", f"--socket={folder}/munge.sock", *munge],
        "slurmctld": ["-D", "-c", "-f", str(conf)],
        "slurmd": ["-D", "-f", str(conf)],
    }
    # The daemons may not have a word of another cluster.
    clean = {name: value for name, value in os.environ.items() if not name.startswith("SLURM_")}
    running = []
    with contextlib.ExitStack() as stack:
        try:
            for name, arguments in commands.items():
                log = stack.enter_context(open(folder / f"{name}.out", "wb"))
                running.append(subprocess.Popen([programs[name], *arguments], stdout=log, stderr=log, env={**clean, **variables}))
                if name == "munged":
                    holds(lambda: (folder / "munge.sock").exists(), 10)

            def is_idle() -> bool:
                shown = subprocess.run(["sinfo", "-h", "-o", "%T"], env={**clean, **variables}, capture_output=True, encoding="utf-8", check=False)
                return shown.stdout.strip() == "idle"

            if not holds(is_idle, 30):
                logs = "; ".join(f"{name}: {(folder / f'{name}.out').read_text(errors='replace').strip()[-200:]}" for name in commands)
                pytest.skip(f"Left out: the daemons of Slurm do not start here: {logs}")
            yield variables
        finally:
            for process in reversed(running):
                process.terminate()
            for process in running:
                try:
                    process.wait(20)
                except subprocess.TimeoutExpired:
                    process.kill()
                    process.wait()


def submit(slurm: dict[str, str], path: Path, numbers: str, *, front: str = "") -> subprocess.Popen[str]:
    """The job, whose standard output is its number, and which ends with it."""
    inside = {**environment(), **slurm}
    inside["PATH"] = front + inside["PATH"]
    command = ["sbatch", "--parsable", "--wait", f"--array={numbers}", "--chdir", str(path.parent), str(SCRIPT), str(path), str(path.parent / "results")]
    return subprocess.Popen(command, env=inside, stdout=subprocess.PIPE, encoding="utf-8")


def test_slurm_runs_it(slurm: dict[str, str], tmp_path: Path) -> None:
    path = members(tmp_path)
    job = submit(slurm, path, f"1-{TASKS}")
    job.communicate(timeout=120)
    assert job.returncode == 0, [one.read_text() for one in tmp_path.glob("slurm-*.out")]
    assert sorted(row["title"] for row in found(tmp_path / "results")) == [f"M{i}" for i in range(7)]
    # A part that was lost, by its number.
    (tmp_path / "results" / "part-00002.jsonl").unlink()
    again = submit(slurm, path, "2")
    again.communicate(timeout=120)
    assert again.returncode == 0, [one.read_text() for one in tmp_path.glob("slurm-*.out")]
    assert sorted(row["title"] for row in found(tmp_path / "results")) == [f"M{i}" for i in range(7)]


def test_a_task_that_is_killed_and_requeued_loses_and_doubles_nothing(slurm: dict[str, str], tmp_path: Path) -> None:
    path = members(tmp_path)
    begun = tmp_path / "begun"
    # The second task hangs at its first start, with a member of its part written.
    shim = tmp_path / "bin" / "ksteel"
    shim.parent.mkdir()
    shim.write_text(
        f"""#!/bin/bash
if [[ $SLURM_ARRAY_TASK_ID == 2 && -z ${{SLURM_RESTART_COUNT:-}} ]]; then
    {KSTEEL} "$@" | head -n 1
    touch {begun}
    sleep 600
fi
exec {KSTEEL} "$@"
""",
        encoding="utf-8",
    )
    shim.chmod(0o755)
    job = submit(slurm, path, f"1-{TASKS}", front=f"{shim.parent}:")
    assert holds(begun.exists, 60)
    assert not (tmp_path / "results" / "part-00002.jsonl").exists()
    assert job.stdout is not None
    number = job.stdout.readline().strip().split(";")[0]
    subprocess.run(["scontrol", "requeue", f"{number}_2"], env={**os.environ, **slurm}, check=True)
    assert job.wait(180) == 0
    results = tmp_path / "results"
    assert sorted(row["title"] for row in found(results)) == [f"M{i}" for i in range(7)]
    assert sorted(one.name for one in results.glob("part-*.jsonl")) == [f"part-0000{i}.jsonl" for i in (1, 2, 3)]
