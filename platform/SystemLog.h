#pragma once

#include <string_view>

namespace platform {

// The system's log. Thread-safe; never fails toward the caller.
class SystemLog {
  public:
    virtual ~SystemLog() = default;

    // One entry of the program's own log, in a category ("general", "nav", "mc").
    virtual void write(std::string_view category, std::string_view message) = 0;
    // One process-level entry, which also goes to standard error with a line feed.
    virtual void writeGeneral(std::string_view message) = 0;
};

}  // namespace platform
