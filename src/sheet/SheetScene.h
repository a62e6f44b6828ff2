// A finished sheet: lines, areas, marks and texts in millimetres, ready to be drawn on any device.
//
// Data: x to the right and y down from the upper left corner of the paper; every element knows its
// layer. Vertices of all lines and areas lie in one array, in pieces. A piece of a curve has its
// control points as well, in an array of their own. Method: everything is already placed, clipped
// and cut out beneath its labels; whoever draws goes through the layers in the order of their
// enumeration, within a layer through areas, lines, marks and texts, and decides nothing.
#pragma once

#include "plot2d/Colour.h"
#include "util/TextCatalogue.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <vector>

namespace terravo {

/// A place on the paper, millimetres.
struct SheetPoint {
    double x = 0;
    double y = 0;

    bool operator==(const SheetPoint&) const = default;
};

/// A rectangle on the paper, millimetres.
struct SheetBox {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;

    [[nodiscard]] double Width() const { return right - left; }
    [[nodiscard]] double Height() const { return bottom - top; }
    [[nodiscard]] SheetPoint Middle() const { return {(left + right) / 2, (top + bottom) / 2}; }
    [[nodiscard]] bool Contains(SheetPoint p) const {
        return p.x >= left && p.x <= right && p.y >= top && p.y <= bottom;
    }
    [[nodiscard]] SheetBox Shrunk(double by) const {
        return {left + by, top + by, right - by, bottom - by};
    }
    bool operator==(const SheetBox&) const = default;
};

/// In the order in which they are drawn.
enum class SheetLayer : unsigned char {
    Paper, // the ground; always there
    Bands,
    Grid,
    Triangles,
    Contours,
    IndexContours,
    Hull,
    Profiles,   // of a section
    Breaklines, // laid over the points
    Points,
    Labels,
    SpotHeights,
    Numbers,
    Codes,
    Frame, // of the map, with its ticks and their values; always there
    TitleBlock,
    Legend,
    ScaleBar,
    NorthArrow,
};
inline constexpr std::size_t kSheetLayers = 19;

/// "bands", "index-contours", "title-block" and the like: the ids of the groups of an SVG.
const char* NameOf(SheetLayer layer);

/// What lines are drawn with. Round ends and corners.
struct SheetInk {
    Colour colour = kBlack;
    double width = 0.18;        // millimetres
    std::vector<double> dashes; // millimetres, stroke and gap in turn; empty: solid

    bool operator==(const SheetInk&) const = default;
};

/// Millimetres: as far from a curve its vertices may lie.
inline constexpr double kCurveTolerance = 0.01;

/// Vertices that follow each other.
struct SheetPiece {
    std::size_t first = 0; // in SheetScene::vertices
    std::size_t count = 0;
    bool closed = false; // the last one leads to the first, which is not repeated
    /// Of a curve: whoever has pixels draws the vertices, files and pages that can be enlarged get
    /// the cubics.
    std::size_t firstControl = 0; // in SheetScene::controls
    std::size_t cubics = 0;       // 0: the vertices are all there is
};

/// A line, which labels and the frame may have cut into pieces.
struct SheetLine {
    SheetLayer layer = SheetLayer::Contours;
    std::uint32_t ink = 0;                                   // in SheetScene::inks
    double level = std::numeric_limits<double>::quiet_NaN(); // of a contour
    std::size_t firstPiece = 0;                              // in SheetScene::pieces
    std::size_t pieces = 0;

    [[nodiscard]] bool IsContour() const { return !std::isnan(level); }
};

/// Closed pieces, filled by the even-odd rule.
struct SheetArea {
    SheetLayer layer = SheetLayer::Bands;
    Colour fill = kWhite;
    std::size_t firstPiece = 0;
    std::size_t pieces = 0;
};

enum class SheetMarkShape : unsigned char { Dot, Cross };

/// Equal marks at many places.
struct SheetMarks {
    SheetLayer layer = SheetLayer::Points;
    SheetMarkShape shape = SheetMarkShape::Dot;
    std::uint32_t ink = 0; // of a cross; a dot takes its colour
    double size = 0.6;     // millimetres across
    std::vector<SheetPoint> places;
};

/// Where the place of a text is: on its base line, at its middle height halfway up a capital.
enum class TextAnchor : unsigned char { Left, Middle, Right, Centre };

struct SheetText {
    SheetLayer layer = SheetLayer::Labels;
    std::string text; // UTF-8, one line
    SheetPoint place;
    TextAnchor anchor = TextAnchor::Left; // Centre: in the middle of width and capital height
    double height = 2;                    // of a capital letter, millimetres
    double angle = 0;                     // radians, counter-clockwise as seen on the paper
    Colour colour = kBlack;
    bool bold = false;
};

/// What became of the values along the lines.
struct LabelReport {
    std::size_t lines = 0; // that should have one
    std::size_t labelled = 0;
    std::size_t tooShort = 0; // shorter than three labels
    std::size_t noRoom = 0;   // every place is taken or crosses the frame
    std::size_t texts = 0;
};

struct SheetScene {
    double width = 0; // of the paper, millimetres
    double height = 0;
    SheetBox map;     // the inside of the frame
    double scale = 0; // the N of 1:N
    std::vector<SheetInk> inks;
    std::vector<SheetPoint> vertices;
    std::vector<SheetPoint> controls; // of a piece 3 * cubics + 1; every third one is on the curve
    std::vector<SheetPiece> pieces;
    std::vector<SheetLine> lines;
    std::vector<SheetArea> areas;
    std::vector<SheetMarks> marks;
    std::vector<SheetText> texts;
    LabelReport labels;
    std::vector<Statement> remarks; // for the user, such as what does not fit

    [[nodiscard]] std::span<const SheetPiece> PiecesOf(const SheetLine& line) const {
        return std::span(pieces).subspan(line.firstPiece, line.pieces);
    }
    [[nodiscard]] std::span<const SheetPiece> PiecesOf(const SheetArea& area) const {
        return std::span(pieces).subspan(area.firstPiece, area.pieces);
    }
    [[nodiscard]] std::span<const SheetPoint> VerticesOf(const SheetPiece& piece) const {
        return std::span(vertices).subspan(piece.first, piece.count);
    }
    /// None where the vertices are all there is. Of a closed piece the last one is the first again.
    [[nodiscard]] std::span<const SheetPoint> ControlsOf(const SheetPiece& piece) const {
        return std::span(controls).subspan(piece.firstControl,
                                           piece.cubics > 0 ? 3 * piece.cubics + 1 : 0);
    }

    /// The number of an ink, which is added when it is new.
    std::uint32_t InkNumber(const SheetInk& ink);
    /// Adds a piece with these vertices.
    void AddPiece(std::span<const SheetPoint> points, bool closed);
    /// Says that the last piece is a stretch of a curve, as of AppendStretch().
    void CurveLastPiece(std::span<const SheetPoint> curve, double from, double to);
    /// Adds a line of one piece.
    void AddLine(SheetLayer layer, const SheetInk& ink, std::span<const SheetPoint> points,
                 bool closed = false);
    /// Adds an area of one ring.
    void AddArea(SheetLayer layer, Colour fill, std::span<const SheetPoint> ring);
    void AddBox(SheetLayer layer, const SheetInk& ink, const SheetBox& box);
};

} // namespace terravo
