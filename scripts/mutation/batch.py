"""Many mutants of a library in one program."""

from __future__ import annotations

import shutil
import sys
from collections import Counter
from collections.abc import Iterable, Iterator
from concurrent.futures import Executor
from pathlib import Path

from cases import Cases
from mutant import Mutant
from project import Program, Project, Unit
from reach import Reach
from sandbox import passes
from schema import parts_of, culprits, schema_of
from suites import Suites, is_near, is_slow

MUTANTS = 4000  # per batch, plus the rest of its last file
ROUNDS = 10  # of compilations; after them, a source that still fails loses all mutants


def batches_of(project: Project, mutants: Iterable[Mutant]) -> Iterator[list[Mutant]]:
    """Divides mutants into batches of one library and of whole files. Files of the same name are in the same batch, so
    that a source and its header are compiled once."""
    by_file: dict[str, list[Mutant]] = {}
    for mutant in mutants:
        by_file.setdefault(mutant.file, []).append(mutant)
    batch: list[Mutant] = []
    for file in sorted(by_file, key=lambda file: (str(project.program_of(file).path), file)):
        is_other = batch and project.program_of(batch[0].file) != project.program_of(file)
        if is_other or len(batch) >= MUTANTS:
            yield batch
            batch = []
        batch += by_file[file]
    if batch:
        yield batch


class Batch:
    """A program with mutants. A number selects the mutant that runs; 0 selects none."""

    def __init__(self, project: Project, suites: Suites, mutants: list[Mutant], executor: Executor) -> None:
        self.project = project
        self.executor = executor
        self.folder = project.build / "batch"
        self.overlay = self.folder / "overlay"
        self.numbered = {number: each for number, each in enumerate(mutants, start=1) if each.part is not None}
        self.not_compiled: dict[int, Mutant] = {}
        self.alone = [mutant for mutant in mutants if mutant.part is None]
        if not self.numbered:
            return
        shutil.rmtree(self.folder, ignore_errors=True)
        first = next(iter(self.numbered.values()))
        self.program = self.folder / project.program_of(first.file).path.name  # a test checks this name
        objects = self._compile()
        self._leave_what_never_compiles()
        self._link(project.program_of(first.file), objects, self.program)
        files = {mutant.file for mutant in self.numbered.values()}
        tests = [
            test
            for test in suites.tests_of(project.program_of(first.file))
            if not is_slow(test) or any(is_near(test, file) for file in files)
        ]
        self.parts = parts_of(self.numbered)
        self.reach = Reach(project.root, self.program, tests, executor)
        self.cases: Cases | None = None
        if project.has_cases(first.file):
            self.tool = self.folder / project.tool.path.name
            self._link(project.tool, objects, self.tool)
            self.cases = Cases(project, self.tool, executor)

    def _link(self, program: Program, objects: dict[Unit, Path], path: Path) -> None:
        linking = self.project.link(program, objects, path)
        if linking.returncode != 0:
            raise SystemExit(f"the batch is not linked:\n{linking.stderr[:5000]}")

    def _compile(self) -> dict[Unit, Path]:
        """Removes mutants with errors until the sources compile."""
        changed = {mutant.file for mutant in self.numbered.values()}
        files = {file: self.project.units_with(file) for file in sorted(changed)}
        units = list(dict.fromkeys(unit for of_file in files.values() for unit in of_file))
        objects = {unit: self.folder / f"{number}.o" for number, unit in enumerate(units)}
        failed: set[Unit] = set()
        for compilation in range(ROUNDS + 2):
            self._write(changed)
            affected = [unit for unit in units if unit in failed or any(unit in files[file] for file in changed)]
            compilations = self.executor.map(
                lambda unit: self.project.compile(unit, self.overlay, objects[unit]), affected
            )
            messages = {unit: each.stderr for unit, each in zip(affected, compilations) if each.returncode != 0}
            failed = set(messages)
            if not failed:
                return objects
            leave = self._leave_out if compilation < ROUNDS else self._leave_unit
            changed = set().union(*(leave(text, unit, files) for unit, text in messages.items()))
        raise SystemExit(f"not compiled, though no file it is known to use has a mutant: {sorted(unit.file for unit in failed)}")

    def _write(self, files: Iterable[str]) -> None:
        for file in files:
            path = self.overlay / file
            path.parent.mkdir(parents=True, exist_ok=True)
            of_file = {number: mutant for number, mutant in self.numbered.items() if mutant.file == file}
            path.write_bytes(schema_of(self.project.root / file, of_file))

    def _leave_out(self, messages: str, unit: Unit, files: dict[str, list[Unit]]) -> set[str]:
        """Removes the mutants that cause the errors and returns their files."""
        numbers = culprits(messages)
        known = [number for number in numbers if number in self.numbered]
        if known:
            left = {number: self.numbered.pop(number) for number in known}
            self.not_compiled |= left
            return {mutant.file for mutant in left.values()}
        if numbers:
            return set()  # another unit had the same errors
        return self._leave_unit(messages, unit, files)

    def _leave_unit(self, messages: str, unit: Unit, files: dict[str, list[Unit]]) -> set[str]:
        """Removes all mutants of a unit if none of them causes the errors, or if each compilation fails because of
        another one."""
        print(f"{unit.file} is not compiled, its mutants are tried alone:\n{messages[:500]}", file=sys.stderr)
        blamed = {file for file, units in files.items() if unit in units}
        for number, mutant in list(self.numbered.items()):
            if mutant.file in blamed:
                self.alone.append(self.numbered.pop(number))
        return blamed

    def _leave_what_never_compiles(self) -> None:
        """Some parts cannot be duplicated: a function whose type is deduced from a lambda in it, or a constant whose
        value the compiler needs."""
        compiled = {(mutant.file, mutant.part) for mutant in self.numbered.values()}
        failed = Counter((mutant.file, mutant.part) for mutant in self.not_compiled.values())
        for number, mutant in list(self.not_compiled.items()):
            part = (mutant.file, mutant.part)
            is_expression = mutant.part is not None and mutant.part.is_expression
            if is_expression or (failed[part] > 1 and part not in compiled):
                self.alone.append(self.not_compiled.pop(number))

    def is_noticed(self, number: int) -> bool:
        mutant = self.numbered[number]
        assert mutant.part is not None
        part = self.parts[mutant.file, mutant.part]
        stages = self.reach.stages(part, mutant)
        if not all(passes(self.project.root, self.program, stage, number) for stage in stages):
            return True
        return self.cases is not None and self.cases.notice(self.tool, number, part)
