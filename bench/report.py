#!/usr/bin/env python3
"""report.py RESULTS PLOT: prints what the benchmarks measured as a table, and writes PLOT.csv and PLOT.svg.

RESULTS is a folder with NAME.json of each program and NAME.names, its rows in the order in which they were added. The
fastest peer of a work counts. Exit code 1 when answers differed or a ratio is above its bound."""

import csv
import dataclasses
import json
import math
import pathlib
import sys
from xml.sax.saxutils import escape

OURS, BY_HAND = "ours", "by hand"


@dataclasses.dataclass
class Ratio:
    """Ours as a multiple of another row's, and what it may be at most (0: nothing is promised)."""

    name: str
    value: float
    bound: float

    def is_above(self):
        return 0 < self.bound < self.value


@dataclasses.dataclass
class Work:
    """What a work's rows took, in ns, and how many pieces they made."""

    subject: str
    times: dict = dataclasses.field(default_factory=dict)
    pieces: dict = dataclasses.field(default_factory=dict)
    bounds: tuple = (0.0, 0.0, 0.0)
    error: str = ""

    def best_peer(self):
        peers = [who for who in self.times if who not in (OURS, BY_HAND)]
        return min(peers, key=self.times.get, default=None)

    def ratios(self):
        for other, bound in ((self.best_peer(), self.bounds[0]), (BY_HAND, self.bounds[1])):
            if other in self.times:
                yield Ratio(other, self.times[OURS] / self.times[other], bound)
        if BY_HAND in self.pieces:
            yield Ratio("pieces", self.pieces[OURS] / self.pieces[BY_HAND], self.bounds[2])


def split(name):
    return name.rsplit("/", 1)


NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


def read_program(names, result):
    works = {}
    for name in names.read_text().splitlines():
        works.setdefault(split(name)[0], Work(split(name)[0]))
    for row in json.loads(result.read_text())["benchmarks"]:
        subject, who = split(row["run_name"])
        work = works[subject]
        if row.get("error_occurred"):
            work.error = row["error_message"]
        elif row.get("aggregate_name") == "median":
            work.times[who] = row["cpu_time"] * NANOSECONDS[row["time_unit"]]
            if "pieces" in row:
                work.pieces[who] = row["pieces"]
            if who == OURS:
                work.bounds = tuple(float(bound) for bound in row["label"].split()[1:])
    return list(works.values())


def short_time(ns):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("us", 1e3)):
        if ns >= size:
            return f"{ns / size:.3g} {unit}"
    return f"{ns:.3g} ns"


def short_ratio(ratio):
    digits = f"{ratio.value:.3g} x {ratio.name}"
    if not ratio.bound:
        return digits
    return f"{digits} (at most {ratio.bound:.3g}{', ABOVE' if ratio.is_above() else ''})"


def print_table(programs):
    for program, works in programs.items():
        print(f"\n{program:<36} {'ours':>9} {'peer':>9} {'by hand':>9}   ours is")
        for work in works:
            if work.error:
                print(f"{work.subject:<36} ANSWERS DIFFER: {work.error}")
                continue
            cells = (work.times.get(who) for who in (OURS, work.best_peer(), BY_HAND))
            times = " ".join(f"{short_time(ns) if ns else '-':>9}" for ns in cells)
            print(f"{work.subject:<36} {times}   {'; '.join(map(short_ratio, work.ratios()))}")


def write_csv(programs, path):
    with path.open("w", newline="") as file:
        writer = csv.writer(file)
        writer.writerow(["program", "work", "row", "ns", "pieces", "ours as a multiple", "at most"])
        for program, works in programs.items():
            for work in works:
                ratios = {ratio.name: ratio for ratio in work.ratios()} if not work.error else {}
                for who, ns in work.times.items():
                    ratio = ratios.get(who)
                    writer.writerow([program, work.subject, who, f"{ns:.4g}", work.pieces.get(who, ""),
                                     f"{ratio.value:.4g}" if ratio else "", f"{ratio.bound:.4g}" if ratio and ratio.bound else ""])


