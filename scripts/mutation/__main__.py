"""What scripts/mutate runs."""

from __future__ import annotations

import argparse
import os
import queue
import signal
import sys
from concurrent.futures import ThreadPoolExecutor, as_completed
from pathlib import Path

from equivalents import EquivalentsError, check_equivalents, read_equivalents
from groups import GROUPS, by_group, draw_sample
from mutant import Mutant
from project import Project
from report import Report
from suites import Suites
from syntax import mutants_of
from trial import Outcome, Worker


def parse_command_line() -> argparse.Namespace:
    parser = argparse.ArgumentParser(prog="mutate", description="Lists the small changes that the tests do not notice.")
    parser.add_argument("root", type=Path, help=argparse.SUPPRESS)
    parser.add_argument("--sample", type=int, metavar="N", help="try N mutants, as many of each group; else all")
    parser.add_argument("--seed", type=int, default=1, metavar="S", help="which N (default: 1)")
    parser.add_argument("files", nargs="*", metavar="FILE[:LINE]", help="sources and headers (default: all)")
    return parser.parse_args()


def place_of(project: Project, text: str) -> tuple[str, int]:
    """File, named from the root, and line; 0 for all lines."""
    name, _, line = text.partition(":")
    file = os.path.relpath(Path(name).resolve(), project.root)
    if file not in project.sources and file not in project.headers:
        raise SystemExit(f"{name} is no source of the library that is compiled into the tests")
    return file, int(line or 0)


def mutants_in(project: Project, file: str, line: int) -> list[Mutant]:
    found = mutants_of(str(project.root), file, project.parse_arguments(file))
    return [mutant for mutant in found if line in (0, mutant.line)]


def try_all(project: Project, mutants: list[Mutant], report: Report) -> None:
    suites = Suites(project)
    workers: queue.SimpleQueue[Worker] = queue.SimpleQueue()
    count = os.cpu_count() or 1
    for number in range(count):
        workers.put(Worker(project, suites, number))

    def try_one(mutant: Mutant) -> Outcome:
        worker = workers.get()
        try:
            return worker.try_mutant(mutant)
        finally:
            workers.put(worker)

    with ThreadPoolExecutor(count) as executor:
        trials = {executor.submit(try_one, mutant): mutant for mutant in mutants}
        try:
            for trial in as_completed(trials):
                report.add(trials[trial], trial.result())
        except KeyboardInterrupt:
            executor.shutdown(wait=False, cancel_futures=True)


def main() -> int:
    signal.signal(signal.SIGTERM, signal.default_int_handler)  # the results until then are still reported
    arguments = parse_command_line()
    project = Project(arguments.root)
    places = [place_of(project, text) for text in arguments.files]
    places = places or [(file, 0) for file in project.usual_files()]
    with ThreadPoolExecutor(os.cpu_count()) as executor:
        found = executor.map(lambda place: mutants_in(project, *place), places)
        mutants = [mutant for each in found for mutant in each]
    equivalents = read_equivalents(project.root / "tests" / "mutation" / "equivalent.txt")
    check_equivalents(equivalents, mutants, [file for file, line in places if line == 0])
    groups = by_group(mutants)
    sample = draw_sample(mutants, arguments.sample or len(mutants), arguments.seed)
    report = Report(equivalents, {name: len(groups.get(name, [])) for name in GROUPS}, len(sample))
    try_all(project, sample, report)
    report.print_table()
    return 0 if report.is_good() else 1


if __name__ == "__main__":
    try:
        sys.exit(main())
    except EquivalentsError as error:
        sys.exit(str(error))
    except KeyboardInterrupt:
        sys.exit("interrupted before anything was tried")
