#include "app/windows/NumberBox.h"

NumberBox::NumberBox(QWidget* parent) : QDoubleSpinBox(parent) {
    QLocale plain = locale();
    plain.setNumberOptions(QLocale::RejectGroupSeparator | QLocale::OmitGroupSeparator);
    setLocale(plain);
}

QString NumberBox::WithSign(QString text) const {
    const QString sign = locale().decimalPoint();
    text.replace(QLatin1Char(','), sign);
    text.replace(QLatin1Char('.'), sign);
    return text;
}

QValidator::State NumberBox::validate(QString& text, int& position) const {
    text = WithSign(text);
    return QDoubleSpinBox::validate(text, position);
}

double NumberBox::valueFromText(const QString& text) const {
    return QDoubleSpinBox::valueFromText(WithSign(text));
}
