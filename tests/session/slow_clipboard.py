"""The clipboard and the paste tool, played slowly: see slow_desk.py."""
from fractions import Fraction
from math import trunc

from slow_desk import DELETE_AREA, SlowDesk, fail

COPY_AREA, PASTE, CUT_AREA = "32801", "32802", "32804"
TOGGLE_TRANSPARENT = "32808"


class SlowClipboardDesk(SlowDesk):
    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.clipboard = None  # rows
        self.floating = None  # the upper left corner in image pixels
        self.transparent = None
        self.view_of_paste = None
        self.grabbed = None  # the image pixel that a drag was at last

    # --- The menus ---

    def menu(self, words):
        chosen = words[0]
        if self.tool == "paste":
            if chosen != TOGGLE_TRANSPARENT:
                raise KeyError(chosen)
            self.transparent = not self.transparent
        elif chosen == PASTE:
            self.float_clipboard()
        elif chosen in (COPY_AREA, CUT_AREA):
            self.clipboard = self.sheet.selected_rows()
            if chosen == CUT_AREA:
                super().menu([DELETE_AREA])
        else:
            super().menu(words)

    def float_clipboard(self):
        """In the middle of the view, each time transparent at first."""
        middle = self.pixel((self.view.size[0] // 2, self.view.size[1] // 2))
        self.floating = (middle[0] - len(self.clipboard[0]) // 2, middle[1] - len(self.clipboard) // 2)
        self.transparent = True
        self.tool, self.grabbed = "paste", None
        self.view_of_paste = (self.view.centre, self.view.height)

    # --- The mouse ---

    def press(self, at, keys):
        if self.tool != "paste":
            super().press(at, keys)
            return
        if self.view_of_paste != (self.view.centre, self.view.height):
            fail("in a changed view the mouse has to be moved before it is pressed")
        if self.lies_on_floating(at):
            self.grabbed = self.pixel(at)
        else:
            self.commit()
            self.tool = "area"

    def drag(self, words):
        if self.tool == "paste" and sum("," in word for word in words) != 2:
            fail("a drag of what floats leaves out moves that come too fast: give it one, or move and wait")
        super().drag(words)

    def move_to(self, words):
        if self.tool != "paste":
            super().move_to(words)
        elif self.view_of_paste != (self.view.centre, self.view.height):
            self.tool = "area"
        elif self.grabbed:
            pixel = self.pixel(self.place(words[0]))
            self.floating = tuple(self.floating[k] + pixel[k] - self.grabbed[k] for k in (0, 1))
            self.grabbed = pixel

    def release(self, keys):
        self.grabbed = None
        super().release(keys)

    def lies_on_floating(self, at):
        left, top = self.floating
        corners = [self.view_of_corner(x, y) for x, y in
                   ((left, top), (left + len(self.clipboard[0]), top + len(self.clipboard)))]
        return all(min(corners[0][k], corners[1][k]) <= at[k] < max(corners[0][k], corners[1][k]) for k in (0, 1))

    def view_of_corner(self, x, y):
        """The view pixel of the corner between four image pixels, (x, y) being the one to the right and below."""
        sheet, up = self.sheet, self.sheet.height - y
        point = [sheet.insert[k] + sheet.u[k] * x + sheet.v[k] * up for k in (0, 1)]
        unit, size = self.view.unit(), self.view.size
        return (trunc((point[0] - self.view.centre[0]) / unit + Fraction(size[0] + 1, 2)),
                trunc((self.view.centre[1] - point[1]) / unit + Fraction(size[1] + 1, 2)))

    def commit(self):
        left, top = self.floating
        for down, row in enumerate(self.clipboard):
            for across, ink in enumerate(row):
                x, y = left + across, top + down
                if 0 <= x < self.sheet.width and 0 <= y < self.sheet.height and (ink or not self.transparent):
                    self.sheet.rows[y][x] = ink
