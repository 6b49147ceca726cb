"""Builds wheels of kesto_road with the shared library inside.

The library is the file that KESTO_ROAD_LIBRARY names, or is built by CMake from the tree around this folder. Nothing is
written into the tree.
"""

import atexit
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

from setuptools import Distribution, setup
from setuptools.command.build_py import build_py
from wheel.bdist_wheel import bdist_wheel

ROOT = Path(__file__).resolve().parents[2]
NAMES = {"win32": "kesto_road.dll", "darwin": "libkesto_road.dylib"}
LIBRARY = NAMES.get(sys.platform, "libkesto_road.so")


def version() -> str:
    """The version of the project, which CMakeLists.txt alone states."""
    text = (ROOT / "CMakeLists.txt").read_text(encoding="utf-8")
    return re.search(r"project\(kesto_road VERSION ([\d.]+)", text)[1]


def built_library(folder: Path) -> Path:
    """Builds the library alone. Returns its file."""
    options = [f"-DKESTO_BUILD_{each}=OFF" for each in ("HOST", "EXAMPLES", "TESTS", "BENCH")]
    options += ["-DCMAKE_BUILD_TYPE=Release", "-DKESTO_STATIC_TINYXML=ON"]
    subprocess.run(["cmake", "-S", ROOT, "-B", folder, *options], check=True)
    subprocess.run(["cmake", "--build", folder, "--config", "Release", "--target", "kesto_road", "--parallel"],
                   check=True)
    return next(path for path in (folder / LIBRARY, folder / "Release" / LIBRARY) if path.exists())


class BuildWithLibrary(build_py):
    """Puts the shared library beside the modules."""

    def run(self):
        super().run()
        given = os.environ.get("KESTO_ROAD_LIBRARY")
        library = Path(given) if given else built_library(Path(scratch, "cmake"))
        shutil.copyfile(library, Path(self.build_lib, "kesto_road", LIBRARY))


class PlatformWheel(bdist_wheel):
    """A wheel for this platform and for every Python 3: the library has no Python in it."""

    def get_tag(self):
        return "py3", "none", super().get_tag()[2]


class BinaryDistribution(Distribution):
    """Not pure Python."""

    def has_ext_modules(self):
        return True


scratch = tempfile.mkdtemp(prefix="kesto_road_build_")
atexit.register(shutil.rmtree, scratch, ignore_errors=True)
setup(version=version(), distclass=BinaryDistribution,
      cmdclass={"build_py": BuildWithLibrary, "bdist_wheel": PlatformWheel},
      options={"build": {"build_base": scratch}, "egg_info": {"egg_base": scratch}})
