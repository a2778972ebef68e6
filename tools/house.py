#!/usr/bin/env python3
"""Checks the house rules that a compiler does not: format, ASCII, who includes whom, the share of tests, comments of
declarations that lean on another, assertions that join facts.

Prints one line for each fault and exits with 1 when there is one."""

import itertools
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
TEST_SHARE = (0.25, 0.38)  # lines of tests and fuzz programs for each line of other code, scripts counted and benchmarks not

STANDARD = r"<[a-z_0-9]+>"
OCCT = r"<gp_\w+\.hxx>"
LUA = r"<lua\.hpp>"
FREETYPE = r"<(ft2build|freetype/\w+)\.h>"
BASE = r"<qev/(types|export|platform|version)\.h>"  # the headers of the lowest layer
LAYERS = r"<qev(math|data)/\w+\.h>"
PUBLIC = r"<qev/[\w/]+\.h>"
KIT = r"<qevtechnics/\w+\.h>"
TESTED = r'"(\.\./)+(math|data|common)/[\w/]+\.h"'  # a private header that a test looks at

# Rooms in the order in which they know each other: each uses those before it, none those behind it.
COMMON_ROOMS = ("kinds", "measure", "position", "range")
HOST_ROOMS = ("drawing", "dxf", "path", "report", "picture", "actions")


def up_to(rooms, room):
    return "|".join(rooms[: rooms.index(room) + 1])


# What the files under a folder may include besides the private headers beside them. The longest folder counts.
MAY_INCLUDE = {
    "math": (STANDARD, OCCT, r"<qevmath/\w+\.h>", r"<qev/(export|version)\.h>"),
    "math/include/qev": (STANDARD, BASE),
    "data": (STANDARD, OCCT, LAYERS, BASE),
    "platform": (STANDARD, r"<qev/platform\.h>", r'"\.\./\w+\.h"'),
    "platform/win32": (STANDARD, r"<(windows|shlwapi|gdiplus)\.h>", r'"\.\./\w+\.h"'),
    "platform/posix": (STANDARD, r"<(dlfcn|gdk-pixbuf/gdk-pixbuf|iconv|link|sys/auxv|sys/stat|unistd)\.h>", r'"\.\./\w+\.h"'),
    "include": (STANDARD, BASE, PUBLIC, LAYERS),
    "common/message": (STANDARD, r"<qev/message\.h>"),
    "common/units": (STANDARD, r"<qev/units/\w+\.h>", r'"platform/dialog\.h"'),
    "common/support": (STANDARD, r"<qev/support/\w+\.h>", r"<qevdata/\w+\.h>", r'"platform/(file_status|image)\.h"', r'"\.\./kinds/\w+\.h"'),
    "common/script": (STANDARD, LUA, r"<qev/script/\w+\.h>"),
    "common/technics": (STANDARD, LUA, BASE, r"<qev/(technics|script|measure)/\w+\.h>", r"<qevdata/\w+\.h>",
                        r'"\.\./script/(protect|texts)\.h"', r'"platform/\w+\.h"'),
    "kit": (STANDARD, PUBLIC, LAYERS, KIT),
    "host": (STANDARD, PUBLIC, LAYERS, KIT, r"<CLI/CLI\.hpp>", r'"platform/terminal\.h"', r'"host/[\w/]+\.h"'),
    "examples": (STANDARD, PUBLIC, LAYERS, KIT),
    "examples/dialog": (STANDARD, PUBLIC, r"<windows\.h>"),
    "examples/settings": (STANDARD, LUA, PUBLIC),
    "docs/guides": (STANDARD, LUA, PUBLIC, LAYERS),
    "bench": (STANDARD, LUA, PUBLIC, r"<benchmark/benchmark\.h>", r'"(support|by_hand|peers|message)/\w+\.h"', r'"host/[\w/]+\.h"'),
    "bench/growth": (STANDARD, OCCT, PUBLIC, r"<malloc\.h>", r'"support/\w+\.h"'),
    "bench/peers": (STANDARD, LUA, PUBLIC, r"<(boost|CGAL|geos|sigc\+\+)/[\w/+]+\.(hpp|h)>", r"<\w+\.hxx>"),
    "fuzz": (STANDARD, OCCT, LUA, PUBLIC, LAYERS, r"<gtest/gtest\.h>", r'"((host|support|technics)/[\w/]+|targets)\.h"'),
    "tools/digest": (STANDARD, OCCT, PUBLIC, LAYERS),
    "tools/instructions": (STANDARD, LUA, PUBLIC, r"<gnu/libc-version\.h>"),
    "tools/hostile": (STANDARD, r'"support/\w+\.h"'),
    "tools/soak": (STANDARD, OCCT, LUA, PUBLIC, r"<unistd\.h>", r'"technics/test_operator\.h"'),
    "tests": (STANDARD, OCCT, PUBLIC, LAYERS, KIT, r"<gtest/gtest\.h>", r'"(examples|host|measure|support|platform|technics)/[\w/]+\.h"', TESTED),
    "tests/host": (STANDARD, FREETYPE, PUBLIC, LAYERS, r"<gtest/gtest\.h>", r'"(host|support)/[\w/]+\.h"'),
    "tests/script": (STANDARD, LUA, r"<iconv\.h>", PUBLIC, r"<gtest/gtest\.h>", r'"(script|support)/\w+\.h"'),
    "tests/hostile": (STANDARD, r'"(hostile|support|platform)/\w+\.h"'),
    "tests/technics": (STANDARD, LUA, PUBLIC, LAYERS, r"<gtest/gtest\.h>", r'"(technics|script|support|platform)/\w+\.h"'),
    "tests/host/report": (STANDARD, r'"(host|platform)/[\w/]+\.h"', r"<sys/resource\.h>"),
    "tests/lifetime": (STANDARD, LUA, PUBLIC, r"<gtest/gtest\.h>", r'"platform/\w+\.h"'),
    "tests/limits": (STANDARD, PUBLIC, LAYERS, r"<sys/resource\.h>", r'"(technics|support)/\w+\.h"'),
    "tests/support/win32": (STANDARD, r"<(gtest/gtest|windows)\.h>", r'"support/\w+\.h"'),
}
for room in COMMON_ROOMS:
    below = rf"<qev/({up_to(COMMON_ROOMS, room)})/\w+\.h>"
    MAY_INCLUDE[f"common/{room}"] = (STANDARD, OCCT, BASE, LAYERS, below, r'"\.\./kinds/\w+\.h"')
    MAY_INCLUDE[f"include/qev/{room}"] = (STANDARD, BASE, LAYERS, below)
