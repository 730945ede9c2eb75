"""Runs tests with a mutant, which may do anything, in a sandbox."""

from __future__ import annotations

import subprocess
import tempfile
from collections.abc import Iterable, Mapping
from dataclasses import dataclass
from pathlib import Path

from stages import most_seconds

ADDRESS_SPACE = 4 << 30
SCRATCH_SPACE = 1 << 29


@dataclass(frozen=True)
class Test:
    suite: str  # with the prefix and suffix of parameterized tests
    name: str
    seconds: float
    file: str  # path from tests/

    @property
    def full_name(self) -> str:
        return f"{self.suite}.{self.name}"


@dataclass(frozen=True)
class Stage:
    """Tests that run in one process."""

    tests: tuple[Test, ...]

    @property
    def seconds(self) -> float:
        return sum(test.seconds for test in self.tests)

    @property
    def most_seconds(self) -> float:
        """The limit of processor time."""
        return most_seconds(self.seconds)


def sandboxed(root: Path, command: list[str], cpu_seconds: int, variables: Mapping[str, int]) -> list[str]:
    """The command in a sandbox: it can only write to its own scratch folder, which is removed with it, and its memory
    and time are limited."""
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
    """None if the tests take too long. Processor time is limited, so that a busy machine makes no difference; elapsed
    time is limited for tests that sleep. The program ends itself after these seconds, its children somewhat later."""
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
