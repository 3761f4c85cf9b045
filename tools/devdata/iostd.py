"""The I/O standards of a device and their descriptors in the PAD text form.

Each standard of the I/O standard enumeration has a class, a bank supply (VCCIO), a
reference voltage where it is voltage-referenced, and the architecture generations that
offer it. A device takes the standards of its generation (40 at least, 80 at most: the
nearest generations' standards fill a small set, the oldest are dropped from a large one),
the transceiver, analog and reference-input standards only when it has such pads.

Classes: se single-ended, in single-ended input only, ref voltage-referenced, pdiff
pseudo-differential (two single-ended buffers), diff true differential, diffin true
differential input only, emu differential emulated with external resistors, xcvr
transceiver serial data, refclk transceiver reference clock, analog, vref.

A standard has one default descriptor, named after it, and some an alternative one for
the high-speed banks (the odd banks): "<standard>_HS", with calibrated termination and
faster delay settings. Pads of a high-speed bank list the alternative where there is one.
"""

import re

# name, class, VCCIO, VREF ("-" none), first and last generation.
STANDARDS = """
LVTTL se 3_3V - 1 5
LVCMOS33 se 3_3V - 1 5
LVCMOS30 se 3_0V - 1 6
LVTTL30 se 3_0V - 1 6
LVCMOS25 se 2_5V - 1 6
LVCMOS18 se 1_8V - 2 6
LVCMOS15 se 1_5V - 2 6
LVCMOS12 se 1_2V - 3 6
LVCMOS10 se 1_0V - 5 6
PCI33 se 3_3V - 1 4
PCIX33 se 3_3V - 2 4
SCHMITT33 in 3_3V - 1 4
SCHMITT25 in 2_5V - 1 4
SCHMITT18 in 1_8V - 3 6
SCHMITT15 in 1_5V - 3 6
SSTL2_I ref 2_5V 1_25V 2 4
SSTL2_II ref 2_5V 1_25V 2 4
SSTL18_I ref 1_8V 0_9V 3 5
SSTL18_II ref 1_8V 0_9V 3 5
SSTL15_I ref 1_5V 0_75V 4 6
SSTL15_II ref 1_5V 0_75V 4 6
SSTL15 ref 1_5V 0_75V 4 6
SSTL135_I ref 1_32V VCCIO_DEPENDENT 5 6
SSTL135_II ref 1_32V VCCIO_DEPENDENT 5 6
SSTL135 ref 1_32V VCCIO_DEPENDENT 5 6
SSTL125 ref 1_25V VCCIO_DEPENDENT 5 6
SSTL12 ref 1_2V 0_6V 6 6
HSTL18_I ref 1_8V 0_9V 2 5
HSTL18_II ref 1_8V 0_9V 2 5
HSTL15_I ref 1_5V 0_75V 2 6
HSTL15_II ref 1_5V 0_75V 2 6
HSTL12_I ref 1_2V 0_6V 4 6
HSTL12_II ref 1_2V 0_6V 4 6
HSUL12 ref 1_2V 0_6V 5 6
POD12 ref 1_2V VCCIO_DEPENDENT 6 6
POD10 ref 1_0V VCCIO_DEPENDENT 6 6
DIFF_SSTL2_I pdiff 2_5V - 2 4
DIFF_SSTL2_II pdiff 2_5V - 2 4
DIFF_SSTL18_I pdiff 1_8V - 3 5
DIFF_SSTL18_II pdiff 1_8V - 3 5
DIFF_SSTL15_I pdiff 1_5V - 4 6
DIFF_SSTL15_II pdiff 1_5V - 4 6
DIFF_SSTL15 pdiff 1_5V - 4 6
DIFF_SSTL135 pdiff 1_32V - 5 6
DIFF_SSTL125 pdiff 1_25V - 5 6
DIFF_SSTL12 pdiff 1_2V - 6 6
DIFF_HSTL18_I pdiff 1_8V - 2 5
DIFF_HSTL18_II pdiff 1_8V - 2 5
DIFF_HSTL15_I pdiff 1_5V - 2 6
DIFF_HSTL15_II pdiff 1_5V - 2 6
DIFF_HSTL12_I pdiff 1_2V - 4 6
DIFF_HSTL12_II pdiff 1_2V - 4 6
DIFF_HSUL12 pdiff 1_2V - 5 6
DIFF_POD12 pdiff 1_2V - 6 6
DIFF_POD10 pdiff 1_0V - 6 6
LVDS diff 2_5V - 2 6
LVDS_EMULATED emu 2_5V - 1 4
LVDS_SINGLE_RESISTOR emu 2_5V - 1 3
MINI_LVDS diff 2_5V - 3 6
MINI_LVDS_EMULATED emu 2_5V - 2 4
RSDS diff 2_5V - 2 6
RSDS_EMULATED emu 2_5V - 1 4
RSDS_SINGLE_RESISTOR emu 2_5V - 1 3
PPDS diff 2_5V - 3 5
BLVDS diff 2_5V - 2 5
SLVS diff 1_8V - 5 6
SUB_LVDS diff 1_8V - 5 6
TMDS diffin 3_3V - 4 6
LVPECL diffin 2_5V - 2 6
HCSL diffin 3_3V - 4 6
CML diffin 1_2V - 3 6
DIFF_LVTTL pdiff 3_3V - 1 4
DIFF_LVCMOS25 pdiff 2_5V - 2 5
DIFF_LVCMOS18 pdiff 1_8V - 3 6
DIFF_LVCMOS12 pdiff 1_2V - 5 6
XCVR_PCML xcvr 1_0V - 1 9
XCVR_HCSL_REFCLK refclk 3_3V - 1 9
XCVR_LVPECL_REFCLK refclk 2_5V - 1 9
XCVR_LVDS_REFCLK refclk 2_5V - 1 9
ANALOG_IN analog 2_5V - 1 9
VREF_INPUT vref VCCIO_DEPENDENT - 1 9
DIFF_SLVS diff 1_8V - 5 6
LVCMOS12_SCHMITT in 1_2V - 5 6
"""

