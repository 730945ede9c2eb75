"""The build of the unchanged sources, and how a mutant is compiled and linked with it."""

from __future__ import annotations

import json
import re
import shlex
import subprocess
import tempfile
from dataclasses import dataclass
from functools import cache
from pathlib import Path

MOST_COMPILATIONS = 6  # headers that need more are changed only if they are named
HELPER = "active_mutant"
LISTENER = "entered_parts"
TESTS = {"kvr/": "tests/kvr_tests", "kvrimage/": "tests/kvrimage/kvrimage_tests"}  # of each library
TOOL = "tools/kvrmem/kvrmem"
CASES = "tests/cli/cases"
HAS_CASES = "kvrimage/"  # the library of the tool
DROPPED = {"-MD"}
DROPPED_WITH_VALUE = {"-MT", "-MF", "-o", "-c"}
BATCH = re.compile(r"Unity/unity_\w+\.cxx$")
INCLUDE = re.compile(r'^#include "([^"]+)"', re.MULTILINE)
OPTIMIZED = "-O2"
QUICKER = ("-UFMT_HEADER_ONLY",)  # half the time; the linker finds the functions of fmt in the objects of the build


def essential_arguments(command: list[str]) -> tuple[str, ...]:
    """The part of the command that all compilations of a source share: compiler and options, without files."""
    kept: list[str] = []
    words = iter(command)
    for word in words:
        if word in DROPPED_WITH_VALUE:
            next(words)
        elif word not in DROPPED:
            kept.append(word)
    return tuple(kept)


@dataclass(frozen=True)
class Program:
    """The test program of a library, or the tool."""

    path: Path
    link_command: tuple[str, ...]
    helpers: tuple[str, ...]


@dataclass(frozen=True)
class Unit:
    """A unit of compilation: a source of a library, or a batch of tests of the build."""

    file: str
    command: tuple[str, ...]
    sources: tuple[str, ...]
    replaced_object: str = ""  # a source of a library precedes its batch instead


