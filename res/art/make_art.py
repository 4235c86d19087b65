#!/usr/bin/env python3
"""Draws the program's artwork into the folder given as the first argument:

  toolbar32.bmp, toolbar8.bmp  toolbar images, 24 x 24 each: Create, Mount, Dismount,
                               Dismount All, Options
  menu32.bmp, menu8.bmp        menu images, 24 x 24 each, in the order of the resource
                               script's menu-image toolbar
  watermark.bmp, header.bmp    the new-image wizard's watermark (164 x 314) and header (49 x 49)
  cryptelle.ico, keyboard.ico  the program's icon and the on-screen keyboard button's icon
  image.ico                    the icon of image files (.qvi)

With --preview FILE it also writes a PNG sheet of everything, enlarged, for reviewing.
Every picture is drawn on a 24-unit grid (the watermark on its own) in one palette: a
slate-blue disk, a gold padlock, green for adding and mounting, red for removing.
"""

import math
import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from bitmaps import bmp8, bmp24, bmp32, ico, png  # noqa: E402
from drawing import (Canvas, arc, circle, polygon, rgb, ring, rounded_rect,  # noqa: E402
                     segment, vertical_gradient)

INK = rgb("#1E3F6B")
DISK_TOP, DISK_BOTTOM = rgb("#5B93D6"), rgb("#2B5A94")
SLOT = rgb("#D9E6F5")
LED = rgb("#47D16F")
GOLD_TOP, GOLD_BOTTOM, GOLD_INK = rgb("#F8D36A"), rgb("#D99A1E"), rgb("#7A4F08")
STEEL, STEEL_INK = rgb("#A7B3C2"), rgb("#4E5966")
GREEN, GREEN_INK = rgb("#34B356"), rgb("#1C6B31")
RED, RED_INK = rgb("#DE4B3F"), rgb("#8E2219")
BLUE, BLUE_INK = rgb("#2F7BD8"), rgb("#174A8C")
GEAR, GEAR_INK = rgb("#8C9AAD"), rgb("#3C4756")
WHITE = (1.0, 1.0, 1.0)


def outlined(canvas, shape, paint, ink, width=1.0):
    """Fills the shape with `ink`, then its inside, `width` units in, with `paint`."""
    canvas.fill(shape, ink)
    canvas.fill(shape.grown(-width), paint)


# Elements ------------------------------------------------------------------------------

def disk(canvas, x0=2.0, y0=6.0, x1=22.0, y1=18.0):
    """A disk drive seen from the front: body, slot and activity light."""
    body = rounded_rect(x0, y0, x1, y1, 2.5)
    outlined(canvas, body, vertical_gradient(DISK_TOP, DISK_BOTTOM, y0, y1), INK)
    height = y1 - y0
    slot_y = y0 + height * 0.62
    canvas.fill(segment(x0 + 3.5, slot_y, x0 + (x1 - x0) * 0.55, slot_y, 1.6), SLOT)
    canvas.fill(circle(x1 - 3.6, slot_y, 1.3), LED)
    canvas.fill(segment(x0 + 2.5, y0 + 1.8, x1 - 2.5, y0 + 1.8, 0.9), SLOT, opacity=0.45)


def padlock(canvas, cx, cy, size):
    """A padlock whose body is centred at (cx, cy); size is the body's width."""
    w, h = size, size * 0.78
    shackle = arc(cx, cy - h * 0.45, w * 0.3, w * 0.16, 180, 360)
    legs = (segment(cx - w * 0.3, cy - h * 0.45, cx - w * 0.3, cy - h * 0.1, w * 0.16) |
            segment(cx + w * 0.3, cy - h * 0.45, cx + w * 0.3, cy - h * 0.1, w * 0.16))
    canvas.fill((shackle | legs).grown(0.7), STEEL_INK)
    canvas.fill(shackle | legs, STEEL)
    body = rounded_rect(cx - w / 2, cy - h / 2, cx + w / 2, cy + h / 2, size * 0.14)
    outlined(canvas, body, vertical_gradient(GOLD_TOP, GOLD_BOTTOM, cy - h / 2, cy + h / 2),
             GOLD_INK, 0.8)
    canvas.fill(circle(cx, cy - h * 0.08, size * 0.1), GOLD_INK)
    canvas.fill(segment(cx, cy - h * 0.08, cx, cy + h * 0.22, size * 0.09), GOLD_INK)


