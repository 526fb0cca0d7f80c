#include "ui/shell/ToolkitPlaces.h"

#include <QGuiApplication>
#include <QRect>
#include <QScreen>
#include <cmath>

namespace ui {

namespace {

using platform::Point;
using platform::Screen;

// The upper left corner of the screen as the toolkit counts; the first of the screens is the main one.
QPoint cornerOf(const Screen& screen, const Screen& main) {
    const auto* primary = QGuiApplication::primaryScreen();
    const auto corner = primary ? primary->geometry().topLeft() : QPoint();
    const double scale = main.backingScaleFactor;
    return corner + QPoint(static_cast<int>(std::lround((screen.frame.minX() - main.frame.minX()) * scale)),
                           static_cast<int>(std::lround((main.frame.maxY() - screen.frame.maxY()) * scale)));
}

}  // namespace

QPoint toToolkit(Point place, const platform::Screens& screens) {
    const auto all = screens.screens();
    if (all.empty()) return {};
    const auto* found = platform::screenAt(all, place);
    const auto* screen = found ? found : &all.front();
    return cornerOf(*screen, all.front()) +
           QPoint(static_cast<int>(std::lround(place.x - screen->frame.minX())),
                  static_cast<int>(std::lround(screen->frame.maxY() - place.y)));
}

Point fromToolkit(QPoint place, const platform::Screens& screens) {
    const auto all = screens.screens();
    if (all.empty()) return {};
    const auto* found = &all.front();
    for (const auto& each : all) {
        const QSize size(static_cast<int>(each.frame.width), static_cast<int>(each.frame.height));
        if (QRect(cornerOf(each, all.front()), size).contains(place)) found = &each;
    }
    const auto within = place - cornerOf(*found, all.front());
    return {found->frame.minX() + within.x(), found->frame.maxY() - within.y()};
}

}  // namespace ui
