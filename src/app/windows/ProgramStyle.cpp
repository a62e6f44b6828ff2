#include "app/windows/ProgramStyle.h"

#include <QAbstractScrollArea>
#include <QDir>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

namespace {

constexpr double kCheckMarkWidth = 1.8;

void DrawIndicator(const QStyleOption& option, QPainter& painter, bool round) {
    const QColor ink = option.palette.color(
        option.state & QStyle::State_Enabled ? QPalette::Active : QPalette::Disabled,
        QPalette::WindowText);
    const QRectF box = QRectF(option.rect).adjusted(1.5, 1.5, -1.5, -1.5);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ink, option.state & QStyle::State_HasFocus ? 2 : 1));
    painter.setBrush(option.palette.base());
    if (round) {
        painter.drawEllipse(box);
    } else {
        painter.drawRoundedRect(box, 2, 2);
    }
    if (option.state & QStyle::State_On) {
        if (round) {
            painter.setBrush(ink);
            painter.drawEllipse(box.center(), box.width() / 4, box.height() / 4);
        } else {
            painter.setPen(QPen(ink, kCheckMarkWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            const QPointF at = box.topLeft();
            const double unit = box.width() / 10;
            const QPointF mark[] = {at + QPointF(2, 5.2) * unit, at + QPointF(4.2, 7.6) * unit,
                                    at + QPointF(8, 2.6) * unit};
            painter.drawPolyline(mark, 3);
        }
    }
    painter.restore();
}

QColor FaintInk(const QStyleOption& option) {
    QColor ink = option.palette.color(QPalette::WindowText);
    ink.setAlphaF(0.4F);
    return ink;
}

void DrawFrame(const QStyleOption& option, QPainter& painter) {
    const bool hasFocus = (option.state & QStyle::State_HasFocus) != 0;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(
        QPen(hasFocus ? option.palette.color(QPalette::WindowText) : FaintInk(option), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
    painter.restore();
}

bool IsMainFrame(const QWidget* widget) {
    return widget != nullptr && widget->objectName() == QLatin1String("frmProveFrame");
}

// The buttons in the menu bar are those of the document that fills the parent.
QStyle::SubControls MdiControls(const QStyleOptionComplex& option, const QWidget* widget) {
    const auto* area = widget == nullptr ? nullptr : widget->window()->findChild<QMdiArea*>();
    const bool isMain = area != nullptr && IsMainFrame(area->currentSubWindow());
    return isMain ? option.subControls & ~QStyle::SC_MdiCloseButton : option.subControls;
}

// Lines on a square of 10 x 10, as the titles of the documents have them.
void DrawGlyph(QPainter& painter, QStyle::SubControl button) {
    if (button == QStyle::SC_MdiMinButton) {
        painter.drawLine(QLineF(1, 8, 9, 8));
    } else if (button == QStyle::SC_MdiNormalButton) {
        painter.drawRect(QRectF(1, 4, 5, 5));
        painter.drawPolyline(QPolygonF({{4, 4}, {4, 1}, {9, 1}, {9, 6}, {6, 6}}));
    } else {
        painter.drawLine(QLineF(1.5, 1.5, 8.5, 8.5));
        painter.drawLine(QLineF(8.5, 1.5, 1.5, 8.5));
    }
}

void DrawMdiButton(QPainter& painter, const QStyleOptionComplex& option, QStyle::SubControl button,
                   const QRect& box) {
    constexpr double kGlyph = 10;
    const QColor ink = option.palette.color(QPalette::WindowText);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (option.activeSubControls & button) {
        QColor ground = ink;
        ground.setAlphaF(option.state & QStyle::State_Sunken ? 0.35F : 0.18F);
        painter.fillRect(box, ground);
    }
    painter.setPen(QPen(ink, 1.4));
    painter.translate(QRectF(box).center() - QPointF(kGlyph / 2, kGlyph / 2));
    DrawGlyph(painter, button);
    painter.restore();
}

} // namespace

ProgramStyle::ProgramStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void ProgramStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                 QPainter* painter, const QWidget* widget) const {
    if (element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton) {
        DrawIndicator(*option, *painter, element == PE_IndicatorRadioButton);
    } else if (element == PE_FrameLineEdit || element == PE_FrameGroupBox ||
               element == PE_FrameMenu ||
               (element == PE_Frame && qobject_cast<const QAbstractScrollArea*>(widget))) {
        DrawFrame(*option, *painter);
    } else {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void ProgramStyle::drawControl(ControlElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
    const auto* entry = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element == CE_MenuItem && entry != nullptr && entry->text.isEmpty() &&
        entry->menuItemType == QStyleOptionMenuItem::Separator) {
        const QPoint middle = entry->rect.center();
        painter->setPen(FaintInk(*option));
        painter->drawLine(entry->rect.left() + 5, middle.y(), entry->rect.right() - 5, middle.y());
    } else {
        QProxyStyle::drawControl(element, option, painter, widget);
    }
}

int ProgramStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                              const QWidget* widget) const {
    return metric == PM_MenuPanelWidth ? 1 : QProxyStyle::pixelMetric(metric, option, widget);
}

void ProgramStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                      QPainter* painter, const QWidget* widget) const {
    if (control != CC_MdiControls) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        if (control == CC_SpinBox && (option->subControls & SC_SpinBoxFrame)) {
            DrawFrame(*option, *painter);
        }
        return;
    }
    for (const SubControl button : {SC_MdiMinButton, SC_MdiNormalButton, SC_MdiCloseButton}) {
        if (MdiControls(*option, widget) & button) {
            DrawMdiButton(*painter, *option, button,
                          subControlRect(control, option, button, widget));
        }
    }
}

QSize ProgramStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                     const QSize& contents, const QWidget* widget) const {
    const auto* complex = qstyleoption_cast<const QStyleOptionComplex*>(option);
    if (type != CT_MdiControls || complex == nullptr) {
        return QProxyStyle::sizeFromContents(type, option, contents, widget);
    }
    QStyleOptionComplex shown = *complex;
    shown.subControls = MdiControls(*complex, widget);
    return QProxyStyle::sizeFromContents(type, &shown, contents, widget);
}

QRect ProgramStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                   SubControl subControl, const QWidget* widget) const {
    if (control == CC_TitleBar) {
        if (!IsMainFrame(widget)) {
            return QProxyStyle::subControlRect(control, option, subControl, widget);
        }
        if (subControl == SC_TitleBarCloseButton) {
            return {};
        }
        // The buttons left of it move into its place.
        const QRect close =
            QProxyStyle::subControlRect(control, option, SC_TitleBarCloseButton, widget);
        const QRect own = QProxyStyle::subControlRect(control, option, subControl, widget);
        const bool isButton = subControl == SC_TitleBarMinButton ||
                              subControl == SC_TitleBarMaxButton ||
                              subControl == SC_TitleBarNormalButton;
        return isButton && own.isValid() ? own.translated(close.width() + 2, 0) : own;
    }
    if (control == CC_MdiControls) {
        QStyleOptionComplex shown = *option;
        shown.subControls = MdiControls(*option, widget);
        return shown.subControls & subControl
                   ? QProxyStyle::subControlRect(control, &shown, subControl, widget)
                   : QRect();
    }
    return QProxyStyle::subControlRect(control, option, subControl, widget);
}

QIcon ProgramIcon() {
    QIcon icon;
    for (const QString& file : QDir(QStringLiteral(":/icons")).entryList()) {
        icon.addFile(QStringLiteral(":/icons/") + file);
    }
    return icon;
}
