#!/usr/bin/env python3
"""disc_test.py HOST PLUGIN DRAWING FOLDER: what the host writes when the disc is full, the folder cannot be written to, or
the host is killed: the file that was there before stays whole, nothing is left beside it but by a kill, the exit
code says so and one line says why. Parts that this machine does not allow are skipped with a word."""

import os
import pathlib
import random
import resource
import shutil
import signal
import subprocess
import sys
import time

host, plugin, drawing, folder = *sys.argv[1:4], pathlib.Path(sys.argv[4])
OUTPUTS = {"--svg": "picture.svg", "--html": "page.html", "--dxf": "path.dxf", "--save": "technics.txt"}
OLD = "the file of yesterday\n"
faults = []


def run(option, at, **more):
    return subprocess.Popen([host, drawing, "--plugin", plugin, "--technics", "T={LeadIn={}}", option, str(at / OUTPUTS[option])], stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, **more)


def expect(condition, text):
    if not condition:
        faults.append(text)
        print("FAULT:", text)


def prepared(name):
    at = folder / name
    shutil.rmtree(at, ignore_errors=True)
    at.mkdir(parents=True)
    for output in OUTPUTS.values():
        (at / output).write_text(OLD)
    return at


def expect_refusal(what, option, at, process):
    errors = process.communicate()[1]
    expect(process.returncode > 0, f"{what}, {option}: exit code {process.returncode}")
    expect(len(errors.splitlines()) == 1 and "cannot be written" in errors, f"{what}, {option}: says {errors!r}")
    expect((at / OUTPUTS[option]).read_text() == OLD, f"{what}, {option}: the old file is gone")
    expect(sorted(path.name for path in at.iterdir()) == sorted(OUTPUTS.values()), f"{what}, {option}: something is left: {sorted(at.iterdir())}")


def little_room():
    signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
    resource.setrlimit(resource.RLIMIT_FSIZE, (20, 20))


def check_limit():
    at = prepared("limit")
    for option in OUTPUTS:
        expect_refusal("a limit of the size", option, at, run(option, at, preexec_fn=little_room))


def check_full_disc():
    at = folder / "full"
    at.mkdir(parents=True, exist_ok=True)
    if subprocess.run(["mount", "-t", "tmpfs", "-o", "size=64k", "tmpfs", str(at)], capture_output=True).returncode != 0:
        print("skipped: a full disc, as none can be mounted here")
        return
    try:
        for output in OUTPUTS.values():
            (at / output).write_text(OLD)
        (at / "filler").write_bytes(b"x" * (64 * 1024 - len(OUTPUTS) * 4096 - 4096))
        while True: # until not a byte more is taken
            try:
                with open(at / "filler", "ab") as filler:
                    filler.write(b"x" * 4096)
            except OSError:
                break
        for option in OUTPUTS:
            process = run(option, at)
            errors = process.communicate()[1]
            expect(process.returncode > 0 and len(errors.splitlines()) == 1, f"a full disc, {option}: {process.returncode}, {errors!r}")
            expect((at / OUTPUTS[option]).read_text() == OLD, f"a full disc, {option}: the old file is gone")
            expect(not list(at.glob("*.part")), f"a full disc, {option}: something is left")
    finally:
        subprocess.run(["umount", str(at)], check=True)


def check_read_only_folder():
    nobody = {"user": 65534} if os.geteuid() == 0 else {} # root writes everywhere
    at = prepared("read_only")
    at.chmod(0o555)
    try:
        for option in OUTPUTS:
            expect_refusal("a read-only folder", option, at, run(option, at, **nobody))
    except PermissionError:
        print("skipped: a folder that cannot be written to, as nobody else than root may run the host here")
    at.chmod(0o755)


def check_kills():
    at = prepared("killed")
    draw = random.Random(20260101)
    for option in OUTPUTS:
        start = time.monotonic()
        run(option, at).wait()
        whole, needed = (at / OUTPUTS[option]).read_text(), time.monotonic() - start
        expect(whole != OLD, f"{option}: nothing was written")
        for _ in range(15):
            (at / OUTPUTS[option]).write_text(OLD)
            process = run(option, at)
            time.sleep(draw.uniform(0, 1.2 * needed))
            process.kill()
            process.communicate()
            expect((at / OUTPUTS[option]).read_text() in (OLD, whole), f"a kill, {option}: the file is neither old nor new")


for check in (check_limit, check_full_disc, check_read_only_folder, check_kills):
    check()
sys.exit(1 if faults else 0)
