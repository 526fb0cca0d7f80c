#pragma once

#include <sys/types.h>

#include <optional>
#include <span>
#include <string>

namespace platform::freedesktop {

// What a child's standard streams are, where they are not those of this process.
struct ChildStreams {
    std::optional<int> output = {};
    std::optional<int> error = {};
};
// Starts a child process of the program file with this process's environment. It reacts to a broken pipe as
// programs do by default, whatever this process does. Gives the error number when it cannot be started.
struct Spawned {
    pid_t process = -1;
    int error = 0;
};
[[nodiscard]] Spawned spawn(const std::string& file, std::span<const std::string> arguments,
                            const ChildStreams& streams = {});

// Waits for the child's end: its exit status; absent when a signal ended it, or there is no such child.
// SIGCHLD must not be ignored, or the status is lost.
[[nodiscard]] std::optional<int> exitStatusOf(pid_t child);

}  // namespace platform::freedesktop
