"""Words, slices and what every object of Python does."""

import copy
import pickle
import sys

import numpy as np
import pytest

import kvr


def test_a_new_memory_has_no_words():
    m = kvr.Memory(width=12, depth=4, base=0x10)
    assert (m.width, m.depth, m.base, m.format, len(m)) == (12, 4, 0x10, None, 4)
    assert list(m) == [None] * 4
    assert list(m.items()) == [(0x10, None), (0x11, None), (0x12, None), (0x13, None)]
    assert m.addresses == range(0x10, 0x14)
    assert m.count_set() == 0


@pytest.mark.parametrize("width, value, held", [(8, 255, 255), (8, -1, 255), (8, -128, 128), (1, 1, 1), (1, -1, 1),
    (64, 2**64 - 1, 2**64 - 1), (64, -(2**63), 2**63), (63, 2**63 - 1, 2**63 - 1), (65, 2**64, 2**64),
    (65, -1, 2**65 - 1), (100, -(2**99), 2**99), (100, 2**100 - 1, 2**100 - 1)])
def test_words_are_exact(width, value, held):
    m = kvr.Memory(width, 1)
    m[0] = value
    assert m[0] == held and type(m[0]) is int


@pytest.mark.parametrize("width, value, low, high", [(8, 256, -128, 255), (8, -129, -128, 255),
    (63, 2**63, -(2**62), 2**63 - 1), (64, 2**64, -(2**63), 2**64 - 1), (64, -(2**63) - 1, -(2**63), 2**64 - 1),
    (100, 2**100, -(2**99), 2**100 - 1), (100, -(2**99) - 1, -(2**99), 2**100 - 1),
    (65, -(2**70), -(2**64), 2**65 - 1)])
def test_what_does_not_fit_names_value_and_limits(width, value, low, high):
    m = kvr.Memory(width, 1)
    with pytest.raises(OverflowError) as error:
        m[0] = value
    assert str(error.value) == f"value {value} does not fit: words of {width} bits hold {low} to {high}"
    assert m[0] is None


def test_addresses_are_those_of_the_memory():
    m = kvr.Memory(8, 4, base=2**64 - 4)
    m[2**64 - 1] = 7
    assert m[-1] == 7 and m[2**64 - 1] == 7
    m[-4] = 1
    assert m[2**64 - 4] == 1


@pytest.mark.parametrize("index", [0xF, 0x14, -5, 2**70, -(2**70), 2**64 - 1])
def test_other_addresses_are_refused(index):
    m = kvr.Memory(8, 4, base=0x10)
    with pytest.raises(IndexError, match=f"index {index}: the memory has the addresses 16 to 19"):
        m[index]
    with pytest.raises(IndexError):
        m[index] = 1


def test_indices_are_integers():
    m = kvr.Memory(8, 4)
    m[np.int64(2)] = np.uint8(9)
    assert m[np.uint16(2)] == 9
    with pytest.raises(TypeError):
        m["0"]
    with pytest.raises(TypeError):
        m[0] = 1.5


def test_a_slice_is_a_memory_at_its_addresses():
    m = kvr.Memory(8, 6, base=0x10)
    m[0x10:0x16] = range(6)
    part = m[0x12:0x14]
    assert (part.base, list(part)) == (0x12, [2, 3])
    assert list(m[-2:]) == [4, 5] and m[-2:].base == 0x14
    assert list(m[:0x11]) == [0] and list(m[:]) == list(range(6))
    assert list(m[0:100]) == list(range(6)), "slices end at the ends of the memory"
    part[0x12] = 99
    assert m[0x12] == 2, "it is a copy"
    with pytest.raises(ValueError, match="no address"):
        m[0x14:0x12]
    with pytest.raises(ValueError, match="no step"):
        m[::2]


def test_a_slice_takes_words_arrays_and_memories():
    m = kvr.Memory(8, 8)
    m[0:2] = 5
    m[2:4] = [1, None]
    m[4:6] = np.array([-1, 2])
    m[6:8] = m[4:6]
    assert list(m) == [5, 5, 1, None, 255, 2, 255, 2]
    m[0:4] = None
    del m[4]
    assert list(m) == [None] * 5 + [2, 255, 2]
    m[0:3] = (word for word in (7, kvr.Word("0000XXXX"), 9))
    assert list(m[0:3]) == [7, kvr.Word("0000XXXX"), 9]
    m[3:3] = []
    with pytest.raises(ValueError, match="3 words for 2 addresses"):
        m[0:2] = [1, 2, 3]
    with pytest.raises(OverflowError, match="value 256 at index 1"):
        m[0:2] = np.array([1, 256])
    assert list(m[0:3]) == [7, kvr.Word("0000XXXX"), 9]


