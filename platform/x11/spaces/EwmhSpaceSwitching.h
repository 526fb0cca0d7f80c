#pragma once

#include "platform/Keys.h"
#include "platform/Spaces.h"
#include "platform/x11/spaces/EwmhDesktops.h"

namespace platform::x11 {

// Switches by the message _NET_CURRENT_DESKTOP, where the window manager says that it takes it. EWMH has
// nothing that shows or hides a desktop beside the current one.
class EwmhSpaceSwitching final : public SpaceSwitchingEntries {
  public:
    EwmhSpaceSwitching(XConnection& connection, const Atoms& atoms, const DesktopSource& desktops)
        : connection_(connection), atoms_(atoms), desktops_(desktops) {}

    [[nodiscard]] ConnectionId mainConnectionId() const override {
        return static_cast<ConnectionId>(connection_.descriptor());
    }
    [[nodiscard]] SetCurrentSpaceEntry resolveSetCurrentSpace(std::string_view name) const override;
    [[nodiscard]] SpaceListEntry resolveSpaceList(std::string_view /*name*/) const override { return {}; }

  private:
    XConnection& connection_;
    const Atoms& atoms_;
    const DesktopSource& desktops_;
};

// The shortcuts "move left a Space" and "move right a Space", which not every desktop has: this class moves
// one Space itself. No key ever gets to the user's programs, where it would mean something else.
class EwmhSpaceShortcuts final : public SpaceShortcuts {
  public:
    EwmhSpaceShortcuts(XConnection& connection, const Atoms& atoms, const DesktopSource& desktops)
        : connection_(connection), atoms_(atoms), desktops_(desktops) {}

    [[nodiscard]] std::optional<bool> isEnabled(int /*number*/) const override {
        return desktops_.canSwitch();
    }
    // Control with an arrow moves one Space when it goes down, unless there is none on that side.
    [[nodiscard]] bool post(const KeyEvent& event, Direction direction) override;

  private:
    XConnection& connection_;
    const Atoms& atoms_;
    const DesktopSource& desktops_;
};

}  // namespace platform::x11
