#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/Spaces.h"
#include "platform/linux/DesktopRow.h"
#include "platform/x11/spaces/EwmhDesktops.h"

namespace platform::x11 {

// Asks KWin for the ids of its desktops and the current one, waiting; absent without an answer.
using AskForDesktopRow = std::function<std::optional<DesktopRow>()>;

// An upper-case version 5 UUID for each desktop, of its number alone: "desktop-1" and so on.
[[nodiscard]] std::vector<std::string> desktopNumberUuids(std::uint32_t count);

// The desktops as Spaces of the one display "Main", with managed id = index + 1. A current one that is not
// among them counts as unknown.
[[nodiscard]] ManagedDisplaySpaces managedDisplaySpaces(DesktopRow desktops);

// The Space layout of any EWMH window manager, read anew, and waited for, at each question. On KWin a Space
// is known by its desktop's own id or not at all: while `askKwin` gives no id for every desktop, the answer
// is absent. While a window manager seems to be replaced it is read again for a little while.
class EwmhSpaceLayout final : public SpaceLayout {
  public:
    EwmhSpaceLayout(XConnection& connection, const Atoms& atoms, AskForDesktopRow askKwin)
        : connection_(connection), atoms_(atoms), askKwin_(std::move(askKwin)) {}

    [[nodiscard]] std::optional<ManagedDisplaySpaces> copyManagedDisplaySpaces() const override;

  private:
    struct Reading {
        std::optional<ManagedDisplaySpaces> answer;
        bool mayChangeSoon = false;
    };
    [[nodiscard]] Reading read() const;

    XConnection& connection_;
    const Atoms& atoms_;
    AskForDesktopRow askKwin_;
};

}  // namespace platform::x11
