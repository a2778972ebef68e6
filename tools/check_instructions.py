#!/usr/bin/env python3
"""check_instructions.py FOLDER [--update]: counts the instructions of eleven small works of the build in FOLDER under
valgrind, and compares them with tools/instructions/counts.txt.

Unlike times, counts are equal in every run on any machine, so that a small loss shows on a busy one. A work that takes
SLACK more than its count fails. One that takes as much less is named: --update writes all counts anew, so that the gain
is kept. Counts hold for one compiler and one C library: with others nothing is compared."""

import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys
import tempfile

COUNTS = pathlib.Path(__file__).parent / "instructions" / "counts.txt"
SLACK = 0.05  # what moves counts without a change of the work: where memory lies, how long a hash chain is
HEADER = """# Instructions of the works of tools/instructions, written by tools/check_instructions.py FOLDER --update.
# They hold for a Release build with
# {versions}
"""


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def count(program, work):
    with tempfile.TemporaryDirectory() as folder:
        run = subprocess.run(
            ["valgrind", "--tool=callgrind", "--toggle-collect=CountedWork", f"--callgrind-out-file={folder}/out", program, work],
            capture_output=True, text=True)
    collected = re.search(r"Collected : (\d+)", run.stderr)
    if run.returncode != 0 or not collected or int(collected[1]) == 0:
        sys.exit(f"instructions: '{work}' was not counted\n{run.stderr}")
    return int(collected[1])


def count_all(program):
    works = output_of(program).split()
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        return dict(zip(works, pool.map(lambda work: count(program, work), works)))


def read_counts():
    """The versions that the counts hold for, and the counts by their works."""
    lines = COUNTS.read_text().splitlines()
    versions = [line for line in lines if line.startswith("#")][-1].removeprefix("#").strip()
    return versions, {name: int(number) for name, number in (line.split() for line in lines if not line.startswith("#"))}


def compare(expected, counts):
    """Prints each work; true when none takes more than it did."""
    kept = expected.keys() == counts.keys()
    if not kept:
        print(f"the works differ from those in {COUNTS.name}: --update writes it anew")
    for work in (work for work in expected if work in counts):
        change = counts[work] / expected[work] - 1
        verdict = "MORE" if change > SLACK else "less: --update keeps the gain" if change < -SLACK else ""
        print(f"{work:<24} {counts[work]:>12} {change:>+8.1%} {verdict}".rstrip())
        kept = kept and change <= SLACK
    return kept


def main():
    program = str(pathlib.Path(sys.argv[1]) / "tools" / "instructions" / "qev_instructions")
    versions = output_of(program, "--versions").strip()
    if "--update" in sys.argv:
        counts = count_all(program)
        COUNTS.write_text(HEADER.format(versions=versions) + "".join(f"{work} {number}\n" for work, number in counts.items()))
        print(f"{COUNTS} has the counts of {len(counts)} works")
        return 0
    counted_with, expected = read_counts()
    if counted_with != versions:
        print(f"instructions are not compared: they were counted with {counted_with}; this is {versions}")
        return 0
    return 0 if compare(expected, count_all(program)) else "instructions: a work takes more than it did"


if __name__ == "__main__":
    sys.exit(main())
