"""A mutant: one small change of one source, and its printed form."""

from __future__ import annotations

from dataclasses import dataclass
from typing import NamedTuple


class Key(NamedTuple):
    file: str
    function: str
    before: str
    after: str


class Part(NamedTuple):
    """A piece of source that is duplicated for each mutant in it: the body of an outermost function with its braces, or
    an expression that initializes a member."""

    begin: int
    end: int
    is_constant: bool  # the compiler may evaluate it
    is_expression: bool


def one_line(text: bytes) -> str:
    return " ".join(text.decode().split())


@dataclass(frozen=True)
class Mutant:
    """A change that replaces the bytes from begin to end of a file. The file is a path from the root."""

    file: str
    begin: int
    end: int
    replacement: bytes
    line: int
    function: str  # the function that contains the change, if any
    before: str  # the lines that the change touches, as one line
    after: str
    part: Part | None = None  # the part that contains the change, if any

    @property
    def key(self) -> Key:
        """The properties that stay the same if lines are added above. Two equal lines of a function have the same
        key."""
        return Key(self.file, self.function, self.before, self.after)

    def __str__(self) -> str:
        return f"{self.file}:{self.line} {self.function}\n- {self.before}\n+ {self.after}"

    def apply(self, source: bytes) -> bytes:
        return source[: self.begin] + self.replacement + source[self.end :]


def make_mutant(
    file: str, source: bytes, function: str, begin: int, end: int, replacement: bytes, part: Part | None = None
) -> Mutant:
    first = source.rfind(b"\n", 0, begin) + 1
    last = source.find(b"\n", end)
    after = source[first:begin] + replacement + source[end:last]
    return Mutant(
        file=file,
        begin=begin,
        end=end,
        replacement=replacement,
        line=source.count(b"\n", 0, begin) + 1,
        function=function,
        before=one_line(source[first:last]),
        after=one_line(after),
        part=part,
    )
