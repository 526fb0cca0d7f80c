#pragma once

#include <array>

#include "platform/linux/DescriptorWatcher.h"

namespace ui {

// Runs code on the main thread when the process is asked to end by SIGTERM, SIGINT or SIGHUP. One instance a
// process.
class TerminationSignals {
  public:
    TerminationSignals(platform::DescriptorWatcher& watcher, std::function<void()> action);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

  private:
    std::array<int, 2> pipe_{-1, -1};
    platform::Subscription readable_;
};

}  // namespace ui
