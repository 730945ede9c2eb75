"""Files of any format, their diagnostics, and the errors of Python."""

import io
import os
import pickle
import subprocess
import sys
import threading
import warnings
from pathlib import Path

import pytest

import kvr


def test_a_file_is_read_by_path_and_by_stream(boot_mif):
    m = kvr.read(boot_mif)
    assert (m.width, m.depth, m.base, m.format) == (8, 4, 0, "mif")
    assert list(m) == [0x10, 0xFF, 0, None]
    assert m.facts["data radix"] == "HEX" and m.diagnostics == []
    with open(boot_mif, "rb") as stream:
        assert kvr.read(stream) == m
    with open(boot_mif) as stream:
        assert kvr.read(stream) == m
    assert kvr.read(io.BytesIO(boot_mif.read_bytes())) == m
    assert kvr.read(str(boot_mif)) == kvr.read(os.fsencode(boot_mif)) == m
    assert kvr.parse(boot_mif.read_text(), name="x.mif") == m


def test_words_are_written_in_every_format_that_can(tmp_path):
    m = kvr.from_bytes(bytes(range(64)), width=16, endian="big")
    both = [each for each in kvr.formats() if each.can_read and each.can_write]
    assert len(both) >= 10
    for each in both:
        path = tmp_path / f"memory.{each.name}"
        m.write(path, format=each.name, endian="big")
        again = kvr.read(path, format=each.name, width=16, endian="big")
        assert again == m and again.format == each.name
        assert pickle.loads(pickle.dumps(again)).format == each.name
        stream = io.BytesIO()
        m.write(stream, format=each.name, endian="big")
        assert len(stream.getvalue()) == path.stat().st_size


def test_streams_know_their_format(boot_mif, tmp_path):
    m = kvr.read(boot_mif)
    text = io.StringIO()
    m.write(text)
    assert kvr.parse(text.getvalue(), name="boot.mif") == m
    with open(tmp_path / "boot.rif", "wb") as stream:
        m.write(stream)
    assert kvr.read(tmp_path / "boot.rif", width=8, depth=4).format == "rif"
    with pytest.raises(ValueError, match="the stream"):
        kvr.Memory(8, 1).write(io.BytesIO())
    with pytest.raises(ValueError, match="is unknown"):
        m.write(tmp_path / "boot.unknown")


def test_what_a_single_format_leaves_open_is_a_keyword(tmp_path):
    m = kvr.Memory(8, 8, fill=1)
    names = {choice.name for each in kvr.formats() for choice in each.write_choices}
    assert "words-per-line" in names
    m.write(tmp_path / "a.mem", format="readmemh", words_per_line=4)
    m.write(tmp_path / "b.mem", format="readmemh", words_per_line=None)
    assert (tmp_path / "a.mem").read_text() != (tmp_path / "b.mem").read_text()
    with pytest.raises(TypeError, match="no argument 'words_a_line'"):
        m.write(tmp_path / "a.mem", words_a_line=4)
    with pytest.raises(TypeError, match="no argument 'sections'"):
        kvr.read(tmp_path / "a.mem", sections="text")
    with pytest.raises(kvr.FileError) as error:
        m.write(tmp_path / "a.mif", words_per_line=4)
    assert error.value.diagnostics[0].code == "choice-without-effect"


def test_broken_files_raise_their_diagnostics(tmp_path):
    path = tmp_path / "boot.mif"
    path.write_text("WIDTH=8;\nDEPTH=2;\nDATA_RADIX=HEX;\nCONTENT BEGIN\n0 : 1FF;\n1 : 2;\nEND;\n")
    with pytest.raises(kvr.FileError) as error:
        kvr.read(path)
    (found,) = error.value.diagnostics
    assert (found.code, found.severity, found.kind) == ("too-wide", "error", "broken")
    assert (found.line, found.column, found.length, found.offset) == (5, 5, 3, 52)
    assert found.message == "value 1FF needs 9 bits, the words have 8" and found.hint == "needs WIDTH 9"
    assert str(error.value) == f"{path}:5:5: error: {found.message}\n  hint: needs WIDTH 9"
    assert isinstance(error.value, ValueError)
    again = pickle.loads(pickle.dumps(error.value))
    assert again.diagnostics == [found] and hash(again.diagnostics[0]) == hash(found)
    assert kvr.check(path)[0] == found
    with pytest.raises(kvr.FileError):
        kvr.edit(path, {0: 1})
    with pytest.raises(kvr.FileError) as error:
        kvr.read(io.BytesIO(b"neither this nor that"))
    assert error.value.diagnostics


def test_suspect_files_warn(tmp_path):
    path = tmp_path / "a.mem"
    path.write_text("@0 12 34\n@0 56\n")
    with pytest.warns(kvr.FileWarning) as caught:
        m = kvr.read(path, format="readmemh")
    assert caught[0].filename == __file__
    assert caught[0].message.diagnostic in m.diagnostics
    assert str(caught[0].message).startswith(f"{path}:2:")
    with warnings.catch_warnings():
        warnings.simplefilter("error", kvr.FileWarning)
        with pytest.raises(kvr.FileWarning):
            kvr.read(path, format="readmemh")


def test_checks_have_repairs(tmp_path):
    path = tmp_path / "boot.mif"
    path.write_text("WIDTH=8;\nDEPTH=4;\nADDRESS_RADIX=HEX;\nDATA_RADIX=HEX;\nCONTENT BEGIN\n[0 - 3] : 00;\nEND;\n")
    found = kvr.check(path)
    fixed = [each for each in found if each.fix]
    assert fixed and fixed[0].repair
    text = path.read_bytes()
    for edit in reversed(fixed[0].fix):
        text = text[: edit.offset] + edit.replacement + text[edit.offset + edit.length :]
    assert list(kvr.parse(text, name="boot.mif")) == [0] * 4
    assert [each.consumer for each in kvr.check(io.BytesIO(text), consumers=[])] == []


