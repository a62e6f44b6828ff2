#include "view3d/terrain/TerrainPlate.h"

#include "sheet/GridLines.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

// 1, 2 or 5 times a power of ten, four to ten times over a length.
double RoundSpacing(double length) {
    const double power = std::pow(10, std::floor(std::log10(length / 4)));
    const double steps = length / 4 / power;
    return power * (steps >= 5 ? 5 : steps >= 2 ? 2 : 1);
}

std::array<float, 3> Rounded(double x, double y, double z) {
    return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
}

// One edge of the plate and the values along it.
struct Edge {
    SpacePoint from;
    SpacePoint to;
    bool isEasting = false; // whose values stand along it
};

double DistanceOf(const TerrainCamera& camera, const Edge& edge) {
    const SpacePoint middle{(edge.from.x + edge.to.x) / 2, (edge.from.y + edge.to.y) / 2,
                            edge.from.z};
    const auto place = camera.Project(middle);
    return place ? -place->y : 0; // the lower on the picture, the nearer
}

class EdgeTexts {
public:
    EdgeTexts(const TerrainCamera& camera, double textHeight)
        : camera_(camera), height_(textHeight) {}

    void Add(const SpacePoint& place, const SpacePoint& inside, const std::string& text,
             std::vector<TerrainText>& texts) const {
        const auto at = camera_.Project(place);
        const auto behind = camera_.Project(inside);
        if (!at || !behind) {
            return;
        }
        const double dx = at->x - behind->x;
        const double dy = at->y - behind->y;
        const double length = std::hypot(dx, dy);
        if (!(length > 0)) {
            return;
        }
        constexpr double kGap = 0.6; // of the text's height
        const TerrainText next{text, at->x + dx / length * kGap * height_,
                               at->y + dy / length * kGap * height_, dx / length, dy / length};
        const bool hasRoom =
            std::none_of(texts.begin(), texts.end(), [&](const TerrainText& other) {
                constexpr double kWide = 0.6; // of a character beside its height
                const auto most = static_cast<double>(std::max(text.size(), other.text.size()));
                return std::fabs(next.x - other.x) < most * kWide * height_ + height_ &&
                       std::fabs(next.y - other.y) < 1.3 * height_;
            });
        if (hasRoom) {
            texts.push_back(next);
        }
    }

private:
    const TerrainCamera& camera_;
    double height_;
};

} // namespace

TerrainPlate MakeTerrainPlate(const TerrainFrame& frame, double exaggeration) {
    constexpr double kBeyond = TerrainCamera::kPlateBeyond;
    TerrainPlate plate;
    const double size = std::max(frame.reach.x, frame.reach.y);
    const double wide = frame.reach.x + kBeyond * size;
    const double high = frame.reach.y + kBeyond * size;
    const double z = -frame.reach.z - kBeyond * size / exaggeration;
    plate.corners = {SpacePoint{-wide, -high, z}, SpacePoint{wide, -high, z},
                     SpacePoint{wide, high, z}, SpacePoint{-wide, high, z}};
    if (!(size > 0)) {
        return plate;
    }
    plate.spacing = RoundSpacing(2 * size);
    plate.eastings = MultiplesWithin(frame.middle.x - wide, frame.middle.x + wide, plate.spacing);
    plate.northings = MultiplesWithin(frame.middle.y - high, frame.middle.y + high, plate.spacing);
    for (const double x : plate.eastings) {
        const double at = x - frame.middle.x;
        plate.grid.push_back({Rounded(at, -high, z), Rounded(at, high, z)});
    }
    for (const double y : plate.northings) {
        const double at = y - frame.middle.y;
        plate.grid.push_back({Rounded(-wide, at, z), Rounded(wide, at, z)});
    }
    for (std::size_t k = 0; k < 4; ++k) {
        const SpacePoint& a = plate.corners[k];
        const SpacePoint& b = plate.corners[(k + 1) % 4];
        plate.grid.push_back({Rounded(a.x, a.y, a.z), Rounded(b.x, b.y, b.z)});
    }
    return plate;
}

std::vector<TerrainText> TextsOfPlate(const TerrainPlate& plate, const TerrainFrame& frame,
                                      const TerrainCamera& camera, double textHeight,
                                      char decimalSeparator) {
    const auto& corners = plate.corners;
    const Edge south{corners[0], corners[1], true};
    const Edge east{corners[1], corners[2], false};
    const Edge north{corners[3], corners[2], true};
    const Edge west{corners[0], corners[3], false};
    const EdgeTexts edges(camera, textHeight);
    std::vector<TerrainText> texts;
    for (const auto& [one, other] : {std::pair(south, north), std::pair(east, west)}) {
        const Edge& front = DistanceOf(camera, one) <= DistanceOf(camera, other) ? one : other;
        for (const double value : front.isEasting ? plate.eastings : plate.northings) {
            const double at = value - (front.isEasting ? frame.middle.x : frame.middle.y);
            const SpacePoint place = front.isEasting ? SpacePoint{at, front.from.y, front.from.z}
                                                     : SpacePoint{front.from.x, at, front.from.z};
            const SpacePoint inside = front.isEasting
                                          ? SpacePoint{at, front.from.y * 0.9, front.from.z}
                                          : SpacePoint{front.from.x * 0.9, at, front.from.z};
            edges.Add(place, inside, GridValueText(value, plate.spacing, decimalSeparator), texts);
        }
    }
    return texts;
}

} // namespace terravo
