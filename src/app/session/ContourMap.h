// The contour map: from a survey and the options in force to a finished picture.
//
// Data: the survey, the palette. Method: each drawing draws the plot frame, builds a fresh LevelSet
// and calls the contour routine of the mode. What went wrong is in the report; who asked for the
// drawing tells the user.
#pragma once

#include "contour/ContourRoutine.h"
#include "contour/LevelLines.h"
#include "contour/LevelRule.h"
#include "plot2d/Colour.h"
#include "util/Services.h"

#include <optional>
#include <vector>

namespace terravo {

/// Title of the message about a drawing that failed.
inline constexpr const char* kDrawErrorTitle = "Disegna/Livelli";

enum class MapMode { Lines, Areas };

/// What the user has chosen to see.
struct MapOptions {
    LevelRule levels;
    MapMode mode = MapMode::Lines;
    bool showTriangles = false;
    bool showPerimeter = false;
    bool showLevelValues = false;
};

/// What one drawing did. An error of the levels is in `contours` as well.
struct MapReport {
    std::optional<Message> frameFailure;
    double frameSeconds = 0;
    ContourReport contours;
};

class ContourMap {
public:
    /// @param survey, run  looked at in each drawing; outlive the map.
    /// @param messages     of the sort.
    ContourMap(const Survey& survey, const RunState& run, MessageService& messages,
               const ClockService& clock);

    /// Draws the map on a surface of any kind.
    /// @param sink  takes the pieces of each level in lines mode; may be empty.
    MapReport Draw(DrawSurface& surface, const MapOptions& options,
                   const StopToken& stop = StopToken(), const LevelSink& sink = {}) const;

private:
    void DrawFrame(DrawSurface& surface, MapReport& report) const;
    ContourReport DrawContours(DrawSurface& surface, const MapOptions& options,
                               const StopToken& stop, const LevelSink& sink) const;

    const Survey& survey_;
    const RunState& run_;
    MessageService& messages_;
    const ClockService& clock_;
    std::vector<Colour> palette_;
};

} // namespace terravo
