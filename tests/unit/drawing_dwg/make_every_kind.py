"""make_every_kind.py FILE.dxf: what another maker's library can make for the release 2000 beyond the usual entities."""

import sys

import ezdxf

# A model as the modeller writes it; the third line is longer than a group may be.
MODEL = ["400 0 1 0 ", "7 unknown 5 ASM^1 3 now 0 ", "body $-1 $-1 " + "0.25 " * 80 + "#", "End-of-ACIS-data "]


def add_dimensions(msp):
    msp.add_aligned_dim(p1=(0, 0), p2=(3, 4), distance=1).render()
    msp.add_angular_dim_2l(base=(2, 2), line1=((0, 0), (4, 0)), line2=((0, 0), (3, 3))).render()
    msp.add_angular_dim_3p(base=(2, 2), center=(0, 0), p1=(4, 0), p2=(3, 3)).render()
    msp.add_diameter_dim(center=(0, 0), radius=3, angle=45).render()
    msp.add_ordinate_x_dim(feature_location=(3, 2), offset=(0, 2)).render()
    msp.new_entity("TOLERANCE", {"insert": (5, 5), "content": "{\\Fgdt;j}%%v0.5", "x_axis_vector": (1, 0)})


def add_multilines(doc, msp):
    style = doc.mline_styles.new("WALL")
    style.elements.append(0.5, color=1, linetype="CONTINUOUS")
    style.elements.append(0, color=2)
    style.elements.append(-0.5, color=3, linetype="DASHED")
    msp.add_mline([(0, 0), (10, 0), (10, 7, 3)], dxfattribs={"style_name": "WALL", "scale_factor": 2.5, "color": 4})
    msp.add_mline([(0, 0), (5, 5), (9, 0)], close=True, dxfattribs={"justification": 2})


def add_bodies(msp):
    for add in (msp.add_3dsolid, msp.add_region, msp.add_body):
        add().sat = MODEL
    with msp.add_mesh().edit_data() as mesh:
        mesh.vertices = [(0, 0, 0), (1, 0, 0), (1, 1, 0.5), (0, 1, 0)]
        mesh.faces = [(0, 1, 2), (0, 2, 3)]
        mesh.edges = [(0, 1), (1, 2)]
        mesh.edge_crease_values = [1.0, 0.5]


def add_underlays(doc, msp):
    for kind in ("pdf", "dwf", "dgn"):
        definition = doc.add_underlay_def(f"sheet.{kind}", kind, name="1")
        underlay = msp.add_underlay(definition, insert=(3, 4), scale=(2, 2, 1), rotation=30)
        underlay.set_boundary_path([(0, 0), (5, 0), (5, 5)])


def add_others(doc, msp):
    msp.add_wipeout([(0, 0), (4, 0), (4, 3)])
    doc.set_wipeout_variables(frame=1)
    msp.add_blockref("TILE", (1, 1), dxfattribs={"row_count": 2, "column_count": 3, "row_spacing": 4, "column_spacing": 5})
    doc.groups.new("PAIR").extend([msp.add_line((0, 0), (1, 1)), msp.add_point((2, 2))])
    msp.add_arrow_blockref("DOT", (1, 1))
    msp.add_open_spline([(0, 0), (1, 2), (3, 1), (4, 4)])
    msp.add_cad_spline_control_frame([(0, 0), (1, 2), (3, 1)])
    msp.add_mtext_static_columns(["one", "two"], width=10, gutter_width=1, height=5)
    msp.add_mtext_dynamic_manual_height_columns("long text " * 20, width=10, gutter_width=1, heights=[5, 6])
    text = msp.add_text("tagged")
    text.set_xdata("ACAD", [(1000, "word"), (1010, (1, 2, 3)), (1040, 2.5), (1070, -7), (1071, 70000), (1005, "A1")])
    text.new_extension_dict().add_dictionary_var("NOTE", "kept")
    doc.views.new("CORNER", dxfattribs={"center": (3, 4), "height": 5, "width": 6})
    doc.ucs.new("TILTED", dxfattribs={"origin": (1, 2, 3), "xaxis": (0, 1, 0), "yaxis": (-1, 0, 0)})


# Kinds that the binary form tells in a way that nobody here knows.
def add_without_place(doc, msp):
    doc.styles.get_shx("ltypeshp.shx")
    msp.add_shape("BOX", (1, 2))
    msp.add_arc_dim_3p(base=(2, 2), center=(0, 0), p1=(4, 0), p2=(3, 3)).render()
    msp.add_mpolygon(color=2).paths.add_polyline_path([(0, 0), (4, 0), (4, 4)])
    msp.add_helix(radius=2, pitch=1, turns=3)


def main():
    doc = ezdxf.new("R2000", setup=["linetypes"])
    doc.blocks.new("TILE").add_circle((0, 0), 1)
    msp = doc.modelspace()
    add_dimensions(msp)
    add_multilines(doc, msp)
    add_bodies(msp)
    add_underlays(doc, msp)
    add_others(doc, msp)
    add_without_place(doc, msp)
    doc.saveas(sys.argv[1])


if __name__ == "__main__":
    main()
