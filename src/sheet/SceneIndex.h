// An index of a finished sheet, by which a window finds quickly what it has to draw.
//
// Data: for each level of detail a copy of all lines and rings, without the vertices that are
// nearer to the last one than its tolerance; the copies are in runs of up to 64 vertices, each with
// its box, and runs in groups with theirs. Marks are kept likewise, side by side. Method: levels of
// detail are a factor of four apart and made when they are first asked for. A line is handed out as
// its visible stretches; a ring keeps one vertex of a run that lies beyond one edge of what is
// visible, which fills the same pixels. Of a curve there are straight pieces alone, those of the
// scene or, where these are too coarse, some made for the level: on a screen no eye can tell.
#pragma once

#include "sheet/SheetCurve.h"
#include "sheet/SheetScene.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <span>
#include <vector>

namespace terravo {

/// A vertex of a copy: a tenth of a micrometre on the largest paper.
struct IndexPoint {
    float x = 0;
    float y = 0;
};

struct IndexBox {
    float left = std::numeric_limits<float>::max();
    float top = std::numeric_limits<float>::max();
    float right = std::numeric_limits<float>::lowest();
    float bottom = std::numeric_limits<float>::lowest();

    void Include(IndexPoint p);
    void Include(const IndexBox& other);
    [[nodiscard]] bool Meets(const IndexBox& other) const {
        return left <= other.right && right >= other.left && top <= other.bottom &&
               bottom >= other.top;
    }
};

/// The sheet at one level of detail.
class SceneDetail {
public:
    /// @param tolerance  millimetres; what is smaller is left out.
    SceneDetail(const SheetScene& scene, double tolerance);

    [[nodiscard]] double Tolerance() const { return tolerance_; }

    /// Calls paint(line, vertices, closed) for each visible stretch of the lines of a layer, in the
    /// order of the scene. `closed` is set for a whole ring, whose first vertex is repeated.
    template <class Paint>
    void ForLines(SheetLayer layer, const IndexBox& visible, Paint paint) const {
        const Part& part = lines_[static_cast<std::size_t>(layer)];
        for (std::size_t c = part.first; c < part.end; c = NextChain(c, part.end, visible)) {
            if (chains_[c].box.Meets(visible)) {
                PaintChain(chains_[c], visible, paint);
            }
        }
    }

    /// Calls paint(area, ring) for each visible ring of the areas of a layer, those of one area
    /// behind each other: together they are filled by the even-odd rule. A ring may or may not
    /// repeat its first vertex.
    /// @param ring  scratch space, reused.
    template <class Paint>
    void ForAreas(SheetLayer layer, const IndexBox& visible, std::vector<IndexPoint>& ring,
                  Paint paint) const {
        const Part& part = areas_[static_cast<std::size_t>(layer)];
        for (std::size_t c = part.first; c < part.end; ++c) {
            if (chains_[c].box.Meets(visible)) {
                ring.clear();
                CollectRing(chains_[c], visible, ring);
                paint(scene_.areas[chains_[c].element], std::span<const IndexPoint>(ring));
            }
        }
    }

    /// Calls paint(marks, places) for visible marks of a layer, some at a time.
    template <class Paint>
    void ForMarks(SheetLayer layer, const IndexBox& visible, Paint paint) const {
        const Part& part = marks_[static_cast<std::size_t>(layer)];
        for (std::size_t c = part.first; c < part.end; ++c) {
            const Chain& chain = chains_[c];
            for (std::size_t r = chain.firstRun; r < chain.firstRun + chain.runs; ++r) {
                if (runs_[r].box.Meets(visible)) {
                    paint(scene_.marks[chain.element],
                          std::span(vertices_).subspan(runs_[r].first, runs_[r].count));
                }
            }
        }
    }

private:
    // Up to 64 vertices and the first of the next run, so that runs leave no gap.
    struct Run {
        IndexBox box;
        std::uint32_t first = 0;
        std::uint32_t count = 0;
    };
    // A piece of a line or a ring, or marks.
    struct Chain {
        IndexBox box;
        std::uint32_t firstRun = 0;
        std::uint32_t runs = 0;
        std::uint32_t element = 0; // of its kind in the scene
        bool closed = false;
        bool whole = false; // dashes would move if only a part were drawn
    };
    // Of all chains, those of one layer.
    struct Part {
        std::size_t first = 0;
        std::size_t end = 0;
    };
    static constexpr std::size_t kGroup = 32; // chains

    void AddLines(SheetLayer layer);
    void AddAreas(SheetLayer layer);
    void AddMarks(SheetLayer layer);
    void AddChain(const SheetPiece& piece, std::uint32_t element, bool whole);
    [[nodiscard]] std::span<const SheetPoint> VerticesOf(const SheetPiece& piece);
    void AddRuns(Chain& chain, std::size_t first, bool joined);
    void MakeGroups();
    void CollectRing(const Chain& chain, const IndexBox& visible,
                     std::vector<IndexPoint>& ring) const;

    // Behind a chain, or behind its group where no more of that is visible.
    [[nodiscard]] std::size_t NextChain(std::size_t chain, std::size_t end,
                                        const IndexBox& visible) const {
        std::size_t next = chain + 1;
        while (next < end && next % kGroup == 0 && !groups_[next / kGroup].Meets(visible)) {
            next += kGroup;
        }
        return std::min(next, end);
    }

    template <class Paint>
    void PaintChain(const Chain& chain, const IndexBox& visible, Paint& paint) const {
        const SheetLine& line = scene_.lines[chain.element];
        const std::size_t end = chain.firstRun + chain.runs;
        std::size_t r = chain.firstRun;
        while (r < end) {
            const std::size_t from = r;
            while (r < end && (chain.whole || runs_[r].box.Meets(visible))) {
                ++r;
            }
            if (r > from) {
                const std::size_t first = runs_[from].first;
                const std::size_t behind = runs_[r - 1].first + runs_[r - 1].count;
                paint(line, std::span(vertices_).subspan(first, behind - first),
                      chain.closed && r - from == chain.runs);
            } else {
                ++r;
            }
        }
    }

    const SheetScene& scene_;
    double tolerance_;
    std::vector<IndexPoint> vertices_;
    std::vector<Run> runs_;
    std::vector<Chain> chains_;
    std::vector<IndexBox> groups_; // of kGroup chains each
    std::array<Part, kSheetLayers> lines_;
    std::array<Part, kSheetLayers> areas_;
    std::array<Part, kSheetLayers> marks_;
    FlatCurve flat_; // of the curve at work
};

class SceneIndex {
public:
    /// @param scene  outlives the index, and stays as it is.
    explicit SceneIndex(const SheetScene& scene) : scene_(scene) {}

    /// The coarsest level of detail that leaves out nothing larger than this, made if it is new.
    /// @param finest  millimetres, about a third of a pixel.
    const SceneDetail& DetailFor(double finest);

private:
    static constexpr std::size_t kDetails = 8;

    const SheetScene& scene_;
    std::array<std::unique_ptr<SceneDetail>, kDetails> details_;
};

} // namespace terravo
