#!/usr/bin/env python3
"""Runs the libFuzzer programs of a build, a few side by side, and says of each how much it has run and reached.

usage: run_fuzzers.py BUILD [--choose] [NAME...]

QEV_FUZZ_RUNS is the number of executions of each program; without it each runs for ten seconds. They begin with
fuzz/corpus/NAME; what a program has reached is kept in BUILD/corpus/NAME, where the next run goes on. Exits with 1 when
there is a finding, whose input is named; `BUILD/fuzz/fuzz_NAME INPUT` repeats it.

--choose runs nothing: it writes into fuzz/corpus/NAME the inputs of BUILD/corpus/NAME that reach most together."""

import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
LONGEST = 300  # bytes of an input: enough for a few contours, short enough to be quick
CHOSEN = 12  # inputs that stand for all: they reach more than half of what thousands do


def run(build, program):
    name = program.name.removeprefix("fuzz_")
    corpus = build / "corpus" / name
    first = ROOT / "fuzz" / "corpus" / name
    corpus.mkdir(parents=True, exist_ok=True)
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


def reached(program, corpus):
    """What libFuzzer says of each input of a folder: the features that it reaches."""
    with tempfile.TemporaryDirectory() as scratch:
        control = pathlib.Path(scratch, "control")
        subprocess.run([program, "-set_cover_merge=1", f"-merge_control_file={control}", scratch, corpus],
                       check=True, capture_output=True)
        lines = control.read_text().splitlines()
    files = lines[2:2 + int(lines[0])]  # after their number and that of those which were chosen before
    features = [line.split()[1:] for line in lines if line.startswith("FT ")]
    return {pathlib.Path(files[int(number)]): set(reach) for number, *reach in features}


def choose(build, program):
    name = program.name.removeprefix("fuzz_")
    corpus = build / "corpus" / name
    if not corpus.is_dir():
        return False, f"{name}: {corpus} is not there; run the program first"
    inputs = reached(program, corpus)
    first = ROOT / "fuzz" / "corpus" / name
    first.mkdir(exist_ok=True)
    for file in first.glob("chosen_*"):
        file.unlink()
    known = set()
    for i in range(min(CHOSEN, len(inputs))):
        best = max(inputs, key=lambda file: len(inputs[file] - known))
        known |= inputs[best]
        (first / f"chosen_{i + 1:02}").write_bytes(best.read_bytes())
    return True, f"{name:14} {len(known):>7,} of {len(set().union(*inputs.values())):>7,} features of {len(inputs):,} inputs"


def main():
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    build = pathlib.Path(sys.argv[1]).resolve()
    wanted = [name for name in sys.argv[2:] if name != "--choose"]
    job = choose if "--choose" in sys.argv else run
    programs = [file for file in sorted((build / "fuzz").glob("fuzz_*"))
                if os.access(file, os.X_OK) and file.is_file() and (not wanted or file.name.removeprefix("fuzz_") in wanted)]
    if not programs:
        sys.exit(f"no fuzz programs in {build}/fuzz")
    sound = True
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as jobs:
        for passed, text in jobs.map(lambda program: job(build, program), programs):
            print(text, flush=True)
            sound = sound and passed
    return 0 if sound else 1


if __name__ == "__main__":
    sys.exit(main())
