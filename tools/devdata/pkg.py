"""The pins of a device in one package, in the PKG text form.

A package file serves the parts of a device that share its file name (files.py). Its pins:
  - user I/O pins, one per user I/O pad that the package bonds (the parts' largest I/O
    count, pad.PadModel.package_user_pads), each pad bonded once;
  - the dedicated pads that the package has room for, in this order: JTAG, configuration,
    clock inputs, transceiver channels (whole channels, with their reference clocks), the
    temperature diode, analog inputs;
  - power pins of every supply of the parts (power.py), the I/O supplies among their banks'
    pins, and ground pins, none bonded to a pad; no-connect pins in the larger ball grids and
    where the package has more pins than signals, supplies and ground need.
Ball-grid packages (and bare dies, by their bump grid) name a pin by its ball: rows by
letters A to Y without I, O, Q, S, X and Z, then AA, AB, ... (BA, BB, ... after AY), columns
by numbers from 1; a grid of n x n balls (n the square root of the pin count, rounded up)
leaves the balls nearest the centre unpopulated. The signals take the outer rings, bank
after bank anticlockwise from the bottom left corner with a ground every eight signals and
the I/O supply pins among them; the supplies of the core and ground fill the centre as a
checkerboard. Packages with leads (DIP, PLCC, QFP, SOIC, TSOP, QFN, DFN) number their pins
from 1 anticlockwise, the supplies spread along them. Pin ids follow the balls row by row
(the leads in number order).
"""

import math

from . import power
from .pad import PadModel, PadText
from .textform import Writer, seeded

GENERATED_BY = "tools/gen_device_files.py"
ROW_LETTERS = "ABCDEFGHJKLMNPRTUVWY"
# Packages with leads: (description, pitch um, sides).
LEADED = {"DIP": ("dual in-line", 2540, 2), "PLCC": ("plastic leaded chip carrier", 1270, 4),
          "PQFP": ("plastic quad flat pack", 500, 4), "TQFP": ("thin quad flat pack", 500, 4),
          "VQFP": ("very thin quad flat pack", 400, 4), "LQFP": ("low-profile quad flat pack", 500, 4),
          "EQFP": ("quad flat pack with exposed pad", 500, 4), "CQFP": ("ceramic quad flat pack", 635, 4),
          "SOIC": ("small outline", 1270, 2), "TSOP": ("thin small outline", 500, 2),
          "QFN": ("quad flat no-lead", 500, 4), "DFN": ("dual flat no-lead", 500, 2)}
# Ball grids: (description, pitch um).
GRIDS = {"BGA": ("ball grid array", 1270), "FBGA": ("fine-pitch ball grid array", 1000),
         "UBGA": ("ultra fine-pitch ball grid array", 800), "MBGA": ("micro ball grid array", 500),
         "VBGA": ("very fine-pitch ball grid array", 650), "TBGA": ("thin ball grid array", 1000),
         "HBGA": ("thermally enhanced ball grid array", 1000), "SBGA": ("super ball grid array", 1270),
         "FCBGA": ("flip-chip ball grid array", 1000), "HFBGA": ("thermally enhanced flip-chip ball grid array", 1000),
         "CSP": ("chip-scale package", 500), "WLCSP": ("wafer-level chip-scale package", 400),
         "LGA": ("land grid array", 1000), "CLGA": ("ceramic land grid array", 1000),
         "CCGA": ("ceramic column grid array", 1270), "PGA": ("pin grid array", 2540),
         "CPGA": ("ceramic pin grid array", 2540), "DIE": ("bare die, bump grid", 200)}


