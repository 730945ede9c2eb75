"""Objects and memory stay the same over many calls."""

import gc
import io
import os
import sys

import numpy as np
import pytest

import kvr

_text = b"WIDTH=8;\nDEPTH=4;\nADDRESS_RADIX=HEX;\nDATA_RADIX=HEX;\nCONTENT BEGIN\n0 : 10 20 30;\nEND;\n"
_broken = b"WIDTH=8;DEPTH=4;CONTENT BEGIN\n0 : 1FF;\nEND;\n"


def resident_bytes():
    with open("/proc/self/statm") as file:
        return int(file.read().split()[1]) * 4096


def work(times):
    for _ in range(times):
        m = kvr.parse(_text, format="mif")
        m[3] = m[0]
        m.to_numpy()


@pytest.mark.skipif("LD_PRELOAD" in os.environ, reason="a sanitizer keeps memory that was freed")
def test_a_hundred_thousand_reads_leave_nothing():
    work(2000)
    gc.collect()
    blocks, resident = sys.getallocatedblocks(), resident_bytes()
    work(100_000)
    gc.collect()
    assert sys.getallocatedblocks() - blocks < 500
    assert resident_bytes() - resident < 8 << 20


def everything():
    m = kvr.from_bytes(bytes(range(64)), width=16)
    array = m.to_numpy()
    assert m[1:3].to_numpy()[0] == array[1]
    m.plot(), m.sum(), m.reshape(8), m.split(banks=2), kvr.merge(m, m, overlap="same"), m.diff(m.copy())
    m.write(io.BytesIO(), format="mif")
    m.copy().__reduce__()
    for wrong in (
        lambda: kvr.parse(_broken, format="mif"),
        lambda: m[99],
        lambda: m.__setitem__(0, 1 << 70),
        lambda: kvr.from_bytes(b"", 8),
        lambda: kvr.read("/nonexistent/file.mif"),
        lambda: kvr.from_numpy(np.array([1 << 40]), width=8),
    ):
        try:
            wrong()
        except (kvr.FileError, IndexError, OverflowError, ValueError, OSError):
            continue
        raise AssertionError("nothing was raised")


def blocks_left_by(times):
    gc.collect()
    before = sys.getallocatedblocks()
    for _ in range(times):
        everything()
    gc.collect()
    return sys.getallocatedblocks() - before


def test_every_kind_of_call_leaves_no_object():
    """Caches of Python grow in the first rounds; an object that is lost is lost in every round."""
    assert min(blocks_left_by(times=200) for _ in range(4)) < 100


def test_counts_of_references():
    m = kvr.from_bytes(bytes(1000), width=8)
    before = sys.getrefcount(m._image)
    arrays = [m.to_numpy() for _ in range(100)]
    after = sys.getrefcount(m._image)
    assert after == before, "a view keeps the bytes, not the memory"
    word = 10**30
    count = sys.getrefcount(word)
    wide = kvr.Memory(128, 100, fill=word)
    assert list(wide) == [word] * 100
    del arrays
    after = sys.getrefcount(word)
    assert after == count
