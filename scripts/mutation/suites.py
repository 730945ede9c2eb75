"""The tests of a library, and the tests that run for a file."""

from __future__ import annotations

import re
import subprocess
import sys
import xml.etree.ElementTree
from collections.abc import Iterator
from pathlib import Path, PurePath

from project import Program, Project
from sandbox import Stage, Test, sandboxed

SLOW_SECONDS = 0.1  # a slower test only runs for the sources of its own folder
MOST_SECONDS = 1800  # limit of all tests together
SUITE_DEFINITION = re.compile(r"^(?:TYPED_)?TEST(?:_F|_P)?\((\w+),", re.MULTILINE)


def is_slow(test: Test) -> bool:
    return test.seconds > SLOW_SECONDS


def is_own(test: Test, file: str) -> bool:
    return PurePath(test.file).name.startswith(PurePath(file).stem)


def is_near(test: Test, file: str) -> bool:
    """True if the test belongs to the file or to its folder."""
    path = PurePath(file)
    folder = PurePath(*path.parts[1:-1]) if path.parts[0] == "kvr" else path.parent
    return is_own(test, file) or PurePath(test.file).is_relative_to(folder)


class Suites:
    def __init__(self, project: Project) -> None:
        self.project = project
        self.files = {
            name: str(path.relative_to(project.root / "tests"))
            for path in sorted((project.root / "tests").rglob("*.cpp"))
            for name in SUITE_DEFINITION.findall(path.read_text())
        }
        self.tests: dict[Program, list[Test]] = {}

    def tests_of(self, program: Program) -> list[Test]:
        if program not in self.tests:
            self.tests[program] = list(self._tests_of(program))
        return self.tests[program]

    def _tests_of(self, program: Program) -> Iterator[Test]:
        """The tests that pass without a change, with the time of each."""
        report = program.path.with_name(f"{program.path.name}.xml")
        if not report.exists() or report.stat().st_mtime < program.path.stat().st_mtime:
            self._measure(program.path, report)
        for suite in xml.etree.ElementTree.parse(report).getroot():
            name = suite.attrib["name"]
            for each in suite:
                test = Test(name, each.attrib["name"], float(each.attrib["time"]), self._file_of(name))
                if each.find("failure") is not None:
                    print(f"fails without a change, not run: {test.full_name}", file=sys.stderr)
                elif each.attrib["result"] == "completed":
                    yield test

    def _measure(self, program: Path, report: Path) -> None:
        """Measures the unchanged program. A few tests may fail in the sandbox, which has only one user."""
        command = [str(program), "--gtest_output=xml:/dev/stderr", "--gtest_brief=1"]
        ended = subprocess.run(
            sandboxed(self.project.root, command, MOST_SECONDS, {}), capture_output=True, text=True, check=False
        )
        _, start, results = ended.stderr.rpartition("<?xml")
        if not start:
            raise SystemExit(f"the tests end without a change:\n{ended.stdout[-2000:]}\n{ended.stderr[-2000:]}")
        report.write_text(start + results)

    def _file_of(self, suite: str) -> str:
        return next((self.files[part] for part in suite.split("/") if part in self.files), "")

    def stages(self, file: str) -> list[Stage]:
        """The fast tests of the file come first, then those of its folder, then all others. The slow tests of the
        folder come last."""
        tests = self.tests_of(self.project.program_of(file))
        quick = [test for test in tests if not is_slow(test)]
        slow = [test for test in tests if is_slow(test) and is_near(test, file)]
        own = [test for test in quick if is_own(test, file)]
        near = [test for test in quick if is_near(test, file) and test not in own]
        far = [test for test in quick if not is_near(test, file)]
        slow_own = [test for test in slow if is_own(test, file)]
        slow_near = [test for test in slow if test not in slow_own]
        return [Stage(tuple(tests)) for tests in (own, near, far, slow_own, slow_near) if tests]
