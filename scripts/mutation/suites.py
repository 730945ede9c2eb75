"""Which tests are run for a mutant, and in which order."""

from __future__ import annotations

import re
import subprocess
import sys
import xml.etree.ElementTree
from collections.abc import Iterable, Iterator
from dataclasses import dataclass
from pathlib import Path, PurePath

from project import Program, Project

SLOW_SECONDS = 0.1  # a test that takes longer is run for the sources of its own folder only
MOST_SECONDS = 1800  # of all tests
ADDRESS_SPACE = 4 << 30
SCRATCH_SPACE = 1 << 29
SUITE_DEFINITION = re.compile(r"^(?:TYPED_)?TEST(?:_F|_P)?\((\w+),", re.MULTILINE)


@dataclass(frozen=True)
class Test:
    suite: str  # with the prefix and suffix of parameterized tests
    name: str
    seconds: float
    file: str  # from tests/

    @property
    def is_slow(self) -> bool:
        return self.seconds > SLOW_SECONDS


@dataclass(frozen=True)
class Stage:
    """Tests that are run by one process."""

    tests: tuple[Test, ...]

    @property
    def seconds(self) -> float:
        return sum(test.seconds for test in self.tests)

    @property
    def filter(self) -> str:
        return ":".join(f"{test.suite}.{test.name}" for test in self.tests)


def sandboxed(root: Path, command: list[str], cpu_seconds: int) -> list[str]:
    """A mutant may do anything: it can write nowhere but in a scratch folder that goes with it, and takes no more than
    its share of memory and time."""
    return [
        *("bwrap", "--die-with-parent", "--new-session", "--unshare-all", "--ro-bind", "/", "/"),
        *("--dev", "/dev", "--proc", "/proc", "--size", str(SCRATCH_SPACE), "--tmpfs", "/tmp"),
        *("--ro-bind", str(root), str(root), "--chdir", "/tmp", "--setenv", "TMPDIR", "/tmp"),
        *("prlimit", f"--as={ADDRESS_SPACE}", f"--cpu={cpu_seconds}", "--core=0"),
        *command,
    ]


def passes(root: Path, program: Path, stage: Stage) -> bool:
    """Processor time decides, so that a busy machine does not; the clock is for what sleeps."""
    flags = program.with_name("flags")
    flags.write_text(f"--gtest_filter={stage.filter}\n--gtest_fail_fast\n--gtest_brief=1\n")
    command = [str(program), f"--gtest_flagfile={flags}"]  # the names may be too long for an argument
    limit = 2 + int(4 * stage.seconds)
    try:
        ended = subprocess.run(
            sandboxed(root, command, limit), capture_output=True, timeout=20 + 10 * limit, check=False
        )
    except subprocess.TimeoutExpired:
        return False
    return ended.returncode == 0


class Suites:
    def __init__(self, project: Project) -> None:
        self.project = project
        self.files = {
            name: str(path.relative_to(project.root / "tests"))
            for path in sorted((project.root / "tests").rglob("*.cpp"))
            for name in SUITE_DEFINITION.findall(path.read_text())
        }
        self.tests: dict[Program, list[Test]] = {}

    def _tests(self, program: Program) -> list[Test]:
        if program not in self.tests:
            self.tests[program] = list(self._tests_of(program))
        return self.tests[program]

    def _tests_of(self, program: Program) -> Iterator[Test]:
        """Those that pass without a change, with the time that each takes."""
        report = program.path.with_name(f"{program.path.name}.xml")
        if not report.exists() or report.stat().st_mtime < program.path.stat().st_mtime:
            self._measure(program.path, report)
        for suite in xml.etree.ElementTree.parse(report).getroot():
            file = self._file_of(suite.attrib["name"])
            for test in suite:
                if test.find("failure") is None:
                    yield Test(suite.attrib["name"], test.attrib["name"], float(test.attrib["time"]), file)
                else:
                    print(f"fails without a change, not run: {suite.attrib['name']}.{test.attrib['name']}", file=sys.stderr)

    def _measure(self, program: Path, report: Path) -> None:
        """Of the unchanged program. A few tests may fail in the sandbox, which has one user only."""
        command = [str(program), "--gtest_output=xml:/dev/stderr", "--gtest_brief=1"]
        ended = subprocess.run(
            sandboxed(self.project.root, command, MOST_SECONDS), capture_output=True, text=True, check=False
        )
        _, start, results = ended.stderr.rpartition("<?xml")
        if not start:
            raise SystemExit(f"the tests end without a change:\n{ended.stdout[-2000:]}\n{ended.stderr[-2000:]}")
        report.write_text(start + results)

    def _file_of(self, suite: str) -> str:
        return next((self.files[part] for part in suite.split("/") if part in self.files), "")

    def stages(self, file: str) -> list[Stage]:
        """The quick tests of the file itself come first, then those of its folder and those of all others; last what
        is slow and of the same folder."""
        path = PurePath(file)
        folder = PurePath(*path.parts[1:-1]) if path.parts[0] == "kvr" else path.parent
        tests = self._tests(self.project.program_of(file))
        own = [each for each in tests if PurePath(each.file).name.startswith(path.stem)]
        near = [each for each in tests if PurePath(each.file).is_relative_to(folder) and each not in own]
        far = [each for each in tests if each not in own and each not in near]
        stages = (*map(self._quick, (own, near, far)), self._slow(own), self._slow(near))
        return [Stage(tuple(stage)) for stage in stages if stage]

    def _quick(self, tests: Iterable[Test]) -> list[Test]:
        return [each for each in tests if not each.is_slow]

    def _slow(self, tests: Iterable[Test]) -> list[Test]:
        return [each for each in tests if each.is_slow]