OUTPUT_CLASSES = ("se", "ref", "pdiff", "diff", "emu", "xcvr")
DIFFERENTIAL = ("pdiff", "diff", "diffin", "emu", "xcvr", "refclk")
# Drive strengths of the single-ended standards by bank supply (the strongest first dropped
# at low supplies); voltage-referenced standards drive by series termination.
STRENGTHS = {3300: ["4MA", "8MA", "12MA", "16MA", "24MA"], 3000: ["4MA", "8MA", "12MA", "16MA"],
             2500: ["4MA", "8MA", "12MA", "16MA"], 1800: ["2MA", "4MA", "6MA", "8MA", "10MA", "12MA", "16MA"],
             1500: ["2MA", "4MA", "6MA", "8MA", "10MA", "12MA"], 1200: ["2MA", "4MA", "6MA", "8MA"],
             1000: ["2MA", "4MA"]}
MILLIAMPS = {"%dMA" % m: m for m in (2, 4, 6, 8, 10, 12, 14, 16, 20, 24)}
VOLTAGE_RE = re.compile(r'^\s*DSTR_MEMBER\(\w+,\s*\d+,\s*"(\w+)",\s*"[^"]*",\s*(-?\d+)\)')


def millivolts(tables):
    """Millivolts by voltage name (the names that have a level)."""
    with open(tables.dir + "/dev_voltage_enum.def", encoding="utf-8") as f:
        return {m.group(1): int(m.group(2)) for m in map(VOLTAGE_RE.match, f) if m}


