#pragma once

#include <QWidget>

#include "platform/Menus.h"

namespace ui {

// The status item in words, for tooltips and screen readers: "orvellos", "orvellos — Mail", "orvellos — Mail
// — Tags hidden for screen-share".
[[nodiscard]] QString statusWords(const platform::StatusTitle& title);
// Has a window of the status item's own say them.
void describeStatusItem(QWidget& widget, const platform::StatusTitle& title);

}  // namespace ui
