#include "programs/orvello/StartOver.h"

#include <unistd.h>

#include <cstring>

#include "programs/AlarmClock.h"

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

}  // namespace

StartOver::StartOver(std::chrono::milliseconds patience, char** argv) {
    arguments = argv;
    programs::callAfter(patience, startOver);
}

StartOver::~StartOver() {
    programs::cancelAlarm();
}
