#!/usr/bin/env python3
"""The effect of Tab on a command line of the tool in a real shell: completions_test.py SHELL

$KVRMEM is the tool. Exit code 77 means that there are no pseudo-terminals.
"""

import functools
import os
import pty
import re
import subprocess
import sys
import tempfile
import unittest

import interactive_shell

NO_TERMINAL = 77
READ_AND_WRITTEN = [
    "mif", "hex", "rif", "readmemh", "readmemb", "coe", "hexbytes", "srec", "binary", "csv", "logisim", "titxt",
    "memheader",
]
WRITTEN = [*READ_AND_WRITTEN, "c", "python", "verilog", "vhdl"]


@functools.cache
def tool(*words):
    return subprocess.run([os.environ["KVRMEM"], *words], check=True, capture_output=True, text=True).stdout


def commands():
    section = re.search(r"^Commands\n((?:  .*\n)+)", tool("--help"), re.MULTILINE).group(1)
    return [line.split()[0] for line in section.splitlines()]


def read_formats():
    optional = [name for name in ["elf"] if re.search(f"^{name} ", tool("formats"), re.MULTILINE)]
    return [*READ_AND_WRITTEN, *optional]


def options_in_help(command):
    section = tool(command, "--help").split("\nOptions\n")[1]
    return set(re.findall(r"^  (?:-[a-zA-Z], )?(--[a-z0-9-]+)", section, re.MULTILINE))


