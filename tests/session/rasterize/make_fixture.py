#!/usr/bin/python3
"""Makes the drawing whose entities are burnt by hand: a blank raster of 10 pixels a millimetre that shows 100 x 100
drawing units, entities over it, and one that lies beside it.

Needs python3-ezdxf and ImageMagick; run it only to change the drawing.
"""
import subprocess
from pathlib import Path

import ezdxf

HERE = Path(__file__).parent
SIZE = (400, 400)  # pixels

subprocess.run(["convert", "-size", "%dx%d" % SIZE, "xc:white", "-monochrome", "-units", "PixelsPerInch", "-density", "254",
                "-compress", "Group4", HERE / "sheet.tif"], check=True)
(HERE / "eighteen.pen").write_text("18\r\n")

drawing = ezdxf.new("R2000")
space = drawing.modelspace()
definition = drawing.add_image_def(filename="sheet.tif", size_in_pixel=SIZE, name="sheet")
space.add_image(definition, insert=(0, 0), size_in_units=(100, 100))
space.add_line((6, 6), (94, 20), dxfattribs={"color": 1})
space.add_line((-10, 70), (110, 74), dxfattribs={"color": 2})
space.add_circle((30, 45), 20, dxfattribs={"color": 3})
space.add_arc((70, 50), 22, 200, 80, dxfattribs={"color": 4})
space.add_lwpolyline([(60, 80, 0.6), (90, 80, -0.4), (92, 95, 0)], format="xyb", dxfattribs={"color": 5})
space.add_ellipse((25, 86), (18, 4), 0.4, dxfattribs={"color": 1})
space.add_solid([(66, 40), (80, 42), (68, 58), (78, 56)], dxfattribs={"color": 2})
space.add_line((130, 10), (140, 90), dxfattribs={"color": 1})
drawing.set_modelspace_vport(height=120, center=(60, 50))
drawing.saveas(HERE / "burn.dxf")
