// A button with a vertical colour gradient, as the colour scheme wants it.
#pragma once

#include <QColor>
#include <QPushButton>

class GradientButton : public QPushButton {
    Q_OBJECT

public:
    explicit GradientButton(QWidget* parent = nullptr);

    /// Colour at the top and at the bottom. Without a gradient the button is filled with the end
    /// colour.
    void SetGradient(QColor start, QColor end);
    void SetForeColour(QColor colour);
    [[nodiscard]] QColor StartColour() const { return start_; }
    [[nodiscard]] QColor EndColour() const { return end_; }
    [[nodiscard]] QColor ForeColour() const { return fore_; }

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor start_ = Qt::black;
    QColor end_ = QColor(33, 33, 33);
    QColor fore_ = Qt::white;
};
