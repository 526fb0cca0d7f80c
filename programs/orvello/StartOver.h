#pragma once

#include <chrono>

// While it lives, a process that is still waiting after `patience` starts over without a display, by
// replacing itself: what it could not find out from a server that does not answer, it then does not ask. One
// at a time, on the main thread.
class StartOver {
  public:
    // `argv` as main got it; it outlives this object.
    StartOver(std::chrono::milliseconds patience, char** argv);
    ~StartOver();
    StartOver(const StartOver&) = delete;
    StartOver& operator=(const StartOver&) = delete;
};
