"""Files of any format."""

from __future__ import annotations

import os
from typing import Any, Mapping, NamedTuple, Optional, Sequence, Union

from kvr import _kvr
from kvr.diagnostics import (
    Diagnostic,
    FileError,
    diagnostics_of,
    raise_broken,
    warn_of,
)
from kvr.memory import Memory, read_memory
from kvr.word import Word, WordLike, required

_Choice = Union[str, int, bool, None]


class Choice(NamedTuple):
    """An option of one format."""

    name: str
    """The argument of ``read()`` or ``write()``, which has "_" for each "-"."""
    operand: str
    """The placeholder for its value; ``""``: it is True or False."""
    values: str
    """The possible values, separated by blanks; ``""`` for any value."""
    description: str
    """One line for users."""


class Format(NamedTuple):
    """A supported file format."""

    name: str
    """``format="mif"``"""
    title: str
    """``"MIF"``"""
    extensions: tuple[str, ...]
    """Without the dot."""
    can_read: bool
    can_write: bool
    can_edit: bool
    states_width: bool
    """Files state the word width."""
    holds_unset: bool
    """Words may be unset."""
    holds_dont_care: bool
    """Bits may be don't care."""
    read_choices: tuple[Choice, ...]
    """Further arguments of ``read()`` for this format."""
    write_choices: tuple[Choice, ...]
    """Further arguments of ``Memory.write()`` for this format."""


def formats() -> list[Format]:
    """Returns all formats.

    >>> all(each.can_read or each.can_write for each in formats())
    True
    """
    return [
        Format(
            *fields[:9], tuple(Choice(*each) for each in fields[9]), tuple(Choice(*each) for each in fields[10])
        )
        for fields in _kvr.formats()
    ]


def _choices(given: Mapping[str, _Choice], is_for_writing: bool) -> list[tuple[str, str]]:
    """Converts choices for the library, which checks them against the format."""
    if not given:
        return []
    known = {
        choice.name
        for each in formats()
        for choice in (each.write_choices if is_for_writing else each.read_choices)
    }
    made = []
    for key, value in given.items():
        name = key.replace("_", "-")
        if name not in known:
            raise TypeError(f"there is no argument {key!r}; formats take {', '.join(sorted(known))}")
        if value is not None and value is not False:
            made.append((name, "" if value is True else str(value)))
    return made


def write_options(choices: Mapping[str, _Choice]) -> dict[str, Any]:
    """Converts the choices of a ``Memory.write()`` call to options of the library."""
    return {"choices": _choices(choices, is_for_writing=True)}


def _path(path: Any) -> bytes:
    """Converts a path for the library, which treats "-" as standard input."""
    name = os.fsencode(path)
    return b"./-" if name == b"-" else name


def _shown(path: bytes) -> str:
    return path.decode("utf-8", "backslashreplace")


def _raise_for(path: bytes, error: OSError) -> None:
    """Raises ``error`` with the file name, as Python does."""
    raise type(error)(error.errno, error.strerror, os.fsdecode(path)) from None


def _contents(source: Any) -> tuple[bytes, str]:
    """Returns the bytes and the name of a path or stream."""
    if hasattr(source, "read"):
        data = source.read()
        name = getattr(source, "name", "")
        return data.encode() if isinstance(data, str) else bytes(data), name if isinstance(name, str) else ""
    path = _path(source)
    with open(os.fsdecode(path), "rb") as file:
        return file.read(), _shown(path)


def _memory(result: Any, stacklevel: int) -> Memory:
    image, format_name, facts, fields = result
    found = diagnostics_of(fields)
    if image is None:
        raise_broken(found)
        raise FileError(found)
    warn_of([each for each in found if each.kind == "suspect"], stacklevel + 1)
    return read_memory(image, format_name, facts, found)


def read(
    source: Any,
    *,
    format: Optional[str] = None,
    width: Optional[int] = None,
    depth: Optional[int] = None,
    unit: Optional[str] = None,
    endian: Optional[str] = None,
    base: Optional[int] = None,
    pad: Optional[int] = None,
    **choices: _Choice,
) -> Memory:
    """Reads a file of any format: a path, or a stream with ``read()``.

    Args:
        format: a name of ``formats()``; by default determined from the file's name and contents.
        width: word width in bits; overrides the width of the file, or supplies a missing one.
        depth: number of words.
        unit: the unit of addresses, "word" or "byte", if the format does not define it.
        endian: the byte order within a word, "little" or "big", for a file of bytes.
        base: the file address that becomes word 0, in the file's unit.
        pad: the value of missing bytes of a word.
        choices: further options of the format (``Format.read_choices``), with "_" for "-".

    Raises FileError for a file whose meaning is wrong or ambiguous, and OSError for one that cannot be read.
    Issues a FileWarning for contents that are readable, but probably not as intended.
    """
    options: dict[str, Any] = _read_options(format, width, depth, unit, endian, base, pad, choices)
    if hasattr(source, "read"):
        contents, options["file_name"] = _contents(source)
        return _memory(_kvr.parse(contents, options), 2)
    path = _path(source)
    options["file_name"] = _shown(path)
    try:
        result = _kvr.read(path, options)
    except OSError as error:
        _raise_for(path, error)
    return _memory(result, 2)


