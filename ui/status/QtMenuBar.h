#pragma once

#include <QWidget>
#include <vector>

#include "platform/Menus.h"

namespace ui {

// The keys of the main menus, which work in every panel. Nothing of them is seen. Each key goes by what this
// desktop's programs use for it (Control), and by the key of its own place as well.
class QtMenuBar final : public platform::MenuBar {
  public:
    void setMainMenu(std::vector<platform::MainMenu> menus) override { menus_ = std::move(menus); }
    [[nodiscard]] bool isChosenBy(const platform::KeyEquivalent& equivalent, std::string_view text,
                                  std::uint64_t modifierFlags) const override;
    // Makes the keys work in a window.
    void attachTo(QWidget& window) const;

  private:
    std::vector<platform::MainMenu> menus_;
};

}  // namespace ui
