#include "export/MeshFile.h"

#include "util/AppError.h"
#include "util/NumberListReader.h"
#include "util/NumberText.h"
#include "util/modUtilita.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace terravo {
namespace {

constexpr const char* kMark = "----"; // between triangles and points
constexpr const char* kSource = "MeshFile";

// A hull link holds three times a triangle number.
constexpr Index kMostTriangles = std::numeric_limits<Index>::max() / 3;
constexpr std::uint64_t kLeastLine = 6; // bytes of three numbers

class MeshReader {
public:
    explicit MeshReader(const std::string& path) : path_(path), reader_(path) {
        if (reader_.HasFailed()) {
            ThrowReadFailure();
        }
    }

    MeshContents Read() {
        MeshContents mesh;
        ReadTriangles(mesh);
        std::string mark;
        if (!reader_.ReadLine(mark)) {
            ThrowReadFailure();
        }
        if (mark != kMark) {
            throw AppError(ErrorNumber::kDeviceIo, kSource,
                           path_ + ": the line between triangles and points is missing.");
        }
        ReadPoints(mesh);
        CheckCorners(mesh);
        return mesh;
    }

private:
    [[noreturn]] void ThrowReadFailure() const {
        throw AppError(ErrorNumber::kDeviceIo, kSource, reader_.Failure().Sentence());
    }

    double ReadNumber() {
        double value = 0;
        if (!reader_.Read(value)) {
            ThrowReadFailure();
        }
        return value;
    }

    Index ReadIndex() {
        const double value = ReadNumber();
        const Index index = modUtilita::RoundHalfEven(value);
        if (index < 0 || index > kMostTriangles) {
            throw AppError(ErrorNumber::kSubscript, kSource,
                           "A number of the triangle file is out of range: " +
                               NumberText::General(value) + ".");
        }
        return index;
    }

    // A count is only believed as far as the file is long.
    [[nodiscard]] std::size_t RoomFor(Index count) const {
        const std::uint64_t left =
            reader_.FileSize() - std::min(reader_.FileSize(), reader_.BytesRead());
        return std::min(static_cast<std::uint64_t>(count), left / kLeastLine);
    }

    void ReadTriangles(MeshContents& mesh) {
        const Index count = ReadIndex();
        mesh.triangles.reserve(RoomFor(count));
        for (Index t = 0; t < count; ++t) {
            std::array<Index, 3> corners{};
            for (Index& corner : corners) {
                corner = ReadIndex();
            }
            mesh.triangles.push_back(corners);
        }
    }

    void ReadPoints(MeshContents& mesh) {
        const Index count = ReadIndex();
        mesh.points.Resize(static_cast<Index>(RoomFor(count)));
        mesh.points.Clear();
        for (Index i = 0; i < count; ++i) {
            SpacePoint point;
            point.x = ReadNumber();
            point.y = ReadNumber();
            point.z = ReadNumber();
            mesh.points.Append(point);
        }
    }

    static void CheckCorners(const MeshContents& mesh) {
        for (const std::array<Index, 3>& corners : mesh.triangles) {
            for (const Index corner : corners) {
                if (corner < 1 || corner > mesh.points.UpperBound()) {
                    throw AppError(ErrorNumber::kSubscript, kSource,
                                   "A triangle has a corner that is no point: " +
                                       std::to_string(corner) + ".");
                }
            }
        }
    }

    const std::string& path_;
    NumberListReader reader_;
};

} // namespace

void WriteMeshFile(const OutputTarget& target, const PointSet& points,
                   const TriangleList& triangles) {
    OutputFile file(target);
    std::string& out = file.Buffer();
    const auto appendCount = [&out](Index count) {
        NumberText::AppendPrinted(out, std::int64_t{count});
        out += "\r\n";
    };
    appendCount(triangles.count);
    for (Index t = 1; t <= triangles.count; ++t) {
        NumberText::AppendPrintedLine(out, std::int64_t{triangles.Vertex(1, t)},
                                      std::int64_t{triangles.Vertex(2, t)},
                                      std::int64_t{triangles.Vertex(3, t)});
        file.FlushWhenFull();
    }
    out += kMark;
    out += "\r\n";
    appendCount(points.count);
    for (Index i = 1; i <= points.count; ++i) {
        NumberText::AppendPrintedLine(out, points.x[i], points.y[i], points.z[i]);
        file.FlushWhenFull();
    }
    file.Commit();
}

MeshContents ReadMeshFile(const std::string& path) {
    return MeshReader(path).Read();
}

} // namespace terravo
