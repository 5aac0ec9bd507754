"""Writes drawings with a DXF library of another maker: make_samples.py FOLDER, one file for each release."""

import sys
from pathlib import Path

import ezdxf

RELEASES = ["R12", "R2000", "R2004", "R2007", "R2010", "R2013", "R2018"]


def add_tables(doc):
    layer = doc.layers.add("WALLS", color=3, linetype="DASHED")
    layer.off()
    frozen = doc.layers.add("Möbel", color=14)
    frozen.freeze()
    frozen.lock()
    doc.header.custom_vars.append("Client", "A")
    doc.header.custom_vars.append("Scale", "B")
    doc.styles.add("ROMAN", font="romans.shx").dxf.width = 0.8


def add_block(doc):
    door = doc.blocks.new("DOOR", base_point=(1, 1))
    door.add_line((1, 1), (2, 1), dxfattribs={"color": 0})
    door.add_arc((1, 1), 1, 0, 90)
    door.add_attdef("NUMBER", (0, 0), "0", height=0.2, dxfattribs={"prompt": "Door number"})
    outer = doc.blocks.new("PAIR")
    outer.add_blockref("DOOR", (0, 0))
    outer.add_blockref("DOOR", (5, 0), dxfattribs={"xscale": -1})


def add_plain(msp):
    msp.add_line((1, 2, 3), (4, 5.5, -6), dxfattribs={"layer": "WALLS", "color": 5, "thickness": 0.25})
    msp.add_point((7, 8))
    msp.add_circle((10, 20), 2.5, dxfattribs={"extrusion": (0, 0, -1)})
    msp.add_arc((0, 0), 4, 30, 300, dxfattribs={"linetype": "DASHED", "ltscale": 2})
    msp.add_solid([(0, 0), (1, 0), (0, 1), (1, 1)], dxfattribs={"color": 1})
    msp.add_trace([(5, 0), (6, 0), (5, 1), (6, 1)])
    msp.add_3dface([(0, 0, 0), (1, 0, 0), (1, 1, 1), (0, 1, 1)])
    msp.add_text("Größe %%c40 ± 5", dxfattribs={"height": 2.5, "rotation": 15, "style": "ROMAN"}).set_pos(
        (3, 4), align="MIDDLE_CENTER"
    )
    msp.add_polyline2d([(0, 0, 0.5), (4, 0, 0), (4, 3, -1)], format="xyb", close=True)
    msp.add_polyline3d([(0, 0, 1), (1, 1, 2), (2, 0, 3)])
    msp.add_linear_dim(base=(0, 5), p1=(0, 0), p2=(3, 0)).render()
    msp.add_radius_dim(center=(0, 0), radius=2, angle=30).render()
    mesh = msp.add_polymesh((2, 3))
    mesh.set_mesh_vertex((1, 2), (9, 9, 9))
    msp.add_polyface().append_faces([[(0, 0, 0), (1, 0, 0), (1, 1, 0)]])
    reference = msp.add_blockref(
        "PAIR", (100, 50), dxfattribs={"rotation": 30, "xscale": 2, "yscale": 3, "row_count": 2, "column_count": 3,
                                        "row_spacing": 20, "column_spacing": 10}
    )
    reference.add_attrib("NUMBER", "42", (101, 51), dxfattribs={"height": 1.5})


