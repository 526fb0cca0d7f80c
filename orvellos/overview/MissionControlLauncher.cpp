#include "orvellos/overview/MissionControlLauncher.h"

#include "orvellos/base/DebugLog.h"

namespace orvellos {

namespace {
constexpr std::string_view kLauncher = "com.apple.exposelauncher";
}

void launchMissionControl(platform::ApplicationLauncher& launcher) {
    const auto url = launcher.urlForApplication(kLauncher);
    if (!url) {
        logMC(std::nullopt, "launchMissionControl: no URL for com.apple.exposelauncher");
        return;
    }
    launcher.open(*url, [](const std::optional<std::string>& error) {
        if (error) logMC(std::nullopt, "launchMissionControl: open failed: " + *error);
    });
}

}  // namespace orvellos
