#!/usr/bin/env python3
"""Draws the module's cursors and pictures beside this script. Run it after a change to a drawing and commit what it makes.

In the drawings '#' is black, 'o' white and '.' see-through. A cursor's picture gets a white rim, so that it shows on
black ink too.
"""
import math
import pathlib
import struct

SIDE = 32
BLACK, WHITE, CLEAR = "#", "o", "."
BLUE, GREY, YELLOW = "b", "g", "y"  # in the dialogs' pictures alone
KEY_COLOUR = (0, 255, 255)  # see-through pixels of the bitmaps that become cursors at run time

# An arrow that points at a framed picture.
SELECT_RASTER = """
#
##
#o#
#oo#
#ooo#
#oooo#
#ooooo#
#oooooo#
#ooooooo#
#oooooooo#
#ooooo#####
#oo#oo#
#o#.#oo#
##..#oo#
#....#oo#
.....#oo#..###############
......##...#ooooooooooooo#
...........#ooooooooo##oo#
...........#oooooooo####o#
...........#ooooooooo##oo#
...........#oo#oooooooooo#
...........#o###ooo#ooooo#
...........#o####o###oooo#
...........#############o#
...........#############o#
...........###############
"""

# The tools' pictures leave the hot spot (15, 16) to the brush's square and stand to its upper right.
PEN = """
.........................##
........................####
.......................######
......................###.###
.....................##..###
....................##..###
...................##..##
..................##..##
.................##..##
.................#..##
................##.##
................####
................##
"""

LINE = """
..........................###
..........................#o#
.........................####
........................#
.......................#
......................#
.....................#
....................#
...................#
..................#
................###
................#o#
................###
"""

ERASER = """
......................###
.....................#ooo##
....................#oooooo##
...................#ooooooooo#
..................#oooooooo##
.................#oooooooo##
................#########o#
...............##########
..............##########
..............#########
..............########
...............######
"""


# A cross at the hot spot (10, 10), and a dashed frame that grows from it.
AREA = """
..........#
..........#
..........#
..........#
..........#
..........#
..........#

..........#
..........
#######.#...#######
..........
..........#

..........#..###..###..###
..........#..............#
..........#..............#
..........#
..........#.............
..........#..............#
.........................#
.............#...........#
.............#
.............
.............#...........#
.............#...........#
.............#...........#

.............###..###..###
"""

PLUS = """
...#
...#
...#
#######
...#
...#
...#
"""

MINUS = """



#######
"""

# Four arrows about the hot spot (15, 15).
MOVE = """

...............#
..............###
.............#####
............#######
...............#
...............#
...............#
...............#
...............#
...............#
....#..........#..........#
...##..........#..........##
..###..........#..........###
.####..........#..........####
#####.....................#####
#############.....#############
#####.....................#####
.####..........#..........####
..###..........#..........###
...##..........#..........##
....#..........#..........#
...............#
...............#
...............#
...............#
...............#
............#######
.............#####
..............###
...............#
"""

# A target at the hot spot (15, 15) with an arc that runs about it clockwise.
ROTATE_BASE = """


...........#########
.........##.........##
.......##.............##
......#.................#
.....#...................#
....#.....................#
....#.....................#
...#.......................#
...#...........#...........#
..#............#............#
..#............#............#
..#............#............#
..#............#............#
..........###########
..#............#............#
..#............#.........#.....#
..#............#..........#...#
..#............#...........#.#
...#...........#............#
...#
....#
....#
.....#
......#
.......##
.........##
...........######
"""

# The same arc without the target, for a place beside the handles.
ROTATE_FREE = """

............#######
..........##.......##
........##...........##
.......#...............#
......#.................#
.....#...................#
.....#...................#
....#.....................#
....#.....................#
....#.....................#
....#.....................#
...#.......................#
...#..........###..........#
...#..........#.#......#...#...#
...#..........###.......#..#..#
...#.....................#.#.#
....#.....................###
....#......................#
....#
....#
.....#
.....#
......#
.......#
........##
..........##
............######
"""


def with_badge(drawing, badge, left, top):
    """The drawing with a smaller one laid over it."""
    rows = grid(drawing)
    for y, line in enumerate(badge.strip("\n").split("\n") if badge.strip() else []):
        for x, pixel in enumerate(line):
            if pixel != CLEAR:
                rows[top + y][left + x] = pixel
    return rows


