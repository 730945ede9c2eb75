"""Compares memories that kvrmem writes as source code with the results of compilers and simulators:
written_source_test.py KVRMEM LANGUAGE COUNT

Writes COUNT random memories of 1 to 300 bits in LANGUAGE (c, python, verilog, vhdl, or readmem: lists of words that a
Verilog design reads). Each reader of the language must accept all of them without a warning and read the same words.
"""

import importlib
import os
import random
import re
import subprocess
import sys
import tempfile

MEMORIES_OF_A_PROGRAM = 500
EDGE_WIDTHS = [1, 7, 8, 9, 63, 64, 65, 128, 300]
MOST_WORDS = 8
MOST_ADDRESS_BITS = 3  # for MOST_WORDS


class Memory:
    """Words as bits, most significant first; "x" is don't care."""

    def __init__(self, index, has_dont_cares):
        source = random.Random(index)
        is_edge = index < 2 * len(EDGE_WIDTHS)
        self.name = "m%d" % index
        self.width = EDGE_WIDTHS[index // 2] if is_edge else source.randint(1, 300)
        depth = (1, 3)[index % 2] if is_edge else source.randint(1, MOST_WORDS)
        digits = "01x" if has_dont_cares and index % 5 == 4 else "01"
        self.words = ["".join(source.choices(digits, k=self.width)) for _ in range(depth)]

    def address_bits(self):
        return max(1, (len(self.words) - 1).bit_length())

    def numbers(self):
        return [int(word, 2) for word in self.words]

    def write(self, kvrmem, folder, extension, *options):
        """Writes the memory as a file with that extension and returns its name."""
        lines = "".join("%d : %s;\n" % each for each in enumerate(self.words))
        mif = "WIDTH=%d;\nDEPTH=%d;\nADDRESS_RADIX=DEC;\nDATA_RADIX=BIN;\nCONTENT BEGIN\n%sEND;\n"
        with open(os.path.join(folder, "memory.mif"), "w", encoding="ascii") as file:
            file.write(mif % (self.width, len(self.words), lines))
        require([kvrmem, "convert", *options, "memory.mif", self.name + extension], folder)
        return self.name + extension


def require(command, folder):
    """The standard output of @p command."""
    done = subprocess.run(command, cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=600, check=False)
    if done.returncode != 0:
        sys.exit("%s failed:\n%s%s" % (command[0], done.stdout.decode("latin-1")[-4000:],
                                       done.stderr.decode("latin-1")[:4000]))
    return done.stdout.decode("ascii")


def require_silent(command, folder):
    done = subprocess.run(command, cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=600, check=False)
    if done.returncode != 0 or done.stdout:
        sys.exit("%s:\n%s" % (" ".join(command[:3]), done.stdout.decode("latin-1")[:4000]))


def write_file(folder, name, text):
    with open(os.path.join(folder, name), "w", encoding="ascii") as file:
        file.write(text)


def hold(memory, found, reader):
    """True if the words are equal; don't-care bits may have any value."""
    same = len(found) == len(memory.words) and all(
        len(is_word) == len(word) and all(bit in ("x", is_bit) for bit, is_bit in zip(word, is_word))
        for word, is_word in zip(memory.words, found))
    if not same:
        sys.exit("%s, %s: %d bits\nis  %s\nnot %s" % (reader, memory.name, memory.width, found, memory.words))


def printed(text):
    """The printed words of each memory: lines "NAME BITS"."""
    found = {}
    for name, bits in re.findall(r"\b(m\d+) ([01xX-]+)$", text, re.MULTILINE):
        found.setdefault(name, []).append(bits.replace("-", "x").lower())
    return found


def test_c(kvrmem, folder, memories):
    program = ["#include <stdio.h>", "#include <string.h>"]
    program += ['#include "%s"' % each.write(kvrmem, folder, (".h", ".c")[index % 2])
                for index, each in enumerate(memories)]
    program += ["int main(void) {", "int i;"]
    for each in memories:
        limbs = (each.width + 63) // 64
        size = next(size for size in (1, 2, 4, 8) if each.width <= 8 * size or size == 8) * limbs
        words = "%s[i]" % each.name + ("" if limbs == 1 else "[%d]")
        program.append('printf("%s %%d %%d %%d\\n", (int)%s_WIDTH, (int)%s_DEPTH, (int)(sizeof %s[0] == %d));' %
                       (each.name, each.name.upper(), each.name.upper(), each.name, size))
        limb_values = [words if limbs == 1 else words % limb for limb in reversed(range(limbs))]
        arguments = ", ".join("(unsigned long long)" + value for value in limb_values)
        program.append('for (i = 0; i < %s_DEPTH; ++i) printf("%s\\n", %s);' %
                       (each.name.upper(), "%016llX" * limbs, arguments))
    program += ["return 0;", "}", ""]
    write_file(folder, "program.c", "\n".join(program))
    expected = []
    for each in memories:
        expected.append("%s %d %d 1" % (each.name, each.width, len(each.words)))
        expected += ["%0*X" % ((each.width + 63) // 64 * 16, number) for number in each.numbers()]
    warnings = ["-Wall", "-Wextra", "-Wpedantic", "-Werror", "-O0", "-o", "program"]
    for compiler in (["gcc", "-std=c99"], ["g++", "-std=c++11", "-x", "c++"]):
        require_silent(compiler + ["program.c"] + warnings, folder)
        found = require(["./program"], folder).split("\n")[:-1]
        if found != expected:
            sys.exit("%s: %s" % (compiler[0], [pair for pair in zip(expected, found) if pair[0] != pair[1]][:3]))


def test_python(kvrmem, folder, memories):
    sys.path.insert(0, folder)
    for each in memories:
        each.write(kvrmem, folder, ".py")
    importlib.invalidate_caches()
    for each in memories:
        module = importlib.import_module(each.name)
        expected = (each.width, len(each.words), tuple(each.numbers()))
        if (module.WIDTH, module.DEPTH, module.WORDS) != expected:
            sys.exit("%s is %s" % (each.name, module.WORDS))
        with open(module.__file__, encoding="ascii") as file:
            if any(len(line) > 80 and "," in line[:-2] for line in file):
                sys.exit(each.name + " has a long line with several words")


def verilog_bench(memories):
    lines = ["module bench;", "    reg clk = 0;", "    integer address = 0;"]
    for each in memories:
        lines.append("    wire [%d:0] d_%s; %s i_%s(.clk(clk), .address(address[%d:0]), .data(d_%s));" %
                     (each.width - 1, each.name, each.name, each.name, each.address_bits() - 1, each.name))
    lines += ["    initial begin", "        for (address = 0; address < %d; address = address + 1) begin" % MOST_WORDS,
              "            #1 clk = 1;", "            #1 clk = 0;"]
    lines += ['            if (address < %d) $display("%s %%b", d_%s);' % (len(each.words), each.name, each.name)
              for each in memories]
    return "\n".join(lines + ["        end", "        $finish;", "    end", "endmodule", ""])


def words_of_yosys(text):
    """The words of each module with one memory, from its initial contents."""
    found = {}
    for name, body in re.findall(r"^module \\(m\d+)$(.*?)^end$", text, re.MULTILINE | re.DOTALL):
        cells = re.findall(r"^  cell \$mem_v2 .*?^  end$", body, re.MULTILINE | re.DOTALL)
        if len(cells) == 1:
            value = {key: number for key, number in re.findall(r"parameter \\(WIDTH|SIZE|INIT) (.*)$", cells[0],
                                                               re.MULTILINE)}
            width, size = int(value["WIDTH"]), int(value["SIZE"])
            bits = value["INIT"].split("'")[1] if "'" in value["INIT"] else "{:032b}".format(int(value["INIT"]))
            bits = bits.rjust(width * size, "0")[-width * size:]
            found[name] = [bits[len(bits) - width * (i + 1):len(bits) - width * i] for i in range(size)]
    return found


def list_reader(memory, radix):
    """A design that reads a list of words. It has the ports of the designs that kvrmem writes."""
    return """module %s(input clk, input [%d:0] address, output reg [%d:0] data);
    reg [%d:0] words [0:%d];
    initial $readmem%s("%s.mem", words);
    always @(posedge clk) data <= words[address];
endmodule
""" % (memory.name, memory.address_bits() - 1, memory.width - 1, memory.width - 1, len(memory.words) - 1, radix, memory.name)


def test_readmem(kvrmem, folder, memories):
    files = []
    for index, each in enumerate(memories):
        # A hexadecimal digit can only be don't care as a whole.
        radix = "b" if index % 2 or any("x" in word for word in each.words) else "h"
        each.write(kvrmem, folder, ".mem", "--to", "readmem" + radix)
        files.append(each.name + ".v")
        write_file(folder, files[-1], list_reader(each, radix))
    hold_designs(folder, memories, files)


def test_verilog(kvrmem, folder, memories):
    hold_designs(folder, memories,
                 [each.write(kvrmem, folder, (".v", ".sv")[index % 2]) for index, each in enumerate(memories)])


def hold_designs(folder, memories, files):
    write_file(folder, "bench.v", verilog_bench(memories))
    require_silent(["iverilog", "-g2012", "-Wall", "-Wno-timescale", "-o", "icarus", "bench.v"] + files, folder)
    icarus = printed(require(["vvp", "-n", "icarus"], folder))
    # With each of them as the top module of its own design, each would need a process.
    require_silent(["verilator", "--lint-only", "-Wall", "-Wno-MULTITOP"] + files, folder)
    quickly = "OPT_FAST=-O0 OPT_GLOBAL=-O0 OPT_SLOW=-O0 VM_PARALLEL_BUILDS=0"
    require(["verilator", "--binary", "--timing", "--Mdir", "verilated", "-MAKEFLAGS", quickly, "-o", "bench",
             "bench.v"] + files, folder)
    verilator = printed(require(["./verilated/bench"], folder))
    require(["yosys", "-q", "-p", "read_verilog -sv %s; proc; memory_collect; write_rtlil yosys.il" % " ".join(files)],
            folder)
    with open(os.path.join(folder, "yosys.il"), encoding="ascii") as made:
        yosys = words_of_yosys(made.read())
    for each in memories:
        hold(each, icarus.get(each.name, []), "icarus")
        if icarus[each.name] != each.words:
            sys.exit("icarus, %s: %s instead of %s" % (each.name, icarus[each.name], each.words))
        hold(each, verilator.get(each.name, []), "verilator")
        hold(each, yosys.get(each.name, []), "yosys")


def vhdl_bench(memories):
    lines = ["library ieee;", "use ieee.std_logic_1164.all;", "use ieee.numeric_std.all;", "use std.textio.all;",
             "entity bench is", "end entity bench;", "architecture test of bench is", "    signal clk : std_logic := '0';",
             "    signal address : std_logic_vector(%d downto 0) := (others => '0');" % (MOST_ADDRESS_BITS - 1)]
    lines += ["    signal d_%s : std_logic_vector(%d downto 0);" % (each.name, each.width - 1) for each in memories]
    lines += ["    procedure show(name : string; data : std_logic_vector) is", "        variable text_line : line;",
              "        variable character_of_bit : string(1 to 3);", "    begin",
              "        write(text_line, name & \" \");", "        for i in data'range loop",
              "            character_of_bit := std_logic'image(data(i));",
              "            write(text_line, character_of_bit(2));", "        end loop;",
              "        writeline(output, text_line);", "    end procedure;", "begin"]
    lines += ["    i_%s : entity work.%s port map (clk, address(%d downto 0), d_%s);" %
              (each.name, each.name, each.address_bits() - 1, each.name) for each in memories]
    lines += ["    process", "    begin", "        for i in 0 to %d loop" % (MOST_WORDS - 1),
              "            address <= std_logic_vector(to_unsigned(i, %d));" % MOST_ADDRESS_BITS,
              "            wait for 1 ns; clk <= '1'; wait for 1 ns; clk <= '0'; wait for 1 ns;"]
    lines += ['            if i < %d then show("%s", d_%s); end if;' % (len(each.words), each.name, each.name)
              for each in memories]
    return "\n".join(lines + ["        end loop;", "        wait;", "    end process;", "end architecture test;", ""])


def test_vhdl(kvrmem, folder, memories):
    files = [each.write(kvrmem, folder, (".vhd", ".vhdl")[index % 2]) for index, each in enumerate(memories)]
    write_file(folder, "bench.vhd", vhdl_bench(memories))
    for standard in ("--std=93", "--std=08"):
        require_silent(["ghdl", "-a", standard] + files + ["bench.vhd"], folder)
        found = printed(require(["ghdl", "-r", standard, "bench"], folder))
        for each in memories:
            if found.get(each.name) != each.words:
                sys.exit("ghdl %s, %s: %s instead of %s" % (standard, each.name, found.get(each.name), each.words))


def main():
    kvrmem, language = os.path.abspath(sys.argv[1]), sys.argv[2]
    test, has_dont_cares = {"c": (test_c, False), "python": (test_python, False), "verilog": (test_verilog, True),
                            "vhdl": (test_vhdl, True), "readmem": (test_readmem, True)}[language]
    count = int(sys.argv[3])
    for first in range(0, count, MEMORIES_OF_A_PROGRAM):
        numbers = range(first, min(first + MEMORIES_OF_A_PROGRAM, count))
        with tempfile.TemporaryDirectory() as folder:
            test(kvrmem, folder, [Memory(index, has_dont_cares) for index in numbers])


main()
