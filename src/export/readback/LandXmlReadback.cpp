#include "export/readback/LandXmlReadback.h"

#include "export/readback/ContentCheck.h"
#include "export/readback/LandXmlElements.h"
#include "export/readback/LandXmlItems.h"
#include "export/readback/NumberFields.h"
#include "export/readback/XmlReader.h"
#include "export/vector/CleanText.h"
#include "export/vector/LandXmlNames.h"

#include <array>
#include <bitset>
#include <cmath>
#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace terravo {
namespace {

using LandXmlElements::Element;
using LandXmlElements::Place;

constexpr const char* kNoPlace = "a point without three numbers";

// What the faces make of the surface, to be compared with what it says of itself.
struct Measure {
    double planArea = 0;
    double area = 0;
    double highest = -HUGE_VAL;
    double lowest = HUGE_VAL;

    void Include(const std::array<SpacePoint, 3>& corners) {
        const auto& [a, b, c] = corners;
        const double x = (b.y - a.y) * (c.z - a.z) - (c.y - a.y) * (b.z - a.z);
        const double y = (b.z - a.z) * (c.x - a.x) - (c.z - a.z) * (b.x - a.x);
        const double z = (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
        planArea += z / 2;
        area += std::sqrt(x * x + y * y + z * z) / 2;
        for (const SpacePoint& p : corners) {
            highest = std::fmax(highest, p.z);
            lowest = std::fmin(lowest, p.z);
        }
    }
};

// Areas are sums, whose last digits depend on how they are added up.
bool IsNearly(double a, double b) {
    return std::fabs(a - b) <= 1e-9 * std::fabs(b) || !std::isfinite(b);
}

class Reader : public XmlSink {
public:
    explicit Reader(const VectorContent& content)
        : content_(content), check_(content, PartsToCheck(content)), names_(content) {}

    bool Start(std::string_view name, const XmlAttributes& attributes,
               std::string_view before) override {
        const Place* place = LandXmlElements::FindPlace(name, open_.back()->element);
        if (place == nullptr || !NumberFields::WithoutBlanks(before).empty()) {
            check_.Stray("an element or a text where none is expected, at \"" + std::string(name) +
                         "\"");
            return false;
        }
        if (!place->isMany && Has(place->element)) {
            check_.Stray("a second \"" + std::string(name) + "\"");
            return false;
        }
        seen_.set(static_cast<std::size_t>(place->element));
        open_.push_back(place);
        Enter(place->element, attributes);
        return !check_.HasDifference();
    }

    bool End(std::string_view /*name*/, std::string_view text) override {
        const Place& place = *open_.back();
        if (place.hasText) {
            Leave(place.element, text);
        } else if (!NumberFields::WithoutBlanks(text).empty()) {
            check_.Stray("a text in an element \"" + std::string(place.name) + "\"");
        } else if (place.element == Element::Definition) {
            CheckDefinition();
        }
        open_.pop_back();
        return !check_.HasDifference();
    }

    bool TakeLine(std::string_view line) override {
        switch (open_.back()->element) {
        case Element::Faces:
            return LandXmlItems::ReadLine(line, face_) && TakeFace();
        case Element::Pnts:
            return LandXmlItems::ReadLine(line, surfacePoint_) && TakeSurfacePoint();
        case Element::CgPoints:
            return LandXmlItems::ReadLine(line, point_) && TakePoint();
        default:
            return false;
        }
    }

    std::optional<std::string> Finish() {
        if (!check_.HasDifference() && !Has(Element::Metric) && !Has(Element::Imperial)) {
            check_.Stray("no unit");
        }
        if (!check_.HasDifference() &&
            Has(Element::CoordinateSystem) != content_.epsg.has_value()) {
            check_.Stray("another coordinate system");
        }
        return check_.Finish();
    }

private:
    // Numbers and codes belong to the points.
    static VectorParts PartsToCheck(const VectorContent& content) {
        return content.parts.And({VectorPart::Contours, VectorPart::IndexContours,
                                  VectorPart::Triangles, VectorPart::Points, VectorPart::Hull,
                                  VectorPart::Boundary, VectorPart::Breaklines});
    }

    [[nodiscard]] bool Has(Element element) const {
        return seen_.test(static_cast<std::size_t>(element));
    }
    void Require(bool holds, std::string_view what) {
        if (!holds) {
            check_.Stray(what);
        }
    }

