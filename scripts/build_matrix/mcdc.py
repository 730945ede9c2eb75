"""Modified condition/decision coverage of the libraries: each condition has determined its decision independently.

A condition is covered if two runs of its decision differ in this condition and in the result, and agree in all other
conditions that both runs evaluated. clang records the combinations of each decision; llvm-cov reports the conditions
that they cover. Runs in a build folder and runs its test programs.
"""

from __future__ import annotations

import os
import re
import subprocess
import sys
from collections.abc import Iterable
from dataclasses import dataclass, field
from itertools import chain
from pathlib import Path

from configurations import ROOT

LIBRARIES = ("kvr", "kvrimage")
PROGRAMS = (Path("tests/kvr_tests"), Path("tests/kvrimage/kvrimage_tests"))
EXCEPTIONS = ROOT / "tests" / "coverage" / "mcdc_exceptions.txt"

# The output of llvm-cov: the path of a source comes before its lines, and the decisions that begin in a line follow it.
SOURCE = re.compile(rf"^{re.escape(str(ROOT))}/(.+):$")
DECISION = re.compile(r"MC/DC Decision Region \((\d+):(\d+)\) to \((\d+):(\d+)\)")
CONDITION = re.compile(r"C(\d+)-Pair: (covered|not covered|constant folded)")


@dataclass(frozen=True, order=True)
class Place:
    """The place of a decision: the source, its first character and the character after its last."""

    path: str
    line: int
    column: int
    last_line: int
    last_column: int

    @property
    def text(self) -> str:
        lines = (ROOT / self.path).read_text().splitlines()[self.line - 1 : self.last_line]
        lines[-1] = lines[-1][: self.last_column - 1]
        lines[0] = lines[0][self.column - 1 :]
        return " ".join(" ".join(lines).split())


@dataclass
class Decision:
    """The numbers of the conditions of a decision, without constant conditions."""

    conditions: set[int] = field(default_factory=set)
    covered: set[int] = field(default_factory=set)

    @property
    def missing(self) -> list[int]:
        return sorted(self.conditions - self.covered)


Decisions = dict[Place, Decision]


def decisions_in(shown: Iterable[str]) -> Decisions:
    """llvm-cov shows a decision of a template or of a header for each instance. A condition is covered if at least one
    instance covers it, and constant if it is constant in all of them."""
    decisions: Decisions = {}
    path = ""
    decision = Decision()
    for line in shown:
        if source := SOURCE.search(line):
            path = source[1]
        elif place := DECISION.search(line):
            decision = decisions.setdefault(Place(path, *map(int, place.groups())), Decision())
        elif (condition := CONDITION.search(line)) and condition[2] != "constant folded":
            decision.conditions.add(int(condition[1]))
            if condition[2] == "covered":
                decision.covered.add(int(condition[1]))
    return decisions


Key = tuple[str, str]  # an exception: the path of the source and the text of the decision


def exceptions_in(text: str) -> set[Key]:
    """The third line of an entry is the reason, for the reader only."""
    lines = "\n".join(line for line in text.splitlines() if not line.startswith("#"))
    entries = (entry.strip().splitlines() for entry in lines.split("\n\n"))
    return {(path, decision) for path, decision, _ in filter(None, entries)}


def run_tests(program: Path, counts: Path) -> bool:
    environment = os.environ | {"LLVM_PROFILE_FILE": str(counts)}
    command = [f"./{program.name}", "--gtest_brief=1"]
    return subprocess.run(command, cwd=program.parent, env=environment, check=False).returncode == 0


def shown_by_llvm(program: Path, counts: Path) -> list[str]:
    merged = counts.with_suffix(".profdata")
    subprocess.run(["llvm-profdata-19", "merge", "-o", merged, counts], check=True)
    options = ("--show-mcdc", f"-instr-profile={merged}")
    sources = (str(ROOT / library) for library in LIBRARIES)
    command = ("llvm-cov-19", "show", *options, str(program), "-sources", *sources)
    return subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True).stdout.splitlines()


def print_figures(library: str, decisions: Decisions) -> None:
    of_library = [each for place, each in decisions.items() if place.path.startswith(f"{library}/")]
    total = sum(len(each.conditions) for each in of_library)
    covered = sum(len(each.covered) for each in of_library)
    print(f"{library}: {covered} of {total} conditions in {len(of_library)} decisions: {100 * covered / total:.2f} %")


def report(decisions: Decisions, exceptions: set[Key]) -> bool:
    """Prints the decisions that are not covered, and the exceptions for decisions that are; false if there are any."""
    missing = {place: each.missing for place, each in sorted(decisions.items()) if each.missing}
    unexpected = [place for place in missing if (place.path, place.text) not in exceptions]
    for place in unexpected:
        numbers = ", ".join(map(str, missing[place]))
        print(f"{place.path}:{place.line}: condition {numbers} is not covered: {place.text}")
    unneeded = exceptions - {(place.path, place.text) for place in missing}
    for path, text in sorted(unneeded):
        print(f"{path}: an exception that is not needed: {text}")
    return not unexpected and not unneeded


def main() -> int:
    # Counts of an earlier build would not match.
    counts = {program: program.with_suffix(".profraw").resolve() for program in PROGRAMS}
    for each in counts.values():
        each.unlink(missing_ok=True)
    have_passed = [run_tests(program, each) for program, each in counts.items()]
    decisions = decisions_in(chain.from_iterable(shown_by_llvm(*each) for each in counts.items()))
    for library in LIBRARIES:
        print_figures(library, decisions)
    is_covered = report(decisions, exceptions_in(EXCEPTIONS.read_text()))
    return 0 if all(have_passed) and is_covered else 1


if __name__ == "__main__":
    sys.exit(main())
