// A point and its surroundings, with their heights.
//
// Data: a close-up of the survey. Method: the point is in the middle, with a ring; triangles are
// thin lines, excluded points crosses; heights stand beside the points as long as none covers
// another.
#pragma once

#include "survey/CloseUp.h"

#include <QWidget>

#include <optional>

class CloseUpView : public QWidget {
    Q_OBJECT

public:
    explicit CloseUpView(QWidget* parent);

    /// @param decimalSeparator  of the heights.
    void Show(std::optional<terravo::CloseUp> view, char decimalSeparator);
    [[nodiscard]] QSize sizeHint() const override { return {300, 220}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {120, 90}; }

    /// Where a place is drawn, in pixels of the widget.
    [[nodiscard]] QPointF PlaceOf(terravo::PlanPoint place) const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void DrawHeights(QPainter& painter) const;

    std::optional<terravo::CloseUp> view_;
    char decimalSeparator_ = '.';
};
