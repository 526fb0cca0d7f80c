#include "ui/shell/TerminationSignals.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace ui {

namespace {

constexpr std::array<int, 3> kSignals = {SIGTERM, SIGINT, SIGHUP};
volatile std::sig_atomic_t writeEnd = -1;  // all that a signal handler may touch

void handleSignal(int signal) {
    const int saved = errno;
    const char byte = static_cast<char>(signal);
    // A full pipe has said it already.
    [[maybe_unused]] const auto written = write(static_cast<int>(writeEnd), &byte, 1);
    errno = saved;
}

}  // namespace

TerminationSignals::TerminationSignals(platform::DescriptorWatcher& watcher, std::function<void()> action) {
    if (pipe2(pipe_.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
    writeEnd = pipe_[1];
    readable_ = watcher.watchReadable(pipe_[0], [this, action = std::move(action)] {
        std::array<char, 16> bytes{};
        if (read(pipe_[0], bytes.data(), bytes.size()) > 0) action();
    });
    struct sigaction handler {};
    handler.sa_handler = handleSignal;
    handler.sa_flags = SA_RESTART;
    for (const int signal : kSignals) sigaction(signal, &handler, nullptr);
}

TerminationSignals::~TerminationSignals() {
    for (const int signal : kSignals) std::signal(signal, SIG_DFL);
    readable_.cancel();
    for (const int end : pipe_)
        if (end >= 0) close(end);
}

}  // namespace ui
