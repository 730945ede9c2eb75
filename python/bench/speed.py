"""Speed of the Python package, in pairs that are timed in turns: the median of the ratios of processor times counts.

Usage: speed.py KVRMEM [ROUNDS]

KVRMEM is the tool of the same version. Rows against intelhex need that module, and are left out without it.
"""

import os
import resource
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path
from typing import Callable

import numpy as np

import kvr

Work = Callable[[], object]
_words = 1 << 20
_image_bytes = 16 << 20


def processor_seconds() -> float:
    """Of this process and of those that it has waited for, of the user and the system together."""
    children = resource.getrusage(resource.RUSAGE_CHILDREN)
    return time.process_time() + children.ru_utime + children.ru_stime


def seconds(work: Work) -> float:
    before = processor_seconds()
    work()
    return processor_seconds() - before


def compare(title: str, ours: Work, other: Work, rounds: int) -> None:
    """Prints the median of ours/other, and the median times."""
    pairs = [(seconds(ours), seconds(other)) for _ in range(rounds)]
    ratio = statistics.median(one / two for one, two in pairs)
    mine, theirs = (statistics.median(column) * 1e3 for column in zip(*pairs))
    print(f"{title:55} {ratio:8.3f}   {mine:9.2f} ms {theirs:9.2f} ms", flush=True)


def of_files(folder: Path, tool: str, rounds: int) -> None:
    rng = np.random.default_rng(1)
    for width in (8, 32):
        path = folder / f"words{width}.mif"
        words = rng.integers(0, 1 << width, _words, dtype=np.uint64)
        kvr.from_numpy(words, width=width).write(path)
        compare(f"read MIF of 1 Mi words of {width} bits / kvrmem get of one",
                lambda: kvr.read(path),
                lambda: subprocess.run([tool, "get", path, "0"], check=True, stdout=subprocess.DEVNULL), rounds)


def of_arrays(folder: Path, rounds: int) -> None:
    rng = np.random.default_rng(2)
    for width, kind in ((8, "u1"), (12, "u2"), (32, "u4"), (64, "u8")):
        words = rng.integers(0, 1 << width, _words, dtype=np.uint64)
        path = folder / "array.mif"
        kvr.from_numpy(words, width=width).write(path)
        m = kvr.read(path)
        array = words.astype(kind)
        compare(f"to_numpy of 1 Mi words of {width} bits / copy of the array", m.to_numpy, array.copy, rounds)
        compare(f"from_numpy of them / copy of the array", lambda: kvr.from_numpy(array, width=width), array.copy,
                rounds)
    data = rng.bytes(_image_bytes)
    m = kvr.from_bytes(data, width=32)
    compare("to_numpy of a view of 16 MiB / bytearray of 1 KiB", m.to_numpy, lambda: bytearray(1024), rounds)


def of_bytes(folder: Path) -> None:
    try:
        from intelhex import IntelHex  # type: ignore[import]
    except ImportError:
        print("intelhex is not installed")
        return
    data = np.random.default_rng(3).bytes(_image_bytes)
    path = folder / "image.ihx"
    kvr.from_bytes(data, width=8).write(path, format="hexbytes")
    compare("read Intel HEX of 16 MiB to bytes / intelhex",
            lambda: kvr.read(path, format="hexbytes", width=8).to_bytes(),
            lambda: IntelHex(str(path)).tobinstr(), 1)
    memory = kvr.from_bytes(data, width=8)
    other = IntelHex()
    other.frombytes(data)
    compare("write Intel HEX of 16 MiB / intelhex",
            lambda: memory.write(folder / "a.ihx", format="hexbytes"),
            lambda: other.write_hex_file(str(folder / "b.ihx")), 1)


def of_imports(rounds: int) -> None:
    def imports(names: str) -> Work:
        return lambda: subprocess.run([sys.executable, "-c", f"import {names}"], check=True)

    compare("import kvr / import numpy", imports("kvr"), imports("numpy"), rounds)


def main(tool: str, rounds: str = "11") -> None:
    shared = "/dev/shm" if os.path.isdir("/dev/shm") else None
    print(f"{'work':55} {'ratio':>8}   {'kvr':>12} {'other':>12}")
    with tempfile.TemporaryDirectory(dir=shared) as folder:
        of_files(Path(folder), tool, int(rounds))
        of_arrays(Path(folder), int(rounds))
        of_imports(int(rounds))
        of_bytes(Path(folder))


if __name__ == "__main__":
    main(*sys.argv[1:])
