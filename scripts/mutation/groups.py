"""The groups of sources, and the percentage of the mutants that the tests must notice."""

from __future__ import annotations

import random
from collections.abc import Iterable
from fnmatch import fnmatch
from pathlib import PurePath

from mutant import Mutant

GROUPS: dict[str, tuple[str, ...]] = {
    "writers": ("kvr/memory/*writer*", "kvr/memory/*_rows.*"),
    "readers": ("kvr/memory/hex/*", "kvr/memory/mif/*", "kvr/memory/rif/*"),
    "numeric": ("kvr/numeric/*",),
    "formats": ("kvrimage/formats/*",),
    "image": ("kvrimage/*",),
    "rest": ("*",),
}
ALL = "all"
LEAST_PERCENT = 98.0


def group_of(file: str) -> str:
    return next(name for name, patterns in GROUPS.items() if any(fnmatch(file, each) for each in patterns))


def folder_of(file: str) -> str:
    return str(PurePath(file).parent)


def by_group(mutants: Iterable[Mutant]) -> dict[str, list[Mutant]]:
    groups: dict[str, list[Mutant]] = {name: [] for name in GROUPS}
    for mutant in mutants:
        groups[group_of(mutant.file)].append(mutant)
    return {name: found for name, found in groups.items() if found}


def draw_sample(mutants: list[Mutant], size: int, seed: int) -> list[Mutant]:
    """Draws the same number from each group, if it has as many. A larger sample with the same seed contains a smaller
    one."""
    chooser = random.Random(seed)
    groups = list(by_group(mutants).values())
    for group in groups:
        chooser.shuffle(group)
    places = max(map(len, groups), default=0)
    in_turn = [group[place] for place in range(places) for group in groups if place < len(group)]
    return in_turn[:size]
