#include "orvellos/windows/TagWindow.h"

#include "orvellos/windows/ClickThroughController.h"
#include "tests/support/ApplicationTest.h"

namespace orvellos {
namespace {

using platform::Point;
using platform::Rect;
using platform::seconds;
using platform::simulated::SimulatedWindow;

// One tag window on a screen of 1440 × 900 points, seen from both sides: the window and what the system was
// told.
class TagWindowTest : public ApplicationTest, public TagWindowOwner {
  protected:
    TagWindowTest() { screens_.addScreen({0, 0, 1440, 900}); }

    TagWindow& make(std::optional<Rect> frame = Rect{600, 400, 200, 100}, std::size_t existing = 0) {
        Tag tag{TagID::random(), "Mail", "#3B82F6", frame, "S1"};
        window_ = std::make_unique<TagWindow>(windowServices(), *this, tag, TagSize::Medium, existing);
        return *window_;
    }
    SimulatedWindow& seen(const TagWindow& window) { return system_.windows.at(window.windowNumber()); }
    void press(Point at) { seen(*window_).delegate->mouseDown({at, false}); }
    void drag(Point to) { seen(*window_).delegate->mouseDragged({to, false}); }
    void release(Point at, bool shift = false) { seen(*window_).delegate->mouseUp({at, shift}); }
    void click(Point at) {
        press(at);
        release(at);
    }

    void onFrameChange(const TagID& /*id*/, const Rect& moved, bool shift) override {
        moves_.emplace_back(moved, shift);
    }
    void onClick() override { ++clicks_; }
    std::optional<platform::Screen> preferredScreenProvider(const TagID& /*id*/) const override {
        return preferredScreen_;
    }

