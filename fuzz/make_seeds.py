#!/usr/bin/env python3
"""Writes the seed corpora (fuzz/corpus/NAME/) and dictionaries (fuzz/dict/NAME.dict) of the
fuzz harnesses from real inputs: snippets of the bundled catalogue text, archive files that
ddbtool writes at several levels, and the small catalogue .ddb files the build compiles.

    fuzz/make_seeds.py [--build build/release]

The outputs are committed; run this again after a format changes. Each seed starts with the
harness's selector bytes (see the comment at the top of each fuzz_NAME.cpp)."""

import argparse
import os
import pathlib
import re
import shutil
import struct
import subprocess
import tempfile
import zlib

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent
CATALOGUE = ROOT / "data" / "h" / "dev_part_manager_auto.part"


def blocks(text, keyword):
    """The blocks of the catalogue text that open with `keyword`, each up to its "end" line."""
    found, current = [], None
    for line in text.splitlines(keepends=True):
        if current is None and line.startswith(keyword + "\t"):
            current = [line]
        elif current is not None:
            current.append(line)
            if line.strip() == "end":
                found.append("".join(current))
                current = None
    return found


def write_corpus(name, seeds):
    directory = HERE / "corpus" / name
    shutil.rmtree(directory, ignore_errors=True)
    directory.mkdir(parents=True)
    for label, data in seeds.items():
        (directory / label).write_bytes(data)


def dict_entry(data):
    escaped = "".join(chr(b) if 32 <= b < 127 and chr(b) not in '"\\' else "\\x%02x" % b for b in data)
    return '"%s"' % escaped


def write_dict(name, comment, entries):
    unique = []
    for e in entries:
        e = e.encode() if isinstance(e, str) else e
        if e and e not in unique:
            unique.append(e)
    lines = ["# " + line for line in comment.splitlines()] + [dict_entry(e) for e in unique]
    (HERE / "dict" / (name + ".dict")).write_text("\n".join(lines) + "\n")


def enum_names(table):
    """Debug and user strings of a host enumeration table (host/tables/NAME.def)."""
    text = (ROOT / "host" / "tables" / (table + ".def")).read_text()
    names = []
    for debug, user in re.findall(r'DSTR_MEMBER\(\w+, *\d+, *"([^"]*)", *"([^"]*)"', text):
        names += [debug, user]
    return names


def ddbtool_pack(build, level, text):
    with tempfile.TemporaryDirectory() as tmp:
        source, packed = pathlib.Path(tmp, "in.txt"), pathlib.Path(tmp, "out.ddb")
        source.write_text(text)
        subprocess.run([str(build / "tools" / "ddbtool"), "pack", "--level", str(level), str(source), str(packed)],
                       check=True, stdout=subprocess.DEVNULL)
        return packed.read_bytes()


def archive_seeds(build, text):
    families, devices, parts = blocks(text, "family"), blocks(text, "device"), blocks(text, "part")
    small = devices[0] + parts[0]
    # Enough varied text that its compressed stream outgrows the archive's first block.
    large = "".join(parts[i * 97 % len(parts)] for i in range(8))
    def seed(mode, level, cut, payload):
        return bytes([mode, level]) + struct.pack("<H", cut) + payload
    seeds = {
        "plain_text": seed(0, 0, 0, small.encode()),
        "plain_crlf_no_final_newline": seed(0, 0, 7, small.replace("\n", "\r\n").rstrip().encode()),
        "zlib_small_complete": seed(1, 9, 0, families[0].encode()),
        "zlib_large_cut": seed(2, 6, 900, large.encode()),
        "empty": seed(0, 0, 0, b""),
    }
    for level in (1, 6, 9):
        seeds["ddbtool_pack_level%d" % level] = seed(0, level, 333, ddbtool_pack(build, level, large))
    seeds["ddbtool_pack_small_level9"] = seed(0, 9, 0, ddbtool_pack(build, 9, small))
    write_corpus("archive_stream", seeds)
    write_dict("archive_stream", "zlib stream headers (levels 1, 6 default, 9), line ends and a NUL.",
               [b"\x78\x01", b"\x78\x5e", b"\x78\x9c", b"\x78\xda", b"\n", b"\r\n", b"\x00", b"\xff", b"end\n"])


