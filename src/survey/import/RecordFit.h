// One record against a plan.
//
// Data: the fields of a line. Method: the number of fields first, then field by field, so that the
// first that does not fit is the one that is told.
#pragma once

#include "survey/import/ImportPlan.h"

#include <string_view>
#include <vector>

namespace terravo {

enum class Misfit : unsigned char { None, FieldCount, NotANumber, NumberForText };

struct RecordFit {
    Misfit misfit = Misfit::None;
    std::size_t field = 0; // that does not fit, from 1; 0 for the number of fields
    bool isVoid = false;   // it has no height
    double x = 0;          // easting, northing, height, where it fits
    double y = 0;
    double z = 0;
};

/// @param fields  of a record, see SplitWithoutComment.
RecordFit FitRecord(const std::vector<std::string_view>& fields, const ImportPlan& plan);

} // namespace terravo
