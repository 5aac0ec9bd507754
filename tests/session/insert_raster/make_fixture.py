#!/usr/bin/python3
"""Makes the rasters that are inserted by hand, or refused. Needs ImageMagick; run it only to change them."""
import subprocess
from pathlib import Path

HERE = Path(__file__).parent


def convert(*words):
    subprocess.run(["convert", *map(str, words)], check=True)


SKETCH = ("-size", "240x180", "xc:white", "+antialias", "-fill", "black",
          "-draw", "polygon 10,8 30,8 30,50 60,50 60,64 10,64",
          "-draw", "rectangle 150,120 229,169")
convert(*SKETCH, "-density", "120x60", "-units", "PixelsPerInch", "-monochrome", "-compress", "Group4",
        HERE / "sketch.tif")
convert(*SKETCH, "-density", "100", "-units", "PixelsPerInch", "-monochrome", "-type", "bilevel", HERE / "sketch.png")
convert("-size", "40x30", "gradient:", "-colors", "12", "-type", "Palette", "-depth", "4",
        "BMP3:" + str(HERE / "colours.bmp"))
convert("-size", "40x30", "gradient:", "-colors", "200", "-type", "Palette", "-compress", "none",
        "BMP3:" + str(HERE / "grey.bmp"))
(HERE / "letter.tif").write_text("Dear Sir, this is no picture.\n")
whole = (HERE / "sketch.tif").read_bytes()
(HERE / "torn.tif").write_bytes(whole[:len(whole) // 3])
