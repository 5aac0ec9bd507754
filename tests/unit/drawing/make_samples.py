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
    record = doc.rootdict.add_xrecord("HV_RECORD")
    record.reset([(1, "first"), (100, "not a marker"), (102, "{odd"), (330, "FF"), (90, 4711), (1, "last")])
    custom = doc.rootdict.get_required_dict("HV_CUSTOM")
    custom.add_dict_var("SETTING", "17")
    doc.header["$USERR1"] = 2.75
    add_image(doc, msp)


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
    doc.layout("Layout1").add_line((0, 0), (297, 210))
    doc.saveas(folder / f"{release}.dxf")


if __name__ == "__main__":
    for each in RELEASES:
        make(each, Path(sys.argv[1]))
