"""The configurations in which the project is built and tested."""

from __future__ import annotations

import os
from dataclasses import dataclass
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]

Options = dict[str, str]  # CMake variables

GCC: Options = {"CMAKE_CXX_COMPILER": "g++"}
CLANG: Options = {"CMAKE_CXX_COMPILER": "clang++-14"}
DEBUG: Options = {"CMAKE_BUILD_TYPE": "Debug"}
RELEASE: Options = {"CMAKE_BUILD_TYPE": "Release"}
# The tool is linked with the objects, not with the library.
SHARED: Options = {"BUILD_SHARED_LIBS": "ON", "KVR_BUILD_TOOL": "OFF"}
# The lowest optimization with which the tests take little time, with line numbers for reports.
LIGHT = DEBUG | {"CMAKE_CXX_FLAGS_DEBUG": "-g1 -O1", "KVR_BUILD_QUICKLY": "ON"}
OPTIMIZED = DEBUG | {"CMAKE_CXX_FLAGS_DEBUG": "-g1 -O2"}
THOROUGH: Options = {"KVR_TEST_THOROUGHLY": "ON", "KVR_STATIC_TOOL": "ON"}
# kvr alone.
LIBRARY_KVR: Options = {"KVR_BUILD_IMAGE": "OFF", "KVR_BUILD_TOOL": "OFF"}
REPLAY: Options = {"KVR_BUILD_FUZZERS": "ON", "KVR_BUILD_TESTS": "OFF", **LIBRARY_KVR}

# Keeps a compiler launcher of the user, for example ccache.
MEASURING_LAUNCHER = ";".join(
    filter(
        None,
        (
            str(ROOT / "scripts" / "build_matrix" / "with_measured_decisions"),
            os.environ.get("CMAKE_CXX_COMPILER_LAUNCHER"),
        ),
    )
)


# fmt comes as headers: an installed library is for this machine only, and its configuration says so.
FOREIGN: Options = {
    "fmt_DIR": str(ROOT / "cmake" / "header_only"),
    "KVR_BUILD_ELF": "OFF",
    "KVR_BUILD_SHA256": "OFF",
    "KVR_BUILD_EXPR": "OFF",
    "KVR_BUILD_JPEG": "OFF",
    "KVR_STATIC_TOOL": "ON",
}


def flags(text: str) -> Options:
    return {"CMAKE_CXX_FLAGS": text}


def static_with(machine: str) -> Options:
    """Options for programs that load no shared libraries, because none are installed for this kind of program."""
    return FOREIGN | {"CMAKE_CXX_COMPILER": f"{machine}-linux-gnu-g++", "CMAKE_EXE_LINKER_FLAGS": "-static"}


def emulated(machine: str) -> Options:
    """Options for programs for another machine. The tests have fewer cases, because an emulator takes ten times as long
    and more."""
    return (
        static_with(machine)
        | {"CMAKE_SYSTEM_NAME": "Linux", "CMAKE_SYSTEM_PROCESSOR": machine}
        | flags("-DKVR_TEST_FEWER_CASES -DKVR_SLOW_BUILD")
    )


# The compiler for another system finds no headers of this one. It gets links to these, which need no library.
HEADERS = ("/usr/include/fmt", "/usr/include/nlohmann", "/usr/include/stb")

# The GNU linker takes minutes for each of these programs, the LLVM linker less than a second. Debian's compiler for
# Windows does not select another linker by -fuse-ld.
LLD_SPECS = ROOT / "scripts" / "build_matrix" / "lld.specs"

WINDOWS = FOREIGN | {
    "CMAKE_BUILD_TYPE": "Debug",
    "CMAKE_C_COMPILER": "x86_64-w64-mingw32-gcc-posix",  # googletest requires one
    "CMAKE_CXX_COMPILER": "x86_64-w64-mingw32-g++-posix",
    "CMAKE_CXX_FLAGS_DEBUG": "-O1",
    "CMAKE_EXE_LINKER_FLAGS": f"-static -specs={LLD_SPECS} -fno-use-linker-plugin",
    "CMAKE_SYSTEM_NAME": "Windows",
    "nlohmann_json_DIR": str(ROOT / "cmake" / "header_only"),
}


@dataclass(frozen=True)
class Configuration:
    name: str
    about: str
    steps: tuple[str, ...]  # the tests: keys of STEPS in steps.py
    options: Options
    builds_googletest: bool = False  # the installed one would not link or not match
    links_headers: bool = False  # see HEADERS
    emulator: tuple[str, ...] = ()  # the command that runs a program for another machine
    suffix: str = ""  # of the programs' names


