"""The architecture model of a device, shared by the generators of its data files.

From what the catalogue says about a device (catalogue.DeviceFacts):
  - the location kinds (sites) the device has, from its family's traits and its resources;
  - the floorplan: a grid of columns (LAB, LUT-RAM LAB, RAM and DSP columns between two I/O
    columns) and rows (an I/O row at the top and at the bottom), sized by the device's logic
    array blocks and RAM and DSP counts, with its clock regions and configuration frames;
  - the element types it describes: every element type of its family's architecture
    generation, and for the larger devices those of earlier generations too, which they
    take for older netlists (100 element types for the smallest device, up to 400 for the
    largest);
  - per element type its class, its sites and its ports. An element type whose site the
    family lacks (a DSP multiplier in a family without DSP blocks, say) is implemented in
    the site that stands in for it (the LAB, the I/O tiles or the configuration block).
"""

import math
import re

# Location kinds: (alternative name, short name, floorplan symbol, is I/O, is clock, is hard block).
LOCATIONS = {
    "LAB": ("LOGIC_ARRAY_BLOCK", "LB", "L", 0, 0, 0),
    "LAB_LUTRAM": ("MEMORY_LAB", "LBM", "M", 0, 0, 0),
    "RAM_S": ("SMALL_RAM_BLOCK", "RS", "S", 0, 0, 1),
    "RAM_M": ("MEDIUM_RAM_BLOCK", "RM", "R", 0, 0, 1),
    "RAM_L": ("LARGE_RAM_BLOCK", "RL", "G", 0, 0, 1),
    "DSP": ("DSP_BLOCK", "DS", "D", 0, 0, 1),
    "IO_PAD": ("IO_PAD_SITE", "IOP", "P", 1, 0, 0),
    "IO_TILE_ROW": ("ROW_IO_TILE", "IOR", "H", 1, 0, 0),
    "IO_TILE_COL": ("COLUMN_IO_TILE", "IOC", "V", 1, 0, 0),
    "PLL": ("PHASE_LOCKED_LOOP", "PL", "Q", 0, 1, 1),
    "DLL": ("DELAY_LOCKED_LOOP", "DL", "Y", 0, 1, 1),
    "CLOCK_CTRL": ("CLOCK_CONTROL_BLOCK", "CKC", "C", 0, 1, 0),
    "GLOBAL_CLOCK": ("GLOBAL_CLOCK_NETWORK", "GCK", "K", 0, 1, 0),
    "REGIONAL_CLOCK": ("REGIONAL_CLOCK_NETWORK", "RCK", "k", 0, 1, 0),
    "XCVR_CHANNEL": ("TRANSCEIVER_CHANNEL", "XCH", "X", 1, 0, 1),
    "XCVR_PLL": ("TRANSCEIVER_PLL", "XPL", "x", 0, 1, 1),
    "PCIE_HARD_BLOCK": ("PCIE_HARD_IP", "PCI", "E", 0, 0, 1),
    "MEMORY_CTRL": ("HARD_MEMORY_CONTROLLER", "MC", "Z", 0, 0, 1),
    "CONFIG": ("CONFIGURATION_BLOCK", "CFG", "F", 0, 0, 1),
    "JTAG": ("JTAG_CONTROLLER", "JT", "J", 0, 0, 1),
    "OSCILLATOR": ("INTERNAL_OSCILLATOR", "OSC", "O", 0, 1, 1),
    "TEMP_SENSOR": ("TEMPERATURE_DIODE", "TSD", "T", 0, 0, 1),
}

# Configuration frames of a column of each kind.
FRAMES_PER_COLUMN = {"LAB": 36, "LAB_LUTRAM": 44, "RAM_S": 30, "RAM_M": 54, "RAM_L": 80, "DSP": 62,
                     "IO_TILE_COL": 40}

