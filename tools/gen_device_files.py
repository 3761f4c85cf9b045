#!/usr/bin/env python3
"""Writes the per-device files of the bundled installation.

For every device of a family without the trait NOT_INSTALLED, in the family's data folder
<root>/ddb/<folder>/, the device file named by the catalogue's FILE_NAME, and, unless the
device has the trait NO_HDR_DATA, its data files (names and kinds: tools/devdata/files.py):
  hdr        basic info (tools/devdata/hdr.py);
  pad        pads, I/O standards and I/O rules (tools/devdata/pad.py, iostd.py);
  pkg        package pins bonded to those pads, per package (tools/devdata/pkg.py);
  part_info  power supplies, per part (tools/devdata/part_info.py, power.py);
  rsi        routing switches (tools/devdata/rsi.py).
Families with the trait NEW_DDB_SUPPORT install every kind compiled (<base>_<kind>.ddb) and
keep no text copy: their texts go to the staging folder instead, and the manifest there,
device_manifest.txt, names one file a line, the text and the .ddb file to compile it to
(tab-separated paths), for the build step that compiles them
(tools/compile_staged_device_files.py; the kind is the text's extension).

The devices, families, parts, traits and file names come from the text catalogue, the
folders from the family folder table, so the files are exactly those the library looks
for. Every file is written only when its content changes, through a temporary file beside
it that is renamed over it once complete; data files that the plan no longer names are
removed. --stamp names a file written last, listing the counts, bytes and processor
seconds per kind, for the build to depend on.

  gen_device_files.py --root DIR [--staging DIR] [--source TREE] [--stamp FILE] [--jobs N]
Python 3 standard library only.
"""

import argparse
import glob
import multiprocessing
import os
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from devdata import files, hdr, pad, part_info, pkg, rsi  # noqa: E402
from devdata.catalogue import Catalogue, DeviceFacts, Tables  # noqa: E402
from devdata.output import write_if_changed  # noqa: E402

SOURCE = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
MANIFEST = "device_manifest.txt"


def device_file_text(device, family):
    return ("# Device file of %s, family %s (%s).\n"
            "# Written by tools/gen_device_files.py from the text catalogue.\n"
            "device %s\n") % (device.name, family.name, family.user, device.name)


def text_copy(data_file):
    """Where the installation keeps the text of a compiled file while it cannot compile it."""
    return data_file.target[:-len("_%s.ddb" % data_file.kind)] + "." + data_file.kind


# Worker state, set before the pool forks: the tables, the facts of every device with data
# files, the largest logic count, and the jobs' files.
_TABLES = _FACTS = _LARGEST = _JOBS = None


def run_job(index):
    """Writes the files of one job: (kind, [(path, bytes, written)], processor seconds)."""
    start = time.process_time()
    kind, device, members = _JOBS[index]
    facts = _FACTS[device]
    out = []
    if kind == "pkg":
        model = pad.PadModel(_TABLES, facts)
        texts = [(f, pkg.pkg_text(_TABLES, facts, f.parts, model)) for f in members]
    elif kind == "part_info":
        texts = [(f, part_info.part_info_text(_TABLES, facts, f.parts[0])) for f in members]
    else:
        make = {"hdr": lambda: hdr.basic_info_text(_TABLES, facts, facts.logic / _LARGEST),
                "pad": lambda: pad.pad_text(_TABLES, facts), "rsi": lambda: rsi.rsi_text(_TABLES, facts)}[kind]
        texts = [(members[0], make())]
    for f, text in texts:
        out.append((f.text, len(text.encode("utf-8")), write_if_changed(f.text, text)))
    return kind, out, time.process_time() - start


def remove_stale(pattern, keep):
    removed = 0
    for path in glob.glob(pattern):
        if path not in keep:
            os.remove(path)
            removed += 1
    return removed


