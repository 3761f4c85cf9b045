#!/usr/bin/env python3
"""Reads back every device-data text that tools/gen_device_files.py writes and checks it
against its format's grammar and the .def tables, with a parser of its own.

Basic info (HDR):
  - block lines ("location NAME", "port NAME", "element NAME") closed by "end", never
    nested; attribute lines "KEY = VALUE" of the kinds the record has, with key names and
    symbolic value names that the tables define; quoted strings without embedded quotes;
    2D values on one line or as a lone "{" with continuation lines;
  - every name in an element's LOCATIONS and PORTS defined earlier in the file, each port
    with exactly one of INT_INPUT_PORT_TYPE and INT_OUTPUT_PORT_TYPE and no DEBUG_NAME,
    block names unique, the further names of locations and elements (STRING keys 0, 3
    and 4) naming no other location or element, no two elements of one resource type;
  - ENUM_DEVICE and ENUM_FAMILY naming the device and its family, 100 to 400 element types;
    the largest file at least 4 MiB.
Pads, package pins, part info, routing switches (PAD, PKG, PART_INFO, RSI): the same rules
for blocks and attribute lines (vector values too), the block names of the tables'
enumerations, and
  - PAD: the pad count first, every pad once, a pad's descriptors defined before it and
    one per I/O standard, every standard with one default descriptor, 40 to 80 of them,
    currents only of the current set, global ids unique, the pad names of the families with
    the new database unique; the largest file over 1,500 pads;
  - PKG: the pin count first, every pin once, pin names unique, pad ids of the device's PAD
    file, no user I/O pad bonded twice; the largest package over 1,900 pins;
  - RSI: pass trees defined before the switches name them, all 26, no switch key given
    twice (nor INT key 0, which the block opener sets), MCF strings unique; the largest file
    with all 340 switch kinds.
Every file that the plan of tools/devdata/files.py names must exist (in the staging folder
for the families compiled to .ddb).

  check_device_files.py --root DIR --staging DIR [--source TREE] [--jobs N]
Exit status 1 naming each fault. Python 3 standard library only.
"""

import argparse
import multiprocessing
import os
import re
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from devdata import files  # noqa: E402
from devdata.catalogue import Catalogue, Tables  # noqa: E402

SOURCE = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
LARGEST_AT_LEAST = 4 * 1024 * 1024
BLOCK = re.compile(r"^\s*(location|port|element)\s+(\w+)\s*$")
ATTR = re.compile(r"^\s*(BOOL|INT|ENUM|STRING|2D_INT)_(\w+)\s*=\s*(.+?)\s*$")
LIST = re.compile(r"^\s*(LOCATIONS|PORTS)\s*=\s*(.+?)\s*$")
INTEGER = re.compile(r"^-?\d+$")
SEPARATORS = re.compile(r"[,\s]+")
RECORDS = {None: ("dev_basic_info", ("BOOL", "INT", "ENUM", "STRING", "2D_INT")),
           "location": ("dev_location_desc", ("BOOL", "INT", "STRING")),
           "port": ("dev_port_desc", ("BOOL", "INT", "STRING")),
           "element": ("dev_element_desc", ("BOOL", "INT", "STRING", "2D_INT"))}
