"""Builds the extension module of the Python package kvr with CMake; pyproject.toml says the rest."""

import os
import re
import shutil
import subprocess
import sys
from pathlib import Path

import pybind11
from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

root = Path(__file__).resolve().parent


def version() -> str:
    """That of the whole project."""
    return re.search(r"VERSION (\d+\.\d+\.\d+)", (root / "CMakeLists.txt").read_text()).group(1)


class BuildWithCMake(build_ext):
    """KVR_CMAKE_BUILD in the environment names a build folder that is configured with KVR_BUILD_PYTHON, whose
    objects then serve here too; KVR_CMAKE_ARGS are arguments for a new one."""

    def build_extension(self, extension: Extension) -> None:
        target = Path(self.get_ext_fullpath(extension.name)).resolve()
        build = os.environ.get("KVR_CMAKE_BUILD") or self.configured()
        subprocess.run(["cmake", "--build", build, "--target", "kvr_python"], check=True)
        made = Path(build, "python", "package", "kvr", target.name)
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy2(made, target)

    def configured(self) -> str:
        build = str(Path(self.build_temp).resolve() / "cmake")
        options = [
            "-DCMAKE_BUILD_TYPE=Release",
            "-DCMAKE_UNITY_BUILD=ON",
            "-DKVR_BUILD_PYTHON=ON",
            "-DKVR_BUILD_TOOL=OFF",
            "-DKVR_BUILD_TESTS=OFF",
            f"-DPython3_EXECUTABLE={sys.executable}",
            f"-Dpybind11_DIR={pybind11.get_cmake_dir()}",
        ]
        generator = ["-G", "Ninja"] if shutil.which("ninja") else []
        more = os.environ.get("KVR_CMAKE_ARGS", "").split()
        subprocess.run(["cmake", "-S", str(root), "-B", build, *generator, *options, *more], check=True)
        return build


setup(version=version(), ext_modules=[Extension("kvr._kvr", [])], cmdclass={"build_ext": BuildWithCMake})
