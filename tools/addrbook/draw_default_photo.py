#!/usr/bin/env python3
"""Draws the address book's images: the default contact picture (90 x 118), a grey silhouette
on a light background, into plugins/AddrBookUIPlugin/files/DefaultPhoto.png, and the photo's
delete button (18 x 16), a white cross on red, into the skin's images."""
import os
import struct
import zlib

WIDTH, HEIGHT = 90, 118
BUTTON_WIDTH, BUTTON_HEIGHT = 18, 16
BACKGROUND = (226, 232, 240)
FIGURE = (148, 163, 184)
BORDER = (100, 116, 139)


def colour(x, y):
    if x in (0, WIDTH - 1) or y in (0, HEIGHT - 1):
        return BORDER
    head = (x - 45) ** 2 + (y - 44) ** 2 <= 19 ** 2
    # The shoulders: the top half of an ellipse standing on the bottom edge.
    shoulders = y >= 72 and ((x - 45) / 38.0) ** 2 + ((y - 118) / 44.0) ** 2 <= 1.0
    return FIGURE if head or shoulders else BACKGROUND


def button_colour(x, y):
    if x in (0, BUTTON_WIDTH - 1) or y in (0, BUTTON_HEIGHT - 1):
        return (153, 27, 27)
    on_cross = abs((x - 4) - (y - 3)) <= 1 or abs((x - 4) - (12 - y)) <= 1
    inside = 4 <= x <= 13 and 3 <= y <= 12
    return (255, 255, 255) if on_cross and inside else (220, 38, 38)


def chunk(kind, data):
    body = kind + data
    return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body) & 0xFFFFFFFF)


def png(width, height, colour):
    rows = b"".join(b"\0" + bytes(c for x in range(width) for c in colour(x, y))
                    for y in range(height))
    header = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows, 9))
            + chunk(b"IEND", b""))


def write(path, data):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as out:
        out.write(data)


if __name__ == "__main__":
    root = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")
    write(os.path.join(root, "plugins", "AddrBookUIPlugin", "files", "DefaultPhoto.png"),
          png(WIDTH, HEIGHT, colour))
    write(os.path.join(root, "app", "shipped", "skin", "default", "images",
                       "addrbook_delete_photo.png"),
          png(BUTTON_WIDTH, BUTTON_HEIGHT, button_colour))
