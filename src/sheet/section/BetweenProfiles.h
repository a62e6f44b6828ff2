// The areas between two profiles along the same line.
//
// Data: two profiles; rings of stations and heights. Method: both are straight between neighbouring
// stations of either, so where they cross within such a stretch, the crossing is the place where
// the linear difference of their heights is zero. Rings end there, and where one of them has a gap.
#pragma once

#include "analysis/Profile.h"

#include <vector>

namespace terravo {

struct SectionPlace {
    double station = 0; // data units
    double z = 0;
};

/// A connected piece. Its ring runs along the first profile and back along the second; where these
/// meet, the place is there once.
struct SectionPiece {
    bool isCut = false; // the first lies above
    std::vector<SectionPlace> ring;
};

std::vector<SectionPiece> PiecesBetween(const Profile& first, const Profile& second);

/// A level line as a profile, wherever another profile is.
Profile LevelProfile(const Profile& like, double height);

} // namespace terravo
