#!/usr/bin/env python3
"""ddbtool on pads and packages: compile and dump of both kinds (the dump of the compiled
file equals the dump of the text), check, info's counts, `device pins` (one line per pin with
its pad ids and names) and the SVG ball map (valid XML, one ball per pin, a legend and the
part's name as title) for a ball-grid and a leaded package.

    ddbtool_pads_test.py DDBTOOL BUNDLED_ROOT
"""

import os
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET

SVG = "{http://www.w3.org/2000/svg}"
failures = []


def check(condition, what):
    if not condition:
        failures.append(what)


def run(ddbtool, *args):
    result = subprocess.run([ddbtool] + list(args), capture_output=True, text=True)
    return result.returncode, result.stdout, result.stderr


def compile_and_dump(ddbtool, tmp, text, kind):
    base = os.path.basename(text)[:-len(kind) - 1]
    compiled = os.path.join(tmp, "%s_%s.ddb" % (base, kind))
    code, _, err = run(ddbtool, "device", "compile", "--level", "6", text, compiled)
    check(code == 0, "compile %s: %s" % (text, err))
    dumps = []
    for source in (text, compiled):
        out = os.path.join(tmp, "dump_%d.%s" % (len(dumps), kind))
        code, _, err = run(ddbtool, "device", "dump", source, out)
        check(code == 0, "dump %s: %s" % (source, err))
        dumps.append(open(out).read())
    check(dumps[0] == dumps[1], "%s: the dumps of the text and of its .ddb differ" % text)
    code, out, _ = run(ddbtool, "check", text)
    check(code == 0 and out.startswith("0 errors, 0 warnings"), "check %s: %s" % (text, out))


def pins_and_ball_map(ddbtool, tmp, part):
    svg = os.path.join(tmp, part + ".svg")
    code, out, err = run(ddbtool, "device", "pins", part, "--svg", svg)
    check(code == 0, "pins %s: %s" % (part, err))
    lines = out.splitlines()
    check(lines[0].startswith("# %s: " % part), "pins %s: heading %r" % (part, lines[0]))
    pins = [line.split("\t") for line in lines[1:]]
    check(all(len(p) == 4 for p in pins), "pins %s: lines of four columns" % part)
    check([int(p[1]) for p in pins] == list(range(len(pins))), "pins %s: one line per pin id" % part)
    bonded = [p for p in pins if p[2] != "-"]
    check(bonded and all(len(p[2].split(",")) == len(p[3].split(",")) for p in bonded),
          "pins %s: a pad name per pad id" % part)
    check(any(p[2] == "-" for p in pins), "pins %s: power and ground pins without pads" % part)
    root = ET.parse(svg).getroot()
    balls = [c for c in root.iter(SVG + "circle") if c.get("class") == "ball"]
    check(len(balls) == len(pins), "svg %s: %d balls for %d pins" % (part, len(balls), len(pins)))
    check(root.find(SVG + "title").text.startswith(part), "svg %s: the part's name as title" % part)
    texts = [t.text for t in root.iter(SVG + "text")]
    check("Legend" in texts and any(t and t.startswith("user I/O, bank") for t in texts),
          "svg %s: a legend with the banks" % part)
    names = {p[0] for p in pins}
    check(names <= set(texts), "svg %s: every ball named" % part)
    places = {(b.get("cx"), b.get("cy")) for b in balls}
    check(len(places) == len(balls), "svg %s: one place per ball" % part)


def main():
    ddbtool, root = sys.argv[1], sys.argv[2]
    os.environ["VELCORA_ROOTDIR"] = root
    with tempfile.TemporaryDirectory() as tmp:
        folder = os.path.join(root, "ddb", "corvane2")
        compile_and_dump(ddbtool, tmp, os.path.join(folder, "ddb_cv2e004.pad"), "pad")
        compile_and_dump(ddbtool, tmp, os.path.join(folder, "ddb_cv2e004tqfp144.pkg"), "pkg")
        code, out, _ = run(ddbtool, "device", "info", "CV2E004T144C6")
        check(code == 0 and "118 pads, 54 I/O standards, 43 I/O rules" in out and "144 pins" in out,
              "info: counts of pads, standards, rules and pins:\n" + out)
        code, out, _ = run(ddbtool, "device", "compile", "--help")
        check(" pad " in out and " pkg " in out, "compile --help names the pad and pkg kinds")
        pins_and_ball_map(ddbtool, tmp, "OS6G2700LG2912C1ES")
        pins_and_ball_map(ddbtool, tmp, "CV2E004T144C6")
        code, _, err = run(ddbtool, "device", "pins", "NO_SUCH_PART")
        check(code == 1 and "names no part" in err, "pins of an unknown part: " + err)
    for f in failures:
        print("FAILED: " + f)
    print("%d passed, %d failed" % (0 if failures else 1, len(failures)))
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
