#!/usr/bin/env python3
"""Draws the two built-in preview pictures (182 x 202, opaque RGB PNGs).

    scripts/make_preview_pictures.py resources/

Pure Python with integer-exact drawing, so the pixels are the same on every
machine; only the PNG's compressed bytes may differ between zlib versions.
"""
import math
import struct
import sys
import zlib
from pathlib import Path

WIDTH, HEIGHT = 182, 202


def mix(a, b, t):
    t = max(0.0, min(1.0, t))
    return tuple(round(x + (y - x) * t) for x, y in zip(a, b))


def ramp(stops, t):
    """Colour at t (0..1) along (position, colour) stops."""
    for (p0, c0), (p1, c1) in zip(stops, stops[1:]):
        if t <= p1:
            return mix(c0, c1, (t - p0) / (p1 - p0))
    return stops[-1][1]


def ridge(x, base, waves):
    return base + sum(a * math.sin(x * f + p) for a, f, p in waves)


SKY = [(0.0, (38, 24, 84)), (0.35, (150, 52, 110)), (0.62, (244, 118, 66)), (1.0, (255, 206, 112))]
HORIZON = 128
SUN = (91, 78, 22)
FAR_HILLS = (88, [(7, 0.045, 0.5), (4, 0.11, 1.7)])
NEAR_HILLS = (108, [(9, 0.03, 2.4), (3, 0.13, 0.2)])


def sunset(x, y):
    """A sun setting behind two ranges of hills, mirrored in a lake."""
    if y >= HORIZON:
        # The lake mirrors the scene above, darkened, with ripples.
        ripple = round(2 * math.sin(y * 0.9 + x * 0.05))
        mirrored = max(0, 2 * HORIZON - y - 1)
        r, g, b = sunset(min(WIDTH - 1, max(0, x + ripple)), mirrored)
        depth = (y - HORIZON) / (HEIGHT - HORIZON)
        return mix((r * 3 // 4, g * 3 // 4, b * 4 // 5), (24, 20, 60), depth * 0.8)
    if y > ridge(x, *NEAR_HILLS):
        return mix((64, 30, 70), (40, 20, 52), (y - 100) / 28)
    if y > ridge(x, *FAR_HILLS):
        return (112, 54, 98)
    sx, sy, radius = SUN
    distance = math.hypot(x - sx, y - sy)
    sky = ramp(SKY, y / HORIZON)
    if distance <= radius:
        return mix((255, 246, 190), (255, 214, 120), distance / radius)
    glow = max(0.0, 1.0 - (distance - radius) / 60)
    return mix(sky, (255, 230, 150), glow * glow * 0.6)


BLUES = [(0.0, (6, 22, 68)), (0.4, (20, 84, 170)), (0.75, (70, 170, 230)), (1.0, (210, 240, 255))]


def pattern(x, y):
    """Interfering ripples from three centres over diagonal bands, with a lattice."""
    centres = [(40, 50), (150, 80), (90, 170)]
    wave = sum(math.sin(math.hypot(x - cx, y - cy) * 0.12) for cx, cy in centres) / 3
    bands = math.sin((x + y) * 0.05)
    t = 0.5 + 0.35 * wave + 0.15 * bands
    colour = ramp(BLUES, t)
    # A lattice of soft light diamonds laid over the ripples.
    diamond = abs((x + 2 * y) % 46 - 23) + abs((2 * x - y) % 46 - 23)
    return mix(colour, (235, 248, 255), max(0, 10 - diamond) / 25)


def png(draw):
    rows = b"".join(
        b"\x00" + bytes(c for x in range(WIDTH) for c in draw(x, y)) for y in range(HEIGHT)
    )

    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))

    header = struct.pack(">IIBBBBB", WIDTH, HEIGHT, 8, 2, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) +
            chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


def main():
    folder = Path(sys.argv[1] if len(sys.argv) > 1 else "resources")
    (folder / "preview_image1.png").write_bytes(png(sunset))
    (folder / "preview_image2.png").write_bytes(png(pattern))


if __name__ == "__main__":
    main()
