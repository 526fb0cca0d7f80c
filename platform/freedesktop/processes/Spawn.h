#pragma once

#include <sys/types.h>

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace platform::freedesktop {

// A program file, and what is in its environment ("NAME=value") besides, or instead of, what is in this
// process's.
struct Program {
    Program(std::string programFile, std::vector<std::string> added = {})
        : file(std::move(programFile)), environment(std::move(added)) {}

    std::string file;
    std::vector<std::string> environment;
};
// Gives the program that is known to the application under a path.
using LocateProgram = std::function<Program(const std::string& path)>;

// What a child's standard streams are, where they are not those of this process.
struct ChildStreams {
    std::optional<int> output = {};
    std::optional<int> error = {};
};
// Starts a child process of the program. It reacts to a broken pipe as programs do by default, whatever this
// process does. Gives the error number when it cannot be started.
struct Spawned {
    pid_t process = -1;
    int error = 0;
};
[[nodiscard]] Spawned spawn(const Program& program, std::span<const std::string> arguments,
                            const ChildStreams& streams = {});

// Waits for the child's end: its exit status; absent when a signal ended it, or there is no such child.
// SIGCHLD must not be ignored, or the status is lost.
[[nodiscard]] std::optional<int> exitStatusOf(pid_t child);

}  // namespace platform::freedesktop
