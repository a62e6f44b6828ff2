#!/usr/bin/env python3
"""Prints the results of the benchmarks as tables in Markdown.

usage: bench/tables.py RESULT_FOLDER SUBJECT...

Every figure is a median over the repetitions of one run of one program. A time is processor time,
but for the parts of a drawing, the exports and the whole road, which are time on the wall.
"""

import json
import os
import re
import statistics
import subprocess
import sys

SIZES = ["1000", "10000", "100000", "1000000"]
SURVEYS = ["random", "grid", "lines"]
LAYOUTS = SURVEYS + ["turned"]
TO_MS = {"ns": 1e-6, "us": 1e-3, "ms": 1.0, "s": 1e3}


def short(value):
    """Three significant digits, without an exponent."""
    if value is None:
        return "–"
    if value >= 100:
        return f"{value:,.0f}".replace(",", " ")
    return f"{value:.3g}" if value >= 1 else f"{value:.2g}"


def print_table(head, rows):
    print("| " + " | ".join(head) + " |")
    print("|---" + "|---:" * (len(head) - 1) + "|")
    for row in rows:
        print("| " + " | ".join(row) + " |")
    print()


def size_head(first, sizes=SIZES):
    return [first] + [f"{int(size):,}".replace(",", " ") for size in sizes]


class Results:
    """Medians of one program, by benchmark name; "ms" is the processor time, or the time of the
    clock that the benchmark asked for; "cpu_ms" is always the processor time."""

    def __init__(self, path):
        self.entries = {}
        with open(path, encoding="utf-8") as file:
            for run in json.load(file)["benchmarks"]:
                if run.get("error_occurred"):
                    sys.exit(f"{run['name']}: {run['error_message']}")
                if run["run_type"] == "aggregate" and run["aggregate_name"] != "median":
                    continue
                name = re.sub(r"/(iterations:\d+|repeats:\d+|manual_time|real_time)", "", run["run_name"])
                own_clock = re.search("/(manual|real)_time", run["run_name"])
                time = run["real_time"] if own_clock else run["cpu_time"]
                run["ms"] = time * TO_MS[run["time_unit"]]
                run["cpu_ms"] = run["cpu_time"] * TO_MS[run["time_unit"]]
                self.entries[name] = run

    def get(self, name, field="ms"):
        return self.entries[name].get(field) if name in self.entries else None

    def over_sizes(self, name, field="ms", sizes=SIZES):
        return [self.get(f"{name}/{size}", field) for size in sizes]


def ratios(above, below):
    return [a / b if a and b else None for a, b in zip(above, below)]


def cells(values):
    return [short(value) for value in values]


def print_read(results):
    print("### Reading, ms\n")
    rows = []
    for form, title in [("mm", "millimetres"), ("full", "every digit")]:
        ours = results.over_sizes(f"read/{form}/ours")
        inspected = results.over_sizes(f"read/{form}/inspected")
        loop = results.over_sizes(f"read/{form}/loop")
        loaded = results.over_sizes(f"read/{form}/load+loop")
        rate = [value / 1e6 for value in results.over_sizes(f"read/{form}/ours", "bytes_per_second")]
        rows += [
            [f"{title}: ReadPoints", *cells(ours)],
            [f"{title}: inspected and read", *cells(inspected)],
            [f"{title}: inspected / ReadPoints", *cells(ratios(inspected, ours))],
            [f"{title}: from_chars loop in memory", *cells(loop)],
            [f"{title}: fread and loop", *cells(loaded)],
            [f"{title}: ReadPoints / loop", *cells(ratios(ours, loop))],
            [f"{title}: ReadPoints / (fread and loop)", *cells(ratios(ours, loaded))],
            [f"{title}: ReadPoints, MB/s", *cells(rate)],
        ]
    labelled = results.over_sizes("read/mm/labelled")
    rows += [
        ["with header, number and code: inspected and read", *cells(labelled)],
        ["the same / ReadPoints without them", *cells(ratios(labelled, results.over_sizes("read/mm/ours")))],
    ]
    print_table(size_head("points"), rows)


def print_triangulate(results):
    print("### Triangulating, ms\n")
    sizes = SIZES + ["10000000"]
    rows = []
    for survey in LAYOUTS:
        def over(who, field="ms"):
            return results.over_sizes(f"triangulate/{survey}/{who}", field, sizes)
        exact = over("exact")
        rows.append([f"{survey}: exact signs", *cells(exact)])
        rows.append([f"{survey}: exact signs, on the wall", *cells(over("exact", "wall"))])
        peer = over("cgal")
        if any(peer):
            rows.append([f"{survey}: CGAL", *cells(peer)])
            rows.append([f"{survey}: exact signs / CGAL", *cells(ratios(exact, peer))])
        if any(over("last")):
            rows.append([f"{survey}: file order, start at the last triangle", *cells(over("last"))])
    print_table(size_head("points", sizes), rows)
    for survey in LAYOUTS:
        for size in SIZES:
            counts = {results.get(f"triangulate/{survey}/{who}/{size}", "triangles")
                      for who in ("exact", "last", "cgal")} - {None}
            if len(counts) > 1:
                print(f"Triangle counts differ: {survey}, {size} points: {sorted(counts)}\n")


