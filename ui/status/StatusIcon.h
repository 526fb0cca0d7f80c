#pragma once

#include <QColor>
#include <QPixmap>
#include <QWidget>
#include <optional>

#include "platform/Menus.h"

namespace ui {

// The application's mark in the desktop's bar: the silhouette of a luggage tag in a square of `points`.
[[nodiscard]] QPixmap statusIcon(const QColor& color, double points, double devicePixelRatio);
// The same for a bar that shows no title beside it, which is drawn into the square: the tag has the label's
// colour, and an eye with a slash takes its place while tags are hidden for screen-sharing. `ground` is what
// is behind; without it the icon can be told from any ground.
[[nodiscard]] QPixmap statusIcon(const platform::StatusTitle& title, const std::optional<QColor>& ground,
                                 double points, double devicePixelRatio);

// The status item in words, for tooltips and screen readers: "orvellos", "orvellos — Mail", "orvellos — Mail
// — Tags hidden for screen-share".
[[nodiscard]] QString statusWords(const platform::StatusTitle& title);
// Has a window of the status item's own say them.
void describeStatusItem(QWidget& widget, const platform::StatusTitle& title);

}  // namespace ui
