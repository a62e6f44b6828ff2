// The picture of a sheet in a window, kept while it is moved.
//
// Data: the sheet with its index; where its corner is and how large a millimetre is, in pixels; the
// pixels. Method: moved by whole pixels, the picture is shifted and only the strips that come in
// are drawn, as sharp as all else. At another size it is drawn anew; while that goes on it may be
// coarse, without antialiasing, and is mended when it rests.
#pragma once

#include "sheet/SceneIndex.h"

#include <QImage>

#include <memory>

namespace terravo {

/// Where a sheet is in a window, in the window's pixels.
struct SheetPlace {
    double pixels = 1; // a millimetre
    QPointF corner;    // of the paper, left above

    [[nodiscard]] QPointF ToPixels(SheetPoint p) const {
        return {corner.x() + p.x * pixels, corner.y() + p.y * pixels};
    }
    [[nodiscard]] SheetPoint ToPaper(QPointF p) const {
        return {(p.x() - corner.x()) / pixels, (p.y() - corner.y()) / pixels};
    }
    bool operator==(const SheetPlace&) const = default;
};

class SheetFrame {
public:
    /// Another sheet; null: none.
    void SetScene(std::shared_ptr<const SheetScene> scene);
    [[nodiscard]] const SheetScene* Scene() const { return scene_.get(); }

    void SetSize(QSize pixels);
    /// Around the paper.
    void SetGround(const QColor& ground);

    /// The picture of the sheet at a place.
    /// @param moving  it may be coarse, where the last one that was not took long.
    const QImage& Picture(const SheetPlace& place, bool moving);

    /// Whether the last picture was coarse.
    [[nodiscard]] bool IsCoarse() const { return isCoarse_; }

private:
    [[nodiscard]] bool ShiftTo(const SheetPlace& place, bool moving);
    double Draw(const QRect& part);
    void DrawGround(QPainter& painter) const;
    void DrawSheet(QPainter& painter, const QRect& part);

    std::shared_ptr<const SheetScene> scene_;
    std::unique_ptr<SceneIndex> index_;
    QColor ground_ = Qt::gray;
    QImage picture_;
    SheetPlace place_;
    bool isValid_ = false;
    bool isCoarse_ = false;
    // Of the last picture, and of the last strips, that were not coarse.
    double milliseconds_ = 0;
    double stripMilliseconds_ = 0;
};

} // namespace terravo
