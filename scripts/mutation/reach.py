"""Which tests enter which parts of the sources, and therefore run for a mutant."""

from __future__ import annotations

from collections.abc import Iterable, Iterator, Sequence
from concurrent.futures import Executor
from dataclasses import replace
from itertools import groupby
from pathlib import Path

from mutant import Mutant
from sandbox import Stage, Test, run_tests
from stages import in_stages
from suites import MOST_SECONDS, is_near, is_slow

MARK = "entered: "


class Reach:
    """Runs each suite in its own process with no mutant active. A test may create an object that later tests of its
    suite use without entering the code that created it. Therefore all tests of a suite may depend on the parts that one
    of them enters."""

    def __init__(self, root: Path, program: Path, tests: Iterable[Test], executor: Executor) -> None:
        self.root = root
        self.program = program
        self.direct: dict[int, list[Test]] = {}
        self.suites: dict[int, list[Sequence[Test]]] = {}
        by_suite = [tuple(suite) for _, suite in groupby(tests, key=lambda test: test.suite)]
        for suite, output in zip(by_suite, executor.map(self._run, by_suite)):
            self._read(suite, output)

    def _run(self, suite: Sequence[Test]) -> str:
        ended = run_tests(self.root, self.program, suite, MOST_SECONDS, {"KVR_PRINT_ENTERED": 1})
        if ended is None or ended.returncode != 0:
            output = ended.stdout + ended.stderr if ended is not None else ""
            raise SystemExit(f"{suite[0].suite} fails without a change:\n{output[:5000]}")
        return ended.stderr

    def _read(self, suite: Sequence[Test], output: str) -> None:
        lines = [line.removeprefix(MARK).split() for line in output.splitlines() if line.startswith(MARK)]
        entered = {name: numbers for name, *numbers in lines}
        timed = [replace(test, seconds=int(entered[test.full_name][0]) / 1e6) for test in suite]
        for number in entered["all"][1:]:
            self.suites.setdefault(int(number), []).append(timed)
        for test in timed:
            for number in entered[test.full_name][1:]:
                self.direct.setdefault(int(number), []).append(test)

    def stages(self, part: int, mutant: Mutant) -> Iterator[Stage]:
        """The tests that enter the part, then the others of their suites. A slow test only runs if it belongs to the
        folder."""

        def is_run(test: Test) -> bool:
            return not is_slow(test) or is_near(test, mutant.file)

        direct = self.direct.get(part, [])
        others = {test for suite in self.suites.get(part, []) for test in suite} - set(direct)
        yield from map(Stage, in_stages(filter(is_run, direct)))
        yield from map(Stage, in_stages(filter(is_run, others)))
