// Which of the desktop's own keys go to another Space or open the overview, and that changes are heard.

#include "platform/freedesktop/desktops/SpaceKeys.h"

#include <gtest/gtest.h>

#include <atomic>

#include "tests/support/DesktopSettingsTest.h"

namespace platform::freedesktop {
namespace {

using desktop_test::StandInService;
using Keys = std::vector<SpaceKey>;

constexpr KeyEvent kLeft{123, 0x40000}, kRight{124, 0x40000}, kOverview{160, 0};

TEST(SpaceKeysTest, ActionsMeanSomethingByTheirOwnNames) {
    struct Row {
        const char* name = "";
        std::optional<KeyEvent> meaning;
        const char* desktops = "";
    };
    for (const auto& [name, meaning, desktops] :
         {Row{"Switch One Desktop to the Left", kLeft}, Row{"Switch One Desktop Down", kRight},
          Row{"Switch to Desktop 12", kRight}, Row{"Switch to Desktop ", {}}, Row{"Switch to Screen 1", {}},
          Row{"Window to Desktop 1", {}}, Row{"ShowDesktopGrid", kOverview}, Row{"ExposeAll", {}},
          Row{"up_workspace_key", kLeft}, Row{"workspace_3_key", kRight}, Row{"workspace__key", {}},
          Row{"move_window_workspace_3_key", {}}, Row{"switch-to-workspace-left", kLeft, "GNOME"},
          Row{"switch-to-workspace-4", kRight, "MATE"}, Row{"switch-to-workspace-down", kRight, "GNOME"},
          Row{"switch-to-workspace-down", kOverview, "X-Cinnamon"},
          Row{"toggle-overview", kOverview, "GNOME"}, Row{"move-to-workspace-left", {}, "GNOME"}})
        EXPECT_EQ(meaningOfAction(name, desktops), meaning) << name;
}

class FollowedSpaceKeysTest : public DesktopSettingsTest {
  protected:
    // Follows a desktop of that name.
    void follow(const char* desktop) {
        accelerators_.emplace(DesktopAccelerators::Services{bus_, processes_, loop_.runLoop, desktop});
        spaceKeys_.emplace(bus_, loop_.runLoop, *accelerators_, [this](const auto& keys) { keys_ = keys; });
    }
    bool comeToBe(const Keys& expected) {
        return loop_.runUntil([&] { return keys_ == expected; });
    }
    void set(const std::string& schema, const std::string& setting) const {
        writeGsettings("[ $2 = " + schema + " ] && echo \"$2 " + setting + "\"");
    }

    Keys keys_;
    std::optional<DesktopAccelerators> accelerators_;
    std::optional<SpaceKeys> spaceKeys_;
};

TEST_F(FollowedSpaceKeysTest, AreKwinsWhileItRuns) {
    std::atomic<std::uint32_t> qtKey = 0x14000012;
    StandInService kwin(daemon_.address(), "org.kde.KWin", nullptr);
    // An action with two keys, one without, and one that is not about Spaces.
    StandInService shortcuts(daemon_.address(), "org.kde.kglobalaccel", [&](auto* /*call*/, auto* reply) {
        return sd_bus_message_append(reply, "a(ssssssaiai)", 3, "Switch One Desktop Up", "", "", "", "", "",
                                     2, qtKey.load(), -2, 1, 1, "Overview", "", "", "", "", "", 1, 0, 1, 1,
                                     "Kill Window", "", "", "", "", "", 1, 1, 0);
    });
    follow("KDE");
    EXPECT_TRUE(comeToBe({{0x14000012, {}, kLeft}, {0xFFFFFFFE, {}, kLeft}}));
    EXPECT_EQ(shortcuts.calls().front(), "/component/kwin org.kde.kglobalaccel.Component.allShortcutInfos");
    qtKey = 0x14000013;
    shortcuts.run([](sd_bus* bus) {
        sd_bus_emit_signal(bus, "/kglobalaccel", "org.kde.KGlobalAccel", "yourShortcutsChanged", "asai", 1,
                           "kwin", 1, 0);
    });
    EXPECT_TRUE(comeToBe({{0x14000013, {}, kLeft}, {0xFFFFFFFE, {}, kLeft}}));
    kwin.run([](sd_bus* bus) { sd_bus_release_name(bus, "org.kde.KWin"); });
    EXPECT_TRUE(comeToBe({}));
}

TEST_F(FollowedSpaceKeysTest, AreGnomesWithTheirChanges) {
    StandInService dconf(daemon_.address(), "ca.desrt.dconf", nullptr);
    const auto tell = [&](const char* path, const char* rest) {
        dconf.run([&](sd_bus* bus) {
            sd_bus_emit_signal(bus, "/ca/desrt/dconf/Writer/user", "ca.desrt.dconf.Writer", "Notify", "sass",
                               path, 1, rest, "tag");
        });
    };
    struct Row {
        const char* path;
        const char* rest;
    };
    set("org.gnome.mutter", "overlay-key 'Super_L'");
    follow("ubuntu:GNOME");
    ASSERT_TRUE(comeToBe({{0, "Super_L", kOverview}}));
    std::string key = "a";
    for (const auto& [path, rest] :
         {Row{"/org/gnome/desktop/wm/keybindings/switch-to-workspace-1", ""},
          Row{"/org/gnome/desktop/wm/", "keybindings/switch-to-workspace-1"}, Row{"/org/", ""}}) {
        SCOPED_TRACE(path);
        set("org.gnome.desktop.wm.keybindings", "switch-to-workspace-1 ['" + key + "']");
        tell(path, rest);
        EXPECT_TRUE(comeToBe({{0, key, kRight}}));
        key += "a";
    }
}

}  // namespace
}  // namespace platform::freedesktop
