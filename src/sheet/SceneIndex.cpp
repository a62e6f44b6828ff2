#include "sheet/SceneIndex.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

constexpr std::size_t kRunLength = 64;
constexpr double kFinestTolerance = 0.0005; // millimetres
constexpr double kDetailStep = 4;

IndexPoint ToIndexPoint(SheetPoint p) {
    return {static_cast<float>(p.x), static_cast<float>(p.y)};
}

// Places side by side, in rows, and one for each square of a side.
std::vector<IndexPoint> InRows(std::span<const SheetPoint> places, double side) {
    constexpr double kRowHeight = 4; // millimetres
    std::vector<IndexPoint> sorted(places.size());
    std::transform(places.begin(), places.end(), sorted.begin(), ToIndexPoint);
    const auto row = [](IndexPoint p) { return std::floor(p.y / kRowHeight); };
    std::sort(sorted.begin(), sorted.end(), [&](IndexPoint a, IndexPoint b) {
        return row(a) != row(b) ? row(a) < row(b) : a.x < b.x;
    });
    // Within a row the last places tell whether a square is taken.
    const std::size_t squares = static_cast<std::size_t>(kRowHeight / side) + 2;
    std::vector<double> takenAt(squares, -1e9);
    std::vector<IndexPoint> kept;
    double rowNow = -1e9;
    for (const IndexPoint p : sorted) {
        if (row(p) != rowNow) {
            rowNow = row(p);
            std::fill(takenAt.begin(), takenAt.end(), -1e9);
        }
        double& taken = takenAt[static_cast<std::size_t>((p.y - rowNow * kRowHeight) / side)];
        if (p.x - taken >= side) {
            taken = p.x;
            kept.push_back(p);
        }
    }
    return kept;
}

} // namespace

void IndexBox::Include(IndexPoint p) {
    left = std::min(left, p.x);
    top = std::min(top, p.y);
    right = std::max(right, p.x);
    bottom = std::max(bottom, p.y);
}

void IndexBox::Include(const IndexBox& other) {
    left = std::min(left, other.left);
    top = std::min(top, other.top);
    right = std::max(right, other.right);
    bottom = std::max(bottom, other.bottom);
}

SceneDetail::SceneDetail(const SheetScene& scene, double tolerance)
    : scene_(scene), tolerance_(tolerance) {
    for (std::size_t layer = 0; layer < kSheetLayers; ++layer) {
        AddLines(static_cast<SheetLayer>(layer));
        AddAreas(static_cast<SheetLayer>(layer));
        AddMarks(static_cast<SheetLayer>(layer));
    }
    MakeGroups();
    flat_ = {};
}

void SceneDetail::AddLines(SheetLayer layer) {
    Part& part = lines_[static_cast<std::size_t>(layer)];
    part.first = chains_.size();
    for (std::size_t i = 0; i < scene_.lines.size(); ++i) {
        const SheetLine& line = scene_.lines[i];
        if (line.layer == layer) {
            const bool isDashed = !scene_.inks[line.ink].dashes.empty();
            for (const SheetPiece& piece : scene_.PiecesOf(line)) {
                AddChain(piece, static_cast<std::uint32_t>(i), isDashed);
            }
        }
    }
    part.end = chains_.size();
}

void SceneDetail::AddAreas(SheetLayer layer) {
    Part& part = areas_[static_cast<std::size_t>(layer)];
    part.first = chains_.size();
    for (std::size_t i = 0; i < scene_.areas.size(); ++i) {
        if (scene_.areas[i].layer == layer) {
            for (const SheetPiece& piece : scene_.PiecesOf(scene_.areas[i])) {
                AddChain(piece, static_cast<std::uint32_t>(i), false);
            }
        }
    }
    part.end = chains_.size();
}

std::span<const SheetPoint> SceneDetail::VerticesOf(const SheetPiece& piece) {
    constexpr double kFineEnough = 0.5; // of what the vertices of curves are from these
    if (piece.cubics == 0 || tolerance_ >= kFineEnough * kCurveTolerance) {
        return scene_.VerticesOf(piece);
    }
    flat_.Clear();
    Flatten(scene_.ControlsOf(piece), piece.closed, tolerance_, flat_);
    return flat_.points;
}

