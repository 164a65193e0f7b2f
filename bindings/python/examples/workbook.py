"""A workbook in the Structural Analysis Format, made here, its members checked, and the results written back into it."""

import tempfile
from pathlib import Path

import openpyxl

import keltrix as kx

SHEETS = {
    "StructuralMaterial": [["Name", "Type", "Quality"], ["S275", "Steel", "S275"]],
    "StructuralCrossSection": [["Name", "Material", "Cross-section type", "Profile"], ["CS1", "S275", "Manufactured", "UB 457x191x67"]],
    "StructuralCurveMember": [["Name", "Cross section", "Nodes", "Length [m]"], ["B1", "CS1", "N1; N2", 6.0]],
    "ResultInternalForce1D": [
        ["Result on", "Member", "Result for", "Load combination", "Section at [m]", "Index", "N [kN]", "Vy [kN]", "Vz [kN]", "Mx [kNm]", "My [kNm]", "Mz [kNm]"],
        ["On beam", "B1", "Load combination", "ULS 1", 0.0, 1, 0, 0, 60.0, 0, 0.0, 0],
        ["On beam", "B1", "Load combination", "ULS 1", 3.0, 2, 0, 0, 0.0, 0, 90.0, 0],
        ["On beam", "B1", "Load combination", "ULS 1", 6.0, 3, 0, 0, -60.0, 0, 0.0, 0],
    ],
}

with tempfile.TemporaryDirectory() as folder:
    path = Path(folder) / "model.xlsx"
    book = openpyxl.Workbook()
    book.remove(book.active)
    for name, rows in SHEETS.items():
        page = book.create_sheet(name)
        for row in rows:
            page.append(row)
    book.save(path)

    made = kx.read_saf(path, "z-down", start="Pinned", end="Pinned", restraints={"B1": "Top flange lateral@0:6"})
    kx.write_saf(path, made.check())

    results = openpyxl.load_workbook(path)["KeltrixResults"]
    for caption, value in zip(*results.iter_rows(values_only=True)):
        if value not in (None, ""):
            print(f"{caption}: {value}")
