#!/usr/bin/env python3
"""Generates the Velcora product line from its one definition in this file.

Outputs (all committed, all written deterministically):
  host/tables/dev_family_enum.def     family enumeration members (1..47)
  host/tables/dev_device_enum.def     device enumeration members (1..322)
  host/tables/dev_part_enum.def       part enumeration members; GENERIC/MAX follow the last
  host/tables/dev_pkg_enum.def        package enumeration members (1..30)
  host/tables/dev_speed_enum.def      speed grade enumeration members (1..15)
  host/tables/dev_family_folder.def   DEV_FAMILY_FOLDER(ENUMERATOR, "folder") per family
  data/h/dev_part_manager_auto.part   the family-info text catalogue

The catalogue is written in the layout of the catalogue's own ASCII dump (keys in
alphabetical order, list members and traits one per line in ascending enumerator
order), so that reading it and dumping it back reproduces its records.

Names of traits, voltages, timing models, temperature grades, resources, family
variants, grade revisions and power-model states are read from their definitions under
host/tables/, so the catalogue always uses the names the library knows.

  gen_product_line.py           write every output that differs
  gen_product_line.py --check   write nothing; exit 1 naming each stale output
Both run the consistency checks of the product line first and exit 2 when one fails.
Python 3 standard library only.
"""

import argparse
import os
import re
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
TABLES = "host/tables"
CATALOGUE = "data/h/dev_part_manager_auto.part"
FOLDER_DEF = TABLES + "/dev_family_folder.def"

FAMILY_COUNT = 47        # slots 1..47; DEV_FAMILY_GENERIC is 48
DEVICE_COUNT = 322       # slots 1..322; DEV_DEVICE_GENERIC is 323
PACKAGE_COUNT = 30       # slots 1..30; DEV_PKG_GENERIC is 31
SPEED_COUNT = 15         # slots 1..15; DEV_SPEED_GENERIC is 16
ROOM_TEMPERATURE = 25
NO_TEMPERATURE = 2147483647


class ProductLineError(Exception):
    pass


# ------------------------------------------------------------------------------------
# The host's enumeration definitions that the catalogue names.

MEMBER_RE = re.compile(r'^\s*DSTR_(?:MEMBER|GENERIC)\((\w+),\s*(-?\d+),\s*"([^"]*)",\s*"([^"]*)"(.*)\)\s*$')


class Table:
    """One enumeration definition: debug string <-> value, plus extra columns."""

    def __init__(self, root, stem):
        self.stem = stem
        self.by_name = {}
        self.by_value = {}
        self.by_id = {}
        self.extra = {}
        with open(os.path.join(root, TABLES, stem + ".def"), encoding="utf-8") as f:
            for line in f:
                m = MEMBER_RE.match(line)
                if not m:
                    continue
                ident, value, debug = m.group(1), int(m.group(2)), m.group(3)
                self.by_name[debug] = value
                self.by_value[value] = debug
                self.by_id[ident] = value
                self.extra[value] = [c.strip() for c in m.group(5).split(",") if c.strip()]

    def value(self, name):
        if name not in self.by_name:
            raise ProductLineError("%s has no member named %s" % (self.stem, name))
        return self.by_name[name]


class HostTables:
    def __init__(self, root):
        t = lambda stem: Table(root, stem)
        self.family_trait = t("dev_family_trait_enum")
        self.device_trait = t("dev_device_trait_enum")
        self.part_trait = t("dev_part_trait_enum")
        self.voltage = t("dev_voltage_enum")
        self.timing = t("dev_timing_model_enum")
        self.temperature = t("dev_temperature_enum")
        self.resource = t("dev_resource_enum")
        self.variant = t("dev_family_variant_enum")
        self.grade_revision = t("dev_grade_revision_enum")
        self.power_status = t("dev_power_model_status_enum")
        # Operating point of every timing model: (voltage value, temperature).
        self.operating_point = {}
        for value, cols in self.timing.extra.items():
            if len(cols) != 2:
                continue
            volt = self.voltage.by_id.get(cols[0], 0)
            temp = NO_TEMPERATURE if cols[1] == "DEV_NO_TEMPERATURE" else int(cols[1])
            self.operating_point[value] = (volt, temp)

    def corner(self, voltage_name, temperature):
        volt = self.voltage.value(voltage_name)
        for value, point in sorted(self.operating_point.items()):
            if point == (volt, temperature):
                return self.timing.by_value[value]
        raise ProductLineError("no timing model at %s, %d C" % (voltage_name, temperature))


# ------------------------------------------------------------------------------------
# Packages and speed grades, in enumerator order. A package has its ordering-code
# letters and its assembly (wire bond "W", flip chip "F", ceramic "K", bare die "X").

PACKAGES = [
    ("DIP", "D", "W"), ("PLCC", "L", "W"), ("PQFP", "Q", "W"), ("TQFP", "T", "W"),
    ("VQFP", "V", "W"), ("LQFP", "LQ", "W"), ("EQFP", "E", "W"), ("SOIC", "S", "W"),
    ("TSOP", "TS", "W"), ("QFN", "N", "W"), ("DFN", "DN", "W"), ("BGA", "B", "W"),
    ("PGA", "G", "W"), ("FBGA", "F", "W"), ("UBGA", "U", "W"), ("MBGA", "M", "W"),
    ("VBGA", "VB", "W"), ("TBGA", "TB", "F"), ("HBGA", "HB", "F"), ("SBGA", "SB", "F"),
    ("FCBGA", "FC", "F"), ("HFBGA", "H", "F"), ("CSP", "CS", "W"), ("WLCSP", "W", "F"),
    ("LGA", "LG", "F"), ("CQFP", "CQ", "K"), ("CLGA", "CL", "K"), ("CCGA", "CC", "K"),
    ("CPGA", "CG", "K"), ("DIE", "X", "X"),
]
PACKAGE_CODE = {p[0]: p[1] for p in PACKAGES}
PACKAGE_ASSEMBLY = {p[0]: p[2] for p in PACKAGES}
SMALL_PACKAGES = {"SOIC", "TSOP", "QFN", "DFN", "CSP", "WLCSP"}
OWN_FILE_PACKAGES = {"DIE", "CCGA"}   # pin-outs kept per part (part trait 30)

# Speed grades: debug string and user string; the user string is the ordering code's
# speed field. Lower numbers are faster; L marks low-power and H high-performance bins.
SPEEDS = [("SG%d" % i, str(i)) for i in range(1, 10)] + [
    ("SG1L", "1L"), ("SG2L", "2L"), ("SG3L", "3L"), ("SG1H", "1H"), ("SG2H", "2H"), ("SG3H", "3H")]
SPEED_CODE = dict(SPEEDS)

GRADES = {"C": "COMMERCIAL", "I": "INDUSTRIAL", "E": "EXTENDED", "A": "AUTOMOTIVE", "M": "MILITARY"}
GRADE_ORDER = "CIEAM"
# Junction temperature range of each grade (min, max).
GRADE_RANGE = {"C": (0, 85), "I": (-40, 100), "E": (0, 100), "A": (-40, 125), "M": (-55, 125)}
# Family-info key order of the five grades.
TEMP_KEY_GRADES = [("AUTOMOTIVE", "A"), ("COMMERCIAL", "C"), ("EXTENDED", "E"),
                   ("INDUSTRIAL", "I"), ("MILITARY", "M")]


# ------------------------------------------------------------------------------------
# Families, in enumerator order (value = position + 1).
#
# kind: cpld, fpga, gx (transceivers), soc (hard processor), kx (structured ASIC cells),
#       nv (non-volatile FPGA), cfg (configuration memory), test (characterization)
# code + letter + density give the device names (density in k logic elements, in
#       macrocells for CPLDs, in Mbit for configuration memories)
# volt: the devices' core voltage; speed_volts: per speed grade the core voltages its
#       parts are characterized at (first = default), where that differs from volt
# corners: "generic" (SLOW/FAST models at the device voltage), "vt" (models per voltage
#       and temperature), "none" (no timing model)
# t151: temperatures come from the timing corners (family trait 151)
# status: obsolete, mature, final, preliminary, advance (timing, power and parts status)

def family(name, user, kind, code, letter, dens, volt, speeds, grades, ladder, bak,
           folder=None, **kw):
    f = dict(name=name, user=user, kind=kind, code=code, letter=letter, dens=dens, volt=volt,
             speeds=speeds, grades=grades, ladder=ladder, bak=bak,
             folder=folder or name.lower(), corners="vt", t151=False, status="final",
             speed_volts={}, temps={}, traits=[], derived=(), base_family=None,
             kx_library=None, migration=[], unified="", es="none", extra_pkgs=[],
             pkg_suffix=None, variant=None, grade_revision=None, vmig=False, es_only=(),
             corner_voltages_only=False)
    for k, v in kw.items():
        if k not in f:
            raise ProductLineError("family %s: unknown attribute %s" % (name, k))
        f[k] = v
    if f["es"] == "all":
        f["es_only"] = tuple(dens)
    return f


