#!/usr/bin/python3
"""Frames of a lit surface by VTK, beside those of TerrainBench: the same triangles, the same size.

usage: peers_vtk.py MESH.ply [FRAMES]

The mesh is one that terravo-batch has written (--ply). Needs python3-vtk9 and a display, such as
that of xvfb-run. Prints the milliseconds of reading, of normals, of the first frame and of the
median frame, for a window of 1000 x 700 pixels that is turned by two degrees a frame.
"""
import statistics
import sys
import time

import vtk


def main():
    path, frames = sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 15
    start = time.perf_counter()
    reader = vtk.vtkPLYReader()
    reader.SetFileName(path)
    reader.Update()
    read = time.perf_counter()
    heights = vtk.vtkElevationFilter()
    heights.SetInputConnection(reader.GetOutputPort())
    bounds = reader.GetOutput().GetBounds()
    heights.SetLowPoint(0, 0, bounds[4])
    heights.SetHighPoint(0, 0, bounds[5])
    normals = vtk.vtkPolyDataNormals()
    normals.SetInputConnection(heights.GetOutputPort())
    normals.SplittingOff()
    normals.Update()
    ready = time.perf_counter()
    mapper = vtk.vtkPolyDataMapper()
    mapper.SetInputConnection(normals.GetOutputPort())
    actor = vtk.vtkActor()
    actor.SetMapper(mapper)
    actor.SetScale(1, 1, 50 if bounds[5] - bounds[4] < 0.08 * (bounds[1] - bounds[0]) else 1)
    renderer = vtk.vtkRenderer()
    renderer.AddActor(actor)
    window = vtk.vtkRenderWindow()
    window.SetOffScreenRendering(1)
    window.SetMultiSamples(0)
    window.SetSize(1000, 700)
    window.AddRenderer(renderer)
    camera = renderer.GetActiveCamera()
    renderer.ResetCamera()
    camera.Elevation(-55)
    camera.SetViewUp(0, 0, 1)
    renderer.ResetCamera()
    window.Render()
    window.WaitForCompletion()
    first = time.perf_counter()
    times = []
    for _ in range(frames):
        begin = time.perf_counter()
        camera.Azimuth(2)
        renderer.ResetCameraClippingRange()
        window.Render()
        window.WaitForCompletion()
        times.append(time.perf_counter() - begin)
    print(f"triangles {normals.GetOutput().GetNumberOfPolys()}, read {1e3 * (read - start):.0f} ms, "
          f"normals {1e3 * (ready - read):.0f} ms, first frame {1e3 * (first - ready):.0f} ms, "
          f"frame {1e3 * statistics.median(times):.1f} ms")


if __name__ == "__main__":
    main()
