#include "programs/orvello/StartOver.h"

#include <signal.h>
#include <sys/time.h>
#include <unistd.h>

#include <cstring>

namespace {

char** arguments = nullptr;

// Runs in a signal handler: nothing here allocates.
void startOver(int /*signal*/) {
    char** kept = environ;
    for (char** variable = environ; *variable; ++variable)
        if (std::strncmp(*variable, "DISPLAY=", 8) != 0) *kept++ = *variable;
    *kept = nullptr;
    execve("/proc/self/exe", arguments, environ);
    _exit(1);
}

void setTimer(std::chrono::milliseconds duration) {
    const itimerval timer{{}, {duration.count() / 1000, duration.count() % 1000 * 1000}};
    setitimer(ITIMER_REAL, &timer, nullptr);
}

}  // namespace

StartOver::StartOver(std::chrono::milliseconds patience, char** argv) {
    arguments = argv;
    struct sigaction action {};
    action.sa_handler = startOver;
    action.sa_flags = SA_NODEFER;  // a blocked signal would stay blocked in the program that follows
    sigaction(SIGALRM, &action, nullptr);
    setTimer(patience);
}

StartOver::~StartOver() {
    setTimer(std::chrono::milliseconds::zero());
}
