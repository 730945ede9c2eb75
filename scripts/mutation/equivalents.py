"""The lists of equivalent mutants, which no test can notice because they behave like the original."""

from __future__ import annotations

from collections.abc import Iterable, Iterator
from pathlib import Path

from mutant import Key, Mutant


class EquivalentsError(Exception):
    """A list is invalid."""


def read_equivalents(folder: Path) -> set[Key]:
    """The folder has a list for each folder of sources."""
    found: set[Key] = set()
    for path in sorted(folder.rglob("*.txt")):
        sources = path.relative_to(folder).with_suffix("")
        for key in keys_of(path, sources):
            if key in found:
                raise EquivalentsError(f"{path}: listed twice:\n{shown(key)}")
            found.add(key)
    return found


def keys_of(path: Path, sources: Path) -> Iterator[Key]:
    """An entry is the name of a source and its function, lines with `-`, each followed by changed lines with `+`, and
    the reason that they share. A blank line ends it."""
    text = "\n".join(line for line in path.read_text().splitlines() if not line.startswith("#"))
    for entry in filter(None, (each.strip() for each in text.split("\n\n"))):
        place, *lines = entry.splitlines()
        name, _, function = place.partition(" ")
        before = ""
        keys = []
        while lines and lines[0][:1] in ("-", "+"):
            sign, line = lines[0][:1], lines.pop(0)[1:].strip()
            if sign == "-":
                before = line
            else:
                keys.append(Key(str(sources / name), function, before, line))
        if not lines or not all(key.before for key in keys):
            raise EquivalentsError(f"{path}: not a source, its lines with their mutants, and a reason:\n{entry}")
        yield from keys


def check_equivalents(equivalents: set[Key], mutants: Iterable[Mutant], files: Iterable[str]) -> None:
    """Checks that each entry for one of the files is one of its mutants."""
    looked_at = set(files)
    unknown = {key for key in equivalents if key.file in looked_at} - {mutant.key for mutant in mutants}
    if unknown:
        raise EquivalentsError(
            "listed as equivalent, but no mutant of the source as it is:\n" + "\n".join(map(shown, sorted(unknown)))
        )


def shown(key: Key) -> str:
    return f"{key.file} {key.function}\n- {key.before}\n+ {key.after}"