# Beside the rows of the properties, 16 by 16.
TREE_ROOT = """
................
.##########.....
.#yyyyyyyy##....
.#yyyyyyyy#y#...
.#yyyyyyyy####..
.#yyyyyyyyyyy#..
.#ybyyyyyyyyy#..
.#ybbyyyyybyy#..
.#ybybyyybbyy#..
.#ybyybybybyy#..
.#ybyyybyybyy#..
.#ybbbbbbbbyy#..
.#yyyyyyyyyyy#..
.#############..
................
................
"""

TREE_LEAF = """
................
................
................
................
................
......bbbb......
.....bbbbbb.....
.....bbbbbb.....
.....bbbbbb.....
.....bbbbbb.....
......bbbb......
................
................
................
................
................
"""

TREE_GROUP = """
................
..b.........b...
.bb.........bb..
bbbbbbbbbbbbbbb.
.bb.........bb..
..b.........b...
................
.#############..
.#yyyyyyyyyyy#..
.#yyyyyyyyyyy#..
.#yyyyyyyyyyy#..
.#yyyyyyyyyyy#..
.#yyyyyyyyyyy#..
.#############..
................
................
"""

# The toolbar's buttons in their order, 16 by 15 each. Dark outlines carry them on light ground, white and coloured
# insides on dark ground. The colours are of those that a display of 256 has as well.
TOOLBAR_COLOURS = {
    "k": (51, 51, 51), "w": (255, 255, 255), "l": (204, 204, 204), "g": (153, 153, 153), "b": (0, 102, 204),
    "c": (153, 204, 255), "y": (255, 204, 51), "o": (255, 153, 51), "r": (255, 51, 51), "p": (255, 153, 153),
    "q": (204, 102, 102), "n": (51, 204, 51),
}
TOOLBAR_KEY_COLOUR = (0xC6, 0xC6, 0xC6)

TOOLBAR_NEW = """
..kkkkkkk.......
..kwwwwwkk......
..kwwwwwkwk.....
..kwwwwwkkkk....
..kwwwwwwwwk....
..kwwwwwwwwk....
..kwwwwwwwwk....
..kwwwwwwkkkk...
..kwwwwwwknnk...
..kwwwwkkknnkkk.
..kwwwwknnnnnnk.
..kwwwwknnnnnnk.
..kkkkkkkknnkkk.
.........knnk...
.........kkkk...
"""

# An arrow into a picture.
TOOLBAR_INSERT = """
.....kkkkk......
.....knnnk......
.....knnnk......
...kkknnnkkk....
....knnnnnk.....
.kkk.knnnk.kkkk.
.kwww.knk.wwwwk.
.kwwww.k.wwwbwk.
.kwwwwwwwwwbbbk.
.kwwbwwwwwbbbbk.
.kwbbbwwwbbbbbk.
.kbbbbbwbbbbbbk.
.kbbbbbbbbbbbbk.
.kkkkkkkkkkkkkk.
................
"""

TOOLBAR_SAVE_AS = """
................
.kkkkkkkkkkkkkk.
.kbkwwwwwwwwkbk.
.kbkwggggggwkbk.
.kbkwwwwwwwwkbk.
.kbkwggggggwkbk.
.kbkwwwwwwwwkbk.
.kbbkkkkkkkkbbk.
.kbbbbbbbbbbbbk.
.kbbkkkkkkkkbbk.
.kbbkllkkllkbbk.
.kbbkllkkllkbbk.
.kkbkllllllkbbk.
..kkkkkkkkkkkkk.
................
"""

# A picture in its frame, under an arrow.
TOOLBAR_SELECT = """
bbccbbccbbccb...
b...........b...
c.kkkkkkkkk.c...
c.kwwwwwwwk.c...
b.kwwwkwwwk.b...
b.kwwkkkwkk.b...
c.kwkkkkkwk.c...
c.kkkkkkkkk.c...
b.kkkkkkkkk.b...
b...........b...
ccbbccbbccbbc...
................
................
................
................
"""

TOOLBAR_POINTER = """
kk
kwk
kwwk
kwwwk
kwwwwk
kwwwwwk
kwwwkkk
kwkwwk
kk.kwwk
....kkk
"""

TOOLBAR_AREA = """
rrwwrrwwrrwwr...
rcccccccccccr...
wcccccccccccw...
wcccccccccccw...
rcccccccccccr...
rcccccccccccr...
wcccccccccccw...
wcccccccccccw...
rcccccccccccr...
rcccccccccccr...
wwrrwwrrwwrrw...
................
................
................
................
"""

TOOLBAR_CROSS = """
..kkk
..kwk
kkkwkkk
kwwwwwk
kkkwkkk
..kwk
..kkk
"""

