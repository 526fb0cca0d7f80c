#include "platform/freedesktop/processes/DetachedProcess.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <vector>

#include "platform/freedesktop/bus/BusMessage.h"

namespace platform::freedesktop {

namespace {

// Runs between fork and exec: system calls only. The pipe closes when the program is started; a byte in it
// says that it was not.
[[noreturn]] void becomeProgram(char* const* arguments, char* const* environment, int report) {
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    ::signal(SIGPIPE, SIG_DFL);
    const int nothing = ::open("/dev/null", O_RDWR);
    ::dup2(nothing, STDIN_FILENO);
    ::dup2(nothing, STDOUT_FILENO);
    if (nothing > STDERR_FILENO) ::close(nothing);
    ::execvpe(arguments[0], arguments, environment);
    (void)!::write(report, "", 1);
    ::_exit(127);
}

// The program's parent ends at once, so that the system's first process is left to wait for it.
[[noreturn]] void startAndLeave(char* const* arguments, char* const* environment, int report) {
    ::setsid();
    const pid_t program = ::fork();
    if (program == 0) becomeProgram(arguments, environment, report);
    if (program < 0) (void)!::write(report, "", 1);
    ::_exit(0);
}

// This process's environment without what keeps our own libraries from starting a bus: the user's programs
// may.
std::vector<char*> environmentOfPrograms() {
    const auto ours = std::string("DBUS_SESSION_BUS_ADDRESS=") + kNoSessionBus;
    std::vector<char*> variables;
    for (char** variable = environ; *variable; ++variable)
        if (*variable != ours) variables.push_back(*variable);
    variables.push_back(nullptr);
    return variables;
}

bool closesSilently(int pipe) {
    char byte = 0;
    ssize_t count = 0;
    do {
        count = ::read(pipe, &byte, 1);
    } while (count < 0 && errno == EINTR);
    return count == 0;
}

}  // namespace

bool startDetached(const std::string& program, std::span<const std::string> arguments) {
    std::vector<char*> words = {const_cast<char*>(program.c_str())};
    for (const auto& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    auto environment = environmentOfPrograms();
    int report[2];
    if (::pipe2(report, O_CLOEXEC) != 0) return false;
    const pid_t starter = ::fork();
    if (starter == 0) startAndLeave(words.data(), environment.data(), report[1]);
    ::close(report[1]);
    const bool started = starter > 0 && closesSilently(report[0]);
    ::close(report[0]);
    while (starter > 0 && ::waitpid(starter, nullptr, 0) < 0 && errno == EINTR) {
    }
    return started;
}

}  // namespace platform::freedesktop
