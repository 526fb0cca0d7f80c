#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/Spaces.h"
#include "platform/x11/EwmhDesktops.h"

namespace platform::x11 {

// The lasting ids of the desktops in their order; absent when the window manager does not tell them.
using DesktopIds = std::function<std::optional<std::vector<std::string>>()>;

// An upper-case version 5 UUID for each desktop, of its number alone: "desktop-1" and so on.
[[nodiscard]] std::vector<std::string> desktopNumberUuids(std::uint32_t count);

// The desktops as Spaces of the one display "Main", with managed id = index + 1. `uuids` has one for each.
[[nodiscard]] ManagedDisplaySpaces managedDisplaySpaces(const EwmhDesktops& desktops,
                                                        std::vector<std::string> uuids);

// The Space layout of any EWMH window manager, read anew, and waited for, at each question. On KWin a Space
// is known by its desktop's own id or not at all: while `kwinIds` gives no id for every desktop, the answer
// is absent. What looks like a window manager being replaced is read again for a little while.
class EwmhSpaceLayout final : public SpaceLayout {
  public:
    EwmhSpaceLayout(XConnection& connection, const Atoms& atoms, DesktopIds kwinIds)
        : connection_(connection), atoms_(atoms), kwinIds_(std::move(kwinIds)) {}

    [[nodiscard]] std::optional<ManagedDisplaySpaces> copyManagedDisplaySpaces() const override;

  private:
    struct Reading {
        std::optional<ManagedDisplaySpaces> answer;
        bool mayChangeSoon = false;
    };
    [[nodiscard]] Reading read() const;

    XConnection& connection_;
    const Atoms& atoms_;
    DesktopIds kwinIds_;
};

}  // namespace platform::x11
