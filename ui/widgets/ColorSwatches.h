#pragma once

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "ui/widgets/ColorPanel.h"

class QHBoxLayout;

namespace ui {

class ColorSwatch;

// A row of the palette's colours, one of which is chosen, and a button for any other colour.
class ColorSwatches final : public QWidget {
  public:
    // Colours are hexadecimal texts: "#3B82F6".
    ColorSwatches(ColorPanel& colorPanel, const std::string& chosen,
                  std::function<void(const std::string&)> onChoose);

  protected:
    void resizeEvent(QResizeEvent* event) override;
    // The arrow keys go along the row. On a colour of the palette they choose it; any other is asked for.
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void choose(const std::string& colorHex);
    void showChoice();

    ColorPanel& colorPanel_;
    std::string chosen_;
    std::function<void(const std::string&)> onChoose_;
    std::vector<ColorSwatch*> swatches_;
    ColorSwatch* custom_ = nullptr;
};

// How far the circles are inside; what stands above them lines up with them in a row with as much room at its
// left.
inline constexpr int kAroundSwatch = 6;
[[nodiscard]] QHBoxLayout* makeRowAboveSwatches(QWidget* widget);

}  // namespace ui
