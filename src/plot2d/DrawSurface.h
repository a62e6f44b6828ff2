// The drawing area that maps and 3D pictures are drawn on: a user coordinate system, a pen, a font,
// a cursor, and the operations that use them.
//
// Data: the properties below. Scale and cursor read in single precision; the mapping behind them
// and every coordinate stay double until they become pixels, so that a straight line at a northing
// of millions stays straight. Method: all arithmetic is done here, once. A backend adds strokes,
// fills and text at places in fractions of a pixel, and nothing else; only those that paint pixels
// round them.
//
// Coordinates are in the unit of ScaleMode: user units, points (1/72 inch) or pixels. Pixel
// coordinates start at the top-left corner, y downwards.
#pragma once

#include "plot2d/Colour.h"
#include "plot2d/DrawCodes.h"
#include "plot2d/PixelPoint.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace terravo {

/// Of a screen whose pixel ratio is 1; layouts in pixels are made for it.
inline constexpr double kDotsPerInch = 96;

enum class ScaleUnit { User = 0, Points = 2, Pixels = 3 };

/// What Line draws between its two corners.
enum class Box { None, Outline, Filled };

enum class NewLine { No, Yes };

/// How a stroke paints. Dashes apply to a pen one pixel wide only.
struct Pen {
    Colour colour = kBlack;
    int width = 1; ///< pixels
    int style = DrawStyles::kSolid;
    int mode = DrawModes::kCopy;

    bool operator==(const Pen&) const = default;
};

/// Pen and brush of the fills in pixels.
struct PaintTools {
    Colour penColour = kBlack;
    int penWidth = 1; ///< pixels
    int penStyle = DrawStyles::kSolid;
    std::optional<Colour> brush; ///< colour of the inside; hollow when empty
};

struct Font {
    std::string name = "MS Sans Serif";
    float size = 8; ///< points
    bool bold = false;
    int pixelSize = 11; ///< the size at the surface's dots per inch

    bool operator==(const Font&) const = default;
};

/// Size of a text, pixels.
struct TextSize {
    int width = 0;
    int height = 0;
};

/// A place in the coordinates of ScaleMode.
struct UserPosition {
    double x = 0;
    double y = 0;
};

class DrawSurface {
public:
    virtual ~DrawSurface() = default;
    DrawSurface(const DrawSurface&) = delete;
    DrawSurface& operator=(const DrawSurface&) = delete;

    // --- The coordinate system ---

    /// Unit of coordinates. Changing it keeps the user system and the numbers of the cursor.
    [[nodiscard]] ScaleUnit ScaleMode() const { return scaleMode_; }
    void SetScaleMode(ScaleUnit mode);

    /// Left and top edge and signed extent of the area, in the unit of ScaleMode. In pixels and
    /// points the edges are 0. A negative ScaleHeight makes y grow upwards.
    [[nodiscard]] float ScaleLeft() const { return static_cast<float>(xAxis_.origin); }
    [[nodiscard]] float ScaleTop() const { return static_cast<float>(yAxis_.origin); }
    [[nodiscard]] float ScaleWidth() const { return static_cast<float>(xAxis_.extent); }
    [[nodiscard]] float ScaleHeight() const { return static_cast<float>(yAxis_.extent); }

    /// Change one value of the user system and switch ScaleMode to it.
    /// @throws AppError for an extent of zero or a value that is not finite.
    void SetScaleLeft(float left);
    void SetScaleTop(float top);
    void SetScaleWidth(float width);
    void SetScaleHeight(float height);

    /// Makes x1 the left, y1 the top, x2 the right and y2 the bottom edge, and switches ScaleMode
    /// to user units. With y1 > y2, y grows upwards.
    /// @throws AppError when opposite edges are equal or a value is not finite.
    void Scale(double x1, double y1, double x2, double y2);

    /// A horizontal or vertical length in another unit. Vertical user lengths carry the sign of
    /// ScaleHeight: negative where y grows upwards.
    [[nodiscard]] double ScaleX(double value, ScaleUnit from, ScaleUnit to) const;
    [[nodiscard]] double ScaleY(double value, ScaleUnit from, ScaleUnit to) const;

    /// The place between pixels of a position in current coordinates, and back.
    [[nodiscard]] PixelPosition ToPixels(double x, double y) const {
        return {xAxis_.ToPixel(x), yAxis_.ToPixel(y)};
    }
    [[nodiscard]] UserPosition ToUser(double pixelX, double pixelY) const {
        return {xAxis_.FromPixel(pixelX), yAxis_.FromPixel(pixelY)};
    }
    /// The pixel of a position in current coordinates; see NearestPixel.
    [[nodiscard]] PixelPoint ToPixelPoint(double x, double y) const {
        return NearestPixel(ToPixels(x, y));
    }

