"""Memories and operations on them."""

from __future__ import annotations

import operator
from typing import TYPE_CHECKING, Any, Iterable, Iterator, NamedTuple, Optional, Sequence, Union

import numpy as np

from kvr import _kvr
from kvr.diagnostics import Diagnostic
from kvr.word import Word, WordLike, from_library, required, to_library

if TYPE_CHECKING:
    import numpy.typing as npt

    _Array = npt.NDArray[Any]

_words_at_once = 4096
_widest_array = 64


class Difference(NamedTuple):
    """Consecutive addresses with the same pair of different words in two memories."""

    first: int
    """The lowest address."""
    last: int
    """The highest address."""
    left: Union[int, Word, None]
    """The word of the first memory; None: unset or beyond its end."""
    right: Union[int, Word, None]
    """The word of the other memory; None as for ``left``."""


class Picture(str):
    """An SVG document, shown by notebooks."""

    __slots__ = ()

    def _repr_svg_(self) -> str:
        return str(self)


class Memory:
    """Words of ``width`` bits at the addresses ``base`` to ``base + depth - 1``, each set or unset.

    A word is a nonnegative ``int``, ``None`` if it is unset, or a ``Word`` if it has don't-care bits.
    Indexes are addresses, which begin at ``base``; a negative index counts from the end.

    >>> m = Memory(width=8, depth=4, base=0x100)
    >>> m[0x100:0x103] = [1, 2, -1]
    >>> m[0x102], m[-1], len(m)
    (255, None, 4)
    >>> list(m.items())
    [(256, 1), (257, 2), (258, 255), (259, None)]

    Memories are equal if width, base, depth and words are equal. They are mutable and thus not hashable.
    """

    __slots__ = ("_image", "_format", "_facts", "_diagnostics", "__weakref__")
    _image: _kvr.Image
    _format: Optional[str]
    _facts: dict[str, str]
    _diagnostics: list[Diagnostic]

    def __init__(self, width: int, depth: int, *, base: int = 0, fill: Optional[WordLike] = None) -> None:
        """
        Args:
            width: word width in bits, 1 to 2**20.
            depth: number of words, 1 to 2**32. Unset words take no memory.
            base: the lowest address.
            fill: the initial word of all addresses; None: all are unset.
        """
        self._become(_kvr.Image(width, depth, base))
        if fill is not None:
            self[:] = fill

    def _become(self, image: _kvr.Image) -> None:
        self._image = image
        self._format = None
        self._facts = {}
        self._diagnostics = []

    # ---- Properties ----

    @property
    def width(self) -> int:
        """Word width in bits."""
        return self._image.width

    @property
    def depth(self) -> int:
        """Number of words, set or unset."""
        return self._image.depth

    @property
    def base(self) -> int:
        """The lowest address, in words."""
        return self._image.base

    @property
    def addresses(self) -> range:
        """All addresses."""
        return range(self.base, self.base + self.depth)

    @property
    def format(self) -> Optional[str]:
        """The format of the file that the memory was read from; None if there was no file."""
        return self._format

    @property
    def facts(self) -> dict[str, str]:
        """Further information in that file, by name."""
        return dict(self._facts)

    @property
    def diagnostics(self) -> list[Diagnostic]:
        """The diagnostics of that file that did not prevent reading."""
        return list(self._diagnostics)

    @property
    def is_set(self) -> npt.NDArray[np.bool_]:
        """A new array of shape (depth,), True for set words."""
        return self._image.is_set()

    def count_set(self) -> int:
        """Returns the number of set words."""
        return self._image.count_set()

    # ---- Words ----

    def __len__(self) -> int:
        return self._image.depth

    def __getitem__(self, key: Any) -> Any:
        """Returns the word at an address; for a slice of addresses, a memory with these words at the same
        addresses. Slices are cut at the ends of the memory and have no step.

        >>> m = Memory(width=8, depth=16, fill=7)
        >>> m[4:8]
        <kvr.Memory: 4 words of 8 bits from 0x4, 4 set>
        """
        if isinstance(key, slice):
            addresses = self._addresses_of(key)
            if not addresses:
                raise ValueError("the slice has no address: a memory has at least one word")
            return memory_of(self._image.cut_out(addresses[0], addresses[-1]))
        word = self._image.get(key)
        return Word(word) if type(word) is str else word

    def __setitem__(self, key: Any, value: Any) -> None:
        """Sets a word. A slice of addresses is set to one word, or to the words of a sequence, array or memory
        of the same length. None unsets words. An int that does not fit raises OverflowError.
        """
        if not isinstance(key, slice):
            self._image.set(key, to_library(value))
            return
        addresses = self._addresses_of(key)
        if isinstance(value, (int, np.integer, Word)):
            if addresses:
                self._image.fill(addresses[0], addresses[-1], [required(value)])  # type: ignore[arg-type]
        elif value is None:
            if addresses:
                self._image.unset(addresses[0], addresses[-1])
        else:
            self._set_each(addresses, value)

    def __delitem__(self, key: Any) -> None:
        """Unsets words. The depth stays the same."""
        self[key] = None

    def _set_each(self, addresses: range, values: Any) -> None:
        if isinstance(values, Memory):
            values = values.copy()  # another thread may resize it
        elif not hasattr(values, "__len__"):
            values = list(values)
        if len(values) != len(addresses):
            raise ValueError(f"{len(values)} words for {len(addresses)} addresses")
        if not addresses:
            return
        if isinstance(values, Memory):
            part = _kvr.Image.restored(_moved(values._image.state(), addresses[0]))
        else:
            part = from_numpy(_array_of(values), width=self.width, base=addresses[0])._image
        self._image.replace(part)

    def _addresses_of(self, key: slice) -> range:
        if key.step is not None and key.step != 1:
            raise ValueError("a slice of a memory has no step: take one of to_numpy()")
        first, end = self.base, self.base + self.depth

        def bound(index: Any, otherwise: int) -> int:
            if index is None:
                return otherwise
            number = operator.index(index)
            return min(max(number if number >= 0 else end + number, first), end)

        start = bound(key.start, first)
        return range(start, max(start, bound(key.stop, end)))

    def __iter__(self) -> Iterator[Union[int, Word, None]]:
        """Iterates over the words in address order."""
        for start in range(self.base, self.base + self.depth, _words_at_once):
            last = min(start + _words_at_once, self.base + self.depth) - 1
            for word in self._image.words(start, last):
                yield Word(word) if type(word) is str else word  # type: ignore[misc]

    def __reversed__(self) -> Iterator[Union[int, Word, None]]:
        for address in reversed(self.addresses):
            yield self[address]

    def items(self) -> Iterator[tuple[int, Union[int, Word, None]]]:
        """Iterates over (address, word) of all addresses in order. For deep, sparse memories see ``runs()``."""
        return zip(self.addresses, self)

    def runs(self) -> Iterator[tuple[int, int, Union[int, Word, None]]]:
        """Iterates over runs of equal words, also unset ones: (first address, last address, word), in order.
        Billions of equal words are one run.

        >>> list(Memory(width=8, depth=2**32, fill=0).runs())
        [(0, 4294967295, 0)]
        """
        address, end = self.base, self.base + self.depth
        while address < end:
            last, word = self._image.run_at(address)
            yield address, last, from_library(word)
            address = last + 1

    # ---- Arrays and bytes ----

    def to_numpy(
        self, *, signed: bool = False, unset: int = 0, as_bytes: bool = False, endian: str = "little"
    ) -> _Array:
        """Returns the words as an array of shape (depth,).

        Up to 64 bits the elements have the smallest unsigned type that holds a word, uint8 to uint64; with
        ``signed`` words are two's complement and the type is signed. Wider words are Python ints (dtype
        object). With ``as_bytes`` the array has bytes, shape (depth, (width + 7) // 8), in the order ``endian``.

        ``unset`` is the value of unset words (see ``is_set``). A word with don't-care bits raises ValueError.
        If the memory refers to the unchanged words of a file of bytes, the array is a read-only view of them,
        which stays the same when the memory changes. Otherwise it is a copy.

        >>> m = Memory(width=12, depth=3)
        >>> m[0:2] = [1, -1]
        >>> m.to_numpy(signed=True, unset=-2)
        array([ 1, -1, -2], dtype=int16)
        """
        if as_bytes or self.width > _widest_array:
            return self._wide_numpy(signed, unset, as_bytes, endian)
        numbers = self._image.view()
        if numbers is None:
            numbers = self._image.numbers(_unsigned(unset, self.width))
        return _as_signed(numbers, self.width) if signed else numbers

    def _wide_numpy(self, signed: bool, unset: int, as_bytes: bool, endian: str) -> _Array:
        size = (self.width + 7) // 8
        raw = self._image.to_bytes(endian if as_bytes else "little", _unsigned(unset, self.width))
        if as_bytes:
            return np.frombuffer(raw, np.uint8).reshape(-1, size)
        words = [int.from_bytes(raw[at : at + size], "little") for at in range(0, len(raw), size)]
        if signed:
            sign, all_words = 1 << (self.width - 1), 1 << self.width
            words = [word - all_words if word & sign else word for word in words]
        made = np.empty(len(words), dtype=object)
        made[:] = words
        return made

    def __array__(self, dtype: Any = None) -> _Array:
        """Supports ``numpy.asarray()``; see ``to_numpy()``."""
        numbers = self.to_numpy()
        return numbers if dtype is None else numbers.astype(dtype)

    def to_bytes(self, *, endian: str = "little", fill: Optional[WordLike] = None) -> bytes:
        """Returns the words in address order, in (width + 7) // 8 bytes each, in the byte order ``endian``.

        ``fill`` is the value of unset words; without it they raise ValueError, as don't-care bits do.
        """
        return self._image.to_bytes(endian, to_library(fill))

    # ---- Files and pictures ----

    def write(
        self,
        target: Any,
        *,
        format: Optional[str] = None,
        address_radix: Optional[str] = None,
        data_radix: Optional[str] = None,
        runs: bool = True,
        endian: Optional[str] = None,
        **choices: Union[str, int, bool, None],
    ) -> None:
        """Writes a file atomically, or writes to a stream with ``write()``.

        Args:
            format: a name of ``formats()``; by default that of the file's extension, and for a stream without a
                name that of the memory.
            address_radix, data_radix: the radixes of numbers, if the format has a choice.
            runs: put neighboring equal words on one line, if the format can.
            endian: the byte order within a word, for a format of bytes.
            choices: further options of the format (``Format.write_choices``), with "_" for "-".

        Raises FileError if the format cannot represent the memory.
        """
        from kvr import files

        options = files.write_options(choices)
        options.update(
            format=format, address_radix=address_radix, data_radix=data_radix, runs=runs, endian=endian
        )
        files.write(self._image, self._format, target, options)

    def plot(
        self,
        other: Optional[Memory] = None,
        *,
        start: Optional[int] = None,
        stop: Optional[int] = None,
        signed: bool = False,
        name: str = "",
        other_name: str = "",
    ) -> Picture:
        """Draws the words over the addresses as SVG, smaller than 500 KB for any memory.

        Args:
            other: draw the differences from this memory: changed words, and words set in only one of the two.
            start, stop: the addresses to draw, like a slice; for differences, addresses of either memory.
            signed: words are two's complement; ignored for differences.
            name, other_name: the titles.
        """
        if other is not None:
            return self._plot_difference(other, start, stop, (name, other_name))
        addresses = self._addresses_of(slice(start, stop))
        if not addresses:
            raise ValueError("there is no address to draw")
        return Picture(
            _kvr.draw(self._image, (addresses[0], addresses[-1]), signed, name, (self._format or "").upper())
        )

    def _plot_difference(
        self, other: Memory, start: Optional[int], stop: Optional[int], names: tuple[str, str]
    ) -> Picture:
        end = max(self.base + self.depth, other.base + other.depth)
        begin = min(self.base, other.base)
        first = begin if start is None else start
        last = (end if stop is None else stop) - 1
        if not begin <= first <= last < end:
            raise ValueError("there is no address to draw")
        titles = ((self._format or "").upper(), (other._format or "").upper())
        return Picture(_kvr.draw_both(self._image, other._image, (first, last), names, titles))

    def _repr_html_(self) -> str:
        return f"<div><code>{self._description()}</code></div>{self.plot()}"

    # ---- Operations ----

    def copy(self) -> Memory:
        """Returns a copy. Takes time and memory proportional to the stored words, not to the depth."""
        return self._like(self._image.copy())

    __copy__ = copy

    def __deepcopy__(self, memo: Any) -> Memory:
        return self.copy()

    def _like(self, image: _kvr.Image) -> Memory:
        made = memory_of(image)
        made._format, made._facts, made._diagnostics = self._format, self._facts, self._diagnostics
        return made

    def resize(self, depth: int) -> None:
        """Sets the depth to ``depth`` words. New words are unset; surplus words at the end are dropped."""
        self._image.resize(depth)

    def reshape(self, width: int, *, order: str = "low-first", pad: Optional[WordLike] = None) -> Memory:
        """Returns a memory with the same bits in words of ``width`` bits.

        Args:
            order: "low-first" (the first of two joined words becomes the low half) or "high-first".
            pad: a word of the new width that supplies missing bits of incomplete words; without it these raise
                ValueError.

        >>> m = Memory(width=8, depth=4)
        >>> m[:] = [0x11, 0x22, 0x33, 0x44]
        >>> [hex(word) for word in m.reshape(16)]
        ['0x2211', '0x4433']
        """
        return memory_of(_kvr.reshape(self._image, width, order, to_library(pad)))

    def split(
        self, *, lanes: Optional[int] = None, banks: Optional[int] = None, blocks: Optional[int] = None
    ) -> list[Memory]:
        """Splits the memory into several; ``join()`` is the inverse. Exactly one argument must be given.

        Args:
            lanes: bits of a lane; the lowest bits of all words become the first memory.
            banks: number of memories that get the words in turn.
            blocks: number of memories with consecutive words.
        """
        given = [(how, n) for how, n in (("lanes", lanes), ("banks", banks), ("blocks", blocks)) if n is not None]
        if len(given) != 1:
            raise TypeError("split() takes one of lanes, banks and blocks")
        return [memory_of(image) for image in _kvr.split(self._image, *given[0])]

    def sum(
        self,
        name: str = "crc32",
        *,
        ranges: Iterable[range] = (),
        endian: str = "little",
        unset: Optional[WordLike] = None,
    ) -> int:
        """Returns the checksum ``name``, one of ``checksums()``; "-" in the name may be omitted.

        Args:
            ranges: the addresses to include, in this order; if empty, all.
            endian: the byte order within a word.
            unset: the value of unset words; without it they are skipped.

        >>> kvr.from_bytes(b"123456789", width=8).sum("crc32") == 0xCBF43926
        True
        """
        pairs = []
        for each in ranges:
            if each.step != 1 or not each:
                raise ValueError(f"{each} is not a range of addresses")
            pairs.append((each[0], each[-1]))
        return _kvr.checksum(self._image, _checksum_name(name), pairs, endian, to_library(unset))

    def diff(self, other: Memory) -> list[Difference]:
        """Returns the different words in address order. An unset word differs from 0. Words of different widths
        are equal if their values are.

        >>> a, b = Memory(8, 4, fill=0), Memory(8, 4, fill=0)
        >>> b[1:3] = 9
        >>> a.diff(b)
        [Difference(first=1, last=2, left=0, right=9)]
        """
        return [
            Difference(first, last, from_library(left), from_library(right))
            for first, last, left, right in _kvr.differences(self._image, other._image)
        ]

    # ---- Object protocol ----

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Memory):
            return NotImplemented
        return self._image.equals(other._image)

    __hash__ = None  # type: ignore[assignment]

    def _description(self) -> str:
        return f"{self.depth} words of {self.width} bits from 0x{self.base:X}, {self.count_set()} set"

    def __repr__(self) -> str:
        return f"<kvr.Memory: {self._description()}>"

    def __reduce__(self) -> tuple[Any, ...]:
        return _restored, (self._image.state(), self._format, self._facts, self._diagnostics)


