"""compare_objects.py HOST OURS: compares the DXF that the host wrote of a drawing with the DXF of what we read from its
binary form, object for object by their handles, as another maker's library sees them. Exits with 1 if they differ."""

import collections
import re
import sys

import ezdxf
from ezdxf.math import Vec3

# What the binary form of this release does not tell, or the host's later releases add to their DXF.
IGNORED = {
    "LAYER": {"material_handle"},
    "MTEXT": {"rect_height", "rect_width", "rotation", "text_direction"},
    "VIEWPORT": {"circle_zoom", "id", "status"},
    "HATCH": {"pixel_size"},
    "BLOCK": {"paperspace"},
    "ENDBLK": {"paperspace"},
    "DIMSTYLE": {"dimarcsym"},
    "WIPEOUT": {"image_def_handle", "image_def_reactor_handle"},
    "SPLINE": {"flags", "start_tangent", "end_tangent"},
}
# Kinds that only one of the forms can hold here, and marks that each save numbers anew.
UNREAD = {"MULTILEADER", "ACAD_TABLE", "SHAPE", "HELIX", "ARC_DIMENSION", "MPOLYGON", "SEQEND"}
MADE_ANEW = {"MATERIAL", "MLEADERSTYLE"}  # by the library that compares
ROUND_TRIP = "ACDBHEADERROUNDTRIPXREC"  # what the host has no other place for, under the handles of one save
complaints = []


def decoded(text):
    """The text without the escapes that the library leaves in."""
    return re.sub(r"\\U\+([0-9A-Fa-f]{4})", lambda found: chr(int(found[1], 16)), text)


def plain_name(text):
    """The text without regard to case, and a block's name without the number that each save may change."""
    return re.sub(r"^(\*[a-z])\d+$", r"\1", text.lower())


def same(a, b):
    if a is None or b is None:
        return (a or 0) == (b or 0) or (a is None and b == "Standard")  # which the form has to tell
    if isinstance(a, (int, float)) and isinstance(b, (int, float)):
        return abs(a - b) <= 1e-9 * max(1, abs(a))
    if isinstance(a, str):
        return plain_name(decoded(a)) == plain_name(decoded(str(b)))
    return Vec3(a).isclose(Vec3(b), abs_tol=1e-9)


def value(entity, key):
    found = entity.dxf.get(key)
    return entity.dxf.get_default(key) if found is None else found


def boundary(path):
    if hasattr(path, "vertices"):
        return [path.is_closed] + [x for vertex in path.vertices for x in vertex]
    # By what points a spline was drawn is told by later releases alone.
    later = {"fit_points", "start_tangent", "end_tangent"}
    return [x for edge in path.edges for name, part in vars(edge).items() if name not in later for x in numbers(part)]


def numbers(part):
    return [part] if isinstance(part, (int, float)) else [x for each in part or () for x in numbers(each)]


def content(entity):
    kind = entity.dxftype()
    if kind == "LWPOLYLINE":
        return [x for point in entity.get_points() for x in point]
    if kind == "SPLINE":
        return [x for p in entity.control_points for x in p] + list(entity.knots) + list(entity.weights)
    if kind == "LEADER":
        # The host adds the point at which the hook begins.
        points = [Vec3(p).xyz for p in entity.vertices]
        return [x for p in (points[0], points[1], points[-1]) for x in p]
    if kind in ("IMAGE", "WIPEOUT", "PDFUNDERLAY", "DWFUNDERLAY", "DGNUNDERLAY"):
        return [x for p in entity.boundary_path for x in (p[0], p[1])]
    if kind == "HATCH":
        lines = entity.pattern.lines if entity.pattern else []
        return [x for path in entity.paths.paths for x in boundary(path)
                ] + [x for line in lines for x in (line.angle, *line.base_point, *line.offset)]
    if kind == "MTEXT":
        return [entity.text, entity.get_rotation() % 360]
    if kind == "MLINE":
        return [x for v in entity.vertices for point in (v.location, v.line_direction, v.miter_direction) for x in point
                ] + [x for v in entity.vertices for line in (*v.line_params, *v.fill_params) for x in line]
    if kind in ("3DSOLID", "REGION", "BODY"):
        return entity.sat[:1] + entity.sat[3:]  # between them stands when it was written
    if kind == "MESH":
        return [x for each in (entity.vertices, entity.faces, entity.edges) for item in each for x in item
                ] + list(entity.creases)
    return []