    void Enter(Element element, const XmlAttributes& attributes) {
        switch (element) {
        case Element::F:
            Require(ReadAttribute(attributes, "n", face_.neighbours),
                    "a face without three neighbours");
            break;
        case Element::P:
            Require(ReadAttribute(attributes, "id", surfacePoint_.id),
                    "a point of the surface without a number");
            break;
        case Element::CgPoint:
            point_.name = attributes.Of("name").value_or(std::string_view());
            point_.code = attributes.Of("desc").value_or(std::string_view());
            break;
        case Element::Contour:
            Require(ReadAttribute(attributes, "elev", level_), "a contour without a height");
            break;
        case Element::Boundary:
            boundaryKind_ =
                attributes.Of("desc") == "Hull" ? SpaceLineKind::Hull : SpaceLineKind::Boundary;
            break;
        default:
            EnterFrame(element, attributes);
        }
    }

    // What stands once in a file.
    void EnterFrame(Element element, const XmlAttributes& attributes) {
        switch (element) {
        case Element::LandXml:
            Require(attributes.Of("xmlns") == "http://www.landxml.org/schema/LandXML-1.2" &&
                        attributes.Of("version") == "1.2",
                    "another version");
            break;
        case Element::Metric:
        case Element::Imperial:
            CheckUnits(element, attributes);
            break;
        case Element::CoordinateSystem:
            CheckSystem(attributes);
            break;
        case Element::Project:
            Require(attributes.Of("name") == CleanText(content_.name), "another project");
            break;
        case Element::Surface:
            Require(attributes.Of("name") == SurfaceNameOf(content_), "another surface");
            break;
        case Element::Definition:
            EnterDefinition(attributes);
            break;
        default:
            break;
        }
    }

    void CheckUnits(Element element, const XmlAttributes& attributes) {
        const auto length = attributes.Of("linearUnit");
        const auto height = attributes.Of("elevationUnit");
        const bool isMetric = element == Element::Metric;
        bool holds = false;
        switch (content_.unit) {
        case LengthUnit::Metre:
            holds = isMetric && length == "meter" && height == "meter";
            break;
        case LengthUnit::Foot:
            holds = !isMetric && length == "foot" && height == "feet";
            break;
        case LengthUnit::UsSurveyFoot:
            holds = !isMetric && length == "USSurveyFoot" && height == "feet";
            break;
        }
        Require(holds, "another unit");
    }

    void CheckSystem(const XmlAttributes& attributes) {
        const std::string code = content_.epsg ? std::to_string(*content_.epsg) : std::string();
        Require(attributes.Of("epsgCode") == code && attributes.Of("name") == "EPSG:" + code,
                "another coordinate system");
    }

    template <class Number, std::size_t count>
    static bool ReadAttribute(const XmlAttributes& attributes, std::string_view name,
                              std::array<Number, count>& values) {
        return NumberFields::Read(attributes.Of(name).value_or(std::string_view()), values);
    }
    template <class Number>
    static bool ReadAttribute(const XmlAttributes& attributes, std::string_view name,
                              Number& value) {
        std::array<Number, 1> number{};
        const bool holds = ReadAttribute(attributes, name, number);
        value = number[0];
        return holds;
    }

    void EnterDefinition(const XmlAttributes& attributes) {
        Require(attributes.Of("surfType") == "TIN", "another kind of surface");
        Require(content_.parts.Has(VectorPart::Triangles), "a surface too many");
        places_.resize(content_.points.size());
        states_.resize(content_.points.size());
        // Areas beyond the largest double are not there.
        told_.planArea = told_.area = HUGE_VAL;
        if (attributes.Of("area2DSurf")) {
            Require(ReadAttribute(attributes, "area2DSurf", told_.planArea), "a false area");
        }
        if (attributes.Of("area3DSurf")) {
            Require(ReadAttribute(attributes, "area3DSurf", told_.area), "a false area");
        }
        Require(ReadAttribute(attributes, "elevMax", told_.highest) &&
                    ReadAttribute(attributes, "elevMin", told_.lowest),
                "a surface without a height");
    }

    void CheckDefinition() {
        Require(IsNearly(told_.planArea, found_.planArea) && IsNearly(told_.area, found_.area),
                "an area that is not that of the faces");
        Require(told_.highest == found_.highest && told_.lowest == found_.lowest,
                "a highest or lowest point that is not that of the faces");
        for (const State state : states_) {
            Require(state != State::Known, "a point of the surface in no face");
        }
    }

    // These take the item that was read last. Always true: a difference is kept in the check.
    bool TakePoint() {
        if (pointCount_ == content_.PointCount()) {
            check_.Stray("a point too many");
            return true;
        }
        const auto number = static_cast<Index>(++pointCount_);
        // Names and codes that were changed are compared as they had to become.
        if (point_.name != names_.Of(number)) {
            check_.Stray("another name, \"" + point_.name + "\"");
        }
        if (point_.code != CodeOf(number)) {
            check_.Stray("another code, \"" + point_.code + "\"");
        }
        check_.Point(point_.place, std::nullopt, std::nullopt);
        return true;
    }

    [[nodiscard]] std::string CodeOf(Index point) const {
        return content_.parts.Has(VectorPart::Codes) ? CleanText(content_.CodeOf(point))
                                                     : std::string();
    }

