"""Proves what the kernels on blocks of characters do, for all of their inputs.

clang compiles tests/proofs/kernels.cpp to straight-line code. z3 checks the code against the claims: a condition is
proved if no inputs violate it. The proof is about the code itself, not about a copy.
"""

import argparse
import multiprocessing
import pathlib
import re
import subprocess
import sys
import tempfile
import time

import z3

from claims import CLAIMS
from llvm_ir import Module, NotSupported

ROOT = pathlib.Path(__file__).resolve().parents[2]
KERNELS = ROOT / "tests/proofs/kernels.cpp"
COMPILER = [
    "clang++-14", "-std=c++20", "-O2", "-fno-exceptions", "-I", str(ROOT), "-S", "-emit-llvm", "-o", "-",
    # Straight-line code: everything is inlined, loops are unrolled, and only the source's own vectors remain.
    "-fno-vectorize", "-fno-slp-vectorize", "-mllvm", "-inline-threshold=1000000", "-mllvm", "-unroll-threshold=100000",
]  # fmt: skip


def compiled(source):
    return subprocess.run([*COMPILER, str(source)], check=True, capture_output=True, text=True).stdout


def inputs_that_break(condition):
    """The inputs for which the condition does not hold, as a text; None if there are none.

    The condition may be a list of arithmetically equal conditions: the first one that is decided counts.
    """
    forms = condition if isinstance(condition, list) else [condition]
    for seconds in (5, 60, 600):
        for form in forms:
            solver = z3.SolverFor("QF_BV")
            solver.set("timeout", 1000 * seconds)
            solver.add(z3.Not(form))
            answer = solver.check()
            if answer == z3.unsat:
                return None
            if answer == z3.sat:
                model = solver.model()
                return ", ".join(sorted(f"{each} = {model[each].as_long():#x}" for each in model.decls()))
    return "not decided in time"


def prove_kernel(name_and_text):
    """The name of a kernel, the inputs that refute a claim (None if there are none), and the number of proved
    conditions."""
    name, text = name_and_text
    begin = time.process_time()
    conditions = []
    found = None
    try:
        conditions = CLAIMS[name](Module(text), name)
        for number, condition in enumerate(conditions, 1):
            inputs = inputs_that_break(condition)
            if inputs is not None:
                found = f"condition {number}: {inputs}"
                break
    except NotSupported as problem:
        found = f"cannot be read: {problem}"
    return name, found, len(conditions), time.process_time() - begin


def prove(names, source):
    """Prints the result of each kernel; true if everything is proved."""
    text = compiled(source)
    defined = re.findall(r"^define (?!internal|linkonce)[^@]*@(\w+)\(", text, re.M)
    without = sorted(set(defined) - set(CLAIMS))
    if without:
        sys.exit(f"nothing is claimed of {', '.join(without)}")
    unknown = sorted(set(names) - set(defined))
    if unknown:
        sys.exit(f"there is no kernel {', '.join(unknown)}")

    proved = conditions = failed = 0
    with multiprocessing.Pool() as pool:
        for name, found, count, seconds in pool.imap(prove_kernel, [(name, text) for name in names or defined]):
            print(f"{name}: {found or 'proved'} ({seconds:.1f} s)", flush=True)
            failed += found is not None
            proved += found is None
            conditions += count if found is None else 0
    print(f"kernels proved for all inputs: {proved}, with {conditions} conditions; not proved: {failed}")
    return failed == 0


def try_every_input():
    """Runs tests/proofs/every_input.cpp; true if it finds no fault."""
    with tempfile.TemporaryDirectory() as folder:
        program = pathlib.Path(folder, "every_input")
        sources = [ROOT / "tests/proofs/every_input.cpp", ROOT / "kvr/memory/io/predicted_address.cpp"]
        subprocess.run(["clang++-14", "-std=c++20", "-O2", "-I", ROOT, *sources, "-o", program], check=True)
        return subprocess.run([program], check=False).returncode == 0


def main():
    parser = argparse.ArgumentParser(prog="prove", description=__doc__.splitlines()[0])
    parser.add_argument("--source", type=pathlib.Path, help="kernels in place of those of tests/proofs/kernels.cpp")
    parser.add_argument("names", nargs="*", metavar="KERNEL", help="only these; else all, and every_input.cpp")
    options = parser.parse_args()

    is_proved = prove(options.names, options.source or KERNELS)
    if not options.names and options.source is None:
        is_proved = try_every_input() and is_proved
    sys.exit(0 if is_proved else 1)


main()
