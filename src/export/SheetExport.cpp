#include "export/SheetExport.h"

#include "export/SheetPainter.h"
#include "export/SheetSvg.h"
#include "plot2d/PictureFile.h"
#include "util/AppError.h"

#include <QBuffer>
#include <QImage>
#include <QPageLayout>
#include <QPdfWriter>

#include <cmath>

namespace terravo {
namespace {

constexpr double kMillimetresPerInch = 25.4;
constexpr int kPdfDotsPerInch = 1200;
constexpr double kFinestOnPaper = 0.01; // millimetres

[[noreturn]] void ThrowNotBegun(const std::string& path) {
    throw AppError(ErrorNumber::kDeviceIo, path, path + ": the sheet cannot be begun.");
}

bool IsStopped(const SheetFileWish& wish) {
    return wish.stop != nullptr && wish.stop->IsStopRequested();
}

void WritePng(const OutputTarget& target, const SheetScene& scene, const SheetFileWish& file) {
    const double pixels = file.dotsPerInch / kMillimetresPerInch; // a millimetre
    const auto size = [pixels](double millimetres) {
        return static_cast<int>(std::lround(millimetres * pixels));
    };
    QImage picture(size(scene.width), size(scene.height), QImage::Format_RGB32);
    if (picture.isNull()) {
        throw AppError(ErrorNumber::kDrawing, target.path,
                       target.path + ": a sheet of " + std::to_string(size(scene.width)) + " x " +
                           std::to_string(size(scene.height)) +
                           " pixels is too large; fewer dots per inch make it smaller.");
    }
    picture.fill(Qt::white);
    picture.setDotsPerMeterX(static_cast<int>(std::lround(pixels * 1000)));
    picture.setDotsPerMeterY(picture.dotsPerMeterX());
    QPainter painter(&picture);
    painter.scale(picture.width() / scene.width, picture.height() / scene.height);
    constexpr double kPartOfPixel = 0.25;
    SheetPaintWish wish;
    wish.finest = kPartOfPixel / pixels;
    wish.stop = file.stop;
    PaintSheet(painter, scene, wish);
    painter.end();
    if (!IsStopped(file)) {
        SavePicture(picture, target);
    }
}

// The library notes when it wrote the file; a date that is always the same keeps the bytes so.
void ForgetDate(QByteArray& pdf) {
    const QByteArray key = "/CreationDate (D:";
    const QByteArray date = "20000101000000";
    if (const qsizetype at = pdf.indexOf(key); at >= 0) {
        pdf.replace(at + key.size(), date.size(), date);
    }
}

QPageLayout PageOf(const SheetScene& scene) {
    const bool isAcross = scene.width > scene.height;
    const QSizeF paper(std::min(scene.width, scene.height), std::max(scene.width, scene.height));
    return {QPageSize(paper, QPageSize::Millimeter, QString(), QPageSize::ExactMatch),
            isAcross ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF(),
            QPageLayout::Millimeter};
}

QByteArray PdfBytes(const std::string& path, std::span<const SheetScene> scenes,
                    const SheetFileWish& file) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter pdf(&buffer);
    pdf.setTitle(PrintableText(file.title));
    pdf.setCreator(QStringLiteral("Terravo"));
    pdf.setResolution(kPdfDotsPerInch);
    pdf.setPageLayout(PageOf(scenes.front()));
    QPainter painter;
    if (!painter.begin(&pdf)) {
        ThrowNotBegun(path);
    }
    const double dots = kPdfDotsPerInch / kMillimetresPerInch;
    painter.scale(dots, dots);
    SheetPaintWish wish;
    wish.finest = kFinestOnPaper;
    wish.curves = true;
    wish.stop = file.stop;
    for (const SheetScene& scene : scenes) {
        if (&scene != &scenes.front()) {
            pdf.setPageLayout(PageOf(scene));
            pdf.newPage();
        }
        PaintSheet(painter, scene, wish);
    }
    if (!painter.end()) {
        ThrowNotBegun(path);
    }
    QByteArray bytes = buffer.data();
    ForgetDate(bytes);
    return bytes;
}

void WritePdf(const OutputTarget& target, std::span<const SheetScene> scenes,
              const SheetFileWish& wish) {
    const QByteArray bytes = PdfBytes(target.path, scenes, wish);
    if (IsStopped(wish)) {
        return;
    }
    OutputFile file(target);
    file.Append({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    file.Commit();
}

// "name-3.png" of "name.png".
std::string NumberedPath(const std::string& path, std::size_t number) {
    const std::size_t name = path.find_last_of("/\\") + 1; // 0 where there is no folder
    const std::size_t dot = path.rfind('.');
    const std::size_t end = dot == std::string::npos || dot <= name ? path.size() : dot;
    return path.substr(0, end) + '-' + std::to_string(number) + path.substr(end);
}

} // namespace

bool WriteSheet(const OutputTarget& target, PictureKind kind, const SheetScene& scene,
                const SheetFileWish& wish) {
    switch (kind) {
    case PictureKind::Pdf:
        WritePdf(target, std::span(&scene, 1), wish);
        break;
    case PictureKind::Svg:
        WriteSheetSvg(target, scene, wish.title, SheetTextMeasure());
        return true;
    case PictureKind::Png:
        WritePng(target, scene, wish);
        break;
    }
    return !IsStopped(wish);
}

std::vector<std::string> WriteSheets(const OutputTarget& target, PictureKind kind,
                                     std::span<const SheetScene> scenes,
                                     const SheetFileWish& wish) {
    if (scenes.empty()) {
        return {};
    }
    if (kind == PictureKind::Pdf) {
        WritePdf(target, scenes, wish);
        return IsStopped(wish) ? std::vector<std::string>() : std::vector{target.path};
    }
    OutputGroup own;
    OutputGroup* group = target.group != nullptr ? target.group : &own;
    std::vector<std::string> paths;
    for (const SheetScene& scene : scenes) {
        paths.push_back(scenes.size() == 1 ? target.path
                                           : NumberedPath(target.path, paths.size() + 1));
        if (!WriteSheet({paths.back(), group}, kind, scene, wish)) {
            return {};
        }
    }
    own.Commit();
    return paths;
}

} // namespace terravo
