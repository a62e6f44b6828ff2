#include "analysis/FaceMesh.h"

#include "triangulation/constrained/VisibleSurface.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <vector>

namespace terravo {
namespace {

// What two faces agree on of a corner that they share.
using CornerKey = std::uint64_t;

// Numbers of keys, 1 and up in the order in which they came.
class KeyNumbers {
public:
    explicit KeyNumbers(std::size_t expected = 64)
        : slots_(std::bit_ceil(std::max<std::size_t>(64, 2 * expected))) {}

    // @return the number; `isNew` tells whether it came now.
    Index NumberOf(CornerKey key, bool& isNew) {
        if (2 * static_cast<std::size_t>(count_) >= slots_.size()) {
            Grow();
        }
        Slot& slot = Find(key);
        isNew = slot.number == 0;
        if (isNew) {
            slot = {key, ++count_};
        }
        return slot.number;
    }

private:
    struct Slot {
        CornerKey key = 0;
        Index number = 0; // 0: free
    };

    Slot& Find(CornerKey key) {
        constexpr std::uint64_t kGolden = 0x9E3779B97F4A7C15;
        const std::size_t mask = slots_.size() - 1;
        std::size_t i = (key * kGolden >> 20U) & mask;
        while (slots_[i].number != 0 && slots_[i].key != key) {
            i = (i + 1) & mask;
        }
        return slots_[i];
    }

    void Grow() {
        std::vector<Slot> old(2 * slots_.size());
        old.swap(slots_);
        for (const Slot& slot : old) {
            if (slot.number != 0) {
                Find(slot.key) = slot;
            }
        }
    }

    std::vector<Slot> slots_;
    Index count_ = 0;
};

// A side as one of its two triangles counts it, the one with the lower number.
std::uint64_t SideNumber(const TriangleList& triangles, Index triangle, int side) {
    const Index next = triangles.Neighbour(side, triangle);
    int sideThere = 0;
    for (int j = 1; next > 0 && next < triangle && j <= 3; ++j) {
        sideThere = triangles.Neighbour(j, next) == triangle ? j : sideThere;
    }
    return sideThere > 0
               ? 3 * static_cast<std::uint64_t>(next) + static_cast<std::uint64_t>(sideThere - 1)
               : 3 * static_cast<std::uint64_t>(triangle) + static_cast<std::uint64_t>(side - 1);
}

// The corners and triangles of one piece of the overlay.
struct Part {
    KeyNumbers numbers;
    std::vector<CornerKey> keys;
    std::vector<SpacePoint> corners;
    std::vector<std::array<Index, 3>> triangles; // of the part's own numbers
};

class FaceMesher {
public:
    FaceMesher(const MeasuredSurface& first, const MeasuredSurface& second, FaceHeight height)
        : first_(first), second_(second), height_(height),
          parts_(static_cast<std::size_t>(OverlayPieces(first))) {}

    void Take(int piece, const OverlayFace& face) {
        Part& part = parts_[static_cast<std::size_t>(piece)];
        std::array<Index, kMostOverlapCorners> numbers{};
        for (std::size_t k = 0; k < face.count; ++k) {
            const FaceCorner& corner = face.all[k];
            bool isNew = false;
            numbers[k] = part.numbers.NumberOf(KeyOf(face, corner.name), isNew);
            if (isNew) {
                part.keys.push_back(KeyOf(face, corner.name));
                part.corners.push_back({corner.place.x, corner.place.y, HeightOf(corner)});
            }
        }
        for (std::size_t k = 2; k < face.count; ++k) {
            part.triangles.push_back({numbers[0], numbers[k - 1], numbers[k]});
        }
    }