class Standard:
    def __init__(self, line, enum, mv):
        name, self.cls, self.vccio, vref, lo, hi = line.split()
        self.name, self.value, self.user = name, enum.value[name], enum.user[name]
        self.vref = vref if vref != "-" else "NOT_APPLICABLE"
        self.window = (int(lo), int(hi))
        self.mv = mv.get(self.vccio, 0)
        self.output = self.cls in OUTPUT_CLASSES
        self.differential = self.cls in DIFFERENTIAL


def standards(tables):
    enum, mv = tables.enum("dev_io_standard_enum"), millivolts(tables)
    return [Standard(line, enum, mv) for line in STANDARDS.strip().splitlines()]


def select(all_standards, gen, xcvr, adc, vref):
    """The standards of a device of generation `gen`, in enumeration order."""
    gated = {"xcvr": xcvr, "refclk": xcvr, "analog": adc, "vref": vref}
    ranked = []
    for s in all_standards:
        if not gated.get(s.cls, True):
            continue
        lo, hi = s.window
        ranked.append((lo - gen if gen < lo else gen - hi if gen > hi else 0, -s.window[0], s.value, s))
    ranked.sort(key=lambda r: r[:3])
    inside = sum(1 for r in ranked if r[0] == 0)
    chosen = [r[3] for r in ranked[:max(40, min(80, inside))]]
    return sorted(chosen, key=lambda s: s.value)


def alternatives(chosen, default):
    """The standards that get a high-speed-bank descriptor: the device's default standard and
    the voltage-referenced and true differential output standards, eight at most."""
    picked = [s for s in chosen if s.name == default] + \
             [s for s in chosen if s.cls in ("ref", "diff") and s.name != default]
    return {s.name for s in picked[:8]}


def milliamps(strength):
    """The drive of a current strength in mA; a series termination drives about VCCIO/R."""
    if strength in MILLIAMPS:
        return MILLIAMPS[strength]
    if strength.startswith("SERIES_"):
        return 1000 // int(strength.split("_")[1])
    return 6 if strength == "MIN_CURRENT" else 18


def strengths(s):
    """The current set of a standard: drive strengths, or series terminations."""
    if s.cls == "se":
        return STRENGTHS.get(s.mv, STRENGTHS[1800]) + (["MIN_CURRENT", "MAX_CURRENT"] if s.mv <= 1800 else [])
    if s.cls == "ref":
        if s.name.endswith("_II"):
            return ["16MA", "SERIES_25_OHM"]
        if s.name.startswith(("HSUL", "POD")):
            return ["SERIES_34_OHM", "SERIES_40_OHM", "SERIES_48_OHM"]
        return ["8MA", "12MA", "SERIES_40_OHM", "SERIES_50_OHM"]
    return []


