"""Builds the Python package: its extension module by CMake, the rest as it stands in src/python."""

import os
import shutil
import subprocess
import sys
from pathlib import Path

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

root = Path(__file__).resolve().parent


def version() -> str:
    """The one of the program, told once in CMakeLists.txt."""
    for line in (root / "CMakeLists.txt").read_text().splitlines():
        if line.strip().startswith("VERSION "):
            return line.split()[1]
    raise SystemExit("CMakeLists.txt names no version")


class CMakeBuild(build_ext):
    """Lets CMake build the module, and puts the reference files beside it."""

    def build_extension(self, extension: Extension) -> None:
        build = root / "build" / "python" / "cmake"
        subprocess.run(
            ["cmake", "--preset", "python", f"-DPython_EXECUTABLE={sys.executable}"], cwd=root, check=True
        )
        jobs = os.environ.get("CMAKE_BUILD_PARALLEL_LEVEL", str(os.cpu_count() or 1))
        subprocess.run(["cmake", "--build", "--preset", "python", "-j", jobs], cwd=root, check=True)
        module = Path(self.get_ext_fullpath(extension.name))
        (module.parent / "data").mkdir(parents=True, exist_ok=True)
        built = build / "src" / "python" / module.name
        shutil.copy2(built, module)
        for file in sorted((root / "data").glob("*.ini")):
            shutil.copy2(file, module.parent / "data" / file.name)


setup(
    name="welvane",
    version=version(),
    description="Well logs in LAS files: read, judged, joined, computed on, drawn and written",
    license="MIT",
    python_requires=">=3.9",
    install_requires=["numpy"],
    packages=["welvane"],
    package_dir={"": "src/python"},
    package_data={"welvane": ["py.typed", "data/*.ini"]},
    ext_modules=[Extension("welvane._welvane", [])],
    cmdclass={"build_ext": CMakeBuild},
    zip_safe=False,
)
