#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/freedesktop/processes/Programs.h"
#include "platform/freedesktop/processes/Spawn.h"
#include "platform/x11/spaces/EwmhDesktops.h"

namespace programs {

// The stand-in for the script runner, which moves on from that desktop, counted from 0.
inline platform::freedesktop::Program scriptRunner(std::optional<std::uint32_t> currentDesktop) {
    platform::freedesktop::Program program{
        platform::freedesktop::ProgramLocations().libexecProgram("osascript")};
    if (currentDesktop)
        program.environment.push_back(platform::x11::kCurrentDesktopVariable +
                                      ("=" + std::to_string(*currentDesktop)));
    return program;
}

}  // namespace programs
