#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <thread>

#include "tests/support/PlainWindow.h"
#include "tests/support/PrivateDesktop.h"
#include "tests/support/TemporaryFolder.h"

using namespace desktop_test;
using nlohmann::json;

namespace {

constexpr const char* kDesktopUuids[] = {
    "6FD273A8-5697-586A-A7DF-5D35B4FF99F5", "5D9A46E4-1B08-55D6-BAA8-271906661459",
    "F4386E07-CC6B-5C7B-8641-084A0AB9EBED", "7C4E47AC-B104-5C8B-B591-D86390D85B25"};
constexpr const char* kKwinId = "aaaaaaaa-0000-4000-8000-000000000002";

// A folder with the command and, if wanted, its helper, for what depends on where they are installed.
std::string installation(const PrivateDesktop& desktop, bool withHelper) {
    const auto folder = desktop.folder() / "installed";
    std::filesystem::create_directories(folder / "bin");
    std::filesystem::create_directories(folder / "libexec/orvello");
    std::filesystem::copy(PrivateDesktop::program("orvello"), folder / "bin/orvello");
    if (withHelper)
        std::filesystem::copy(PrivateDesktop::program("osascript"), folder / "libexec/orvello/osascript");
    return folder / "bin/orvello";
}

class CommandLine : public testing::Test {
  protected:
    static CommandResult run(PrivateDesktop& desktop, std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), PrivateDesktop::program("orvello"));
        return desktop.run(arguments);
    }
    static json dump(PrivateDesktop& desktop) {
        const auto result = run(desktop, {"dump"});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.standardError, "");
        return json::parse(result.standardOutput);
    }
    static void expectNoSpaces(PrivateDesktop& desktop, const char* why) {
        SCOPED_TRACE(why);
        const auto dumped = run(desktop, {"dump"});
        EXPECT_EQ(dumped.status, 0);
        EXPECT_EQ(dumped.standardOutput, "[]\n");
        const auto gone = run(desktop, {"goto", "1"});
        EXPECT_EQ(gone.status, 1);
        EXPECT_EQ(gone.standardError, "no Spaces reported — is this the pro (private-API) build?\n");
    }
    static void writeTags(const PrivateDesktop& desktop, const std::string& content) {
        std::filesystem::create_directories(desktop.dataFolder() / "orvello");
        writeFile(desktop.dataFolder() / "orvello/tags.json", content);
    }
};

struct ManagerCase {
    const char* name;
    WindowManagerOptions options;
    std::string secondUuid;
};
void PrintTo(const ManagerCase& managerCase, std::ostream* out) {
    *out << managerCase.name;
}
class CommandLineOn : public CommandLine, public testing::WithParamInterface<ManagerCase> {};

TEST_P(CommandLineOn, DumpsAndGoes) {
    PrivateDesktop desktop({.windowManager = GetParam().options});
    const auto& uuid = GetParam().secondUuid;
    writeTags(desktop, R"([{"label":"Mail & Chat","spaceUUID":")" + uuid + R"("}])");
    const auto spaces = dump(desktop);
    ASSERT_EQ(spaces.size(), 4U);
    EXPECT_EQ(spaces[1], (json{{"index", 2}, {"uuid", uuid}, {"current", false}, {"tag", "Mail & Chat"}}));
    EXPECT_EQ(spaces[0]["current"], true);

    const std::string third = spaces[2]["uuid"];
    for (const auto& [target, desktopIndex] : std::vector<std::pair<std::string, std::uint32_t>>{
             {"4", 3}, {"mail", 1}, {third, 2}, {"+1", 0}, {uuid, 1}}) {
        const auto result = run(desktop, {"goto", target});
        EXPECT_EQ(result.status, 0) << target << result.standardError;
        EXPECT_EQ(desktop.x().currentDesktop(), desktopIndex) << target << ": changed when the command ends";
    }
    EXPECT_EQ(run(desktop, {"goto", "0"}).standardError, "no Space at index 0 (have 4)\n");
    EXPECT_EQ(run(desktop, {"goto", "🙂"}).status, 1);
}

TEST_P(CommandLineOn, GoesByItselfWithoutTheHelper) {
    PrivateDesktop desktop({.windowManager = GetParam().options});
    const auto result = desktop.run({installation(desktop, false), "goto", "3"});
    EXPECT_EQ(result.status, 0) << result.standardError;
    EXPECT_TRUE(waitUntil([&] { return desktop.x().currentDesktop() == 2U; }));
}

