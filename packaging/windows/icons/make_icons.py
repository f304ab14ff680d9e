#!/usr/bin/env python3
"""Draws the icons of the Windows programs: make_icons.py FOLDER writes application.ico and its like into the folder.

They show what the program itself draws in its windows. Every picture is a list of flat shapes on a square with sides of
32, filled by how much of each pixel they cover.
"""

import math
import pathlib
import struct
import sys
import zlib

SIZES = (16, 24, 32, 48, 64, 256)
ROWS = 8  # of samples in one row of pixels; along the row the coverage is exact

BLUE, PAPER, LINE, SHADE, WHITE = (38, 94, 154), (250, 250, 250), (150, 160, 172), (226, 232, 240), (255, 255, 255)


# Shapes: closed outlines, lists of points

def rectangle(left, top, width, height):
    return [(left, top), (left + width, top), (left + width, top + height), (left, top + height)]


def arc(x, y, radius, begin, end, steps=24):
    """In quarters of a turn, clockwise from the right."""
    angles = [(begin + (end - begin) * step / steps) * math.pi / 2 for step in range(steps + 1)]
    return [(x + radius * math.cos(angle), y + radius * math.sin(angle)) for angle in angles]


def circle(x, y, radius):
    return arc(x, y, radius, 0, 4, 96)


def rounded(left, top, width, height, radius):
    right, bottom = left + width - radius, top + height - radius
    return (arc(right, bottom, radius, 0, 1) + arc(left + radius, bottom, radius, 1, 2)
            + arc(left + radius, top + radius, radius, 2, 3) + arc(right, top + radius, radius, 3, 4))


def gear(x, y, inner, outer, teeth):
    outline = []
    for tooth in range(teeth):
        for offset, radius in ((-0.3, inner), (-0.2, outer), (0.2, outer), (0.3, inner)):
            angle = (tooth + offset) / teeth * 2 * math.pi
            outline.append((x + radius * math.cos(angle), y + radius * math.sin(angle)))
    return outline


# Pictures: colours with the outlines that they fill; a place that an even number of outlines contains stays open

TILE = (BLUE, [rounded(2, 2, 28, 28, 5)])


def application():
    """A tile with a start sign."""
    return [TILE, (WHITE, [[(11, 8), (25, 16), (11, 24)]])]


def service():
    """A tile with a gear wheel."""
    return [TILE, (WHITE, [gear(16, 16, 7.5, 10.5, 8), circle(16, 16, 3.5)])]


def helper():
    """A tile with a person."""
    return [TILE, (WHITE, [circle(16, 11, 5)]), (WHITE, [arc(16, 26, 9, 2, 4)])]


def message():
    """A tile with a speech bubble."""
    bubble = [rounded(7, 8, 18, 12, 3)], [[(11, 19.5), (17, 19.5), (11, 25)]]
    lines = [rectangle(10, 11.5, 12, 1.5), rectangle(10, 15, 8, 1.5)]
    return [TILE, *((WHITE, outlines) for outlines in bubble), (BLUE, lines)]


def frontend():
    """A window that shows a table."""
    lines = [(LINE, [rectangle(3, top, 26, 1)]) for top in (15, 19, 23)]
    lines += [(LINE, [rectangle(left, 11, 1, 16)]) for left in (11, 20)]
    return [(LINE, [rounded(2, 4, 28, 24, 3)]), (PAPER, [rectangle(3, 10, 26, 17)]),
            (BLUE, [rounded(2, 4, 28, 7, 3)]), (SHADE, [rectangle(3, 11, 8, 16)]), *lines]


# Drawing

def crossings(outlines, y):
    """Where the outlines cross a horizontal line, from left to right."""
    found = []
    for outline in outlines:
        for (x1, y1), (x2, y2) in zip(outline, outline[1:] + outline[:1]):
            if (y1 <= y) != (y2 <= y):
                found.append(x1 + (y - y1) * (x2 - x1) / (y2 - y1))
    return sorted(found)


def add_span(row, left, right):
    """Adds to each pixel of the row how much of it lies between the two places."""
    left, right = max(left, 0), min(right, len(row))
    for pixel in range(int(left), math.ceil(right)):
        row[pixel] += max(0, min(right, pixel + 1) - max(left, pixel)) / ROWS


def coverage(outlines, size):
    """For each pixel, row by row, which part of it the outlines fill."""
    outlines = [[(x * size / 32, y * size / 32) for x, y in outline] for outline in outlines]
    rows = [[0.0] * size for _ in range(size)]
    for sample in range(size * ROWS):
        places = crossings(outlines, (sample + 0.5) / ROWS)
        for left, right in zip(places[::2], places[1::2]):
            add_span(rows[sample // ROWS], left, right)
    return [part for row in rows for part in row]


def draw(picture, size):
    """Pixels as (red, green, blue, alpha), from the top left."""
    pixels = [((0.0, 0.0, 0.0), 0.0)] * (size * size)  # colours multiplied by their alpha
    for colour, outlines in picture:
        for place, part in enumerate(coverage(outlines, size)):
            below, alpha = pixels[place]
            if part:
                pixels[place] = (tuple(new * part + old * (1 - part) for new, old in zip(colour, below)),
                                 part + alpha * (1 - part))
    return [tuple(min(255, round(value / alpha)) for value in colour) + (min(255, round(alpha * 255)),)
            if alpha else (0, 0, 0, 0) for colour, alpha in pixels]


# Files

def bitmap(pixels, size):
    """An image of an icon file: bottom row first, with the mask that 32 bits make superfluous."""
    rows = [pixels[begin:begin + size] for begin in range(0, size * size, size)]
    colours = b"".join(bytes((blue, green, red, alpha)) for row in rows[::-1] for red, green, blue, alpha in row)
    mask = b"".join(sum((alpha == 0) << (size - 1 - x) for x, (*_, alpha) in enumerate(row)).to_bytes(size // 8, "big")
                    .ljust((size + 31) // 32 * 4, b"\0") for row in rows[::-1])
    header = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, 32, 0, len(colours) + len(mask), 0, 0, 0, 0)
    return header + colours + mask


def png(pixels, size):
    def chunk(kind, content):
        return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))

    rows = b"".join(b"\0" + b"".join(bytes(pixel) for pixel in pixels[begin:begin + size])
                    for begin in range(0, size * size, size))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


def icon_file(picture):
    """Large images are compressed, as the system has understood since Windows Vista."""
    images = [(png if size >= 256 else bitmap)(draw(picture, size), size) for size in SIZES]
    place = 6 + 16 * len(images)
    directory = struct.pack("<HHH", 0, 1, len(images))
    for size, image in zip(SIZES, images):
        directory += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(image), place)
        place += len(image)
    return directory + b"".join(images)


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for picture in (application, service, helper, message, frontend):
        (folder / (picture.__name__ + ".ico")).write_bytes(icon_file(picture()))


if __name__ == "__main__":
    main()
