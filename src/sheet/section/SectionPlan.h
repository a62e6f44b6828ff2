// What the sheet of a section is to be, and what it shows.
//
// Data: plain values of whoever asks for the sheet, and profiles that were cut before. Method: what
// is left open (scale, exaggeration, orientation) follows from the profiles when the sheet is made.
#pragma once

#include "analysis/Profile.h"
#include "sheet/SheetPlan.h"
#include "sheet/SheetWords.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace terravo {

struct SectionPlan {
    PaperSize paper = PaperSizes()[0];
    std::optional<bool> landscape;      // none: one section across, many of them upright
    std::optional<double> scale;        // the N of 1:N of lengths; none: the largest usual one
    std::optional<double> exaggeration; // of heights; none: the largest of 1, 2, 5, 10 to 100 that
                                        // has room
    bool grid = true;
    bool ground = true; // a single profile is filled below
    bool areas = true;  // between two profiles, or a profile and its datum
    std::string theme = "brown";
    double textHeight = 1.8; // of a capital letter, millimetres
    std::string title;       // empty: the names of the surveys
};

/// One section. What it refers to outlives it.
struct SectionSource {
    const Profile& first;
    const Profile* second = nullptr; // of another survey along the same line; null: none
    std::string firstName{};         // of the surveys, for the legend
    std::string secondName{};
    std::optional<double> datum{}; // that the first is compared with where there is no second
    std::optional<SectionAreas> areas{};
    std::vector<double> bends{};     // stations at which the line turns
    std::optional<double> station{}; // of the axis that the line crosses in its middle; lengths are
                                     // then written from there
};

/// The stations of the vertices of a line between its ends.
/// @param line  data units.
std::vector<double> BendsOf(std::span<const PlanPoint> line);

} // namespace terravo
