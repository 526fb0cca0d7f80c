// Tags in the overviews of a real desktop.

#include <X11/keysym.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <random>

#include "tests/desktop/TaggedDesktop.h"
#include "tests/support/PlainWindow.h"
#include "tests/support/TemporaryFolder.h"

using namespace desktop_test;

namespace {

constexpr std::uint32_t kWallpaper = 0x30343F;
constexpr std::uint32_t kPaper = 0xF4F1EA;

// Tagged desktops and the running application, with KWin unless told otherwise.
class OverviewDesktop : public TaggedDesktop {
  public:
    explicit OverviewDesktop(WindowManagerOptions options = {.kind = WindowManager::Kwin, .composited = true})
        : TaggedDesktop(std::move(options)) {
        environment["ORVELLO_DEBUG"] = "1";
    }

    void startApplication(const nlohmann::json& defaults = {}) {
        if (!defaults.is_null()) writeSettings(defaults);
        application_.emplace(start({program("orvello")}));
        ASSERT_TRUE(waitForTagOf(0)) << application_->standardError();
        openings_ = 0;
    }
    void stopApplication() { application_.reset(); }
    Process& application() { return application_.value(); }

    // Presses the desktop's shortcut for the overview, which opens and closes it, until the application has
    // noticed.
    void open(const char* overview) {
        ASSERT_TRUE(toggleOverview(overview));
        ++openings_;
        ASSERT_TRUE(waitUntil([&] { return timesSaid("observer.isActive → true") == openings_; }))
            << application().standardError();
    }
    void close(const char* overview) {
        ASSERT_TRUE(toggleOverview(overview));
        // The application says so once at its start.
        ASSERT_TRUE(waitUntil([&] { return timesSaid("observer.isActive → false") == openings_ + 1; }))
            << application().standardError();
    }
    int timesSaid(const std::string& text) {
        const auto said = application().standardError();
        int count = 0;
        for (auto at = said.find(text); at != std::string::npos; at = said.find(text, at + 1)) ++count;
        return count;
    }

    [[nodiscard]] std::filesystem::path tagFile() const { return dataFolder() / "orvello/tags.json"; }
    // The uuid of the desktop that the tag is bound to, by the tag file.
    std::string boundTo(std::size_t tag) {
        std::ifstream file(tagFile());
        return nlohmann::json::parse(file).at(tag).at("spaceUUID");
    }

