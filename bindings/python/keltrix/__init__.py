"""Keltrix Steel: steel members checked to design codes.

>>> import keltrix as kx
>>> beam = kx.Beam(spans=[9.0], section="UB 533x210x82", grade="S275")
>>> beam.add_udl(4.0, case="permanent").add_point(45.0, at=[3.0, 6.0], case="imposed").restrain("top", 0, 9)
<Beam Beam: UB 533x210x82 in S275>
>>> beam.check().status
'pass'
"""

from . import _keltrix

if not _keltrix.is_main_interpreter():
    raise ImportError("keltrix works in the main interpreter of a process alone, not in subinterpreters")

from . import dask
from ._beams import Beam
from ._checks import check_file, check_text, report, validate
from ._codes import Code, Option, Term, codes
from ._errors import Diagnostic, InputError
from ._imports import Imported, from_table
from ._members import Member
from ._pynite import from_pynite
from ._results import Finding, Resistance, Result, Results, Step
from ._saf import read_saf, write_saf
from ._sections import Section, Sections, SectionValue, sections
from ._studies import Buckling, Candidate, Design, buckling, capacity, design
from ._tables import check_many, columns, member_of_row

__version__: str = _keltrix.__version__

__all__ = [
    "Beam",
    "Buckling",
    "Candidate",
    "Code",
    "Design",
    "Diagnostic",
    "Finding",
    "Imported",
    "InputError",
    "Member",
    "Option",
    "Resistance",
    "Result",
    "Results",
    "Section",
    "SectionValue",
    "Sections",
    "Step",
    "Term",
    "buckling",
    "capacity",
    "check_file",
    "check_many",
    "check_text",
    "codes",
    "columns",
    "dask",
    "design",
    "from_pynite",
    "from_table",
    "member_of_row",
    "read_saf",
    "report",
    "sections",
    "validate",
    "write_saf",
]
