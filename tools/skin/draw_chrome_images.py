#!/usr/bin/env python3
"""Draws the window-chrome images of the default skin: title-bar buttons (normal and hover),
the title icon, and the device manager's prompt mask. Plain Python, no imaging library.

Run from the repository root: python3 tools/skin/draw_chrome_images.py
"""
import math
import os
import struct
import zlib

SKIN = "app/shipped/skin/default/images"
XFRAME = "plugins/XFramePlugin/files"
DEVMGR = "plugins/DeviceMgrUIPlugin/files"


def write_png(path, width, height, pixel):
    """pixel(x, y) -> (r, g, b, a)."""
    rows = b""
    for y in range(height):
        rows += b"\0" + b"".join(bytes(pixel(x, y)) for x in range(width))

    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))

    header = struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)
    with open(path, "wb") as out:
        out.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) +
                  chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


def write_mono_bmp(path, width, height, inside):
    """1-bit BMP; inside(x, y) pixels are black (set in a mask), the rest white."""
    stride = ((width + 31) // 32) * 4
    pixels = b""
    for y in reversed(range(height)):
        row = bytearray(stride)
        for x in range(width):
            if not inside(x, y):  # palette index 1 is white
                row[x // 8] |= 0x80 >> (x % 8)
        pixels += bytes(row)
    offset = 14 + 40 + 8
    info = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 1, 0, len(pixels), 2835, 2835, 2, 2)
    palette = bytes([0, 0, 0, 0, 255, 255, 255, 0])
    with open(path, "wb") as out:
        out.write(b"BM" + struct.pack("<IHHI", offset + len(pixels), 0, 0, offset))
        out.write(info + palette + pixels)


def rounded(x, y, size, radius, height=None):
    """True inside a size x height (default square) box with corners rounded to radius."""
    height = size if height is None else height
    cx = min(max(x + 0.5, radius), size - radius)
    cy = min(max(y + 0.5, radius), height - radius)
    return math.hypot(x + 0.5 - cx, y + 0.5 - cy) <= radius


def button(size, background, glyph):
    def pixel(x, y):
        if not rounded(x, y, size, 4):
            return (0, 0, 0, 0)
        if glyph(x, y, size):
            return (255, 255, 255, 255)
        return background + (255,)
    return pixel


def minimize(x, y, s):
    return s // 2 + 2 <= y <= s // 2 + 3 and 5 <= x < s - 5


def maximize(x, y, s):
    inside = 5 <= x < s - 5 and 5 <= y < s - 5
    return inside and (x in (5, s - 6) or y in (5, 6, s - 6))


def restore(x, y, s):
    back = 8 <= x < s - 4 and 4 <= y < s - 8 and (x in (8, s - 5) or y in (4, 5, s - 9))
    front = 4 <= x < s - 8 and 8 <= y < s - 4
    front_edge = front and (x in (4, s - 9) or y in (8, 9, s - 5))
    return front_edge or (back and not front)


def close(x, y, s):
    if not (5 <= x < s - 5 and 5 <= y < s - 5):
        return False
    return abs(x - y) <= 0.8 or abs(x + y - (s - 1)) <= 0.8


def title_icon(x, y):
    """Three signal bars on a blue disc."""
    if math.hypot(x - 7.5, y - 7.5) > 7.5:
        return (0, 0, 0, 0)
    bars = [(4, 10), (7, 7), (10, 4)]
    for left, top in bars:
        if left <= x <= left + 1 and top <= y <= 12:
            return (255, 255, 255, 255)
    return (29, 79, 145, 255)


def main():
    os.makedirs(SKIN, exist_ok=True)
    normal, hover, danger = (60, 110, 175), (90, 145, 210), (200, 60, 60)
    for name, size, glyph in (("minimize", 19, minimize), ("maximize", 21, maximize),
                              ("restore", 21, restore), ("close", 19, close)):
        write_png(f"{SKIN}/title_{name}.png", size, size, button(size, normal, glyph))
        hot = danger if name == "close" else hover
        write_png(f"{SKIN}/title_{name}_hover.png", size, size, button(size, hot, glyph))
    write_png(f"{XFRAME}/TitleIcon", 16, 16, title_icon)
    os.makedirs(DEVMGR, exist_ok=True)
    # The 294 x 80 prompt inside the main frame's border (4 px) and title (28 px).
    width, height = 294 + 2 * 4, 80 + 28 + 4
    write_mono_bmp(f"{DEVMGR}/SimLockPromptMask.bmp", width, height,
                   lambda x, y: rounded(x, y, width, 7, height))


if __name__ == "__main__":
    main()