class Completions:
    """All tests of a class share one shell; each begins with an empty line."""

    shell_type = None
    value_mark = " "  # the text after the name of an option with a value
    end_of_whole_words = ""  # the text that Tab adds to a complete candidate

    @classmethod
    def setUpClass(cls):
        cls.home = tempfile.TemporaryDirectory()
        cls.box = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.home.cleanup)
        cls.addClassCleanup(cls.box.cleanup)
        for folder in ["convert", "coe", "bash"]:
            os.mkdir(os.path.join(cls.box.name, folder))
        for file in ["a b.mif", "sine.mif", "dump", "3=4"]:
            with open(os.path.join(cls.box.name, file), "w", encoding="ascii"):
                pass
        cls.shell = cls.shell_type(cls.home.name, cls.box.name)
        cls.addClassCleanup(cls.shell.close)

    def assert_completed(self, text, line):
        self.assertEqual(self.shell.completed(text), line)

    def assert_nothing(self, text):
        self.assertEqual(self.shell.offered(text), set())
        self.assert_completed(text, text)

    def assert_offered(self, text, candidates):
        self.assertEqual(self.shell.offered(text), set(candidates))

    # The first word.

    def test_first_word_is_a_command(self):
        self.assertGreater(len(commands()), 10)
        self.assert_offered("kvrmem ", [*commands(), "help"])
        self.assert_completed("kvrmem rad", "kvrmem radix ")

    def test_first_word_is_no_file(self):
        self.assert_nothing("kvrmem sin")

    def test_folder_with_the_name_of_a_command_is_no_folder_there(self):
        self.assert_completed("kvrmem conv", "kvrmem convert ")
        self.assert_completed("kvrmem du", "kvrmem dump ")

    def test_options_without_a_command(self):
        self.assert_offered("kvrmem --", ["--help", "--version", "--generate"])
        self.assert_completed("kvrmem --v", "kvrmem --version ")
        self.assert_nothing("kvrmem --version ")

    def test_commands_are_shown(self):
        shown = self.shell.shown("kvrmem ")
        for command in commands():
            self.assertIn(command, shown)
        self.assertNotIn("sine.mif", shown)

    def test_after_other_commands_and_variables(self):
        self.assert_completed("true; kvrmem rad", "true; kvrmem radix ")
        self.assert_completed("true | kvrmem dump --rad", f"true | kvrmem dump --radix{self.value_mark}")
        self.assert_completed("X=1 kvrmem rad", "X=1 kvrmem radix ")
        self.assert_completed("X=1 kvrmem radix --to fi", "X=1 kvrmem radix --to fixed:")

    # Words with their own list.

    def test_topics_of_help(self):
        self.assert_offered("kvrmem help ", commands() + ["numbers"])
        self.assert_completed("kvrmem help num", "kvrmem help numbers ")
        self.assert_completed("kvrmem help conv", "kvrmem help convert ")
        self.assert_nothing("kvrmem help sin")
        self.assert_nothing("kvrmem help radix ")

    def test_kinds_that_are_generated(self):
        self.assert_offered("kvrmem --generate ", ["man", "bash", "zsh", "fish"])
        self.assert_completed("kvrmem --generate b", "kvrmem --generate bash ")
        self.assert_nothing("kvrmem --generate bash ")

    # Options.

    def test_options_of_each_command_are_those_of_its_help(self):
        for command in commands():
            with self.subTest(command):
                offered = {option.rstrip("=") for option in self.shell.offered(f"kvrmem {command} --")}
                self.assertGreaterEqual(len(offered), 3)
                self.assertEqual(offered, options_in_help(command))

    def test_option_of_another_command_is_not_offered(self):
        self.assert_completed("kvrmem check --fi", "kvrmem check --fix ")
        self.assert_nothing("kvrmem info --fi")

    def test_options_follow_operands(self):
        self.assert_completed("kvrmem check sine.mif --fi", "kvrmem check sine.mif --fix ")

    def test_operand_with_the_name_of_a_command_brings_no_options(self):
        self.assert_nothing("kvrmem info dump --rad")
        self.assert_completed("kvrmem check dump convert --fi", "kvrmem check dump convert --fix ")

    def test_words_after_the_cursor_do_not_matter(self):
        left = "\x02"  # Ctrl-B
        line = self.shell.completed("kvrmem radix --to h -5" + 3 * left)
        self.assertEqual(line.split(), ["kvrmem", "radix", "--to", "hex", "-5"])

    # Values of options.

    def test_values_in_the_next_word(self):
        self.assert_offered("kvrmem convert --from ", read_formats())
        self.assert_offered("kvrmem convert --to ", WRITTEN)
        self.assert_completed("kvrmem convert --to mi", "kvrmem convert --to mif ")
        self.assert_nothing("kvrmem convert --to q")

    def test_values_in_the_same_word(self):
        self.assert_offered("kvrmem convert --to=", WRITTEN)
        self.assert_completed("kvrmem convert --to=mi", "kvrmem convert --to=mif ")
        self.assert_nothing("kvrmem convert --to=q")

    def test_values_are_shown(self):
        for text in ["kvrmem radix --to ", "kvrmem radix --to="]:
            with self.subTest(text):
                shown = self.shell.shown(text)
                for value in ["oct", "dec", "uns", "fixed:"]:
                    self.assertIn(value, [word.split("=")[-1] for word in shown])
                self.assertNotIn("sine.mif", shown)

    def test_folder_with_the_name_of_a_value_is_no_folder_there(self):
        self.assert_completed("kvrmem convert --to co", "kvrmem convert --to coe ")
        self.assert_completed("kvrmem convert --to=co", "kvrmem convert --to=coe ")

    def test_values_of_one_name_depend_on_the_command(self):
        self.assert_offered("kvrmem radix --to ", ["bin", "oct", "dec", "uns", "hex", "fixed:"])
        self.assert_offered("kvrmem radix --to=", ["bin", "oct", "dec", "uns", "hex", "fixed:"])

    def test_value_that_goes_on_is_not_ended_by_a_blank(self):
        self.assert_completed("kvrmem radix --to f", "kvrmem radix --to fixed:")
        self.assert_completed("kvrmem radix --to=f", "kvrmem radix --to=fixed:")
        self.assert_nothing("kvrmem radix --to fixed:1")
        self.assert_nothing("kvrmem radix --to=fixed:1")

    def test_value_that_goes_on_stays_as_it_is(self):
        self.assert_completed("kvrmem radix --to fixed:", "kvrmem radix --to fixed:" + self.end_of_whole_words)
        self.assert_completed("kvrmem radix --to=fixed:", "kvrmem radix --to=fixed:" + self.end_of_whole_words)

    def test_words_after_a_value_with_a_colon(self):
        self.assert_completed("kvrmem dump --radix fixed:1.7 si", "kvrmem dump --radix fixed:1.7 sine.mif ")
        self.assert_completed("kvrmem dump --radix=fixed:1.7 si", "kvrmem dump --radix=fixed:1.7 sine.mif ")
        self.assert_nothing("kvrmem dump --radix=fixed:1.7 --manif")
        self.assert_completed("kvrmem diff --radix=fixed:1.7 --js", "kvrmem diff --radix=fixed:1.7 --json ")

    def test_values_of_short_options(self):
        self.assert_offered("kvrmem dump -r ", ["bin", "oct", "dec", "uns", "hex", "fixed:"])
        self.assert_completed("kvrmem dump -r u", "kvrmem dump -r uns ")

    def test_value_that_no_list_can_hold(self):
        self.assert_nothing("kvrmem dump --width ")
        self.assert_nothing("kvrmem dump --width=")
        self.assert_nothing("kvrmem dump --width s")

    # Files.

    def test_file_as_the_value_of_an_option(self):
        self.assert_completed("kvrmem plot --output si", "kvrmem plot --output sine.mif ")
        self.assert_completed("kvrmem plot --output=si", "kvrmem plot --output=sine.mif ")
        self.assert_completed("kvrmem plot -o si", "kvrmem plot -o sine.mif ")

    def test_file_operands(self):
        for command in [
            "check", "convert", "diff", "dump", "fill", "format", "get", "info", "join", "merge", "new", "plot", "set", "split",
            "sum"
        ]:
            with self.subTest(command):
                self.assert_completed(f"kvrmem {command} si", f"kvrmem {command} sine.mif ")

    def test_every_command_has_its_operand_tested(self):
        self.assertEqual(
            set(commands()),
            {
                "check", "convert", "diff", "dump", "fill", "format", "formats", "get", "info", "join", "lsp", "merge", "new",
                "plot", "radix", "set", "split", "sum"
            },
        )

    def test_files_stop_where_the_command_takes_no_more(self):
        self.assert_completed("kvrmem convert sine.mif si", "kvrmem convert sine.mif sine.mif ")
        self.assert_nothing("kvrmem convert sine.mif sine.mif si")
        self.assert_nothing("kvrmem get sine.mif ")
        self.assert_nothing("kvrmem set sine.mif s")
        self.assert_nothing("kvrmem radix ")
        self.assert_nothing("kvrmem radix s")
        self.assert_nothing("kvrmem formats s")
        self.assert_nothing("kvrmem lsp s")
        self.assert_completed("kvrmem check sine.mif dump sine.mif du", "kvrmem check sine.mif dump sine.mif dump ")

    def test_options_are_no_operands(self):
        self.assert_completed("kvrmem get --radix hex -w 8 si", "kvrmem get --radix hex -w 8 sine.mif ")
        self.assert_completed("kvrmem get --radix=hex si", "kvrmem get --radix=hex sine.mif ")
        self.assert_nothing("kvrmem get --radix hex -w 8 sine.mif s")

    def test_negative_number_is_an_operand(self):
        self.assert_completed("kvrmem radix -5 --lib", "kvrmem radix -5 --library ")
        self.assert_completed("kvrmem radix --to hex -5 --lib", "kvrmem radix --to hex -5 --library ")

    def test_hyphen_is_an_operand(self):
        self.assert_completed("kvrmem convert - si", "kvrmem convert - sine.mif ")
        self.assert_nothing("kvrmem convert - sine.mif si")

    def test_words_after_two_hyphens_are_operands(self):
        self.assert_nothing("kvrmem check -- --fi")
        self.assert_completed("kvrmem check -- si", "kvrmem check -- sine.mif ")

    def test_names_of_files_are_quoted(self):
        self.assert_completed("kvrmem dump a", r"kvrmem dump a\ b.mif ")
        self.assert_completed(r"kvrmem dump a\ b", r"kvrmem dump a\ b.mif ")
        self.assert_nothing(r"kvrmem get a\ b.mif s")

    def test_folder_among_files(self):
        self.assert_completed("kvrmem dump conv", "kvrmem dump convert/")

    def test_file_after_a_redirection(self):
        self.assert_completed("kvrmem dump sine.mif >si", "kvrmem dump sine.mif >sine.mif ")
        self.assert_completed("kvrmem dump sine.mif > si", "kvrmem dump sine.mif > sine.mif ")


