#include "platform/freedesktop/processes/StandardStreams.h"

#include <pthread.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <ctime>

namespace platform::freedesktop {

namespace {

// Keeps a broken pipe from ending the process while it lives: SIGPIPE goes to the writing thread, so it is
// held back there, and one that has come is taken away.
class BrokenPipeGuard {
  public:
    BrokenPipeGuard() {
        sigset_t pending;
        sigpending(&pending);
        wasPending_ = sigismember(&pending, SIGPIPE) == 1;
        sigemptyset(&brokenPipe_);
        sigaddset(&brokenPipe_, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &brokenPipe_, &before_);
    }
    BrokenPipeGuard(const BrokenPipeGuard&) = delete;
    BrokenPipeGuard& operator=(const BrokenPipeGuard&) = delete;
    ~BrokenPipeGuard() {
        constexpr timespec kNoWait{};
        if (!wasPending_) sigtimedwait(&brokenPipe_, nullptr, &kNoWait);
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }

  private:
    sigset_t brokenPipe_{};
    sigset_t before_{};
    bool wasPending_ = false;
};

void writeAll(int stream, std::string_view text) {
    const BrokenPipeGuard guard;
    while (!text.empty()) {
        const ssize_t written = ::write(stream, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

}  // namespace

void writeStandardOutput(std::string_view text) {
    writeAll(STDOUT_FILENO, text);
}

void writeStandardError(std::string_view text) {
    writeAll(STDERR_FILENO, text);
}

}  // namespace platform::freedesktop
