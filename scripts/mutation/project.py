"""The build of the unchanged sources, and how an object and the test program are made like it."""

from __future__ import annotations

import json
import shlex
import subprocess
from collections import defaultdict
from pathlib import Path

MOST_COMPILATIONS = 6  # that a header may cost to be among those that are changed without being named
DROPPED = {"-MD"}
DROPPED_WITH_VALUE = {"-MT", "-MF", "-o", "-c"}
LIBRARY_FOLDER = "kvr/"


def essential_arguments(command: list[str]) -> list[str]:
    """What all compilations of a source have in common: compiler and options, without files."""
    kept: list[str] = []
    words = iter(command)
    for word in words:
        if word in DROPPED_WITH_VALUE:
            next(words)
        elif word not in DROPPED:
            kept.append(word)
    return kept


class Project:
    """Files are named from the root."""

    def __init__(self, root: Path) -> None:
        self.root = root
        self.build = root / "build" / "mutate"
        self.test_program = self.build / "tests" / "kvr_tests"
        link = self._ninja("commands", "tests/kvr_tests").splitlines()[-1]
        self.link_command = shlex.split(link.split(" && ")[1])
        self.objects: dict[str, str] = {}  # of a source, named from the build
        self.commands: dict[str, list[str]] = {}
        self._read_commands()
        self.sources = [source for source in self.objects if source.startswith(LIBRARY_FOLDER)]
        self.users = self._read_users()
        self.headers = sorted(header for header in self.users if header.startswith(LIBRARY_FOLDER))

    def usual_files(self) -> list[str]:
        """Those whose mutants are made within seconds."""
        headers = [header for header in self.headers if len(self.sources_with(header)) <= MOST_COMPILATIONS]
        return [*self.sources, *headers]

    def _ninja(self, *arguments: str) -> str:
        return subprocess.run(
            ["ninja", "-C", str(self.build), "-t", *arguments], check=True, capture_output=True, text=True
        ).stdout

    def _read_commands(self) -> None:
        for entry in json.loads((self.build / "compile_commands.json").read_text()):
            file = Path(entry["file"])
            command = shlex.split(entry["command"])
            output = command[command.index("-o") + 1]
            if output in self.link_command and file.is_relative_to(self.root):
                source = str(file.relative_to(self.root))
                self.objects[source] = output
                self.commands[source] = essential_arguments(command)

    def _read_users(self) -> dict[str, list[str]]:
        """The sources that include a header, by its name."""
        sources = {object_file: source for source, object_file in self.objects.items()}
        users: dict[str, list[str]] = defaultdict(list)
        source = None
        for line in self._ninja("deps").splitlines():
            if not line.startswith(" "):
                source = sources.get(line.partition(":")[0])
            elif source and line.endswith(".h") and Path(line.strip()).is_relative_to(self.root):
                users[str(Path(line.strip()).relative_to(self.root))].append(source)
        return users

    def parse_arguments(self, file: str) -> list[str]:
        """The arguments with which libclang parses a source or header as the compiler does."""
        source = file if file in self.commands else self.users[file][0]
        defines = [each for each in self.commands[source] if each.startswith(("-D", "-I", "-std="))]
        return ["-xc++", *defines]

    def sources_with(self, file: str) -> list[str]:
        """What must be compiled again when a file has changed. The tests that include a header themselves are among
        them: others see what the library was compiled to."""
        if file in self.objects:
            return [file]
        include = f'#include "{file}"'
        return [
            user
            for user in self.users[file]
            if user.startswith(LIBRARY_FOLDER) or include in (self.root / user).read_text()
        ]

    def compile(self, source: str, overlay: Path, object_file: Path) -> bool:
        """Files of the overlay stand in for those of the tree."""
        changed = overlay / source
        path = changed if changed.exists() else self.root / source
        compiler, *options = self.commands[source]
        command = [compiler, f"-I{overlay}", *options, "-w", "-o", str(object_file), "-c", str(path)]
        return subprocess.run(command, cwd=self.build, capture_output=True, check=False).returncode == 0

    def is_unchanged(self, source: str, object_file: Path) -> bool:
        return (self.build / self.objects[source]).read_bytes() == object_file.read_bytes()

    def link(self, changed: dict[str, Path], program: Path) -> bool:
        """What has changed comes first: of an inline function the linker keeps the first copy."""
        replaced = {self.objects[source] for source in changed}
        words = [word for word in self.link_command if word not in replaced]
        words[words.index("-o") + 1] = str(program)
        command = [words[0], "-fuse-ld=lld", *map(str, changed.values()), *words[1:]]
        return subprocess.run(command, cwd=self.build, capture_output=True, check=False).returncode == 0