# The other formats: per block keyword (None: top level) its record and kinds.
FORMATS = {
    "pad": {None: ("dev_pad_info", ("BOOL", "INT", "STRING", "VEC_STRING", "2D_INT")),
            "io_standard": ("dev_io_standard_desc", ("BOOL", "INT", "STRING", "2D_INT")),
            "io_rule": ("dev_io_rule", ("BOOL", "INT", "STRING")), "pad": ("dev_pad", ("BOOL", "INT", "STRING", "2D_INT")),
            "default_pad": ("dev_pad", ("BOOL", "INT", "STRING", "2D_INT"))},
    "pkg": {None: ("dev_pkg_info", ("BOOL", "INT", "STRING", "2D_INT", "VEC_DOUBLE")),
            "pin": ("dev_pin", ("BOOL", "INT", "STRING", "VEC_INT"))},
    "part_info": {None: ("dev_part_info", ("BOOL", "INT", "ENUM", "STRING", "2D_INT")),
                  "power_supply": ("dev_power_supply_desc", ("BOOL", "INT", "ENUM", "STRING", "2D_INT"))},
    "rsi": {None: (None, ()), "global_info": ("dev_routing_global", ("INT", "2D_INT")),
            "routing_switch": ("dev_routing_switch_desc", ("BOOL", "INT", "STRING", "2D_INT")),
            "pass_tree": ("dev_pass_tree_desc", ("INT", "2D_INT"))},
}
UNNAMED_BLOCKS = ("default_pad", "global_info")
# Blocks named by an enumeration.
BLOCK_NAMES = {"io_rule": "dev_io_rule_enum", "power_supply": "dev_power_supply_enum",
               "routing_switch": "dev_routing_switch_enum", "pass_tree": "dev_pass_tree_enum"}
FLOAT = re.compile(r"^[-+]?\d+(\.\d+)?([DdEe][-+]?\d+)?$")
CURRENT = re.compile(r"^REAL_(VCC|GND)_CURRENT\[(\w+)\]$")
LARGEST_PADS, LARGEST_PINS, ALL_SWITCHES = 1500, 1900, 340

_SCHEMA = None


class Schema:
    """Key names per (record, kind) with the names their values may take."""

    def __init__(self, source):
        tables = Tables(source)
        self.keys = {}
        for record, kinds in list(RECORDS.values()) + [r for blocks in FORMATS.values() for r in blocks.values()
                                                        if r[0]]:
            for kind in kinds:
                table = tables.keys(record, kind.lower())
                for key in table.keys:
                    stem, row, column = table.values.get(key, (None, None, None))
                    names = set(tables.enum(stem).value) if stem else None
                    self.keys[(record, kind, key)] = (names, row, column)
        # STRING keys 0, 3 and 4 of locations and elements name them in the name tables.
        self.name_keys = {block: set(tables.keys(RECORDS[block][0], "string").keys[k] for k in (0, 3, 4))
                          for block in ("location", "element")}
        self.locations = set(tables.enum("dev_location_enum").names)
        self.elements = set(tables.enum("dev_element_enum").names)
        self.enums = {stem: set(tables.enum(stem).names) for stem in BLOCK_NAMES.values()}
        self.currents = set(tables.enum("dev_current_strength_enum").names)
        self.lookups = {}
        self.standards = set(tables.enum("dev_io_standard_enum").names)


_PATTERNS = {}


def naming_pattern(naming):
    """A pattern that a well-formed 2D value of the key matches: integers in every cell but
    those that the key's enumeration names (all cells, or one column)."""
    names, row, column = naming
    key = (id(names), row, column)
    if key not in _PATTERNS:
        number = r"-?\d+"
        cell = "(?:%s|%s)" % ("|".join(sorted(map(re.escape, names), key=len, reverse=True)), number) \
            if names and row is None else number
        if column is None:
            body = r"%s(?:[ ,]+%s)*" % (cell, cell)
        else:
            body = r"(?:%s[ ,]+){%d}%s(?:[ ,]+%s)*" % (number, column, cell, number)
        _PATTERNS[key] = re.compile(r"\{(?:[ ,]*\{ *%s *\})*\}$" % body)
    return _PATTERNS[key]


def check_value(kind, naming, value):
    """None when the value is good, else the fault."""
    names, row, column = naming
    if kind == "BOOL":
        return None if value in ("true", "false") else "bad boolean"
    if kind == "STRING":
        return None if re.fullmatch(r'"[^"]*"', value) else "bad string"
    if kind in ("INT", "ENUM"):
        if INTEGER.match(value):
            return None if -2 ** 31 <= int(value) < 2 ** 31 else "integer out of range"
        return None if names and row is None and column is None and value in names else "unknown name " + value
    text = value.strip()
    if naming_pattern(naming).match(text):
        return None
    inner = text[1:-1] if text.startswith("{") and text.endswith("}") else None
    if inner is None or re.sub(r"\{[^{}]*\}", "", inner).strip(", "):
        return "malformed 2D value"
    for r, body in enumerate(re.findall(r"\{([^{}]*)\}", inner)):
        cells = [c for c in SEPARATORS.split(body) if c]
        if not cells:
            return "empty 2D row"
        for c, cell in enumerate(cells):
            named = names and row in (None, r) and column in (None, c)
            if not INTEGER.match(cell) and not (named and cell in names):
                return "bad 2D element %s at row %d, column %d" % (cell, r, c)
    return None