def print_cut(results):
    print("### Cutting, ms\n")
    base = results.over_sizes("cut/triangulate")
    rows = [["triangulation", *cells(base)]]
    for levels in ["10", "50"]:
        cut = results.over_sizes(f"cut/{levels}")
        rows.append([f"{levels} levels", *cells(cut)])
        rows.append([f"{levels} levels: pieces", *cells(results.over_sizes(f"cut/{levels}", "pieces"))])
        rows.append([f"{levels} levels / triangulation", *cells(ratios(cut, base))])
        joined = results.over_sizes(f"cut/{levels} joined")
        rows.append([f"{levels} levels, joined", *cells(joined)])
        rows.append([f"{levels} levels, joined / cut", *cells(ratios(joined, cut))])
        rows.append([f"{levels} levels, bands", *cells(results.over_sizes(f"cut/{levels} bands"))])
    print_table(size_head("random points"), rows)


def print_smooth(results):
    print("### Smooth contours, 50 levels, one thread, ms\n")
    rows = [["vertices", *cells(results.over_sizes("smooth/plain", "vertices"))]]
    for what, title in [("plain", "smoothed, plain goal"), ("surface", "smoothed, goal of the surface"),
                        ("flatten", "made straight"), ("examine", "examined")]:
        rows.append([title, *cells(results.over_sizes(f"smooth/{what}"))])
        a_vertex = results.over_sizes(f"smooth/{what}", "a_vertex")
        rows.append([f"{title}: ns a vertex", *cells([value and value * 1e9 for value in a_vertex])])
    print_table(size_head("random points"), rows)


def print_draw(results):
    print("### Drawing lines with the triangulation kept, 1200 x 900 pixels, ms\n")
    rows = []
    for variant, title in [("10", "10 levels"), ("10 labelled", "10 labelled levels"),
                           ("50", "50 levels")]:
        rows.append([f"{title}: whole", *cells(results.over_sizes(f"draw/{variant}"))])
        for field, part in [("frame", "frame"), ("cut", "cut"), ("paint", "strokes"),
                            ("write", "write"), ("segments", "segments")]:
            rows.append([f"{title}: {part}", *cells(results.over_sizes(f"draw/{variant}", field))])
    print_table(size_head("random points"), rows)

    print("### Areas against lines, 10 levels, 1200 x 900 pixels, ms\n")
    lines = results.over_sizes("draw/10")
    areas = results.over_sizes("draw/10 areas")
    triangles = results.over_sizes("draw/10 areas", "triangles")
    fill = results.over_sizes("draw/10 areas", "paint")
    rows = [["lines", *cells(lines)],
            ["areas", *cells(areas)],
            ["areas / lines", *cells(ratios(areas, lines))],
            ["areas: frame", *cells(results.over_sizes("draw/10 areas", "frame"))],
            ["areas: cut and fill", *cells(fill)],
            ["areas: triangles", *cells(triangles)],
            ["areas: cut and fill, ns a triangle",
             *cells([1e6 * ms / count for ms, count in zip(fill, triangles)])]]
    print_table(size_head("random points"), rows)
    print("### A change of one option, 1200 x 900 pixels, ms on the wall\n")
    print_table(size_head("random points"),
                [[f"{mode}: {what}", *cells(results.over_sizes(f"change/{mode}/{what}"))]
                 for mode in ("lines", "areas")
                 for what in ("10 levels", "labels", "triangles", "perimeter", "2 levels",
                              "50 levels", "100 levels")])


def print_export(results):
    print("### Export, 10 levels\n")
    rows = []
    for what, title in [("triangles", "WriteQrzTriangles"), ("levels", "WriteQrzLevels")]:
        def megabytes(field):
            return cells([value / 1e6 for value in results.over_sizes(f"export/{what}", field)])
        rows += [[f"{title}: ms on the wall", *cells(results.over_sizes(f"export/{what}"))],
                 [f"{title}: ms of the processor",
                  *cells(results.over_sizes(f"export/{what}", "cpu_ms"))],
                 [f"{title}: MB read", *megabytes("read")],
                 [f"{title}: MB written", *megabytes("bytes")],
                 [f"{title}: MB/s written", *megabytes("bytes_per_second")]]
    print_table(size_head("random points"), rows)


def print_vector(results):
    print("### Files for CAD and GIS\n")
    rows = []
    for name in sorted({name.rsplit("/", 2)[0] for name in results.entries}):
        for size in ("100000", "1000000"):
            write = results.get(f"{name}/write/{size}")
            check = results.get(f"{name}/check/{size}")
            field = lambda what: results.get(f"{name}/write/{size}", what) / 1e6
            rows.append([f"{name.removeprefix('vector/')}, {int(size):,} points".replace(",", " "),
                         *cells([field("bytes"), write, field("bytes_per_second"), check,
                                 check / write if check else None])])
    print_table(["content", "MB", "writing, ms", "MB/s", "reading back, ms", "reading / writing"],
                rows)


