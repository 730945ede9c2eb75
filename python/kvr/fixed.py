"""Fixed-point numbers and radix conversion."""

from __future__ import annotations

from decimal import Decimal
from fractions import Fraction
from typing import TYPE_CHECKING, Any, Union, overload

import numpy as np

from kvr import _kvr
from kvr.memory import require_fit

if TYPE_CHECKING:
    import numpy.typing as npt

_Number = Union[int, float, str, Decimal]
_widest_array = 64


def _raise_out_of_range(value: object, fixed: Fixed) -> None:
    raise OverflowError(f"value {value} is out of range: {fixed} holds {fixed.lowest} to {fixed.highest}")


class Fixed:
    """A fixed-point format: two's complement with ``integer_bits`` bits before the binary point, including
    the sign, and ``fraction_bits`` bits after it.

    >>> q15 = Fixed(1, 15)
    >>> hex(q15.encode(-0.5))
    '0xc000'
    >>> q15.decode(0xC000)
    -0.5
    """

    __slots__ = ("_integer_bits", "_fraction_bits")

    def __init__(self, integer_bits: int, fraction_bits: int) -> None:
        if integer_bits < 1 or fraction_bits < 0:
            raise ValueError("a fixed-point word has at least 1 integer bit and no negative number of others")
        self._integer_bits = integer_bits
        self._fraction_bits = fraction_bits

    @property
    def integer_bits(self) -> int:
        """Bits before the binary point, including the sign."""
        return self._integer_bits

    @property
    def fraction_bits(self) -> int:
        """Bits after the binary point."""
        return self._fraction_bits

    @property
    def width(self) -> int:
        """The word width in bits."""
        return self._integer_bits + self._fraction_bits

    @property
    def lowest(self) -> Fraction:
        """The smallest number."""
        return Fraction(-(1 << (self.width - 1)), 1 << self._fraction_bits)

    @property
    def highest(self) -> Fraction:
        """The largest number."""
        return Fraction((1 << (self.width - 1)) - 1, 1 << self._fraction_bits)

    @overload
    def encode(self, value: _Number, *, rounding: str = ..., saturate: bool = ...) -> int: ...

    @overload
    def encode(
        self, value: npt.NDArray[Any], *, rounding: str = ..., saturate: bool = ...
    ) -> npt.NDArray[Any]: ...

    def encode(
        self, value: Any, *, rounding: str = "nearest", saturate: bool = False
    ) -> Union[int, npt.NDArray[Any]]:
        """Returns the word for ``value`` as an unsigned int; for an array, an array of the same shape.

        A str is a decimal number of any length ("0.1", "2e-3"). All numbers are converted exactly, then
        rounded: ``rounding`` is "nearest" (ties away from 0), "even", or "down". A number out of range raises
        OverflowError, or with ``saturate`` becomes the largest or smallest number.
        """
        if isinstance(value, np.ndarray):
            return self._encode_array(value, rounding, saturate)
        text = value if isinstance(value, str) else str(Decimal(value))
        word = _kvr.encode_fixed(text, self._integer_bits, self._fraction_bits, rounding, saturate)
        if word is None:
            _raise_out_of_range(value, self)
        return word  # type: ignore[return-value]

    def _encode_array(self, values: npt.NDArray[Any], rounding: str, saturate: bool) -> npt.NDArray[Any]:
        if self.width > _widest_array or values.dtype.kind != "f" or values.dtype.itemsize > 8:
            words = [self.encode(each, rounding=rounding, saturate=saturate) for each in values.ravel().tolist()]
            kind = np.dtype(object) if self.width > _widest_array else _smallest_unsigned(self.width)
            return np.array(words, dtype=kind).reshape(values.shape)
        if not np.isfinite(values).all():
            raise ValueError("a number is infinite or none")
        # Scaling a float by a power of two is exact, unless it overflows; then it is out of range anyway.
        with np.errstate(over="ignore"):
            scaled = np.ldexp(values.astype(np.float64), self._fraction_bits)
        bound = 2.0 ** (self.width - 1)
        whole = _rounded(np.clip(scaled, -4 * bound, 4 * bound), rounding)
        beyond = (whole < -bound) | (whole >= bound)
        if beyond.any() and not saturate:
            _raise_out_of_range(values[beyond].ravel()[0], self)
        numbers = np.where(beyond, 0.0, whole).astype(np.int64)
        numbers[beyond & (whole < 0)] = -(1 << (self.width - 1))
        numbers[beyond & (whole > 0)] = (1 << (self.width - 1)) - 1
        bits: npt.NDArray[Any] = numbers.view(np.uint64) & np.uint64((1 << self.width) - 1)
        return bits.astype(_smallest_unsigned(self.width))

    @overload
    def decode(self, word: int) -> float: ...

    @overload
    def decode(self, word: npt.NDArray[Any]) -> npt.NDArray[np.float64]: ...

    def decode(self, word: Any) -> Union[float, npt.NDArray[np.float64]]:
        """Returns the value of a signed or unsigned word as a float; for an array, an array of floats.

        Words of more than 53 bits are rounded. A word that does not fit raises OverflowError."""
        if isinstance(word, np.ndarray):
            if word.dtype.kind not in "iu" or self.width > _widest_array:
                return np.array([self.decode(int(each)) for each in word.ravel()]).reshape(word.shape)
            require_fit(word.ravel(), self.width)
            shift = np.uint64(_widest_array - self.width)
            signed = (word.astype(np.uint64) << shift).view(np.int64) >> np.int64(shift)
            numbers: npt.NDArray[np.float64] = np.ldexp(signed.astype(np.float64), -self._fraction_bits)
            return numbers
        number = int(word)
        if not -(1 << (self.width - 1)) <= number < 1 << self.width:
            raise OverflowError(
                f"value {number} does not fit: words of {self.width} bits hold "
                f"{-(1 << (self.width - 1))} to {(1 << self.width) - 1}"
            )
        if number >> (self.width - 1) > 0:
            number -= 1 << self.width
        return float(Fraction(number, 1 << self._fraction_bits))

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Fixed):
            return NotImplemented
        return (self._integer_bits, self._fraction_bits) == (other._integer_bits, other._fraction_bits)

    def __hash__(self) -> int:
        return hash((Fixed, self._integer_bits, self._fraction_bits))

    def __repr__(self) -> str:
        return f"Fixed({self._integer_bits}, {self._fraction_bits})"

    def __reduce__(self) -> tuple[Any, ...]:
        return Fixed, (self._integer_bits, self._fraction_bits)


def _smallest_unsigned(width: int) -> np.dtype[Any]:
    return np.dtype(f"u{next(size for size in (1, 2, 4, 8) if width <= 8 * size)}")


def _rounded(numbers: npt.NDArray[np.float64], rounding: str) -> npt.NDArray[np.float64]:
    if rounding == "down":
        return np.floor(numbers)
    if rounding == "even":
        return np.rint(numbers)
    if rounding != "nearest":
        raise ValueError(f'rounding is "nearest", "even" or "down", not "{rounding}"')
    whole: npt.NDArray[np.float64] = np.trunc(numbers)
    whole += np.where(np.abs(numbers - whole) >= 0.5, np.copysign(1.0, numbers), 0.0)
    return whole


def convert_radix(text: str, source: str, target: str, *, width: int) -> str:
    """Converts the number ``text`` from radix ``source`` to radix ``target``, as a word of ``width`` bits.

    Radixes are "bin", "oct", "dec" (two's complement), "uns" and "hex". Raises OverflowError if the number
    needs more bits, and ValueError if it is invalid.

    >>> convert_radix("FFB", "hex", "dec", width=12)
    '-5'
    """
    return _kvr.convert_radix(text, source, target, width)
