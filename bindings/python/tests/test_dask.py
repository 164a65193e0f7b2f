"""Members on a cluster of two processes, one of which is killed in the middle."""

from __future__ import annotations

import os
import signal
import time
from collections.abc import Iterator
from typing import Any

import numpy as np
import pandas as pd
import pytest
from support import MEMBER

import keltrix as kx

dask_bag = pytest.importorskip("dask.bag")
dask_frame = pytest.importorskip("dask.dataframe")
distributed = pytest.importorskip("distributed")


@pytest.fixture(scope="module")
def cluster() -> Iterator[Any]:
    with distributed.LocalCluster(
        n_workers=2, threads_per_worker=1, processes=True, dashboard_address=None, silence_logs=50
    ) as local, distributed.Client(local):
        yield local


def frame(rows: int) -> pd.DataFrame:
    rng = np.random.default_rng(3)
    return pd.DataFrame(
        {
            "section": rng.choice(["UB 457x191x67", "UC 254x254x89", "UB 1"], rows),
            "grade": "S275",
            "length": rng.uniform(3.0, 9.0, rows),
            "w": rng.uniform(1e3, 15e3, rows),
        },
        index=pd.RangeIndex(100, 100 + rows, name="mark"),
    )


def slowly(part: pd.DataFrame) -> pd.DataFrame:
    time.sleep(0.1)
    return part


def test_a_frame_is_what_check_many_finds(cluster: Any) -> None:
    table = frame(400)
    found = kx.dask.check_many(dask_frame.from_pandas(table, npartitions=5), "bs5950")
    want = kx.check_many(table, "bs5950")
    assert list(found.columns) == list(want.columns) and (found.dtypes == want.dtypes).all()
    pd.testing.assert_frame_equal(found.compute(), want)


def test_a_worker_that_is_killed_loses_and_doubles_nothing(cluster: Any) -> None:
    table = frame(2000)
    parts = dask_frame.from_pandas(table, npartitions=40)
    client = distributed.get_client()
    before = {info["pid"] for info in client.run(lambda: {"pid": os.getpid()}).values()}
    future = client.compute(kx.dask.check_many(parts.map_partitions(slowly, meta=table.iloc[:0])))
    time.sleep(0.8)
    assert not future.done() and len(before) == 2
    os.kill(min(before), signal.SIGKILL)
    pd.testing.assert_frame_equal(future.result(timeout=60), kx.check_many(table))


def test_a_bag_of_beams_members_and_texts(cluster: Any) -> None:
    beam = kx.Beam("UB 457x191x67", "S275", length=6.0, title="B1").add_udl(10.0, case="permanent")
    subjects = [beam, kx.Member.from_text(MEMBER), MEMBER, MEMBER.encode(), MEMBER + MEMBER, MEMBER.replace("S275", "S1"), 5, kx.Beam("", "")]
    rows = kx.dask.check(dask_bag.from_sequence(subjects, npartitions=3), "bs5950").compute()
    assert [row["status"] for row in rows] == ["pass"] * 4 + ["refused"] * 4
    assert rows[0]["utilisation"] == beam.check("bs5950").utilisation and "1.4 permanent" in rows[0]["combination"]
    assert rows[1] == rows[2] == rows[3] and rows[1]["title"] == "Beam"
    assert "2 members where one is expected" in rows[4]["message"] and "S1" in rows[5]["message"]
    assert "got int" in rows[6]["message"] and rows[7]["message"]


def test_rows_of_a_bag_tell_warnings_and_what_broke() -> None:
    import dask

    light = MEMBER.replace("5000,", "5,").replace("12500,", "12.5,")
    broken = kx.Member("UB 457x191x67", "S275", effective_lengths=["a", 1.0, 1.0])  # type: ignore[list-item]
    with dask.config.set(scheduler="synchronous"):
        rows = kx.dask.check(dask_bag.from_sequence([light, broken, MEMBER], npartitions=1)).compute()
    assert [row["status"] for row in rows] == ["pass", "refused", "pass"]
    assert "are they in kN?" in rows[0]["message"] and "ValueError" in rows[1]["message"] and rows[2]["message"] == ""


def test_what_is_wrong_with_all_is_told_at_once() -> None:
    bag = dask_bag.from_sequence([MEMBER], npartitions=1)
    with pytest.raises(kx.InputError, match="design code"):
        kx.dask.check(bag, "xx")
    with pytest.raises(kx.InputError, match="unknown column"):
        kx.dask.check_many(dask_frame.from_pandas(frame(4).rename(columns={"w": "W"}), npartitions=1))