def check_vector(kind, naming, value):
    """None when a vector value is good, else the fault."""
    names, _, column = naming
    if not (value.startswith("{") and value.endswith("}")):
        return "vector value without braces"
    if kind == "VEC_STRING":
        inner = value[1:-1].strip()
        return None if not inner or re.fullmatch(r'"[^"]*"(, "[^"]*")*', inner) else "bad string list"
    for position, cell in enumerate(c for c in SEPARATORS.split(value.strip("{}")) if c):
        if kind == "VEC_DOUBLE" and not FLOAT.match(cell):
            return "bad number %s" % cell
        if kind == "VEC_INT" and not INTEGER.match(cell) and not (names and column in (None, position) and cell in names):
            return "bad element %s at %d" % (cell, position)
    return None


class Data:
    """What a device's PAD file says that its package files rely on."""

    def __init__(self):
        self.pads, self.user = 0, set()


def check_data(job):
    """Faults and sizes of the PAD, RSI, PKG and PART_INFO files of one device, its PAD file
    first: (faults, [(kind, path, bytes, count)]), count the pads, pins or switch kinds."""
    device, new_names, paths = job
    faults, sizes, data = [], [], Data()
    for kind, path in paths:
        if os.path.isfile(path):
            count = check_text(kind, path, new_names, data, faults)
            sizes.append((kind, path, os.path.getsize(path), count))
    return faults, sizes


def lookup(kind, block):
    """{key as written: (kind prefix, key, naming)} of a block of a format."""
    cache = _SCHEMA.lookups
    if (kind, block) not in cache:
        record, kinds = FORMATS[kind][block]
        cache[(kind, block)] = {"%s_%s" % (prefix, key): (prefix, key, naming)
                                for (r, prefix, key), naming in _SCHEMA.keys.items() if r == record and prefix in kinds}
    return cache[(kind, block)]


# The attributes that the checks of a format follow: (block, kind prefix, key).
HOOKS = {"pad": {("io_standard", "INT", "IO_STANDARD"), ("io_standard", "BOOL", "IS_DEFAULT"),
                 ("pad", "BOOL", "IS_USER_IO"), ("default_pad", "BOOL", "IS_USER_IO"), ("pad", "INT", "GLOBAL_ID"),
                 ("pad", "STRING", "PAD_NAMES")},
         "pkg": {("pin", "STRING", "PIN_NAME")}, "part_info": set(), "rsi": set()}


