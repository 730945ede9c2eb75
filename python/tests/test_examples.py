"""The scripts of examples/python, and the lines of Python in the documents."""

import doctest
import os
import re
import subprocess
import sys
from pathlib import Path

import pytest

import kvr

source = Path(os.environ.get("KVR_SOURCE", Path(__file__).resolve().parents[2]))
scripts = source / "examples" / "python"


def run(name, *arguments):
    return subprocess.run(
        [sys.executable, "-B", scripts / name, *arguments], capture_output=True, text=True, check=False
    )


def test_sine_table(tmp_path):
    done = run("sine_table.py", tmp_path / "sine.mif", tmp_path / "sine.svg")
    assert done.stdout == "256 words of 16 bits, from -32767\n", done.stderr
    m = kvr.read(tmp_path / "sine.mif")
    assert (m.depth, m[0], m[64], m[192]) == (256, 0, 0x7FFF, 0x8001)
    assert "<svg" in (tmp_path / "sine.svg").read_text(encoding="utf-8")


def test_compare_builds(tmp_path):
    for folder in ("old", "new"):
        (tmp_path / folder).mkdir()
    m = kvr.Memory(12, 16, fill=5)
    m.write(tmp_path / "old" / "boot.mif")
    m.write(tmp_path / "new" / "boot.mif")
    assert run("compare_builds.py", tmp_path / "old", tmp_path / "new").stdout == ""
    m[3:6] = 0xABC
    m[9] = None
    m.write(tmp_path / "new" / "boot.mif")
    m.write(tmp_path / "new" / "more.mif")
    done = run("compare_builds.py", tmp_path / "old", tmp_path / "new")
    assert done.returncode == 1
    assert done.stdout == (
        "memory  addresses  old  new\n"
        "boot    0x3..0x5   005  ABC\n"
        "boot    0x9        005  -\n"
        "more    all        -    there\n"
    )


def test_check_folder(tmp_path):
    kvr.Memory(8, 2, fill=1).write(tmp_path / "good.mif")
    assert run("check_folder.py", tmp_path).returncode == 0
    (tmp_path / "bad.mif").write_text("WIDTH=8;\nDEPTH=1;\nDATA_RADIX=HEX;\nCONTENT BEGIN\n0 : 1FF;\nEND;\n")
    done = run("check_folder.py", tmp_path)
    assert done.returncode == 1
    assert f"{tmp_path / 'bad.mif'}:5:5: error: value 1FF needs 9 bits, the words have 8\n" in done.stdout
    assert done.stdout.endswith("2 files, 1 with errors\n")


@pytest.mark.parametrize("document", ["README.md", "docs/python.md"])
def test_documents_show_what_happens(document, tmp_path, monkeypatch):
    """The blocks of Python of a document are one session, in a folder with the examples."""
    (tmp_path / "examples").symlink_to(source / "examples")
    monkeypatch.chdir(tmp_path)
    blocks = re.findall(r"^```pycon\n(.*?)^```$", (source / document).read_text(), re.DOTALL | re.MULTILINE)
    assert blocks
    session = doctest.DocTestParser().get_doctest("\n".join(blocks), {}, document, document, 0)
    said = []
    doctest.DocTestRunner(optionflags=doctest.ELLIPSIS).run(session, out=said.append)
    assert not said, "".join(said)
