#!/usr/bin/env python3
"""Checks the house rules that a compiler does not: format, ASCII, who includes whom, the share of tests.

Prints one line for each fault and exits with 1 when there is one."""

import itertools
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
TEST_SHARE = (0.25, 0.38)  # lines of tests and fuzz programs for each other line, benchmarks aside; the aim is a third

STANDARD = r"<[a-z_0-9]+>"
OCCT = r"<gp_\w+\.hxx>"
LUA = r"<lua\.hpp>"
PUBLIC = r"<qev/[\w/]+\.h>"
# What the files under a folder may include besides the private headers beside them. The longest folder counts.
MAY_INCLUDE = {
    "math": (STANDARD, OCCT, r"<qevmath/\w+\.h>", r"<qev/export\.h>"),
    "data": (STANDARD, OCCT, r"<qev(math|data)/\w+\.h>", r"<qev/(export|platform)\.h>"),
    "platform": (STANDARD, r"<qev/platform\.h>", r'"\.\./\w+\.h"'),
    "platform/win32": (STANDARD, r"<(windows|shlwapi|gdiplus)\.h>", r'"\.\./\w+\.h"'),
    "platform/posix": (STANDARD, r"<(dlfcn|gdk-pixbuf/gdk-pixbuf)\.h>", r'"\.\./\w+\.h"'),
    "include": (STANDARD, r"<(afxwin|atlimage)\.h>", PUBLIC, r"<qev(math|data)/\w+\.h>"),
    "common/contour": (STANDARD, OCCT, PUBLIC, r"<qev(math|data)/\w+\.h>"),
    "common/geometry": (STANDARD, OCCT, PUBLIC, r"<qev(math|data)/\w+\.h>", r'"\.\./contour/(cad_kinds|tolerance)\.h"'),
    "common/message": (STANDARD, r"<qev/message\.h>"),
    "common/units": (STANDARD, r"<qev/units/\w+\.h>", r'"platform/dialog\.h"'),
    "common/support": (STANDARD, r"<qev/support/\w+\.h>", r"<qevdata/\w+\.h>", r'"platform/image\.h"',
                       r'"\.\./contour/(cad_kinds|tolerance)\.h"'),
    "common/script": (STANDARD, LUA, r"<qev/lua/\w+\.h>"),
    "bench": (STANDARD, LUA, PUBLIC, r"<benchmark/benchmark\.h>", r'"(support|message)/\w+\.h"'),
    "common/technics": (STANDARD, LUA, PUBLIC, r"<qevdata/\w+\.h>", r'"\.\./script/(cursor_scope|protect)\.h"', r'"platform/\w+\.h"'),
    "examples": (STANDARD, r"<qev(math|data)?/[\w/]+\.h>", r'"contours/\w+\.h"'),
    "tools/digest": (STANDARD, OCCT, r"<qev(math|data)?/[\w/]+\.h>"),
    "examples/dialog": (STANDARD, PUBLIC, r"<windows\.h>"),
    "fuzz": (STANDARD, LUA, r"<qev(math|data)?/[\w/]+\.h>", r'"host/\w+\.h"'),
    "examples/settings": (STANDARD, LUA, PUBLIC),
    "tests/script": (STANDARD, LUA, r"<iconv\.h>", PUBLIC, r"<gtest/gtest\.h>", r'"(script|support)/\w+\.h"'),
    "tests": (STANDARD, OCCT, r"<qev(math|data)?/[\w/]+\.h>", r"<gtest/gtest\.h>", r'"(host|support|platform|technics)/\w+\.h"',
              r'"(\.\./)+(math|data|common)/[\w/]+\.h"'),
    "tests/lifetime": (STANDARD, LUA, PUBLIC, r"<gtest/gtest\.h>", r'"platform/\w+\.h"'),
    "tests/support/win32": (STANDARD, r"<windows\.h>", r'"support/\w+\.h"'),
}
# The contour and geometry families need each other, so their order is by file: each uses what stands before it.
ORDER = (
    "positions measures point_tests selection filters co_edge stock",
    "sub_contour arc_math polyline_conversion converted_position length_between hull",
    "directions nearest_position",
    "position_conversion",
    "offset_walk sharp_joints segment_map",
    "ranges",
    "invalid_ranges",
)
RANK = {name: rank for rank, names in enumerate(ORDER) for name in names.split()}


def tracked(*patterns):
    listed = subprocess.run(["git", "ls-files", "-z", "-co", "--exclude-standard", *patterns], cwd=ROOT, check=True, capture_output=True, text=True)
    return [name for name in listed.stdout.split("\0") if name and (ROOT / name).exists()]


def format_faults(sources):
    run = subprocess.run(["clang-format", "--dry-run", "-Werror", *sources], cwd=ROOT, capture_output=True, text=True)
    for line in run.stderr.splitlines():
        if "error:" in line:
            yield line


def ascii_faults(names):
    for name in names:
        for number, line in enumerate((ROOT / name).read_bytes().splitlines(), 1):
            if not line.isascii():
                yield f"{name}:{number}: not ASCII"


def folder_of(name):
    folders = [folder for folder in MAY_INCLUDE if name.startswith(folder + "/")]
    return max(folders, key=len, default=None)


def is_private_header(name, included):
    return included[0] == '"' and "/" not in included and (ROOT / name).with_name(included.strip('"')).exists()


def order_fault(name, included):
    """Whether a file of the contour and geometry families looks at one that does not stand before it."""
    subject = re.fullmatch(r"<qev/(?:contour|geometry)/(\w+)\.h>", included)
    own = pathlib.PurePath(name).stem
    if not subject or not name.startswith(("common/contour/", "common/geometry/")) or subject[1] == own:
        return False
    return own not in RANK or subject[1] not in RANK or RANK[subject[1]] >= RANK[own]


def include_faults(sources):
    for name in sources:
        folder = folder_of(name)
        if not folder:
            yield f"{name}: its folder has no row in MAY_INCLUDE"
            continue
        for number, line in enumerate((ROOT / name).read_text().splitlines(), 1):
            match = re.match(r'\s*#\s*include\s*(<[^>]+>|"[^"]+")', line)
            if not match:
                continue
            included = match[1]
            allowed = any(re.fullmatch(pattern, included) for pattern in MAY_INCLUDE[folder])
            if not (allowed or is_private_header(name, included)) or order_fault(name, included):
                yield f"{name}:{number}: may not include {included}"


def lines_of_code(name):
    text = re.sub(r"/\*.*?\*/", "", (ROOT / name).read_text(), flags=re.S)
    return sum(1 for line in text.splitlines() if (code := line.strip()) and not code.startswith("//"))


def share_faults(sources):
    counts = {True: 0, False: 0}
    for name in sources:
        if not name.startswith("bench/"):
            counts[name.startswith(("tests/", "fuzz/"))] += lines_of_code(name)
    share = counts[True] / counts[False]
    print(f"tests: {counts[True]} lines, other code: {counts[False]} lines, share {share:.2f}")
    if not TEST_SHARE[0] <= share <= TEST_SHARE[1]:
        yield f"the share of tests is outside {TEST_SHARE[0]} to {TEST_SHARE[1]}"


def main():
    sources = tracked("*.h", "*.cpp")
    texts = sources + tracked("*.py", "*.cmake", "*.txt", "*.md", "*.json", "check", "demo", "bench/run", "tools/*", ".ci/*")
    faults = list(itertools.chain(format_faults(sources), ascii_faults(texts), include_faults(sources), share_faults(sources)))
    print("\n".join(faults) or f"{len(sources)} sources keep the house rules")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
