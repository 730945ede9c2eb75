#!/usr/bin/env python3
"""ci_files_test.py TOOL SOURCE: the action and the hooks in the root of the repository work as documented.

Their commands are taken from their files and run in the same way as by a workflow and by pre-commit.
"""
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile
import unittest

import yaml

TOOL, SOURCE = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2])
GOOD = "WIDTH=8;\nDEPTH=2;\n\nCONTENT BEGIN\n\t[0..1]  :   00;\nEND;\n"
UNTIDY = "WIDTH=8;\nDEPTH=2;\nCONTENT BEGIN\n[0..1] : 0;\nEND;\n"
BAD = "WIDTH=8;\nDEPTH=2;\nCONTENT BEGIN\n0 : 1FF;\n1 : 0;\nEND;\n"


class Folder(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        (self.folder / "rom").mkdir()
        for name, text in {"good.mif": GOOD, "rom/untidy.mif": UNTIDY, "rom/bad.mif": BAD, "notes.txt": "x"}.items():
            (self.folder / name).write_text(text)


class Action(Folder):
    def run_action(self, **inputs):
        action = yaml.safe_load((SOURCE / "action.yml").read_text())
        given = {name.replace("_", "-"): value for name, value in inputs.items()}
        self.assertLessEqual(set(given), set(action["inputs"]))
        values = {name: given.get(name, entry.get("default")) for name, entry in action["inputs"].items()}
        self.assertNotIn(None, values.values())
        self.assertEqual(action["runs"]["using"], "composite")
        (step,) = action["runs"]["steps"]

        def value_of(match):
            return str(SOURCE) if match[1] == "github.action_path" else values[match[1].removeprefix("inputs.")]

        environment = {name: re.sub(r"\$\{\{ ([a-z._-]+) \}\}", value_of, text) for name, text in step["env"].items()}
        self.assertNotIn("${{", step["run"])
        return subprocess.run(["bash", "--noprofile", "--norc", "-e", "-o", "pipefail", "-c", step["run"]],
                              cwd=self.folder, env={"PATH": "/usr/bin:/bin", **environment}, capture_output=True,
                              text=True)

    def test_good_files_pass(self):
        done = self.run_action(files="*.mif", kvrmem=str(TOOL))
        self.assertEqual((done.returncode, done.stdout), (0, "good.mif: no faults\n"), done.stderr)

    def test_bad_files_are_annotated(self):
        done = self.run_action(files="**/*.mif\ngood.mif", kvrmem=str(TOOL))
        self.assertEqual(done.returncode, 1, done.stderr)
        self.assertIn("::error file=rom/bad.mif,line=4,col=5,endColumn=8,title=too-wide (error)::", done.stdout)

    def test_pattern_without_a_file_is_an_error(self):
        self.assertEqual(self.run_action(files="*.rif", kvrmem=str(TOOL)).returncode, 3)

    def test_options_are_those_of_check(self):
        self.assertEqual(self.run_action(files="good.mif", options="--depth 1 --strict", kvrmem=str(TOOL)).returncode, 1)

    def test_options_of_reading_reach_both_checks(self):
        (self.folder / "a.hex").write_text(":020000000102FB\n:00000001FF\n")
        (self.folder / "a.csv").write_text("address,value\n0,1\n")
        for options, code in [("--width 16 --address-unit byte --endian big", 0), ("", 2)]:
            done = self.run_action(files="a.hex a.csv", options="--strict", reading_options=options, check_layout="true",
                                   kvrmem=str(TOOL))
            self.assertEqual(done.returncode, code, done.stdout + done.stderr)
        done = self.run_action(files="good.mif", reading_options="--width 9", check_layout="true", kvrmem=str(TOOL))
        self.assertIn("--width 9 contradicts the file, which states 8", done.stderr)

    def test_layout_counts_where_it_is_asked_for(self):
        self.assertEqual(self.run_action(files="rom/untidy.mif", kvrmem=str(TOOL)).returncode, 0)
        done = self.run_action(files="rom/untidy.mif", check_layout="true", kvrmem=str(TOOL))
        self.assertEqual(done.returncode, 1)
        self.assertIn("rom/untidy.mif: would change\n", done.stdout)
        self.assertEqual((self.folder / "rom/untidy.mif").read_text(), UNTIDY)

    def test_sarif_goes_to_its_file(self):
        self.assertEqual(self.run_action(files="rom/bad.mif", sarif_file="out.sarif", kvrmem=str(TOOL)).returncode, 1)
        self.assertIn('"ruleId": "too-wide"', (self.folder / "out.sarif").read_text())

    def test_without_a_program_it_is_that_of_the_repository(self):
        self.assertIn("${KVRMEM:-$ACTION/scripts/kvrmem}", (SOURCE / "action.yml").read_text())
        self.assertTrue((SOURCE / "scripts/kvrmem").exists())


class Hooks(Folder):
    def run_hook(self, name):
        """Runs a hook like pre-commit: the words of its entry, and the files that match its pattern."""
        (hook,) = [each for each in yaml.safe_load((SOURCE / ".pre-commit-hooks.yaml").read_text()) if each["id"] == name]
        self.assertEqual(hook["language"], "system")
        paths = sorted(str(path.relative_to(self.folder)) for path in self.folder.rglob("*") if path.is_file())
        chosen = [path for path in paths if re.search(hook["files"], path)]
        self.assertNotIn("notes.txt", chosen)
        return subprocess.run([*shlex.split(hook["entry"]), *chosen], cwd=self.folder, capture_output=True, text=True,
                              env={"PATH": f"{TOOL.parent}:/usr/bin:/bin"})

    def test_check_fails_for_a_bad_file(self):
        done = self.run_hook("kvrmem-check")
        self.assertEqual(done.returncode, 1, done.stderr)
        self.assertIn("rom/bad.mif:4:5: error: value 1FF needs 9 bits", done.stdout)

    def test_check_passes_good_files(self):
        (self.folder / "rom/bad.mif").unlink()
        self.assertEqual(self.run_hook("kvrmem-check").returncode, 0)

    def test_format_changes_files_and_passes_then(self):
        (self.folder / "rom/bad.mif").unlink()
        self.assertEqual(self.run_hook("kvrmem-format").returncode, 0)
        self.assertEqual((self.folder / "rom/untidy.mif").read_text(), GOOD)
        self.assertEqual((self.folder / "good.mif").read_text(), GOOD)

    def test_format_fails_for_a_bad_file_and_leaves_it(self):
        self.assertEqual(self.run_hook("kvrmem-format").returncode, 2)
        self.assertEqual((self.folder / "rom/bad.mif").read_text(), BAD)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