def write_descriptor(w, s, hs, has_alt, chosen, gen, banks, rules, rng):
    """One io_standard block: the default descriptor of `s`, or its high-speed-bank
    alternative when `hs` (`has_alt`: the standard has one). `rules` are the device's I/O
    rule names."""
    T, R = "\t", rng.random
    name = s.name + ("_HS" if hs else "")
    w.lines.append("io_standard %s" % name)
    currents = strengths(s)
    if currents:
        w.lines.append(T + "CURRENT_SET = " + ", ".join(currents))
        for c in currents:
            ma = milliamps(c)
            w.lines.append(T + "REAL_VCC_CURRENT[%s] = %d" % (c, int(ma * (1100 + 400 * R()))))
            w.lines.append(T + "REAL_GND_CURRENT[%s] = %d" % (c, int(ma * (1300 + 500 * R()))))
    oct_ok = gen >= 3 and s.cls in ("se", "ref", "pdiff")
    bools = [("IS_DEFAULT", not hs), ("IS_DIFFERENTIAL", s.differential), ("IS_VOLTAGE_REFERENCED", s.cls == "ref"),
             ("IS_INPUT_ALLOWED", True), ("IS_OUTPUT_ALLOWED", s.output),
             ("IS_BIDIR_ALLOWED", s.cls in ("se", "ref", "pdiff")), ("IS_PSEUDO_DIFFERENTIAL", s.cls == "pdiff"),
             ("IS_TERMINATED", s.cls in ("ref", "diff", "xcvr") or hs), ("IS_OPEN_DRAIN", False),
             ("IS_SINGLE_ENDED", s.cls in ("se", "in", "ref", "analog", "vref")),
             ("IS_CLOCK_ALLOWED", s.cls not in ("analog", "vref", "xcvr")), ("IS_EMULATED", s.cls == "emu"),
             ("SUPPORTS_SERIES_OCT", oct_ok and s.output), ("SUPPORTS_PARALLEL_OCT", gen >= 4 and s.cls == "ref"),
             ("SUPPORTS_DIFF_OCT", gen >= 3 and s.cls in ("diff", "diffin")),
             ("SUPPORTS_DYNAMIC_OCT", hs and s.cls == "ref"), ("SUPPORTS_PCI_CLAMP", s.name.startswith("PCI")),
             ("SUPPORTS_BUS_HOLD", s.cls in ("se", "in")), ("SUPPORTS_WEAK_PULLUP", s.cls in ("se", "in")),
             ("SUPPORTS_SLEW_CONTROL", s.cls in ("se", "ref")), ("SUPPORTS_CURRENT_STRENGTH", bool(currents)),
             ("SUPPORTS_PREEMPHASIS", s.cls in ("diff", "xcvr") and gen >= 4), ("SUPPORTS_VOD_CONTROL", s.cls in ("diff", "xcvr")),
             ("SUPPORTS_INPUT_DELAY", s.cls not in ("xcvr", "analog", "vref")),
             ("SUPPORTS_OUTPUT_DELAY", s.output and s.cls != "xcvr"), ("SUPPORTS_DDR", s.cls in ("ref", "pdiff", "diff")),
             ("SUPPORTS_DPA", s.cls in ("diff", "diffin") and gen >= 3), ("SUPPORTS_SERDES", s.cls in ("diff", "diffin", "xcvr")),
             ("REQUIRES_VREF", s.cls == "ref"), ("REQUIRES_VCCIO_MATCH", s.output and s.cls != "xcvr"),
             ("REQUIRES_RUP_RDN", hs and s.cls == "ref"), ("REQUIRES_CALIBRATION", hs or s.cls == "xcvr"),
             ("NEEDS_EXTERNAL_RESISTOR", s.cls == "emu"), ("ALLOWED_IN_HIGH_SPEED_BANK", hs or s.mv <= 1800)]
    for key, on in bools:
        w.attr(T, "BOOL_" + key, "true" if on else "false")
    mv = s.mv or 1800
    vref_mv = mv // 2 if s.cls == "ref" else 0
    if s.cls in ("se", "in"):
        vih, vil = (2000, 800) if mv >= 3000 and "TTL" in s.name else (mv * 65 // 100, mv * 35 // 100)
        voh, vol = (mv - 400, 400) if mv >= 2500 else (mv * 3 // 4, mv // 4)
    elif s.cls == "ref":
        swing = 150 if mv >= 2500 else 100
        vih, vil, voh, vol = vref_mv + swing, vref_mv - swing, vref_mv + 4 * swing, vref_mv - 4 * swing
    else:
        vih = vil = voh = vol = 0
    rate = {"se": 150 + 100 * gen, "in": 100 + 50 * gen, "ref": 333 * gen, "pdiff": 300 * gen, "diff": 420 * gen,
            "diffin": 400 * gen, "emu": 200 + 100 * gen, "xcvr": 3125 << max(0, gen - 3), "refclk": 800,
            "analog": 1, "vref": 0}[s.cls] * (5 if hs else 4) // 4
    ints = [("VOLTAGE", s.vccio), ("VIO_VOLTAGE", s.vccio), ("VREF_VOLTAGE", s.vref), ("IO_STANDARD", s.name)]
    if currents:
        ints.append(("DEFAULT_CURRENT_STRENGTH", currents[min(2, len(currents) - 1)]))
    if vih:
        ints += [("VIH_MV", vih), ("VIL_MV", vil)]
    if s.output and vih:
        ints += [("VOH_MV", voh), ("VOL_MV", vol)]
    if s.differential:
        ints += [("VID_MIN_MV", 100 if s.cls != "pdiff" else 200), ("VICM_MIN_MV", 50 if s.cls != "pdiff" else mv // 2 - 150),
                 ("VICM_MAX_MV", 2350 if s.cls != "pdiff" else mv // 2 + 150)]
        if s.output:
            ints += [("VOD_MV", 350 if s.cls != "xcvr" else 800), ("VOCM_MV", 1200 if s.cls != "xcvr" else 600)]
    if oct_ok and s.output:
        ints.append(("SERIES_OCT_OHMS", 25 if s.name.endswith("_II") else 50))
    if gen >= 4 and s.cls == "ref":
        ints.append(("PARALLEL_OCT_OHMS", 50))
    if gen >= 3 and s.cls in ("diff", "diffin"):
        ints.append(("DIFF_OCT_OHMS", 100))
    taps = 16 << min(2, max(0, gen - 3))
    ints += [("MAX_TOGGLE_RATE_MHZ", max(1, rate // 2)), ("MAX_DATA_RATE_MBPS", rate),
             ("SLEW_RATE_SETTINGS", 4 if gen >= 4 and s.cls in ("se", "ref") else 2 if s.cls in ("se", "ref") else 0),
             ("PREEMPHASIS_SETTINGS", 4 if s.cls in ("diff", "xcvr") and gen >= 4 else 0),
             ("VOD_SETTINGS", 4 if s.cls in ("diff", "xcvr") else 0),
             ("INPUT_DELAY_TAPS", taps if s.cls not in ("xcvr", "analog", "vref") else 0),
             ("OUTPUT_DELAY_TAPS", taps // 2 if s.output and s.cls != "xcvr" else 0), ("IBIS_MODEL_INDEX", s.value)]
    rule = {"ref": "VREF_MATCH", "pdiff": "DIFF_PAIR_POLARITY", "diff": "DIFF_PAIR_SPACING", "diffin": "DIFF_PAIR_POLARITY",
            "emu": "DIFF_PAIR_SPACING", "xcvr": "XCVR_CHANNEL_PIN", "refclk": "XCVR_REFCLK_PIN",
            "analog": "ANALOG_INPUT_PIN", "vref": "VREF_PIN_AS_IO"}.get(s.cls, "VCCIO_MATCH")
    if rule in rules:
        ints.append(("IO_RULE", rule))
    for key, value in ints:
        w.attr(T, "INT_" + key, value)
    model = s.name.lower() + ("_hs" if hs else "")
    strings = [("USER_NAME", s.user), ("DESCRIPTION", s.user + (" for the high-speed banks" if hs else "")),
               ("ALIAS_LIST", " ".join(dict.fromkeys([s.name, s.name.replace("_", "")]))),
               ("IBIS_MODEL_INPUT", model + "_in")]
    if s.output:
        strings += [("IBIS_MODEL_OUTPUT", model + "_out")]
    if s.cls in ("se", "ref", "pdiff"):
        strings += [("IBIS_MODEL_BIDIR", model + "_io")]
    strings += [("SPICE_MODEL", model + ".sp"), ("BSDL_CELL", "BC_7" if s.cls in ("se", "ref") else "BC_4"),
                ("TERMINATION_SCHEME", {"ref": "parallel to VTT", "diff": "100-ohm differential", "diffin": "100-ohm differential",
                                        "emu": "external resistor network", "xcvr": "on-die 100-ohm"}.get(s.cls, "none")),
                ("VREF_SOURCE", "VREF pin of the bank" if s.cls == "ref" else "none"), ("VCCIO_NAME", "VCCIO"),
                ("TIMING_MODEL", "io_%s" % model), ("POWER_MODEL", "io_pwr_%s" % s.cls), ("DRIVE_MODEL", model + "_drv"),
                ("ASSIGNMENT_NAME", "IO_STANDARD"), ("ASSIGNMENT_VALUE", s.user)]
    if gen >= 3 and s.cls in ("ref", "se"):
        strings.append(("VCCPD_NAME", "VCC_PREDRIVER"))
    if s.differential:
        strings.append(("PARTNER_STANDARD", s.name))
    for key, value in strings:
        w.string(T, "STRING_" + key, value)
    if currents:
        w.table(T, "2D_INT_CURRENT_STRENGTH_TABLE", [[c, 200 + int(600 * R()), 180 + int(600 * R()), int(mv * (0.3 + 0.1 * R()))]
                                                     for c in currents])
    if s.cls in ("se", "ref"):
        settings = 4 if gen >= 4 else 2
        w.table(T, "2D_INT_SLEW_RATE_TABLE", [[k, 900 - 150 * k + int(40 * R()), 850 - 140 * k + int(40 * R())]
                                              for k in range(settings)])
    if oct_ok or s.cls in ("diff", "diffin"):
        ohms = [100] if s.cls in ("diff", "diffin") else [25, 34, 40, 48, 50, 60][:3 + (gen >= 4) * 3]
        w.table(T, "2D_INT_OCT_TABLE", [[o, o * 85 // 100, o * 115 // 100] for o in ohms])
    if vih:
        w.table(T, "2D_INT_INPUT_THRESHOLDS", [[vil, vih], [vil - 50, vih + 50]])
        if s.output:
            w.table(T, "2D_INT_OUTPUT_LEVELS", [[vol, voh]])
    if s.cls in ("diff", "xcvr"):
        w.table(T, "2D_INT_VOD_TABLE", [[k, 250 + 100 * k] for k in range(4 if s.cls == "diff" else 8)])
        if gen >= 4:
            w.table(T, "2D_INT_PREEMPHASIS_TABLE", [[k, 5 * k * (k + 1)] for k in range(4 if s.cls == "diff" else 8)])
    if s.cls not in ("xcvr", "analog", "vref"):
        step = (50 if gen <= 3 else 25) * (3 if hs else 4) // 4
        w.table(T, "2D_INT_INPUT_DELAY_TABLE", [[k, k * step + int(6 * R())] for k in range(taps)])
        if s.output:
            w.table(T, "2D_INT_OUTPUT_DELAY_TABLE", [[k, k * step + int(6 * R())] for k in range(taps // 2)])
    if s.output:
        w.table(T, "2D_INT_SSN_TABLE", [[n, int(n * mv * (0.004 + 0.002 * R()))] for n in (1, 2, 4, 8, 16, 24, 32, 48)])
    same = [c.name for c in chosen if c.vccio == s.vccio and c.name != s.name]
    if same:
        w.table(T, "2D_INT_COMPATIBLE_STANDARDS", [[n, 1] for n in same])
    if s.mv:
        w.table(T, "2D_INT_VCCIO_OPTIONS", [[s.vccio, s.mv * 95 // 100, s.mv * 105 // 100]])
    w.table(T, "2D_INT_BANK_RESTRICTIONS", [[b, int(fits(s, b, gen) and (high_speed(b) if hs else not (has_alt and high_speed(b))))]
                                                    for b in range(banks)])
    w.lines += ["end", ""]


def high_speed(bank):
    return bank % 2 == 1


def fits(s, bank, gen):
    """Whether a standard's bank supply is one that `bank` offers: the high-speed banks of
    generations 5 and later take 1.8 V at most."""
    return not (gen >= 5 and high_speed(bank) and s.mv > 1800)
