#include "platform/freedesktop/processes/Spawn.h"

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string_view>
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

class FileActions {
  public:
    explicit FileActions(const ChildStreams& streams) {
        posix_spawn_file_actions_init(&actions_);
        if (streams.output) posix_spawn_file_actions_adddup2(&actions_, *streams.output, STDOUT_FILENO);
        if (streams.error) posix_spawn_file_actions_adddup2(&actions_, *streams.error, STDERR_FILENO);
    }
    ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;
    [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_{};
};

std::vector<char*> environmentOf(const Program& program) {
    std::vector<char*> words;
    for (const auto& word : program.environment) words.push_back(const_cast<char*>(word.c_str()));
    for (char** word = environ; *word; ++word) {
        const auto isReplaced = [word](const std::string& added) {
            return std::string_view(*word).starts_with(added.substr(0, added.find('=') + 1));
        };
        if (std::ranges::none_of(program.environment, isReplaced)) words.push_back(*word);
    }
    words.push_back(nullptr);
    return words;
}

}  // namespace

Spawned spawn(const Program& program, std::span<const std::string> arguments, const ChildStreams& streams) {
    const char* file = program.file.c_str();
    std::vector<char*> words = {const_cast<char*>(file)};
    for (const auto& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    auto environment = environmentOf(program);
    const SpawnAttributes attributes;
    const FileActions actions(streams);
    Spawned spawned;
    spawned.error = posix_spawn(&spawned.process, file, actions.get(), attributes.get(), words.data(),
                                environment.data());
    return spawned;
}

std::optional<int> exitStatusOf(pid_t child) {
    int status = 0;
    pid_t ended = 0;
    do {
        ended = waitpid(child, &status, 0);
    } while (ended < 0 && errno == EINTR);
    if (ended != child || !WIFEXITED(status)) return std::nullopt;
    return WEXITSTATUS(status);
}

}  // namespace platform::freedesktop
