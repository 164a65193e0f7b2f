"""A member of a model of a frame in Python. The class below has what `from_pynite` reads of such a model, for one beam."""

from types import SimpleNamespace

import keltrix as kx


class Member:
    """A beam of 8 m between pins under 18 kN/m and 120 kN of compression: kN, m, a face that looks against x, y upwards."""

    DistLoads = [("Fy", -18.0, -18.0, 0.0, 8.0, "D")]

    def L(self) -> float:
        return 8.0

    def axial(self, x: float, combo_name: str) -> float:
        return 120.0

    def shear(self, Direction: str, x: float, combo_name: str) -> float:
        return 18.0 * (4.0 - x) if Direction == "Fy" else 0.0

    def moment(self, Direction: str, x: float, combo_name: str) -> float:
        return -9.0 * x * (8.0 - x) if Direction == "Mz" else 0.0

    def torque(self, x: float, combo_name: str) -> float:
        return 0.0


model = SimpleNamespace(members={"B7": Member()}, load_combos={"1.4D": None})
for section in ("UB 457x191x67", "UB 457x191x82", "UB 533x210x92"):
    made = kx.from_pynite(
        model, "B7", "1.4D", force="kN", length="m", section=section, grade="S355", start="Pinned", end="Pinned",
        restraints="Top flange lateral@4",
    )
    result = made.check()[0]
    print(f"{section}: {result.status}, {result.utilisation:.2f}, {result.summary}")
