"""The files for editors agree with the tool about the formats: extensions, languages by contents, and keywords.

The keywords are compared with the tables in the sources of kvrimage, in both directions.
"""

import json
import os
import pathlib
import re
import subprocess
import unittest

SOURCE = pathlib.Path(os.environ["KVR_SOURCE"])
FORMATS = SOURCE / "kvrimage/formats"
VIM = SOURCE / "editors/vim"
VSCODE = SOURCE / "editors/vscode"
EMACS = (SOURCE / "editors/emacs/kvrmem.el").read_text()

# The titles of the formats of each language.
TITLES = {
    "kvr-coe": ["COE"],
    "kvr-hex": ["Intel HEX", "Intel HEX of bytes"],
    "kvr-logisim": ["Logisim"],
    "kvr-memheader": ["MEM with header"],
    "kvr-mif": ["MIF"],
    "kvr-readmem": ["$readmemh", "$readmemb"],
    "kvr-rif": ["RIF"],
    "kvr-srec": ["S-records"],
    "kvr-titxt": ["TI-TXT"],
}
# Formats that are not texts of words, or that have their own languages in editors.
OTHER_TITLES = ["raw binary", "ELF", "CSV", "C", "Python", "Verilog", "VHDL"]
# Extensions whose files may contain anything.
OPEN_EXTENSIONS = ["dat", "txt"]


def answer(*arguments):
    """The JSON output of the tool, with any exit code."""
    done = subprocess.run([os.environ["KVRMEM"], *arguments], capture_output=True, text=True, timeout=60, check=False)
    return json.loads(done.stdout)


def words_of_table(path, table):
    """The first text in each row of a table or in a list of texts of a source."""
    text = (FORMATS / path).read_text()
    body = re.search(r"\b%s = (?:[^{;]*\(?\{+)(.*?)\}\)?;" % table, text, re.S).group(1)
    rows = re.findall(r'\{\s*(?:\w+::\w+,\s*)?"([^"]+)"', "{" + body)
    return rows if len(rows) > 1 else re.findall(r'"([^"]+)"', body)


def constant(path, name):
    return re.search(r'\b%s = "([^"]+)"' % name, (FORMATS / path).read_text()).group(1)


def vim_syntax(language):
    return (VIM / "syntax" / (language + ".vim")).read_text()


def grammar_patterns(language):
    """All regular expressions of a grammar."""
    text = (VSCODE / "syntaxes" / (language + ".tmLanguage.json")).read_text()
    found = []
    keys = ("match", "begin", "end")
    json.loads(text, object_hook=lambda rule: found.extend(rule[key] for key in keys if key in rule))
    return found


def plain(text):
    """Regular expressions with the parentheses and bars of Vim and Emacs replaced by those of Python."""
    return re.sub(r"\\+%?([(|)])", r"\1", text)


def alternatives(text):
    """The alternatives of the groups in regular expressions that consist only of words."""
    return [sorted(group.split("|")) for group in re.findall(r"\((?:\?:)?([A-Za-z_|]+)\)", plain(text))]


class Keywords(unittest.TestCase):
    def stand_in(self, words, language):
        """Expects a group in each syntax with exactly these words."""
        self.assertIn(sorted(words), alternatives(vim_syntax(language)), "vim")
        self.assertIn(sorted(words), alternatives(EMACS), "emacs")
        self.assertIn(sorted(words), alternatives(" ".join(grammar_patterns(language))), "vscode")

    def test_radixes_of_mif(self):
        radixes = words_of_table("mif/mif_numbers.cpp", "mif_radix_names")
        self.assertGreater(len(radixes), 5)
        keywords = re.search(r"(?m)^syntax keyword kvrMifRadix contained (.*)$", vim_syntax("kvr-mif")).group(1)
        self.assertEqual(sorted(radixes), sorted(keywords.split()))
        self.assertIn(sorted(radixes), alternatives(" ".join(grammar_patterns("kvr-mif"))))
        self.assertIn(sorted(radixes), alternatives(EMACS))

    def test_settings_of_mif(self):
        names = words_of_table("mif/mif_header_parser.cpp", "keyword_names")
        self.assertEqual(len(names), 4)
        self.stand_in([name for name in names if name.endswith("RADIX")], "kvr-mif")
        self.stand_in([name for name in names if not name.endswith("RADIX")], "kvr-mif")

    def test_settings_of_coe(self):
        for name in ("radix_setting", "vector_name"):
            keyword = constant("coe/coe_parser.cpp", name)
            self.assertIn(r"/\<%s\>/" % keyword, vim_syntax("kvr-coe"))
            self.assertIn(r"(?i)\b(%s)\b" % keyword, grammar_patterns("kvr-coe"))
        self.assertIn("memory_initialization_(?:radix|vector)", plain(EMACS))

    def test_settings_of_mem_with_header(self):
        settings = words_of_table("memheader/memheader_settings.cpp", "memheader_settings")
        self.assertIn("Format", settings)
        self.assertIn(sorted(settings), alternatives(vim_syntax("kvr-memheader")))
        self.assertIn(sorted(settings), alternatives(EMACS))
        self.assertIn(sorted(set(settings) - {"Format"}), alternatives(" ".join(grammar_patterns("kvr-memheader"))))
        layouts = words_of_table("memheader/memheader_settings.cpp", "memheader_layouts")
        self.assertIn(sorted(layouts), alternatives(vim_syntax("kvr-memheader")))
        self.assertIn(sorted(layouts), alternatives(" ".join(grammar_patterns("kvr-memheader"))))

    def test_first_lines_of_logisim(self):
        lines = words_of_table("logisim/logisim_variant.cpp", "logisim_variants")
        self.assertEqual(len(lines), 7)
        in_vim = re.findall(r"(?m)^syntax match kvrLogisimHeader /\\%1l(.*)/$", vim_syntax("kvr-logisim"))
        headers = [
            plain("|".join(in_vim)),
            next(one for one in grammar_patterns("kvr-logisim") if one.startswith(r"\Av2")),
        ]
        for header in headers:
            for line in lines:
                self.assertRegex(line, header)
                self.assertNotRegex(line + " x", header)
                self.assertNotRegex(line[:-1], header)


