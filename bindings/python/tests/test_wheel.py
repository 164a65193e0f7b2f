"""The wheel: what the build backend packs installs without a network, and a check runs with what was installed.

The sources are not compiled anew: the module of this build stands in for what CMake would install. The gate "python" of the continuous integration
builds the wheel from the sources.
"""

from __future__ import annotations

import base64
import hashlib
import importlib
import os
import shutil
import subprocess
import sys
import zipfile
from pathlib import Path

import pytest
from support import SOURCE

import keltrix as kx


@pytest.fixture
def wheel(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> Path:
    monkeypatch.syspath_prepend(str(SOURCE / "bindings" / "python"))
    module = importlib.import_module("keltrix_build")

    def install(_: Path, prefix: Path) -> None:
        shutil.copytree(Path(kx.__file__).parent, prefix / "keltrix", ignore=shutil.ignore_patterns("__pycache__"))

    monkeypatch.setattr(module, "_build", install)
    return tmp_path / str(module.build_wheel(str(tmp_path)))


def test_the_wheel_installs_and_checks(wheel: Path, tmp_path: Path) -> None:
    if subprocess.run([sys.executable, "-m", "pip", "--version"], capture_output=True, check=False).returncode != 0:
        pytest.skip("Left out: pip installs the wheel (Debian: apt-get install python3-pip)")
    target = tmp_path / "installed"
    subprocess.run(
        [sys.executable, "-m", "pip", "install", "--no-index", "--no-deps", "--no-compile", "--disable-pip-version-check", "-q", "--target", str(target), str(wheel)],
        check=True, env={**os.environ, "PIP_BREAK_SYSTEM_PACKAGES": "1", "PIP_ROOT_USER_ACTION": "ignore"},
    )
    program = (
        "import keltrix as kx; beam = kx.Beam('UB 457x191x67', 'S275', length=6.0).add_udl(10.0, case='permanent');"
        "print(kx.__file__, beam.check().status)"
    )
    done = subprocess.run([sys.executable, "-B", "-c", program], env={**os.environ, "PYTHONPATH": str(target)}, capture_output=True, encoding="utf-8", check=True)
    assert done.stdout == f"{target}/keltrix/__init__.py pass\n"
    assert (target / f"keltrix-{kx.__version__}.dist-info" / "METADATA").is_file()


def test_the_record_has_every_file_with_its_hash(wheel: Path) -> None:
    with zipfile.ZipFile(wheel) as file:
        names = file.namelist()
        record = file.read(next(name for name in names if name.endswith("/RECORD"))).decode().splitlines()
        assert sorted(line.rsplit(",", 2)[0] for line in record) == sorted(names)
        for line in record:
            name, digest, size = line.rsplit(",", 2)
            content = file.read(name)
            if digest:
                assert digest == "sha256=" + base64.urlsafe_b64encode(hashlib.sha256(content).digest()).rstrip(b"=").decode()
                assert int(size) == len(content)
    assert "keltrix/py.typed" in names and any(name.endswith(".so") for name in names)


def test_every_module_of_the_package_is_installed() -> None:
    sources = {path.name for path in (SOURCE / "bindings" / "python" / "keltrix").iterdir() if path.suffix in (".py", ".pyi", ".typed") or path.name == "py.typed"}
    listed = (SOURCE / "bindings" / "python" / "CMakeLists.txt").read_text(encoding="utf-8")
    assert all(f"  {name}" in listed for name in sources)
