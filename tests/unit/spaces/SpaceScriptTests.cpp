#include "orvellos/spaces/SpaceSwitcher.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvellos {
namespace {

using enum SpaceScript::Direction;
using enum SpaceScript::Layout;

TEST(SpaceScriptTest, isWrittenToTheByte) {
    EXPECT_EQ((SpaceScript{Right, 3}.text(CommandLine)),
              "tell application \"System Events\"\n  repeat 3 times\n    key code 124 using {control down}\n"
              "    delay 0.2\n  end repeat\nend tell");
    EXPECT_EQ((SpaceScript{Left, 12}.text(Navigation)),
              "tell application \"System Events\"\n    repeat 12 times\n"
              "        key code 123 using {control down}\n        delay 0.2\n    end repeat\nend tell");
}

TEST(SpaceScriptTest, readsBackWhatItWrites) {
    for (const auto direction : {Left, Right})
        for (const auto layout : {CommandLine, Navigation})
            for (const int count : {1, 9, kMostScriptedSteps}) {
                const SpaceScript script{direction, count};
                EXPECT_EQ(ScriptParser::parse(script.text(layout)), script);
            }
}

std::string replaced(std::string_view from, std::string_view to) {
    auto text = SpaceScript{Right, 3}.text(CommandLine);
    const auto at = text.find(from);
    EXPECT_NE(at, std::string::npos);
    return text.replace(at, from.size(), to);
}

TEST(SpaceScriptTest, refusesEverythingElse) {
    const auto script = SpaceScript{Right, 3}.text(CommandLine);
    for (const auto& text : std::vector<std::string>{
             "",
             script + "\n",
             script + script,
             script.substr(1),
             script.substr(0, script.size() - 1),
             replaced("repeat 3", "repeat 0"),
             replaced("repeat 3", "repeat -3"),
             replaced("repeat 3", "repeat 03"),
             replaced("repeat 3", "repeat 513"),
             replaced("repeat 3", "repeat 99999999999999999999"),
             replaced("repeat 3", "repeat "),
             replaced("124", "125"),
             replaced("control", "command"),
             replaced("System Events", "Terminal"),
             replaced("    key", "        key"),
             replaced("delay 0.2", "do shell script \"true\""),
             replaced("\n", "\r\n"),
             std::string("\0", 1) + script,
         })
        EXPECT_EQ(ScriptParser::parse(text), std::nullopt) << text;
}

}  // namespace
}  // namespace orvellos
