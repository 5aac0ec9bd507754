"""Lays real 1-bit scans out on one A0 sheet at 400 dpi, side by side in rows, until it is full.

assemble_sheet.py FOLDER SHEET.tif [--wide]

With --wide the sheet lies on its side, with odd sides as a scanner cuts them, the scanner's specks, and one strip.
"""

import pathlib
import random
import sys

from PIL import Image, TiffImagePlugin

UPRIGHT = (13244, 18724)
WIDE = (19866, 14043)
SPECKS = 120_000  # some 70 on a square inch
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


def lay_out(images, size):
    sheet = Image.new("1", size, 1)
    x = y = row_height = count = 0
    while y < size[1]:
        image = images[count % len(images)][1]
        sheet.paste(image, (x, y))
        count += 1
        row_height = max(row_height, image.height)
        x += image.width
        if x >= size[0]:
            x, y, row_height = 0, y + row_height, 0
    return sheet, count


def sprinkle(sheet):
    """Specks of one to three pixels a side, anywhere; always the same ones."""
    chance = random.Random(1)
    for _ in range(SPECKS):
        x, y = chance.randrange(sheet.width), chance.randrange(sheet.height)
        sheet.paste(0, (x, y, x + chance.randint(1, 3), y + chance.randint(1, 3)))


def main():
    folder, target = pathlib.Path(sys.argv[1]), sys.argv[2]
    wide = sys.argv[3:] == ["--wide"]
    images = scans(folder)
    if not images:
        sys.exit(f"There are no 1-bit scans in {folder}.")
    sheet, count = lay_out(images, WIDE if wide else UPRIGHT)
    if wide:
        sprinkle(sheet)
        TiffImagePlugin.STRIP_SIZE = 1 << 30  # bytes
    sheet.save(target, compression="group4", dpi=(DPI, DPI))
    ink = sheet.histogram()[0] / (sheet.width * sheet.height)
    print(f"{count} scans from {len(images)} files: {', '.join(name for name, _ in images)}; {ink:.1%} ink")


main()
