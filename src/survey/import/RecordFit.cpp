#include "survey/import/RecordFit.h"

#include "survey/import/Records.h"

namespace terravo {
namespace {

bool CountFits(std::size_t count, const ImportPlan& plan) {
    return plan.fieldCount == 0 ? count >= plan.columns.size() - (plan.codeTakesRest ? 1 : 0)
                                : count == plan.fieldCount;
}

} // namespace

RecordFit FitRecord(const std::vector<std::string_view>& fields, const ImportPlan& plan) {
    RecordFit fit;
    if (!CountFits(fields.size(), plan)) {
        fit.misfit = Misfit::FieldCount;
        return fit;
    }
    for (std::size_t k = 0; k < fields.size(); ++k) {
        const ColumnRole role = k < plan.columns.size() ? plan.columns[k] : ColumnRole::Ignored;
        if (!IsCoordinate(role) && !plan.othersAreText) {
            continue;
        }
        if (role == ColumnRole::Height && IsVoid(fields[k], plan.decimal, plan.voids)) {
            fit.isVoid = true;
            continue;
        }
        const std::optional<double> value = NumberOf(fields[k], plan.decimal);
        if (value.has_value() != IsCoordinate(role)) {
            fit.misfit = value ? Misfit::NumberForText : Misfit::NotANumber;
            fit.field = k + 1;
            return fit;
        }
        if (value) {
            (role == ColumnRole::Easting    ? fit.x
             : role == ColumnRole::Northing ? fit.y
                                            : fit.z) = *value;
        }
    }
    return fit;
}

} // namespace terravo
