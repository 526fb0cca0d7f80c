#include "platform/x11/windows/WindowActivation.h"

#include <array>

namespace platform::x11 {

namespace {
constexpr std::uint32_t kSourcePager = 2;  // EWMH, source indication
}

WindowActivation::WindowActivation(XConnection& connection, const DesktopSource& desktops)
    : connection_(connection), desktops_(desktops) {
    const auto atoms = connection.intern(kAtomNames);
    activeWindow_ = atoms[0];
    desktop_ = atoms[1];
}

void WindowActivation::activate(WindowNumber window) const {
    const std::array<std::uint32_t, 3> data = {kSourcePager, desktops_.lastTime(), 0};
    sendRootMessage(connection_, static_cast<xcb_window_t>(window.value), activeWindow_, data);
    connection_.flush();
}

void WindowActivation::bringToUser(WindowNumber window) const {
    if (const auto current = desktops_.facts().current) {
        const std::array<std::uint32_t, 2> data = {*current, kSourcePager};
        sendRootMessage(connection_, static_cast<xcb_window_t>(window.value), desktop_, data);
    }
    activate(window);
}

}  // namespace platform::x11
