"""The rotate dialog with its tools, played slowly: see slow_desk.py. Rotations go by the plain inverse map."""
from math import atan2, cos, floor, pi, sin, sqrt

from slow_clipboard import SlowClipboardDesk

QUARTER_CLOCKWISE, QUARTER_COUNTER_CLOCKWISE, HALF, FREE = "1030", "1031", "1032", "1033"
ANGLES = {QUARTER_CLOCKWISE: pi / 2, QUARTER_COUNTER_CLOCKWISE: 3 * pi / 2, HALF: pi}
ONLY_SELECTION, OK, CANCEL = "1034", "1", "2"
START_ROTATION, TOGGLE_TRANSPARENT = "122", "32824"

# As the handles reckon.
HALF_TURN, FULL_TURN = 3.141592654, 6.283185308
REACH = 4  # view pixels about a handle
BASE, FIRST, SECOND, ALL = "base point", "first arm", "second arm", "all handles"


def turned_clockwise(rows):
    return [[row[x] for row in reversed(rows)] for x in range(len(rows[0]))]


def rotated(rows, region, angle, pivot, transparent):
    """The region's pixels are lifted, turned clockwise about the middle of the pivot pixel and laid down again."""
    width, height = len(rows[0]), len(rows)
    cosine, sine = cos(angle), sin(angle)
    result = [[0 if (x, y) in region else rows[y][x] for x in range(width)] for y in range(height)]
    for y in range(height):
        for x in range(width):
            across, down = x - pivot[0], y - pivot[1]
            source = (floor(cosine * across + sine * down + pivot[0] + 0.5),
                      floor(cosine * down - sine * across + pivot[1] + 0.5))
            inside = 0 <= source[0] < width and 0 <= source[1] < height
            if inside and source in region and (rows[source[1]][source[0]] or not transparent):
                result[y][x] = rows[source[1]][source[0]]
    return result


def direction(start, end):
    if start == end:
        return 0.0
    angle = atan2(end[1] - start[1], end[0] - start[0])
    return angle + FULL_TURN if angle < 0 else angle


def between(a, b):
    while a > FULL_TURN:
        a -= FULL_TURN
    while b > FULL_TURN:
        b -= FULL_TURN
    difference = abs(b - a)
    return FULL_TURN - difference if difference > HALF_TURN else difference


def swept(base, first, second):
    """From the first arm to the second, 0 to a full turn."""
    a, b = direction(base, first), direction(base, second)
    angle = between(a, b)
    return FULL_TURN - angle if between(angle + b, a) < 0.0001 else angle