# Sites of an element type, in order of preference: the first the family has is its
# primary location; element types of the "all" classes are also placed in every other
# listed site that the family has.
def element_sites(base):
    """(sites in order of preference, whether the element type is in all of them)."""
    if base == "LUTRAM":
        return ["LAB_LUTRAM", "LAB"], False
    for size in "SML":
        if base == "RAM_%s_BLOCK" % size:
            return ["RAM_" + size] + [r for r in ("RAM_M", "RAM_S", "RAM_L") if r != "RAM_" + size] + \
                   ["LAB_LUTRAM", "LAB"], False
    if base.startswith("RAM_"):
        return ["RAM_M", "RAM_S", "RAM_L", "LAB_LUTRAM", "LAB"], True
    if base.startswith("DSP_"):
        return ["DSP", "LAB"], False
    if base.startswith("IO_"):
        return ["IO_PAD", "IO_TILE_ROW", "IO_TILE_COL"], True
    if base.startswith("PLL_"):
        return ["PLL", "CLOCK_CTRL"], False
    if base.startswith("DLL_"):
        return ["DLL", "PLL", "CLOCK_CTRL"], False
    if base == "CLKBUF_GLOBAL":
        return ["GLOBAL_CLOCK", "CLOCK_CTRL"], False
    if base == "CLKBUF_REGIONAL":
        return ["REGIONAL_CLOCK", "GLOBAL_CLOCK", "CLOCK_CTRL"], False
    if base.startswith(("CLOCK_", "CLKBUF_", "CLK_")):
        return ["CLOCK_CTRL", "GLOBAL_CLOCK"], False
    if base in ("XCVR_TX_PLL", "XCVR_REFCLK"):
        return ["XCVR_PLL", "XCVR_CHANNEL", "IO_TILE_COL", "IO_PAD"], False
    if base.startswith("XCVR_"):
        return ["XCVR_CHANNEL", "IO_TILE_COL", "IO_PAD"], False
    if base.startswith("PCIE_"):
        return ["PCIE_HARD_BLOCK", "LAB"], False
    if base.startswith("MEMCTRL_"):
        return ["MEMORY_CTRL", "IO_TILE_ROW", "IO_PAD"], False
    if base.startswith("JTAG_") or base == "BOUNDARY_SCAN":
        return ["JTAG", "CONFIG"], False
    if base == "OSC_INTERNAL":
        return ["OSCILLATOR", "CONFIG"], False
    if base == "TEMP_DIODE":
        return ["TEMP_SENSOR", "CONFIG"], False
    if base in ("TIE_HIGH", "TIE_LOW"):
        return ["LAB", "CONFIG"], False
    if base.startswith(("LOGIC_", "LAB_", "REG_")) or base.endswith(("_CHAIN", "_LINK")):
        return ["LAB", "LAB_LUTRAM"], True
    return ["CONFIG"], False


def element_class(base):
    if base in ("TIE_HIGH", "TIE_LOW"):
        return "tie"
    if base in ("LOGIC_LUT", "LOGIC_LUT6", "LOGIC_LUT4", "LOGIC_ARITH", "LOGIC_SHARED_ARITH"):
        return "lut"
    if base in ("LOGIC_FF", "REG_SYNC_CLEAR", "REG_ASYNC_CLEAR", "REG_ENABLE"):
        return "reg"
    if base in ("LOGIC_CARRY", "ADDER_CHAIN", "SHARE_CHAIN", "REG_CHAIN", "CASCADE_CHAIN", "DIRECT_LINK"):
        return "chain"
    if base.startswith("LAB_"):
        return "labctl"
    for prefix, cls in (("LUTRAM", "ram"), ("RAM_", "ram"), ("DSP_", "dsp"), ("IO_", "io"), ("PLL_", "pll"),
                        ("DLL_", "pll"), ("CLOCK_", "clock"), ("CLKBUF_", "clock"), ("CLK_", "clock"),
                        ("XCVR_", "xcvr"), ("PCIE_", "hardip"), ("MEMCTRL_", "hardip")):
        if base.startswith(prefix):
            return cls
    return "system"


