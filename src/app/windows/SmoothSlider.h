// How round the lines of a sheet are to be, from exact to roundest, and what that costs in height.
//
// Data: the part of the way to the neighbouring level that a line may leave its height by, in
// hundredths; the largest step between two levels. Method: a slider with a text beneath it, which
// says the greatest difference in height while the slider moves, before any line is made.
#pragma once

#include "util/RunState.h"

#include <QLabel>
#include <QSlider>
#include <QWidget>

class SmoothSlider : public QWidget {
    Q_OBJECT

public:
    explicit SmoothSlider(const terravo::RunState& state, QWidget* parent = nullptr);

    /// 0: exact.
    [[nodiscard]] double Fraction() const;
    /// Taken as the nearest hundredth, where it is another one.
    void SetFraction(double fraction);
    /// Between neighbouring levels, data units; 0: not known.
    void SetLargestStep(double step);
    [[nodiscard]] QSlider& Slider() { return *sldSmooth; }

signals:
    void Changed();

private:
    void ShowValue();

    const terravo::RunState& state_;
    double largestStep_ = 0;
    QSlider* sldSmooth;
    QLabel* lblSmooth;
};