L_CPLD5 = [("DIP", 40), ("PLCC", 44), ("PLCC", 68), ("PLCC", 84), ("TQFP", 100), ("PQFP", 160)]
L_CPLD3 = [("PLCC", 44), ("VQFP", 44), ("TQFP", 100), ("TQFP", 144), ("PQFP", 208), ("BGA", 256)]
L_FPGA_OLD = [("PLCC", 84), ("PQFP", 208), ("PQFP", 240), ("BGA", 356), ("PGA", 391), ("BGA", 600)]
L_FPGA_25 = [("TQFP", 144), ("PQFP", 208), ("PQFP", 240), ("BGA", 356), ("SBGA", 652), ("BGA", 600)]
L_HIGH_18 = [("PQFP", 240), ("FBGA", 484), ("FBGA", 672), ("SBGA", 652), ("FBGA", 1020)]
L_LOW_15 = [("TQFP", 144), ("PQFP", 208), ("FBGA", 256), ("FBGA", 324), ("FBGA", 484)]
L_HIGH_15 = [("FBGA", 484), ("FBGA", 672), ("FBGA", 780), ("FBGA", 1020), ("HBGA", 672)]
L_CPLD_NV = [("TQFP", 100), ("MBGA", 100), ("TQFP", 144), ("LQFP", 176), ("MBGA", 256), ("FBGA", 256),
             ("FBGA", 324)]
L_LOW_12 = [("QFN", 68), ("TQFP", 144), ("PQFP", 208), ("UBGA", 169), ("FBGA", 256), ("FBGA", 484),
            ("FBGA", 672), ("FBGA", 780)]
L_MID_12 = [("FBGA", 484), ("FBGA", 672), ("FBGA", 780), ("FBGA", 1152)]
L_HIGH_12 = [("FBGA", 484), ("FBGA", 672), ("FBGA", 780), ("FBGA", 1020), ("FBGA", 1508)]
L_GX_12 = [("FBGA", 780), ("FBGA", 1152), ("FCBGA", 1152), ("FCBGA", 1517)]
L_CFG = [("DIP", 8), ("SOIC", 8), ("SOIC", 16), ("TSOP", 48)]
L_CFG2 = [("SOIC", 8), ("SOIC", 16), ("DFN", 8), ("WLCSP", 25)]
L_LOW_12B = [("EQFP", 144), ("MBGA", 164), ("UBGA", 256), ("FBGA", 256), ("FBGA", 324), ("FBGA", 484),
             ("FBGA", 780)]
L_HIGH_11 = [("FBGA", 780), ("FCBGA", 1152), ("FCBGA", 1517), ("HFBGA", 1517), ("HFBGA", 1760),
             ("HFBGA", 1932)]
L_MID_11 = [("FBGA", 484), ("FBGA", 572), ("FBGA", 672), ("FBGA", 896), ("FCBGA", 1152)]
L_NV = [("WLCSP", 36), ("WLCSP", 81), ("EQFP", 144), ("UBGA", 169), ("MBGA", 256), ("FBGA", 256),
        ("FBGA", 484), ("FBGA", 672)]
L_SOC = [("UBGA", 484), ("UBGA", 672), ("FBGA", 896), ("FBGA", 1152), ("FCBGA", 1517)]
L_HIGH_09 = [("FCBGA", 1152), ("HFBGA", 1517), ("HFBGA", 1760), ("HFBGA", 1932), ("LGA", 2397),
             ("LGA", 2912)]
L_LOW_09 = [("WLCSP", 81), ("CSP", 132), ("VBGA", 324), ("UBGA", 484), ("FBGA", 484), ("FBGA", 672),
            ("TBGA", 896)]
L_KX = [("FBGA", 780), ("FCBGA", 1152), ("FCBGA", 1517)]
L_RAD = [("CQFP", 208), ("CQFP", 352), ("CLGA", 1272), ("CPGA", 391)]

