#include "platform/freedesktop/processes/OpenCommand.h"

#include "platform/freedesktop/processes/DetachedProcess.h"

namespace platform::freedesktop {

std::optional<int> OpenCommand::run(const std::string& program, std::span<const std::string> arguments) {
    const bool opensAnew = program == "/usr/bin/open" && arguments.size() == 2 && arguments[0] == "-n";
    if (!opensAnew) return others_.run(program, arguments);
    return startDetached(arguments[1], {}) ? 0 : 1;
}

}  // namespace platform::freedesktop
