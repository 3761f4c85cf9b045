#!/usr/bin/env python3
"""Installs the data files of the families that keep them compiled: compiles each text of
the staging manifest (tab-separated lines "TEXT TARGET", written by gen_device_files.py)
with `ddbtool device compile TEXT TARGET`, the kind taken from the text's extension (.hdr,
.pad, .pkg, .part_info, .rsi), so that the family folder holds <base>_<kind>.ddb and no
text copy.

Which kinds ddbtool compiles: its `device compile` command (`ddbtool device compile --help`,
else `ddbtool device --help`, must offer it) names each kind it takes by the kind's word or
extension ("pad", ".pad"). Each .ddb of such a kind is compiled only when it is missing or
older than its text or than ddbtool, into a temporary file beside it that replaces it once
ddbtool succeeded; a failure fails the step. The files of a kind that ddbtool does not name
yet must still be installed: each text is then put in the family folder as <base>.<kind>
instead, which the library reads the same way, and the step says so. As soon as ddbtool
names a kind, the next build compiles its files and removes those copies. Compiled files
that the manifest no longer lists are removed.

  compile_staged_device_files.py --manifest FILE --ddbtool PATH [--stamp FILE] [--jobs N]
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
from devdata.files import KINDS  # noqa: E402
from devdata.output import write_if_changed  # noqa: E402


def compiled_kinds(ddbtool):
    """The kinds that `ddbtool device compile` takes, from its help."""
    for args in (["device", "compile", "--help"], ["device", "--help"]):
        try:
            run = subprocess.run([ddbtool] + args, capture_output=True, text=True, timeout=60)
        except (OSError, subprocess.TimeoutExpired):
            return set()
        text = run.stdout + run.stderr
        if run.returncode == 0 and re.search(r"\bcompile\b", text):
            return {k for k in KINDS if re.search(r"(?<![\w])\.?%s\b" % k, text, re.IGNORECASE)}
    return set()


def kind_of(text):
    return os.path.splitext(text)[1][1:]


def text_copy(text, target):
    """<base>.<kind> beside <base>_<kind>.ddb."""
    kind = kind_of(text)
    return target[:-len("_%s.ddb" % kind)] + "." + kind


# The build compiles at level 6: the level-9 deflate of these very repetitive payloads takes
# about four times as long for files about an eighth smaller.
COMPRESSION_LEVEL = 6


def compile_one(ddbtool, text, target):
    """None on success, else the error."""
    folder, name = os.path.split(target)
    temp = os.path.join(folder, ".%s.%d.ddb" % (name[:-len(".ddb")], os.getpid()))
    run = subprocess.run([ddbtool, "device", "compile", "--level", str(COMPRESSION_LEVEL), text, temp],
                         capture_output=True, text=True)
    if run.returncode != 0 or not os.path.isfile(temp):
        if os.path.exists(temp):
            os.remove(temp)
        return "%s: ddbtool exit status %d\n%s%s" % (text, run.returncode, run.stdout, run.stderr)
    os.replace(temp, target)
    return None


def main(argv):
    ap = argparse.ArgumentParser(description="Compile the staged device-data texts to .ddb files.")
    ap.add_argument("--manifest", required=True)
    ap.add_argument("--ddbtool", required=True)
    ap.add_argument("--stamp")
    ap.add_argument("--jobs", type=int, default=os.cpu_count() or 1)
    args = ap.parse_args(argv)
    with open(args.manifest, encoding="utf-8") as f:
        pairs = [tuple(line.rstrip("\n").split("\t")) for line in f if line.strip()]
    kinds = compiled_kinds(args.ddbtool)
    compiling = [(t, d) for t, d in pairs if kind_of(t) in kinds]
    copying = [(t, d) for t, d in pairs if kind_of(t) not in kinds]
    todo = []
    if compiling:
        newest = os.path.getmtime(args.ddbtool)
        todo = [(t, d) for t, d in compiling
                if not os.path.exists(d) or os.path.getmtime(d) < max(newest, os.path.getmtime(t))]
        with concurrent.futures.ThreadPoolExecutor(max(1, args.jobs)) as pool:
            errors = [e for e in pool.map(lambda p: compile_one(args.ddbtool, *p), todo) if e]
        if errors:
            print("compile_staged_device_files: %d of %d files failed\n%s" % (len(errors), len(todo), "\n".join(errors)),
                  file=sys.stderr)
            return 1
        for t, d in compiling:
            if os.path.exists(text_copy(t, d)):
                os.remove(text_copy(t, d))
    copied = 0
    for t, d in copying:
        with open(t, encoding="utf-8") as f:
            copied += write_if_changed(text_copy(t, d), f.read())
        if os.path.exists(d):
            os.remove(d)
    targets = {d for _, d in pairs}
    for folder in sorted({os.path.dirname(d) for d in targets}):
        for kind in KINDS:
            for path in glob.glob(os.path.join(folder, "ddb_*_%s.ddb" % kind)):
                if path not in targets:
                    os.remove(path)
    summary = "%d files compiled to .ddb (%d now; kinds: %s)" % (len(compiling), len(todo), " ".join(sorted(kinds)) or "none")
    if copying:
        missing = sorted({kind_of(t) for t, _ in copying})
        summary += "; ddbtool device compile takes no %s yet: %d files installed as text (%d now)" % (
            ", ".join(missing), len(copying), copied)
    print("compile_staged_device_files: " + summary)
    if args.stamp:
        write_if_changed(args.stamp, summary + "\n")
        os.utime(args.stamp)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
