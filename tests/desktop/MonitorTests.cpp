// Tags on several monitors that come and go.

#include <gtest/gtest.h>

#include <csignal>

#include "tests/desktop/TaggedDesktop.h"

using namespace desktop_test;

namespace {

constexpr ScreenSize kLarge{1280, 800};
constexpr ScreenSize kMedium{1024, 768};
constexpr ScreenSize kSmall{800, 600};

// Where tags are anchored at first: from the right and from the top.
constexpr int kAnchorRight = 224;
constexpr int kAnchorTop = 56;

struct Center {
    int x = 0;
    int y = 0;
};

class TagsOnMonitorsTest : public testing::TestWithParam<WindowManager> {
  protected:
    void SetUp() override {
        desktop.setMonitors({kLarge, kMedium});
        application.emplace(desktop.start({desktop.program("orvello")}));
        ASSERT_TRUE(desktop.waitForTagOf(0)) << application->standardError();
    }

    Center centerOf(const std::string& label) {
        const auto place = desktop.x().geometry(desktop.window(label)).value_or(Rectangle{});
        return {place.x + place.width / 2, place.y + place.height / 2};
    }
    bool isAt(const std::string& label, Center expected) {
        return waitUntil([&] {
            const auto center = centerOf(label);
            return std::abs(center.x - expected.x) <= 1 && std::abs(center.y - expected.y) <= 1;
        });
    }
    // The user takes the tag by its centre and lets go of it there.
    void drag(const std::string& label, Center to, bool withShift = false) {
        const auto from = centerOf(label);
        ASSERT_TRUE(desktop.pointAtTag(desktop.window(label), from.x, from.y));
        auto hands = desktop.devices();
        if (withShift) hands.pressKey(kShiftKey);
        hands.drag(from.x, from.y, to.x, to.y);
        if (withShift) hands.releaseKey(kShiftKey);
        ASSERT_TRUE(isAt(label, to)) << centerOf(label).x << " " << centerOf(label).y;
    }
    bool isDetached(std::size_t tag) {
        std::ifstream file(desktop.dataFolder() / "orvello/tags.json");
        return nlohmann::json::parse(file).at(tag).contains("frame");
    }

    static constexpr xcb_keycode_t kShiftKey = 50;
    TaggedDesktop desktop{{.kind = GetParam()}, HasMonitors::Yes};
    std::optional<Process> application;
};

TEST_P(TagsOnMonitorsTest, StayInReachWhenTheirMonitorIsUnplugged) {
    ASSERT_TRUE(isAt("Mail", {kLarge.width - kAnchorRight, kAnchorTop}));
    drag("Mail", {kLarge.width + 500, 400}, true);
    EXPECT_TRUE(waitUntil([&] { return isDetached(0); }));

    // An anchored tag takes the others along, for good.
    const Center shared{kLarge.width + kMedium.width - 300, 100};
    ASSERT_TRUE(desktop.goToDesktop(1));
    ASSERT_TRUE(desktop.waitForTagOf(1));
    drag("Code", shared);
    EXPECT_TRUE(isAt("Music", shared)) << centerOf("Music").x;
    application->signal(SIGTERM);
    ASSERT_EQ(application->wait(), 0);
    application.emplace(desktop.start({desktop.program("orvello")}));
    ASSERT_TRUE(desktop.waitForTagOf(1)) << application->standardError();
    for (const char* each : {"Code", "Music"}) EXPECT_TRUE(isAt(each, shared)) << centerOf(each).x;
    EXPECT_TRUE(isAt("Mail", {kLarge.width + 500, 400}));

    desktop.setMonitors({kLarge});
    EXPECT_TRUE(isAt("Mail", {kLarge.width - 300, 100})) << centerOf("Mail").x;
    EXPECT_TRUE(isAt("Code", {kLarge.width - 300, 100})) << centerOf("Code").x;
    EXPECT_TRUE(waitUntil([&] { return !isDetached(0); })) << "it is anchored again";
    EXPECT_TRUE(desktop.waitForTagOf(1));

    desktop.setMonitors({kSmall, kLarge});
    EXPECT_TRUE(isAt("Mail", {kSmall.width + kLarge.width - 300, 100})) << centerOf("Mail").x;
}

TEST_P(TagsOnMonitorsTest, AreThereAgainAfterNoMonitorAtAll) {
    drag("Mail", {300, 300}, true);
    ASSERT_TRUE(waitUntil([&] { return isDetached(0); }));
    for (int round = 0; round < 3; ++round) {
        desktop.setMonitors({});
        desktop.setMonitors({kLarge, kSmall});
        ASSERT_TRUE(desktop.waitForTagOf(0)) << "round " << round;
    }
    EXPECT_TRUE(isAt("Mail", {300, 300}));
    EXPECT_TRUE(isDetached(0)) << "no monitor is no reason to forget a place";
    EXPECT_TRUE(isAt("Code", {kLarge.width - kAnchorRight, kAnchorTop})) << centerOf("Code").x;
    EXPECT_TRUE(application->isRunning());
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, TagsOnMonitorsTest,
                         testing::Values(WindowManager::Openbox, WindowManager::Kwin),
                         [](const auto& tested) { return nameOf(tested.param); });

}  // namespace