  private:
    std::optional<Process> application_;
    int openings_ = 0;
};

// On the thumbnails a tag is a fraction of its size: these are pixels of each tag's own colour.
TEST(MissionControlTest, ShowsEverySpacesBigTagAndNoSmallOne) {
    OverviewDesktop desktop;
    const PlainWindow wallpaper(desktop.display(), {.frame = {0, 0, 1280, 800},
                                                    .color = kWallpaper,
                                                    .desktop = kEveryDesktop,
                                                    .type = "_NET_WM_WINDOW_TYPE_DESKTOP"});
    const PlainWindow document(desktop.display(),
                               {.frame = {100, 300, 500, 350}, .color = kPaper, .desktop = 0});
    struct Row {
        const char* style;
        const char* overview;
        int least, most;
    };
    for (const auto& row :
         {Row{"headerBar", "Overview", 600, 1500}, Row{"headerBar", "ShowDesktopGrid", 4000, 15000},
          Row{"fullscreen", "Overview", 3000, 8000}, Row{"fullscreen", "ShowDesktopGrid", 20000, 70000},
          Row{"pill", "Overview", 300, 1500}, Row{"pill", "ShowDesktopGrid", 2000, 12000}}) {
        SCOPED_TRACE(testing::Message() << row.style << " in " << row.overview);
        desktop.startApplication({{"missionControlStyle", row.style}});
        desktop.open(row.overview);
        std::vector<int> counts;
        EXPECT_TRUE(waitUntil([&] {
            const auto picture = takePicture(desktop.x());
            counts.clear();
            for (const auto& tag : kTags) counts.push_back(picture.count(tag.color, 24));
            return std::ranges::all_of(counts,
                                       [&](int count) { return count >= row.least && count <= row.most; });
        })) << testing::PrintToString(counts);
        desktop.close(row.overview);
        EXPECT_TRUE(desktop.waitForTagOf(0));
        desktop.stopApplication();
    }
}

TEST(MissionControlTest, IsForeseenByTheDesktopsOwnShortcut) {
    OverviewDesktop desktop;
    desktop.startApplication();
    auto hands = desktop.devices();
    const auto type = [&](xcb_keysym_t key) {
        hands.typeKeys({hands.keyFor(XK_Super_L), hands.keyFor(key)});
    };
    const auto hasOpened = [&](int times) {
        return [&desktop, times] { return desktop.timesSaid("observer.isActive → true") == times; };
    };
    const auto hasClosed = [&](int times) {
        return [&desktop, times] { return desktop.timesSaid("observer.isActive → false") == times + 1; };
    };
    // KWin may miss its shortcut the first time, and the application learns of it a while after KWin's start.
    ASSERT_TRUE(waitUntil([&] {
        type('w');
        return waitUntil(hasOpened(1), std::chrono::seconds(3));
    }));
    type('w');
    ASSERT_TRUE(waitUntil(hasClosed(1)));
    int opened = 1;
    int foreseen = desktop.timesSaid("PRE-TRIGGER[keystroke]: setting MC=true");
    for (const xcb_keysym_t key : {xcb_keysym_t{'w'}, xcb_keysym_t{XK_F8}}) {
        SCOPED_TRACE(key);
        ASSERT_TRUE(desktop.waitForTagOf(0));
        type(key);
        EXPECT_TRUE(waitUntil(hasOpened(++opened)));
        EXPECT_EQ(desktop.timesSaid("PRE-TRIGGER[keystroke]: setting MC=true"), ++foreseen);
        type(key);
        EXPECT_TRUE(waitUntil(hasClosed(opened)));
    }
}

// Presses Control-Left, Control-Right, Control-Up and F3, which edit and search in the program at work.
void editText(OverviewDesktop& desktop) {
    constexpr xcb_keycode_t kControl = 37, kLeft = 113, kRight = 114, kUp = 111, kF3 = 69;
    auto hands = desktop.devices();
    for (const auto arrow : {kLeft, kRight, kUp}) hands.typeKeys({kControl, arrow});
    hands.typeKeys({kF3});
}

class DesktopsOwnKeysTest : public testing::TestWithParam<WindowManager> {};

TEST_P(DesktopsOwnKeysTest, AreHeardAndThoseOfOtherProgramsAreNot) {
    const bool isKwin = GetParam() == WindowManager::Kwin, isXfce = GetParam() == WindowManager::Xfwm4;
    OverviewDesktop desktop({.kind = GetParam()});
    if (isXfce) desktop.environment["XDG_CURRENT_DESKTOP"] = "XFCE";
    desktop.startApplication();
    constexpr xcb_keycode_t kControl = 37, kAlt = 64, kSuper = 133, kRight = 114, kN = 57;
    // A switch is followed by a glance; a key that announces it is, too.
    const auto heard = [&] {
        return desktop.timesSaid("beginTransientReveal START") -
               desktop.timesSaid("onActiveSpaceChanged FIRED");
    };
    // Goes one desktop on and back, until the application has heard the keys.
    const auto isHeard = [&](std::initializer_list<xcb_keycode_t> keys) {
        return waitUntil([&] {
            const int before = heard();
            desktop.devices().typeKeys(keys);
            const auto isOn = [&] { return desktop.x().currentDesktop() == 1U; };
            return waitUntil(isOn, std::chrono::seconds(2)) && desktop.goToDesktop(0) &&
                   waitUntil([&] { return heard() > before; }, std::chrono::seconds(1));
        });
    };
    editText(desktop);
    if (isXfce) {
        EXPECT_TRUE(isHeard({kControl, kAlt, kRight}));
        const auto path = "/xfwm4/custom/<Super>n";
        EXPECT_EQ(desktop
                      .run({"xfconf-query", "-c", "xfce4-keyboard-shortcuts", "-p", path, "-n", "-t",
                            "string", "-s", "right_workspace_key"})
                      .status,
                  0);
        EXPECT_TRUE(isHeard({kSuper, kN})) << "changed while it runs";
    }
    if (isKwin) {
        constexpr std::int32_t kQtMetaControlRight = 0x14000000 | 0x01000014;
        EXPECT_GE(
            sd_bus_call_method(desktop.bus().connection(), "org.kde.kglobalaccel", "/kglobalaccel",
                               "org.kde.KGlobalAccel", "setForeignShortcut", nullptr, nullptr, "asai", 4,
                               "kwin", "Switch One Desktop to the Right", "", "", 1, kQtMetaControlRight),
            0);
        EXPECT_TRUE(isHeard({kSuper, kControl, kRight})) << "changed while it runs";
    }
    const int before = heard();
    EXPECT_EQ(before > 0, isXfce || isKwin);
    editText(desktop);
    ASSERT_TRUE(desktop.goToDesktop(1) && desktop.waitForTagOf(1));
    EXPECT_EQ(heard(), before);
    EXPECT_EQ(desktop.timesSaid("MC keystroke detected"), 0);
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, DesktopsOwnKeysTest,
                         testing::Values(WindowManager::Openbox, WindowManager::Xfwm4, WindowManager::Kwin),
                         [](const auto& tested) { return nameOf(tested.param); });

TEST(MissionControlTest, FollowsATagThatTheUserMovesInIt) {
    OverviewDesktop desktop;
    desktop.startApplication();
    auto& x = desktop.x();
    const auto first = desktop.boundTo(0), second = desktop.boundTo(1), third = desktop.boundTo(2);
    const auto mail = desktop.window("Mail"), code = desktop.window("Code");
    const auto isOn = [&](xcb_window_t window, std::uint32_t desktopNumber) {
        return waitUntil([&] { return x.desktopOf(window) == desktopNumber; });
    };

    // At any other time a window that is moved goes back.
    x.moveToDesktop(mail, 3);
    ASSERT_TRUE(isOn(mail, 3));
    ASSERT_TRUE(desktop.goToDesktop(1));
    EXPECT_TRUE(isOn(mail, 0));
    EXPECT_EQ(desktop.boundTo(0), first);
    ASSERT_TRUE(desktop.goToDesktop(0));
    ASSERT_TRUE(desktop.waitForTagOf(0));

    // When two tags end on one desktop, the user has not moved them.
    desktop.open("ShowDesktopGrid");
    x.moveToDesktop(mail, 3);
    x.moveToDesktop(code, 3);
    ASSERT_TRUE(isOn(mail, 3) && isOn(code, 3));
    desktop.close("ShowDesktopGrid");
    EXPECT_TRUE(isOn(mail, 0) && isOn(code, 1));
    EXPECT_EQ(desktop.boundTo(0), first);
    EXPECT_EQ(desktop.boundTo(1), second);

    desktop.open("ShowDesktopGrid");
    x.moveToDesktop(mail, 3);
    ASSERT_TRUE(isOn(mail, 3));
    desktop.close("ShowDesktopGrid");
    EXPECT_TRUE(waitUntil([&] { return desktop.boundTo(0) != first; }));
    EXPECT_EQ(desktop.boundTo(2), third);
    EXPECT_TRUE(isOn(desktop.window("Mail", true), 3)) << "the backup goes with it";
    ASSERT_TRUE(desktop.goToDesktop(3));
    EXPECT_TRUE(desktop.waitForTagOf(0)) << "its tag shows there";

    // For two seconds after its end, which a slow machine may need several attempts to meet.
    EXPECT_TRUE(waitUntil([&] {
        desktop.open("ShowDesktopGrid");
        desktop.close("ShowDesktopGrid");
        x.moveToDesktop(code, 0);
        return isOn(code, 0) && desktop.goToDesktop(0) && desktop.goToDesktop(2) &&
               waitUntil([&] { return desktop.boundTo(1) == first; }, std::chrono::seconds(3));
    }));
}

TEST(MissionControlTest, HidesATagWhoseDesktopIsGoneAndShowsItOnTheSameOne) {
    TaggedDesktop desktop({.kind = WindowManager::Openbox});
    auto application = desktop.start({desktop.program("orvello")});
    ASSERT_TRUE(desktop.waitForTagOf(0)) << application.standardError();
    desktop.x().setNumberOfDesktops(2);
    const auto isSeen = [&](bool seen) {
        return waitUntil(
            [&] { return desktop.x().shape(desktop.window("Music"), ShapeKind::Bounding).empty() != seen; });
    };
    EXPECT_TRUE(isSeen(false));
    EXPECT_TRUE(desktop.waitForTagOf(0));
    desktop.x().setNumberOfDesktops(4);
    EXPECT_TRUE(isSeen(true));
    ASSERT_TRUE(desktop.goToDesktop(2));
    EXPECT_TRUE(desktop.waitForTagOf(2));
}

TEST(MissionControlTest, TakesDesktopsThatComeAndGoWhileItIsOpen) {
    OverviewDesktop desktop;
    desktop.startApplication();
    const auto bindings = [&] {
        return std::vector{desktop.boundTo(0), desktop.boundTo(1), desktop.boundTo(2)};
    };
    const auto before = bindings();
    desktop.open("ShowDesktopGrid");
    for (const std::uint32_t count : {5U, 2U, 4U}) {
        desktop.x().setNumberOfDesktops(count);
        ASSERT_TRUE(waitUntil([&] { return desktop.x().numberOfDesktops() == count; }));
    }
    desktop.close("ShowDesktopGrid");
    EXPECT_TRUE(desktop.waitForTagOf(0));
    ASSERT_TRUE(desktop.goToDesktop(1));
    EXPECT_TRUE(desktop.waitForTagOf(1));
    // The third desktop went, and the window manager put its windows on another.
    ASSERT_TRUE(desktop.goToDesktop(2));
    EXPECT_TRUE(desktop.waitForTagOf(3)) << "a new desktop has no tag";
    EXPECT_EQ(bindings(), before);
}

// Five desktops, of which the first, third and fourth are tagged, changed through the desktop's own settings.
class RenumberedDesktop : public OverviewDesktop {
  public:
    RenumberedDesktop() : OverviewDesktop({.kind = WindowManager::Kwin, .desktops = 5, .composited = true}) {
        auto tags = nlohmann::json::parse(std::ifstream(tagFile()));
        const auto row = spaces();
        for (const std::size_t tag : {1, 2}) tags[tag]["spaceUUID"] = row.at(tag + 1).at("uuid");
        write(tagFile(), tags);
    }

