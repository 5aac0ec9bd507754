#!/usr/bin/python3
"""Makes a large sheet and a drawing that holds it.

make_large_drawing.py SCAN FOLDER WIDTH HEIGHT: tiles the scan into FOLDER/large.tif (group 4, 400 dpi) and writes FOLDER/large.dxf.
Needs ImageMagick, libtiff's tools and python3-ezdxf.
"""
import struct
import subprocess
import sys
from pathlib import Path

import ezdxf

WIDTH, HEIGHT = int(sys.argv[3]), int(sys.argv[4])
DPI = 400


def tile_bits(scan):
    """The scan cut to whole bytes a row: bytes a row, and the rows with 1 for ink."""
    width = int(subprocess.run(["identify", "-format", "%w", scan], check=True, capture_output=True).stdout) // 8 * 8
    picture = subprocess.run(["convert", scan, "-crop", f"{width}x+0+0", "+repage", "pbm:-"], check=True,
                             capture_output=True).stdout
    kind, size, bits = picture.split(b"\n", 2)
    assert kind == b"P4"
    stride = int(size.split()[0]) // 8
    return [bits[start:start + stride] for start in range(0, len(bits), stride)]


def write_plain_tiff(path, rows):
    """One strip, no compression, white is 0."""
    stride = (WIDTH + 7) // 8
    spare = 0xFF & (0xFF << (stride * 8 - WIDTH))
    entries = [(256, 4, WIDTH), (257, 4, HEIGHT), (258, 3, 1), (259, 3, 1), (262, 3, 0), (273, 4, 8),
               (277, 3, 1), (278, 4, HEIGHT), (279, 4, stride * HEIGHT),
               (282, 5, 8 + stride * HEIGHT), (283, 5, 8 + stride * HEIGHT), (296, 3, 2)]
    with open(path, "wb") as file:
        file.write(struct.pack("<2sHI", b"II", 42, 8 + stride * HEIGHT + 8))
        for y in range(HEIGHT):
            row = bytearray((rows[y % len(rows)] * (stride // len(rows[0]) + 1))[:stride])
            row[-1] &= spare
            file.write(row)
        file.write(struct.pack("<II", DPI, 1))
        file.write(struct.pack("<H", len(entries)))
        for tag, kind, value in entries:
            file.write(struct.pack("<HHII", tag, kind, 1, value))
        file.write(struct.pack("<I", 0))


def main():
    scan, folder = sys.argv[1], Path(sys.argv[2])
    plain = folder / "plain.tif"
    write_plain_tiff(plain, tile_bits(scan))
    subprocess.run(["tiffcp", "-c", "g4", plain, folder / "large.tif"], check=True)
    plain.unlink()

    drawing = ezdxf.new("R2000")
    definition = drawing.add_image_def(filename="large.tif", size_in_pixel=(WIDTH, HEIGHT))
    drawing.modelspace().add_image(definition, insert=(0, 0),
                                   size_in_units=(WIDTH * 25.4 / DPI, HEIGHT * 25.4 / DPI))
    drawing.saveas(folder / "large.dxf")


main()