class Languages(unittest.TestCase):
    def test_every_format_has_a_language_or_needs_none(self):
        titles = [each["title"] for each in answer("formats", "--json")["formats"]]
        self.assertEqual(sorted(titles), sorted(sum(TITLES.values(), OTHER_TITLES)))

    def test_extensions(self):
        expected = set()
        for each in answer("formats", "--json")["formats"]:
            if each["title"] not in OTHER_TITLES:
                expected.update(each["extensions"])
        in_vim = re.search(r"(?s)let s:languages = \{(.*?)\\ \}", (VIM / "autoload/kvrmem.vim").read_text()).group(1)
        self.assertEqual(set(re.findall(r"'(\w+)': \[", in_vim)), expected)
        detected = re.findall(r"\*\.(\w+)\\c", (VIM / "ftdetect/kvrmem.vim").read_text())
        self.assertEqual(set(detected), expected)
        in_vscode = re.findall(r'\["(\w+)", \["kvr-', (VSCODE / "src/language.ts").read_text())
        self.assertEqual(set(in_vscode), expected)
        self.assertEqual(set(re.findall(r'\("(\w+)" kvr-', EMACS)), expected)

    def test_files_are_what_the_tool_takes_them_for(self):
        folder = SOURCE / "tests/editors/languages"
        for line in (folder / "expected").read_text().splitlines():
            name, language = line.split()
            with self.subTest(name):
                found = answer("check", "--json", str(folder / name))["files"][0]
                broken = {each["code"] for each in found["diagnostics"] if each["class"] == "broken"}
                if language != "none":
                    self.assertIn(found["format"], TITLES[language])
                    # Options would provide these; an editor does not need them.
                    self.assertLessEqual(broken, {"missing-frame", "width-unknown"})
                elif name.rsplit(".", 1)[1] not in OPEN_EXTENSIONS:
                    self.assertNotEqual(broken, set())

    def test_every_sample_has_an_expectation(self):
        folder = SOURCE / "tests/editors/languages"
        named = [line.split()[0] for line in (folder / "expected").read_text().splitlines()]
        self.assertEqual(sorted(named + ["expected"]), sorted(each.name for each in folder.iterdir()))


class Manifest(unittest.TestCase):
    def test_version_is_that_of_the_project(self):
        version = json.loads((VSCODE / "package.json").read_text())["version"]
        self.assertIn("    VERSION %s\n" % version, (SOURCE / "CMakeLists.txt").read_text())

    def test_lock_file_names_no_address(self):
        self.assertNotIn('"resolved"', (VSCODE / "package-lock.json").read_text())

    def test_languages_are_those_of_the_formats(self):
        contributes = json.loads((VSCODE / "package.json").read_text())["contributes"]
        self.assertEqual(sorted(each["id"] for each in contributes["languages"]), sorted(TITLES))
        self.assertEqual(sorted(each["language"] for each in contributes["grammars"]), sorted(TITLES))
        self.assertEqual(sorted(re.findall(r"(?m)^\(kvrmem--define-mode (kvr-\w+)-mode", EMACS)), sorted(TITLES))
        lua = (VIM / "lua/kvrmem.lua").read_text()
        self.assertEqual(sorted(re.findall(r"'(kvr-\w+)'", lua)), sorted(TITLES))


if __name__ == "__main__":
    unittest.main()
