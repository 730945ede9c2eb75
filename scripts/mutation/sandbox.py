"""Runs tests with a mutant, which may do anything."""

from __future__ import annotations

import subprocess
import tempfile
from collections.abc import Iterable, Mapping
from dataclasses import dataclass
from pathlib import Path

ADDRESS_SPACE = 4 << 30
SCRATCH_SPACE = 1 << 29


@dataclass(frozen=True)
class Test:
    suite: str  # with the prefix and suffix of parameterized tests
    name: str
    seconds: float
    file: str  # from tests/

    @property
    def full_name(self) -> str:
        return f"{self.suite}.{self.name}"


@dataclass(frozen=True)
class Stage:
    """Tests that are run by one process."""

    tests: tuple[Test, ...]

    @property
    def seconds(self) -> float:
        return sum(test.seconds for test in self.tests)

    @property
    def most_seconds(self) -> float:
        """Of processor time. Kept short: many mutants never end."""
        return 0.5 + 4 * self.seconds


def sandboxed(root: Path, command: list[str], cpu_seconds: int, variables: Mapping[str, int]) -> list[str]:
    """It can write nowhere but in a scratch folder that goes with it, and takes no more than its share of memory and
    time."""
    return [
        *("bwrap", "--die-with-parent", "--new-session", "--unshare-all", "--ro-bind", "/", "/"),
        *("--dev", "/dev", "--proc", "/proc", "--size", str(SCRATCH_SPACE), "--tmpfs", "/tmp"),
        *("--ro-bind", str(root), str(root), "--chdir", "/tmp", "--setenv", "TMPDIR", "/tmp"),
        *(word for name, value in variables.items() for word in ("--setenv", name, str(value))),
        *("prlimit", f"--as={ADDRESS_SPACE}", f"--cpu={cpu_seconds}", "--core=0"),
        *command,
    ]


def run_tests(
    root: Path, program: Path, tests: Iterable[Test], seconds: float, variables: Mapping[str, int]
) -> subprocess.CompletedProcess[str] | None:
    """None if it takes too long. Processor time decides, so that a busy machine does not; the clock is for what sleeps.
    The program itself ends after these seconds, its children somewhat later."""
    names = ":".join(test.full_name for test in tests)
    with tempfile.NamedTemporaryFile("w", dir=program.parent) as flags:  # the names may be too long for an argument
        flags.write(f"--gtest_filter={names}\n--gtest_fail_fast\n--gtest_brief=1\n")
        flags.flush()
        command = [str(program), f"--gtest_flagfile={flags.name}"]
        variables = {**variables, "KVR_MOST_MILLISECONDS": int(1000 * seconds)}
        try:
            return subprocess.run(
                sandboxed(root, command, int(seconds) + 2, variables),
                capture_output=True,
                text=True,
                errors="replace",
                timeout=10 + 20 * seconds,
                check=False,
            )
        except subprocess.TimeoutExpired:
            return None


def passes(root: Path, program: Path, stage: Stage, active: int = 0) -> bool:
    ended = run_tests(root, program, stage.tests, stage.most_seconds, {"KVR_ACTIVE_MUTANT": active})
    return ended is not None and ended.returncode == 0
