// Tag windows of the running application, as the user and the window manager see them.

#include <X11/keysym.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>

#include "tests/desktop/TaggedDesktop.h"
#include "tests/support/Picture.h"
#include "tests/support/PlainWindow.h"
#include "tests/support/TemporaryFolder.h"

using namespace desktop_test;

namespace {

struct Surroundings {
    const char* name;
    WindowManagerOptions windowManager;
};
void PrintTo(const Surroundings& surroundings, std::ostream* out) {
    *out << surroundings.name;
}

class TagWindowsTest : public testing::TestWithParam<Surroundings> {
  protected:
    static bool hasOverview() { return GetParam().windowManager.kind == WindowManager::Kwin; }
    // The windows of a tag that the window manager knows: the tag, and its backup for an overview.
    static std::vector<bool> managedWindows() {
        return hasOverview() ? std::vector{false, true} : std::vector{false};
    }
};

TEST_P(TagWindowsTest, ShowEachOnItsSpaceAlone) {
    TaggedDesktop desktop(GetParam().windowManager);
    auto application = desktop.start({desktop.program("orvello")});
    ASSERT_TRUE(desktop.waitForTagOf(0)) << application.standardError();
    for (const std::size_t space : {3, 1, 2, 0}) {
        ASSERT_TRUE(desktop.goToDesktop(static_cast<std::uint32_t>(space)));
        EXPECT_TRUE(desktop.waitForTagOf(space)) << "Space " << space;
    }
    for (std::uint32_t i = 0; i < std::size(kTags); ++i)
        for (const bool backup : {false, true})
            EXPECT_EQ(desktop.x().desktopOf(desktop.window(kTags[i].label, backup)), i) << kTags[i].label;
    for (const auto& tag : kTags)
        EXPECT_TRUE(waitUntil([&] {
            return std::ranges::count(desktop.x().clients(), desktop.window(tag.label, true)) ==
                   hasOverview();
        })) << tag.label;
}

TEST_P(TagWindowsTest, ComeBackWhenSomethingPutsThemOnAllSpaces) {
    TaggedDesktop desktop(GetParam().windowManager);
    auto application = desktop.start({desktop.program("orvello")});
    ASSERT_TRUE(desktop.waitForTagOf(0)) << application.standardError();
    auto& x = desktop.x();
    const std::uint32_t propertyChange = XCB_EVENT_MASK_PROPERTY_CHANGE;
    for (const bool backup : managedWindows()) {
        const auto code = desktop.window("Code", backup);
        xcb_change_window_attributes(x.connection(), code, XCB_CW_EVENT_MASK, &propertyChange);
        x.moveToDesktop(code, kEveryDesktop);
        int changes = 0;
        EXPECT_TRUE(waitUntil([&] {
            while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(x.connection())})
                changes += typeOf(*event) == XCB_PROPERTY_NOTIFY &&
                           reinterpret_cast<const xcb_property_notify_event_t&>(*event).atom ==
                               x.atom("_NET_WM_DESKTOP");
            return changes >= 2 && x.desktopOf(code) == 1U;
        })) << changes;
    }
    EXPECT_TRUE(desktop.waitForTagOf(0));
}

TEST_P(TagWindowsTest, KeepOutOfTheUsersWay) {
    TaggedDesktop desktop(GetParam().windowManager);
    auto& x = desktop.x();
    PlainWindow below(desktop.display(), {.frame = {0, 0, 1280, 700}, .color = 0xE0E0E0});
    ASSERT_TRUE(waitUntil([&] { return x.activeWindow() == below.id(); }));
    auto application = desktop.start({desktop.program("orvello")});
    ASSERT_TRUE(desktop.waitForTagOf(0)) << application.standardError();

    const auto tag = desktop.window("Mail");
    EXPECT_EQ(x.atoms(tag, "_NET_WM_WINDOW_TYPE"),
              std::vector<std::string>{"_NET_WM_WINDOW_TYPE_NOTIFICATION"});
    const auto states = x.atoms(tag, "_NET_WM_STATE");
    for (const char* state : {"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"})
        EXPECT_TRUE(std::ranges::count(states, state)) << state;
    EXPECT_FALSE(std::ranges::count(states, "_NET_WM_STATE_DEMANDS_ATTENTION"));
    EXPECT_EQ(x.activeWindow(), below.id()) << "a tag takes no focus";
    const auto stack = x.stackedClients();
    EXPECT_GT(std::ranges::find(stack, tag), std::ranges::find(stack, below.id())) << "a tag floats";

    // On the tag a click is the tag's, however soon after the pointer's arrival; in the margin beside the
    // rounded end it belongs to the window below.
    const auto place = x.geometry(tag).value();
    const int middle = place.y + place.height / 2;
    auto hands = desktop.devices();
    ASSERT_TRUE(waitUntil([&] { return desktop.statusButton() != 0; })) << "a click on a tag opens the list";
    ASSERT_TRUE(waitUntil([&] {
        return x.shape(x.frameOf(tag), ShapeKind::Input) == x.shape(tag, ShapeKind::Input);
    })) << "the frame follows";
    hands.click(place.x + place.width - 8, middle);
    EXPECT_TRUE(waitUntil([&] { return below.buttonPresses().size() == 1; }));
    hands.click(600, 600);
    EXPECT_TRUE(waitUntil([&] { return below.buttonPresses().size() == 2; }));
    hands.click(place.x + place.width / 2, middle);
    const int beside = place.x + place.width + 10;
    EXPECT_TRUE(waitUntil([&] {
        hands.click(beside, middle);
        return below.buttonPresses().size() > 2;
    }));
    EXPECT_EQ(below.buttonPresses().at(2).x, beside) << "the click on the tag went through";
    EXPECT_TRUE(waitUntil([&] { return x.activeWindow() == below.id(); }))
        << "the list that the click on the tag opened gives the focus back";
}

