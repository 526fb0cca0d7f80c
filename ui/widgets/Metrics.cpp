#include "ui/widgets/Metrics.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <cmath>

namespace ui {

namespace {

constexpr double kUsualPoints = 10;
constexpr double kUsualDotsPerInch = 96;

double pointsOf(const QFont& font) {
    const auto* screen = QGuiApplication::primaryScreen();
    const double dotsPerInch = screen ? screen->logicalDotsPerInch() : kUsualDotsPerInch;
    if (font.pixelSize() > 0) return font.pixelSize() * 72 / kUsualDotsPerInch;
    return font.pointSizeF() * dotsPerInch / kUsualDotsPerInch;
}

QFont resized(QFont font, double factor) {
    const auto system = QGuiApplication::font();
    if (system.pixelSize() > 0)
        font.setPixelSize(static_cast<int>(std::lround(system.pixelSize() * factor)));
    else
        font.setPointSizeF(system.pointSizeF() * factor);
    return font;
}

}  // namespace

int scaled(int length) {
    const double factor = std::max(1.0, pointsOf(QGuiApplication::font()) / kUsualPoints);
    return static_cast<int>(std::lround(length * factor));
}

QFont scaledFont(double factor, QFont::Weight weight) {
    auto font = resized(QGuiApplication::font(), factor);
    font.setWeight(weight);
    return font;
}

QFont fixedFont(double factor) {
    return resized(QFontDatabase::systemFont(QFontDatabase::FixedFont), factor);
}

int controlHeight() {
    return std::max(scaled(28), QFontMetrics(QGuiApplication::font()).height() + 10);
}

}  // namespace ui
