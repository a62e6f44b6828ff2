#include "app/GradientButton.h"

#include <QLinearGradient>
#include <QPainter>

namespace {

constexpr double kCorner = 3;
constexpr int kPadding = 10;

QColor Mixed(const QColor& a, const QColor& b, double partOfB) {
    const auto mix = [partOfB](int from, int to) {
        return static_cast<int>(from + (to - from) * partOfB);
    };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
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
    gradient.setColorAt(0, isDown() ? end_ : start_);
    gradient.setColorAt(1, isDown() ? start_ : end_);
    const QColor ink = isEnabled() ? fore_ : Mixed(fore_, end_, 0.6);
    painter.setBrush(gradient);
    painter.setPen(hasFocus() ? QPen(ink, 2) : QPen(Mixed(ink, end_, 0.5), 1));
    painter.drawRoundedRect(box, kCorner, kCorner);
    painter.setPen(ink);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic, text());
}
