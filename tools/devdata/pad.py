"""The pads of a device (the die's I/O sites) and their PAD text form.

The pad model, shared with the package files that bond pins to these pads:
  - user I/O pads first, pad ids 0 to N-1 (N the largest user I/O count of the device's
    parts), split into the device's I/O banks as the basic info's I/O pad sites are
    (bank b starts at pad b*N/banks), differential pairs on neighbouring pads of a bank as
    many as the device has differential channels, and the dual-purpose functions of some:
    configuration data, clock inputs (families without dedicated clock pins), VREF,
    OCT calibration (OCT<bank>_UP/DN), DQS strobes, device-wide controls;
  - then the dedicated pads: JTAG, configuration, clock inputs (families with dedicated
    clock pins), transceiver channels and reference clocks, temperature diode, analog inputs.
  - global ids: (bank + 1) * 1024 + index in the bank for user I/O, 65536 + 1024 * group +
    index for the dedicated pads.
  - names: IO<bank>_<index> (banks counted from 1) and the dedicated pads' function names.
    Families with NEW_DDB_SUPPORT write the pad-name list in its two forms: "A,B" for a
    differential pad (A the pad, B its pair name, looked up by A) and "X/Y" for a
    dual-purpose pad (looked up by X and by Y); the others a plain name.
A package bonds the user I/O pads that its I/O count takes, the same share of every bank
and the first pads of each (package_user_pads), and the dedicated pads that it has room for.
"""

from . import iostd
from .architecture import Architecture, bank_vccio, default_vccio
from .textform import Writer, seeded

GENERATED_BY = "tools/gen_device_files.py"
USER, DEDICATED = 1024, 65536
# Dedicated pad groups, in the order they follow the user pads; each group's global ids
# start at DEDICATED + 1024 * its position here.
GROUPS = ("jtag", "config", "clock", "xcvr", "refclk", "temp", "adc")
# Properties of the default pad (a user I/O pad) that the dedicated pads lack.
USER_ONLY = {"IS_USER_IO", "IS_BIDIR", "SUPPORTS_INPUT_REGISTER", "SUPPORTS_OUTPUT_REGISTER", "SUPPORTS_OE_REGISTER",
             "SUPPORTS_DDR_INPUT", "SUPPORTS_DDR_OUTPUT", "SUPPORTS_DDR_OE", "SUPPORTS_OUTPUT_DELAY", "SUPPORTS_OE_DELAY",
             "DEFAULT_TRISTATE"}


class Pad:
    __slots__ = ("id", "kind", "bank", "index", "name", "function", "pair", "polarity", "partner", "gid", "bools",
                 "ints", "strings", "x", "y", "side")

    def __init__(self, kind, bank, index, name):
        self.kind, self.bank, self.index, self.name = kind, bank, index, name
        self.function = self.pair = self.polarity = self.partner = None
        self.bools, self.ints, self.strings = set(), {}, {}