def check_text(kind, path, new_names, data, faults):
    """Checks one file of a format other than HDR; returns its count of pads, pins or
    switch kinds."""
    blocks, hooks = FORMATS[kind], HOOKS[kind]
    block = name = None
    keys = lookup(kind, None) if blocks[None][0] else {}
    first = kind in ("pad", "pkg")
    state = {"labels": set(), "count": None, "descs": {}, "defaults": set(), "gids": set(), "names": set(),
             "pad_stds": set(), "currents": set(), "bonded": set(), "trees": set(), "mcf": set(), "set": {},
             "user": {}, "default_user": True, "switches": set()}
    pending = None

    def fault(number, text):
        if len(faults) < 40:
            faults.append("%s:%d: %s" % (path, number, text))

    number = 0
    with open(path, encoding="utf-8") as f:
        for number, line in enumerate(f, 1):
            stripped = line.strip()
            if pending:
                if len(stripped) >= 3 and stripped[0] == "{" and stripped[-1] == "}":
                    pending[2].append(stripped)
                    continue
                problem = check_value("2D_INT", pending[1][2], "".join(pending[2]))
                if problem:
                    fault(pending[0], "2D_INT_%s: %s" % (pending[1][1], problem))
                pending = None
            if not stripped or stripped[0] == "#":
                continue
            key, eq, value = stripped.partition("=")
            if not eq:
                words = stripped.split()
                if stripped == "end":
                    if not block:
                        fault(number, "end outside a block")
                    block = name = None
                    keys = lookup(kind, None) if blocks[None][0] else {}
                elif words[0] in blocks and len(words) == (1 if words[0] in UNNAMED_BLOCKS else 2):
                    if block:
                        fault(number, "block inside the block %s" % name)
                    block, name = words[0], words[-1]
                    keys = lookup(kind, block)
                    open_block(kind, block, name, number, state, data, fault)
                else:
                    fault(number, "syntax error: %s" % stripped[:80])
                continue
            key, value = key.rstrip(), value.lstrip()
            if first:
                first = False
                if key != ("INT_NUM_PADS" if kind == "pad" else "INT_NUM_PINS") or not INTEGER.match(value):
                    fault(number, "the first assignment is not the %s count" % ("pad" if kind == "pad" else "pin"))
                else:
                    state["count"] = int(value)
                    data.pads = state["count"] if kind == "pad" else data.pads
                    if kind == "pkg":
                        continue
            entry = keys.get(key)
            if entry is None:
                if not special(kind, block, name, key, value, number, state, data, fault):
                    fault(number, "%s: no such key or line here" % key)
                continue
            prefix, short, naming = entry
            if prefix == "BOOL":
                problem = None if value in ("true", "false") else "bad boolean"
                if kind == "pkg" and line.rstrip("\n")[-1:].isspace():
                    problem = "blanks after a BOOL value"
            elif prefix == "STRING":
                problem = None if len(value) >= 2 and value[0] == value[-1] == '"' and '"' not in value[1:-1] \
                    else "bad string"
            elif prefix in ("INT", "ENUM") and INTEGER.match(value):
                problem = None
            elif prefix == "2D_INT" and value == "{":
                pending = (number, entry, ["{"])
                continue
            elif prefix.startswith("VEC_"):
                problem = check_vector(prefix, naming, value)
            else:
                problem = check_value(prefix, naming, value)
            if problem:
                fault(number, "%s: %s" % (key, problem))
            if (block, prefix, short) in hooks or block == "routing_switch":
                attribute(kind, block, name, prefix, short, value, number, state, fault, new_names)
    if pending:
        problem = check_value("2D_INT", pending[1][2], "".join(pending[2]))
        if problem:
            fault(pending[0], "2D_INT_%s: %s" % (pending[1][1], problem))
    if block:
        fault(number, "block %s not closed" % name)
    return finish_file(kind, state, data, fault)


def open_block(kind, block, name, number, state, data, fault):
    """Checks a block opener's name."""
    schema = _SCHEMA
    if block in BLOCK_NAMES and name not in schema.enums[BLOCK_NAMES[block]]:
        fault(number, "%s %s is not in the enumeration" % (block, name))
    if block in ("pad", "pin"):
        if not INTEGER.match(name) or state["count"] is None or not 0 <= int(name) < state["count"]:
            fault(number, "%s %s: no such %s" % (block, name, block))
        elif int(name) in state["labels"]:
            fault(number, "%s %s given twice" % (block, name))
        state["labels"].add(int(name) if INTEGER.match(name) else name)
        state["pad_stds"] = set()
        state["user"][name] = None
    elif block == "io_standard":
        state["descs"].setdefault(name, None)
    elif block == "pass_tree":
        state["trees"].add(name)
    elif block == "routing_switch":
        state["switches"].add(name)


