#include "gis/module/ContentTables.h"

#include "util/AppError.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace terravo {
namespace {

const std::vector<ContentTable>& AllTables() {
    static const std::vector<ContentTable> tables{
        {TableKind::Contours,
         "contours",
         wkbLineString25D,
         {{"elevation", "ELEV", OFTReal},
          {"is_index", "IS_INDEX", OFTInteger, true},
          {"closed", "CLOSED", OFTInteger, true}}},
        {TableKind::Bands,
         "bands",
         wkbMultiPolygon,
         {{"min", "MIN", OFTReal}, {"max", "MAX", OFTReal}}},
        {TableKind::Triangles, "triangles", wkbPolygon25D, {{"triangle", "TRIANGLE", OFTInteger}}},
        {TableKind::Points,
         "points",
         wkbPoint25D,
         {{"number", "NUMBER", OFTString},
          {"code", "CODE", OFTString},
          {"elevation", "ELEV", OFTReal}}},
        {TableKind::Hull, "hull", wkbLineString25D, {{"name", "NAME", OFTString}}},
        {TableKind::Boundary, "boundary", wkbLineString25D, {{"name", "NAME", OFTString}}},
        {TableKind::Breaklines, "breaklines", wkbLineString25D, {{"name", "NAME", OFTString}}},
    };
    return tables;
}

bool IsWanted(TableKind kind, const VectorContent& content) {
    const VectorParts& parts = content.parts;
    switch (kind) {
    case TableKind::Contours:
        return parts.Has(VectorPart::Contours) || parts.Has(VectorPart::IndexContours);
    case TableKind::Bands:
        return parts.Has(VectorPart::Bands);
    case TableKind::Triangles:
        return parts.Has(VectorPart::Triangles);
    case TableKind::Points:
        return parts.Has(VectorPart::Points);
    case TableKind::Hull:
        return parts.Has(VectorPart::Hull);
    case TableKind::Boundary:
        return parts.Has(VectorPart::Boundary) && !content.boundary.empty();
    case TableKind::Breaklines:
        return parts.Has(VectorPart::Breaklines) && !content.breaklines.empty();
    }
    return false;
}

// Fills one table; false as soon as a feature is refused.
class Filler {
public:
    Filler(const VectorContent& content, AttributeTexts& texts, OGRLayer& layer)
        : content_(content), texts_(texts), layer_(layer), feature_(layer.GetLayerDefn()) {}

    bool Contours() {
        return All(content_.contours, [this](const VectorContour& contour) {
            if (!content_.Shows(contour)) {
                return true;
            }
            const VectorLevel& level = content_.LevelOf(contour);
            auto line = std::make_unique<OGRLineString>();
            const std::span<const PlanPoint> vertices = content_.VerticesOf(contour);
            line->setNumPoints(static_cast<int>(vertices.size() + (contour.closed ? 1 : 0)));
            int i = 0;
            for (const PlanPoint& vertex : vertices) {
                line->setPoint(i++, vertex.x, vertex.y, level.value);
            }
            if (contour.closed) {
                line->setPoint(i, vertices.front().x, vertices.front().y, level.value);
            }
            feature_.SetField(0, level.value);
            feature_.SetField(1, level.index ? 1 : 0);
            feature_.SetField(2, contour.closed ? 1 : 0);
            return Put(std::move(line));
        });
    }

    bool Bands() {
        return All(content_.bands, [this](const LevelBand& band) {
            auto ground = std::make_unique<OGRMultiPolygon>();
            for (const BandPolygon& polygon : band.polygons) {
                auto piece = std::make_unique<OGRPolygon>();
                piece->addRingDirectly(RingOf(band.VerticesOf(polygon.outer)));
                for (const RegionRing& hole : polygon.holes) {
                    piece->addRingDirectly(RingOf(band.VerticesOf(hole)));
                }
                ground->addGeometryDirectly(piece.release());
            }
            feature_.SetField(0, band.low);
            feature_.SetField(1, band.high);
            return Put(std::move(ground));
        });
    }

    bool Triangles() {
        int number = 0;
        return All(content_.triangles, [&](const Triangle& triangle) {
            auto ring = std::make_unique<OGRLinearRing>();
            ring->setNumPoints(4);
            for (int corner = 0; corner < 4; ++corner) {
                const SpacePoint& p = content_.PointAt(triangle.Vertex(corner % 3 + 1));
                ring->setPoint(corner, p.x, p.y, p.z);
            }
            auto polygon = std::make_unique<OGRPolygon>();
            polygon->addRingDirectly(ring.release());
            feature_.SetField(0, ++number);
            return Put(std::move(polygon));
        });
    }

