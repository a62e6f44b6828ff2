#include "plot2d/SheetFont.h"

#include <array>

namespace terravo {

QFont SheetFont(bool bold) {
    Font wanted;
    wanted.name = "MS Sans Serif";
    wanted.pixelSize = kSheetFontSize;
    wanted.bold = bold;
    QFont font = MakeSurfaceFont(wanted);
    font.setStyleStrategy(QFont::PreferAntialias);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

double SheetTextWidth(const QString& text, bool bold) {
    static const std::array<QFontMetricsF, 2> kMetrics{QFontMetricsF(SheetFont(false)),
                                                       QFontMetricsF(SheetFont(true))};
    return kMetrics[bold ? 1 : 0].horizontalAdvance(text) / (kSheetFontSize * kCapitalPart);
}

} // namespace terravo