for room in ("measure", "position", "range"): # what contours keep, which is not installed
    MAY_INCLUDE[f"common/{room}"] += (r'"data/(box_tree|contour_index|hilbert_place|lazy|picked|running_lengths)\.h"',)
MAY_INCLUDE["common/technics"] += (r'"data/object_watch\.h"',) # what plug-ins have destroyed
for room in ("script", "technics", "units", "support"):
    MAY_INCLUDE[f"include/qev/{room}"] = (STANDARD, BASE, LAYERS, rf"<qev/{room}/\w+\.h>")
for room in HOST_ROOMS:
    MAY_INCLUDE[f"host/{room}"] = (STANDARD, PUBLIC, LAYERS, KIT, rf'"host/({up_to(HOST_ROOMS, room)})/\w+\.h"')
MAY_INCLUDE["host/drawing"] += (FREETYPE, r'"platform/(dynamic_library|encoding|path)\.h"')
MAY_INCLUDE["host/actions"] += (r'"platform/(dynamic_library|path)\.h"',)
MAY_INCLUDE["host/dxf"] += (r'"platform/encoding\.h"',)
MAY_INCLUDE["host/report"] += (r"<nlohmann/json\.hpp>", r'"platform/(held_interrupts|output_path)\.h"')
MAY_INCLUDE["host/picture"] += (r"<nlohmann/json\.hpp>",)


