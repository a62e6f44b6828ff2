// A small plan of points, to see at once whether they lie as they should.
//
// Data: points that somebody else owns, copied. Method: dots at one scale for both axes, easting to
// the right and northing up, coloured by height.
#pragma once

#include "survey/PointSet.h"

#include <QWidget>

class PlanPreview : public QWidget {
    Q_OBJECT

public:
    explicit PlanPreview(QWidget* parent);

    void Show(const terravo::PointSet& points);
    [[nodiscard]] QSize sizeHint() const override { return {220, 200}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {140, 110}; }

    /// Where a point is drawn, in pixels of the widget.
    [[nodiscard]] QPointF PlaceOf(double x, double y) const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    terravo::PointSet points_;
};