def memory_of(image: _kvr.Image) -> Memory:
    """Returns the memory for an image of the library."""
    made = Memory.__new__(Memory)
    made._become(image)
    return made


def read_memory(
    image: _kvr.Image, format: Optional[str], facts: dict[str, str], diagnostics: list[Diagnostic]
) -> Memory:
    """Returns the memory read from a file."""
    made = memory_of(image)
    made._format, made._facts, made._diagnostics = format, facts, diagnostics
    return made


def _restored(
    state: Any, format: Optional[str], facts: dict[str, str], diagnostics: list[Diagnostic]
) -> Memory:
    return read_memory(_kvr.Image.restored(state), format, facts, diagnostics)


def _moved(state: Any, base: int) -> Any:
    width, depth, old_base, pieces = state
    shift = base - old_base
    return width, depth, base, [(first + shift, last + shift, words) for first, last, words in pieces]


def from_bytes(
    data: Any, width: int, *, endian: str = "little", base: int = 0, pad: Optional[int] = None
) -> Memory:
    """Makes a memory of bytes, another buffer or an array: consecutive words in (width + 7) // 8 bytes each.

    Args:
        endian: the byte order within a word.
        base: the address of the first word.
        pad: the value of missing bytes of the last word; without it they raise ValueError.

    Raises OverflowError if a surplus high bit is not 0.

    >>> from_bytes(bytes([0x13, 0x05, 0x50, 0x00]), width=32, endian="little")[0] == 0x00500513
    True
    """
    return memory_of(_kvr.Image.from_bytes(memoryview(data).cast("B"), width, endian, base, pad))


