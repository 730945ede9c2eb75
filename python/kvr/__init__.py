"""Memory images for FPGA design: words at addresses, and the files that hold them.

>>> import kvr
>>> m = kvr.Memory(width=12, depth=4)
>>> m[0:2] = [5, -1]
>>> m[0], m[1], m[2]
(5, 4095, None)

``read()`` reads a file of any supported format (``formats()`` lists them), ``Memory.write()`` writes one,
and words are converted to and from NumPy arrays. Addresses and depths count words, widths count bits.

Threads: each call on a memory is atomic, so threads may share a memory. A sequence of calls is not atomic
(a loop over ``items()``, a test followed by a change), nor is ``to_numpy()`` while another thread writes.
Operations on files, arrays and whole memories release the interpreter lock. The objects of ``kvr.classic``
must be used by one thread at a time.
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
