#!/usr/bin/env python3
"""Draws the program's bitmaps and icon (standard library only) and writes them next to this
script: rows.bmp (bitmap 108, the 22 row images in one 352x16 strip, pure green as the mask),
spare.bmp (bitmap 110) and tremolanth.ico. Run it again after changing a picture."""

import os
import struct

GREEN = (0, 255, 0)  # the mask colour of the image lists
BLACK = (0, 0, 0)
WHITE = (255, 255, 255)
GREY = (128, 128, 128)
LIGHT = (208, 208, 208)
DARK = (64, 64, 64)
BLUE = (0, 64, 192)
NAVY = (0, 32, 112)
RED = (200, 24, 24)
GOLD = (224, 168, 0)
BROWN = (140, 90, 20)
ORANGE = (240, 140, 0)
TEAL = (0, 128, 128)
PURPLE = (128, 0, 128)
SKY = (96, 160, 240)

# A 3x5 pixel font for the few characters the pictures use.
FONT = {
    "0": ["111", "101", "101", "101", "111"],
    "1": ["010", "110", "010", "010", "111"],
    "2": ["111", "001", "111", "100", "111"],
    "3": ["111", "001", "011", "001", "111"],
    "?": ["111", "001", "011", "000", "010"],
    "T": ["111", "010", "010", "010", "010"],
    "#": ["101", "111", "101", "111", "101"],
}


class Canvas:
    def __init__(self, width, height, background=GREEN):
        self.width, self.height = width, height
        self.pixels = [[background] * width for _ in range(height)]

    def put(self, x, y, colour):
        if 0 <= x < self.width and 0 <= y < self.height:
            self.pixels[y][x] = colour

    def rect(self, x0, y0, x1, y1, colour):  # filled, inclusive
        for y in range(y0, y1 + 1):
            for x in range(x0, x1 + 1):
                self.put(x, y, colour)

    def frame(self, x0, y0, x1, y1, colour):
        for x in range(x0, x1 + 1):
            self.put(x, y0, colour)
            self.put(x, y1, colour)
        for y in range(y0, y1 + 1):
            self.put(x0, y, colour)
            self.put(x1, y, colour)

    def line(self, x0, y0, x1, y1, colour):
        steps = max(abs(x1 - x0), abs(y1 - y0), 1)
        for i in range(steps + 1):
            self.put(round(x0 + (x1 - x0) * i / steps), round(y0 + (y1 - y0) * i / steps), colour)

    def disc(self, cx, cy, r, colour):
        for y in range(-r, r + 1):
            for x in range(-r, r + 1):
                if x * x + y * y <= r * r + r:
                    self.put(cx + x, cy + y, colour)

    def ring(self, cx, cy, r, colour):
        for y in range(-r, r + 1):
            for x in range(-r, r + 1):
                d = x * x + y * y
                if r * r - r <= d <= r * r + r:
                    self.put(cx + x, cy + y, colour)

    def text(self, x, y, chars, colour, scale=1):
        for c in chars:
            for row, bits in enumerate(FONT[c]):
                for col, bit in enumerate(bits):
                    if bit == "1":
                        self.rect(x + col * scale, y + row * scale,
                                  x + col * scale + scale - 1, y + row * scale + scale - 1, colour)
            x += 4 * scale


# Each picture draws into a 16x16 cell whose origin is (ox, 0).
def device(c, o):  # a handset
    c.rect(o + 4, 0, o + 11, 15, DARK)
    c.rect(o + 5, 2, o + 10, 7, SKY)
    for y in (9, 11, 13):
        for x in (5, 7, 9):
            c.rect(o + x, y, o + x + 1, y, LIGHT)


def text_row(c, o):  # a page of text
    c.rect(o + 2, 1, o + 13, 14, WHITE)
    c.frame(o + 2, 1, o + 13, 14, DARK)
    for y in (4, 7, 10):
        c.line(o + 4, y, o + 11, y, NAVY)
    c.line(o + 4, 12, o + 8, 12, NAVY)


def button(c, o):  # a raised push button
    c.rect(o + 1, 4, o + 14, 11, LIGHT)
    c.line(o + 1, 4, o + 14, 4, WHITE)
    c.line(o + 1, 4, o + 1, 11, WHITE)
    c.line(o + 1, 11, o + 14, 11, DARK)
    c.line(o + 14, 4, o + 14, 11, DARK)
    c.rect(o + 5, 7, o + 10, 8, BLACK)


def check_box(c, o, on):
    c.rect(o + 2, 2, o + 13, 13, WHITE)
    c.frame(o + 2, 2, o + 13, 13, DARK)
    if on:
        for i, (x, y) in enumerate([(4, 7), (5, 8), (6, 9), (7, 8), (8, 7), (9, 6), (10, 5), (11, 4)]):
            c.rect(o + x, y, o + x, y + 1, BLACK)


