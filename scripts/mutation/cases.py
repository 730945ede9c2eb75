"""The cases of the tool, which are tests of its library, too."""

from __future__ import annotations

import subprocess
import sys
from collections.abc import Iterable, Sequence
from concurrent.futures import Executor
from dataclasses import dataclass
from pathlib import Path
from time import monotonic

from project import Project
from sandbox import sandboxed
from stages import in_stages, most_seconds

PARTS_SIZE = 1 << 16  # bytes, one for each part; see active_mutant.h
MOST_SECONDS = 60  # limit of the tool in one case
NOT_RUN = 77  # the exit code of a case for another system
# The arguments of both: the program that runs a case, the tool, the folder of the examples, then cases.
RUN = """
runner=$1 tool=$2 examples=$3
shift 3
for case in "$@"; do "$runner" "$tool" "$case" "$examples" >&2 || exit; done
"""
PREPARE = f"export KVR_ENTERED_PARTS=/tmp/parts; head -c {PARTS_SIZE} /dev/zero >/tmp/parts"
PRINT = "cat /tmp/parts"


@dataclass(frozen=True)
class Case:
    path: Path
    seconds: float
    parts: frozenset[int]  # that it enters


class Cases:
    """The cases that pass with a tool in which no mutant is active."""

    def __init__(self, project: Project, tool: Path, executor: Executor) -> None:
        self.project = project
        self.cases = list(filter(None, executor.map(lambda path: self._measured(tool, path), project.cases())))

    def notice(self, tool: Path, active: int, part: int | None = None) -> bool:
        """True if one of the cases that enter the part fails. Without a part, all cases run."""
        chosen = (case for case in self.cases if part is None or part in case.parts)
        return not all(self._pass(tool, stage, active) for stage in in_stages(chosen))

    def _measured(self, tool: Path, path: Path) -> Case | None:
        start = monotonic()
        ended = self._run(f"{PREPARE}\n{RUN}\n{PRINT}", tool, [path], {}, MOST_SECONDS)
        seconds = monotonic() - start
        if ended is not None and ended.returncode == 0:
            return Case(path, seconds, frozenset(part for part, mark in enumerate(ended.stdout) if mark != 0))
        if ended is None or ended.returncode != NOT_RUN:
            print(f"fails without a change, not run: {path.relative_to(self.project.root)}", file=sys.stderr)
        return None

    def _pass(self, tool: Path, stage: Sequence[Case], active: int) -> bool:
        seconds = sum(case.seconds for case in stage)
        longest = most_seconds(max(case.seconds for case in stage))
        variables = {"KVR_ACTIVE_MUTANT": active, "KVR_MOST_MILLISECONDS": int(1000 * longest)}
        ended = self._run(RUN, tool, [case.path for case in stage], variables, seconds)
        return ended is not None and ended.returncode == 0

    def _run(
        self, script: str, tool: Path, cases: Iterable[Path], variables: dict[str, int], seconds: float
    ) -> subprocess.CompletedProcess[bytes] | None:
        """None if the cases take too long."""
        root = self.project.root
        words = ("sh", "-c", script, "sh", root / "tests" / "cli" / "run_case", tool, root / "examples", *cases)
        command = sandboxed(root, [str(word) for word in words], int(most_seconds(seconds)) + 2, variables)
        try:
            return subprocess.run(command, capture_output=True, timeout=10 + 20 * seconds, check=False)
        except subprocess.TimeoutExpired:
            return None
