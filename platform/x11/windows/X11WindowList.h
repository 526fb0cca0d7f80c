#pragma once

#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include "platform/WindowList.h"
#include "platform/x11/windows/X11Window.h"

namespace platform::x11 {

// The window manager's windows and their desktops, read with waiting, in as many round trips for a thousand
// windows as for one.
class X11WindowList final : public WindowList {
  public:
    // Asks for the extension that the list needs; before another round trip this saves the list one of its
    // own.
    static void prefetch(const XConnection& connection);

    X11WindowList(XConnection& connection, const Atoms& atoms) : connection_(connection), atoms_(atoms) {}

    [[nodiscard]] std::optional<std::vector<WindowInfo>> copyWindowsExcludingDesktopElements() const override;

    // The Spaces of a window when the last list was read; empty for a window that was not in it.
    [[nodiscard]] std::vector<ManagedSpaceId> copySpacesForWindow(WindowNumber window) const;

  private:
    struct Listing {
        std::vector<xcb_window_t> windows;  // back to front
        Point origin;                       // of the main display on the root window
        std::uint32_t desktopCount = 0;
    };
    [[nodiscard]] std::optional<Listing> readListing() const;

    XConnection& connection_;
    const Atoms& atoms_;
    mutable std::unordered_map<xcb_window_t, std::optional<std::uint32_t>> desktops_;
    mutable std::uint32_t desktopCount_ = 0;
};

}  // namespace platform::x11
