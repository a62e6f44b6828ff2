#!/usr/bin/python3
"""Measures how fast GDAL writes the lines and triangles of a DXF drawing of Terravo.

usage: peers_dxf.py FILE.dxf [RUNS]

The drawing is read into memory first; then its 3DFACEs and polylines are written as DXF by GDAL's
own driver, RUNS times (3), into the folder of the file. GDAL writes no 3DFACE: a face
becomes a hatch, its usual form of a polygon. The figure is the median of processor time.
Needs python3-gdal; bench/VectorBench measures Terravo's writer on the same content.
"""

import os
import statistics
import sys
import time

from osgeo import gdal, ogr


def read(path):
    """Geometries of lines and faces, with the layer of each."""
    source = ogr.Open(path)
    layer = source.GetLayer(0)
    found = []
    for feature in layer:
        geometry = feature.GetGeometryRef()
        if geometry is not None and geometry.GetGeometryName() in ("LINESTRING", "POLYGON"):
            found.append((feature.GetField("Layer"), geometry.Clone()))
    return found


def features(layer, geometries):
    """Features ready to be written."""
    for name, geometry in geometries:
        feature = ogr.Feature(layer.GetLayerDefn())
        feature.SetField("Layer", name)
        feature.SetGeometryDirectly(geometry.Clone())
        yield feature


def main():
    gdal.PushErrorHandler("CPLQuietErrorHandler")  # a remark on the ring of every 3DFACE
    path = sys.argv[1]
    runs = int(sys.argv[2]) if len(sys.argv) > 2 else 3
    geometries = read(path)
    target = path + ".gdal.dxf"
    driver = ogr.GetDriverByName("DXF")
    seconds = []
    for _ in range(runs):
        drawing = driver.CreateDataSource(target)
        layer = drawing.CreateLayer("entities")
        ready = list(features(layer, geometries))
        start = time.process_time()
        for feature in ready:
            layer.CreateFeature(feature)
        layer = drawing = None
        seconds.append(time.process_time() - start)
    size = os.path.getsize(target) / 1e6
    os.remove(target)
    median = statistics.median(seconds)
    print(f"GDAL: {len(geometries)} lines and faces, {size:.1f} MB, {median:.2f} s, "
          f"{size / median:.0f} MB/s")


main()
