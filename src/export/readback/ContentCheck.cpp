#include "export/readback/ContentCheck.h"

#include "export/vector/VectorNumber.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

namespace terravo {
namespace {

// Angles are turned into degrees and back.
constexpr double kAngleTolerance = 1e-9;
// Heights that are drawn as texts have three decimals at most.
constexpr double kTextTolerance = 0.000501;

constexpr std::array<const char*, kSpaceLineKindCount> kLineNames{"hull", "boundary", "breakline"};
constexpr std::array<const char*, kPointTextCount> kTextNames{"number", "code", "height"};

std::string TextOf(double value) {
    if (!std::isfinite(value)) {
        return "no number";
    }
    std::string text;
    VectorNumber::AppendShort(text, value);
    return text;
}

std::string TextOf(const SpacePoint& p) {
    return TextOf(p.x) + ", " + TextOf(p.y) + ", " + TextOf(p.z);
}

std::string Quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

std::string Instead(const std::string& found, const std::string& expected) {
    return found + " instead of " + expected;
}

std::string Counted(std::string_view what, std::size_t found, std::size_t expected) {
    return "the file has " + std::to_string(found) + " " + std::string(what) + " instead of " +
           std::to_string(expected);
}

const std::vector<SpaceLine>& LinesOf(const VectorContent& content, SpaceLineKind kind) {
    switch (kind) {
    case SpaceLineKind::Hull:
        return content.hull;
    case SpaceLineKind::Boundary:
        return content.boundary;
    case SpaceLineKind::Breakline:
        break;
    }
    return content.breaklines;
}

VectorPart PartOf(SpaceLineKind kind) {
    constexpr std::array<VectorPart, kSpaceLineKindCount> kParts{
        VectorPart::Hull, VectorPart::Boundary, VectorPart::Breaklines};
    return kParts[static_cast<std::size_t>(kind)];
}

VectorPart PartOf(PointText kind) {
    constexpr std::array<VectorPart, kPointTextCount> kParts{VectorPart::Numbers, VectorPart::Codes,
                                                             VectorPart::Heights};
    return kParts[static_cast<std::size_t>(kind)];
}

bool Rounds(std::string_view text, double value) {
    double number = 0;
    const std::from_chars_result end =
        std::from_chars(text.data(), text.data() + text.size(), number);
    return end.ec == std::errc() && end.ptr == text.data() + text.size() &&
           std::fabs(number - value) <= kTextTolerance + std::fabs(value) * 1e-12;
}

} // namespace

ContentCheck::ContentCheck(const VectorContent& content, const VectorParts& parts)
    : content_(content), parts_(parts) {}

void ContentCheck::Differ(std::string sentence) {
    if (!difference_) {
        difference_ = std::move(sentence);
    }
}

bool ContentCheck::IsWritten(const VectorContour& contour) const {
    return parts_.Has(VectorPart::Contours) ||
           (parts_.Has(VectorPart::IndexContours) && content_.LevelOf(contour).index);
}

const VectorContour* ContentCheck::NextContour() {
    while (contours_ < content_.contours.size() && !IsWritten(content_.contours[contours_])) {
        ++contours_;
    }
    return contours_ < content_.contours.size() ? &content_.contours[contours_++] : nullptr;
}

void ContentCheck::Contour(double level, bool closed, std::optional<bool> isIndex,
                           std::span<const SpacePoint> vertices) {
    const VectorContour* expected = NextContour();
    if (expected == nullptr) {
        Differ("there is a contour at " + TextOf(level) + " too many");
        return;
    }
    const VectorLevel& wanted = content_.LevelOf(*expected);
    const std::string name = "contour " + std::to_string(contours_);
    if (level != wanted.value) {
        Differ(name + ": its level is " + Instead(TextOf(level), TextOf(wanted.value)));
    } else if (closed != expected->closed) {
        Differ(name + (closed ? " is closed" : " is open"));
    } else if (isIndex && *isIndex != wanted.index) {
        Differ(name + (*isIndex ? " is" : " is not") + " told to be an index contour");
    }
    const std::span<const PlanPoint> places = content_.VerticesOf(*expected);
    if (vertices.size() != places.size()) {
        Differ(name + ": " + std::to_string(vertices.size()) + " vertices instead of " +
               std::to_string(places.size()));
        return;
    }
    for (std::size_t i = 0; i < places.size(); ++i) {
        const SpacePoint place{places[i].x, places[i].y, wanted.value};
        if (vertices[i] != place) {
            Differ(name + ": vertex " + std::to_string(i + 1) + " lies at " +
                   Instead(TextOf(vertices[i]), TextOf(place)));
            return;
        }
    }
}

void ContentCheck::Label(double level, std::string_view text, PlanPoint middle,
                         double angleDegrees) {
    constexpr double kDegrees = 57.295779513082320877;
    if (labels_ >= content_.labels.size()) {
        Differ("there is a value " + Quoted(text) + " too many");
        return;
    }
    const VectorLabel& expected = content_.labels[labels_++];
    const VectorLevel& wanted = content_.levels[static_cast<std::size_t>(expected.level) - 1];
    const std::string name = "value " + std::to_string(labels_);
    if (text != wanted.text || level != wanted.value) {
        Differ(name + " is " + Instead(Quoted(text), Quoted(wanted.text)));
    } else if (middle != expected.middle) {
        Differ(name + " stands in another place");
    } else if (!(std::fabs(angleDegrees - expected.angle * kDegrees) <= kAngleTolerance)) {
        Differ(name + " is turned by " +
               Instead(TextOf(angleDegrees), TextOf(expected.angle * kDegrees)) + " degrees");
    }
}

void ContentCheck::BandPolygon(double low, double high,
                               std::span<const std::span<const PlanPoint>> rings) {
    while (bands_ < content_.bands.size() && polygons_ == content_.bands[bands_].polygons.size()) {
        ++bands_;
        polygons_ = 0;
    }
    if (bands_ == content_.bands.size()) {
        Differ("there is a polygon from " + TextOf(low) + " to " + TextOf(high) + " too many");
        return;
    }
    const LevelBand& band = content_.bands[bands_];
    const terravo::BandPolygon& polygon = band.polygons[polygons_++];
    const std::string name =
        "polygon " + std::to_string(polygons_) + " of band " + std::to_string(bands_ + 1);
    if (low != band.low || high != band.high) {
        Differ(name + " goes from " +
               Instead(TextOf(low) + " to " + TextOf(high),
                       TextOf(band.low) + " to " + TextOf(band.high)));
    }
    if (rings.size() != polygon.holes.size() + 1) {
        Differ(name + " has another number of rings");
        return;
    }
    for (std::size_t i = 0; i < rings.size(); ++i) {
        const std::span<const PlanPoint> ring =
            band.VerticesOf(i == 0 ? polygon.outer : polygon.holes[i - 1]);
        if (!std::equal(ring.begin(), ring.end(), rings[i].begin(), rings[i].end())) {
            Differ(name + ": ring " + std::to_string(i + 1) + " has other vertices");
        }
    }
}

void ContentCheck::Line(SpaceLineKind kind, bool closed, std::span<const SpacePoint> vertices) {
    const std::vector<SpaceLine>& lines = LinesOf(content_, kind);
    std::size_t& next = lines_[static_cast<std::size_t>(kind)];
    const std::string kindName = kLineNames[static_cast<std::size_t>(kind)];
    if (next >= lines.size()) {
        Differ("there is a " + kindName + " too many");
        return;
    }
    const SpaceLine& expected = lines[next++];
    if (closed != expected.closed ||
        !std::equal(vertices.begin(), vertices.end(), expected.vertices.begin(),
                    expected.vertices.end())) {
        Differ(kindName + " " + std::to_string(next) + " has other vertices");
    }
}

void ContentCheck::Point(SpacePoint place, std::optional<std::string_view> name,
                         std::optional<std::string_view> code) {
    if (points_ >= content_.PointCount()) {
        Differ("there is a point at " + TextOf(place) + " too many");
        return;
    }
    const auto number = static_cast<Index>(++points_);
    const std::string sentence = "point " + std::to_string(number);
    if (place != content_.PointAt(number)) {
        Differ(sentence + " lies at " + Instead(TextOf(place), TextOf(content_.PointAt(number))));
    } else if (name && *name != content_.NameOf(number)) {
        Differ(sentence + " is named " + Instead(Quoted(*name), Quoted(content_.NameOf(number))));
    } else if (code && *code != content_.CodeOf(number)) {
        Differ(sentence + " has the code " +
               Instead(Quoted(*code), Quoted(content_.CodeOf(number))));
    }
}

// Points without a text of the kind have none in the file.
void ContentCheck::PointLabel(PointText kind, std::string_view text) {
    std::size_t& next = pointTexts_[static_cast<std::size_t>(kind)];
    while (next < content_.PointCount() && !HasText(kind, static_cast<Index>(next) + 1)) {
        ++next;
    }
    const std::string name = kTextNames[static_cast<std::size_t>(kind)];
    if (next >= content_.PointCount()) {
        Differ("there is a " + name + " " + Quoted(text) + " too many");
        return;
    }
    const auto point = static_cast<Index>(++next);
    const bool same = kind == PointText::Height   ? Rounds(text, content_.PointAt(point).z)
                      : kind == PointText::Number ? text == content_.NameOf(point)
                                                  : text == content_.CodeOf(point);
    if (!same) {
        Differ("the " + name + " of point " + std::to_string(point) + " reads " + Quoted(text));
    }
}

bool ContentCheck::HasText(PointText kind, Index point) const {
    return kind == PointText::Height ||
           !(kind == PointText::Number ? content_.NameOf(point).empty()
                                       : content_.CodeOf(point).empty());
}

void ContentCheck::Corners(const std::array<SpacePoint, 3>& corners) {
    if (corners_ >= content_.triangles.size()) {
        Differ("there is a triangle too many");
        return;
    }
    const Triangle& triangle = content_.triangles[corners_++];
    for (std::size_t j = 0; j < corners.size(); ++j) {
        const SpacePoint& wanted = content_.PointAt(triangle.vertices[j]);
        if (corners[j] != wanted) {
            Differ("triangle " + std::to_string(corners_) + ": corner " + std::to_string(j + 1) +
                   " lies at " + Instead(TextOf(corners[j]), TextOf(wanted)));
            return;
        }
    }
}

void ContentCheck::CornerNumbers(const std::array<Index, 3>& points) {
    if (corners_ >= content_.triangles.size()) {
        Differ("there is a triangle too many");
    } else if (points != content_.triangles[corners_++].vertices) {
        Differ("triangle " + std::to_string(corners_) + " has other corners");
    }
}

void ContentCheck::Neighbours(const std::array<Index, 3>& neighbours) {
    if (neighbours_ >= content_.triangles.size()) {
        Differ("there are neighbours of a triangle too many");
        return;
    }
    if (neighbours != content_.triangles[neighbours_++].neighbours) {
        Differ("triangle " + std::to_string(neighbours_) + " has other neighbours");
    }
}

void ContentCheck::Stray(std::string_view what) {
    Differ("there is " + std::string(what));
}

void ContentCheck::CheckCount(VectorPart part, std::string_view what, std::size_t found,
                              std::size_t expected) {
    if (found != (parts_.Has(part) ? expected : 0)) {
        Differ(Counted(what, found, parts_.Has(part) ? expected : 0));
    }
}

std::optional<std::string> ContentCheck::Finish() {
    if (difference_) {
        return difference_;
    }
    if (const VectorContour* missing = NextContour()) {
        Differ("the contour at " + TextOf(content_.LevelOf(*missing).value) + " is missing");
    }
    CheckCount(VectorPart::Labels, "values", labels_, content_.labels.size());
    CheckCount(VectorPart::Points, "points", points_, content_.PointCount());
    CheckCount(VectorPart::Triangles, "triangles", corners_, content_.triangles.size());
    std::size_t polygons = 0;
    std::size_t found = 0;
    for (std::size_t i = 0; i < content_.bands.size(); ++i) {
        polygons += content_.bands[i].polygons.size();
        found += i < bands_ ? content_.bands[i].polygons.size() : i == bands_ ? polygons_ : 0;
    }
    CheckCount(VectorPart::Bands, "polygons", found, polygons);
    for (const SpaceLineKind kind :
         {SpaceLineKind::Hull, SpaceLineKind::Boundary, SpaceLineKind::Breakline}) {
        const auto i = static_cast<std::size_t>(kind);
        CheckCount(PartOf(kind), std::string(kLineNames[i]) + " lines", lines_[i],
                   LinesOf(content_, kind).size());
    }
    for (const PointText kind : {PointText::Number, PointText::Code, PointText::Height}) {
        CheckPointTexts(kind);
    }
    if (neighbours_ != 0 && neighbours_ != content_.triangles.size()) {
        Differ(Counted("triangles with neighbours", neighbours_, content_.triangles.size()));
    }
    return difference_;
}

void ContentCheck::CheckPointTexts(PointText kind) {
    if (!parts_.Has(PartOf(kind))) {
        return;
    }
    for (std::size_t i = pointTexts_[static_cast<std::size_t>(kind)]; i < content_.PointCount();
         ++i) {
        if (HasText(kind, static_cast<Index>(i) + 1)) {
            Differ("the " + std::string(kTextNames[static_cast<std::size_t>(kind)]) + " of point " +
                   std::to_string(i + 1) + " is missing");
            return;
        }
    }
}

} // namespace terravo
