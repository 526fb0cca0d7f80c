#pragma once

#include <QWidget>

#include "orvellos/panels/About.h"

namespace ui {

// The about window's content, under the application's icon.
class AboutView final : public QWidget {
  public:
    explicit AboutView(const orvellos::About& about);
};

}  // namespace ui
