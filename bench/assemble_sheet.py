"""Lays real 1-bit scans out on one A0 sheet at 400 dpi, side by side in rows, until it is full.

assemble_sheet.py FOLDER SHEET.tif
"""

import pathlib
import sys

from PIL import Image

SHEET = (13244, 18724)
DPI = 400
SMALLEST = 1000  # pixels; what is smaller is a cutting and no scan


def scans(folder):
    """The 1-bit images of the folder, in the order of their names. The first page counts."""
    found = []
    for path in sorted(folder.iterdir()):
        try:
            image = Image.open(path)
            if image.mode == "1" and min(image.size) >= SMALLEST:
                found.append((path.name, image.copy()))
        except OSError as error:
            print(f"{path.name} is left out: {error}", file=sys.stderr)
    return found


def lay_out(images):
    sheet = Image.new("1", SHEET, 1)
    x = y = row_height = count = 0
    while y < SHEET[1]:
        image = images[count % len(images)][1]
        sheet.paste(image, (x, y))
        count += 1
        row_height = max(row_height, image.height)
        x += image.width
        if x >= SHEET[0]:
            x, y, row_height = 0, y + row_height, 0
    return sheet, count


def main():
    folder, target = pathlib.Path(sys.argv[1]), sys.argv[2]
    images = scans(folder)
    if not images:
        sys.exit(f"There are no 1-bit scans in {folder}.")
    sheet, count = lay_out(images)
    sheet.save(target, compression="group4", dpi=(DPI, DPI))
    ink = sheet.histogram()[0] / (SHEET[0] * SHEET[1])
    print(f"{count} scans from {len(images)} files: {', '.join(name for name, _ in images)}; {ink:.1%} ink")


main()
