"""The build backend of the wheel (PEP 517): CMake builds the package with static libraries and installs it, and what it installed is packed.

It needs what the build of ksteel needs, pybind11, Python's headers and numpy, and nothing from a network.
"""

from __future__ import annotations

import base64
import hashlib
import os
import re
import subprocess
import sys
import sysconfig
import tempfile
import zipfile
from pathlib import Path
from typing import Any

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent


def _project(name: str) -> str:
    match = re.search(rf'^{name} = "(.*)"$', (HERE / "pyproject.toml").read_text(encoding="utf-8"), re.MULTILINE)
    if match is None:
        raise RuntimeError(f"pyproject.toml has no {name}")
    return match.group(1)


def _version() -> str:
    """The version of the library; pyproject.toml must have the same."""
    text = (ROOT / "CMakeLists.txt").read_text(encoding="utf-8")
    match = re.search(r"^project\(KeltrixSteel VERSION ([0-9.]+) ", text, re.MULTILINE)
    if match is None or match.group(1) != _project("version"):
        raise RuntimeError("CMakeLists.txt and pyproject.toml have different versions")
    return match.group(1)


def _tag() -> str:
    python = f"cp{sys.version_info.major}{sys.version_info.minor}"
    platform = re.sub(r"[-.]", "_", sysconfig.get_platform())
    return f"{python}-{python}-{platform}"


def _metadata(version: str) -> str:
    return (
        f"Metadata-Version: 2.1\nName: keltrix\nVersion: {version}\nSummary: {_project('description')}\n"
        f"Requires-Python: {_project('requires-python')}\nRequires-Dist: numpy\n"
    )


def _wheel_file() -> str:
    return f"Wheel-Version: 1.0\nGenerator: keltrix_build\nRoot-Is-Purelib: false\nTag: {_tag()}\n"


def _run(*command: str) -> None:
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, encoding="utf-8", check=False)
    if done.returncode != 0:
        sys.stderr.write(done.stdout)
        raise RuntimeError(f"{command[0]} failed: {' '.join(command)}")


def _build(build: Path, prefix: Path) -> None:
    _run(
        "cmake",
        *("-S", str(ROOT), "-B", str(build)),
        *(["-G", "Ninja"] if _has_ninja() else []),
        "-DCMAKE_BUILD_TYPE=Release",
        "-DBUILD_SHARED_LIBS=OFF",
        "-DBUILD_TESTING=OFF",
        "-DKELTRIX_BUILD_PYTHON=ON",
        "-DKELTRIX_REQUIRE_ALL=ON",
        "-DKELTRIX_PYTHON_DIR=.",
        "-DCMAKE_UNITY_BUILD=ON",
        f"-DPython_EXECUTABLE={sys.executable}",
    )
    jobs = os.environ.get("CMAKE_BUILD_PARALLEL_LEVEL", str(os.cpu_count() or 1))
    _run("cmake", "--build", str(build), "--target", "keltrix-python", "-j", jobs)
    _run("cmake", "--install", str(build), "--component", "python", "--prefix", str(prefix), "--strip")


def _has_ninja() -> bool:
    return any(os.access(os.path.join(folder, "ninja"), os.X_OK) for folder in os.get_exec_path())


class _Wheel:
    """A wheel that is being written; its record lists every file with its hash."""

    def __init__(self, path: Path, info: str) -> None:
        self._file = zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED)
        self._info = info
        self._record: list[str] = []

    def add(self, name: str, content: bytes) -> None:
        entry = zipfile.ZipInfo(name, (1980, 1, 1, 0, 0, 0))  # the same bytes on every run
        entry.compress_type = zipfile.ZIP_DEFLATED
        entry.external_attr = (0o755 if name.endswith(".so") else 0o644) << 16
        self._file.writestr(entry, content)
        digest = base64.urlsafe_b64encode(hashlib.sha256(content).digest()).rstrip(b"=").decode()
        self._record.append(f"{name},sha256={digest},{len(content)}\n")

    def close(self) -> None:
        record = f"{self._info}/RECORD"
        self._file.writestr(zipfile.ZipInfo(record, (1980, 1, 1, 0, 0, 0)), "".join(self._record) + f"{record},,\n")
        self._file.close()


def get_requires_for_build_wheel(config_settings: Any = None) -> list[str]:
    return []


def prepare_metadata_for_build_wheel(metadata_directory: str, config_settings: Any = None) -> str:
    version = _version()
    info = f"keltrix-{version}.dist-info"
    folder = Path(metadata_directory) / info
    folder.mkdir(parents=True, exist_ok=True)
    (folder / "METADATA").write_text(_metadata(version), encoding="utf-8")
    (folder / "WHEEL").write_text(_wheel_file(), encoding="utf-8")
    return info


def build_wheel(wheel_directory: str, config_settings: Any = None, metadata_directory: str | None = None) -> str:
    version = _version()
    name = f"keltrix-{version}-{_tag()}.whl"
    info = f"keltrix-{version}.dist-info"
    with tempfile.TemporaryDirectory() as folder:
        # A build folder that is kept makes the next wheel cheap.
        build = Path(os.environ.get("KELTRIX_WHEEL_BUILD", f"{folder}/build"))
        prefix = Path(folder) / "prefix"
        _build(build, prefix)
        wheel = _Wheel(Path(wheel_directory) / name, info)
        for path in sorted(prefix.rglob("*")):
            if path.is_file():
                wheel.add(path.relative_to(prefix).as_posix(), path.read_bytes())
        wheel.add(f"{info}/METADATA", _metadata(version).encode())
        wheel.add(f"{info}/WHEEL", _wheel_file().encode())
        wheel.close()
    return name


def build_sdist(sdist_directory: str, config_settings: Any = None) -> str:
    raise NotImplementedError("the package is built within the sources of Keltrix Steel, of which it is a part")
