#!/usr/bin/python3
"""Makes the drawing of the mouse tools' sessions: one small scan, placed four times.

From the left: upright; mirrored left to right and small; above it turned clockwise and mirrored; turned
counter-clockwise and large. Needs python3-ezdxf and ImageMagick; run it only to change the drawing.
"""
import subprocess
from pathlib import Path

import ezdxf

HERE = Path(__file__).parent
SIZE = (240, 180)  # pixels
# Name, where the image's lower left corner lies, and the steps from pixel to pixel to the right and upward.
PLACES = (
    ("upright", (0, 0), (0.25, 0), (0, 0.25)),
    ("mirrored", (104, 0), (-0.125, 0), (0, 0.125)),
    ("mirrored-turned", (104, 96), (0, -0.16), (-0.16, 0)),
    ("turned", (184, 0), (0, 0.4), (-0.4, 0)),
)

# Nothing in it looks the same when it is turned or mirrored, and there is enough ink to erase.
subprocess.run([
    "convert", "-size", f"{SIZE[0]}x{SIZE[1]}", "xc:white", "-fill", "black", "+antialias",
    "-draw", "polygon 10,8 30,8 30,50 60,50 60,64 10,64",
    "-draw", "rectangle 150,120 229,169", "-fill", "white", "-draw", "circle 190,145 190,131", "-fill", "none",
    "-stroke", "black", *(word for x in range(150, 230, 8) for word in ("-draw", f"line {x},90 {x - 40},20")),
    "-draw", "line 12,170 120,110", "-stroke", "none", "-fill", "black", "-draw", "rectangle 20,120 23,160",
    "-density", "100", "-units", "PixelsPerInch", "-monochrome", "-compress", "Group4", HERE / "sheet.tif"], check=True)

drawing = ezdxf.new("R2000")
space = drawing.modelspace()
for name, corner, right, up in PLACES:
    definition = drawing.add_image_def(filename="sheet.tif", size_in_pixel=SIZE, name=name)
    image = space.add_image(definition, insert=corner, size_in_units=SIZE)
    image.dxf.u_pixel, image.dxf.v_pixel = (*right, 0), (*up, 0)
drawing.set_modelspace_vport(height=110, center=(92, 48))
drawing.saveas(HERE / "sheets.dxf")
