"""Counts outcomes and prints the table."""

from __future__ import annotations

import sys
from collections import Counter

from groups import ALL, GROUPS, LIMITS, group_of
from mutant import Key, Mutant
from trial import Outcome

PROGRESS_STEP = 25
COLUMNS = ("group", "mutants", "noticed", "survived", "percent", "equivalent", "same code", "not compiled")
EQUIVALENT = "equivalent"


class Report:
    def __init__(self, equivalents: set[Key], population: dict[str, int], total: int) -> None:
        self.equivalents = equivalents
        self.population = population  # all mutants of each group, of which the sample was drawn
        self.total = total
        self.counts: dict[str, Counter[str]] = {name: Counter() for name in GROUPS}
        self.survivors: list[Mutant] = []
        self.not_equivalent: list[Mutant] = []

    def add(self, mutant: Mutant, outcome: Outcome) -> None:
        kind = outcome.value
        if mutant.key in self.equivalents:
            if outcome == Outcome.NOTICED:
                self.not_equivalent.append(mutant)
            elif outcome == Outcome.SURVIVED:
                kind = EQUIVALENT
        self.counts[group_of(mutant.file)][kind] += 1
        if kind == Outcome.SURVIVED.value:
            self.survivors.append(mutant)
            print(mutant, flush=True)
        self._progress()

    def _progress(self) -> None:
        tried = sum(sum(counts.values()) for counts in self.counts.values())
        text = f"{tried} of {self.total}, {len(self.survivors)} survived"
        if sys.stderr.isatty():
            print(f"\r{text}", end="\n" if tried == self.total else "", file=sys.stderr, flush=True)
        elif tried % PROGRESS_STEP == 0 or tried == self.total:
            print(text, file=sys.stderr, flush=True)

    def _percent(self, name: str) -> float | None:
        counts = self.counts[name]
        decided = counts[Outcome.NOTICED.value] + counts[Outcome.SURVIVED.value]
        return 100 * counts[Outcome.NOTICED.value] / decided if decided else None

    def _overall(self) -> float | None:
        """Each group weighs what it has in mutants, however many of them were tried."""
        percents = {name: self._percent(name) for name in GROUPS}
        known = {name: percent for name, percent in percents.items() if percent is not None}
        weight = sum(self.population[name] for name in known)
        return sum(self.population[name] * known[name] for name in known) / weight if weight else None

    def percents(self) -> dict[str, float | None]:
        return {name: self._percent(name) for name in GROUPS} | {ALL: self._overall()}

    def print_table(self) -> None:
        self.counts[ALL] = sum(self.counts.values(), Counter())
        lines = [COLUMNS] + [self._row(name, percent) for name, percent in self.percents().items()]
        for line in lines:
            print("".join(f"{text:>14}" if column else f"{text:9}" for column, text in enumerate(line)))
        for mutant in self.not_equivalent:
            print(f"listed as equivalent, but noticed: {mutant}")

    def _row(self, name: str, percent: float | None) -> tuple[str, ...]:
        counts = self.counts[name]
        decided = counts[Outcome.NOTICED.value] + counts[Outcome.SURVIVED.value]
        shown = "-" if percent is None else f"{percent:.1f}"
        return (
            name,
            str(decided),
            str(counts[Outcome.NOTICED.value]),
            str(counts[Outcome.SURVIVED.value]),
            shown,
            *(str(counts[each]) for each in (EQUIVALENT, Outcome.SAME_CODE.value, Outcome.NOT_COMPILED.value)),
        )

    def is_good(self) -> bool:
        percents = self.percents()
        known = {name: percent for name, percent in percents.items() if percent is not None}
        return not self.not_equivalent and all(known[name] >= LIMITS[name] for name in known if name in LIMITS)
