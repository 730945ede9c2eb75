"""Operations on words that a file stores as bytes use at most twice the memory's bytes: memory_of_operations.py
KVRMEM"""

import os
import random
import subprocess
import sys
import tempfile

SIZE = 16 << 20
MOST = 2 * SIZE + (20 << 20)  # the share of a program with debug information
BYTES = ("--from", "binary", "--to", "binary")
WORDS = (*BYTES, "--width", "32", "--endian", "little")
RUNS = (
    (*BYTES, "--except", "0x1000..0x1FFF", "--fill", "7"),
    (*BYTES, "--mask", "0x3C"),
    (*BYTES, "--endian", "little", "--reshape", "32", "--order", "high-first"),
    (*WORDS, "--invert"),
    (*WORDS, "--swap-bytes"),
    (*WORDS, "--reshape", "8"),
)


def peak_of(command):
    """The peak memory of the process in bytes."""
    process = subprocess.Popen(command, stderr=subprocess.PIPE)
    messages = process.stderr.read()
    _, status, usage = os.wait4(process.pid, 0)
    if status != 0:
        sys.exit("%s failed: %s" % (" ".join(command), messages.decode()))
    return usage.ru_maxrss * 1024


def main():
    tool = os.path.abspath(sys.argv[1])
    faults = 0
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        with open("in.bin", "wb") as file:
            file.write(random.Random(1).randbytes(SIZE))
        for options in RUNS:
            peak = peak_of([tool, "convert", "--force", *options, "in.bin", "out.bin"])
            if peak > MOST:
                faults += 1
                print("%s: %d MiB, expected at most %d" % (" ".join(options), peak >> 20, MOST >> 20))
    sys.exit(1 if faults else 0)


main()
