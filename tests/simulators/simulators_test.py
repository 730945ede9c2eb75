"""Compares the diagnostics of "kvrmem check --for" for simulators with the programs: simulators_test.py KVRMEM RULES

For each file of the corpus, a program must be reported exactly if it refuses the file or reads words that differ from
the meaning of the file. Each rule of the source RULES must be the only one for its program in at least one file.
"""

import json
import os
import re
import subprocess
import sys
import tempfile

import corpus

DEPTH = 16
UNSET = "10100101"  # the same as in memory_reader.v


def run(command, folder):
    done = subprocess.run(command, cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=300, check=False)
    return done.returncode, done.stdout.decode("latin-1")


def require(command, folder):
    code, text = run(command, folder)
    if code != 0:
        sys.exit("%s failed:\n%s" % (command[0], text))
    return text


def shown(bits):
    """The hexadecimal digits of a word."""
    digits = {"xxxx": "X", "zzzz": "Z"}
    nibbles = [bits[i:i + 4] for i in range(0, len(bits), 4)]
    return "".join(digits.get(nibble) or "%X" % int(nibble, 2) for nibble in nibbles)


def printed_words(text):
    found = re.findall(r"^(\d+) ([01xz]+)$", text, re.MULTILINE)
    return {int(address): shown(bits) for address, bits in found if bits != UNSET}


class Icarus:
    name = "icarus"

    def prepare(self, folder):
        source = os.path.join(os.path.dirname(os.path.abspath(__file__)), "memory_reader.v")
        require(["iverilog", "-g2012", "-o", "icarus", source], folder)

    def read(self, folder, is_binary):
        code, text = run(["vvp", "-n", "icarus", "+file=words"] + ["+bin"] * is_binary, folder)
        return None if code != 0 or "ERROR" in text else printed_words(text)


class Verilator:
    name = "verilator"

    def prepare(self, folder):
        source = os.path.join(os.path.dirname(os.path.abspath(__file__)), "memory_reader.v")
        require(["verilator", "--binary", "--timing", "-Wno-fatal", "-Wno-WIDTH", "--Mdir", "verilated", "-O0", "-CFLAGS",
                 "-O0", "-o", "verilator", source], folder)

    def read(self, folder, is_binary):
        code, text = run(["./verilated/verilator", "+file=words"] + ["+bin"] * is_binary, folder)
        return None if code != 0 else printed_words(text)


class Yosys:
    name = "yosys"

    def prepare(self, folder):
        for radix in "hb":
            with open(os.path.join(folder, "yosys_%s.v" % radix), "w", encoding="ascii") as design:
                design.write("""
module design(input [3:0] address, output [7:0] word);
    reg [7:0] words [0:15];
    initial $readmem%s("words", words);
    assign word = words[address];
endmodule
""" % radix)

    def read(self, folder, is_binary):
        script = "read_verilog yosys_%s.v; hierarchy -top design; proc; memory_collect; write_rtlil yosys.il"
        code, _ = run(["yosys", "-q", "-p", script % "hb"[is_binary]], folder)
        if code != 0:
            return None
        with open(os.path.join(folder, "yosys.il"), encoding="latin-1") as made:
            found = re.search(r"parameter \\INIT (?:\d+'([01xz]+)|)", made.read())
        bits = (found.group(1) or "").rjust(8 * DEPTH, "x")
        words = [bits[len(bits) - 8 * (i + 1):len(bits) - 8 * i] for i in range(DEPTH)]
        return {i: shown(word) for i, word in enumerate(words) if word != "x" * 8}


def meant_words(text):
    pairs = (pair.split(":") for pair in text.split())
    return {int(address, 16): word for address, word in pairs}


def differs(meant, found, tool):
    if found is None:
        return True
    if tool == "yosys":  # unset words are x in it
        meant = {address: word for address, word in meant.items() if word not in ("XX", "ZZ")}
    return meant != found


def messages_of(kvrmem, folder, options, tool):
    _, text = run([kvrmem, "check", "--json", "--depth", "16", "--for", tool] + options + ["words"], folder)
    found = json.loads(text)["files"][0]["diagnostics"]
    return [each["message"] for each in found if each["consumer"] == tool]


class Checker:
    def __init__(self, kvrmem, folder):
        self.kvrmem = kvrmem
        self.folder = folder
        self.faults = []
        self.alone = set()  # (tool, message) pairs that were the only ones in a file

    def check(self, title, options, contents, meant, tool):
        with open(os.path.join(self.folder, "words"), "wb") as words:
            words.write(contents)
        messages = messages_of(self.kvrmem, self.folder, options, tool.name)
        found = tool.read(self.folder, "readmemb" in options)
        other = differs(meant_words(meant), found, tool.name)
        says = "%s, %s: " % (title, tool.name)
        if other != bool(messages):
            self.faults.append("%sread as %s, and kvrmem says %s" % (says, found, messages or "nothing"))
        elif other and found is None and not any("refuse" in message for message in messages):
            self.faults.append("%srefused, and kvrmem says %s" % (says, messages))
        elif other and found is not None and all(" refuses " in m and ", or " not in m for m in messages):
            self.faults.append("%sread as %s, and kvrmem says %s" % (says, found, messages))
        if len(messages) == 1:
            self.alone.add((tool.name, messages[0]))


def rules_of(source):
    """The (tool, message) pairs of the rules."""
    with open(source, encoding="utf-8") as file:
        text = file.read()
    titles = dict(re.findall(r'measured_reader (\w+) = \{"\w+", "([^"]+)"\}', text))
    rules = re.findall(r'\{&(\w+),\s*[\w:]+,\s*"([^"]*)"\}', text)
    return [(tool, "%s %s" % (titles[tool], effect)) for tool, effect in rules]


def main():
    kvrmem, source = os.path.abspath(sys.argv[1]), sys.argv[2]
    parts = [("readmemh", ["--width", "8"], corpus.HEX), ("readmemb", ["--width", "8"], corpus.BIN),
             ("readmemh", ["--width", "16", "--address-unit", "byte"], corpus.BYTES)]
    with tempfile.TemporaryDirectory() as folder:
        checker = Checker(kvrmem, folder)
        for tool in (Icarus(), Verilator(), Yosys()):
            tool.prepare(folder)
            for form, options, cases in parts:
                for name, (contents, meant) in cases.items():
                    checker.check("%s: %s" % (form, name), ["--from", form] + options, contents, meant, tool)
    rules = rules_of(source)
    if not rules:
        sys.exit("no rules in " + source)
    for tool, message in rules:
        if (tool, message) not in checker.alone:
            checker.faults.append("no file shows alone: " + message)
    for fault in checker.faults:
        print(fault)
    sys.exit(1 if checker.faults else 0)


main()
