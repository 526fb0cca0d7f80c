#include "platform/x11/spaces/EwmhSpaceSwitching.h"

namespace platform::x11 {

SetCurrentSpaceEntry EwmhSpaceSwitching::resolveSetCurrentSpace(std::string_view name) const {
    if (name != "SLSManagedDisplaySetCurrentSpace" || !desktops_.canSwitch()) return {};
    return [this](ConnectionId, const std::string& /*displayIdentifier*/, ManagedSpaceId space) {
        sendCurrentDesktop(connection_, atoms_, static_cast<std::uint32_t>(space.value - 1),
                           desktops_.lastTime());
    };
}

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
