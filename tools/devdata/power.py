"""The power supplies of a part, from the power-supply enumeration by what its family and
device have: the part info describes each, the package files give each its power pins.

  VCCINT       core, at the part's default core voltage (VCC_ONE instead, a single rail
               for core and auxiliary circuits, in the flash-based families of generation 3
               and later);
  VCCAUX       auxiliary, generation 2 and later (2.5 V, 1.8 V from generation 5);
  VCC_PREDRIVER  I/O pre-drivers, generations 3 and 4;
  VCC_BIAS     bias, generation 6;
  VCC_RAM      embedded RAM, generation 5 and later, on the core rail;
  VCC_BATTERY  the key store of families with design security;
  VCC_CONFIG   configuration pins, generation 3 and later;
  VCC_PLL_ANALOG, VCC_PLL_DIGITAL  the PLLs (the digital supply from generation 3, on the
               core rail);
  VCC_XCVR_*   the transceivers of parts that have them;
  VCC_CPU, VCCIO_CPU  the hard processor of parts that have one;
  VCCIO1..8    the I/O banks: with more than eight banks, VCCIOk feeds a group of
               neighbouring banks (bank b, counted from 0, in group b*8/banks);
  VREF         the reference inputs of devices with VREF pins;
  VCC_ADC, VCC_FLASH  the analog-to-digital converters and the user flash.
"""

from .architecture import bank_vccio

AUX = {2: "2_5V", 3: "2_5V", 4: "2_5V"}


class Supply:
    """One supply: its name, voltage (a voltage enumeration name), role, the banks it feeds
    (numbered from 1), the supply whose rail it shares, and its share of the power pins."""

    def __init__(self, name, voltage, role, weight, banks=(), shared=None):
        self.name, self.voltage, self.role, self.weight = name, voltage, role, weight
        self.banks, self.shared = list(banks), shared


def bank_groups(banks):
    """The I/O supply groups: a list of lists of bank indices (from 0)."""
    groups = min(8, banks)
    return [[b for b in range(banks) if b * groups // banks == g] for g in range(groups)]


def supplies(facts, part):
    """The supplies of `part` (a catalogue record of the device of `facts`)."""
    f, gen = facts, facts.gen
    core = part.value("DEFAULT_VOLTAGE") or f.voltage or "1_2V"
    single = f.has("NONVOLATILE_CONFIG") and gen >= 3
    low = "1_8V" if gen >= 5 else "2_5V"
    rail = "VCC_ONE" if single else "VCCINT"
    out = [Supply(rail, core, "core", 8)]
    if gen >= 2 and not single:
        out.append(Supply("VCCAUX", AUX.get(gen, "1_8V"), "aux", 2))
    if gen in (3, 4):
        out.append(Supply("VCC_PREDRIVER", "2_5V", "aux", 1))
    if gen >= 6:
        out.append(Supply("VCC_BIAS", "1_8V", "aux", 1))
    if gen >= 5 and f.r("Embedded RAM bits"):
        out.append(Supply("VCC_RAM", core, "core", 2, shared=rail))
    if f.has("DESIGN_SECURITY"):
        out.append(Supply("VCC_BATTERY", "3_0V", "aux", 1))
    if gen >= 3:
        out.append(Supply("VCC_CONFIG", low if gen >= 5 else "3_3V", "io", 1))
    if f.r("PLLs"):
        out.append(Supply("VCC_PLL_ANALOG", low, "analog", 1))
        if gen >= 3:
            out.append(Supply("VCC_PLL_DIGITAL", core, "core", 1, shared=rail))
    if part.resources.get("Transceiver channels"):
        xcvr = "0_9V" if gen >= 6 else "1_0V" if gen >= 5 else "1_1V"
        out += [Supply("VCC_XCVR_RX", xcvr, "analog", 2), Supply("VCC_XCVR_TX", xcvr, "analog", 2),
                Supply("VCC_XCVR_BUFFER", "1_2V" if gen >= 5 else "1_5V", "analog", 1),
                Supply("VCC_XCVR_CLOCK", xcvr, "analog", 1, shared="VCC_XCVR_RX"),
                Supply("VCC_XCVR_ANALOG", low, "analog", 1)]
    if part.resources.get("Hard processor cores"):
        out += [Supply("VCC_CPU", core, "core", 2), Supply("VCCIO_CPU", "1_8V", "io", 1)]
    banks = max(1, min(f.r("I/O banks") or 2, f.io or 1))
    for g, members in enumerate(bank_groups(banks)):
        out.append(Supply("VCCIO%d" % (g + 1), bank_vccio(f, members[0]), "io", 2 * len(members),
                          banks=[b + 1 for b in members]))
    if f.gen >= 2 and f.r("PLLs"):
        out.append(Supply("VREF", "VCCIO_DEPENDENT", "io", 1))
    if f.r("Analog-to-digital converters"):
        out.append(Supply("VCC_ADC", "2_5V" if gen <= 4 else "1_8V", "analog", 1))
    if f.r("User flash memory bits"):
        out.append(Supply("VCC_FLASH", "3_3V", "aux", 1))
    return out


def vccio_of_bank(facts, bank):
    """The name of the supply that feeds bank `bank` (from 0)."""
    banks = max(1, min(facts.r("I/O banks") or 2, facts.io or 1))
    return "VCCIO%d" % (bank * min(8, banks) // banks + 1)
