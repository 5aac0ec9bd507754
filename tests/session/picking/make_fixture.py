#!/usr/bin/python3
"""Makes the drawing of this session: four images in a row, of which only some can be picked.

From the left: a 1-bit scan, an image whose file is missing, an 8-bit grey picture, and a second 1-bit scan that lies
over the grey picture's right half. Needs python3-ezdxf and ImageMagick; run it only to change the drawing.
"""
import subprocess
from pathlib import Path

import ezdxf

HERE = Path(__file__).parent
SIDE = 200  # pixels


def convert(*arguments):
    subprocess.run(["convert", "-size", f"{SIDE}x{SIDE}", *arguments], check=True)


convert("xc:white", "-fill", "black", "+antialias", "-draw", "rectangle 50,50 149,149",
        "-density", "254", "-units", "PixelsPerInch", "-monochrome", "-compress", "Group4", HERE / "square.tif")
convert("gradient:", "-depth", "8", "-colorspace", "Gray", HERE / "grey.png")

drawing = ezdxf.new("R2000")
space = drawing.modelspace()
for name, x in (("square.tif", 0), ("nowhere.tif", 30), ("grey.png", 60), ("square.tif", 70)):
    definition = drawing.add_image_def(filename=name, size_in_pixel=(SIDE, SIDE), name=f"{Path(name).stem}-{x}")
    space.add_image(definition, insert=(x, 0), size_in_units=(20, 20))
drawing.saveas(HERE / "picking.dxf")
