#!/usr/bin/env python3
"""Drawings of another library, and whether they were burnt into their rasters as that library sees them.

burnt_samples.py make FOLDER: for each sample NAME.dxf, NAME.pens, the raster NAME.tif, all paper, and NAME.corners.
burnt_samples.py check FOLDER: compares the rasters, now burnt, with the drawings. The library gives the curves; each
pixel is then judged by its distance from them.
"""
import math
import subprocess
import sys
from pathlib import Path

import ezdxf
from ezdxf import path as paths
from ezdxf.math import Matrix44, Vec3
from ezdxf.render import hatching
from ezdxf.render.trace import TraceBuilder

DPI = 254  # a pen's hundredths of a millimetre are tenths of a pixel
SLACK = 0.5  # pixels from the edge of what is to be ink, within which a pixel may be either


def lines(space):
    space.add_line((5, 5), (95, 20), dxfattribs={"color": 1})
    space.add_line((50, 90), (50, 10), dxfattribs={"color": 2})
    space.add_line((-40, 60), (140, 61), dxfattribs={"color": 3})
    space.add_lwpolyline([(10, 10), (30, 70), (35, 12)], close=True, dxfattribs={"color": 4})
    space.add_lwpolyline([(60, 20, 1), (90, 25, -0.4), (85, 60, 0), (62, 62, 0.3)], format="xyb", close=True)
    space.add_polyline2d([(15, 80, 0.5), (40, 80, -1.5), (60, 95, 0)], format="xyb", dxfattribs={"color": 5})
    space.add_polyline3d([(2, 2, 0), (20, 90, 30), (90, 97, -4)], dxfattribs={"color": 6})
    space.add_point((70, 8), dxfattribs={"color": 1})


def curves(space):
    space.add_circle((30, 30), 22, dxfattribs={"color": 1})
    space.add_circle((60, 40), 200, dxfattribs={"color": 2})
    space.add_circle((70, 75), 12, dxfattribs={"color": 3, "extrusion": (0, 0, -1)})
    space.add_arc((40, 60), 30, 20, 250, dxfattribs={"color": 4})
    space.add_arc((-40, 60), 30, 300, 60, dxfattribs={"color": 5, "extrusion": (0, 0, -1)})
    space.add_ellipse((50, 50), (40, 15), 0.3, dxfattribs={"color": 6})
    space.add_ellipse((60, 30), (-5, 25), 0.7, math.radians(30), math.radians(290))
    space.add_open_spline([(5, 5), (20, 90), (45, 10), (70, 95), (95, 5)], degree=3, dxfattribs={"color": 2})
    space.add_open_spline([(70, 10), (95, 15), (90, 35), (75, 30)], degree=2, dxfattribs={"color": 3})
    space.add_rational_spline([(10, 95), (50, 60), (90, 95)], [1, 3, 1], degree=2, dxfattribs={"color": 1})


def areas(space):
    space.add_solid([(5, 5), (30, 8), (6, 25), (25, 22)])
    space.add_trace([(40, 5), (60, 5), (60, 9), (40, 9)])
    hatch = space.add_hatch(color=3)
    hatch.paths.add_polyline_path([(10, 40), (50, 35), (45, 80), (8, 75)], is_closed=True)
    hatch.paths.add_polyline_path([(20, 50, 1), (35, 50, 1)], is_closed=True, flags=16)
    hatch.paths.add_polyline_path([(24, 48), (30, 48), (30, 52), (24, 52)], is_closed=True, flags=0)
    hatch = space.add_hatch(color=4)
    edges = hatch.paths.add_edge_path()
    edges.add_line((60, 40), (90, 40))
    edges.add_arc((90, 55), 15, -90, 90)
    edges.add_line((90, 70), (60, 70))
    edges.add_ellipse((60, 55), (0, 15), 0.4, 0, 180)
    inner = hatch.paths.add_edge_path(flags=16)
    inner.add_arc((80, 55), 8, 0, 360, ccw=False)
    space.add_lwpolyline([(60, 85), (90, 92)], dxfattribs={"color": 1})


