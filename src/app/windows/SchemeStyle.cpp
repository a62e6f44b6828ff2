#include "app/windows/SchemeStyle.h"

#include "app/windows/ColourContrast.h"
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

constexpr double kEnoughForText = 4.5;
constexpr double kEnoughToBeSeen = 1.3;

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

// Under white text, as the titles of the documents have it.
QColor SelectionColour(QColor accent, const QColor& back) {
    constexpr int kDarker = 110; // per cent
    while (Contrast(accent, Qt::white) < kEnoughForText) {
        accent = accent.darker(kDarker);
    }
    const QColor blue(40, 110, 160);
    return Contrast(accent, back) < kEnoughToBeSeen ? blue : accent;
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
        palette.setColor(QPalette::Disabled, role, MixedColour(back, fore, 0.52));
    }
    return palette;
}

QPalette ApplicationPalette(const terravo::ColourScheme& scheme) {
    const QColor back = ToQColor(scheme.backColour);
    const QColor fore = ToQColor(scheme.foreColour);
    const QColor accent = ToQColor(scheme.accentColour);
    const QColor link = Contrast(accent, back) < kEnoughForText ? fore : accent;
    QPalette palette = SchemePalette(QPalette(back, back), scheme);
    palette.setColor(QPalette::Button, MixedColour(back, fore, 0.12));
    palette.setColor(QPalette::AlternateBase, MixedColour(back, fore, 0.05));
    palette.setColor(QPalette::PlaceholderText, MixedColour(back, fore, 0.6));
    palette.setColor(QPalette::Link, link);
    palette.setColor(QPalette::LinkVisited, link);
    palette.setColor(QPalette::Highlight, SelectionColour(accent, back));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Disabled, QPalette::Button, MixedColour(back, fore, 0.03));
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
