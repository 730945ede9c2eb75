#!/usr/bin/env python3
"""check_reports.py TOOL SCHEMAS: the reports of `kvrmem check` for other programs have the form that these expect.

The SARIF report is compared with the object model that the package python3-sarif-python-om generates from the published
schema (names of members, and required members); its regions and repairs are compared with the files. sarif_schema.py,
which scripts/matrix runs, validates it with the schema itself. JUnit and code-quality reports have closed schemas in the
documents.
"""
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest
import urllib.parse

import jsonschema

sys.path.append("/usr/lib/python3/dist-packages")  # also for a python3 other than the system's
import attr  # noqa: E402
import sarif_om  # noqa: E402

TOOL, SCHEMAS = sys.argv[1], pathlib.Path(sys.argv[2])
FORMATS = ["text", "json", "sarif", "github", "junit", "gitlab"]
GOOD = "WIDTH=8;\nDEPTH=2;\nCONTENT BEGIN\n[0..1] : 00;\nEND;\n"
BAD = "-- \u00e4\u00f6 \U0001f600 <&\">\nWIDTH=8;\nDEPTH=4;\nCONTENT BEGIN\n0 : 1, 2; -- \u00e4\n/* x */\n2 : 1FF;\n3 : 0\nEND;\n"
WARNED = "WIDTH=8;\nDEPTH=4;\nCONTENT BEGIN\n0 : 1, 2;\nEND;\n"
# The class of the contents of a member; other members are not examined.
CLASSES = {
    "runs": "Run", "tool": "Tool", "driver": "ToolComponent", "rules": "ReportingDescriptor",
    "shortDescription": "MultiformatMessageString", "help": "MultiformatMessageString",
    "defaultConfiguration": "ReportingConfiguration", "invocations": "Invocation",
    "toolExecutionNotifications": "Notification", "message": "Message", "locations": "Location",
    "relatedLocations": "Location", "physicalLocation": "PhysicalLocation", "artifactLocation": "ArtifactLocation",
    "location": "ArtifactLocation", "region": "Region", "deletedRegion": "Region", "artifacts": "Artifact",
    "results": "Result", "fixes": "Fix", "description": "Message", "artifactChanges": "ArtifactChange",
    "replacements": "Replacement", "insertedContent": "ArtifactContent",
}


def faults_of(value, class_name, path="log"):
    """The violations of the object model in a value."""
    fields = {f.metadata["schema_property_name"]: f for f in attr.fields(getattr(sarif_om, class_name))}
    for name, field in fields.items():
        if field.default is attr.NOTHING and name not in value:
            yield f"{path} has no {name}"
    for name, member in value.items():
        if name not in fields:
            yield f"{path} has {name}"
        for index, each in enumerate(member if isinstance(member, list) else [member]):
            if isinstance(each, dict):
                if name not in CLASSES:
                    yield f"{path}.{name} is not looked at"
                else:
                    yield from faults_of(each, CLASSES[name], f"{path}.{name}[{index}]")


def place_in(text, line, column):
    """The offset of a place in a text; its column counts code points."""
    return sum(len(each) + 1 for each in text.split("\n")[: line - 1]) + column - 1


