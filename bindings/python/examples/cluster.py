"""Ten thousand beams on a cluster: here two processes of this machine, elsewhere the address of a scheduler."""

import distributed
from dask import dataframe

import numpy as np
import pandas as pd

import keltrix as kx


def main() -> None:
    rng = np.random.default_rng(1)
    beams = pd.DataFrame({"section": "UB 457x191x67", "grade": "S275", "length": rng.uniform(4.0, 9.0, 10_000), "w": 12e3})
    with distributed.LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=None) as cluster, distributed.Client(cluster):
        found = kx.dask.check_many(dataframe.from_pandas(beams, npartitions=8)).compute()
    for status, count in found["status"].value_counts().items():
        print(f"{status}: {count}")
    worst = found["utilisation"].idxmax()
    print(f"worst: {found['utilisation'][worst]:.3f} at {beams['length'][worst]:.2f} m, {found['rule'][worst]}")


if __name__ == "__main__":  # the processes of the cluster import this file
    main()
