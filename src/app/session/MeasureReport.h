// What was measured, as tables that a user reads, copies and saves.
//
// Data: figures; the words of the run; which surveys, and within what. Method: every cell is a text
// in the user's language and, where it is a number, the number itself, so that what is copied for
// reading is rounded and what is copied for computing is not.
#pragma once

#include "app/session/MeasureDesk.h"
#include "util/RunState.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace terravo {

enum class MeasureKind : unsigned char { Areas, Hypsometry, ToDatum, ToSecond, Place, Cross };

/// What a user wants to know.
struct MeasureQuestion {
    MeasureKind kind = MeasureKind::Areas;
    double datum = 0;                 // of ToDatum
    PlanPoint place;                  // of Place
    CrossSectionPlan plan;            // of Cross
    std::optional<double> crossDatum; // of Cross without a second survey
};

struct MeasureCell {
    std::string text;             // as it is read
    std::optional<double> number; // of which it is the rounded form
};

struct MeasureReport {
    std::string title;
    std::vector<std::pair<std::string, std::string>> about; // of which surveys, within what
    std::vector<std::string> columns;
    std::vector<std::vector<MeasureCell>> rows; // each as long as the columns
    std::string remark;                         // a sentence; may be empty
};

/// A number as it is shown: three decimals, more where it would vanish behind them.
std::string ShownNumber(double value, char separator);

/// Turns figures into tables.
class MeasureReporter {
public:
    /// @param desk  whose surveys and polygon are named.
    MeasureReporter(const RunState& run, const MeasureDesk& desk) : run_(run), desk_(desk) {}

    [[nodiscard]] MeasureReport Areas(const AreaFigures& figures) const;
    [[nodiscard]] MeasureReport Hypsometry(const std::vector<HypsometryRow>& rows) const;
    [[nodiscard]] MeasureReport ToDatum(const VolumeFigures& figures, double datum) const;
    [[nodiscard]] MeasureReport ToSecond(const VolumeFigures& figures) const;
    /// @param found  nothing beside the surface.
    [[nodiscard]] MeasureReport Place(PlanPoint place, const std::optional<PlaceOnSurface>& found,
                                      const NearestSurveyPoint& nearest) const;
    [[nodiscard]] MeasureReport Cross(const CrossSectionFigures& figures,
                                      const MeasureQuestion& question) const;

private:
    [[nodiscard]] MeasureReport Begin(std::string title, bool comparesSurveys, bool isWithin) const;
    void AddColumns(MeasureReport& report) const;
    void AddSlope(MeasureReport& report, Text name, double tangent) const;
    void AddVolume(MeasureReport& report, const VolumeFigures& figures) const;
    [[nodiscard]] std::optional<double> HeightOfSecond(PlanPoint place) const;
    void AddNearest(MeasureReport& report, const NearestSurveyPoint& nearest) const;
    void AddExtent(MeasureReport& report, const std::string& name, const Extent& extent) const;
    [[nodiscard]] MeasureCell Cell(double value) const;
    [[nodiscard]] const std::string& Word(Text text) const { return run_.texts[text]; }
    [[nodiscard]] std::string Shown(double value) const {
        return ShownNumber(value, run_.decimalSeparator);
    }

    const RunState& run_;
    const MeasureDesk& desk_;
};

/// For reading: columns of equal width, numbers at their right.
std::string TextOf(const MeasureReport& report);

/// For computing: the columns' names, then a record a row, with commas between and periods in full
/// numbers; a table of values begins with what it was measured of.
std::string CsvOf(const MeasureReport& report);

} // namespace terravo
