"""Which tests are run for a mutant, and in which order."""

from __future__ import annotations

import re
import subprocess
import xml.etree.ElementTree
from collections.abc import Iterable
from dataclasses import dataclass
from pathlib import Path, PurePath

from project import Project

SLOW_SECONDS = 0.5  # suites that take longer are run for the sources of their own folder only
ADDRESS_SPACE = 4 << 30
SCRATCH_SPACE = 1 << 29
SUITE_DEFINITION = re.compile(r"^(?:TYPED_)?TEST(?:_F|_P)?\((\w+),", re.MULTILINE)


@dataclass(frozen=True)
class Suite:
    name: str  # with the prefix and suffix of parameterized tests
    seconds: float
    file: str  # from tests/


@dataclass(frozen=True)
class Stage:
    """Suites that are run by one process."""

    suites: tuple[Suite, ...]

    @property
    def seconds(self) -> float:
        return sum(suite.seconds for suite in self.suites)


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
    names = ":".join(f"{suite.name}.*" for suite in stage.suites)
    command = [str(program), f"--gtest_filter={names}", "--gtest_fail_fast", "--gtest_brief=1"]
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
        self.root = project.root
        files = {
            name: str(path.relative_to(self.root / "tests"))
            for path in sorted((self.root / "tests").glob("*/*.cpp"))
            for name in SUITE_DEFINITION.findall(path.read_text())
        }
        report = project.build / "suites.xml"
        if not report.exists() or report.stat().st_mtime < project.test_program.stat().st_mtime:
            self._measure(project.test_program, report)
        self.suites = [self._suite(each, files) for each in xml.etree.ElementTree.parse(report).getroot()]

    def _measure(self, program: Path, report: Path) -> None:
        """Of the unchanged program, which must pass."""
        command = [str(program), "--gtest_output=xml:/dev/stderr", "--gtest_brief=1"]
        ended = subprocess.run(sandboxed(self.root, command, 600), capture_output=True, text=True, check=False)
        if ended.returncode != 0:
            raise SystemExit(f"the tests fail without a change:\n{ended.stdout}\n{ended.stderr[-2000:]}")
        report.write_text(ended.stderr[ended.stderr.index("<?xml") :])

    def _suite(self, element: xml.etree.ElementTree.Element, files: dict[str, str]) -> Suite:
        name = element.attrib["name"]
        file = next((files[part] for part in name.split("/") if part in files), "")
        return Suite(name, float(element.attrib["time"]), file)

    def stages(self, file: str) -> list[Stage]:
        """The tests of the file itself, what is quick, and what is slow but of the same folder."""
        path = PurePath(file)
        folder = path.parent.name
        own = [each for each in self.suites if PurePath(each.file).name.startswith(path.stem)]
        others = [each for each in self.suites if each not in own]
        quick = [each for each in others if each.seconds <= SLOW_SECONDS]
        slow = [each for each in others if each not in quick and each.file.startswith(f"{folder}/")]
        near = [each for each in quick if each.file.startswith(f"{folder}/")]
        far = [each for each in quick if each not in near]
        return [Stage(tuple(stage)) for stage in (*self._by_speed(own), near, far, slow) if stage]

    def _by_speed(self, suites: Iterable[Suite]) -> tuple[list[Suite], list[Suite]]:
        """Most mutants need no more than the quick ones."""
        quick = [each for each in suites if each.seconds <= SLOW_SECONDS]
        return quick, [each for each in suites if each not in quick]
