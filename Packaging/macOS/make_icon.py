#!/usr/bin/env python3
"""Draws the icon of a bundle: an .icns file of a drawing, by rsvg-convert.
Usage: make_icon.py <rsvg-convert> <drawing.svg> <icon.icns>

The file is "icns" and its length, then for each picture its type, its length with these eight bytes, and the
PNG; numbers have their highest byte first (the header of iconutil's own files; "Optimizing for High
Resolution" has the sizes). Those of 16 and 32 points are there for displays with two pixels a point alone:
for others they would have to be in an older encoding, and the system scales these down."""
import pathlib
import struct
import subprocess
import sys

PIXELS = {b"ic11": 32, b"ic12": 64, b"ic07": 128, b"ic13": 256, b"ic08": 256, b"ic14": 512, b"ic09": 512,
          b"ic10": 1024}


def chunk(kind, content):
    return struct.pack(">4sI", kind, len(content) + 8) + content


def picture(converter, drawing, pixels):
    size = ["--width", str(pixels), "--height", str(pixels)]
    return subprocess.run([converter, *size, drawing], check=True, capture_output=True).stdout


def main(converter, drawing, icon):
    pictures = {pixels: picture(converter, drawing, pixels) for pixels in set(PIXELS.values())}
    path = pathlib.Path(icon)
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(chunk(b"icns", b"".join(chunk(kind, pictures[pixels]) for kind, pixels in PIXELS.items())))


if __name__ == "__main__":
    main(*sys.argv[1:])