class SlowRotateDesk(SlowClipboardDesk):
    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.mode = self.only_selection = None  # the dialog's
        self.handles = {}  # image pixels
        self.dragged = None
        self.angles = []  # of all free rotations

    # --- The dialog ---

    def step(self, words):
        dialog = {"@check": self.check, "@push": self.push}
        if words[0] in dialog:
            dialog[words[0]](words[1:])
        elif words[0].upper() == "ORVO_ROTATE":
            self.mode, self.only_selection = QUARTER_CLOCKWISE, self.sheet.has_selection()
            self.tool = None
        elif words[0] != "@dialog":
            super().step(words)

    def check(self, words):
        if words[0] != ONLY_SELECTION:
            raise KeyError(words[0])
        self.only_selection = words[1] == "1"

    def push(self, words):
        if words[0] in (*ANGLES, FREE):
            self.mode = words[0]
        elif words[0] == OK:
            self.begin_rotation()
        elif words[0] != CANCEL:
            raise KeyError(words[0])

    def begin_rotation(self):
        self.forget_mouse()
        if self.mode == FREE:
            self.tool, self.transparent = "free rotation", True
            self.place_handles()
        elif self.only_selection:
            self.tool = "fixed rotation"
        else:
            for _ in range({QUARTER_CLOCKWISE: 1, HALF: 2, QUARTER_COUNTER_CLOCKWISE: 3}[self.mode]):
                self.sheet.rows = turned_clockwise(self.sheet.rows)
            self.sheet.width, self.sheet.height = len(self.sheet.rows[0]), len(self.sheet.rows)
            self.sheet.region = None

    def rotate(self, angle, pivot, only_selection, transparent):
        whole = {(x, y) for x in range(self.sheet.width) for y in range(self.sheet.height)}
        region = self.sheet.region if only_selection and self.sheet.region is not None else whole
        self.sheet.rows = rotated(self.sheet.rows, region, angle, pivot, transparent)
        self.sheet.region = None

    # --- The handles ---

    def place_handles(self):
        across, down = self.view.size[0] // 2, self.view.size[1] // 2
        sixth, twelfth = across // 6, across // 12
        self.handles = {BASE: self.pixel((across - sixth, down)), FIRST: self.pixel((across + twelfth, down - sixth)),
                        SECOND: self.pixel((across + sixth, down))}

    def handle_at(self, at):
        places = {handle: self.view_of_corner(*pixel) for handle, pixel in self.handles.items()}
        for handle in (BASE, FIRST, SECOND):
            if all(abs(at[k] - places[handle][k]) <= REACH for k in (0, 1)):
                return handle
        return ALL if self.lies_in_box(at) else None

    def lies_in_box(self, at):
        """The box of the handles in image pixels, 5 view pixels wider, and the square that holds the arc."""
        pixels = list(self.handles.values())
        low, high = ([extreme(pixel[k] for pixel in pixels) for k in (0, 1)] for extreme in (min, max))
        a, b = self.view_of_corner(*low), self.view_of_corner(*high)
        a, b = [min(a[k], b[k]) - 5 for k in (0, 1)], [max(a[k], b[k]) + 5 for k in (0, 1)]
        a, b = self.pixel(a), self.pixel(b)
        base = self.handles[BASE]
        reach = [sqrt(sum((base[k] - self.handles[arm][k]) ** 2 for k in (0, 1))) for arm in (FIRST, SECOND)]
        radius = int(0.5 * min(reach))
        low = [min(a[k], b[k], base[k] - radius - 1) for k in (0, 1)]
        high = [max(a[k], b[k], base[k] + radius + 1) for k in (0, 1)]
        a, b = self.view_of_corner(*low), self.view_of_corner(*high)
        return all(min(a[k], b[k]) <= at[k] < max(a[k], b[k]) for k in (0, 1))

    def snapped(self, at):
        if self.dragged in (FIRST, SECOND):
            origin = self.view_of_corner(*self.handles[BASE])
            upright = abs(origin[0] - at[0]) <= abs(origin[1] - at[1])
        else:
            origin = self.start
            upright = abs(at[0] - origin[0]) <= abs(at[1] - origin[1])
        return (origin[0], at[1]) if upright else (at[0], origin[1])

    def drop(self):
        start, end = self.pixel(self.start), self.pixel(self.end)
        if self.dragged == ALL:
            for handle, pixel in self.handles.items():
                self.handles[handle] = tuple(pixel[k] + end[k] - start[k] for k in (0, 1))
        else:
            self.handles[self.dragged] = end

    # --- The mouse and the menu ---

    def press(self, at, keys):
        if self.tool == "fixed rotation":
            self.rotate(ANGLES[self.mode], self.pixel(at), True, False)
            self.tool = None
        elif self.tool == "free rotation":
            self.dragged = self.handle_at(at)
            self.start = self.end = at if self.dragged else None
        else:
            super().press(at, keys)

    def move_to(self, words):
        if self.tool != "free rotation":
            super().move_to(words)
        elif self.dragged:
            at = self.place(words[0])
            self.end = self.snapped(at) if "shift" in words[1:] else at

    def release(self, keys):
        if self.tool == "free rotation" and self.dragged:
            self.drop()
            self.dragged = None
        super().release(keys)

    def menu(self, words):
        if self.tool != "free rotation":
            super().menu(words)
        elif words[0] == TOGGLE_TRANSPARENT:
            self.transparent = not self.transparent
        elif words[0] == START_ROTATION:
            self.angles.append(swept(*(self.handles[handle] for handle in (BASE, FIRST, SECOND))))
            self.rotate(self.angles[-1], self.handles[BASE], self.only_selection, self.transparent)
            self.tool = None
        else:
            raise KeyError(words[0])
