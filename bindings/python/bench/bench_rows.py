"""Tables of simple members: rows a second, beside what else does the same in the same run.

    ./python bindings/python/bench/bench_rows.py [KSTEEL]

Floors: the same members through one process of ksteel as a stream of member files with one line of JSON for each (their
texts are made before the clock runs), and a check of a single member as an object, with its text. Each figure is the shortest of seven runs that
take turns, so that all have the same chances of a quiet moment. Times of one machine say little on another; the ratios say more.
"""

from __future__ import annotations

import subprocess
import sys
import time
from collections.abc import Callable
from pathlib import Path

import numpy as np

import keltrix as kx

ROWS = 20_000
RUNS = 7


def table(rows: int, **more: object) -> dict[str, object]:
    rng = np.random.default_rng(1)
    return {
        "section": rng.choice(np.array(["UB 457x191x67", "UB 533x210x92", "UC 254x254x89"], dtype=object), rows),
        "grade": "S275",
        "length": rng.uniform(3.0, 9.0, rows),
        "w": rng.uniform(1e3, 15e3, rows),
        **more,
    }


def main() -> None:
    code = kx.codes()[0].id
    other = kx.codes()[-1].id
    beams = table(ROWS)
    columns = table(2_000, N=-2e5)
    held = table(500, N=-2e5, restraint_along="Top flange lateral")
    figures: dict[str, tuple[int, Callable[[], object]]] = {
        "beams, check_many": (ROWS, lambda: kx.check_many(beams)),
        "beams, check_many on two threads": (ROWS, lambda: kx.check_many(beams, jobs=2)),
        "beam-columns, check_many": (2_000, lambda: kx.check_many(columns)),
        "beam-columns held at a flange, check_many": (500, lambda: kx.check_many(held)),
        f"beams, check_many to {other}": (1_000, lambda: kx.check_many(table(1_000), other)),
        "beams, an object each": (500, lambda: [kx.member_of_row(first, 0).check() for _ in range(500)]),
    }
    first = table(1)
    if len(sys.argv) > 1:
        texts = "".join(kx.member_of_row({k: v[i : i + 1] if isinstance(v, np.ndarray) else v for k, v in beams.items()}, 0).text for i in range(ROWS)).encode()  # type: ignore[index]
        command = [str(Path(sys.argv[1]).resolve()), "check", "-", "--format", "jsonl", "--report", "table"]

        def stream() -> None:
            subprocess.run(command, input=texts, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)

        figures["beams, one process of ksteel"] = (ROWS, stream)
    shortest = dict.fromkeys(figures, float("inf"))
    for _ in range(RUNS):
        for name, (_, work) in figures.items():
            begin = time.perf_counter()
            work()
            shortest[name] = min(shortest[name], time.perf_counter() - begin)
    floor = shortest["beams, check_many"] / ROWS
    print(f"{code}; shortest of {RUNS} runs\n")
    print(f"{'':45}{'us a member':>12}{'a second':>12}{'beside check_many':>20}")
    for name, (rows, _) in figures.items():
        each = shortest[name] / rows
        print(f"{name:45}{each * 1e6:12.2f}{1 / each:12,.0f}{each / floor:20.2f}")


if __name__ == "__main__":
    main()
