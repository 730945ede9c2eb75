"""Memory images for FPGA design: words at addresses, and the files that hold them.

>>> import kvr
>>> m = kvr.Memory(width=12, depth=4)
>>> m[0:2] = [5, -1]
>>> m[0], m[1], m[2]
(5, 4095, None)

``read()`` reads a file of any format that kvr knows (``formats()`` lists them), ``Memory.write()`` writes
one, and the words go to and from NumPy as arrays. Addresses and depths count words, widths count bits.

Threads: every call on a memory is done as a whole, so that threads may share one; what takes several calls
(a loop over ``items()``, a test and a change) is not, and neither is an array of ``to_numpy()`` that the
memory is read into while another thread writes. Work on files, arrays and whole memories releases the
interpreter lock. The objects of ``kvr.classic`` are for one thread at a time.
"""

from kvr.diagnostics import Diagnostic, Edit, FileError, FileWarning
from kvr.files import Choice, Format, check, convert, edit, formats, parse, read
from kvr.fixed import Fixed, convert_radix
from kvr.memory import (
    Difference,
    Memory,
    Picture,
    checksums,
    from_bytes,
    from_numpy,
    join,
    merge,
)
from kvr.word import Word

__all__ = [
    "Choice",
    "Diagnostic",
    "Difference",
    "Edit",
    "FileError",
    "FileWarning",
    "Fixed",
    "Format",
    "Memory",
    "Picture",
    "Word",
    "check",
    "checksums",
    "convert",
    "convert_radix",
    "edit",
    "formats",
    "from_bytes",
    "from_numpy",
    "join",
    "merge",
    "parse",
    "read",
]
