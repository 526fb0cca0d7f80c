#include "platform/freedesktop/processes/PosixChildProcesses.h"

namespace platform::freedesktop {

std::optional<int> PosixChildProcesses::run(const std::string& program,
                                            std::span<const std::string> arguments) {
    const auto child = spawn(locate_(program), arguments);
    if (child.error != 0) return std::nullopt;
    return exitStatusOf(child.process);
}

}  // namespace platform::freedesktop
