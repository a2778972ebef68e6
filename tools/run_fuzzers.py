#!/usr/bin/env python3
"""Runs the libFuzzer programs of a build, a few side by side, and says of each how much it has run and reached.

usage: run_fuzzers.py BUILD [NAME...]

QEV_FUZZ_RUNS is the number of executions of each program; without it each runs for ten seconds. What a program has
reached is kept in BUILD/corpus/NAME, where the next run goes on. Exits with 1 when there is a finding, whose input is
named; `BUILD/fuzz/fuzz_NAME INPUT` repeats it."""

import concurrent.futures
import os
import pathlib
import random
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
LONGEST = 300  # bytes of an input: enough for a few contours, short enough to be quick
SEEDS = 30  # random inputs to begin with: numbers are made of any bytes, which the fuzzer would have to grow first


def seeded(folder, name):
    if folder.exists():
        return
    folder.mkdir(parents=True)
    source = random.Random(name)
    for i in range(SEEDS):
        (folder / f"seed{i}").write_bytes(source.randbytes(source.choice((20, 60, 150, LONGEST))))


def run(build, program):
    name = program.name.removeprefix("fuzz_")
    corpus = build / "corpus" / name
    first = ROOT / "fuzz" / "corpus" / name
    seeded(corpus, name)
    runs = os.environ.get("QEV_FUZZ_RUNS")
    longest = max([LONGEST, *(file.stat().st_size for file in first.glob("*"))])
    command = [program, f"-max_len={longest}", "-timeout=30", "-rss_limit_mb=3000", "-print_final_stats=1", "-print_funcs=0", "-entropic=0",
               f"-runs={runs}" if runs else "-max_total_time=10", f"-artifact_prefix={corpus}-", corpus] + [first] * first.exists()
    ended = subprocess.run(command, capture_output=True, text=True, errors="replace", cwd=corpus.parent)
    said = ended.stderr
    features = re.findall(r" ft: (\d+)", said) or ["0"]
    numbers = dict(re.findall(r"stat::(\w+):\s+(\d+)", said))
    line = (f"{name:14} {int(numbers.get('number_of_executed_units', 0)):>9,} executions"
            f" {int(numbers.get('average_exec_per_sec', 0)):>7,} a second {int(features[-1]):>7,} features")
    if ended.returncode == 0:
        return True, line
    why = re.findall(r"^(?:  what\(\): .*|.*runtime error: .*|SUMMARY: .*|.*Test unit written to .*)$", said, re.M)
    return False, "\n    ".join([line, *(why or said.splitlines()[-5:])])


def main():
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    build = pathlib.Path(sys.argv[1]).resolve()
    wanted = sys.argv[2:]
    programs = [file for file in sorted((build / "fuzz").glob("fuzz_*"))
                if os.access(file, os.X_OK) and file.is_file() and (not wanted or file.name.removeprefix("fuzz_") in wanted)]
    if not programs:
        sys.exit(f"no fuzz programs in {build}/fuzz")
    sound = True
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as jobs:
        for passed, text in jobs.map(lambda program: run(build, program), programs):
            print(text, flush=True)
            sound = sound and passed
    return 0 if sound else 1


if __name__ == "__main__":
    sys.exit(main())