    /// Size of the area in pixels, whatever ScaleMode is.
    [[nodiscard]] int PixelWidth() const { return pixelWidth_; }
    [[nodiscard]] int PixelHeight() const { return pixelHeight_; }
    [[nodiscard]] double DotsPerInch() const { return dotsPerInch_; }

    // --- Pen, colours, font, cursor ---

    /// The cursor in current coordinates, where the next text begins.
    [[nodiscard]] float CurrentX() const { return static_cast<float>(cursor_.x); }
    [[nodiscard]] float CurrentY() const { return static_cast<float>(cursor_.y); }
    void SetCurrentX(double x) { cursor_.x = x; }
    void SetCurrentY(double y) { cursor_.y = y; }
    /// The cursor with all its digits.
    [[nodiscard]] UserPosition Cursor() const { return cursor_; }

    /// Pen and text colour.
    [[nodiscard]] Colour ForeColor() const { return foreColor_; }
    void SetForeColor(Colour colour) { foreColor_ = colour; }
    [[nodiscard]] Colour BackColor() const { return backColor_; }
    void SetBackColor(Colour colour) { backColor_ = colour; }

    /// True: text leaves its background as it is. False: its cell is painted in BackColor.
    [[nodiscard]] bool FontTransparent() const { return fontTransparent_; }
    void SetFontTransparent(bool transparent) { fontTransparent_ = transparent; }

    /// Pen width in pixels, at least 1: smaller values set 1.
    [[nodiscard]] int DrawWidth() const { return pen_.width; }
    void SetDrawWidth(int pixels) { pen_.width = pixels < 1 ? 1 : pixels; }
    /// See DrawStyles.
    [[nodiscard]] int DrawStyle() const { return pen_.style; }
    void SetDrawStyle(int style) { pen_.style = style; }
    /// See DrawModes. Text is always copied.
    [[nodiscard]] int DrawMode() const { return pen_.mode; }
    void SetDrawMode(int mode) { pen_.mode = mode; }

    [[nodiscard]] const std::string& FontName() const { return font_.name; }
    void SetFontName(std::string_view name) { font_.name = name; }
    /// Points; made pixels through the dots per inch.
    [[nodiscard]] float FontSize() const { return font_.size; }
    void SetFontSize(float points);
    [[nodiscard]] bool FontBold() const { return font_.bold; }
    void SetFontBold(bool bold) { font_.bold = bold; }

    /// True: drawing goes to the persistent image, which repaints the area. False: drawing goes to
    /// the screen only, until Refresh or true brings the persistent image back.
    [[nodiscard]] bool AutoRedraw() const { return autoRedraw_; }
    void SetAutoRedraw(bool persistent);

    // --- Drawing in current coordinates ---

    /// True when a line one pixel wide ends before the pixel of its end, so that the runs of a path
    /// share none: whoever wants that pixel sets it. False when lines have round ends.
    [[nodiscard]] virtual bool LeavesOutLastPixel() const { return false; }

    /// Draws from (x1, y1) to (x2, y2) with DrawWidth, DrawStyle and DrawMode: a line, or the
    /// rectangle with these corners, as outline or filled. Coordinates that are not finite draw
    /// nothing. Leaves the cursor at (x2, y2).
    virtual void Line(double x1, double y1, double x2, double y2, Colour colour,
                      Box box = Box::None);
    /// The same in ForeColor.
    void Line(double x1, double y1, double x2, double y2, Box box = Box::None) {
        Line(x1, y1, x2, y2, foreColor_, box);
    }

    /// Sets one point, DrawWidth thick, and leaves the cursor there.
    virtual void PSet(double x, double y, Colour colour);
    void PSet(double x, double y) { PSet(x, y, foreColor_); }

    /// Draws UTF-8 text with its top-left corner at the cursor, in ForeColor. Then the cursor moves
    /// right by the width of the text, or with a new line to ScaleLeft and one line down.
    virtual void Print(std::string_view utf8, NewLine newLine = NewLine::Yes);

    /// Size of the text in the current font, in current units. Where y grows upwards TextHeight is
    /// negative.
    [[nodiscard]] double TextWidth(std::string_view utf8) const;
    [[nodiscard]] double TextHeight(std::string_view utf8) const;

    /// Shows the persistent image.
    void Refresh() { RefreshPixels(); }

    // --- Fills in device pixels, painted with DrawMode ---

    /// How this surface takes the corners of a fill without a detour, and a place made such a
    /// corner. Surfaces of pixels have their own; see PixelSurface.
    using Place = PixelPosition;
    [[nodiscard]] static Place PlaceAt(PixelPosition place) { return place; }

