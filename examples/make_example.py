#!/usr/bin/env python3
"""Draws the example: a site plan, "scanned" into site-plan.tif, and the drawing site-plan.dxf that holds it.

The raster imitates an old plan fed through a large scanner: A3 at 300 dpi, a little skew, faded strokes,
specks, pinholes and the dark edge of the scanner's lid. The drawing places it at true size in metres
(plan scale 1:500) and adds the new design over it as vector entities on layers.

Needs Debian's python3-pil, python3-numpy, python3-ezdxf and fonts-dejavu-core; run it only to change the example.
"""
import math
import random
from pathlib import Path

import ezdxf
import numpy
from PIL import Image, ImageDraw, ImageFilter, ImageFont

HERE = Path(__file__).parent
DPI = 300
PAGE_MM = (420, 297)
OVERSAMPLING = 2
PIXELS_PER_MM = DPI / 25.4
METRES_PER_MM = 0.5  # plan scale 1:500
FONT = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"
SKEW_DEGREES = 0.62


class Sheet:
    """A page to draw on in millimetres, x to the right and y upward from the lower left corner."""

    def __init__(self):
        self.scale = PIXELS_PER_MM * OVERSAMPLING
        size = tuple(round(side * PIXELS_PER_MM) * OVERSAMPLING for side in PAGE_MM)
        self.image = Image.new("L", size, 255)
        self.draw = ImageDraw.Draw(self.image)

    def at(self, point):
        return point[0] * self.scale, (PAGE_MM[1] - point[1]) * self.scale

    def line(self, points, width=0.25, closed=False):
        points = list(points) + ([points[0]] if closed else [])
        self.draw.line([self.at(p) for p in points], fill=0, width=max(1, round(width * self.scale)), joint="curve")

    def dashed(self, start, end, dash=3.0, gap=1.5, width=0.2):
        length = math.dist(start, end)
        direction = ((end[0] - start[0]) / length, (end[1] - start[1]) / length)
        position = 0.0
        while position < length:
            stop = min(position + dash, length)
            self.line([(start[0] + direction[0] * d, start[1] + direction[1] * d) for d in (position, stop)], width)
            position = stop + gap

    def circle(self, centre, radius, width=0.2):
        self.line([(centre[0] + radius * math.cos(a / 24 * math.pi), centre[1] + radius * math.sin(a / 24 * math.pi))
                   for a in range(48)], width, closed=True)

    def text(self, point, text, height, angle=0.0, anchor="lm"):
        font = ImageFont.truetype(FONT, round(height * self.scale * 1.35))
        left, top, right, bottom = font.getbbox(text)
        label = Image.new("L", (right + 8, bottom + 8), 0)
        ImageDraw.Draw(label).text((4, 4), text, font=font, fill=255)
        label = label.rotate(angle, expand=True, resample=Image.BICUBIC)
        x, y = self.at(point)
        offset = label.width / 2 if anchor[0] == "m" else 0
        self.image.paste(0, (round(x - offset), round(y - label.height / 2)), label)

    def hatched(self, corners, spacing=1.6):
        """A building: a heavy outline with 45 degree hatching."""
        mask = Image.new("L", self.image.size, 0)
        ImageDraw.Draw(mask).polygon([self.at(c) for c in corners], fill=255)
        hatch = Image.new("L", self.image.size, 255)
        pen = ImageDraw.Draw(hatch)
        (x0, y0), (x1, y1) = [self.at(f(corners)) for f in (
            lambda c: (min(p[0] for p in c), max(p[1] for p in c)), lambda c: (max(p[0] for p in c), min(p[1] for p in c)))]
        step = spacing * self.scale
        for k in range(int((x1 - x0 + y1 - y0) / step) + 1):
            pen.line([(x0 + k * step, y0), (x0 + k * step - (y1 - y0), y1)], fill=0, width=round(0.13 * self.scale))
        self.image.paste(hatch, (0, 0), mask)
        self.line(corners, 0.5, closed=True)


PARCELS_X = [38, 96, 150, 208, 262, 318, 372]
STREET_Y = (118, 142)
HOUSES = [
    [(48, 168), (82, 168), (82, 196), (68, 196), (68, 208), (48, 208)],
    [(108, 172), (138, 172), (138, 204), (108, 204)],
    [(162, 164), (196, 164), (196, 188), (184, 188), (184, 214), (162, 214)],
    [(276, 170), (306, 170), (306, 200), (276, 200)],
    [(330, 166), (362, 166), (362, 190), (330, 190)],
    [(52, 62), (86, 62), (86, 96), (52, 96)],
    [(164, 58), (200, 58), (200, 74), (186, 74), (186, 98), (164, 98)],
    [(222, 66), (252, 66), (252, 94), (222, 94)],
    [(328, 58), (360, 58), (360, 72), (350, 72), (350, 96), (328, 96)],
]


