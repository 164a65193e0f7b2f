"""A floor of beams from a table: the lightest section of each that passes, and what it is used to."""

import keltrix as kx

FLOOR = [  # mark, span in m, permanent and imposed load in kN/m
    ("B1", 6.0, 8.0, 12.0),
    ("B2", 7.5, 8.0, 12.0),
    ("B3", 9.0, 6.0, 10.0),
]

for mark, span, permanent, imposed in FLOOR:
    beam = kx.Beam("UB 457x191x67", "S355", spans=[span], title=f"Beam {mark}")
    beam.add_udl(permanent, case="permanent").add_udl(imposed, case="imposed").restrain("top")
    found = kx.design(beam, "UB", count=1)
    if found.chosen is None:
        print(f"{mark}: no section passes")
        continue
    best = found.passing[0]
    print(f"{mark}: {best.section}, {best.mass_per_metre:g} kg/m, {best.utilisation:.2f}, {best.governing.split(',')[0]}")