    void removeSecond() { ask({"removeDesktop", "string:" + uuid(1)}, 4); }
    void insertSecond() { ask({"createDesktop", "uint32:1", "string:Another"}, 5); }
    void insertInFront() { ask({"createDesktop", "uint32:0", "string:First"}, 6); }
    void removeFirst() { ask({"removeDesktop", "string:" + uuid(0)}, 5); }
    // KWin reads it at its next start.
    void swapThirdAndFifth() {
        auto text = readFile(configFolder() / "kwinrc");
        const auto third = uuid(2), fifth = uuid(4);
        text.replace(text.find("Id_3=") + 5, third.size(), fifth);
        text.replace(text.find("Id_5=") + 5, fifth.size(), third);
        writeFile(configFolder() / "kwinrc", text);
        replaceWindowManager();
    }

    // Counted from 0; the number of desktops for a tag whose own is gone.
    std::uint32_t desktopOfTag(std::size_t tag) {
        std::vector<std::string> uuids;
        for (const auto& space : spaces()) uuids.push_back(space.at("uuid"));
        return static_cast<std::uint32_t>(std::ranges::find(uuids, boundTo(tag)) - uuids.begin());
    }
    bool isCurrent(std::size_t tag) {
        return std::ranges::any_of(spaces(), [&](const nlohmann::json& space) {
            return space.at("uuid") == boundTo(tag) && space.at("current").get<bool>();
        });
    }
    bool goToTag(std::size_t tag) {
        return run({program("orvello"), "goto", kTags[tag].label}).status == 0 &&
               waitUntil([&] { return isCurrent(tag); });
    }
    // Each tag is on its own desktop, by the window manager's word and on the screen.
    void expectTagsOnTheirDesktops() {
        for (const std::size_t tag : {2, 1, 0}) {
            for (const bool backup : {false, true})
                EXPECT_TRUE(waitUntil([&] {
                    return x().desktopOf(window(kTags[tag].label, backup)) == desktopOfTag(tag);
                })) << kTags[tag].label;
            EXPECT_TRUE(goToTag(tag) && waitForTagOf(tag)) << kTags[tag].label;
        }
    }