def draw_plan(sheet, dice):
    sheet.line([(12, 12), (408, 12), (408, 285), (12, 285)], 0.7, closed=True)
    sheet.line([(16, 16), (404, 16), (404, 281), (16, 281)], 0.25, closed=True)
    for y in STREET_Y:
        sheet.line([(16, y), (404, y)], 0.5)
    sheet.dashed((20, 130), (400, 130), 6, 3, 0.2)
    sheet.text((212, 134.5), "LINDEN  STREET", 4.5, anchor="mm")
    number = 112
    for top, bottom in ((232, STREET_Y[1]), (STREET_Y[0], 40)):
        sheet.line([(PARCELS_X[0], top if top > 200 else bottom), (PARCELS_X[-1], top if top > 200 else bottom)], 0.3)
        for k, x in enumerate(PARCELS_X):
            lean = 3 * math.sin(k * 1.7)
            sheet.line([(x + (lean if top > 200 else 0), top), (x + (0 if top > 200 else lean), bottom)], 0.3)
            sheet.circle((x + (lean if top > 200 else 0), top), 0.8)
        for left, right in zip(PARCELS_X, PARCELS_X[1:]):
            sheet.text(((left + right) / 2, (top + bottom) / 2 + (36 if top > 200 else -30)), f"{number}/{number % 7 + 1}", 3.2, anchor="mm")
            number += 3
    for house in HOUSES:
        sheet.hatched(house)
        cx, cy = sum(p[0] for p in house) / len(house), min(p[1] for p in house) - 4
        sheet.text((cx, cy), f"H {dice.randint(1, 40)}", 2.6, anchor="mm")
    for _ in range(34):
        x, y = dice.uniform(42, 368), dice.choice((dice.uniform(148, 160), dice.uniform(216, 228), dice.uniform(44, 54), dice.uniform(102, 114)))
        radius = dice.uniform(1.6, 3.2)
        sheet.circle((x, y), radius)
        for k in range(6):
            a = k * math.pi / 3 + dice.uniform(0, 0.5)
            sheet.line([(x, y), (x + 0.8 * radius * math.cos(a), y + 0.8 * radius * math.sin(a))], 0.15)
    for k in range(5):  # contour lines behind the northern parcels
        points = [(x, 240 + 7 * k + 4 * math.sin(x / 37 + k * 0.6) + 2 * math.sin(x / 13 + k)) for x in range(18, 403, 2)]
        sheet.line(points, 0.35 if k % 2 == 0 else 0.18)
        sheet.text((60 + 50 * k, 240 + 7 * k + 4 * math.sin((60 + 50 * k) / 37 + k * 0.6) + 3.2), f"{204 + k}.0", 2.2)
    sheet.line([(384, 246), (384, 274)], 0.5)
    sheet.line([(380, 262), (384, 274), (388, 262)], 0.5)
    sheet.text((384, 278), "N", 4, anchor="mm")
    sheet.line([(24, 24), (24, 30), (64, 30), (64, 24)], 0.3, closed=True)
    for k in range(4):
        if k % 2 == 0:
            sheet.line([(24 + 10 * k, 27), (34 + 10 * k, 27)], 5.6)
        sheet.text((24 + 10 * k, 33), str(5 * k), 2.2, anchor="mm")
    sheet.text((68, 27), "20 m", 2.4)
    sheet.line([(286, 16), (286, 36), (404, 36)], 0.5)
    sheet.text((290, 31), "SITE PLAN  1 : 500", 4.2)
    sheet.text((290, 24), "Surveyed 1974   Sheet 3 of 7", 2.8)
    sheet.text((290, 19), "Parcels along Linden Street", 2.4)


