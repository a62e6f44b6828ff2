#!/usr/bin/python3
"""Measures terravo-batch beside other programs and prints Markdown rows, for bench/peers.sh.

usage: peers.py BIN_FOLDER WORK_FOLDER RUNS [matplotlib] [GMT]

A time is time on the wall from the start of a program to its end; peak memory is that of its
largest process. Both are medians. The programs take turns in a new random order in every round.
"""

import os
import random
import shutil
import statistics
import struct
import subprocess
import sys
import time

SIZE = (1600, 1000)
COUNTS = [1_000, 10_000, 100_000, 1_000_000, 10_000_000]
MOST_POINTS = {"matplotlib": 1_000_000, "GMT": 100_000}
# The part of a peer's time that terravo-batch may take, and at how many points.
AIMS = [("matplotlib", 5, COUNTS[:4]), ("GMT", 30, [100_000])]


def text(value):
    """Three significant digits, without an exponent."""
    if value is None:
        return "–"
    if value >= 100:
        return f"{value:,.0f}".replace(",", " ")
    return f"{value:.3g}"


def count_text(count):
    return f"{count:,}".replace(",", " ")


def picture_size(path):
    with open(path, "rb") as file:
        head = file.read(24)
    return struct.unpack(">II", head[16:24]) if head[:4] == b"\x89PNG" else None


def run(name, command, folder, picture):
    """Milliseconds and peak memory in MiB of one run, which must leave a picture of the size."""
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)
    start = time.perf_counter()
    process = subprocess.Popen(command, cwd=folder, stdout=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    milliseconds = (time.perf_counter() - start) * 1e3
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0 or picture_size(picture) != SIZE:
        sys.exit(f"{name}: no picture of {SIZE[0]} x {SIZE[1]} pixels: {' '.join(command)}")
    return milliseconds, usage.ru_maxrss / 1024


def commands(bin_folder, points, picture, peers):
    here = os.path.dirname(os.path.realpath(__file__))
    ours = [os.path.join(bin_folder, "terravo-batch"), "--quiet", "--labels", "--levels", "10",
            "--size", f"{SIZE[0]}x{SIZE[1]}", "--map", picture, points]
    theirs = {"matplotlib": ["/usr/bin/python3", os.path.join(here, "peers_matplotlib.py")],
              "GMT": ["bash", os.path.join(here, "peers_gmt.sh")]}
    return {"ours": ours} | {peer: theirs[peer] + [points, picture] for peer in peers}


def measure(bin_folder, work, runs, count, peers):
    """Medians of (ms, MiB) by program."""
    points = os.path.join(work, "points.dat")
    folder = os.path.join(work, "run")
    picture = os.path.join(folder, "map.png")
    with open(points, "wb") as file:
        subprocess.run([os.path.join(bin_folder, "make_points"), "random", str(count)],
                       stdout=file, check=True)
    programs = commands(bin_folder, points, picture,
                        [peer for peer in peers if count <= MOST_POINTS[peer]])
    if count == COUNTS[0]:  # the first start of a program also fills the file cache
        for name, command in programs.items():
            run(name, command, folder, picture)
    results = {name: [] for name in programs}
    for _ in range(runs):
        for name in random.sample(list(programs), len(programs)):
            results[name].append(run(name, programs[name], folder, picture))
    os.remove(points)
    return {name: tuple(statistics.median(values) for values in zip(*results[name]))
            for name in results}


def print_rows(measured):
    head = ["random points", "terravo-batch, ms", "MiB"]
    for peer in MOST_POINTS:
        head += [f"{peer}, ms", "MiB", f"{peer} / terravo-batch"]
    print("| " + " | ".join(head) + " |")
    print("|---" + "|---:" * (len(head) - 1) + "|")
    for count, result in measured.items():
        row = [count_text(count), *map(text, result["ours"])]
        for peer in MOST_POINTS:
            if peer in result:
                row += [*map(text, result[peer]), text(result[peer][0] / result["ours"][0])]
            else:
                row += ["–"] * 3
        print("| " + " | ".join(row) + " |")
    print()


def print_aims(measured):
    print("| aim | measured | |")
    print("|---|---|---|")
    for peer, times, counts in AIMS:
        for count in counts:
            result = measured[count]
            if peer in result:
                ratio = result[peer][0] / result["ours"][0]
                verdict = "met" if ratio >= times else "**missed**"
                print(f"| {count_text(count)} points: {peer} takes at least {times} × our time | "
                      f"{text(ratio)} × | {verdict} |")
    print()


def main():
    bin_folder, work, runs = sys.argv[1], sys.argv[2], int(sys.argv[3])
    measured = {}
    for count in COUNTS:
        print(f"== {count} points", file=sys.stderr)
        measured[count] = measure(bin_folder, work, runs, count, sys.argv[4:])
    print_rows(measured)
    print_aims(measured)


main()
