#pragma once

#include <signal.h>
#include <sys/time.h>

#include <chrono>

namespace programs {

// The process's alarm clock, for what may wait for ever and cannot be told not to, as the X library's connect
// to a server that is stopped. One at a time, on the main thread.
class Alarm {
  public:
    // Calls the signal handler when `delay` has passed, unless this object is gone by then. A parent that has
    // the signal blocked passes that on.
    Alarm(std::chrono::milliseconds delay, void (*handler)(int)) {
        struct sigaction action {};
        action.sa_handler = handler;
        action.sa_flags = SA_NODEFER;  // a blocked signal would stay blocked in a program that it starts
        sigaction(SIGALRM, &action, nullptr);
        sigset_t alarm;
        sigemptyset(&alarm);
        sigaddset(&alarm, SIGALRM);
        sigprocmask(SIG_UNBLOCK, &alarm, nullptr);
        set(delay);
    }
    ~Alarm() { set(std::chrono::milliseconds::zero()); }
    Alarm(const Alarm&) = delete;
    Alarm& operator=(const Alarm&) = delete;

  private:
    static void set(std::chrono::milliseconds delay) {
        const itimerval timer{{}, {delay.count() / 1000, delay.count() % 1000 * 1000}};
        setitimer(ITIMER_REAL, &timer, nullptr);
    }
};

}  // namespace programs