def scan(sheet, dice):
    """What a scanner makes of the sheet: skew, uneven ink, then a threshold, specks and a dark edge."""
    noise = numpy.random.default_rng(1974)
    image = sheet.image.rotate(SKEW_DEGREES, resample=Image.BICUBIC, fillcolor=255)
    image = image.filter(ImageFilter.GaussianBlur(1.1 * OVERSAMPLING / 2))
    size = (image.width // OVERSAMPLING, image.height // OVERSAMPLING)
    gray = numpy.asarray(image.resize(size, Image.BOX), dtype=numpy.float32)

    def field(cells, low, high):
        cloud = Image.fromarray(noise.random((cells, int(cells * 1.414)), dtype=numpy.float32))
        return low + (high - low) * numpy.asarray(cloud.resize(size, Image.BICUBIC))

    ink = (255 - gray) * numpy.clip(field(70, 0.62, 1.25), 0.4, 1.2) * numpy.clip(field(9, 0.85, 1.15), 0.7, 1.2)
    ink += noise.normal(0, 16, ink.shape)
    black = ink > 118
    for _ in range(2600):  # dust
        x, y, side = dice.randrange(size[0] - 4), dice.randrange(size[1] - 4), dice.choice((1, 1, 1, 2, 2, 3))
        black[y:y + side, x:x + side] = True
    for _ in range(1500):  # pinholes in the ink
        x, y = dice.randrange(size[0] - 3), dice.randrange(size[1] - 3)
        black[y:y + 2, x:x + 2] = False
    edge = (6 + 5 * field(24, 0, 1)[:, 0]).astype(int)  # the lid's shadow along the left edge
    for y, width in enumerate(edge):
        black[y, :width] = noise.random(width) < 0.93
    return Image.fromarray(numpy.where(black, 0, 255).astype(numpy.uint8)).convert("1", dither=Image.NONE)


def make_drawing(size):
    """The drawing in metres: the plan under it and the new design on layers of its own."""
    document = ezdxf.new("R2010", setup=True)
    document.units = ezdxf.units.M
    document.header["$LTSCALE"] = 2
    space = document.modelspace()
    for name, colour in (("PLAN-SCAN", 8), ("NEW-BUILDING", 1), ("NEW-TREES", 3), ("AXIS", 5), ("TEXT", 7), ("PAVING", 30)):
        document.layers.add(name, color=colour)
    metres = lambda x, y: (x * METRES_PER_MM, y * METRES_PER_MM)
    definition = document.add_image_def(filename="site-plan.tif", size_in_pixel=size, name="site-plan")
    definition.dxf.pixel_size = (25.4 / DPI, 25.4 / DPI)
    definition.dxf.resolution_units = 0
    page = (size[0] / PIXELS_PER_MM, size[1] / PIXELS_PER_MM)
    space.add_image(definition, insert=metres(0, 0), size_in_units=metres(*page), dxfattribs={"layer": "PLAN-SCAN"})

    building = [metres(x, y) for x, y in ((106, 60), (140, 60), (140, 80), (128, 80), (128, 98), (106, 98))]
    space.add_lwpolyline(building, close=True, dxfattribs={"layer": "NEW-BUILDING"})
    space.add_lwpolyline([(*metres(104, 104), 0, 0, 0), (*metres(120, 104), 0, 0, -0.4), (*metres(132, 112), 0, 0, 0), (*metres(132, 118), 0, 0, 0)],
                         format="xyseb", dxfattribs={"layer": "PAVING"})
    space.add_line(metres(16, 130), metres(404, 130), dxfattribs={"layer": "AXIS", "linetype": "CENTER"})
    space.add_arc(metres(372, 142), 5, 180, 270, dxfattribs={"layer": "AXIS"})
    space.add_ellipse(metres(290, 80), major_axis=(9, 2), ratio=0.45, dxfattribs={"layer": "PAVING"})
    space.add_solid([metres(226, 176), metres(244, 176), metres(226, 182), metres(244, 182)], dxfattribs={"layer": "PAVING"})
    space.add_point(metres(235, 179), dxfattribs={"layer": "AXIS"})
    tree = document.blocks.new("TREE")
    tree.add_circle((0, 0), 1)
    for k in range(4):
        a = k * math.pi / 4
        tree.add_line((-0.7 * math.cos(a), -0.7 * math.sin(a)), (0.7 * math.cos(a), 0.7 * math.sin(a)))
    for x, y, scale in ((100, 52, 1.6), (118, 50, 2.1), (146, 54, 1.4), (284, 100, 2.4), (304, 96, 1.8), (236, 158, 2.0)):
        space.add_blockref("TREE", metres(x, y), dxfattribs={"layer": "NEW-TREES", "xscale": scale, "yscale": scale, "rotation": x % 45})
    space.add_text("NEW HOUSE", dxfattribs={"layer": "TEXT", "height": 2.2, "insert": metres(108, 86)})
    space.add_mtext("Ground floor \\P 203.40 m", dxfattribs={"layer": "TEXT", "char_height": 1.3, "insert": metres(108, 82)})
    document.set_modelspace_vport(height=155, center=metres(page[0] / 2, page[1] / 2))
    document.header["$EXTMIN"], document.header["$EXTMAX"] = (0, 0, 0), (*metres(*page), 0)
    document.saveas(HERE / "site-plan.dxf")


def main():
    dice = random.Random(1974)
    sheet = Sheet()
    draw_plan(sheet, dice)
    raster = scan(sheet, dice)
    raster.save(HERE / "site-plan.tif", compression="group4", dpi=(DPI, DPI))
    make_drawing(raster.size)
    print(f"site-plan.tif: {raster.width} x {raster.height} pixels at {DPI} dpi")


if __name__ == "__main__":
    main()
