"""The list of equivalent mutants, which no test can notice because they behave like the original."""

from __future__ import annotations

from collections.abc import Iterable
from pathlib import Path

from mutant import Key, Mutant


class EquivalentsError(Exception):
    """The list is invalid."""


def read_equivalents(path: Path) -> set[Key]:
    """An entry is a file with the function, a line with `-`, the changed line with `+`, and the reason."""
    found: set[Key] = set()
    text = "\n".join(line for line in path.read_text().splitlines() if not line.startswith("#"))
    for entry in filter(None, (each.strip() for each in text.split("\n\n"))):
        place, *lines = entry.splitlines()
        file, _, function = place.partition(" ")
        if len(lines) < 3 or not lines[0].startswith("- ") or not lines[1].startswith("+"):
            raise EquivalentsError(f"{path}: not a file, a line, its mutant and a reason:\n{entry}")
        key = Key(file, function, lines[0][2:], lines[1][1:].strip())
        if key in found:
            raise EquivalentsError(f"{path}: listed twice:\n{entry}")
        found.add(key)
    return found


def check_equivalents(equivalents: set[Key], mutants: Iterable[Mutant], files: Iterable[str]) -> None:
    """Checks that each entry for one of the files is one of its mutants."""
    looked_at = set(files)
    unknown = {key for key in equivalents if key.file in looked_at} - {mutant.key for mutant in mutants}
    if unknown:
        shown = "\n".join(f"{key.file} {key.function}\n- {key.before}\n+ {key.after}" for key in sorted(unknown))
        raise EquivalentsError(f"listed as equivalent, but no mutant of the source as it is:\n{shown}")
