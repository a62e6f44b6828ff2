// The vertices of sections as a table.
//
// Data: sections; a file of fields with commas between them, names of the columns on the first
// line, a vertex of a profile a record. Method: the station comes first and the height last, so
// that a reader who knows nothing of the columns between can draw the profile. Every digit is
// written.
#pragma once

#include "app/session/MeasureDesk.h"
#include "util/OutputFile.h"

#include <vector>

namespace terravo {

struct TableSection {
    const SectionFigures* figures = nullptr;
    bool isAcross = false; // its station is one of the axis
};

/// Columns station, x, y, section, axis_station, survey, run, mark, on_line, line, height. Sections
/// count from 1 in their order, surveys are 1 and 2, runs count from 1 in each profile: between two
/// runs there is no surface. Throws AppError.
void WriteSectionTable(OutputFile& out, const std::vector<TableSection>& sections);

} // namespace terravo
