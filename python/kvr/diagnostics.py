"""What is wrong with a file, and how Python hears of it."""

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
    """New bytes for a stretch of a file."""

    offset: int
    """Bytes before it in the file."""
    length: int
    """How many bytes go."""
    replacement: bytes
    """What stands there instead."""


class Diagnostic(NamedTuple):
    """Something that is wrong with a file, or that its author hardly meant. ``str()`` is the whole text."""

    code: str
    """``"too-wide"``: stays the same from version to version."""
    severity: str
    """``"error"``, or ``"warning"`` for what is read and hardly meant so."""
    line: int
    """From 1; 0 for the file as a whole."""
    column: int
    """Byte in the line, from 1; 0 for the file as a whole."""
    length: int
    """Bytes."""
    message: str
    """What is wrong."""
    hint: str
    """What to write instead; may be ``""``."""
    fix: tuple[Edit, ...]
    """The edits of a repair that is certain, in order; empty where there is none."""
    offset: int
    """Bytes before the place in the file."""
    kind: str
    """``"broken"``: no file with it is read; ``"consumer"``: a program refuses the file or reads other
    words; ``"suspect"``."""
    consumer: str
    """The name of that program, else ``""``."""
    places: int
    """How many places have this cause; the first one is given."""
    address: Optional[int]
    """Of a word that cannot be written."""
    repair: str
    """What ``fix`` does, else ``""``."""
    text: str
    """File, place, message and hint for people."""

    def __str__(self) -> str:
        return self.text


class FileError(ValueError):
    """A file whose meaning is wrong or in doubt, or a memory that a format cannot hold."""

    diagnostics: list[Diagnostic]
    """Why; at least one."""

    def __init__(self, diagnostics: Sequence[Diagnostic]) -> None:
        super().__init__(list(diagnostics))
        self.diagnostics = list(diagnostics)

    def __str__(self) -> str:
        texts = [found.text for found in self.diagnostics[:_most_texts]]
        left_out = len(self.diagnostics) - len(texts)
        return "\n".join(texts + ([f"and {left_out} more"] if left_out else []))


class FileWarning(UserWarning):
    """A file that is read and hardly meant so."""

    diagnostic: Diagnostic
    """Why."""

    def __init__(self, diagnostic: Diagnostic) -> None:
        super().__init__(diagnostic)
        self.diagnostic = diagnostic

    def __str__(self) -> str:
        return self.diagnostic.text


@functools.lru_cache(maxsize=None)
def _flags() -> dict[str, bool]:
    """The options of the library's texts, and which of them have no value."""
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
    """The text with options of the library's texts as arguments of Python's functions.

    >>> _with_arguments("add --endian little, or give --width BITS")
    'add endian="little", or give width=BITS'
    """
    return _option.sub(_argument, text) if "--" in text else text


def diagnostic_of(fields: Sequence[Any]) -> Diagnostic:
    """The diagnostic of the fields that the library gives."""
    made = Diagnostic(*fields)
    message, hint = _with_arguments(made.message), _with_arguments(made.hint)
    if (message, hint) != (made.message, made.hint):
        text = made.text.replace(made.message, message)
        text = text.replace(made.hint, hint) if made.hint else text
        made = made._replace(message=message, hint=hint, text=text)
    return made._replace(fix=tuple(Edit(*each) for each in made.fix)) if made.fix else made


def diagnostics_of(all_fields: Sequence[Sequence[Any]]) -> list[Diagnostic]:
    """The same of several."""
    return [diagnostic_of(fields) for fields in all_fields]


def raise_broken(found: Sequence[Diagnostic]) -> None:
    """Raises FileError with what is broken, if anything is."""
    broken = [each for each in found if each.kind == "broken"]
    if broken:
        raise FileError(broken)


def warn_of(found: Sequence[Diagnostic], stacklevel: int) -> None:
    """Warns of each; ``stacklevel`` as for a call of ``warnings.warn()`` by the caller."""
    for each in found:
        warnings.warn(FileWarning(each), stacklevel=stacklevel + 1)
