// The colour scheme on a window's controls.
#pragma once

#include "app/settings/ColourScheme.h"
#include "plot2d/Colour.h"

#include <QColor>
#include <QPalette>
#include <QWidget>

/// A colour of the program as Qt's.
QColor ToQColor(terravo::Colour colour);

/// A palette with the scheme's background and text.
QPalette SchemePalette(const QPalette& base, const terravo::ColourScheme& scheme);

/// The scheme for whatever is not painted with it window by window: menus, dialogs, message boxes.
/// The accent marks what is selected and the links; buttons stand out a little from the background.
QPalette ApplicationPalette(const terravo::ColourScheme& scheme);

/// Paints a window with the scheme: its background; background and text of its check boxes, text
/// boxes, combo boxes, option buttons, frames, list boxes, labels and picture boxes; font, text and
/// gradient of its gradient buttons. Other controls are left alone.
void ApplyColourScheme(QWidget& window, const terravo::ColourScheme& scheme);
