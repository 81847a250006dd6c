"""Writes the Pillow and hand-made BMP samples and the reference pixels of every sample.

Run by make_samples.sh (with Debian's /usr/bin/python3 and python3-pil) after ImageMagick has
written its samples. The first argument is a folder holding the source pictures.

References: <name>.ppm, or <name>.pam (RGB_ALPHA) when the image has an alpha channel.
- ImageMagick and Pillow files: Pillow's decoding. Pillow scales a 16-bit channel of n bits
  by v * 255 // (2^n - 1); the value v is recovered and widened by repeating its bits.
- Hand-made files: the pixels they were written from; Pillow checks those it reads right.
"""

import io
import os
import random
import struct
import subprocess
import sys

from PIL import Image

OUT = os.path.dirname(os.path.abspath(__file__))
SRGB = 0x73524742
MAGICK = "/usr/bin/convert"


# --- Reference files ---------------------------------------------------------------------

def write_reference(name, width, height, rgba, alpha):
    """rgba: list of (r, g, b, a), top row first."""
    base = os.path.join(OUT, os.path.splitext(name)[0])
    if alpha:
        head = (f"P7\nWIDTH {width}\nHEIGHT {height}\nDEPTH 4\nMAXVAL 255\n"
                "TUPLTYPE RGB_ALPHA\nENDHDR\n")
        body = bytes(c for p in rgba for c in p)
        path = base + ".pam"
    else:
        assert all(p[3] == 255 for p in rgba), name
        head = f"P6\n{width} {height}\n255\n"
        body = bytes(c for p in rgba for c in p[:3])
        path = base + ".ppm"
    with open(path, "wb") as out:
        out.write(head.encode() + body)


def widen(value, bits):
    """A channel value of `bits` bits as 8 bits: its bit pattern repeated, or its top 8 bits."""
    if bits == 0:
        return 0
    if bits >= 8:
        return value >> (bits - 8)
    repeated, filled = 0, 0
    while filled < 8:
        repeated, filled = (repeated << bits) | value, filled + bits
    return repeated >> (filled - 8)


def pillow_pixels(data):
    image = Image.open(io.BytesIO(data))
    return image.size, list(image.convert("RGBA").getdata())


def magick_pixels(path):
    raw = subprocess.run([MAGICK, path, "-depth", "8", "rgba:-"],
                         capture_output=True).stdout
    return [tuple(raw[i:i + 4]) for i in range(0, len(raw), 4)]