TEST_P(TagWindowsTest, AreCoveredByAWindowInFullScreen) {
    TaggedDesktop desktop(GetParam().windowManager);
    PlainWindow film(desktop.display(), {.frame = {0, 0, 1280, 700}, .color = 0x202020});
    auto application = desktop.start({desktop.program("orvello")});
    ASSERT_TRUE(desktop.waitForTagOf(0)) << application.standardError();
    film.setFullScreen(true);
    EXPECT_TRUE(desktop.waitForTagOf(kNoTag));
    for (const std::size_t space : {1, 0}) {
        ASSERT_TRUE(desktop.goToDesktop(static_cast<std::uint32_t>(space)));
        EXPECT_TRUE(desktop.waitForTagOf(space == 0 ? kNoTag : space)) << space;
    }
    if (hasOverview()) {
        ASSERT_TRUE(desktop.toggleOverview("Overview"));
        EXPECT_TRUE(waitUntil([&] { return takePicture(desktop.x()).count(kTags[0].color, 24) > 300; }));
        ASSERT_TRUE(desktop.toggleOverview("Overview"));
        EXPECT_TRUE(desktop.waitForTagOf(kNoTag));
    }
    {
        const PlainWindow dialog(desktop.display());
        EXPECT_TRUE(desktop.waitForTagOf(0)) << "the user looks at something else";
    }
    EXPECT_TRUE(desktop.waitForTagOf(kNoTag));
    film.setFullScreen(false);
    EXPECT_TRUE(desktop.waitForTagOf(0));
}

TEST_P(TagWindowsTest, FollowADragAndStopPastTheEdge) {
    TaggedDesktop desktop(GetParam().windowManager);
    auto application = desktop.start({desktop.program("orvello")});
    ASSERT_TRUE(desktop.waitForTagOf(0)) << application.standardError();
    auto& x = desktop.x();
    const auto tag = desktop.window("Mail");
    const auto start = x.geometry(tag).value();
    const int pressX = start.x + start.width / 2;
    const int pressY = start.y + start.height / 2;
    ASSERT_TRUE(waitUntil([&] { return desktop.statusButton() != 0; })) << "it has its keys";
    ASSERT_TRUE(desktop.pointAtTag(tag, pressX, pressY));
    auto hands = desktop.devices();
    hands.pressButton(XCB_BUTTON_INDEX_1);
    hands.movePointer(pressX - 300, pressY + 200);
    EXPECT_TRUE(waitUntil([&] {
        return x.geometry(tag) == Rectangle{start.x - 300, start.y + 200, start.width, start.height};
    })) << x.geometry(tag)->x
        << " " << x.geometry(tag)->y;
    hands.movePointer(0, pressY + 200);
    EXPECT_TRUE(waitUntil([&] { return x.geometry(tag)->x == -20; })) << x.geometry(tag)->x;

    // A size step leaves it in the hand.
    hands.movePointer(560, 400);
    hands.typeKeys(
        {hands.keyFor(XK_Control_L), hands.keyFor(XK_Alt_L), hands.keyFor(XK_Super_L), hands.keyFor('=')});
    const auto isInTheHand = [&] {
        const auto larger = x.geometry(tag).value();
        return larger.height == 100 + 40 && larger.x < 560 && larger.x + larger.width > 560;
    };
    EXPECT_TRUE(waitUntil(isInTheHand)) << x.geometry(tag)->x << " " << x.geometry(tag)->height;
    const auto before = readFile(desktop.settingsFile());
    hands.releaseButton(XCB_BUTTON_INDEX_1);
    EXPECT_TRUE(waitUntil([&] { return readFile(desktop.settingsFile()) != before; }));
    EXPECT_TRUE(isInTheHand()) << "it stays where it was left";
}