FAMILIES = [
    # 1-4: the first generations, kept in one legacy folder.
    family("LUMIO", "Lumio", "cpld", "LM1", "C", [32, 64, 96, 128, 160, 192, 256], "5_0V",
           ["SG5", "SG7", "SG9"], "CI", L_CPLD5, 1, folder="legacy", corners="generic",
           status="obsolete", temps={"C": (0, 70), "I": (-40, 85)},
           traits=["NOT_INSTALLED", "OBSOLETE", "NONVOLATILE_CONFIG"]),
    family("LUMIO2", "Lumio II", "cpld", "LM2", "C", [32, 64, 128, 192, 256, 384, 512], "3_3V",
           ["SG5", "SG7", "SG9"], "CI", L_CPLD3, 1, folder="legacy", corners="generic",
           status="obsolete", temps={"C": (0, 70), "I": (-40, 85)},
           traits=["OBSOLETE", "NONVOLATILE_CONFIG"]),
    family("TESSALY", "Tessaly", "fpga", "TS1", "E", [2, 3, 4, 6, 8, 12, 16, 24], "3_3V",
           ["SG6", "SG7", "SG8"], "CI", L_FPGA_OLD, 1, folder="legacy", corners="generic",
           status="obsolete", temps={"C": (0, 70), "I": (-40, 85)},
           traits=["NOT_INSTALLED", "OBSOLETE"]),
    family("TESSALY2", "Tessaly II", "fpga", "TS2", "E", [5, 10, 15, 20, 30, 40, 50, 70], "2_5V",
           ["SG6", "SG7", "SG8"], "CIM", L_FPGA_25, 1, folder="legacy", corners="generic",
           status="obsolete", temps={"C": (0, 70), "I": (-40, 85)}, traits=["OBSOLETE"]),
    # 5-8: 1.8 V and 1.5 V generations.
    family("OSTREL", "Ostrel", "fpga", "OS1", "E", [10, 20, 30, 40, 60, 80, 100, 130], "1_8V",
           ["SG7", "SG8", "SG9"], "CI", L_HIGH_18, 2, corners="generic", status="mature",
           traits=["MATURE", "HAS_DSP_BLOCKS"], derived=(30,)),
    family("CORVANE", "Corvane", "fpga", "CV1", "E", [3, 6, 9, 12, 20, 25, 30, 40], "1_5V",
           ["SG6", "SG7", "SG8"], "CIA", L_LOW_15, 2, corners="generic", status="mature",
           traits=["MATURE"]),
    family("OSTREL2", "Ostrel II", "fpga", "OS2", "E", [15, 25, 30, 45, 60, 90, 110, 130, 180], "1_5V",
           ["SG3", "SG4", "SG5"], "CI", L_HIGH_15, 2, corners="generic", status="mature",
           traits=["MATURE", "HAS_DSP_BLOCKS", "DESIGN_SECURITY"], derived=(45,), vmig=True),
    family("LUMIO3", "Lumio III", "cpld", "LM3", "C", [80, 160, 240, 570, 1270, 2210], "1_8V",
           ["SG3", "SG4", "SG5"], "CIA", L_CPLD_NV, 2, corners="generic", status="mature",
           traits=["MATURE", "NONVOLATILE_CONFIG", "USER_FLASH_MEMORY", "INTERNAL_OSCILLATOR"]),
    # 9-15: the 1.2 V generation, timing per voltage and temperature.
    family("CORVANE2", "Corvane II", "fpga", "CV2", "E", [4, 6, 8, 12, 15, 20, 25, 35, 50, 70], "1_2V",
           ["SG6", "SG7", "SG8"], "CIE", L_LOW_12, 3, temps={"E": (0, 0)},
           traits=["MULTI_CORNER_TIMING"], grade_revision="REV_B", variant="STANDARD"),
    family("TESSALY3", "Tessaly III", "fpga", "TS3", "E", [15, 20, 30, 50, 70, 90, 110, 130], "1_2V",
           ["SG3", "SG4", "SG5"], "CI", L_MID_12, 3, traits=["HAS_DSP_BLOCKS", "DESIGN_SECURITY"],
           variant="STANDARD", vmig=True),
    family("TESSALY3GX", "Tessaly III GX", "gx", "TS3", "G", [20, 30, 40, 60, 90, 130], "1_2V",
           ["SG4", "SG5", "SG6"], "CI", L_GX_12, 3, traits=["HAS_DSP_BLOCKS"],
           variant="TRANSCEIVER", vmig=True, folder="tessaly3"),
    family("OSTREL3", "Ostrel III", "fpga", "OS3", "E", [15, 30, 40, 50, 60, 80, 90, 110, 130, 180], "1_2V",
           ["SG2", "SG3", "SG4"], "CI", L_HIGH_12, 3,
           traits=["HAS_DSP_BLOCKS", "DESIGN_SECURITY", "TECHNOLOGY_MIGRATION"], derived=(50,),
           migration=["TILECAST"], variant="STANDARD", vmig=True, grade_revision="REV_C"),
    family("OSTREL3GX", "Ostrel III GX", "gx", "OS3", "G", [60, 90, 110, 130, 180], "1_2V",
           ["SG2", "SG3", "SG4"], "CI", L_GX_12, 3,
           traits=["HAS_DSP_BLOCKS", "DESIGN_SECURITY", "TECHNOLOGY_MIGRATION"],
           migration=["TILECAST"], variant="TRANSCEIVER", folder="ostrel3"),
    family("TILECAST", "Tilecast", "kx", "TC1", "K", [30, 60, 90, 130, 180], "1_2V",
           ["SG4"], "CI", L_KX, 3, kx_library="TILECAST", migration=["OSTREL3", "OSTREL3GX"],
           traits=["TECHNOLOGY_MIGRATION"], folder="tilecast"),
    family("VCM", "VCM serial configuration memory", "cfg", "VC1", "M", [1, 2, 4, 8, 16, 64], "3_3V",
           [], "CI", L_CFG, 2, folder="config", corners="none", status="mature",
           traits=["NO_COMPILER_SUPPORT"]),
    # 16-18: low-cost and CPLD refresh at 1.2 V / 1.0 V.
    family("CORVANE3", "Corvane III", "fpga", "CV3", "E", [5, 8, 10, 15, 25, 40, 55, 80, 100, 120, 160], "1_2V",
           ["SG6", "SG7", "SG8"], "CIA", L_LOW_12B, 3, traits=["MULTI_CORNER_TIMING"],
           migration=["CORVANE3LP"], variant="STANDARD", vmig=True, derived=(10,),
           pkg_suffix=((80, 120), "FBGA", "_b")),
    family("CORVANE3LP", "Corvane III LP", "fpga", "CV3", "L", [5, 8, 10, 15, 25, 40], "1_0V",
           ["SG7", "SG8", "SG3L"], "CI", L_LOW_12B, 3, folder="corvane3",
           speed_volts={"SG7": ["1_2V", "1_0V"], "SG8": ["1_0V", "1_2V"]},
           traits=["MULTI_CORNER_TIMING", "LOW_POWER_MODE", "SELECTABLE_CORE_VOLTAGE"],
           migration=["CORVANE3"], variant="LOW_POWER"),
    family("LUMIO4", "Lumio IV", "cpld", "LM4", "C", [40, 64, 80, 160, 240, 570, 1270], "1_8V",
           ["SG3", "SG4", "SG5"], "CIA", L_CPLD_NV, 3, corners="generic",
           traits=["NONVOLATILE_CONFIG", "USER_FLASH_MEMORY", "INTERNAL_OSCILLATOR", "LOW_POWER_MODE"]),
    # 19-24: the 1.1 V generation; temperatures from the timing corners.
    family("OSTREL4", "Ostrel IV", "fpga", "OS4", "E", [50, 70, 110, 150, 180, 230, 290, 340, 420, 530, 680], "1_1V",
           ["SG2", "SG3", "SG4", "SG2H"], "CIA", L_HIGH_11, 4, t151=True,
           traits=["HAS_DSP_BLOCKS", "DESIGN_SECURITY", "TECHNOLOGY_MIGRATION", "PARTIAL_RECONFIGURATION"],
           derived=(290,), migration=["TILECAST2"], variant="HIGH_PERFORMANCE", vmig=True,
           pkg_suffix=((530, 680), "HFBGA", "_b"), grade_revision="REV_B"),
    family("OSTREL4GX", "Ostrel IV GX", "gx", "OS4", "G", [45, 70, 110, 150, 180, 230, 290, 360], "1_1V",
           ["SG2", "SG3", "SG4"], "CI", L_HIGH_11, 4, t151=True, folder="ostrel4",
           traits=["HAS_DSP_BLOCKS", "DESIGN_SECURITY", "TECHNOLOGY_MIGRATION"],
           migration=["TILECAST2"], variant="TRANSCEIVER", vmig=True),
    family("TESSALY4", "Tessaly IV", "fpga", "TS4", "E", [25, 35, 45, 65, 80, 100, 125, 150, 200], "1_1V",
           ["SG3", "SG4", "SG5"], "CIE", L_MID_11, 4, t151=True, traits=["HAS_DSP_BLOCKS"],
           variant="STANDARD"),
    family("TESSALY4GX", "Tessaly IV GX", "gx", "TS4", "G", [30, 45, 65, 80, 100, 125, 150], "1_1V",
           ["SG3", "SG4", "SG5", "SG3H"], "CI", L_MID_11, 4, t151=True, folder="tessaly4",
           traits=["HAS_DSP_BLOCKS"], variant="TRANSCEIVER"),
    family("TILECAST2", "Tilecast II", "kx", "TC2", "K", [110, 180, 290, 530], "1_1V",
           ["SG3"], "CI", L_KX, 4, t151=True, kx_library="TILECAST2",
           migration=["OSTREL4", "OSTREL4GX"], traits=["TECHNOLOGY_MIGRATION"], folder="tilecast"),
    family("VCM2", "VCM II serial configuration memory", "cfg", "VC2", "M", [8, 16, 32, 64, 128, 256],
           "1_8V", [], "CI", L_CFG2, 3, folder="config", corners="none",
           traits=["NO_COMPILER_SUPPORT"]),
    # 25-28: low-cost, non-volatile and SoC at 1.2 V / 1.1 V.
    family("CORVANE4", "Corvane IV", "fpga", "CV4", "E", [6, 10, 15, 22, 30, 40, 55, 75, 90, 115, 150], "1_2V",
           ["SG6", "SG7", "SG8", "SG2L"], "CIA", L_LOW_12B, 4,
           speed_volts={"SG2L": ["1_0V"]}, traits=["MULTI_CORNER_TIMING", "LOW_POWER_MODE"],
           variant="STANDARD", vmig=True, derived=(22,)),
    family("CORVANE4GX", "Corvane IV GX", "gx", "CV4", "G", [15, 22, 30, 40, 50, 75, 100, 150], "1_2V",
           ["SG6", "SG7", "SG8"], "CI", L_MID_11, 4, folder="corvane4",
           traits=["MULTI_CORNER_TIMING"], variant="TRANSCEIVER"),
    family("LUMIO10", "Lumio 10", "nv", "LX1", "N", [2, 4, 8, 10, 16, 25, 40, 50], "1_2V",
           ["SG6", "SG7", "SG8"], "CIA", L_NV, 4,
           traits=["NONVOLATILE_CONFIG", "USER_FLASH_MEMORY", "ANALOG_TO_DIGITAL", "INTERNAL_OSCILLATOR",
                   "DESIGN_SECURITY"], variant="STANDARD"),
    family("KESTRA", "Kestra", "soc", "KS1", "S", [15, 25, 40, 85, 110, 130], "1_1V",
           ["SG6", "SG7", "SG8"], "CIA", L_SOC, 4, t151=True,
           traits=["HAS_DSP_BLOCKS", "DESIGN_SECURITY"], variant="SOC"),
    # 29-35: the 0.9 V / 1.1 V generation; data for the new device database.
    family("OSTREL5", "Ostrel V", "fpga", "OS5", "E", [130, 160, 220, 270, 360, 460, 590, 720, 840, 950, 1150], "0_9V",
           ["SG1", "SG2", "SG3", "SG1H", "SG2L"], "CIEA", L_HIGH_09, 5, t151=True,
           speed_volts={"SG1H": ["0_95V", "0_9V"]},
           traits=["NEW_DDB_SUPPORT", "HAS_DSP_BLOCKS", "DESIGN_SECURITY", "TECHNOLOGY_MIGRATION",
                   "PARTIAL_RECONFIGURATION", "ENGINEERING_SAMPLES"],
           derived=(270,), migration=["TILECAST3"], unified="os5", variant="HIGH_PERFORMANCE",
           es="sample", vmig=True, grade_revision="REV_A"),
    family("OSTREL5GX", "Ostrel V GX", "gx", "OS5", "G", [160, 220, 270, 360, 460, 590, 720], "0_9V",
           ["SG1", "SG2", "SG3"], "CIE", L_HIGH_09, 5, t151=True, folder="ostrel5",
           traits=["NEW_DDB_SUPPORT", "HAS_DSP_BLOCKS", "DESIGN_SECURITY", "TECHNOLOGY_MIGRATION",
                   "ENGINEERING_SAMPLES"],
           migration=["TILECAST3"], unified="os5", variant="TRANSCEIVER", es="sample"),
    family("TESSALY5", "Tessaly V", "fpga", "TS5", "E", [50, 75, 100, 150, 200, 300, 360, 480], "1_1V",
           ["SG4", "SG5", "SG6", "SG1L"], "CIA", L_MID_11, 5, t151=True,
           speed_volts={"SG1L": ["1_05V"]}, traits=["NEW_DDB_SUPPORT", "HAS_DSP_BLOCKS"],
           unified="ts5", variant="STANDARD", vmig=True),
    family("TESSALY5GX", "Tessaly V GX", "gx", "TS5", "G", [100, 150, 200, 300, 480], "1_1V",
           ["SG4", "SG5", "SG6"], "CI", L_MID_11, 5, t151=True, folder="tessaly5",
           traits=["NEW_DDB_SUPPORT", "HAS_DSP_BLOCKS"], unified="ts5", variant="TRANSCEIVER"),
    family("KESTRA2", "Kestra II", "soc", "KS2", "S", [80, 110, 160, 220, 270, 320, 480], "1_1V",
           ["SG4", "SG5", "SG6"], "CIE", L_SOC, 5, t151=True,
           traits=["NEW_DDB_SUPPORT", "REQUIRES_HDR_DATA", "HAS_DSP_BLOCKS", "DESIGN_SECURITY"],
           variant="SOC"),
    family("CORVANE5", "Corvane V", "fpga", "CV5", "E", [10, 16, 25, 40, 55, 75, 85, 150], "1_1V",
           ["SG6", "SG7", "SG8"], "CIA", L_LOW_12B, 5,
           traits=["NEW_DDB_SUPPORT", "MULTI_CORNER_TIMING"], variant="STANDARD", vmig=True),
    family("CORVANE5GX", "Corvane V GX", "gx", "CV5", "G", [40, 75, 120, 150, 300], "1_1V",
           ["SG6", "SG7"], "CI", L_MID_11, 5, folder="corvane5",
           traits=["NEW_DDB_SUPPORT", "MULTI_CORNER_TIMING"], variant="TRANSCEIVER"),
    # 36: radiation-tolerant parts on Tessaly III dies (data of the base family).
    family("AEGIRA3", "Aegira III", "fpga", "AG3", "R", [15, 30, 50, 90], "1_2V",
           ["SG4", "SG5"], "IM", L_RAD, 3, folder="tessaly3", base_family="TESSALY3",
           traits=["USES_BASE_FAMILY_DATA", "HAS_DSP_BLOCKS", "DESIGN_SECURITY"],
           extra_pkgs=[("CCGA", 1152), ("DIE", 780)], variant="RADIATION_TOLERANT"),
    # 37-43: the 0.9 V generation.
    family("TILECAST3", "Tilecast III", "kx", "TC3", "K", [220, 360, 460, 720], "0_9V",
           ["SG2"], "CI", L_HIGH_09, 5, t151=True, kx_library="TILECAST3", migration=["OSTREL5"],
           traits=["NEW_DDB_SUPPORT", "TECHNOLOGY_MIGRATION"], folder="tilecast", status="preliminary"),
    family("OSTREL6", "Ostrel VI", "fpga", "OS6", "E", [300, 400, 600, 900, 1200, 1400, 1650, 2100], "0_9V",
           ["SG1", "SG2", "SG3", "SG1H", "SG2L"], "CIE", L_HIGH_09, 6, t151=True,
           speed_volts={"SG1H": ["0_95V", "0_9V"], "SG1": ["0_9V", "0_95V"]},
           traits=["NEW_DDB_SUPPORT", "REQUIRES_HDR_DATA", "HAS_DSP_BLOCKS", "DESIGN_SECURITY",
                   "PARTIAL_RECONFIGURATION", "HARD_FLOATING_POINT_DSP", "ENGINEERING_SAMPLES",
                   "NEW_PRODUCT"],
           unified="os6", variant="HIGH_PERFORMANCE", es="sample", es_only=(1650, 2100),
           status="preliminary"),
    family("OSTREL6GX", "Ostrel VI GX", "gx", "OS6", "G", [600, 900, 1200, 1650, 2700], "0_9V",
           ["SG1", "SG2", "SG3"], "CI", L_HIGH_09, 6, t151=True, folder="ostrel6",
           traits=["NEW_DDB_SUPPORT", "REQUIRES_HDR_DATA", "HAS_DSP_BLOCKS", "DESIGN_SECURITY",
                   "HARD_FEC", "HARD_ETHERNET", "ENGINEERING_SAMPLES", "NEW_PRODUCT"],
           unified="os6", variant="TRANSCEIVER", es="sample", es_only=(2700,), status="preliminary"),
    family("KESTRA3", "Kestra III", "soc", "KS3", "S", [110, 220, 400, 600], "0_9V",
           ["SG1", "SG2", "SG3"], "CIE", L_SOC, 6, t151=True,
           traits=["NEW_DDB_SUPPORT", "REQUIRES_HDR_DATA", "HAS_DSP_BLOCKS", "DESIGN_SECURITY",
                   "HARD_CRYPTO", "ENGINEERING_SAMPLES"],
           variant="SOC", es="sample", status="preliminary"),
    # 41: speed grades bound to a core voltage; the voltage list comes from the corners alone.
    family("CORVANE6", "Corvane VI", "fpga", "CV6", "E", [10, 16, 25, 35, 50, 80, 120, 150, 220], "0_9V",
           ["SG1", "SG2", "SG3", "SG3L"], "CIA", L_LOW_09, 6,
           speed_volts={"SG1": ["0_95V"], "SG2": ["0_95V", "0_9V"]},
           traits=["NEW_DDB_SUPPORT", "MULTI_CORNER_TIMING", "VOLTAGE_FROM_TIMING_CORNERS",
                   "LOW_POWER_MODE"], variant="STANDARD", vmig=True, grade_revision="REV_A",
           corner_voltages_only=True),
    family("AEGIRA5", "Aegira V", "fpga", "AG5", "R", [220, 360, 460], "0_9V",
           ["SG2", "SG3"], "IM", L_RAD, 5, folder="ostrel5", base_family="OSTREL5", t151=True,
           traits=["USES_BASE_FAMILY_DATA", "NEW_DDB_SUPPORT", "HAS_DSP_BLOCKS", "DESIGN_SECURITY"],
           extra_pkgs=[("CCGA", 1752), ("DIE", 1520)], unified="os5", variant="RADIATION_TOLERANT"),
    family("TESSALY6", "Tessaly VI", "fpga", "TS6", "E", [100, 150, 200, 300, 500], "0_9V",
           ["SG2", "SG3"], "CI", L_HIGH_09, 6, t151=True, status="advance",
           traits=["NOT_INSTALLED", "NEW_DDB_SUPPORT", "REQUIRES_HDR_DATA", "HAS_DSP_BLOCKS",
                   "BETA_SUPPORT", "ENGINEERING_SAMPLES"],
           es="all"),
    # 44-47: configuration memory, characterization vehicles, later additions.
    family("VCM3", "VCM III serial configuration memory", "cfg", "VC3", "M", [16, 32, 64, 128, 256, 512],
           "1_8V", [], "CIA", L_CFG2, 5, folder="config", corners="none",
           traits=["NO_COMPILER_SUPPORT"]),
    family("VTC", "Velcora test chips", "test", "VT1", "T", [1, 2, 3, 5], "1_1V",
           ["SG3"], "C", [("FBGA", 484), ("FBGA", 672), ("FCBGA", 1152)], 4, folder="internal",
           t151=True, traits=["NOT_LISTED", "NO_COMPILER_SUPPORT"], status="preliminary"),
    family("CORVANE6GX", "Corvane VI GX", "gx", "CV6", "G", [35, 50, 120, 220], "0_95V",
           ["SG2", "SG3"], "CI", L_LOW_09, 6, folder="corvane6",
           traits=["NEW_DDB_SUPPORT", "MULTI_CORNER_TIMING"], variant="TRANSCEIVER",
           status="preliminary"),
    family("OSTREL7", "Ostrel VII", "fpga", "OS7", "E", [1500, 3000], "0_8V",
           ["SG1", "SG2"], "C", [("LGA", 2912)], 7, corners="generic", status="advance",
           traits=["NOT_INSTALLED", "NOT_LISTED", "NO_COMPILER_SUPPORT", "NEW_DDB_SUPPORT",
                   "REQUIRES_HDR_DATA"], es="all"),
]

