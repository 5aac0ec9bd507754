#!/usr/bin/env python3
"""Draws splash.bmp, the picture of splash and about box: the example's scan as a sheet on the drawing board, half of it
seen as the pixels that it consists of.

Needs Debian's python3-pil and fonts-liberation2; run it after a change and commit what it makes.
"""
import pathlib

from PIL import Image, ImageChops, ImageDraw, ImageFilter, ImageFont

HERE = pathlib.Path(__file__).parent
SCAN = HERE.parent.parent / "examples/site-plan.tif"
FONTS = pathlib.Path("/usr/share/fonts/truetype/liberation2")
SIZE = (501, 381)
OVERSAMPLING = 3
NIGHT, DUSK = (13, 34, 56), (28, 84, 122)
GRID, PAPER, INK = (70, 132, 170), (250, 249, 244), (24, 32, 44)
FRAME, ACCENT = (0, 120, 230), (255, 184, 51)
# What of the scan is shown, in its pixels, and how many of them make one of the large ones.
PART = (620, 520, 620 + 2600, 520 + 1950)
PIXELATED = 26


def scaled(*numbers):
    return tuple(round(number * OVERSAMPLING) for number in numbers)


def board():
    """A ground that grows lighter to the lower right, with the lines of a drawing grid."""
    width, height = scaled(*SIZE)
    # Larger than the picture, so that no corner of the turned gradient shows in it.
    shade = Image.linear_gradient("L").resize((2 * width, 2 * height)).rotate(35, resample=Image.BICUBIC)
    shade = shade.crop((width // 2, height // 2, width // 2 + width, height // 2 + height))
    ground = Image.composite(Image.new("RGB", shade.size, DUSK), Image.new("RGB", shade.size, NIGHT), shade)
    lines = Image.new("L", ground.size, 0)
    pen = ImageDraw.Draw(lines)
    for number, at in enumerate(range(0, max(SIZE), 15)):
        strength = 70 if number % 5 == 0 else 26
        pen.line(scaled(at, 0, at, SIZE[1]), strength, 2)
        pen.line(scaled(0, at, SIZE[0], at), strength, 2)
    ground.paste(Image.new("RGB", ground.size, GRID), mask=lines)
    return ground


def sheet(width, height):
    """The scan on paper: pixels to the left of a slanted edge, the fine lines to its right."""
    size = scaled(width, height)
    # Black on white, whatever way round the file has it.
    scan = Image.open(SCAN).convert("L").crop(PART)
    fine = scan.filter(ImageFilter.MinFilter(5)).resize(size, Image.LANCZOS)
    blocks = (scan.size[0] // PIXELATED, scan.size[1] // PIXELATED)
    coarse = scan.filter(ImageFilter.MinFilter(7)).resize(blocks, Image.BOX).point(lambda value: 255 if value > 205 else 0)
    coarse = coarse.resize(size, Image.NEAREST)
    left = Image.new("L", size, 0)
    edge = [(0, 0), (size[0] * 0.53, 0), (size[0] * 0.37, size[1]), (0, size[1])]
    ImageDraw.Draw(left).polygon(edge, fill=255)
    ink = ImageChops.invert(Image.composite(coarse, fine, left))
    paper = Image.new("RGB", size, PAPER)
    paper.paste(Image.new("RGB", size, INK), mask=ink)
    ImageDraw.Draw(paper).line([edge[1], edge[2]], ACCENT, round(1.6 * OVERSAMPLING))
    return paper


def dashes(pen, start, end, dash):
    """A dashed line of the frame's colour and white, along an axis."""
    length = max(abs(end[0] - start[0]), abs(end[1] - start[1]))
    step = ((end[0] - start[0]) / length, (end[1] - start[1]) / length)
    for number, at in enumerate(range(0, length, dash)):
        stop = min(at + dash, length)
        pen.line((start[0] + step[0] * at, start[1] + step[1] * at, start[0] + step[0] * stop, start[1] + step[1] * stop),
                 FRAME if number % 2 == 0 else (255, 255, 255), 2 * OVERSAMPLING)


def lay_sheet(ground, place, tilt):
    """Pastes the sheet turned, with its shadow, and the frame of a current raster about it."""
    margin = 12
    width, height = place[2] - place[0], place[3] - place[1]
    layer = Image.new("RGBA", scaled(width + 2 * margin, height + 2 * margin), (255, 255, 255, 0))
    layer.paste(sheet(width, height), scaled(margin, margin))
    pen = ImageDraw.Draw(layer)
    near, far = scaled(margin - 5, margin - 5), scaled(margin + width + 5, margin + height + 5)
    corners = [near, (far[0], near[1]), far, (near[0], far[1])]
    for start, end in zip(corners, corners[1:] + corners[:1]):
        dashes(pen, start, end, 5 * OVERSAMPLING)
    turned = layer.rotate(tilt, resample=Image.BICUBIC, expand=True)
    at = scaled(place[0] - margin, place[1] - margin)
    shadow = Image.new("L", ground.size, 0)
    shadow.paste(turned.getchannel("A").point(lambda value: value * 150 // 255), (at[0] + 12, at[1] + 18))
    shadow = shadow.filter(ImageFilter.GaussianBlur(6 * OVERSAMPLING))
    ground.paste(Image.new("RGB", ground.size, (4, 12, 22)), mask=shadow)
    ground.paste(turned, at, turned)


def write(ground):
    def font(name, size):
        return ImageFont.truetype(str(FONTS / name), round(size * OVERSAMPLING))

    pen = ImageDraw.Draw(ground)
    title = font("LiberationSans-Bold.ttf", 46)
    pen.text(scaled(26, 26), "Halvoran", (255, 255, 255), title)
    after = 26 + pen.textlength("Halvoran", title) / OVERSAMPLING
    pen.text(scaled(after + 10, 26), "6.6", ACCENT, font("LiberationSans-Regular.ttf", 46))
    pen.rectangle(scaled(28, 82, 92, 85), ACCENT)
    pen.text(scaled(27, 93), "Scanned drawings, edited where they lie", (206, 226, 240),
             font("LiberationSans-Regular.ttf", 16.5))
    pen.text(scaled(27, 353), "Orvolabs", (170, 200, 220), font("LiberationSans-Regular.ttf", 13))


def main():
    picture = board()
    lay_sheet(picture, (146, 140, 476, 388), 5)
    write(picture)
    picture = picture.resize(SIZE, Image.LANCZOS)
    picture.quantize(256, method=Image.MEDIANCUT, dither=Image.FLOYDSTEINBERG).save(HERE / "splash.bmp")


if __name__ == "__main__":
    main()
