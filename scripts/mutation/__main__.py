"""The program of scripts/mutate."""

from __future__ import annotations

import argparse
import fcntl
import os
import queue
import signal
import sys
from collections.abc import Callable, Iterable, Iterator
from concurrent.futures import ThreadPoolExecutor, as_completed
from functools import partial
from pathlib import Path
from typing import TypeVar

from batch import Batch, batches_of
from cases import Cases
from catalog import mutants_in
from equivalents import EquivalentsError, check_equivalents, read_equivalents
from groups import draw_sample, folder_of, group_of
from mutant import Mutant
from progress import Progress
from project import Project
from record import Record
from report import Report
from suites import Suites
from trial import Outcome, Worker

T = TypeVar("T")
R = TypeVar("R")


def parse_command_line() -> argparse.Namespace:
    parser = argparse.ArgumentParser(prog="mutate", description="Lists the small changes that the tests do not notice.")
    parser.add_argument("root", type=Path, help=argparse.SUPPRESS)
    parser.add_argument("--sample", type=int, metavar="N", help="try N mutants, as many of each group; else all")
    parser.add_argument("--seed", type=int, default=1, metavar="S", help="which N (default: 1)")
    parser.add_argument("--jobs", type=int, default=os.cpu_count() or 1, metavar="N", help="try N at a time")
    parser.add_argument(
        "--record",
        type=Path,
        metavar="FILE",
        help="keep outcomes in FILE and try only what has none there: run again, it goes on where it was interrupted",
    )
    parser.add_argument("--retry", action="store_true", help="with --record: try again what has survived")
    parser.add_argument("--report", action="store_true", help="try nothing, show what --record has and what it lacks")
    parser.add_argument(
        "files", nargs="*", metavar="FILE[:LINE]", help="sources, headers and folders (default: the libraries)"
    )
    return parser.parse_intermixed_args()


def places_of(project: Project, text: str) -> list[tuple[str, int]]:
    """The files, as paths from the root, and the line; 0 for all lines."""
    name, _, line = text.partition(":")
    file = os.path.relpath(Path(name).resolve(), project.root)
    if file in project.sources or file in project.headers:
        return [(file, int(line or 0))]
    below = [(each, 0) for each in project.usual_files() if each.startswith(f"{file}/")]
    if not below:
        raise SystemExit(f"{name} is no source of a library that is compiled into the tests")
    return below


def find_mutants(project: Project, places: list[tuple[str, int]], jobs: int) -> list[Mutant]:
    found = mutants_in(project, {file for file, _ in places}, jobs)
    return [mutant for file, line in places for mutant in found[file] if line in (0, mutant.line)]


class Trials:
    """Tries several mutants at a time."""

    def __init__(self, project: Project, mutants: list[Mutant], known: set[Mutant], jobs: int) -> None:
        """The known mutants have survived before, so their code differs from the original."""
        self.project = project
        self.mutants = mutants
        self.known = known
        self.suites = Suites(project)
        self.executor = ThreadPoolExecutor(jobs)
        has_cases = any(project.has_cases(mutant.file) for mutant in mutants)
        cases = Cases(project, project.tool.path, self.executor) if has_cases else None
        self.workers: queue.SimpleQueue[Worker] = queue.SimpleQueue()
        for number in range(jobs):
            self.workers.put(Worker(project, self.suites, cases, number))

    def outcomes(self) -> Iterator[tuple[Mutant, Outcome]]:
        """Tries the mutants in batches first, because they take a fraction of the time."""
        self.project.make_helpers()
        self._check_libraries()
        alone: list[Mutant] = []
        for mutants in batches_of(self.project, self.mutants):
            batch = Batch(self.project, self.suites, mutants, self.executor)
            alone += batch.alone
            yield from ((mutant, Outcome.NOT_COMPILED) for mutant in batch.not_compiled.values())
            for number, outcome in self._each(partial(self._try_in_batch, batch), batch.numbered):
                if outcome is None:
                    alone.append(batch.numbered[number])
                else:
                    yield batch.numbered[number], outcome
        yield from self._each(lambda mutant: self._with_worker(Worker.try_mutant, mutant), alone)

    def close(self) -> None:
        self.executor.shutdown(wait=False, cancel_futures=True)

    def _check_libraries(self) -> None:
        file_of = {self.project.program_of(mutant.file): mutant.file for mutant in self.mutants}
        for file in file_of.values():
            self._with_worker(Worker.check, file)

    def _try_in_batch(self, batch: Batch, number: int) -> Outcome | None:
        """None if the mutant must be tried alone, because the compiler evaluates the original in a batch."""
        if batch.is_noticed(number):
            return Outcome.NOTICED
        mutant = batch.numbered[number]
        if mutant.part is not None and mutant.part.is_constant:
            return None
        if mutant in self.known:
            return Outcome.SURVIVED
        return self._with_worker(Worker.outcome_of_survivor, mutant)

    def _with_worker(self, task: Callable[[Worker, T], R], tried: T) -> R:
        worker = self.workers.get()
        try:
            return task(worker, tried)
        finally:
            self.workers.put(worker)

    def _each(self, task: Callable[[T], R], tried: Iterable[T]) -> Iterator[tuple[T, R]]:
        running = {self.executor.submit(task, each): each for each in tried}
        for trial in as_completed(running):
            yield running[trial], trial.result()


def try_all(project: Project, mutants: list[Mutant], jobs: int, record: Record) -> None:
    progress = Progress(len(mutants))
    known = {mutant for mutant in mutants if record.outcome_of(mutant) == Outcome.SURVIVED}
    trials = Trials(project, mutants, known, jobs)
    try:
        for mutant, outcome in trials.outcomes():
            record.add(mutant, outcome)
            progress.add(outcome)
    except KeyboardInterrupt:
        pass  # the results so far are reported
    finally:
        trials.close()


def main() -> int:
    signal.signal(signal.SIGTERM, signal.default_int_handler)  # the results so far are still reported
    arguments = parse_command_line()
    project = Project(arguments.root)
    places = [place for text in arguments.files for place in places_of(project, text)]
    places = places or [(file, 0) for file in project.usual_files()]
    mutants = find_mutants(project, places, arguments.jobs)
    equivalents = read_equivalents(project.root / "tests" / "mutation" / "equivalent")
    check_equivalents(equivalents, mutants, [file for file, line in places if line == 0])
    record = Record(project.root, arguments.record)
    untried = {None, Outcome.SURVIVED} if arguments.retry else {None}
    sample = draw_sample(mutants, arguments.sample or len(mutants), arguments.seed)
    if not arguments.report:
        with (project.build / "trials.lock").open("w") as lock:
            fcntl.flock(lock, fcntl.LOCK_EX)  # two runs would use the same folders
            try_all(project, [each for each in sample if record.outcome_of(each) in untried], arguments.jobs, record)
    report = Report(equivalents, folder_of if arguments.record or arguments.report else group_of, mutants)
    for mutant in mutants:
        if outcome := record.outcome_of(mutant):
            report.add(mutant, outcome)
    report.print()
    return 0 if report.is_good() else 1


if __name__ == "__main__":
    try:
        sys.exit(main())
    except EquivalentsError as error:
        sys.exit(str(error))
    except KeyboardInterrupt:
        sys.exit("interrupted before anything was tried")
