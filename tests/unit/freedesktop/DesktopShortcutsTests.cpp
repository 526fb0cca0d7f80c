// What desktops say of their own shortcuts, asked for on a private bus and of a program that stands in.

#include "platform/freedesktop/desktops/DesktopShortcuts.h"

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon.h>

#include "platform/x11/input/KeyChord.h"
#include "tests/support/DesktopSettingsTest.h"

namespace platform::freedesktop {
namespace {

using desktop_test::StandInService;

constexpr KeyEvent kKeys = {17, modifier::kControl};
constexpr std::int32_t kQtKey = 0x04000054;  // Ctrl+T

TEST(AcceleratorTest, AreReadAsGtkWritesThem) {
    using namespace modifier;
    struct Row {
        const char* text;
        xcb_keysym_t symbol;  // 0 for none
        std::uint64_t modifierFlags;
    };
    for (const auto& [text, symbol, flags] : {Row{"<Primary><Alt>Left", XKB_KEY_Left, kControl | kOption},
                                              {"<Super>T", 't', kCommand},
                                              {"<SHIFT><ctrl>F2", XKB_KEY_F2, kShift | kControl},
                                              {"<Mod4>bracketleft", '[', kCommand},
                                              {"Print", XKB_KEY_Print, 0},
                                              {"<Hyper>t", 0, 0},
                                              {"<Super", 0, 0},
                                              {"<Super>", 0, 0},
                                              {"disabled", 0, 0},
                                              {"", 0, 0}}) {
        const auto expected = symbol ? std::optional(x11::KeyChord{symbol, flags}) : std::nullopt;
        EXPECT_EQ(x11::chordOfAccelerator(text), expected) << text;
    }
}

TEST(AcceleratorListsTest, GiveWhatIsInForce) {
    using Accelerators = std::vector<Accelerator>;
    auto properties = nlohmann::json::parse(R"([["/xfwm4/default/<Alt>F4", "close_window_key"],
        ["/xfwm4/custom/<Alt>F5", "hide_window_key"], ["/commands/custom/<Alt>F2", "xfrun4"],
        ["/commands/custom/<Alt>F2/startup-notify", true], ["/commands/default/<Alt>F3", "appfinder"],
        ["/commands/custom/override", true], "garbage", [1, 2], ["/xfwm4/custom/override", "true"]])");
    EXPECT_EQ(acceleratorsOfXfce(properties), (Accelerators{{"<Alt>F4", "close_window_key", "Close window"},
                                                            {"<Alt>F2", "xfrun4", "xfrun4"}}));
    EXPECT_EQ(acceleratorsOfXfce({{"not", "a list"}}), Accelerators{});
    EXPECT_EQ(
        acceleratorsOfGsettings("schema switch-windows ['<Alt>Tab', '<Super>Tab']\nschema always-on-top "
                                "@as []\nschema panel-run-dialog '<Alt>F2'\nschema\n\nschema open '\n"),
        (Accelerators{{"<Alt>Tab", "switch-windows", "Switch windows"},
                      {"<Super>Tab", "switch-windows", "Switch windows"},
                      {"<Alt>F2", "panel-run-dialog", "Panel run dialog"}}));
}

class OneKey final : public KeySpelling {
  public:
    [[nodiscard]] std::optional<std::uint32_t> qtKey(const KeyEvent& keys) const override {
        return keys == kKeys ? std::optional<std::uint32_t>(kQtKey) : std::nullopt;
    }
    [[nodiscard]] bool isAccelerator(const std::string& accelerator, const KeyEvent& keys) const override {
        return keys == kKeys && accelerator == "<Primary>t";
    }
};

class DesktopShortcutsTest : public DesktopSettingsTest {
  protected:
    // What a desktop of that name answers; the test fails when it does not.
    std::optional<std::string> findUse(const char* desktop) {
        DesktopAccelerators accelerators({bus_, processes_, loop_.runLoop, desktop});
        DesktopShortcuts shortcuts({.bus = bus_, .accelerators = accelerators, .spelling = spelling_});
        std::optional<std::optional<std::string>> found;
        const auto question = shortcuts.findUse(kKeys, [&](const auto& action) {
            EXPECT_FALSE(found) << "answered twice";
            found = action;
        });
        EXPECT_FALSE(found) << "at a later turn";
        EXPECT_TRUE(loop_.runUntil([&] { return found.has_value(); }));
        return found.value_or("nothing");
    }

    OneKey spelling_;
};

TEST_F(DesktopShortcutsTest, KdesDaemonIsAskedForTheKey) {
    EXPECT_EQ(findUse("KDE"), std::nullopt) << "there is none";
    const char* wrong = nullptr;
    const StandInService service(daemon_.address(), "org.kde.kglobalaccel", [&](auto* call, auto* reply) {
        std::int32_t key = 0;
        if (sd_bus_message_read(call, "i", &key) < 0 || key != kQtKey) return -1;
        return wrong ? sd_bus_message_append(reply, "s", wrong)
                     : sd_bus_message_append(reply, "as", 4, "kwin", "Overview", "KWin", "Toggle Overview");
    });
    EXPECT_EQ(findUse("KDE"), "Toggle Overview");
    EXPECT_EQ(findUse(""), "Toggle Overview") << "also where the desktop has no name";
    EXPECT_EQ(service.calls().front(), "/kglobalaccel org.kde.KGlobalAccel.action");
    wrong = "not a list";
    EXPECT_EQ(findUse("KDE"), std::nullopt);
}

TEST_F(DesktopShortcutsTest, XfcesSettingsAreAskedOnXfceAlone) {
    const StandInService service(daemon_.address(), "org.xfce.Xfconf", [](auto* /*call*/, auto* reply) {
        return sd_bus_message_append(reply, "a{sv}", 1, "/xfwm4/default/<Primary>t", "s", "stick_window_key");
    });
    EXPECT_EQ(findUse("XFCE"), "Stick window");
    EXPECT_EQ(findUse("KDE"), std::nullopt);
    EXPECT_EQ(service.calls().size(), 1U);
}

TEST_F(DesktopShortcutsTest, GnomesSettingsAreAskedSchemaBySchema) {
    EXPECT_EQ(findUse("GNOME"), std::nullopt) << "there is no such program";
    writeGsettings(
        "[ \"$2\" = org.gnome.mutter.keybindings ] && echo \"$2 toggle-tiled-left ['<Primary>t']\"");
    EXPECT_EQ(findUse("ubuntu:GNOME"), "Toggle tiled left");
    EXPECT_EQ(findUse("MATE"), std::nullopt) << "none of these is its own";
    writeGsettings("echo 'No such schema' >&2; exit 1");
    EXPECT_EQ(findUse("GNOME"), std::nullopt);
}

TEST_F(DesktopShortcutsTest, NobodyIsWaitedForLong) {
    writeGsettings("exec sleep 3");
    daemon_.stop();
    EXPECT_EQ(findUse("GNOME"), std::nullopt);
    daemon_.resume();
}

}  // namespace
}  // namespace platform::freedesktop
