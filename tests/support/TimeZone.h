#pragma once

#include <cstdlib>
#include <ctime>

namespace desktop_test {

// The process's local time zone (in the form of the variable TZ) while this lives; then the system's again.
class TimeZone {
  public:
    explicit TimeZone(const char* zone) {
        ::setenv("TZ", zone, 1);
        ::tzset();
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;
    ~TimeZone() {
        ::unsetenv("TZ");
        ::tzset();
    }
};

}  // namespace desktop_test