def special(kind, block, name, key, value, number, state, data, fault):
    """Lines of their own: pad descriptors and currents, pad ids, pass trees. True when the
    line was one."""
    schema = _SCHEMA
    if kind == "pad" and block in ("pad", "default_pad") and key == "IO_STANDARDS":
        for token in value.split(", "):
            std = state["descs"].get(token, "?")
            if std == "?":
                fault(number, "descriptor %s not defined before the pad" % token)
            elif std in state["pad_stds"]:
                fault(number, "two descriptors of %s on pad %s" % (std, name))
            state["pad_stds"].add(std)
        return True
    if kind == "pad" and block == "io_standard":
        m = CURRENT.match(key)
        if key == "CURRENT_SET":
            for token in value.split(", "):
                if token not in schema.currents and not INTEGER.match(token):
                    fault(number, "bad current strength %s" % token)
                state["currents"].add(token)
            return True
        if m:
            if m.group(2) not in state["currents"] or not INTEGER.match(value):
                fault(number, "%s: strength not in the current set, or not a number" % key)
            return True
    if kind == "pkg" and block == "pin" and key == "PAD_IDS":
        for token in value.split(", "):
            if not INTEGER.match(token) or not 0 <= int(token) < data.pads:
                fault(number, "pad id %s not in the device's PAD file" % token)
            elif int(token) in data.user:
                if int(token) in state["bonded"]:
                    fault(number, "user I/O pad %s bonded twice" % token)
                state["bonded"].add(int(token))
        return True
    if kind == "rsi" and block == "routing_switch" and key == "PASS_TREES":
        for token in value.split(", "):
            if token not in state["trees"]:
                fault(number, "pass tree %s not defined before the switch" % token)
        return True
    return False


def attribute(kind, block, name, prefix, key, value, number, state, fault, new_names):
    """The checks of single attributes beyond their syntax."""
    if kind == "pad":
        if block == "io_standard" and prefix == "INT" and key == "IO_STANDARD":
            state["descs"][name] = value
        elif block == "io_standard" and prefix == "BOOL" and key == "IS_DEFAULT" and value == "true":
            state["defaults"].add(name)
        elif block in ("pad", "default_pad") and prefix == "BOOL" and key == "IS_USER_IO":
            if block == "default_pad":
                state["default_user"] = value == "true"
            else:
                state["user"][name] = value == "true"
        elif block == "pad" and prefix == "INT" and key == "GLOBAL_ID" and value != "-1":
            if value in state["gids"]:
                fault(number, "global id %s given twice" % value)
            state["gids"].add(value)
        elif block == "pad" and prefix == "STRING" and key == "PAD_NAMES" and new_names:
            text = value.strip('"')
            names = [text] + ([text.split(",")[0]] if "," in text else text.split("/") if "/" in text else [])
            for n in dict.fromkeys(n.upper() for n in names):
                if n in state["names"]:
                    fault(number, "pad name %s claimed twice" % n)
                state["names"].add(n)
    elif kind == "pkg" and block == "pin" and prefix == "STRING" and key == "PIN_NAME":
        if value.upper() in state["names"]:
            fault(number, "pin name %s given twice" % value)
        state["names"].add(value.upper())
    elif kind == "rsi" and block == "routing_switch":
        if prefix == "STRING" and key == "MCF_NAME":
            if value in state["mcf"]:
                fault(number, "MCF string %s names two switches" % value)
            state["mcf"].add(value)
        elif prefix != "STRING":
            seen = state["set"].setdefault(name, set())
            if (prefix, key) in seen or (prefix, key) == ("INT", "ROUTING_SWITCH"):
                fault(number, "%s_%s of switch %s set twice" % (prefix, key, name))
            seen.add((prefix, key))


def finish_file(kind, state, data, fault):
    """The checks of a whole file; returns its count of pads, pins or switch kinds."""
    if kind in ("pad", "pkg") and state["count"] is not None and len(state["labels"]) != state["count"]:
        fault(0, "%d of %d %ss defined" % (len(state["labels"]), state["count"], "pad" if kind == "pad" else "pin"))
    if kind == "pad":
        stds = {s for s in state["descs"].values() if s}
        if None in state["descs"].values():
            fault(0, "a descriptor without its I/O standard")
        defaults = [state["descs"].get(d) for d in state["defaults"]]
        for std in stds:
            if defaults.count(std) != 1:
                fault(0, "%s has %d default descriptors" % (std, defaults.count(std)))
        if not 40 <= len(stds) <= 80:
            fault(0, "%d I/O standards" % len(stds))
        data.user = {int(p) for p, user in state["user"].items()
                     if INTEGER.match(p) and (state["default_user"] if user is None else user)}
    if kind == "rsi" and len(state["trees"]) != 26:
        fault(0, "%d pass trees" % len(state["trees"]))
    return {"pad": state["count"], "pkg": state["count"], "rsi": len(state["switches"])}.get(kind) or 0


