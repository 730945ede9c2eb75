"""Fixed point, radixes and the classic interface."""

import pickle
from decimal import Decimal
from fractions import Fraction

import numpy as np
import pytest

import kvr
import kvr.classic
from kvr.classic import FileType, MemoryFile, Radix


def test_fixed_point_words():
    q15 = kvr.Fixed(1, 15)
    assert (q15.width, q15.integer_bits, q15.fraction_bits) == (16, 1, 15)
    assert (q15.lowest, q15.highest) == (-1, Fraction(32767, 32768))
    assert q15.encode(0.5) == q15.encode("0.5") == q15.encode(Decimal("0.5")) == 0x4000
    assert q15.encode(-0.5) == 0xC000
    assert q15.decode(0xC000) == q15.decode(-0x4000) == -0.5
    assert q15.encode(-1) == 0x8000
    with pytest.raises(OverflowError, match="value 1 is out of range"):
        q15.encode(1)
    assert q15.encode(1, saturate=True) == 0x7FFF and q15.encode("-9e9", saturate=True) == 0x8000
    assert q15 == kvr.Fixed(1, 15) == pickle.loads(pickle.dumps(q15)) and hash(q15) == hash(kvr.Fixed(1, 15))
    assert q15 != kvr.Fixed(2, 14) and q15 != 1 and repr(q15) == "Fixed(1, 15)"
    with pytest.raises(ValueError, match="not a valid decimal number"):
        q15.encode("half")
    with pytest.raises(ValueError):
        q15.encode(float("nan"))
    with pytest.raises(OverflowError):
        q15.decode(0x10000)
    for wrong in ((0, 8), (1, -1)):
        with pytest.raises(ValueError):
            kvr.Fixed(*wrong)


def test_rounding():
    q = kvr.Fixed(8, 0)
    for rounding, words in (("nearest", [1, 2, 3, -1, -2, -3]), ("even", [0, 2, 2, 0, -2, -2]),
                            ("down", [0, 1, 2, -1, -2, -3])):
        values = [0.5, 1.5, 2.5, -0.5, -1.5, -2.5]
        assert [q.encode(value, rounding=rounding) for value in values] == [word & 0xFF for word in words]
        array = q.encode(np.array(values), rounding=rounding)
        assert array.tolist() == [word & 0xFF for word in words] and array.dtype == np.uint8
        with pytest.raises(ValueError, match="rounding"):
            q.encode(np.array(values), rounding="up")
    assert q.encode(np.array([0.49999999999999994])).tolist() == [0]


def test_fixed_point_arrays():
    q = kvr.Fixed(1, 63)
    values = np.array([[0.5, -1.0], [-0.25, 0.1]])
    words = q.encode(values)
    assert words.shape == (2, 2) and words.dtype == np.uint64
    assert words.ravel().tolist() == [q.encode(value) for value in values.ravel().tolist()]
    assert np.allclose(q.decode(words), values)
    assert q.encode(np.array([5.0, -5.0, 1e308]), saturate=True).tolist() == [2**63 - 1, 2**63, 2**63 - 1]
    with pytest.raises(OverflowError, match="value 1.0"):
        q.encode(np.array([0.0, 1.0]))
    with pytest.raises(ValueError, match="infinite"):
        q.encode(np.array([np.nan]))
    q7 = kvr.Fixed(1, 7)
    assert q7.decode(np.array([[0x40, -0x40], [0x80, 0xFF]])).tolist() == [[0.5, -0.5], [-1.0, -1 / 128]]
    assert q7.decode(np.array([], "u2")).tolist() == []
    for wrong in (0x100, -0x81):
        text = f"value {wrong} at index 3 does not fit: words of 8 bits hold -128 to 255"
        with pytest.raises(OverflowError, match=text):
            q7.decode(np.array([[0, 0], [0, wrong]]))
    wide = kvr.Fixed(10, 90)
    assert wide.encode(np.array([-0.5])).tolist() == [2**100 - 2**89]
    assert wide.decode(wide.encode(np.array([-0.5, 3.0]))).tolist() == [-0.5, 3.0]


def test_radixes():
    assert kvr.convert_radix("FFB", "hex", "dec", width=12) == "-5"
    assert kvr.convert_radix("-5", "dec", "hex", width=12) == "FFB"
    assert kvr.convert_radix("FX", "hex", "bin", width=8) == "1111XXXX"
    with pytest.raises(OverflowError, match="value 1FF needs 9 bits: the limit is 8"):
        kvr.convert_radix("1FF", "hex", "dec", width=8)
    for text, source, target in (("G", "hex", "dec"), ("", "hex", "dec"), ("FX", "hex", "dec"), ("1", "roman", "hex")):
        with pytest.raises(ValueError):
            kvr.convert_radix(text, source, target, width=8)


def test_the_classic_interface(tmp_path):
    assert kvr.classic.radix_conversion("0C", Radix.HEX, Radix.UNS, 8) == (True, "21")
    assert kvr.classic.radix_conversion("-5", Radix.DEC, Radix.BIN) == (True, "1010")
    assert kvr.classic.radix_conversion("1", Radix.NONE, Radix.BIN)[0] is False
    path = tmp_path / "table.mif"
    m = kvr.Memory(8, 4, fill=0)
    m[0] = 0x2A
    m.write(path, data_radix="hex")
    file = MemoryFile()
    assert file.get_file_type() == FileType.UNSET
    file.set_file_type(FileType.MIF)
    file.set_file_name(str(path))
    assert file.read_file() and file.get_number_of_words() == 4 and file.get_word_size() == 8
    assert file.get_data_word(0, Radix.HEX) == "2A"
    assert file.get_data_word(4, Radix.HEX) == "" and len(file.error_messages()) == 1