# Configuration memories that each generation lists as CONFIG_DEVICES.
CONFIG_FAMILY_BY_BAK = {1: "VCM", 2: "VCM", 3: "VCM2", 4: "VCM2", 5: "VCM3", 6: "VCM3", 7: "VCM3"}


# ------------------------------------------------------------------------------------
# Building the records.

class Device:
    pass


class Part:
    pass


def family_traits(f):
    traits = set(f["traits"])
    kind = f["kind"]
    if kind != "cfg":
        traits |= {"JTAG_CONFIG", "HAS_TIMING_MODELS"}
    if kind in ("fpga", "gx", "soc", "kx", "nv", "test"):
        traits |= {"HAS_PLL", "HAS_EMBEDDED_RAM", "HAS_CARRY_CHAIN", "DEDICATED_CLOCK_PINS",
                   "DIFFERENTIAL_IO", "LVDS_RECEIVER", "LVDS_TRANSMITTER"}
    if kind in ("gx",):
        traits |= {"HAS_TRANSCEIVERS", "HARD_SERDES", "HAS_PCIE_HARD_IP", "DYNAMIC_RECONFIG_XCVR"}
    if kind == "soc":
        traits |= {"HAS_HARD_PROCESSOR", "HAS_MEMORY_CONTROLLER", "HAS_PCIE_HARD_IP"}
    if kind == "kx":
        traits |= {"STRUCTURED_ASIC", "KX_LIBRARY"}
    if f["bak"] >= 3 and kind != "cfg":
        traits |= {"LEAD_FREE_PACKAGES", "POWER_ANALYSIS_SUPPORT", "HAS_POWER_MODELS",
                   "HAS_PAD_DATA", "HAS_PACKAGE_DATA", "HAS_PART_INFO_DATA"}
    if f["bak"] >= 3 and kind not in ("cfg", "cpld"):
        traits |= {"LOGIC_ANALYZER_SUPPORT", "IN_SYSTEM_MEMORY_DEBUG", "INCREMENTAL_LOCKING",
                   "FITTER_ECO", "HAS_ROUTING_SWITCH_DATA", "HAS_ASSEMBLER_DATA", "HAS_LUTRAM"}
    if f["bak"] >= 4 and kind not in ("cfg", "cpld", "kx"):
        traits |= {"SIX_INPUT_LUT", "HAS_SHARED_ARITHMETIC", "REGISTER_RETIMING", "HAS_DIE_INFO"}
    elif kind not in ("cfg",):
        traits.add("FOUR_INPUT_LUT")
    if f["t151"]:
        traits.add("TEMPERATURE_FROM_TIMING_CORNERS")
    if f["corners"] == "vt":
        traits.add("MULTI_CORNER_TIMING")
    if f["t151"] and f["kind"] != "kx":
        traits.add("FAST_CORNER_TIMING")
    if f["vmig"]:
        traits |= {"VERTICAL_MIGRATION", "HAS_PIN_MIGRATION"}
    if any(len(v) > 1 for v in f["speed_volts"].values()):
        traits.add("SELECTABLE_CORE_VOLTAGE")
    grades = set(f["grades"])
    traits |= {name for letter, name in (("C", "COMMERCIAL_GRADE"), ("I", "INDUSTRIAL_GRADE"),
                                          ("A", "AUTOMOTIVE_GRADE"), ("M", "MILITARY_GRADE"))
               if letter in grades}
    assemblies = {PACKAGE_ASSEMBLY[p] for p, _ in f["ladder"] + f["extra_pkgs"]}
    if "F" in assemblies:
        traits.add("FLIP_CHIP_PACKAGES")
    if "W" in assemblies:
        traits.add("WIRE_BOND_PACKAGES")
    if "X" in assemblies:
        traits.add("BARE_DIE_AVAILABLE")
    if {"CSP", "WLCSP"} & {p for p, _ in f["ladder"]}:
        traits.add("CHIP_SCALE_PACKAGES")
    if kind != "cfg":
        traits.add("PRELIMINARY_TIMING" if f["status"] in ("preliminary", "advance") else "FINAL_TIMING")
    if f["status"] in ("mature", "final") and f["bak"] >= 3:
        traits.add("FINAL_POWER")
    elif f["status"] in ("preliminary", "advance"):
        traits.add("PRELIMINARY_POWER")
    return traits