# Ports per element type: (suffix, "i" or "o", port type, width). Widths of 0 are filled in
# from the element's data width.
def element_ports(base, cls, lut_inputs, width):
    I, O = "i", "o"
    if cls == "lut":
        k = 6 if base == "LOGIC_LUT6" else 4 if base in ("LOGIC_LUT4", "LOGIC_ARITH", "LOGIC_SHARED_ARITH") \
            else lut_inputs
        ports = [("DATA" + "ABCDEF"[i], I, "IN_" + "ABCDEF"[i], 1) for i in range(k)]
        if base == "LOGIC_LUT":
            return ports + [("COMBOUT", O, "LUT_OUT", 1)]
        ports += [("CIN", I, "CARRY_IN", 1), ("SUMOUT", O, "SUM_OUT", 1), ("COUT", O, "CARRY_OUT", 1)]
        if base == "LOGIC_SHARED_ARITH":
            ports += [("SHAREIN", I, "SHARE_IN", 1), ("SHAREOUT", O, "SHARE_OUT", 1)]
        return ports + [("COMBOUT", O, "LUT_OUT", 1)]
    if cls == "reg":
        extra = {"REG_SYNC_CLEAR": [("SCLR", I, "SYNC_CLEAR", 1)], "REG_ASYNC_CLEAR": [("CLRN", I, "ASYNC_CLEAR", 1)],
                 "REG_ENABLE": [("ENA", I, "ENABLE", 1)]}.get(base, [
                     ("ENA", I, "ENABLE", 1), ("CLRN", I, "ASYNC_CLEAR", 1), ("SCLR", I, "SYNC_CLEAR", 1),
                     ("SLOAD", I, "SYNC_LOAD", 1), ("ASDATA", I, "ASYNC_DATA", 1)])
        return [("D", I, "SYNC_DATA", 1), ("CLK", I, "CLK", 1)] + extra + [("Q", O, "Q", 1), ("REGOUT", O, "FF_OUT", 1)]
    if cls == "chain":
        return {"LOGIC_CARRY": [("CIN", I, "CARRY_IN", 1), ("COUT", O, "CARRY_OUT", 1)],
                "ADDER_CHAIN": [("CIN", I, "CARRY_IN", 1), ("DATAA", I, "IN_A", 1), ("DATAB", I, "IN_B", 1),
                                ("SUMOUT", O, "SUM_OUT", 1), ("COUT", O, "CARRY_OUT", 1)],
                "SHARE_CHAIN": [("SHAREIN", I, "SHARE_IN", 1), ("SHAREOUT", O, "SHARE_OUT", 1)],
                "REG_CHAIN": [("D", I, "SYNC_DATA", 1), ("CLK", I, "CLK", 1), ("Q", O, "Q", 1)],
                "CASCADE_CHAIN": [("CASCIN", I, "CASCADE_IN", 1), ("CASCOUT", O, "CASCADE_OUT", 1)],
                }.get(base, [("DATAIN", I, "DATA_IN", 1), ("DATAOUT", O, "DATA_OUT", 1)])
    if cls == "labctl":
        ports = [("CLK0", I, "CLK0", 1), ("CLK1", I, "CLK1", 1), ("ENA0", I, "ENABLE0", 1)]
        if base == "LAB_CTRL":
            ports += [("ENA1", I, "ENABLE1", 1), ("CLRN", I, "CLEAR_N", 1), ("SCLR", I, "SYNC_CLEAR", 1)]
        return ports + [("CLKOUT", O, "CLK_OUT", 1)]
    if cls == "ram":
        aw, bw = max(1, int(math.log2(max(2, width[1])))), max(1, width[0] // 8)
        ports = []
        for side in "AB":
            ports += [("ADDR" + side, I, side + "_ADDR", aw), ("DATAIN" + side, I, side + "_DATA_IN", width[0]),
                      ("WE" + side, I, side + "_WRITE_EN", 1), ("RE" + side, I, side + "_READ_EN", 1),
                      ("BE" + side, I, side + "_BYTE_EN", bw)]
        ports += [("CLK0", I, "CLK0", 1), ("CLK1", I, "CLK1", 1), ("ENA0", I, "ENABLE0", 1), ("ENA1", I, "ENABLE1", 1),
                  ("DATAOUTA", O, "A_DATA_OUT", width[0]), ("DATAOUTB", O, "B_DATA_OUT", width[0])]
        if base in ("RAM_ECC", "RAM_L_BLOCK", "RAM_M_BLOCK"):
            ports.append(("ECCSTATUS", O, "ECC_STATUS", 2))
        return ports
    if cls == "dsp":
        w = width[0]
        return [("AX", I, "DSP_AX", w), ("AY", I, "DSP_AY", w), ("BX", I, "DSP_BX", w), ("BY", I, "DSP_BY", w),
                ("COEFSEL", I, "DSP_COEF_SEL", 3), ("ACCUMULATE", I, "DSP_ACCUMULATE", 1),
                ("NEGATE", I, "DSP_NEGATE", 1), ("CLK", I, "CLK", 3), ("ENA", I, "ENABLE", 3),
                ("CLR", I, "ASYNC_CLEAR", 2), ("RESULT", O, "DSP_RESULT", 2 * w + 10),
                ("CHAINOUT", O, "DSP_CHAIN_OUT", 2 * w + 10)]
    if cls == "io":
        if base.endswith(("_IBUF", "PSEUDO_DIFF")) or base in ("IO_PAD", "IO_CLKBUF"):
            return [("PADIN", I, "PAD_IN", 1), ("DATAOUT", O, "DATA_OUT", 1), ("PADOUT", O, "PAD_OUT", 1)]
        if base.endswith("_OBUF"):
            return [("DATAIN", I, "DATA_IN", 1), ("OE", I, "OUTPUT_EN", 1), ("PADOUT", O, "PAD_OUT", 1)]
        if base == "IO_SERDES_RX":
            return [("RXIN", I, "RX_DATA", 1), ("INCLK", I, "IN_CLK", 1), ("RXOUT", O, "RX_DATA_OUT", 10)]
        if base == "IO_SERDES_TX":
            return [("TXIN", I, "TX_DATA", 10), ("INCLK", I, "IN_CLK", 1), ("TXOUT", O, "TX_SERIAL", 1)]
        if base in ("IO_DPA", "IO_OCT_CTRL"):
            return [("INCLK", I, "IN_CLK", 1), ("RESET", I, "RESET", 1), ("DQSIN", I, "DQS_IN", 1),
                    ("DQSOUT", O, "DQS_OUT", 1), ("DATAOUT", O, "DATA_OUT", 8)]
        w = 2 if "_DDR_" in base else 1
        return [("DATAIN", I, "DATA_IN", w), ("INCLK", I, "IN_CLK", 1), ("ENA", I, "ENABLE", 1),
                ("DATAOUT", O, "DATA_OUT", w)]
    if cls == "pll":
        if base in ("PLL_CORE", "DLL_CORE"):
            return [("REFCLK", I, "REF_CLK", 1), ("FBCLK", I, "FB_CLK", 1), ("RESET", I, "RESET", 1),
                    ("PHASESTEP", I, "PHASE_STEP", 1), ("SCANCLK", I, "SCAN_CLK", 1), ("OUTCLK0", O, "OUT_CLK0", 1),
                    ("OUTCLK1", O, "OUT_CLK1", 1), ("LOCKED", O, "LOCKED", 1), ("PHASEDONE", O, "PHASE_DONE", 1)]
        return [("INCLK", I, "IN_CLK", 1), ("RESET", I, "RESET", 1), ("OUTCLK", O, "CLK_OUT", 1),
                ("LOCKED", O, "LOCKED", 1)]
    if cls == "clock":
        if base == "CLK_SWITCHOVER":
            return [("CLK0", I, "CLK0", 1), ("CLK1", I, "CLK1", 1), ("OUTCLK", O, "CLK_OUT", 1)]
        return [("INCLK", I, "IN_CLK", 4), ("ENA", I, "ENABLE", 1), ("OUTCLK", O, "CLK_OUT", 1)]
    if cls == "xcvr":
        return [("RXDATA", I, "RX_DATA", width[0]), ("TXDATA", I, "TX_DATA", width[0]), ("REFCLK", I, "REF_CLK", 1),
                ("RESET", I, "RESET", 1), ("RXDATAOUT", O, "RX_DATA_OUT", width[0]),
                ("TXSERIAL", O, "TX_SERIAL", 1), ("CLKOUT", O, "CLK_OUT", 1), ("LOCKED", O, "LOCKED", 1)]
    if cls == "hardip" and base.startswith("PCIE"):
        return [("REFCLK", I, "REF_CLK", 1), ("RESET", I, "RESET", 1), ("RXIN", I, "RX_DATA", 1),
                ("TXDATA", I, "TX_DATA", width[0]), ("RXDATA", O, "RX_DATA_OUT", width[0]),
                ("TXOUT", O, "TX_SERIAL", 1), ("LINKUP", O, "LOCKED", 1)]
    if cls == "hardip":
        return [("CLK", I, "CLK", 1), ("RESET", I, "RESET", 1), ("DATAIN", I, "DATA_IN", width[0]),
                ("ADDR", I, "A_ADDR", 32), ("DQSIN", I, "DQS_IN", 1), ("DATAOUT", O, "DATA_OUT", width[0]),
                ("DQSOUT", O, "DQS_OUT", 1), ("CALDONE", O, "LOCKED", 1)]
    if cls == "tie":
        return [("DATAOUT", O, "DATA_OUT", 1)]
    return [("CLK", I, "CLK", 1), ("RESET", I, "RESET", 1), ("DATAIN", I, "DATA_IN", width[0]),
            ("ENA", I, "ENABLE", 1), ("DATAOUT", O, "DATA_OUT", width[0])]


def default_vccio(gen):
    """The I/O supply of a bank that nothing else sets, and the I/O standard that goes with it."""
    vccio = "3_3V" if gen <= 2 else "2_5V" if gen <= 4 else "1_8V"
    return vccio, {"3_3V": "LVTTL", "2_5V": "LVCMOS25", "1_8V": "LVCMOS18"}[vccio]


def bank_vccio(facts, bank):
    """The I/O supply that bank `bank` (from 0) is characterised at: the default for the
    first bank, the others in turn through the supplies that the generation offers."""
    vccio = ["3_3V", "2_5V", "1_8V", "1_5V", "1_2V"][:2 + min(3, facts.gen // 2)]
    return vccio[bank % len(vccio)] if bank else default_vccio(facts.gen)[0]


def short_names(bases):
    """A short name per base name: the initials of its words (digits kept), longer
    prefixes of the words where two would be equal."""
    out, taken = {}, set()
    for base in bases:
        words = base.split("_")
        for n in range(1, 8):
            abbr = "".join(w if w[0].isdigit() else w[:n] for w in words)
            if abbr not in taken:
                break
        taken.add(abbr)
        out[base] = abbr
    return out


def data_width(base, cls, gen):
    """(data width, depth) of an element type."""
    if cls == "ram":
        bits = {"LUTRAM": 640, "RAM_S_BLOCK": 576, "RAM_L_BLOCK": 147456}.get(
            base, 4608 if gen <= 2 else 9216 if gen <= 4 else 20480)
        w = 20 if bits == 640 else 18 if bits in (576, 4608) else 36 if bits in (9216, 147456) else 40
        return w, bits // w
    if cls == "dsp":
        return (27 if "27" in base else 9 if "9X9" in base else 18), 1
    if cls == "xcvr":
        return (32 if gen <= 4 else 64), 1
    if cls == "hardip":
        return (128 if base.startswith("PCIE") else 64) * (2 if gen >= 5 else 1), 1
    if cls == "system":
        return (8 if base.startswith(("TEMP", "VOLT", "ADC")) else 32), 1
    return 1, 1


class Architecture:
    """Sites, floorplan and element types of one device. `scale` is the device's logic count
    over the largest of the installation (0 to 1)."""

    def __init__(self, tables, facts, scale):
        self.f, self.scale = facts, scale
        self.elements = tables.enum("dev_element_enum")
        self.location_enum = tables.enum("dev_location_enum")
        self.bases = [n for n in self.elements.names if not re.search(r"_G\d+$", n)]
        self.short = short_names(self.bases)
        self.used = self.used_locations()
        self.columns, self.height = self.floorplan()
        self.width, self.top = len(self.columns), self.height + 1
        self.plan = self.element_plan()
        self.sites = self.site_rows()

    def used_locations(self):
        f = self.f
        used = {"LAB", "IO_PAD", "IO_TILE_ROW", "IO_TILE_COL", "CLOCK_CTRL", "GLOBAL_CLOCK", "CONFIG"}
        rules = (("LAB_LUTRAM", f.has("HAS_LUTRAM")), ("RAM_S", f.r("Small RAM blocks")),
                 ("RAM_M", f.r("Medium RAM blocks")), ("RAM_L", f.r("Large RAM blocks")),
                 ("DSP", f.r("DSP blocks")), ("PLL", f.r("PLLs")),
                 ("DLL", f.r("DLLs")), ("REGIONAL_CLOCK", f.r("Regional clocks")),
                 ("XCVR_CHANNEL", f.r("Transceiver channels")), ("XCVR_PLL", f.r("Transceiver channels")),
                 ("PCIE_HARD_BLOCK", f.r("PCI Express hard blocks")),
                 ("MEMORY_CTRL", f.r("Hard memory controllers")), ("JTAG", f.has("JTAG_CONFIG")),
                 ("OSCILLATOR", f.has("INTERNAL_OSCILLATOR")),
                 ("TEMP_SENSOR", f.has("TEMPERATURE_SENSOR") or (f.gen >= 4 and f.r("PLLs"))))
        used.update(name for name, on in rules if on)
        return [n for n in self.location_enum.names if n in used]

    def element_name(self, base, gen):
        name = base if gen == 1 else "%s_G%d" % (base, gen)
        return name if name in self.elements.value else None

    def element_plan(self):
        """(name, base, generation) of every element type, own generation first."""
        f = self.f
        own = [(self.element_name(b, f.gen), b, f.gen) for b in self.bases]
        older = [(self.element_name(b, g), b, g) for g in range(f.gen - 1, 0, -1) for b in self.bases]
        own, older = [e for e in own if e[0]], [e for e in older if e[0]]
        target = max(len(own), min(400, 100 + int(round(300 * self.scale))))
        return own + older[:max(0, target - len(own))]

    def floorplan(self):
        """Columns (the location kind of each, I/O columns at both ends) and core height."""
        f = self.f
        labs = max(4, f.r("Logic array blocks"))
        height = max(4, int(round(math.sqrt(labs * 0.9))))
        lab_cols = -(-labs // height)
        lutram_cols = lab_cols // 4 if f.has("HAS_LUTRAM") else 0
        hard = []
        for kind, count, tile in (("RAM_S", f.r("Small RAM blocks"), 1), ("RAM_M", f.r("Medium RAM blocks"), 1),
                                  ("RAM_L", f.r("Large RAM blocks"), 4), ("DSP", f.r("DSP blocks"), 2)):
            if count:
                hard += [kind] * -(-count // max(1, height // tile))
        core = ["LAB"] * (lab_cols - lutram_cols)
        # LUT-RAM LABs every fourth logic column, hard columns spread evenly between.
        for i in range(lutram_cols):
            core.insert(min(len(core), 4 * i + 2), "LAB_LUTRAM")
        if hard:
            step = len(core) / (len(hard) + 1)
            for i, kind in enumerate(hard):
                core.insert(int(round(step * (i + 1))) + i, kind)
        return ["IO_TILE_COL"] + core + ["IO_TILE_COL"], height

    def tiles(self, kind):
        """Number of tiles of a column kind."""
        return self.columns.count(kind) * self.height

    def frame_bases(self):
        """The first configuration frame of each column."""
        bases, start = [], 0
        for c in self.columns:
            bases.append(start)
            start += FRAMES_PER_COLUMN[c]
        return bases, start

    def clock_regions(self):
        """{x0, y0, x1, y1} of each clock region: 2x2 to 6x6 regions by device width."""
        n = 2 if self.width < 40 else 4 if self.width < 160 else 6
        cw, ch = -(-self.width // n), -(-(self.top + 1) // n)
        return [[x * cw, y * ch, min(self.width, (x + 1) * cw) - 1, min(self.top + 1, (y + 1) * ch) - 1]
                for y in range(n) for x in range(n)]

    def pr_regions(self):
        if not self.f.has("PARTIAL_RECONFIGURATION"):
            return []
        return [r for i, r in enumerate(self.clock_regions()) if i % 3 == 1]

    def site_rows(self):
        """Per location kind, rows {kind, x, y, extent}: a column of sites (x, first row,
        rows), a row of I/O tiles, an I/O bank (bank, first pad, pads) or an instance."""
        f, h, width = self.f, self.height, self.width
        sites = {name: [] for name in self.used}
        for x, c in enumerate(self.columns):
            if c in sites:
                sites[c].append([c, x, 1, h])
        sites["IO_TILE_ROW"] = [["IO_TILE_ROW", 1, y, width - 2] for y in (0, self.top)]
        banks = f.r("I/O banks") or 2
        sites["IO_PAD"] = [["IO_PAD", b, b * f.io // banks, f.io // banks] for b in range(banks)]
        for name, count in (("PLL", f.r("PLLs")), ("DLL", f.r("DLLs")), ("XCVR_CHANNEL", f.r("Transceiver channels")),
                            ("XCVR_PLL", -(-f.r("Transceiver channels") // 2)),
                            ("PCIE_HARD_BLOCK", f.r("PCI Express hard blocks")),
                            ("MEMORY_CTRL", f.r("Hard memory controllers"))):
            if name in sites:
                sites[name] = [[name, 0 if i % 2 else width - 1, (i // 2 + 1) * h // (count // 2 + 2), 1]
                               for i in range(count)]
        for name, rows in sites.items():
            if not rows:
                rows.append([name, width // 2, 0, 1])
        return sites
