// Compares what a file holds with what it was made from.
//
// Data: the content, and for each of its lists the place up to which the file has shown it. Method:
// a reader tells of every thing in the order of the file, which is that of the lists; the first
// difference is kept as a sentence, and what is missing shows at the end. Numbers must be equal to
// the last bit, since the writers give every digit.
#pragma once

#include "export/vector/VectorContent.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace terravo {

/// The texts of a point that are drawn as texts of their own.
enum class PointText : unsigned char { Number, Code, Height };
inline constexpr std::size_t kPointTextCount = 3;

/// The lines in space that content has.
enum class SpaceLineKind : unsigned char { Hull, Boundary, Breakline };
inline constexpr std::size_t kSpaceLineKindCount = 3;

/// Readers tell what they found; coordinates are easting, northing, height whatever the order in
/// the file. Closed lines come without a repeated first vertex.
class ContentCheck {
public:
    /// @param content  outlives the check.
    /// @param parts    those that were written; the file must hold all of their lists. Numbers,
    ///                 Codes and Heights only where they are texts that stand apart from the
    ///                 points.
    ContentCheck(const VectorContent& content, const VectorParts& parts);

    /// @param isIndex  as far as the file tells; nothing where it cannot.
    void Contour(double level, bool closed, std::optional<bool> isIndex,
                 std::span<const SpacePoint> vertices);
    void Label(double level, std::string_view text, PlanPoint middle, double angleDegrees);
    /// Rings without repeated vertices: the outer one, then the holes.
    void BandPolygon(double low, double high, std::span<const std::span<const PlanPoint>> rings);
    void Line(SpaceLineKind kind, bool closed, std::span<const SpacePoint> vertices);
    /// @param name, code  nothing where the file does not tell.
    void Point(SpacePoint place, std::optional<std::string_view> name,
               std::optional<std::string_view> code);
    void PointLabel(PointText kind, std::string_view text);
    void Corners(const std::array<SpacePoint, 3>& corners);
    /// The same by the numbers of the points.
    void CornerNumbers(const std::array<Index, 3>& points);
    /// A triangle by its place in the list; neighbours 1-based, 0 for none.
    void Neighbours(const std::array<Index, 3>& neighbours);
    /// Something that the content does not have.
    void Stray(std::string_view what);

    /// The reader may stop early once a difference is known.
    [[nodiscard]] bool HasDifference() const { return difference_.has_value(); }

    /// The first difference; to be asked when the file has been read to its end.
    [[nodiscard]] std::optional<std::string> Finish();

private:
    void Differ(std::string sentence);
    [[nodiscard]] bool IsWritten(const VectorContour& contour) const;
    const VectorContour* NextContour();
    [[nodiscard]] bool HasText(PointText kind, Index point) const;
    void CheckCount(VectorPart part, std::string_view what, std::size_t found,
                    std::size_t expected);
    void CheckPointTexts(PointText kind);

    const VectorContent& content_;
    VectorParts parts_;
    std::optional<std::string> difference_;
    std::size_t contours_ = 0; // next of each list
    std::size_t labels_ = 0;
    std::size_t bands_ = 0;
    std::size_t polygons_ = 0; // of the band
    std::array<std::size_t, kSpaceLineKindCount> lines_{};
    std::size_t points_ = 0;
    std::array<std::size_t, kPointTextCount> pointTexts_{};
    std::size_t corners_ = 0;
    std::size_t neighbours_ = 0;
};

} // namespace terravo
