"""How far UB 457x152x60 in S355 spans under 30 kN/m (design value), its compressed flange held or not."""

import numpy as np

import keltrix as kx

lengths = np.linspace(4.0, 12.0, 100)
beams = {"section": "UB 457x152x60", "grade": "S355", "length": lengths, "w": 30e3}  # m, N/m

for held, words in (("Top flange lateral", "held"), ("Free", "not held")):
    found = kx.check_many({**beams, "restraint_along": held}, code="ec3")
    passes = lengths[found["status"] == "pass"]
    print(f"{words}: passes up to {passes.max():.1f} m")
