#include "sheet/Clip.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace terravo {
namespace {

// The part of a side inside a box, as parameters along it.
std::optional<std::pair<double, double>> InsidePart(SheetPoint a, SheetPoint b,
                                                    const SheetBox& box) {
    double from = 0;
    double to = 1;
    const auto cut = [&](double direction, double room) { // room left before the edge
        if (direction == 0) {
            return room >= 0;
        }
        const double t = room / direction;
        if (direction < 0) {
            from = std::max(from, t);
        } else {
            to = std::min(to, t);
        }
        return from <= to;
    };
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    if (cut(-dx, a.x - box.left) && cut(dx, box.right - a.x) && cut(-dy, a.y - box.top) &&
        cut(dy, box.bottom - a.y)) {
        return std::pair(from, to);
    }
    return std::nullopt;
}

SheetPoint Between(SheetPoint a, SheetPoint b, double t) {
    return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
}

class LineClipper {
public:
    LineClipper(std::span<const SheetPoint> line, const PlacesOnCurve& curve, const SheetBox& box,
                ClippedLine& inside)
        : line_(line), curve_(curve), box_(box), inside_(inside), firstPart_(inside.parts.size()) {}

    // From a vertex to the next one, behind the last to the first.
    void AddSide(std::size_t i) {
        const SheetPoint a = line_[i];
        const SheetPoint b = i + 1 < line_.size() ? line_[i + 1] : line_.front();
        const auto part = InsidePart(a, b, box_);
        if (!part) {
            goesOn_ = false;
            return;
        }
        const auto [from, to] = *part;
        if (from >= to) { // it touches the box in a point
            goesOn_ = false;
            return;
        }
        if (from > 0 || !goesOn_) {
            inside_.parts.push_back({inside_.points.size(), 0, false});
            Append(from > 0 ? Between(a, b, from) : a, i, from);
        }
        Append(to < 1 ? Between(a, b, to) : b, i, to);
        goesOn_ = to >= 1;
    }

    // The part that ends at the first vertex goes on with the one that begins there.
    void JoinEnds() {
        const std::size_t added = inside_.parts.size() - firstPart_;
        if (added < 2 || !goesOn_ ||
            !(inside_.points[inside_.parts[firstPart_].first] == line_.front())) {
            return;
        }
        ClippedLine::Part& first = inside_.parts[firstPart_];
        ClippedLine::Part& last = inside_.parts.back();
        const std::vector<SheetPoint> head(
            inside_.points.begin() + static_cast<std::ptrdiff_t>(first.first),
            inside_.points.begin() + static_cast<std::ptrdiff_t>(first.first + first.count));
        inside_.points.insert(inside_.points.end(), head.begin() + 1, head.end());
        for (std::size_t i = 1; i < head.size() && IsCurve(); ++i) {
            inside_.places.push_back(inside_.places[first.first + i] + curve_.end);
        }
        last.count += head.size() - 1;
        first = last;
        inside_.parts.pop_back();
    }

private:
    [[nodiscard]] bool IsCurve() const { return !curve_.places.empty(); }

    // A point so far along a side.
    void Append(SheetPoint point, std::size_t side, double part) {
        inside_.points.push_back(point);
        ++inside_.parts.back().count;
        if (IsCurve()) {
            const double end =
                side + 1 < curve_.places.size() ? curve_.places[side + 1] : curve_.end;
            inside_.places.push_back(std::lerp(curve_.places[side], end, part));
        }
    }

    std::span<const SheetPoint> line_;
    const PlacesOnCurve& curve_;
    const SheetBox& box_;
    ClippedLine& inside_;
    std::size_t firstPart_;
    bool goesOn_ = false; // the last side ended inside
};

// Keeps what is on one side of a straight edge.
template <class Depth>
std::vector<SheetPoint> CutOff(const std::vector<SheetPoint>& ring, Depth depth) {
    std::vector<SheetPoint> kept;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const SheetPoint a = ring[i];
        const SheetPoint b = ring[(i + 1) % ring.size()];
        const double da = depth(a);
        const double db = depth(b);
        if (da >= 0) {
            kept.push_back(a);
        }
        if ((da > 0 && db < 0) || (da < 0 && db > 0)) {
            kept.push_back(Between(a, b, da / (da - db)));
        }
    }
    return kept;
}

} // namespace

void ClipLine(std::span<const SheetPoint> line, bool closed, const SheetBox& box,
              ClippedLine& inside, const PlacesOnCurve& curve) {
    if (line.size() < 2) {
        return;
    }
    if (std::all_of(line.begin(), line.end(), [&](SheetPoint p) { return box.Contains(p); })) {
        inside.parts.push_back({inside.points.size(), line.size(), closed});
        inside.points.insert(inside.points.end(), line.begin(), line.end());
        inside.places.insert(inside.places.end(), curve.places.begin(), curve.places.end());
        return;
    }
    LineClipper clipper(line, curve, box, inside);
    for (std::size_t i = 0; i + 1 < line.size(); ++i) {
        clipper.AddSide(i);
    }
    if (closed) {
        clipper.AddSide(line.size() - 1);
        clipper.JoinEnds();
    }
}

std::vector<SheetPoint> ClipRing(std::span<const SheetPoint> ring, const SheetBox& box) {
    std::vector<SheetPoint> kept(ring.begin(), ring.end());
    kept = CutOff(kept, [&](SheetPoint p) { return p.x - box.left; });
    kept = CutOff(kept, [&](SheetPoint p) { return box.right - p.x; });
    kept = CutOff(kept, [&](SheetPoint p) { return p.y - box.top; });
    kept = CutOff(kept, [&](SheetPoint p) { return box.bottom - p.y; });
    return kept;
}

} // namespace terravo
