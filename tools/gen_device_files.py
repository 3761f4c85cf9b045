#!/usr/bin/env python3
"""Writes the per-device files of the bundled installation.

For every device of a family without the trait NOT_INSTALLED, in the family's data folder
<root>/ddb/<folder>/:
  - the device file named by the catalogue's FILE_NAME;
  - unless the device has the trait NO_HDR_DATA, its basic info in the HDR text form
    (tools/devdata/hdr.py), ddb_<device>.hdr. Families with the trait NEW_DDB_SUPPORT
    install their basic info compiled (ddb_<device>_hdr.ddb) and keep no text copy: their
    HDR text goes to the staging folder instead, and the manifest there names, one line
    per device, the text and the .ddb file to compile it to (tab-separated paths), for the
    build step that compiles them (tools/compile_staged_hdr.py).

The devices, families, traits and file names come from the text catalogue, the folders from
the family folder table, so the files are exactly those the library looks for. Every file is
written only when its content changes, through a temporary file beside it that is renamed
over it once complete; HDR files of devices that no longer get one are removed. --stamp
names a file written last, listing the counts, for the build to depend on.

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
from devdata import hdr  # noqa: E402
from devdata.catalogue import Catalogue, DeviceFacts, Tables  # noqa: E402
from devdata.output import write_if_changed  # noqa: E402

SOURCE = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
MANIFEST = "hdr_manifest.txt"


def device_file_text(device, family):
    return ("# Device file of %s, family %s (%s).\n"
            "# Written by tools/gen_device_files.py from the text catalogue.\n"
            "device %s\n") % (device.name, family.name, family.user, device.name)


class Plan:
    """The files to write: device files, HDR files in the root and in the staging folder."""

    def __init__(self, catalogue, root, staging):
        self.device_files, self.hdr, self.manifest = [], [], []
        hdr_devices = []
        for d in catalogue.devices:
            if not catalogue.is_installed(d):
                continue
            family, folder = catalogue.family_of(d), catalogue.folder_of(d)
            file_name = d.value("FILE_NAME")
            if not file_name or "/" in file_name:
                raise ValueError("device %s: no FILE_NAME or a bad one" % d.name)
            self.device_files.append((os.path.join(root, "ddb", folder, file_name), device_file_text(d, family)))
            if "NO_HDR_DATA" not in d.values("TRAITS"):
                hdr_devices.append(d)
        facts = [DeviceFacts(catalogue, d) for d in hdr_devices]
        largest = max([f.logic for f in facts] or [1])
        for f in facts:
            base = "ddb_%s" % f.name.lower()
            folder = catalogue.folder_of(f.record)
            if "NEW_DDB_SUPPORT" in f.traits:
                if not staging:
                    raise ValueError("family %s needs a staging folder (--staging)" % f.family.name)
                text = os.path.join(staging, folder, base + ".hdr")
                self.manifest.append((text, os.path.join(root, "ddb", folder, base + "_hdr.ddb")))
            else:
                text = os.path.join(root, "ddb", folder, base + ".hdr")
            self.hdr.append((text, f, f.logic / largest))


# Worker state: the tables, set before the pool forks.
_TABLES = None


def write_hdr(job):
    path, facts, scale = job
    text = hdr.basic_info_text(_TABLES, facts, scale)
    return path, len(text.encode("utf-8")), write_if_changed(path, text)


def remove_stale(pattern, keep):
    removed = 0
    for path in glob.glob(pattern):
        if path not in keep:
            os.remove(path)
            removed += 1
    return removed


def main(argv):
    global _TABLES
    ap = argparse.ArgumentParser(description="Write the device files of the installed families.")
    ap.add_argument("--root", required=True, help="installation root (files go below ROOT/ddb)")
    ap.add_argument("--staging", help="folder of the HDR texts that the build compiles to .ddb")
    ap.add_argument("--source", default=SOURCE, help="source tree (default: %(default)s)")
    ap.add_argument("--stamp", help="file written last, with the counts")
    ap.add_argument("--jobs", type=int, default=os.cpu_count() or 1, help="processes (default: %(default)s)")
    args = ap.parse_args(argv)
    start = time.monotonic()
    root = os.path.abspath(args.root)
    staging = os.path.abspath(args.staging) if args.staging else None
    try:
        plan = Plan(Catalogue(args.source), root, staging)
    except (OSError, ValueError) as e:
        print("gen_device_files: %s" % e, file=sys.stderr)
        return 2
    _TABLES = Tables(args.source)
    written = sum(write_if_changed(path, text) for path, text in plan.device_files)
    jobs = sorted(plan.hdr, key=lambda j: -j[2])  # largest first, for an even load
    if args.jobs > 1 and "fork" in multiprocessing.get_all_start_methods():
        with multiprocessing.get_context("fork").Pool(args.jobs) as pool:
            results = pool.map(write_hdr, jobs, chunksize=1)
    else:
        results = [write_hdr(j) for j in jobs]
    written += sum(r[2] for r in results)
    # Only the installation's own HDR texts stay in the root; the compile step owns the
    # files of the families that install compiled basic info.
    keep = {path for path, _, _ in results}
    compiled = {os.path.splitext(t)[0][:-len("_hdr")] + ".hdr" for _, t in plan.manifest}
    removed = remove_stale(os.path.join(root, "ddb", "*", "ddb_*.hdr"), keep | compiled)
    if staging:
        removed += remove_stale(os.path.join(staging, "*", "ddb_*.hdr"), keep)
        manifest = "".join("%s\t%s\n" % pair for pair in plan.manifest)
        written += write_if_changed(os.path.join(staging, MANIFEST), manifest)
    sizes = sorted(r[1] for r in results)
    summary = ("%d device files, %d HDR files (%d staged for compiling), %d bytes of HDR text "
               "(smallest %d, largest %d)\n") % (len(plan.device_files), len(results), len(plan.manifest),
                                                sum(sizes), sizes[0] if sizes else 0, sizes[-1] if sizes else 0)
    print("gen_device_files: %s%d written, %d removed, %.1f s" % (summary, written, removed,
                                                                   time.monotonic() - start))
    if args.stamp:
        write_if_changed(args.stamp, summary)
        os.utime(args.stamp)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
