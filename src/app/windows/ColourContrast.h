// Colours between others, and how well one is seen on another.
//
// Data: colours of the screen. Method: channels are mixed as they are stored; contrast goes by
// luminance as the eye weighs it.
#pragma once

#include <QColor>

/// @param partOfB  0 gives a, 1 gives b.
QColor MixedColour(const QColor& a, const QColor& b, double partOfB);

/// 1 for equal colours to 21 for black on white; from 4.5 on text is read with ease.
double Contrast(const QColor& a, const QColor& b);