def tracked(*patterns):
    listed = subprocess.run(["git", "ls-files", "-z", "-co", "--exclude-standard", *patterns], cwd=ROOT, check=True, capture_output=True, text=True)
    return [name for name in listed.stdout.split("\0") if name and (ROOT / name).exists()]


def format_faults(sources):
    run = subprocess.run(["clang-format", "--dry-run", "-Werror", *sources], cwd=ROOT, capture_output=True, text=True)
    for line in run.stderr.splitlines():
        if "error:" in line:
            yield line


def ascii_faults(names):
    for name in (name for name in names if not name.endswith(".xz")):
        for number, line in enumerate((ROOT / name).read_bytes().splitlines(), 1):
            if not line.isascii():
                yield f"{name}:{number}: not ASCII"


def folder_of(name):
    folders = [folder for folder in MAY_INCLUDE if name.startswith(folder + "/")]
    return max(folders, key=len, default=None)


def is_private_header(name, included):
    return included[0] == '"' and "/" not in included and (ROOT / name).with_name(included.strip('"')).exists()


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
            if not (allowed or is_private_header(name, included)):
                yield f"{name}:{number}: may not include {included}"


def scripts():
    named = tracked("*.py", "*.js")
    return named + [name for name in tracked("check", "demo", "tools", "tests", "fuzz", ".ci")
                    if name not in named and (ROOT / name).read_bytes().startswith(b"#!")]


def lines_of_code(name):
    comment = "//" if name.endswith((".h", ".cpp", ".js")) else "#"
    text = (ROOT / name).read_text()
    if comment == "//":
        text = re.sub(r"/\*.*?\*/", "", text, flags=re.S)
    return sum(1 for line in text.splitlines() if (code := line.strip()) and not code.startswith(comment))


def share_faults(sources):
    counts = {True: 0, False: 0}
    for name in sources:
        if not name.startswith("bench/"):
            counts[name.startswith(("tests/", "fuzz/"))] += lines_of_code(name)
    share = counts[True] / counts[False]
    print(f"tests: {counts[True]} lines, other code: {counts[False]} lines, {share:.3f} to one")
    if not TEST_SHARE[0] <= share <= TEST_SHARE[1]:
        yield f"the share of tests is outside {TEST_SHARE[0]} to {TEST_SHARE[1]}"


# A declaration's comment is read by itself in an editor, where "the same" and "the next five" refer to nothing.
LEANS_ON_ANOTHER = re.compile(r"///<?\s*The same\b|///.*\b(?:the same (?:as|by|for|of|under)\b|so for the next|as above|as that of)")


def leaning_comments(headers):
    for name in headers:
        for number, line in enumerate((ROOT / name).read_text().splitlines(), 1):
            if LEANS_ON_ANOTHER.search(line):
                yield f"{name}:{number}: leans on another declaration's comment: {line.strip()}"


# An assertion that joins facts does not say which of them failed.
ASSERTION = re.compile(r"\b(?:EXPECT|ASSERT)_(TRUE|FALSE)\s*\(([^;{}]*)\)\s*(?:<<|;)")
JOINS = {"TRUE": "&&", "FALSE": "||"}


def joined_assertions(tests):
    for name in tests:
        text = (ROOT / name).read_text()
        for match in ASSERTION.finditer(text):
            if JOINS[match[1]] in match[2]:
                yield f"{name}:{text.count(chr(10), 0, match.start()) + 1}: joins facts: {match[0].splitlines()[0]}"


def main():
    sources = tracked("*.h", "*.cpp")
    texts = sources + tracked("*.py", "*.cmake", "*.txt", "*.md", "*.json", "*.in", "*.js", "*.css", "*.html", "NOTICE", "check", "demo", "bench/*", "tools/*", "tests/consumer/*", ".ci/*")
    faults = list(itertools.chain(format_faults(sources), ascii_faults(texts), include_faults(sources), share_faults(sources + scripts()),
                                  leaning_comments(name for name in sources if name.endswith(".h")),
                                  joined_assertions(name for name in sources if name.startswith("tests/"))))
    print("\n".join(faults) or f"{len(sources)} sources keep the house rules")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
