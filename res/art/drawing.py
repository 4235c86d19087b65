"""A small anti-aliased rasteriser for the program's artwork.

Shapes are signed distance functions in design units (negative inside); a canvas renders
them at any pixel size, so one drawing serves every icon size. Edges are smoothed by the
distance to the edge measured in pixels, which needs no supersampling. Only the Python
standard library is used, and the output depends on nothing but the drawing: the same
script always writes the same bytes.
"""

import math


def clamp(value, low=0.0, high=1.0):
    return low if value < low else high if value > high else value


class Shape:
    """A signed distance function with a bounding box (x0, y0, x1, y1) in design units."""

    def __init__(self, distance, box):
        self.distance = distance
        self.box = box

    def __or__(self, other):
        return Shape(lambda x, y: min(self.distance(x, y), other.distance(x, y)),
                     (min(self.box[0], other.box[0]), min(self.box[1], other.box[1]),
                      max(self.box[2], other.box[2]), max(self.box[3], other.box[3])))

    def __and__(self, other):
        return Shape(lambda x, y: max(self.distance(x, y), other.distance(x, y)),
                     (max(self.box[0], other.box[0]), max(self.box[1], other.box[1]),
                      min(self.box[2], other.box[2]), min(self.box[3], other.box[3])))

    def __sub__(self, other):
        return Shape(lambda x, y: max(self.distance(x, y), -other.distance(x, y)), self.box)

    def grown(self, amount):
        """The shape with its edge moved outwards by `amount` (an outline or a halo)."""
        x0, y0, x1, y1 = self.box
        return Shape(lambda x, y: self.distance(x, y) - amount,
                     (x0 - amount, y0 - amount, x1 + amount, y1 + amount))

    def moved(self, dx, dy):
        x0, y0, x1, y1 = self.box
        return Shape(lambda x, y: self.distance(x - dx, y - dy), (x0 + dx, y0 + dy, x1 + dx, y1 + dy))


def rounded_rect(x0, y0, x1, y1, radius):
    cx, cy = (x0 + x1) / 2, (y0 + y1) / 2
    hw, hh = (x1 - x0) / 2 - radius, (y1 - y0) / 2 - radius

    def distance(x, y):
        qx, qy = abs(x - cx) - hw, abs(y - cy) - hh
        outside = math.hypot(max(qx, 0.0), max(qy, 0.0))
        return outside + min(max(qx, qy), 0.0) - radius

    return Shape(distance, (x0, y0, x1, y1))


def circle(cx, cy, radius):
    return Shape(lambda x, y: math.hypot(x - cx, y - cy) - radius,
                 (cx - radius, cy - radius, cx + radius, cy + radius))


def ring(cx, cy, radius, width):
    return Shape(lambda x, y: abs(math.hypot(x - cx, y - cy) - radius) - width / 2,
                 (cx - radius - width, cy - radius - width, cx + radius + width, cy + radius + width))


def segment(ax, ay, bx, by, width):
    """A stroke with round ends from (ax, ay) to (bx, by)."""
    dx, dy = bx - ax, by - ay
    length2 = dx * dx + dy * dy or 1e-9

    def distance(x, y):
        t = clamp(((x - ax) * dx + (y - ay) * dy) / length2)
        return math.hypot(x - ax - t * dx, y - ay - t * dy) - width / 2

    half = width / 2
    return Shape(distance, (min(ax, bx) - half, min(ay, by) - half,
                            max(ax, bx) + half, max(ay, by) + half))


def polygon(points):
    """A closed polygon, convex or not (distance to the nearest edge, sign by winding)."""
    count = len(points)

    def distance(x, y):
        best = float("inf")
        inside = False
        for i in range(count):
            ax, ay = points[i]
            bx, by = points[i - 1]
            ex, ey = bx - ax, by - ay
            wx, wy = x - ax, y - ay
            t = clamp((wx * ex + wy * ey) / (ex * ex + ey * ey or 1e-9))
            best = min(best, math.hypot(wx - ex * t, wy - ey * t))
            if (ay > y) != (by > y) and x < ax + (y - ay) * ex / (by - ay):
                inside = not inside
        return -best if inside else best

    xs = [p[0] for p in points]
    ys = [p[1] for p in points]
    return Shape(distance, (min(xs), min(ys), max(xs), max(ys)))


def arc(cx, cy, radius, width, start_degrees, end_degrees):
    """Part of a ring from one angle to the other, clockwise on screen, with round ends."""
    a0, a1 = math.radians(start_degrees), math.radians(end_degrees)
    span = (a1 - a0) % (2 * math.pi)

    def distance(x, y):
        angle = (math.atan2(y - cy, x - cx) - a0) % (2 * math.pi)
        if angle <= span:
            return abs(math.hypot(x - cx, y - cy) - radius) - width / 2
        ends = [(cx + radius * math.cos(a), cy + radius * math.sin(a)) for a in (a0, a1)]
        return min(math.hypot(x - ex, y - ey) for ex, ey in ends) - width / 2

    return Shape(distance, (cx - radius - width, cy - radius - width,
                            cx + radius + width, cy + radius + width))


def vertical_gradient(top_color, bottom_color, y0, y1):
    """A paint whose colour runs from top_color at y0 to bottom_color at y1."""

    def paint(x, y):
        t = clamp((y - y0) / ((y1 - y0) or 1e-9))
        return tuple(a + (b - a) * t for a, b in zip(top_color, bottom_color))

    return paint


def solid(color):
    return lambda x, y: color


def rgb(text):
    """'#RRGGBB' as a colour with components from 0 to 1."""
    return tuple(int(text[i:i + 2], 16) / 255 for i in (1, 3, 5))


class Canvas:
    """Straight-alpha RGBA pixels; design units are scaled by `scale` pixels."""

    def __init__(self, width, height, scale=1.0, background=None):
        self.width, self.height, self.scale = width, height, scale
        fill = (background + (1.0,)) if background else (0.0, 0.0, 0.0, 0.0)
        self.pixels = [list(fill) for _ in range(width * height)]

    def fill(self, shape, paint, opacity=1.0):
        if isinstance(paint, tuple):
            paint = solid(paint)
        s = self.scale
        x0, y0, x1, y1 = shape.box
        px0, py0 = max(int(math.floor(x0 * s)) - 1, 0), max(int(math.floor(y0 * s)) - 1, 0)
        px1 = min(int(math.ceil(x1 * s)) + 1, self.width)
        py1 = min(int(math.ceil(y1 * s)) + 1, self.height)
        for py in range(py0, py1):
            y = (py + 0.5) / s
            row = py * self.width
            for px in range(px0, px1):
                x = (px + 0.5) / s
                coverage = clamp(0.5 - shape.distance(x, y) * s) * opacity
                if coverage <= 0.0:
                    continue
                r, g, b = paint(x, y)
                self._blend(row + px, r, g, b, coverage)

    def _blend(self, index, r, g, b, alpha):
        pixel = self.pixels[index]
        below = pixel[3] * (1.0 - alpha)
        out = alpha + below
        if out <= 0.0:
            return
        pixel[0] = (r * alpha + pixel[0] * below) / out
        pixel[1] = (g * alpha + pixel[1] * below) / out
        pixel[2] = (b * alpha + pixel[2] * below) / out
        pixel[3] = out

    def rgba_bytes(self):
        """Rows from the top, 8-bit RGBA."""
        return [tuple(int(round(clamp(c) * 255)) for c in pixel) for pixel in self.pixels]
