#include "platform/x11/windows/WindowActivation.h"

#include <array>

namespace platform::x11 {

void WindowActivation::activate(WindowNumber window) const {
    const std::array<std::uint32_t, 3> data = {kSourcePager, desktops_.lastTime(), 0};
    sendRootMessage(connection_, static_cast<xcb_window_t>(window.value), atoms_[Atom::NetActiveWindow],
                    data);
    connection_.flush();
}

void WindowActivation::bringToUser(WindowNumber window) const {
    if (const auto current = desktops_.facts().current) {
        const std::array<std::uint32_t, 2> data = {*current, kSourcePager};
        sendRootMessage(connection_, static_cast<xcb_window_t>(window.value), atoms_[Atom::NetWmDesktop],
                        data);
    }
    activate(window);
}

}  // namespace platform::x11
