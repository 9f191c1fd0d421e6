#!/usr/bin/env python3
"""Draws the pictures of the example projects.

    scripts/make_example_pictures.py examples/pictures/

landscape.jpg  240 x 160 baseline JPEG, a photo-like landscape (embedded as it is)
flower.png     120 x 120 RGBA PNG, a flower with soft edges and a translucent shadow
tile.png        24 x 24 opaque PNG, a pattern for tiled placement

Pure Python with a small baseline JPEG encoder of its own (optimal Huffman
tables, no subsampling), so the pixels and the JPEG bytes are the same on every
machine; only the PNGs' compressed bytes may differ between zlib versions.
"""
import math
import struct
import sys
import zlib
from pathlib import Path


def mix(a, b, t):
    t = max(0.0, min(1.0, t))
    return tuple(x + (y - x) * t for x, y in zip(a, b))


def clamp(value):
    return max(0, min(255, int(round(value))))


# --- the pictures -------------------------------------------------------------

def landscape(x, y):
    """Evening sky, a sun, two ranges of hills and a lake that mirrors them."""
    w, h = 240, 160
    horizon = 100
    if y >= horizon:  # the lake: the sky upside down, darker, with ripples
        mirrored = 2 * horizon - y - 1 + 2 * math.sin(x * 0.25 + y * 0.9)
        r, g, b = landscape(x, max(0, min(horizon - 1, mirrored)))
        depth = (y - horizon) / (h - horizon)
        return mix((r * 0.7, g * 0.75, b * 0.85), (20, 40, 70), depth * 0.6)
    sky = mix((40, 70, 150), (250, 170, 90), y / horizon)
    sun = math.hypot(x - 170, y - 62)
    if sun < 14:
        sky = mix((255, 240, 190), sky, (sun - 10) / 4)
    else:
        sky = mix(sky, (255, 200, 120), 0.35 * math.exp(-(sun - 14) / 30))
    far = 70 + 8 * math.sin(x * 0.04 + 0.5) + 4 * math.sin(x * 0.13 + 1.7)
    near = 86 + 7 * math.sin(x * 0.03 + 2.4) + 3 * math.sin(x * 0.15)
    if y > near:
        return mix((40, 90, 40), (20, 50, 25), (y - near) / 20)
    if y > far:
        return mix((90, 100, 140), (70, 80, 120), (y - far) / 20)
    return sky


def flower(x, y):
    """Five petals round a heart, on nothing; a soft shadow below right."""
    cx, cy = 56.0, 56.0
    dx, dy = x + 0.5 - cx, y + 0.5 - cy
    radius = math.hypot(dx, dy)
    angle = math.atan2(dy, dx)
    petal_edge = 30 + 16 * abs(math.cos(2.5 * angle))
    shadow = math.hypot(dx - 8, dy - 8)
    shadow_edge = petal_edge + 2
    if radius < 12:
        colour = mix((255, 220, 60), (210, 120, 20), radius / 12)
        return colour + (255,)
    if radius < petal_edge:
        shade = radius / petal_edge
        colour = mix((250, 110, 170), (180, 30, 110), shade)
        alpha = 255 * min(1.0, petal_edge - radius)  # one pixel of soft edge
        return colour + (alpha,)
    if shadow < shadow_edge:
        return (0, 0, 0, 90 * min(1.0, (shadow_edge - shadow) / 6))
    return (0, 0, 0, 0)


def tile(x, y):
    """A diagonal weave of two blues and a cream thread."""
    band = (x + y) % 12
    cross = (x - y) % 12
    if band < 2 or cross < 2:
        return (240, 230, 200)
    return (40, 90, 170) if (x // 6 + y // 6) % 2 else (70, 130, 210)


# --- PNG ----------------------------------------------------------------------

def png(width, height, pixel, alpha):
    """A PNG, each row with the filter that leaves the smallest residues."""
    channels = 4 if alpha else 3
    rows = []
    for y in range(height):
        row = []
        for x in range(width):
            value = pixel(x, y)
            row.extend(clamp(c) for c in value[:channels])
        rows.append(bytes(row))
    data = bytearray()
    previous = bytes(len(rows[0]))
    for row in rows:
        candidates = [filtered(kind, row, previous, channels) for kind in range(5)]
        best = min(range(5), key=lambda k: sum(min(v, 256 - v) for v in candidates[k]))
        data.append(best)
        data.extend(candidates[best])
        previous = row

    def chunk(kind, body):
        body = kind + body
        return struct.pack(">I", len(body) - 4) + body + struct.pack(">I", zlib.crc32(body))

    header = struct.pack(">IIBBBBB", width, height, 8, 6 if alpha else 2, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) +
            chunk(b"IDAT", zlib.compress(bytes(data), 9)) + chunk(b"IEND", b""))