    bool TakeSurfacePoint() {
        if (surfacePoint_.id < 1 || surfacePoint_.id > places_.size() ||
            states_[surfacePoint_.id - 1] != State::Missing) {
            check_.Stray("a point of the surface with a number of no or another point");
            return true;
        }
        places_[surfacePoint_.id - 1] = surfacePoint_.place;
        states_[surfacePoint_.id - 1] = State::Known;
        return true;
    }

    bool TakeFace() {
        std::array<SpacePoint, 3> corners;
        for (std::size_t j = 0; j < corners.size(); ++j) {
            const std::size_t id = face_.corners[j];
            if (id < 1 || id > places_.size() || states_[id - 1] == State::Missing) {
                check_.Stray("a face with a corner that is no point of the surface");
                return true;
            }
            states_[id - 1] = State::Used;
            corners[j] = places_[id - 1];
        }
        found_.Include(corners);
        check_.Corners(corners);
        check_.Neighbours(face_.neighbours);
        return true;
    }

    void Leave(Element element, std::string_view text) {
        switch (element) {
        case Element::F:
            Require(NumberFields::Read(text, face_.corners), "a face without three corners");
            TakeFace();
            break;
        case Element::P:
            Require(LandXmlItems::ReadPlace(text, surfacePoint_.place), kNoPlace);
            TakeSurfacePoint();
            break;
        case Element::CgPoint:
            Require(LandXmlItems::ReadPlace(text, point_.place), kNoPlace);
            TakePoint();
            break;
        case Element::ContourList:
            LeaveContour(text);
            break;
        case Element::BoundaryList:
            LeaveLine(boundaryKind_, text);
            break;
        case Element::BreaklineList:
            LeaveLine(SpaceLineKind::Breakline, text);
            break;
        default:
            break;
        }
    }

    // The numbers of a list, `width` to a vertex: northing, easting and maybe the height.
    bool ReadList(std::string_view text, int width) {
        vertices_.clear();
        while (!(text = NumberFields::WithoutBlanks(text)).empty()) {
            SpacePoint place{0, 0, level_};
            if (!NumberFields::Take(text, place.y) || !NumberFields::Take(text, place.x) ||
                (width == 3 && !NumberFields::Take(text, place.z))) {
                return false;
            }
            vertices_.push_back(place);
        }
        return vertices_.size() >= 2;
    }

    void LeaveContour(std::string_view text) {
        if (!ReadList(text, 2)) {
            check_.Stray("a contour of other than pairs of numbers");
            return;
        }
        const bool closed = vertices_.front() == vertices_.back();
        if (closed) {
            vertices_.pop_back();
        }
        check_.Contour(level_, closed, std::nullopt, vertices_);
    }

    // A line may end where it begins without being closed: the file does not tell the two apart.
    void LeaveLine(SpaceLineKind kind, std::string_view text) {
        if (!ReadList(text, 3)) {
            check_.Stray("a line of other than three numbers to a vertex");
            return;
        }
        const std::vector<SpaceLine>& lines = kind == SpaceLineKind::Hull ? content_.hull
                                              : kind == SpaceLineKind::Boundary
                                                  ? content_.boundary
                                                  : content_.breaklines;
        const std::size_t next = lineCounts_[static_cast<std::size_t>(kind)]++;
        const bool closed =
            next < lines.size() && lines[next].closed && vertices_.front() == vertices_.back();
        if (closed) {
            vertices_.pop_back();
        }
        check_.Line(kind, closed, vertices_);
    }

    enum class State : unsigned char { Missing, Known, Used };
    static constexpr Place kOutside{"", Element::None, Element::None, false, false};

    const VectorContent& content_;
    ContentCheck check_;
    PointNames names_;
    std::vector<const Place*> open_{&kOutside};

    std::bitset<LandXmlElements::kElementCount> seen_;
    double level_ = 0; // of the open contour
    SpaceLineKind boundaryKind_ = SpaceLineKind::Hull;
    LandXmlItems::Point point_; // read last
    LandXmlItems::SurfacePoint surfacePoint_;
    LandXmlItems::Face face_;
    std::size_t pointCount_ = 0;
    std::array<std::size_t, kSpaceLineKindCount> lineCounts_{};
    std::vector<SpacePoint> vertices_;

    std::vector<SpacePoint> places_; // of the surface, by number
    std::vector<State> states_;
    Measure told_;
    Measure found_;
};

} // namespace

std::optional<std::string> CheckLandXml(const std::string& path, const VectorContent& content,
                                        const VectorOptions& /*options*/) {
    Reader reader(content);
    if (std::optional<std::string> fault = ReadXml(path, reader)) {
        return fault;
    }
    return reader.Finish();
}

} // namespace terravo
