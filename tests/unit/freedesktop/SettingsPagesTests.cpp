#include "platform/freedesktop/desktops/SettingsPages.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "orvellos/spaces/NavController.h"

namespace platform::freedesktop {
namespace {

using orvellos::NavRemedy;
using Command = SettingsPages::Command;

TEST(SettingsPagesTest, OpensTheRunningDesktopsPage) {
    struct Row {
        const char* name;
        const char* desktops;
        std::vector<std::string> installed;
        NavRemedy remedy;
        std::vector<Command> started;
    };
    const std::vector<std::string> all = {"systemsettings", "systemsettings5", "gnome-control-center",
                                          "xfwm4-settings"};
    for (const Row& row :
         {Row{"Plasma", "KDE", all, NavRemedy::KeyboardShortcuts, {{"systemsettings", "kcm_keys"}}},
          Row{"its older name",
              "KDE",
              {"systemsettings5"},
              NavRemedy::Accessibility,
              {{"systemsettings5", "kcm_kwin_virtualdesktops"}}},
          Row{"a flavour",
              "ubuntu:GNOME",
              all,
              NavRemedy::KeyboardShortcuts,
              {{"gnome-control-center", "keyboard"}}},
          Row{"without an argument", "XFCE", all, NavRemedy::KeyboardShortcuts, {{"xfwm4-settings"}}},
          Row{"not installed", "MATE", all, NavRemedy::KeyboardShortcuts, {}},
          Row{"no known desktop", "KDEish", all, NavRemedy::KeyboardShortcuts, {}},
          Row{"no desktop", "", all, NavRemedy::Accessibility, {}}}) {
        std::vector<Command> started;
        SettingsPages pages(
            row.desktops,
            [&](std::string_view program) { return std::ranges::count(row.installed, program) > 0; },
            [&](const Command& command) { started.push_back(command); });
        pages.openUrl(settingsUrl(row.remedy));
        pages.openUrl("x-apple.systempreferences:unknown");
        EXPECT_EQ(started, row.started) << row.name;
    }
}

}  // namespace
}  // namespace platform::freedesktop
