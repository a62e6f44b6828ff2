// The contour map: from the points and the options in force to a finished picture.
//
// Data: the points with their kept triangulation, the display options and the palette. Method: each
// drawing opens the segment file, draws the plot frame, builds a fresh LevelSet and calls the
// contour routine of the mode; the text of a failure is kept for whoever shows or hides the views.
#pragma once

#include "contour/ContourRoutine.h"
#include "contour/SegmentFile.h"
#include "plot2d/PlotFrame.h"
#include "util/Services.h"

#include <cstdint>
#include <vector>

namespace terravo {

enum class MapMode { Lines, Areas };

/// What the user has chosen to see.
struct MapOptions {
    Index levelCount = 10;
    MapMode mode = MapMode::Lines;
    bool showTriangles = false;
    bool showPerimeter = false;
    bool showLevelValues = false;
};

/// What one drawing did, for summaries.
struct MapReport {
    bool frameDrawn = false;
    std::int64_t segments = 0;
    double frameSeconds = 0;
    ContourReport contours;
};

class ContourMap {
public:
    ContourMap(RunState& state, MessageService& messages, ClockService& clock);

    PointSet points;
    MapOptions options;
    std::function<void(bool)> showResultViews = [](bool) {};
    /// Shows points and triangles in the 3D view under a title; empty where there is none.
    std::function<void(const PointSet&, const TriangleList&, const std::string&)> showTriangles3D;
    ProgressCallback progress;
    std::atomic<bool> stopRequested{false};

    /// To be called after the points have changed.
    void PointsChanged() { triangulation_.Reset(); }

    /// The triangulation of the points, made at first need.
    const KeptTriangulation::Result& Triangulation() {
        return triangulation_.For(points, progress);
    }

    /// Redraws the map on the surface and rewrites the segment file in the work folder.
    /// RunState::lastDrawError is the error text afterwards; the user has seen it.
    MapReport DrawContourMap(DrawSurface& surface);

    /// Triangulates the points, hands them to the 3D view and writes the mesh file to the work
    /// folder.
    /// @return false after a message when there is no triangulation, or without one when it was
    ///         stopped; an old mesh file stays.
    bool TriangulateAndShow3D();

private:
    void DrawFrame(DrawSurface& surface, MapReport& report);
    std::string DrawContours(DrawSurface& surface, SegmentFile& segments, MapReport& report);

    RunState& state_;
    MessageService& messages_;
    ClockService& clock_;
    KeptTriangulation triangulation_;
    std::vector<Colour> palette_;
};

} // namespace terravo
