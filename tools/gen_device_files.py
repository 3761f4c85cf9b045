#!/usr/bin/env python3
"""Writes the per-device files that make the devices of the bundled installation installed.

For every device of a family without the trait NOT_INSTALLED, in the family's data folder
<root>/ddb/<folder>/:
  - the device file named by the catalogue's FILE_NAME;
  - when the family has the trait NEW_DDB_SUPPORT or REQUIRES_HDR_DATA, the device's HDR
    file ddb_<device>.hdr, a small basic info in the HDR text form (names and enumerators).

The devices, families, traits and file names come from the text catalogue, the folders from
the family folder table, so the files are exactly those the library looks for. A file is
rewritten only when its content changes; --stamp names a file written last, listing the
counts, for the build to depend on.

  gen_device_files.py --root DIR [--source TREE] [--stamp FILE]
Python 3 standard library only.
"""

import argparse
import os
import re
import sys

SOURCE = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
CATALOGUE = "data/h/dev_part_manager_auto.part"
FOLDER_DEF = "host/tables/dev_family_folder.def"
HDR_TRAITS = ("NEW_DDB_SUPPORT", "REQUIRES_HDR_DATA")

BLOCK_RE = re.compile(r"^\s*(family|device|part)\s+(\w+)\s*$")
KEY_RE = re.compile(r'^\s*(\w+)\s*=\s*"?([^"]*?)"?\s*$')
USER_RE = re.compile(r"^#+\s*\(User name - (.*)\)\s*$")
FOLDER_RE = re.compile(r'^\s*DEV_FAMILY_FOLDER\(DEV_FAMILY_(\w+),\s*"([^"]*)"\)')


class Record:
    def __init__(self, kind, name):
        self.kind, self.name, self.user = kind, name, name
        self.keys = {}

    def values(self, key):
        return self.keys.get(key, [])

    def value(self, key):
        v = self.values(key)
        return v[0] if v else ""


def read_catalogue(path):
    """The family and device records of the text catalogue, in file order."""
    records, current = [], None
    with open(path, encoding="utf-8") as f:
        for line in f:
            m = BLOCK_RE.match(line)
            if m:
                current = Record(m.group(1), m.group(2))
                records.append(current)
                continue
            if current is None:
                continue
            if line.strip() == "end":
                current = None
                continue
            m = USER_RE.match(line.strip())
            if m:
                current.user = m.group(1)
                continue
            m = KEY_RE.match(line)
            if m:
                current.keys.setdefault(m.group(1), []).append(m.group(2))
    return records


def read_folders(path):
    with open(path, encoding="utf-8") as f:
        return {m.group(1): m.group(2) for m in map(FOLDER_RE.match, f) if m}


def hdr_text(device, family):
    return ("# Basic info of %s (%s family): its names and enumerators.\n"
            "# Written by tools/gen_device_files.py from the text catalogue.\n"
            'STRING_DEVICE_NAME = "%s"\n'
            'STRING_FAMILY_NAME = "%s"\n'
            'STRING_DATA_SOURCE = "catalogue"\n'
            "ENUM_DEVICE = %s\n"
            "ENUM_FAMILY = %s\n") % (device.name, family.user, device.name, family.name, device.name, family.name)


def device_file_text(device, family):
    return ("# Device file of %s, family %s (%s).\n"
            "# Written by tools/gen_device_files.py from the text catalogue.\n"
            "device %s\n") % (device.name, family.name, family.user, device.name)


def planned_files(records, folders):
    """(relative path, content) of every file to write."""
    families = {r.name: r for r in records if r.kind == "family"}
    files = []
    for d in (r for r in records if r.kind == "device"):
        family = families.get(d.value("FAMILY"))
        if family is None:
            raise ValueError("device %s names no known family" % d.name)
        traits = set(family.values("TRAITS"))
        if "NOT_INSTALLED" in traits:
            continue
        folder = folders.get(family.name)
        file_name = d.value("FILE_NAME")
        if not folder or not file_name or "/" in file_name:
            raise ValueError("device %s: no folder or a bad FILE_NAME" % d.name)
        files.append(("ddb/%s/%s" % (folder, file_name), device_file_text(d, family)))
        if traits.intersection(HDR_TRAITS):
            files.append(("ddb/%s/ddb_%s.hdr" % (folder, d.name.lower()), hdr_text(d, family)))
    return files


def write_if_changed(path, text):
    try:
        with open(path, encoding="utf-8") as f:
            if f.read() == text:
                return False
    except OSError:
        pass
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as f:
        f.write(text)
    return True


def main(argv):
    ap = argparse.ArgumentParser(description="Write the device files of the installed families.")
    ap.add_argument("--root", required=True, help="installation root (files go below ROOT/ddb)")
    ap.add_argument("--source", default=SOURCE, help="source tree (default: %(default)s)")
    ap.add_argument("--stamp", help="file written last, with the counts")
    args = ap.parse_args(argv)
    try:
        files = planned_files(read_catalogue(os.path.join(args.source, CATALOGUE)),
                              read_folders(os.path.join(args.source, FOLDER_DEF)))
    except (OSError, ValueError) as e:
        print("gen_device_files: %s" % e, file=sys.stderr)
        return 2
    written = sum(write_if_changed(os.path.join(args.root, rel), text) for rel, text in files)
    hdr = sum(1 for rel, _ in files if rel.endswith(".hdr"))
    summary = "%d device files, %d HDR files, %d written\n" % (len(files) - hdr, hdr, written)
    if args.stamp:
        write_if_changed(args.stamp, summary)
        os.utime(args.stamp)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