class Descriptions:
    """For shells that show descriptions next to the candidates."""

    def test_descriptions_are_those_of_the_help(self):
        description = re.search(r"--radix RADIX +(.*)", tool("dump", "--help")).group(1)
        self.assertIn(":", description)
        self.assertIn(description, " ".join(self.shell.shown("kvrmem dump --ra")))
        summary = re.search(r"^  info +(.*)", tool("--help"), re.MULTILINE).group(1)
        self.assertIn(":", summary)
        self.assertIn(summary, " ".join(self.shell.shown("kvrmem ")))


class Bash(Completions, unittest.TestCase):
    shell_type = interactive_shell.Bash


class BashWithoutBreaks(Completions, unittest.TestCase):
    shell_type = interactive_shell.BashWithoutBreaks


class Zsh(Descriptions, Completions, unittest.TestCase):
    shell_type = interactive_shell.Zsh
    value_mark = "="


class ZshThatSources(Descriptions, Completions, unittest.TestCase):
    shell_type = interactive_shell.ZshThatSources
    value_mark = "="


class Fish(Descriptions, Completions, unittest.TestCase):
    shell_type = interactive_shell.Fish
    end_of_whole_words = " "


SUITES = {"bash": [Bash, BashWithoutBreaks], "zsh": [Zsh, ZshThatSources], "fish": [Fish]}


def main():
    try:
        for end in pty.openpty():
            os.close(end)
    except OSError as error:
        print(f"there are no pseudo-terminals: {error}")
        return NO_TERMINAL
    load = unittest.defaultTestLoader.loadTestsFromTestCase
    suite = unittest.TestSuite(load(case) for case in SUITES[sys.argv[1]])
    return 0 if unittest.TextTestRunner().run(suite).wasSuccessful() else 1


if __name__ == "__main__":
    sys.exit(main())
