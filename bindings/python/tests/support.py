"""What the tests share: the examples, ksteel, and texts of members."""

from __future__ import annotations

import json
import os
import subprocess
from pathlib import Path
from typing import Any

SOURCE = Path(os.environ["KELTRIX_SOURCE_DIR"])
KSTEEL = os.environ["KELTRIX_KSTEEL"]
EXAMPLES = sorted(path.relative_to(SOURCE) for path in (SOURCE / "examples").glob("*.*") if path.suffix in (".csv", ".toml"))
MEMBER_FILES = [path for path in EXAMPLES if path.suffix == ".csv"]
BEAM_FILES = [path for path in EXAMPLES if path.suffix == ".toml"]
CODES = [("bs5950", ""), ("ec3", "uk"), ("ec3", "recommended")]

# 5 m between forks under 10 kN at mid-span: 12.5 kNm.
MEMBER = """TITLE,Beam
HEADINGS,a
SECTION,UB 457x191x67,ROLLED
GRADE,S275
NET_TO_GROSS,1
ALLOWABLE_PLASTIC/ELASTIC_RATIO,1.2
SHEAR_LAG_FACTOR,0.7
HEADINGS,b
EFFECTIVE_LENGTH_OVERRIDES,NO
EQUIVALENT_UNIFORM_MOMENT_FACTOR,1
HEADINGS,c
MEMBERPOINT,1,0,Pinned,0
MEMBERPOINT,2,2.5,Free,0
MEMBERPOINT,3,5,Pinned,0
HEADINGS,d
SUBSPAN,1,0,0,-5000,0,0,-5000,0,0,0,0,-12500,0,Free,0
SUBSPAN,2,0,0,5000,0,0,5000,0,-12500,0,0,0,0,Free,0
END
"""


def ksteel(*arguments: object, text: str | None = None) -> str:
    """Standard output of ksteel, run where the examples' names are relative to."""
    done = subprocess.run(
        [KSTEEL, *map(str, arguments)], cwd=SOURCE, input=text, capture_output=True, encoding="utf-8", check=False
    )
    assert done.returncode in (0, 1), f"{arguments}: {done.stderr}"
    return done.stdout


def ksteel_json(*arguments: object, text: str | None = None) -> Any:
    return json.loads(ksteel(*arguments, "--format", "json", text=text))


def settings(code: str, annex: str) -> list[str]:
    return ["--code", code, *(["--annex", annex] if annex else [])]
