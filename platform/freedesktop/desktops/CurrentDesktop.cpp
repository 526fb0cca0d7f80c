#include "platform/freedesktop/desktops/CurrentDesktop.h"

#include <cstdlib>

namespace platform::freedesktop {

std::string currentDesktops() {
    const char* names = std::getenv("XDG_CURRENT_DESKTOP");
    return names ? names : "";
}

bool isAmongDesktops(std::string_view name, std::string_view desktops) {
    return (":" + std::string(desktops) + ":").find(":" + std::string(name) + ":") != std::string::npos;
}

}  // namespace platform::freedesktop
