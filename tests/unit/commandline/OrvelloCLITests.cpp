#include "orvellos/commandline/OrvelloCLI.h"

#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

#include "orvellos/commandline/TagLabels.h"
#include "orvellos/spaces/SpaceSwitcher.h"
#include "tests/support/ApplicationTest.h"

namespace orvellos {
namespace {

class OrvelloCLITest : public ApplicationTest {
  protected:
    OrvelloCLITest() {
        desktop_.screens.addScreen({0, 0, 100, 100}, "UUID-1");
        spaces.addDisplay("Main", {"A", "B", "C"});
    }

    int run(const std::vector<std::string_view>& arguments) {
        out.clear();
        err.clear();
        const OrvelloCLI cli({.spaces = identifier_,
                              .windows = desktop_.windowList,
                              .childProcesses = processes,
                              .readTagFile = [this] { return tagFile; },
                              .switchToSpace =
                                  [this](const std::string& uuid) {
                                      switched.push_back(uuid);
                                      return switching;
                                  },
                              .standardOutput = [this](std::string_view text) { out += text; },
                              .standardError = [this](std::string_view text) { err += text; }});
        const auto command = OrvelloCLI::commandOf(arguments);
        return command ? cli.run(*command, arguments) : -1;
    }

    platform::simulated::SimulatedSpaces& spaces = desktop_.spaces;
    platform::simulated::SimulatedChildProcesses& processes = desktop_.childProcesses;
    std::optional<std::string> tagFile =
        R"([{"label":"Mail & Chat","spaceUUID":"B"},{"label":"2","spaceUUID":"C"}])";
    bool switching = true;
    Texts switched;
    std::string out;
    std::string err;
};

TEST_F(OrvelloCLITest, leavesOtherArgumentsToTheApplication) {
    for (const auto& arguments : std::vector<std::vector<std::string_view>>{
             {}, {""}, {"Dump"}, {"DUMP"}, {"--help"}, {"-h"}, {"dump "}, {"help", "dump"}})
        EXPECT_EQ(run(arguments), -1) << testing::PrintToString(arguments);
}

TEST_F(OrvelloCLITest, dumpsSpacesWithTheirTags) {
    spaces.setCurrentSpace("B");
    tagFile = R"([{"label":"old","spaceUUID":"A"},{"label":"a\/b 🙂","spaceUUID":"A"},{"label":"loose"}])";
    EXPECT_EQ(run({"dump", "ignored"}), 0);
    EXPECT_EQ(out,
              "[\n"
              "  {\n    \"current\" : false,\n    \"index\" : 1,\n    \"tag\" : \"a\\/b 🙂\",\n"
              "    \"uuid\" : \"A\"\n  },\n"
              "  {\n    \"current\" : true,\n    \"index\" : 2,\n    \"uuid\" : \"B\"\n  },\n"
              "  {\n    \"current\" : false,\n    \"index\" : 3,\n    \"uuid\" : \"C\"\n  }\n"
              "]\n");
    EXPECT_EQ(err, "");
    spaces.setAnswering(false);
    EXPECT_EQ(run({"dump"}), 0);
    EXPECT_EQ(out, "[]\n");
}

TEST_F(OrvelloCLITest, goesNowhereWithAReason) {
    tagFile = R"([{"label":"Mail & Chat","spaceUUID":"B"},{"label":"🙂","spaceUUID":"C"}])";
    const auto noMatch = [](const std::string& target) {
        return "no Space matches '" + target + "' — expected a uuid, 1-based index, or tag label\n";
    };
    for (const auto& [arguments, message] :
         std::vector<std::pair<std::vector<std::string_view>, std::string>>{
             {{"goto"}, "usage: orvello goto <uuid|index>\n"},
             {{"goto", ""}, "usage: orvello goto <uuid|index>\n"},
             {{"goto", "0"}, "no Space at index 0 (have 3)\n"},
             {{"goto", "-1"}, "no Space at index -1 (have 3)\n"},
             {{"goto", "+4"}, "no Space at index 4 (have 3)\n"},
             {{"goto", "9223372036854775807"}, "no Space at index 9223372036854775807 (have 3)\n"},
             {{"goto", "9223372036854775808"}, noMatch("9223372036854775808")},
             {{"goto", "+-2"}, noMatch("+-2")},
             {{"goto", "５"}, noMatch("５")},
             {{"goto", "b"}, noMatch("b")},
             {{"goto", "🙂"}, noMatch("🙂")},
             {{"goto", "!?"}, noMatch("!?")},
         }) {
        EXPECT_EQ(run(arguments), 1) << message;
        EXPECT_EQ(err, message);
        EXPECT_EQ(out, "");
    }
    spaces.setAnswering(false);
    EXPECT_EQ(run({"goto", "1"}), 1);
    EXPECT_EQ(err, "no Spaces reported — is this the pro (private-API) build?\n");
    EXPECT_TRUE(processes.runs().empty());
    EXPECT_TRUE(switched.empty());
}

TEST_F(OrvelloCLITest, goesByTheScript) {
    spaces.setCurrentSpace("B");
    for (const auto& [target, script] : std::vector<std::pair<const char*, SpaceScript>>{
             {"3", {SpaceScript::Direction::Right, 1}},
             {"+1", {SpaceScript::Direction::Left, 1}},
             {"C", {SpaceScript::Direction::Right, 1}},
             {"A", {SpaceScript::Direction::Left, 1}},
         }) {
        EXPECT_EQ(run({"goto", target}), 0) << target;
        const Texts arguments = {"-e", script.text(SpaceScript::Layout::CommandLine)};
        EXPECT_EQ(processes.runs().back(),
                  (platform::simulated::SimulatedChildProcesses::Run{"/usr/bin/osascript", arguments}));
    }
    EXPECT_TRUE(switched.empty());
    EXPECT_EQ(err + out, "");
}

TEST_F(OrvelloCLITest, staysWhereItIs) {
    spaces.setCurrentSpace("B");
    for (const auto* target : {"2", "B", "mail", "MAILCHAT", "xmail&chatx"})
        EXPECT_EQ(run({"goto", target}), 0) << target;
    spaces.addDisplay("UUID-2", {"D", "E"});
    EXPECT_EQ(run({"goto", "D"}), 0) << "current on the display without the pointer";
    EXPECT_TRUE(processes.runs().empty());
    EXPECT_TRUE(switched.empty());
}

TEST_F(OrvelloCLITest, switchesItselfWhenTheScriptCannot) {
    for (const auto status : {std::optional<int>(1), std::optional<int>()}) {
        processes.setExitStatus(status);
        EXPECT_EQ(run({"goto", "3"}), 0);
        EXPECT_EQ(switched, Texts{"C"});
        switching = false;
        EXPECT_EQ(run({"goto", "3"}), 1);
        EXPECT_EQ(err + out, "");
        switching = true;
        switched.clear();
    }
    const auto scriptRuns = processes.runs().size();
    spaces.addDisplay("UUID-2", {"D", "E"});
    tagFile = R"([{"label":"far","spaceUUID":"E"},{"label":"closed","spaceUUID":"Z"}])";
    EXPECT_EQ(run({"goto", "far"}), 0);
    EXPECT_EQ(run({"goto", "closed"}), 0);
    EXPECT_EQ(switched, (Texts{"E", "Z"}));
    EXPECT_EQ(processes.runs().size(), scriptRuns) << "neither is on the pointer's display";
}

TEST_F(OrvelloCLITest, listsOrdinaryWindows) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    desktop_.windowList.set(std::vector<platform::WindowInfo>{
        {0, 7, 42, "XTerm", platform::Rect{-1.9, 2.9, 10.5, 20}},
        {25, 8, {}, {}, {}},
        {{}, 9, {}, {}, {}},
        {0, {}, {}, {}, {}},
        {0, 10, {}, {}, platform::Rect{kInfinity, 0, std::nan(""), 0}},
        {0, 11, {}, {}, {}},
    });
    spaces.putWindow({7}, {{2}, {3}});
    spaces.putWindow({10}, {{77}});
    EXPECT_EQ(run({"windows"}), 0);
    const auto rows = nlohmann::json::parse(out);
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_TRUE(out.starts_with(
        "[\n  {\n    \"cgwindowid\" : 7,\n    \"h\" : 20,\n    \"owner\" : \"XTerm\",\n    \"pid\" : 42,\n"
        "    \"space\" : \"B\",\n    \"spaceIndex\" : 2,\n    \"w\" : 10,\n    \"x\" : -1,\n    \"y\" : 2\n"
        "  },\n"))
        << out;
    EXPECT_FALSE(rows[1].contains("space")) << "a Space that is not in the layout";
    EXPECT_EQ(rows[2],
              (nlohmann::json{{"cgwindowid", 11}, {"pid", -1}, {"x", 0}, {"y", 0}, {"w", 0}, {"h", 0}}));
    desktop_.windowList.set(std::nullopt);
    EXPECT_EQ(run({"windows"}), 0);
    EXPECT_EQ(out, "[]\n");
}

TEST(TagLabelsTest, needsEveryElementToBeATag) {
    for (const auto& [json, decodes] : std::vector<std::pair<const char*, bool>>{
             {R"([])", true},
             {R"([{"label":"a"},{"label":"b","spaceUUID":null,"frame":[1,2]}])", true},
             {R"([{"label":"a","spaceUUID":"A"},{"spaceUUID":"B"}])", false},
             {R"([{"label":7}])", false},
             {R"([{"label":"a","spaceUUID":7}])", false},
             {R"([1])", false},
             {R"({"label":"a"})", false},
             {"[{\"label\":\"\xFF\"}]", false},
             {"[{\"label\":\"a\"}", false},
             {"", false},
         })
        EXPECT_EQ(decodeMiniTags(json).has_value(), decodes) << json;
    EXPECT_EQ(decodeMiniTags(std::string(100000, '[')), std::nullopt);
}

TEST(TagLabelsTest, takesTheLaterTagOfASpaceAndTheFirstMatchInFileOrder) {
    const TagLabels labels(R"([{"label":"web","spaceUUID":"A"},{"label":"mail 1","spaceUUID":"B"},
                               {"label":"mail 2","spaceUUID":"C"},{"label":"code","spaceUUID":"A"}])");
    EXPECT_EQ(labels.labelOf("A"), "code");
    EXPECT_EQ(labels.spaceMatching("web"), std::nullopt);
    EXPECT_EQ(labels.spaceMatching("mail"), "B");
    EXPECT_EQ(labels.spaceMatching("mail 2"), "C");
}

}  // namespace
}  // namespace orvellos
