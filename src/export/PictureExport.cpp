#include "export/PictureExport.h"

#include "plot2d/PictureFile.h"
#include "plot2d/RasterSurface.h"
#include "plot2d/SurfaceFont.h"
#include "plot2d/SvgSurface.h"
#include "util/AppError.h"
#include "util/modUtilita.h"

#include <QFileInfo>
#include <QIODevice>
#include <QPdfWriter>
#include <QXmlStreamWriter>

#include <algorithm>
#include <array>
#include <exception>
#include <utility>

namespace terravo {
namespace {

constexpr int kPdfDotsPerInch = 1200;
constexpr double kMarginMillimetres = 10;

// The device that Qt's writers write to. They know no exceptions: the first one is kept, and what
// follows it is dropped.
class OutputDevice : public QIODevice {
public:
    explicit OutputDevice(OutputFile& file) : file_(file) { open(QIODevice::WriteOnly); }
    [[nodiscard]] bool isSequential() const override { return true; }

    void Finish() {
        if (failure_) {
            std::rethrow_exception(failure_);
        }
        file_.Commit();
    }

protected:
    qint64 readData(char* /*data*/, qint64 /*size*/) override { return -1; }
    qint64 writeData(const char* data, qint64 size) override {
        if (!failure_) {
            try {
                file_.Append({data, static_cast<std::size_t>(size)});
            } catch (const std::exception&) {
                failure_ = std::current_exception();
            }
        }
        return failure_ ? -1 : size;
    }

private:
    OutputFile& file_;
    std::exception_ptr failure_;
};

// Brings a painter back to its state, on every way out of a drawing.
class KeptState {
public:
    explicit KeptState(QPainter& painter) : painter_(painter) { painter_.save(); }
    KeptState(const KeptState&) = delete;
    KeptState& operator=(const KeptState&) = delete;
    ~KeptState() { painter_.restore(); }

private:
    QPainter& painter_;
};

QRectF Whole(const Picture& picture) {
    return {0, 0, static_cast<double>(picture.width), static_cast<double>(picture.height)};
}

[[noreturn]] void ThrowNotBegun(const std::string& path) {
    throw AppError(ErrorNumber::kDeviceIo, path, path + ": the picture cannot be begun.");
}

bool WritePng(const OutputTarget& target, const Picture& picture) {
    RasterSurface surface(picture.width, picture.height, picture.pixelRatio);
    surface.SetBackColor(kBlack);
    surface.Resize(picture.width, picture.height);
    if (!picture.draw(surface)) {
        return false;
    }
    SavePicture(surface.Image(), target);
    return true;
}

bool WriteSvg(const OutputTarget& target, const Picture& picture, Paper paper) {
    OutputFile file(target);
    OutputDevice out(file);
    QXmlStreamWriter xml(&out);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(0);
    SvgSurface surface(xml, picture.width, picture.height, picture.pixelRatio, paper,
                       PrintableText(picture.title));
    if (!picture.draw(surface)) {
        return false;
    }
    xml.writeEndDocument();
    out.Finish();
    return true;
}

bool WritePdf(const OutputTarget& target, const Picture& picture, const VectorChoice& choice) {
    OutputFile file(target);
    OutputDevice out(file);
    QPdfWriter pdf(&out);
    pdf.setTitle(PrintableText(picture.title));
    pdf.setCreator(QStringLiteral("Terravo"));
    pdf.setResolution(kPdfDotsPerInch);
    pdf.setPageLayout(PageAcross(choice.pageSize));
    // The painter's origin is the corner inside the margins.
    const QRectF room({0, 0}, QSizeF(pdf.pageLayout().paintRectPixels(kPdfDotsPerInch).size()));
    QPainter painter;
    if (!painter.begin(&pdf)) {
        ThrowNotBegun(target.path);
    }
    const bool drawn = DrawFitted(painter, room, picture, choice.paper);
    if (!painter.end()) {
        ThrowNotBegun(target.path);
    }
    if (drawn) {
        out.Finish();
    }
    return drawn;
}

} // namespace

std::optional<PictureKind> PictureKindOf(const std::string& path) {
    const QString suffix = QFileInfo(QString::fromStdString(path)).suffix().toLower();
    if (suffix.isEmpty() || suffix == QLatin1String("png")) {
        return PictureKind::Png;
    }
    if (suffix == QLatin1String("svg")) {
        return PictureKind::Svg;
    }
    if (suffix == QLatin1String("pdf")) {
        return PictureKind::Pdf;
    }
    return std::nullopt;
}

std::optional<QPageSize::PageSizeId> PaperSizeOf(const QString& name) {
    static const std::array<std::pair<QLatin1String, QPageSize::PageSizeId>, 6> kSizes{
        {{QLatin1String("a4"), QPageSize::A4},
         {QLatin1String("a3"), QPageSize::A3},
         {QLatin1String("a2"), QPageSize::A2},
         {QLatin1String("a1"), QPageSize::A1},
         {QLatin1String("a0"), QPageSize::A0},
         {QLatin1String("letter"), QPageSize::Letter}}};
    const QString wanted = name.toLower();
    const auto* const found = std::find_if(
        kSizes.begin(), kSizes.end(), [&wanted](const auto& size) { return size.first == wanted; });
    return found == kSizes.end() ? std::nullopt : std::optional(found->second);
}

QPageLayout PageAcross(QPageSize::PageSizeId size) {
    const QMarginsF margins(kMarginMillimetres, kMarginMillimetres, kMarginMillimetres,
                            kMarginMillimetres);
    return {QPageSize(size), QPageLayout::Landscape, margins, QPageLayout::Millimeter};
}

bool DrawFitted(QPainter& painter, const QRectF& room, const Picture& picture, Paper paper) {
    const double scale = std::min(room.width() / picture.width, room.height() / picture.height);
    const bool isWhole = modUtilita::IsExactly(scale, 1) && room.topLeft().isNull();
    const KeptState kept(painter);
    if (!isWhole) {
        painter.translate(room.center() -
                          QPointF(picture.width * scale / 2, picture.height * scale / 2));
        painter.scale(scale, scale);
        painter.setClipRect(Whole(picture));
    }
    PainterSurface surface(painter, picture.width, picture.height, picture.pixelRatio, paper);
    return picture.draw(surface);
}

bool WritePicture(const OutputTarget& target, PictureKind kind, const Picture& picture,
                  const VectorChoice& choice) {
    switch (kind) {
    case PictureKind::Svg:
        return WriteSvg(target, picture, choice.paper);
    case PictureKind::Pdf:
        return WritePdf(target, picture, choice);
    case PictureKind::Png:
        break;
    }
    return WritePng(target, picture);
}

} // namespace terravo