    /// Fills the closed polygon by the even-odd rule with the brush, then strokes its outline with
    /// the pen. Neighbours that share corners leave no gap.
    void FillPolygon(std::span<const PixelPosition> corners, const PaintTools& tools);

    /// The same for several polygons in one call; the even-odd rule takes them together.
    /// @param counts  corners of each polygon, which follow each other in `corners`.
    /// @throws AppError when the counts are negative or exceed the corners.
    virtual void FillPolyPolygon(std::span<const PixelPosition> corners,
                                 std::span<const std::int32_t> counts, const PaintTools& tools);

    /// Disc of 2 * radius + 1 pixels across: brush inside, pen on the rim, always one pixel wide.
    virtual void FillDisc(PixelPosition centre, int radius, const PaintTools& tools);

    /// Fills with the brush from pixel (x, y) up to pixels of the border colour. A hollow brush, or
    /// a start outside the area or on the border, paints nothing.
    virtual void FloodFill(int x, int y, Colour borderColour, const PaintTools& tools);

protected:
    /// Starts with user units that equal pixels. Sizes below 1 count as 1.
    DrawSurface(int pixelWidth, int pixelHeight, double dotsPerInch);

    /// Tells the new size of the area; the user system is stretched to it unless it was never set.
    void SetPixelSize(int pixelWidth, int pixelHeight);

    /// @throws AppError when the counts are negative or exceed the corners.
    static void CheckCounts(std::size_t corners, std::span<const std::int32_t> counts);
    /// What the outlines of a fill are drawn with.
    [[nodiscard]] Pen OutlinePen(const PaintTools& tools) const;

    // What a backend adds. The middle of a pixel has whole coordinates.

    /// Line from a to b; see LeavesOutLastPixel.
    virtual void StrokePixels(PixelPosition a, PixelPosition b, const Pen& pen) = 0;
    /// Dot as wide as the pen.
    virtual void SetPixels(PixelPosition centre, const Pen& pen) = 0;
    /// Rectangle with the pixels of both corners included, in any order.
    virtual void FillPixelRect(PixelPosition a, PixelPosition b, Colour colour, int drawMode) = 0;
    /// The inside of the polygons together, unless hollow, then their outlines one after the
    /// other.
    virtual void PaintPixelPolygons(std::span<const PixelPosition> corners,
                                    std::span<const std::int32_t> counts,
                                    std::optional<Colour> inside, const Pen& pen) = 0;
    /// Disc with its inside (unless hollow) and its rim.
    virtual void FillPixelDisc(PixelPosition centre, int radius, std::optional<Colour> inside,
                               Colour rim, int drawMode) = 0;
    virtual void FloodPixels(PixelPoint seed, Colour border, Colour colour, int drawMode) = 0;
    /// Text with its top-left corner at a place, its cell painted first when there is a background.
    virtual void DrawTextPixels(PixelPosition topLeft, std::string_view utf8, const Font& font,
                                Colour colour, std::optional<Colour> background) = 0;
    [[nodiscard]] virtual TextSize MeasurePixels(std::string_view utf8, const Font& font) const = 0;
    /// Makes the persistent image the visible one.
    virtual void RefreshPixels() = 0;
    /// AutoRedraw has changed: choose the image that drawing goes to.
    virtual void AutoRedrawChanged() {}

private:
    // One axis of the current coordinates: origin at pixel 0, extent over `pixels` pixels.
    struct AxisMap {
        double origin = 0;
        double extent = 1;
        double pixels = 1;

        [[nodiscard]] double ToPixel(double v) const { return (v - origin) / extent * pixels; }
        [[nodiscard]] double FromPixel(double p) const { return p / pixels * extent + origin; }
        [[nodiscard]] double PixelsPerUnit() const { return pixels / extent; }
    };

    [[nodiscard]] AxisMap MapFor(const AxisMap& user, ScaleUnit unit, int pixels) const;
    [[nodiscard]] double PixelsPer(ScaleUnit unit, const AxisMap& user) const;
    void SetUserSystem(const AxisMap& x, const AxisMap& y);
    void UpdateMaps();
    void StrokeBetween(PixelPosition a, PixelPosition b, const Pen& pen);
    void UpdateFontPixels();

    int pixelWidth_;
    int pixelHeight_;
    double dotsPerInch_;
    ScaleUnit scaleMode_ = ScaleUnit::User;
    bool hasUserSystem_ = false;
    AxisMap xUser_;
    AxisMap yUser_;
    AxisMap xAxis_;
    AxisMap yAxis_;
    UserPosition cursor_;
    Colour foreColor_ = kBlack;
    Colour backColor_ = kWhite;
    bool fontTransparent_ = true;
    bool autoRedraw_ = true;
    Pen pen_;
    Font font_;
};

} // namespace terravo
