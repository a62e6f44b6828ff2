#include "image/ImageCompare.h"

#include <QColor>
#include <QDir>
#include <QFileInfo>
#include <QString>

namespace terravo {
namespace {

QString PathIn(const char* folder, const std::string& name, const char* ending) {
    return QDir(QString::fromUtf8(folder)).filePath(QString::fromStdString(name) + ending);
}

bool SamePixel(const QImage& a, const QImage& b, int x, int y) {
    return a.valid(x, y) && b.valid(x, y) && a.pixel(x, y) == b.pixel(x, y);
}

// The picture in faint grey, differing pixels red.
QImage DifferenceOf(const QImage& picture, const QImage& baseline, int& differing) {
    QImage difference(picture.size().expandedTo(baseline.size()), QImage::Format_RGB32);
    differing = 0;
    for (int y = 0; y < difference.height(); ++y) {
        for (int x = 0; x < difference.width(); ++x) {
            const int grey = picture.valid(x, y) ? 192 + qGray(picture.pixel(x, y)) / 4 : 255;
            const bool same = SamePixel(picture, baseline, x, y);
            difference.setPixel(x, y, same ? qRgb(grey, grey, grey) : qRgb(255, 0, 0));
            differing += same ? 0 : 1;
        }
    }
    return difference;
}

bool Save(const QImage& image, const QString& path) {
    return QDir().mkpath(QFileInfo(path).path()) && image.save(path, "PNG");
}

} // namespace

testing::AssertionResult EqualsBaseline(const QImage& picture, const std::string& name) {
    const QString baselinePath = PathIn(TERRAVO_BASELINE_DIR, name, ".png");
    if (qEnvironmentVariable("TERRAVO_UPDATE_BASELINES") == QStringLiteral("1")) {
        return Save(picture, baselinePath)
                   ? testing::AssertionSuccess()
                   : testing::AssertionFailure() << "cannot write baseline " << name;
    }
    const QImage baseline = QImage(baselinePath).convertToFormat(QImage::Format_RGB32);
    int differing = 0;
    const QImage difference = DifferenceOf(picture, baseline, differing);
    if (differing == 0 && picture.size() == baseline.size()) {
        return testing::AssertionSuccess();
    }
    const QString outPath = PathIn(TERRAVO_IMAGE_OUT_DIR, name, ".out.png");
    Save(picture, outPath);
    Save(difference, PathIn(TERRAVO_IMAGE_OUT_DIR, name, ".diff.png"));
    return testing::AssertionFailure()
           << (baseline.isNull() ? "no baseline of that name; " : "") << differing
           << " pixels differ; see " << outPath.toStdString() << " and the .diff.png beside it";
}

} // namespace terravo
