"""make_twins.py FOLDER: curves and hatches with another maker's idea of where they run.

Writes twins.dxf, and twins.txt with a line for each piece: "point HANDLE X Y" for a point that lies on the entity's curve,
"dash HANDLE X Y X Y" for a dash of a hatch's pattern, "area HANDLE A" for the size of a hatch's solid area."""

import math
import sys
from pathlib import Path

import ezdxf
from ezdxf import path as curves
from ezdxf.render.hatching import hatch_entity

folder = Path(sys.argv[1])
doc = ezdxf.new("R2010")
msp = doc.modelspace()
lines = []


def points_of(entity, curve, count=200):
    for point in curve.approximate(count):
        lines.append(f"point {entity.dxf.handle} {point.x!r} {point.y!r}")


# Splines: open, with weights, closed with its first points again at the end, with knots that repeat, of other degrees.
zigzag = [(0, 0), (10, 30), (25, -10), (40, 20), (55, 5), (70, 40)]
for degree in (1, 2, 3, 5):
    spline = msp.add_open_spline(zigzag, degree=degree)
    points_of(spline, spline.construction_tool())
spline = msp.add_rational_spline(zigzag, weights=[1, 5, 0.2, 3, 1, 2])
points_of(spline, spline.construction_tool())
spline = msp.add_spline()
spline.set_closed([(x, y, 0) for x, y in zigzag])
points_of(spline, spline.construction_tool())
# A circle of 10 about (100, 100): two half turns as rational curves of the second degree.
half = math.sqrt(0.5)
corners = [(110, 100), (110, 110), (100, 110), (90, 110), (90, 100), (90, 90), (100, 90), (110, 90), (110, 100)]
circle = msp.add_rational_spline(corners, [1, half] * 4 + [1], degree=2, knots=[0, 0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 4])
for step in range(100):
    angle = step * math.tau / 100
    lines.append(f"point {circle.dxf.handle} {100 + 10 * math.cos(angle)!r} {100 + 10 * math.sin(angle)!r}")

# Hatches: every kind of edge, and an island.
def edged(hatch):
    edges = hatch.paths.add_edge_path()
    edges.add_line((0, 100), (20, 100))
    edges.add_arc((20, 110), 10, -90, 90, ccw=True)
    edges.add_ellipse((10, 120), (10, 0), 0.5, 0, 180, ccw=True)
    edges.add_spline(control_points=[(0, 120), (-8, 115), (5, 108), (0, 100)], degree=3, knot_values=[0, 0, 0, 0, 1, 1, 1, 1])
    hatch.paths.add_polyline_path([(5, 103, 0.4), (12, 103), (12, 112)], is_closed=True, flags=16)
    return hatch


def clockwise(hatch):
    edges = hatch.paths.add_edge_path()
    edges.add_line((0, 140), (20, 140))
    edges.add_arc((10, 140), 10, 30, 180, ccw=False)
    edges.add_ellipse((20, 150), (0, 12), 0.4, 20, 300, ccw=False)
    return hatch


for make in (edged, clockwise):
    solid = make(msp.add_hatch())
    area = 0
    for each in curves.from_hatch(solid):
        vertices = list(each.flattening(0.0005))
        size = sum(a.x * b.y - a.y * b.x for a, b in zip(vertices, vertices[1:] + vertices[:1])) / 2
        area += abs(size) if area == 0 else -abs(size)
    if make is edged:
        lines.append(f"area {solid.dxf.handle} {area!r}")
    for each in curves.from_hatch(solid):
        for vertex in each.flattening(0.0005):
            lines.append(f"point {solid.dxf.handle} {vertex.x!r} {vertex.y!r}")

for name, scale, angle in (("ANSI31", 1, 0), ("ANSI33", 2, 20), ("DASH", 3, 45)):
    hatch = msp.add_hatch()
    hatch.paths.add_polyline_path([(200.3, 0.1), (260.7, 3.3), (241.2, 50.9), (199.1, 30.7)], is_closed=True)
    hatch.paths.add_polyline_path([(220.3, 10.1), (240.7, 12.3), (231.2, 30.9)], is_closed=True, flags=16)
    hatch.set_pattern_fill(name, scale=scale, angle=angle)
    for line in hatch_entity(hatch):
        lines.append(f"dash {hatch.dxf.handle} " + " ".join(repr(x) for v in line for x in (v.x, v.y)))

doc.saveas(folder / "twins.dxf")
(folder / "twins.txt").write_text("\n".join(lines) + "\n")
