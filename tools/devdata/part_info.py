"""Part info in the PART_INFO text form: the part's temperature limits, static power and
power-up sequence, and a power_supply block per supply of the part (power.py).

Currents follow the part: the core's leakage grows with the device's logic, falls with the
architecture generation, is higher for the faster speed grades (the lower numbers; "L"
grades leak less, "H" grades more) and doubles every 22 degrees of junction temperature up
to the grade's limit; dynamic currents grow with logic, toggle rate and clock frequency.
"""

import re

from . import iostd, power
from .textform import Writer, seeded

GENERATED_BY = "tools/gen_device_files.py"
# Core leakage at 25 degrees, mA per thousand logic cells, by generation.
LEAKAGE = {1: 1.2, 2: 0.9, 3: 0.7, 4: 0.5, 5: 0.35, 6: 0.25}
TOLERANCE = {"core": 3, "aux": 5, "io": 5, "analog": 3}
_MILLIVOLTS = {}


def millivolts(tables):
    if tables.dir not in _MILLIVOLTS:
        _MILLIVOLTS[tables.dir] = iostd.millivolts(tables)
    return _MILLIVOLTS[tables.dir]


def speed_factor(grade):
    """Leakage relative to the middle grade: faster grades (lower numbers) leak more."""
    m = re.fullmatch(r"SG(\d)([LH]?)", grade or "")
    if not m:
        return 1.0
    return (1 + 0.08 * (5 - int(m.group(1)))) * {"L": 0.7, "H": 1.2, "": 1.0}[m.group(2)]