def test_a_slice_that_is_refused_keeps_its_words():
    m = kvr.Memory(8, 4, fill=5)
    with pytest.raises(ValueError, match="words of 16 bits: those of the memory have 8"):
        m[0:2] = kvr.Memory(16, 2)
    with pytest.raises(OverflowError):
        m[0:2] = [None, 256]
    assert list(m) == [5, 5, 5, 5]


def test_a_slice_takes_the_words_of_its_own_memory():
    m = kvr.from_bytes(bytes(range(8)), width=8)
    m[4:8] = m[0:4]
    m[:] = m
    assert list(m) == [0, 1, 2, 3] * 2
    m[0] = None
    m._image.replace(m._image)
    m[4:8] = m[0:4]
    assert list(m) == [None, 1, 2, 3] * 2


def test_dont_care_words_are_words():
    m = kvr.Memory(8, 2)
    m[0] = kvr.Word.parse("FX", "hex", width=8)
    word = m[0]
    assert word == kvr.Word("1111XXXX") and hash(word) == hash(kvr.Word("1111xxxx"))
    assert (word.bits, word.width, word.dont_care, word.value) == ("1111XXXX", 8, 0x0F, 0xF0)
    with pytest.raises(ValueError, match="don't-care"):
        int(word)
    with pytest.raises(ValueError, match="4 bits"):
        m[1] = kvr.Word("01XX")
    with pytest.raises(ValueError, match="0x0 has don't-care bits"):
        m.to_numpy()
    assert int(kvr.Word("0101")) == 5 and repr(kvr.Word("0x")) == "Word('0X')"
    assert word != "1111XXXX"
    with pytest.raises(ValueError):
        kvr.Word("012")
    with pytest.raises(ValueError):
        kvr.Word("")


def test_runs_of_deep_memories_cost_nothing():
    m = kvr.Memory(32, 2**32, fill=7)
    m[5] = None
    assert list(m.runs()) == [(0, 4, 7), (5, 5, None), (6, 2**32 - 1, 7)]
    assert m.count_set() == 2**32 - 1
    assert sys.getsizeof(pickle.dumps(m)) < 500
    assert pickle.loads(pickle.dumps(m)) == m
    assert len(m[2**31 : 2**32]) == 2**31


def test_iteration_goes_both_ways():
    m = kvr.Memory(16, 5000, base=3)
    m[:] = range(5000)
    assert list(m) == list(range(5000))
    assert list(reversed(m)) == list(range(4999, -1, -1))
    assert 4999 in m and 5000 not in m


def test_equality_hash_copy_and_pickle():
    m = kvr.Memory(70, 300, base=2**40)
    m[2**40 : 2**40 + 3] = [2**69, -1, 0]
    m[2**40 + 100 : 2**40 + 300] = 12
    m[-1] = kvr.Word("X" * 70)
    for other in (m.copy(), copy.copy(m), copy.deepcopy(m), pickle.loads(pickle.dumps(m))):
        assert other == m and other is not m
        other[2**40] = 1
        assert other != m and m[2**40] == 2**69
    assert m != "m" and m != kvr.Memory(70, 300)
    assert m == m
    with pytest.raises(TypeError, match="unhashable"):
        hash(m)
    word = kvr.Word("0X1")
    assert pickle.loads(pickle.dumps(word)) == word


def test_bad_memories_are_refused():
    for arguments in ((0, 1), (2**20 + 1, 1), (8, 0), (8, 2**32 + 1), (8, 2, 2**64 - 1)):
        with pytest.raises(ValueError):
            kvr.Memory(*arguments[:2], base=arguments[2] if len(arguments) > 2 else 0)
    m = kvr.Memory(8, 2)
    m.resize(3)
    assert list(m) == [None] * 3
    with pytest.raises(ValueError):
        m.resize(0)


