"""Tries mutants that are not in a batch, one at a time, in a separate folder."""

from __future__ import annotations

import enum
import shutil
from pathlib import Path

from cases import Cases
from mutant import Mutant, make_mutant
from project import Program, Project, Unit
from sandbox import passes
from suites import Suites


class Outcome(enum.Enum):
    NOTICED = "noticed"
    SURVIVED = "survived"
    SAME_CODE = "same code"  # an optimizing compiler generates the code of the original
    NOT_COMPILED = "not compiled"


class Worker:
    def __init__(self, project: Project, suites: Suites, cases: Cases | None, number: int) -> None:
        self.project = project
        self.suites = suites
        self.cases = cases
        self.folder = project.build / "workers" / str(number)
        self.overlay = self.folder / "overlay"

    def try_mutant(self, mutant: Mutant) -> Outcome:
        self._write(mutant)
        objects = self._compile(self.project.units_with(mutant.file))
        program = self._link(self.project.program_of(mutant.file), objects)
        if program is None:
            return Outcome.NOT_COMPILED
        if not all(passes(self.project.root, program, stage) for stage in self.suites.stages(mutant.file)):
            return Outcome.NOTICED
        if self.project.has_cases(mutant.file) and self._fails_a_case(objects):
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

    def _fails_a_case(self, objects: dict[Unit, Path]) -> bool:
        tool = self._link(self.project.tool, objects)
        return tool is not None and self.cases is not None and self.cases.notice(tool, 0)

    def _compile(self, units: list[Unit]) -> dict[Unit, Path]:
        """Empty if one of the units does not compile."""
        objects = {unit: self.folder / f"{number}.o" for number, unit in enumerate(units)}
        is_compiled = all(
            self.project.compile(unit, self.overlay, path).returncode == 0 for unit, path in objects.items()
        )
        return objects if is_compiled else {}

    def _link(self, program: Program, objects: dict[Unit, Path]) -> Path | None:
        """The program with the mutant, with the name of the original, which a test checks."""
        path = self.folder / program.path.name
        return path if objects and self.project.link(program, objects, path).returncode == 0 else None
