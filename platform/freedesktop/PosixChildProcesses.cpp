#include "platform/freedesktop/PosixChildProcesses.h"

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

namespace platform::freedesktop {

namespace {

class SpawnAttributes {
  public:
    SpawnAttributes() {
        posix_spawnattr_init(&attributes_);
        sigset_t defaults;
        sigemptyset(&defaults);
        sigaddset(&defaults, SIGPIPE);
        posix_spawnattr_setsigdefault(&attributes_, &defaults);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnAttributes() { posix_spawnattr_destroy(&attributes_); }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;
    [[nodiscard]] const posix_spawnattr_t* get() const { return &attributes_; }

  private:
    posix_spawnattr_t attributes_{};
};

std::optional<int> exitStatusOf(pid_t child) {
    int status = 0;
    pid_t ended = 0;
    do {
        ended = waitpid(child, &status, 0);
    } while (ended < 0 && errno == EINTR);
    if (ended != child || !WIFEXITED(status)) return std::nullopt;
    return WEXITSTATUS(status);
}

}  // namespace

std::optional<int> PosixChildProcesses::run(const std::string& program,
                                            std::span<const std::string> arguments) {
    const auto file = locate_(program);
    std::vector<char*> argv = {const_cast<char*>(file.c_str())};
    for (const auto& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    const SpawnAttributes attributes;
    pid_t child = 0;
    if (posix_spawn(&child, file.c_str(), nullptr, attributes.get(), argv.data(), environ) != 0)
        return std::nullopt;
    return exitStatusOf(child);
}

}  // namespace platform::freedesktop
