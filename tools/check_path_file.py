#!/usr/bin/python3
"""check_path_file.py HOST FOLDER: the tool paths that the host writes, read by a DXF library that is not ours.

Writes the drawings of examples/ with lead-ins from the plug-in in FOLDER. The library must find nothing to
correct, the objects in the order of cutting, and on each layer the lengths that the host has told."""

import collections
import json
import math
import pathlib
import subprocess
import sys
import tempfile

import ezdxf
import ezdxf.path

ROOT = pathlib.Path(__file__).resolve().parent.parent
FLATNESS = 1e-4  # mm between a curve and the chords whose lengths are summed
TOLERANCE = 1e-3  # of a length, by the chords and by what stands for Bezier curves


def length_of(entity):
    if entity.dxftype() == "POINT":
        return 0.0
    points = list(ezdxf.path.make_path(entity).flattening(FLATNESS))
    return sum(math.dist(a, b) for a, b in zip(points, points[1:]))


def run(host, folder, drawing, out):
    command = [host, drawing, "--json", "--order", "--dxf", out]
    command += ["--plugin", f"{folder}/leadin.so", "--technics", "T={LeadIn={Length=2}}"]
    return json.loads(subprocess.run(command, check=True, capture_output=True, text=True).stdout)


def faults(told, path):
    drawing = ezdxf.readfile(path)
    audit = drawing.audit()
    yield from (str(fault.message) for fault in [*audit.errors, *audit.fixes])
    if drawing.units != ezdxf.units.MM:
        yield f"the unit is {drawing.units}"
    layers = collections.defaultdict(list)
    for entity in drawing.modelspace():
        layers[entity.dxf.layer].append(length_of(entity))
    objects = [each for each in told["objects"] if each["kind"] != "text"]
    objects.sort(key=lambda each: each["cut_number"] or math.inf)
    lengths = [each["length_mm"] for each in objects]
    if len(lengths) != len(layers["CONTOURS"]):
        yield f"{len(layers['CONTOURS'])} contours, not {len(lengths)}"
    for number, (theirs, ours) in enumerate(zip(layers["CONTOURS"], lengths)):
        if not math.isclose(theirs, ours, rel_tol=TOLERANCE):
            yield f"contour {number} is {theirs} mm long, not {ours}"
    if not layers["LEAD_IN"] + layers["CUT"]:
        yield "no tool paths"


def main():
    host, folder = sys.argv[1:]
    failed = False
    drawings = sorted((ROOT / "examples/drawings").glob("*.dxf"))
    with tempfile.TemporaryDirectory() as scratch:
        for drawing in drawings:
            out = f"{scratch}/{drawing.stem}.dxf"
            for fault in faults(run(host, folder, str(drawing), out), out):
                failed = True
                print(f"{drawing.name}: {fault}", file=sys.stderr)
    if failed:
        sys.exit(1)
    print(f"the tool paths of {len(drawings)} drawings are read by an independent reader")


if __name__ == "__main__":
    main()
