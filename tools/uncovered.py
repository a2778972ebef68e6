#!/usr/bin/env python3
"""Compares the lines that no test runs with those that are listed, each with its reason, in tools/uncovered.

usage: uncovered.py REPORT, which is gcovr's in JSON

Exits with 1 when a line is missing in the list, or when the list has one that is run or is no longer there."""

import json
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent


def uncovered(report):
    """What an entry of the list begins with, for each line that no test runs."""
    for file in report["files"]:
        code = (ROOT / file["file"]).read_text().splitlines()
        for line in file["lines"]:
            if line["count"] == 0 and not line.get("gcovr/noncode"):
                yield f"{file['file']} | {code[line['line_number'] - 1].strip()} | "


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    listed = [line for line in (ROOT / "tools/uncovered").read_text().splitlines() if line and not line.startswith("#")]
    found = sorted(set(uncovered(json.loads(pathlib.Path(sys.argv[1]).read_text()))))
    missing = [line for line in found if not any(entry.startswith(line) for entry in listed)]
    stale = [entry for entry in listed if not entry.startswith(tuple(found))]
    for line in missing:
        print(f"no test runs it, and no reason is listed: {line}")
    for entry in stale:
        print(f"listed, but a test runs it or it is gone: {entry}")
    print(f"{len(found) - len(missing)} lines that no test runs are listed with a reason, {len(missing)} are not")
    return 1 if missing or stale else 0


if __name__ == "__main__":
    sys.exit(main())
