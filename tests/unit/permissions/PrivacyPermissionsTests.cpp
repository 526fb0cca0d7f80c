#include "orvellos/permissions/PrivacyPermissions.h"

#include "orvellos/permissions/PermissionRow.h"
#include "tests/support/ApplicationTest.h"

namespace orvellos {
namespace {

using Runs = std::vector<platform::simulated::SimulatedChildProcesses::Run>;

class PrivacyPermissionsTests : public ApplicationTest {
  protected:
    void wait(double seconds) { desktop_.runLoop.advance(platform::seconds(seconds)); }

    int terminations_ = 0;
    PrivacyPermissions permissions_{privacyServices([this] { ++terminations_; })};
};

TEST_F(PrivacyPermissionsTests, WhatIsGrantedIsNotAskedFor) {
    EXPECT_TRUE(permissions_.requestInputMonitoring());
    EXPECT_TRUE(permissions_.promptAccessibility());
    wait(1);
    EXPECT_EQ(desktop_.permissions.asked, Texts{});
    desktop_.permissions.accessibilityTrusted = false;
    EXPECT_FALSE(permissions_.promptAccessibility());
    EXPECT_EQ(desktop_.permissions.asked, Texts{"prompt for Accessibility"});
}

TEST_F(PrivacyPermissionsTests, ARequestComesToTheFrontAndHelpsWhoSawNoPrompt) {
    for (const bool grantedMeanwhile : {true, false}) {
        desktop_.permissions.inputMonitoringTrusted = false;
        desktop_.permissions.asked.clear();
        int completions = 0;
        const auto answer = permissions_.requestInputMonitoring([&] { ++completions; }, platform::seconds(1));
        const Texts before = {"regular", "activate", "prompt for Input Monitoring"};
        EXPECT_EQ(desktop_.permissions.asked, before);
        wait(0.1);
        EXPECT_FALSE(permissions_.requestInputMonitoring()) << "asked again before the policy is back";
        wait(0.24);
        EXPECT_EQ(desktop_.permissions.policy(), platform::ActivationPolicy::Regular);
        wait(0.02);
        EXPECT_EQ(desktop_.permissions.policy(), platform::ActivationPolicy::Accessory);
        desktop_.permissions.inputMonitoringTrusted = grantedMeanwhile;
        EXPECT_EQ(completions, 0);
        wait(0.7);
        EXPECT_EQ(completions, 1);
        EXPECT_EQ(desktop_.urls.opened.empty(), grantedMeanwhile);
        EXPECT_EQ(desktop_.fileBrowser.revealed.empty(), grantedMeanwhile);
    }
    EXPECT_EQ(desktop_.urls.opened,
              Texts{"x-apple.systempreferences:com.apple.preference.security?Privacy_ListenEvent"});
    EXPECT_EQ(desktop_.fileBrowser.revealed.at(0), "/opt/orvello");
}

TEST_F(PrivacyPermissionsTests, ResettingTriesEveryService) {
    const Texts both = {"ListenEvent", "Accessibility"};
    const Runs runs = {{"/usr/bin/tccutil", {"reset", "ListenEvent", "org.norvath.orvello"}},
                       {"/usr/bin/tccutil", {"reset", "Accessibility", "org.norvath.orvello"}}};
    EXPECT_TRUE(permissions_.resetPrivacy({}));
    auto nameless = privacyServices([] {});
    nameless.bundle.identifier.clear();
    EXPECT_FALSE(PrivacyPermissions(nameless).resetPrivacy(both));
    EXPECT_EQ(desktop_.childProcesses.runs(), Runs{});
    desktop_.childProcesses.onRun([this](const auto& run) {
        desktop_.childProcesses.setExitStatus(run.arguments.at(1) == "ListenEvent" ? 1 : 0);
    });
    EXPECT_FALSE(permissions_.resetPrivacy(both));
    EXPECT_EQ(desktop_.childProcesses.runs(), runs);
    desktop_.childProcesses.onRun(nullptr);
    desktop_.childProcesses.setExitStatus(std::nullopt);
    EXPECT_FALSE(permissions_.resetPrivacy(both));
    desktop_.childProcesses.setExitStatus(0);
    EXPECT_TRUE(permissions_.resetPrivacy(both));
}

TEST_F(PrivacyPermissionsTests, ResettingIsConfirmedAndThenStartsAnew) {
    permissions_.confirmReset();
    EXPECT_EQ(desktop_.alerts.shown.back().buttons, (Texts{"Reset & Restart", "Cancel"}));
    EXPECT_EQ(desktop_.alerts.shown.back().style, platform::Alert::Style::Informational);
    desktop_.alerts.answer(1);
    EXPECT_EQ(desktop_.childProcesses.runs(), Runs{});
    permissions_.confirmReset();
    desktop_.childProcesses.setExitStatus(std::nullopt);
    desktop_.alerts.answer(0);
    EXPECT_EQ(desktop_.childProcesses.runs().size(), 3U);
    EXPECT_EQ(desktop_.childProcesses.runs().back(),
              (Runs::value_type{"/usr/bin/open", {"-n", "/opt/orvello"}}));
    EXPECT_EQ(terminations_, 1) << "even though nothing could be started";
}

TEST_F(PrivacyPermissionsTests, WhatIsNewlyGrantedReloadsTheObserverOnce) {
    desktop_.permissions.inputMonitoringTrusted = false;
    int reloads = 0;
    PermissionsState state({permissions_, desktop_.runLoop, [&] { ++reloads; }});
    state.startRefreshing();
    state.startRefreshing();
    wait(0.5);
    desktop_.permissions.inputMonitoringTrusted = true;
    EXPECT_FALSE(state.inputMonitoringTrusted());
    wait(0.7);
    EXPECT_TRUE(state.inputMonitoringTrusted());
    wait(3);
    EXPECT_EQ(reloads, 1);
    desktop_.permissions.accessibilityTrusted = false;
    wait(1);
    EXPECT_FALSE(state.accessibilityTrusted());
    desktop_.permissions.accessibilityTrusted = true;
    state.stopRefreshing();
    wait(3);
    EXPECT_FALSE(state.accessibilityTrusted());
    state.refresh();
    EXPECT_EQ(reloads, 2);
}

}  // namespace
}  // namespace orvellos
