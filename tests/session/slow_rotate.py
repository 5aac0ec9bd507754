"""The rotate dialog with its tools, played slowly: see slow_desk.py. Rotations go by the plain inverse map. What the
handles of a free rotation are dragged to, the twin is told: by how much the script turns, and about which pixel."""
from math import cos, floor, pi, radians, sin

from slow_clipboard import SlowClipboardDesk

QUARTER_CLOCKWISE, QUARTER_COUNTER_CLOCKWISE, HALF, FREE = "1030", "1031", "1032", "1033"
ANGLES = {QUARTER_CLOCKWISE: pi / 2, QUARTER_COUNTER_CLOCKWISE: 3 * pi / 2, HALF: pi}
ONLY_SELECTION, OK, CANCEL = "1034", "1", "2"
START_ROTATION, TOGGLE_TRANSPARENT = "122", "32824"


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


class SlowRotateDesk(SlowClipboardDesk):
    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.mode = self.only_selection = None  # the dialog's
        self.turns = []  # the free rotations to come: degrees clockwise, and the pixel turned about

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

    # --- The mouse and the menu ---

    def press(self, at, keys):
        if self.tool == "fixed rotation":
            self.rotate(ANGLES[self.mode], self.pixel(at), True, False)
            self.tool = None
        elif self.tool != "free rotation":
            super().press(at, keys)

    def move_to(self, words):
        if self.tool != "free rotation":
            super().move_to(words)

    def menu(self, words):
        if self.tool != "free rotation":
            super().menu(words)
        elif words[0] == TOGGLE_TRANSPARENT:
            self.transparent = not self.transparent
        elif words[0] == START_ROTATION:
            degrees, pivot = self.turns.pop(0)
            self.rotate(radians(degrees), pivot, self.only_selection, self.transparent)
            self.tool = None
        else:
            raise KeyError(words[0])