def badge(canvas, cx, cy, radius, color, ink):
    """A round badge with a white rim, for the symbols drawn over a disk."""
    canvas.fill(circle(cx, cy, radius + 1.0), WHITE)
    outlined(canvas, circle(cx, cy, radius), color, ink, 0.9)


def plus(canvas, cx, cy, size):
    canvas.fill(segment(cx - size, cy, cx + size, cy, 1.8) | segment(cx, cy - size, cx, cy + size, 1.8),
                WHITE)


def arrow_down(canvas, cx, cy, size, color, ink):
    head = polygon([(cx - size, cy), (cx + size, cy), (cx, cy + size)])
    shaft = rounded_rect(cx - size * 0.42, cy - size * 1.1, cx + size * 0.42, cy + 0.3, 0.4)
    shape = head | shaft
    outlined(canvas, shape.grown(0.9), color, ink, 0.9)


def eject(canvas, cx, cy, size, color, ink):
    """The eject symbol: a triangle over a bar."""
    triangle = polygon([(cx - size, cy + size * 0.15), (cx + size, cy + size * 0.15),
                        (cx, cy - size * 0.95)])
    bar = rounded_rect(cx - size, cy + size * 0.45, cx + size, cy + size * 0.95, 0.3)
    outlined(canvas, (triangle | bar).grown(0.8), color, ink, 0.9)


def gear(canvas, cx, cy, radius, teeth=8):
    points = []
    for i in range(teeth * 4):
        angle = 2 * math.pi * i / (teeth * 4) + math.pi / (teeth * 4)
        outer = radius if i % 4 in (1, 2) else radius * 0.74
        points.append((cx + outer * math.cos(angle), cy + outer * math.sin(angle)))
    wheel = polygon(points) - circle(cx, cy, radius * 0.3)
    outlined(canvas, wheel.grown(0.4), vertical_gradient(rgb("#B6C2D1"), GEAR, cy - radius,
                                                         cy + radius), GEAR_INK, 1.0)


def key(canvas, cx, cy):
    bow = ring(cx - 4.5, cy - 3.5, 3.2, 2.6)
    blade = segment(cx - 2.2, cy - 1.2, cx + 7.5, cy + 8.5, 2.4)
    bits = segment(cx + 3.8, cy + 4.8, cx + 6.0, cy + 2.6, 2.0) | segment(cx + 6.0, cy + 7.0,
                                                                          cx + 7.8, cy + 5.2, 2.0)
    shape = bow | blade | bits
    canvas.fill(shape.grown(0.8), GOLD_INK)
    canvas.fill(shape, vertical_gradient(GOLD_TOP, GOLD_BOTTOM, cy - 7, cy + 9))


def sheet(canvas):
    """A page with lines: the properties of a disk."""
    page = polygon([(5, 2), (15, 2), (19, 6), (19, 22), (5, 22)])
    outlined(canvas, page, WHITE, STEEL_INK, 1.0)
    canvas.fill(polygon([(15, 2), (15, 6), (19, 6)]), STEEL)
    for y in (9.5, 12.5, 15.5, 18.5):
        canvas.fill(segment(8, y, 16, y, 1.3), BLUE)


def refresh(canvas, cx=12.0, cy=12.0):
    for start, end, tip in ((200, 340, 340), (20, 160, 160)):
        canvas.fill(arc(cx, cy, 7.0, 4.4, start, end), GREEN_INK)
        canvas.fill(arc(cx, cy, 7.0, 2.6, start, end), GREEN)
        a = math.radians(tip)
        px, py = cx + 7.0 * math.cos(a), cy + 7.0 * math.sin(a)
        tx, ty = -math.sin(a), math.cos(a)   # direction of travel (clockwise)
        nx, ny = math.cos(a), math.sin(a)
        head = polygon([(px + nx * 4.0, py + ny * 4.0), (px - nx * 4.0, py - ny * 4.0),
                        (px + tx * 4.2, py + ty * 4.2)])
        outlined(canvas, head.grown(0.6), GREEN, GREEN_INK, 0.9)


