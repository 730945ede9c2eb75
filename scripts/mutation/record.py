"""The file that keeps the outcome of each mutant, so that several runs can share the trials."""

from __future__ import annotations

import hashlib
from pathlib import Path
from typing import NamedTuple

from mutant import Mutant
from trial import Outcome


class Identity(NamedTuple):
    """Identifies a mutant of one state of a file. Changing the file changes the identity."""

    place: str  # file and line
    state: str
    change: str  # the range of bytes and its replacement
    lines: str  # before and after, for the reader of the record


class Record:
    """One line per trial: the outcome and the parts of the identity, separated by tabs. The last line of a mutant
    counts."""

    def __init__(self, root: Path, path: Path | None) -> None:
        """Without a file, the record is only kept in memory."""
        self.root = root
        self.path = path
        self.states: dict[str, str] = {}
        self.outcomes: dict[Identity, Outcome] = {}
        if path is not None and path.exists():
            self._read(path)

    def _read(self, path: Path) -> None:
        complete, end, torn = path.read_bytes().rpartition(b"\n")
        if torn:
            path.write_bytes(complete + end)  # a partial line of a run that was killed
        for line in filter(None, complete.decode().split("\n")):
            outcome, *parts = line.split("\t")
            self.outcomes[Identity(*parts)] = Outcome(outcome)

    def outcome_of(self, mutant: Mutant) -> Outcome | None:
        return self.outcomes.get(self._identity(mutant))

    def add(self, mutant: Mutant, outcome: Outcome) -> None:
        identity = self._identity(mutant)
        self.outcomes[identity] = outcome
        if self.path is not None:
            with self.path.open("a") as file:
                file.write("\t".join((outcome.value, *identity)) + "\n")

    def _identity(self, mutant: Mutant) -> Identity:
        return Identity(
            f"{mutant.file}:{mutant.line}",
            self._state(mutant.file),
            f"{mutant.begin}-{mutant.end} {mutant.replacement.decode()!r}",
            f"{mutant.before} => {mutant.after}",
        )

    def _state(self, file: str) -> str:
        if file not in self.states:
            self.states[file] = hashlib.sha256((self.root / file).read_bytes()).hexdigest()[:12]
        return self.states[file]
