#include "orvellos/base/DebugLog.h"

#include <fmt/format.h>

#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <utility>

#include "platform/System.h"

namespace orvellos {

namespace {

using Outputs = std::shared_ptr<const DebugLogOutputs>;

constexpr std::size_t kMostLines = 10000;

struct CategoryNames {
    std::string_view systemLog;
    std::string_view timeline;
    std::string_view echoPrefix;  // empty: never echoed
};

struct State {
    std::mutex lock;
    Outputs outputs = std::make_shared<DebugLogOutputs>();
    std::deque<std::string> lines;
};

State& state() {
    static State instance;
    return instance;
}

Outputs currentOutputs() {
    const std::scoped_lock guard(state().lock);
    return state().outputs;
}

CategoryNames names(LogCategory category) {
    switch (category) {
        case LogCategory::Nav:
            return {"nav", "nav", "orvello-nav: "};
        case LogCategory::Mc:
            return {"mc", "mc", "orvello-mc: "};
        case LogCategory::General:
            break;
    }
    return {"general", "gen", ""};
}

platform::WallTime wallNow(const DebugLogOutputs& outputs) {
    return outputs.clock ? outputs.clock->wallNow() : std::chrono::system_clock::now();
}

platform::Instant monotonicNow(const DebugLogOutputs& outputs) {
    return outputs.clock ? outputs.clock->now() : std::chrono::steady_clock::now();
}

std::string timeOfDay(platform::WallTime time) {
    const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(time).time_since_epoch();
    const auto fraction = milliseconds - std::chrono::floor<std::chrono::seconds>(milliseconds);
    return fmt::format("{}.{:03}", platform::localTimeText(time, "%H:%M:%S"), fraction.count());
}

// 32-bit FNV-1a.
std::uint32_t hashOf(std::string_view bytes) {
    std::uint32_t hash = 0x811C9DC5;
    for (const char byte : bytes) hash = (hash ^ static_cast<unsigned char>(byte)) * 16777619U;
    return hash;
}

}  // namespace

bool asksForDebugEcho(const char* environmentValue) {
    return environmentValue != nullptr && std::string_view(environmentValue) == "1";
}

void connectDebugLog(DebugLogOutputs outputs) {
    auto connected = std::make_shared<const DebugLogOutputs>(std::move(outputs));
    const std::scoped_lock guard(state().lock);
    state().outputs.swap(connected);
    state().lines.clear();
}

void log(LogCategory category, std::string_view message) {
    const auto outputs = currentOutputs();
    const auto [systemLog, timeline, echoPrefix] = names(category);
    if (outputs->systemLog) outputs->systemLog->write(systemLog, message);
    recordTimeline(timeline, message);
    if (outputs->echoEnabled && outputs->standardError && !echoPrefix.empty())
        outputs->standardError(fmt::format("{}{}\n", echoPrefix, message));
}

void logMC(std::optional<platform::Instant> reference, std::string_view message) {
    const auto outputs = currentOutputs();
    const auto stamp = [&] {
        if (!reference) return timeOfDay(wallNow(*outputs));
        const std::chrono::duration<double, std::milli> elapsed = monotonicNow(*outputs) - *reference;
        return fmt::format("+{:6.1f}ms", elapsed.count());
    };
    log(LogCategory::Mc, fmt::format("[{}] {}", stamp(), message));
}

void logGeneral(std::string_view message) {
    const auto outputs = currentOutputs();
    if (outputs->systemLog) outputs->systemLog->writeGeneral(message);
}

bool debugEchoEnabled() {
    return currentOutputs()->echoEnabled;
}

std::string redactedLabel(std::string_view label) {
    if (debugEchoEnabled()) return std::string(label);
    return fmt::format("#{:04x}", hashOf(label) & 0xFFFF);
}

void recordTimeline(std::string_view timelineLabel, std::string_view message) {
    auto& shared = state();
    const std::scoped_lock guard(shared.lock);
    shared.lines.push_back(
        fmt::format("[{}] {} {}", timeOfDay(wallNow(*shared.outputs)), timelineLabel, message));
    if (shared.lines.size() > kMostLines) shared.lines.pop_front();
}

std::vector<std::string> timelineSnapshot() {
    const std::scoped_lock guard(state().lock);
    return {state().lines.begin(), state().lines.end()};
}

}  // namespace orvellos
