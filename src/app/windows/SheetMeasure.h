// Distance and azimuth between two places of a sheet.
//
// Data: up to two places of the survey. Method: a third click begins anew; until the second one the
// line leads to the pointer.
#pragma once

#include "plot2d/DrawCodes.h"
#include "triangulation/TriangleList.h"
#include "util/RunState.h"

#include <QPainter>
#include <QString>

#include <functional>
#include <optional>

struct SheetDistance {
    double distance = 0; // data units
    double azimuth = 0;  // degrees clockwise from the direction of y, 0 to 360
};

SheetDistance DistanceOf(terravo::PlanPoint from, terravo::PlanPoint to);

class SheetMeasure {
public:
    /// A click, or what stands for it.
    void Add(terravo::PlanPoint place);
    void Point(terravo::PlanPoint place) { pointer_ = place; }
    void Clear();

    /// What is measured so far; none before the first place.
    [[nodiscard]] std::optional<SheetDistance> Result() const;

    /// @param toPixels  where a place of the survey is in the window.
    void Paint(QPainter& painter, const std::function<QPointF(terravo::PlanPoint)>& toPixels,
               const QString& text) const;

private:
    [[nodiscard]] std::optional<terravo::PlanPoint> End() const {
        return second_ ? second_ : pointer_;
    }

    std::optional<terravo::PlanPoint> first_;
    std::optional<terravo::PlanPoint> second_;
    std::optional<terravo::PlanPoint> pointer_;
};
