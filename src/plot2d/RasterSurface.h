// A drawing surface that paints a QImage, for windows and for picture files.
//
// Data: the persistent image (Format_RGB32) and, while AutoRedraw is off, a second image that only
// the screen shows. Method: lines and fills go straight into the image; text is drawn by QPainter
// without antialiasing, with a pixel size, a hinting and a family that are all chosen here, so that
// a picture has the same bytes under every platform plugin.
#pragma once

#include "plot2d/PixelSurface.h"

#include <QFont>
#include <QFontMetrics>
#include <QImage>

#include <functional>
#include <vector>

namespace terravo {

class RasterSurface : public PixelSurface {
public:
    /// An area of width x height device pixels in BackColor, at kDotsPerInch * pixelRatio.
    RasterSurface(int width, int height, double pixelRatio = 1.0);

    /// The persistent image. The reference stays valid; a copy is not changed by later drawing.
    [[nodiscard]] const QImage& Image() const { return image_; }

    /// What a window shows: the persistent image, or what was drawn over it while AutoRedraw is
    /// off.
    [[nodiscard]] const QImage& VisibleImage() const { return AutoRedraw() ? image_ : screen_; }

    /// Changes the size in device pixels. The pictures are lost: the area is painted in BackColor
    /// and waits for the next drawing. The user system is kept.
    void Resize(int width, int height);

    /// `repaint` is called at the first change of the visible image after MarkShown, and at
    /// Refresh; may be empty. A widget calls update() there and MarkShown when it has painted.
    void SetRepaintCallback(std::function<void()> repaint);
    void MarkShown() { repaintAsked_ = false; }

protected:
    PixelKernels::PixelBuffer Buffer() override;
    void DrawTextPixels(PixelPosition topLeft, std::string_view utf8, const Font& font,
                        Colour colour, std::optional<Colour> background) override;
    [[nodiscard]] TextSize MeasurePixels(std::string_view utf8, const Font& font) const override;
    void RefreshPixels() override;
    void AutoRedrawChanged() override;

private:
    struct LoadedFont {
        Font key;
        QFont font;
        QFontMetrics metrics;
    };

    [[nodiscard]] const LoadedFont& Load(const Font& font) const;
    [[nodiscard]] QImage& Target() { return AutoRedraw() ? image_ : screen_; }
    void AskRepaint();
    [[nodiscard]] QImage BlankImage() const;

    QImage image_;
    QImage screen_;
    std::function<void()> repaint_;
    bool repaintAsked_ = false;
    mutable std::vector<LoadedFont> fonts_;
};

} // namespace terravo
