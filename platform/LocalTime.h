#pragma once

#include <ctime>
#include <string>

#include "platform/RunLoop.h"

namespace platform {

// The time of day in the local time zone, in a strftime format of numeric fields only, whose text no locale
// changes. Fractions of a second are cut off. Thread-safe.
[[nodiscard]] inline std::string localTimeText(WallTime time, const char* format) {
    const std::time_t whole =
        std::chrono::floor<std::chrono::seconds>(time).time_since_epoch() / std::chrono::seconds(1);
    std::tm fields{};
    localtime_r(&whole, &fields);
    char text[64];
    return {text, std::strftime(text, sizeof text, format, &fields)};
}

}  // namespace platform
