#!/usr/bin/python3
"""Times the filled contour bands of matplotlib on a triangulation of terravo-batch.

usage: peers_bands.py MESH_FILE

MESH_FILE is what `terravo-batch --mesh` writes. Only the cutting into polygons is timed, for 10
levels, medians of 3; nothing is drawn.
"""

import statistics
import sys
import time

import matplotlib.tri as tri
import numpy as np
from matplotlib import _tri

with open(sys.argv[1], encoding="ascii") as file:
    numbers = np.array(file.read().replace("----", "").split(), dtype=float)
triangle_count = int(numbers[0])
triangles = numbers[1:1 + 3 * triangle_count].astype(np.int32).reshape(-1, 3) - 1
rest = numbers[1 + 3 * triangle_count:]
points = rest[1:1 + 3 * int(rest[0])].reshape(-1, 3)
mesh = tri.Triangulation(points[:, 0], points[:, 1], triangles)
heights = np.ascontiguousarray(points[:, 2])
levels = np.linspace(heights.min(), heights.max(), 10)
seconds = []
for _ in range(3):
    cutter = _tri.TriContourGenerator(mesh.get_cpp_triangulation(), heights)
    start = time.perf_counter()
    for low, high in zip(levels, levels[1:]):
        cutter.create_filled_contour(low, high)
    seconds.append(time.perf_counter() - start)
print(f"{len(heights)} points: bands of matplotlib {statistics.median(seconds) * 1e3:.0f} ms")