def test_memories_that_a_format_cannot_hold(tmp_path):
    m = kvr.Memory(8, 2)
    m[1] = kvr.Word("0000XXXX")
    with pytest.raises(kvr.FileError) as error:
        m.write(tmp_path / "a.bin")
    assert error.value.diagnostics and not (tmp_path / "a.bin").exists()


def test_files_that_are_not_there(tmp_path):
    for read in (kvr.read, kvr.check, lambda path: kvr.edit(path, {})):
        with pytest.raises(FileNotFoundError) as error:
            read(tmp_path / "no.mif")
        assert error.value.filename == str(tmp_path / "no.mif")
    with pytest.raises(IsADirectoryError):
        kvr.read(tmp_path)
    with pytest.raises(FileNotFoundError):
        kvr.Memory(8, 1, fill=0).write(tmp_path / "no" / "a.mif")
    with pytest.raises(TypeError):
        kvr.read(7.5)


def test_bad_options_are_refused(boot_mif):
    for options in ({"format": "miff"}, {"unit": "bit"}, {"endian": "middle"}):
        with pytest.raises(ValueError):
            kvr.read(boot_mif, **options)
    with pytest.raises(ValueError):
        kvr.Memory(8, 1, fill=0).write(io.BytesIO(), format="mif", data_radix="roman")


def test_edits_keep_everything_else(boot_mif):
    kvr.edit(boot_mif, {0: 0x11, range(2, 4): [1, 2], 1: -1})
    text = boot_mif.read_text()
    assert "0 : 11;   -- first" in text and "-- second" in text
    assert list(kvr.read(boot_mif)) == [0x11, 0xFF, 1, 2]
    before = boot_mif.stat().st_mtime_ns
    kvr.edit(boot_mif, {0: 0x11})
    assert boot_mif.stat().st_mtime_ns == before, "nothing was to change"
    kvr.edit(boot_mif, {3: kvr.Word("XXXXXXXX")})
    assert kvr.read(boot_mif)[3] == kvr.Word("XXXXXXXX")
    with pytest.raises(OverflowError):
        kvr.edit(boot_mif, {0: 256})
    with pytest.raises(IndexError):
        kvr.edit(boot_mif, {-1: 0})
    with pytest.raises(ValueError):
        kvr.edit(boot_mif, {range(0, 4, 2): 0})
    with pytest.raises(TypeError):
        kvr.edit(boot_mif, {0: "11"})
    with pytest.raises(kvr.FileError):
        kvr.edit(boot_mif, {4: 0})


def test_convert(boot_mif, tmp_path):
    target = tmp_path / "boot.mem"
    m = kvr.convert(boot_mif, target, width=8, write={"words_per_line": 4})
    assert kvr.read(target, width=8, depth=4) == m


def test_a_name_that_is_no_utf8(tmp_path):
    path = os.fsencode(tmp_path) + b"/\xff.mif"
    kvr.Memory(8, 1, fill=0).write(path)
    assert list(kvr.read(path)) == [0]
    assert Path(os.fsdecode(path)).exists()


def test_threads_share_a_memory(tmp_path):
    m = kvr.Memory(16, 20000, fill=0)
    errors = []

    def work(number):
        try:
            for turn in range(20):
                m[number] = turn
                assert len(m.to_numpy()) == 20000
                m.write(tmp_path / f"{number}.mif")
                assert kvr.read(tmp_path / f"{number}.mif")[number] == turn
                assert m.diff(m.copy()) is not None
        except Exception as error:  # noqa: BLE001
            errors.append(error)

    threads = [threading.Thread(target=work, args=(number,)) for number in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert errors == []
    assert [m[number] for number in range(4)] == [19] * 4


def test_reading_releases_the_interpreter(tmp_path):
    """A pipe that another thread of the same program writes could not be opened otherwise."""
    os.mkfifo(tmp_path / "boot.rif")
    program = (
        "import kvr, sys, threading\n"
        "def write():\n"
        "    with open(sys.argv[1], 'w') as pipe:\n"
        "        pipe.write('@0\\n0A\\n0B\\n')\n"
        "threading.Thread(target=write).start()\n"
        "print(list(kvr.read(sys.argv[1], width=8, depth=3)))\n"
    )
    done = subprocess.run(
        [sys.executable, "-c", program, tmp_path / "boot.rif"], capture_output=True, text=True, timeout=60
    )
    assert done.stdout == "[10, 11, None]\n", done.stderr


def test_what_a_hint_proposes_is_an_argument(tmp_path):
    path = tmp_path / "bytes.bin"
    path.write_bytes(bytes(range(8)))
    with pytest.raises(kvr.FileError) as error:
        kvr.read(path, width=32)
    found = error.value.diagnostics[0]
    assert found.hint == 'add endian="little" (first word 03020100) or big (00010203)'
    assert found.hint in str(error.value) and "--" not in str(error.value)
    list_path = tmp_path / "late.mem"
    list_path.write_text("@80000000 1 2\n")
    with pytest.raises(kvr.FileError) as error:
        kvr.read(list_path, width=8)
    assert "--" not in str(error.value) and "base=0x80000000" in str(error.value)


def test_what_is_no_option_of_a_text_stays(tmp_path):
    with pytest.raises(kvr.FileError) as error:
        kvr.parse("@0 1 --first\n", format="readmemh", width=8)
    assert "'--' does not begin a Verilog comment" in str(error.value)
