// The coordinates of points as text, for the faces that meet in them.
//
// Data: the digits of all points in one text, and where those of each begin. Method: each point is
// the corner of some six triangles, so printing its numbers once and copying them saves most of the
// printing. In a survey without order the corners lie anywhere among the points, so those of
// triangles to come are asked for ahead.
#pragma once

#include "export/vector/VectorContent.h"

#include <cstdint>

namespace terravo {

class DxfCorners {
public:
    /// Throws AppError for a coordinate that is not finite.
    explicit DxfCorners(const std::vector<SpacePoint>& points);

    /// Appends the four corners of a face, the third twice.
    /// @param corners  1-based.
    void AppendFace(std::string& out, const std::array<Index, 3>& corners) const;

    /// Triangle t, counted from 0, is about to be written, those behind it soon.
    void LookAhead(const std::vector<Triangle>& triangles, std::size_t t) const;

private:
    // x, y and z stand one behind the other.
    struct Place {
        std::uint64_t begin = 0;
        std::uint16_t lengthX = 0; // with the line end
        std::uint16_t lengthY = 0;
        std::uint16_t lengthZ = 0;
    };
    [[nodiscard]] const Place& PlaceOf(Index point) const {
        return places_[static_cast<std::size_t>(point) - 1];
    }
    void AppendCorner(std::string& out, const Place& place, char digit) const;

    std::string text_;
    std::vector<Place> places_;
};

} // namespace terravo
