#pragma once

#include <fmt/format.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/RunLoop.h"
#include "platform/System.h"

namespace orvellos {

enum class LogCategory { General, Nav, Mc };

// Where log lines go besides the in-memory timeline. The composition root connects them once; an empty one
// is passed over, and without a clock the process's own clocks are read. All are used on the thread
// that logs: each must bear that.
struct DebugLogOutputs {
    platform::SystemLog* systemLog = nullptr;
    std::function<void(std::string_view)> standardError = nullptr;
    const platform::RunLoop* clock = nullptr;
    bool echoEnabled = false;  // the environment variable ORVELLO_DEBUG is exactly "1"
};

// Whether the text of ORVELLO_DEBUG (null when unset) asks for the echo.
[[nodiscard]] bool asksForDebugEcho(const char* environmentValue);

// Starts the process's log anew with these outputs and an empty timeline. What `outputs` points to outlives
// the log or is disconnected by connecting others.
void connectDebugLog(DebugLogOutputs outputs);

// The operations below may be called from any thread and never fail toward the caller.

// Writes to the system log and the timeline and, for Nav and Mc while the echo is on, to standard error.
void log(LogCategory category, std::string_view message);
// Logs in Mc, stamped with the milliseconds since `reference`, or with the time of day without one.
void logMC(std::optional<platform::Instant> reference, std::string_view message);
// Logs in Mc, stamped with the time of day.
inline void logTimeline(std::string_view message) {
    logMC(std::nullopt, message);
}
// A process-level message: the system's general log and standard error, not the timeline.
void logGeneral(std::string_view message);
// Whether log lines are echoed and labels shown in clear; verbose lines are written only then.
[[nodiscard]] bool debugEchoEnabled();
// Logs in General, and makes the text at all, only while verbose lines are written.
template <typename... Arguments>
void logVerbose(fmt::format_string<Arguments...> format, Arguments&&... arguments) {
    if (debugEchoEnabled())
        log(LogCategory::General, fmt::format(format, std::forward<Arguments>(arguments)...));
}
// The label as log lines may show it: "#" and four hexadecimal digits, or the label itself while debugging.
[[nodiscard]] std::string redactedLabel(std::string_view label);

void recordTimeline(std::string_view timelineLabel, std::string_view message);
// All lines, oldest first; at most 10,000.
[[nodiscard]] std::vector<std::string> timelineSnapshot();

}  // namespace orvellos