def blocks(space):
    document = space.doc
    document.layers.add("plain", color=2)
    document.layers.add("frozen").freeze()
    document.layers.add("off").off()
    inner = document.blocks.new("inner", base_point=(1, 1))
    inner.add_circle((5, 5), 4, dxfattribs={"color": 0})
    inner.add_line((0, 0), (10, 3), dxfattribs={"layer": "plain"})
    inner.add_lwpolyline([(0, 0, 0.6), (8, 8, 0)], format="xyb", dxfattribs={"color": 4})
    inner.add_solid([(6, 0), (9, 0), (6, 3), (9, 2)])
    outer = document.blocks.new("outer")
    outer.add_blockref("inner", (3, 2), dxfattribs={"rotation": 30, "color": 0})
    outer.add_blockref("inner", (20, 5), dxfattribs={"xscale": -1.5, "yscale": 0.5, "color": 5})
    outer.add_ellipse((10, 15), (6, 3), 0.5)
    outer.add_line((0, 0), (30, 30), dxfattribs={"layer": "frozen"})
    space.add_blockref("outer", (5, 5), dxfattribs={"color": 1})
    space.add_blockref("outer", (95, 40), dxfattribs={"xscale": -2, "yscale": 2, "rotation": 20, "color": 3})
    space.add_blockref("outer", (30, 95), dxfattribs={"xscale": 1, "yscale": -2, "layer": "plain"})
    space.add_blockref("inner", (60, 10), dxfattribs={"row_count": 2, "column_count": 3, "row_spacing": 14,
                                                      "column_spacing": 12, "rotation": 10, "color": 6})
    space.add_line((0, 100), (100, 0), dxfattribs={"layer": "off"})


def shapes(space):
    space.add_lwpolyline([(8, 70), (30, 92), (40, 72)], dxfattribs={"const_width": 4, "color": 2})
    space.add_lwpolyline([(50, 75, 1, 5, 0), (70, 90, 5, 2, 0.5), (92, 78, 2, 2, 0)], format="xyseb", dxfattribs={"color": 3})
    space.add_ray((60, 20), (1, 0.3), dxfattribs={"color": 1})
    space.add_xline((20, 5), (-2, 1), dxfattribs={"color": 4})
    space.add_3dface([(5, 40), (25, 42), (22, 60), (6, 58)], dxfattribs={"color": 5})
    hidden = space.add_3dface([(30, 40), (50, 42), (47, 60), (31, 58)], dxfattribs={"color": 5})
    hidden.dxf.invisible = 0b0101
    mesh = space.add_polymesh((3, 3), dxfattribs={"color": 6})
    for row in range(3):
        for column in range(3):
            mesh.set_mesh_vertex((row, column), (60 + 10 * row + column, 35 + 9 * column - row, row * column))
    space.add_leader([(55, 12), (70, 25), (85, 25)], dxfattribs={"color": 1, "has_arrowhead": 0})


def patterns(space):
    for name, scale, angle, corner in (("ANSI31", 1.5, 0, (5, 5)), ("ANSI37", 1.4, 20, (55, 5)), ("ANSI33", 1.3, 0, (5, 55)),
                                       ("NET", 1.9, 33, (55, 55))):
        x, y = corner
        hatch = space.add_hatch(color=2)
        hatch.set_pattern_fill(name, scale=scale, angle=angle)
        hatch.paths.add_polyline_path([(x, y), (x + 40, y + 4), (x + 36, y + 40), (x + 3, y + 36)], is_closed=True)
        hatch.paths.add_polyline_path([(x + 12, y + 20), (x + 20, y + 11), (x + 28, y + 20)], is_closed=True, flags=16)


