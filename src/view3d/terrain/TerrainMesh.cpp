#include "view3d/terrain/TerrainMesh.h"

#include "util/Parallel.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

struct Normal {
    float x = 0;
    float y = 0;
    float z = 0;

    void Add(const Normal& other) {
        x += other.x;
        y += other.y;
        z += other.z;
    }
};

constexpr std::size_t kPiece = 65536; // that one core takes at a time

// Calls use(0) .. use(count - 1) on all cores.
template <class Use>
void InPieces(std::size_t count, const Use& use) {
    InParallel(static_cast<int>((count + kPiece - 1) / kPiece), [&](int piece) {
        const std::size_t begin = static_cast<std::size_t>(piece) * kPiece;
        for (std::size_t i = begin; i < std::min(begin + kPiece, count); ++i) {
            use(i);
        }
    });
}

// As long as twice the triangle's area; relative to the size of the terrain, so that nothing
// overflows.
Normal NormalOf(const TerrainVertex& a, const TerrainVertex& b, const TerrainVertex& c,
                float scale) {
    const float ux = (b.x - a.x) * scale;
    const float uy = (b.y - a.y) * scale;
    const float uz = (b.z - a.z) * scale;
    const float vx = (c.x - a.x) * scale;
    const float vy = (c.y - a.y) * scale;
    const float vz = (c.z - a.z) * scale;
    return {uy * vz - uz * vy, uz * vx - ux * vz, ux * vy - uy * vx};
}

std::array<std::int8_t, 4> Packed(const Normal& normal) {
    constexpr float kFull = 127;
    const float length = std::sqrt(normal.x * normal.x + normal.y * normal.y + normal.z * normal.z);
    if (!(length > 0)) {
        return {0, 0, 127, 0};
    }
    const float scale = kFull / length;
    const auto pack = [&](float value) {
        const float scaled = value * scale;
        return static_cast<std::int8_t>(scaled + std::copysign(0.5F, scaled));
    };
    return {pack(normal.x), pack(normal.y), pack(normal.z), 0};
}

// A table over the plan with about as many cells as the coarse mesh may have vertices.
class Cells {
public:
    Cells(const TerrainFrame& frame, std::size_t wanted)
        : left_(-frame.reach.x), bottom_(-frame.reach.y) {
        const double cell =
            std::sqrt(4 * frame.reach.x * frame.reach.y / static_cast<double>(wanted));
        perUnit_ = 1 / cell;
        columns_ = CellsAlong(frame.reach.x);
        rows_ = CellsAlong(frame.reach.y);
    }
    [[nodiscard]] std::size_t Count() const { return columns_ * rows_; }
    /// Calls use(cell) for a cell and those about it.
    template <class Use>
    void ForEachAbout(std::size_t cell, const Use& use) const {
        const std::size_t row = cell / columns_;
        const std::size_t column = cell % columns_;
        for (std::size_t y = row > 0 ? row - 1 : 0; y <= std::min(row + 1, rows_ - 1); ++y) {
            for (std::size_t x = column > 0 ? column - 1 : 0;
                 x <= std::min(column + 1, columns_ - 1); ++x) {
                use(y * columns_ + x);
            }
        }
    }
    [[nodiscard]] std::size_t Of(const TerrainVertex& vertex) const {
        return Along(vertex.y - bottom_, rows_) * columns_ + Along(vertex.x - left_, columns_);
    }

private:
    [[nodiscard]] std::size_t CellsAlong(double half) const {
        constexpr double kMost = 1e6; // a strip
        return static_cast<std::size_t>(std::clamp(2 * half * perUnit_, 1.0, kMost)) + 1;
    }
    [[nodiscard]] std::size_t Along(double distance, std::size_t count) const {
        return static_cast<std::size_t>(
            std::clamp(distance * perUnit_, 0.0, static_cast<double>(count - 1)));
    }

    double left_;
    double bottom_;
    double perUnit_ = 1;
    std::size_t columns_ = 1;
    std::size_t rows_ = 1;
};

struct Cell {
    double sum = 0; // of heights
    std::uint32_t count = 0;
    std::uint32_t vertex = 0;
    double about = 0; // mean height of the cell and of those about it
    double standsOut = -1;
};

void AddMeans(const Cells& cells, std::vector<Cell>& table) {
    for (std::size_t i = 0; i < table.size(); ++i) {
        double sum = 0;
        double count = 0;
        cells.ForEachAbout(i, [&](std::size_t near) {
            sum += table[near].sum;
            count += table[near].count;
        });
        table[i].about = count > 0 ? sum / count : 0;
    }
}

} // namespace

TerrainFrame FrameOf(const PointSet& points) {
    if (points.count == 0 || points.extentX.min > points.extentX.max) {
        return {};
    }
    const auto middle = [](const Extent& extent) { return extent.min / 2 + extent.max / 2; };
    const auto half = [](const Extent& extent) { return extent.max / 2 - extent.min / 2; };
    const Extent& x = points.extentX;
    const Extent& y = points.extentY;
    const Extent& z = points.extentZ;
    return {{middle(x), middle(y), middle(z)}, {half(x), half(y), half(z)}, z.min, z.max};
}

