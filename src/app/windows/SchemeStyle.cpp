#include "app/windows/SchemeStyle.h"

#include "app/windows/GradientButton.h"
#include "app/windows/SurfaceView.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>

namespace {

bool TakesSchemeColours(const QWidget* widget) {
    return qobject_cast<const QCheckBox*>(widget) != nullptr ||
           qobject_cast<const QLineEdit*>(widget) != nullptr ||
           qobject_cast<const QComboBox*>(widget) != nullptr ||
           qobject_cast<const QRadioButton*>(widget) != nullptr ||
           qobject_cast<const QGroupBox*>(widget) != nullptr ||
           qobject_cast<const QListWidget*>(widget) != nullptr ||
           qobject_cast<const QLabel*>(widget) != nullptr ||
           qobject_cast<const SurfaceView*>(widget) != nullptr;
}

} // namespace

QColor ToQColor(terravo::Colour colour) {
    return {terravo::RedOf(colour), terravo::GreenOf(colour), terravo::BlueOf(colour)};
}

QPalette SchemePalette(const QPalette& base, const terravo::ColourScheme& scheme) {
    const QColor back = ToQColor(scheme.backColour);
    const QColor fore = ToQColor(scheme.foreColour);
    QPalette palette = base;
    for (const auto role : {QPalette::Window, QPalette::Base, QPalette::Button}) {
        palette.setColor(role, back);
    }
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, fore);
    }
    return palette;
}

void ApplyColourScheme(QWidget& window, const terravo::ColourScheme& scheme) {
    const QColor back = ToQColor(scheme.backColour);
    const QColor fore = ToQColor(scheme.foreColour);
    QPalette windowPalette = window.palette();
    windowPalette.setColor(QPalette::Window, back);
    window.setPalette(windowPalette);
    window.setAutoFillBackground(true);
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (auto* button = qobject_cast<GradientButton*>(widget)) {
            QFont font = button->font();
            font.setBold(true);
            button->setFont(font);
            button->SetForeColour(fore);
            button->SetGradient(Qt::black, back);
        } else if (TakesSchemeColours(widget)) {
            widget->setPalette(SchemePalette(widget->palette(), scheme));
        }
    }
}