def add_newer(doc, msp):
    msp.add_lwpolyline([(0, 0, 0.1, 0.2, 1), (10, 0, 0, 0, 0), (10, 10, 0, 0, -0.5)], format="xyseb", close=True)
    constant = msp.add_lwpolyline([(1, 1), (2, 2)], dxfattribs={"const_width": 0.7, "elevation": 5})
    constant.set_xdata("ACAD", [(1000, "kept"), (1070, 7)])
    msp.add_ellipse((1, 2), (3, 0), 0.5, 0, 3)
    msp.add_mtext("{\\fArial|b1;bold}\\Pnext " + "long " * 120, dxfattribs={"char_height": 3, "attachment_point": 5,
                                                                            "insert": (6, 7), "rotation": 90})
    msp.add_spline([(0, 0), (1, 2), (3, 1)])
    hatch = msp.add_hatch(color=2)
    hatch.paths.add_polyline_path([(0, 0), (10, 0), (10, 10)], is_closed=True)
    add_filled(msp)
    msp.add_ray((1, 2, 3), (0, 1, 0))
    msp.add_xline((4, 5), (1, 1))
    rational = msp.add_rational_spline([(0, 0), (1, 2), (3, 1), (4, 4)], weights=[1, 2, 3, 1])
    rational.dxf.start_tangent = (1, 0, 0)
    msp.add_leader([(0, 0), (5, 5), (9, 5)], override={"dimasz": 0.7})
    record = doc.rootdict.add_xrecord("HV_RECORD")
    record.reset([(1, "first"), (100, "not a marker"), (102, "{odd"), (330, "FF"), (90, 4711), (1, "last")])
    custom = doc.rootdict.get_required_dict("HV_CUSTOM")
    custom.add_dict_var("SETTING", "17")
    doc.header["$USERR1"] = 2.75
    add_image(doc, msp)


def add_filled(msp):
    """Hatches with every kind of boundary and filling."""
    edged = msp.add_hatch(color=3, dxfattribs={"elevation": (0, 0, 2), "hatch_style": 1})
    edges = edged.paths.add_edge_path(flags=1)
    edges.add_line((0, 0), (10, 0))
    edges.add_arc((10, 5), 5, -90, 90, ccw=True)
    edges.add_ellipse((5, 10), (5, 0), 0.5, 0, 180, ccw=False)
    edges.add_spline(control_points=[(0, 10), (-3, 8), (-3, 3), (0, 0)], weights=[1, 2, 2, 1], degree=3,
                     knot_values=[0, 0, 0, 0, 1, 1, 1, 1])
    edges.add_spline(fit_points=[(0, 0), (1, 1), (2, 0)], control_points=[(0, 0), (1, 2), (2, 0)], degree=2,
                     knot_values=[0, 0, 0, 1, 1, 1], start_tangent=(1, 1), end_tangent=(1, -1))
    edged.paths.add_polyline_path([(2, 2, 0.5), (4, 2), (4, 4)], is_closed=True, flags=16)
    edged.set_seed_points([(1, 1), (2, 3)])
    patterned = msp.add_hatch()
    patterned.paths.add_polyline_path([(0, 0), (10, 0), (10, 10)], is_closed=True)
    patterned.set_pattern_fill("ANSI33", scale=2, angle=20)
    patterned.dxf.pixel_size = 0.25
    patterned.associate(patterned.paths[0], [msp.add_lwpolyline([(0, 0), (10, 0), (10, 10)], close=True)])


def add_image(doc, msp):
    definition = doc.add_image_def(filename="C:\\scans\\plan.tif", size_in_pixel=(4000, 3000), name="plan")
    image = msp.add_image(definition, insert=(100, 200), size_in_units=(400, 300), rotation=0)
    image.dxf.flags = 3 | 8
    image.dxf.brightness = 40
    image.dxf.contrast = 60
    image.dxf.fade = 10
    image.set_boundary_path([(10, 20), (110, 20), (60, 90)])
    image.dxf.flags |= 4
    doc.set_raster_variables(frame=0, quality=1, units="mm")


def make(release, folder):
    doc = ezdxf.new(release, setup=["linetypes"])
    doc.header["$TILEMODE"] = 1
    add_tables(doc)
    add_block(doc)
    msp = doc.modelspace()
    add_plain(msp)
    if release != "R12":
        add_newer(doc, msp)
    sheet = doc.layout("Layout1")
    sheet.add_line((0, 0), (297, 210))
    if release != "R12":
        window = sheet.add_viewport((100, 100), (80, 40), view_center_point=(5, 6), view_height=12)
        window.dxf.view_twist_angle = 30
        window.frozen_layers = ["WALLS"]
    doc.saveas(folder / f"{release}.dxf")
    doc.saveas(folder / f"{release}-binary.dxf", fmt="bin")


if __name__ == "__main__":
    for each in RELEASES:
        make(each, Path(sys.argv[1]))
