#pragma once

#include <QFont>

#include "platform/Windows.h"

namespace ui {

// The system font in the heavy weight that tags are written in, at a size in pixels.
[[nodiscard]] QFont heavySystemFont(double pixelSize);

class QtTextMeasurer final : public platform::TextMeasurer {
  public:
    [[nodiscard]] double heavyTextWidth(std::string_view text, double fontSize) const override;
};

}  // namespace ui
