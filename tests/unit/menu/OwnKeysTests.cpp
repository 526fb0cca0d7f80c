#include "orvellos/menu/OwnKeys.h"

#include "orvellos/settings/HotkeyNames.h"
#include "tests/support/ApplicationTest.h"

namespace orvellos {
namespace {

namespace modifier = platform::modifier;
constexpr std::uint64_t kAll = modifier::kControl | modifier::kOption | modifier::kCommand;

class OwnKeysTest : public ApplicationTest {
  protected:
    OwnKeysTest() {
        for (const auto& name : hotkey::kAll) hotkeys_.create(name);
        desktop_.keyNames.texts[12] = "q";
        desktop_.keyNames.texts[43] = ",";
    }

    keyboard_shortcuts::Registry hotkeys_{
        {desktop_.defaults, desktop_.hotKeys, desktop_.keyNames, [](auto) {}}};
    OwnKeys ownKeys_{
        {.hotkeys = hotkeys_, .keyNames = desktop_.keyNames, .menuBar = desktop_.menuBar, .statusMenu = [] {
             return std::vector<platform::MenuItem>{
                 {.title = "Tag this Space…", .keyEquivalent = {{'t', kAll}}},
                 {.title = "Settings…", .keyEquivalent = {{',', modifier::kCommand}}}};
         }}};
};

TEST_F(OwnKeysTest, TellsWhatElseUsesTheKeys) {
    struct Row {
        const char* name = nullptr;
        platform::KeyEvent keys;
        const char* use = nullptr;  // null for none
    };
    for (const Row& row : {Row{"another hotkey's", {4, kAll}, "Hide for screen-sharing"},
                           {"its own", {17, kAll}, nullptr},
                           {"the main menu's", {12, modifier::kCommand}, "Quit orvellos"},
                           {"with other modifiers", {12, modifier::kCommand | modifier::kShift}, nullptr},
                           {"the status menu's", {43, modifier::kCommand}, "Settings…"},
                           {"nobody's", {43, kAll}, nullptr}}) {
        EXPECT_EQ(ownKeys_.useOf(row.keys, hotkey::tagThisSpace),
                  row.use ? std::optional<std::string>(row.use) : std::nullopt)
            << row.name;
    }
    hotkeys_.setShortcut(std::nullopt, hotkey::toggleKillSwitch);
    EXPECT_EQ(ownKeys_.useOf({4, kAll}, hotkey::tagThisSpace), std::nullopt) << "it was cleared";
}

}  // namespace
}  // namespace orvellos