CONFIGURATIONS = (
    Configuration("gcc-debug", "g++", ("unit", "models", "interface"), GCC | DEBUG),
    Configuration("gcc-debug-shared", "g++, shared library", ("unit", "models", "interface"), GCC | DEBUG | SHARED),
    Configuration("gcc-release", "g++, optimized", ("unit", "shuffled", "any_order", "sarif"), GCC | RELEASE | THOROUGH),
    Configuration(
        "gcc-release-shared", "g++, optimized, shared library", ("unit", "models", "interface"), GCC | RELEASE | SHARED
    ),
    Configuration("clang-debug", "clang", ("unit", "models", "interface", "cli"), CLANG | DEBUG),
    Configuration("clang-debug-shared", "clang, shared library", ("unit", "models", "interface"), CLANG | DEBUG | SHARED),
    Configuration("clang-release", "clang, optimized", ("unit", "models", "interface"), CLANG | RELEASE),
    Configuration(
        "clang-release-shared", "clang, optimized, shared library", ("unit", "models", "interface"), CLANG | RELEASE | SHARED
    ),
    Configuration(
        "gcc-sanitizers",
        "g++, address and undefined-behavior sanitizers",
        ("unit", "models", "interface", "cli"),
        GCC | LIGHT | {"KVR_SANITIZERS": "address,undefined"},
    ),
    # The installed standard library is compiled without the sanitizer. The build takes no template from it and omits
    # everything that uses its streams.
    Configuration(
        "memory-sanitizer",
        "clang, memory sanitizer",
        ("replay",),
        CLANG | LIGHT | REPLAY | {"KVR_SANITIZERS": "memory", "KVR_BUILD_ELF": "OFF"} | flags("-D_GLIBCXX_EXTERN_TEMPLATE=0"),
    ),
    Configuration(
        "unsigned-char",
        "g++, char has no sign",
        ("unit", "models", "interface", "cli"),
        GCC | LIGHT | flags("-funsigned-char"),
    ),
    Configuration(
        "each-source",
        "g++, each source alone: no #include is missing",
        ("unit",),
        GCC
        | DEBUG
        | {
            "CMAKE_CXX_FLAGS_DEBUG": "-O0",
            "CMAKE_UNITY_BUILD": "OFF",
            "CMAKE_DISABLE_PRECOMPILE_HEADERS": "ON",
        },
    ),
    Configuration(
        "32-bit",
        "g++, programs of 32 bits, without SSE2",
        ("unit", "image", "models", "interface", "server", "cli"),
        LIGHT | static_with("i686"),
        builds_googletest=True,
    ),
    Configuration(
        "arm64",
        "g++, ARM of 64 bits, emulated",
        ("unit", "image", "models", "interface", "server", "cases"),
        LIGHT | emulated("aarch64"),
        builds_googletest=True,
        emulator=("qemu-aarch64",),
    ),
    Configuration(
        "big-endian",
        "g++, s390x, emulated",
        ("unit", "image", "models", "interface", "server", "cases"),
        LIGHT | emulated("s390x"),
        builds_googletest=True,
        emulator=("qemu-s390x",),
    ),
    Configuration(
        "windows",
        "g++ for Windows, run by wine",
        ("unit", "image", "models", "server", "cases"),
        WINDOWS | {"KVR_BUILD_QUICKLY": "ON"},
        builds_googletest=True,
        links_headers=True,
        emulator=("env", "WINEDEBUG=-all", "wine"),
        suffix=".exe",
    ),
    Configuration(
        "other-tools",
        "g++, 10,000 memories against each other program",
        ("other_tools",),
        GCC | RELEASE | THOROUGH | {"KVR_CASES_OF_OTHER_TOOLS": "10000"},
    ),
    Configuration(
        "debug-mode",
        "g++, debug mode of the standard library",
        ("unit", "models", "interface", "cli"),
        GCC | LIGHT | flags("-D_GLIBCXX_DEBUG") | {"KVR_STATIC_TOOL": "ON"},
        builds_googletest=True,
    ),
    Configuration(
        "memcheck",
        "g++, valgrind, fewer cases",
        ("memcheck", "memcheck_models"),
        GCC | OPTIMIZED | flags("-DKVR_TEST_FEWER_CASES") | LIBRARY_KVR,
    ),
    # Without assertions, because their conditions are never false. clang gives warnings for the standard library of g++
    # 12.
    Configuration(
        "mcdc",
        "clang 19, modified condition/decision coverage",
        ("mcdc",),
        DEBUG
        | {
            "CMAKE_CXX_COMPILER": "clang++-19",
            "CMAKE_CXX_COMPILER_LAUNCHER": MEASURING_LAUNCHER,
            "CMAKE_CXX_FLAGS_DEBUG": "-O0 -DNDEBUG",
            "CMAKE_UNITY_BUILD_BATCH_SIZE": "48",
            "KVR_BUILD_QUICKLY": "ON",
            "KVR_BUILD_IMAGE": "ON",
            "KVR_BUILD_TOOL": "OFF",
        }
        | flags(
            "-fprofile-instr-generate -fcoverage-mapping -fcoverage-mcdc -DKVR_SLOW_BUILD -Wno-deprecated-declarations"
        ),
    ),
)