class Reports(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        for name, text in {"good.mif": GOOD, "bad one%.mif": BAD, "warned.mif": WARNED}.items():
            (self.folder / name).write_text(text, encoding="utf-8")

    def check(self, form, *words):
        done = subprocess.run([TOOL, "check", "--format", form, *words], cwd=self.folder, capture_output=True)
        return done.returncode, done.stdout.decode("utf-8")

    def test_exit_codes_are_the_same_for_all(self):
        for words, code in [(["good.mif"], 0), (["warned.mif"], 0), (["--strict", "warned.mif"], 1),
                            (["good.mif", "bad one%.mif"], 1), (["bad one%.mif", "none.mif"], 3)]:
            for form in FORMATS:
                self.assertEqual(self.check(form, *words)[0], code, f"{form} {words}")

    def test_sarif_has_the_members_of_the_published_schema(self):
        for words in [["good.mif"], ["bad one%.mif", "warned.mif", "none.mif"]]:
            log = json.loads(self.check("sarif", *words)[1])
            self.assertEqual(list(faults_of(log, "SarifLog")), [])
            self.assertEqual(log["version"], "2.1.0")
        del log["runs"][0]["results"][0]["message"]
        log["runs"][0]["results"][0]["words"] = "x"
        self.assertEqual(list(faults_of(log, "SarifLog")),
                         ["log.runs[0].results[0] has no message", "log.runs[0].results[0] has words"])

    def test_sarif_results_name_rules_and_files(self):
        run = json.loads(self.check("sarif", "bad one%.mif", "warned.mif", "none.mif")[1])["runs"][0]
        rules = run["tool"]["driver"]["rules"]
        self.assertGreater(len(run["results"]), 4)
        for result in run["results"]:
            rule = rules[result["ruleIndex"]]
            self.assertEqual(rule["id"], result["ruleId"])
            self.assertEqual(rule["defaultConfiguration"]["level"], result["level"])
            uri = result["locations"][0]["physicalLocation"]["artifactLocation"]["uri"]
            self.assertTrue((self.folder / urllib.parse.unquote(uri)).exists(), uri)
        self.assertEqual(len({rule["id"] for rule in rules}), len(rules))
        self.assertEqual(run["invocations"][0]["exitCode"], 3)
        self.assertFalse(run["invocations"][0]["executionSuccessful"])
        self.assertIn("none.mif", run["invocations"][0]["toolExecutionNotifications"][0]["message"]["text"])

    def test_sarif_regions_are_the_same_in_bytes_and_in_columns(self):
        self.assertEqual(json.loads(self.check("sarif", "good.mif")[1])["runs"][0]["columnKind"], "unicodeCodePoints")
        regions = 0
        for result in json.loads(self.check("sarif", "bad one%.mif")[1])["runs"][0]["results"]:
            places = [each["physicalLocation"].get("region") for each in result["locations"]]
            places += [each["deletedRegion"] for fix in result.get("fixes", [])
                       for change in fix["artifactChanges"] for each in change["replacements"]]
            for region in filter(None, places):
                begin = place_in(BAD, region["startLine"], region["startColumn"])
                end = place_in(BAD, region["endLine"], region["endColumn"])
                offset = region["byteOffset"]
                self.assertEqual(BAD[begin:end].encode(),
                                 BAD.encode()[offset : offset + region["byteLength"]], result["message"])
                regions += 1
        self.assertGreater(regions, 5)

    def test_sarif_fixes_are_the_repairs(self):
        text = WARNED
        for result in json.loads(self.check("sarif", "warned.mif")[1])["runs"][0]["results"]:
            for fix in result.get("fixes", []):
                for each in fix["artifactChanges"][0]["replacements"]:
                    begin = each["deletedRegion"]["byteOffset"]
                    text = text[:begin] + each["insertedContent"]["text"] + text[begin + each["deletedRegion"]["byteLength"] :]
        subprocess.run([TOOL, "check", "--fix", "-o", "fixed.mif", "warned.mif"], cwd=self.folder, check=True,
                       capture_output=True)
        self.assertNotEqual(text, WARNED)
        self.assertEqual(text, (self.folder / "fixed.mif").read_text())

    def test_sarif_uri_of_a_path_from_the_root(self):
        path = self.folder / "good.mif"
        run = json.loads(self.check("sarif", str(path))[1])["runs"][0]
        self.assertEqual(run["artifacts"][0]["location"]["uri"], path.as_uri())

    def test_junit_has_its_schema_and_counts(self):
        for words in [["good.mif"], ["bad one%.mif", "warned.mif", "none.mif"], ["--strict", "warned.mif"]]:
            text = self.check("junit", *words)[1]
            subprocess.run(["xmllint", "--noout", "--schema", str(SCHEMAS / "junit.xsd"), "-"], input=text.encode(),
                           check=True, capture_output=True)
            for kind, tag in [("tests", "<testcase "), ("failures", "<failure "), ("errors", "<error ")]:
                self.assertEqual(re.search(f'<testsuites [^>]*{kind}="([0-9]+)"', text)[1], str(text.count(tag)))
        refused = subprocess.run(["xmllint", "--noout", "--schema", str(SCHEMAS / "junit.xsd"), "-"],
                                 input=text.replace("message=", "text=").encode(), capture_output=True)
        self.assertNotEqual(refused.returncode, 0)

    def test_gitlab_has_its_schema_and_fingerprints_that_stay(self):
        schema = json.loads((SCHEMAS / "gitlab.json").read_text())
        jsonschema.Draft202012Validator.check_schema(schema)
        validator = jsonschema.Draft202012Validator(schema)
        self.assertEqual(json.loads(self.check("gitlab", "good.mif")[1]), [])
        before = json.loads(self.check("gitlab", "bad one%.mif", "none.mif")[1])
        (self.folder / "bad one%.mif").write_text("-- one more line\n" + BAD, encoding="utf-8")
        after = json.loads(self.check("gitlab", "bad one%.mif", "none.mif")[1])
        self.assertEqual([fault.message for fault in validator.iter_errors(before)], [])
        prints = [each["fingerprint"] for each in before]
        self.assertEqual(prints, [each["fingerprint"] for each in after])
        self.assertEqual(len(set(prints)), len(prints))
        self.assertNotEqual([each["location"]["lines"] for each in before], [each["location"]["lines"] for each in after])
        for each in before:
            self.assertFalse(validator.is_valid([{**each, "more": 0}]))

    def test_every_place_that_is_kept_is_in_the_reports(self):
        def places_of(count):
            values = "".join(f"{address} : 1,2;\n" for address in range(0, 2 * count, 2))
            (self.folder / "a.mif").write_text(f"WIDTH=8;\nDEPTH=64;\nADDRESS_RADIX=DEC;\nCONTENT BEGIN\n{values}END;\n")
            commands = [line for line in self.check("github", "a.mif")[1].splitlines() if "title=comma" in line]
            found = [each for each in json.loads(self.check("gitlab", "a.mif")[1]) if each["check_name"] == "comma"]
            lines = [each["location"]["lines"]["begin"] for each in found]
            self.assertEqual([int(re.search(",line=([0-9]+),", line)[1]) for line in commands], lines)
            return lines, [each["fingerprint"] for each in found]

        one, three, twelve = places_of(1), places_of(3), places_of(12)
        self.assertEqual([one[0], three[0], twelve[0]], [[5], [5, 6, 7], list(range(5, 15))])
        self.assertEqual(len(set(twelve[1])), 10)
        self.assertEqual([one[1], three[1]], [twelve[1][:1], twelve[1][:3]])

    def test_github_commands_can_be_read_back(self):
        lines = self.check("github", "bad one%.mif", "none.mif")[1].splitlines()
        for line in lines[:-1]:
            kind, properties, text = re.fullmatch(r"::(error|warning) ([^:]*)::(.*)", line).groups()
            values = dict(each.split("=", 1) for each in properties.split(","))
            self.assertIn(urllib.parse.unquote(values["file"]), ["bad one%.mif", "none.mif"])
            self.assertNotIn("\n", text)
            self.assertTrue(kind and text)
        self.assertGreater(len(lines), 4)
        self.assertEqual(lines[-1], "3 errors, 1 warning in 1 of 2 files, 1 not checked")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