class Plot:
    """Ratios as dots on a logarithmic axis, a line of text and dots for each work; a bar stands where the bound is."""

    ROW, TEXT_WIDTH, WIDTH, TOP, RIGHT = 17, 290, 620, 92, 30
    COLOURS = {"peer": "#1f6fb4", BY_HAND: "#d9730d", "pieces": "#5b8c3a"}
    ABOVE = "#c2182b"

    def __init__(self, programs):
        ratios = [ratio for works in programs.values() for work in works if not work.error for ratio in work.ratios()]
        values = [v for ratio in ratios for v in (ratio.value, ratio.bound) if v > 0] + [0.1, 10]
        self.low, self.high = math.floor(math.log10(min(values))), math.ceil(math.log10(max(values)))
        self.parts = []
        self.y = self.TOP
        for program, works in programs.items():
            self.y += self.ROW * 0.6
            self.text(12, self.y + 4, program, weight="bold")
            self.y += self.ROW
            for work in works:
                self.work(work)
        self.axis()

    def x(self, value):
        return self.TEXT_WIDTH + self.WIDTH * (math.log10(value) - self.low) / (self.high - self.low)

    def text(self, x, y, text, anchor="start", colour="#222", weight="normal"):
        self.parts.append(f'<text x="{x:.1f}" y="{y:.1f}" text-anchor="{anchor}" fill="{colour}" font-weight="{weight}">{escape(text)}</text>')

    def line(self, x1, y1, x2, y2, colour, width):
        self.parts.append(f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" stroke="{colour}" stroke-width="{width}"/>')

    def dot(self, x, y, kind):
        colour = self.COLOURS[kind]
        if kind == "peer":
            self.parts.append(f'<circle cx="{x:.1f}" cy="{y:.1f}" r="4.5" fill="{colour}"/>')
        elif kind == BY_HAND:
            self.parts.append(f'<path d="M{x - 5:.1f} {y:.1f}l5 -5 5 5 -5 5z" fill="{colour}"/>')
        else:
            self.parts.append(f'<rect x="{x - 3.5:.1f}" y="{y - 3.5:.1f}" width="7" height="7" fill="{colour}"/>')

    def bound(self, x, y, kind):
        self.line(x, y - 7, x, y + 7, self.COLOURS[kind], 2.5)

    def work(self, work):
        ratios = [] if work.error else list(work.ratios())
        above = bool(work.error) or any(ratio.is_above() for ratio in ratios)
        self.text(self.TEXT_WIDTH - 12, self.y + 4, work.subject, "end", self.ABOVE if above else "#222")
        self.line(self.TEXT_WIDTH, self.y, self.TEXT_WIDTH + self.WIDTH, self.y, "#eee", 1)
        for ratio in ratios:
            kind = ratio.name if ratio.name in self.COLOURS else "peer"
            if ratio.bound:
                self.bound(self.x(ratio.bound), self.y, kind)
            self.dot(self.x(ratio.value), self.y, kind)
        if work.error:
            self.text(self.TEXT_WIDTH + 8, self.y + 4, "answers differ", colour=self.ABOVE)
        self.y += self.ROW

    def axis(self):
        lines, self.parts = self.parts, []
        for power in range(self.low, self.high + 1):
            x = self.x(10.0**power)
            self.line(x, self.TOP - 6, x, self.y, "#888" if power == 0 else "#ddd", 1.5 if power == 0 else 1)
            self.text(x, self.TOP - 12, f"{10.0 ** power:g}", "middle")
        self.text(12, 24, "Our time as a multiple of others' in the same run: less is better", weight="bold")
        x = 18
        for kind, label in (("peer", "of the fastest peer"), (BY_HAND, "of raw code by hand"), ("pieces", "pieces, of those by hand")):
            self.dot(x, 46, kind)
            self.text(x + 10, 50, label)
            x += 40 + 6.3 * len(label)
        self.bound(x, 46, "peer")
        self.text(x + 10, 50, "what is promised at most, in the dot's colour; ")
        self.text(x + 285, 50, "red: not kept", colour=self.ABOVE)
        self.parts += lines

    def svg(self):
        width, height = self.TEXT_WIDTH + self.WIDTH + self.RIGHT, self.y + 10
        return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height:.0f}" font-family="sans-serif" font-size="12">\n'
                f'<rect width="100%" height="100%" fill="white"/>\n' + "\n".join(self.parts) + "\n</svg>\n")


def main():
    results, plot = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    programs = {result.stem: read_program(result.with_suffix(".names"), result) for result in sorted(results.glob("*.json"))}
    print_table(programs)
    write_csv(programs, plot.with_suffix(".csv"))
    plot.with_suffix(".svg").write_text(Plot(programs).svg())
    works = [work for listed in programs.values() for work in listed]
    wrong = sum(bool(work.error) for work in works)
    above = sum(ratio.is_above() for work in works if not work.error for ratio in work.ratios())
    print(f"\n{len(works)} works, {wrong} with different answers, {above} ratios above their bound; {plot}.csv, {plot}.svg")
    return 1 if wrong or above or not works else 0


if __name__ == "__main__":
    sys.exit(main())
