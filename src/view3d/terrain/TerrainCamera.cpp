#include "view3d/terrain/TerrainCamera.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace terravo {
namespace {

constexpr double kRadians = std::numbers::pi / 180;
constexpr double kFullTurn = 360;

SpacePoint Sum(const SpacePoint& a, const SpacePoint& b, double factor) {
    return {a.x + factor * b.x, a.y + factor * b.y, a.z + factor * b.z};
}

double Dot(const SpacePoint& a, const SpacePoint& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

struct PictureBox {
    double left = 1e300;
    double top = 1e300;
    double right = -1e300;
    double bottom = -1e300;

    void Include(double x, double y) {
        left = std::min(left, x);
        right = std::max(right, x);
        top = std::min(top, y);
        bottom = std::max(bottom, y);
    }
};

double SlopeOfSight() {
    return std::tan(TerrainCamera::kFieldOfView / 2 * kRadians);
}

} // namespace

double ProposedExaggeration(const TerrainReach& reach) {
    constexpr double kFlat = 0.04; // parts of the plan's width
    constexpr double kTowering = 1.5;
    constexpr double kGood = 0.25;
    const double part = reach.z / std::max(reach.x, reach.y);
    if (!std::isfinite(part) || !(part > 0) || (part >= kFlat && part <= kTowering)) {
        return 1;
    }
    const double wanted = std::clamp(kGood / part, TerrainCamera::kLeastExaggeration,
                                     TerrainCamera::kMostExaggeration);
    const double power = std::pow(10, std::floor(std::log10(wanted)));
    const double steps = wanted / power;
    return power * (steps >= 5 ? 5 : steps >= 2 ? 2 : 1);
}

void TerrainCamera::SetSize(int width, int height) {
    width_ = std::max(width, 1);
    height_ = std::max(height, 1);
}

// A terrain of one place, or without relief, has a size all the same.
void TerrainCamera::SetReach(const TerrainReach& reach) {
    const double least = 1e-9 * std::max({reach.x, reach.y, reach.z, 1e-290});
    reach_ = {std::max(reach.x, least), std::max(reach.y, least), std::max(reach.z, least)};
}

void TerrainCamera::SetDirection(double azimuth, double elevation) {
    azimuth_ = std::fmod(std::fmod(azimuth, kFullTurn) + kFullTurn, kFullTurn);
    elevation_ = std::clamp(elevation, 0.0, 90.0);
}

void TerrainCamera::LookFrom(TerrainSide side) {
    switch (side) {
    case TerrainSide::Top:
        return SetDirection(0, 90);
    case TerrainSide::FromSouth:
        return SetDirection(0, 0);
    case TerrainSide::FromWest:
        return SetDirection(90, 0);
    case TerrainSide::FromNorth:
        return SetDirection(180, 0);
    case TerrainSide::FromEast:
        return SetDirection(270, 0);
    }
}

void TerrainCamera::SetExaggeration(double factor) {
    exaggeration_ = std::clamp(factor, kLeastExaggeration, kMostExaggeration);
}

// For each corner of the box the distance from which it is just within the picture; then what is
// seen is brought into the middle, and once more.
void TerrainCamera::Fit() {
    target_ = {};
    const double margin = Margin();
    FitDistance(margin);
    for (int again = 0; again < 4; ++again) {
        PictureBox box;
        ForEachCorner([&](const SpacePoint& corner) {
            if (const auto at = Project(corner)) {
                box.Include(at->x, at->y);
            }
        });
        Pan(width_ / 2.0 - (box.left + box.right) / 2, height_ / 2.0 - (box.top + box.bottom) / 2);
        const double wide =
            std::max((box.right - box.left) / width_, (box.bottom - box.top) / height_);
        distance_ *= std::isfinite(wide) && wide > 0 ? wide * margin : 1;
    }
}

// Of a picture beside what fits into it. There are values about it, which do not become as small as
// a picture may be.
double TerrainCamera::Margin() const {
    constexpr double kUsual = 1.16;
    constexpr double kPixels = 60;
    constexpr double kMost = 1.4;
    return std::clamp(1 + kPixels / std::min(width_, height_), kUsual, kMost);
}

void TerrainCamera::FitDistance(double margin) {
    const Basis axes = Axes();
    distance_ = 0;
    ForEachCorner([&](const SpacePoint& corner) {
        const SpacePoint at = Stretched(corner);
        const double across =
            std::max(std::fabs(Dot(at, axes.right)) / Aspect(), std::fabs(Dot(at, axes.up)));
        const double nearer = perspective_ ? -Dot(at, axes.away) : 0;
        distance_ = std::max(distance_, across * margin / SlopeOfSight() + nearer);
    });
}

void TerrainCamera::Orbit(double right, double down) {
    constexpr double kDegreesPerPixel = 0.4;
    SetDirection(azimuth_ + right * kDegreesPerPixel, elevation_ + down * kDegreesPerPixel);
}

void TerrainCamera::Pan(double right, double down) {
    const Basis axes = Axes();
    const double unit = 1 / PixelsPerUnit();
    SpacePoint moved = Stretched(target_);
    moved = Sum(moved, axes.right, -right * unit);
    moved = Sum(moved, axes.up, down * unit);
    target_ = {moved.x, moved.y, moved.z / exaggeration_};
}

void TerrainCamera::ZoomAt(const SpacePoint& place, double factor) {
    constexpr double kNearest = 1e-5; // of the terrain's size
    constexpr double kFarthest = 100;
    const double size = std::hypot(reach_.x, reach_.y, reach_.z * exaggeration_);
    const double wanted = std::clamp(distance_ / factor, kNearest * size, kFarthest * size);
    const double part = wanted / distance_;
    target_ = {place.x + (target_.x - place.x) * part, place.y + (target_.y - place.y) * part,
               place.z + (target_.z - place.z) * part};
    distance_ = wanted;
}

std::optional<PicturePlace> TerrainCamera::Project(const SpacePoint& place) const {
    const Basis axes = Axes();
    const SpacePoint from = Sum(Stretched(place), Eye(), -1);
    const double depth = Dot(from, axes.away);
    if (perspective_ && depth <= 0) {
        return std::nullopt;
    }
    const double half = perspective_ ? depth * SlopeOfSight() : HalfHeight();
    const double scale = height_ / (2 * half);
    return PicturePlace{width_ / 2.0 + Dot(from, axes.right) * scale,
                        height_ / 2.0 - Dot(from, axes.up) * scale, depth};
}

SightRay TerrainCamera::RayAt(double x, double y) const {
    const Basis axes = Axes();
    const double scale = 2 * HalfHeight() / height_;
    const double right = (x - width_ / 2.0) * scale;
    const double up = (height_ / 2.0 - y) * scale;
    const SpacePoint across = Sum(Sum({}, axes.right, right), axes.up, up);
    SpacePoint eye = Eye();
    SpacePoint direction = axes.away;
    if (perspective_) {
        direction = Sum(across, axes.away, distance_);
    } else {
        eye = Sum(Sum(eye, across, 1), axes.away, -2 * std::hypot(reach_.x, reach_.y, reach_.z));
    }
    return {{eye.x, eye.y, eye.z / exaggeration_},
            {direction.x, direction.y, direction.z / exaggeration_}};
}

SpacePoint TerrainCamera::PlaceAcross(double x, double y) const {
    const Basis axes = Axes();
    const double scale = 2 * HalfHeight() / height_;
    SpacePoint place = Stretched(target_);
    place = Sum(place, axes.right, (x - width_ / 2.0) * scale);
    place = Sum(place, axes.up, (height_ / 2.0 - y) * scale);
    return {place.x, place.y, place.z / exaggeration_};
}

double TerrainCamera::PixelsPerUnit() const {
    return height_ / (2 * HalfHeight());
}

// The depth goes from the near to the far side of a ball round the terrain; whoever is within it
// sees from a small distance on.
std::array<float, 16> TerrainCamera::Matrix() const {
    constexpr double kNearest = 1e-3;
    const Basis axes = Axes();
    const SpacePoint eye = Eye();
    const double ball = 1.5 * std::hypot(reach_.x, reach_.y, reach_.z * exaggeration_);
    const double middle = -Dot(eye, axes.away);
    const double far = std::max(middle + ball, ball * kNearest);
    const double near = perspective_ ? std::max(middle - ball, far * kNearest) : middle - ball;
    const double half = perspective_ ? SlopeOfSight() : HalfHeight();
    const double perDepth = perspective_ ? (far + near) / (far - near) : 2 / (far - near);
    const double depthShift =
        perspective_ ? -2 * far * near / (far - near) : -(far + near) / (far - near);
    // Rows of the result: across, up, depth, and what all is divided by.
    const std::array<SpacePoint, 4> rows{Sum({}, axes.right, 1 / (half * Aspect())),
                                         Sum({}, axes.up, 1 / half), Sum({}, axes.away, perDepth),
                                         perspective_ ? axes.away : SpacePoint{}};
    const std::array<double, 4> shifts{0, 0, depthShift, perspective_ ? 0.0 : 1.0};
    std::array<float, 16> matrix{};
    for (std::size_t row = 0; row < 4; ++row) {
        matrix[row] = static_cast<float>(rows[row].x);
        matrix[4 + row] = static_cast<float>(rows[row].y);
        matrix[8 + row] = static_cast<float>(rows[row].z * exaggeration_);
        matrix[12 + row] = static_cast<float>(shifts[row] - Dot(rows[row], eye));
    }
    return matrix;
}

TerrainCamera::Basis TerrainCamera::Axes() const {
    const double east = std::sin(azimuth_ * kRadians);
    const double north = std::cos(azimuth_ * kRadians);
    const double down = std::sin(elevation_ * kRadians);
    const double level = std::cos(elevation_ * kRadians);
    return {{north, -east, 0},
            {east * down, north * down, level},
            {east * level, north * level, -down}};
}

SpacePoint TerrainCamera::Stretched(const SpacePoint& place) const {
    return {place.x, place.y, place.z * exaggeration_};
}

// Of the terrain and the plate beneath it.
template <class Use>
void TerrainCamera::ForEachCorner(const Use& use) const {
    const double beyond = kPlateBeyond * std::max(reach_.x, reach_.y);
    for (int corner = 0; corner < 8; ++corner) {
        use(SpacePoint{(corner & 1) != 0 ? reach_.x + beyond : -reach_.x - beyond,
                       (corner & 2) != 0 ? reach_.y + beyond : -reach_.y - beyond,
                       (corner & 4) != 0 ? reach_.z : -reach_.z - beyond / exaggeration_});
    }
}

SpacePoint TerrainCamera::Eye() const {
    return Sum(Stretched(target_), Axes().away, -distance_);
}

double TerrainCamera::HalfHeight() const {
    return distance_ * SlopeOfSight();
}

} // namespace terravo