def family_info_seeds(text):
    families, devices, parts = blocks(text, "family"), blocks(text, "device"), blocks(text, "part")
    header = "".join(text.splitlines(keepends=True)[:5])
    seeds = {
        "family": families[2].encode(),
        "device": devices[5].encode(),
        "part_with_resources": parts[40].encode(),
        "one_of_each": (header + families[0] + "\n" + devices[0] + "\n" + parts[0]).encode(),
        "comments_blank_lines_include": ("# a comment\n\n" + 'include "no_such_file.part"\n' + families[1]).encode(),
        "bad_value_and_unknown_key": families[0].replace("MAX_COMMERCIAL_TEMP = 70", "MAX_COMMERCIAL_TEMP = seventy")
                                                .replace("BAK_VERSION", "NO_SUCH_KEY").encode(),
    }
    write_corpus("family_info_text", seeds)
    keys = sorted(set(re.findall(r"^\t([A-Z_]+) = ", text, re.M)))
    values = sorted(set(re.findall(r"^\t[A-Z_]+ = ([^\"\n{][^\n]*)$", text, re.M)))[:200]
    resources = sorted(set(re.findall(r'^\t\t("[^"]+") = ', text, re.M)))
    write_dict("family_info_text", "Keywords, keys, resource names and values of the bundled catalogue.",
               ["family\t", "device\t", "part\t", "end\n", "include ", '"', " = ", "\t", "#", "{", "}",
                "DEV_RESOURCES = {\n", "######\t(User name - "] + keys + values + resources)


def fnv(name):
    """The tag a stored class is written with: the FNV-1a hash of its name."""
    h = 2166136261
    for c in name.encode():
        h = ((h ^ c) * 16777619) & 0xFFFFFFFF
    return struct.pack("<I", h)


def catalogue_seeds(build):
    legacy = build / "velcora" / "ddb" / "legacy"
    seeds = {}
    for name in ("ddb_lumio_family.ddb", "ddb_tessaly_devices.ddb", "ddb_lumio_parts.ddb", "ddb_lumio_info.ddb"):
        raw = (legacy / name).read_bytes()
        stem = name[len("ddb_"):-len(".ddb")]
        seeds["file_" + stem] = bytes([0, 0]) + raw
        try:
            segment = zlib.decompress(raw)
        except zlib.error:
            segment = raw
        if stem != "lumio_info":  # the info payload is the other three's together
            seeds["payload_" + stem] = bytes([1, 0]) + segment[20:]
        if len(segment) < 1024:
            seeds["payload_compressed_" + stem] = bytes([2, 8]) + segment[20:]
    write_corpus("catalogue_pdb", seeds)

    sources = (ROOT / "ddb" / "dev" / "ddb_dev__pdb.cpp").read_text()
    classes = sorted(set(re.findall(r"SERIALIZER\((\w+)", sources)) | {"DEV_FAMILY_INFO"})
    write_dict("catalogue_pdb", "The segment magic and version, the stored classes' tags, counts and lengths.",
               [b"VDDB", b"\x01\x00", b"\x00\x00\x00\x00", b"\x01\x00\x00\x00", b"\xff\xff\xff\x3f",
                b"\xff\xff\xff\xff"] + [fnv(c) for c in classes])


def hdr_block(lines, opener):
    """The first block of the HDR lines that opens with `opener`, up to its "end" line."""
    start = next(i for i, line in enumerate(lines) if line.startswith(opener))
    end = next(i for i in range(start, len(lines)) if lines[i].rstrip("\n") == "end")
    return "".join(lines[start:end + 1])


