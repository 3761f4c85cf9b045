#!/usr/bin/env python3
"""Installs the basic info of the families that keep it compiled: compiles each HDR text of
the staging manifest (tab-separated lines "TEXT TARGET", written by gen_device_files.py) with
`ddbtool device compile TEXT TARGET`, so that the family folder holds ddb_<device>_hdr.ddb
and no text copy.

Each .ddb is compiled only when it is missing or older than its text or than ddbtool, into a
temporary file beside it that replaces it once ddbtool succeeded; compiled files of devices
that the manifest no longer lists are removed.

While ddbtool has no `device compile` command (`ddbtool device --help` does not offer it),
the devices must still be installed: each text is then put in the family folder as
ddb_<device>.hdr instead, which the library reads the same way, and the step says so.
As soon as ddbtool offers the command, the next build compiles and removes those copies.

  compile_staged_hdr.py --manifest FILE --ddbtool PATH [--stamp FILE] [--jobs N]
Python 3 standard library only.
"""

import argparse
import concurrent.futures
import glob
import os
import re
import subprocess
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from devdata.output import write_if_changed  # noqa: E402


def has_device_compile(ddbtool):
    try:
        run = subprocess.run([ddbtool, "device", "--help"], capture_output=True, text=True, timeout=60)
    except (OSError, subprocess.TimeoutExpired):
        return False
    return run.returncode == 0 and re.search(r"\bcompile\b", run.stdout + run.stderr) is not None


def text_copy(target):
    """ddb_<device>.hdr beside ddb_<device>_hdr.ddb."""
    return re.sub(r"_hdr\.ddb$", ".hdr", target)


def compile_one(ddbtool, text, target):
    """None on success, else the error."""
    folder, name = os.path.split(target)
    temp = os.path.join(folder, ".%s.%d.ddb" % (name[:-len(".ddb")], os.getpid()))
    run = subprocess.run([ddbtool, "device", "compile", text, temp], capture_output=True, text=True)
    if run.returncode != 0 or not os.path.isfile(temp):
        if os.path.exists(temp):
            os.remove(temp)
        return "%s: ddbtool exit status %d\n%s%s" % (text, run.returncode, run.stdout, run.stderr)
    os.replace(temp, target)
    return None


def main(argv):
    ap = argparse.ArgumentParser(description="Compile the staged HDR texts to .ddb files.")
    ap.add_argument("--manifest", required=True)
    ap.add_argument("--ddbtool", required=True)
    ap.add_argument("--stamp")
    ap.add_argument("--jobs", type=int, default=os.cpu_count() or 1)
    args = ap.parse_args(argv)
    with open(args.manifest, encoding="utf-8") as f:
        pairs = [tuple(line.rstrip("\n").split("\t")) for line in f if line.strip()]
    compiling = has_device_compile(args.ddbtool)
    if compiling:
        newest = os.path.getmtime(args.ddbtool)

        def stale(text, target):
            return not os.path.exists(target) or os.path.getmtime(target) < max(newest, os.path.getmtime(text))
        todo = [(t, d) for t, d in pairs if stale(t, d)]
        with concurrent.futures.ThreadPoolExecutor(max(1, args.jobs)) as pool:
            errors = [e for e in pool.map(lambda p: compile_one(args.ddbtool, *p), todo) if e]
        if errors:
            print("compile_staged_hdr: %d of %d files failed\n%s" % (len(errors), len(todo), "\n".join(errors)),
                  file=sys.stderr)
            return 1
        for _, target in pairs:
            if os.path.exists(text_copy(target)):
                os.remove(text_copy(target))
        summary = "%d basic-info files compiled to .ddb (%d now)\n" % (len(pairs), len(todo))
    else:
        copied = sum(write_if_changed(text_copy(d), open(t, encoding="utf-8").read()) for t, d in pairs)
        for _, target in pairs:
            if os.path.exists(target):
                os.remove(target)
        summary = "ddbtool has no device compile: %d basic-info files installed as text (%d now)\n" % (
            len(pairs), copied)
    targets = {d for _, d in pairs}
    for folder in sorted({os.path.dirname(d) for d in targets}):
        for path in glob.glob(os.path.join(folder, "ddb_*_hdr.ddb")):
            if path not in targets:
                os.remove(path)
    print("compile_staged_hdr: " + summary, end="")
    if args.stamp:
        write_if_changed(args.stamp, summary)
        os.utime(args.stamp)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
