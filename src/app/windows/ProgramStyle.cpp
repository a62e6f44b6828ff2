#include "app/windows/ProgramStyle.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleFactory>
#include <QStyleOption>

#include <span>

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

// The shapes of packaging/icons/terravo.svg, on a square of 64: closed Bezier curves, a start and
// then two handles and an end for each piece.
constexpr double kIconSide = 64;
constexpr QPointF kOuterRing[] = {
    {29, 8.5}, {40, 5.5},  {58, 13}, {57.5, 29}, {57, 42},  {52, 56.5}, {38, 56.5}, {26, 56.5},
    {24, 49},  {16, 45.5}, {8, 42},  {5.5, 36},  {7.5, 28}, {10, 18},   {18, 11.5}, {29, 8.5}};
constexpr QPointF kInnerRing[] = {{35, 17.5},   {43, 17},   {48.5, 23.5}, {48, 31.5},
                                  {47.5, 40},   {45, 47},   {38, 47},     {29, 47},
                                  {29, 41.5},   {23, 38.5}, {17, 35.5},   {16, 31},
                                  {18.5, 26.5}, {21.5, 21}, {28, 18},     {35, 17.5}};
constexpr QPointF kSummit[] = {{36, 26},     {39.5, 26},   {40.5, 29}, {40, 32},
                               {39.5, 35.5}, {38, 38},     {35.5, 38}, {32.5, 38},
                               {31.5, 35},   {29, 34},     {26.5, 33}, {26.5, 30.5},
                               {28.5, 28.5}, {30.5, 26.5}, {33.5, 26}, {36, 26}};

QPainterPath ClosedCurve(std::span<const QPointF> at) {
    QPainterPath path(at[0]);
    for (std::size_t i = 1; i + 2 < at.size(); i += 3) {
        path.cubicTo(at[i], at[i + 1], at[i + 2]);
    }
    path.closeSubpath();
    return path;
}

QPixmap DrawIcon(int side) {
    constexpr double kCorner = 12;
    constexpr double kRingWidth = 4.5;
    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side / kIconSide, side / kIconSide);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(33, 33, 33));
    painter.drawRoundedRect(QRectF(0, 0, kIconSide, kIconSide), kCorner, kCorner);
    painter.setBrush(QColor(255, 90, 60));
    painter.drawPath(ClosedCurve(kSummit));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(90, 140, 255), kRingWidth));
    painter.drawPath(ClosedCurve(kOuterRing));
    painter.setPen(QPen(QColor(150, 240, 90), kRingWidth));
    painter.drawPath(ClosedCurve(kInnerRing));
    return picture;
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
    for (const int side : {16, 24, 32, 48, 64, 128, 256}) {
        icon.addPixmap(DrawIcon(side));
    }
    return icon;
}
