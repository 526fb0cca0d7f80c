#include "platform/x11/spaces/EwmhSpaceShortcuts.h"

namespace platform::x11 {

bool EwmhSpaceShortcuts::post(const KeyEvent& event, Direction direction) {
    const auto desktops = desktops_.facts();
    if (direction != Direction::Down || event.modifierFlags != modifier::kControl || !desktops.current)
        return true;
    const auto current = *desktops.current;
    if (event.keyCode == key::kLeftArrow && current > 0)
        sendCurrentDesktop(connection_, atoms_, current - 1, desktops_.lastTime());
    if (event.keyCode == key::kRightArrow && current + 1 < desktops.count)
        sendCurrentDesktop(connection_, atoms_, current + 1, desktops_.lastTime());
    return true;
}

}  // namespace platform::x11
