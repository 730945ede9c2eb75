"""Shows the progress of the trials."""

from __future__ import annotations

import sys

from trial import Outcome

STEP = 25  # trials per line if lines cannot be overwritten


class Progress:
    def __init__(self, total: int) -> None:
        self.total = total
        self.tried = 0
        self.survived = 0

    def add(self, outcome: Outcome) -> None:
        self.tried += 1
        self.survived += outcome == Outcome.SURVIVED
        text = f"{self.tried} of {self.total}, {self.survived} survived"
        if sys.stderr.isatty():
            print(f"\r{text}", end="\n" if self.tried == self.total else "", file=sys.stderr, flush=True)
        elif self.tried % STEP == 0 or self.tried == self.total:
            print(text, file=sys.stderr, flush=True)
