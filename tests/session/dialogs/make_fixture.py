#!/usr/bin/python3
"""Makes the drawing of the dialogs' sessions: a page of nearly A4 at 60 dpi, one drawing unit a pixel, full of specks and
holes of all sizes.

Needs python3-ezdxf and ImageMagick; run it only to change the drawing.
"""
import random
import subprocess
from pathlib import Path

import ezdxf

HERE = Path(__file__).parent
SIZE = (496, 702)  # pixels; 209.97 x 297.18 mm
CORNER = (100, 200)  # of the image, the lower left one
LARGEST = 9  # pixels, of a speck or a hole

random.seed(60)
rows = [bytearray(SIZE[0]) for _ in range(SIZE[1])]


def paint(left, top, width, height, ink):
    for y in range(top, top + height):
        rows[y][left:left + width] = bytes([ink]) * width


# Three dark blocks to have holes in, then specks on the paper and holes in the blocks: rectangles, and chains that hang
# together at corners alone.
for left, top in ((30, 40), (270, 40), (30, 380)):
    paint(left, top, 190, 280, 1)
for _ in range(900):
    left, top = random.randrange(SIZE[0] - LARGEST), random.randrange(SIZE[1] - LARGEST)
    ink = 1 - rows[top][left]
    width, height = random.randint(1, LARGEST), random.randint(1, LARGEST)
    if random.random() < 0.3:
        for step in range(width):
            rows[top + step][left + step] = ink
    else:
        paint(left, top, width, height, ink)

picture = b"P5 %d %d 1\n" % SIZE + b"".join(bytes(1 - ink for ink in row) for row in rows)
subprocess.run(["convert", "pgm:-", "-density", "60", "-units", "PixelsPerInch", "-monochrome", "-compress", "Group4",
                HERE / "page.tif"], input=picture, check=True)

drawing = ezdxf.new("R2000")
drawing.header["$LUNITS"] = 2
definition = drawing.add_image_def(filename="page.tif", size_in_pixel=SIZE, name="page")
drawing.modelspace().add_image(definition, insert=CORNER, size_in_units=SIZE)
drawing.set_modelspace_vport(height=760, center=(348, 551))
drawing.saveas(HERE / "dialogs.dxf")
