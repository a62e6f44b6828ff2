// The look of the controls on every desktop: Fusion, readable on dark colours too.
#pragma once

#include <QIcon>
#include <QProxyStyle>

class ProgramStyle : public QProxyStyle {
    Q_OBJECT

public:
    ProgramStyle();

    /// Outlines of check boxes, option buttons, text boxes, frames, tables and menus in the colour
    /// of their text: the style's own are a darker background, which vanishes on a dark one.
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;

    /// The lines between the entries of a menu likewise.
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    /// Menus have an outline.
    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override;

    /// The buttons of a maximised document at the end of the menu bar, in the colour of its text,
    /// and the outline of a number box.
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;

    /// The main contour window has no close button, in its title or in the menu bar: it goes with
    /// the exit command.
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption* option,
                                         const QSize& contents,
                                         const QWidget* widget) const override;
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                       SubControl subControl, const QWidget* widget) const override;
};

/// The program's icon: three contour lines.
QIcon ProgramIcon();
