#include "platform/freedesktop/processes/Spawn.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <system_error>
#include <thread>
#include <vector>

#include "platform/freedesktop/bus/BusMessage.h"

namespace platform::freedesktop {

namespace {

// How a child begins, apart from its program.
class Beginning {
  public:
    Beginning() {
        posix_spawnattr_init(&attributes_);
        posix_spawn_file_actions_init(&actions_);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        sigaddset(&signals, SIGPIPE);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
        setFlags(0);
    }
    ~Beginning() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }
    Beginning(const Beginning&) = delete;
    Beginning& operator=(const Beginning&) = delete;

    void setStream(int stream, int descriptor) {
        posix_spawn_file_actions_adddup2(&actions_, descriptor, stream);
    }
    void connectToNothing(int stream) {
        posix_spawn_file_actions_addopen(&actions_, stream, "/dev/null", O_RDWR, 0);
    }
    void setOwnSession() { setFlags(POSIX_SPAWN_SETSID); }

    [[nodiscard]] Spawned start(const std::string& file, std::span<const std::string> arguments,
                                std::vector<char*> environment) const {
        std::vector<char*> words = {const_cast<char*>(file.c_str())};
        for (const auto& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
        words.push_back(nullptr);
        Spawned spawned;
        spawned.error = posix_spawnp(&spawned.process, file.c_str(), &actions_, &attributes_, words.data(),
                                     environment.data());
        return spawned;
    }

  private:
    void setFlags(int more) {
        const int flags = POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK | more;
        posix_spawnattr_setflags(&attributes_, static_cast<short>(flags));
    }

    posix_spawnattr_t attributes_{};
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

// This process's environment without what keeps our own libraries from starting a bus: the user's programs
// may.
std::vector<char*> environmentOfUsersPrograms() {
    const auto ours = std::string("DBUS_SESSION_BUS_ADDRESS=") + kNoSessionBus;
    std::vector<char*> words;
    for (char** word = environ; *word; ++word)
        if (*word != ours) words.push_back(*word);
    words.push_back(nullptr);
    return words;
}

}  // namespace

Spawned spawn(const Program& program, std::span<const std::string> arguments, const ChildStreams& streams) {
    Beginning beginning;
    if (streams.output) beginning.setStream(STDOUT_FILENO, *streams.output);
    if (streams.error) beginning.setStream(STDERR_FILENO, *streams.error);
    return beginning.start(program.file, arguments, environmentOf(program));
}

bool startDetached(const std::string& program, std::span<const std::string> arguments) {
    Beginning beginning;
    beginning.setOwnSession();
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO}) beginning.connectToNothing(stream);
    const auto spawned = beginning.start(program, arguments, environmentOfUsersPrograms());
    if (spawned.error != 0) return false;
    // The system keeps an ended child until its parent has waited for it; without a thread to wait, until
    // this process ends.
    try {
        std::thread([child = spawned.process] { (void)exitStatusOf(child); }).detach();
    } catch (const std::system_error&) {
    }
    return true;
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
