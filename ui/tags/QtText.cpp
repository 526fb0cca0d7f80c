#include "ui/tags/QtText.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <algorithm>
#include <cmath>

namespace ui {

QFont heavySystemFont(double pixelSize) {
    QFont font = QGuiApplication::font();
    font.setWeight(QFont::ExtraBold);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(pixelSize))));
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

double QtTextMeasurer::heavyTextWidth(std::string_view text, double fontSize) const {
    const auto string = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    return QFontMetricsF(heavySystemFont(fontSize)).horizontalAdvance(string);
}

}  // namespace ui
