#pragma once

#include <functional>

#include "platform/Spaces.h"
#include "platform/x11/spaces/EwmhDesktops.h"

namespace platform::x11 {

// Switching by the _NET_CURRENT_DESKTOP message, which is there when the window manager says so. EWMH has
// nothing that shows or hides a desktop beside the current one.
class EwmhSpaceSwitching final : public SpaceSwitchingEntries {
  public:
    // `canSwitch` tells whether the window manager takes the message; `time` gives a server time stamp.
    EwmhSpaceSwitching(XConnection& connection, const Atoms& atoms, std::function<bool()> canSwitch,
                       std::function<xcb_timestamp_t()> time)
        : connection_(connection), atoms_(atoms), canSwitch_(std::move(canSwitch)), time_(std::move(time)) {}

    [[nodiscard]] ConnectionId mainConnectionId() const override {
        return static_cast<ConnectionId>(connection_.descriptor());
    }
    [[nodiscard]] SetCurrentSpaceEntry resolveSetCurrentSpace(std::string_view name) const override;
    [[nodiscard]] SpaceListEntry resolveSpaceList(std::string_view /*name*/) const override { return {}; }

  private:
    XConnection& connection_;
    const Atoms& atoms_;
    std::function<bool()> canSwitch_;
    std::function<xcb_timestamp_t()> time_;
};

}  // namespace platform::x11