TerrainMesh MakeTerrainMesh(const TerrainFrame& frame, const PointSet& points,
                            const TriangleList& triangles) {
    TerrainMesh mesh;
    mesh.vertices.resize(static_cast<std::size_t>(points.count));
    mesh.corners.resize(3 * static_cast<std::size_t>(triangles.count));
    InPieces(mesh.vertices.size(), [&](std::size_t i) {
        const auto point = static_cast<Index>(i) + 1;
        TerrainVertex& vertex = mesh.vertices[i];
        vertex.x = static_cast<float>(points.x[point] - frame.middle.x);
        vertex.y = static_cast<float>(points.y[point] - frame.middle.y);
        vertex.z = static_cast<float>(points.z[point] - frame.middle.z);
    });
    const auto count = static_cast<std::size_t>(triangles.count);
    std::vector<std::vector<Index>> atRim(count / kPiece + 1); // one a piece
    InPieces(count, [&](std::size_t t) {
        const auto triangle = static_cast<Index>(t) + 1;
        bool isAtRim = false;
        for (int j = 1; j <= 3; ++j) {
            mesh.corners[3 * t + static_cast<std::size_t>(j) - 1] =
                static_cast<std::uint32_t>(triangles.Vertex(j, triangle) - 1);
            isAtRim = isAtRim || triangles.Neighbour(j, triangle) <= 0;
        }
        if (isAtRim) {
            atRim[t / kPiece].push_back(triangle);
        }
    });
    for (const std::vector<Index>& piece : atRim) {
        mesh.atRim.insert(mesh.atRim.end(), piece.begin(), piece.end());
    }
    return mesh;
}

void AddNormals(const TerrainFrame& frame, TerrainMesh& mesh) {
    const double size = std::max({frame.reach.x, frame.reach.y, frame.reach.z});
    const auto scale = static_cast<float>(size > 0 ? 1 / size : 1);
    constexpr std::size_t kAhead = 60; // corners
    std::vector<Normal> normals(mesh.vertices.size());
    for (std::size_t i = 0; i < mesh.corners.size(); i += 3) {
        // Points come in any order: most of the time would go into waiting for them.
        const std::size_t ahead = std::min(i + kAhead, mesh.corners.size() - 3);
        for (std::size_t k = ahead; k < ahead + 3; ++k) {
            __builtin_prefetch(&mesh.vertices[mesh.corners[k]]);
            __builtin_prefetch(&normals[mesh.corners[k]], 1);
        }
        const std::uint32_t a = mesh.corners[i];
        const std::uint32_t b = mesh.corners[i + 1];
        const std::uint32_t c = mesh.corners[i + 2];
        const Normal normal = NormalOf(mesh.vertices[a], mesh.vertices[b], mesh.vertices[c], scale);
        normals[a].Add(normal);
        normals[b].Add(normal);
        normals[c].Add(normal);
    }
    InPieces(normals.size(), [&](std::size_t i) { mesh.vertices[i].normal = Packed(normals[i]); });
}

std::vector<std::uint32_t> CoarseCorners(const TerrainFrame& frame, const TerrainMesh& mesh) {
    const Cells cells(frame, kTrianglesInMotion / 2);
    std::vector<Cell> table(cells.Count());
    std::vector<std::uint32_t> cellOf(mesh.vertices.size());
    for (std::size_t i = 0; i < mesh.vertices.size(); ++i) {
        cellOf[i] = static_cast<std::uint32_t>(cells.Of(mesh.vertices[i]));
        Cell& cell = table[cellOf[i]];
        cell.sum += mesh.vertices[i].z;
        ++cell.count;
    }
    AddMeans(cells, table);
    for (std::size_t i = 0; i < mesh.vertices.size(); ++i) {
        Cell& cell = table[cellOf[i]];
        const double standsOut = std::fabs(mesh.vertices[i].z - cell.about);
        if (standsOut > cell.standsOut) {
            cell.standsOut = standsOut;
            cell.vertex = static_cast<std::uint32_t>(i);
        }
    }
    std::vector<std::uint32_t> corners;
    for (std::size_t i = 0; i < mesh.corners.size(); i += 3) {
        const std::uint32_t a = cellOf[mesh.corners[i]];
        const std::uint32_t b = cellOf[mesh.corners[i + 1]];
        const std::uint32_t c = cellOf[mesh.corners[i + 2]];
        if (a != b && b != c && c != a) {
            corners.insert(corners.end(), {table[a].vertex, table[b].vertex, table[c].vertex});
        }
    }
    return corners;
}

std::vector<std::uint32_t> SidesOf(const TriangleList& triangles) {
    std::vector<std::uint32_t> sides;
    sides.reserve(3 * static_cast<std::size_t>(triangles.count) + 64);
    for (Index t = 1; t <= triangles.count; ++t) {
        for (int j = 1; j <= 3; ++j) {
            const Index next = triangles.Neighbour(j, t);
            if (next < t) { // the rim, or the neighbour has not had it
                sides.push_back(static_cast<std::uint32_t>(triangles.Vertex(j, t) - 1));
                sides.push_back(static_cast<std::uint32_t>(triangles.Vertex(NextEdge(j), t) - 1));
            }
        }
    }
    return sides;
}

} // namespace terravo