def filtered(kind, row, previous, step):
    out = bytearray(len(row))
    for i, value in enumerate(row):
        left = row[i - step] if i >= step else 0
        up = previous[i]
        upper_left = previous[i - step] if i >= step else 0
        if kind == 0:
            predicted = 0
        elif kind == 1:
            predicted = left
        elif kind == 2:
            predicted = up
        elif kind == 3:
            predicted = (left + up) // 2
        else:
            p = left + up - upper_left
            pa, pb, pc = abs(p - left), abs(p - up), abs(p - upper_left)
            predicted = left if pa <= pb and pa <= pc else up if pb <= pc else upper_left
        out[i] = (value - predicted) & 0xFF
    return out


# --- baseline JPEG --------------------------------------------------------------

LUMINANCE = [16, 11, 10, 16, 24, 40, 51, 61, 12, 12, 14, 19, 26, 58, 60, 55,
             14, 13, 16, 24, 40, 57, 69, 56, 14, 17, 22, 29, 51, 87, 80, 62,
             18, 22, 37, 56, 68, 109, 103, 77, 24, 35, 55, 64, 81, 104, 113, 92,
             49, 64, 78, 87, 103, 121, 120, 101, 72, 92, 95, 98, 112, 100, 103, 99]
CHROMINANCE = [17, 18, 24, 47, 99, 99, 99, 99, 18, 21, 26, 66, 99, 99, 99, 99,
               24, 26, 56, 99, 99, 99, 99, 99, 47, 66, 99, 99, 99, 99, 99, 99] + [99] * 32


def zigzag():
    """Raster indices of an 8 x 8 block in zig-zag order."""
    order = sorted(((x + y, y if (x + y) % 2 else x, y * 8 + x)
                    for y in range(8) for x in range(8)))
    return [index for _, _, index in order]


ZIGZAG = zigzag()
COSINES = [[math.cos((2 * x + 1) * u * math.pi / 16) * (math.sqrt(0.5) if u == 0 else 1.0)
            for x in range(8)] for u in range(8)]


