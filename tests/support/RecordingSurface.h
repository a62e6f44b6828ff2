// A drawing surface for tests: it paints nothing and lists what it was asked.
//
// Data: one list of the calls in user coordinates, one of the calls in fractions of a pixel, both
// in the order they came. Method: text measures 7 x 13 pixels a character whatever the font, so
// that tests of labels and margins need no installed font.
#pragma once

#include "plot2d/DrawSurface.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace terravo {

inline constexpr int kRecordedCharWidth = 7;
inline constexpr int kRecordedCharHeight = 13;

/// A call as the drawing routine made it, with the properties it was made under.
struct UserCall {
    enum class Kind { Line, Point, Text, Polygons, Disc };

    Kind kind = Kind::Line;
    double x1 = 0; ///< Line, Point, Text; the centre of a Disc
    double y1 = 0;
    double x2 = 0; ///< Line
    double y2 = 0;
    Colour colour = kBlack; ///< pen, text or border colour
    Box box = Box::None;
    std::string text;
    NewLine newLine = NewLine::No;
    int drawWidth = 1;
    int drawStyle = 0;
    int drawMode = 13;
    std::string fontName;
    float fontSize = 0;
    bool fontBold = false;
    bool fontTransparent = true;
    int radius = 0;
    std::vector<PixelPosition> corners;
    std::vector<std::int32_t> counts;
    PaintTools tools;
};

/// A call as the backend got it.
struct PixelCall {
    enum class Kind { Stroke, Point, Rect, Polygons, Disc, Flood, Text, Refresh };

    Kind kind = Kind::Stroke;
    PixelPosition a;
    PixelPosition b;
    Pen pen; ///< of a stroke, a point or polygons; colour and mode of the others
    std::string text;
    std::optional<Colour> background; ///< of a text; inside of a disc or of polygons
    std::vector<PixelPosition> corners;
    std::vector<std::int32_t> counts;
};

class RecordingSurface : public DrawSurface {
public:
    explicit RecordingSurface(int width = 640, int height = 480, double dotsPerInch = kDotsPerInch)
        : DrawSurface(width, height, dotsPerInch) {}

    bool leavesOutLastPixel = true; ///< as pictures of pixels do
    std::vector<UserCall> userCalls;
    std::vector<PixelCall> pixelCalls;

    [[nodiscard]] std::vector<UserCall> UserCallsOf(UserCall::Kind kind) const;
    [[nodiscard]] std::vector<PixelCall> PixelCallsOf(PixelCall::Kind kind) const;
    /// The printed texts in order.
    [[nodiscard]] std::vector<std::string> Texts() const;
    /// The printed text that equals `text`; a failed optional when there is none.
    [[nodiscard]] std::optional<UserCall> FindText(std::string_view text) const;
    void Forget();

    [[nodiscard]] bool LeavesOutLastPixel() const override { return leavesOutLastPixel; }
    using DrawSurface::Line;
    using DrawSurface::PSet;
    void Line(double x1, double y1, double x2, double y2, Colour colour,
              Box box = Box::None) override;
    void PSet(double x, double y, Colour colour) override;
    void Print(std::string_view utf8, NewLine newLine = NewLine::Yes) override;
    void FillPolyPolygon(std::span<const PixelPosition> corners,
                         std::span<const std::int32_t> counts, const PaintTools& tools) override;
    void FillDisc(PixelPosition centre, int radius, const PaintTools& tools) override;

protected:
    void StrokePixels(PixelPosition a, PixelPosition b, const Pen& pen) override;
    void SetPixels(PixelPosition centre, const Pen& pen) override;
    void FillPixelRect(PixelPosition a, PixelPosition b, Colour colour, int drawMode) override;
    void PaintPixelPolygons(std::span<const PixelPosition> corners,
                            std::span<const std::int32_t> counts, std::optional<Colour> inside,
                            const Pen& pen) override;
    void FillPixelDisc(PixelPosition centre, int radius, std::optional<Colour> inside, Colour rim,
                       int drawMode) override;
    void FloodPixels(PixelPoint seed, Colour border, Colour colour, int drawMode) override;
    void DrawTextPixels(PixelPosition topLeft, std::string_view utf8, const Font& font,
                        Colour colour, std::optional<Colour> background) override;
    [[nodiscard]] TextSize MeasurePixels(std::string_view utf8, const Font& font) const override;
    void RefreshPixels() override;

private:
    UserCall& Record(UserCall::Kind kind, double x, double y, Colour colour);
    PixelCall& Record(PixelCall::Kind kind, PixelPosition a, Colour colour, int drawMode);
};

} // namespace terravo
