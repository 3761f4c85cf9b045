#!/usr/bin/env python3
"""Reads back every HDR text that tools/gen_device_files.py writes and checks it against the
format's grammar and the .def tables, with a parser of its own:
  - block lines ("location NAME", "port NAME", "element NAME") closed by "end", never
    nested; attribute lines "KEY = VALUE" of the kinds the record has, with key names and
    symbolic value names that the tables define; quoted strings without embedded quotes;
    2D values on one line or as a lone "{" with continuation lines;
  - every name in an element's LOCATIONS and PORTS defined earlier in the file, each port
    with exactly one of INT_INPUT_PORT_TYPE and INT_OUTPUT_PORT_TYPE and no DEBUG_NAME,
    block names unique, the further names of locations and elements (STRING keys 0, 3
    and 4) naming no other location or element, no two elements of one resource type;
  - ENUM_DEVICE and ENUM_FAMILY naming the device and its family, 100 to 400 element types;
  - a file for every installed device that has basic info (in the staging folder for the
    families compiled to .ddb), and the largest at least 4 MiB.

  check_device_files.py --root DIR --staging DIR [--source TREE] [--jobs N]
Exit status 1 naming each fault. Python 3 standard library only.
"""

import argparse
import multiprocessing
import os
import re
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
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

_SCHEMA = None


class Schema:
    """Key names per (record, kind) with the names their values may take."""

    def __init__(self, source):
        tables = Tables(source)
        self.keys = {}
        for record, kinds in RECORDS.values():
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


def expected_files(catalogue, root, staging):
    """(path, device, family) of every HDR text the generator writes."""
    jobs = []
    for d in catalogue.devices:
        if not catalogue.is_installed(d) or "NO_HDR_DATA" in d.values("TRAITS"):
            continue
        family = catalogue.family_of(d)
        compiled = "NEW_DDB_SUPPORT" in family.values("TRAITS")
        folder = os.path.join(staging if compiled else os.path.join(root, "ddb"), catalogue.folder_of(d))
        jobs.append((os.path.join(folder, "ddb_%s.hdr" % d.name.lower()), d.name, family.name))
    return jobs


def main(argv):
    global _SCHEMA
    ap = argparse.ArgumentParser(description="Check the generated HDR files.")
    ap.add_argument("--root", required=True)
    ap.add_argument("--staging", required=True)
    ap.add_argument("--source", default=SOURCE)
    ap.add_argument("--jobs", type=int, default=os.cpu_count() or 1)
    args = ap.parse_args(argv)
    _SCHEMA = Schema(args.source)
    jobs = expected_files(Catalogue(args.source), args.root, args.staging)
    missing = [p for p, _, _ in jobs if not os.path.isfile(p)]
    jobs = [j for j in jobs if os.path.isfile(j[0])]
    if args.jobs > 1 and "fork" in multiprocessing.get_all_start_methods():
        with multiprocessing.get_context("fork").Pool(args.jobs) as pool:
            results = pool.map(check_file, jobs, chunksize=4)
    else:
        results = [check_file(j) for j in jobs]
    faults = ["missing: %s" % p for p in missing] + [x for _, fs, _ in results for x in fs]
    largest = max([size for _, _, size in results] or [0])
    if largest < LARGEST_AT_LEAST:
        faults.append("the largest HDR file has %d bytes, fewer than %d" % (largest, LARGEST_AT_LEAST))
    for text in faults:
        print(text)
    print("%d HDR files, %d bytes, largest %d: %d faults" % (len(results), sum(r[2] for r in results), largest,
                                                             len(faults)))
    return 1 if faults or not results else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
