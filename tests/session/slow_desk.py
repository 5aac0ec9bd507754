"""A slow and obvious twin of the desk with its mouse tools, for the checks of sessions.

It plays a session's own script with plain arithmetic on lists of pixels and keeps what each saved raster has to hold.
Nothing is asked of the desk: where the images lie is read from the drawing with ezdxf, what they show from their files
with ImageMagick, and how the view lies from the script's `@size` and `zoom` lines. All places are exact fractions, and
a place that lies on the edge between two pixels is refused, as a rounding error would decide there.

A pixel is addressed by column and row from the image's upper left corner; rows[y][x] is 1 for ink and 0 for paper.
"""
import re
import shlex
from fractions import Fraction
from math import floor

import ezdxf

from saved_rasters import fail, run, size

PEN_SIDE, LINE_SIDE, ERASER_SIDE = 3, 3, 10  # the module's own, in image pixels
LARGEST_CURSOR = 31  # view pixels that a stamp may cover at most
LARGEST_HALF_SIZE = 15  # of the square in a brush cursor, in view pixels
CURSOR_SIDE, HOT_SPOT = 32, (15, 16)  # of a brush cursor
SHORTEST_DRAG = 4  # view pixels
SMALLEST_DOUBT = Fraction(1, 10**6)  # of a pixel: nearer to an edge a rounding error may decide
TOOLS = {"ORVO_RASPEN": "pen", "ORVO_RASLINE": "line", "ORVO_RASERAS": "eraser", "ORVO_SELAREA": "area"}
DELETE_AREA, INVERT_AREA = "32803", "32821"


def read_rows(path):
    width, height = size(path)
    gray = run("convert", path, "-depth", "8", "gray:-", text=False)
    return [[1 if gray[y * width + x] < 128 else 0 for x in range(width)] for y in range(height)]


def read_colours(path):
    """Rows of the pixels' colours, three bytes for each."""
    width, height = size(path)
    colours = run("convert", path, "-depth", "8", "rgb:-", text=False)
    return [colours[3 * width * y:3 * width * (y + 1)] for y in range(height)]


def write_rows(path, rows):
    """As a bitmap that any viewer shows, to be looked at when a check misses."""
    header = f"P5 {len(rows[0])} {len(rows)} 255\n".encode()
    with open(path, "wb") as file:
        file.write(header + bytes(0 if ink else 255 for row in rows for ink in row))


def toward_zero(value, what):
    if abs(value - round(value)) < SMALLEST_DOUBT:
        fail(f"{what} lies on the edge between two pixels: give the script another place or zoom")
    return int(value)


class View:
    """A plan view: `height` drawing units on size[1] pixels, with `centre` in its middle."""

    def __init__(self):
        self.size = self.centre = self.height = None

    def resize(self, width, height):
        if self.height is not None:
            self.height = self.height / self.size[1] * height
        self.size = (width, height)

    def show_window(self, a, b):
        width, height = abs(a[0] - b[0]), abs(a[1] - b[1])
        self.centre = ((a[0] + b[0]) / 2, (a[1] + b[1]) / 2)
        self.height = max(height, width * self.size[1] / self.size[0])

    def unit(self):
        """Drawing units on a view pixel."""
        return self.height / self.size[1]

    def to_drawing(self, at):
        return (self.centre[0] + (at[0] - Fraction(self.size[0], 2)) * self.unit(),
                self.centre[1] - (at[1] - Fraction(self.size[1], 2)) * self.unit())

    def to_view(self, point):
        """The view pixel that the script's mouse goes to for a drawing point."""
        x = (point[0] - self.centre[0]) / self.unit() + Fraction(self.size[0], 2)
        y = (self.centre[1] - point[1]) / self.unit() + Fraction(self.size[1], 2)
        return (floor(x + Fraction(1, 2)), floor(y + Fraction(1, 2)))


