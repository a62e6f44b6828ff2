// Mouse, wheel and keys of the sheet's view.
#include "app/windows/SheetView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <cmath>

void SheetView::SetTool(SheetTool tool) {
    if (tool == tool_) {
        return;
    }
    tool_ = tool;
    drag_.reset();
    measure_.Clear();
    draft_.Clear();
    measuresByKeys_ = false;
    ShowCursor();
    TellMeasured();
    emit ToolChanged();
    update();
}

void SheetView::EndTool() {
    drag_.reset();
    SetTool(SheetTool::Pan);
    ShowCursor();
    update();
}

void SheetView::ShowCursor() {
    const SheetTool tool = drag_ ? drag_->tool : tool_;
    setCursor(tool == SheetTool::Pan       ? (drag_ ? Qt::ClosedHandCursor : Qt::OpenHandCursor)
              : tool == SheetTool::MoveMap ? Qt::SizeAllCursor
                                           : Qt::CrossCursor);
}

void SheetView::wheelEvent(QWheelEvent* event) {
    constexpr double kStep = 1.2;
    constexpr double kNotch = 120; // eighths of a degree, times 15
    const double notches = event->angleDelta().y() / kNotch;
    if (notches != 0 && !drag_) {
        Zoom(std::pow(kStep, notches), event->position());
    }
    event->accept();
}

void SheetView::mousePressEvent(QMouseEvent* event) {
    if (!scene_ || drag_) {
        return;
    }
    const bool isLeft = event->button() == Qt::LeftButton;
    if (event->button() == Qt::MiddleButton) {
        drag_ = Drag{SheetTool::Pan, event->position(), event->position()};
    } else if (isLeft && tool_ == SheetTool::Measure && event->modifiers() == Qt::NoModifier) {
        MeasureAt(event->position());
    } else if (isLeft && tool_ >= SheetTool::PlaceHeight && event->modifiers() == Qt::NoModifier) {
        measuresByKeys_ = false;
        ClickAt(event->position());
    } else if (isLeft) {
        const SheetTool tool = (event->modifiers() & Qt::ShiftModifier) != 0 ? SheetTool::ZoomToBox
                               : (event->modifiers() & Qt::ControlModifier) != 0
                                   ? SheetTool::MoveMap
                                   : tool_;
        drag_ = Drag{tool, event->position(), event->position()};
    }
    ShowCursor();
}

void SheetView::mouseMoveEvent(QMouseEvent* event) {
    const QPointF pixel = event->position();
    if (drag_) {
        if (drag_->tool == SheetTool::Pan) {
            Move(pixel - drag_->last);
        }
        drag_->last = pixel;
        update();
    }
    if (tool_ == SheetTool::Measure && scene_) {
        measuresByKeys_ = false;
        measure_.Point(PlanAt(pixel));
        TellMeasured();
        update();
    }
    if (tool_ >= SheetTool::Breakline && scene_) {
        measuresByKeys_ = false;
        draft_.Point(PlanAt(pixel));
        update();
    }
    if (scene_ && scene_->map.Contains(place_.ToPaper(pixel))) {
        const terravo::PlanPoint place = PlanAt(pixel);
        emit PointerMoved(place.x, place.y);
    } else {
        emit PointerLeft();
    }
}

void SheetView::mouseReleaseEvent(QMouseEvent* event) {
    if (drag_) {
        drag_->last = event->position();
        FinishDrag();
    }
}

// The click before has set the last vertex.
void SheetView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && tool_ >= SheetTool::Breakline && scene_) {
        emit LineEnded();
    } else {
        mousePressEvent(event);
    }
}

// Beside the map nothing can be meant.
void SheetView::ClickAt(QPointF pixel) {
    if (scene_->map.Contains(place_.ToPaper(pixel))) {
        const terravo::PlanPoint place = PlanAt(pixel);
        emit Clicked(place.x, place.y);
    }
}

