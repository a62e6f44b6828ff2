// The look of the controls on every desktop: Fusion, readable on dark colours too.
#pragma once

#include <QIcon>
#include <QProxyStyle>

class ProgramStyle : public QProxyStyle {
    Q_OBJECT

public:
    ProgramStyle();

    /// Outlines of check boxes, option buttons, text boxes and frames in the colour of their text:
    /// the style's own are a darker background, which vanishes on a dark one.
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;

    /// The main contour window has no close button: it goes with the exit command.
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                       SubControl subControl, const QWidget* widget) const override;
};

/// The program's icon: three contour lines.
QIcon ProgramIcon();
