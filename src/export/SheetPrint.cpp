#include "export/SheetPrint.h"

#include "export/SheetPainter.h"
#include "util/AppError.h"
#include "util/NumberText.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

constexpr double kMillimetresPerInch = 25.4;

// All that is drawn on the paper.
SheetBox ContentOf(const SheetScene& scene) {
    SheetBox box{scene.width, scene.height, 0, 0};
    for (const SheetLine& line : scene.lines) {
        for (const SheetPiece& piece : scene.PiecesOf(line)) {
            for (const SheetPoint p : scene.VerticesOf(piece)) {
                box = {std::min(box.left, p.x), std::min(box.top, p.y), std::max(box.right, p.x),
                       std::max(box.bottom, p.y)};
            }
        }
    }
    return box;
}

std::string Tenths(double millimetres) {
    return NumberText::General(std::round(millimetres * 10) / 10);
}

} // namespace

QPageLayout PageOfSheet(const SheetScene& scene) {
    const bool isAcross = scene.width > scene.height;
    const QSizeF paper(std::min(scene.width, scene.height), std::max(scene.width, scene.height));
    QPageLayout page(QPageSize(paper, QPageSize::Millimeter),
                     isAcross ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF(),
                     QPageLayout::Millimeter);
    page.setMode(QPageLayout::FullPageMode);
    return page;
}

std::optional<Statement> WhatPageCuts(const QPageLayout& page, const SheetScene& scene) {
    constexpr double kNothing = 1; // millimetres that nobody misses
    QPageLayout layout = page;
    layout.setUnits(QPageLayout::Millimeter);
    const QSizeF paper = layout.fullRect().size();
    if (paper.width() < scene.width - kNothing || paper.height() < scene.height - kNothing) {
        return Statement{Text::PrinterPageSmaller,
                         {Tenths(paper.width()), Tenths(paper.height()), Tenths(scene.width),
                          Tenths(scene.height)}};
    }
    const SheetBox content = ContentOf(scene);
    const QMarginsF margins = layout.minimumMargins();
    const double cut = std::max({margins.left() - content.left, margins.top() - content.top,
                                 content.right - (paper.width() - margins.right()),
                                 content.bottom - (paper.height() - margins.bottom())});
    if (cut > 0) {
        return Statement{Text::PrinterMargins, {Tenths(cut)}};
    }
    return std::nullopt;
}

void PaintOnPage(QPagedPaintDevice& device, const SheetScene& scene) {
    QPainter painter;
    if (!painter.begin(&device)) {
        throw AppError(ErrorNumber::kDeviceIo, "PaintOnPage", "The page cannot be begun.");
    }
    painter.scale(device.logicalDpiX() / kMillimetresPerInch,
                  device.logicalDpiY() / kMillimetresPerInch);
    SheetPaintWish wish;
    wish.finest = 0.01;
    wish.curves = true;
    PaintSheet(painter, scene, wish);
    if (!painter.end()) {
        throw AppError(ErrorNumber::kDeviceIo, "PaintOnPage", "The page cannot be printed.");
    }
}

} // namespace terravo
