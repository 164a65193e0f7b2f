"""The same beam to each design code over its length, as a table: utilisations of a uniformly loaded beam between forks."""

import numpy as np

import keltrix as kx

lengths = np.linspace(4.0, 10.0, 7)
table = {"section": "UB 457x191x67", "grade": "S275", "length": lengths, "w": 12e3}
codes = kx.codes()
columns = [kx.check_many(table, code.id)["utilisation"] for code in codes]

print("length  " + "".join(f"{code.id:>10}" for code in codes))
for length, *utilisations in zip(lengths, *columns):
    print(f"{length:4.1f} m  " + "".join(f"{utilisation:10.3f}" for utilisation in utilisations))