def radio(c, o, on):
    c.disc(o + 7, 7, 6, WHITE)
    c.ring(o + 7, 7, 6, DARK)
    if on:
        c.disc(o + 7, 7, 2, BLACK)


def padlock(c, o, locked):
    c.rect(o + 3, 7, o + 12, 14, GOLD)
    c.frame(o + 3, 7, o + 12, 14, BROWN)
    c.rect(o + 7, 9, o + 8, 12, BROWN)
    left = 5
    right = 10
    top = 2 if locked else 0
    c.line(o + left, top + 1, o + left, 6 if locked else 3, DARK)
    c.line(o + right, top + 1, o + right, 6, DARK)
    c.line(o + left + 1, top, o + right - 1, top, DARK)
    if not locked:  # the shackle lifted and open on the left
        c.put(o + left, 4, GREEN)


def clock(c, o):
    c.disc(o + 7, 8, 6, WHITE)
    c.ring(o + 7, 8, 6, NAVY)
    c.line(o + 7, 8, o + 7, 4, BLACK)
    c.line(o + 7, 8, o + 10, 8, BLACK)
    c.rect(o + 5, 0, o + 9, 1, NAVY)


def section(c, o, opened):  # a folder, open or closed
    c.rect(o + 1, 3, o + 6, 4, GOLD)
    c.rect(o + 1, 5, o + 14, 13, GOLD)
    c.frame(o + 1, 5, o + 14, 13, BROWN)
    if opened:
        for y in range(8, 14):
            c.line(o + 3 + (13 - y) // 2, y, o + 14, y, (250, 220, 120))
        c.line(o + 6, 8, o + 14, 8, BROWN)
    else:
        c.line(o + 1, 7, o + 14, 7, BROWN)


def list_row(c, o, spin=True):
    for y in (3, 7, 11):
        c.rect(o + 1, y, o + 2, y + 1, NAVY)
        c.line(o + 4, y, o + 9 if spin else o + 13, y, DARK)
    if spin:
        spin_arrows(c, o)


def number(c, o):
    c.rect(o + 0, 3, o + 15, 12, WHITE)
    c.frame(o + 0, 3, o + 15, 12, DARK)
    c.text(o + 2, 5, "123", NAVY)


def spin_arrows(c, o):
    c.rect(o + 11, 1, o + 15, 14, LIGHT)
    c.line(o + 13, 3, o + 13, 3, BLACK)
    c.line(o + 12, 4, o + 14, 4, BLACK)
    c.line(o + 12, 11, o + 14, 11, BLACK)
    c.line(o + 13, 12, o + 13, 12, BLACK)


def pencil(c, o):
    for i in range(6):
        c.rect(o + 9 + i, 14 - i - 1, o + 10 + i, 14 - i, ORANGE)
    c.put(o + 8, 14, BLACK)
    c.put(o + 9, 14, BLACK)


def number_editable(c, o):
    c.rect(o + 0, 3, o + 10, 12, WHITE)
    c.frame(o + 0, 3, o + 10, 12, DARK)
    c.text(o + 2, 5, "12", NAVY)
    spin_arrows(c, o)


def number_no_spin(c, o):
    number(c, o)
    pencil(c, o)


def chart(c, o):
    c.line(o + 1, 1, o + 1, 14, BLACK)
    c.line(o + 1, 14, o + 15, 14, BLACK)
    c.rect(o + 3, 8, o + 5, 13, RED)
    c.rect(o + 7, 4, o + 9, 13, BLUE)
    c.rect(o + 11, 6, o + 13, 13, TEAL)


def blob(c, o):  # a globe: data for the browser
    c.disc(o + 7, 7, 6, SKY)
    c.ring(o + 7, 7, 6, NAVY)
    c.line(o + 1, 7, o + 13, 7, NAVY)
    c.line(o + 7, 1, o + 7, 13, NAVY)
    c.ring(o + 7, 7, 3, NAVY)


def files(c, o):  # a document with a folded corner
    c.rect(o + 3, 1, o + 12, 14, WHITE)
    c.frame(o + 3, 1, o + 12, 14, DARK)
    c.rect(o + 10, 1, o + 12, 3, GREEN)
    c.line(o + 9, 1, o + 12, 4, DARK)
    c.line(o + 9, 1, o + 9, 4, DARK)
    c.line(o + 9, 4, o + 12, 4, DARK)
    for y in (6, 8, 10, 12):
        c.line(o + 5, y, o + 10, y, GREY)


def writable_text(c, o):
    text_row(c, o)
    pencil(c, o)


def list_no_spin(c, o):
    list_row(c, o, spin=False)
    pencil(c, o)


def unknown(c, o):
    c.disc(o + 7, 7, 7, PURPLE)
    c.text(o + 4, 3, "?", WHITE, scale=2)


# In the order of panel/row_image_index.h, which names each index for the code.
ROW_IMAGES = [
    device,                               # 0 device
    text_row,                             # 1 text
    button,                               # 2 button
    lambda c, o: check_box(c, o, True),   # 3 check box on
    lambda c, o: check_box(c, o, False),  # 4 check box off
    lambda c, o: radio(c, o, True),       # 5 radio on
    lambda c, o: radio(c, o, False),      # 6 radio off
    lambda c, o: padlock(c, o, True),     # 7 password locked
    lambda c, o: padlock(c, o, False),    # 8 password unlocked
    clock,                                # 9 date-time
    lambda c, o: section(c, o, False),    # 10 section closed
    lambda c, o: section(c, o, True),     # 11 section open
    list_row,                             # 12 list
    number,                               # 13 number
    chart,                                # 14 chart
    blob,                                 # 15 blob
    files,                                # 16 files
    writable_text,                        # 17 writable text
    number_editable,                      # 18 number editable
    number_no_spin,                       # 19 number without spin
    list_no_spin,                         # 20 list without spin
    unknown,                              # 21 unknown
]


def bmp_bytes(canvas):
    """A 24-bit bottom-up BMP."""
    row_size = (canvas.width * 3 + 3) & ~3
    data = bytearray()
    for y in range(canvas.height - 1, -1, -1):
        row = bytearray()
        for r, g, b in canvas.pixels[y]:
            row += bytes((b, g, r))
        row += b"\0" * (row_size - len(row))
        data += row
    header = struct.pack("<2sIHHI", b"BM", 14 + 40 + len(data), 0, 0, 14 + 40)
    info = struct.pack("<IiiHHIIiiII", 40, canvas.width, canvas.height, 1, 24, 0, len(data),
                       2835, 2835, 0, 0)
    return header + info + bytes(data)


def icon_image(size):
    """The program's icon: a handset showing a panel, drawn at 16 or 32 pixels."""
    c = Canvas(size, size)
    s = size // 16
    c.rect(3 * s, 0, 12 * s + s - 1, size - 1, DARK)
    c.rect(4 * s, 1 * s, 11 * s + s - 1, 9 * s + s - 1, WHITE)
    for i, colour in enumerate((BLUE, TEAL, RED)):
        y = (2 + 3 * i) * s
        c.rect(5 * s, y, 6 * s + s - 1, y + s, colour)
        c.rect(8 * s, y, 10 * s + s - 1, y + s - 1 if s > 1 else y, GREY)
    for y in (11, 13):
        for x in (5, 7, 9):
            c.rect(x * s, y * s, x * s + s, y * s + s - 1, LIGHT)
    return c


def ico_bytes(canvases):
    entries, images = [], []
    offset = 6 + 16 * len(canvases)
    for c in canvases:
        xor = bytearray()
        and_row = ((c.width + 31) // 32) * 4
        mask = bytearray()
        for y in range(c.height - 1, -1, -1):
            bits = 0
            row = bytearray()
            for x, (r, g, b) in enumerate(c.pixels[y]):
                transparent = (r, g, b) == GREEN
                xor += bytes((b, g, r, 0 if transparent else 255))
                bits = (bits << 1) | (1 if transparent else 0)
                if x % 8 == 7:
                    row.append(bits)
                    bits = 0
            row += b"\0" * (and_row - len(row))
            mask += row
        info = struct.pack("<IiiHHIIiiII", 40, c.width, c.height * 2, 1, 32, 0,
                           len(xor) + len(mask), 0, 0, 0, 0)
        image = info + bytes(xor) + bytes(mask)
        entries.append(struct.pack("<BBBBHHII", c.width, c.height, 0, 0, 1, 32, len(image), offset))
        images.append(image)
        offset += len(image)
    return struct.pack("<HHH", 0, 1, len(canvases)) + b"".join(entries) + b"".join(images)


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    strip = Canvas(16 * len(ROW_IMAGES), 16)
    for i, draw in enumerate(ROW_IMAGES):
        draw(strip, 16 * i)
    spare = Canvas(16, 16)
    unknown(spare, 0)
    outputs = {
        "rows.bmp": bmp_bytes(strip),
        "spare.bmp": bmp_bytes(spare),
        "tremolanth.ico": ico_bytes([icon_image(32), icon_image(16)]),
    }
    for name, data in outputs.items():
        with open(os.path.join(here, name), "wb") as f:
            f.write(data)


if __name__ == "__main__":
    main()