    platform::simulated::SimulatedRunLoop& loop_ = desktop_.runLoop;
    platform::simulated::SimulatedScreens& screens_ = desktop_.screens;
    platform::simulated::SimulatedWindowSystem& system_ = desktop_.windowSystem;
    std::unique_ptr<TagWindow> window_;
    std::vector<std::pair<Rect, bool>> moves_;
    int clicks_ = 0;
    std::optional<platform::Screen> preferredScreen_;
};

TEST_F(TagWindowTest, ComesUpWhereItBelongs) {
    // Medium is 64 points high here; "Mail" is 58 wide at 29 points, so the window takes its least width.
    const platform::Size size{64 * 2.7 + 40, 104};
    struct Case {
        const char* name = "";
        std::optional<Rect> stored;
        std::optional<AnchoredPosition> anchor;
        std::size_t existing = 0;
        Point origin;
    };
    const AnchoredPosition corner{HEdge::Right, 0, VEdge::Top, 0};
    const AnchoredPosition middle{HEdge::Left, 400, VEdge::Bottom, 300};
    const Case cases[] = {
        {"around the centre of its stored frame", Rect{600, 400, 50, 50}, corner, 0, {625 - 106.4, 425 - 52}},
        {"a stored frame past the edge ends 20 points outside",
         Rect{1400, 880, 30, 10},
         corner,
         0,
         {1247.2, 816}},
        {"centred on the anchor", std::nullopt, middle, 3, {400 - 106.4, 300 - 52}},
        {"an anchor in the corner ends 20 points outside", std::nullopt, corner, 0, {1247.2, 816}},
        {"stacked at the top right", std::nullopt, std::nullopt, 2, {1203.2, 900 - 104 - 24 - 2 * 114}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        settings_.globalAnchoredPosition.set(c.anchor);
        const Rect frame = seen(make(c.stored, c.existing)).frame;
        EXPECT_NEAR(frame.x, c.origin.x, 1e-9);
        EXPECT_NEAR(frame.y, c.origin.y, 1e-9);
        EXPECT_NEAR(frame.width, size.width, 1e-9);
        EXPECT_EQ(frame.height, size.height);
    }
}

TEST_F(TagWindowTest, AssumesAScreenWhereThereIsNone) {
    screens_.setScreens({});
    const Rect frame = seen(make(std::nullopt, 1)).frame;
    EXPECT_EQ(frame.maxX(), 1440 - 24);
    EXPECT_EQ(frame.maxY(), 900 - 24 - (frame.height + 10));
    press({0, 0});
    drag({5000, 0});
    EXPECT_EQ(seen(*window_).frame.x, frame.x + 5000) << "nothing to stay within";
}

TEST_F(TagWindowTest, HasAnInvisibleBackupThatNeverTakesTheMouse) {
    auto& window = make();
    ASSERT_TRUE(window.mcBackup());
    const auto& backup = seen(*window.mcBackup());
    EXPECT_FALSE(backup.acceptsMouse);
    EXPECT_TRUE(backup.ignoresMouseEvents);
    EXPECT_EQ(backup.alpha, 0);
    EXPECT_EQ(window.mcBackup()->currentSize(), TagSize::MissionControl);
    window_.reset();
    EXPECT_TRUE(system_.windows.empty());
}

TEST_F(TagWindowTest, TellsClicksFromDrags) {
    struct Case {
        const char* name = "";
        Point end;
        bool isClick = false;
    };
    const Case cases[] = {{"still", {700, 450}, true},
                          {"4 points", {704, 450}, true},
                          {"5 points both ways", {695, 455}, true},
                          {"6 points up", {700, 456}, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        auto& window = make();
        const auto start = window.frame();
        clicks_ = 0;
        moves_.clear();
        press({700, 450});
        EXPECT_EQ(editing_.sources().size(), 1u);
        drag(c.end);
        release(c.end, true);
        EXPECT_TRUE(editing_.sources().empty());
        EXPECT_EQ(clicks_, c.isClick ? 1 : 0);
        ASSERT_EQ(moves_.size(), c.isClick ? 0u : 1u);
        EXPECT_NEAR(window.frame().x, start.x + c.end.x - 700, 1e-9);
        if (!moves_.empty()) {
            EXPECT_EQ(moves_.front(), std::pair(window.frame(), true));
        }
    }
}

TEST_F(TagWindowTest, ForgetsAGestureThatTheDesktopTookAway) {
    auto& window = make();
    press({700, 450});
    drag({750, 450});
    const Rect there = window.frame();
    seen(window).delegate->mouseCancelled();
    EXPECT_FALSE(window.isInGesture());
    EXPECT_TRUE(editing_.sources().empty());
    drag({900, 450});
    EXPECT_EQ(window.frame(), there);
    EXPECT_TRUE(moves_.empty());
    EXPECT_EQ(clicks_, 0);
}

TEST_F(TagWindowTest, StaysInTheHandThroughASizeStep) {
    auto& window = make();
    const Point to{760, 520};
    // Where within the drawn tag a point is, as parts of its width and height.
    const auto part = [&](Point point) {
        const Rect tag = window.frame().insetBy(20);
        return Point{(point.x - tag.x) / tag.width, (point.y - tag.y) / tag.height};
    };
    press({650, 450});
    const Point held = part({650, 450});
    window.applyFrameAndSize(TagSize::Large, "Mail", {100, 100, 300, 140}, true);
    loop_.advance(seconds(0.3));
    drag(to);
    EXPECT_NEAR(part(to).x, held.x, 1e-9);
    EXPECT_NEAR(part(to).y, held.y, 1e-9);
    release(to);
    loop_.advance(seconds(1));
    EXPECT_EQ(window.frame().size(), (platform::Size{300, 140}));
    EXPECT_EQ(moves_.at(0).first, window.frame());

    const Rect next{200, 100, 320, 150};
    window.applyFrameAndSize(TagSize::Large, "Mail", next, true);
    loop_.advance(seconds(0.1));
    click(window.frame().center());
    loop_.advance(seconds(1));
    EXPECT_EQ(window.frame(), next) << "a click stops it for as long as it lasts";
}

TEST_F(TagWindowTest, SwallowsTheSecondClickOfADoubleClick) {
    make();
    click({700, 450});
    loop_.advance(seconds(0.15));
    click({700, 450});
    EXPECT_EQ(clicks_, 1);
    EXPECT_TRUE(editing_.sources().empty());
    loop_.advance(
        seconds(0.06));  // 0.21 s after the one that counted: the swallowed one does not prolong the guard
    click({700, 450});
    EXPECT_EQ(clicks_, 2);
}

TEST_F(TagWindowTest, StopsAtTheScreensEdge) {
    auto& window = make();
    press({700, 450});
    drag({-5000, 5000});
    EXPECT_EQ(window.frame().origin(), (Point{-20, 900 + 20 - window.frame().height}));
    screens_.addScreen({1440, 0, 1000, 600});
    drag({1900, 5000});
    EXPECT_EQ(window.frame().maxX(), 1440 + 20) << "a pointer on no screen";
    drag({1900, 300});
    EXPECT_TRUE(screens_.screens()[1].frame.contains(window.frame().center())) << "it follows the pointer";
    preferredScreen_ = screens_.screens()[1];
    drag({0, 0});
    EXPECT_EQ(window.frame().origin(), (Point{1420, -20}));
    EXPECT_EQ(seen(window).delegate->constrainFrame({0, 0, 100, 100}), (Rect{1420, 0, 100, 100}));
}

TEST_F(TagWindowTest, FadesFromWhereItIs) {
    auto& window = make();
    window.fade(false);
    EXPECT_TRUE(seen(window).ignoresMouseEvents);
    loop_.advance(seconds(0.125));
    const double half = seen(window).alpha;
    EXPECT_GT(half, 0.6);  // easing in: slow at first
    EXPECT_LT(half, 0.75);
    window.fade(true);
    loop_.advance(seconds(1.0 / 60));
    EXPECT_GT(seen(window).alpha, half);
    EXPECT_LT(seen(window).alpha, 1);
    loop_.advance(seconds(0.25));
    EXPECT_EQ(seen(window).alpha, 1);
    EXPECT_FALSE(seen(window).ignoresMouseEvents);
    EXPECT_EQ(loop_.pendingTimers(), 0u);
}

TEST_F(TagWindowTest, RevealsAtOnceWhateverFadeIsRunning) {
    auto& window = make();
    window.fade(false);
    loop_.advance(seconds(0.1));
    window.revealInstantly();
    EXPECT_EQ(seen(window).alpha, 1);
    EXPECT_FALSE(seen(window).ignoresMouseEvents);
    loop_.advance(seconds(1));
    EXPECT_EQ(seen(window).alpha, 1);
}

TEST_F(TagWindowTest, FlashesAndReturnsToItsNaturalSize) {
    auto& window = make();
    window.flash();
    loop_.advance(seconds(0.18));
    EXPECT_NEAR(seen(window).contentScale, 1.06, 0.005);
    loop_.advance(seconds(0.2));
    EXPECT_EQ(seen(window).contentScale, 1);
    EXPECT_EQ(loop_.pendingTimers(), 0u);
}

TEST_F(TagWindowTest, AnimatesItsFrame) {
    auto& window = make();
    const Rect from = window.frame();
    const Rect target{100, 100, 300, 140};
    window.applyFrameAndSize(TagSize::Large, "Mail", target, true);
    EXPECT_EQ(window.currentSize(), TagSize::Large);
    loop_.advance(seconds(0.11));
    EXPECT_NE(window.frame(), from);
    EXPECT_NE(window.frame(), target);
    loop_.advance(seconds(0.2));
    EXPECT_EQ(seen(window).frames.back(), target);
    EXPECT_EQ(loop_.pendingTimers(), 0u);
    EXPECT_EQ(seen(window).layers.tintLayer.frame, (Rect{20, 20, 260, 100}));
    EXPECT_TRUE(moves_.empty());

    window.applyFrameAndSize(TagSize::Large, "Mail", {200, 100, 300, 140}, true);
    loop_.advance(seconds(0.22 / 4 + 1e-6));
    EXPECT_NEAR(window.frame().x, 106, 4) << "slow at first: 4 t³ is 1/16 after a quarter";
    EXPECT_EQ(window.targetFrame(), (Rect{200, 100, 300, 140}));
    loop_.advance(seconds(1));

    window.setFrameWithoutPersisting(from, true);
    loop_.advance(seconds(0.05));
    window.setFrameWithoutPersisting({0, 0, 200, 104}, false);
    loop_.advance(seconds(1));
    EXPECT_EQ(seen(window).frame, (Rect{0, 0, 200, 104})) << "an older animation must not go on";
}

TEST_F(TagWindowTest, TakesANewLabelAroundTheSameCentre) {
    auto& window = make();
    const Point center = window.frame().center();
    window.update({window.tagID(), "A very much longer label", "#FFFFFF", {}, {}});
    EXPECT_NEAR(window.frame().midX(), center.x, 1e-9);
    EXPECT_GT(window.frame().width, 64 * 2.7 + 40);
    for (const TagWindow* each : {&window, window.mcBackup()}) {
        EXPECT_EQ(seen(*each).title, "A very much longer label");
        EXPECT_EQ(seen(*each).layers.textLayer.foreground, (platform::Color{0.09, 0.11, 0.15, 1}));
    }
}

TEST_F(TagWindowTest, PollsForThePointerOnlyAsOftenAsNeeded) {
    auto& window = make(Rect{600, 400, 10, 10});
    ClickThroughController controller(loop_, screens_, [&] { return std::vector<TagWindow*>{&window}; });
    controller.start(ClickThroughController::kIdleHz);
    const Rect frame = window.frame();
    struct Case {
        const char* name = "";
        Point pointer;
        bool ignores = false;
        double hz = 0;
    };
    const Case cases[] = {{"far away", {5, 5}, true, 5},
                          {"on the tag", frame.center(), false, 30},
                          {"in the margin", {frame.x + 5, frame.midY()}, true, 30},
                          {"in the notch above the tip", {frame.x + 22, frame.maxY() - 25}, true, 30},
                          {"gone again", {5, 5}, true, 5}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        screens_.movePointer(c.pointer);
        loop_.advance(seconds(0.21));
        EXPECT_EQ(seen(window).ignoresMouseEvents, c.ignores);
        EXPECT_EQ(controller.timerHz(), c.hz);
    }
    press(frame.center());
    loop_.advance(seconds(0.21));
    EXPECT_FALSE(seen(window).ignoresMouseEvents) << "a window in a gesture keeps the mouse";
    release(frame.center());
    window.setAlphaValue(0);
    screens_.movePointer(frame.center());
    loop_.advance(seconds(1));
    EXPECT_EQ(controller.timerHz(), 5) << "nothing that can be seen is near";
    controller.stop();
    EXPECT_EQ(loop_.pendingTimers(), 0u);
}

}  // namespace
}  // namespace orvellos