TEST_P(TagWindowsTest, EndADragWhoseReleaseTheyNeverSee) {
    TaggedDesktop desktop(GetParam().windowManager);
    desktop.environment["ORVELLO_DEBUG"] = "1";
    auto application = desktop.start({desktop.program("orvello")});
    ASSERT_TRUE(desktop.waitForTagOf(0)) << application.standardError();
    const auto saysLast = [&](const std::string& editing) {
        return waitUntil([&] {
            const auto said = application.standardError();
            const auto at = said.rfind("editingContext.isActive=");
            return at != std::string::npos && said.substr(said.find('=', at) + 1).starts_with(editing);
        });
    };
    const auto place = desktop.x().geometry(desktop.window("Mail")).value();
    const int middle = place.y + place.height / 2;
    ASSERT_TRUE(desktop.pointAtTag(desktop.window("Mail"), place.x + place.width / 2, middle));
    auto hands = desktop.devices();
    hands.pressButton(XCB_BUTTON_INDEX_1);
    ASSERT_TRUE(saysLast("true"));
    ASSERT_TRUE(desktop.goToDesktop(3));
    ASSERT_TRUE(desktop.waitForTagOf(3));
    hands.movePointer(place.x - 200, middle);
    hands.releaseButton(XCB_BUTTON_INDEX_1);
    EXPECT_TRUE(saysLast("false"));
}

TEST_P(TagWindowsTest, SurviveTheWindowManagersReplacement) {
    TaggedDesktop desktop(GetParam().windowManager);
    auto application = desktop.start({desktop.program("orvello")});
    ASSERT_TRUE(desktop.waitForTagOf(0)) << application.standardError();
    desktop.replaceWindowManager();
    for (const std::size_t space : {1, 3, 0}) {
        ASSERT_TRUE(desktop.goToDesktop(static_cast<std::uint32_t>(space)));
        EXPECT_TRUE(desktop.waitForTagOf(space)) << "Space " << space;
    }
    EXPECT_TRUE(waitUntil([&] {
        const auto states = desktop.x().atoms(desktop.window("Code"), "_NET_WM_STATE");
        return std::ranges::count(states, "_NET_WM_STATE_SKIP_TASKBAR") &&
               std::ranges::count(states, "_NET_WM_STATE_SKIP_PAGER");
    }));
    EXPECT_TRUE(application.isRunning());
}

TEST_P(TagWindowsTest, SurviveTheWindowManagersEnd) {
    TaggedDesktop desktop(GetParam().windowManager);
    auto application = desktop.start({desktop.program("orvello")});
    ASSERT_TRUE(desktop.waitForTagOf(0)) << application.standardError();
    // Requests that the window manager has not looked at yet would end with it.
    for (const auto& tag : kTags)
        for (const bool backup : managedWindows())
            ASSERT_TRUE(waitUntil([&] {
                return std::ranges::count(desktop.x().clients(), desktop.window(tag.label, backup)) == 1;
            })) << tag.label;
    desktop.windowManager().signal(SIGKILL);
    ASSERT_TRUE(desktop.windowManager().wait());
    desktop.startWindowManager();
    for (const std::size_t space : {1, 3, 0}) {
        ASSERT_TRUE(desktop.goToDesktop(static_cast<std::uint32_t>(space)));
        EXPECT_TRUE(desktop.waitForTagOf(space)) << "Space " << space;
    }
    EXPECT_TRUE(application.isRunning());
}