TOOLBAR_PEN = """
...........kkk..
..........krrrk.
.........kykrrk.
........kyyykrk.
.......kyyyokk..
......kyyyok....
.....kyyyok.....
....kyyyok......
...kyyyok.......
...kwyok........
...kwwk.........
...kkk....bb....
...kk....bbbb.bb
...kbbbbbb..bbb.
....bbbb....bb..
"""

TOOLBAR_LINE = """
...........kkkk.
...........kyyk.
...........kyyk.
..........bkkkk.
.........bbb....
........bbb.....
.......bbb......
......bbb.......
.....bbb........
....bbb.........
.kkkkb..........
.kyyk...........
.kyyk...........
.kkkk...........
................
"""

# Over a stroke that it has parted.
TOOLBAR_ERASER = """
.........kkk....
........kpppk...
.......kpppppk..
......kpppppppk.
.....kpppppppqk.
....kkpppppqqk..
...kwwkpppqqk...
..kwwwwkpqqk....
..kwwwwwkqk.....
..klwwwwlk......
...klwwlk.......
....kkkk........
................
bbb.......bbbbbb
bbb.......bbbbbb
"""

# A picture of large pixels.
TOOLBAR_RASTER = """
.kkkkkkkkkkkkkk.
.kwwwwwwwwwwwwk.
.kwyywwwwwwwwwk.
.kwyywwwwbbwwwk.
.kwwwwwwwbbwwwk.
.kwwwwwbbbbbbwk.
.kwwwwwbbbbbbwk.
.kbbwwbbbbbbbbk.
.kbbwwbbbbbbbbk.
.kbbbbbbbbbbbbk.
.kbbbbbbbbbbbbk.
.kkkkkkkkkkkkkk.
................
................
................
"""

TOOLBAR_SETTINGS = """
......kkkk......
..kkk.kwwk.kkk..
..kwwkkllkkwlk..
..kwllllllllgk..
...kllgkkgllk...
.kkkllk..kllkkk.
.kwllk....kllgk.
.kwllk....kllgk.
.kkkllk..kllkkk.
...kllgkkgllk...
..kwllllllllgk..
..klgkkllkkggk..
..kkk.kggk.kkk..
......kkkk......
................
"""


def grid(drawing):
    lines = drawing.strip("\n").split("\n")
    rows = [list(line.ljust(SIDE, CLEAR)) for line in lines]
    rows += [[CLEAR] * SIDE for _ in range(SIDE - len(rows))]
    assert len(rows) == SIDE and all(len(row) == SIDE for row in rows), "a drawing is too large"
    return rows


def with_rim(rows):
    """Turns see-through pixels that touch black ones white."""
    rimmed = [row[:] for row in rows]
    for y in range(SIDE):
        for x in range(SIDE):
            around = [
                rows[ny][nx]
                for ny in range(max(0, y - 1), min(SIDE, y + 2))
                for nx in range(max(0, x - 1), min(SIDE, x + 2))
            ]
            if rows[y][x] == CLEAR and BLACK in around:
                rimmed[y][x] = WHITE
    return rimmed


