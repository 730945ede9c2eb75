"""The classic interface of the library kvr, including its unusual results.

For scripts that need the results that existing programs get. The rest of this package is exact.
"""

from __future__ import annotations

from enum import IntEnum

from kvr import _kvr
from kvr._kvr import MemoryFile

__all__ = ["FileType", "MemoryFile", "Radix", "radix_conversion"]


class Radix(IntEnum):
    """The radixes of the words of a ``MemoryFile``."""

    BIN = 0
    DEC = 1
    UNS = 2
    HEX = 3
    OCT = 4
    FIXED_POINT = 5
    NONE = 6


class FileType(IntEnum):
    """The formats of a ``MemoryFile``."""

    HEX = 0
    MIF = 1
    RIF = 3
    UNSET = 4


def radix_conversion(text: str, source: int, target: int, width: int = 0) -> tuple[bool, str]:
    """Converts a word. Returns whether both radixes are known, and the text made by the library.

    Signed decimals are ones' complement, and decimal digits are returned least significant first.

    >>> radix_conversion("0C", Radix.HEX, Radix.UNS, 8)
    (True, '21')
    """
    return _kvr.radix_conversion(text, source, target, width)
