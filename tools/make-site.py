#!/usr/bin/env python3
"""Makes samples/site: a survey of a site that never was, with all that shapes a surface.

An L of 120 by 90 m on a slope; a retaining wall (top and foot), a kerb, a house that stays without
ground, one stray point. Codes carry the lines, the boundary and the house come as files, too. A second
survey of the same points, after a yard was levelled: within 22 m of a place all lie at one height.
"""
import math
import pathlib
import random

EAST, NORTH = 691000.0, 5335000.0
L_SHAPE = [(0, 0), (120, 0), (120, 40), (60, 40), (60, 90), (0, 90)]
HOUSE = [(82, 12), (98, 14), (97, 24), (81, 22)]
WALL = [(8, 48), (18, 51), (30, 52.5), (42, 52), (54, 49)]
KERB = [(4, 6), (24, 7), (44, 9), (64, 9.5), (78, 7.5), (100, 5), (116, 4.5)]
YARD = (40, 26, 22, 414.2)  # its middle, its radius, its height
STEP = 6.0


def is_inside(x, y, ring, margin=0.0):
    inside = False
    for (ax, ay), (bx, by) in zip(ring, ring[1:] + ring[:1]):
        if (ay > y) != (by > y) and ax + (y - ay) / (by - ay) * (bx - ax) > x:
            inside = not inside
        length = math.hypot(bx - ax, by - ay)
        part = max(0.0, min(1.0, ((x - ax) * (bx - ax) + (y - ay) * (by - ay)) / length**2))
        if margin and math.hypot(x - ax - part * (bx - ax), y - ay - part * (by - ay)) < margin:
            return True
    return inside


def distance_to(x, y, line):
    """North of the line; nothing beyond its ends."""
    for (ax, ay), (bx, by) in zip(line, line[1:]):
        if ax <= x <= bx:
            return y - (ay + (x - ax) / (bx - ax) * (by - ay))
    return None


def height(x, y, is_top=None):
    ground = 412 + 0.035 * x + 0.03 * y + 0.35 * math.sin(x / 17) * math.cos(y / 23)
    beyond = distance_to(x, y, WALL)
    if beyond is None:
        return ground
    full = 1.8 * math.sin(math.pi * (x - WALL[0][0]) / (WALL[-1][0] - WALL[0][0]))
    is_above = beyond > 0 if is_top is None else is_top
    return ground + (full * math.exp(-max(beyond, 0) / 20) if is_above else 0)


def main():
    chance = random.Random(7)
    rows = []

    def add(x, y, code, is_top=None, z=None):
        z = height(x, y, is_top) if z is None else z
        rows.append(f"{len(rows) + 1},{EAST + x:.2f},{NORTH + y:.2f},{z:.2f},{code}")

    for i, (x, y) in enumerate(KERB):
        add(x, y, "KERB" + (" B" if i == 0 else " E" if i == len(KERB) - 1 else ""))
    for number in range(int(120 / STEP) * int(90 / STEP)):
        x = STEP * (number % int(120 / STEP)) + STEP / 2 + chance.uniform(-2, 2)
        y = STEP * (number // int(120 / STEP)) + STEP / 2 + chance.uniform(-2, 2)
        beyond = distance_to(x, y, WALL)
        near_wall = beyond is not None and abs(beyond) < 1.5
        if is_inside(x, y, L_SHAPE) and not is_inside(x, y, HOUSE, 1) and not near_wall:
            add(x, y, "")
    for i, (x, y) in enumerate(WALL):  # both lines side by side, as they are measured
        mark = " B" if i == 0 else " E" if i == len(WALL) - 1 else ""
        add(x, y - 0.15, "WALLFOOT" + mark, False)
        add(x, y + 0.15, "WALLTOP" + mark, True)
    for x, y in L_SHAPE:
        add(x, y, "FENCE C" if (x, y) == L_SHAPE[-1] else "FENCE")
    for x, y in HOUSE:
        add(x, y, "HOUSE C" if (x, y) == HOUSE[-1] else "HOUSE")
    add(1900, -700, "BENCHMARK", z=418.6)

    folder = pathlib.Path(__file__).resolve().parent.parent / "samples" / "site"
    folder.mkdir(exist_ok=True)
    write = lambda name, lines: (folder / name).write_bytes(("\n".join(lines) + "\n").encode())
    write("points.csv", ["number,east,north,height,code"] + rows)
    levelled = []
    for row in rows:
        number, x, y, z, code = row.split(",")
        is_in_yard = math.hypot(float(x) - EAST - YARD[0], float(y) - NORTH - YARD[1]) <= YARD[2]
        levelled.append(f"{number},{x},{y},{YARD[3] if is_in_yard else float(z):.2f},{code}")
    write("levelled.csv", ["number,east,north,height,code"] + levelled)
    for name, title, ring in (("boundary.txt", "fence", L_SHAPE), ("house.txt", "house", HOUSE)):
        places = [f"{EAST + x:.2f} {NORTH + y:.2f}" for x, y in ring + ring[:1]]
        write(name, [title] + places)
    lines = ["line,east,north,height"]
    for name, offset, is_top in (("wall foot", -0.15, False), ("wall top", 0.15, True)):
        for x, y in WALL:
            z = height(x, y + offset, is_top)
            lines.append(f"{name},{EAST + x:.2f},{NORTH + y + offset:.2f},{z:.2f}")
    write("wall.csv", lines)


main()
