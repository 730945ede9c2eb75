"""Compares the memories of two builds by file name, in any format. The exit code is 1 if they differ.

Usage: compare_builds.py OLD_FOLDER NEW_FOLDER
"""

import sys
from pathlib import Path
from typing import Union

import kvr


def shown(word: Union[int, kvr.Word, None], width: int) -> str:
    if word is None:
        return "-"
    return word.bits if isinstance(word, kvr.Word) else f"{word:0{(width + 3) // 4}X}"


def addresses(difference: kvr.Difference) -> str:
    first, last = f"{difference.first:#x}", f"{difference.last:#x}"
    return first if first == last else f"{first}..{last}"


def main(old_folder: str, new_folder: str) -> int:
    # %% The memories of both folders
    old = {path.stem: path for path in sorted(Path(old_folder).iterdir())}
    new = {path.stem: path for path in sorted(Path(new_folder).iterdir())}

    # %% A table of the differences
    rows = [("memory", "addresses", "old", "new")]
    for name in sorted(old.keys() | new.keys()):
        if name not in old or name not in new:
            rows.append((name, "all", "there" if name in old else "-", "there" if name in new else "-"))
            continue
        before, after = kvr.read(old[name]), kvr.read(new[name])
        rows += [
            (name, addresses(each), shown(each.left, before.width), shown(each.right, after.width))
            for each in before.diff(after)
        ]

    # %% Aligned columns
    widths = [max(map(len, column)) for column in zip(*rows)]
    for row in rows if len(rows) > 1 else []:
        print("  ".join(cell.ljust(width) for cell, width in zip(row, widths)).rstrip())
    return 1 if len(rows) > 1 else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
