"""One source with many of its mutants. Each part with mutants is duplicated for each of them, and a number that the
program gets at its start selects one."""

from __future__ import annotations

import re
from collections.abc import Iterator, Mapping
from pathlib import Path

from mutant import Part, Mutant

DECLARATIONS = b"extern unsigned kvr_active_mutant;\nextern unsigned char kvr_entered_parts[];\n"
LINES = 100_000  # more than a source has; the lines of a mutant begin at its number times this
MESSAGE = re.compile(r"^[^\s:][^:]*:(\d+):(?:\d+:)? +(\S+)", re.MULTILINE)
CONTEXT = {"required", "recursively", "in"}  # first words of messages that lead to the instantiated or evaluated code


def parts_of(numbered: Mapping[int, Mutant]) -> dict[tuple[str, Part], int]:
    """The parts, each with the number of its first mutant."""
    found: dict[tuple[str, Part], int] = {}
    for number, mutant in sorted(numbered.items()):
        if mutant.part is not None:
            found.setdefault((mutant.file, mutant.part), number)
    return found


def schema_of(path: Path, numbered: Mapping[int, Mutant]) -> bytes:
    source = path.read_bytes()
    by_part: dict[Part, dict[int, Mutant]] = {}
    for number, mutant in numbered.items():
        if mutant.part is not None:
            by_part.setdefault(mutant.part, {})[number] = mutant
    texts = [DECLARATIONS, _line_directive(1, path)]
    at = 0
    for part in sorted(by_part):
        write = _chosen_expression if part.is_expression else _chosen_body
        texts += [source[at : part.begin], *write(path, source, part, by_part[part])]
        at = part.end
    return b"".join([*texts, source[at:]])


def _line_directive(line: int, path: Path) -> bytes:
    """The messages of assertions contain the name of the original."""
    return b'\n#line %d "%s"\n' % (line, bytes(path))


def _line_of(source: bytes, place: int) -> int:
    return source.count(b"\n", 0, place) + 1


def _active_mutant(part: Part, numbered: Mapping[int, Mutant]) -> bytes:
    """Notes that the part is entered. If the compiler evaluates the part, the original is selected."""
    active = b"(::kvr_entered_parts[%d] = 1, ::kvr_active_mutant)" % min(numbered)
    return b"(__builtin_is_constant_evaluated() ? 0U : %s)" % active if part.is_constant else active


def _changed(path: Path, source: bytes, part: Part, number: int, mutant: Mutant) -> bytes:
    line = number * LINES + _line_of(source, part.begin)
    changed = source[part.begin : mutant.begin] + mutant.replacement + source[mutant.end : part.end]
    return _line_directive(line, path) + changed


def _chosen_body(path: Path, source: bytes, part: Part, numbered: Mapping[int, Mutant]) -> Iterator[bytes]:
    yield b"{ switch (%s) { default:" % _active_mutant(part, numbered)
    yield _line_directive(_line_of(source, part.begin), path) + source[part.begin : part.end]
    for number, mutant in sorted(numbered.items()):
        yield b" break; case %d:" % number + _changed(path, source, part, number, mutant)
    yield b" break; } }" + _line_directive(_line_of(source, part.end), path)


def _chosen_expression(path: Path, source: bytes, part: Part, numbered: Mapping[int, Mutant]) -> Iterator[bytes]:
    """If an expression must be constant, the compiler reports an error in the first mutant."""
    yield _line_directive(min(numbered) * LINES, path) + b"("
    for number, mutant in sorted(numbered.items()):
        yield b"%s == %d ? (" % (_active_mutant(part, numbered), number)
        yield _changed(path, source, part, number, mutant) + b") : "
    yield b"(" + _line_directive(_line_of(source, part.begin), path) + source[part.begin : part.end] + b"))"
    yield _line_directive(_line_of(source, part.end), path)


def culprits(messages: str) -> set[int]:
    """The mutants that cause the errors of a compiler. An error belongs to the mutant at its place or, if there is
    none, to the first mutant of the messages that lead to it."""
    found: set[int] = set()
    way: list[int] = []
    for line, kind in MESSAGE.findall(messages):
        number = int(line) // LINES
        if kind in CONTEXT:
            way.append(number)
            continue
        if kind in ("error:", "fatal"):
            found |= set(list(filter(None, [number, *way]))[:1])
        way = []
    return found
