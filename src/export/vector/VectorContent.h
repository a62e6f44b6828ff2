// What goes to other programs, as values: contours, bands, triangles, points, texts.
//
// Data: plain lists in data units, each coordinate the double that is written, so that a point has
// the same digits wherever it occurs. Method: made once for a file, rounded where decimals are
// asked for; the writers only format, and whoever reads a file back compares with the same lists.
#pragma once

#include "contour/LevelBands.h"
#include "contour/TriangleCut.h"
#include "survey/PointLabels.h"
#include "triangulation/SpaceLine.h"

#include <array>
#include <bitset>
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace terravo {

/// The kinds of content that a file may have.
enum class VectorPart : unsigned char {
    Contours,      // all levels
    IndexContours, // the heavier ones, told apart; without Contours they alone
    Labels,        // values along the contours
    Bands,
    Triangles,
    Points,
    Numbers, // names of the points, numbers where they have none
    Codes,
    Heights, // of the points, as texts
    Hull,
    Boundary,
    Breaklines,
};
inline constexpr std::size_t kVectorPartCount = 12;

/// All of them, in the order in which they are listed.
std::span<const VectorPart> AllVectorParts();
/// The name of a part in option lists and settings: "contours", "index", ...
const char* NameOf(VectorPart part);

/// A set of parts.
class VectorParts {
public:
    VectorParts() = default;
    VectorParts(std::initializer_list<VectorPart> parts) {
        for (const VectorPart part : parts) {
            Add(part);
        }
    }
    void Add(VectorPart part) { bits_.set(static_cast<std::size_t>(part)); }
    [[nodiscard]] bool Has(VectorPart part) const {
        return bits_.test(static_cast<std::size_t>(part));
    }
    void Add(const VectorParts& others) { bits_ |= others.bits_; }
    [[nodiscard]] bool IsEmpty() const { return bits_.none(); }
    /// Those that both have.
    [[nodiscard]] VectorParts And(const VectorParts& other) const {
        VectorParts both;
        both.bits_ = bits_ & other.bits_;
        return both;
    }
    bool operator==(const VectorParts&) const = default;

private:
    std::bitset<kVectorPartCount> bits_;
};

/// "contours,points,hull": any of the names, blanks around them allowed.
/// @return nothing when one is unknown, or when there is none.
std::optional<VectorParts> ParseVectorParts(std::string_view list);

/// Largest code of a coordinate system that is taken.
inline constexpr int kLargestEpsg = 999999;

enum class LengthUnit : unsigned char { Metre, Foot, UsSurveyFoot };

/// Millimetres in one.
double MillimetresIn(LengthUnit unit);

struct VectorLevel {
    double value = 0;   // height, as written
    std::string text;   // with the decimals of the rule and a period
    bool index = false; // to be drawn heavier
};

/// A contour of a level; higher ground lies on the left, except of ridges.
struct VectorContour {
    std::size_t first = 0; // place of the first vertex in VectorContent::contourVertices
    std::size_t count = 0; // 2 at least, 3 when closed
    Index level = 0;       // 1-based in VectorContent::levels
    bool closed = false;   // the first vertex is not repeated
};

/// A text along a contour, centred on the place.
struct VectorLabel {
    Index level = 0; // 1-based
    PlanPoint middle;
    double angle = 0; // radians from east, counter-clockwise, (-pi/2, pi/2]
};

/// A sentence on what is not as in the survey, for files that hold any of these parts.
struct VectorRemark {
    VectorParts parts;
    std::string sentence;
};

struct VectorContent {
    std::string name; // of the survey: the file without folder and ending
    LengthUnit unit = LengthUnit::Metre;
    std::optional<int> epsg; // code of the coordinate system, where it is known
    VectorParts parts;       // what the lists below are to be written as
    double textHeight = 1;   // data units, more than 0

    std::vector<VectorLevel> levels;     // increasing
    std::vector<VectorContour> contours; // by level
    std::vector<PlanPoint> contourVertices;
    std::vector<VectorLabel> labels;
    std::vector<LevelBand> bands; // increasing; those without ground are left out

    std::vector<SpacePoint> points; // all points in use, by number, then added ones
    /// Points at the end that are corners of triangles alone: vertices and crossings of lines.
    std::size_t addedPoints = 0;
    PointLabels pointLabels; // may be empty
    /// Corners are 1-based point numbers, counter-clockwise; neighbours are 1-based triangles, 0
    /// where there is none. Hidden triangles are left out.
    std::vector<Triangle> triangles;

    std::vector<SpaceLine> hull; // rings with the surface on their left
    std::vector<SpaceLine> boundary;
    std::vector<SpaceLine> breaklines;

    std::vector<VectorRemark> remarks;

    [[nodiscard]] std::span<const PlanPoint> VerticesOf(const VectorContour& contour) const {
        return std::span(contourVertices).subspan(contour.first, contour.count);
    }
    [[nodiscard]] const VectorLevel& LevelOf(const VectorContour& contour) const {
        return levels[static_cast<std::size_t>(contour.level) - 1];
    }
    /// The name of a point, or its number.
    /// @param point  1-based.
    [[nodiscard]] std::string NameOf(Index point) const {
        return pointLabels.HasLabels() ? pointLabels.NameOrNumber(point) : std::to_string(point);
    }
    /// The code of a point, maybe empty.
    [[nodiscard]] std::string_view CodeOf(Index point) const {
        return pointLabels.HasLabels() ? pointLabels.Code(point) : std::string_view();
    }
    /// How many points are those of the survey.
    [[nodiscard]] std::size_t PointCount() const { return points.size() - addedPoints; }
    [[nodiscard]] std::span<const SpacePoint> SurveyPoints() const {
        return std::span(points).first(PointCount());
    }
    [[nodiscard]] const SpacePoint& PointAt(Index point) const {
        return points[static_cast<std::size_t>(point) - 1];
    }
    /// Whether the contour is to be written: one of its kind is asked for.
    [[nodiscard]] bool Shows(const VectorContour& contour) const {
        return parts.Has(VectorPart::Contours) ||
               (parts.Has(VectorPart::IndexContours) && LevelOf(contour).index);
    }
};

} // namespace terravo
