#!/usr/bin/python3
"""Makes the random user's drawing: rasters of the smallest and of odd sizes, upright, turned, mirrored and lying on each other.

Needs python3-ezdxf, ImageMagick and netpbm; run it only to change the drawing.
"""
import subprocess
from pathlib import Path

import ezdxf

HERE = Path(__file__).parent
# File, pixels, lower left corner, and the steps from pixel to pixel to the right and upward.
RASTERS = (
    ("dot.tif", (1, 1), (2, 2), (6, 0), (0, 6)),
    ("strip.tif", (4001, 3), (0, 12), (0.025, 0), (0, 1)),
    ("pole.tif", (5, 777), (112, 0), (1, 0), (0, 0.1)),
    ("page.tif", (1241, 1755), (0, 20), (0.05, 0), (0, 0.05)),
    ("page.tif", (1241, 1755), (190, 20), (0, 0.03), (-0.03, 0)),
    ("page.tif", (1241, 1755), (70, 70), (0.02, 0.01), (0.005, -0.02)),
    ("sheet.tif", (9933, 14043), (200, 0), (0.008, 0), (0, 0.008)),
)


def draw(name, size):
    """Frames, hatching and specks, so that every filter finds something."""
    width, height = size
    step = max(min(size) // 12, 2)
    strokes = [f"line {x},0 {max(x - height, 0)},{min(height, x)}" for x in range(step, width, step * 4)]
    strokes += [f"point {(7 * i * step) % width},{(11 * i * step) % height}" for i in range(60)]
    strokes += [f"rectangle {step},{step} {max(width // 2, step)},{max(height // 3, step)}"]
    subprocess.run(["convert", "-size", f"{width}x{height}", "xc:white", "-fill", "none", "-stroke", "black", "+antialias",
                    *(word for stroke in strokes for word in ("-draw", stroke)), "-density", "150", "-units", "PixelsPerInch",
                    "-monochrome", "-compress", "Group4", HERE / name], check=True)


def tile(name, size, page):
    """A sheet too large to be drawn: the page over and over."""
    bits = subprocess.run(["convert", HERE / page, "pbm:-"], capture_output=True, check=True).stdout
    tiled = subprocess.run(["pnmtile", *map(str, size)], input=bits, capture_output=True, check=True).stdout
    tiff = subprocess.run(["pamtotiff", "-g4", "-xresolution=150", "-yresolution=150", "-resolutionunit=inch"], input=tiled,
                          capture_output=True, check=True).stdout
    (HERE / name).write_bytes(tiff)


def main():
    drawing = ezdxf.new("R2000")
    space = drawing.modelspace()
    for name, size in {name: size for name, size, *_ in RASTERS}.items():
        if name == "sheet.tif":
            tile(name, size, "page.tif")
        else:
            draw(name, size)
    for number, (name, size, corner, right, up) in enumerate(RASTERS):
        definition = drawing.add_image_def(filename=name, size_in_pixel=size, name=f"raster {number}")
        image = space.add_image(definition, insert=corner, size_in_units=size)
        image.dxf.u_pixel, image.dxf.v_pixel = (*right, 0), (*up, 0)
    space.add_circle((60, 60), 30)
    space.add_text("random", height=8, dxfattribs={"insert": (10, 110)})
    drawing.set_modelspace_vport(height=130, center=(140, 60))
    drawing.saveas(HERE / "rasters.dxf")


main()