  private:
    std::vector<nlohmann::json> spaces() {
        const auto row =
            nlohmann::json::parse(run({program("orvello"), "dump"}).standardOutput, nullptr, false);
        return row.is_array() ? row.get<std::vector<nlohmann::json>>() : std::vector<nlohmann::json>();
    }
    std::string uuid(std::size_t desktop) { return spaces().at(desktop).at("uuid"); }
    void ask(std::vector<std::string> call, std::uint32_t countAfterwards) {
        call.front().insert(0, "org.kde.KWin.VirtualDesktopManager.");
        call.insert(call.begin(), {"dbus-send", "--session", "--print-reply", "--dest=org.kde.KWin",
                                   "/VirtualDesktopManager"});
        const auto result = run(call);
        ASSERT_EQ(result.status, 0) << result.standardError;
        ASSERT_TRUE(waitUntil([&] { return x().numberOfDesktops() == countAfterwards; }));
    }
};

// Windows of later desktops keep KWin's numbers of before the change, and so does the root window. Which
// change comes when is drawn by lot; ORVELLO_TEST_ROUNDS asks for more of them.
TEST(MissionControlTest, KeepsBindingsWhenTheDesktopsSettingsRenumberThem) {
    enum class Overview { Closed, Open, OpenedAfterwards, ApplicationNotRunning };
    struct Change {
        const char* name;
        void (RenumberedDesktop::*change)();
        void (RenumberedDesktop::*back)();
    };
    const Change changes[] = {
        {"insert in front", &RenumberedDesktop::insertInFront, &RenumberedDesktop::removeFirst},
        {"remove the second", &RenumberedDesktop::removeSecond, &RenumberedDesktop::insertSecond},
        {"swap two", &RenumberedDesktop::swapThirdAndFifth, &RenumberedDesktop::swapThirdAndFifth}};
    RenumberedDesktop desktop;
    const auto stored = readFile(desktop.tagFile());
    const char* wanted = std::getenv("ORVELLO_TEST_ROUNDS");
    std::mt19937 lot(14);  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same rounds every time
    for (int round = 0; round < (wanted ? std::atoi(wanted) : 4) && !testing::Test::HasFailure(); ++round) {
        const auto& change = changes[lot() % std::size(changes)];
        const auto when = static_cast<Overview>(round % 4);
        SCOPED_TRACE(testing::Message() << round << ": " << change.name << ", " << static_cast<int>(when));
        ASSERT_TRUE(desktop.goToTag(0));
        if (when != Overview::ApplicationNotRunning) desktop.startApplication();
        if (when == Overview::Open) desktop.open("Overview");
        (desktop.*change.change)();
        if (when == Overview::OpenedAfterwards) desktop.open("Overview");
        if (when == Overview::Open || when == Overview::OpenedAfterwards) desktop.close("Overview");
        EXPECT_TRUE(desktop.isCurrent(0)) << "the user is where they were";
        if (when != Overview::ApplicationNotRunning) desktop.expectTagsOnTheirDesktops();
        desktop.stopApplication();
        ASSERT_TRUE(desktop.goToTag(0));
        desktop.startApplication();
        desktop.expectTagsOnTheirDesktops();
        desktop.stopApplication();
        (desktop.*change.back)();
        EXPECT_EQ(readFile(desktop.tagFile()), stored);
    }
}

}  // namespace
