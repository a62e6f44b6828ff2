// The look of the controls on every desktop: Fusion, readable on dark colours too.
#pragma once

#include <QIcon>
#include <QProxyStyle>

class ProgramStyle : public QProxyStyle {
    Q_OBJECT

public:
    ProgramStyle();

    /// Check boxes and option buttons in the colour of their text: the style's own outline is a
    /// darker background, which vanishes on a dark one.
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;

    /// Documents have no close button: they go with the exit command.
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                       SubControl subControl, const QWidget* widget) const override;
};

/// The program's icon: three contour lines.
QIcon ProgramIcon();