# Rules the generated files do not show: an embedded block, a reopened block, a debug name,
# an include, a 2D table over continuation lines, and a few bad lines.
HDR_HAND_WRITTEN = """INT_NUM_LABS = 4
location LAB
\tINT_NUM_SUB_LOCS = 2
\tport LAB_CLK
\t\tINT_INPUT_PORT_TYPE = 1
\t\tSTRING_DEBUG_NAME = "clk"
\tend
end
location LAB
\tBOOL_IS_ROUTABLE = true
end
element LOGIC_LUT
\tLOCATIONS = LAB
\tPORTS = LAB_CLK
\t2D_INT_DELAYS = {
\t{ 1 2 3 }
\t{ 4 5 6 }}
end
include "no_such_file.hdr"
bogus line
"""


def hdr_seeds(build):
    text = min((p for p in (build / "velcora" / "ddb").glob("*/ddb_*.hdr")), key=lambda p: p.stat().st_size)
    lines = text.read_text().splitlines(keepends=True)
    first_port = next(i for i, line in enumerate(lines) if line.startswith("port "))
    element_end = next(i for i in range(first_port, len(lines)) if lines[i].startswith("element "))
    element_end = next(i for i in range(element_end, len(lines)) if lines[i].rstrip("\n") == "end")
    top = "".join(line for line in lines if line[:1] not in ("\t", "{") and not line.startswith(("location", "port", "element", "end")))
    texts = {
        "top_level_keys": top[:6000],
        "one_location": hdr_block(lines, "location "),
        "ports_and_their_element": hdr_block(lines, "location ") + "".join(lines[first_port:element_end + 1]),
        "hand_written": HDR_HAND_WRITTEN,
    }
    write_corpus("hdr_text", {label: t.encode() for label, t in texts.items()})
    keys = sorted(set(re.findall(r"^\t*((?:BOOL|INT|STRING|2D_INT)_[A-Z0-9_]+) = ", text.read_text(), re.M)))
    write_dict("hdr_text", "Block words, list keys, punctuation and the keys of a generated HDR file.",
               ["location ", "port ", "element ", "end\n", "include ", "LOCATIONS = ", "PORTS = ", " = ", "{", "}",
                "{ ", " }", '"', "\t", "#", "true", "false", "INT_INPUT_PORT_TYPE", "INT_OUTPUT_PORT_TYPE",
                "STRING_DEBUG_NAME"] + keys)

    seeds = {}
    with tempfile.TemporaryDirectory() as tmp:
        for label in ("ports_and_their_element", "hand_written"):
            source, compiled = pathlib.Path(tmp, label + ".hdr"), pathlib.Path(tmp, label + "_hdr.ddb")
            source.write_text(texts[label])
            subprocess.run([str(build / "tools" / "ddbtool"), "device", "compile", "--level", "6", str(source),
                            str(compiled)], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            raw = compiled.read_bytes()
            seeds["file_" + label] = bytes([0, 0]) + raw
            seeds["payload_" + label] = bytes([1, 0]) + zlib.decompress(raw)[20:]
    write_corpus("basic_info_pdb", seeds)
    sources = (ROOT / "ddb" / "dev" / "ddb_dev__pdb.cpp").read_text()
    classes = sorted(set(re.findall(r"SERIALIZER\((DEV_(?:LOCATION|PORT|ELEMENT|BASIC)\w+)", sources)))
    write_dict("basic_info_pdb", "The segment magic and version, counts, object numbers and the stored classes' tags.",
               [b"VDDB", b"\x01\x00", b"\x00\x00\x00\x00", b"\x01\x00\x00\x00", b"\x02\x00\x00\x00",
                b"\xff\xff\xff\x3f", b"\xff\xff\xff\xff"] + [fnv(c) for c in classes])


def text_blocks(lines, opener, count=1):
    """The first `count` blocks of the lines that open with `opener`, each up to its "end"."""
    found, start = [], 0
    while len(found) < count:
        start = next(i for i in range(start, len(lines)) if lines[i].startswith(opener))
        end = next(i for i in range(start, len(lines)) if lines[i].rstrip("\n") == "end")
        found.append("".join(lines[start:end + 1]))
        start = end + 1
    return "".join(found)


def compiled_seeds(build, texts, kind, name):
    """file_ and payload_ seeds of the texts compiled by ddbtool (PAD texts are named after
    their device, which ddbtool reads them for)."""
    seeds = {}
    with tempfile.TemporaryDirectory() as tmp:
        for label, text in texts.items():
            source = pathlib.Path(tmp, "%s.%s" % (name, kind))
            compiled = pathlib.Path(tmp, "%s_%s.ddb" % (name, kind))
            source.write_text(text)
            subprocess.run([str(build / "tools" / "ddbtool"), "device", "compile", "--level", "6", str(source),
                            str(compiled)], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                           env=dict(os.environ, VELCORA_ROOTDIR=str(build / "velcora")))
            raw = compiled.read_bytes()
            seeds["file_" + label] = bytes([0, 0]) + raw
            seeds["payload_" + label] = bytes([1, 0]) + zlib.decompress(raw)[20:]
    return seeds


# Rules the generated PAD files do not show: an embedded block, a reopened descriptor, a
# renamed descriptor, a default pad, currents, a pad label out of range, a global id of -1,
# the name lists, an include, a 2D table over continuation lines, and a few bad lines.
PAD_HAND_WRITTEN = """INT_NUM_PADS = 3
INT_DEFAULT_IO_STANDARD = LVTTL
VEC_STRING_BANK_NAMES = {"1", "2"}
io_standard LVTTL_A
\tCURRENT_SET = 4MA, 8MA, 3
\tREAL_VCC_CURRENT[4MA] = 10
\tREAL_GND_CURRENT[8MA] = -20
\tINT_IO_STANDARD = LVTTL
\tBOOL_IS_DEFAULT = true
\tSTRING_INTERNAL_NAME = "OTHER"
\t2D_INT_CURRENT_STRENGTH_TABLE = {
\t\t{ 1 2 }
\t\t{ 3 4 }}
io_rule VREF_MATCH
\tINT_RULE_VALUE = 5
end
io_standard LVTTL_A
\tINT_VOLTAGE = 3_3V
end
default_pad
\tIO_STANDARDS = LVTTL_A
\tBOOL_IS_USER_IO = true
\tINT_GLOBAL_ID = 7
end
pad 0
\tIO_STANDARDS = LVTTL_A, LVTTL_A
\tINT_GLOBAL_ID = 1024
\tSTRING_PAD_NAMES = "IO1_0,DIFF1_0P"
end
pad 1
\tINT_GLOBAL_ID = 1024
\tINT_GLOBAL_ID = -1
\tSTRING_PAD_NAMES = "IO1_1/CFG_D1"
end
pad 3
\tBOOL_IS_BIDIR = true
end
include "no_such_file.pad"
end
bogus line
"""

# The same for PKG files: names taken over from pin 0 and claimed twice, vectors with names,
# a pin label out of range, a BOOL line with a trailing blank, an include and bad lines.
PKG_HAND_WRITTEN = """INT_NUM_PINS = 3
INT_PACKAGE = FBGA
VEC_DOUBLE_ROW_OFFSETS_MM = {0.5, 1, 2.25}
2D_INT_BALL_MAP = {
\t{ 0 1 }
\t{ 2 }}
pin 0
\tPAD_IDS = 7, 7, 9
\tSTRING_PIN_NAME = "A1"
\tVEC_INT_IO_STANDARDS = {LVTTL, 2, LVCMOS30}
end
pin 1
\tSTRING_PIN_NAME = "a1"
\tBOOL_IS_POWER = true
pin 2
\tSTRING_PIN_NAME = "A1"
end
pin 7
\tINT_IO_BANK = 1
end
BOOL_IS_LIDDED = true 
include "no_such_file.pkg"
bogus line
"""


def pad_seeds(build):
    path = min((p for p in (build / "velcora" / "ddb").glob("*/ddb_*.pad")), key=lambda p: p.stat().st_size)
    lines = path.read_text().splitlines(keepends=True)
    top = "".join(line for line in lines[:next(i for i, l in enumerate(lines) if l.startswith("io_standard "))])
    descriptors = text_blocks(lines, "io_standard ", 3)
    texts = {
        "top_level_keys": top,
        "descriptors_rules_and_pads": top + descriptors + text_blocks(lines, "io_rule ", 2) +
                                      text_blocks(lines, "default_pad") + text_blocks(lines, "pad ", 4),
        "hand_written": PAD_HAND_WRITTEN,
    }
    write_corpus("pad_text", {label: t.encode() for label, t in texts.items()})
    keys = sorted(set(re.findall(r"^\t*((?:BOOL|INT|STRING|2D_INT|VEC_STRING)_[A-Z0-9_]+) = ", path.read_text(), re.M)))
    write_dict("pad_text", "Block words, list keys, punctuation and the keys of a generated PAD file.",
               ["io_standard ", "io_rule ", "pad ", "default_pad\n", "end\n", "include ", "IO_STANDARDS = ",
                "CURRENT_SET = ", "REAL_VCC_CURRENT[", "REAL_GND_CURRENT[", "] = ", " = ", "{", "}", "{ ", " }", '"',
                ",", "/", "\t", "#", "true", "false", "-1", "4MA", "LVTTL"] + keys)
    seeds = compiled_seeds(build, {"descriptors_rules_and_pads": texts["descriptors_rules_and_pads"],
                                   "hand_written": PAD_HAND_WRITTEN}, "pad", "ddb_os6g2700")
    write_corpus("pad_info_pdb", seeds)
    sources = (ROOT / "ddb" / "dev" / "ddb_dev__pdb.cpp").read_text()
    classes = sorted(set(re.findall(r"SERIALIZER\((DEV_(?:PAD|IO_)\w+)", sources)))
    write_dict("pad_info_pdb", "The segment magic and version, counts, object numbers and the stored classes' tags.",
               [b"VDDB", b"\x01\x00", b"\x00\x00\x00\x00", b"\x01\x00\x00\x00", b"\x02\x00\x00\x00",
                b"\x3d\x00\x00\x00", b"\x54\x00\x00\x00", b"\xff\xff\xff\x3f", b"\xff\xff\xff\xff"] +
               [fnv(c) for c in classes])


def pkg_seeds(build):
    path = min((p for p in (build / "velcora" / "ddb").glob("*/ddb_*.pkg")), key=lambda p: p.stat().st_size)
    lines = path.read_text().splitlines(keepends=True)
    top = "".join(line for line in lines[:next(i for i, l in enumerate(lines) if l.startswith("pin "))])
    texts = {
        "top_level_keys": top,
        "pins": top + text_blocks(lines, "pin ", 6),
        "hand_written": PKG_HAND_WRITTEN,
        # Counts add pins: past the harness's bound of 1000 together, each within it.
        "pin_counts_that_add_up": "INT_NUM_PINS = 600\nINT_NUM_PINS = 600\npin 700\n\tBOOL_IS_BONDED = true\nend\n",
    }
    write_corpus("pkg_text", {label: t.encode() for label, t in texts.items()})
    keys = sorted(set(re.findall(r"^\t*((?:BOOL|INT|STRING|2D_INT|VEC_INT|VEC_DOUBLE)_[A-Z0-9_]+) = ",
                                 path.read_text(), re.M)))
    write_dict("pkg_text", "Block words, list keys, punctuation and the keys of a generated PKG file.",
               ["pin ", "end\n", "include ", "PAD_IDS = ", "INT_NUM_PINS = ", " = ", "{", "}", ", ", '"', "\t",
                "#", "true", "false", "LVTTL"] + keys)
    write_corpus("pkg_info_pdb", compiled_seeds(build, {"pins": texts["pins"], "hand_written": PKG_HAND_WRITTEN},
                                                "pkg", "ddb_pins"))
    sources = (ROOT / "ddb" / "dev" / "ddb_dev__pdb.cpp").read_text()
    classes = sorted(set(re.findall(r"SERIALIZER\((DEV_(?:PIN|PKG)\w*)", sources)))
    write_dict("pkg_info_pdb", "The segment magic and version, counts, bit-vector sizes and the stored classes' tags.",
               [b"VDDB", b"\x01\x00", b"\x00\x00\x00\x00", b"\x01\x00\x00\x00", b"\x24\x00\x00\x00",
                b"\x11\x00\x00\x00", b"\x0c\x00\x00\x00", b"\xff\xff\xff\x3f", b"\xff\xff\xff\xff"] +
               [fnv(c) for c in classes])


def list_seeds():
    voltages = [n for n in enum_names("dev_voltage_enum")[::2]]
    standards = [n for n in enum_names("dev_io_standard_enum")[::2]]
    seeds = {
        "integer": b"\x00\x00-42",
        "integer_list": b"\x01\x00{1, -2, 3 4}",
        "double_list": b"\x02\x00{1.5, 2, 3e2, 1.E-3, 3D2}",
        "string_list_quoted": b'\x03\x00{"a, b", c, "{d}", ""}',
        "string_list_unbraced": b"\x03\x00a b",
        "2d_numbers": b"\x04\x00{{1, 2, 3}, {4, 5}}",
        "2d_dump_form": b"\x04\x00{ { 1 2 3 } { 4 5 }}",
        "2d_voltage_column": ("\x04\x00{{0, %s}, {1, %s}}" % (voltages[3], voltages[5])).encode(),
        "2d_voltage_rows": ("\x04\x14{{%s, 2}, {%s}}" % (voltages[2], voltages[8])).encode(),
        "int_or_name": ("\x05\x01%s" % voltages[4]).encode(),
        "int_number": b"\x05\x0012-",
    }
    write_corpus("list_parsers", seeds)
    write_dict("list_parsers", "List punctuation, number forms and value names of the key tables.",
               ["{", "}", ", ", " ", '"', "-", ".", "e", "E+", "D", "1e999", "0x", "\n\t"] + voltages + standards
               + enum_names("dev_temperature_enum")[::2] + enum_names("dev_location_enum")[::2][:40])


def tcl_seeds(text):
    parts = re.findall(r"^part\t(\S+)", text, re.M)
    devices = re.findall(r"^device\t(\S+)", text, re.M)
    commands = ["get_family_list", "enumerate_family_traits", "test_family_trait_of", "report_family_info",
                "get_part_list", "report_part_info", "report_device_info", "test_part_trait_of", "get_part_info",
                "get_family_info", "get_dstr_string", "test_device_trait_of", "get_temperature_option"]
    def seed(command, *words):
        return bytes([commands.index(command)]) + b"\x00".join(w.encode() for w in words)
    part = parts[len(parts) // 2]
    seeds = {
        "get_family_list_all": seed("get_family_list", "-all"),
        "enumerate_family_traits": seed("enumerate_family_traits"),
        "test_family_trait_of": seed("test_family_trait_of", "-family", "Corvane II", "-trait", "FITTER_ECO"),
        "report_family_info": seed("report_family_info", "Corvane II"),
        "get_part_list_filtered": seed("get_part_list", "-family", "Corvane II", "-package", "FBGA", "-pin_count",
                                       "484", "-speed_grade", "6"),
        "report_part_info": seed("report_part_info", part),
        "report_device_info": seed("report_device_info", devices[len(devices) // 2]),
        "test_part_trait_of": seed("test_part_trait_of", "-trait", "LEAD_FREE", part),
        "get_part_info_fields": seed("get_part_info", part, "-device", "-package", "-pin_count", "-speed_grade",
                                     "-temperature_grade"),
        "get_part_info_abbreviated": seed("get_part_info", "-pi", part),
        "get_family_info": seed("get_family_info", "-family", "CORVANE2", "-device_folder"),
        "get_dstr_string": seed("get_dstr_string", "-family", "CORVANE2"),
        "test_device_trait_of": seed("test_device_trait_of", "-device", devices[3], "-trait", "NO_POWER_MODEL"),
        "get_temperature_option_help": seed("get_temperature_option", "-help"),
        "get_temperature_option_list": seed("get_temperature_option", "-list_min", part),
    }
    write_corpus("tcl_commands", seeds)
    options = ["-h", "-help", "-long_help", "-all", "-debug", "-debug_names", "-default_max", "-default_min",
               "-default_voltage", "-device", "-device_folder", "-family", "-family_variant", "-list_max",
               "-list_min", "-migration_families", "-package", "-package_suffix_string", "-part", "-pin_count",
               "-speed_grade", "-temperature_grade", "-trait"]
    write_dict("tcl_commands", "Options, the word separator, family names, traits and a few parts and devices.",
               options + [b"\x00"] + enum_names("dev_family_enum") + enum_names("dev_family_trait_enum")[::2][:60]
               + enum_names("dev_part_trait_enum")[::2] + enum_names("dev_device_trait_enum")[::2]
               + parts[::400] + devices[::40])


def keys_of(record, kinds):
    """The key names of a record's .def tables ("INT_NUM_LEVELS", ...)."""
    names = []
    for kind in kinds:
        text = (ROOT / "host" / "tables" / ("%s_%s_data.def" % (record, kind.lower()))).read_text()
        names += ["%s_%s" % (kind, k) for k in re.findall(r"^ASTR_KEY\((\w+),", text, re.M)]
    return names


def compiled_seeds(build, texts, kind):
    """Persistent-file seeds of the texts, compiled by ddbtool: the file as it is, and its payload
    under a valid header."""
    seeds = {}
    with tempfile.TemporaryDirectory() as tmp:
        for label, text in texts.items():
            source, compiled = pathlib.Path(tmp, label + "." + kind), pathlib.Path(tmp, label + "_" + kind + ".ddb")
            source.write_text(text)
            subprocess.run([str(build / "tools" / "ddbtool"), "device", "compile", "--level", "6", str(source),
                            str(compiled)], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            if not compiled.exists():
                continue
            raw = compiled.read_bytes()
            try:
                segment = zlib.decompress(raw)
            except zlib.error:
                segment = raw
            seeds["file_" + label] = bytes([0, 0]) + raw
            seeds["payload_" + label] = bytes([1, 0]) + segment[20:]
    return seeds


def pdb_dict(name, prefixes):
    sources = (ROOT / "ddb" / "dev" / "ddb_dev__pdb.cpp").read_text()
    classes = sorted(set(re.findall(r"SERIALIZER\(((?:%s)\w*)" % "|".join(prefixes), sources)))
    write_dict(name, "The segment magic and version, counts, object numbers and the stored classes' tags.",
               [b"VDDB", b"\x01\x00", b"\x00\x00\x00\x00", b"\x01\x00\x00\x00", b"\x02\x00\x00\x00",
                b"\xff\xff\xff\x3f", b"\xff\xff\xff\xff", b"\x1c\x00\x00\x00", b"\x54\x01\x00\x00"]
               + [fnv(c) for c in classes])


# Rules the generated files do not show: a reopened supply, an embedded block, an unknown
# supply, an include, a 2D table over continuation lines, "end" at the top and bad values.
PART_INFO_HAND_WRITTEN = """INT_MAX_JUNCTION_TEMP = 100
power_supply VCCINT
\tINT_NOMINAL_MV = 900
power_supply VCCAUX
\tENUM_VOLTAGE = 2_5V
end
power_supply VCCINT
\t2D_INT_RIPPLE_TABLE = {
\t{ 10 5 }
\t{ 1000 3 }}
\tBOOL_IS_CORE = maybe
end
power_supply NO_SUCH_SUPPLY
\tINT_MIN_MV = 1
end
end
ENUM_TEMPERATURE_GRADE = LUKEWARM
include "no_such_file.part_info"
"""


def part_info_seeds(build):
    files = sorted((build / "velcora" / "ddb").glob("*/ddb_*.part_info"), key=lambda p: p.stat().st_size)
    small, large = files[0].read_text(), files[-1].read_text()
    blocks = large.split("power_supply ")
    texts = {"small_part": small, "top_level_and_one_supply": blocks[0] + "power_supply " + blocks[1],
             "hand_written": PART_INFO_HAND_WRITTEN}
    write_corpus("part_info_text", {label: t.encode() for label, t in texts.items()})
    keys = keys_of("dev_part_info", ("BOOL", "INT", "ENUM", "STRING", "2D_INT")) + \
        keys_of("dev_power_supply_desc", ("BOOL", "INT", "ENUM", "STRING", "2D_INT"))
    write_dict("part_info_text", "Block words, punctuation, the keys and the power supplies.",
               ["power_supply ", "end\n", "include ", " = ", "{", "}", "{ ", " }}", '"', "\t", "#", "true", "false"]
               + keys + enum_names("dev_power_supply_enum")[::2] + enum_names("dev_temperature_enum")[::2])
    write_corpus("part_info_pdb", compiled_seeds(build, {"small_part": small, "hand_written": PART_INFO_HAND_WRITTEN},
                                                 "part_info"))
    pdb_dict("part_info_pdb", ("DEV_PART", "DEV_POWER"))


# Rules the generated files do not show: a reopened switch, an embedded block, the MCF string
# given twice to two switches, a STRING set twice, bad pass trees, lines outside blocks, an
# include and an unknown switch.
RSI_HAND_WRITTEN = """INT_NUM_PASS_TREES = 1
global_info
\tINT_DEFAULT_SWITCH = H4_TO_V4
routing_switch H4_TO_V4
\tPASS_TREES = H4_TREE, NO_TREE
\tSTRING_MCF_NAME = "rs:a"
\tSTRING_NLSPC_NAME = "a"
\tINT_MUX_SIZE = 4
\tINT_MUX_SIZE = 8
end
routing_switch V4_TO_H4
\tSTRING_MCF_NAME = "rs:a"
\t2D_INT_DELAY_TABLE = {
\t{ 1 2 }
\t{ 3 4 }}
end
routing_switch H4_TO_V4
\tSTRING_NLSPC_NAME = "b"
\tBOOL_IS_GLOBAL = true
end
pass_tree H4_TREE
\tINT_NUM_LEVELS = 2
end
routing_switch NO_SUCH_SWITCH
end
include "no_such_file.rsi"
"""


def rsi_seeds(build):
    text = min((build / "velcora" / "ddb").glob("*/ddb_*.rsi"), key=lambda p: p.stat().st_size).read_text()
    lines = text.splitlines(keepends=True)
    first_switch = next(i for i, line in enumerate(lines) if line.startswith("routing_switch "))
    ends = [i for i in range(first_switch, len(lines)) if lines[i].rstrip("\n") == "end"]
    texts = {"global_and_pass_trees": "".join(lines[:first_switch]),
             "two_switches": "".join(lines[first_switch:ends[1] + 1]),
             "hand_written": RSI_HAND_WRITTEN}
    write_corpus("rsi_text", {label: t.encode() for label, t in texts.items()})
    keys = keys_of("dev_routing_global", ("INT", "2D_INT")) + keys_of("dev_pass_tree_desc", ("INT", "2D_INT")) + \
        keys_of("dev_routing_switch_desc", ("BOOL", "INT", "STRING", "2D_INT"))
    write_dict("rsi_text", "Block words, punctuation, the keys, a few switches and the pass trees.",
               ["global_info\n", "routing_switch ", "pass_tree ", "end\n", "include ", "PASS_TREES = ", ", ", " = ",
                "{", "}", '"', "\t", "#", "true", "false"] + keys + enum_names("dev_pass_tree_enum")[::2]
               + enum_names("dev_routing_switch_enum")[::2][::17] + enum_names("dev_location_enum")[::2][:12])
    write_corpus("rsi_pdb", compiled_seeds(build, {"two_switches": "".join(lines[:ends[1] + 1]),
                                                   "hand_written": RSI_HAND_WRITTEN}, "rsi"))
    pdb_dict("rsi_pdb", ("DEV_ROUTING", "DEV_PASS"))


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", default=str(ROOT / "build" / "release"),
                        help="a build tree with ddbtool and the compiled bundled catalogue")
    build = pathlib.Path(parser.parse_args().build)
    text = CATALOGUE.read_text()
    (HERE / "dict").mkdir(exist_ok=True)
    archive_seeds(build, text)
    family_info_seeds(text)
    catalogue_seeds(build)
    list_seeds()
    tcl_seeds(text)
    hdr_seeds(build)
    pad_seeds(build)
    pkg_seeds(build)
    part_info_seeds(build)
    rsi_seeds(build)


if __name__ == "__main__":
    main()
