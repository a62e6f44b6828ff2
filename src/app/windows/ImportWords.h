// What the import dialog says of a file, in the user's language.
//
// Data: an inspection, a preview. Method: whole sentences come from the catalogue; counts take the
// places %1, %2, %3.
#pragma once

#include "survey/import/ImportPreview.h"
#include "survey/import/Inspection.h"
#include "util/RunState.h"

#include <QString>

/// Why somebody is asked: one sentence.
QString DoubtSentence(const terravo::RunState& state, const terravo::Inspection& inspection);

/// What a column is, such as "easting (x)".
QString RoleWord(const terravo::RunState& state, terravo::ColumnRole role);

/// Columns in one line: "pnezd: point number, northing (y), ...".
QString ColumnsLine(const terravo::RunState& state,
                    const std::vector<terravo::ColumnRole>& columns);

/// What a line of the file is; empty for a point.
QString LineWord(const terravo::RunState& state, terravo::LineKind kind);

/// Why a record does not fit, with its line.
QString MisfitSentence(const terravo::RunState& state, const terravo::PreviewLine& line,
                       const terravo::ImportPlan& plan);

/// How many points there are, and the extents of their coordinates, line by line.
QString PointsText(const terravo::RunState& state, const terravo::ImportPreview& preview);

/// What is left out and why, line by line.
QString LeftOutText(const terravo::RunState& state, const terravo::ImportPreview& preview,
                    const terravo::ImportPlan& plan);
