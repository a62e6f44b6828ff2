// A widget that shows a drawing surface and keeps its size.
//
// Data: the raster surface, as large as the widget in device pixels. Method: while the widget is
// being resized the old picture is shown stretched; shortly after the last change the surface takes
// the new size and whoever draws is asked to draw again.
#pragma once

#include "plot2d/RasterSurface.h"

#include <QTimer>
#include <QWidget>

#include <memory>
#include <optional>

class SurfaceView : public QWidget {
    Q_OBJECT

public:
    explicit SurfaceView(QWidget* parent = nullptr);

    /// The surface, made as large as the widget first.
    terravo::RasterSurface& FittedSurface();

    /// The surface as it is: the one that the last drawing went to.
    [[nodiscard]] const terravo::RasterSurface& Surface() const { return *surface_; }

    /// Background of the drawing, which is cleared.
    void SetBackground(terravo::Colour colour);

    /// Width and height of a pixel in user units.
    [[nodiscard]] QSizeF PixelInUnits() const;

    /// A ring at a place, in the coordinates of the drawing, and lines that lead to it; on the
    /// screen only.
    void SetMark(std::optional<terravo::UserPosition> place);

    /// The picture shown, for the clipboard.
    [[nodiscard]] QImage Picture() const { return surface_->Image(); }

signals:
    /// The size has settled; the picture is to be drawn again.
    void SizeSettled();
    /// The pointer is at this place, in the coordinates of the drawing.
    void PointerMoved(double x, double y);
    /// The left button went down, moved the pointer to this place, went up.
    void DragBegun();
    void Dragged(double x, double y);
    void DragEnded();
    /// The pointer has left.
    void PointerLeft();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    [[nodiscard]] QSize WantedSize() const;
    [[nodiscard]] bool Fits() const;
    void ClearTo(terravo::Colour colour);
    void DrawMark(QPainter& painter) const;

    std::unique_ptr<terravo::RasterSurface> surface_;
    double pixelRatio_ = 1;
    std::optional<terravo::UserPosition> mark_;
    terravo::Colour background_ = terravo::kBlack;
    QTimer settle_;
};
