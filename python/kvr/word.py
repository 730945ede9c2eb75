"""Words with don't-care bits."""

from __future__ import annotations

from typing import Any, Optional, Union

from kvr import _kvr


class Word:
    """A word whose bits are 0, 1 or don't care. Immutable; words with the same bits are equal.

    Memories return an ``int`` for words without don't-care bits and accept both types.

    >>> Word("01XX")
    Word('01XX')
    >>> Word.parse("FX", "hex", width=8).bits
    '1111XXXX'
    """

    __slots__ = ("_bits",)
    _bits: str

    def __init__(self, bits: str) -> None:
        """Makes a word of ``bits``, the digits "0", "1" and "X" with the most significant one first."""
        self._bits = _kvr.bits_of_text(bits, "bin", len(bits))

    @classmethod
    def parse(cls, text: str, radix: str, width: int) -> Word:
        """Parses ``text`` in ``radix`` ("bin", "oct", "dec", "uns", "hex") as a word of ``width`` bits.

        Raises ValueError for an invalid number, and OverflowError for one that is too large.
        """
        made = cls.__new__(cls)
        made._bits = _kvr.bits_of_text(text, radix, width)
        return made

    @property
    def bits(self) -> str:
        """The bits as digits "0", "1" and "X", the most significant one first."""
        return self._bits

    @property
    def width(self) -> int:
        """The number of bits."""
        return len(self._bits)

    @property
    def dont_care(self) -> int:
        """A mask of the don't-care bits, as an int."""
        return int("".join("1" if bit == "X" else "0" for bit in self._bits), 2)

    @property
    def value(self) -> int:
        """The unsigned value, with 0 for don't-care bits."""
        return int(self._bits.replace("X", "0"), 2)

    def __int__(self) -> int:
        if "X" in self._bits:
            raise ValueError(f"{self._bits} has don't-care bits")
        return int(self._bits, 2)

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Word):
            return NotImplemented
        return self._bits == other._bits

    def __hash__(self) -> int:
        return hash((Word, self._bits))

    def __repr__(self) -> str:
        return f"Word({self._bits!r})"

    def __str__(self) -> str:
        return self._bits

    def __reduce__(self) -> tuple[Any, ...]:
        return Word, (self._bits,)


WordLike = Union[int, Word]
"""A word for a memory: an int (negative ones in two's complement) or a Word."""


def from_library(word: Union[int, str, None]) -> Union[int, Word, None]:
    """Converts a word from the library."""
    return Word(word) if isinstance(word, str) else word


def to_library(word: Optional[WordLike]) -> Union[int, str, None]:
    """Converts a word for the library."""
    return word.bits if isinstance(word, Word) else word


def required(word: WordLike) -> Union[int, str]:
    """Converts a word for the library; it must be set."""
    return word.bits if isinstance(word, Word) else word
