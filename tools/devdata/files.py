"""Which per-device data files the bundled installation has, under which names, and where
their texts go.

Kinds, each named by its file type (the text form's extension):
  hdr        basic info, per device without the device trait NO_HDR_DATA: ddb_<device>.hdr;
  pad        pads and I/O standards, per such device: ddb_<device>.pad;
  rsi        routing switches, per such device: ddb_<device>.rsi;
  pkg        package pins, per file name that the part-level search computes for the parts of
             such a device: "ddb_" + device + package + pin count, plus the part's
             PACKAGE_DDB_FILE_NAME_SUFFIX when it has one (ddb_cv3e080fbga256_b.pkg), or, for a
             part with the part trait PART_SPECIFIC_DATA_FILES, "ddb_" + the part's name;
             lower case;
  part_info  power supplies, per part: "ddb_" + the part's name (the first name the part-level
             search tries for this kind), ddb_<part>.part_info.
Every such device has its routing switches and every part of it its part info, whatever the
family's traits say (the library opens every installed device with both). Pad and package
files exist only for the families whose traits say they have such data (HAS_PAD_DATA,
HAS_PACKAGE_DATA); package files need the device's pad file, which their pins name.

A family with the trait NEW_DDB_SUPPORT installs every kind compiled: its texts go to the
staging folder, each with the .ddb file to compile it to beside where the text would have
been (<base>_<kind>.ddb); the others install the texts themselves.
"""

import os

KINDS = ("hdr", "pad", "pkg", "part_info", "rsi")
FAMILY_TRAITS = {"pad": "HAS_PAD_DATA", "pkg": "HAS_PACKAGE_DATA"}


class DataFile:
    """One file to write: its kind, base name, the device and the parts it serves, the path
    of its text and, for the compiled families, the .ddb file to compile the text to."""

    def __init__(self, kind, base, device, parts, text, target):
        self.kind, self.base, self.device, self.parts, self.text, self.target = kind, base, device, parts, text, target


def part_base(device, part, kind):
    """The base name of a part's file of `kind` ("pkg" or "part_info")."""
    if kind == "part_info" or "PART_SPECIFIC_DATA_FILES" in part.values("TRAITS"):
        return "ddb_" + part.name.lower()
    base = "ddb_%s%s%d" % (device.name, part.value("PACKAGE"), part.int("PIN_COUNT"))
    if kind == "pkg":
        base += part.value("PACKAGE_DDB_FILE_NAME_SUFFIX")
    return base.lower()


def compiled_name(base, kind):
    return "%s_%s.ddb" % (base, kind)


def plan(catalogue, root, staging):
    """The data files of every installed device, in catalogue order, as a list of
    DataFile. Raises ValueError when a compiled family has no staging folder."""
    files = []
    for d in catalogue.devices:
        if not catalogue.is_installed(d) or "NO_HDR_DATA" in d.values("TRAITS"):
            continue
        traits = set(catalogue.family_of(d).values("TRAITS"))
        folder = catalogue.folder_of(d)
        compiled = "NEW_DDB_SUPPORT" in traits
        if compiled and not staging:
            raise ValueError("family %s needs a staging folder (--staging)" % d.value("FAMILY"))
        text_folder = os.path.join(staging if compiled else os.path.join(root, "ddb"), folder)

        def add(kind, base, parts):
            target = os.path.join(root, "ddb", folder, compiled_name(base, kind)) if compiled else None
            files.append(DataFile(kind, base, d, parts, os.path.join(text_folder, "%s.%s" % (base, kind)), target))

        parts = catalogue.parts_of[d.name]
        base = "ddb_" + d.name.lower()
        add("hdr", base, parts)
        if FAMILY_TRAITS["pad"] in traits:
            add("pad", base, parts)
        add("rsi", base, parts)
        if FAMILY_TRAITS["pkg"] in traits and FAMILY_TRAITS["pad"] in traits:
            by_base = {}
            for p in parts:
                by_base.setdefault(part_base(d, p, "pkg"), []).append(p)
            for b, ps in by_base.items():
                add("pkg", b, ps)
        for p in parts:
            add("part_info", part_base(d, p, "part_info"), [p])
    return files
