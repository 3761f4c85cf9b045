"""Basic info of a device in the HDR text form: global attributes, the locations of the
device, its element types and their ports, after the architecture model of architecture.py.

Counts and names come from the catalogue and the .def tables; what they leave open (frame
addresses, delays, routing) from a random generator seeded with the device name, so the
text is the same on every run. Blocks follow the HDR grammar: "location NAME", "port NAME"
and "element NAME" lines closed by "end", the ports of an element just before it; 2D values
on one line when small, else as a lone "{" with one row a line, as the library's dumps
write them.
"""

import re

from .architecture import LOCATIONS, FRAMES_PER_COLUMN, Architecture, bank_vccio, data_width, default_vccio, \
    element_class, element_ports, element_sites
from .textform import Writer, seeded

GENERATED_BY = "tools/gen_device_files.py"


class Generator:
    """Basic info of one device. `scale` is the device's logic count over the largest
    logic count of the installation (0 to 1): the number of element types and the detail
    of the routing tables grow with it."""

    def __init__(self, tables, facts, scale):
        self.t, self.f, self.scale = tables, facts, scale
        self.rng = seeded(facts.name)
        self.w = Writer()
        a = self.a = Architecture(tables, facts, scale)
        self.columns, self.height, self.used, self.plan, self.sites = a.columns, a.height, a.used, a.plan, a.sites
        self.elements, self.locations, self.bases = a.elements, a.location_enum, a.bases
        self.cdb = tables.enum("cdb_re_type")

    def text(self):
        f, w = self.f, self.w
        w.lines += ["# Basic info of %s, a %s device (architecture generation %d)." % (f.name, f.family.user, f.gen),
                    "# Written by %s from the catalogue; do not edit." % GENERATED_BY,
                    "# %d locations, %d element types; the device grid is 2D_INT_CONFIG_FRAME_MAP." %
                    (len(self.used), len(self.plan)), ""]
        self.globals()
        for name in self.used:
            self.location(name)
        for index, entry in enumerate(self.plan):
            self.element(index, *entry)
        return w.text()

    def globals(self):
        f, w, t = self.f, self.w, self.t
        cols, height = self.columns, self.height
        labs = f.r("Logic array blocks")
        lut6 = f.has("SIX_INPUT_LUT")
        les_per_lab = 20 if lut6 else 10
        medium, small, large = f.r("Medium RAM blocks"), f.r("Small RAM blocks"), f.r("Large RAM blocks")
        medium_bits = (f.r("Embedded RAM bits") - small * 576 - large * 147456) // medium if medium else 0
        io_banks = f.r("I/O banks") or 2
        xcvr = f.r("Transceiver channels")
        frames = self.a.frame_bases()[1]
        config_bits = f.r("Configuration bits")
        temps = [f.grade_range(g) for g in f.grades] or [(0, 85)]
        # JTAG identification: version 0, part number from the device enumerator, maker code.
        idcode = 0x0200_0000 | (t.enum("dev_device_enum").value[f.name] << 12) | 0x0DD
        bools = {
            "HAS_PLL": f.r("PLLs"), "HAS_DLL": f.r("DLLs"), "HAS_DSP": f.r("DSP blocks"),
            "HAS_TRANSCEIVERS": xcvr, "HAS_HARD_PCIE": f.r("PCI Express hard blocks"),
            "HAS_HARD_MEMORY_CONTROLLER": f.r("Hard memory controllers"),
            "HAS_HARD_PROCESSOR": f.r("Hard processor cores"), "HAS_LUTRAM": f.has("HAS_LUTRAM"),
            "HAS_RAM_S": small, "HAS_RAM_M": medium, "HAS_RAM_L": large,
            "HAS_CONFIG_FLASH": f.has("NONVOLATILE_CONFIG"), "HAS_USER_FLASH": f.r("User flash memory bits"),
            "HAS_ADC": f.r("Analog-to-digital converters"), "HAS_TEMP_SENSOR": "TEMP_SENSOR" in self.used,
            "HAS_ONCHIP_OSCILLATOR": f.has("INTERNAL_OSCILLATOR"), "HAS_JTAG": f.has("JTAG_CONFIG"),
            "HAS_BOUNDARY_SCAN": f.has("JTAG_CONFIG"), "HAS_CRC_CHECK": f.gen >= 2,
            "HAS_SEU_DETECTION": f.gen >= 3 and f.r("PLLs"), "HAS_ECC_RAM": f.gen >= 4 and medium,
            "HAS_DESIGN_SECURITY": f.has("DESIGN_SECURITY"), "HAS_BITSTREAM_ENCRYPTION": f.has("DESIGN_SECURITY"),
            "HAS_BITSTREAM_COMPRESSION": f.gen >= 3, "HAS_PARTIAL_RECONFIG": f.has("PARTIAL_RECONFIGURATION"),
            "HAS_REMOTE_UPDATE": f.gen >= 3, "HAS_DUAL_BOOT": f.has("USER_FLASH_MEMORY"),
            "HAS_POWER_GATING": f.has("LOW_POWER_MODE"), "HAS_PROGRAMMABLE_POWER": f.gen >= 4 and f.r("PLLs"),
            "HAS_SERIES_OCT": f.gen >= 3, "HAS_PARALLEL_OCT": f.gen >= 4, "HAS_DYNAMIC_OCT": f.gen >= 4,
            "HAS_DIFF_OCT": f.gen >= 3 and f.has("DIFFERENTIAL_IO"), "HAS_PCI_CLAMP": f.gen <= 4,
            "HAS_BUS_HOLD": True, "HAS_WEAK_PULLUP": True, "HAS_SCHMITT_INPUT": not f.r("PLLs"),
            "HAS_SLEW_CONTROL": f.gen >= 2, "HAS_DELAY_CHAIN": f.gen >= 2, "HAS_DQS_LOGIC": f.gen >= 3 and f.r("PLLs"),
            "HAS_DDR_REGISTERS": f.gen >= 2 and f.r("PLLs"), "HAS_SERDES": f.has("HARD_SERDES", "LVDS_RECEIVER"),
            "HAS_DPA": f.has("HARD_SERDES"), "HAS_LVDS_INPUT": f.has("LVDS_RECEIVER"),
            "HAS_LVDS_OUTPUT": f.has("LVDS_TRANSMITTER"), "HAS_VREF_PINS": f.gen >= 2 and f.r("PLLs"),
            "HAS_DEDICATED_CLOCK_PINS": f.has("DEDICATED_CLOCK_PINS"), "HAS_GLOBAL_CLOCKS": True,
            "HAS_REGIONAL_CLOCKS": f.r("Regional clocks"), "HAS_PERIPHERAL_CLOCKS": f.gen >= 4 and f.r("PLLs"),
            "HAS_CLOCK_GATING": f.gen >= 3, "HAS_CLOCK_MUX": f.r("PLLs"), "HAS_CARRY_CHAIN": f.has("HAS_CARRY_CHAIN"),
            "HAS_SHARED_ARITHMETIC": f.has("HAS_SHARED_ARITHMETIC"), "HAS_REGISTER_CASCADE": f.gen >= 2,
            "HAS_LUT_CASCADE": not lut6, "HAS_FRACTURABLE_LUT": lut6, "HAS_SIX_INPUT_LUT": lut6,
            "HAS_FOUR_INPUT_LUT": f.has("FOUR_INPUT_LUT"), "HAS_PACKED_REGISTERS": f.gen >= 2,
            "HAS_DIRECT_LINKS": f.gen >= 2, "HAS_DIAGONAL_ROUTING": False, "HAS_TRISTATE_BUSES": f.gen == 1,
            "HAS_GLOBAL_RESET": True, "HAS_GLOBAL_OUTPUT_ENABLE": True, "HAS_POWER_ON_RESET": True,
            "HAS_HARD_ETHERNET_MAC": f.has("HARD_ETHERNET"), "HAS_HARD_CRYPTO_ENGINE": f.has("HARD_CRYPTO"),
            "HAS_MULTIPLIER_9X9": f.r("9x9 multipliers"), "HAS_MULTIPLIER_18X18": f.r("18x18 multipliers"),
            "HAS_MULTIPLIER_27X27": f.gen >= 5 and f.r("DSP blocks"),
            "HAS_FLOATING_POINT_DSP": f.has("HARD_FLOATING_POINT_DSP"), "HAS_PRE_ADDER": f.gen >= 4 and f.r("DSP blocks"),
            "HAS_TRUE_DUAL_PORT_RAM": medium, "HAS_MIXED_WIDTH_RAM": medium, "HAS_BYTE_ENABLE_RAM": medium,
            "IS_ENGINEERING_SAMPLE": "ENGINEERING_SAMPLE_ONLY" in f.device_traits,
            "IS_STRUCTURED_ASIC": f.has("STRUCTURED_ASIC"), "IS_LOW_POWER": f.has("LOW_POWER_MODE"),
            "IS_MIGRATION_ONLY": "MIGRATION_ONLY" in f.device_traits, "IS_VARIANT_DEVICE": bool(f.base_device),
            "IS_COMMERCIAL_ONLY": f.grades == ["COMMERCIAL"], "IS_MILITARY_QUALIFIED": "MILITARY" in f.grades,
            "IS_AUTOMOTIVE_QUALIFIED": "AUTOMOTIVE" in f.grades,
            "IS_RADIATION_TOLERANT": "RADIATION_TOLERANT" in f.variants, "IS_NONVOLATILE": f.has("NONVOLATILE_CONFIG"),
            "IS_FLIP_CHIP": "FLIP_CHIP" in f.part_traits, "SUPPORTS_TIMING_ANALYSIS": f.has("HAS_TIMING_MODELS"),
            "SUPPORTS_POWER_ANALYSIS": f.has("POWER_ANALYSIS_SUPPORT"),
            "SUPPORTS_INCREMENTAL_COMPILE": f.has("INCREMENTAL_LOCKING"), "SUPPORTS_PIN_MIGRATION": f.has("HAS_PIN_MIGRATION"),
            "SUPPORTS_VERTICAL_MIGRATION": f.has("VERTICAL_MIGRATION"), "SUPPORTS_JTAG_CONFIG": f.has("JTAG_CONFIG"),
            "SUPPORTS_ACTIVE_SERIAL": not f.has("NONVOLATILE_CONFIG"), "SUPPORTS_PASSIVE_SERIAL": True,
            "SUPPORTS_QUAD_SPI_CONFIG": f.gen >= 4, "SUPPORTS_SMART_VID": f.voltage in ("0_9V", "0_95V") and f.gen >= 6,
            "SUPPORTS_REGISTER_RETIMING": f.has("REGISTER_RETIMING"), "SUPPORTS_XCVR_RECONFIG": f.has("DYNAMIC_RECONFIG_XCVR"),
            "SUPPORTS_LOGIC_ANALYZER_TAPS": f.has("LOGIC_ANALYZER_SUPPORT"),
            "SUPPORTS_PLL_RECONFIG": f.r("PLLs") and f.gen >= 3, "SUPPORTS_HOT_SOCKETING": f.gen >= 3,
            "USE_LEGACY_TIMING_MODEL": not f.has("MULTI_CORNER_TIMING"),
            "USE_FAST_CORNER_ONLY": False, "USE_UNIFIED_RAM_NAMES": bool(f.family.value("UNIFIED_SUFFIX")),
        }
        for key, on in bools.items():
            w.attr("", "BOOL_" + key, "true" if on else "false")
        speeds = [int(re.sub(r"\D", "", s)) for s in f.speeds] or [0]
        vccio, io_standard = default_vccio(f.gen)
        ints = [
            ("NUM_LABS", labs), ("NUM_LES_PER_LAB", les_per_lab),
            ("NUM_REGISTERS_PER_LAB", f.r("Registers") // labs if labs else 0),
            ("NUM_LUTRAM_LABS", self.a.tiles("LAB_LUTRAM")), ("NUM_RAM_S", small),
            ("NUM_RAM_M", medium), ("NUM_RAM_L", large), ("RAM_S_BITS", 576 if small else 0),
            ("RAM_M_BITS", medium_bits), ("RAM_L_BITS", 147456 if large else 0),
            ("NUM_DSP_BLOCKS", f.r("DSP blocks")), ("NUM_MULTIPLIERS_18X18", f.r("18x18 multipliers")),
            ("NUM_PLLS", f.r("PLLs")), ("NUM_DLLS", f.r("DLLs")), ("NUM_GLOBAL_CLOCKS", f.r("Global clocks")),
            ("NUM_REGIONAL_CLOCKS", f.r("Regional clocks")), ("NUM_CLOCK_REGIONS", len(self.a.clock_regions())),
            ("NUM_QUADRANTS", 4), ("NUM_IO_BANKS", io_banks), ("NUM_USER_IOS", f.io),
            ("NUM_DIFF_CHANNELS", f.r("Differential channels")), ("NUM_XCVR_CHANNELS", xcvr),
            ("NUM_XCVR_BANKS", -(-xcvr // 6)), ("NUM_PCIE_BLOCKS", f.r("PCI Express hard blocks")),
            ("NUM_MEMORY_CONTROLLERS", f.r("Hard memory controllers")), ("NUM_ROWS", height + 2),
            ("NUM_COLUMNS", len(cols)), ("NUM_SUB_LOCS_PER_LAB", les_per_lab // 2 if lut6 else les_per_lab),
            ("NUM_LAB_LINES", 52 if lut6 else 26), ("NUM_LOCAL_LINES", 10), ("NUM_R4_WIRES", 160 if lut6 else 64),
            ("NUM_R24_WIRES", 16 if lut6 else 8), ("NUM_C4_WIRES", 80 if lut6 else 48),
            ("NUM_C16_WIRES", 16 if lut6 else 8), ("NUM_DIRECT_LINKS", 20 if f.gen >= 2 else 0),
            ("NUM_CARRY_CHAINS", cols.count("LAB") + cols.count("LAB_LUTRAM")),
            ("MAX_CARRY_CHAIN_LENGTH", height * les_per_lab), ("MAX_CASCADE_LENGTH", height),
            ("MAX_FANOUT", 1 << 20), ("CONFIG_BITS", config_bits), ("CONFIG_FRAMES", frames),
            ("CONFIG_FRAME_BITS", -(-config_bits // frames)), ("IDCODE", idcode), ("IDCODE_MASK", 0x0FFFFFFF),
            ("JTAG_IR_LENGTH", 10), ("USERCODE_DEFAULT", -1), ("CORE_VOLTAGE", f.voltage or "GENERIC_VOLTAGE"),
            ("DEFAULT_VCCIO", vccio), ("DEFAULT_IO_STANDARD", io_standard),
            ("MIN_JUNCTION_TEMP", min(lo for lo, _ in temps)), ("MAX_JUNCTION_TEMP", max(hi for _, hi in temps)),
            ("DIE_WIDTH_UM", 900 + len(cols) * 61), ("DIE_HEIGHT_UM", 900 + (height + 2) * 57),
            ("PROCESS_NODE_NM", [350, 220, 130, 90, 65, 40, 28, 14][min(f.gen, 7)]),
            ("METAL_LAYERS", 4 + f.gen), ("SPEED_GRADE_FASTEST", min(speeds)), ("SPEED_GRADE_SLOWEST", max(speeds)),
            ("TIMING_MODEL_VERSION", 10 * f.gen + 3), ("POWER_MODEL_VERSION", 10 * f.gen + 1), ("DATABASE_VERSION", 7),
            ("MAX_USER_FREQUENCY_MHZ", 150 + 100 * f.gen), ("MAX_PLL_OUTPUT_MHZ", 300 + 150 * f.gen),
            ("MIN_PLL_INPUT_MHZ", 5), ("MAX_PLL_INPUT_MHZ", 500 + 100 * f.gen), ("PLL_VCO_MIN_MHZ", 600),
            ("PLL_VCO_MAX_MHZ", 1300 + 300 * f.gen), ("NUM_PLL_COUNTERS", 5 + 2 * min(f.gen, 4)),
            ("NUM_DQ_GROUPS", f.io // 12), ("MAX_DQ_GROUP_WIDTH", 36 if f.gen >= 3 else 18),
            ("NUM_VREF_GROUPS", io_banks), ("NUM_OCT_BLOCKS", io_banks if f.gen >= 3 else 0),
            ("NUM_TEMP_SENSORS", 1 if "TEMP_SENSOR" in self.used else 0),
            ("NUM_ADC_CHANNELS", 8 * f.r("Analog-to-digital converters")),
            ("USER_FLASH_BITS", f.r("User flash memory bits")),
            ("CONFIG_FLASH_BITS", config_bits if f.has("NONVOLATILE_CONFIG") else 0),
            ("NUM_SECURITY_KEYS", 2 if f.has("DESIGN_SECURITY") else 0),
            ("NUM_PR_REGIONS", len(self.a.pr_regions())), ("DEFAULT_LOCATION", "LAB"),
            ("DEFAULT_ELEMENT", self.plan[0][0]), ("BOOT_TIME_US", 2000 + config_bits // 20000),
        ]
        for key, value in ints:
            w.attr("", "INT_" + key, value)
        w.attr("", "ENUM_DEVICE", f.name)
        w.attr("", "ENUM_FAMILY", f.family.name)
        wide = max(f.grades, key=lambda g: (f.grade_range(g)[1] - f.grade_range(g)[0], g)) \
            if f.grades else "GENERIC_TEMPERATURE"
        w.attr("", "ENUM_TEMPERATURE", wide)
        stem = (f.base_device or f.name)
        status = "preliminary" if f.has("PRELIMINARY_TIMING") else "final"
        strings = [
            ("DEVICE_NAME", f.name), ("FAMILY_NAME", f.family.user),
            ("DESCRIPTION", "%s device with %d logic cells and %d user I/O" % (f.family.user, f.logic, f.io)),
            ("DATA_SOURCE", "device architecture model, generation %d" % f.gen), ("DATA_VERSION", "%d.%d" % (f.gen, 7)),
            ("GENERATOR", GENERATED_BY), ("DIE_NAME", "D_" + stem), ("DIE_REVISION", "A"),
            # The assembler's die file ddb_<stem>_die.ddb (a name for the library's rule, which
            # prefixes "ddb_"), and its routing description beside it.
            ("ROUTING_DESCRIPTION_FILE", "ddb_%s_dirt.ddb" % stem.lower()), ("DIE_FILE_NAME", "%s_die" % stem.lower()),
            ("TIMING_FILE_NAME", "ddb_%s.tmg" % f.name.lower()), ("POWER_FILE_NAME", "ddb_%s.pwr" % stem.lower()),
            ("DATA_FILE_STEM", stem), ("BASE_DEVICE_NAME", f.base_device),
            ("MIGRATION_GROUP", "%s_%s" % (f.family.name, "_".join(sorted({p for p, _ in f.packages})))),
            ("IDCODE_TEXT", "0x%08X" % idcode), ("BSDL_ENTITY", f.name.lower()), ("IBIS_MODEL_PREFIX", f.family.name.lower()),
            ("CONFIG_SCHEME_LIST", " ".join(s for s, on in (("AS", not f.has("NONVOLATILE_CONFIG")), ("PS", True),
                                                            ("FPP", f.gen >= 2), ("JTAG", f.has("JTAG_CONFIG"))) if on)),
            ("JTAG_INSTRUCTION_SET", "BYPASS EXTEST SAMPLE IDCODE USERCODE CLAMP HIGHZ"),
            ("FLOORPLAN_FILE_NAME", "ddb_%s.dxf" % stem.lower()),
            ("SECURITY_KEY_FORMAT", "AES256" if f.has("DESIGN_SECURITY") else ""), ("RELEASE_STATUS", status),
            ("COMMENT", "%d columns by %d rows; %d configuration frames" % (len(cols), height + 2, frames)),
        ]
        for key, value in strings:
            if value:
                w.string("", "STRING_" + key, value)
        self.global_tables(temps, io_banks, vccio)

    def global_tables(self, temps, io_banks, default_vccio):
        f, w, cols, h = self.f, self.w, self.columns, self.height
        width, top = self.a.width, self.a.top
        perimeter = 2 * (width + h)
        banks = []
        for b in range(io_banks):
            first = b * perimeter // io_banks
            banks.append([b, first, (b + 1) * perimeter // io_banks - 1])
        w.table("", "2D_INT_IO_BANK_VCCIO", [[b, bank_vccio(f, b)] for b in range(io_banks)])
        w.table("", "2D_INT_IO_BANK_LOCATIONS", banks)
        w.table("", "2D_INT_CLOCK_REGION_BOUNDS", self.a.clock_regions())
        mx, my = width // 2, (h + 2) // 2
        w.table("", "2D_INT_QUADRANT_BOUNDS", [[0, 0, mx - 1, my - 1], [mx, 0, width - 1, my - 1],
                                                [0, my, mx - 1, top], [mx, my, width - 1, top]])
        for key, count in (("PLL_LOCATIONS", f.r("PLLs")), ("DLL_LOCATIONS", f.r("DLLs"))):
            w.table("", "2D_INT_" + key, [[0 if i % 2 else width - 1, (i // 2 + 1) * h // (count // 2 + 2)]
                                          for i in range(count)])
        for key, kinds in (("DSP_COLUMNS", ("DSP",)), ("RAM_S_COLUMNS", ("RAM_S",)), ("RAM_M_COLUMNS", ("RAM_M",)),
                           ("RAM_L_COLUMNS", ("RAM_L",)), ("LAB_COLUMNS", ("LAB", "LAB_LUTRAM"))):
            w.table("", "2D_INT_" + key, [[x, 1, h, 1 if c == "LAB_LUTRAM" else 0] for x, c in enumerate(cols)
                                          if c in kinds and 0 < x < width - 1])
        w.table("", "2D_INT_IO_ROWS", [[0, 1, width - 2], [top, 1, width - 2]])
        w.table("", "2D_INT_IO_COLUMNS", [[0, 1, h], [width - 1, 1, h]])
        xcvr = f.r("Transceiver channels")
        w.table("", "2D_INT_XCVR_BANK_CHANNELS", [[b, 6 * b, min(6, xcvr - 6 * b)] for b in range(-(-xcvr // 6))])
        for key, count in (("PCIE_BLOCK_LOCATIONS", f.r("PCI Express hard blocks")),
                           ("MEMORY_CONTROLLER_LOCATIONS", f.r("Hard memory controllers"))):
            w.table("", "2D_INT_" + key, [[width - 1 if key[0] == "P" else (i + 1) * width // (count + 1),
                                           top if key[0] == "M" else (i + 1) * h // (count + 1)] for i in range(count)])
        w.table("", "2D_INT_GLOBAL_CLOCK_DRIVERS", [[i, mx, my, i % 4] for i in range(f.r("Global clocks"))])
        regions = self.a.clock_regions()
        w.table("", "2D_INT_REGIONAL_CLOCK_DRIVERS", [[i, i % len(regions), regions[i % len(regions)][0],
                                                       regions[i % len(regions)][1]]
                                                      for i in range(f.r("Regional clocks"))])
        w.table("", "2D_INT_PR_REGION_BOUNDS", self.a.pr_regions())
        rails = [f.voltage, default_vccio] + ([] if f.gen <= 2 else ["2_5V" if default_vccio != "2_5V" else "1_8V"])
        w.table("", "2D_INT_VOLTAGE_RAILS", [[v, i, 50 + (f.logic // 1000) * (3 - i) // 2]
                                             for i, v in enumerate(dict.fromkeys(r for r in rails if r))])
        w.table("", "2D_INT_TEMPERATURE_LIMITS", [[g, lo, hi] for g, (lo, hi) in zip(f.grades, temps)])
        w.table("", "2D_INT_RESERVED_AREAS", [[mx - 1, 0, mx, 1]])
        # The device grid: the first configuration frame of each tile, one row per grid row
        # from the top.
        bases = self.a.frame_bases()[0]
        frames = [FRAMES_PER_COLUMN[c] for c in cols]
        grid = [[base + y * n // (top + 1) for base, n in zip(bases, frames)] for y in range(top, -1, -1)]
        w.table("", "2D_INT_CONFIG_FRAME_MAP", grid)
        w.lines.append("")

    def location(self, name):
        f, w = self.f, self.w
        alt, short, symbol, is_io, is_clock, is_hard = LOCATIONS[name]
        lutram = self.a.tiles("LAB_LUTRAM")
        count = {"LAB": f.r("Logic array blocks") - lutram, "LAB_LUTRAM": lutram, "RAM_S": f.r("Small RAM blocks"),
                 "RAM_M": f.r("Medium RAM blocks"), "RAM_L": f.r("Large RAM blocks"), "DSP": f.r("DSP blocks"),
                 "IO_PAD": f.io, "IO_TILE_ROW": 2 * (self.a.width - 2), "IO_TILE_COL": 2 * self.height,
                 "PLL": f.r("PLLs"), "DLL": f.r("DLLs"), "CLOCK_CTRL": 4, "GLOBAL_CLOCK": f.r("Global clocks"),
                 "REGIONAL_CLOCK": f.r("Regional clocks"), "XCVR_CHANNEL": f.r("Transceiver channels"),
                 "XCVR_PLL": -(-f.r("Transceiver channels") // 2), "PCIE_HARD_BLOCK": f.r("PCI Express hard blocks"),
                 "MEMORY_CTRL": f.r("Hard memory controllers")}.get(name, 1)
        subs = {"LAB": 10, "LAB_LUTRAM": 10, "IO_TILE_ROW": 4, "IO_TILE_COL": 4, "DSP": 2, "IO_PAD": 1,
                "GLOBAL_CLOCK": 1}.get(name, 1)
        size = {"RAM_L": (1, 4), "DSP": (1, 2), "PLL": (2, 4), "XCVR_CHANNEL": (2, 3), "PCIE_HARD_BLOCK": (4, 12),
                "MEMORY_CTRL": (3, 6), "CONFIG": (2, 2)}.get(name, (1, 1))
        w.lines.append("location %s" % name)
        for key, on in (("IS_IO", is_io), ("IS_CLOCK", is_clock), ("IS_HARD_BLOCK", is_hard)):
            w.attr("\t", "BOOL_" + key, "true" if on else "false")
        for key, value in (("NUM_SUB_LOCS", subs), ("NUM_INSTANCES", max(0, count)), ("WIDTH", size[0]),
                           ("HEIGHT", size[1]), ("ROUTING_GROUP", 1 + self.locations.names.index(name) % 5)):
            w.attr("\t", "INT_" + key, value)
        for key, value in (("DESCRIPTION", self.locations.user[name]), ("NETLIST_NAME", name.lower()),
                           ("ALT_NAME", alt), ("SHORT_NAME", short), ("FLOORPLAN_SYMBOL", symbol)):
            w.string("\t", "STRING_" + key, value)
        w.lines += ["end", ""]

    # ---------------------------------------------------------------------------- elements
    def element(self, index, name, base, gen):
        f, w = self.f, self.w
        cls = element_class(base)
        sites, everywhere = element_sites(base)
        present = [s for s in sites if s in self.used]
        primary = present[0] if present else "CONFIG"
        locations = present if everywhere else [primary]
        soft = sites[0] != primary
        lut_inputs = 6 if f.has("SIX_INPUT_LUT") else 4
        width = data_width(base, cls, gen)
        ports = element_ports(base, cls, lut_inputs, width)
        # Ports first: an element lists ports defined before it.
        port_names = []
        for suffix, direction, ptype, bits in ports:
            pname = "%s_%s" % (name, suffix)
            port_names.append(pname)
            w.lines.append("port %s" % pname)
            if bits > 1:
                w.attr("\t", "BOOL_IS_BUS", "true")
            if direction == "i" and ptype.startswith(("CLK", "ENABLE", "IN_")):
                w.attr("\t", "BOOL_IS_INVERTIBLE", "true")
            w.attr("\t", "INT_INPUT_PORT_TYPE" if direction == "i" else "INT_OUTPUT_PORT_TYPE", ptype)
            if bits > 1:
                w.attr("\t", "INT_BUS_WIDTH", bits)
            w.lines += ["end", ""]
        inputs = [i for i, p in enumerate(ports) if p[1] == "i"]
        outputs = [i for i, p in enumerate(ports) if p[1] == "o"]
        clocks = [i for i in inputs if "CLK" in ports[i][2]]
        sequential = bool(clocks) and cls in ("reg", "ram", "dsp", "io", "chain", "labctl", "xcvr", "hardip", "system")
        modes = {"lut": 4, "reg": 3, "ram": 6, "dsp": 6, "io": 5, "pll": 5, "xcvr": 6, "hardip": 4}.get(cls, 2)
        cdb = None
        if gen == f.gen:
            cdb = base
        elif gen == f.gen - 1:
            cdb = base + "_LEGACY"
        cdb = cdb if cdb in self.cdb.value else None

        w.lines.append("element %s" % name)
        w.attr("\t", "LOCATIONS", ", ".join(locations))
        w.attr("\t", "PORTS", ", ".join(port_names))
        bools = {"IS_COMBINATIONAL": cls in ("lut", "chain", "tie") or not sequential, "IS_SEQUENTIAL": sequential,
                 "IS_IO": cls == "io", "IS_CLOCK": cls in ("clock", "pll"), "IS_HARD_IP": cls in ("xcvr", "hardip") and not soft,
                 "IS_MEMORY": cls == "ram", "IS_ARITHMETIC": cls == "dsp" or "ARITH" in base or "CARRY" in base,
                 "IS_PACKABLE": cls in ("lut", "reg", "chain", "ram", "dsp"), "HAS_CLOCK_ENABLE": any(
                     ports[i][2].startswith("ENABLE") for i in inputs),
                 "HAS_ASYNC_CLEAR": any(ports[i][2] in ("ASYNC_CLEAR", "CLEAR_N") for i in inputs),
                 "HAS_SYNC_CLEAR": any(ports[i][2] == "SYNC_CLEAR" for i in inputs),
                 "HAS_CARRY_IN": any(ports[i][2] == "CARRY_IN" for i in inputs),
                 "HAS_CARRY_OUT": any(ports[i][2] == "CARRY_OUT" for i in outputs),
                 "HAS_CASCADE_IN": any(ports[i][2] == "CASCADE_IN" for i in inputs),
                 "HAS_CASCADE_OUT": any(ports[i][2] in ("CASCADE_OUT", "DSP_CHAIN_OUT") for i in outputs),
                 "HAS_POWER_UP_HIGH": cls == "reg", "HAS_BYPASS_MODE": cls in ("lut", "dsp", "io"),
                 "HAS_BYTE_ENABLE": cls == "ram", "HAS_ECC": "ECC" in base or any(p[2] == "ECC_STATUS" for p in ports),
                 "SUPPORTS_RETIMING": sequential and f.has("REGISTER_RETIMING"),
                 "SUPPORTS_DUPLICATION": cls in ("lut", "reg"), "SUPPORTS_INVERSION": cls in ("lut", "reg", "io"),
                 "SUPPORTS_LOCKING": True, "NEEDS_CLOCK": sequential, "USES_GLOBAL_CLOCK": bool(clocks),
                 "USES_DEDICATED_ROUTING": cls in ("chain", "clock", "pll", "xcvr"),
                 "USES_CHAIN_ROUTING": cls == "chain" or "ARITH" in base}
        for key, on in bools.items():
            if on:
                w.attr("\t", "BOOL_" + key, "true")
        # LUTs and registers per LAB: a logic element each, registers as the catalogue counts them.
        labs = max(1, f.r("Logic array blocks"))
        instances = {"lut": -(-f.logic // labs), "reg": -(-f.r("Registers") // labs)}.get(cls, 1)
        ints = [("NUM_INPUTS", len(inputs)), ("NUM_OUTPUTS", len(outputs)), ("NUM_CLOCKS", len(clocks)),
                ("NUM_CONTROL_SIGNALS", sum(1 for i in inputs if ports[i][2] in (
                    "ENABLE", "ENABLE0", "ENABLE1", "ASYNC_CLEAR", "SYNC_CLEAR", "SYNC_LOAD", "CLEAR_N", "RESET"))),
                ("DATA_WIDTH", width[0])]
        if cls == "ram":
            ints += [("ADDRESS_WIDTH", ports[0][3]), ("DEPTH", width[1])]
        ints += [("NUM_MODES", modes), ("NUM_INSTANCES_PER_LOCATION", instances)]
        if cdb:
            ints.append(("CDB_RE_TYPE", cdb))
        ints += [("PRIMARY_LOCATION", primary), ("PLACEMENT_ORDER", index),
                 ("TIMING_CLASS", gen * 100 + self.bases.index(base))]
        if cls == "chain":
            ints += [("CHAIN_LENGTH", self.height * (20 if f.has("SIX_INPUT_LUT") else 10)), ("CHAIN_DIRECTION", 1)]
        if primary in ("DSP", "RAM_L"):
            ints.append(("SITE_HEIGHT", 2 if primary == "DSP" else 4))
        for key, value in ints:
            w.attr("\t", "INT_" + key, value)
        user = self.elements.user[name]
        strings = [("DESCRIPTION", user), ("NETLIST_NAME", base.lower()),
                   ("ALT_NAME", re.sub(r"[^a-z0-9]+", "_", user.lower()).strip("_")),
                   ("SHORT_NAME", "%s-%d" % (self.a.short[base], gen))]
        if soft:
            strings.append(("COMMENT", "soft implementation in %s: the family has no %s" % (primary, sites[0])))
        elif gen != f.gen:
            strings.append(("COMMENT", "generation %d element type, taken for older netlists" % gen))
        for key, value in strings:
            w.string("\t", "STRING_" + key, value)
        self.element_tables(name, base, cls, gen, ports, inputs, outputs, clocks, sequential, modes, locations,
                            instances, width)
        w.lines += ["end", ""]

    def element_tables(self, name, base, cls, gen, ports, inputs, outputs, clocks, sequential, modes, locations,
                       instances, width):
        f, w, R, T = self.f, self.w, self.rng.random, "\t"
        w.table(T, "2D_INT_MODE_TABLE", [[m, max(1, len(inputs) - m % 3), len(outputs), m % 2] for m in range(modes)])
        if any(p[3] > 1 for p in ports):
            w.table(T, "2D_INT_PORT_WIDTHS", [[i, p[3]] for i, p in enumerate(ports) if p[3] > 1])
        conn = [[1 if (cls != "tie" and (R() < 0.5 or o == outputs[0])) else 0 for o in outputs] for _ in inputs]
        w.table(T, "2D_INT_PORT_CONNECTIVITY", conn)
        arcs = [(i, o) for r, i in zip(conn, inputs) for c, o in zip(r, outputs) if c]
        base_ps = {"lut": 90, "reg": 60, "chain": 25, "labctl": 140, "ram": 600, "dsp": 900, "io": 450, "pll": 300,
                   "clock": 200, "xcvr": 800, "hardip": 1200, "system": 2000, "tie": 0}[cls] + 40 * (7 - min(gen, 7))
        if sequential:
            w.table(T, "2D_INT_CLOCK_TO_OUTPUT_PATHS", [[clocks[0], o, int(base_ps * (0.5 + R())),
                                                         int(base_ps * (1.2 + R()))] for o in outputs])
            w.table(T, "2D_INT_SETUP_HOLD_PAIRS", [[i, clocks[0], int(base_ps * (0.2 + 0.3 * R())), int(30 * R()) - 10]
                                                   for i in inputs if i not in clocks])
        # Each arc: rise and fall delay in ps at the slow and at the fast corner (the timing
        # file has the other corners); the combinational paths with their least and greatest.
        rows = []
        for i, o in arcs:
            d = base_ps * (1.1 + 0.4 * R())
            rows.append([i, o, int(d), int(d * (1.02 + 0.1 * R())), int(d * 0.55), int(d * (0.56 + 0.05 * R()))])
        w.table(T, "2D_INT_TIMING_ARCS", rows)
        if cls in ("lut", "chain"):
            w.table(T, "2D_INT_INPUT_TO_OUTPUT_PATHS", [[i, o, min(r[2:]), max(r[:2])] for i, o, *r in rows])
        if cls in ("ram", "dsp", "pll", "xcvr", "hardip"):
            w.table(T, "2D_INT_POWER_ARCS", [[i, o, int(100 + 900 * R())] for i, o in arcs])
        config_bits = {"lut": 72, "reg": 8, "chain": 4, "labctl": 24, "ram": 48, "dsp": 96, "io": 64, "pll": 180,
                       "clock": 16, "xcvr": 320, "hardip": 256, "system": 40, "tie": 1}[cls]
        # Configuration fields of up to 24 bits: frame and bit offset in the site, width, default;
        # then per mode the value of its first fields.
        frames = FRAMES_PER_COLUMN.get(locations[0], 40)
        masks = [(1 << min(24, config_bits - 24 * b)) - 1 for b in range(-(-config_bits // 24))]
        w.table(T, "2D_INT_CONFIG_BIT_OFFSETS", [[b, int(frames * R()), 8 * int(128 * R()), mask.bit_length(),
                                                  int(mask * R())] for b, mask in enumerate(masks)])
        w.table(T, "2D_INT_BIT_SETTINGS_MAP", [[m] + [(m * 37 + b * 11) & mask for b, mask in enumerate(masks[:4])]
                                               for m in range(modes)])
        # Where the element's sites lie: per site column, row or instance of its locations.
        w.table(T, "2D_INT_LOCATION_OFFSETS", [row for loc in locations for row in self.sites[loc]])
        if instances > 1:
            w.table(T, "2D_INT_SUB_LOC_MAP", [[s, s % 2, s // 2, 0] for s in range(instances)])
        # Routing: the wires of the channel that reach each input and leave each output; the
        # channels of larger devices are wider and reach further.
        wires = 200 + 4 * len(self.columns)
        reach = 3 + int(120 * self.scale ** 0.8) + (4 if cls in ("lut", "reg", "ram", "dsp") else 0)
        w.table(T, "2D_INT_ROUTING_SOURCES", [[i] + sorted({int(wires * R()) for _ in range(reach)}) for i in inputs])
        w.table(T, "2D_INT_ROUTING_SINKS", [[o] + sorted({int(wires * R()) for _ in range(reach)}) for o in outputs])
        w.table(T, "2D_INT_INPUT_INVERSIONS", [[i, 1] for i in inputs if ports[i][2].startswith(("CLK", "ENABLE"))])
        if clocks:
            w.table(T, "2D_INT_GLOBAL_CLOCK_INPUTS", [[c, g] for c in clocks for g in range(0, f.r("Global clocks"), 4)])
            w.table(T, "2D_INT_REGIONAL_CLOCK_INPUTS", [[c, g] for c in clocks
                                                        for g in range(0, f.r("Regional clocks"), 4)])
        if cls == "lut":
            w.table(T, "2D_INT_LUT_MASK_GROUPS", [[g, 16 * g, 16 * g + 15] for g in range(1 << max(0, len(inputs) - 4))])
            w.table(T, "2D_INT_PIN_EQUIVALENCE", [[i for i in inputs if ports[i][2].startswith("IN_")]])
            w.table(T, "2D_INT_LEGAL_NEIGHBOURS", [[d, 1] for d in range(-2, 3) if d])
        if cls in ("lut", "chain") and any(p[2] in ("CARRY_IN", "SHARE_IN") for p in ports):
            w.table(T, "2D_INT_CARRY_CONNECTIONS", [[s, s + 1, 0] for s in range(instances - 1)])
        if cls in ("chain", "dsp") and any(p[2] in ("CASCADE_OUT", "DSP_CHAIN_OUT") for p in ports):
            w.table(T, "2D_INT_CASCADE_CONNECTIONS", [[0, 1, 1], [1, 0, 1]])
        if cls in ("reg", "labctl"):
            w.table(T, "2D_INT_CONTROL_SIGNAL_SHARING", [[s, s // 4] for s in range(instances)])
            w.table(T, "2D_INT_CLOCK_ENABLE_SHARING", [[s, s // 8] for s in range(instances)])
            w.table(T, "2D_INT_POWER_UP_STATES", [[s, 0] for s in range(instances)])
        if cls in ("lut", "reg", "chain", "ram", "dsp"):
            w.table(T, "2D_INT_PACKING_RULES", [[m, min(instances, 2 + m), 1] for m in range(modes)])
        if cls == "ram":
            bits = width[0] * width[1]
            w.table(T, "2D_INT_RAM_CONFIGURATIONS", [[bits // wd, wd, mode] for wd in (1, 2, 4, 8, 9, 16, 18, 32, 36, 40)
                                                     if wd <= width[0] for mode in range(3)])
        if cls == "dsp":
            w.table(T, "2D_INT_DSP_CONFIGURATIONS", [[m, width[0], width[0] - 2 * (m % 2), 2 * width[0] + 10 - m]
                                                     for m in range(modes)])
        if cls in ("io", "pll", "clock"):
            w.table(T, "2D_INT_DELAY_SETTINGS", [[s, 25 * s + int(10 * R())] for s in range(8)])
        if cls == "pll":
            w.table(T, "2D_INT_FEEDBACK_PATHS", [[o, 0, 1] for o in outputs])
        if gen != f.gen:
            current = self.a.element_name(base, f.gen)
            if current:
                w.table(T, "2D_INT_ELEMENT_EQUIVALENCE", [[current, 1]])


def basic_info_text(tables, facts, scale):
    return Generator(tables, facts, scale).text()
