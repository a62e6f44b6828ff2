// A line that is being drawn on the sheet, the point that is chosen there, and lines that stay.
//
// Data: places of the survey. Method: clicks add vertices; until the line is ended, one more side
// leads to the pointer.
#pragma once

#include "triangulation/TriangleList.h"

#include <QPainter>

#include <functional>
#include <optional>
#include <vector>

/// A line that lies over the sheet.
struct KeptLine {
    std::vector<terravo::PlanPoint> vertices;
    bool closed = false; // a ring; else an arrow at the end says where the line leads
    bool isThin = false; // beside others
    QColor colour;
};

class SheetDraft {
public:
    void SetKept(std::vector<KeptLine> lines) { kept_ = std::move(lines); }
    /// @param closed  a ring: a side leads back to the first vertex.
    void Set(std::vector<terravo::PlanPoint> vertices, bool closed) {
        vertices_ = std::move(vertices);
        closed_ = closed;
    }
    void Point(std::optional<terravo::PlanPoint> place) { pointer_ = place; }
    void SetMark(std::optional<terravo::PlanPoint> place) { mark_ = place; }
    void Clear() {
        vertices_.clear();
        pointer_.reset();
    }

    /// @param toPixels  where a place of the survey is in the window.
    void Paint(QPainter& painter, const std::function<QPointF(terravo::PlanPoint)>& toPixels) const;

private:
    std::vector<KeptLine> kept_;
    std::vector<terravo::PlanPoint> vertices_;
    std::optional<terravo::PlanPoint> pointer_;
    std::optional<terravo::PlanPoint> mark_;
    bool closed_ = false;
};
