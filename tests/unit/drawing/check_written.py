"""check_written.py FILE: opens the drawing that test_writing.cpp makes with another maker's DXF library and checks what is in it.
The expected values are those of the test's makeDrawing()."""

import sys

import ezdxf
from ezdxf.lldxf.encoding import decode_dxf_unicode

doc = ezdxf.readfile(sys.argv[1])
failures = []


def expect(what, found, wanted):
    close = found == wanted
    if not close and isinstance(wanted, (float, tuple)):
        both = [(found, wanted)] if isinstance(wanted, float) else list(zip(tuple(found), wanted))
        close = all(abs(a - b) < 1e-12 for a, b in both) and (isinstance(wanted, float) or len(tuple(found)) == len(wanted))
    if not close:
        failures.append(f"{what}: found {found!r}, wanted {wanted!r}")


audit = doc.audit()
expect("audit's errors", [e.message for e in audit.errors], [])
expect("audit's repairs", [e.message for e in audit.fixes], [])
expect("release", doc.dxfversion, "AC1015")
lines = open(sys.argv[1], encoding="cp1252").read().split("\n")
pairs = list(zip([line.strip() for line in lines[0::2]], lines[1::2]))
seed = pairs[pairs.index(("9", "$HANDSEED")) + 1][1]
handles = [int(value, 16) for number, (code, value) in enumerate(pairs)
           if code in ("5", "105") and pairs[number - 1] != ("9", "$HANDSEED")]
expect("handle seed above all handles", max(handles) < int(seed, 16), True)
expect("handles are unique", len(set(handles)), len(handles))
expect("insertion units", doc.header["$INSUNITS"], 4)

msp = doc.modelspace()
entities = list(msp)
expect("kinds", [e.dxftype() for e in entities],
       ["LINE", "CIRCLE", "ARC", "ELLIPSE", "POINT", "SOLID", "LWPOLYLINE", "POLYLINE", "TEXT", "MTEXT", "INSERT", "IMAGE"])
line, circle, arc, ellipse, point, solid, light, heavy, text, mtext, insert, image = entities

expect("line's layer", line.dxf.layer, "Wände")
expect("line's start", line.dxf.start.xyz, (0.1, 0.2, 0.3))
expect("line's end", line.dxf.end.xyz, (1e20, -1e-7, 0.0))
expect("line's lineweight", line.dxf.lineweight, 35)
expect("circle's extrusion", circle.dxf.extrusion.xyz, (0.0, 0.0, -1.0))
expect("circle's colour", circle.dxf.color, 3)
expect("arc", (arc.dxf.radius, arc.dxf.start_angle, arc.dxf.end_angle), (2.5, 10.0, 190.0))
expect("ellipse", (ellipse.dxf.ratio, ellipse.dxf.start_param, ellipse.dxf.end_param), (0.25, 1.0, 2.0))
expect("point is invisible", point.dxf.invisible, 1)
expect("solid's corners", [solid.dxf.get(f"vtx{i}").xyz for i in range(4)],
       [(0, 0, 0), (1, 0, 0), (0, 1, 0), (0, 1, 0)])
expect("light polyline", light.get_points(), [(0, 0, 0.5, 0.25, 1), (10, 0, 0, 0, 0), (10, 10, 0, 0, -0.3)])
expect("light polyline is closed", light.closed, True)
expect("old polyline's corners", [(v.dxf.location.xyz, v.dxf.bulge) for v in heavy.vertices],
       [((1.0, 2.0, 0.0), 0.5), ((3.0, 4.0, 0.0), 0.0)])
expect("old polyline is closed", heavy.is_closed, True)
expect("text", decode_dxf_unicode(text.dxf.text), "Größe ∅ 5 Ω")
expect("text's place", (text.get_pos()[0], text.get_pos()[1].xyz), ("MIDDLE_CENTER", (3.0, 4.0, 0.0)))
expect("long text", decode_dxf_unicode(mtext.text), "line\\P" + "Ωmega " * 200)
expect("block reference", (insert.dxf.name, insert.dxf.xscale, insert.dxf.rotation, insert.dxf.row_count,
                           insert.dxf.column_count, insert.dxf.row_spacing), ("DOOR", -2.0, 30.0, 2, 3, 7.5))
expect("attribute", [(a.dxf.tag, a.dxf.text) for a in insert.attribs], [("NUMBER", "42")])
expect("block's content", [e.dxftype() for e in doc.blocks.get("DOOR")], ["LINE", "ATTDEF"])

definition = image.image_def
expect("image's file", definition.dxf.filename, "C:\\Pläne\\sheet.tif")
expect("image's pixels", tuple(definition.dxf.image_size)[:2], (20000.0, 14000.0))
expect("size of a pixel", tuple(definition.dxf.pixel_size)[:2], (0.0635, 0.0635))
expect("image is loaded", definition.dxf.loaded, 1)
expect("image's units", definition.dxf.resolution_units, 5)
expect("image's insertion point", image.dxf.insert.xyz, (100.0, 200.0, 0.0))
expect("image's u", image.dxf.u_pixel.xyz, (0.0635, 0.0, 0.0))
expect("image's v", image.dxf.v_pixel.xyz, (0.0, 0.0635, 0.0))
expect("image's size", tuple(image.dxf.image_size)[:2], (20000.0, 14000.0))
expect("image's display", image.dxf.flags, 1 | 2 | 4 | 8)
expect("clipping", image.dxf.clipping, 1)
expect("looks", (image.dxf.brightness, image.dxf.contrast, image.dxf.fade), (45, 55, 5))
expect("clip boundary", [tuple(p)[:2] for p in image.boundary_path], [(-0.5, -0.5), (99.5, -0.5), (50.0, 80.0), (-0.5, -0.5)])
expect("clip type", image.dxf.clipping_boundary_type, 2)
reactor = doc.entitydb.get(image.dxf.image_def_reactor_handle)
expect("reactor", reactor and reactor.dxftype(), "IMAGEDEF_REACTOR")
expect("reactor's owner", reactor.dxf.owner, image.dxf.handle)
expect("reactor's image", reactor.dxf.image_handle, image.dxf.handle)
expect("definition's reactors", list(definition.reactors), sorted([definition.dxf.owner, reactor.dxf.handle]))
expect("image dictionary", doc.rootdict["ACAD_IMAGE_DICT"]["sheet"].dxf.handle, definition.dxf.handle)
variables = doc.rootdict["ACAD_IMAGE_VARS"]
expect("raster variables", (variables.dxf.frame, variables.dxf.quality, variables.dxf.units), (0, 1, 1))
for name in ("IMAGE", "IMAGEDEF", "IMAGEDEF_REACTOR", "RASTERVARIABLES"):
    expect(f"class {name}", [c.dxf.app_name for key, c in doc.classes.classes.items() if key[0] == name], ["ISM"])

viewport = doc.viewports.get("*Active")[0]
expect("view", (viewport.dxf.center.x, viewport.dxf.center.y, viewport.dxf.height), (11.0, 12.0, 13.0))
print("\n".join(failures))
sys.exit(1 if failures else 0)
