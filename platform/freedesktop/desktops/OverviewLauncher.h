#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Processes.h"
#include "platform/RunLoop.h"
#include "platform/freedesktop/bus/MessageBus.h"
#include "platform/freedesktop/desktops/DesktopOverview.h"
#include "platform/freedesktop/processes/Programs.h"

namespace platform::freedesktop {

// Knows one application, "com.apple.exposelauncher", which opens the overview: that of the running desktop,
// else one that is a program. Its url has a scheme of our own, since no other program is meant to open it.
class OverviewLauncher final : public ApplicationLauncher {
  public:
    using IsInstalled = std::function<bool(std::string_view program)>;

    // Both lists are in the order of preference.
    OverviewLauncher(MessageBus& bus, RunLoop& runLoop, std::vector<const BusOverview*> overviews,
                     std::vector<std::string> programs, IsInstalled isInstalled = isProgramInstalled);

    [[nodiscard]] std::optional<std::string> urlForApplication(
        std::string_view bundleIdentifier) const override;
    // A desktop that does not answer within a second has failed to open its overview.
    void open(const std::string& url,
              std::function<void(const std::optional<std::string>& error)> completion) override;

  private:
    using Completion = std::function<void(const std::optional<std::string>& error)>;

    [[nodiscard]] const BusOverview* overviewAt(std::string_view url) const;
    [[nodiscard]] std::optional<std::string> startProgramAt(std::string_view url) const;
    void complete(std::uint64_t id, const Completion& completion, const std::optional<std::string>& error);

    MessageBus& bus_;
    RunLoop& runLoop_;
    std::vector<const BusOverview*> overviews_;
    std::vector<std::string> programs_;
    IsInstalled isInstalled_;
    std::map<std::uint64_t, Subscription> opening_;
    std::uint64_t nextId_ = 0;
};

}  // namespace platform::freedesktop
