#include "export/readback/LandXmlReadback.h"

#include "export/readback/ContentCheck.h"
#include "export/readback/XmlReader.h"
#include "export/vector/CleanText.h"
#include "export/vector/LandXmlNames.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace terravo {
namespace {

enum class Element : unsigned char {
    None,
    LandXml,
    Units,
    Metric,
    Imperial,
    CoordinateSystem,
    Project,
    Application,
    CgPoints,
    CgPoint,
    Surfaces,
    Surface,
    SourceData,
    Boundaries,
    Boundary,
    BoundaryList,
    Breaklines,
    Breakline,
    BreaklineList,
    Contours,
    Contour,
    ContourList,
    Definition,
    Pnts,
    P,
    Faces,
    F,
};

struct Place {
    std::string_view name;
    Element element;
    Element parent;
    bool hasText;
};

// The frequent ones first.
constexpr Place kPlaces[] = {
    {"F", Element::F, Element::Faces, true},
    {"P", Element::P, Element::Pnts, true},
    {"CgPoint", Element::CgPoint, Element::CgPoints, true},
    {"Contour", Element::Contour, Element::Contours, false},
    {"PntList2D", Element::ContourList, Element::Contour, true},
    {"PntList3D", Element::BreaklineList, Element::Breakline, true},
    {"Breakline", Element::Breakline, Element::Breaklines, false},
    {"PntList3D", Element::BoundaryList, Element::Boundary, true},
    {"Boundary", Element::Boundary, Element::Boundaries, false},
    {"LandXML", Element::LandXml, Element::None, false},
    {"Units", Element::Units, Element::LandXml, false},
    {"Metric", Element::Metric, Element::Units, false},
    {"Imperial", Element::Imperial, Element::Units, false},
    {"CoordinateSystem", Element::CoordinateSystem, Element::LandXml, false},
    {"Project", Element::Project, Element::LandXml, false},
    {"Application", Element::Application, Element::LandXml, false},
    {"CgPoints", Element::CgPoints, Element::LandXml, false},
    {"Surfaces", Element::Surfaces, Element::LandXml, false},
    {"Surface", Element::Surface, Element::Surfaces, false},
    {"SourceData", Element::SourceData, Element::Surface, false},
    {"Boundaries", Element::Boundaries, Element::SourceData, false},
    {"Breaklines", Element::Breaklines, Element::SourceData, false},
    {"Contours", Element::Contours, Element::SourceData, false},
    {"Definition", Element::Definition, Element::Surface, false},
    {"Pnts", Element::Pnts, Element::Definition, false},
    {"Faces", Element::Faces, Element::Definition, false},
};

const Place* FindPlace(std::string_view name, Element parent) {
    for (const Place& place : kPlaces) {
        if (place.name == name && place.parent == parent) {
            return &place;
        }
    }
    return nullptr;
}

bool IsBlank(char c) {
    return c == ' ' || c == '\n' || c == '\r' || c == '\t';
}

std::string_view WithoutBlanks(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    return text;
}

// Takes a number off the front of a text, with the blanks before it.
template <class Number>
bool TakeNumber(std::string_view& text, Number& number) {
    text = WithoutBlanks(text);
    const std::from_chars_result end =
        std::from_chars(text.data(), text.data() + text.size(), number);
    if (end.ec != std::errc()) {
        return false;
    }
    text.remove_prefix(static_cast<std::size_t>(end.ptr - text.data()));
    return text.empty() || IsBlank(text.front());
}

template <class Number, std::size_t count>
bool ReadNumbers(std::string_view text, std::array<Number, count>& numbers) {
    for (Number& number : numbers) {
        if (!TakeNumber(text, number)) {
            return false;
        }
    }
    return WithoutBlanks(text).empty();
}

// A point of three numbers: northing, easting, height.
bool ReadPlace(std::string_view text, SpacePoint& place) {
    std::array<double, 3> numbers{};
    if (!ReadNumbers(text, numbers)) {
        return false;
    }
    place = {numbers[1], numbers[0], numbers[2]};
    return true;
}

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
        const Place* place = FindPlace(name, open_.back()->element);
        if (place == nullptr || !WithoutBlanks(before).empty()) {
            check_.Stray("an element or a text where none is expected, at \"" + std::string(name) +
                         "\"");
            return false;
        }
        open_.push_back(place);
        Enter(place->element, attributes);
        return !check_.HasDifference();
    }

    bool End(std::string_view /*name*/, std::string_view text) override {
        const Place& place = *open_.back();
        if (place.hasText) {
            Leave(place.element, text);
        } else if (!WithoutBlanks(text).empty()) {
            check_.Stray("a text in an element \"" + std::string(place.name) + "\"");
        } else if (place.element == Element::Definition) {
            CheckDefinition();
        }
        open_.pop_back();
        return !check_.HasDifference();
    }

    std::optional<std::string> Finish() {
        if (!check_.HasDifference() && !hasUnits_) {
            check_.Stray("no unit");
        }
        if (!check_.HasDifference() && hasSystem_ != content_.epsg.has_value()) {
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

    void Require(bool holds, std::string_view what) {
        if (!holds) {
            check_.Stray(what);
        }
    }

    void Enter(Element element, const XmlAttributes& attributes) {
        switch (element) {
        case Element::F:
            EnterFace(attributes);
            break;
        case Element::P:
            EnterSurfacePoint(attributes);
            break;
        case Element::CgPoint:
            name_ = attributes.Of("name").value_or(std::string_view());
            code_ = attributes.Of("desc").value_or(std::string_view());
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
        Require(holds && !hasUnits_, "another unit");
        hasUnits_ = true;
    }

    void CheckSystem(const XmlAttributes& attributes) {
        const std::string code = content_.epsg ? std::to_string(*content_.epsg) : std::string();
        Require(!hasSystem_ && attributes.Of("epsgCode") == code &&
                    attributes.Of("name") == "EPSG:" + code,
                "another coordinate system");
        hasSystem_ = true;
    }

    template <class Number>
    static bool ReadAttribute(const XmlAttributes& attributes, std::string_view name,
                              Number& value) {
        std::array<Number, 1> number{};
        const bool holds = ReadNumbers(attributes.Of(name).value_or(std::string_view()), number);
        value = number[0];
        return holds;
    }

    void EnterDefinition(const XmlAttributes& attributes) {
        Require(attributes.Of("surfType") == "TIN", "another kind of surface");
        Require(content_.parts.Has(VectorPart::Triangles) && places_.empty(), "a surface too many");
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

    void EnterSurfacePoint(const XmlAttributes& attributes) {
        Require(ReadAttribute(attributes, "id", id_) && id_ >= 1 && id_ <= places_.size() &&
                    states_[id_ - 1] == State::Missing,
                "a point of the surface with a number of no or another point");
    }

    void EnterFace(const XmlAttributes& attributes) {
        std::array<Index, 3> neighbours{};
        Require(ReadNumbers(attributes.Of("n").value_or(std::string_view()), neighbours),
                "a face without neighbours");
        check_.Neighbours(neighbours);
    }

    void Leave(Element element, std::string_view text) {
        switch (element) {
        case Element::F:
            LeaveFace(text);
            break;
        case Element::P:
            Require(ReadPlace(text, places_[id_ - 1]), "a point without three numbers");
            states_[id_ - 1] = State::Known;
            break;
        case Element::CgPoint:
            LeavePoint(text);
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

    void LeaveFace(std::string_view text) {
        std::array<std::size_t, 3> numbers{};
        std::array<SpacePoint, 3> corners;
        bool holds = ReadNumbers(text, numbers);
        for (std::size_t j = 0; holds && j < corners.size(); ++j) {
            const std::size_t number = numbers[j];
            holds =
                number >= 1 && number <= places_.size() && states_[number - 1] != State::Missing;
            if (holds) {
                states_[number - 1] = State::Used;
                corners[j] = places_[number - 1];
            }
        }
        if (!holds) {
            check_.Stray("a face without three points");
            return;
        }
        found_.Include(corners);
        check_.Corners(corners);
    }

    void LeavePoint(std::string_view text) {
        SpacePoint place;
        if (!ReadPlace(text, place) || pointCount_ == content_.points.size()) {
            check_.Stray("a point too many or without three numbers");
            return;
        }
        const auto number = static_cast<Index>(++pointCount_);
        // Names and codes that were changed are compared as they had to become.
        Require(name_ == names_.Of(number), "another name, \"" + name_ + "\"");
        const bool coded = content_.parts.Has(VectorPart::Codes);
        Require(code_ == (coded ? CleanText(content_.CodeOf(number)) : std::string()),
                "another code, \"" + code_ + "\"");
        check_.Point(place, std::nullopt, std::nullopt);
    }

    // The numbers of a list, `width` to a vertex: northing, easting and maybe the height.
    bool ReadList(std::string_view text, int width) {
        vertices_.clear();
        while (!(text = WithoutBlanks(text)).empty()) {
            SpacePoint place{0, 0, level_};
            if (!TakeNumber(text, place.y) || !TakeNumber(text, place.x) ||
                (width == 3 && !TakeNumber(text, place.z))) {
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
    static constexpr Place kOutside{"", Element::None, Element::None, false};

    const VectorContent& content_;
    ContentCheck check_;
    PointNames names_;
    std::vector<const Place*> open_{&kOutside};

    bool hasUnits_ = false;
    bool hasSystem_ = false;
    std::string name_; // of the open point
    std::string code_;
    double level_ = 0; // of the open contour
    SpaceLineKind boundaryKind_ = SpaceLineKind::Hull;
    std::size_t id_ = 0; // of the open point of the surface
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
