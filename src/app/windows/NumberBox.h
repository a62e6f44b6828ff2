// A box for a number with decimals.
//
// Data: the text that is typed. Method: point and comma both mean the decimal sign. The box that
// this is made from takes one of them for a sign between thousands, which nobody types here, and
// drops it: 150,5 would become 1505.
#pragma once

#include <QDoubleSpinBox>

class NumberBox : public QDoubleSpinBox {
    Q_OBJECT

public:
    explicit NumberBox(QWidget* parent = nullptr);

protected:
    QValidator::State validate(QString& text, int& position) const override;
    double valueFromText(const QString& text) const override;

private:
    [[nodiscard]] QString WithSign(QString text) const;
};
