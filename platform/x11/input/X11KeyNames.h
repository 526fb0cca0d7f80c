#pragma once

#include "platform/Keys.h"
#include "platform/x11/input/X11Keyboard.h"

namespace platform::x11 {

// The texts of the keys in the layout that is in effect.
class X11KeyNames final : public KeyNames {
  public:
    explicit X11KeyNames(const X11Keyboard& keyboard) : keyboard_(keyboard) {}

    [[nodiscard]] std::string textOf(std::uint16_t keyCode) const override;

  private:
    const X11Keyboard& keyboard_;
};

}  // namespace platform::x11
