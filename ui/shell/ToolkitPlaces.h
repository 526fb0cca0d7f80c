#pragma once

#include <QPoint>

#include "platform/Screens.h"

namespace ui {

// Where the toolkit sees a place, and the way back. It counts from the top left, from screen to screen in
// device pixels and within a screen in points. Nothing is converted while there is no screen.
[[nodiscard]] QPoint toToolkit(platform::Point place, const platform::Screens& screens);
[[nodiscard]] platform::Point fromToolkit(QPoint place, const platform::Screens& screens);

}  // namespace ui