class Project:
    """The project. Files are paths from its root."""

    def __init__(self, root: Path) -> None:
        self.root = root
        self.build = root / "build" / "mutate"
        self.programs = {library: self._program(path, HELPER, LISTENER) for library, path in TESTS.items()}
        self.tool = self._program(TOOL, HELPER)
        self.units: dict[str, Unit] = {}
        self.tests: dict[str, list[Unit]] = {library: [] for library in TESTS}
        self._read_commands()
        self.sources = sorted(self.units)
        self.users = self._find_users()
        self.headers = sorted(self.users)

    def usual_files(self) -> list[str]:
        """The files whose mutants are compiled within seconds."""
        headers = [header for header in self.headers if len(self.units_with(header)) <= MOST_COMPILATIONS]
        return [*self.sources, *headers]

    def program_of(self, file: str) -> Program:
        return self.programs[self._library_of(file)]

    def has_cases(self, file: str) -> bool:
        """True if the cases of the tool are tests of the file, too."""
        return file.startswith(HAS_CASES)

    def cases(self) -> list[Path]:
        return sorted((self.root / CASES).rglob("*.case"))

    def _library_of(self, file: str) -> str:
        return next((library for library in TESTS if file.startswith(library)), "")

    def _program(self, path: str, *helpers: str) -> Program:
        command = ["ninja", "-C", str(self.build), "-t", "commands", path]
        link = subprocess.run(command, check=True, capture_output=True, text=True).stdout.splitlines()[-1]
        return Program(self.build / path, tuple(shlex.split(link.split(" && ")[1])), helpers)

    def _read_commands(self) -> None:
        for entry in json.loads((self.build / "compile_commands.json").read_text()):
            words = shlex.split(entry["command"])
            output = words[words.index("-o") + 1]
            file = str(Path(entry["file"]).relative_to(self.root))
            sources = self._sources_of(file)
            command = (*essential_arguments(words), *QUICKER)
            library = self._library_of(sources[0])
            if library and output in self.programs[library].link_command:
                self.units |= {source: Unit(source, command, (source,)) for source in sources}
                continue
            for name, program in self.programs.items():
                if output in program.link_command and not library:
                    self.tests[name].append(Unit(file, command, sources, output))

    def _sources_of(self, file: str) -> tuple[str, ...]:
        if not BATCH.search(file):
            return (file,)
        included = INCLUDE.findall((self.root / file).read_text())
        return tuple(str(Path(each).relative_to(self.root)) for each in included)

    @cache
    def _includes(self, file: str) -> frozenset[str]:
        """The headers of the libraries that a file itself includes, without generated headers."""
        named = INCLUDE.findall((self.root / file).read_text())
        return frozenset(each for each in named if self._library_of(each) and (self.root / each).exists())

    @cache
    def _all_includes(self, file: str) -> frozenset[str]:
        found: set[str] = set()
        new = self._includes(file)
        while new:
            found |= new
            new = frozenset().union(*map(self._includes, new)) - found
        return frozenset(found)

    def _find_users(self) -> dict[str, list[str]]:
        """For each header, the sources of its own library that include it."""
        users: dict[str, list[str]] = {}
        for source in self.sources:
            for header in self._all_includes(source):
                if self._library_of(header) == self._library_of(source):
                    users.setdefault(header, []).append(source)
        return users

    def parse_arguments(self, file: str) -> list[str]:
        """The arguments with which libclang parses a source or header like the compiler."""
        source = file if file in self.units else self.users[file][0]
        defines = [each for each in self.units[source].command if each.startswith(("-D", "-I", "-std="))]
        return ["-xc++", *defines]

    def units_with(self, file: str) -> list[Unit]:
        """The units that must be compiled again if a file has changed. They include the tests that include a header
        themselves; the other tests use the compiled library."""
        if file in self.units:
            return [self.units[file]]
        tests = self.tests[self._library_of(file)]
        users = [each for each in tests if any(file in self._includes(source) for source in each.sources)]
        return [*(self.units[source] for source in self.users[file]), *users]

    def compile(
        self, unit: Unit, overlay: Path, object_file: Path, *options: str
    ) -> subprocess.CompletedProcess[str]:
        """Files of the overlay replace those of the tree."""
        changed = overlay / unit.file
        path = changed if changed.exists() else self.root / unit.file
        compiler, *usual = self._without_stale_header(unit.command, overlay)
        options = (*options, "-w", "-fno-diagnostics-color", "-fno-diagnostics-show-caret")
        command = [compiler, f"-I{overlay}", *usual, *options, "-o", str(object_file), "-c", str(path)]
        return subprocess.run(command, cwd=self.build, capture_output=True, text=True, check=False)

    def _without_stale_header(self, command: tuple[str, ...], overlay: Path) -> tuple[str, ...]:
        """Removes a precompiled header that contains the original of a changed file."""
        if "-include" not in command:
            return command
        place = command.index("-include")
        named = INCLUDE.findall(Path(command[place + 1]).read_text())
        parts = {str(Path(each).relative_to(self.root)) for each in named if Path(each).is_relative_to(self.root)}
        parts |= {header for part in parts for header in self._all_includes(part)}
        is_stale = any((overlay / part).exists() for part in parts)
        return command[:place] + command[place + 2 :] if is_stale else command

    def is_same_code(self, unit: Unit, overlay: Path, folder: Path) -> bool:
        """True if an optimizing compiler generates the same code for the original and the mutant."""
        object_file = folder / "optimized.o"
        is_compiled = self.compile(unit, overlay, object_file, OPTIMIZED).returncode == 0
        return is_compiled and object_file.read_bytes() == self._optimized_original(unit)

    @cache
    def _optimized_original(self, unit: Unit) -> bytes:
        with tempfile.TemporaryDirectory(dir=self.build) as folder:
            object_file = Path(folder) / "optimized.o"
            self.compile(unit, Path(folder), object_file, OPTIMIZED)
            return object_file.read_bytes()

    def make_helpers(self) -> None:
        """Compiles the objects that are linked first into all programs with mutants."""
        compiler = next(iter(self.units.values())).command[0]
        for name in (HELPER, LISTENER):
            source = Path(__file__).with_name(f"{name}.cpp")
            command = [compiler, "-std=c++20", "-O1", "-o", str(self._helper(name)), "-c", str(source)]
            subprocess.run(command, check=True)

    def _helper(self, name: str) -> Path:
        return self.build / f"{name}.o"

    def link(
        self, program: Program, changed: dict[Unit, Path], path: Path
    ) -> subprocess.CompletedProcess[str]:
        """Changed objects come first: the linker keeps the first copy of a function. The tool has no objects of tests."""
        replaced = {unit.replaced_object for unit in changed}
        words = [word for word in program.link_command if word not in replaced]
        words[words.index("-o") + 1] = str(path)
        used = [object_file for unit, object_file in changed.items() if program != self.tool or not unit.replaced_object]
        objects = map(str, (*map(self._helper, program.helpers), *used))
        command = [words[0], "-fuse-ld=lld", "-Wl,-z,muldefs", *objects, *words[1:]]
        return subprocess.run(command, cwd=self.build, capture_output=True, text=True, check=False)
