#!/usr/bin/python3
"""Makes a drawing to burn into the sheet of bench/prepare: 20,000 entities of mixed kinds on an A0 in millimetres.

make_drawing.py DRAWING.dxf
"""
import math
import random
import sys

import ezdxf

WIDTH, HEIGHT, ENTITIES = 841, 1189, 20_000
# How many of a hundred entities are of each kind.
SHARES = {"line": 35, "polyline": 15, "bulged": 10, "circle": 8, "arc": 8, "ellipse": 4, "spline": 4, "hatch": 3,
          "text": 8, "reference": 4, "solid": 1}


class Sheet:
    def __init__(self):
        self.random = random.Random(1)
        self.document = ezdxf.new("R2000", setup=True)
        self.space = self.document.modelspace()
        for index, linetype in enumerate(["CONTINUOUS", "CONTINUOUS", "DASHED", "DASHDOT", "CENTER"]):
            self.document.layers.add(f"layer {index}", color=index + 1, linetype=linetype)
        self.document.header["$LTSCALE"] = 10
        door = self.document.blocks.new("door")
        door.add_line((0, 0), (0, 9))
        door.add_arc((0, 0), 9, 0, 90)
        door.add_lwpolyline([(0, 0), (9, 0), (9, -1), (0, -1)], close=True)
        window = self.document.blocks.new("window")
        window.add_lwpolyline([(0, 0), (15, 0), (15, 3), (0, 3)], close=True)
        window.add_blockref("door", (3, 3), dxfattribs={"xscale": 0.5, "yscale": 0.5})
        window.add_circle((12, 5), 2)

    def attributes(self):
        return {"layer": f"layer {self.random.randrange(5)}"}

    def point(self):
        return self.random.uniform(0, WIDTH), self.random.uniform(0, HEIGHT)

    def near(self, point, reach):
        return tuple(each + self.random.uniform(-reach, reach) for each in point)

    # Most lines of a plan are short, some run across the sheet.
    def reach(self):
        return self.random.choice([5, 10, 20, 20, 40, 40, 80, 400])

    def walk(self, count, reach):
        points = [self.point()]
        while len(points) < count:
            points.append(self.near(points[-1], reach))
        return points

    def line(self):
        start = self.point()
        self.space.add_line(start, self.near(start, self.reach()), dxfattribs=self.attributes())

    def polyline(self):
        self.space.add_lwpolyline(self.walk(self.random.randrange(3, 30), 15), dxfattribs=self.attributes())

    def bulged(self):
        points = [(x, y, self.random.uniform(-1, 1)) for x, y in self.walk(self.random.randrange(3, 12), 12)]
        self.space.add_lwpolyline(points, format="xyb", close=True, dxfattribs=self.attributes())

    def circle(self):
        self.space.add_circle(self.point(), self.random.uniform(1, 25), dxfattribs=self.attributes())

    def arc(self):
        start = self.random.uniform(0, 360)
        self.space.add_arc(self.point(), self.random.uniform(2, 60), start, start + self.random.uniform(10, 200),
                           dxfattribs=self.attributes())

    def ellipse(self):
        angle = self.random.uniform(0, 2 * math.pi)
        length = self.random.uniform(3, 30)
        self.space.add_ellipse(self.point(), (length * math.cos(angle), length * math.sin(angle)),
                               self.random.uniform(0.2, 1), dxfattribs=self.attributes())

    def spline(self):
        self.space.add_open_spline(self.walk(self.random.randrange(4, 12), 15), dxfattribs=self.attributes())

    def hatch(self):
        x, y = self.point()
        size = self.random.uniform(2, 15)
        hatch = self.space.add_hatch(dxfattribs=self.attributes())
        if self.random.random() < 0.5:
            hatch.set_pattern_fill("ANSI31", scale=1)
        hatch.paths.add_polyline_path([(x, y), (x + size, y), (x + size, y + size), (x, y + size, 0.5)])
        hatch.paths.add_polyline_path([(x + size / 3, y + size / 3), (x + size / 2, y + size / 3),
                                       (x + size / 2, y + size / 2)], flags=16)

    def text(self):
        words = " ".join(self.random.choice(["door", "1,250", "R 30", "%%c12", "section A-A"]) for _ in range(3))
        self.space.add_text(words, height=self.random.choice([2.5, 3.5, 5]),
                            dxfattribs={"insert": self.point(), "rotation": self.random.choice([0, 0, 90, 30]),
                                        **self.attributes()})

    def reference(self):
        self.space.add_blockref(self.random.choice(["door", "window"]), self.point(),
                                dxfattribs={"rotation": self.random.uniform(0, 360),
                                            "xscale": self.random.choice([1, -1, 1.5]), **self.attributes()})

    def solid(self):
        x, y = self.point()
        self.space.add_solid([(x, y), (x + 4, y), (x, y + 1), (x + 4, y + 1)], dxfattribs=self.attributes())


def main():
    sheet = Sheet()
    kinds = [kind for kind, share in SHARES.items() for _ in range(ENTITIES * share // 100)]
    sheet.random.shuffle(kinds)
    for kind in kinds:
        getattr(sheet, kind)()
    sheet.document.saveas(sys.argv[1])
    print(f"{len(kinds)} entities: {', '.join(f'{ENTITIES * share // 100} {kind}' for kind, share in SHARES.items())}")


main()