def scaled(table, quality):
    scale = 5000 / quality if quality < 50 else 200 - 2 * quality
    return [max(1, min(255, int((q * scale + 50) // 100))) for q in table]


def dct(block):
    """The 2-D DCT-II of 64 level-shifted samples (raster order)."""
    rows = [[sum(COSINES[u][x] * block[y * 8 + x] for x in range(8)) / 2 for u in range(8)]
            for y in range(8)]
    return [sum(COSINES[v][y] * rows[y][u] for y in range(8)) / 2
            for v in range(8) for u in range(8)]


def category(value):
    return abs(value).bit_length()


def magnitude_bits(value):
    size = category(value)
    return value if value >= 0 else value + (1 << size) - 1


def block_symbols(coefficients, previous_dc):
    """(symbol, extra bits, extra bit count) of one quantised block, zig-zag order."""
    dc = coefficients[0] - previous_dc
    symbols = [("dc", category(dc), magnitude_bits(dc), category(dc))]
    run = 0
    last = max((i for i in range(1, 64) if coefficients[i]), default=0)
    for i in range(1, last + 1):
        value = coefficients[i]
        if value == 0:
            run += 1
            continue
        while run > 15:
            symbols.append(("ac", 0xF0, 0, 0))
            run -= 16
        size = category(value)
        symbols.append(("ac", (run << 4) | size, magnitude_bits(value), size))
        run = 0
    if last < 63:
        symbols.append(("ac", 0x00, 0, 0))
    return symbols


def optimal_code_lengths(frequencies):
    """JPEG's length-limited Huffman code: (BITS[1..16], symbols by length)."""
    freq = dict(frequencies)
    freq[256] = 1  # reserved, so that no real code is all ones
    size = {s: 0 for s in freq}
    chain = {s: None for s in freq}
    live = dict(freq)
    while len(live) > 1:
        # the two least frequent, the larger symbol first on ties
        v1 = min(live, key=lambda s: (live[s], -s))
        f1 = live.pop(v1)
        v2 = min(live, key=lambda s: (live[s], -s))
        live[v1] = f1 + live.pop(v2)
        for start in (v1, v2):
            s = start
            while True:
                size[s] += 1
                if chain[s] is None:
                    break
                s = chain[s]
        s = v1
        while chain[s] is not None:
            s = chain[s]
        chain[s] = v2
    bits = [0] * 33
    for s, n in size.items():
        bits[n] += 1
    for i in range(32, 16, -1):
        while bits[i] > 0:
            j = i - 2
            while bits[j] == 0:
                j -= 1
            bits[i] -= 2
            bits[i - 1] += 1
            bits[j + 1] += 2
            bits[j] -= 1
    i = 16
    while bits[i] == 0:
        i -= 1
    bits[i] -= 1  # drop the reserved symbol's code
    ordered = sorted((s for s in freq if s != 256), key=lambda s: (size[s], s))
    return bits[1:17], ordered


def canonical_codes(bits, symbols):
    codes, code, k = {}, 0, 0
    for length in range(1, 17):
        for _ in range(bits[length - 1]):
            codes[symbols[k]] = (code, length)
            code += 1
            k += 1
        code <<= 1
    return codes


class BitWriter:
    def __init__(self):
        self.out = bytearray()
        self.buffer = 0
        self.count = 0

    def put(self, value, length):
        for shift in range(length - 1, -1, -1):
            self.buffer = (self.buffer << 1) | ((value >> shift) & 1)
            self.count += 1
            if self.count == 8:
                self.out.append(self.buffer)
                if self.buffer == 0xFF:
                    self.out.append(0)  # byte stuffing
                self.buffer = self.count = 0

    def flush(self):
        while self.count:
            self.put(1, 1)  # pad with ones
        return bytes(self.out)


def jpeg(width, height, pixel, quality=80):
    luminance, chrominance = scaled(LUMINANCE, quality), scaled(CHROMINANCE, quality)
    tables = (luminance, chrominance, chrominance)
    planes = ([], [], [])
    for y in range(height):
        for x in range(width):
            r, g, b = pixel(x, y)
            planes[0].append(0.299 * r + 0.587 * g + 0.114 * b - 128)
            planes[1].append(-0.168736 * r - 0.331264 * g + 0.5 * b)
            planes[2].append(0.5 * r - 0.418688 * g - 0.081312 * b)

    def block(plane, bx, by):
        return [plane[min(by + y, height - 1) * width + min(bx + x, width - 1)]
                for y in range(8) for x in range(8)]

    symbols = []  # per component, per block, interleaved
    previous = [0, 0, 0]
    for by in range(0, height, 8):
        for bx in range(0, width, 8):
            for c in range(3):
                raw = dct(block(planes[c], bx, by))
                quantised = [int(round(raw[i] / tables[c][i])) for i in ZIGZAG]
                symbols.append((c, block_symbols(quantised, previous[c])))
                previous[c] = quantised[0]

    counts = {key: {} for key in ("dc0", "ac0", "dc1", "ac1")}
    for c, block_list in symbols:
        for kind, symbol, _, _ in block_list:
            table = counts[kind + ("0" if c == 0 else "1")]
            table[symbol] = table.get(symbol, 0) + 1
    huffman = {key: optimal_code_lengths(value) for key, value in counts.items()}
    codes = {key: canonical_codes(*value) for key, value in huffman.items()}

    writer = BitWriter()
    for c, block_list in symbols:
        for kind, symbol, extra, extra_length in block_list:
            code, length = codes[kind + ("0" if c == 0 else "1")][symbol]
            writer.put(code, length)
            writer.put(extra, extra_length)
    entropy = writer.flush()

    def segment(marker, body):
        return struct.pack(">BBH", 0xFF, marker, len(body) + 2) + body

    dqt = b"".join(bytes([index]) + bytes(table[i] for i in ZIGZAG)
                   for index, table in enumerate((luminance, chrominance)))
    sof = struct.pack(">BHHB", 8, height, width, 3) + bytes([1, 0x11, 0, 2, 0x11, 1, 3, 0x11, 1])
    dht = b""
    for klass, index, key in ((0, 0, "dc0"), (1, 0, "ac0"), (0, 1, "dc1"), (1, 1, "ac1")):
        bits, ordered = huffman[key]
        dht += bytes([(klass << 4) | index]) + bytes(bits) + bytes(ordered)
    sos = bytes([3, 1, 0x00, 2, 0x11, 3, 0x11, 0, 63, 0])
    return (b"\xff\xd8" + segment(0xE0, b"JFIF\x00\x01\x01\x00\x00\x01\x00\x01\x00\x00") +
            segment(0xDB, dqt) + segment(0xC0, sof) + segment(0xC4, dht) +
            segment(0xDA, sos) + entropy + b"\xff\xd9")


def main():
    folder = Path(sys.argv[1] if len(sys.argv) > 1 else "examples/pictures")
    folder.mkdir(parents=True, exist_ok=True)
    (folder / "landscape.jpg").write_bytes(jpeg(240, 160, landscape))
    (folder / "flower.png").write_bytes(png(120, 120, flower, alpha=True))
    (folder / "tile.png").write_bytes(png(24, 24, tile, alpha=False))


if __name__ == "__main__":
    main()
