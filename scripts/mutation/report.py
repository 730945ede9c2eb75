"""Counts outcomes and prints the table."""

from __future__ import annotations

from collections import Counter
from collections.abc import Callable, Iterable

from groups import ALL, LEAST_PERCENT
from mutant import Key, Mutant
from trial import Outcome

COLUMNS = ("mutants", "noticed", "survived", "percent", "equivalent", "same code", "not compiled", "not tried")
EQUIVALENT = "equivalent"


class Report:
    def __init__(self, equivalents: set[Key], part_of: Callable[[str], str], mutants: Iterable[Mutant]) -> None:
        self.equivalents = equivalents
        self.part_of = part_of  # the group or folder: a row of the table
        self.population = Counter(part_of(mutant.file) for mutant in mutants)
        self.counts: dict[str, Counter[str]] = {name: Counter() for name in self.population}
        self.survivors: list[Mutant] = []
        self.not_equivalent: list[Mutant] = []

    def add(self, mutant: Mutant, outcome: Outcome) -> None:
        kind = outcome.value
        if mutant.key in self.equivalents:
            if outcome == Outcome.NOTICED:
                self.not_equivalent.append(mutant)
            elif outcome == Outcome.SURVIVED:
                kind = EQUIVALENT
        self.counts[self.part_of(mutant.file)][kind] += 1
        if kind == Outcome.SURVIVED.value:
            self.survivors.append(mutant)

    def _percent(self, name: str) -> float | None:
        counts = self.counts[name]
        decided = counts[Outcome.NOTICED.value] + counts[Outcome.SURVIVED.value]
        return 100 * counts[Outcome.NOTICED.value] / decided if decided else None

    def _overall(self) -> float | None:
        """The weight of each part is its number of mutants, no matter how many of them were tried."""
        percents = {name: self._percent(name) for name in self.population}
        known = {name: percent for name, percent in percents.items() if percent is not None}
        weight = sum(self.population[name] for name in known)
        return sum(self.population[name] * known[name] for name in known) / weight if weight else None

    def percents(self) -> dict[str, float | None]:
        return {name: self._percent(name) for name in sorted(self.population)} | {ALL: self._overall()}

    def print(self) -> None:
        for mutant in self.survivors:
            print(mutant)
        percents = self.percents()
        self.counts[ALL] = sum(self.counts.values(), Counter())
        self.population[ALL] = sum(self.population.values())
        width = max(map(len, percents)) + 1
        for name, *texts in [("", *COLUMNS), *(self._row(*each) for each in percents.items())]:
            print(name.ljust(width) + "".join(f"{text:>13}" for text in texts))
        for mutant in self.not_equivalent:
            print(f"listed as equivalent, but noticed: {mutant}")

    def _row(self, name: str, percent: float | None) -> tuple[str, ...]:
        counts = self.counts[name]
        decided = counts[Outcome.NOTICED.value] + counts[Outcome.SURVIVED.value]
        return (
            name,
            str(decided),
            str(counts[Outcome.NOTICED.value]),
            str(counts[Outcome.SURVIVED.value]),
            "-" if percent is None else f"{percent:.1f}",
            *(str(counts[each]) for each in (EQUIVALENT, Outcome.SAME_CODE.value, Outcome.NOT_COMPILED.value)),
            str(self.population[name] - counts.total()),
        )

    def is_good(self) -> bool:
        known = [percent for percent in self.percents().values() if percent is not None]
        return not self.not_equivalent and all(percent >= LEAST_PERCENT for percent in known)
