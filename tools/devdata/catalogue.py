"""The text catalogue and the host's enumeration tables, as the device-data generators see them.

Families, devices and parts come from data/h/dev_part_manager_auto.part (block records with
"KEY = value" lines; a part's DEV_RESOURCES block holds '"Resource name" = count' lines), the
family folders from host/tables/dev_family_folder.def, the enumerations and record keys from
the .def tables under host/tables/.
"""

import os
import re

CATALOGUE = "data/h/dev_part_manager_auto.part"
TABLES = "host/tables"
FOLDER_DEF = TABLES + "/dev_family_folder.def"

BLOCK_RE = re.compile(r"^\s*(family|device|part)\s+(\w+)\s*$")
KEY_RE = re.compile(r'^\s*(\w+)\s*=\s*"?([^"]*?)"?\s*$')
RESOURCE_RE = re.compile(r'^\s*"([^"]+)"\s*=\s*(-?\d+)\s*$')
USER_RE = re.compile(r"^#+\s*\(User name - (.*)\)\s*$")
FOLDER_RE = re.compile(r'^\s*DEV_FAMILY_FOLDER\(DEV_FAMILY_(\w+),\s*"([^"]*)"\)')
MEMBER_RE = re.compile(r'^\s*DSTR_(MEMBER|GENERIC)\((\w+),\s*(-?\d+),\s*"([^"]*)",\s*"([^"]*)"')
KEY_ROW_RE = re.compile(r'^\s*ASTR_KEY\((\w+),\s*"[^"]*",\s*(ASTR_NUMBERS|ASTR_ENUM\((\w+)\)|'
                        r'ASTR_COLUMN\((\d+),\s*(\w+)\)|ASTR_ROW\((\d+),\s*(\w+)\))\)')


class Record:
    """A catalogue block: its kind, name, user name, keys (each a list of values in file
    order) and, for parts, the resource counts by resource name."""

    def __init__(self, kind, name):
        self.kind, self.name, self.user = kind, name, name
        self.keys = {}
        self.resources = {}

    def values(self, key):
        return self.keys.get(key, [])

    def value(self, key, default=""):
        v = self.values(key)
        return v[0] if v else default

    def int(self, key, default=0):
        v = self.value(key)
        return int(v) if re.fullmatch(r"-?\d+", v) else default


def read_catalogue(path):
    """The family, device and part records of the text catalogue, in file order."""
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
            stripped = line.strip()
            if stripped == "end":
                current = None
                continue
            m = USER_RE.match(stripped)
            if m:
                current.user = m.group(1)
                continue
            m = RESOURCE_RE.match(line)
            if m:
                current.resources[m.group(1)] = int(m.group(2))
                continue
            m = KEY_RE.match(line)
            if m:
                current.keys.setdefault(m.group(1), []).append(m.group(2))
    return records


def read_folders(path):
    with open(path, encoding="utf-8") as f:
        return {m.group(1): m.group(2) for m in map(FOLDER_RE.match, f) if m}


class Enumeration:
    """One enumeration definition: debug strings in value order, and value by name."""

    def __init__(self, path):
        self.names, self.value, self.user, self.generic = [], {}, {}, None
        with open(path, encoding="utf-8") as f:
            for m in map(MEMBER_RE.match, f):
                if not m:
                    continue
                name, value = m.group(4), int(m.group(3))
                self.value[name] = value
                self.user[name] = m.group(5)
                if m.group(1) == "GENERIC":
                    self.generic = name
                else:
                    self.names.append(name)


class KeyTable:
    """The keys of one record and kind, in key order, with the enumeration that names the
    values of each: (stem, row, column), row/column None where the stem covers the key."""

    def __init__(self, path):
        self.keys, self.values = [], {}
        with open(path, encoding="utf-8") as f:
            for m in map(KEY_ROW_RE.match, f):
                if not m:
                    continue
                key = m.group(1)
                self.keys.append(key)
                if m.group(3):
                    self.values[key] = (m.group(3), None, None)
                elif m.group(5):
                    self.values[key] = (m.group(5), None, int(m.group(4)))
                elif m.group(7):
                    self.values[key] = (m.group(7), int(m.group(6)), None)


