"""Compares operations of kvrmem with programs that do the same: operations_test.py KVRMEM COUNT TOOL

Uses COUNT random memories for each operation. Both programs write S-records or plain bytes; their bytes are compared.
"""

import os
import random
import subprocess
import sys
import tempfile

KVRMEM = os.path.abspath(sys.argv[1])


def run(*command):
    """The output of the command."""
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=300, check=False)
    if done.returncode != 0:
        sys.exit("%s\nfailed:\n%s" % (" ".join(command), done.stdout.decode("latin-1")))
    return done.stdout.decode("latin-1")


def contents_of(path):
    with open(path, "rb") as file:
        return file.read()


def store(path, contents):
    with open(path, "wb") as file:
        file.write(contents)


def bytes_of_records(path):
    """The bytes of S-records with their addresses."""
    found = {}
    for line in contents_of(path).decode("ascii").splitlines():
        digits = {"S1": 4, "S2": 6, "S3": 8}.get(line[:2])
        if digits:
            address = int(line[4:4 + digits], 16)
            for offset, byte in enumerate(bytes.fromhex(line[4 + digits:-2])):
                found[address + offset] = byte
    return found


def convert(*words):
    run(KVRMEM, "convert", "--force", "--from", "srec", "--to", "srec", *words, "in.srec", "ours.srec")
    return bytes_of_records("ours.srec")


def srec_cat(*words):
    run("srec_cat", "in.srec", *words, "-o", "theirs.srec", "-disable=header")
    return bytes_of_records("theirs.srec")


class Memory:
    """Some stretches of random bytes. Their addresses and lengths are multiples of UNIT. in.srec contains them;
    flat.bin contains the bytes from the first to the last one, with 0 in the gaps."""

    def __init__(self, rng, unit):
        self.bytes = {}
        next_address = unit * rng.randrange(8)
        for _ in range(rng.randrange(1, 4)):
            length = unit * rng.randrange(1, 12)
            for address in range(next_address, next_address + length):
                self.bytes[address] = rng.randrange(256)
            next_address += length + unit * rng.randrange(6)
        self.first, self.end = min(self.bytes), max(self.bytes) + 1
        flat = bytes(self.bytes.get(address, 0) for address in range(self.first, self.end))
        store("flat.bin", flat)
        store("full.bin", bytes(self.bytes.get(address, 0) for address in range(self.end)))
        parts = ["full.bin", "-binary"]
        edges = sorted(address for address in self.bytes if address - 1 not in self.bytes)
        run("srec_cat", *parts, "-crop", *self.ranges(edges), "-o", "in.srec", "-disable=header")

    def ranges(self, begins):
        words = []
        for begin in begins:
            end = begin
            while end in self.bytes:
                end += 1
            words += [str(begin), str(end)]
        return words

    def cut(self, rng):
        """A range with some of the bytes, but not with all."""
        first = rng.choice(sorted(self.bytes))
        last = rng.randrange(first, self.end)
        return first, last


def little(value, size):
    return value.to_bytes(size, "little")


def check_crop(rng):
    memory = Memory(rng, 1)
    first, last = memory.cut(rng)
    return convert("--only", "%d..%d" % (first, last)), srec_cat("-crop", str(first), str(last + 1))


def check_exclude(rng):
    memory = Memory(rng, 1)
    first, last = memory.cut(rng)
    if all(first <= address <= last for address in memory.bytes):
        last = first - 1 if len(memory.bytes) == 1 else memory.end - 2
    if last < first:
        return None, None
    return convert("--except", "%d..%d" % (first, last)), srec_cat("-exclude", str(first), str(last + 1))


def check_offset(rng):
    memory = Memory(rng, 1)
    target = rng.randrange(0x10000)
    return convert("--move-to", str(target)), srec_cat("-offset", str(target - memory.first))


def check_fill(rng):
    memory = Memory(rng, 1)
    value = rng.randrange(256)
    return convert("--fill", str(value)), srec_cat("-fill", str(value), "0", str(memory.end))


def check_swap(rng):
    size = rng.choice((2, 4, 8))
    Memory(rng, size)
    ours = convert("--width", str(8 * size), "--endian", "little", "--swap-bytes")
    return ours, srec_cat("-byte-swap", str(size))


