// Pictures handed out: PNG, SVG and PDF files, and pages of a printer.
//
// Data: the size of a picture in pixels and a function that draws it on any surface. Method: a PNG
// is drawn in pixels; for an SVG, a PDF or a page the picture is drawn anew as lines, polygons and
// texts, in the layout of that many pixels. A file appears under its name when it is complete.
#pragma once

#include "plot2d/PainterSurface.h"
#include "util/OutputFile.h"

#include <QPageLayout>
#include <QPageSize>
#include <QString>

#include <functional>
#include <optional>
#include <string>

namespace terravo {

enum class PictureKind { Png, Svg, Pdf };

/// The kind of a picture file by its extension, in any case; PNG for a name without one. Nothing
/// for any other extension.
std::optional<PictureKind> PictureKindOf(const std::string& path);

/// A picture to hand out.
struct Picture {
    int width = 1; ///< pixels; the same for the height
    int height = 1;
    double pixelRatio = 1; ///< kDotsPerInch times this
    std::string title;
    /// Draws it. False: it was stopped or failed, and the user knows.
    std::function<bool(DrawSurface&)> draw;
};

/// A4 to A0 or Letter by name, in any case; nothing for any other.
std::optional<QPageSize::PageSizeId> PaperSizeOf(const QString& name);

/// The page of a size across, with margins of 10 mm.
QPageLayout PageAcross(QPageSize::PageSizeId size);

struct VectorChoice {
    Paper paper = Paper::White;
    QPageSize::PageSizeId pageSize = QPageSize::A4; ///< of a PDF
};

/// Draws a picture as large as it fits into a rectangle of a painter's device, in its middle.
/// @return what the picture's own function returns.
bool DrawFitted(QPainter& painter, const QRectF& room, const Picture& picture, Paper paper);

/// Writes a picture as a file of a kind, whole or not at all. A PNG is always black; a PDF is one
/// page across.
/// @return false, with no file, when the picture's function returns false.
/// Throws AppError (kDeviceIo) when the file cannot be written.
bool WritePicture(const OutputTarget& target, PictureKind kind, const Picture& picture,
                  const VectorChoice& choice);

} // namespace terravo
