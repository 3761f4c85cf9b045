"""The line forms that every device-data text shares: attribute lines "KEY = VALUE" (tab
indented inside a block), quoted strings without embedded quotes, 2D values on one line
when small, else as a lone "{" followed by one row a line (the continuation form that every
reader of these formats gathers), and a random generator seeded per device and kind, so that
a file is the same on every run."""

import hashlib
import random


def seeded(*names):
    """A random generator seeded with the names (a device name, a kind)."""
    text = ":".join(names).encode()
    return random.Random(int.from_bytes(hashlib.sha256(text).digest()[:8], "big"))


class Writer:
    """Lines of a text."""

    def __init__(self):
        self.lines = []

    def attr(self, indent, key, value):
        self.lines.append("%s%s = %s" % (indent, key, value))

    def string(self, indent, key, value):
        assert '"' not in value, value
        self.lines.append('%s%s = "%s"' % (indent, key, value))

    def table(self, indent, key, rows):
        """A 2D value: small ones on one line ({{1, 2}, {3, 4}}), larger ones as a lone "{"
        and one row a line, each row one tab deeper ("{ 1 2 }", the last closing the array)."""
        if not rows:
            return
        if len(rows) <= 4 and sum(len(r) for r in rows) <= 16:
            self.lines.append("%s%s = {%s}" % (indent, key, ", ".join(
                "{%s}" % ", ".join(map(str, r)) for r in rows)))
            return
        self.lines.append("%s%s = {" % (indent, key))
        inner = indent + "\t{ "
        body = [inner + " ".join(map(str, r)) + " }" for r in rows]
        body[-1] += "}"
        self.lines.extend(body)

    def vector(self, indent, key, values, quoted=False):
        """A vector value, {a, b, c}; elements in double quotes when `quoted`."""
        if quoted:
            assert not any('"' in v for v in values), values
            values = ['"%s"' % v for v in values]
        self.lines.append("%s%s = {%s}" % (indent, key, ", ".join(map(str, values))))

    def text(self):
        return "\n".join(self.lines) + "\n"
