#include "export/vector/VectorBox.h"

#include "export/vector/VectorLines.h"

namespace terravo {
namespace {

void IncludeContours(VectorBox& box, const VectorContent& content) {
    for (const VectorContour& contour : content.contours) {
        if (content.Shows(contour)) {
            for (const PlanPoint& place : content.VerticesOf(contour)) {
                box.Include({place.x, place.y, content.LevelOf(contour).value});
            }
        }
    }
}

// Holes lie inside.
void IncludeBand(VectorBox& box, const LevelBand& band) {
    for (const BandPolygon& polygon : band.polygons) {
        for (const PlanPoint& place : band.VerticesOf(polygon.outer)) {
            box.Include({place.x, place.y, band.low});
        }
    }
}

void IncludeTriangles(VectorBox& box, const VectorContent& content) {
    for (const Triangle& triangle : content.triangles) {
        for (const Index corner : triangle.vertices) {
            box.Include(content.PointAt(corner));
        }
    }
}

void IncludeLines(VectorBox& box, std::span<const SpaceLine> lines) {
    for (const SpaceLine& line : lines) {
        for (const SpacePoint& vertex : line.vertices) {
            box.Include(vertex);
        }
    }
}

} // namespace

VectorBox BoxOf(const VectorContent& content) {
    VectorBox box;
    const VectorParts& parts = content.parts;
    IncludeContours(box, content);
    if (parts.Has(VectorPart::Bands)) {
        for (const LevelBand& band : content.bands) {
            IncludeBand(box, band);
        }
    }
    if (parts.Has(VectorPart::Triangles)) {
        IncludeTriangles(box, content);
    }
    if (parts.Has(VectorPart::Points)) {
        for (const SpacePoint& point : content.SurveyPoints()) {
            box.Include(point);
        }
    }
    for (const VectorPart part : {VectorPart::Hull, VectorPart::Boundary, VectorPart::Breaklines}) {
        IncludeLines(box, LinesOf(content, part));
    }
    return box;
}

} // namespace terravo
