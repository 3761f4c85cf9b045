"""Routing switches of a device in the RSI text form: the global block, the 26 pass trees
and a routing_switch block per switch kind that the device's routing has.

A switch kind of the routing-switch enumeration joins a source (a wire or a block output)
to a sink (a wire or a block input); a device has the kinds whose source and sink it has:
  wires H4, V4, H24 and V16 in every generation, H8 and V8 from generation 2, H16 and V12
  from generation 4; direct links from generation 2; carry and share chains with the
  family's traits; global clocks, regional clocks where counted, periphery clocks from
  generation 4 in devices with PLLs; RAM and DSP ports where the device has such blocks;
  PLL inputs where it has PLLs; LAB lines, local lines, logic-cell inputs, I/O and clock
  control everywhere.
So the smallest families have a few dozen kinds and the largest all 340. The opener of a
switch block sets its INT key 0, so a block never writes that key; every other BOOL, INT
and 2D_INT key is written once, and the MCF string (STRING key 2) is unique to the switch.
"""

from .architecture import Architecture
from .textform import Writer, seeded

GENERATED_BY = "tools/gen_device_files.py"
SOURCES = ("H4", "H8", "H16", "H24", "V4", "V8", "V12", "V16", "DIRECT_LEFT", "DIRECT_RIGHT", "CARRY", "SHARE",
           "GCLK", "RCLK", "PCLK", "LAB_LINE", "LOCAL", "IO_OUT", "RAM_OUT", "DSP_OUT")
SINKS = ("H4", "H8", "H16", "H24", "V4", "V8", "V12", "V16", "LOCAL", "LAB_LINE", "LCELL_IN", "RAM_IN", "DSP_IN",
         "IO_IN", "PLL_IN", "CLOCK_CTRL_IN", "GCLK")
WIRE_LENGTH = {"H4": 4, "H8": 8, "H16": 16, "H24": 24, "V4": 4, "V8": 8, "V12": 12, "V16": 16}
TREE = {"DIRECT_LEFT": "DIRECT_TREE", "DIRECT_RIGHT": "DIRECT_TREE", "CARRY": "CARRY_TREE", "SHARE": "SHARE_TREE",
        "CLOCK_CTRL_IN": "CLOCK_CTRL_TREE", "LCELL_IN": "LCELL_IN_TREE"}
LOCATION = {"IO_OUT": "IO_TILE_COL", "IO_IN": "IO_TILE_COL", "RAM_OUT": "RAM_M", "RAM_IN": "RAM_M", "DSP_OUT": "DSP",
            "DSP_IN": "DSP", "PLL_IN": "PLL", "CLOCK_CTRL_IN": "CLOCK_CTRL", "GCLK": "GLOBAL_CLOCK",
            "RCLK": "REGIONAL_CLOCK", "PCLK": "CLOCK_CTRL"}
ELEMENT = {"LCELL_IN": "LOGIC_LUT", "RAM_IN": "RAM_M_BLOCK", "RAM_OUT": "RAM_M_BLOCK", "DSP_IN": "DSP_MULT_18X18",
           "DSP_OUT": "DSP_MULT_18X18", "IO_IN": "IO_OBUF", "IO_OUT": "IO_IBUF", "PLL_IN": "PLL_CORE",
           "CLOCK_CTRL_IN": "CLOCK_CTRL", "CARRY": "LOGIC_CARRY", "SHARE": "LOGIC_SHARED_ARITH"}


def tree(end):
    return TREE.get(end, end + "_TREE")


def present(facts):
    """The sources and sinks that the device's routing has."""
    f, gen = facts, facts.gen
    ram = any(f.r(k) for k in ("Small RAM blocks", "Medium RAM blocks", "Large RAM blocks", "Embedded RAM bits"))
    have = {"H4", "V4", "H24", "V16", "GCLK", "LAB_LINE", "LOCAL", "IO_OUT", "LCELL_IN", "IO_IN", "CLOCK_CTRL_IN"}
    have.update(name for name, on in (
        ("H8", gen >= 2), ("V8", gen >= 2), ("H16", gen >= 4), ("V12", gen >= 4), ("DIRECT_LEFT", gen >= 2),
        ("DIRECT_RIGHT", gen >= 2), ("CARRY", f.has("HAS_CARRY_CHAIN")), ("SHARE", f.has("HAS_SHARED_ARITHMETIC")),
        ("RCLK", f.r("Regional clocks")), ("PCLK", gen >= 4 and f.r("PLLs")), ("RAM_OUT", ram), ("RAM_IN", ram),
        ("DSP_OUT", f.r("DSP blocks")), ("DSP_IN", f.r("DSP blocks")), ("PLL_IN", f.r("PLLs"))) if on)
    return have