def unscale_16bit(rgba, masks):
    """Pillow's 16-bit colours back to the stored values, then widened by bit repetition."""
    tables = []
    for mask in masks[:3]:
        bits = bin(mask).count("1")
        top = (1 << bits) - 1
        tables.append((bits, {v * 255 // top: v for v in range(top + 1)}))
    return [tuple(widen(table[c], bits) for c, (bits, table) in zip(p[:3], tables)) + (p[3],)
            for p in rgba]


def reference_from_pillow(name):
    with open(os.path.join(OUT, name), "rb") as f:
        data = f.read()
    (width, height), rgba = pillow_pixels(data)
    header_size, bits, compression = struct.unpack_from("<I", data, 14)[0], 0, 0
    if header_size >= 40:
        bits, compression = struct.unpack_from("<HI", data, 28)
    if bits == 16:
        masks = struct.unpack_from("<3I", data, 54) if compression == 3 else (0x7C00, 0x3E0, 0x1F)
        rgba = unscale_16bit(rgba, masks)
    alpha = bits == 32 and compression == 3 and header_size >= 56 and \
        struct.unpack_from("<I", data, 66)[0] != 0
    write_reference(name, width, height, rgba, alpha)
    assert magick_pixels(os.path.join(OUT, name)) == rgba, f"ImageMagick reads {name} differently"


# --- A BMP writer for hand-made files ----------------------------------------------------

def info_header(size, width, height, bits, compression, image_size, colors_used, masks):
    head = struct.pack("<IiiHHIIiiII", size, width, height, 1, bits, compression, image_size,
                       2835, 2835, colors_used, 0)
    if size >= 52:
        head += struct.pack("<3I", *masks[:3])
    if size >= 56:
        head += struct.pack("<I", masks[3])
    if size >= 108:
        head += struct.pack("<I", SRGB) + bytes(36) + bytes(12)
    if size >= 124:
        head += struct.pack("<4I", 4, 0, 0, 0)  # rendering intent: perceptual
    assert len(head) == size
    return head


def bmp_file(width, height, bits, data, header_size=40, compression=0, palette=(),
             colors_used=0, masks=(0, 0, 0, 0), masks_behind=0, top_down=False, image_size=None):
    """data: the stored pixel bytes. masks_behind: mask words written after the header."""
    if header_size == 12:
        head = struct.pack("<IHHHH", 12, width, height, 1, bits)
        table = b"".join(struct.pack("<3B", b, g, r) for r, g, b in palette)
    else:
        size = len(data) if image_size is None else image_size
        head = info_header(header_size, width, -height if top_down else height, bits,
                           compression, size, colors_used, masks)
        head += b"".join(struct.pack("<I", m) for m in masks[:masks_behind])
        table = b"".join(struct.pack("<4B", b, g, r, 0) for r, g, b in palette)
    offset = 14 + len(head) + len(table)
    return b"BM" + struct.pack("<IHHI", offset + len(data), 0, 0, offset) + head + table + data


def stored_rows(rows, top_down):
    return rows if top_down else rows[::-1]


def pack_indexed(rows, bits, top_down=False):
    out = b""
    for row in stored_rows(rows, top_down):
        value, used, packed = 0, 0, bytearray()
        for index in row:
            value, used = (value << bits) | index, used + bits
            if used == 8:
                packed.append(value)
                value, used = 0, 0
        if used:
            packed.append(value << (8 - used))
        out += bytes(packed) + bytes(-len(packed) % 4)
    return out


def pack_direct(rows, bits, top_down=False):
    out = b""
    for row in stored_rows(rows, top_down):
        packed = b"".join(v.to_bytes(bits // 8, "little") for v in row)
        out += packed + bytes(-len(packed) % 4)
    return out


def masked_rgba(value, masks):
    channels = []
    for mask in masks:
        if mask == 0:
            channels.append(None)
            continue
        shift = (mask & -mask).bit_length() - 1
        channels.append(widen((value & mask) >> shift, bin(mask).count("1")))
    r, g, b = (0 if c is None else c for c in channels[:3])
    return (r, g, b, 255 if channels[3] is None else channels[3])


# --- Run-length encoding with every escape -----------------------------------------------

class RleWriter:
    """Encodes palette indexes, stored rows bottom-up. Zero indexes are left to the decoder
    where it can (delta, end of line, end of bitmap), so the escapes all get used."""

    def __init__(self, rows, rle4):
        self.rows, self.rle4, self.width = rows, rle4, len(rows[0])
        self.out, self.used = bytearray(), set()

    def emit(self, kind, *data):
        self.used.add(kind)
        self.out += bytes(data)

    def run_length(self, row, x):
        """Pixels from x that one encoded pair can hold."""
        if self.rle4:
            pair = row[x:x + 2]
            n = 1
            while x + n < len(row) and row[x + n] == pair[n % 2]:
                n += 1
        else:
            n = 1
            while x + n < len(row) and row[x + n] == row[x]:
                n += 1
        return min(n, 255)

    def encoded(self, row, x, n):
        if self.rle4:
            low = row[x + 1] if n > 1 else 0
            self.emit("run odd" if n % 2 else "run", n, row[x] << 4 | low)
        else:
            self.emit("run", n, row[x])

    def absolute(self, indexes):
        if self.rle4:
            padded = list(indexes) + [0] * (len(indexes) % 2)
            data = [padded[i] << 4 | padded[i + 1] for i in range(0, len(padded), 2)]
        else:
            data = list(indexes)
        data += [0] * (len(data) % 2)
        self.emit("absolute odd" if len(indexes) % 2 else "absolute", 0, len(indexes), *data)

    def encode(self):
        height, x, r = len(self.rows), 0, 0
        marked = [(i, j) for i, row in enumerate(self.rows) for j, v in enumerate(row) if v]
        while True:
            ahead = [(i, j) for i, j in marked if (i, j) >= (r, x)]
            if not ahead:
                self.emit("end of bitmap", 0, 1)
                return bytes(self.out)
            nr, nx = ahead[0]
            if nr > r:
                if nx >= x and nr - r <= 255 and nx - x <= 255:
                    self.emit("delta down", 0, 2, nx - x, nr - r)
                    r, x = nr, nx
                else:
                    self.emit("end of line", 0, 0)
                    r, x = r + 1, 0
                continue
            if nx - x >= 3:
                gap = min(nx - x, 255)
                self.emit("delta right", 0, 2, gap, 0)
                x += gap
                continue
            row = self.rows[r]
            n = self.run_length(row, x)
            if n >= 3 or x + n == self.width:
                self.encoded(row, x, n)
                x += n
                continue
            end = x
            while end < self.width and end - x < 255 and self.run_length(row, end) < 3:
                end += 1
            if end - x >= 3:
                self.absolute(row[x:end])
            else:
                self.encoded(row, x, n)
                end = x + n
            x = end


# --- The samples -------------------------------------------------------------------------

def save(name, data, rgba=None, width=0, height=0, alpha=False, checks=()):
    """Writes a hand-made sample and its reference; `checks` names the tools that must read
    the same pixels."""
    path = os.path.join(OUT, name)
    with open(path, "wb") as f:
        f.write(data)
    if rgba is None:
        return
    write_reference(name, width, height, rgba, alpha)
    if "pillow" in checks:
        assert pillow_pixels(data) == ((width, height), rgba), f"Pillow reads {name} differently"
    if "magick" in checks:
        assert magick_pixels(path) == rgba, f"ImageMagick reads {name} differently"


def grid(width, height, make):
    return [[make(x, y) for x in range(width)] for y in range(height)]


def flatten(rows):
    return [p for row in rows for p in row]


def colours(count, seed):
    rnd = random.Random(seed)
    return [tuple(rnd.randrange(256) for _ in range(3)) for _ in range(count)]


def indexed_rgba(rows, palette):
    return [palette[i] + (255,) if i < len(palette) else (0, 0, 0, 255) for i in flatten(rows)]


def pillow_samples(sources):
    picture = Image.open(os.path.join(sources, "plasma33x17.ppm"))
    small = Image.open(os.path.join(sources, "plasma11x7.ppm"))
    for name, image in [
        ("pil_v3_1.bmp", picture.convert("1")),
        ("pil_v3_8grey.bmp", small.crop((0, 0, 7, 5)).convert("L")),
        ("pil_v3_8.bmp", picture.crop((0, 0, 17, 11)).quantize(37)),
        ("pil_v3_24.bmp", small),
        ("pil_v3_32.bmp", small.crop((0, 0, 9, 7)).convert("RGBA")),  # 4th byte is not alpha
    ]:
        image.save(os.path.join(OUT, name))
        reference_from_pillow(name)


def rle_sample(name, rle4, width, height, seed):
    rnd = random.Random(seed)
    top = 16 if rle4 else 40
    rows = []
    for y in range(height):
        row = []
        while len(row) < width:
            kind, n = rnd.choice("rrlzp"), rnd.randrange(1, 9)
            if kind == "r":
                row += [rnd.randrange(1, top)] * n
            elif kind == "p":
                row += [rnd.randrange(1, top), rnd.randrange(1, top)] * n
            elif kind == "l":
                row += [rnd.randrange(top) for _ in range(n)]
            else:
                row += [0] * n
        rows.append(row[:width])
    rows[0] = [0] * width                  # empty top rows: end of bitmap early
    rows[height // 2] = [0] * width        # an empty row: delta down past it
    rows[height - 2][width - 5:] = [0] * 5  # zeros to the row end
    rows[height - 1] = [3] * width         # a run of the whole row
    writer = RleWriter(rows[::-1], rle4)
    data = writer.encode()
    odd = {"run odd", "absolute odd"} if rle4 else {"absolute odd"}
    missing = ({"run", "absolute", "end of line", "end of bitmap", "delta down",
                "delta right"} | odd) - writer.used
    assert not missing, f"{name} lacks {missing}"
    palette = colours(top, seed)
    bits, compression = (4, 2) if rle4 else (8, 1)
    save(name, bmp_file(width, height, bits, data, compression=compression, palette=palette,
                        colors_used=top), indexed_rgba(rows, palette), width, height,
         checks=("magick",))  # Pillow stops at a delta and mis-reads odd RLE4 absolute runs


def masked_sample(name, width, height, bits, masks, header_size, compression=3,
                  masks_behind=0, top_down=False, seed=0, checks=()):
    rnd = random.Random(seed)
    limit = 1 << bits
    rows = grid(width, height, lambda x, y: rnd.randrange(limit))
    rows[0][0], rows[0][1] = limit - 1, 0  # every channel at its top and at 0
    data = pack_direct(rows, bits, top_down)
    rgba = [masked_rgba(v, masks) for v in flatten(rows)]
    save(name, bmp_file(width, height, bits, data, header_size, compression, masks=masks,
                        masks_behind=masks_behind, top_down=top_down), rgba, width, height,
         alpha=masks[3] != 0, checks=checks)


def hand_samples():
    # No tool here reads 2-bit files.
    palette = [(0, 0, 0), (255, 0, 0), (0, 160, 255), (255, 255, 255)]
    rows = grid(13, 5, lambda x, y: (x + 2 * y + x // 4) % 4)
    save("hand_v3_2.bmp", bmp_file(13, 5, 2, pack_indexed(rows, 2), palette=palette,
                                   colors_used=4), indexed_rgba(rows, palette), 13, 5)

    # A colour table shorter than the indexes: indexes 6..9 are opaque black (Pillow shows
    # them as the grey (i, i, i) of its own filler palette, ImageMagick as entry 0).
    palette = colours(6, 5)
    rows = grid(7, 5, lambda x, y: (x * 3 + y) % 10)
    save("hand_v3_8short.bmp", bmp_file(7, 5, 8, pack_indexed(rows, 8), palette=palette,
                                        colors_used=6), indexed_rgba(rows, palette), 7, 5)

    rle_sample("hand_v3_rle8.bmp", False, 23, 13, 8)
    rle_sample("hand_v3_rle4.bmp", True, 23, 13, 4)

    # Top-down rows.
    rnd = random.Random(24)
    rows = grid(7, 5, lambda x, y: rnd.randrange(1 << 24))
    save("hand_v3_24_topdown.bmp", bmp_file(7, 5, 24, pack_direct(rows, 24, True),
                                            top_down=True),
         [masked_rgba(v, (0xFF0000, 0xFF00, 0xFF, 0)) for v in flatten(rows)], 7, 5,
         checks=("pillow", "magick"))
    palette = colours(256, 9)
    rows = grid(9, 6, lambda x, y: (x * 29 + y * 7) % 256)
    save("hand_v5_8_topdown.bmp", bmp_file(9, 6, 8, pack_indexed(rows, 8, True), 124,
                                           palette=palette, top_down=True),
         indexed_rgba(rows, palette), 9, 6, checks=("pillow", "magick"))

    # Masks. Pillow scales 16-bit channels and refuses most layouts below; ImageMagick scales
    # 4-bit and 10-bit channels its own way and takes alpha from a 52-byte header.
    masked_sample("hand_v3_16.bmp", 7, 5, 16, (0x7C00, 0x3E0, 0x1F, 0), 40, compression=0,
                  seed=16, checks=("magick",))
    masked_sample("hand_v2_565.bmp", 9, 5, 16, (0xF800, 0x7E0, 0x1F, 0), 52, seed=565)
    masked_sample("hand_v5_4444.bmp", 9, 5, 16, (0xF00, 0xF0, 0xF, 0xF000), 124, seed=4444)
    masked_sample("hand_v3_1555_topdown.bmp", 7, 5, 16, (0x7C00, 0x3E0, 0x1F, 0x8000), 40,
                  compression=6, masks_behind=4, top_down=True, seed=1555)
    masked_sample("hand_v3x_32.bmp", 7, 5, 32, (0xFF, 0xFF00, 0xFF0000, 0xFF000000), 56,
                  seed=56, checks=("magick",))
    masked_sample("hand_v4_1010102.bmp", 9, 7, 32, (0x3FF00000, 0xFFC00, 0x3FF, 0xC0000000),
                  108, seed=10)
    masked_sample("hand_v3_32custom.bmp", 7, 5, 32, (0x7FF00000, 0xFFF00, 0xE0, 0), 40,
                  masks_behind=3, seed=32)

    # Embedded images: answered with their own codes, no reference pixels.
    for name, fmt, compression in [("hand_v3_jpeg.bmp", "JPEG", 4),
                                   ("hand_v3_png.bmp", "PNG", 5)]:
        payload = io.BytesIO()
        Image.new("RGB", (8, 8), (200, 40, 90)).save(payload, fmt)
        save(name, bmp_file(8, 8, 0, payload.getvalue(), compression=compression))


def main():
    sources = sys.argv[1]
    for name in sorted(os.listdir(OUT)):
        if name.startswith("im_") and name.endswith(".bmp") and name != "im_v3_16_nomasks.bmp":
            reference_from_pillow(name)
    pillow_samples(sources)
    hand_samples()


if __name__ == "__main__":
    main()
