"""Tries one mutant after the other in a folder of its own."""

from __future__ import annotations

import enum
import shutil
from pathlib import Path

from mutant import Mutant
from project import Project
from suites import Suites, passes


class Outcome(enum.Enum):
    NOTICED = "noticed"
    SURVIVED = "survived"
    SAME_CODE = "same code"  # what the compiler makes of it is what it made of the original
    NOT_COMPILED = "not compiled"


class Worker:
    def __init__(self, project: Project, suites: Suites, number: int) -> None:
        self.project = project
        self.suites = suites
        self.folder = project.build / "workers" / str(number)
        self.overlay = self.folder / "overlay"
        self.program = self.folder / "kvr_tests"

    def try_mutant(self, mutant: Mutant) -> Outcome:
        shutil.rmtree(self.folder, ignore_errors=True)
        self._write(mutant)
        changed: dict[str, Path] = {}
        for number, source in enumerate(self.project.sources_with(mutant.file)):
            object_file = self.folder / f"{number}.o"
            if not self.project.compile(source, self.overlay, object_file):
                return Outcome.NOT_COMPILED
            if not self.project.is_unchanged(source, object_file):
                changed[source] = object_file
        if not changed:
            return Outcome.SAME_CODE
        if not self.project.link(changed, self.program):
            return Outcome.NOT_COMPILED
        return Outcome.SURVIVED if self._passes_all(mutant.file) else Outcome.NOTICED

    def _write(self, mutant: Mutant) -> None:
        """The name of the original goes into the messages of its assertions."""
        original = self.project.root / mutant.file
        path = self.overlay / mutant.file
        path.parent.mkdir(parents=True)
        path.write_bytes(b'#line 1 "%s"\n' % bytes(original) + mutant.apply(original.read_bytes()))

    def _passes_all(self, file: str) -> bool:
        return all(passes(self.project.root, self.program, stage) for stage in self.suites.stages(file))