// The space bar clicks in the middle of the widget; Enter ends a line, or clicks too.
bool SheetView::UseTool(int key) {
    const bool drawsLine = tool_ >= SheetTool::Breakline;
    if (key == Qt::Key_Backspace) {
        emit SteppedBack();
        return drawsLine;
    }
    if (drawsLine && key != Qt::Key_Space) {
        emit LineEnded();
        return true;
    }
    measuresByKeys_ = true;
    ClickAt(QRectF(rect()).center());
    update();
    return true;
}

void SheetView::FinishDrag() {
    const Drag drag = *drag_;
    drag_.reset();
    ShowCursor();
    const QPointF by = drag.last - drag.from;
    if (drag.tool == SheetTool::ZoomToBox) {
        ZoomToBox(QRectF(drag.from, drag.last).normalized());
        SetTool(SheetTool::Pan);
    } else if (drag.tool == SheetTool::MoveMap && !by.isNull()) {
        emit MapMoved(by.x() / place_.pixels, by.y() / place_.pixels);
    }
    update();
}

void SheetView::leaveEvent(QEvent* /*event*/) {
    emit PointerLeft();
}

void SheetView::MeasureAt(QPointF pixel) {
    measure_.Add(PlanAt(pixel));
    TellMeasured();
    update();
}

void SheetView::TellMeasured() {
    const std::optional<SheetDistance> result = measure_.Result();
    emit Measured(result && measureText_ ? measureText_(*result) : QString());
}

void SheetView::keyPressEvent(QKeyEvent* event) {
    if (!scene_ || !(TakeKey(*event) || TakeArrow(*event))) {
        QWidget::keyPressEvent(event);
    }
}

bool SheetView::TakeKey(const QKeyEvent& event) {
    constexpr double kStep = 1.25;
    const QPointF middle = QRectF(rect()).center();
    switch (event.key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal: // the same key without Shift on many keyboards
        Zoom(kStep, middle);
        return true;
    case Qt::Key_Minus:
        Zoom(1 / kStep, middle);
        return true;
    case Qt::Key_0:
    case Qt::Key_F:
        Fit();
        return true;
    case Qt::Key_1:
        ShowTrueSize();
        return true;
    case Qt::Key_Escape:
        if (tool_ == SheetTool::Pan && !drag_) {
            return false;
        }
        EndTool();
        return true;
    case Qt::Key_Backspace:
        return tool_ >= SheetTool::Breakline && UseTool(event.key());
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (tool_ >= SheetTool::PlaceHeight) {
            return UseTool(event.key());
        }
        if (tool_ != SheetTool::Measure) {
            return false;
        }
        measuresByKeys_ = true;
        MeasureAt(middle);
        return true;
    default:
        return false;
    }
}

// With Ctrl the map is moved on the paper, else the paper in the window, the other way.
bool SheetView::TakeArrow(const QKeyEvent& event) {
    constexpr double kStep = 48;   // pixels
    constexpr double kMapStep = 5; // millimetres
    const QPointF way = event.key() == Qt::Key_Left    ? QPointF(-1, 0)
                        : event.key() == Qt::Key_Right ? QPointF(1, 0)
                        : event.key() == Qt::Key_Up    ? QPointF(0, -1)
                        : event.key() == Qt::Key_Down  ? QPointF(0, 1)
                                                       : QPointF();
    if (way.isNull()) {
        return false;
    }
    if ((event.modifiers() & Qt::ControlModifier) != 0) {
        emit MapMoved(way.x() * kMapStep, way.y() * kMapStep);
        return true;
    }
    Move(-way * kStep);
    if (measuresByKeys_) {
        const terravo::PlanPoint middle = PlanAt(QRectF(rect()).center());
        if (tool_ >= SheetTool::Breakline) {
            draft_.Point(middle);
        } else {
            measure_.Point(middle);
            TellMeasured();
        }
    }
    return true;
}