def compare(a, b):
    kind = a.dxftype()
    where = f"{kind} {a.dxf.handle}"
    if kind != b.dxftype():
        complaints.append(f"{where} is {b.dxftype()}")
        return
    keys = set(a.dxfattribs()) | set(b.dxfattribs())
    if kind == "DIMSTYLE":
        # What a style leaves out has the host's usual value, which the library takes for another.
        keys = set(a.dxfattribs())
    for key in keys:
        if key not in IGNORED.get(kind, ()) and not same(value(a, key), value(b, key)):
            complaints.append(f"{where} {key}: {value(a, key)} became {value(b, key)}")
    before, after = content(a), content(b)
    if len(before) != len(after) or not all(same(x, y) for x, y in zip(before, after)):
        complaints.append(f"{where}: {before} became {after}")


def compare_dictionaries(a, b, kinds):
    """Whether all entries of the kinds that we know are there, under the same names, and of the same kind."""
    for name, held in a.items():
        twin = b.get(name)
        of_one_save = name == ROUND_TRIP or name.isdigit()
        if isinstance(held, str) or held.dxftype() not in kinds or of_one_save:
            continue
        if twin is None or isinstance(twin, str) or twin.dxftype() != held.dxftype():
            complaints.append(f"the dictionary {a.dxf.handle} has lost {name}, {held}")
        elif held.dxftype() == "DICTIONARY":
            compare_dictionaries(held, twin, kinds)


def main():
    host, ours = ezdxf.readfile(sys.argv[1]), ezdxf.readfile(sys.argv[2])
    compared = collections.Counter()
    blocks = {block.block_record_handle: block for block in ours.blocks}
    for block in host.blocks:
        twin = ours.blocks.get(block.name)
        if plain_name(block.name) != block.name.lower():
            twin = blocks.get(block.block_record_handle, twin)
        if twin is None:
            complaints.append(f"the block {block.name} is missing")
            continue
        theirs = [e for e in block if e.dxftype() not in UNREAD]
        found = [e for e in twin if e.dxftype() not in UNREAD]
        # A block that the host made anew has the same entities under other handles.
        key = "dxftype" if block.name.startswith("*U") else None
        names = [[e.dxftype() if key else e.dxf.handle for e in each] for each in (theirs, found)]
        if names[0] != names[1]:
            complaints.append(f"the block {block.name} has other entities, or in another order")
        for a in theirs:
            b = ours.entitydb.get(a.dxf.handle)
            if b is not None:
                compare(a, b)
                compared[a.dxftype()] += 1
                parts = {"POLYLINE": "vertices", "INSERT": "attribs"}.get(a.dxftype())
                for x, y in zip(getattr(a, parts), getattr(b, parts)) if parts else ():
                    compare(x, y)
    for table in ("layers", "linetypes", "styles", "dimstyles", "views", "block_records"):
        for record in getattr(host, table):
            twin = ours.entitydb.get(record.dxf.handle)
            if twin is not None and twin.dxftype() == record.dxftype():
                compare(record, twin)
                compared[record.dxftype()] += 1
            elif twin is None and record.dxf.name not in [r.dxf.name for r in getattr(ours, table)]:
                # The host made a layer of its own when it wrote the DXF.
                if record.dxftype() != "LAYER":
                    complaints.append(f"{record.dxftype()} {record.dxf.name} is missing")
    compare_dictionaries(host.rootdict, ours.rootdict, {each.dxftype() for each in ours.objects} - MADE_ANEW)
    for complaint in complaints:
        print(complaint)
    print("compared:", dict(compared))
    sys.exit(1 if complaints else 0)


if __name__ == "__main__":
    main()
