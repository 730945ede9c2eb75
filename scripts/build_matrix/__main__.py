"""The program of scripts/matrix."""

from __future__ import annotations

import argparse
import os
import subprocess
import sys
from typing import NoReturn

from configurations import CONFIGURATIONS, ROOT, Configuration
from trial import Result, Trial


KNOWN = {each.name: each for each in CONFIGURATIONS}


class Parser(argparse.ArgumentParser):
    """Exits with the code for wrong usage that the scripts and the tool share."""

    def error(self, message: str) -> NoReturn:
        self.exit(4, f"{self.prog}: {message}\n")


def parse_command_line() -> argparse.Namespace:
    parser = Parser(prog="matrix", description="Builds and tests the project in many ways.")
    parser.add_argument("--list", action="store_true", help="show the configurations and what is done in each")
    parser.add_argument("names", nargs="*", metavar="NAME", help="configurations (default: all)")
    arguments = parser.parse_args()
    for name in arguments.names:
        if name not in KNOWN:
            parser.error(f"there is no configuration '{name}'; see matrix --list")
    return arguments


def print_list() -> None:
    for each in CONFIGURATIONS:
        print(f"{each.name:<22}{each.about:<50}{' '.join(each.steps)}")


def print_line(name: str, result: Result) -> None:
    if result.is_built:
        tests, failures = str(result.counts.tests), str(result.counts.failures)
    else:
        tests, failures = "-", "no build"
    print(f"{name:<22}{tests:>10}{failures:>10}{result.seconds:>10}", flush=True)


def try_all(configurations: list[Configuration]) -> bool:
    print(f"{'configuration':<22}{'tests':>10}{'failures':>10}{'seconds':>10}", flush=True)
    is_good = True
    for configuration in configurations:
        result = Trial(configuration).run()
        print_line(configuration.name, result)
        is_good = is_good and result.is_good
    return is_good


def main() -> int:
    arguments = parse_command_line()
    if arguments.list:
        print_list()
        return 0
    sections = ("tool", "test", "all", "linker", "matrix")
    subprocess.run([ROOT / "scripts" / "install-packages", *sections], check=True)
    os.environ["LC_ALL"] = "C.UTF-8"  # in other locales, wine supports only file names in ASCII
    return 0 if try_all([KNOWN[name] for name in arguments.names or KNOWN]) else 1


if __name__ == "__main__":
    sys.exit(main())