def check_split(rng):
    count = rng.choice((2, 3, 4))
    memory = Memory(rng, count)
    run(KVRMEM, "split", "--force", "--from", "srec", "--to", "srec", "--depth", str(memory.end), "--every", str(count),
        "in.srec", "bank%d.srec")
    ours, theirs = [], []
    for bank in range(count):
        run("srec_cat", "in.srec", "-split", str(count), str(bank), "-o", "theirs.srec", "-disable=header")
        ours.append(bytes_of_records("bank%d.srec" % bank))
        theirs.append(bytes_of_records("theirs.srec"))
    run(KVRMEM, "join", "--force", "--from", "srec", "--to", "srec", "--every", str(count), "--depth", str(memory.end // count),
        "-o", "ours.srec", *("bank%d.srec" % bank for bank in range(count)))
    words = []
    for bank in range(count):
        words += ["bank%d.srec" % bank, "-unsplit", str(count), str(bank)]
    run("srec_cat", *words, "-o", "theirs.srec", "-disable=header")
    ours.append(bytes_of_records("ours.srec"))
    theirs.append(bytes_of_records("theirs.srec"))
    return ours, theirs


def check_sums(rng):
    memory = Memory(rng, 1)
    end = memory.end
    found = {}
    ours = {}
    for name, filter_name, size in (("crc-32", "-crc32-l-e", 4), ("balance-8", "-checksum-neg-l-e", 1),
                                    ("balance-16", "-checksum-neg-l-e", 2)):
        words = [filter_name, str(end)] + ([str(size), "1"] if size != 4 else [])
        theirs = srec_cat(*words)
        found[name] = bytes(theirs[end + index] for index in range(size))
        answer = run(KVRMEM, "sum", "--from", "srec", "--algorithm", name, "in.srec").splitlines()
        ours[name] = little(int(next(line for line in answer if line.startswith(name)).split()[1], 16), size)
    return ours, found


def objcopy(*words):
    run("objcopy", "-I", "binary", "-O", "binary", *words, "flat.bin", "theirs.bin")
    return contents_of("theirs.bin")


def convert_flat(*words):
    run(KVRMEM, "convert", "--force", "--from", "binary", "--to", "binary", *words, "flat.bin", "ours.bin")
    return contents_of("ours.bin")


def check_interleave(rng):
    breadth = rng.choice((2, 4))
    Memory(rng, breadth)
    run(KVRMEM, "split", "--force", "--from", "binary", "--to", "binary", "--every", str(breadth), "flat.bin", "bank%d.bin")
    ours = [contents_of("bank%d.bin" % bank) for bank in range(breadth)]
    return ours, [objcopy("--interleave=%d" % breadth, "--byte=%d" % bank) for bank in range(breadth)]


def check_lanes(rng):
    """The bytes of words are lanes of 8 bits."""
    breadth = rng.choice((2, 4))
    Memory(rng, breadth)
    run(KVRMEM, "split", "--force", "--from", "binary", "--to", "binary", "--width", str(8 * breadth), "--endian", "little",
        "--bits", "8", "flat.bin", "lane%d.bin")
    ours = [contents_of("lane%d.bin" % lane) for lane in range(breadth)]
    return ours, [objcopy("--interleave=%d" % breadth, "--byte=%d" % lane) for lane in range(breadth)]


def check_reverse(rng):
    size = rng.choice((2, 4, 8))
    Memory(rng, size)
    return convert_flat("--width", str(8 * size), "--endian", "big", "--swap-bytes"), objcopy("--reverse-bytes=%d" % size)


def check_pad(rng):
    """Fills gaps and the space up to an address."""
    memory = Memory(rng, 1)
    value, end = rng.randrange(256), memory.end + rng.randrange(40)
    run("objcopy", "-I", "srec", "-O", "binary", "--gap-fill", str(value), "--pad-to", str(end), "in.srec", "theirs.bin")
    run(KVRMEM, "convert", "--force", "--from", "srec", "--to", "binary", "--move-to", "0", "--depth", str(end - memory.first),
        "--fill", str(value), "in.srec", "ours.bin")
    return contents_of("ours.bin"), contents_of("theirs.bin")


CHECKS = {
    "srec_cat": (check_crop, check_exclude, check_offset, check_fill, check_swap, check_split, check_sums),
    "objcopy": (check_interleave, check_lanes, check_reverse, check_pad),
}


def main():
    faults = 0
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        for check in CHECKS[sys.argv[3]]:
            for number in range(int(sys.argv[2])):
                ours, theirs = check(random.Random("%s %d" % (check.__name__, number)))
                if ours != theirs:
                    faults += 1
                    print("%s %d: %s\n  the other program: %s" % (check.__name__, number, ours, theirs))
    sys.exit(1 if faults else 0)


main()