def parse(contents: Union[bytes, str], *, name: str = "", **options: Any) -> Memory:
    """Parses the contents of a file named ``name``. The other arguments are those of ``read()``.

    >>> parse("@0 1F 2E", format="readmemh", width=8)[1]
    46
    """
    made = _read_options_of(options)
    made["file_name"] = name
    data = contents.encode() if isinstance(contents, str) else bytes(contents)
    return _memory(_kvr.parse(data, made), 2)


def _read_options(
    format: Optional[str],
    width: Optional[int],
    depth: Optional[int],
    unit: Optional[str],
    endian: Optional[str],
    base: Optional[int],
    pad: Optional[int],
    choices: Mapping[str, _Choice],
) -> dict[str, Any]:
    return {
        "format": format,
        "width": width,
        "depth": depth,
        "unit": unit,
        "endian": endian,
        "base": base,
        "pad": pad,
        "choices": _choices(choices, is_for_writing=False),
    }


def _read_options_of(options: Mapping[str, Any]) -> dict[str, Any]:
    names = ("format", "width", "depth", "unit", "endian", "base", "pad")
    choices = {name: value for name, value in options.items() if name not in names}
    return _read_options(**{name: options.get(name) for name in names}, choices=choices)


def write(image: _kvr.Image, memory_format: Optional[str], target: Any, options: dict[str, Any]) -> None:
    """Writes to a path or a stream; see ``Memory.write()``."""
    is_stream = hasattr(target, "write")
    name = getattr(target, "name", "") if is_stream else target
    path = _path(name) if not is_stream or isinstance(name, str) else b""
    options["file_name"] = _shown(path)
    options["format"] = options["format"] or _kvr.format_of_path(path)
    if options["format"] is None and is_stream:
        options["format"] = memory_format
    if options["format"] is None:
        raise ValueError(f"the format for {_shown(path) or 'the stream'} is unknown")
    if is_stream:
        _write_stream(image, target, options)
        return
    try:
        obstacles = _kvr.write(image, path, options)
    except OSError as error:
        _raise_for(path, error)
    raise_broken(diagnostics_of(obstacles))


def _write_stream(image: _kvr.Image, stream: Any, options: dict[str, Any]) -> None:
    text, obstacles = _kvr.to_text(image, options)
    raise_broken(diagnostics_of(obstacles))
    # Text streams have an encoding.
    stream.write(text.decode() if hasattr(stream, "encoding") else text)


def convert(source: Any, target: Any, *, write: Optional[Mapping[str, Any]] = None, **options: Any) -> Memory:
    """Reads a file and writes another one. Both are paths or streams. Returns the memory.

    Args:
        write: arguments of ``Memory.write()``; the others are those of ``read()``.
    """
    memory = read(source, **options)
    memory.write(target, **(write or {}))
    return memory


def check(source: Any, *, consumers: Sequence[str] = ("kvr",), **options: Any) -> list[Diagnostic]:
    """Returns all diagnostics of a file in file order, without raising them. The other arguments are those of
    ``read()``.

    Args:
        consumers: programs and libraries whose reading is compared ("kvr": the classic library).
    """
    made = _read_options_of(options)
    contents, made["file_name"] = _contents(source)
    return diagnostics_of(_kvr.check(contents, made, list(consumers))[3])


def edit(path: Any, words: Mapping[Any, Union[WordLike, Sequence[WordLike]]], **options: Any) -> None:
    """Changes words of a file and keeps comments and layout. The file is replaced atomically.

    Args:
        words: new words by address, ``{0x10: 5}``, or by range of addresses, ``{range(0x20, 0x30): [1, 2]}``,
            over which a sequence repeats.
        options: arguments of ``read()``.

    Raises FileError for a broken file, and for one that cannot represent the words.
    """
    made = _read_options_of(options)
    contents, made["file_name"] = _contents(path)
    image, _, _, fields = _kvr.parse(contents, made)
    found = diagnostics_of(fields)
    if image is None:
        raise_broken(found)
        raise FileError(found)
    new = [(*_first_and_last(where), _pattern(value)) for where, value in words.items()]
    edited, obstacles = _kvr.edit(contents, new, image.width, made)
    if obstacles:
        raise FileError(diagnostics_of(obstacles))
    if edited != contents:
        _kvr.write_contents(edited, _path(path))


def _first_and_last(where: Any) -> tuple[int, int]:
    if isinstance(where, range):
        if where.step != 1 or not where:
            raise ValueError(f"{where} is not a range of addresses")
        return where[0], where[-1]
    if where < 0:
        raise IndexError(f"address {where} is below 0")
    return where, where


def _pattern(value: Union[WordLike, Sequence[WordLike]]) -> list[Union[int, str]]:
    if isinstance(value, (str, bytes)):
        raise TypeError(f"{value!r} is not a word")
    if isinstance(value, Word) or not hasattr(value, "__iter__"):
        return [required(value)]
    return [required(each) for each in value]