    MeasuredSurface Join() {
        std::size_t count = 0;
        std::size_t corners = 0;
        for (const Part& part : parts_) {
            count += part.triangles.size();
            corners += part.corners.size();
        }
        MeasuredSurface mesh;
        mesh.origin = first_.origin;
        mesh.corners.Reserve(static_cast<Index>(corners));
        mesh.triangles.table = Array1<Triangle>(static_cast<Index>(count));
        KeyNumbers numbers(corners);
        for (const Part& part : parts_) {
            Append(part, numbers, mesh);
        }
        return mesh;
    }

private:
    // Corners of the first surface, of the second, and crossings cannot be taken for each other.
    [[nodiscard]] CornerKey KeyOf(const OverlayFace& face, OverlapCorner name) const {
        constexpr std::uint64_t kSecond = std::uint64_t{1} << 62U;
        constexpr std::uint64_t kCrossing = std::uint64_t{2} << 62U;
        switch (name.kind) {
        case OverlapCorner::Kind::First:
            return static_cast<CornerKey>(first_.triangles.Vertex(name.first + 1, face.first));
        case OverlapCorner::Kind::Second:
            return kSecond |
                   static_cast<CornerKey>(second_.triangles.Vertex(name.second + 1, face.second));
        case OverlapCorner::Kind::Crossing:
            break;
        }
        return kCrossing | SideNumber(first_.triangles, face.first, name.first + 1) << 31U |
               SideNumber(second_.triangles, face.second, name.second + 1);
    }

    [[nodiscard]] double HeightOf(const FaceCorner& corner) const {
        return height_ == FaceHeight::First ? corner.first : 0 - corner.Difference();
    }

    static void Append(const Part& part, KeyNumbers& numbers, MeasuredSurface& mesh) {
        std::vector<Index> joined;
        joined.reserve(part.keys.size());
        for (std::size_t k = 0; k < part.keys.size(); ++k) {
            bool isNew = false;
            joined.push_back(numbers.NumberOf(part.keys[k], isNew));
            if (isNew) {
                mesh.corners.Append(part.corners[k]);
            }
        }
        for (const std::array<Index, 3>& triangle : part.triangles) {
            Triangle& placed = mesh.triangles.table[++mesh.triangles.count];
            for (std::size_t k = 0; k < 3; ++k) {
                placed.vertices[k] = joined[static_cast<std::size_t>(triangle[k]) - 1];
            }
        }
    }

    const MeasuredSurface& first_;
    const MeasuredSurface& second_;
    FaceHeight height_;
    std::vector<Part> parts_;
};

// A side seen from its end with the lower number.
struct SideEnd {
    Index other = 0;
    TriangleEdge edge;
};

// Links triangles that share a side; of three at one side two are linked.
void LinkTriangles(Index corners, TriangleList& triangles) {
    std::vector<std::size_t> begin(static_cast<std::size_t>(corners) + 2);
    const auto forEachSide = [&](const auto& work) {
        for (Index t = 1; t <= triangles.count; ++t) {
            for (int j = 1; j <= 3; ++j) {
                const Index a = triangles.Vertex(j, t);
                const Index b = triangles.Vertex(NextEdge(j), t);
                work(static_cast<std::size_t>(std::min(a, b)), SideEnd{std::max(a, b), {t, j}});
            }
        }
    };
    forEachSide([&](std::size_t low, const SideEnd&) { ++begin[low + 1]; });
    for (std::size_t i = 1; i < begin.size(); ++i) {
        begin[i] += begin[i - 1];
    }
    std::vector<SideEnd> ends(begin.back());
    std::vector<std::size_t> filled(begin);
    forEachSide([&](std::size_t low, const SideEnd& end) {
        const std::span<SideEnd> seen(ends.begin() + static_cast<std::ptrdiff_t>(begin[low]),
                                      ends.begin() + static_cast<std::ptrdiff_t>(filled[low]));
        const auto twin = std::find_if(seen.begin(), seen.end(), [&](const SideEnd& there) {
            return there.other == end.other &&
                   triangles.Neighbour(there.edge.edge, there.edge.triangle) == 0;
        });
        if (twin == seen.end()) {
            ends[filled[low]++] = end;
            return;
        }
        triangles.table[end.edge.triangle].SetNeighbour(end.edge.edge, twin->edge.triangle);
        triangles.table[twin->edge.triangle].SetNeighbour(twin->edge.edge, end.edge.triangle);
    });
}

} // namespace

MeasuredSurface MeshOfFaces(const MeasuredSurface& first, const MeasuredSurface& second,
                            FaceHeight height, const StopToken& stop) {
    FaceMesher mesher(first, second, height);
    const bool isWhole = OverlaySurfaces(
        first, second, [&](int piece, const OverlayFace& face) { mesher.Take(piece, face); }, stop);
    if (!isWhole) {
        return {first.origin, {}, {}};
    }
    MeasuredSurface mesh = mesher.Join();
    LinkTriangles(mesh.corners.UpperBound(), mesh.triangles);
    mesh.triangles = WithRims(mesh.triangles);
    return mesh;
}

} // namespace terravo
