#include "app/windows/SmoothSlider.h"

#include "app/windows/Controls.h"
#include "contour/smoothing/SmoothContours.h"
#include "util/NumberText.h"

#include <QBoxLayout>

#include <cmath>

using terravo::Text;

namespace {

constexpr double kSteps = 100; // of a whole way to the neighbouring level

} // namespace

SmoothSlider::SmoothSlider(const terravo::RunState& state, QWidget* parent)
    : QWidget(parent), state_(state),
      sldSmooth(Named(new QSlider(Qt::Horizontal, this), "sldSmooth")),
      lblSmooth(Named(new QLabel(this), "lblSmooth")) {
    sldSmooth->setRange(0, static_cast<int>(std::lround(kSteps * terravo::kMostFraction)));
    sldSmooth->setPageStep(5);
    sldSmooth->setToolTip(Caption(state_, Text::PanelSmoothHint));
    sldSmooth->setAccessibleName(Spoken(Caption(state_, Text::PanelSmooth)));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(sldSmooth);
    layout->addWidget(lblSmooth);
    setFocusProxy(sldSmooth);
    connect(sldSmooth, &QSlider::valueChanged, this, [this] {
        ShowValue();
        emit Changed();
    });
    ShowValue();
}

double SmoothSlider::Fraction() const {
    return sldSmooth->value() / kSteps;
}

void SmoothSlider::SetFraction(double fraction) {
    sldSmooth->setValue(static_cast<int>(std::lround(fraction * kSteps)));
    ShowValue();
}

void SmoothSlider::SetLargestStep(double step) {
    largestStep_ = step;
    ShowValue();
}

// Before the first sheet the step is not known.
void SmoothSlider::ShowValue() {
    QString text = Caption(state_, Text::SmoothExact);
    if (sldSmooth->value() > 0) {
        text = largestStep_ > 0 ? Caption(state_, Text::SmoothWithin)
                                      .arg(ToQString(terravo::NumberText::RoundedUp(
                                          Fraction() * largestStep_, 2, state_.decimalSeparator)))
                                : QString();
    }
    lblSmooth->setText(text);
    sldSmooth->setAccessibleDescription(text + QLatin1Char('\n') +
                                        Caption(state_, Text::PanelSmoothHint));
}
