"""Checks all memory files of a folder in continuous integration: one line for each finding, in the form that
compilers have, and exit code 1 where a file is broken.

Usage: check_folder.py FOLDER
"""

import sys
from pathlib import Path

import kvr


def main(folder: str) -> int:
    # %% Every file whose extension belongs to a format that can be read
    known = {extension for each in kvr.formats() if each.can_read for extension in each.extensions}
    paths = [path for path in sorted(Path(folder).rglob("*")) if path.suffix[1:].lower() in known]

    # %% What is wrong with each
    broken = 0
    for path in paths:
        found = kvr.check(path)
        broken += any(each.severity == "error" for each in found)
        for each in found:
            print(each)

    # %% The answer
    print(f"{len(paths)} files, {broken} with errors")
    return 1 if broken else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