INSTANTIATE_TEST_SUITE_P(
    WindowManagers, TagWindowsTest,
    testing::Values(Surroundings{"Openbox", {.kind = WindowManager::Openbox}},
                    Surroundings{"OpenboxWithPicom", {.kind = WindowManager::Openbox, .composited = true}},
                    Surroundings{"Xfwm4Composited", {.kind = WindowManager::Xfwm4, .composited = true}},
                    Surroundings{"KwinComposited", {.kind = WindowManager::Kwin, .composited = true}}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(TagWindowTest, ChangesItsShapeAsACompositorComesAndGoes) {
    TaggedDesktop desktop({.kind = WindowManager::Openbox});
    auto application = desktop.start({desktop.program("orvello")});
    ASSERT_TRUE(desktop.waitForTagOf(0)) << application.standardError();
    auto& x = desktop.x();
    const auto tag = desktop.window("Mail");
    const auto size = x.geometry(tag).value();
    const auto isWhole = [&] {
        return x.shape(tag, ShapeKind::Bounding) == std::vector{Rectangle{0, 0, size.width, size.height}};
    };
    EXPECT_FALSE(isWhole());
    EXPECT_TRUE(x.shape(desktop.window("Mail", true), ShapeKind::Bounding).empty())
        << "a backup that is not seen";
    desktop.startCompositor();
    EXPECT_TRUE(waitUntil(isWhole));
    desktop.stopCompositor();
    EXPECT_TRUE(waitUntil([&] { return !isWhole(); }));
    EXPECT_TRUE(desktop.waitForTagOf(0));
}

TEST(TagWindowTest, AsksAgainWhenAStartingWindowManagerOverlooksIt) {
    PrivateDesktop desktop({.windowManager = {.kind = WindowManager::None}});
    TaggedDesktop::write(
        desktop.dataFolder() / "orvello/tags.json",
        {{{"id", "00000000-1111-4111-8111-111111111111"}, {"label", "Mail"}, {"colorHex", "#3B82F6"}}});
    auto* const connection = desktop.x().connection();
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    xcb_change_window_attributes(connection, desktop.x().root(), XCB_CW_EVENT_MASK, &mask);
    desktop.x().synchronize();
    auto application = desktop.start({desktop.program("orvello")});
    std::map<xcb_window_t, int> requests;
    EXPECT_TRUE(waitUntil([&] {
        while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection)}) {
            const auto window = reinterpret_cast<const xcb_map_request_event_t&>(*event).window;
            if (typeOf(*event) == XCB_MAP_REQUEST && desktop.x().text(window, "_NET_WM_NAME") == "Mail")
                ++requests[window];
        }
        return !requests.empty() &&
               std::ranges::all_of(requests, [](const auto& each) { return each.second > 1; });
    })) << application.standardError();
}

TEST(TagWindowTest, TakesATagFileAsItIs) {
    TaggedDesktop desktop({.kind = WindowManager::Openbox});
    const auto file = desktop.dataFolder() / "orvello/tags.json";
    auto tags = nlohmann::json::parse(std::ifstream(file));
    tags[1]["spaceUUID"] = tags[0]["spaceUUID"];
    tags[2]["spaceUUID"] = "11111111-2222-4333-8444-555555555555";
    TaggedDesktop::write(file, tags);
    desktop.environment["ORVELLO_DEBUG"] = "1";
    auto application = desktop.start({desktop.program("orvello")});
    auto& x = desktop.x();
    ASSERT_TRUE(waitUntil([&] {
        return x.desktopOf(desktop.window("Mail")) == 0U && x.desktopOf(desktop.window("Code")) == 0U;
    })) << application.standardError();
    EXPECT_TRUE(waitUntil([&] { return takePicture(x).count(kTags[1].color, 24) >= kEnoughPixels; }))
        << "two tags of one Space lie on each other";
    EXPECT_TRUE(x.shape(desktop.window("Music"), ShapeKind::Bounding).empty()) << "its Space is nowhere";
    EXPECT_EQ(nlohmann::json::parse(std::ifstream(file)), tags);
    EXPECT_NE(application.standardError().find("orphan"), std::string::npos) << application.standardError();
}

TEST(TagWindowTest, GrowsWithTheScaleFactor) {
    TaggedDesktop desktop({.kind = WindowManager::Openbox});
    desktop.environment["QT_SCALE_FACTOR"] = "2";
    auto application = desktop.start({desktop.program("orvello")});
    ASSERT_TRUE(desktop.waitForTagOf(0)) << application.standardError();
    const auto place = desktop.x().geometry(desktop.window("Mail")).value();
    EXPECT_EQ(place.height, 2 * (64 + 40));
    EXPECT_EQ(place.x + place.width / 2, 1280 - 2 * 224);
    EXPECT_EQ(place.y + place.height / 2, 2 * 56);
}

TEST(ApplicationTest, EndsWhenItIsAskedTo) {
    TaggedDesktop desktop({.kind = WindowManager::Openbox});
    for (const int signal : {SIGTERM, SIGINT}) {
        auto application = desktop.start({desktop.program("orvello")});
        ASSERT_TRUE(desktop.waitForTagOf(0)) << application.standardError();
        application.signal(signal);
        EXPECT_EQ(application.wait(), 0) << "signal " << signal;
        EXPECT_TRUE(waitUntil([&] { return desktop.window("Mail") == 0; }));
    }
}

