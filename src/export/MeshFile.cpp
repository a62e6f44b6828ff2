#include "export/MeshFile.h"

#include "util/NumberText.h"
#include "util/OutputFile.h"

namespace terravo {

void WriteMeshFile(const std::string& path, const PointSet& points, const TriangleList& triangles) {
    OutputFile file(path);
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
    out += "----\r\n";
    appendCount(points.count);
    for (Index i = 1; i <= points.count; ++i) {
        NumberText::AppendPrintedLine(out, points.x[i], points.y[i], points.z[i]);
        file.FlushWhenFull();
    }
    file.Commit();
}

} // namespace terravo