class Tables:
    """Enumerations and key tables of host/tables, read on first use."""

    def __init__(self, source):
        self.dir = os.path.join(source, TABLES)
        self._enums, self._keys = {}, {}

    def enum(self, stem):
        if stem not in self._enums:
            self._enums[stem] = Enumeration(os.path.join(self.dir, stem + ".def"))
        return self._enums[stem]

    def keys(self, record, kind):
        """KeyTable of e.g. ("dev_element_desc", "2d_int")."""
        if (record, kind) not in self._keys:
            path = os.path.join(self.dir, "%s_%s_data.def" % (record, kind))
            self._keys[(record, kind)] = KeyTable(path)
        return self._keys[(record, kind)]


class Catalogue:
    """Families, devices and parts with the links between them."""

    def __init__(self, source):
        records = read_catalogue(os.path.join(source, CATALOGUE))
        self.folders = read_folders(os.path.join(source, FOLDER_DEF))
        self.families = {r.name: r for r in records if r.kind == "family"}
        self.devices = [r for r in records if r.kind == "device"]
        self.parts_of = {d.name: [] for d in self.devices}
        for p in (r for r in records if r.kind == "part"):
            if p.value("DEVICE") in self.parts_of:
                self.parts_of[p.value("DEVICE")].append(p)

    def family_of(self, device):
        family = self.families.get(device.value("FAMILY"))
        if family is None:
            raise ValueError("device %s names no known family" % device.name)
        return family

    def is_installed(self, device):
        return "NOT_INSTALLED" not in self.family_of(device).values("TRAITS")

    def folder_of(self, device):
        folder = self.folders.get(self.family_of(device).name)
        if not folder:
            raise ValueError("device %s: family %s has no folder" % (device.name, device.value("FAMILY")))
        return folder


class DeviceFacts:
    """What the catalogue says about one device: its family's architecture generation and
    traits, the largest logic and I/O counts and resource counts of its parts, and their
    packages, speed grades, temperature grades and timing corners."""

    def __init__(self, catalogue, device):
        family = catalogue.family_of(device)
        parts = catalogue.parts_of[device.name]
        self.name, self.record, self.family = device.name, device, family
        self.gen = family.int("BAK_VERSION", 1)
        self.traits = set(family.values("TRAITS"))
        self.device_traits = set(device.values("TRAITS"))
        self.logic = max([p.int("NUM_OF_LCELLS") for p in parts] or [0])
        self.io = max([p.int("NUM_OF_IO") for p in parts] or [0])
        self.res = {}
        for p in parts:
            for k, v in p.resources.items():
                self.res[k] = max(v, self.res.get(k, 0))
        self.packages = sorted({(p.value("PACKAGE"), p.int("PIN_COUNT")) for p in parts})
        self.speeds = sorted({p.value("SPEED_GRADE") for p in parts if p.value("SPEED_GRADE")})
        self.grades = sorted({p.value("TEMPERATURE_GRADE") for p in parts})
        self.corners = sorted({c for p in parts for k in ("SLOW_TIMING_CORNERS", "FAST_TIMING_CORNERS")
                               for c in p.values(k) if c})
        self.variants = sorted({p.value("FAMILY_VARIANT") for p in parts if p.value("FAMILY_VARIANT")})
        self.part_traits = set()
        for p in parts:
            self.part_traits.update(p.values("TRAITS"))
        self.voltage = device.value("VOLTAGE") or family.value("MAX_NOMINAL_CORE_SUPPLY_VOLTAGE")
        self.base_device = device.value("BASE_DEVICE")

    def r(self, name):
        return self.res.get(name, 0)

    def grade_range(self, grade):
        """(lowest, highest) junction temperature of a temperature grade in the family."""
        lo, hi = self.family.int("MIN_%s_TEMP" % grade), self.family.int("MAX_%s_TEMP" % grade)
        return (0, 85) if lo == hi else (lo, hi)

    def has(self, *traits):
        return any(t in self.traits for t in traits)
