#include "export/vector/MeshFrame.h"

#include "export/vector/VectorNumber.h"
#include "util/AppError.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace terravo {
namespace {

// Copies the corners that triangles have and numbers them anew.
void TakeCorners(const VectorContent& content, MeshFrame& frame) {
    std::vector<Index> numbers(content.points.size() + 1);
    for (const Triangle& triangle : content.triangles) {
        for (const Index point : triangle.vertices) {
            numbers[static_cast<std::size_t>(point)] = 1;
        }
    }
    for (Index i = 1; i <= static_cast<Index>(content.points.size()); ++i) {
        Index& number = numbers[static_cast<std::size_t>(i)];
        if (number != 0) {
            frame.corners.push_back(content.PointAt(i));
            number = static_cast<Index>(frame.corners.size());
        }
    }
    frame.triangles.reserve(content.triangles.size());
    for (const Triangle& triangle : content.triangles) {
        const auto numberOf = [&](std::size_t j) {
            return numbers[static_cast<std::size_t>(triangle.vertices[j])];
        };
        frame.triangles.push_back({numberOf(0), numberOf(1), numberOf(2)});
    }
}

void CheckFinite(const MeshFrame& frame, const std::string& path) {
    for (const SpacePoint& p : frame.corners) {
        if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z)) {
            throw AppError(ErrorNumber::kOverflow, path,
                           path + ": a coordinate is no finite number and cannot be written.");
        }
    }
}

// Largest difference between a coordinate up to this size and its single precision.
double RoundingOf(double farthest) {
    const auto single = static_cast<float>(farthest);
    return (std::nextafter(single, std::numeric_limits<float>::infinity()) -
            static_cast<double>(single)) /
           2;
}

void MoveToOrigin(MeshFrame& frame, double unitsInHalfMillimetre) {
    frame.originX = frame.originY = std::numeric_limits<double>::infinity();
    for (const SpacePoint& p : frame.corners) {
        frame.originX = std::min(frame.originX, std::floor(p.x));
        frame.originY = std::min(frame.originY, std::floor(p.y));
    }
    double farthest = 0;
    for (SpacePoint& p : frame.corners) {
        p.x -= frame.originX;
        p.y -= frame.originY;
        farthest = std::max({farthest, p.x, p.y, std::fabs(p.z)});
    }
    frame.floatsKeepMillimetres = RoundingOf(farthest) <= unitsInHalfMillimetre;
}

const char* NameOf(LengthUnit unit) {
    return unit == LengthUnit::Metre  ? "metre"
           : unit == LengthUnit::Foot ? "foot"
                                      : "US survey foot";
}

} // namespace

std::string MeshFrame::Origin() const {
    std::string text = "easting ";
    VectorNumber::AppendShort(text, originX);
    text += ", northing ";
    VectorNumber::AppendShort(text, originY);
    return text + ", height 0";
}

MeshFrame MakeMeshFrame(const VectorContent& content, const std::string& path) {
    if (content.triangles.empty()) {
        throw AppError(ErrorNumber::kInvalidCall, path,
                       path + ": there are no triangles to be written.");
    }
    MeshFrame frame;
    frame.unit = NameOf(content.unit);
    TakeCorners(content, frame);
    CheckFinite(frame, path);
    MoveToOrigin(frame, 0.5 / MillimetresIn(content.unit));
    return frame;
}

} // namespace terravo