def test_reshape_split_join_merge():
    m = kvr.Memory(8, 4)
    m[:] = [0x11, 0x22, 0x33, 0x44]
    assert list(m.reshape(16)) == [0x2211, 0x4433]
    assert list(m.reshape(16, order="high-first")) == [0x1122, 0x3344]
    assert list(m.reshape(24, pad=-1)) == [0x332211, 0xFFFF44]
    with pytest.raises(ValueError):
        m.reshape(24)
    with pytest.raises(ValueError, match="order is one of"):
        m.reshape(16, order="low")
    assert [list(part) for part in m.split(lanes=4)] == [[1, 2, 3, 4], [1, 2, 3, 4]]
    assert [list(part) for part in m.split(banks=2)] == [[0x11, 0x33], [0x22, 0x44]]
    assert [list(part) for part in m.split(blocks=2)] == [[0x11, 0x22], [0x33, 0x44]]
    for how, number in (("lanes", 4), ("banks", 2), ("blocks", 2)):
        assert kvr.join(m.split(**{how: number}), how) == m
    with pytest.raises(TypeError, match="one of"):
        m.split()
    with pytest.raises(TypeError, match="one of"):
        m.split(lanes=1, banks=2)
    low, high = kvr.Memory(8, 2, fill=1), kvr.Memory(8, 2, base=1, fill=2)
    with pytest.raises(ValueError, match="0x1 to 0x1"):
        kvr.merge(low, high)
    assert list(kvr.merge(low, high, overlap="first")) == [1, 1, 2]
    assert list(kvr.merge(low, high, overlap="last")) == [1, 2, 2]
    with pytest.raises(ValueError, match="0x1"):
        kvr.merge(low, high, overlap="same")
    assert kvr.merge(m, m, overlap="same") == m


def test_checksums():
    m = kvr.from_bytes(b"123456789", width=8)
    assert m.sum() == m.sum("crc-32") == m.sum("CRC32") == 0xCBF43926
    assert m.sum("sum-8") == sum(b"123456789") % 256
    assert m.sum("crc32", ranges=[range(0, 4), range(4, 9)]) == 0xCBF43926
    with pytest.raises(ValueError, match="kvr.checksums"):
        m.sum("crc-33")
    with pytest.raises(ValueError, match="not a range"):
        m.sum(ranges=[range(0, 4, 2)])
    names = [name.replace("-", "") for name in kvr.checksums()]
    assert len(set(names)) == len(names), "names without '-' mean one checksum each"


def test_differences():
    a, b = kvr.Memory(8, 4, fill=0), kvr.Memory(8, 6, fill=0)
    b[1:3] = 9
    assert a.diff(b) == [
        kvr.Difference(1, 2, 0, 9),
        kvr.Difference(4, 5, None, 0),
    ]
    assert a.diff(a) == [] and a.diff(a.copy()) == []


def test_pictures():
    m = kvr.Memory(8, 16, fill=3)
    svg = m.plot(name="<boot>")
    assert svg.startswith("<svg") or svg.startswith("<?xml")
    assert "&lt;boot" in svg and svg._repr_svg_() == svg
    assert "16 words of 8 bits" in m._repr_html_() and "<svg" in m._repr_html_()
    assert m.plot(start=4, stop=8) != svg
    with pytest.raises(ValueError):
        m.plot(start=4, stop=4)


def test_pictures_of_differences():
    a, b = kvr.Memory(8, 16, fill=3), kvr.Memory(8, 8, base=4, fill=3)
    b[5] = 4
    svg = a.plot(b, name="old", other_name="new")
    assert "1 word changed, 8 only in A, 0 only in B" in svg and "A: old  B: new" in svg
    assert "0 words changed, 0 only in A, 0 only in B" in a.plot(a)
    assert "1 word changed, 0 only in A" in a.plot(b, start=5, stop=7)
    with pytest.raises(ValueError):
        a.plot(b, start=4, stop=4)
    with pytest.raises(ValueError):
        a.plot(b, stop=17)
    with pytest.raises(ValueError):
        b.plot(kvr.Memory(8, 4, base=10), start=2)


def test_text_of_a_memory():
    assert repr(kvr.Memory(8, 4, base=16)) == "<kvr.Memory: 4 words of 8 bits from 0x10, 0 set>"
