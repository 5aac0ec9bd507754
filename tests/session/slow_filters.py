"""Slow and obvious twins of what the small dialogs do to pixels. rows[y][x] is 1 for ink and 0 for paper."""


def filter_groups(rows, of, size, dpi, box=None):
    """Turns over each group of pixels of one kind that fits in a square of `size` tenths of a millimetre, at least one
    pixel. Ink hangs together at corners, paper at edges alone, and not where it reaches the border. With a box
    (left, top, right, bottom) the whole group has to lie in it."""
    side = max(1, int(size * dpi / 254 + 0.5))
    width, height = len(rows[0]), len(rows)
    steps = [(dx, dy) for dx in (-1, 0, 1) for dy in (-1, 0, 1) if (dx or dy) and (of == 1 or not (dx and dy))]
    result = [row[:] for row in rows]
    seen = [[False] * width for _ in rows]
    for y in range(height):
        for x in range(width):
            if rows[y][x] != of or seen[y][x]:
                continue
            seen[y][x] = True
            group = [(x, y)]
            for at in group:
                for dx, dy in steps:
                    u, v = at[0] + dx, at[1] + dy
                    if 0 <= u < width and 0 <= v < height and rows[v][u] == of and not seen[v][u]:
                        seen[v][u] = True
                        group.append((u, v))
            left, right = min(u for u, _ in group), max(u for u, _ in group) + 1
            top, bottom = min(v for _, v in group), max(v for _, v in group) + 1
            enclosed = of == 1 or (left > 0 and top > 0 and right < width and bottom < height)
            inside = box is None or (box[0] <= left and box[1] <= top and right <= box[2] and bottom <= box[3])
            if right - left <= side and bottom - top <= side and enclosed and inside:
                for u, v in group:
                    result[v][u] = 1 - of
    return result


def stamp(rows, x, y, side, ink):
    """A brush of that side, pressed once upon a pixel."""
    for v in range(y - side // 2, y - side // 2 + side):
        for u in range(x - side // 2, x - side // 2 + side):
            if 0 <= v < len(rows) and 0 <= u < len(rows[0]):
                rows[v][u] = ink


def halve(rows):
    """At half the size: ink where at least two of four pixels are."""
    return [[int(rows[2 * y][2 * x] + rows[2 * y][2 * x + 1] + rows[2 * y + 1][2 * x] + rows[2 * y + 1][2 * x + 1] >= 2)
             for x in range(len(rows[0]) // 2)] for y in range(len(rows) // 2)]
