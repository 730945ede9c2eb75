"""One source with many of its mutants: each body of a function that has some is there once more for each of them, and a
number that the program gets when it starts chooses."""

from __future__ import annotations

import re
from collections.abc import Iterator, Mapping
from pathlib import Path

from mutant import Body, Mutant

DECLARATIONS = b"extern unsigned kvr_active_mutant;\nextern unsigned char kvr_entered_bodies[];\n"
LINES = 100_000  # more than a source has: the lines of a mutant begin at its number times this
MESSAGE = re.compile(r"^[^\s:][^:]*:(\d+):(?:\d+:)? +(\S+)", re.MULTILINE)
CONTEXT = {"required", "recursively", "in"}  # how the lines begin that lead to what was instantiated or evaluated


def bodies_of(numbered: Mapping[int, Mutant]) -> dict[tuple[str, Body], int]:
    """Each has the number of the first mutant in it."""
    found: dict[tuple[str, Body], int] = {}
    for number, mutant in sorted(numbered.items()):
        if mutant.body is not None:
            found.setdefault((mutant.file, mutant.body), number)
    return found


def schema_of(path: Path, numbered: Mapping[int, Mutant]) -> bytes:
    source = path.read_bytes()
    by_body: dict[Body, dict[int, Mutant]] = {}
    for number, mutant in numbered.items():
        if mutant.body is not None:
            by_body.setdefault(mutant.body, {})[number] = mutant
    parts = [DECLARATIONS, _line_directive(1, path)]
    at = 0
    for body in sorted(by_body):
        parts += [source[at : body.begin], *_choice(path, source, body, by_body[body])]
        at = body.end
    return b"".join([*parts, source[at:]])


def _line_directive(line: int, path: Path) -> bytes:
    """The name of the original goes into the messages of its assertions."""
    return b'\n#line %d "%s"\n' % (line, bytes(path))


def _choice(path: Path, source: bytes, body: Body, numbered: dict[int, Mutant]) -> Iterator[bytes]:
    first = source.count(b"\n", 0, body.begin) + 1
    last = source.count(b"\n", 0, body.end) + 1
    chosen = b"(::kvr_entered_bodies[%d] = 1, ::kvr_active_mutant)" % min(numbered)
    if body.is_constant:  # the compiler evaluates the original
        chosen = b"__builtin_is_constant_evaluated() ? 0U : " + chosen
    yield b"{ switch (%s) { default:" % chosen + _line_directive(first, path) + source[body.begin : body.end]
    for number, mutant in sorted(numbered.items()):
        changed = source[body.begin : mutant.begin] + mutant.replacement + source[mutant.end : body.end]
        yield b" break; case %d:" % number + _line_directive(number * LINES + first, path) + changed
    yield b" break; } }" + _line_directive(last, path)


def culprits(messages: str) -> set[int]:
    """The mutants in which the errors of a compiler are: where it says or, when that is no mutant, at the first mutant on
    the way to there."""
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
