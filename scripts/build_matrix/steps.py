"""The commands that build a configuration and those that test it."""

from __future__ import annotations

import os
from collections.abc import Iterator
from dataclasses import dataclass
from pathlib import Path

from configurations import HEADERS, ROOT, Configuration, Options

SEED = 20261121
BUILD_STEP = "build"


@dataclass(frozen=True)
class Command:
    """A command that runs in a folder of the build."""

    words: tuple[str, ...]
    folder: str = "."
    is_built: bool = False  # a program of the build, which may need an emulator


def unit_tests(*options: str) -> Command:
    return Command(("./kvr_tests", "--gtest_brief=1", *options), "tests", is_built=True)


def ctest(*options: str) -> Command:
    common = ("--parallel", str(os.cpu_count()), "--output-on-failure", "--no-tests=error")
    return Command(("ctest", *common, *options))


# The tests have their own allocation functions, which they can make fail.
VALGRIND = (
    "valgrind",
    "--quiet",
    "--error-exitcode=9",
    "--leak-check=full",
    "--show-leak-kinds=all",
    "--errors-for-leak-kinds=all",
    f"--suppressions={ROOT / 'tests' / 'memcheck.supp'}",
    "--num-callers=30",
    "--soname-synonyms=somalloc=nouserintercepts",
)

STEPS = {
    "unit": unit_tests(),
    "shuffled": unit_tests("--gtest_shuffle", "--gtest_repeat=20", f"--gtest_random_seed={SEED}"),
    "image": Command(("./kvrimage_tests", "--gtest_brief=1"), "tests/kvrimage", is_built=True),
    "server": Command(("./kvrmem_lsp_tests", "--gtest_brief=1"), "tests/lsp", is_built=True),
    "models": ctest("-R", "^models"),
    "interface": ctest("-R", "^exported_interface"),
    "cli": ctest("-R", "^cli"),
    "cases": ctest("-R", "^cli/"),
    "other_tools": ctest("-R", "^(readers|round_trips|simulators|written_source)"),
    "any_order": ctest("--schedule-random"),
    "replay": ctest("-R", "^fuzz.*replay"),
    "sarif": Command(
        (
            "python3",
            "-B",
            str(ROOT / "tests" / "cli" / "sarif_schema.py"),
            "tools/kvrmem/kvrmem",
            str(ROOT / "build" / "sarif_validator"),
        )
    ),
    "mcdc": Command(("python3", "-B", str(ROOT / "scripts" / "build_matrix" / "mcdc.py"))),
    "memcheck": Command((*VALGRIND, "./kvr_tests", "--gtest_brief=1"), "tests"),
    "memcheck_models": Command((*VALGRIND, "./kvr_model_tests", "--gtest_brief=1"), "tests/models"),
}


def configure(source: Path, folder: str, options: Options) -> Command:
    definitions = (f"-D{name}={value}" for name, value in options.items())
    return Command(("cmake", "-S", str(source), "-B", folder, "-G", "Ninja", *definitions))


def build_commands(configuration: Configuration, build: Path) -> Iterator[Command]:
    parallel = ("--parallel", str(os.cpu_count()))
    installed = build / "installed"
    if configuration.builds_googletest:
        options = configuration.options | {"CMAKE_CXX_STANDARD": "20", "CMAKE_INSTALL_PREFIX": str(installed)}
        yield configure(Path("/usr/src/googletest"), "googletest", options)
        yield Command(("cmake", "--build", "googletest", *parallel, "--target", "install"))
    batches = {"CMAKE_UNITY_BUILD": "ON", "CMAKE_UNITY_BUILD_BATCH_SIZE": "16"}
    fixed = {"CMAKE_COMPILE_WARNING_AS_ERROR": "ON", "GTest_ROOT": str(installed)}
    if configuration.emulator:
        fixed["CMAKE_CROSSCOMPILING_EMULATOR"] = ";".join(configuration.emulator)
    if configuration.links_headers:
        yield Command(("mkdir", "-p", "headers"))
        yield Command(("ln", "-sfnt", "headers", *HEADERS))
        fixed["CMAKE_INCLUDE_PATH"] = str(build / "headers")
    yield configure(ROOT, ".", batches | configuration.options | fixed)
    yield Command(("cmake", "--build", ".", *parallel, "--", "-k", "0"))
