"""The order in which tests run: quick ones first, so that most mutants are noticed in a fraction of the time."""

from __future__ import annotations

from collections.abc import Iterable, Iterator
from typing import Protocol, TypeVar

FIRST_SECONDS = 0.05  # the tests that run first; each later stage takes TIMES as long
TIMES = 10


class Timed(Protocol):
    @property
    def seconds(self) -> float: ...


T = TypeVar("T", bound=Timed)


def in_stages(tests: Iterable[T]) -> Iterator[tuple[T, ...]]:
    """Groups tests into stages, the fastest ones first."""
    chosen: list[T] = []
    seconds = 0.0
    limit = FIRST_SECONDS
    for test in sorted(tests, key=lambda test: test.seconds):
        if chosen and seconds + test.seconds > limit:
            yield tuple(chosen)
            chosen, seconds, limit = [], 0.0, limit * TIMES
        chosen.append(test)
        seconds += test.seconds
    if chosen:
        yield tuple(chosen)


def most_seconds(usual: float) -> float:
    """The limit of time for something that usually takes this long. It is short because many mutants never end."""
    return 0.5 + 4 * usual
