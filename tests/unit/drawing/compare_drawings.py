"""compare_drawings.py BEFORE AFTER: says what a drawing has lost on its way through a program, as another maker's DXF library
sees it. Exits with 1 if anything differs. The library's audit of AFTER must find nothing to mend."""

import sys

import ezdxf

# What names the file or the place in it, and what the library makes up where a file has none.
IGNORED_HEADER = {"$ACADVER", "$ACADMAINTVER", "$HANDSEED", "$DWGCODEPAGE"}
# Times of creation and change: the library may set them to the time of reading.
IGNORED_HEADER |= {"$TDCREATE", "$TDUCREATE", "$TDUPDATE", "$TDUUPDATE"}
IGNORED = {"owner", "handle", "paperspace", "layout_handle"}
MADE_UP_HEADER = {"$FINGERPRINTGUID", "$VERSIONGUID"}
MADE_UP = {"material_handle", "plotstyle_handle"}
TRIVIAL = {"extrusion": (0, 0, 1), "thickness": 0, "color": 256, "linetype": "BYLAYER", "count": None, "elevation": 0}
complaints = []


def complain(where, text):
    complaints.append(f"{where}: {text}")


def plain(value):
    if hasattr(value, "xyz"):
        return tuple(round(x, 9) for x in value.xyz)
    if isinstance(value, float):
        return round(value, 9)
    return value


def attributes(entity):
    found = {}
    for key, value in entity.dxf.all_existing_dxf_attribs().items():
        value = plain(value)
        if isinstance(value, str) and key == "linetype":
            value = value.upper()
        if key not in IGNORED and not (key in TRIVIAL and TRIVIAL[key] in (value, None)):
            found[key] = value
    return found


def rounded(value):
    if isinstance(value, dict):
        return {key: rounded(each) for key, each in value.items()}
    if isinstance(value, (list, tuple)):
        return [rounded(each) for each in value]
    return plain(value) if not hasattr(value, "x") else (plain(value.x), plain(value.y))


def content(entity):
    """What an entity has besides its attributes."""
    kind = entity.dxftype()
    if kind == "LWPOLYLINE":
        return [plain(x) for point in entity.get_points() for x in point], entity.closed
    if kind == "POLYLINE":
        return [attributes(vertex) for vertex in entity.vertices]
    if kind == "INSERT":
        return [attributes(attribute) for attribute in entity.attribs]
    if kind == "IMAGE":
        return [plain(p) for p in entity.boundary_path], attributes(entity.image_def)
    if kind == "MTEXT":
        return entity.text
    if kind == "SPLINE":
        return [plain(p) for p in entity.control_points], list(entity.knots), list(entity.weights), [
            plain(p) for p in entity.fit_points]
    if kind == "HATCH":
        pattern = entity.pattern.lines if entity.pattern else []
        return (
            [[plain(x) for x in v] for path in entity.paths for v in getattr(path, "vertices", ())],
            [rounded(vars(edge)) for path in entity.paths for edge in getattr(path, "edges", ())],
            [(path.path_type_flags, path.source_boundary_objects) for path in entity.paths],
            [rounded(vars(line)) for line in pattern],
            [tuple(seed) for seed in entity.seeds],
        )
    if kind == "LEADER":
        return [plain(p) for p in entity.vertices]
    if kind == "VIEWPORT":
        return sorted(entity.frozen_layers)
    if kind == "XRECORD":
        return [(tag.code, plain(tag.value)) for tag in entity.tags]
    if kind == "DICTIONARY":
        return sorted(entity.keys())
    return None


def extended(entity):
    data = entity.xdata.data if entity.xdata else {}
    return {name: [(tag.code, plain(tag.value)) for tag in tags] for name, tags in data.items()}


def compare(where, before, after):
    if before.dxftype() != after.dxftype():
        return complain(where, f"was a {before.dxftype()}, is a {after.dxftype()}")
    where = f"{where} {before.dxftype()}"
    old, new = attributes(before), attributes(after)
    for key in sorted(old):
        if old[key] != new.get(key):
            complain(where, f"{key} was {old[key]!r}, is {new.get(key)!r}")
    if content(before) != content(after):
        complain(where, f"was {content(before)!r}, is {content(after)!r}")
    if extended(before) != extended(after):
        complain(where, f"extended data was {extended(before)!r}, is {extended(after)!r}")


def compare_lists(where, before, after):
    before, after = list(before), list(after)
    if len(before) != len(after):
        complain(where, f"held {len(before)} entities, holds {len(after)}")
    for number, (old, new) in enumerate(zip(before, after)):
        compare(f"{where}[{number}]", old, new)


def compare_header(before, after):
    for name in before.header.varnames():
        if name not in IGNORED_HEADER and plain(before.header[name]) != plain(after.header.get(name)):
            complain("header", f"{name} was {before.header[name]!r}, is {after.header.get(name)!r}")
    if before.header.custom_vars.properties != after.header.custom_vars.properties:
        complain("header", f"the properties were {before.header.custom_vars.properties!r}")


def compare_tables(before, after):
    for table in ("layers", "linetypes", "styles", "dimstyles", "appids"):
        for record in getattr(before, table):
            name = record.dxf.name
            if name not in getattr(after, table):
                complain(table, f"{name} is gone")
            else:
                compare(f"{table} {name}", record, getattr(after, table).get(name))
    for block in before.blocks:
        if block.name not in after.blocks:
            complain("blocks", f"{block.name} is gone")
        else:
            compare(f"block {block.name}", block.block, after.blocks.get(block.name).block)
            compare_lists(f"block {block.name}", block, after.blocks.get(block.name))


def main(before_path, after_path):
    before, after = ezdxf.readfile(before_path), ezdxf.readfile(after_path)
    with open(before_path, "rb") as file:
        text = file.read()
        IGNORED_HEADER.update(name for name in MADE_UP_HEADER if name.encode() not in text)
    if before.dxfversion < "AC1015":
        IGNORED.update(MADE_UP)
    else:
        IGNORED.discard("handle")
    if after.dxfversion != "AC1015":
        complain("file", f"is of the release {after.dxfversion}")
    audit = after.audit()
    for problem in list(audit.errors) + list(audit.fixes):
        complain("audit", problem.message)
    compare_header(before, after)
    compare_tables(before, after)
    for layout in before.layouts:
        compare_lists(layout.name, layout, after.layouts.get(layout.name))
    if before.dxfversion >= "AC1015":
        for old in before.objects:
            new = after.entitydb.get(old.dxf.handle)
            if new is None:
                complain("objects", f"{old} is gone")
            else:
                compare(f"object {old.dxf.handle}", old, new)
    print("\n".join(complaints))
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
