#include "orvellos/AppDelegate.h"

#include <fmt/format.h>

#include <array>
#include <string_view>

#include "orvellos/DebugLog.h"

namespace orvellos {

namespace {

// The two flavours of the application; each defers to the other.
constexpr std::array<std::string_view, 2> kBundleIdentifiers = {"org.norvath.orvello",
                                                                "org.norvath.orvello.pro"};
constexpr auto kLongestWaitForExit = platform::seconds(3);
constexpr auto kExitCheck = platform::seconds(0.2);

}  // namespace

void AppDelegate::applicationDidFinishLaunching() {
    const auto other = findOtherInstance();
    if (!other) return startCore();
    logGeneral(
        fmt::format("orvello: another instance detected (pid {}) — waiting to see if it exits", *other));
    waitForExit(*other, services_.runLoop.now() + kLongestWaitForExit);
}

std::optional<platform::ProcessId> AppDelegate::findOtherInstance() const {
    const auto& applications = services_.applications;
    for (const auto identifier : kBundleIdentifiers)
        for (const auto process : applications.withBundleIdentifier(identifier))
            if (process != applications.currentProcess()) return process;
    return std::nullopt;
}

void AppDelegate::waitForExit(platform::ProcessId other, platform::Instant deadline) {
    waiting_.cancel();
    if (services_.applications.hasTerminated(other)) return startCore();
    if (services_.runLoop.now() >= deadline) return deferTo(other);
    waiting_ = services_.runLoop.after(kExitCheck, [this, other, deadline] { waitForExit(other, deadline); });
}

void AppDelegate::deferTo(platform::ProcessId other) {
    logGeneral(fmt::format("orvello: deferring to running instance (pid {}) and quitting", other));
    services_.applications.activate(other);
    services_.terminate();
}

void AppDelegate::startCore() {
    coreStarted_ = true;
    probeSpaceReader();
    tagManager_ = &services_.makeTagManager();
    tagManager_->start();
}

void AppDelegate::probeSpaceReader() const {
    const auto current = services_.spaces.currentSpaceUUID();
    logGeneral(current
                   ? "orvello-pro: SkyLight bridge OK, active space UUID=" + *current
                   : "orvello-pro: SkyLight bridge returned nil — symbols resolved but no space reported");
    logGeneral("orvello-pro: switch symbols — " + services_.spaces.symbolStatusLine());
}

void AppDelegate::applicationWillTerminate() {
    waiting_.cancel();
    if (coreStarted_) tagManager_->stop();
}

}  // namespace orvellos
