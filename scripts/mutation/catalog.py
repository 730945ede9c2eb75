"""All mutants of the files. Finding them takes a second per file, so the result is kept until the file changes."""

from __future__ import annotations

import hashlib
import pickle
from collections.abc import Iterable
from concurrent.futures import ProcessPoolExecutor
from pathlib import Path

from mutant import Mutant
from project import Project
from syntax import mutants_of

FINDERS = [Path(__file__).with_name(name) for name in ("syntax.py", "mutant.py")]


def mutants_in(project: Project, files: Iterable[str], jobs: int) -> dict[str, list[Mutant]]:
    """The mutants by file, in the order of the source."""
    folder = project.build / "mutants"
    folder.mkdir(exist_ok=True)
    kept = {file: folder / _name(project.root, file) for file in files}
    missing = [file for file, path in kept.items() if not path.exists()]
    arguments = [project.parse_arguments(file) for file in missing]
    with ProcessPoolExecutor(jobs) as executor:
        roots = [str(project.root)] * len(missing)
        for file, found in zip(missing, executor.map(mutants_of, roots, missing, arguments)):
            kept[file].write_bytes(pickle.dumps(found))
    return {file: pickle.loads(path.read_bytes()) for file, path in kept.items()}


def _name(root: Path, file: str) -> str:
    """A hash of the file and of the programs that find its mutants."""
    state = hashlib.sha256(file.encode())
    for path in (root / file, *FINDERS):
        state.update(path.read_bytes())
    return state.hexdigest()