# The pens of the indices 1 to 7, and all others, in pixels; the corners; the raster's size.
SAMPLES = {
    "lines": (lines, [20, 3, 7, 5, 2, 9, 4], (0, 0, 100, 100), (400, 400)),
    "lines turned over": (lines, [3, 3, 3, 3, 3, 3, 3], (100, 0, 0, 100), (370, 410)),
    "lines upside down and stretched": (lines, [8, 6, 3, 2, 4, 5, 3], (0, 100, 100, 0), (300, 510)),
    "curves": (curves, [4, 3, 9, 5, 2, 12, 4], (0, 0, 100, 100), (420, 420)),
    "curves from near": (curves, [4, 3, 9, 5, 2, 12, 4], (20, 20, 60, 50), (600, 450)),
    "areas": (areas, [3, 3, 3, 3, 3, 3, 3], (0, 0, 100, 100), (380, 380)),
    "areas turned over": (areas, [3, 3, 3, 3, 3, 3, 3], (100, 100, 0, 0), (500, 280)),
    "shapes": (shapes, [3, 3, 5, 4, 2, 3, 4], (0, 0, 100, 100), (350, 350)),
    "patterns": (patterns, [3, 2, 5, 4, 2, 3, 4], (0, 0, 100, 100), (300, 300)),
    "patterns turned over": (patterns, [3, 3, 5, 4, 2, 3, 4], (100, 0, 0, 100), (260, 320)),
    "blocks": (blocks, [3, 5, 2, 7, 9, 4, 6], (0, 0, 100, 100), (500, 500)),
}


def make(folder):
    for name, (draw, pens, corners, size) in SAMPLES.items():
        document = ezdxf.new("R2000")
        draw(document.modelspace())
        document.saveas(folder / f"{name}.dxf")
        (folder / f"{name}.pens").write_text("\r\n".join(str(pen * 10) for pen in pens))
        (folder / f"{name}.corners").write_text(" ".join(map(str, corners)))
        subprocess.run(["convert", "-size", "%dx%d" % size, "xc:white", "-monochrome", "-units", "PixelsPerInch",
                        "-density", str(DPI), "-compress", "Group4", folder / f"{name}.tif"], check=True)


def burnt(path):
    """The raster's rows, 1 for ink, by another program."""
    data = subprocess.run(["convert", path, "-compress", "none", "pbm:-"], check=True, capture_output=True).stdout
    words = data.split()
    width, height = int(words[1]), int(words[2])
    digits = b"".join(words[3:])
    assert words[0] == b"P1" and len(digits) == width * height
    return [[digit == 49 for digit in digits[y * width:(y + 1) * width]] for y in range(height)]


def shown_entities(space, matrix=Matrix44(), by_block=7, of_reference="0"):
    """What is to be seen, with the map to the drawing and its colour, out of all blocks. In a block the layer 0 stands
    for the layer of the reference."""
    for entity in space:
        name = of_reference if entity.dxf.layer == "0" else entity.dxf.layer
        layer = entity.doc.layers.get(name)
        if layer.is_frozen() or (layer.is_off() and entity.dxftype() != "INSERT"):
            continue
        color = entity.dxf.color
        color = by_block if color == 0 else abs(layer.dxf.color) if color == 256 else color
        if entity.dxftype() == "INSERT":
            for each in entity.multi_insert() if entity.mcount > 1 else [entity]:
                yield from shown_entities(entity.block(), each.matrix44() * matrix, color, name)
        else:
            yield entity, matrix, color


class Judge:
    """Which pixels have to be ink and which may be."""

    def __init__(self, width, height):
        self.width, self.height = width, height
        self.must = [[False] * width for _ in range(height)]
        self.may = [[False] * width for _ in range(height)]

    def pixels_around(self, a, b, reach):
        left = max(0, math.floor(min(a[0], b[0]) - reach))
        right = min(self.width, math.ceil(max(a[0], b[0]) + reach))
        top = max(0, math.floor(min(a[1], b[1]) - reach))
        bottom = min(self.height, math.ceil(max(a[1], b[1]) + reach))
        dx, dy = b[0] - a[0], b[1] - a[1]
        square = dx * dx + dy * dy
        for y in range(top, bottom):
            for x in range(left, right):
                px, py = x + 0.5 - a[0], y + 0.5 - a[1]
                along = min(1, max(0, (px * dx + py * dy) / square)) if square else 0
                yield x, y, math.hypot(px - along * dx, py - along * dy)

    def stroke(self, points, width):
        for a, b in zip(points, points[1:] or points):
            for x, y, distance in self.pixels_around(a, b, width / 2 + 1):
                self.must[y][x] |= distance < width / 2 - SLACK
                self.may[y][x] |= distance < width / 2 + SLACK

    def area(self, contours):
        near = set()
        sides = [side for contour in contours for side in zip(contour, contour[1:] + contour[:1])]
        for a, b in sides:
            near.update((x, y) for x, y, distance in self.pixels_around(a, b, 1) if distance < 0.75)
        for x, y in near:
            self.may[y][x] = True
        for y in range(self.height):
            middle = y + 0.5
            crossings = [a[0] + (middle - a[1]) / (b[1] - a[1]) * (b[0] - a[0]) for a, b in sides
                         if (a[1] > middle) != (b[1] > middle)]
            for x in range(self.width):
                if sum(crossing > x + 0.5 for crossing in crossings) % 2:
                    self.may[y][x] = True
                    self.must[y][x] |= (x, y) not in near


