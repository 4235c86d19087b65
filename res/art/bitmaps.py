"""Writers for the resource compiler's image files: BMP (32-bit, 24-bit, 256-colour), ICO
and PNG. Pixels come in as rows from the top, RGBA tuples of 0..255."""

import struct
import zlib

MAGENTA = (255, 0, 255)


def _info_header(width, height, bits, colors=0, image_size=0):
    # BITMAPINFOHEADER: bottom-up rows, no compression.
    return struct.pack("<IiiHHIIiiII", 40, width, height, 1, bits, 0, image_size, 2835, 2835,
                       colors, 0)


def _file(info_and_pixels, offset):
    size = 14 + len(info_and_pixels)
    return struct.pack("<2sIHHI", b"BM", size, 0, 0, 14 + offset) + info_and_pixels


def _rows_bottom_up(pixels, width, height):
    return [pixels[(height - 1 - y) * width:(height - y) * width] for y in range(height)]


def _padded(row_bytes):
    return row_bytes + b"\0" * (-len(row_bytes) % 4)


def bmp32(pixels, width, height):
    """A 32-bit bitmap with a straight (not premultiplied) alpha channel."""
    body = b"".join(bytes((b, g, r, a)) for row in _rows_bottom_up(pixels, width, height)
                    for r, g, b, a in row)
    return _file(_info_header(width, height, 32, image_size=len(body)) + body, 40)


def bmp24(pixels, width, height, background=(255, 255, 255)):
    """A 24-bit bitmap; partly transparent pixels are blended onto `background`."""
    body = b"".join(_padded(b"".join(bytes(reversed(_over(p, background))) for p in row))
                    for row in _rows_bottom_up(pixels, width, height))
    return _file(_info_header(width, height, 24, image_size=len(body)) + body, 40)


def bmp8(pixels, width, height, backdrop=(240, 240, 240)):
    """A 256-colour bitmap whose transparent parts are magenta (palette entry 0).

    Pixels at least half opaque keep their colour, blended onto `backdrop` (the usual
    face colour of toolbars and menus); the rest become magenta. The palette is made by
    median cut over the opaque colours."""
    opaque = [_over(p, backdrop) if p[3] >= 128 else None for p in pixels]
    palette = [MAGENTA] + _median_cut([c for c in opaque if c is not None], 255)
    cache = {}

    def index(color):
        if color is None:
            return 0
        if color not in cache:
            cache[color] = min(range(1, len(palette)),
                               key=lambda i: sum((a - b) ** 2 for a, b in zip(color, palette[i])))
        return cache[color]

    palette += [(0, 0, 0)] * (256 - len(palette))
    table = b"".join(bytes((b, g, r, 0)) for r, g, b in palette)
    body = b"".join(_padded(bytes(index(c) for c in row))
                    for row in _rows_bottom_up(opaque, width, height))
    return _file(_info_header(width, height, 8, 256, len(body)) + table + body, 40 + len(table))


def png(pixels, width, height):
    def chunk(kind, data):
        return (struct.pack(">I", len(data)) + kind + data +
                struct.pack(">I", zlib.crc32(kind + data) & 0xFFFFFFFF))

    raw = b"".join(b"\0" + b"".join(bytes(p) for p in pixels[y * width:(y + 1) * width])
                   for y in range(height))
    header = struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(raw, 9)) +
            chunk(b"IEND", b""))


def ico(images):
    """An icon file from (size, pixels) pairs: 32-bit bitmaps with an AND mask, and PNG for
    the 256-pixel image."""
    entries, blobs = [], []
    offset = 6 + 16 * len(images)
    for size, pixels in images:
        if size >= 256:
            blob = png(pixels, size, size)
        else:
            xor = b"".join(bytes((b, g, r, a)) for row in _rows_bottom_up(pixels, size, size)
                           for r, g, b, a in row)
            mask_rows = []
            for row in _rows_bottom_up(pixels, size, size):
                bits = 0
                for i, p in enumerate(row):
                    if p[3] == 0:
                        bits |= 1 << (size - 1 - i)
                mask_rows.append(_padded(bits.to_bytes((size + 7) // 8, "big")))
            blob = _info_header(size, size * 2, 32) + xor + b"".join(mask_rows)
        entries.append(struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(blob),
                                   offset))
        blobs.append(blob)
        offset += len(blob)
    return struct.pack("<HHH", 0, 1, len(images)) + b"".join(entries) + b"".join(blobs)


def _over(pixel, background):
    r, g, b, a = pixel
    return tuple((c * a + k * (255 - a) + 127) // 255 for c, k in zip((r, g, b), background))


def _median_cut(colors, count):
    """Up to `count` representative colours: boxes split at the median of their widest
    channel, largest spread first; each box gives its average."""
    if not colors:
        return []
    boxes = [sorted(set(colors))]
    while len(boxes) < count:
        def spread(box):
            return max(max(c[i] for c in box) - min(c[i] for c in box) for i in range(3))

        widest = max(range(len(boxes)), key=lambda i: (spread(boxes[i]), len(boxes[i])))
        box = boxes[widest]
        if spread(box) == 0:
            break
        channel = max(range(3), key=lambda i: max(c[i] for c in box) - min(c[i] for c in box))
        box.sort(key=lambda c: (c[channel], c))
        middle = len(box) // 2
        boxes[widest:widest + 1] = [box[:middle], box[middle:]]
    return [tuple((sum(c[i] for c in box) + len(box) // 2) // len(box) for i in range(3))
            for box in boxes]