TEST_P(CommandLineOn, ListsTheWindowsOfAllSpaces) {
    PrivateDesktop desktop({.windowManager = GetParam().options});
    auto& x = desktop.x();
    const PlainWindow window(desktop.display(), {.frame = {300, 200, 400, 300}, .desktop = 1});
    ASSERT_TRUE(waitUntil([&] {
        return x.desktopOf(window.id()) == 1U && std::ranges::count(x.clients(), window.id()) == 1 &&
               x.cardinals(window.id(), "_NET_FRAME_EXTENTS");
    }));
    const auto rows = json::parse(run(desktop, {"windows"}).standardOutput);
    const auto row =
        std::ranges::find_if(rows, [&](const json& r) { return r["cgwindowid"] == window.id(); });
    ASSERT_NE(row, rows.end());
    EXPECT_EQ((*row)["space"], GetParam().secondUuid);
    EXPECT_EQ((*row)["spaceIndex"], 2);
    EXPECT_GE((*row)["w"], 400);
    EXPECT_GT((*row)["h"], 300) << "the frame counts";
}

TEST_P(CommandLineOn, SeesItsSpacesWhileTheWindowManagerIsReplaced) {
    PrivateDesktop desktop({.windowManager = GetParam().options});
    const auto before = dump(desktop);
    std::atomic<bool> replaced = false;
    struct Answer {
        json spaces;
        std::chrono::steady_clock::duration time;
    };
    std::vector<Answer> answers;
    std::thread watching([&] {
        while (!replaced) {
            const auto start = std::chrono::steady_clock::now();
            const auto spaces = dump(desktop);
            answers.push_back({spaces, std::chrono::steady_clock::now() - start});
        }
    });
    desktop.replaceWindowManager();
    replaced = true;
    watching.join();
    // On a machine so busy that the replacement takes long, the command gives up; not before it has waited.
    constexpr std::chrono::milliseconds kWaits(600);
    for (const auto& [spaces, time] : answers)
        EXPECT_TRUE(spaces.empty() ? time >= kWaits : spaces.at(1)["uuid"] == before[1]["uuid"]) << spaces;
    EXPECT_TRUE(waitUntil([&] { return dump(desktop) == before; }));
}

