#include "platform/x11/spaces/EwmhSpaceSwitching.h"

namespace platform::x11 {

SetCurrentSpaceEntry EwmhSpaceSwitching::resolveSetCurrentSpace(std::string_view name) const {
    if (name != "SLSManagedDisplaySetCurrentSpace" || !canSwitch_()) return {};
    return [this](ConnectionId, const std::string& /*displayIdentifier*/, ManagedSpaceId space) {
        sendCurrentDesktop(connection_, atoms_, static_cast<std::uint32_t>(space.value - 1), time_());
    };
}

}  // namespace platform::x11
