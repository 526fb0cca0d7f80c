#include "tests/support/Process.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace desktop_test {

namespace {

std::vector<char*> pointersTo(std::vector<std::string>& strings) {
    std::vector<char*> pointers;
    pointers.reserve(strings.size() + 1);
    for (auto& string : strings) pointers.push_back(string.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> assignments(const Environment& environment) {
    std::vector<std::string> result;
    for (const auto& [name, value] : environment) result.push_back(fmt::format("{}={}", name, value));
    return result;
}

std::string contents(int descriptor) {
    std::string text;
    std::array<char, 4096> part{};
    ssize_t count = 0;
    while ((count = ::pread(descriptor, part.data(), part.size(), static_cast<off_t>(text.size()))) > 0)
        text.append(part.data(), static_cast<std::size_t>(count));
    return text;
}

// Runs in the child between fork and exec: system calls only.
[[noreturn]] void becomeProgram(char* const* arguments, char* const* environment, pid_t parent, int output,
                                int error) {
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (::getppid() != parent) ::_exit(127);
    ::dup2(::open("/dev/null", O_RDONLY), STDIN_FILENO);
    ::dup2(output, STDOUT_FILENO);
    ::dup2(error, STDERR_FILENO);
    ::execvpe(arguments[0], arguments, environment);
    ::dprintf(STDERR_FILENO, "cannot start %s\n", arguments[0]);
    ::_exit(127);
}

}  // namespace

Process::Process(const std::vector<std::string>& command, const Environment& environment)
    : output_(::memfd_create("output", MFD_CLOEXEC)), error_(::memfd_create("error", MFD_CLOEXEC)) {
    auto words = command;
    auto variables = assignments(environment);
    const auto wordPointers = pointersTo(words);
    const auto variablePointers = pointersTo(variables);
    const pid_t parent = ::getpid();
    pid_ = ::fork();
    if (pid_ == 0) {
        becomeProgram(wordPointers.data(), variablePointers.data(), parent, output_.number(),
                      error_.number());
    }
    if (pid_ < 0) throw std::runtime_error("cannot fork");
    ::setpgid(pid_, pid_);  // here too, so that the group exists whichever side runs first
    handle_ = platform::freedesktop::FileDescriptor(static_cast<int>(::syscall(SYS_pidfd_open, pid_, 0)));
}

Process::Process(Process&& other) noexcept
    : output_(std::move(other.output_)),
      error_(std::move(other.error_)),
      pid_(std::exchange(other.pid_, -1)),
      handle_(std::move(other.handle_)),
      reaped_(other.reaped_),
      exitStatus_(other.exitStatus_) {}

Process& Process::operator=(Process&& other) noexcept {
    std::swap(output_, other.output_);
    std::swap(error_, other.error_);
    std::swap(pid_, other.pid_);
    std::swap(handle_, other.handle_);
    std::swap(reaped_, other.reaped_);
    std::swap(exitStatus_, other.exitStatus_);
    return *this;
}

std::string Process::standardOutput() const {
    return contents(output_.number());
}

std::string Process::standardError() const {
    return contents(error_.number());
}

bool Process::isRunning() {
    return pid_ > 0 && !wait(std::chrono::milliseconds(0));
}

std::optional<int> Process::wait(std::chrono::milliseconds deadline) {
    if (!reaped_) {
        if (!hasEnded(deadline)) return std::nullopt;
        reap();
    }
    return exitStatus_;
}

void Process::signal(int number) const {
    if (pid_ > 0 && !reaped_) ::kill(pid_, number);
}

void Process::stop() {
    constexpr std::chrono::seconds kPatience(5);
    if (pid_ <= 0 || reaped_) return;
    ::kill(-pid_, SIGTERM);
    ::kill(-pid_, SIGCONT);
    (void)hasEnded(kPatience);
    reap();
}

bool Process::hasEnded(std::chrono::milliseconds deadline) const {
    pollfd ended{handle_.number(), POLLIN, 0};
    return ::poll(&ended, 1, static_cast<int>(deadline.count())) > 0;
}

// The group is killed before its leader's id is given back to the system and may name someone else's.
void Process::reap() {
    int state = 0;
    ::kill(-pid_, SIGKILL);
    ::waitpid(pid_, &state, 0);
    exitStatus_ = WIFEXITED(state) ? WEXITSTATUS(state) : 128 + WTERMSIG(state);
    reaped_ = true;
}

CommandResult runCommand(const std::vector<std::string>& command, const Environment& environment,
                         std::chrono::milliseconds deadline) {
    Process process(command, environment);
    const auto status = process.wait(deadline);
    return {status, process.standardOutput(), process.standardError()};
}

std::vector<pid_t> processesWithEnvironment(const std::string& text) {
    std::vector<pid_t> found;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator("/proc", ignored)) {
        const auto name = entry.path().filename().string();
        if (!std::ranges::all_of(name, [](unsigned char c) { return std::isdigit(c) != 0; })) continue;
        std::ifstream file(entry.path() / "environ", std::ios::binary);
        const std::string environment((std::istreambuf_iterator<char>(file)),
                                      std::istreambuf_iterator<char>());
        if (environment.find(text) != std::string::npos) found.push_back(std::stoi(name));
    }
    return found;
}

}  // namespace desktop_test
