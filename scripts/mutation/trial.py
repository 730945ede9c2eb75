"""Tries mutants that are not in a batch, one at a time, in a separate folder."""

from __future__ import annotations

import enum
import shutil
from pathlib import Path

from mutant import Mutant, make_mutant
from project import Project, Unit
from sandbox import passes
from suites import Suites


class Outcome(enum.Enum):
    NOTICED = "noticed"
    SURVIVED = "survived"
    SAME_CODE = "same code"  # an optimizing compiler generates the code of the original
    NOT_COMPILED = "not compiled"


class Worker:
    def __init__(self, project: Project, suites: Suites, number: int) -> None:
        self.project = project
        self.suites = suites
        self.folder = project.build / "workers" / str(number)
        self.overlay = self.folder / "overlay"

    def try_mutant(self, mutant: Mutant) -> Outcome:
        self._write(mutant)
        if not self._make(mutant, self.project.units_with(mutant.file)):
            return Outcome.NOT_COMPILED
        program = self._program(mutant)
        if not all(passes(self.project.root, program, stage) for stage in self.suites.stages(mutant.file)):
            return Outcome.NOTICED
        return self.outcome_of_survivor(mutant)

    def outcome_of_survivor(self, mutant: Mutant) -> Outcome:
        self._write(mutant)
        units = self.project.units_with(mutant.file)
        is_same = all(self.project.is_same_code(unit, self.overlay, self.folder) for unit in units)
        return Outcome.SAME_CODE if is_same else Outcome.SURVIVED

    def check(self, file: str) -> None:
        """The unchanged source must pass the tests; otherwise every mutant would be noticed."""
        unchanged = make_mutant(file, (self.project.root / file).read_bytes(), "", 0, 0, b"")
        if (outcome := self.try_mutant(unchanged)) != Outcome.SAME_CODE:
            raise SystemExit(f"{file} without a change: {outcome.value}")

    def _write(self, mutant: Mutant) -> None:
        """The messages of assertions contain the name of the original."""
        shutil.rmtree(self.folder, ignore_errors=True)
        original = self.project.root / mutant.file
        path = self.overlay / mutant.file
        path.parent.mkdir(parents=True)
        path.write_bytes(b'#line 1 "%s"\n' % bytes(original) + mutant.apply(original.read_bytes()))

    def _make(self, mutant: Mutant, units: list[Unit]) -> bool:
        changed = {unit: self.folder / f"{number}.o" for number, unit in enumerate(units)}
        is_compiled = all(
            self.project.compile(unit, self.overlay, path).returncode == 0 for unit, path in changed.items()
        )
        return is_compiled and self.project.link(mutant.file, changed, self._program(mutant)).returncode == 0

    def _program(self, mutant: Mutant) -> Path:
        """A test checks the name of the program."""
        return self.folder / self.project.program_of(mutant.file).path.name