    bool Points() {
        Index number = 0;
        return All(content_.SurveyPoints(), [&](const SpacePoint& point) {
            ++number;
            SetText(0, content_.NameOf(number));
            SetText(1, content_.CodeOf(number));
            feature_.SetField(2, point.z);
            return Put(std::make_unique<OGRPoint>(point.x, point.y, point.z));
        });
    }

    bool Lines(const std::vector<SpaceLine>& lines) {
        return All(lines, [this](const SpaceLine& line) {
            auto string = std::make_unique<OGRLineString>();
            for (const SpacePoint& vertex : line.vertices) {
                string->addPoint(vertex.x, vertex.y, vertex.z);
            }
            if (line.closed && !line.vertices.empty()) {
                const SpacePoint& first = line.vertices.front();
                string->addPoint(first.x, first.y, first.z);
            }
            SetText(0, line.name);
            return Put(std::move(string));
        });
    }

private:
    template <class List, class Write>
    static bool All(const List& list, Write write) {
        return std::all_of(list.begin(), list.end(), write);
    }

    static OGRLinearRing* RingOf(std::span<const PlanPoint> vertices) {
        auto ring = std::make_unique<OGRLinearRing>();
        for (const PlanPoint& vertex : vertices) {
            ring->addPoint(vertex.x, vertex.y);
        }
        ring->closeRings();
        return ring.release();
    }

    void SetText(int column, std::string_view text) {
        if (text.empty()) {
            feature_.SetFieldNull(column);
        } else {
            feature_.SetField(column, texts_.Fit(text).c_str());
        }
    }

    bool Put(std::unique_ptr<OGRGeometry> geometry) {
        feature_.SetGeometryDirectly(geometry.release());
        feature_.SetFID(OGRNullFID);
        return layer_.CreateFeature(&feature_) == OGRERR_NONE;
    }

    const VectorContent& content_;
    AttributeTexts& texts_;
    OGRLayer& layer_;
    OGRFeature feature_;
};

bool IsFinite(const PlanPoint& p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}

bool IsFinite(const SpacePoint& p) {
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

template <class Places>
bool AreFinite(const Places& places) {
    return std::all_of(places.begin(), places.end(),
                       [](const auto& place) { return IsFinite(place); });
}

bool AreFinite(const std::vector<SpaceLine>& lines) {
    return std::all_of(lines.begin(), lines.end(),
                       [](const SpaceLine& line) { return AreFinite(line.vertices); });
}

} // namespace

std::vector<ContentTable> TablesOf(const VectorContent& content) {
    std::vector<ContentTable> wanted;
    std::copy_if(AllTables().begin(), AllTables().end(), std::back_inserter(wanted),
                 [&](const ContentTable& table) { return IsWanted(table.kind, content); });
    return wanted;
}

bool FillTable(const ContentTable& table, const VectorContent& content, AttributeTexts& texts,
               OGRLayer& layer) {
    Filler filler(content, texts, layer);
    switch (table.kind) {
    case TableKind::Contours:
        return filler.Contours();
    case TableKind::Bands:
        return filler.Bands();
    case TableKind::Triangles:
        return filler.Triangles();
    case TableKind::Points:
        return filler.Points();
    case TableKind::Hull:
        return filler.Lines(content.hull);
    case TableKind::Boundary:
        return filler.Lines(content.boundary);
    case TableKind::Breaklines:
        return filler.Lines(content.breaklines);
    }
    return false;
}

void RequireFiniteNumbers(const VectorContent& content, const std::string& path) {
    const bool areFinite =
        AreFinite(content.points) && AreFinite(content.contourVertices) &&
        AreFinite(content.hull) && AreFinite(content.boundary) && AreFinite(content.breaklines) &&
        std::all_of(content.levels.begin(), content.levels.end(),
                    [](const VectorLevel& level) { return std::isfinite(level.value); }) &&
        std::all_of(content.bands.begin(), content.bands.end(), [](const LevelBand& band) {
            return std::isfinite(band.low) && std::isfinite(band.high) && AreFinite(band.vertices);
        });
    if (!areFinite) {
        throw AppError(ErrorNumber::kOverflow, path,
                       path + ": a coordinate is no finite number and cannot be written.");
    }
}

} // namespace terravo
