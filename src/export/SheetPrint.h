// A sheet on the page of a printer, at true scale.
//
// Data: a finished sheet; the page as the printer says it is. Method: the upper left corner of the
// sheet is that of the page, and a millimetre is a millimetre. What the page cannot take is told
// before, never made smaller.
#pragma once

#include "sheet/SheetScene.h"

#include <QPageLayout>
#include <QPagedPaintDevice>

#include <optional>

namespace terravo {

/// The page of the size of a sheet, without margins of its own.
QPageLayout PageOfSheet(const SheetScene& scene);

/// Why a page would not show all of a sheet; nothing where it does.
std::optional<Statement> WhatPageCuts(const QPageLayout& page, const SheetScene& scene);

/// Paints a sheet on a device whose page is the whole paper.
/// Throws AppError (kDeviceIo) where the device cannot begin or end.
void PaintOnPage(QPagedPaintDevice& device, const SheetScene& scene);

} // namespace terravo