class RsiText:
    def __init__(self, tables, facts):
        self.t, self.f = tables, facts
        self.rng = seeded(facts.name, "rsi")
        self.a = Architecture(tables, facts, 1.0)
        have = present(facts)
        self.switches = [(s, k) for s in SOURCES for k in SINKS if s in have and k in have]
        self.enum = tables.enum("dev_routing_switch_enum")
        self.used_locations = set(self.a.used)

    def element(self, end):
        base = ELEMENT.get(end)
        return base and self.a.element_name(base, self.f.gen) or (base if base in self.a.elements.value else None)

    def text(self):
        f, w = self.f, Writer()
        self.w = w
        w.lines += ["# Routing switches of %s, a %s device: %d switch kinds, 26 pass trees." %
                    (f.name, f.family.user, len(self.switches)),
                    "# Written by %s from the catalogue; do not edit." % GENERATED_BY, ""]
        self.global_info()
        for name in self.t.enum("dev_pass_tree_enum").names:
            self.pass_tree(name)
        for source, sink in self.switches:
            self.switch(source, sink)
        return w.text()

    def global_info(self):
        f, w, T = self.f, self.w, "\t"
        wires = [k for k in WIRE_LENGTH if k in present(f)]
        w.lines.append("global_info")
        for key, value in (("NUM_ROUTING_SWITCHES", len(self.switches)), ("NUM_PASS_TREES", 26),
                           ("NUM_WIRE_TYPES", len(wires)), ("MAX_WIRE_LENGTH", max(WIRE_LENGTH[k] for k in wires)),
                           ("ROUTING_MODEL_VERSION", 10 * f.gen + 4), ("DEFAULT_SWITCH", "LOCAL_TO_LCELL_IN"),
                           ("DEFAULT_PASS_TREE", "LOCAL_TREE")):
            w.attr(T, "INT_" + key, value)
        six = f.has("SIX_INPUT_LUT")
        per_channel = {"H4": 160 if six else 64, "V4": 80 if six else 48, "H24": 16 if six else 8, "V16": 16 if six else 8}
        w.table(T, "2D_INT_WIRE_TYPE_TABLE", [[i, WIRE_LENGTH[k], per_channel.get(k, 32), 40 + 22 * WIRE_LENGTH[k]]
                                             for i, k in enumerate(wires)])
        names = {"%s_TO_%s" % sk for sk in self.switches}
        w.table(T, "2D_INT_SWITCH_PAIRS", [["%s_TO_%s" % (s, k), self.enum.value["%s_TO_%s" % (k, s)]]
                                          for s, k in self.switches if s != k and "%s_TO_%s" % (k, s) in names])
        w.lines += ["end", ""]

    def pass_tree(self, name):
        w, R = self.w, self.rng.random
        levels = 2 + (self.f.gen >= 3) + (self.f.gen >= 5)
        sizes = [4 if name.startswith(("H", "V", "LOCAL", "LAB")) else 2] + [4] * (levels - 1)
        w.lines.append("pass_tree %s" % name)
        leaves = 1
        for s in sizes:
            leaves *= s
        delays = [int(18 + 30 * R()) for _ in range(levels)]
        for key, value in (("NUM_LEVELS", levels), ("NUM_LEAVES", leaves), ("DELAY_PS", sum(delays)),
                           ("CONFIG_BITS", sum(sizes))):
            w.attr("\t", "INT_" + key, value)
        w.table("\t", "2D_INT_LEVEL_SIZES", [[i, s] for i, s in enumerate(sizes)])
        w.table("\t", "2D_INT_LEVEL_DELAYS", [[i, d] for i, d in enumerate(delays)])
        w.lines += ["end", ""]

    def switch(self, source, sink):
        f, w, R, T = self.f, self.w, self.rng.random, "\t"
        name = "%s_TO_%s" % (source, sink)
        index = self.enum.value[name]
        wire = WIRE_LENGTH.get(sink, 1)
        clock = "CLK" in source or sink == "GCLK"
        fanin = 4 + 4 * (index % 5) + (8 if sink in ("LCELL_IN", "LOCAL") else 0)
        stages = 1 if fanin <= 8 else 2 if fanin <= 24 else 3
        base = 35 + 9 * wire + 12 * stages + (25 if clock else 0)
        w.lines.append("routing_switch %s" % name)
        w.lines.append(T + "PASS_TREES = " + ", ".join(dict.fromkeys([tree(source), tree(sink)])))
        for key, value in (("NLSPC_NAME", name.lower()), ("DESCRIPTION", self.enum.user[name]),
                           ("MCF_NAME", "rs:%s>%s" % (source.lower(), sink.lower())),
                           ("TIMING_MODEL", "rsw_t%d" % (index % 24)), ("POWER_MODEL", "rsw_p%d" % (index % 12))):
            w.string(T, "STRING_" + key, value)
        for key, on in (("IS_BUFFERED", wire > 1 or clock), ("IS_BIDIRECTIONAL", False), ("IS_GLOBAL", clock),
                        ("IS_DEDICATED", source in ("CARRY", "SHARE", "DIRECT_LEFT", "DIRECT_RIGHT") or clock),
                        ("IS_PROGRAMMABLE_DELAY", clock and f.gen >= 3), ("HAS_PASS_TREES", True),
                        ("DRIVES_CLOCK_NETWORK", sink in ("GCLK", "CLOCK_CTRL_IN", "PLL_IN")),
                        ("CAN_BE_INVERTED", sink in ("LCELL_IN", "LAB_LINE", "LOCAL"))):
            if on:
                w.attr(T, "BOOL_" + key, "true")
        location = LOCATION.get(sink, LOCATION.get(source, "LAB"))
        if location not in self.used_locations:
            location = "LAB"
        ints = [("NUM_INPUTS", fanin), ("NUM_OUTPUTS", 1), ("NUM_STAGES", stages), ("MUX_SIZE", fanin),
                ("INTRINSIC_DELAY_PS", base), ("INPUT_CAP_FF", 1 + int(3 * R())), ("OUTPUT_CAP_FF", 2 + wire),
                ("OUTPUT_RESISTANCE_MOHM", 1800000 // (wire + 2)), ("FANOUT_LIMIT", 4 * wire + 8),
                ("WIRE_LENGTH", wire), ("X_SPAN", wire if sink.startswith("H") else 0),
                ("Y_SPAN", wire if sink.startswith("V") else 0), ("CONFIG_BITS", stages * 4),
                ("POWER_INTERNAL_UW", 3 + wire), ("POWER_LEAKAGE_NW", 40 + 6 * fanin), ("LOCATION", location)]
        for key, end in (("SOURCE_ELEMENT", source), ("SINK_ELEMENT", sink)):
            element = self.element(end)
            if element:
                ints.append((key, element))
        ints += [("PASS_TREE", tree(source)), ("DELAY_MIN_PS", int(base * 0.55)), ("DELAY_MAX_PS", int(base * 1.35)),
                 ("SLEW_PS", 20 + 6 * wire)]
        for key, value in ints:
            w.attr(T, "INT_" + key, value)
        loads = (1, 2, 4, 8, 16)
        w.table(T, "2D_INT_INPUT_CONNECTIONS", [[(index * 7 + 13 * i) % 64 for i in range(min(fanin, 12))]])
        w.table(T, "2D_INT_STAGE_SIZES", [[s, min(fanin, 4 if s else fanin // max(1, 4 ** (stages - 1)) or 1)]
                                         for s in range(stages)])
        w.table(T, "2D_INT_STAGE_DELAYS", [[s, base // stages] for s in range(stages)])
        w.table(T, "2D_INT_CONFIG_BIT_MAP", [[s, 8 * (index % 64) + 4 * s, 4] for s in range(stages)])
        # Delay by fanout (rows) and load in fF (columns); slew and power by fanout.
        w.table(T, "2D_INT_DELAY_TABLE", [[fo] + [int(base + 6 * fo + 2.5 * ld + 4 * R()) for ld in loads]
                                         for fo in (1, 4, 16, 32)])
        w.table(T, "2D_INT_SLEW_TABLE", [[fo, int(20 + 6 * wire + 3 * fo), int(26 + 6 * wire + 4 * fo)] for fo in (1, 4, 16)])
        w.table(T, "2D_INT_POWER_TABLE", [[fo, int((3 + wire) * (1 + fo / 8))] for fo in (1, 4, 16)])
        w.table(T, "2D_INT_LOCATION_OFFSETS", [[location, 0, 0], [location, wire if sink.startswith("H") else 0,
                                                                  wire if sink.startswith("V") else 0]])
        if wire > 1:
            w.table(T, "2D_INT_WIRE_SEGMENTS", [[s, s * 4, min(wire, s * 4 + 4)] for s in range(-(-wire // 4))])
        w.table(T, "2D_INT_TIMING_ARCS", [[0, 0, int(base * 0.55), base, int(base * 1.35)]])
        equivalent = [n for n in ("%s_TO_%s" % (source, k) for k in SINKS if k != sink and
                                  WIRE_LENGTH.get(k, 1) == wire and (source, k) in self.switches)][:3]
        if equivalent:
            w.table(T, "2D_INT_EQUIVALENT_SWITCHES", [[n, 1] for n in equivalent])
        w.lines += ["end", ""]


def rsi_text(tables, facts):
    return RsiText(tables, facts).text()
