#include "platform/freedesktop/processes/PosixChildProcesses.h"

namespace platform::freedesktop {

std::optional<int> PosixChildProcesses::run(const std::string& program,
                                            std::span<const std::string> arguments) {
    const auto child = spawn(locate_(program), arguments);
    if (child.error != 0) return std::nullopt;
    return exitStatusOf(child.process);
}

std::optional<int> OpenCommand::run(const std::string& program, std::span<const std::string> arguments) {
    const bool opensAnew = program == "/usr/bin/open" && arguments.size() == 2 && arguments[0] == "-n";
    if (!opensAnew) return others_.run(program, arguments);
    return startDetached(arguments[1], {}) ? 0 : 1;
}

}  // namespace platform::freedesktop
