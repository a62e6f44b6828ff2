// A sheet as it lies on the desk: paper, zoomed at the pointer, moved by hand.
//
// Data: the finished sheet, and where on it the survey is; where the paper is in the widget.
// Method: the wheel and a drag change the place, and the kept picture (SheetFrame) follows; what is
// only for a moment, such as a rectangle or a distance, is painted over it. The sheet itself is
// changed by whoever made it: moving the map is only told.
#pragma once

#include "app/windows/SheetDraft.h"
#include "app/windows/SheetMeasure.h"
#include "export/SheetFrame.h"
#include "sheet/MapView.h"

#include <QTimer>
#include <QWidget>

#include <memory>
#include <optional>
#include <vector>

/// What a click or a drag with the left button does. With Shift it is ZoomToBox, with Ctrl MoveMap.
/// From PlaceHeight on a click is told; from Breakline on the clicks make a line. Those from Select
/// to Hole are about the surface.
enum class SheetTool {
    Pan,
    ZoomToBox,
    Measure,
    MoveMap,
    PlaceHeight,
    Select,
    Exclude,
    Height,
    Flip,
    Hold,
    Breakline,
    Boundary,
    Hole,
    Section,
    MeasurePolygon
};

class SheetView : public QWidget {
    Q_OBJECT

public:
    explicit SheetView(QWidget* parent = nullptr);

    /// Another sheet; its place in the window stays where the paper has the size of the one before.
    /// @param view  where the survey is on it.
    void Show(std::shared_ptr<const terravo::SheetScene> scene, const terravo::MapView& view);
    /// Draws a changed part over the sheet, until there is another one.
    void AddPatch(terravo::SheetScene patch);
    void DropPatches() { patches_.clear(); }
    [[nodiscard]] bool HasPatches() const { return !patches_.empty(); }
    [[nodiscard]] const terravo::SheetScene* Scene() const { return frame_.Scene(); }
    [[nodiscard]] std::shared_ptr<const terravo::SheetScene> SharedScene() const { return scene_; }

    /// Shown where there is no sheet.
    void SetHint(const QString& hint);
    /// How a distance is said.
    void SetMeasureText(std::function<QString(const SheetDistance&)> text);

    void SetTool(SheetTool tool);
    [[nodiscard]] SheetTool Tool() const { return tool_; }

    /// The vertices of a line that is being drawn.
    void SetDraft(std::vector<terravo::PlanPoint> vertices, bool closed);
    /// Lines that lie over the sheet until there are others.
    void SetKept(std::vector<KeptLine> lines);
    /// A place that is marked, or none.
    void SetMark(std::optional<terravo::PlanPoint> place);

    /// The whole paper, and the paper as large as it is.
    void Fit();
    void ShowTrueSize();
    /// Larger by a factor around a place of the widget.
    void Zoom(double factor, QPointF around);

    /// Where the paper is, in pixels of the widget.
    [[nodiscard]] const terravo::SheetPlace& Place() const { return place_; }
    [[nodiscard]] terravo::PlanPoint PlanAt(QPointF pixel) const;
    [[nodiscard]] QPointF PixelAt(terravo::PlanPoint place) const;

    [[nodiscard]] QSize sizeHint() const override { return {560, 460}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {160, 120}; }

signals:
    /// The pointer is over a place of the map.
    void PointerMoved(double x, double y);
    void PointerLeft();
    void ToolChanged();
    /// A distance, or none any more.
    void Measured(const QString& text);
    /// The map is to be moved on the paper: the place of the survey that was in its middle is to be
    /// that far from there, millimetres.
    void MapMoved(double right, double down);
    /// A tool of clicks was used at a place of the survey.
    void Clicked(double x, double y);
    /// The line that is being drawn is whole; its last vertex is taken back.
    void LineEnded();
    void SteppedBack();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Drag {
        SheetTool tool = SheetTool::Pan;
        QPointF from;
        QPointF last;
    };

    void SetPlace(const terravo::SheetPlace& place);
    void FollowFit();
    [[nodiscard]] terravo::SheetPlace FittedPlace() const;
    void PaintMovedMap(QPainter& painter, const QImage& picture) const;
    void PaintPatches(QPainter& painter) const;
    void PaintOverlay(QPainter& painter);
    void PaintHint(QPainter& painter);
    void Move(QPointF by);
    void FinishDrag();
    void ZoomToBox(const QRectF& box);
    void MeasureAt(QPointF pixel);
    void EndTool();
    void TellMeasured();
    void ShowCursor();
    bool TakeKey(const QKeyEvent& event);
    bool TakeArrow(const QKeyEvent& event);
    bool UseTool(int key);
    void ClickAt(QPointF pixel);

    terravo::SheetFrame frame_;
    std::shared_ptr<const terravo::SheetScene> scene_;
    std::vector<terravo::SheetScene> patches_;
    terravo::MapView view_;
    terravo::SheetPlace place_;
    bool isFitted_ = true; // until the user chooses another place
    bool isMoving_ = false;
    QTimer rest_; // after the last movement
    SheetTool tool_ = SheetTool::Pan;
    std::optional<Drag> drag_;
    bool measuresByKeys_ = false; // in the middle of the widget; so do the other tools
    SheetMeasure measure_;
    SheetDraft draft_;
    std::function<QString(const SheetDistance&)> measureText_;
    QString hint_;
};
