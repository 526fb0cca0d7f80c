// Tags in the overviews of a real desktop.

#include <gtest/gtest.h>

#include <csignal>

#include "tests/desktop/TaggedDesktop.h"
#include "tests/support/PlainWindow.h"

using namespace desktop_test;

namespace {

constexpr std::uint32_t kWallpaper = 0x30343F;
constexpr std::uint32_t kPaper = 0xF4F1EA;

// KWin with tagged desktops and the running application.
class OverviewDesktop : public TaggedDesktop {
  public:
    OverviewDesktop() : TaggedDesktop({.kind = WindowManager::Kwin, .composited = true}) {
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

    // The uuid of the desktop that the tag is bound to, by the tag file.
    std::string boundTo(std::size_t tag) {
        std::ifstream file(dataFolder() / "orvello/tags.json");
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
    constexpr xcb_keysym_t kSuperL = 0xFFEB, kF8 = 0xFFC5;
    auto hands = desktop.devices();
    const auto type = [&](xcb_keysym_t key) { hands.typeKeys({hands.keyFor(kSuperL), hands.keyFor(key)}); };
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
    for (const xcb_keysym_t key : {xcb_keysym_t{'w'}, kF8}) {
        SCOPED_TRACE(key);
        ASSERT_TRUE(desktop.waitForTagOf(0));
        type(key);
        EXPECT_TRUE(waitUntil(hasOpened(++opened)));
        EXPECT_EQ(desktop.timesSaid("PRE-TRIGGER[keystroke]: setting MC=true"), ++foreseen);
        type(key);
        EXPECT_TRUE(waitUntil(hasClosed(opened)));
    }
}

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

    // Two that end on one desktop were not moved by the user.
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
    // The third one went, and the window manager put its windows on another.
    ASSERT_TRUE(desktop.goToDesktop(2));
    EXPECT_TRUE(desktop.waitForTagOf(3)) << "a new desktop has no tag";
    EXPECT_EQ(bindings(), before);
}

}  // namespace
