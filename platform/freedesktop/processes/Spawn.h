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
struct Spawned {
    pid_t process = -1;
    int error = 0;  // its number, when the program could not be started
};
// Starts a child process of the program, found through PATH when its file is a bare name. It reacts to a
// broken pipe and to signals as programs do by default, whatever this process does.
[[nodiscard]] Spawned spawn(const Program& program, std::span<const std::string> arguments,
                            const ChildStreams& streams = {});

// Starts a program like `spawn`, to live on by itself: in a session of its own, with /dev/null for standard
// input and output, and with nobody who asks for its end. False when it could not be started.
[[nodiscard]] bool startDetached(const std::string& program, std::span<const std::string> arguments);

// Waits for the child's end: its exit status; absent when a signal ended it, or there is no such child.
// SIGCHLD must not be ignored, or the status is lost.
[[nodiscard]] std::optional<int> exitStatusOf(pid_t child);

}  // namespace platform::freedesktop