def check_file(job):
    """(path, faults, size in bytes) of one HDR file."""
    path, device, family = job
    schema, faults = _SCHEMA, []
    defined = {"location": set(), "port": set(), "element": set()}
    named = {"location": {}, "element": {}}  # the name tables: name -> block name
    by_type = {}  # the elements by netlist resource type
    block = name = None
    port_types = 0
    globals_seen = {}
    pending = None  # (record, key, number, text so far) of a 2D value over several lines

    def fault(number, text):
        if len(faults) < 20:
            faults.append("%s:%d: %s" % (path, number, text))

    def finish(record, key, number, text):
        problem = check_value("2D_INT", schema.keys[(record, "2D_INT", key)], text)
        if problem:
            fault(number, "%s: %s" % (key, problem))

    with open(path, encoding="utf-8") as f:
        for number, line in enumerate(f, 1):
            if pending:
                row = line.strip()  # a continuation line: ^\s*(\{\{?.+\}\}?)\s*$
                if len(row) >= 3 and row[0] == "{" and row[-1] == "}":
                    pending[3].append(row)
                    continue
                finish(pending[0], pending[1], pending[2], "".join(pending[3]))
                pending = None
            stripped = line.strip()
            if not stripped or stripped.startswith("#"):
                continue
            m = BLOCK.match(line)
            if m:
                if block:
                    fault(number, "block inside the block %s" % name)
                block, name, port_types = m.group(1), m.group(2), 0
                if name in defined[block]:
                    fault(number, "%s %s defined twice" % (block, name))
                defined[block].add(name)
                if block in named and named[block].setdefault(name, name) != name:
                    fault(number, "%s name %s also names %s" % (block, name, named[block][name]))
                if block == "location" and name not in schema.locations or \
                        block == "element" and name not in schema.elements:
                    fault(number, "%s %s is not in the %s enumeration" % (block, name, block))
                continue
            if stripped == "end":
                if not block:
                    fault(number, "end outside a block")
                elif block == "port" and port_types != 1:
                    fault(number, "port %s has %d port types" % (name, port_types))
                block = None
                continue
            m = LIST.match(line)
            if m and block == "element":
                kind = "location" if m.group(1) == "LOCATIONS" else "port"
                for item in (t for t in SEPARATORS.split(m.group(2)) if t):
                    if item not in defined[kind]:
                        fault(number, "%s %s not defined before element %s" % (kind, item, name))
                continue
            m = ATTR.match(line)
            record, kinds = RECORDS[block]
            if not m or m.group(1) not in kinds:
                fault(number, "syntax error: %s" % stripped[:80])
                continue
            kind, key, value = m.groups()
            naming = schema.keys.get((record, kind, key))
            if naming is None:
                fault(number, "%s_%s is no key of %s" % (kind, key, record))
                continue
            if block == "port":
                if kind == "STRING" and key == "DEBUG_NAME":
                    fault(number, "port %s sets its DEBUG_NAME" % name)
                port_types += kind == "INT" and key in ("INPUT_PORT_TYPE", "OUTPUT_PORT_TYPE")
            if block is None:
                globals_seen[kind + "_" + key] = value
            elif block == "element" and kind == "INT" and key == "CDB_RE_TYPE" and \
                    by_type.setdefault(value, name) != name:
                fault(number, "elements %s and %s have the resource type %s" % (by_type[value], name, value))
            elif kind == "STRING" and block in named and key in schema.name_keys[block]:
                if named[block].setdefault(value.strip('"'), name) != name:
                    fault(number, "%s name %s also names %s" % (block, value, named[block][value.strip('"')]))
            if kind == "2D_INT" and value == "{":
                pending = (record, key, number, ["{"])
                continue
            problem = check_value(kind, naming, value)
            if problem:
                fault(number, "%s_%s: %s" % (kind, key, problem))
    if pending:
        finish(pending[0], pending[1], pending[2], "".join(pending[3]))
    if block:
        fault(number, "block %s not closed" % name)
    for key, want in (("ENUM_DEVICE", device), ("ENUM_FAMILY", family)):
        if globals_seen.get(key) != want:
            fault(0, "%s is %s, not %s" % (key, globals_seen.get(key), want))
    if not 100 <= len(defined["element"]) <= 400:
        fault(0, "%d element types" % len(defined["element"]))
    return path, faults, os.path.getsize(path)


