#include "contour/smoothing/SmoothCurve.h"

#include <algorithm>
#include <limits>

namespace terravo::smoothing {
namespace {

constexpr double kLeastForward = 0.2; // cosine between a tangent and a chord
constexpr double kShortOfWall = 0.95; // of the way to a wall
constexpr double kRoomy = 0.6;        // of the wished handle: enough
constexpr double kWorthTurning = 0.02;
constexpr int kTrials = 8; // directions between the chords

// The way along a line to where a value, which is not negative here, has fallen to 0.
double WayToZero(double value, double slope) {
    return slope < 0 ? kShortOfWall * std::max(value, 0.0) / -slope
                     : std::numeric_limits<double>::infinity();
}

// The length of a handle with which a piece has the curvature of an arc.
double WishedHandle(PlanPoint chord, PlanPoint direction) {
    const double length = Length(chord);
    const double cosine = length > 0 ? std::max(0.0, Dot(chord, direction) / length) : 1;
    return 2 * length / (3 * (1 + cosine));
}

} // namespace

void CurveMaker::Append(const CourseView& course, std::vector<PlanPoint>& controls) {
    Begin(course);
    SetTangents();
    for (std::size_t i = 0; i < places_.size(); ++i) {
        if (!IsEnd(i)) {
            MakeRoom(i);
        }
    }
    for (std::size_t piece = 0; piece < PieceCount(); ++piece) {
        AppendPiece(piece, controls);
    }
    if (!closed_) {
        controls.push_back(places_.back());
    }
}

void CurveMaker::AppendStraight(const CourseView& course, std::vector<PlanPoint>& controls) {
    Begin(course);
    for (std::size_t piece = 0; piece < PieceCount(); ++piece) {
        AppendStraightPiece(piece, controls);
    }
    if (!closed_) {
        controls.push_back(places_.back());
    }
}

void CurveMaker::Begin(const CourseView& course) {
    sliders_ = course.sliders;
    closed_ = course.closed;
    const std::size_t n = sliders_.size();
    places_.resize(n);
    chords_.resize(n);
    units_.resize(n);
    tangents_.resize(n);
    for (std::size_t i = 0; i < n; ++i) {
        places_[i] = sliders_[i].At(course.parts[i]);
    }
    for (std::size_t i = 0; i < n; ++i) {
        chords_[i] = places_[After(i)] - places_[i];
        units_[i] = Unit(chords_[i]);
    }
}

void CurveMaker::SetTangents() {
    for (std::size_t i = 0; i < places_.size(); ++i) {
        if (!IsEnd(i)) {
            tangents_[i].in = tangents_[i].out = TangentAt(i);
        }
    }
    for (std::size_t piece = 0; piece < PieceCount(); ++piece) {
        SetEndTangents(piece);
    }
}

// Of the circle through three vertices, or halfway between the chords where that turns off too far.
PlanPoint CurveMaker::TangentAt(std::size_t i) const {
    const std::size_t before = Before(i);
    const PlanPoint circle =
        Unit(Length(chords_[i]) * units_[before] + Length(chords_[before]) * units_[i]);
    const bool isForward =
        Dot(circle, units_[before]) >= kLeastForward && Dot(circle, units_[i]) >= kLeastForward;
    return isForward ? circle : Unit(units_[before] + units_[i]);
}

// The tangent at the other end of the piece, mirrored: a piece of a circle.
PlanPoint CurveMaker::EndTangent(std::size_t end, PlanPoint chord, PlanPoint other) const {
    const PlanPoint mirrored = 2 * Dot(chord, other) * chord - other;
    const PlanPoint edge = sliders_[end].along;
    const bool isInside =
        Cross(edge, mirrored) * Cross(edge, chord) > 0 && Dot(mirrored, chord) > kLeastForward;
    return isInside ? mirrored : chord;
}

void CurveMaker::SetEndTangents(std::size_t piece) {
    const std::size_t next = After(piece);
    const PlanPoint chord = units_[piece];
    const bool isBegin = IsEnd(piece);
    const bool isLast = IsEnd(next);
    if (isBegin) {
        tangents_[piece].out = isLast ? chord : EndTangent(piece, chord, tangents_[next].in);
    }
    if (isLast) {
        tangents_[next].in = isBegin ? chord : EndTangent(next, chord, tangents_[piece].out);
    }
}

// Where the tangent leaves little room for a handle, the one between the chords that leaves most.
void CurveMaker::MakeRoom(std::size_t i) {
    const PlanPoint u = units_[Before(i)];
    const PlanPoint v = units_[i];
    double best = RoomAlong(i, tangents_[i].out);
    if (best >= kRoomy) {
        return;
    }
    for (int k = 1; k < kTrials; ++k) {
        const PlanPoint tried = Unit((kTrials - k) * u + k * v);
        if (Dot(tried, u) < kLeastForward || Dot(tried, v) < kLeastForward) {
            continue;
        }
        const double room = RoomAlong(i, tried);
        if (room > best + kWorthTurning) {
            best = room;
            tangents_[i].in = tangents_[i].out = tried;
        }
    }
}

double CurveMaker::RoomAlong(std::size_t i, PlanPoint direction) const {
    const std::size_t before = Before(i);
    return std::min({1.0, ReachBack(before, -direction) / WishedHandle(chords_[before], direction),
                     ReachOn(i, direction) / WishedHandle(chords_[i], direction)});
}

// Uphill is on the left, so the lower wall of a strip is on the right, and an edge points to the
// left.
double CurveMaker::ReachOn(std::size_t piece, PlanPoint direction) const {
    const Slider& here = sliders_[piece];
    const Slider& far = sliders_[After(piece)];
    const PlanPoint place = places_[piece];
    const PlanPoint lower = here.At(here.from);
    const PlanPoint upper = here.At(here.to);
    const PlanPoint lowerWall = far.At(far.from) - lower;
    const PlanPoint upperWall = far.At(far.to) - upper;
    return std::min({WayToZero(Cross(lowerWall, place - lower), Cross(lowerWall, direction)),
                     WayToZero(-Cross(upperWall, place - upper), -Cross(upperWall, direction)),
                     WayToZero(Cross(far.along, place - far.low), Cross(far.along, direction))});
}

double CurveMaker::ReachBack(std::size_t piece, PlanPoint direction) const {
    const Slider& far = sliders_[piece];
    const Slider& here = sliders_[After(piece)];
    const PlanPoint place = places_[After(piece)];
    const PlanPoint lower = here.At(here.from);
    const PlanPoint upper = here.At(here.to);
    const PlanPoint lowerWall = lower - far.At(far.from);
    const PlanPoint upperWall = upper - far.At(far.to);
    return std::min({WayToZero(Cross(lowerWall, place - lower), Cross(lowerWall, direction)),
                     WayToZero(-Cross(upperWall, place - upper), -Cross(upperWall, direction)),
                     WayToZero(-Cross(far.along, place - far.low), -Cross(far.along, direction))});
}

void CurveMaker::AppendStraightPiece(std::size_t piece, std::vector<PlanPoint>& controls) const {
    const PlanPoint from = places_[piece];
    const PlanPoint third = (1.0 / 3) * chords_[piece];
    controls.insert(controls.end(), {from, from + third, places_[After(piece)] - third});
}

void CurveMaker::AppendPiece(std::size_t piece, std::vector<PlanPoint>& controls) const {
    const std::size_t next = After(piece);
    if (IsFlat(sliders_[piece], sliders_[next])) {
        AppendStraightPiece(piece, controls);
        return;
    }
    const PlanPoint chord = chords_[piece];
    const PlanPoint out = tangents_[piece].out;
    const PlanPoint in = tangents_[next].in;
    double a = std::min(WishedHandle(chord, out), ReachOn(piece, out));
    double b = std::min(WishedHandle(chord, in), ReachBack(piece, -in));
    const double used = Dot(a * out + b * in, chord);
    const double whole = Dot(chord, chord);
    if (used > whole) {
        a *= whole / used;
        b *= whole / used;
    }
    const PlanPoint from = places_[piece];
    const PlanPoint to = places_[next];
    controls.insert(controls.end(), {from, from + a * out, to - b * in});
}

} // namespace terravo::smoothing
