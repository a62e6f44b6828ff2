#include "app/windows/ProgramStyle.h"

#include <QDir>
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

void DrawFrame(const QStyleOption& option, QPainter& painter) {
    QColor ink = option.palette.color(QPalette::WindowText);
    ink.setAlphaF(option.state & QStyle::State_HasFocus ? 1.0F : 0.4F);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ink, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
    painter.restore();
}

} // namespace

ProgramStyle::ProgramStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void ProgramStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                 QPainter* painter, const QWidget* widget) const {
    if (element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton) {
        DrawIndicator(*option, *painter, element == PE_IndicatorRadioButton);
    } else if (element == PE_FrameLineEdit || element == PE_FrameGroupBox) {
        DrawFrame(*option, *painter);
    } else {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

QRect ProgramStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                   SubControl subControl, const QWidget* widget) const {
    if (control == CC_TitleBar) {
        if (widget == nullptr || widget->objectName() != QLatin1String("frmProveFrame")) {
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
    return QProxyStyle::subControlRect(control, option, subControl, widget);
}

QIcon ProgramIcon() {
    QIcon icon;
    for (const QString& file : QDir(QStringLiteral(":/icons")).entryList()) {
        icon.addFile(QStringLiteral(":/icons/") + file);
    }
    return icon;
}