def eraser(canvas):
    block = polygon([(3.5, 15), (12.5, 6), (20.5, 14), (11.5, 23)])
    outlined(canvas, block, rgb("#F29BB0"), rgb("#8A3247"), 1.0)
    sleeve = polygon([(3.5, 15), (8, 10.5), (16, 18.5), (11.5, 23)])
    outlined(canvas, sleeve, vertical_gradient(rgb("#6FA2E0"), BLUE, 10, 23), BLUE_INK, 1.0)
    canvas.fill(segment(2.5, 23, 21, 23, 1.0), STEEL_INK)


def question(canvas, cx=12.0, cy=12.0):
    outlined(canvas, circle(cx, cy, 10.0), vertical_gradient(rgb("#5A9BEA"), BLUE, 2, 22),
             BLUE_INK, 1.0)
    canvas.fill(arc(cx, cy - 3.0, 3.4, 2.4, 180, 90), WHITE)
    canvas.fill(segment(cx, cy + 0.4, cx, cy + 2.4, 2.4), WHITE)
    canvas.fill(circle(cx, cy + 6.0, 1.5), WHITE)


# Pictures --------------------------------------------------------------------------------

def draw_create(c):
    disk(c, 1, 5, 21, 17)
    badge(c, 17.5, 17.5, 5.0, GREEN, GREEN_INK)
    plus(c, 17.5, 17.5, 2.6)


def draw_mount(c):
    disk(c, 2, 10, 22, 22)
    arrow_down(c, 12, 5.5, 4.2, GREEN, GREEN_INK)


def draw_dismount(c):
    disk(c, 2, 10, 22, 22)
    eject(c, 12, 4.8, 4.4, RED, RED_INK)


def draw_dismount_all(c):
    disk(c, 6, 8, 23, 17)
    disk(c, 1, 13, 18, 22)
    eject(c, 8, 4.8, 4.0, RED, RED_INK)


def draw_options(c):
    gear(c, 12, 12, 10.5)


def draw_password(c):
    key(c, 11, 10)


def draw_properties(c):
    sheet(c)


def draw_refresh(c):
    refresh(c)


def draw_clear(c):
    eraser(c)


def draw_help(c):
    question(c)


def draw_icon(c):
    disk(c, 1.5, 6, 22.5, 19)
    padlock(c, 16.5, 17.0, 8.6)


def draw_image_file(c):
    """An image file: a page with a folded corner, closed by a padlock."""
    page = polygon([(4, 1.5), (15, 1.5), (20, 6.5), (20, 22.5), (4, 22.5)])
    outlined(c, page, vertical_gradient(WHITE, rgb("#DCE4EE"), 1.5, 22.5), STEEL_INK, 1.0)
    c.fill(polygon([(15, 1.5), (15, 6.5), (20, 6.5)]), STEEL)
    for y in (6.0, 9.0):
        c.fill(segment(7, y, 12.5, y, 1.2), BLUE)
    padlock(c, 12.0, 16.5, 10.0)


def draw_keyboard(c):
    outlined(c, rounded_rect(1, 6, 23, 19, 2.2), vertical_gradient(rgb("#5D6875"), rgb("#38414C"),
                                                                   6, 19), rgb("#1F252C"))
    for row, (y, x0, count) in enumerate(((8.3, 3.2, 6), (11.3, 4.2, 5), (14.3, 3.2, 6))):
        for i in range(count):
            x = x0 + i * 3.0
            c.fill(rounded_rect(x, y, x + 2.4, y + 2.2, 0.5), rgb("#E8EDF2"))
    c.fill(rounded_rect(7.2, 16.6, 16.8, 17.9, 0.5), rgb("#E8EDF2"))


TOOLBAR = [draw_create, draw_mount, draw_dismount, draw_dismount_all, draw_options]
MENU = [draw_create, draw_mount, draw_dismount, draw_dismount_all, draw_password,
        draw_properties, draw_refresh, draw_clear, draw_options, draw_help]
ICON_SIZES = [16, 20, 24, 32, 40, 48, 64, 256]
KEYBOARD_SIZES = [16, 20, 24, 32, 40, 48]


