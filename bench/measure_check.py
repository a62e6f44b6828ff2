#!/usr/bin/python3
"""Compares what terravo-batch measures with an independent, slow computation.

usage: measure_check.py TERRAVO_BATCH WORK_FOLDER FILE...

Of each file a second survey is made: two points of three, with other heights. The triangles of both
are those that the program exports; everything else is computed here, triangle by triangle, pair by
pair: clipping of polygons, in exact fractions up to MOST_EXACT triangles and in floating point
relative to the middle beyond, and sums without loss (math.fsum). Only the plan area is compared with
a hull that knows nothing of the program's triangles (scipy's qhull). Prints relative differences as
rows of a Markdown table; a difference of volumes is relative to cut and fill together. Ends with 1
where one is above TOLERANCE.
"""

import csv
import json
import math
import os
import random
import subprocess
import sys
from collections import defaultdict
from fractions import Fraction

import numpy
from scipy.spatial import ConvexHull

MOST_EXACT = 1000
TOLERANCE = 1e-11
LINES = 20
PLACES = 200


def batch(program, *arguments):
    done = subprocess.run([program, *arguments, "--summary", "json"], stdout=subprocess.PIPE)
    if done.returncode != 0:
        sys.exit(f"exit code {done.returncode}: {' '.join(arguments)}")
    return json.loads(done.stdout)


def records(path):
    with open(path, newline="") as file:
        rows = csv.reader(file)
        next(rows)
        return list(rows)


class Surface:
    """Triangles of corners (x, y, z) relative to a middle in plan, as one kind of number."""

    def __init__(self, program, folder, survey):
        points, triangles = os.path.join(folder, "p.csv"), os.path.join(folder, "t.csv")
        batch(program, survey, "--csv", points, "--triangles-csv", triangles)
        self.points = [tuple(map(float, row[1:4])) for row in records(points)]
        self.corners = [tuple(int(n) - 1 for n in row) for row in records(triangles)]

    def place(self, number, middle):
        self.triangles = []
        moved = [(number(x) - number(middle[0]), number(y) - number(middle[1]), number(z))
                 for x, y, z in self.points]
        for corners in self.corners:
            self.triangles.append([moved[i] for i in corners])


def double_area(ring):
    x0, y0 = ring[0][:2]
    return sum((a[0] - x0) * (b[1] - y0) - (b[0] - x0) * (a[1] - y0)
               for a, b in zip(ring[1:], ring[2:]))


def clip(ring, value):
    """The part of a convex ring where a linear value(corner) is not below 0."""
    out = []
    for a, b in zip(ring, ring[1:] + ring[:1]):
        va, vb = value(a), value(b)
        if va >= 0:
            out.append(a)
        if (va > 0 > vb) or (va < 0 < vb):
            t = va / (va - vb)
            out.append(tuple(p + t * (q - p) for p, q in zip(a, b)))
    return out if len(out) > 2 else []


def integral(ring, value):
    """Of a linear value over a convex ring."""
    return sum(double_area(part) * sum(map(value, part)) / 6
               for part in ([ring[0], a, b] for a, b in zip(ring[1:], ring[2:])))


def left_of(a, b):
    return lambda p: (b[0] - a[0]) * (p[1] - a[1]) - (b[1] - a[1]) * (p[0] - a[0])


def gradient(triangle):
    (ax, ay, az), b, c = triangle
    ux, uy, uz = b[0] - ax, b[1] - ay, b[2] - az
    vx, vy, vz = c[0] - ax, c[1] - ay, c[2] - az
    d = ux * vy - uy * vx
    return (uz * vy - uy * vz) / d, (ux * vz - uz * vx) / d


def plane(triangle):
    """Its height at a place."""
    ax, ay, az = triangle[0]
    gx, gy = gradient(triangle)
    return lambda p: az + gx * (p[0] - ax) + gy * (p[1] - ay)


class Earth:
    """Cut, fill, and what was compared."""

    def __init__(self):
        self.cut, self.fill, self.area = [], [], []

    def add(self, ring, value):
        above = clip(ring, value)
        below = clip(ring, lambda p: -value(p))
        self.area.append(double_area(ring) / 2)
        if above:
            self.cut.append(integral(above, value))
        if below:
            self.fill.append(-integral(below, value))

    def totals(self, total):
        return total(self.cut), total(self.fill), total(self.area)


class Cells:
    """Which triangles have their box over a place of a grid."""

    def __init__(self, triangles):
        boxes = [self.box(t) for t in triangles]
        self.size = max(1e-9, 2 * sum(b[2] - b[0] + b[3] - b[1] for b in boxes) / 2 / len(boxes))
        self.cells = defaultdict(list)
        for number, box in enumerate(boxes):
            for key in self.keys(box):
                self.cells[key].append(number)

    @staticmethod
    def box(ring):
        xs, ys = [float(p[0]) for p in ring], [float(p[1]) for p in ring]
        return min(xs), min(ys), max(xs), max(ys)

    def keys(self, box):
        at = [math.floor(v / self.size) for v in box]
        return [(i, j) for i in range(at[0], at[2] + 1) for j in range(at[1], at[3] + 1)]

    def near(self, ring):
        found = set()
        for key in self.keys(self.box(ring)):
            found.update(self.cells.get(key, ()))
        return sorted(found)