def from_numpy(
    array: Any, width: Optional[int] = None, *, base: int = 0, is_set: Any = None, endian: str = "little"
) -> Memory:
    """Makes a memory of an array of words, shape (depth,), or of bytes, shape (depth, bytes per word).

    Args:
        width: word width in bits; by default the width of an element (1 for bool). An element that does not
            fit raises OverflowError; negative elements are two's complement.
        base: the address of the first word.
        is_set: an array of bool of shape (depth,), False for unset words. Masked elements of a masked array and
            None in an array of objects are also unset.
        endian: the byte order within a word, for an array of bytes.

    >>> from_numpy(np.array([1, 2, 300]), width=12).to_numpy()
    array([  1,   2, 300], dtype=uint16)
    """
    elements = np.asarray(array)
    if elements.size == 0:
        raise ValueError("the array is empty: a memory has at least one word")
    if elements.ndim == 2:
        made = _from_byte_rows(elements, width, base, endian)
    elif elements.ndim == 1:
        made = _from_numbers(elements, _width_of(array, width), base)
    else:
        raise ValueError(f"an array of shape {elements.shape}: expected (depth,) or (depth, bytes)")
    if isinstance(array, np.ma.MaskedArray):
        _unset(made, np.ma.getmaskarray(array))  # type: ignore[no-untyped-call]
    if is_set is not None:
        mask = np.asarray(is_set, dtype=bool)
        if mask.shape != (made.depth,):
            raise ValueError(f"is_set has the shape {mask.shape}: expected ({made.depth},)")
        _unset(made, ~mask)
    return made