def package_window(index, count, ladder):
    """The packages of the index-th of count devices: a sliding window over the ladder,
    so that neighbouring densities share footprints (vertical migration)."""
    if count == 1 or len(ladder) <= 3:
        return list(ladder)
    centre = round(index * (len(ladder) - 1) / (count - 1))
    lo = max(0, centre - 1)
    return ladder[lo:lo + 2]


def package_io(pkg, pins):
    if pkg in ("SOIC", "TSOP", "DFN", "DIP") and pins <= 48:
        return 0 if pins <= 16 else pins - 8
    ratio = 0.8 if pins <= 100 else 0.7 if pins <= 256 else 0.6 if pins <= 780 else 0.5
    return int(pins * ratio)


def device_io(f, density):
    if f["kind"] == "cfg":
        return 0
    if f["kind"] == "cpld":
        return min(density // 2 + 20, 272)
    return 60 + int(28 * density ** 0.5) + (density // 10)


def build_devices(f):
    devices = []
    n = len(f["dens"])
    for i, density in enumerate(f["dens"]):
        d = Device()
        d.family = f
        d.density = density
        d.name = "%s%s%03d" % (f["code"], f["letter"], density)
        d.packages = list(package_window(i, n, f["ladder"])) + list(f["extra_pkgs"])
        d.max_io = device_io(f, density)
        d.es_only = density in f["es_only"]
        d.base = None
        if density in f["derived"]:
            d.base = "%s%s%03d" % (f["code"], f["letter"], f["dens"][i + 1])
        d.bak = 2 if (f["pkg_suffix"] and density in f["pkg_suffix"][0]) else 1
        kind = f["kind"]
        d.xcvr = 0
        if kind == "gx":
            d.xcvr = 4 * (1 + i * 5 // max(n - 1, 1))
        elif kind == "soc" and f["bak"] >= 5:
            d.xcvr = 6 + 6 * (i // 2)
        devices.append(d)
    return devices


def grade_speed_offers(f):
    """(grade letter, speed) pairs a family sells per device and package."""
    speeds = f["speeds"]
    plain = [s for s in speeds if not s.endswith(("L", "H"))]
    bins = [s for s in speeds if s.endswith(("L", "H"))]
    offers = []
    for g in GRADE_ORDER:
        if g not in f["grades"]:
            continue
        if not speeds:
            offers.append((g, None))
        elif g == "C":
            offers += [(g, s) for s in plain + bins]
        elif g == "I":
            offers += [(g, s) for s in (plain[1:] if len(plain) > 1 else plain)]
            offers += [(g, s) for s in bins if s.endswith("L")]
        elif g == "E":
            offers.append((g, plain[len(plain) // 2]))
        else:  # automotive and military: the slowest, most robust bin
            offers.append((g, plain[-1]))
    return offers


def corner_temperatures(f, grade, voltage_name):
    """Slow corner temperatures (hot) and fast corner temperatures (cold) of a grade."""
    lo, hi = f["temps"].get(grade, GRADE_RANGE[grade])
    if (lo, hi) == (0, 0):
        lo, hi = 0, 85  # the catalogue's fallback for an uncharacterized grade
    slow = [hi]
    if f["t151"] and grade == "E" and voltage_name in ("0_9V", "0_95V"):
        slow = [110]  # the 0.9 V generation characterizes extended parts to 110 C
    if f["t151"] and grade == "A":
        slow = [125, 100]  # automotive parts may also be used with the 100 C rating
    return slow, [lo]


def build_parts(f, devices, tables):
    parts = []
    offers = grade_speed_offers(f)
    for d in devices:
        for pkg, pins in d.packages:
            extra = (pkg, pins) in f["extra_pkgs"]
            for grade, speed in offers:
                if extra and grade != "M":
                    continue
                parts.append(make_part(f, d, pkg, pins, grade, speed, d.es_only, tables))
        if f["es"] == "sample" and not d.es_only:
            pkg, pins = d.packages[-1] if not f["extra_pkgs"] else d.packages[0]
            parts.append(make_part(f, d, pkg, pins, "C", f["speeds"][0], True, tables))
    return parts


def make_part(f, d, pkg, pins, grade, speed, es, tables):
    p = Part()
    p.family, p.device, p.package, p.pins, p.grade, p.speed, p.es = f, d, pkg, pins, grade, speed, es
    p.name = "%s%s%d%s%s%s" % (d.name, PACKAGE_CODE[pkg], pins, grade,
                              SPEED_CODE[speed] if speed else "", "ES" if es else "")
    lead_free = f["bak"] >= 3 and f["kind"] != "cfg" and PACKAGE_ASSEMBLY[pkg] in "WF"
    p.ordering_code = "%s-%s%d%s%s%s%s" % (d.name, PACKAGE_CODE[pkg], pins, grade,
                                         SPEED_CODE[speed] if speed else "",
                                         "N" if lead_free else "", "ES" if es else "")
    volts = f["speed_volts"].get(speed, [f["volt"]])
    p.default_voltage = volts[0]
    p.slow, p.fast = [], []
    if f["corners"] == "generic":
        p.slow, p.fast = ["SLOW"], ["FAST"]
    elif f["corners"] == "vt":
        for v in volts:
            hot, cold = corner_temperatures(f, grade, v)
            p.slow += [tables.corner(v, t) for t in hot]
            p.fast += [tables.corner(v, t) for t in cold]
    key = lambda name: tables.timing.value(name)
    p.slow = sorted(set(p.slow), key=key)
    p.fast = sorted(set(p.fast), key=key)
    p.io = min(d.max_io, package_io(pkg, pins))
    p.lcells = 0 if f["kind"] == "cfg" else d.density * (1 if f["kind"] == "cpld" else 1000)
    p.selectable = len(volts) > 1

    t = set()
    if lead_free:
        t.add("LEAD_FREE")
    if f["kind"] == "cfg":
        t |= {"NO_TIMING_MODEL", "NO_POWER_MODEL", "NO_USER_IO_COUNT", "NO_POF"}
    if f["bak"] <= 2 and f["kind"] != "cfg":
        t.add("NO_POWER_MODEL")
    if "NOT_INSTALLED" in f["traits"] and f["status"] == "advance":
        t.add("NO_POF")
    if f["status"] == "obsolete":
        t.add("OBSOLETE")
    if f["kind"] != "cfg":
        t.add("PRELIMINARY_TIMING" if f["status"] in ("preliminary", "advance") or es else "FINAL_TIMING")
    if speed and speed.endswith("L"):
        t.add("LOW_POWER")
    if speed and speed.endswith("H"):
        t.add("HIGH_SPEED")
    assembly = PACKAGE_ASSEMBLY[pkg]
    if assembly == "W":
        t.add("WIRE_BOND")
    elif assembly == "F":
        t.add("FLIP_CHIP")
    elif assembly == "X":
        t |= {"BARE_DIE", "NO_PIN_OUT"}
    if pkg in OWN_FILE_PACKAGES:
        t.add("PART_SPECIFIC_DATA_FILES")
    if es:
        t.add("ENGINEERING_SAMPLE")
        if not d.es_only:
            t.add("NOT_LISTED")   # samples of a device already in production
    if es or f["status"] == "advance":
        t.add("ADVANCED_INFO")
    elif f["status"] != "obsolete" and "NOT_LISTED" not in f["traits"]:
        t.add("PRODUCTION")
    if "NOT_LISTED" in f["traits"]:
        t.add("NOT_LISTED")
    if grade == "A":
        t |= {"AUTOMOTIVE_QUALIFIED", "EXTENDED_LIFECYCLE"}
    if grade == "M":
        t |= {"MILITARY_QUALIFIED", "EXTENDED_LIFECYCLE"}
    if f["kind"] == "soc":
        t.add("HAS_HARD_PROCESSOR")
    if d.xcvr:
        t.add("HAS_TRANSCEIVERS")
        if f["kind"] == "gx" and speed == f["speeds"][-1]:
            t.add("TRANSCEIVER_SPEED_LIMITED")
    if p.selectable:
        t.add("SELECTABLE_CORE_VOLTAGE")
    if pkg in SMALL_PACKAGES:
        t.add("TAPE_AND_REEL")
    if f["kind"] == "soc" and f["bak"] >= 5:
        t.add("SECURE_CONFIG")
    p.traits = t

    p.variant = f["variant"]
    if p.variant and f["variant"] != "RADIATION_TOLERANT":
        if grade == "A":
            p.variant = "AUTOMOTIVE"
        elif grade == "M":
            p.variant = "MILITARY"
        elif speed and speed.endswith("L"):
            p.variant = "LOW_POWER"
        elif speed and speed.endswith("H"):
            p.variant = "HIGH_PERFORMANCE"
    p.grade_revision = f["grade_revision"]
    p.fast_corner_grade = f["speeds"][0] if f["t151"] and f["kind"] != "kx" else None
    p.fast_grade_revision = "REV_A" if p.fast_corner_grade else None
    p.power_grade = None
    if f["t151"]:
        p.power_grade = GRADES[grade] if grade in "IAM" else "EXTENDED"
    p.power_status = None
    if f["bak"] >= 3 and f["kind"] != "cfg":
        p.power_status = {"final": "FINAL", "mature": "FINAL", "preliminary": "PRELIMINARY",
                          "advance": "ADVANCE"}[f["status"]]
        if es:
            p.power_status = "ADVANCE"
    p.pkg_suffix = ""
    if f["pkg_suffix"] and d.density in f["pkg_suffix"][0] and pkg == f["pkg_suffix"][1]:
        p.pkg_suffix = f["pkg_suffix"][2]
    p.resources = part_resources(f, d, p, pkg, pins)
    p.migration_parts = []
    p.migration_devices = []
    return p


def part_resources(f, d, p, pkg, pins):
    """Resource counts by resource name (the names of dev_resource_enum)."""
    kind = f["kind"]
    r = {}
    if kind == "cfg":
        r["Configuration bits"] = d.density * 1048576
        return r
    le = p.lcells
    lut6 = f["bak"] >= 4 and kind not in ("cpld", "kx")
    r["Logic cells"] = le
    r["Registers"] = le * 2 if lut6 else le
    r["Logic array blocks"] = le // (20 if lut6 else 10)
    r["User I/O pins"] = p.io
    r["I/O banks"] = max(2, min(16, pins // 80 if pins >= 160 else 2 + pins // 50))
    r["Global clocks"] = 4 if kind == "cpld" else 16 if f["bak"] <= 3 else 32
    if kind == "cpld":
        if "USER_FLASH_MEMORY" in f["traits"]:
            r["User flash memory bits"] = 8192
        r["Configuration bits"] = le * 220
        return r
    if lut6:
        r["LUT memory bits"] = r["Logic array blocks"] // 4 * 640
    small = le // 1200 if f["bak"] <= 3 and kind != "kx" else 0
    medium = max(2, le // 600)
    large = le // 40000 if f["bak"] >= 2 and le >= 40000 else 0
    block_bits = 4608 if f["bak"] <= 2 else 9216 if f["bak"] <= 4 else 20480
    if small:
        r["Small RAM blocks"] = small
    r["Medium RAM blocks"] = medium
    if large:
        r["Large RAM blocks"] = large
    r["Embedded RAM bits"] = small * 576 + medium * block_bits + large * 147456
    if "HAS_DSP_BLOCKS" in f["traits"] or f["bak"] >= 3:
        dsp = max(1, le // (2500 if f["bak"] >= 5 else 4000))
        r["DSP blocks"] = dsp
        r["9x9 multipliers"] = dsp * 8
        r["18x18 multipliers"] = dsp * 4
    r["PLLs"] = max(1, min(12, 1 + le // 30000 + (1 if pins >= 484 else 0)))
    if f["bak"] >= 3 and kind in ("fpga", "gx", "soc") and le >= 50000:
        r["DLLs"] = 2 if le < 200000 else 4
    if f["bak"] >= 3:
        r["Regional clocks"] = 4 * min(16, 2 + le // 40000)
    r["Differential channels"] = p.io // 4
    r["Dedicated clock pins"] = 4 if pins < 256 else 8 if pins < 780 else 16
    if d.xcvr:
        r["Transceiver channels"] = min(d.xcvr, pins // 64)
    if kind in ("gx", "soc") and f["bak"] >= 4:
        r["PCI Express hard blocks"] = 1 if le < 200000 else 2
    if kind == "soc" or (f["bak"] >= 5 and kind in ("fpga", "gx") and pins >= 780):
        r["Hard memory controllers"] = 1 if pins < 1152 else 2 if pins < 1760 else 4
    if kind == "soc":
        r["Hard processor cores"] = 4 if f["bak"] >= 6 else 2
    if kind == "nv":
        r["User flash memory bits"] = le * 64
        r["Analog-to-digital converters"] = 1 if le < 16000 or pins < 169 else 2
    r["Configuration bits"] = le * (300 if f["bak"] <= 3 else 450 if f["bak"] <= 5 else 600)
    return r


def add_migrations(f, devices, parts):
    """Vertical migration inside a family: devices sharing a footprint migrate to each
    other; transceiver devices with differing channel counts are excluded instead."""
    for d in devices:
        d.migration, d.migration_exclude = [], []
    if not f["vmig"]:
        return
    for d in devices:
        for other in devices:
            if other is d or not set(d.packages) & set(other.packages) or other.es_only or d.es_only:
                continue
            (d.migration if other.xcvr == d.xcvr else d.migration_exclude).append(other)
    index = {}
    for p in parts:
        if not p.es:
            index[(p.device.name, p.package, p.pins, p.grade, p.speed)] = p
    for p in parts:
        if p.es:
            continue
        targets = [index.get((o.name, p.package, p.pins, p.grade, p.speed)) for o in p.device.migration]
        targets = [t for t in targets if t is not None]
        if targets and p.package == p.device.packages[-1][0] and p.pins == p.device.packages[-1][1]:
            p.migration_parts = targets
            p.migration_devices = [t.device for t in targets]
            p.traits.add("VERTICAL_MIGRATION")


class ProductLine:
    def __init__(self, root):
        self.tables = HostTables(root)
        self.families = FAMILIES
        self.devices = []
        self.parts = []
        by_name = {f["name"]: f for f in FAMILIES}
        for i, f in enumerate(FAMILIES):
            f["value"] = i + 1
            devs = build_devices(f)
            parts = build_parts(f, devs, self.tables)
            add_migrations(f, devs, parts)
            f["devices"], f["parts"] = devs, parts
            self.devices += devs
            self.parts += parts
        self.device_by_name = {d.name: d for d in self.devices}
        for i, d in enumerate(self.devices):
            d.value = i + 1
        for i, p in enumerate(self.parts):
            p.value = i + 1
        # Devices of families on another family's dies name that family's device.
        for f in FAMILIES:
            if f["base_family"]:
                base = by_name[f["base_family"]]
                for d in f["devices"]:
                    d.base = "%s%s%03d" % (base["code"], base["letter"], d.density)
        for f in FAMILIES:
            cfg = by_name[CONFIG_FAMILY_BY_BAK[f["bak"]]]
            f["config_devices"] = [] if f["kind"] in ("cfg", "cpld", "nv", "kx", "test") else \
                [d for d in cfg["devices"] if d.density * 1048576 >= min(p.resources["Configuration bits"]
                                                                      for p in f["parts"]) // 4]
        self.check()

    # --------------------------------------------------------------------------------
    def check(self):
        """Consistency of the product line; raises ProductLineError naming each fault."""
        errors = []
        t = self.tables
        err = errors.append
        if len(self.families) != FAMILY_COUNT:
            err("%d families, expected %d" % (len(self.families), FAMILY_COUNT))
        if len(self.devices) != DEVICE_COUNT:
            err("%d devices, expected %d" % (len(self.devices), DEVICE_COUNT))
        if len(PACKAGES) != PACKAGE_COUNT:
            err("%d packages, expected %d" % (len(PACKAGES), PACKAGE_COUNT))
        if len(SPEEDS) != SPEED_COUNT:
            err("%d speed grades, expected %d" % (len(SPEEDS), SPEED_COUNT))
        names = {}
        for kind, items in (("family", [f["name"] for f in self.families]),
                            ("device", [d.name for d in self.devices]),
                            ("part", [p.name for p in self.parts]),
                            ("package", [p[0] for p in PACKAGES]), ("speed grade", [s[0] for s in SPEEDS])):
            for n in items:
                if not re.fullmatch(r"[A-Z0-9_]+", n):
                    err("%s name %s is not an upper-case identifier" % (kind, n))
                if n in names:
                    err("%s name %s is also a %s name" % (kind, n, names[n]))
                names[n] = kind
            # List membership is a substring search for "name ": no name that can be a
            # list member may end another name of its kind.
            ends = set(items) if kind in ("family", "device", "part") else set()
            for n in items if ends else ():
                for k in range(1, len(n)):
                    if n[k:] in ends:
                        err("%s name %s ends with the %s name %s" % (kind, n, kind, n[k:]))
        for n in list(names):
            if n in t.part_trait.by_name and names[n] in ("package", "speed grade"):
                err("%s %s is also a part trait name" % (names[n], n))
        file_names = {}
        for f in self.families:
            for tr in family_traits(f):
                if tr not in t.family_trait.by_name:
                    err("family %s: unknown family trait %s" % (f["name"], tr))
            for key in ("base_family", "kx_library"):
                if f[key] and f[key] not in (g["name"] for g in self.families):
                    err("family %s: %s names unknown family %s" % (f["name"], key, f[key]))
            if bool(f["base_family"]) != ("USES_BASE_FAMILY_DATA" in f["traits"]):
                err("family %s: a base family goes with trait USES_BASE_FAMILY_DATA" % f["name"])
            if not f["parts"]:
                err("family %s has no parts" % f["name"])
            if f["t151"] and f["corners"] != "vt":
                err("family %s: temperatures from corners need corners with temperatures" % f["name"])
            # The part manager builds the voltage list of family 41 from the corners alone.
            if f["corner_voltages_only"] != (f["value"] == 41):
                err("family %s: only family 41 takes its voltages from the corners alone" % f["name"])
        for d in self.devices:
            fn = device_file_name(d)
            if fn in file_names:
                err("device %s: FILE_NAME %s also used by %s" % (d.name, fn, file_names[fn]))
            file_names[fn] = d.name
            if d.base and d.base not in self.device_by_name:
                err("device %s: base device %s does not exist" % (d.name, d.base))
        used_packages, used_speeds = set(), set()
        for p in self.parts:
            used_packages.add(p.package)
            used_speeds.add(p.speed)
            if p.device.name not in self.device_by_name:
                err("part %s: device %s does not exist" % (p.name, p.device.name))
            for c in p.slow + p.fast:
                if c not in t.timing.by_name:
                    err("part %s: timing corner %s is not a timing model" % (p.name, c))
            for r in p.resources:
                if r not in t.resource.by_name:
                    err("part %s: unknown resource %s" % (p.name, r))
            if p.family["kind"] != "cfg":
                if p.resources.get("User I/O pins") != p.io or p.io < 1:
                    err("part %s: user I/O resource differs from NUM_OF_IO" % p.name)
            for tr in p.traits:
                if tr not in t.part_trait.by_name:
                    err("part %s: unknown part trait %s" % (p.name, tr))
            for name, table in ((p.variant, t.variant), (p.grade_revision, t.grade_revision),
                                (p.power_status, t.power_status), (p.default_voltage, t.voltage)):
                if name and name not in table.by_name:
                    err("part %s: %s is not in %s" % (p.name, name, table.stem))
            errors += check_part_temperatures(p, t)
        for pkg, _, _ in PACKAGES:
            if pkg not in used_packages:
                err("package %s is used by no part" % pkg)
        for s, _ in SPEEDS:
            if s not in used_speeds:
                err("speed grade %s is used by no part" % s)
        if errors:
            raise ProductLineError("\n".join(errors))


def check_part_temperatures(p, t):
    """The temperatures the part manager derives for the part must be those of its grade:
    from the family table (with its 85/0 fallback) or, with trait 151, from the corners."""
    f = p.family
    lo, hi = family_temperature_table(f)[p.grade]
    if f["corners"] != "vt":
        return []
    if f["t151"]:
        hot = [t.operating_point[t.timing.value(c)][1] for c in p.slow]
        cold = [t.operating_point[t.timing.value(c)][1] for c in p.fast]
        first_hot = next((x for x in hot if x > ROOM_TEMPERATURE), None)
        if first_hot is None or not cold or cold[0] >= ROOM_TEMPERATURE:
            return ["part %s: corners give no default temperature range" % p.name]
        if cold[0] != lo or first_hot != hi:
            return ["part %s: corners %d..%d do not cover grade %s %d..%d"
                    % (p.name, cold[0], first_hot, p.grade, lo, hi)]
        return []
    if lo == hi:
        lo, hi = 0, 85
    temps = {t.operating_point[t.timing.value(c)][1] for c in p.slow}
    cold = {t.operating_point[t.timing.value(c)][1] for c in p.fast}
    if temps != {hi} or cold != {lo}:
        return ["part %s: corners %s/%s differ from the family range %d..%d"
                % (p.name, sorted(cold), sorted(temps), lo, hi)]
    return []


def device_file_name(d):
    return "ddb_%s.device" % d.name.lower()


# ------------------------------------------------------------------------------------
# Writers.

GENERATED_NOTE = "// Generated by tools/gen_product_line.py from its product-line definition; do not edit.\n"


def product_enum(stem, word, what, bounds_note, members, generic, generic_value):
    """One product enumeration definition: `members` are (debug, value, user) rows,
    `generic` the (debug, user) strings of the generic bound."""
    enum, ident = "DEV_%s_ENUM" % word, "DEV_%s" % word
    out = ["// Product catalogue: the %s enumeration. The catalogue generator writes one\n" % what,
           "// DSTR_MEMBER line per %s between the invalid member and the generic one;\n" % what,
           "// %s\n" % bounds_note, GENERATED_NOTE,
           "DSTR_ENUM_BEGIN(%s, %s)\nDSTR_INVALID(%s_INVALID, 0)\n" % (enum, stem, ident)]
    out += ['DSTR_MEMBER(%s_%s, %d, "%s", "%s")\n' % (ident, debug, value, debug, user)
            for debug, value, user in members]
    out += ['DSTR_GENERIC(%s_GENERIC, %d, "%s", "%s")\n' % (ident, generic_value, generic[0], generic[1]),
            "DSTR_BOUND(%s_MAX, %d)\n" % (ident, generic_value + 1),
            "DSTR_ENUM_END(%s, %s, %s_INVALID, %s_GENERIC)\n" % (enum, stem, ident, ident)]
    return {"%s/%s.def" % (TABLES, stem): "".join(out)}


def write_enums(line):
    files = {}
    n = len(line.parts)
    for args in (
            ("dev_family_enum", "FAMILY", "family", "the bounds are fixed at 48 and 49.",
             [(f["name"], f["value"], f["user"]) for f in line.families], ("GENERIC_FAMILY", "All families"), 48),
            ("dev_device_enum", "DEVICE", "device", "the bounds are fixed at 323 and 324.",
             [(d.name, d.value, d.name) for d in line.devices], ("GENERIC_DEVICE", "Any device"), 323),
            ("dev_part_enum", "PART", "part",
             "the part count is catalogue data, so both bounds follow the last member.",
             [(p.name, p.value, p.name) for p in line.parts], ("GENERIC_PART", "Any part"), n + 1),
            ("dev_pkg_enum", "PKG", "package", "the bounds are fixed at 31 and 32.",
             [(p[0], i + 1, p[0]) for i, p in enumerate(PACKAGES)], ("GENERIC_PACKAGE", "Any package"), 31),
            ("dev_speed_enum", "SPEED", "speed grade", "the bounds are fixed at 16 and 17.",
             [(sp[0], i + 1, sp[1]) for i, sp in enumerate(SPEEDS)],
             ("GENERIC_SPEED_GRADE", "Any speed grade"), 16)):
        files.update(product_enum(*args))
    return files


def write_folders(line):
    out = ["// The data folder of each family under the device-database root, one row per\n"
           "// family. Families built on another family's dies, the legacy generations, the\n"
           "// structured-cell families and the configuration memories share general folders.\n"
           "// Expanded by the catalogue store with DEV_FAMILY_FOLDER(ENUMERATOR, \"folder\").\n",
           GENERATED_NOTE]
    out += ['DEV_FAMILY_FOLDER(DEV_FAMILY_%s, "%s")\n' % (f["name"], f["folder"]) for f in line.families]
    return {FOLDER_DEF: "".join(out)}


def quoted(names):
    return ['"%s"' % n for n in names]


def block(out, header, rows):
    """One record: its header lines, then its keys in alphabetical order, one line per
    value (a list gives a line per member; None and "" give none), then "end"."""
    out.append(header)
    for name, value in sorted(rows, key=lambda row: row[0]):
        for v in value if isinstance(value, list) else [value]:
            if v is not None and v != "":
                out.append("\t%s = %s\n" % (name, v))
    return out


def write_catalogue(line):
    t = line.tables
    out = ["#######################################################\n",
           "### Velcora device catalogue: families, devices and parts\n",
           "### Generated by tools/gen_product_line.py; do not edit.\n",
           "#######################################################\n",
           "\n########### families ############\n"]
    order = [g["name"] for g in line.families]
    for f in line.families:
        ranges = family_temperature_table(f)
        volts = core_voltages(f, t) or [None]
        encryption = 0
        if "DESIGN_SECURITY" in f["traits"]:
            encryption = 1 if f["bak"] <= 3 else 2 if f["bak"] <= 5 else 3
        rows = [("BAK_VERSION", f["bak"]), ("BASE_FAMILY_ID", f["base_family"]),
                ("CONFIG_DEVICES", quoted(d.name for d in f["config_devices"])),
                ("ENCRYPTION_ID", encryption), ("KX_LIBRARY_FAMILY", f["kx_library"]),
                ("MAX_NOMINAL_CORE_SUPPLY_VOLTAGE", volts[-1]), ("MIN_NOMINAL_CORE_SUPPLY_VOLTAGE", volts[0]),
                ("MIGRATION_FAMILIES", quoted(sorted(f["migration"], key=order.index))),
                ("TRAITS", sorted(family_traits(f), key=t.family_trait.value)),
                ("UNIFIED_SUFFIX", '"%s"' % f["unified"] if f["unified"] else None)]
        rows += [("%s_%s_TEMP" % (bound, grade_name), ranges[letter][i])
                 for grade_name, letter in TEMP_KEY_GRADES for i, bound in ((0, "MIN"), (1, "MAX"))]
        block(out, "family\t%s\n######\t(User name - %s)\n" % (f["name"], f["user"]), rows)
        out.append("end\n\n")

    out.append("\n########### devices ############\n")
    for d in line.devices:
        rows = [("BAK_VERSION", d.bak), ("BASE_DEVICE", d.base), ("FAMILY", d.family["name"]),
                ("FILE_NAME", '"%s"' % device_file_name(d)),
                ("MIGRATION_DEVICES", quoted(m.name for m in d.migration)),
                ("MIGRATION_DEVICES_EXCLUDE", quoted(m.name for m in d.migration_exclude)),
                ("TRAITS", sorted(device_traits(d), key=t.device_trait.value)), ("VOLTAGE", d.family["volt"])]
        block(out, "device\t%s\n######\t(User name - %s)\n" % (d.name, d.name), rows)
        out.append("end\n\n")

    out.append("\n########### parts ############\n")
    resource_order = sorted(t.resource.by_name, key=t.resource.value)
    for p in line.parts:
        rows = [("DEFAULT_VOLTAGE", p.default_voltage), ("DEVICE", p.device.name), ("FAMILY", p.family["name"]),
                ("FAMILY_VARIANT", p.variant), ("FAST_CORNER_GRADE", p.fast_corner_grade),
                ("FAST_GRADE_REVISION", p.fast_grade_revision), ("FAST_TIMING_CORNERS", quoted(p.fast)),
                ("GRADE_REVISION", p.grade_revision), ("MAX_POWER_CHARACTERISTICS_TEMP_GRADE", p.power_grade),
                ("MIGRATION_DEVICES", quoted(d.name for d in p.migration_devices)),
                ("MIGRATION_PARTS", quoted(m.name for m in p.migration_parts)),
                ("NUM_OF_IO", p.io), ("NUM_OF_LCELLS", p.lcells), ("ORDERING_CODE", '"%s"' % p.ordering_code),
                ("PACKAGE", p.package),
                ("PACKAGE_DDB_FILE_NAME_SUFFIX", '"%s"' % p.pkg_suffix if p.pkg_suffix else None),
                ("PIN_COUNT", p.pins), ("POWER_MODEL_STATUS", p.power_status), ("SLOW_TIMING_CORNERS", quoted(p.slow)),
                ("SPEED_GRADE", p.speed), ("TEMPERATURE_GRADE", GRADES[p.grade]),
                ("TRAITS", sorted(p.traits, key=t.part_trait.value))]
        block(out, "part\t%s\n####\t(User name - %s)\n" % (p.name, p.name), rows)
        out.append("\tDEV_RESOURCES = {\n")
        out += ['\t\t"%s" = %d\n' % (r, p.resources[r]) for r in resource_order if r in p.resources]
        out.append("\t}\nend\n\n")
    return {CATALOGUE: "".join(out)}


def family_temperature_table(f):
    ranges = {}
    for letter in GRADE_ORDER:
        if letter in f["temps"]:
            ranges[letter] = f["temps"][letter]
        elif letter in f["grades"]:
            ranges[letter] = GRADE_RANGE[letter]
            if f["t151"] and letter == "E" and f["volt"] in ("0_9V", "0_95V"):
                ranges[letter] = (0, 110)
        else:
            ranges[letter] = (0, 0)
    return ranges


def core_voltages(f, t):
    """The family's nominal core voltages, lowest first (none for the generations that
    predate the core-supply keys)."""
    if f["bak"] < 3 or f["kind"] == "cfg":
        return []
    volts = {f["volt"]} | {v for vs in f["speed_volts"].values() for v in vs}
    return sorted(volts, key=lambda v: int(t.voltage.extra[t.voltage.value(v)][0]))


def device_traits(d):
    f = d.family
    tr = set()
    if d.es_only:
        tr.add("ENGINEERING_SAMPLE_ONLY")
    if d.base:
        tr.add("HAS_BASE_DIE")
    if f["kind"] == "cfg":
        tr |= {"NO_TIMING_MODEL", "NO_POWER_MODEL", "NO_HDR_DATA"}
    elif f["bak"] <= 2:
        tr.add("NO_POWER_MODEL")
    if f["status"] in ("preliminary", "advance"):
        tr.add("PRELIMINARY_TIMING")
    if f["kind"] == "soc":
        tr.add("HAS_HARD_PROCESSOR")
    if d.xcvr:
        tr.add("HAS_TRANSCEIVERS")
    if f["variant"] == "RADIATION_TOLERANT" or (f["kind"] == "soc" and f["bak"] >= 5):
        tr.add("SECURE_DEVICE")
    if f["kind"] == "kx":
        tr.add("MIGRATION_ONLY")
    return tr


def outputs(root):
    line = ProductLine(root)
    files = {}
    files.update(write_enums(line))
    files.update(write_folders(line))
    files.update(write_catalogue(line))
    return line, files


def main(argv):
    ap = argparse.ArgumentParser(
        description="Generate the Velcora product line: the family, device, part, package and "
                    "speed-grade enumerations, the family folder table and the text catalogue "
                    "data/h/dev_part_manager_auto.part.")
    ap.add_argument("--check", action="store_true",
                    help="write nothing; exit 1 and name every output that differs from what "
                         "would be generated")
    ap.add_argument("--root", default=ROOT, help="source tree (default: %(default)s)")
    args = ap.parse_args(argv)
    try:
        line, files = outputs(args.root)
    except ProductLineError as e:
        print("gen_product_line: the product line is inconsistent:\n%s" % e, file=sys.stderr)
        return 2
    stale = []
    for rel, text in sorted(files.items()):
        path = os.path.join(args.root, rel)
        try:
            with open(path, encoding="utf-8", newline="") as fh:
                current = fh.read()
        except OSError:
            current = None
        if current == text:
            continue
        stale.append(rel)
        if not args.check:
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "w", encoding="utf-8", newline="") as fh:
                fh.write(text)
    if args.check:
        for rel in stale:
            print("gen_product_line: %s is stale; run tools/gen_product_line.py" % rel, file=sys.stderr)
        return 1 if stale else 0
    for rel in stale:
        print("wrote %s" % rel)
    print("%d families, %d devices, %d parts" % (len(line.families), len(line.devices), len(line.parts)))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
