"""Compares files of bytes with other programs that read and write them: readers_test.py IMAGE_FILES COUNT TOOL FORMAT

IMAGE_FILES (image_files.cpp) writes COUNT random memories in FORMAT; TOOL converts them to plain bytes, which must
equal the bytes of the memory. Then TOOL writes the same memories in FORMAT, and IMAGE_FILES must read the same memories.
"""

import os
import subprocess
import sys
import tempfile

UNSET = 0xA5  # the same as in image_files.cpp


def run(*command):
    """The output of the command."""
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=300, check=False)
    if done.returncode != 0:
        sys.exit("%s\nfailed:\n%s" % (" ".join(command), done.stdout.decode("latin-1")))
    return done.stdout.decode("latin-1")


class Memory:
    """One memory, from its line in the output of IMAGE_FILES write."""

    def __init__(self, line):
        number, first, *starts = line.split()
        self.number = int(number)
        self.ours = number + ".ours"
        self.theirs = number + ".theirs"
        self.made = number + ".made"
        self.first = int(first)
        self.parts = [("%s.%d.part" % (number, index), int(start)) for index, start in enumerate(starts)]
        with open(number + ".flat", "rb") as flat:
            self.flat = flat.read()


def contents_of(path):
    with open(path, "rb") as file:
        return file.read()


class SrecCat:
    names = {"srec": ["-motorola"], "hexbytes": ["-intel"], "titxt": ["-ti-txt"], "binary": ["-binary"]}

    def __init__(self, form):
        self.form = form

    def words(self, memory):
        if self.form == "readmemh":
            return ["-vmem", str((8, 16, 32)[memory.number % 3])]
        return self.names[self.form]

    def read(self, memory):
        end = str(len(memory.flat))
        run("srec_cat", memory.ours, self.words(memory)[0], "-offset", str(-memory.first), "-fill", str(UNSET), "0", end,
            "-o", memory.made, "-binary")
        return contents_of(memory.made)

    def write(self, memory):
        parts = []
        for name, start in memory.parts:
            parts += [name, "-binary", "-offset", str(start)]
        run("srec_cat", *parts, "-o", memory.theirs, *self.words(memory))


class Objcopy:
    names = {"srec": "srec", "hexbytes": "ihex", "binary": "binary"}

    def __init__(self, form):
        self.form = form

    def read(self, memory):
        run("objcopy", "-I", self.names[self.form], "-O", "binary", "--gap-fill", str(UNSET), memory.ours, memory.made)
        return contents_of(memory.made)

    def write(self, memory):
        parts = []
        name, start = memory.parts[0]
        for index, (part, address) in enumerate(memory.parts[1:]):
            section = ".part%d" % index
            parts += ["--add-section", "%s=%s" % (section, part), "--set-section-flags", section + "=alloc,load,contents",
                      "--change-section-address", "%s=%d" % (section, address)]
        elf = "elf64-x86-64"
        run("objcopy", "-I", "binary", "-O", elf, "--change-section-address", ".data=%d" % start, *parts, name, memory.made)
        run("objcopy", "-I", elf, "-O", self.names[self.form], memory.made, memory.theirs)


class ElfSections:
    """Objects of both sizes and byte orders, which objcopy makes from S-records, with a section for each stretch."""

    def __init__(self, _form):
        self.records = SrecCat("srec")

    def write(self, memory):
        self.records.write(memory)
        os.rename(memory.theirs, memory.made)
        target = ("elf32-little", "elf32-big", "elf64-little", "elf64-big")[memory.number % 4]
        run("objcopy", "-I", "srec", "-O", target, memory.made, memory.theirs)


class ElfSegments:
    """Programs that ld links, with a segment for each stretch, whose load addresses differ from the run addresses."""

    def __init__(self, _form):
        pass

    def write(self, memory):
        heads = "".join("p%d PT_LOAD;" % index for index in range(len(memory.parts)))
        body = "".join("s%d 0x%X : AT(0x%X) { *%s(.data) } :p%d\n" % (index, 0x1000000 * (index + 1), start, name, index)
                       for index, (name, start) in enumerate(memory.parts))
        with open("script", "w", encoding="ascii") as script:
            script.write("PHDRS { %s }\nSECTIONS { %s }\n" % (heads, body))
        emulation, target = (("elf_i386", "elf32-i386"), ("elf_x86_64", "elf64-x86-64"))[memory.number % 2]
        run("ld", "-m", emulation, "--oformat", target, "-N", "-e", "0", "-T", "script", "-o", memory.theirs, "-b", "binary",
            *(name for name, _ in memory.parts))


class IntelHexModule:
    def __init__(self, _form):
        import intelhex  # only this tool needs it
        self.file = intelhex.IntelHex

    def read(self, memory):
        found = self.file(memory.ours)
        found.padding = UNSET
        set_ones = sorted(found.addresses())
        meant = [address for name, start in memory.parts for address in range(start, start + os.path.getsize(name))]
        if set_ones != meant:
            return None
        return found.tobinstr(start=memory.first, size=len(memory.flat))

    def write(self, memory):
        made = self.file()
        for name, start in memory.parts:
            made.puts(start, contents_of(name))
        made.write_hex_file(memory.theirs)


TOOLS = {"srec_cat": SrecCat, "objcopy": Objcopy, "sections": ElfSections, "segments": ElfSegments,
         "intelhex": IntelHexModule}


def main():
    image_files, count, tool_name, form = os.path.abspath(sys.argv[1]), sys.argv[2], sys.argv[3], sys.argv[4]
    tool = TOOLS[tool_name](form)
    faults = []
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        memories = [Memory(line) for line in run(image_files, "write", form, ".", count).splitlines()]
        if len(memories) != int(count):
            sys.exit("%d memories instead of %s" % (len(memories), count))
        for memory in memories:
            if hasattr(tool, "read") and tool.read(memory) != memory.flat:
                faults.append("%d: %s reads other bytes than those of the memory" % (memory.number, tool_name))
            tool.write(memory)
        read = subprocess.run([image_files, "read", form, ".", count], stdout=subprocess.PIPE, timeout=300, check=False)
        os.chdir("/")
    faults += read.stdout.decode("latin-1").splitlines()
    if read.returncode != 0 and not faults:
        faults.append("image_files read: exit code %d" % read.returncode)
    print("\n".join(faults[:40]))
    sys.exit(1 if faults else 0)


main()