def _width_of(array: Any, width: Optional[int]) -> int:
    dtype = getattr(array, "dtype", None)
    if width is not None:
        return width
    if dtype is None or dtype.kind not in "bui":
        raise TypeError("width is needed: the elements do not determine it")
    return 1 if dtype.kind == "b" else int(dtype.itemsize) * 8


def _from_byte_rows(rows: _Array, width: Optional[int], base: int, endian: str) -> Memory:
    if rows.dtype != np.uint8:
        raise TypeError(f"an array of {rows.dtype} of two dimensions: expected bytes, uint8")
    size = rows.shape[1]
    bits = size * 8 if width is None else width
    if (bits + 7) // 8 != size:
        raise ValueError(f"rows of {size} bytes: words of {bits} bits have {(bits + 7) // 8}")
    return from_bytes(np.ascontiguousarray(rows), bits, endian=endian, base=base)


def _from_numbers(numbers: _Array, width: int, base: int) -> Memory:
    if numbers.dtype.kind not in "buiO":
        raise TypeError(f"an array of {numbers.dtype}: words are integers (see kvr.Fixed for fractions)")
    if numbers.dtype.kind == "O" or width > _widest_array:
        return _from_objects(numbers.tolist(), width, base)
    if width < 1:
        raise ValueError("a word has at least 1 bit")
    require_fit(numbers, width)
    size = (width + 7) // 8
    cell = next(each for each in (1, 2, 4, 8) if size <= each)
    words = numbers.astype(f"<u{cell}", copy=False)
    if numbers.dtype.kind == "i" and width < 8 * cell:
        words = words & words.dtype.type((1 << width) - 1)
    raw = np.ascontiguousarray(words).view(np.uint8)
    if size < cell:
        raw = np.ascontiguousarray(raw.reshape(-1, cell)[:, :size])
    return from_bytes(raw, width, base=base)


