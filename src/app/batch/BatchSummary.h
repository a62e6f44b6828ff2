// What one run of terravo-batch did, as text or JSON.
#pragma once

#include "app/batch/BatchOptions.h"
#include "app/batch/ExchangeDelivery.h"
#include "app/batch/MeasureRun.h"
#include "app/batch/ProjectInput.h"
#include "app/batch/SmoothReport.h"
#include "app/batch/SurfaceInput.h"
#include "app/batch/TerrainDrawing.h"

#include <string>
#include <vector>

namespace terravo {

/// What is on the sheet of a run.
struct SheetFigures {
    double width = 0; // of the paper, millimetres
    double height = 0;
    double scale = 0; // the N of 1:N
    std::vector<double> levels;
    LabelReport labels;
    std::vector<std::string> remarks; // sentences
};

struct BatchFigures {
    ImportOutcome input;
    std::optional<ProjectFigures> project; // when the input is one
    std::vector<Finding> findings;         // when the check was made
    PointLabels labels;                    // of the points that they name
    Index points = 0;
    Index unusedPoints = 0; // repeats, which no triangle has as a corner
    Index triangles = 0;
    Index hullEdges = 0;
    Arithmetic arithmetic = Arithmetic::Plain; // of the triangulation
    Extent x;
    Extent y;
    Extent z;
    std::optional<SurfaceSummary> surface; // where options shape it
    std::optional<SheetFigures> sheet;
    std::optional<TerrainFigures> terrain;
    std::optional<SmoothFigures> smoothing;
    std::optional<MeasureFigures> measure;
    std::vector<ExchangeFigures> exchange; // one a vector file
    Index levels = 0;
    std::vector<double> levelValues; // without the nudge of the ends
    std::int64_t segments = 0;
    std::vector<std::string> files;    // written, in order
    std::vector<std::string> failures; // sentences about what could not be drawn

    struct {
        double read = 0;
        double triangulate = 0;
        double measure = 0;
        double contour = 0; // cutting the triangles at the levels
        double draw = 0;    // frame, lines, labels and overlays
        double write = 0;   // every file
        double total = 0;
    } milliseconds;
};

/// The summary in the form that the options ask for, ended by a line end.
std::string SummaryText(const BatchOptions& options, const BatchFigures& figures);

} // namespace terravo
