#include "export/vector/DxfCorners.h"

#include "export/vector/CornerAhead.h"
#include "export/vector/VectorNumber.h"

namespace terravo {

DxfCorners::DxfCorners(const std::vector<SpacePoint>& points) {
    constexpr std::size_t kUsualPoint = 32; // bytes
    text_.reserve(points.size() * kUsualPoint);
    places_.reserve(points.size());
    const auto append = [this](double value) {
        const std::size_t begin = text_.size();
        VectorNumber::AppendReal(text_, value);
        text_ += '\n';
        return static_cast<std::uint16_t>(text_.size() - begin);
    };
    for (const SpacePoint& point : points) {
        Place place;
        place.begin = text_.size();
        place.lengthX = append(point.x);
        place.lengthY = append(point.y);
        place.lengthZ = append(point.z);
        places_.push_back(place);
    }
}

void DxfCorners::AppendCorner(std::string& out, const Place& place, char digit) const {
    const char* from = text_.data() + place.begin;
    const auto append = [&](char tens, std::size_t length) {
        const std::array<char, 4> code{' ', tens, digit, '\n'};
        out.append(code.data(), code.size());
        out.append(from, length);
        from += length;
    };
    append('1', place.lengthX);
    append('2', place.lengthY);
    append('3', place.lengthZ);
}

void DxfCorners::AppendFace(std::string& out, const std::array<Index, 3>& corners) const {
    AppendCorner(out, PlaceOf(corners[0]), '0');
    AppendCorner(out, PlaceOf(corners[1]), '1');
    AppendCorner(out, PlaceOf(corners[2]), '2');
    AppendCorner(out, PlaceOf(corners[2]), '3');
}

void DxfCorners::LookAhead(const std::vector<Triangle>& triangles, std::size_t t) const {
    LookAheadAtCorners(
        triangles, t, [this](Index point) { return &PlaceOf(point); },
        [this](Index point) { return text_.data() + PlaceOf(point).begin; });
}

} // namespace terravo
