// A contour map of a survey as the programs keep it, with fakes around it and a folder of its own.
//
// Data: random points on a smooth terrain; the exchange files in a temporary folder. Method: one
// map a count, kept for the length of the program, so that points are triangulated once.
#pragma once

#include "app/session/ContourMap.h"
#include "support/FakeServices.h"
#include "support/TemporaryFolder.h"

namespace terravo::bench {

struct BenchMap {
    explicit BenchMap(Index count);

    /// Draws the map and rewrites the segment file in the folder, as the window does.
    MapReport Draw(DrawSurface& surface, const MapOptions& options) const;

    test::TemporaryFolder folder;
    RunState runState;
    FakeMessages messages;
    FakeClock clock;
    Survey survey;
    ContourMap map;
};

/// The map of `count` random points, triangulated.
BenchMap& KeptMap(Index count);

} // namespace terravo::bench