class PadModel:
    """The pads of one device (catalogue.DeviceFacts)."""

    def __init__(self, tables, facts):
        f = self.f = facts
        self.gen = f.gen
        self.new_names = "NEW_DDB_SUPPORT" in f.traits
        user = f.io
        self.banks = max(1, min(f.r("I/O banks") or 2, user or 1))
        self.first = [b * user // self.banks for b in range(self.banks + 1)]
        self.vref = f.gen >= 2 and f.r("PLLs") > 0
        self.oct = f.gen >= 3
        self.dqs = f.gen >= 3 and f.r("PLLs") > 0
        self.dqs_groups = 0
        self.pads = [Pad("io", b, i, "IO%d_%d" % (b + 1, i))
                     for b in range(self.banks) for i in range(self.first[b + 1] - self.first[b])]
        self.user = len(self.pads)
        self.pairs = []
        self.pair_up()
        self.functions()
        self.dedicated()
        for i, p in enumerate(self.pads):
            p.id = i
        self.place(Architecture(tables, facts, 1.0))

    # ------------------------------------------------------------------ user I/O pads
    def bank_pads(self, b):
        return self.pads[self.first[b]:self.first[b + 1]]

    def pair_up(self):
        """Differential pairs: (P, N) on pads 2k and 2k+1 of a bank, the channels spread
        over the banks."""
        channels = self.f.r("Differential channels")
        for b in range(self.banks):
            pads = self.bank_pads(b)
            want = (b + 1) * channels // self.banks - b * channels // self.banks
            for k in range(min(want, len(pads) // 2)):
                p, n = pads[2 * k], pads[2 * k + 1]
                name = "DIFF%d_%d" % (b + 1, k)
                for pad, pol, other in ((p, "P", n), (n, "N", p)):
                    pad.pair, pad.polarity, pad.partner = name, pol, other
                    pad.bools.add("IS_DIFF_POSITIVE" if pol == "P" else "IS_DIFF_NEGATIVE")
                self.pairs.append((p, n))

    def assign(self, bank, index, function, flags, **values):
        """Gives a user pad of `bank` a dual-purpose function at `index` or the next free
        pad; False when the bank has none left."""
        pads = self.bank_pads(bank)
        for pad in pads[index:] + pads[:index]:
            if pad.function is None:
                pad.function = function
                pad.bools.update(("IS_DUAL_PURPOSE",) + flags)
                pad.ints.update(values)
                return True
        return False

    def functions(self):
        f, banks = self.f, self.banks
        if not self.user:
            return
        if f.gen >= 2 and not f.has("NONVOLATILE_CONFIG"):
            for k in range(1, 8):
                self.assign(0, 2 * k, "CFG_D%d" % k, ("IS_CONFIG",), CONFIG_FUNCTION_INDEX=k)
            self.assign(0, 1, "CFG_FLASH_CS_N", ("IS_CONFIG", "IS_NCSO"), CONFIG_FUNCTION_INDEX=8)
            self.assign(0, 3, "CFG_FLASH_DO", ("IS_CONFIG", "IS_ASDO"), CONFIG_FUNCTION_INDEX=9)
        if not (f.has("DEDICATED_CLOCK_PINS") and f.r("Dedicated clock pins")):
            for k in range(min(banks * 2, max(2, f.r("Global clocks") // 2))):
                self.assign(k % banks, 0, "CLK%d" % k, ("IS_CLOCK_INPUT", "IS_GLOBAL_CLOCK", "HAS_DEDICATED_CLOCK_ROUTE"),
                            CLOCK_INDEX=k)
        for k in range(min(f.r("PLLs"), banks)):
            self.assign(k, 3, "PLL%d_OUT" % k, ("IS_PLL_OUTPUT", "HAS_DEDICATED_PLL_ROUTE"), PLL_INDEX=k, PLL_PORT_INDEX=0)
        for b in range(banks):
            size = self.first[b + 1] - self.first[b]
            if self.vref:
                self.assign(b, size // 2, "VREF%d" % (b + 1), ("IS_VREF", "RESERVED_FOR_VREF"))
            if self.oct:
                self.assign(b, 1, "OCT%d_UP" % (b + 1), ("IS_RUP", "RESERVED_FOR_RUP_RDN"), OCT_BLOCK=b + 1)
                self.assign(b, 2, "OCT%d_DN" % (b + 1), ("IS_RDN", "RESERVED_FOR_RUP_RDN"), OCT_BLOCK=b + 1)
        if f.gen >= 2:
            last = banks - 1
            for name, flag in (("DEV_RESET_N", "IS_DEV_CLRN"), ("DEV_OUT_EN", "IS_DEV_OE"), ("USER_MODE", "IS_INIT_DONE"),
                               ("CRC_FAULT", "IS_CRC_ERROR"), ("CFG_USER_CLK", "IS_CLKUSR")):
                self.assign(last, 4, name, (flag,))
        if self.dqs:
            # DQ groups of twelve pads in a bank; the strobe pair on the group's fifth and sixth.
            group = 0
            for b in range(banks):
                pads = self.bank_pads(b)
                for g in range(len(pads) // 12):
                    members = pads[12 * g:12 * g + 12]
                    for k, pad in enumerate(members):
                        pad.ints["DQS_GROUP"] = group
                        pad.ints["DQ_GROUP_WIDTH"] = 8
                        if k == 4 or k == 5:
                            pad.bools.add("IS_DQS" if k == 4 else "IS_DQSN")
                            if pad.function is None:
                                pad.function = ("DQS%d" if k == 4 else "DQSN%d") % group
                        else:
                            pad.bools.add("IS_DQ" if k != 11 else "IS_DM")
                    group += 1
            self.dqs_groups = group

    # ------------------------------------------------------------------ dedicated pads
    def dedicated(self):
        f = self.f
        groups = {g: [] for g in GROUPS}
        if f.has("JTAG_CONFIG"):
            groups["jtag"] = [(n, ("IS_JTAG", "RESERVED_FOR_JTAG"), {}) for n in ("TCK", "TMS", "TDI", "TDO")]
        config = ["CFG_RESET_N", "CFG_STATUS_N", "CFG_DONE"]
        if not f.has("NONVOLATILE_CONFIG"):
            config += ["CFG_ENABLE_N", "CFG_CLK", "CFG_D0"] + ["CFG_MODE%d" % k for k in range(2 if f.gen <= 2 else
                                                                                             3 if f.gen <= 4 else 4)]
            config += ["CFG_CHAIN_N"] if f.gen >= 2 else []
        flags = {"CFG_CLK": ("IS_DCLK",), "CFG_D0": ("IS_DATA0",), "CFG_CHAIN_N": ("IS_NCEO",)}
        groups["config"] = [(n, ("IS_CONFIG", "RESERVED_FOR_CONFIG") + flags.get(n, ("IS_MSEL",) if n.startswith("CFG_MODE")
                                                                                  else ()), {}) for n in config]
        clocks = f.r("Dedicated clock pins") if f.has("DEDICATED_CLOCK_PINS") else 0
        if clocks:
            diff = f.gen >= 4
            groups["clock"] = [("CLK%d%s" % (k // 2, "PN"[k % 2]) if diff else "CLK%d" % k,
                                ("IS_CLOCK_INPUT", "IS_GLOBAL_CLOCK", "IS_INPUT_ONLY", "HAS_DEDICATED_CLOCK_ROUTE") +
                                ((("IS_DIFF_POSITIVE", "IS_DIFF_NEGATIVE")[k % 2],) if diff else ()),
                                {"CLOCK_INDEX": k}) for k in range(clocks)]
        channels = f.r("Transceiver channels")
        for c in range(channels):
            for name, flag in (("TX%dP", "IS_XCVR_TX"), ("TX%dN", "IS_XCVR_TX"), ("RX%dP", "IS_XCVR_RX"),
                               ("RX%dN", "IS_XCVR_RX")):
                groups["xcvr"].append((name % c, (flag, "RESERVED_FOR_XCVR", "IS_DIFF_POSITIVE" if name[-1] == "P"
                                                  else "IS_DIFF_NEGATIVE"), {"XCVR_CHANNEL": c, "XCVR_BANK": c // 6}))
        for k in range(2 * -(-channels // 6)):
            for pol in "PN":
                groups["refclk"].append(("REFCLK%d%s" % (k, pol), ("IS_XCVR_REFCLK", "IS_INPUT_ONLY", "RESERVED_FOR_XCVR",
                                                                    "IS_DIFF_POSITIVE" if pol == "P" else "IS_DIFF_NEGATIVE"),
                                         {"XCVR_BANK": k // 2}))
        if f.has("TEMPERATURE_SENSOR") or (f.gen >= 4 and f.r("PLLs")):
            groups["temp"] = [("TEMP_DIODE_" + pol, ("IS_TEMP_DIODE", "IS_INPUT_ONLY"), {}) for pol in "PN"]
        groups["adc"] = [("ADC_IN%d" % k, ("IS_INPUT_ONLY",), {}) for k in range(8 * f.r("Analog-to-digital converters"))]
        self.groups = {}
        for g, members in groups.items():
            self.groups[g] = []
            for k, (name, flags, ints) in enumerate(members):
                pad = Pad(g, -1, k, name)
                pad.gid = DEDICATED + USER * GROUPS.index(g) + k
                pad.bools.update(flags)
                pad.ints.update(ints)
                self.pads.append(pad)
                self.groups[g].append(pad)
        # Differential dedicated pads are pairs of neighbours, P first.
        for pads in self.groups.values():
            for p, n in zip(pads, pads[1:]):
                if "IS_DIFF_POSITIVE" in p.bools and "IS_DIFF_NEGATIVE" in n.bools:
                    p.partner, n.partner = n, p
        for pad in self.pads[:self.user]:
            pad.gid = (pad.bank + 1) * USER + pad.index

    def place(self, arch):
        """Die positions: the user pads around the I/O ring in bank order, from the bottom
        left corner anticlockwise; the dedicated pads at the corners and the transceivers
        on the right edge."""
        w, top, h = arch.width, arch.top, arch.height
        ring = [(x, 0, "B") for x in range(1, w - 1)] + [(w - 1, y, "R") for y in range(1, h + 1)] + \
               [(x, top, "T") for x in range(w - 2, 0, -1)] + [(0, y, "L") for y in range(h, 0, -1)]
        used = {}
        for i, pad in enumerate(self.pads[:self.user]):
            pad.x, pad.y, pad.side = ring[i * len(ring) // self.user]
            pad.ints["SUB_LOC"] = used.get((pad.x, pad.y), 0)
            used[(pad.x, pad.y)] = pad.ints["SUB_LOC"] + 1
            pad.ints["PAD_ORDER"] = i
        corners = {"jtag": (0, 0), "config": (0, top), "clock": (w // 2, 0), "temp": (w - 1, 0), "adc": (w - 1, top)}
        for g, pads in self.groups.items():
            for k, pad in enumerate(pads):
                if g in ("xcvr", "refclk"):
                    pad.x, pad.y, pad.side = w - 1, 1 + (pad.ints.get("XCVR_CHANNEL", 6 * pad.ints["XCVR_BANK"]) *
                                                         h // max(1, self.f.r("Transceiver channels"))), "R"
                else:
                    pad.x, pad.y = corners[g]
                    pad.side = "L" if pad.x == 0 else "R" if pad.x == w - 1 else "B"
                pad.ints["SUB_LOC"] = k % 4

    # ------------------------------------------------------------------ packages
    def package_user_pads(self, count):
        """The user I/O pads that a package with `count` user I/O pins bonds: of each bank
        its share of the count, its first pads."""
        count = min(count, self.user)
        chosen = []
        for b in range(self.banks):
            lo, hi = self.first[b] * count // max(1, self.user), self.first[b + 1] * count // max(1, self.user)
            chosen += self.pads[self.first[b]:self.first[b] + hi - lo]
        return chosen

    def names(self, pad):
        """(the pad's name list, STRING key 4) in the form of the family."""
        if pad.kind != "io" or not self.new_names:
            return pad.name
        if pad.function:
            return "%s/%s" % (pad.name, pad.function)
        if pad.pair:
            return "%s,%s%s" % (pad.name, pad.pair, pad.polarity)
        return pad.name


# ---------------------------------------------------------------------- I/O rules
# name: (applies, severity, bank scope, value, description of the value)
def io_rules(model):
    f, gen = model.f, model.gen
    diff, xcvr = bool(model.pairs), bool(model.groups["xcvr"])
    table = [
        ("VCCIO_MATCH", True, 2, True, 0), ("VREF_MATCH", model.vref, 2, True, 0),
        ("VREF_REQUIRED", model.vref, 2, True, 1), ("DIFF_PAIR_POLARITY", diff, 2, False, 0),
        ("DIFF_PAIR_SPACING", diff, 1, True, 2 if gen >= 4 else 4), ("SSO_LIMIT_PER_BANK", True, 1, True, 48 - 4 * gen),
        ("SSO_LIMIT_PER_GROUP", gen >= 3, 1, True, 12), ("OUTPUT_DRIVE_LIMIT", True, 2, True, 24 if gen <= 3 else 16),
        ("INPUT_ONLY_PIN", True, 2, False, 0), ("OUTPUT_ONLY_PIN", gen <= 2, 2, False, 0),
        ("CLOCK_PIN_INPUT_ONLY", f.has("DEDICATED_CLOCK_PINS"), 2, False, 0),
        ("DEDICATED_CLOCK_ROUTE", True, 1, False, 1), ("PLL_OUTPUT_PIN_PAIR", f.r("PLLs") > 0, 1, True, 2),
        ("PLL_FEEDBACK_PIN", f.r("PLLs") > 0, 1, False, 1), ("OCT_CALIBRATION_BLOCK", model.oct, 2, True, 1),
        ("OCT_SHARED_RUP_RDN", model.oct, 1, True, 2), ("SERIES_TERM_WITH_CALIBRATION", model.oct, 1, True, 50),
        ("PARALLEL_TERM_INPUT_ONLY", gen >= 4, 2, False, 50), ("DYNAMIC_TERM_BIDIR_ONLY", gen >= 4, 2, False, 0),
        ("LVDS_TX_BANK_ONLY", diff and gen <= 4, 2, True, 0), ("LVDS_RX_BANK_ONLY", diff and gen <= 3, 2, True, 0),
        ("DPA_CHANNEL_LIMIT", f.has("HARD_SERDES"), 2, True, len(model.pairs) // 2),
        ("SERDES_FACTOR_LIMIT", f.has("HARD_SERDES", "LVDS_RECEIVER"), 2, False, 10),
        ("PCI_CLAMP_REQUIRED", gen <= 4, 1, False, 1), ("HOT_SOCKET_TOLERANT", gen >= 3, 1, False, 1),
        ("BUS_HOLD_CONFLICT", True, 2, False, 0), ("WEAK_PULLUP_CONFLICT", True, 2, False, 0),
        ("OPEN_DRAIN_OUTPUT_ONLY", True, 1, False, 0), ("SLEW_RATE_SETTING", gen >= 2, 1, False, 4 if gen >= 4 else 2),
        ("DELAY_CHAIN_SETTING", gen >= 2, 1, False, 16 << min(2, max(0, gen - 3))),
        ("DDR_REGISTER_PACKING", gen >= 2, 1, False, 2), ("IO_REGISTER_PACKING", True, 1, False, 3),
        ("DQ_GROUP_MEMBERSHIP", model.dqs, 2, True, 8), ("DQS_GROUP_SIZE", model.dqs, 2, True, 12),
        ("MEMORY_INTERFACE_BANK", model.dqs, 1, True, 1), ("JTAG_PIN_RESERVED", bool(model.groups["jtag"]), 2, False, 4),
        ("CONFIG_PIN_DUAL_PURPOSE", gen >= 2, 1, True, 9), ("CONFIG_PIN_RESERVED", True, 2, False, 1),
        ("VREF_PIN_AS_IO", model.vref, 1, True, 1), ("BANK_VOLTAGE_RANGE", True, 2, True, 3300 if gen <= 4 else 1800),
        ("MIXED_VCCIO_BANK", gen >= 3, 1, True, 2), ("HIGH_VOLTAGE_TOLERANCE", gen <= 3, 1, True, 4100),
        ("INPUT_VOLTAGE_LIMIT", True, 2, True, 4100 if gen <= 3 else 3600 if gen <= 4 else 2000),
        ("XCVR_REFCLK_PIN", xcvr, 2, False, 2), ("XCVR_CHANNEL_PIN", xcvr, 2, False, 4),
        ("ANALOG_INPUT_PIN", bool(model.groups["adc"]), 2, False, 8), ("PAD_TO_PAD_SPACING", gen >= 3, 1, True, 1),
        ("PAD_TO_CLOCK_SPACING", gen >= 3, 1, True, 2), ("SINGLE_ENDED_NEAR_DIFF", diff, 1, True, 2),
        ("PSEUDO_DIFF_PAIR_RULE", diff and gen >= 3, 2, False, 0),
    ]
    return [(name, severity, bank, value) for name, applies, severity, bank, value in table if applies]


# ---------------------------------------------------------------------- PAD text
class PadText:
    def __init__(self, tables, facts, model=None):
        self.t, self.f = tables, facts
        self.m = model or PadModel(tables, facts)
        self.rng = seeded(facts.name, "pad")
        self.w = Writer()
        self.vccio, self.default = default_vccio(facts.gen)
        self.standards = iostd.select(iostd.standards(tables), facts.gen, bool(self.m.groups["xcvr"]),
                                      bool(self.m.groups["adc"]), self.m.vref)
        self.by_name = {s.name: s for s in self.standards}
        self.alts = iostd.alternatives(self.standards, self.default)
        self.rules = io_rules(self.m)
        self.supplies = {}
        gen = facts.gen
        self.element = "IO_PAD" if gen == 1 else "IO_PAD_G%d" % gen

    def text(self):
        f, m, w = self.f, self.m, self.w
        w.lines += ["# Pads of %s, a %s device: %d pads, %d of them user I/O in %d banks, %d I/O standards." %
                    (f.name, f.family.user, len(m.pads), m.user, m.banks, len(self.standards)),
                    "# Written by %s from the catalogue; do not edit." % GENERATED_BY, ""]
        self.pad_info()
        rule_names = {r[0] for r in self.rules}
        for s in self.standards:
            iostd.write_descriptor(w, s, False, s.name in self.alts, self.standards, f.gen, m.banks, rule_names, self.rng)
            if s.name in self.alts:
                iostd.write_descriptor(w, s, True, True, self.standards, f.gen, m.banks, rule_names, self.rng)
        for name, severity, bank, value in self.rules:
            w.lines.append("io_rule %s" % name)
            for key, on in (("IS_ERROR", severity >= 2), ("IS_BANK_SCOPE", bank), ("IS_DEVICE_SCOPE", not bank)):
                w.attr("\t", "BOOL_" + key, "true" if on else "false")
            for key, v in (("SEVERITY", severity), ("SCOPE_RADIUS", 4 if bank else 0), ("RULE_VALUE", value),
                           ("MAX_COUNT", value if name.startswith("SSO") else 0)):
                w.attr("\t", "INT_" + key, v)
            w.string("\t", "STRING_DESCRIPTION", self.t.enum("dev_io_rule_enum").user[name])
            w.string("\t", "STRING_HELP_ID", "IO-%03d" % self.t.enum("dev_io_rule_enum").value[name])
            w.lines += ["end", ""]
        self.default_pad()
        for pad in m.pads:
            self.pad(pad)
        return w.text()

    def pad_info(self):
        f, m, w = self.f, self.m, self.w
        dedicated = lambda g: len(m.groups[g])  # noqa: E731
        w.attr("", "INT_NUM_PADS", len(m.pads))
        sizes = [m.first[b + 1] - m.first[b] for b in range(m.banks)]
        ints = [("NUM_IO_BANKS", m.banks), ("NUM_DIFF_PAIRS", len(m.pairs)), ("DEFAULT_IO_STANDARD", self.default),
                ("DEFAULT_VCCIO", self.vccio), ("DEFAULT_CURRENT_STRENGTH", "12MA" if f.gen <= 2 else "8MA"),
                ("NUM_VREF_GROUPS", m.banks if m.vref else 0), ("NUM_DQS_GROUPS", m.dqs_groups),
                ("NUM_OCT_BLOCKS", m.banks if m.oct else 0),
                ("NUM_CLOCK_PADS", dedicated("clock") + sum(1 for p in m.pads[:m.user] if "IS_CLOCK_INPUT" in p.bools)),
                ("NUM_CONFIG_PADS", dedicated("config")), ("NUM_JTAG_PADS", dedicated("jtag")), ("NUM_POWER_PADS", 0),
                ("NUM_GROUND_PADS", 0), ("NUM_XCVR_PADS", dedicated("xcvr") + dedicated("refclk")),
                ("MAX_PADS_PER_BANK", max(sizes or [0])), ("MAX_OUTPUTS_PER_VREF", 20 if f.gen <= 3 else 36),
                ("MAX_SSO_PER_BANK", 48 - 4 * f.gen), ("MIN_DIFF_PAIR_SPACING", 2 if f.gen >= 4 else 4),
                ("PAD_PITCH_UM", max(20, 90 - 10 * f.gen)), ("PAD_RING_COUNT", 1 if f.gen <= 2 else 2),
                ("IO_TIMING_MODEL_VERSION", 10 * f.gen + 2), ("IBIS_VERSION", 4 + (f.gen >= 4)),
                ("DEFAULT_SLEW_RATE", 1 if f.gen >= 4 else 0), ("DEFAULT_DRIVE_MODE", 0), ("FIRST_USER_PAD", 0)]
        for key, value in ints:
            w.attr("", "INT_" + key, value)
        bools = [("HAS_DIFF_PAIRS", m.pairs), ("HAS_VREF_GROUPS", m.vref), ("HAS_DQS_GROUPS", m.dqs),
                 ("HAS_OCT_CALIBRATION", m.oct), ("HAS_PCI_CLAMPS", f.gen <= 4), ("HAS_HOT_SOCKET_PROTECTION", f.gen >= 3),
                 ("HAS_DEDICATED_CLOCK_PADS", m.groups["clock"]), ("HAS_DUAL_PURPOSE_PADS", True),
                 ("HAS_CONFIG_PADS", True), ("HAS_JTAG_PADS", m.groups["jtag"]), ("HAS_POWER_PADS", False),
                 ("HAS_GROUND_PADS", False), ("HAS_NO_CONNECT_PADS", False), ("HAS_XCVR_PADS", m.groups["xcvr"]),
                 ("ALLOWS_MIXED_VCCIO", f.gen >= 3), ("ALLOWS_DIFF_ON_ANY_PAD", False),
                 ("ALLOWS_VREF_AS_USER_IO", m.vref), ("USES_BANK_VCCIO", True), ("USES_PAD_NAME_LIST", m.new_names),
                 ("CHECK_IO_RULES", True), ("CHECK_SSN", f.gen >= 3), ("CHECK_DIFF_PAIR_SPACING", m.pairs),
                 ("REQUIRES_RUP_RDN", m.oct), ("REQUIRES_VREF_PER_BANK", m.vref)]
        for key, on in bools:
            w.attr("", "BOOL_" + key, "true" if on else "false")
        for key, value in (("PAD_FILE_VERSION", "%d.%d" % (f.gen, 3)),
                           ("DESCRIPTION", "pads and I/O standards of %s" % f.name),
                           ("BANK_NAME_FORMAT", "%d"), ("PAD_NAME_FORMAT", "IO%d_%d"),
                           ("IBIS_FILE_NAME", "%s.ibs" % f.name.lower()), ("BSDL_FILE_NAME", "%s.bsd" % f.name.lower()),
                           ("SSN_MODEL_NAME", "ssn_%s" % f.family.name.lower()), ("GENERATOR", GENERATED_BY)):
            w.string("", "STRING_" + key, value)
        w.vector("", "VEC_STRING_BANK_NAMES", [str(b + 1) for b in range(m.banks)], quoted=True)
        if m.vref:
            w.vector("", "VEC_STRING_VREF_GROUP_NAMES", ["VREFGROUP%d" % (b + 1) for b in range(m.banks)], quoted=True)
        if m.dqs_groups:
            w.vector("", "VEC_STRING_DQS_GROUP_NAMES", ["DQS%d" % g for g in range(m.dqs_groups)], quoted=True)
        clocks = [p.function if p.kind == "io" else p.name for p in m.pads if "IS_CLOCK_INPUT" in p.bools]
        if clocks:
            w.vector("", "VEC_STRING_CLOCK_PAD_NAMES", clocks, quoted=True)
        w.vector("", "VEC_STRING_CONFIG_PAD_NAMES", [p.name for p in m.groups["config"]], quoted=True)
        w.table("", "2D_INT_BANK_PADS", [[b + 1, m.first[b], m.first[b + 1] - m.first[b], (b + 1) * USER]
                                         for b in range(m.banks)])
        w.table("", "2D_INT_BANK_VCCIO_OPTIONS", [[b + 1, v, 1 if v == bank_vccio(f, b) else 0]
                                                  for b in range(m.banks) for v in self.bank_supplies(b)])
        w.table("", "2D_INT_DIFF_PAIR_MAP", [[k, p.id, n.id] for k, (p, n) in enumerate(m.pairs)])
        if m.vref:
            w.table("", "2D_INT_VREF_GROUP_PADS", [[b + 1] + [p.id for p in m.bank_pads(b)] for b in range(m.banks)])
        w.lines.append("")

    def bank_supplies(self, b):
        """The I/O supplies that bank b takes: those of its standards, highest first."""
        if b not in self.supplies:
            levels = {s.vccio: s.mv for s in self.standards
                      if s.cls in ("se", "ref", "in") and iostd.fits(s, b, self.f.gen)}
            self.supplies[b] = sorted(levels, key=lambda v: -levels[v])
        return self.supplies[b]

    def default_pad(self):
        f, w = self.f, self.w
        self.defaults = {"IS_USER_IO", "IS_BIDIR", "IS_BONDED", "SUPPORTS_BUS_HOLD", "SUPPORTS_WEAK_PULLUP",
                         "SUPPORTS_INPUT_REGISTER", "SUPPORTS_OUTPUT_REGISTER", "SUPPORTS_OE_REGISTER",
                         "SUPPORTS_LVCMOS", "SUPPORTS_OPEN_DRAIN", "DEFAULT_TRISTATE", "HAS_DIE_BUMP",
                         "HAS_PACKAGE_BALL", "MIGRATION_COMPATIBLE"}
        gen_features = [("SUPPORTS_LVTTL", f.gen <= 5), ("SUPPORTS_PCI", f.gen <= 4), ("SUPPORTS_PCI_CLAMP", f.gen <= 4),
                        ("SUPPORTS_SERIES_OCT", f.gen >= 3), ("SUPPORTS_PARALLEL_OCT", f.gen >= 4),
                        ("SUPPORTS_DYNAMIC_OCT", f.gen >= 4), ("SUPPORTS_SLEW_CONTROL", f.gen >= 2),
                        ("SUPPORTS_INPUT_DELAY", f.gen >= 2), ("SUPPORTS_OUTPUT_DELAY", f.gen >= 2),
                        ("SUPPORTS_OE_DELAY", f.gen >= 3), ("SUPPORTS_DDR_INPUT", f.gen >= 2),
                        ("SUPPORTS_DDR_OUTPUT", f.gen >= 2), ("SUPPORTS_DDR_OE", f.gen >= 3),
                        ("SUPPORTS_HSTL", any(s.name.startswith("HSTL") for s in self.standards)),
                        ("SUPPORTS_SSTL", any(s.name.startswith("SSTL") for s in self.standards)),
                        ("SUPPORTS_HSUL", "HSUL12" in self.by_name), ("SUPPORTS_POD", "POD12" in self.by_name),
                        ("SUPPORTS_VREF_INPUT", self.m.vref), ("SUPPORTS_HOT_SOCKET", f.gen >= 3),
                        ("SUPPORTS_SCHMITT_TRIGGER", any(s.cls == "in" for s in self.standards)),
                        ("DEFAULT_WEAK_PULLUP", f.gen <= 3)]
        self.defaults.update(k for k, on in gen_features if on)
        w.lines.append("default_pad")
        keys = self.t.keys("dev_pad", "bool").keys
        for key in keys:
            w.attr("\t", "BOOL_" + key, "true" if key in self.defaults else "false")
        taps = 16 << min(2, max(0, f.gen - 3)) if f.gen >= 2 else 0
        step = 50 if f.gen <= 3 else 25
        for key, value in (("IO_BANK", -1), ("DEFAULT_IO_STANDARD", self.default),
                           ("DEFAULT_CURRENT_STRENGTH", "12MA" if f.gen <= 2 else "8MA"), ("VCCIO", self.vccio),
                           ("VCCPD", "3_3V" if f.gen <= 2 else "2_5V"), ("LOCATION", "IO_PAD"),
                           ("ELEMENT", self.element), ("DELAY_CHAIN_TAPS", taps), ("DELAY_CHAIN_STEP_PS", step),
                           ("OUTPUT_DELAY_TAPS", taps // 2), ("OE_DELAY_TAPS", taps // 4),
                           ("MAX_CURRENT_MA", 40 if f.gen <= 3 else 25), ("MAX_SSO", 48 - 4 * f.gen),
                           ("DIFF_PARTNER_GID", -1), ("POWER_DOMAIN", 0)):
            w.attr("\t", "INT_" + key, value)
        w.string("\t", "STRING_IBIS_MODEL_NAME", self.default.lower() + "_io")
        w.table("\t", "2D_INT_DELAY_CHAIN_SETTINGS", [[k, k * step] for k in range(taps)])
        w.lines += ["end", ""]

    def pad_standards(self, pad):
        """The descriptors a pad lists, one per standard."""
        m, gen = self.m, self.f.gen
        if pad.kind == "io":
            classes = ("se", "in", "ref") + (("pdiff", "diff", "diffin", "emu") if pad.partner else ())
            if "IS_VREF" in pad.bools:
                classes += ("vref",)
            names = [s for s in self.standards if s.cls in classes and iostd.fits(s, pad.bank, gen)]
            hs = iostd.high_speed(pad.bank)
            return [s.name + ("_HS" if hs and s.name in self.alts else "") for s in names]
        if pad.kind in ("config", "jtag"):
            return [s.name for s in self.standards if s.cls == "se" and s.vccio in (self.vccio, "3_3V", "2_5V")][:4]
        if pad.kind == "clock":
            return [s.name for s in self.standards if s.cls in ("se", "in", "diffin", "diff") and s.mv <= 3300 and
                    (s.cls in ("se", "in") or pad.partner)]
        if pad.kind == "xcvr":
            return ["XCVR_PCML"]
        if pad.kind == "refclk":
            return [s.name for s in self.standards if s.cls == "refclk"]
        if pad.kind == "adc":
            return ["ANALOG_IN"]
        return []

    def pad(self, pad):
        f, w, m, R = self.f, self.w, self.m, self.rng.random
        T = "\t"
        w.lines.append("pad %d" % pad.id)
        stds = self.pad_standards(pad)
        if stds:
            w.lines.append(T + "IO_STANDARDS = " + ", ".join(stds))
        bools = set(pad.bools)
        if pad.kind == "io":
            if pad.partner:
                bools |= {"SUPPORTS_LVDS_INPUT", "SUPPORTS_TRUE_DIFF_OUTPUT" if f.has("LVDS_TRANSMITTER") else
                          "SUPPORTS_EMULATED_LVDS"}
                if f.has("LVDS_TRANSMITTER"):
                    bools.add("SUPPORTS_LVDS_OUTPUT")
                if f.has("HARD_SERDES"):
                    bools |= {"SUPPORTS_DPA", "SUPPORTS_SERDES"}
            if iostd.high_speed(pad.bank):
                bools.add("IN_HIGH_SPEED_BANK")
            elif any(s.mv >= 3000 for s in self.standards):
                bools.add("IN_HIGH_VOLTAGE_BANK")
        if pad.kind == "xcvr":
            bools |= {"SUPPORTS_PROGRAMMABLE_PREEMPHASIS", "SUPPORTS_PROGRAMMABLE_VOD", "HAS_ADJACENT_XCVR"}
        bools.add({"B": "IN_BOTTOM_EDGE", "T": "IN_TOP_EDGE", "L": "IN_LEFT_EDGE", "R": "IN_RIGHT_EDGE"}[pad.side])
        # The default pad's value holds unless the pad says otherwise.
        on_keys = self.defaults | bools if pad.kind == "io" else bools | (self.defaults - USER_ONLY)
        for key in self.t.keys("dev_pad", "bool").keys:
            if (key in on_keys) != (key in self.defaults):
                w.attr(T, "BOOL_" + key, "true" if key in on_keys else "false")
        ints = {"GLOBAL_ID": pad.gid, "X_COORD": pad.x, "Y_COORD": pad.y}
        ints.update(pad.ints)
        if pad.partner:
            ints["DIFF_PARTNER_GID"] = pad.partner.gid
        if pad.kind == "io":
            ints.update(IO_BANK=pad.bank + 1, VREF_GROUP=pad.bank + 1)
            if m.oct:
                ints.setdefault("OCT_BLOCK", pad.bank + 1)
            if pad.partner:
                ints["IO_RULE"] = "DIFF_PAIR_POLARITY"
        else:
            ints["LOCATION"] = {"xcvr": "XCVR_CHANNEL", "refclk": "XCVR_CHANNEL", "jtag": "JTAG", "config": "CONFIG",
                                "temp": "TEMP_SENSOR", "adc": "CONFIG", "clock": "IO_PAD"}[pad.kind]
        ints["DIE_X_UM"] = 450 + pad.x * 61 + 12 * ints.get("SUB_LOC", 0)
        ints["DIE_Y_UM"] = 450 + pad.y * 57
        order = self.t.keys("dev_pad", "int").keys
        for key in order:
            if key in ints:
                w.attr(T, "INT_" + key, ints[key])
        strings = {"PAD_NAME": pad.name, "PAD_NAMES": m.names(pad)}
        if pad.kind == "io":
            if pad.function or pad.pair:
                strings["FUNCTION_NAME"] = pad.function or pad.pair + pad.polarity
            if pad.pair:
                strings["DIFF_PAIR_NAME"] = pad.pair
            if "IS_CONFIG" in pad.bools:
                strings["CONFIG_FUNCTION"] = pad.function
            if "IS_CLOCK_INPUT" in pad.bools:
                strings["CLOCK_FUNCTION"] = pad.function
            if "IS_PLL_OUTPUT" in pad.bools:
                strings["PLL_FUNCTION"] = pad.function
            if "IS_DQS" in pad.bools or "IS_DQSN" in pad.bools:
                strings["DQS_FUNCTION"] = "DQS%s%d" % ("N" if "IS_DQSN" in pad.bools else "", pad.ints["DQS_GROUP"])
        else:
            strings["FUNCTION_NAME"] = pad.name
            field = {"config": "CONFIG_FUNCTION", "jtag": "JTAG_FUNCTION", "clock": "CLOCK_FUNCTION",
                     "xcvr": "XCVR_FUNCTION", "refclk": "XCVR_FUNCTION"}.get(pad.kind)
            if field:
                strings[field] = pad.name
        for key in self.t.keys("dev_pad", "string").keys:
            if key in strings:
                w.string(T, "STRING_" + key, strings[key])
        if "IS_CLOCK_INPUT" in pad.bools:
            k = pad.ints.get("CLOCK_INDEX", 0)
            w.table(T, "2D_INT_CLOCK_NETWORK_TAPS", [[g, 1 + int(3 * R())] for g in range(k % 4, f.r("Global clocks"), 4)])
            if f.r("PLLs"):
                w.table(T, "2D_INT_PLL_CONNECTIONS", [[k % f.r("PLLs"), 0]])
        w.lines += ["end", ""]


def pad_text(tables, facts):
    return PadText(tables, facts).text()