// A piece that shrinks to less than the tolerance is not there.
void SceneDetail::AddChain(const SheetPiece& piece, std::uint32_t element, bool whole) {
    const std::span<const SheetPoint> points = VerticesOf(piece);
    if (points.empty()) {
        return;
    }
    Chain chain;
    chain.element = element;
    chain.closed = piece.closed;
    chain.whole = whole;
    const std::size_t first = vertices_.size();
    SheetPoint last = points[0];
    vertices_.push_back(ToIndexPoint(last));
    for (std::size_t i = 1; i < points.size(); ++i) {
        const SheetPoint p = points[i];
        if (std::fabs(p.x - last.x) > tolerance_ || std::fabs(p.y - last.y) > tolerance_) {
            vertices_.push_back(ToIndexPoint(p));
            last = p;
        }
    }
    const SheetPoint end = piece.closed ? points[0] : points.back();
    if (end != last) {
        vertices_.push_back(ToIndexPoint(end));
    }
    IndexBox box;
    for (std::size_t i = first; i < vertices_.size(); ++i) {
        box.Include(vertices_[i]);
    }
    if (std::max(box.right - box.left, box.bottom - box.top) < tolerance_) {
        vertices_.resize(first);
        return;
    }
    chain.box = box;
    AddRuns(chain, first, true);
    chains_.push_back(chain);
}

void SceneDetail::AddRuns(Chain& chain, std::size_t first, bool joined) {
    chain.firstRun = static_cast<std::uint32_t>(runs_.size());
    const std::size_t last = vertices_.size() - (joined ? 1 : 0);
    for (std::size_t i = first; i < std::max(last, first + 1); i += kRunLength) {
        Run run;
        run.first = static_cast<std::uint32_t>(i);
        run.count = static_cast<std::uint32_t>(
            std::min(i + kRunLength + (joined ? 1 : 0), vertices_.size()) - i);
        for (std::size_t k = i; k < i + run.count; ++k) {
            run.box.Include(vertices_[k]);
        }
        runs_.push_back(run);
    }
    chain.runs = static_cast<std::uint32_t>(runs_.size()) - chain.firstRun;
}

// Marks that lie in one pixel are one.
void SceneDetail::AddMarks(SheetLayer layer) {
    constexpr double kTolerancesInPixel = 3;
    Part& part = marks_[static_cast<std::size_t>(layer)];
    part.first = chains_.size();
    for (std::size_t i = 0; i < scene_.marks.size(); ++i) {
        const SheetMarks& marks = scene_.marks[i];
        if (marks.layer == layer && !marks.places.empty()) {
            const std::vector<IndexPoint> places =
                InRows(marks.places, kTolerancesInPixel * tolerance_);
            const std::size_t first = vertices_.size();
            vertices_.insert(vertices_.end(), places.begin(), places.end());
            Chain chain;
            chain.element = static_cast<std::uint32_t>(i);
            AddRuns(chain, first, false);
            const auto half = static_cast<float>(marks.size / 2);
            for (std::size_t r = chain.firstRun; r < runs_.size(); ++r) {
                IndexBox& box = runs_[r].box;
                box = {box.left - half, box.top - half, box.right + half, box.bottom + half};
            }
            chains_.push_back(chain);
        }
    }
    part.end = chains_.size();
}

void SceneDetail::MakeGroups() {
    groups_.resize(chains_.size() / kGroup + 1);
    for (std::size_t c = 0; c < chains_.size(); ++c) {
        groups_[c / kGroup].Include(chains_[c].box);
    }
}

void SceneDetail::CollectRing(const Chain& chain, const IndexBox& visible,
                              std::vector<IndexPoint>& ring) const {
    for (std::size_t r = chain.firstRun; r < chain.firstRun + chain.runs; ++r) {
        const Run& run = runs_[r];
        // The last vertex of a run is the first of the next one. What does not meet a box lies
        // beyond one of its edges, and so does the straight way between its ends.
        const std::size_t count = run.box.Meets(visible) ? std::max(run.count, 2U) - 1 : 1;
        const auto first = vertices_.begin() + run.first;
        ring.insert(ring.end(), first, first + static_cast<std::ptrdiff_t>(count));
    }
}

const SceneDetail& SceneIndex::DetailFor(double finest) {
    std::size_t level = 0;
    double tolerance = kFinestTolerance;
    while (level + 1 < kDetails && tolerance * kDetailStep <= finest) {
        tolerance *= kDetailStep;
        ++level;
    }
    if (!details_[level]) {
        details_[level] = std::make_unique<SceneDetail>(scene_, tolerance);
    }
    return *details_[level];
}

} // namespace terravo
