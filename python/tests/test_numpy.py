"""Arrays and bytes."""

import numpy as np
import pytest

import kvr


@pytest.mark.parametrize("width, dtype", [(1, "u1"), (8, "u1"), (9, "u2"), (12, "u2"), (16, "u2"), (17, "u4"),
    (24, "u4"), (32, "u4"), (33, "u8"), (64, "u8")])
@pytest.mark.parametrize("from_texts", [False, True])
def test_arrays_by_width(width, dtype, from_texts):
    top = 2**width - 1
    words = [0, top, top >> 1, 1] * 600
    m = kvr.from_numpy(np.array(words, dtype="u8"), width=width)
    if from_texts:
        m[0] = words[0]
    a = m.to_numpy()
    assert a.dtype == np.dtype(dtype) and a.tolist() == words
    signed = m.to_numpy(signed=True)
    assert signed.dtype == np.dtype("i" + dtype[1])
    assert signed.tolist() == [word - 2**width if word >> (width - 1) else word for word in words]
    assert kvr.from_numpy(signed, width=width) == m
    assert np.array_equal(np.asarray(m), a) and np.asarray(m, dtype=float).dtype == float


def test_wide_words_are_objects_or_bytes():
    m = kvr.Memory(70, 3)
    m[:] = [2**69, 5, None]
    a = m.to_numpy()
    assert a.dtype == object and a.tolist() == [2**69, 5, 0]
    assert m.to_numpy(signed=True, unset=-1).tolist() == [-(2**69), 5, -1]
    rows = m.to_numpy(as_bytes=True, endian="big")
    assert rows.shape == (3, 9) and rows.dtype == np.uint8
    assert rows[0].tolist() == [0x20, 0, 0, 0, 0, 0, 0, 0, 0]
    assert kvr.from_numpy(rows[:2], width=70, endian="big") == m[0:2]
    assert list(kvr.from_numpy(a, width=70)) == [2**69, 5, 0]
    assert list(kvr.from_numpy(np.array([-1]), width=70)) == [2**70 - 1]


def test_unset_words():
    m = kvr.Memory(8, 4)
    m[1:3] = [7, 8]
    assert m.to_numpy().tolist() == [0, 7, 8, 0]
    assert m.to_numpy(unset=-1).tolist() == [255, 7, 8, 255]
    assert m.is_set.tolist() == [False, True, True, False] and m.is_set.dtype == bool
    masked = np.ma.array([1, 2, 3], mask=[False, True, False])
    assert list(kvr.from_numpy(masked, width=8)) == [1, None, 3]
    assert list(kvr.from_numpy([1, None, kvr.Word("XXXXXXXX")], width=8)) == [1, None, kvr.Word("X" * 8)]
    assert list(kvr.from_numpy(np.array([1, 2, 3], "u1"), is_set=[True, True, False])) == [1, 2, None]
    with pytest.raises(ValueError, match="shape"):
        kvr.from_numpy(np.array([1, 2, 3], "u1"), is_set=[True])
    with pytest.raises(OverflowError):
        m.to_numpy(unset=256)


def test_a_view_stays_as_it_is():
    data = bytes(range(64))
    m = kvr.from_bytes(data, width=32, endian="little")
    a = m.to_numpy()
    assert a.base is not None and not a.flags.writeable and not a.flags.owndata
    assert np.shares_memory(a, m.to_numpy())
    assert np.shares_memory(a[2:4], m[2:4].to_numpy()), "so is that of a slice"
    m[0] = 1
    assert a[0] == 0x03020100 and m.to_numpy()[0] == 1
    assert not np.shares_memory(a, m.to_numpy())
    del m
    assert a.tobytes() == data
    big = kvr.from_bytes(data, width=32, endian="big").to_numpy()
    assert big[0] == 0x00010203 and big.flags.owndata and big.dtype == np.uint32


def test_words_with_surplus_bits_are_a_view_too():
    m = kvr.from_bytes(b"\x23\x01\xff\x0f", width=12, endian="little")
    a = m.to_numpy()
    assert np.shares_memory(a, m.to_numpy()) and not a.flags.writeable
    assert list(a) == [0x123, 0xFFF] and a.dtype == np.uint16
    assert list(m.to_numpy(signed=True)) == [0x123, -1] and list(a) == [0x123, 0xFFF]


def test_from_numpy_refuses_what_is_no_memory():
    with pytest.raises(OverflowError, match="value 4096 at index 1 does not fit: words of 12 bits hold -2048 to 4095"):
        kvr.from_numpy(np.array([0, 4096]), width=12)
    with pytest.raises(OverflowError, match="value -2049"):
        kvr.from_numpy(np.array([0, -2049]), width=12)
    with pytest.raises(TypeError, match="Fixed"):
        kvr.from_numpy(np.array([0.5]), width=12)
    with pytest.raises(TypeError, match="width"):
        kvr.from_numpy([1, 2])
    with pytest.raises(ValueError, match="empty"):
        kvr.from_numpy(np.array([], "u1"))
    with pytest.raises(ValueError, match="shape"):
        kvr.from_numpy(np.zeros((1, 1, 1), "u1"))
    with pytest.raises(ValueError, match="rows of 2 bytes"):
        kvr.from_numpy(np.zeros((3, 2), "u1"), width=8)
    with pytest.raises(TypeError):
        kvr.from_numpy(np.zeros((3, 2), "u2"), width=16)
    with pytest.raises(ValueError):
        kvr.from_numpy(np.array([0]), width=0)


def test_widths_of_arrays():
    assert kvr.from_numpy(np.array([1, 2], "i2")).width == 16
    assert kvr.from_numpy(np.array([True, False])).width == 1
    assert list(kvr.from_numpy(np.array([1, 2], ">u4"))) == [1, 2]
    assert list(kvr.from_numpy(np.arange(10, dtype="u1")[::3])) == [0, 3, 6, 9]
    assert kvr.from_numpy(np.array([1], "u1"), base=9).base == 9


def test_bytes():
    m = kvr.from_bytes(b"\x01\x02\x03", width=16, endian="big", pad=0, base=4)
    assert list(m.items()) == [(4, 0x0102), (5, 0x0300)]
    assert m.to_bytes(endian="little") == b"\x02\x01\x00\x03"
    m[4] = None
    with pytest.raises(ValueError, match="0x4 is not set"):
        m.to_bytes()
    assert m.to_bytes(fill=-1) == b"\xff\xff\x00\x03"
    with pytest.raises(ValueError, match="endian"):
        m.to_bytes(endian="middle")
    with pytest.raises(ValueError):
        kvr.from_bytes(b"", width=8)
    with pytest.raises(OverflowError, match="address 0x1 "):
        kvr.from_bytes(b"\x01\x00\xff\xff", width=12, endian="little")
    with pytest.raises(BufferError):
        kvr._kvr.Image.from_bytes(memoryview(b"abcd")[::2], 8, "little", 0, None)
    with pytest.raises(TypeError):
        kvr.from_bytes(memoryview(b"abcd")[::2], width=8)
    assert list(kvr.from_bytes(bytearray(b"ab"), 8)) == list(kvr.from_bytes(np.frombuffer(b"ab", "u1"), 8)) == [97, 98]