class PartInfoText:
    def __init__(self, tables, facts, part):
        self.t, self.f, self.p = tables, facts, part
        self.rng = seeded(part.name, "part_info")
        self.mv = millivolts(tables)
        self.supplies = power.supplies(facts, part)
        self.grade = part.value("TEMPERATURE_GRADE") or "COMMERCIAL"
        self.lo, self.hi = facts.grade_range(self.grade)
        self.kle = max(1, part.int("NUM_OF_LCELLS")) / 1000
        self.speed = speed_factor(part.value("SPEED_GRADE"))
        self.traits = set(part.values("TRAITS"))

    def leak(self, ma25, tj):
        return ma25 * 2 ** ((tj - 25) / 22)

    def static_ma(self, s):
        """Static current of a supply at 25 degrees, mA."""
        f, r = self.f, self.p.resources
        low = 0.6 if "LOW_POWER" in self.traits else 1.0
        if s.role == "core" and s.name in ("VCCINT", "VCC_ONE"):
            return (5 + self.kle * LEAKAGE.get(f.gen, 0.25)) * self.speed * low
        if s.name == "VCC_RAM":
            return 2 + r.get("Embedded RAM bits", 0) / 1e6 * low
        if s.name == "VCC_PLL_DIGITAL" or s.name == "VCC_PLL_ANALOG":
            return 1.5 * max(1, r.get("PLLs", 0))
        if s.name.startswith("VCC_XCVR"):
            return 4 * max(1, r.get("Transceiver channels", 0))
        if s.banks:
            return 1.2 * len(s.banks)
        return 2 + self.kle * 0.01

    def dynamic_ma(self, s, toggle, mhz):
        """Dynamic current at a toggle rate (percent) and clock frequency, mA."""
        r = self.p.resources
        if s.role == "core" and s.name in ("VCCINT", "VCC_ONE"):
            return self.kle * toggle / 12.5 * mhz / 100 * 0.6
        if s.banks:
            return len(s.banks) * toggle * mhz / 400
        if s.name.startswith("VCC_XCVR"):
            return max(1, r.get("Transceiver channels", 0)) * (30 + mhz / 20)
        return toggle * mhz / 2000 + 1

    def text(self):
        f, p, w, R = self.f, self.p, Writer(), self.rng.random
        self.w = w
        w.lines += ["# Part info of %s (%s, %s, speed grade %s): %d power supplies." %
                    (p.name, f.name, self.grade.lower(), p.value("SPEED_GRADE") or "none", len(self.supplies)),
                    "# Written by %s from the catalogue; do not edit." % GENERATED_BY, ""]
        names = [s.name for s in self.supplies]
        static = {s.name: self.leak(self.static_ma(s), self.hi) for s in self.supplies}
        static_mw = sum(static[s.name] * self.level(s) / 1000 for s in self.supplies)
        preliminary = bool(self.traits & {"PRELIMINARY_TIMING", "ADVANCED_INFO", "ENGINEERING_SAMPLE"})
        for key, on in (("HAS_POWER_DATA", "NO_POWER_MODEL" not in self.traits), ("HAS_THERMAL_DATA", True),
                        ("IS_LOW_POWER_PART", "LOW_POWER" in self.traits or (p.value("SPEED_GRADE") or "").endswith("L")),
                        ("IS_PRELIMINARY", preliminary)):
            w.attr("", "BOOL_" + key, "true" if on else "false")
        for key, value in (("MAX_STATIC_POWER_MW", int(static_mw)), ("MAX_JUNCTION_TEMP", self.hi),
                           ("MIN_JUNCTION_TEMP", self.lo), ("NUM_POWER_SUPPLIES", len(self.supplies))):
            w.attr("", "INT_" + key, value)
        w.attr("", "ENUM_TEMPERATURE_GRADE", self.grade)
        w.string("", "STRING_ORDERING_CODE", p.value("ORDERING_CODE") or p.name)
        w.string("", "STRING_COMMENT", "%s grade, %d to %d degrees junction; %d logic cells, %d user I/O in %s%d" % (
            self.grade.lower(), self.lo, self.hi, p.int("NUM_OF_LCELLS"), p.int("NUM_OF_IO"), p.value("PACKAGE"),
            p.int("PIN_COUNT")))
        w.table("", "2D_INT_THERMAL_LIMITS", [[self.grade, self.lo, self.hi, self.hi + 25]])
        temps = list(range(self.lo, self.hi + 1, 5)) + ([self.hi] if (self.hi - self.lo) % 5 else [])
        w.table("", "2D_INT_STATIC_POWER_TABLE", [[t, int(sum(self.leak(self.static_ma(s), t) * self.level(s) / 1000
                                                                  for s in self.supplies))] for t in temps])
        w.table("", "2D_INT_SUPPLY_SEQUENCE", [[s.name, self.stage(s), 100 + 100 * self.stage(s)] for s in self.supplies])
        w.table("", "2D_INT_CURRENT_LIMITS", [[self.t.enum("dev_power_supply_enum").value[s.name], self.max_ma(s, static),
                                               int(self.max_ma(s, static) * (1.5 + R()))] for s in self.supplies])
        w.lines.append("")
        for s in self.supplies:
            self.supply(s, static, temps, names)
        return w.text()

    def level(self, s):
        return self.mv.get(s.voltage, 1800)

    def stage(self, s):
        """Power-up order: core rails first, then auxiliary and analog, the I/O last."""
        return {"core": 0, "aux": 1, "analog": 1, "io": 2}[s.role]

    def max_ma(self, s, static):
        return int(static[s.name] + self.dynamic_ma(s, 25, 250 + 50 * self.f.gen))

    def supply(self, s, static, temps, names):
        w, R, T = self.w, self.rng.random, "\t"
        mv = self.level(s)
        tol = TOLERANCE[s.role]
        w.lines.append("power_supply %s" % s.name)
        shared = s.shared if s.shared in names else None
        for key, on in (("IS_CORE", s.role == "core"), ("IS_IO", s.role == "io"), ("IS_AUXILIARY", s.role == "aux"),
                        ("IS_ANALOG", s.role == "analog"), ("IS_SHARED", bool(shared)),
                        ("CAN_BE_POWERED_DOWN", s.role == "io" or s.name in ("VCC_ADC", "VCC_FLASH", "VCC_BATTERY")),
                        ("REQUIRES_FILTER", s.role == "analog")):
            w.attr(T, "BOOL_" + key, "true" if on else "false")
        for key, value in (("NOMINAL_MV", mv), ("MIN_MV", mv * (100 - tol) // 100), ("MAX_MV", mv * (100 + tol) // 100),
                           ("MAX_CURRENT_MA", self.max_ma(s, static)), ("RAMP_TIME_US", 200 + 400 * self.stage(s))):
            w.attr(T, "INT_" + key, value)
        w.attr(T, "ENUM_VOLTAGE", s.voltage)
        if shared:
            w.attr(T, "ENUM_SHARED_WITH", shared)
        user = self.t.enum("dev_power_supply_enum").user[s.name]
        strings = [("NAME", s.name), ("PIN_NAME_PATTERN", s.name + ("" if s.role == "core" else "*")),
                   ("DESCRIPTION", user + (" of banks %s" % ", ".join(map(str, s.banks)) if s.banks else "")),
                   ("REGULATOR_NOTE", "low-noise regulator, separate from digital supplies" if s.role == "analog"
                    else "may share a regulator with %s" % shared if shared else "switching regulator allowed")]
        for key, value in strings:
            w.string(T, "STRING_" + key, value)
        ma25 = self.static_ma(s)
        w.table(T, "2D_INT_CURRENT_BY_TEMPERATURE", [[self.grade, t, int(self.leak(ma25, t))]
                                                    for t in (self.lo, 25, (25 + self.hi) // 2, self.hi)])
        if s.name in ("VCCINT", "VCC_ONE") and "SELECTABLE_CORE_VOLTAGE" in self.traits:
            levels = [v for v in ("0_85V", "0_9V", "0_95V", "1_0V", "1_1V", "1_2V") if v in self.mv]
            near = sorted(levels, key=lambda v: abs(self.mv[v] - mv))[:3]
            w.table(T, "2D_INT_CURRENT_BY_VOLTAGE", [[v, int(static[s.name] * self.mv[v] / mv)]
                                                     for v in sorted(near, key=self.mv.get)])
        elif s.banks:
            options = ["3_3V", "2_5V", "1_8V", "1_5V", "1_2V"]
            w.table(T, "2D_INT_CURRENT_BY_VOLTAGE", [[v, int(self.dynamic_ma(s, 25, 200) * self.mv[v] / 1800)]
                                                     for v in options if self.mv[v] <= max(mv, 1800)])
        else:
            w.table(T, "2D_INT_CURRENT_BY_VOLTAGE", [[s.voltage, int(static[s.name])]] if s.voltage in self.mv else [])
        w.table(T, "2D_INT_STATIC_CURRENT_TABLE", [[t, int(self.leak(ma25, t))] for t in sorted(set(temps[::2] + temps[-1:]))])
        w.table(T, "2D_INT_DYNAMIC_CURRENT_TABLE", [[toggle, mhz, int(self.dynamic_ma(s, toggle, mhz))]
                                                    for toggle in (12, 25, 50) for mhz in (100, 200, 400)])
        before = [b.name for b in self.supplies if self.stage(b) == self.stage(s) - 1 and b.role != "analog"]
        if before:
            w.table(T, "2D_INT_SEQUENCE_AFTER", [[b, 50 + int(50 * R())] for b in before[:4]])
        w.table(T, "2D_INT_TOLERANCE_TABLE", [[mv * (100 - tol) // 100, mv * (100 + tol) // 100, tol * 10]])
        w.table(T, "2D_INT_RIPPLE_TABLE", [[khz, max(5, int(mv * tol / 300 / (1 + khz / 1000)))]
                                           for khz in (10, 1000, 10000)])
        w.table(T, "2D_INT_DECOUPLING_TABLE", [[nf, max(1, int(self.max_ma(s, static) / 1000 * k))]
                                               for nf, k in ((100, 4), (1000, 2), (10000, 1), (47000, 0.5))])
        w.lines += ["end", ""]


def part_info_text(tables, facts, part):
    return PartInfoText(tables, facts, part).text()