def mask(rows, set_for):
    """A 1-bit picture, bottom row first, with bits set for the given kinds of pixel."""
    data = b""
    for row in reversed(rows):
        bits = "".join("1" if pixel in set_for else "0" for pixel in row)
        data += int(bits, 2).to_bytes(SIDE // 8, "big")
    return data


def cursor_file(rows, hot_spot):
    """A .cur file of one 1-bit picture: the XOR mask with its two colours, then the AND mask."""
    header = struct.pack("<IiiHHIIiiII", 40, SIDE, 2 * SIDE, 1, 1, 0, 2 * SIDE * SIDE // 8, 0, 0, 2, 2)
    colours = bytes((0, 0, 0, 0, 255, 255, 255, 0))
    picture = header + colours + mask(rows, {WHITE}) + mask(rows, {CLEAR})
    directory = struct.pack("<HHH", 0, 2, 1)
    entry = struct.pack("<BBBBHHII", SIDE, SIDE, 2, 0, *hot_spot, len(picture), 6 + 16)
    return directory + entry + picture


def stripes_file(colour):
    """An 8 by 8 .bmp file of 16 colours with diagonal stripes: in each row four coloured pixels and four white ones, and
    each row starts one pixel further on than the one above it."""
    white_index, colour_index = 0, 1
    rows = [[colour_index if (x - y) % 8 < 4 else white_index for x in range(8)] for y in range(8)]
    pixels = b"".join(bytes(row[x] << 4 | row[x + 1] for x in range(0, 8, 2)) for row in reversed(rows))
    palette = bytes((255, 255, 255, 0)) + bytes(reversed(colour)) + bytes(1) + bytes(4 * 14)
    header = struct.pack("<IiiHHIIiiII", 40, 8, 8, 1, 4, 0, len(pixels), 0, 0, 16, 16)
    offset = 14 + len(header) + len(palette)
    return struct.pack("<2sIHHI", b"BM", offset + len(pixels), 0, 0, offset) + header + palette + pixels


def bitmap_file(rows, clear=KEY_COLOUR):
    """A 24-bit .bmp file with a colour for see-through pixels. Its width is a multiple of four."""
    colours = {
        BLACK: (0, 0, 0), WHITE: (255, 255, 255), CLEAR: clear,
        BLUE: (0, 70, 190), GREY: (160, 160, 160), YELLOW: (255, 236, 160),
    }
    pixels = b"".join(bytes(reversed(colours[pixel])) for row in reversed(rows) for pixel in row)
    header = struct.pack("<IiiHHIIiiII", 40, len(rows[0]), len(rows), 1, 24, 0, len(pixels), 0, 0, 0, 0)
    return struct.pack("<2sIHHI", b"BM", 14 + len(header) + len(pixels), 0, 0, 14 + len(header)) + header + pixels


def arrow_head_holds(x, y, tip, direction):
    """Whether a point lies in the triangle that ends at the tip. Angles are degrees from +x towards +y, y downwards."""
    along = (tip[0] - x) * math.cos(math.radians(direction)) + (tip[1] - y) * math.sin(math.radians(direction))
    across = (tip[1] - y) * math.cos(math.radians(direction)) - (tip[0] - x) * math.sin(math.radians(direction))
    return 0 <= along <= 6 and abs(across) <= 0.7 * along


def turn_picture(middle, radius, start, end, arms=False):
    """A framed tile of 24 by 24: an arc about a point from one angle to the other, with an arrow head at its end. With
    arms also a line from the point to either end."""
    side = 24
    sense = 1 if end > start else -1
    head = math.degrees(6 / radius)  # the angle that the arrow head takes
    tip_angle = math.radians(end)
    tip = middle[0] + radius * math.cos(tip_angle), middle[1] + radius * math.sin(tip_angle)
    direction = end + sense * (90 - head / 2)  # of the chord over the head

    def pixel(x, y):
        if x in (0, side - 1) or y in (0, side - 1):
            return GREY
        dx, dy = x - middle[0], y - middle[1]
        distance = math.hypot(dx, dy)
        # From the arc's start, the way that it runs.
        swept = (math.degrees(math.atan2(dy, dx)) - start) * sense % 360
        if arrow_head_holds(x, y, tip, direction):
            return BLUE
        if abs(distance - radius) <= 0.8 and swept <= abs(end - start) - head:
            return BLUE
        if distance < 1.6:
            return BLACK
        for angle in (start, end) if arms else ():
            along = dx * math.cos(math.radians(angle)) + dy * math.sin(math.radians(angle))
            across = dy * math.cos(math.radians(angle)) - dx * math.sin(math.radians(angle))
            if 0 <= along <= radius + 3 and abs(across) <= 0.5:
                return BLACK
        return WHITE

    return [[pixel(x, y) for x in range(side)] for y in range(side)]


def tree_pictures():
    """Three pictures of 16 by 16 in a row: a sheet with a drawing, a bullet, a sheet with arrows along two sides."""
    drawings = [drawing.strip("\n").split("\n") for drawing in (TREE_ROOT, TREE_LEAF, TREE_GROUP)]
    return [[pixel for drawing in drawings for pixel in drawing[y].ljust(16, CLEAR)] for y in range(16)]


def swatch_picture(inside, border, outside):
    """16 by 16: a square of 12 with a border around it."""

    def pixel(x, y):
        distance = min(x, y, 15 - x, 15 - y)
        return outside if distance < 1 else border if distance == 1 else inside

    return [[pixel(x, y) for x in range(16)] for y in range(16)]


def toolbar_picture(drawing, badge="", left=0, top=0):
    """A button's picture of 16 by 15, with a smaller one laid over it."""
    return [row[:16] for row in with_badge(drawing, badge, left, top)[:15]]


def toolbar_pictures():
    """The ten buttons in a row."""
    pictures = (
        toolbar_picture(TOOLBAR_NEW), toolbar_picture(TOOLBAR_INSERT), toolbar_picture(TOOLBAR_SAVE_AS),
        toolbar_picture(TOOLBAR_SELECT, TOOLBAR_POINTER, 9, 5), toolbar_picture(TOOLBAR_AREA, TOOLBAR_CROSS, 9, 8),
        toolbar_picture(TOOLBAR_PEN), toolbar_picture(TOOLBAR_LINE), toolbar_picture(TOOLBAR_ERASER),
        toolbar_picture(TOOLBAR_RASTER), toolbar_picture(TOOLBAR_SETTINGS),
    )
    return [[pixel for picture in pictures for pixel in picture[y]] for y in range(15)]


def disabled_colour(colour):
    """One of the two greys that every display of 256 colours has: outlines and strong colours, or light ones."""
    red, green, blue = colour
    return (160, 160, 164) if 0.3 * red + 0.59 * green + 0.11 * blue < 158 else (192, 192, 192)


def indexed_bitmap_file(rows, colours):
    """A .bmp file of 256 colours; `rows` holds keys of `colours`. Its width is a multiple of four."""
    keys = list(colours)
    palette = b"".join(bytes((*reversed(colours[key]), 0)) for key in keys)
    palette += bytes(4 * (256 - len(keys)))
    pixels = b"".join(bytes(keys.index(pixel) for pixel in row) for row in reversed(rows))
    header = struct.pack("<IiiHHIIiiII", 40, len(rows[0]), len(rows), 1, 8, 0, len(pixels), 0, 0, 256, 256)
    offset = 14 + len(header) + len(palette)
    return struct.pack("<2sIHHI", b"BM", offset + len(pixels), 0, 0, offset) + header + palette + pixels


def main():
    folder = pathlib.Path(__file__).parent
    folder.joinpath("select_raster.cur").write_bytes(cursor_file(with_rim(grid(SELECT_RASTER)), (0, 0)))
    for name, rows, hot_spot in (
        ("area", grid(AREA), (10, 10)),
        ("area_add", with_badge(AREA, PLUS, 16, 18), (10, 10)),
        ("area_subtract", with_badge(AREA, MINUS.replace("\n", "", 1), 16, 18), (10, 10)),
        ("area_move", grid(MOVE), (15, 15)),
        ("move_image", grid(MOVE), (15, 15)),
        ("rotate_base", grid(ROTATE_BASE), (15, 15)),
        ("rotate_free", grid(ROTATE_FREE), (15, 15)),
    ):
        folder.joinpath(name + ".cur").write_bytes(cursor_file(with_rim(rows), hot_spot))
    for name, colour in (("pattern_red", (255, 0, 0)), ("pattern_blue", (0, 0, 255))):
        folder.joinpath(name + ".bmp").write_bytes(stripes_file(colour))
    for name, drawing in (("cursor_pen", PEN), ("cursor_line", LINE), ("cursor_eraser", ERASER)):
        folder.joinpath(name + ".bmp").write_bytes(bitmap_file(with_rim(grid(drawing))))
    # White is see-through in the tree.
    folder.joinpath("properties.bmp").write_bytes(bitmap_file(tree_pictures(), clear=(255, 255, 255)))
    folder.joinpath("swatch_paint.bmp").write_bytes(bitmap_file(swatch_picture(WHITE, BLACK, BLACK)))
    folder.joinpath("swatch_and.bmp").write_bytes(bitmap_file(swatch_picture(BLACK, BLACK, WHITE)))
    for name, picture in (
        ("clockwise", turn_picture((11.5, 17), 11, -140, -30)),
        ("counter_clockwise", turn_picture((11.5, 17), 11, -40, -150)),
        ("half", turn_picture((11.5, 13), 7, -180, 15)),
        ("free", turn_picture((5, 18), 12, 0, -60, arms=True)),
    ):
        folder.joinpath(f"rotate_{name}.bmp").write_bytes(bitmap_file(picture))
    see_through = {CLEAR: TOOLBAR_KEY_COLOUR}
    disabled = {key: disabled_colour(colour) for key, colour in TOOLBAR_COLOURS.items()}
    folder.joinpath("toolbar.bmp").write_bytes(indexed_bitmap_file(toolbar_pictures(), see_through | TOOLBAR_COLOURS))
    folder.joinpath("toolbar_disabled.bmp").write_bytes(indexed_bitmap_file(toolbar_pictures(), see_through | disabled))


if __name__ == "__main__":
    main()