def row_name(r):
    return ROW_LETTERS[r] if r < len(ROW_LETTERS) else ROW_LETTERS[r // len(ROW_LETTERS) - 1] + \
        ROW_LETTERS[r % len(ROW_LETTERS)]


def spread(groups):
    """Interleaves lists evenly: each element at its fraction of its own list."""
    keyed = [((i + 0.5) / len(items), k, item) for k, items in enumerate(groups) for i, item in enumerate(items)]
    return [item for _, _, item in sorted(keyed, key=lambda e: e[:2])]


class Pin:
    __slots__ = ("id", "name", "row", "col", "x", "y", "kind", "pad", "supply", "bank", "ring")

    def __init__(self, kind, pad=None, supply=None, bank=None):
        self.kind, self.pad, self.supply, self.bank = kind, pad, supply, bank
        self.row = self.col = self.ring = None


class PkgText:
    def __init__(self, tables, facts, parts, model=None):
        self.t, self.f, self.parts = tables, facts, parts
        self.m = model or PadModel(tables, facts)
        self.pads = PadText(tables, facts, self.m)
        first = parts[0]
        self.package, self.count = first.value("PACKAGE"), first.int("PIN_COUNT")
        self.rng = seeded(facts.name, "pkg", self.package, str(self.count))
        self.grid = self.package not in LEADED
        self.io = max(p.int("NUM_OF_IO") for p in parts)
        self.channels = max(p.resources.get("Transceiver channels", 0) for p in parts)
        richest = max(parts, key=lambda p: (p.resources.get("Transceiver channels", 0),
                                            p.resources.get("Hard processor cores", 0), p.name))
        self.supplies = power.supplies(facts, richest)
        self.migration = any("VERTICAL_MIGRATION" in p.values("TRAITS") for p in parts)
        self.plan()

    # ------------------------------------------------------------------ which pins
    def plan(self):
        m, count = self.m, self.count
        user = m.package_user_pads(self.io)
        reserve = 2 if count < 64 else count // 10
        dedicated = []
        for group in ("jtag", "config", "clock", "xcvr", "temp", "adc"):
            room = count - len(user) - len(dedicated) - reserve
            if group == "xcvr":
                channels = min(self.channels, max(0, room) // 5)
                dedicated += [p for p in m.groups["xcvr"] if p.ints["XCVR_CHANNEL"] < channels]
                dedicated += [p for p in m.groups["refclk"] if p.ints["XCVR_BANK"] < -(-channels // 6)]
            elif room > 0:
                pads = m.groups[group][:room]
                dedicated += pads[:len(pads) - len(pads) % 2] if group == "clock" and len(pads) > 1 else pads
        left = count - len(user) - len(dedicated)
        if left < 2:
            raise ValueError("%s %s%d: %d pins cannot hold %d user I/O pins and a supply and a ground" %
                             (self.f.name, self.package, count, count, len(user)))
        self.user, self.dedicated = user, dedicated
        # Supplies and ground take at most one pin per signal pin (per two signals in a leaded
        # package); the pins beyond, and a twentieth of the rest in a large grid, stay free.
        signals = len(user) + len(dedicated)
        nc = max(left // 20 if self.grid and left > 64 else 0, left - max(2, signals if self.grid else signals // 2))
        ground = max(1, (left - nc) // 2)
        self.nc, self.ground, self.power = nc, ground, self.share(left - nc - ground)

    def share(self, budget):
        """Power pins per supply: one each in order (the core first, the I/O supplies of the
        bonded banks next) while the budget lasts, the rest by the supplies' weights."""
        banks = {p.bank + 1 for p in self.user}
        order = sorted(self.supplies, key=lambda s: (s.role != "core", not (set(s.banks) & banks), s.role == "aux"))
        pins = {s.name: 0 for s in self.supplies}
        for s in order[:budget]:
            pins[s.name] = 1
        rest = budget - sum(pins.values())
        total = sum(s.weight for s in self.supplies)
        extra = {s.name: rest * s.weight / total for s in self.supplies}
        for s in self.supplies:
            pins[s.name] += int(extra[s.name])
        leftover = budget - sum(pins.values())
        for s in sorted(self.supplies, key=lambda s: (int(extra[s.name]) - extra[s.name], s.name))[:leftover]:
            pins[s.name] += 1
        return pins

    def signal_sequence(self):
        """The signals in placement order with the I/O supply pins of each bank and a ground
        every eight signals among them; returns (sequence, grounds left over)."""
        vccio = {s.name: s for s in self.supplies if s.banks}
        by_bank = {}
        for p in self.user:
            by_bank.setdefault(p.bank, []).append(p)
        # Each I/O supply's pins go to its bonded banks in turn.
        supply_pins = {}
        for name, s in vccio.items():
            banks = [b - 1 for b in s.banks if b - 1 in by_bank]
            for k in range(self.power[name] if banks else 0):
                supply_pins.setdefault(banks[k % len(banks)], []).append(Pin("power", supply=name, bank=banks[k % len(banks)]))
        grounds = self.ground // 2
        seq = []
        for b in range(self.m.banks):
            block = [Pin("io", pad=p, bank=b) for p in by_bank.get(b, [])]
            shared = min(grounds, len(block) // 8)
            grounds -= shared
            seq += spread([block, supply_pins.get(b, []), [Pin("ground") for _ in range(shared)]])
        for p in self.dedicated:
            seq.append(Pin("dedicated", pad=p))
            if p.kind == "xcvr" and p.name.startswith("RX") and p.name.endswith("N") and grounds:
                seq.append(Pin("ground"))
                grounds -= 1
        self.core = {name: n for name, n in self.power.items() if name not in vccio and n}
        return seq, self.ground - self.ground // 2 + grounds

    def place(self):
        """Every pin with its ball or lead, in pin-id order."""
        seq, grounds = self.signal_sequence()
        core = spread([[Pin("power", supply=name) for _ in range(n)] for name, n in sorted(self.core.items())])
        if not self.grid:
            pins = spread([seq, core, [Pin("ground") for _ in range(grounds)], [Pin("nc") for _ in range(self.nc)]])
            assert len(pins) == self.count
            self.leads(pins)
            return pins
        n = math.isqrt(self.count - 1) + 1
        self.n = n
        mid = (n - 1) / 2
        balls = [(r, c) for r in range(n) for c in range(n)]
        hole = set(sorted(balls, key=lambda b: ((b[0] - mid) ** 2 + (b[1] - mid) ** 2, b))[:n * n - self.count])
        self.depopulated = sorted(hole)

        def ring(b):
            return min(b[0], b[1], n - 1 - b[0], n - 1 - b[1])

        def angle(b):
            # From the bottom left corner anticlockwise (row A is the top).
            return (math.atan2(b[0] - mid, b[1] - mid) - 3 * math.pi / 4) % (2 * math.pi)

        populated = sorted((b for b in balls if b not in hole), key=lambda b: (ring(b), angle(b), b))
        # The signal rings in sectors two balls wide; within a sector ring by ring, so that
        # neighbours in the sequence (the two pads of a pair) are neighbouring balls.
        region = populated[:len(seq)]
        depth = 1 + max([ring(b) for b in region] or [0])
        sectors = max(1, len(region) // (2 * depth))
        region.sort(key=lambda b: (int(angle(b) / (2 * math.pi) * sectors), ring(b), angle(b), b))
        inner = populated[len(seq):]
        at = dict(zip(region, seq))
        for b in inner[:self.nc]:
            at[b] = Pin("nc")
        supplies = 0
        for r, c in inner[self.nc:]:
            if grounds and ((r + c) % 2 == 0 or supplies == len(core)):
                at[(r, c)] = Pin("ground")
                grounds -= 1
            else:
                at[(r, c)] = core[supplies]
                supplies += 1
        assert grounds == 0 and supplies == len(core), (grounds, supplies, len(core))
        pins = []
        for b in sorted(at):
            pin = at[b]
            pin.row, pin.col, pin.ring = b[0], b[1], ring(b)
            pin.name = "%s%d" % (row_name(b[0]), b[1] + 1)
            pin.x, pin.y = round((b[1] - mid) * self.pitch()), round((mid - b[0]) * self.pitch())
            pins.append(pin)
        return pins

    def leads(self, pins):
        sides = LEADED[self.package][2]
        per = -(-len(pins) // sides)
        pitch = self.pitch()
        for i, pin in enumerate(pins):
            side, k = divmod(i, per)
            pin.name = str(i + 1)
            offset = round((k - (per - 1) / 2) * pitch)
            edge = round((per / 2 + 2) * pitch)
            pin.x, pin.y = [(-edge, -offset), (offset, -edge), (edge, offset), (-offset, edge)][side if sides == 4
                                                                                               else 2 * side]
            pin.ring = 0

    def pitch(self):
        return LEADED[self.package][1] if not self.grid else GRIDS.get(self.package, ("", 1000))[1]

    # ------------------------------------------------------------------ text
    def text(self):
        f, m = self.f, self.m
        pins = self.place()
        for i, pin in enumerate(pins):
            pin.id = i
        self.pin_of_pad = {p.pad.id: p for p in pins if p.pad}
        w = self.w = Writer()
        parts = sorted(p.name for p in self.parts)
        w.lines += ["# Pins of %s in %s%d (%s): %d user I/O, %d dedicated, %d power, %d ground, %d no-connect." %
                    (f.name, self.package, self.count, ", ".join(parts), len(self.user), len(self.dedicated),
                     sum(self.power.values()), self.ground, self.nc),
                    "# Written by %s from the catalogue; do not edit." % GENERATED_BY, ""]
        w.attr("", "INT_NUM_PINS", self.count)
        self.package_attributes(pins)
        by_pos = {(p.row, p.col): p.id for p in pins} if self.grid else {}
        for pin in pins:
            self.pin(pin, by_pos, len(pins))
        return w.text()

    def package_attributes(self, pins):
        f, w, R = self.f, self.w, self.rng.random
        traits = {t for p in self.parts for t in p.values("TRAITS")}
        kind = self.package
        flip = "FLIP_CHIP" in traits or kind in ("FCBGA", "HFBGA", "DIE")
        thermal = kind in ("HBGA", "HFBGA", "EQFP")
        n = getattr(self, "n", 0)
        pitch = self.pitch()
        size = (n + 2) * pitch if self.grid else (-(-self.count // LEADED[kind][2]) + 4) * pitch
        bools = [("IS_FLIP_CHIP", flip), ("IS_WIRE_BOND", not flip), ("IS_LEAD_FREE", "LEAD_FREE" in traits),
                 ("IS_THERMALLY_ENHANCED", thermal), ("IS_LIDDED", kind in ("FCBGA", "HFBGA", "CLGA", "CCGA")),
                 ("IS_MIGRATION_PACKAGE", self.migration), ("HAS_EXPOSED_PAD", kind in ("EQFP", "QFN", "DFN")),
                 ("HAS_HEAT_SPREADER", thermal or kind == "FCBGA"), ("HAS_DECOUPLING_CAPS", flip and self.count >= 484),
                 ("HAS_BALL_DEPOPULATION", bool(getattr(self, "depopulated", []))), ("HAS_PIN_DELAYS", True),
                 ("HAS_PIN_PARASITICS", self.grid), ("HAS_BOARD_TRACE_MODEL", self.grid and self.count >= 256),
                 ("SUPPORTS_VERTICAL_MIGRATION", self.migration), ("SUPPORTS_PIN_SWAP", f.gen >= 3),
                 ("USES_BALL_NAMES", self.grid), ("USES_ROW_LETTERS", self.grid), ("USES_NUMERIC_PINS", not self.grid)]
        for key, on in bools:
            w.attr("", "BOOL_" + key, "true" if on else "false")
        watts = max(1, self.count // 200) * (1 + thermal)
        theta = int(40000 / math.sqrt(max(1, size / 1000)) / (1.5 if thermal else 1))
        ints = [("PACKAGE", kind), ("NUM_ROWS", n if self.grid else LEADED[kind][2]),
                ("NUM_COLUMNS", n if self.grid else -(-self.count // LEADED[kind][2])), ("PITCH_UM", pitch),
                ("BODY_WIDTH_UM", size), ("BODY_LENGTH_UM", size), ("HEIGHT_UM", 1200 if self.grid else 1600),
                ("NUM_USER_PINS", len(self.user)), ("NUM_POWER_PINS", sum(self.power.values())),
                ("NUM_GROUND_PINS", self.ground), ("NUM_NO_CONNECT_PINS", self.nc),
                ("NUM_XCVR_PINS", sum(1 for p in self.dedicated if p.kind in ("xcvr", "refclk"))),
                ("THETA_JA_MC_PER_W", theta), ("THETA_JC_MC_PER_W", theta // 8), ("THETA_JB_MC_PER_W", theta // 3),
                ("MAX_POWER_MW", 1000 * watts), ("PIN_DELAY_MODEL_VERSION", 2 + (f.gen >= 4))]
        if self.grid:
            ints.append(("FIRST_ROW_LETTER", 1))
        for key, value in ints:
            w.attr("", "INT_" + key, value)
        strings = [("PACKAGE_NAME", "%s%d" % (kind, self.count)),
                   ("PACKAGE_TYPE", (GRIDS.get(kind) or LEADED[kind])[0]),
                   ("DESCRIPTION", "%s in a %d-pin %s" % (f.name, self.count, (GRIDS.get(kind) or LEADED[kind])[0])),
                   ("OUTLINE_DRAWING", "pkg_%s%d.dxf" % (kind.lower(), self.count)),
                   ("MARKING_FORMAT", "%s-%s%d<speed><grade>" % (f.name, kind, self.count)),
                   ("IBIS_PACKAGE_MODEL", "%s_%s%d" % (f.name.lower(), kind.lower(), self.count)),
                   ("THERMAL_MODEL", "th_%s%d" % (kind.lower(), self.count)), ("GENERATOR", GENERATED_BY)]
        for key, value in strings:
            w.string("", "STRING_" + key, value)
        if self.grid:
            grid = [[-1] * n for _ in range(n)]
            for p in pins:
                grid[p.row][p.col] = p.id
            w.table("", "2D_INT_BALL_MAP", grid)
            w.table("", "2D_INT_DEPOPULATED_BALLS", [[r, c] for r, c in self.depopulated])
            if self.depopulated:
                rows = [r for r, _ in self.depopulated]
                cols = [c for _, c in self.depopulated]
                w.table("", "2D_INT_KEEP_OUT_AREAS", [[min(rows), min(cols), max(rows), max(cols)]])
            thirds = [0, n // 3, 2 * n // 3, n]
            w.table("", "2D_INT_THERMAL_ZONES", [[3 * i + j, thirds[i], thirds[j], thirds[i + 1] - 1, thirds[j + 1] - 1]
                                                 for i in range(3) for j in range(3)])
        else:
            per = -(-self.count // LEADED[kind][2])
            w.table("", "2D_INT_BALL_MAP", [[p.id for p in pins[s * per:(s + 1) * per]]
                                            for s in range(LEADED[kind][2])])
        supply_value = self.t.enum("dev_power_supply_enum").value
        groups = {}
        for p in pins:
            if p.kind == "power":
                groups.setdefault(p.supply, []).append(p.id)
        w.table("", "2D_INT_POWER_BALL_GROUPS", [[supply_value[s]] + ids for s, ids in sorted(groups.items())])
        grounds = [p.id for p in pins if p.kind == "ground"]
        w.table("", "2D_INT_GROUND_BALL_GROUPS", [grounds[i:i + 32] for i in range(0, len(grounds), 32)])
        pairs = [[a.id, self.pin_of_pad[a.pad.partner.id].id] for a in pins
                 if a.pad and a.pad.partner and "IS_DIFF_POSITIVE" in a.pad.bools and a.pad.partner.id in self.pin_of_pad]
        w.table("", "2D_INT_DIFF_PAIR_BALLS", pairs)
        channels = {}
        for p in pins:
            if p.pad and p.pad.kind == "xcvr":
                channels.setdefault(p.pad.ints["XCVR_CHANNEL"], []).append(p.id)
        w.table("", "2D_INT_XCVR_BALL_GROUPS", [[c] + ids for c, ids in sorted(channels.items())])
        if self.migration:
            w.table("", "2D_INT_MIGRATION_MAP", [[p.id, 1] for p in pins if p.kind == "nc"])
        counts = {}
        for p in pins:
            if p.bank is not None:
                counts.setdefault(p.bank, [0, 0])[p.kind == "power"] += 1
        w.table("", "2D_INT_BANK_BALL_COUNTS", [[b + 1, u, v] for b, (u, v) in sorted(counts.items())])
        mid = (n - 1) / 2
        if self.grid:
            w.vector("", "VEC_DOUBLE_ROW_OFFSETS_MM", ["%g" % round((mid - r) * pitch / 1000, 3) for r in range(n)])
            w.vector("", "VEC_DOUBLE_COLUMN_OFFSETS_MM", ["%g" % round((c - mid) * pitch / 1000, 3) for c in range(n)])
        w.vector("", "VEC_DOUBLE_TRACE_IMPEDANCES_OHM", ["%g" % round(v * (0.97 + 0.06 * R()), 1) for v in (40, 50, 85, 100)])
        base = 0.05 + size / 1e6
        w.vector("", "VEC_DOUBLE_PACKAGE_CORNER_DELAYS_NS", ["%g" % round(base * k, 3) for k in (0.8, 1.0, 1.25)])
        w.vector("", "VEC_DOUBLE_THERMAL_COEFFICIENTS", ["%g" % round(theta / 1000 * k, 2) for k in (1.0, 0.82, 0.71)])
        w.lines.append("")

    def pin(self, pin, by_pos, total):
        f, w, R = self.f, self.w, self.rng.random
        T = "\t"
        w.lines.append("pin %d" % pin.id)
        pad = pin.pad
        if pad:
            w.lines.append(T + "PAD_IDS = %d" % pad.id)
        bools = []
        if pad:
            bools.append("IS_BONDED")
            b = pad.bools
            bools += [k for k, on in (("IS_USER_IO", pad.kind == "io"), ("IS_CONFIG", "IS_CONFIG" in b),
                                      ("IS_JTAG", pad.kind == "jtag"), ("IS_CLOCK", "IS_CLOCK_INPUT" in b),
                                      ("IS_DIFF_POSITIVE", "IS_DIFF_POSITIVE" in b),
                                      ("IS_DIFF_NEGATIVE", "IS_DIFF_NEGATIVE" in b), ("IS_VREF", "IS_VREF" in b),
                                      ("IS_XCVR", pad.kind in ("xcvr", "refclk")), ("IS_DQ", "IS_DQ" in b),
                                      ("IS_DQS", "IS_DQS" in b or "IS_DQSN" in b), ("IS_RUP", "IS_RUP" in b),
                                      ("IS_RDN", "IS_RDN" in b), ("IS_TEMP_DIODE", pad.kind == "temp"),
                                      ("IS_DUAL_PURPOSE", "IS_DUAL_PURPOSE" in b), ("IS_ANALOG", pad.kind == "adc"),
                                      ("IS_HIGH_SPEED", pad.kind in ("xcvr", "refclk") or
                                       (pad.kind == "io" and pad.bank % 2 == 1 and f.gen >= 3)),
                                      ("NEEDS_PULLUP", pad.name in ("CFG_RESET_N", "CFG_STATUS_N", "CFG_DONE")),
                                      ("NEEDS_PULLDOWN", pad.name.startswith("CFG_MODE") or pad.name == "TCK")) if on]
        else:
            bools += {"power": ["IS_POWER", "NEEDS_DECOUPLING"], "ground": ["IS_GROUND"],
                      "nc": ["IS_NO_CONNECT"] + (["IS_MIGRATION_NC"] if self.migration else [])}[pin.kind]
        if self.grid:
            n = self.n
            corner = pin.row in (0, n - 1) and pin.col in (0, n - 1)
            bools += (["IN_CORNER"] if corner else []) + (["IN_OUTER_RING"] if pin.ring == 0 else
                                                          ["IN_INNER_RING"] if pin.ring >= n // 4 else [])
        for key in bools:
            w.attr(T, "BOOL_" + key, "true")
        ints = [("ROW", pin.row), ("COLUMN", pin.col)] if self.grid else []
        if pin.bank is not None:
            ints.append(("IO_BANK", pin.bank + 1))
        if not self.grid:
            ints += [("X_UM", pin.x), ("Y_UM", pin.y)]
        if pad:
            reach = math.hypot(pin.x, pin.y) / 1000
            delay = int(15 + 6.5 * reach + 4 * R())
            ints.append(("PACKAGE_DELAY_PS", delay))
            if self.grid:
                ints += [("INDUCTANCE_PH", int(250 + 320 * reach)), ("CAPACITANCE_FF", int(180 + 55 * reach + 20 * R()))]
            if pad.partner and pad.partner.id in self.pin_of_pad:
                ints.append(("DIFF_PARTNER_PIN", self.pin_of_pad[pad.partner.id].id))
            if pad.kind == "io":
                ints.append(("POWER_SUPPLY", power.vccio_of_bank(f, pad.bank)))
        elif pin.kind == "power":
            ints.append(("POWER_SUPPLY", pin.supply))
        for key, value in ints:
            w.attr(T, "INT_" + key, value)
        strings = [("PIN_NAME", pin.name)]
        if pad:
            function = pad.function or (pad.pair + pad.polarity if pad.pair else pad.name)
            strings.append(("FUNCTION_NAME", function))
            field = {"config": "CONFIG_FUNCTION", "jtag": "JTAG_FUNCTION", "xcvr": "XCVR_FUNCTION",
                     "refclk": "XCVR_FUNCTION"}.get(pad.kind, "CONFIG_FUNCTION" if "IS_CONFIG" in pad.bools else None)
            if field:
                strings.append((field, pad.function or pad.name))
            if function != pad.name:
                strings.append(("ALT_NAME", pad.name))
        elif pin.kind == "power":
            strings += [("FUNCTION_NAME", pin.supply), ("POWER_NET_NAME", pin.supply)]
        else:
            strings.append(("FUNCTION_NAME", "GND" if pin.kind == "ground" else "NC"))
        for key, value in strings:
            w.string(T, "STRING_" + key, value)
        if pad and pad.kind == "io":
            w.vector(T, "VEC_INT_VOLTAGES", self.pads.bank_supplies(pad.bank))
            if self.grid:
                near = [by_pos[(pin.row + dr, pin.col + dc)] for dr, dc in ((-1, 0), (0, -1), (0, 1), (1, 0))
                        if (pin.row + dr, pin.col + dc) in by_pos]
            else:
                near = [i for i in (pin.id - 1, pin.id + 1) if 0 <= i < total]
            w.vector(T, "VEC_INT_NEIGHBOUR_PINS", near)
        elif pad and pad.kind == "clock":
            w.vector(T, "VEC_INT_IO_STANDARDS", self.pads.pad_standards(pad))
        w.lines += ["end", ""]


def pkg_text(tables, facts, parts, model=None):
    return PkgText(tables, facts, parts, model).text()
