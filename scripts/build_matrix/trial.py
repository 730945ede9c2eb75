"""Builds and tests one configuration, and counts what its tests print."""

from __future__ import annotations

import re
import subprocess
import time
from collections.abc import Iterable
from dataclasses import dataclass
from pathlib import Path
from typing import TextIO

from configurations import ROOT, Configuration
from steps import BUILD_STEP, STEPS, Command, build_commands

MATRIX = ROOT / "build" / "matrix"

# What the test program and ctest print at the end.
TESTS = (
    re.compile(r"^\[==========\] (\d+) tests? from .* ran\.", re.MULTILINE),
    re.compile(r"^\d+% tests passed.* out of (\d+)$", re.MULTILINE),
)
FAILURES = (
    re.compile(r"^\[  FAILED  \] (\d+) tests?, listed below:", re.MULTILINE),
    re.compile(r"^\d+% tests passed, (\d+) tests? failed", re.MULTILINE),
)


def sum_of(patterns: Iterable[re.Pattern[str]], text: str) -> int:
    return sum(int(number) for pattern in patterns for number in pattern.findall(text))


@dataclass(frozen=True)
class Counts:
    tests: int
    failures: int


def counts_in(output: str, succeeded: bool) -> Counts:
    """A program that fails without a failing test counts as a failure, too."""
    failures = sum_of(FAILURES, output)
    return Counts(sum_of(TESTS, output), failures if succeeded else max(failures, 1))


@dataclass(frozen=True)
class Result:
    is_built: bool
    counts: Counts
    seconds: int

    @property
    def is_good(self) -> bool:
        return self.is_built and self.counts.failures == 0 and self.counts.tests > 0


class Trial:
    def __init__(self, configuration: Configuration) -> None:
        self.configuration = configuration
        self.build = MATRIX / configuration.name
        self.log = MATRIX / f"{configuration.name}.log"

    def run(self) -> Result:
        began = time.monotonic()
        self.build.mkdir(parents=True, exist_ok=True)
        with self.log.open("w") as log:
            is_built = self._take_step(BUILD_STEP, build_commands(self.configuration, self.build), log).failures == 0
            steps = self.configuration.steps if is_built else ()
            counts = [self._take_step(step, [STEPS[step]], log) for step in steps]
        total = Counts(sum(each.tests for each in counts), sum(each.failures for each in counts))
        return Result(is_built, total, round(time.monotonic() - began))

    def _take_step(self, name: str, commands: Iterable[Command], log: TextIO) -> Counts:
        print(f"== {name}", file=log, flush=True)
        begin = log.tell()
        succeeded = all(self._run(command, log) for command in commands)
        with self.log.open(errors="replace") as written:
            written.seek(begin)
            return counts_in(written.read(), succeeded)

    def _words_of(self, command: Command) -> tuple[str, ...]:
        if not command.is_built:
            return command.words
        program, *options = command.words
        return (*self.configuration.emulator, program + self.configuration.suffix, *options)

    def _run(self, command: Command, log: TextIO) -> bool:
        ended = subprocess.run(
            self._words_of(command),
            cwd=self.build / command.folder,
            stdin=subprocess.DEVNULL,
            stdout=log,
            stderr=subprocess.STDOUT,
            check=False,
        )
        return ended.returncode == 0
