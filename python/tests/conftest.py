"""Nothing here is imported by the package: the tests run on what is installed."""

import doctest
import tempfile

import hypothesis
import hypothesis.configuration
import pytest

# Else its tables of characters are written to the current folder.
_hypothesis_files = tempfile.TemporaryDirectory()
hypothesis.configuration.set_hypothesis_home_dir(_hypothesis_files.name)
hypothesis.settings.register_profile("kvr", max_examples=60, deadline=None, derandomize=True, database=None)
hypothesis.settings.load_profile("kvr")


def pytest_unconfigure():
    _hypothesis_files.cleanup()


@pytest.fixture
def boot_mif(tmp_path):
    """A file of four words of 8 bits with comments, of which the last is not set."""
    path = tmp_path / "boot.mif"
    path.write_text(
        "WIDTH=8;\nDEPTH=4;\nADDRESS_RADIX=HEX;\nDATA_RADIX=HEX;\nCONTENT BEGIN\n"
        "0 : 10;   -- first\n1 : FF; -- second\n2 : 00;\nEND;\n"
    )
    return path


def failed_examples(module):
    """(failures, tried) of the examples in the texts of a module."""
    return doctest.testmod(module, optionflags=doctest.ELLIPSIS)