def run(function, jobs, processes):
    if processes > 1 and "fork" in multiprocessing.get_all_start_methods():
        with multiprocessing.get_context("fork").Pool(processes) as pool:
            return list(pool.imap_unordered(function, jobs, chunksize=1))
    return [function(j) for j in jobs]


def main(argv):
    global _SCHEMA
    ap = argparse.ArgumentParser(description="Check the generated device-data files.")
    ap.add_argument("--root", required=True)
    ap.add_argument("--staging", required=True)
    ap.add_argument("--source", default=SOURCE)
    ap.add_argument("--jobs", type=int, default=os.cpu_count() or 1)
    args = ap.parse_args(argv)
    _SCHEMA = Schema(args.source)
    catalogue = Catalogue(args.source)
    plan = files.plan(catalogue, os.path.abspath(args.root), os.path.abspath(args.staging))
    missing = [f.text for f in plan if not os.path.isfile(f.text)]
    hdr_jobs, data_jobs = [], {}
    order = {"pad": 0, "rsi": 1, "pkg": 2, "part_info": 3}
    for f in plan:
        family = f.device.value("FAMILY")
        if f.kind == "hdr":
            if os.path.isfile(f.text):
                hdr_jobs.append((f.text, f.device.name, family))
        else:
            new_names = "NEW_DDB_SUPPORT" in catalogue.families[family].values("TRAITS")
            data_jobs.setdefault(f.device.name, (f.device.name, new_names, []))[2].append((f.kind, f.text))
    for _, _, paths in data_jobs.values():
        paths.sort(key=lambda p: order[p[0]])
    jobs = [(check_file, j) for j in hdr_jobs] + [(check_data, j) for j in data_jobs.values()]
    results = run(dispatch, sorted(jobs, key=lambda j: j[0] is check_data), args.jobs)
    faults = ["missing: %s" % p for p in missing]
    sizes = {kind: [] for kind in files.KINDS}
    for kind, result in results:
        if kind == "hdr":
            faults += result[1]
            sizes["hdr"].append((result[2], 0))
        else:
            faults += result[0]
            for k, _, size, count in result[1]:
                sizes[k].append((size, count))
    largest = {k: (max([s for s, _ in v] or [0]), max([c for _, c in v] or [0])) for k, v in sizes.items()}
    for kind, (bytes_, count), least, what in (("hdr", largest["hdr"], LARGEST_AT_LEAST, "bytes"),
                                             ("pad", largest["pad"], LARGEST_PADS + 1, "pads"),
                                             ("pkg", largest["pkg"], LARGEST_PINS + 1, "pins"),
                                             ("rsi", largest["rsi"], ALL_SWITCHES, "switch kinds")):
        have = bytes_ if kind == "hdr" else count
        if have < least:
            faults.append("the largest %s file has %d %s, fewer than %d" % (kind.upper(), have, what, least))
    for text in faults:
        print(text)
    for kind in files.KINDS:
        print("%-9s %5d files %11d bytes, largest %d bytes" % (kind, len(sizes[kind]), sum(s for s, _ in sizes[kind]),
                                                              largest[kind][0]))
    print("%d files: %d faults" % (sum(len(v) for v in sizes.values()), len(faults)))
    return 1 if faults or not results else 0


def dispatch(job):
    function, args = job
    return ("hdr" if function is check_file else "data"), function(args)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
