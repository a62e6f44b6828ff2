#include "app/windows/GradientButton.h"

#include "app/windows/ColourContrast.h"

#include <QLinearGradient>
#include <QPainter>

#include <algorithm>

namespace {

constexpr double kCorner = 3;
constexpr int kPadding = 10;

// Dark text on a gradient out of black could not be read: the start then comes as near to the end
// as it has to.
QColor ReadableStart(const QColor& start, const QColor& end, const QColor& ink) {
    constexpr double kEnough = 4.5;
    constexpr double kStep = 0.05;
    double partOfEnd = 0;
    while (partOfEnd < 1 && Contrast(MixedColour(start, end, partOfEnd), ink) < kEnough) {
        partOfEnd += kStep;
    }
    return MixedColour(start, end, std::min(partOfEnd, 1.0));
}

} // namespace

GradientButton::GradientButton(QWidget* parent) : QPushButton(parent) {}

void GradientButton::SetGradient(QColor start, QColor end) {
    start_ = start;
    end_ = end;
    update();
}

void GradientButton::SetForeColour(QColor colour) {
    fore_ = colour;
    update();
}

QSize GradientButton::sizeHint() const {
    const QSize text = fontMetrics().size(Qt::TextShowMnemonic, this->text());
    return {text.width() + 2 * kPadding, text.height() + kPadding};
}

void GradientButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QLinearGradient gradient(box.topLeft(), box.bottomLeft());
    const QColor ink = isEnabled() ? fore_ : MixedColour(fore_, end_, 0.45);
    QColor start = ReadableStart(start_, end_, fore_);
    if (!isEnabled() && start != start_) {
        start = end_; // the paler ink needs all of the contrast
    }
    gradient.setColorAt(0, isDown() ? end_ : start);
    gradient.setColorAt(1, isDown() ? start : end_);
    painter.setBrush(gradient);
    painter.setPen(hasFocus() ? QPen(ink, 2) : QPen(MixedColour(ink, end_, 0.5), 1));
    painter.drawRoundedRect(box, kCorner, kCorner);
    painter.setPen(ink);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic, text());
}