TEST(ApplicationTest, KeepsItsArgumentsFromTheToolkit) {
    TaggedDesktop desktop({.kind = WindowManager::Openbox});
    auto application = desktop.start({desktop.program("orvello"), "-platform", "no-such-platform"});
    EXPECT_TRUE(desktop.waitForTagOf(0)) << application.standardError();
}

TEST(ApplicationTest, StartsNoSessionBus) {
    TaggedDesktop desktop({.kind = WindowManager::Openbox});
    ASSERT_FALSE(desktop.environment.contains("DBUS_SESSION_BUS_ADDRESS"));
    // Found before an installed one: the program by which libraries start a bus.
    const auto started = desktop.folder() / "started";
    const auto launcher = desktop.folder() / "programs/dbus-launch";
    std::filesystem::create_directories(launcher.parent_path());
    writeFile(launcher, "#!/bin/sh\n: > '" + started.string() + "'\nexit 1\n");
    std::filesystem::permissions(launcher, std::filesystem::perms::owner_all);
    desktop.environment["PATH"] = launcher.parent_path().string() + ":" + desktop.environment["PATH"];
    // On this desktop the toolkit asks the bus for the user's settings.
    desktop.environment.insert(
        {{"XDG_CURRENT_DESKTOP", "KDE"}, {"KDE_FULL_SESSION", "true"}, {"KDE_SESSION_VERSION", "5"}});
    for (const bool hasRuntimeFolder : {true, false}) {
        if (!hasRuntimeFolder) desktop.environment.erase("XDG_RUNTIME_DIR");
        auto application = desktop.start({desktop.program("orvello")});
        ASSERT_TRUE(desktop.waitForTagOf(0)) << application.standardError();
        application.signal(SIGTERM);
        ASSERT_EQ(application.wait(), 0);
        EXPECT_FALSE(std::filesystem::exists(started)) << "runtime folder: " << hasRuntimeFolder;
        ASSERT_TRUE(waitUntil([&] { return desktop.window("Mail") == 0; }));
    }
    for (const auto process : processesWithEnvironment(desktop.folder().string())) {
        std::string name;
        std::getline(std::ifstream("/proc/" + std::to_string(process) + "/comm") >> std::ws, name);
        EXPECT_FALSE(name.starts_with("dbus-")) << name;
    }
}

TEST(ApplicationTest, SaysInOneLineThatThereIsNoDisplay) {
    PrivateDesktop desktop({.screen = std::nullopt});
    const auto result = desktop.run({desktop.program("orvello")});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.standardOutput, "");
    EXPECT_EQ(result.standardError, "orvello: cannot open the display \"\"\n");
}

TEST(ApplicationTest, DoesNotWaitForAServerThatIsStopped) {
    PrivateDesktop desktop({.windowManager = {.kind = WindowManager::None}});
    desktop.server().signal(SIGSTOP);
    const auto result = desktop.run({desktop.program("orvello")});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.standardError, "orvello: cannot open the display \"" + desktop.display() + "\"\n");
    desktop.server().signal(SIGCONT);
}

TEST(ApplicationTest, EndsInOneLineWhenTheServerGoesAway) {
    TaggedDesktop desktop({.kind = WindowManager::Openbox});
    auto application = desktop.start({desktop.program("orvello")});
    ASSERT_TRUE(desktop.waitForTagOf(0)) << application.standardError();
    desktop.server().signal(SIGKILL);
    EXPECT_EQ(application.wait(), 1);
    EXPECT_NE(application.standardError().find("orvello: the display server has gone away\n"),
              std::string::npos)
        << application.standardError();
}

// Memory in use by the process, in KiB.
long residentKiB(pid_t process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmRSS:")) return std::stol(line.substr(6));
    return 0;
}

TEST(ApplicationTest, KeepsUpWithAFloodOfRootPropertyChanges) {
    TaggedDesktop desktop({.kind = WindowManager::Openbox});
    auto application = desktop.start({desktop.program("orvello")});
    ASSERT_TRUE(desktop.waitForTagOf(0)) << application.standardError();
    auto& x = desktop.x();
    const auto before = residentKiB(application.pid());
    for (std::uint32_t i = 0; i < 100000; ++i) x.setCardinals(x.root(), "_NET_CURRENT_DESKTOP", {{i % 4}});
    x.synchronize();
    ASSERT_TRUE(desktop.goToDesktop(2));
    EXPECT_TRUE(desktop.waitForTagOf(2));
    EXPECT_LT(residentKiB(application.pid()), before + 8L * 1024);
}

}  // namespace
