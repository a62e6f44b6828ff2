// What the windows say on their controls, and how the controls are called.
//
// Data: the texts of the run, which are UTF-8. Method: conversion; a screen reader hears a caption
// without the mark of its letter and without the colon that leads to a field.
#pragma once

#include "util/RunState.h"

#include <QString>

inline QString ToQString(const std::string& text) {
    return QString::fromStdString(text);
}

/// A title and what is to be known of it.
inline QString WithRemark(const QString& title, const QString& remark) {
    return title + QStringLiteral(" (") + remark + QLatin1Char(')');
}

inline QString Caption(const terravo::RunState& state, terravo::Text text) {
    return ToQString(state.texts[text]);
}

/// A caption as a screen reader says it.
inline QString Spoken(QString caption) {
    return caption.remove(QLatin1Char('&')).remove(QLatin1Char(':')).trimmed();
}

/// Gives a control its name, by which tests and scripts find it.
template <class Widget>
Widget* Named(Widget* widget, const char* name) {
    widget->setObjectName(QLatin1String(name));
    return widget;
}