def require_fit(numbers: _Array, width: int) -> None:
    """Raises OverflowError for the first integer of an array of shape (n,) that does not fit ``width`` bits."""
    if numbers.dtype.kind == "b":
        return
    limits = np.iinfo(numbers.dtype)
    low, high = -(1 << (width - 1)), (1 << width) - 1
    wrong = np.zeros(numbers.shape, dtype=bool)
    if limits.max > high:
        wrong |= numbers > high
    if limits.min < low:
        wrong |= numbers < low
    if wrong.any():
        index = int(np.argmax(wrong))
        raise OverflowError(
            f"value {numbers[index]} at index {index} does not fit: words of {width} bits hold {low} to {high}"
        )


def _from_objects(words: Sequence[Any], width: int, base: int) -> Memory:
    made = Memory(width, len(words), base=base)
    for address, word in enumerate(words, base):
        if word is not None:
            made._image.set(address, to_library(word))
    return made


def _array_of(values: Any) -> _Array:
    """Converts a sequence of words, which may include None and Word, to an array."""
    if hasattr(values, "dtype"):
        return values  # type: ignore[no-any-return]
    made = np.empty(len(values), dtype=object)
    made[:] = list(values)
    return made


def _unset(memory: Memory, where: npt.NDArray[np.bool_]) -> None:
    edges = np.flatnonzero(np.diff(np.pad(where.astype(np.int8), 1)))
    for first, end in zip(edges[::2].tolist(), edges[1::2].tolist()):
        memory._image.unset(memory.base + first, memory.base + end - 1)


