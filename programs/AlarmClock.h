#pragma once

#include <signal.h>
#include <sys/time.h>

#include <chrono>

// The process's alarm clock, for programs that may be kept waiting by what cannot be interrupted otherwise.
namespace programs {

inline void setAlarm(std::chrono::milliseconds delay) {
    const itimerval timer{{}, {delay.count() / 1000, delay.count() % 1000 * 1000}};
    setitimer(ITIMER_REAL, &timer, nullptr);
}

// Calls the signal handler when `delay` has passed. A parent that has the signal blocked passes that on.
inline void callAfter(std::chrono::milliseconds delay, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_NODEFER;  // a blocked signal would stay blocked in a program that the handler starts
    sigaction(SIGALRM, &action, nullptr);
    sigset_t alarm;
    sigemptyset(&alarm);
    sigaddset(&alarm, SIGALRM);
    sigprocmask(SIG_UNBLOCK, &alarm, nullptr);
    setAlarm(delay);
}

inline void cancelAlarm() {
    setAlarm(std::chrono::milliseconds::zero());
}

}  // namespace programs