def main(argv):
    global _TABLES, _FACTS, _LARGEST, _JOBS
    ap = argparse.ArgumentParser(description="Write the device files of the installed families.")
    ap.add_argument("--root", required=True, help="installation root (files go below ROOT/ddb)")
    ap.add_argument("--staging", help="folder of the texts that the build compiles to .ddb")
    ap.add_argument("--source", default=SOURCE, help="source tree (default: %(default)s)")
    ap.add_argument("--stamp", help="file written last, with the counts")
    ap.add_argument("--jobs", type=int, default=os.cpu_count() or 1, help="processes (default: %(default)s)")
    args = ap.parse_args(argv)
    start = time.monotonic()
    root = os.path.abspath(args.root)
    staging = os.path.abspath(args.staging) if args.staging else None
    try:
        catalogue = Catalogue(args.source)
        plan = files.plan(catalogue, root, staging)
        device_files = []
        for d in catalogue.devices:
            if catalogue.is_installed(d):
                name = d.value("FILE_NAME")
                if not name or "/" in name:
                    raise ValueError("device %s: no FILE_NAME or a bad one" % d.name)
                device_files.append((os.path.join(root, "ddb", catalogue.folder_of(d), name),
                                     device_file_text(d, catalogue.family_of(d))))
    except (OSError, ValueError) as e:
        print("gen_device_files: %s" % e, file=sys.stderr)
        return 2
    _TABLES = Tables(args.source)
    _FACTS = {}
    jobs = {}
    for f in plan:
        if f.device.name not in _FACTS:
            _FACTS[f.device.name] = DeviceFacts(catalogue, f.device)
        # One job per device and kind: the package files of a device share its pad model.
        jobs.setdefault((f.kind, f.device.name), []).append(f)
    _LARGEST = max([facts.logic for facts in _FACTS.values()] or [1])
    weight = {"hdr": 40, "pad": 1, "pkg": 2, "part_info": 1, "rsi": 1}
    _JOBS = sorted(((kind, device, members) for (kind, device), members in jobs.items()),
                   key=lambda j: -weight[j[0]] * len(j[2]) * (_FACTS[j[1]].logic + 20 * _FACTS[j[1]].io))
    written = sum(write_if_changed(path, text) for path, text in device_files)
    if args.jobs > 1 and "fork" in multiprocessing.get_all_start_methods():
        with multiprocessing.get_context("fork").Pool(args.jobs) as pool:
            results = list(pool.imap_unordered(run_job, range(len(_JOBS)), chunksize=1))
    else:
        results = [run_job(i) for i in range(len(_JOBS))]
    stats = {kind: [0, 0, 0.0, 0] for kind in files.KINDS}  # files, bytes, seconds, largest
    keep = set()
    for kind, out, seconds in results:
        s = stats[kind]
        s[0] += len(out)
        s[1] += sum(size for _, size, _ in out)
        s[2] += seconds
        s[3] = max([s[3]] + [size for _, size, _ in out])
        written += sum(w for _, _, w in out)
        keep.update(path for path, _, _ in out)
    # Only the installation's own texts stay in the root; the compile step owns the files
    # of the families that install compiled data (and their text copies while it cannot
    # compile them).
    compiled = [f for f in plan if f.target]
    owned = keep | {text_copy(f) for f in compiled}
    removed = 0
    for kind in files.KINDS:
        removed += remove_stale(os.path.join(root, "ddb", "*", "ddb_*." + kind), owned)
        if staging:
            removed += remove_stale(os.path.join(staging, "*", "ddb_*." + kind), keep)
    if staging:
        manifest = "".join("%s\t%s\n" % (f.text, f.target) for f in compiled)
        written += write_if_changed(os.path.join(staging, MANIFEST), manifest)
    lines = ["%-9s %5d files %11d bytes %6.1f s of processor time, largest %d bytes" % (kind, *stats[kind])
             for kind in files.KINDS]
    total = [sum(stats[k][i] for k in files.KINDS) for i in range(3)]
    summary = ("%d device files; data files by kind (%d of them staged for compiling):\n%s\n"
               "total     %5d files %11d bytes %6.1f s of processor time\n") % (
        len(device_files), len(compiled), "\n".join(lines), *total)
    print("gen_device_files: %s%d written, %d removed, %.1f s" % (summary, written, removed, time.monotonic() - start))
    if args.stamp:
        write_if_changed(args.stamp, summary)
        os.utime(args.stamp)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
