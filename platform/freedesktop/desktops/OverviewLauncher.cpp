#include "platform/freedesktop/desktops/OverviewLauncher.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "platform/freedesktop/processes/Spawn.h"

namespace platform::freedesktop {

namespace {

constexpr std::string_view kOverviewLauncher = "com.apple.exposelauncher";

std::string urlOf(const BusOverview& overview) {
    return fmt::format("orvello-overview:desktop/{}", overview.name());
}

std::string urlOf(const std::string& program) {
    return fmt::format("orvello-overview:program/{}", program);
}

}  // namespace

OverviewLauncher::OverviewLauncher(MessageBus& bus, RunLoop& runLoop,
                                   std::vector<const BusOverview*> overviews,
                                   std::vector<std::string> programs, IsInstalled isInstalled)
    : bus_(bus),
      runLoop_(runLoop),
      overviews_(std::move(overviews)),
      programs_(std::move(programs)),
      isInstalled_(std::move(isInstalled)) {}

std::optional<std::string> OverviewLauncher::urlForApplication(std::string_view bundleIdentifier) const {
    if (bundleIdentifier != kOverviewLauncher) return std::nullopt;
    for (const auto* overview : overviews_)
        if (overview->openingCall()) return urlOf(*overview);
    for (const auto& program : programs_)
        if (isInstalled_(program)) return urlOf(program);
    return std::nullopt;
}

void OverviewLauncher::open(const std::string& url, Completion completion) {
    const auto id = nextId_++;
    const auto* overview = overviewAt(url);
    if (const auto call = overview ? overview->openingCall() : std::nullopt) {
        opening_[id] = bus_.call(*call, [=, this, name = overview->name()](const auto& answer) {
            const auto error = fmt::format("{} does not open its overview", name);
            complete(id, completion, answer ? std::nullopt : std::optional(error));
        });
    } else {
        const auto error = startProgramAt(url);
        opening_[id] = runLoop_.after(Duration::zero(), [=, this] { complete(id, completion, error); });
    }
}

const BusOverview* OverviewLauncher::overviewAt(std::string_view url) const {
    const auto found =
        std::ranges::find(overviews_, url, [](const auto* overview) { return urlOf(*overview); });
    return found == overviews_.end() ? nullptr : *found;
}

std::optional<std::string> OverviewLauncher::startProgramAt(std::string_view url) const {
    const auto program = std::ranges::find(programs_, url, [](const auto& name) { return urlOf(name); });
    if (program == programs_.end()) return fmt::format("there is no overview at {}", url);
    if (!startDetached(*program, {})) return fmt::format("{} could not be started", *program);
    return std::nullopt;
}

void OverviewLauncher::complete(std::uint64_t id, const Completion& completion,
                                const std::optional<std::string>& error) {
    const auto done = opening_.extract(id);  // ends with this call, which `completion` may be part of
    completion(error);
}

}  // namespace platform::freedesktop
