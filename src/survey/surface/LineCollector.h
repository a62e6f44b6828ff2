// Lines of any source, and what is wrong with them.
//
// Data: lines as they come out of a file or out of codes. Method: what is no line is left out with
// a remark, rings are closed.
#pragma once

#include "survey/surface/SurfacePlan.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace terravo {

struct LineReading {
    std::vector<SurfaceLine> lines;
    std::vector<std::string> remarks; // full sentences
    std::string failure;              // full sentence; nothing is in `lines` then
    bool isStopped = false;
};

/// How lines are closed.
enum class LineClosing {
    AsTheyAre, // a line whose last vertex repeats the first is closed
    Always,    // rings: an open one is closed, with a remark
    InPlan,    // rings of which nobody minds heights and ends
};

class LineCollector {
public:
    /// @param source  of all lines, see SurfaceLine.
    /// @param[out] reading  outlives this.
    LineCollector(std::string source, LineClosing closing, LineReading& reading)
        : source_(std::move(source)), closing_(closing), reading_(reading) {}

    /// Takes a line unless it has fewer than two places, or as a ring fewer than three. Vertices
    /// that repeat the one before are dropped.
    /// @param fileLine  of its first vertex, from 1, or 0.
    /// @return false where the line was left out.
    bool Add(SpaceLine line, std::int64_t fileLine);

    /// Notes a sentence about a line of the source; only the first ones are kept.
    void Remark(const std::string& cause, std::int64_t fileLine);
    /// Tells how many remarks were not kept. Nothing may be noted after this.
    void Finish();

private:
    static constexpr std::size_t kMostRemarks = 50;

    bool LeaveOut(const SpaceLine& line, const char* cause, std::int64_t fileLine);
    bool AddRing(SpaceLine line, std::int64_t fileLine);
    bool Keep(SpaceLine line, std::int64_t fileLine);

    std::string source_;
    LineClosing closing_;
    LineReading& reading_;
    std::size_t remarks_ = 0;
};

} // namespace terravo
