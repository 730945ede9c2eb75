"""Diagnostics of files, and the exceptions and warnings that report them."""

from __future__ import annotations

import functools
import re
import warnings
from typing import Any, NamedTuple, Optional, Sequence

from kvr import _kvr

_most_texts = 10

_option = re.compile(r"--([a-z]+(?:-[a-z]+)*)( (?:[0-9A-Za-z_:]+(?:[.][0-9A-Za-z]+)*(?:,[.]{3})?))?")
_arguments = {"address-unit": "unit", "from": "format", "to": "format"}
_with_name = {"address-unit", "endian", "from", "to"}
_with_number = {"base", "depth", "fill", "pad", "reshape", "width"}


class Edit(NamedTuple):
    """Replaces a range of bytes of a file."""

    offset: int
    """Offset of the first replaced byte."""
    length: int
    """Number of bytes to replace."""
    replacement: bytes
    """The new bytes."""


class Diagnostic(NamedTuple):
    """A fault in a file, or contents that its author probably did not intend. ``str()`` is the full text."""

    code: str
    """Stable across versions, for example ``"too-wide"``."""
    severity: str
    """``"error"``, or ``"warning"`` for readable contents that are probably not intended."""
    line: int
    """From 1; 0 for the whole file."""
    column: int
    """Byte within the line, from 1; 0 for the whole file."""
    length: int
    """In bytes."""
    message: str
    """Describes the fault."""
    hint: str
    """What to write instead; may be ``""``."""
    fix: tuple[Edit, ...]
    """The edits of a certain repair, in order; empty if there is none."""
    offset: int
    """Offset of the place in the file, in bytes."""
    kind: str
    """``"broken"``: the file is not readable; ``"consumer"``: a program rejects the file or reads other
    words; ``"suspect"``: the file is readable, but probably not as intended."""
    consumer: str
    """The name of that program; else ``""``."""
    places: int
    """Number of places with this fault; only the first one is stated."""
    address: Optional[int]
    """Address of a word that cannot be written."""
    repair: str
    """Describes ``fix``; ``""`` without one."""
    text: str
    """File, place, message and hint, formatted for users."""

    def __str__(self) -> str:
        return self.text


class FileError(ValueError):
    """Raised for a file whose meaning is wrong or ambiguous, and for a memory that a format cannot represent."""

    diagnostics: list[Diagnostic]
    """The reasons; at least one."""

    def __init__(self, diagnostics: Sequence[Diagnostic]) -> None:
        super().__init__(list(diagnostics))
        self.diagnostics = list(diagnostics)

    def __str__(self) -> str:
        texts = [found.text for found in self.diagnostics[:_most_texts]]
        left_out = len(self.diagnostics) - len(texts)
        return "\n".join(texts + ([f"and {left_out} more"] if left_out else []))


class FileWarning(UserWarning):
    """Warns of a file that is readable, but probably not as intended."""

    diagnostic: Diagnostic
    """The reason."""

    def __init__(self, diagnostic: Diagnostic) -> None:
        super().__init__(diagnostic)
        self.diagnostic = diagnostic

    def __str__(self) -> str:
        return self.diagnostic.text


@functools.lru_cache(maxsize=None)
def _flags() -> dict[str, bool]:
    """Returns the options in texts of the library, and whether each one has no value."""
    choices = [each for fields in _kvr.formats() for each in (*fields[9], *fields[10])]
    return {**{name: operand == "" for name, operand, *_ in choices},
            **dict.fromkeys(_with_name | _with_number, False)}


def _argument(found: re.Match[str]) -> str:
    name, after = found[1], found[2] or ""
    if name not in _flags():
        return found[0]
    argument = _arguments.get(name, name.replace("-", "_"))
    value = after.lstrip()
    is_number = value[:1].isdigit() or value[:1].isupper()
    if _flags()[name]:
        return f"{argument}=True{after}"
    if not value or (name in _with_number and not is_number):
        return argument + after
    if name == "reshape":
        return f"reshape({value})"
    return f"{argument}={value}" if is_number else f'{argument}="{value}"'


def _with_arguments(text: str) -> str:
    """Replaces options in a text of the library by arguments of Python functions.

    >>> _with_arguments("add --endian little, or give --width BITS")
    'add endian="little", or give width=BITS'
    """
    return _option.sub(_argument, text) if "--" in text else text


def diagnostic_of(fields: Sequence[Any]) -> Diagnostic:
    """Returns the diagnostic with the fields from the library."""
    made = Diagnostic(*fields)
    message, hint = _with_arguments(made.message), _with_arguments(made.hint)
    if (message, hint) != (made.message, made.hint):
        text = made.text.replace(made.message, message)
        text = text.replace(made.hint, hint) if made.hint else text
        made = made._replace(message=message, hint=hint, text=text)
    return made._replace(fix=tuple(Edit(*each) for each in made.fix)) if made.fix else made


def diagnostics_of(all_fields: Sequence[Sequence[Any]]) -> list[Diagnostic]:
    """Returns several diagnostics with their fields from the library."""
    return [diagnostic_of(fields) for fields in all_fields]


def raise_broken(found: Sequence[Diagnostic]) -> None:
    """Raises FileError with the broken diagnostics, if there are any."""
    broken = [each for each in found if each.kind == "broken"]
    if broken:
        raise FileError(broken)


def warn_of(found: Sequence[Diagnostic], stacklevel: int) -> None:
    """Warns of each diagnostic. ``stacklevel`` is that of ``warnings.warn()`` called by the caller."""
    for each in found:
        warnings.warn(FileWarning(each), stacklevel=stacklevel + 1)
