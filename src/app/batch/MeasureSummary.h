// What a run has measured, as text or JSON.
//
// Data: the figures. Method: JSON has every digit and one key a figure; the text is for people and
// rounds.
#pragma once

#include "app/batch/MeasureRun.h"

#include <QJsonObject>

#include <string>

namespace terravo {

QJsonObject MeasureToJson(const MeasureFigures& figures);

/// Lines, each ended by a line end.
std::string MeasureText(const MeasureFigures& figures);

/// The profile of a section as a summary tells it.
struct ProfileSummary {
    std::size_t vertices = 0;
    std::size_t onLines = 0;  // vertices on breaklines and rings
    double groundLength = 0;  // in plan, of what has a surface
    Extent heights;           // reversed where there is no surface
    std::vector<Extent> gaps; // stations from and to which there is none
};

ProfileSummary SummaryOf(const Profile& profile);

} // namespace terravo