def earth_between(first, second):
    earth = Earth()
    cells = Cells(second)
    planes = [plane(t) for t in second]
    for t in first:
        mine = plane(t)
        for number in cells.near(t):
            ring = t
            other = second[number]
            for a, b in zip(other, other[1:] + other[:1]):
                ring = ring and clip(ring, left_of(a, b))
            if ring:
                theirs = planes[number]
                earth.add(ring, lambda p: mine(p) - theirs(p))
    return earth


def along(triangles, a, b):
    """Length over the surface and the integral of the height along a straight line."""
    length, area = [], []
    whole = math.hypot(float(b[0] - a[0]), float(b[1] - a[1]))
    for t in triangles:
        low, high = 0, 1
        for p, q in zip(t, t[1:] + t[:1]):
            side = left_of(p, q)
            va, vb = side(a), side(b)
            if va < 0 and vb < 0:
                low, high = 1, 0
                break
            if va < 0 <= vb:
                low = max(low, va / (va - vb))
            elif vb < 0 <= va:
                high = min(high, va / (va - vb))
        if high > low:
            height = plane(t)
            ends = [tuple(u + s * (v - u) for u, v in zip(a, b)) for s in (low, high)]
            length.append(float(high - low) * whole)
            area.append(float(high - low) * whole * float(height(ends[0]) + height(ends[1])) / 2)
    return math.fsum(length), math.fsum(area)


class Rows:
    def __init__(self, name):
        self.name, self.worst = name, 0

    def tell(self, what, program, here, scale=None):
        scale = abs(float(here)) if scale is None else float(scale)
        difference = abs(float(program) - float(here)) / (scale or 1)
        self.worst = max(self.worst, difference)
        print(f"| {self.name} | {what} | {float(program):.15g} | {difference:.1e} |", flush=True)


def check_areas(rows, surface, measure, total):
    plan, sloping, middle, slope = [], [], [], []
    for t in surface.triangles:
        area = double_area(t) / 2
        tangent = math.hypot(*map(float, gradient(t)))
        plan.append(area)
        sloping.append(float(area) * math.hypot(1, tangent))
        middle.append(area * sum(p[2] for p in t) / 3)
        slope.append(float(area) * tangent)
    areas = measure["areas"]
    rows.tell("plan area", areas["plan"], total(plan))
    places = numpy.array(surface.points)[:, :2]
    rows.tell("plan area, hull of the points", areas["plan"],
              ConvexHull(places - places.mean(axis=0)).volume)
    rows.tell("surface area", areas["surface"], math.fsum(sloping))
    rows.tell("mean height", areas["mean_height"], total(middle) / total(plan))
    rows.tell("mean slope", areas["mean_slope"], math.fsum(slope) / float(total(plan)))


def check_datum(rows, surface, measure, total, number):
    datum = number(measure["volume"]["datum"])
    earth = Earth()
    for t in surface.triangles:
        earth.add(t, lambda p: p[2] - datum)
    cut, fill, _ = earth.totals(total)
    for key, here in (("cut", cut), ("fill", fill), ("net", cut - fill)):
        rows.tell(f"volume to {float(datum):g}, {key}", measure["volume"][key], here, cut + fill)


def check_table(rows, surface, measure, total, number):
    worst = 0
    for row in measure["hypsometry"][1:]:
        earth = Earth()
        for t in surface.triangles:
            if any(p[2] > row["height"] for p in t):
                earth.add(t, lambda p: p[2] - number(row["height"]))
        worst = max(worst, abs(row["volume_above"] / float(total(earth.cut)) - 1))
    rows.tell(f"{len(measure['hypsometry']) - 1} volumes above levels", 1 + worst, 1)


def check_second(rows, first, second, measure, total):
    earth = earth_between(first.triangles, second.triangles)
    cut, fill, area = earth.totals(total)
    volume = measure["volume_to"]
    for key, here in (("cut", cut), ("fill", fill), ("net", cut - fill)):
        rows.tell(f"second survey, {key}", volume[key], here, cut + fill)
    rows.tell("second survey, common area", volume["plan_area"], area)


def check_difference(rows, path, measure):
    """The exported surface has the volumes that were told."""
    with open(path) as file:
        features = json.load(file)["features"]
    triangles = [[tuple(p) for p in f["geometry"]["coordinates"][0][:3]] for f in features
                 if f["properties"]["kind"] == "triangle"]
    x0, y0 = triangles[0][0][:2]
    earth = Earth()
    for t in triangles:
        earth.add([(x - x0, y - y0, z) for x, y, z in t], lambda p: -p[2])
    cut, fill, area = earth.totals(math.fsum)
    volume = measure["volume_to"]
    rows.tell(f"difference, {len(triangles)} triangles, cut", volume["cut"], cut, cut + fill)
    rows.tell("difference, fill", volume["fill"], fill, cut + fill)
    rows.tell("difference, area", volume["plan_area"], area)


