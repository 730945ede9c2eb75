"""Checks all memory files of a folder, for continuous integration. Prints one line for each finding, in the form of a
compiler; the exit code is 1 if a file is broken.

Usage: check_folder.py FOLDER
"""

import sys
from pathlib import Path

import kvr


def main(folder: str) -> int:
    # %% Every file with an extension of a readable format
    known = {extension for each in kvr.formats() if each.can_read for extension in each.extensions}
    paths = [path for path in sorted(Path(folder).rglob("*")) if path.suffix[1:].lower() in known]

    # %% The diagnostics of each file
    broken = 0
    for path in paths:
        found = kvr.check(path)
        broken += any(each.severity == "error" for each in found)
        for each in found:
            print(each)

    # %% The summary
    print(f"{len(paths)} files, {broken} with errors")
    return 1 if broken else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
