"""Prints what ezdxf, a reader nobody here wrote, finds in a DXF file: one line per finding,
tab-separated key=value fields. Text is decoded from the file's code page and \\U+XXXX escapes as
CAD programs do. Usage: /usr/bin/python3 check_dxf.py FILE.dxf"""

import re
import sys

import ezdxf
from ezdxf.lldxf.encoding import decode_dxf_unicode as text

# dxflib writes its objects section without owner links; the auditor restores them from the
# dictionaries. Every other repair counts.
DXFLIB_OBJECTS = {"DICTIONARY", "ACDBDICTIONARYWDFLT", "ACDBPLACEHOLDER", "MLINESTYLE", "LAYOUT",
                  "DICTIONARYVAR"}


def is_dxflib_owner_fix(entry):
    match = re.search(r"invalid owner handle in (\w+)\(#", entry.message)
    return entry.code == ezdxf.audit.AuditError.INVALID_OWNER_HANDLE and bool(match) \
        and match.group(1) in DXFLIB_OBJECTS


def point(p):
    return ",".join(repr(float(c)) for c in p)


def xdata_item(code, value):
    if 1010 <= code <= 1013:
        return "%d:%s" % (code, point(value))
    return "%d:%s" % (code, text(value) if isinstance(value, str) else repr(value))


def geometry(e):
    ocs = e.ocs()
    if e.dxftype() == "LWPOLYLINE":
        z = e.dxf.elevation
        vertices = [point(ocs.to_wcs((x, y, z))) + "," + repr(b) for x, y, b in e.get_points("xyb")]
        return ["closed=%d" % e.closed, "vertices=" + ";".join(vertices)]
    if e.dxftype() == "ARC":
        return ["center=" + point(ocs.to_wcs(e.dxf.center)), "radius=" + repr(e.dxf.radius),
                "start=" + point(e.start_point), "end=" + point(e.end_point),
                "extrusion=" + point(e.dxf.extrusion)]
    if e.dxftype() == "CIRCLE":
        return ["center=" + point(ocs.to_wcs(e.dxf.center)), "radius=" + repr(e.dxf.radius)]
    if e.dxftype() == "TEXT":
        return ["insert=" + point(ocs.to_wcs(e.dxf.insert)), "height=" + repr(e.dxf.height),
                "text=" + text(e.dxf.text)]
    return []


def main(path):
    doc = ezdxf.readfile(path)
    # Read before the audit, so that nothing the auditor repairs passes for ours.
    lines = ["HEADER\tversion=%s\tinsunits=%s\tcodepage=%s" % (
        doc.dxfversion, doc.header.get("$INSUNITS"), doc.header.get("$DWGCODEPAGE"))]
    lines.append("APPIDS\tnames=" + ",".join(sorted(a.dxf.name for a in doc.appids)))
    lines += ["LAYER\tname=%s\tcolor=%d" % (text(l.dxf.name), l.dxf.color) for l in doc.layers]
    for e in doc.modelspace():
        fields = ["type=" + e.dxftype(), "layer=" + text(e.dxf.layer), "color=%d" % e.dxf.color]
        tags = list(e.get_xdata("KELAZ")) if e.has_xdata("KELAZ") else []
        # The entity's handle and class come first, then its properties.
        fields += ["handle=" + (tags[0][1] if tags else ""),
                   "class=" + (tags[1][1] if len(tags) > 1 else ""),
                   "xdata=" + "|".join(xdata_item(code, value) for code, value in tags[2:])]
        lines.append("ENTITY\t" + "\t".join(fields + geometry(e)))

    auditor = doc.audit()
    problems = auditor.errors + [m for m in auditor.fixes if not is_dxflib_owner_fix(m)]
    lines.insert(0, "AUDIT\terrors=%d\tproblems=%d\tfirst=%s" % (
        len(auditor.errors), len(problems), " / ".join(m.message for m in problems[:3])))
    print("\n".join(lines))


if __name__ == "__main__":
    main(sys.argv[1])