def check_sections(rows, surface, lines, table, middle, number):
    runs = defaultdict(list)
    for row in records(table):
        if row[5] == "1":
            runs[int(row[3]), int(row[6])].append((float(row[0]), float(row[-1])))
    lengths, heights = defaultdict(list), defaultdict(list)
    for (section, _), run in runs.items():
        for a, b in zip(run, run[1:]):
            lengths[section].append(b[0] - a[0])
            heights[section].append((b[0] - a[0]) * (a[1] + b[1]) / 2)
    worst = 0, 0
    for section, line in enumerate(lines, 1):
        a, b = (tuple(number(v) - number(m) for v, m in zip(p, middle)) for p in line)
        length, area = along(surface.triangles, a, b)
        worst = (max(worst[0], abs(math.fsum(lengths[section]) / length - 1)),
                 max(worst[1], abs(math.fsum(heights[section]) / area - 1)))
    rows.tell(f"{len(lines)} sections, length over ground", 1 + worst[0], 1)
    rows.tell(f"{len(lines)} sections, area below", 1 + worst[1], 1)


def check_heights(rows, surface, measure, middle, number):
    cells = Cells(surface.triangles)
    worst, found = 0, 0
    for told in measure["heights"]:
        p = number(told["x"]) - number(middle[0]), number(told["y"]) - number(middle[1])
        for i in cells.near([p, p, p]):
            t = surface.triangles[i]
            if all(left_of(a, b)(p) >= 0 for a, b in zip(t, t[1:] + t[:1])):
                here = float(plane(t)(p))
                worst = max(worst, abs(told["height"] - here) / abs(here))
                found += 1
                break
        else:
            worst = max(worst, 0 if told["height"] is None else 1)
    rows.tell(f"{found} heights", 1 + worst, 1)


def second_survey(surface, path):
    """Two points of three, with waves in their heights."""
    points = numpy.array(surface.points)
    low, high = points.min(axis=0), points.max(axis=0)
    size = max(high[0] - low[0], high[1] - low[1])
    with open(path, "w") as file:
        for i, (x, y, z) in enumerate(surface.points):
            if i % 3 != 1:
                wave = math.sin(9 * (x - low[0]) / size) * math.cos(7 * (y - low[1]) / size)
                file.write(f"{x!r},{y!r},{z + 0.02 * (high[2] - low[2]) * wave!r}\n")


def check(program, folder, survey):
    rows = Rows(os.path.basename(survey))
    first = Surface(program, folder, survey)
    other = os.path.join(folder, "second.dat")
    second_survey(first, other)
    second = Surface(program, folder, other)
    number, total = (Fraction, sum) if len(first.corners) <= MOST_EXACT else (float, math.fsum)
    points = numpy.array(first.points)
    low, high = points.min(axis=0), points.max(axis=0)
    middle = tuple(float(v) for v in (low + high)[:2] / 2)
    first.place(number, middle)
    second.place(number, middle)
    chance = random.Random(7)

    def anywhere():
        return tuple(chance.uniform(low[k], high[k]) for k in (0, 1))

    lines = [(anywhere(), anywhere()) for _ in range(LINES)]
    table, difference = os.path.join(folder, "s.csv"), os.path.join(folder, "d.geojson")
    call = [survey, "--areas", "--hypsometry", "--volume", repr(float(low[2] + high[2]) / 2), "--volume-to", other,
            "--section-csv", table, "--difference", difference, "--content", "triangles"]
    for a, b in lines:
        call.append("--section=" + ",".join(map(repr, a + b)))
    for _ in range(PLACES):
        call.append("--height-at=" + ",".join(map(repr, anywhere())))
    measure = batch(program, *call)["measure"]
    check_areas(rows, first, measure, total)
    check_datum(rows, first, measure, total, number)
    check_table(rows, first, measure, total, number)
    check_second(rows, first, second, measure, total)
    check_difference(rows, difference, measure)
    check_sections(rows, first, lines, table, middle, number)
    check_heights(rows, first, measure, middle, number)
    same = batch(program, survey, "--volume-to", survey)["measure"]["volume_to"]
    rows.tell("with itself, cut", same["cut"], 0)
    rows.tell("with itself, fill", same["fill"], 0)
    turned = batch(program, other, "--volume-to", survey)["measure"]["volume_to"]
    rows.tell("the other way round, cut less fill", turned["cut"], measure["volume_to"]["fill"])
    rows.tell("the other way round, fill less cut", turned["fill"], measure["volume_to"]["cut"])
    return rows.worst


def main():
    if len(sys.argv) < 4:
        sys.exit(__doc__.strip())
    program, folder = sys.argv[1:3]
    os.makedirs(folder, exist_ok=True)
    print("| survey | figure | terravo-batch | relative difference |\n|---|---|---|---|")
    worst = max(check(program, folder, survey) for survey in sys.argv[3:])
    sys.exit(0 if worst <= TOLERANCE else f"a difference of {worst:.1e}")


if __name__ == "__main__":
    main()
