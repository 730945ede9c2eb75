#!/usr/bin/env python3
"""sarif_schema.py TOOL FOLDER: the SARIF output of `kvrmem check` conforms to its published schema.

The validator, with the schema, is a package of another project of about 100 MB. It is installed into FOLDER if it is
missing. A step of scripts/matrix runs this script; check_reports.py needs no download and runs with the other tests.
"""
import json
import os
import pathlib
import subprocess
import sys
import tempfile

VALIDATOR = "@microsoft/sarif-multitool-linux@5.7.0"
FILES = {
    "good.mif": "WIDTH=8;\nDEPTH=2;\nCONTENT BEGIN\n[0..1] : 00;\nEND;\n",
    "bad one%.mif": "-- \u00e4\nWIDTH=8;\nDEPTH=4;\nCONTENT BEGIN\n0 : 1, 2;\n1 : 1FF;\n3 : 0\nEND;\n",
}


def validator_in(folder):
    """The program, which is installed if it is missing."""
    program = folder / "node_modules/@microsoft/sarif-multitool-linux/Sarif.Multitool"
    if not program.exists():
        folder.mkdir(parents=True, exist_ok=True)
        subprocess.run(["npm", "install", "--no-audit", "--no-fund", "--ignore-scripts", "--prefix", str(folder), VALIDATOR],
                       check=True, timeout=600)
    program.chmod(0o755)
    return program


def faults_of(program, path):
    """The schema rules that a log violates: JSON1001 and so on."""
    report = path.with_suffix(".report.sarif")
    subprocess.run([str(program), "validate", str(path), "--output", str(report), "--log", "ForceOverwrite"], check=True,
                   capture_output=True, env={**os.environ, "DOTNET_SYSTEM_GLOBALIZATION_INVARIANT": "1"})
    results = json.loads(report.read_text(encoding="utf-8-sig"))["runs"][0]["results"]
    return [f"{each['ruleId']}: {each['message']}" for each in results if each.get("level") == "error"]


def main():
    tool, program = pathlib.Path(sys.argv[1]).resolve(), validator_in(pathlib.Path(sys.argv[2]))
    with tempfile.TemporaryDirectory() as work:
        log = pathlib.Path(work, "log.sarif")
        for name, text in FILES.items():
            pathlib.Path(work, name).write_text(text, encoding="utf-8")
        done = subprocess.run([tool, "check", "--format", "sarif", *FILES, "none.mif"], cwd=work, capture_output=True)
        log.write_bytes(done.stdout)
        faults = faults_of(program, log)
        # The validator must find a violation.
        log.write_text(done.stdout.decode().replace('"startLine"', '"startLines"'))
        if not faults_of(program, log):
            faults.append("a member that SARIF does not have is not noticed")
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