INSTANTIATE_TEST_SUITE_P(
    WindowManagers, CommandLineOn,
    testing::Values(ManagerCase{"Openbox", {.kind = WindowManager::Openbox}, kDesktopUuids[1]},
                    ManagerCase{"Xfwm4", {.kind = WindowManager::Xfwm4}, kDesktopUuids[1]},
                    ManagerCase{"Kwin",
                                {.kind = WindowManager::Kwin,
                                 .desktops = 4,
                                 .desktopIds = {"aaaaaaaa-0000-4000-8000-000000000001", kKwinId}},
                                kKwinId}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(CommandLine, HasNoSpacesWithoutAWindowManagerOrWithGarbage) {
    PrivateDesktop desktop({.windowManager = {.kind = WindowManager::None}});
    auto& x = desktop.x();
    expectNoSpaces(desktop, "no window manager");
    EXPECT_EQ(run(desktop, {"windows"}).standardOutput, "[]\n");

    // The test plays the window manager: its check window is a window of its own.
    const PlainWindow check(desktop.display());
    const std::vector<std::uint32_t> checkWindow = {check.id()};
    const auto setRoot = [&](const char* property, std::uint32_t value) {
        x.setCardinals(x.root(), property, std::vector<std::uint32_t>{value});
    };
    const auto setCheck = [&](xcb_window_t window) {
        xcb_change_property(x.connection(), XCB_PROP_MODE_REPLACE, window, x.atom("_NET_SUPPORTING_WM_CHECK"),
                            XCB_ATOM_WINDOW, 32, 1, checkWindow.data());
    };
    setCheck(x.root());
    setCheck(check.id());
    for (const std::uint32_t count : {0U, 0xFFFFFFFFU}) {
        setRoot("_NET_NUMBER_OF_DESKTOPS", count);
        x.synchronize();
        expectNoSpaces(desktop, "an absurd count");
    }
    xcb_change_property(x.connection(), XCB_PROP_MODE_REPLACE, x.root(), x.atom("_NET_NUMBER_OF_DESKTOPS"),
                        XCB_ATOM_STRING, 8, 4, "four");
    x.synchronize();
    expectNoSpaces(desktop, "a count of another type");

    setRoot("_NET_NUMBER_OF_DESKTOPS", 3);
    setRoot("_NET_CURRENT_DESKTOP", 9);
    x.synchronize();
    const auto spaces = dump(desktop);
    ASSERT_EQ(spaces.size(), 3U) << "desktops without names, the current one out of range";
    for (const auto& space : spaces) EXPECT_EQ(space["current"], false);
    EXPECT_EQ(run(desktop, {"goto", "2"}).status, 1) << "nothing there can switch";
}

TEST_F(CommandLine, GivesUpOnWhatDoesNotAnswer) {
    PrivateDesktop desktop({.windowManager = {.kind = WindowManager::Kwin}});
    desktop.windowManager().signal(SIGSTOP);
    expectNoSpaces(desktop, "KWin is stopped");
    desktop.windowManager().signal(SIGCONT);
    EXPECT_TRUE(waitUntil([&] { return dump(desktop).size() == 4; }));

    const auto bus = desktop.environment.at("DBUS_SESSION_BUS_ADDRESS");
    desktop.environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nowhere/bus";
    expectNoSpaces(desktop, "no bus to ask KWin on");
    desktop.environment["DBUS_SESSION_BUS_ADDRESS"] = bus;

    desktop.server().signal(SIGSTOP);
    expectNoSpaces(desktop, "the X server is stopped");
    EXPECT_EQ(run(desktop, {"windows"}).standardOutput, "[]\n");
    desktop.server().signal(SIGCONT);
}

TEST_F(CommandLine, GivesUpEvenWhenItsParentBlocksTheAlarm) {
    PrivateDesktop desktop({.windowManager = {.kind = WindowManager::None}});
    desktop.server().signal(SIGSTOP);
    const auto result =
        desktop.run({"env", "--block-signal=ALRM", PrivateDesktop::program("orvello"), "dump"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standardOutput, "[]\n");
    desktop.server().signal(SIGCONT);
}

TEST_F(CommandLine, DoesWithoutAHomeAndWithoutADisplay) {
    PrivateDesktop desktop;
    desktop.environment.erase("HOME");
    desktop.environment.erase("XDG_DATA_HOME");
    EXPECT_EQ(dump(desktop).size(), 4U);
    desktop.environment.erase("DISPLAY");
    expectNoSpaces(desktop, "no display");
}

TEST_F(CommandLine, SurvivesItsOutputBeingRefused) {
    PrivateDesktop desktop;
    const auto shell = [&](const std::string& line) {
        return desktop.run({"bash", "-c", line, "bash", PrivateDesktop::program("orvello")});
    };
    EXPECT_EQ(shell("\"$1\" dump > /dev/full").status, 1);
    EXPECT_EQ(shell("set -o pipefail; \"$1\" dump | true").status.value_or(-1) & ~1, 0) << "no signal";
    EXPECT_EQ(shell("\"$1\" dump >&-").status, 0);
    EXPECT_EQ(shell("trap '' CHLD; \"$1\" goto 2").status, 0);
    EXPECT_EQ(desktop.x().currentDesktop(), 1U);
}

TEST_F(CommandLine, ListsWindowsWhileTheyComeAndGo) {
    PrivateDesktop desktop;
    std::atomic<bool> done = false;
    std::thread churn([&] {
        XClient client(desktop.display());
        while (!done) {
            std::vector<xcb_window_t> windows(30);
            for (auto& window : windows) {
                window = xcb_generate_id(client.connection());
                xcb_create_window(client.connection(), XCB_COPY_FROM_PARENT, window, client.root(), 0, 0, 50,
                                  50, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
                xcb_map_window(client.connection(), window);
            }
            client.synchronize();
            for (const auto window : windows) xcb_destroy_window(client.connection(), window);
            client.synchronize();
        }
    });
    for (int i = 0; i < 30; ++i) {
        const auto result = run(desktop, {"windows"});
        EXPECT_EQ(result.status, 0);
        EXPECT_TRUE(json::accept(result.standardOutput)) << result.standardOutput;
    }
    done = true;
    churn.join();
}

TEST_F(CommandLine, RefusesOtherScriptsAndSaysWhatItCannotStart) {
    PrivateDesktop desktop;
    const auto helper = PrivateDesktop::program("osascript");
    for (const auto& arguments : std::vector<std::vector<std::string>>{
             {helper}, {helper, "-e"}, {helper, "-e", "beep"}, {helper, "script.scpt"}}) {
        const auto result = desktop.run(arguments);
        EXPECT_EQ(result.status, 1);
        EXPECT_NE(result.standardError, "");
    }
    const auto started = desktop.run({installation(desktop, true), "--help"});
    EXPECT_EQ(started.status, 1);
    EXPECT_EQ(std::ranges::count(started.standardError, '\n'), 1) << started.standardError;
}

}  // namespace