def _unsigned(word: int, width: int) -> int:
    low, high = -(1 << (width - 1)), (1 << width) - 1
    if not low <= word <= high:
        raise OverflowError(f"value {word} does not fit: words of {width} bits hold {low} to {high}")
    return word & high


def _as_signed(numbers: _Array, width: int) -> _Array:
    bits = numbers.dtype.itemsize * 8
    signed = numbers.view(np.dtype(f"i{bits // 8}"))
    if width == bits:
        return signed
    signed = signed << (bits - width)  # a copy: the numbers may be a view of the memory
    signed >>= bits - width
    return signed


def join(parts: Sequence[Memory], how: str = "lanes") -> Memory:
    """Joins the parts of ``Memory.split()``. ``how`` is "lanes", "banks" or "blocks"."""
    return memory_of(_kvr.join([part._image for part in parts], how))


def merge(*memories: Memory, overlap: str = "refuse") -> Memory:
    """Makes one memory with the words of all, from the lowest to the highest address of any.

    Args:
        overlap: the rule for addresses set by several memories: "refuse" (ValueError), "same" (ValueError
            unless the words are equal), "first" or "last" (that memory's word is used).
    """
    image, refused = _kvr.merge([memory._image for memory in memories], overlap)
    if image is None:
        where = "" if refused is None else f": 0x{refused[0]:X} to 0x{refused[1]:X}"
        raise ValueError(f"several memories set the same addresses{where}")
    return memory_of(image)


def checksums() -> list[str]:
    """Returns the names of all checksums."""
    return _kvr.checksums()


def _checksum_name(name: str) -> str:
    wanted = name.replace("-", "").replace("_", "").lower()
    for known in _kvr.checksums():
        if known == name or known.replace("-", "") == wanted:
            return known
    return name
