#!/usr/bin/python3
"""Draws a contour map of a point file with matplotlib, for bench/peers.sh.

usage: peers_matplotlib.py POINT_FILE MAP.png

The same picture as terravo-batch draws it: 1600 x 1000 pixels, the lines of 10 levels from the
lowest to the highest point with their values, axes and a title.
"""

import sys

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt
import numpy as np

x, y, z = np.loadtxt(sys.argv[1], delimiter=",", unpack=True)
figure, axes = plt.subplots(figsize=(16, 10), dpi=100)
lines = axes.tricontour(x, y, z, levels=np.linspace(z.min(), z.max(), 10))
axes.clabel(lines)
axes.set_title("Contour map")
axes.set_xlabel("x")
axes.set_ylabel("y")
figure.savefig(sys.argv[2])