def judge_drawing(path, pens, corners, size):
    x1, y1, x2, y2 = corners
    judge = Judge(*size)
    fineness = 0.02 * min(abs(x2 - x1) / size[0], abs(y2 - y1) / size[1])

    def pixels(points):
        return [((p.x - x1) / (x2 - x1) * size[0], (p.y - y2) / (y1 - y2) * size[1]) for p in points]

    def flattened(curve, matrix):
        return pixels(curve.transform(matrix).flattening(fineness, segments=32))

    def judge_face(face):
        corners = face.wcs_vertices()
        hidden = face.dxf.get("invisible", 0)
        for number, corner in enumerate(corners):
            if not hidden & (1 << number):
                judge.stroke(pixels(matrix.transform_vertices([corner, corners[(number + 1) % len(corners)]])), pen)

    for entity, matrix, color in shown_entities(ezdxf.readfile(path).modelspace()):
        kind = entity.dxftype()
        pen = pens[min(color, len(pens)) - 1]
        if kind in ("SOLID", "TRACE"):
            judge.area([pixels(matrix.transform_vertices(entity.wcs_vertices()))])
        elif kind == "HATCH" and not entity.has_solid_fill:
            for a, b in hatching.hatch_entity(entity):
                judge.stroke(pixels(matrix.transform_vertices([a, b])), pen)
        elif kind == "LWPOLYLINE" and entity.has_width:
            for face in TraceBuilder.from_polyline(entity, segments=256).faces():
                judge.area([pixels(matrix.transform_vertices(Vec3.generate(face)))])
        elif kind in ("RAY", "XLINE"):
            way = entity.dxf.unit_vector * 1000
            start = entity.dxf.start if kind == "RAY" else entity.dxf.start - way
            judge.stroke(pixels(matrix.transform_vertices([start, entity.dxf.start + way])), pen)
        elif kind == "3DFACE":
            judge_face(entity)
        elif kind == "POLYLINE" and entity.is_polygon_mesh:
            for face in entity.virtual_entities():
                judge_face(face)
        elif kind == "LEADER":
            judge.stroke(pixels(matrix.transform_vertices(entity.vertices)), pen)
        elif kind == "HATCH":
            judge.area([flattened(each, matrix) for each in paths.from_hatch(entity)])
        elif kind == "POINT":
            judge.stroke(pixels([matrix.transform(entity.dxf.location)]), pen)
        else:
            judge.stroke(flattened(paths.make_path(entity), matrix), pen)
    return judge


def check(folder):
    wrong = False
    for name, (_, pens, corners, size) in SAMPLES.items():
        raster = burnt(folder / f"{name}.tif")
        judge = judge_drawing(folder / f"{name}.dxf", pens, corners, size)
        missing = [(x, y) for y, row in enumerate(judge.must) for x, must in enumerate(row) if must and not raster[y][x]]
        extra = [(x, y) for y, row in enumerate(raster) for x, ink in enumerate(row) if ink and not judge.may[y][x]]
        expected = sum(map(sum, judge.must))
        print(f"{name}: {expected} pixels must be ink, {len(missing)} are not: {missing[:5]}; "
              f"{len(extra)} must not be and are: {extra[:5]}")
        wrong |= bool(missing or extra) or expected < 1000
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(make(Path(sys.argv[2])) if sys.argv[1] == "make" else check(Path(sys.argv[2])))
