#pragma once

#include <functional>

#include "platform/Keys.h"
#include "platform/x11/spaces/EwmhDesktops.h"

namespace platform::x11 {

// The shortcuts "move left a Space" and "move right a Space" of a desktop that has no such keys everywhere:
// pressed through this class they move one Space themselves. No key ever gets to the user's programs, where
// it would mean something else.
class EwmhSpaceShortcuts final : public KeyPoster, public SymbolicHotKeys {
  public:
    struct Desktops {
        std::function<DesktopFacts()> facts;
        std::function<bool()> canSwitch;  // whether the window manager takes the message
        std::function<xcb_timestamp_t()> lastTime;
    };
    EwmhSpaceShortcuts(XConnection& connection, const Atoms& atoms, Desktops desktops)
        : connection_(connection), atoms_(atoms), desktops_(std::move(desktops)) {}

    // Control with an arrow moves one Space when it goes down, unless there is none on that side.
    [[nodiscard]] bool post(const KeyEvent& event, Direction direction) override;
    [[nodiscard]] std::optional<bool> isEnabled(int /*number*/) const override {
        return desktops_.canSwitch();
    }

  private:
    XConnection& connection_;
    const Atoms& atoms_;
    Desktops desktops_;
};

}  // namespace platform::x11