class Sheet:
    """An image of the drawing. region is None when nothing is selected, else the set of the selected pixels, of which
    some may lie outside the image."""

    def __init__(self, entity, folder):
        name = entity.image_def.dxf.filename
        self.name = name
        self.rows = read_rows(f"{folder}/{name}")
        self.width, self.height = len(self.rows[0]), len(self.rows)
        exactly = lambda vector: tuple(Fraction(str(round(value, 9))) for value in (vector.x, vector.y))
        self.insert = exactly(entity.dxf.insert)
        self.u, self.v = exactly(entity.dxf.u_pixel), exactly(entity.dxf.v_pixel)
        self.region = None

    def from_corner(self, point):
        """How many pixels to the right of and below the image's upper left corner a drawing point lies."""
        x, y = point[0] - self.insert[0], point[1] - self.insert[1]
        determinant = self.u[0] * self.v[1] - self.u[1] * self.v[0]
        along_u = (x * self.v[1] - y * self.v[0]) / determinant
        along_v = (y * self.u[0] - x * self.u[1]) / determinant
        return along_u, self.height - along_v

    def to_pixel(self, point):
        x, y = self.from_corner(point)
        return (toward_zero(x, f"the place {float(point[0])},{float(point[1])}"),
                toward_zero(y, f"the place {float(point[0])},{float(point[1])}"))

    def holds(self, point):
        x, y = self.from_corner(point)
        return 0 < x < self.width and 0 < y < self.height

    def stamp(self, pixel, side, ink):
        for y in range(pixel[1] - side // 2, pixel[1] - side // 2 + side):
            for x in range(pixel[0] - side // 2, pixel[0] - side // 2 + side):
                if self.inside(x, y):
                    self.rows[y][x] = ink

    def box(self):
        """Of the region: left, top, right, bottom; right and bottom exclusive."""
        if self.region is None:
            return (0, 0, self.width, self.height)
        if not self.region:
            return (0, 0, 0, 0)
        columns, rows = [x for x, _ in self.region], [y for _, y in self.region]
        return (min(columns), min(rows), max(columns) + 1, max(rows) + 1)

    def has_selection(self):
        whole = self.box() == (0, 0, self.width, self.height)
        return not whole or (self.region is not None and len(self.region) < self.width * self.height)

    def region_has_edge_along(self, left, top, right, bottom):
        """Nine tenths of the box's outline part selected pixels inside from others outside, which is what a script that
        expects a selection looks for."""
        region = self.region or ()
        sides = [((x, y), (x, outside)) for x in range(left, right)
                 for y, outside in ((top, top - 1), (bottom - 1, bottom))]
        sides += [((x, y), (outside, y)) for y in range(top, bottom)
                  for x, outside in ((left, left - 1), (right - 1, right))]
        seen = sum(inside in region and outside not in region for inside, outside in sides)
        return seen >= 0.9 * len(sides)

    def box_inside(self):
        """Of what the region has of the image."""
        left, top, right, bottom = self.box()
        return (max(left, 0), max(top, 0), min(right, self.width), min(bottom, self.height))

    def selected_rows(self):
        """The box of what the region has of the image, with paper where it is not selected."""
        left, top, right, bottom = self.box_inside()
        return [[self.rows[y][x] if (x, y) in self.region else 0 for x in range(left, right)]
                for y in range(top, bottom)]

    def inside(self, x, y):
        return 0 <= x < self.width and 0 <= y < self.height

    def crop(self):
        left, _, _, bottom = self.box_inside()
        self.rows = self.selected_rows()
        below = self.height - bottom
        self.insert = tuple(self.insert[k] + self.u[k] * left + self.v[k] * below for k in (0, 1))
        self.width, self.height = len(self.rows[0]), len(self.rows)
        self.region = None


def pixels_of_line(start, end):
    """The pixels after the start, one for each step along the longer direction; across it they lag behind."""
    dx, dy = end[0] - start[0], end[1] - start[1]
    right, down = (1 if dx >= 0 else -1), (1 if dy >= 0 else -1)
    steps = max(abs(dx), abs(dy))
    return [(start[0] + right * (i * abs(dx) // steps), start[1] + down * (i * abs(dy) // steps))
            for i in range(1, steps + 1)]


class SlowDesk:
    """Plays a script. expected[FILE] is what the raster saved to FILE has to hold; brushes[FILE], of a picture taken
    while a brush is at work, where in the view the brush is and the half sizes that its cursor's square may have."""

    def __init__(self, drawing, folder="."):
        self.view = View()
        self.sheets = [Sheet(entity, folder) for entity in ezdxf.readfile(drawing).modelspace().query("IMAGE")]
        self.sheet = None
        self.tool = None
        self.expected, self.brushes = {}, {}
        self.mouse = None
        self.saving = self.only_area = False
        self.forget_mouse()

    def forget_mouse(self):
        self.start = self.end = self.last_pixel = None
        self.moving_area = False

    # --- The script ---

    def play(self, script):
        with open(script, encoding="utf-8") as file:
            for number, line in enumerate(file, 1):
                words = shlex.split(line, comments=False) if not line.startswith(";") else []
                if not words:
                    continue
                try:
                    self.step(words)
                except (KeyError, AttributeError, TypeError, ValueError) as error:
                    fail(f"the twin can't play line {number}: {line.strip()} ({error!r})")
        return self.expected

    def step(self, words):
        name = words[0]
        if name.startswith("@"):
            directives = {"@size": self.resize, "@click": self.click, "@drag": self.drag, "@press": self.press_at,
                          "@move": self.move_to, "@release": self.release_at, "@key": self.key, "@menu": self.menu,
                          "@answer": self.answer, "@file": self.save, "@expect": self.expect,
                          "@shot": self.picture}
            if name not in ("@idle", "@wait"):
                directives[name](words[1:])
        elif name.upper() in TOOLS:
            self.tool = TOOLS[name.upper()] if self.sheet else None
            self.forget_mouse()
        else:
            commands = {"ZOOM": self.zoom, "ORVO_SELRAS": self.pick, "ORVO_SAVEAS": self.begin_saving,
                        "ORVO_INVERT": self.invert, "ORVO_CROP": self.crop, "-SAVEAS": lambda words: None}
            commands[name.upper()](words[1:])

    def resize(self, words):
        self.view.resize(*(int(side) for side in words[0].split("x")))

    def zoom(self, words):
        if words[0].lower() == "w":
            self.view.show_window(*(self.point(word) for word in words[1:3]))
        else:
            factor = re.fullmatch(r"(.*)x", words[0].lower())
            self.view.height /= Fraction(factor[1])

    def pick(self, words):
        # With a raster that is current the command only lets go of it.
        self.tool = "pick" if self.sheet is None else None
        self.sheet = None

    def key(self, words):
        if words[0] == "ESC":
            self.tool = None
            self.forget_mouse()

    def begin_saving(self, words):
        self.saving, self.only_area = True, False

    def answer(self, words):
        self.only_area = self.saving and words[0] == "yes"

    def save(self, words):
        self.saving = False
        rows = self.sheet.selected_rows() if self.only_area else self.sheet.rows
        self.expected[words[0]] = [list(row) for row in rows]

    def invert(self, words):
        self.sheet.rows = [[1 - ink for ink in row] for row in self.sheet.rows]

    def crop(self, words):
        if self.sheet.has_selection():
            self.sheet.crop()

    def expect(self, words):
        if words[0] == "selection":
            if not self.sheet.region_has_edge_along(*(int(edge) for edge in words[1].split(","))):
                fail(f"the script expects the selection {words[1]}, but its drags make one in {self.sheet.box()}")
        elif words[:2] == ["no", "selection"] and self.sheet.has_selection():
            fail(f"the script expects no selection, but its drags make {self.sheet.box()}")

    # --- The mouse ---

    @staticmethod
    def point(word):
        return tuple(Fraction(value) for value in word.split(","))

    def place(self, word):
        """In view pixels. The mouse goes there."""
        if word.startswith("view:"):
            self.mouse = tuple(int(value) for value in word.removeprefix("view:").split(","))
        else:
            self.mouse = self.view.to_view(self.point(word))
        return self.mouse

    def pixel(self, at):
        return self.sheet.to_pixel(self.view.to_drawing(at))

    def click(self, words):
        if "right" in words:
            return  # a menu, of which an entry is chosen
        self.press_at(words)
        self.release_at(words)

    def drag(self, words):
        keys = [word for word in words if word in ("shift", "ctrl")]
        places = words[:len(words) - len(keys)]
        self.press_at(places[:1] + keys)
        for place in places[1:]:
            self.move_to([place] + keys)
        self.release(keys)

    def press_at(self, words):
        self.press(self.place(words[0]), words[1:])

    def release_at(self, words):
        self.move_to(words)
        self.release(words[1:])

    def press(self, at, keys):
        if self.tool == "pick":
            under = [sheet for sheet in self.sheets if sheet.holds(self.view.to_drawing(at))]
            self.sheet = under[-1] if under else None
            self.tool = None
            return
        if self.tool is None:
            return
        self.start = self.end = at
        if self.tool in ("pen", "eraser"):
            self.paint_freehand([self.pixel(at)])
        elif self.tool == "area":
            held = "shift" in keys or "ctrl" in keys
            selected = self.sheet.has_selection()
            self.moving_area = selected and not held and self.pixel(at) in (self.sheet.region or ())
            if selected and not held and not self.moving_area:
                self.sheet.region = None

    def move_to(self, words):
        at = self.place(words[0])
        if self.start is None:
            return
        if self.tool in ("pen", "eraser"):
            pixel = self.pixel(at)
            if pixel != self.last_pixel:
                self.paint_freehand(pixels_of_line(self.last_pixel, pixel))
        elif self.tool == "line" and "shift" in words[1:]:
            level = abs(at[0] - self.start[0]) > abs(at[1] - self.start[1])
            at = (at[0], self.start[1]) if level else (self.start[0], at[1])
        self.end = at

    def release(self, keys):
        if self.start is None:
            return
        across = [abs(self.end[k] - self.start[k]) for k in (0, 1)]
        if self.tool == "line" and max(across) >= SHORTEST_DRAG:
            side = self.side(LINE_SIDE)
            for pixel in pixels_of_line(self.pixel(self.start), self.pixel(self.end)):
                self.sheet.stamp(pixel, side, 1)
        elif self.tool == "area" and self.moving_area:
            if max(across) >= SHORTEST_DRAG:
                self.move_area()
        elif self.tool == "area" and min(across) >= SHORTEST_DRAG:
            self.combine_area(keys)
        self.forget_mouse()

    # --- Pen, line and eraser ---

    def picture(self, words):
        widths = {"pen": PEN_SIDE, "line": LINE_SIDE, "eraser": ERASER_SIDE}
        if self.tool in widths:
            side = widths[self.tool]
            across = {abs(a - b) for a in self.view_columns(side, side) for b in self.view_columns(0, 0)}
            self.brushes[words[0]] = (self.mouse, {min(pixels // 2, LARGEST_HALF_SIZE) for pixels in across})

    def view_columns(self, x, y):
        """Where in the view the upper left corner of an image pixel lies: two columns if it lies between them."""
        corner = self.sheet.insert[0] + self.sheet.u[0] * x + self.sheet.v[0] * (self.sheet.height - y)
        column = (corner - self.view.centre[0]) / self.view.unit() + Fraction(self.view.size[0] + 1, 2)
        return {int(column - SMALLEST_DOUBT), int(column + SMALLEST_DOUBT)}

    def side(self, width):
        """Of the stamp in image pixels: as wide as the tool, but no wider on the view than its largest cursor."""
        corner, origin = self.pixel((LARGEST_CURSOR, LARGEST_CURSOR)), self.pixel((0, 0))
        return min(width, abs(corner[0] - origin[0]))

    def paint_freehand(self, pixels):
        side, ink = (self.side(PEN_SIDE), 1) if self.tool == "pen" else (self.side(ERASER_SIDE), 0)
        for pixel in pixels:
            self.sheet.stamp(pixel, side, ink)
        self.last_pixel = pixels[-1]

    # --- Area ---

    def combine_area(self, keys):
        # The view's own upper left and lower right corners, which on a turned image are others of the rectangle's four.
        a, b = (self.pixel((low(self.start[0], self.end[0]), low(self.start[1], self.end[1]))) for low in (min, max))
        rectangle = {(x, y) for x in range(min(a[0], b[0]), max(a[0], b[0]))
                     for y in range(min(a[1], b[1]), max(a[1], b[1]))}
        if not self.sheet.has_selection():
            self.sheet.region = rectangle
        elif "shift" in keys:
            self.sheet.region |= rectangle
        else:
            self.sheet.region -= rectangle

    def move_area(self):
        a, b = self.pixel(self.start), self.pixel(self.end)
        self.sheet.region = {(x + b[0] - a[0], y + b[1] - a[1]) for x, y in self.sheet.region}

    def menu(self, words):
        if words[0] == INVERT_AREA:
            whole = {(x, y) for x in range(self.sheet.width) for y in range(self.sheet.height)}
            self.sheet.region = whole - self.sheet.region
        elif words[0] == DELETE_AREA:
            for x, y in self.sheet.region:
                if self.sheet.inside(x, y):
                    self.sheet.rows[y][x] = 0
        else:
            raise KeyError(words[0])


def expect_rows(saved, expected):
    """The saved raster holds exactly these rows; if not, the expected and the differing ones are left beside it."""
    found = read_rows(saved)
    if (len(found[0]), len(found)) != (len(expected[0]), len(expected)):
        fail(f"{saved} measures {len(found[0])} x {len(found)}, but {len(expected[0])} x {len(expected)} was expected")
    wrong = [(x, y) for y, row in enumerate(found) for x, ink in enumerate(row) if ink != expected[y][x]]
    if wrong:
        write_rows(f"{saved}.expected.pgm", expected)
        write_rows(f"{saved}.different.pgm", [[(x, y) in set(wrong[:100000]) for x in range(len(expected[0]))]
                                              for y in range(len(expected))])
        fail(f"{saved} differs from what the twin painted in {len(wrong)} pixels, the first of them {wrong[:5]}")
    print(f"{saved}: {len(found[0])} x {len(found)}, {sum(map(sum, found))} of ink, as the twin painted it")


def ring(half_size):
    """The outline of a square about the hot spot, as far as it lies in the cursor."""
    reach = range(-half_size, half_size + 1)
    outline = {(dx, dy) for dx in reach for dy in reach if half_size in (abs(dx), abs(dy))}
    return {at for at in outline if all(0 <= at[k] + HOT_SPOT[k] < CURSOR_SIDE for k in (0, 1))}


def expect_brushes(brushes):
    """In each picture the cursor has a black square in a white one of the right size where the mouse is. How far below
    the picture's edge the view begins depends on the menu bar; it must be the same for all."""
    tops = set(range(60))
    for path, (mouse, half_sizes) in brushes.items():
        colours = read_colours(path)

        def has_square(top, half_size):
            return all(colours[mouse[1] + top + dy][3 * (mouse[0] + dx):3 * (mouse[0] + dx) + 3] == colour * 3
                       for outline, colour in ((ring(half_size), b"\x00"), (ring(half_size + 1), b"\xff"))
                       for dx, dy in outline)

        tops = {top for top in tops if any(has_square(top, half_size) for half_size in half_sizes)}
        if not tops:
            fail(f"{path}: no square of half size {half_sizes} about {mouse} of the view")
        print(f"{path}: the brush's square reaches {min(half_sizes)} to {max(half_sizes)} view pixels to each side")


def check_session(script, drawing, desk=SlowDesk):
    """Plays the script and compares every raster that it saved. Returns the twin as it stands at the end."""
    twin = desk(drawing)
    expected = twin.play(script)
    if not expected:
        fail("the script saves no raster")
    for saved, rows in expected.items():
        expect_rows(saved, rows)
    return twin
