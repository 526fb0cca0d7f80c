#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "orvellos/base/DebugLog.h"
#include "orvellos/permissions/PrivacyPermissions.h"
#include "orvellos/settings/Settings.h"
#include "orvellos/spaces/SpaceIdentifier.h"
#include "orvellos/windows/EditingContext.h"
#include "orvellos/windows/TagManager.h"
#include "tests/support/SimulatedServices.h"
#include "tests/support/TimeZone.h"

namespace orvellos {

using Texts = std::vector<std::string>;

// A test of the application on a simulated desktop, where it is 14:30 on 14 March 2026, half an hour off the
// full hours of UTC. The log starts empty and is the desktop's.
class ApplicationTest : public testing::Test {
  protected:
    ApplicationTest() { connectLog(false); }
    void TearDown() override { connectDebugLog({}); }

    // Empties the timeline. `debugging` is what ORVELLO_DEBUG would say.
    void connectLog(bool debugging) {
        connectDebugLog({.systemLog = &desktop_.systemLog,
                         .standardError = [this](std::string_view text) { echo_ += text; },
                         .clock = &desktop_.runLoop,
                         .echoEnabled = debugging});
    }
    // What the timeline holds, without the time of day and the category.
    static Texts logged() {
        constexpr std::size_t kTimeAndSpaces = sizeof "[14:30:00.000] " - 1;
        auto lines = timelineSnapshot();
        for (auto& line : lines) line.erase(0, line.find(' ', kTimeAndSpaces) + 1);
        return lines;
    }
    // The same without the second time stamp of lines about Mission Control.
    static Texts messages() {
        auto lines = logged();
        for (auto& line : lines)
            if (line.starts_with('[')) line.erase(0, line.find(']') + 2);
        return lines;
    }
    static bool hasLogged(std::string_view message) { return std::ranges::count(messages(), message) > 0; }
    TagWindowServices windowServices() { return simulatedWindowServices(desktop_, settings_, editing_); }
    TagManager::Services managerServices() {
        return simulatedManagerServices(desktop_, settings_, editing_, identifier_);
    }
    NavServices navServices() { return simulatedNavServices(desktop_); }

    PrivacyPermissions::Services privacyServices(std::function<void()> terminate) {
        return {.permissions = desktop_.permissions,
                .activation = desktop_.permissions,
                .urls = desktop_.urls,
                .fileBrowser = desktop_.fileBrowser,
                .processes = desktop_.childProcesses,
                .alerts = desktop_.alerts,
                .runLoop = desktop_.runLoop,
                .bundle = {"org.norvath.orvello", "/opt/orvello"},
                .terminate = std::move(terminate)};
    }

    desktop_test::TimeZone zone_{"TEST-5:30"};  // that much ahead of UTC
    platform::simulated::SimulatedDesktop desktop_;
    std::string echo_;
    Settings settings_{desktop_.defaults, desktop_.loginItem, std::nullopt};
    EditingContext editing_;
    SpaceIdentifier identifier_{desktop_.spaces, desktop_.spaces, desktop_.spaces, desktop_.screens};
};

}  // namespace orvellos