def print_print(results):
    print("### Printing numbers\n")
    rows = []
    for form, title in [("mm", "millimetres"), ("full", "every digit")]:
        for who, what in [("ours", "AppendPrintedLine"), ("snprintf", "snprintf %.15G"),
                          ("to_chars", "to_chars, 15 digits")]:
            name = f"print/{form}/{who}"
            rows.append([f"{title}: {what}", short(results.get(name, "bytes_per_second") / 1e6),
                         short(1e9 / results.get(name, "items_per_second"))])
    print_table(["numbers", "MB/s", "ns a number"], rows)


def print_road(folder):
    print("### Whole road of `terravo-batch`: map, exchange files and vector files, 10 levels\n")
    rows = []
    for survey in SURVEYS:
        for size in SIZES:
            name = os.path.join(folder, f"road-{survey}-{size}")
            with open(name + ".json", encoding="utf-8") as file:
                seconds = json.load(file)["results"][0]["median"]
            memory, stages = [], []
            with open(name + ".runs", encoding="utf-8") as file:
                for line in file:
                    kilobytes, summary = line.split(" ", 1)
                    memory.append(int(kilobytes) / 1024)
                    stages.append(json.loads(summary)["milliseconds"])
            parts = [statistics.median(stage[part] for stage in stages)
                     for part in ["read", "triangulate", "contour", "draw", "write"]]
            rows.append([f"{survey} {int(size):,}".replace(",", " "), short(seconds * 1e3),
                         *cells(parts), short(statistics.median(memory))])
    print_table(["points", "whole, ms", "read", "triangulate", "cut", "draw", "write",
                 "peak memory, MiB"], rows)


def print_view(results):
    print("### Axonometric view, one redraw\n")
    rows = [[title, *cells(results.over_sizes(f"view/{what}"))]
            for what, title in [("triangles", "points and triangles, ms"), ("points", "points, ms")]]
    print_table(size_head("random points"), rows)


def print_sheet(results):
    print("### The sheet in its window, one frame\n")
    rows = []
    for look in ["whole", "x4", "x16", "whole with points", "whole with bands", "x4 with bands"]:
        for step in ["first", "pan", "zoom", "still"]:
            rows.append([f"{look}, {step}, ms",
                         *cells(results.get(f"sheet/{step} {look}/{count}", "cpu_ms")
                                for count in (100000, 1000000))])
    print_table(["sheet of 50 levels", "100 000", "1 000 000"], rows)


def print_machine():
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        models = re.findall(r"^model name\s*:\s*(.*)$", file.read(), re.MULTILINE)
    compiler = subprocess.run(["c++", "--version"], capture_output=True, text=True, check=True)
    print(f"{os.cpu_count()} cores, {models[0] if models else 'unknown processor'}; "
          f"{compiler.stdout.splitlines()[0]}\n")


def print_check(results):
    rows = []
    for layout in ("random", "grid", "lines", "turned"):
        check = results.over_sizes(f"check/{layout}/check")
        triangulate = results.over_sizes(f"check/{layout}/triangulate")
        rows.append([f"{layout}, check"] + cells(check))
        rows.append([f"{layout}, triangulate"] + cells(triangulate))
        rows.append([f"{layout}, ratio"] + cells(ratios(check, triangulate)))
    print_table(size_head("points"), rows)


def print_surface(results):
    print("### Breaklines into a triangulation, ms\n")
    print("Ours with taking over the triangulation and finding the ends; the library without.\n")
    rows = []
    for case, title in [("1000", "1 000 of 30 m in a million points"), ("10000", "10 000 of 30 m"),
                        ("100000", "100 000 of 30 m"), ("1000long", "1 000 of 300 m"),
                        ("towards", "between chains of 16 000 that bulge towards it"),
                        ("away", "the same, away from it")]:
        edges = {results.get(f"surface/{case}/{who}", "edges") for who in ("ours", "cgal")} - {None}
        if len(edges) > 1:
            sys.exit(f"surface/{case}: the numbers of constrained edges differ")
        rows.append([title, *cells([results.get(f"surface/{case}/ours"), results.get(f"surface/{case}/cgal")])])
    print_table(["segments", "Terravo", "CGAL"], rows)


PRINTERS = {"read": print_read, "triangulate": print_triangulate, "check": print_check, "cut": print_cut,
            "draw": print_draw, "export": print_export, "print": print_print,
            "sheet": print_sheet, "smooth": print_smooth, "surface": print_surface, "vector": print_vector, "view": print_view}


def main():
    folder, subjects = sys.argv[1], sys.argv[2:]
    print_machine()
    for subject in subjects:
        if subject == "road":
            print_road(folder)
        else:
            PRINTERS[subject](Results(os.path.join(folder, subject + ".json")))


main()