def strip(pictures, size=24):
    """The pictures side by side, each size x size pixels, as RGBA rows."""
    width = size * len(pictures)
    pixels = [(0, 0, 0, 0)] * (width * size)
    for n, draw in enumerate(pictures):
        canvas = Canvas(size, size, size / 24)
        draw(canvas)
        image = canvas.rgba_bytes()
        for y in range(size):
            pixels[y * width + n * size:y * width + (n + 1) * size] = image[y * size:(y + 1) * size]
    return pixels, width, size


def picture(draw, size):
    canvas = Canvas(size, size, size / 24)
    draw(canvas)
    return canvas.rgba_bytes()


def watermark():
    """The exterior pages' watermark: a deep blue panel with the program's emblem."""
    width, height = 164, 314
    canvas = Canvas(width, height, 1.0)
    canvas.fill(rounded_rect(-10, -10, width + 10, height + 10, 0),
                vertical_gradient(rgb("#1D4F8F"), rgb("#0E2747"), 0, height))
    for i, radius in enumerate((150, 118, 86)):
        canvas.fill(ring(width * 0.85, height * 0.98, radius, 14), WHITE, opacity=0.05 + 0.02 * i)
    emblem = Canvas(96, 96, 4.0)
    draw_icon(emblem)
    canvas.fill(circle(82, 104, 58), rgb("#FFFFFF"), opacity=0.08)
    _paste(canvas, emblem, 34, 56)
    return canvas.rgba_bytes(), width, height


def header():
    """The interior pages' header picture: the emblem on the header's white."""
    size = 49
    canvas = Canvas(size, size, 1.0, background=WHITE)
    emblem = Canvas(44, 44, 44 / 24)
    draw_icon(emblem)
    _paste(canvas, emblem, 2, 2)
    return canvas.rgba_bytes(), size, size


def _paste(canvas, image, left, top):
    for y in range(image.height):
        for x in range(image.width):
            r, g, b, a = image.pixels[y * image.width + x]
            if a > 0 and 0 <= left + x < canvas.width and 0 <= top + y < canvas.height:
                canvas._blend((top + y) * canvas.width + left + x, r, g, b, a)


def preview(path, images):
    """All images on one light sheet, each enlarged by 3, with 12 pixels between them."""
    zoom, gap = 3, 12
    width = gap + sum(w * zoom + gap for _, w, _ in images)
    height = gap * 2 + max(h for _, _, h in images) * zoom
    sheet_pixels = [(236, 238, 241, 255)] * (width * height)
    left = gap
    for pixels, w, h in images:
        for y in range(h * zoom):
            for x in range(w * zoom):
                r, g, b, a = pixels[(y // zoom) * w + x // zoom]
                k = 236
                sheet_pixels[(gap + y) * width + left + x] = (
                    (r * a + k * (255 - a)) // 255, (g * a + k * (255 - a)) // 255,
                    (b * a + k * (255 - a)) // 255, 255)
        left += w * zoom + gap
    with open(path, "wb") as f:
        f.write(png(sheet_pixels, width, height))


def main(argv):
    if len(argv) < 2:
        print(__doc__, file=sys.stderr)
        return 2
    out = argv[1]
    os.makedirs(out, exist_ok=True)

    def write(name, data):
        with open(os.path.join(out, name), "wb") as f:
            f.write(data)

    toolbar = strip(TOOLBAR)
    menu = strip(MENU)
    mark = watermark()
    head = header()
    write("toolbar32.bmp", bmp32(*toolbar))
    write("toolbar8.bmp", bmp8(*toolbar))
    write("menu32.bmp", bmp32(*menu))
    write("menu8.bmp", bmp8(*menu))
    write("watermark.bmp", bmp24(*mark))
    write("header.bmp", bmp24(*head))
    write("cryptelle.ico", ico([(s, picture(draw_icon, s)) for s in ICON_SIZES]))
    write("keyboard.ico", ico([(s, picture(draw_keyboard, s)) for s in KEYBOARD_SIZES]))
    write("image.ico", ico([(s, picture(draw_image_file, s)) for s in ICON_SIZES]))
    if len(argv) >= 4 and argv[2] == "--preview":
        preview(argv[3], [toolbar, menu, (picture(draw_icon, 64), 64, 64),
                          (picture(draw_keyboard, 32), 32, 32), (picture(draw_image_file, 64), 64, 64),
                          head, mark])
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
