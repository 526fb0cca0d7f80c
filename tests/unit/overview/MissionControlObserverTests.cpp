#include "orvellos/overview/MissionControlObserver.h"

#include <cmath>

#include "tests/support/ApplicationTest.h"

namespace orvellos {
namespace {

using platform::OnScreenWindow;
using platform::seconds;
using platform::simulated::SimulatedOverview;
using Windows = std::vector<OnScreenWindow>;

const OnScreenWindow kChip = SimulatedOverview::dockWindow(17, 120, 80);
const OnScreenWindow kPlain = SimulatedOverview::dockWindow(20, 300, 60);
const OnScreenWindow kBottom = SimulatedOverview::dockWindow(0, 300, 60);
const OnScreenWindow kFull = SimulatedOverview::dockWindow(3, 1440, 900);

Windows times(std::size_t count, const OnScreenWindow& window) {
    return Windows(count, window);
}
Windows join(Windows windows, const OnScreenWindow& one) {
    windows.push_back(one);
    return windows;
}

class MissionControlObserverTests : public ApplicationTest {
  protected:
    // The classification of a list as the observer meets it.
    static Detection read(const Windows& windows, bool fallback = true) {
        return classify(dockWindows(windows), fallback);
    }
    void show(Windows windows) { desktop_.overview.windows = std::move(windows); }
    void wait(double time) { desktop_.runLoop.advance(seconds(time)); }
    bool isOpen() { return observer_.isActive().get(); }
    bool isSwiping() { return observer_.swipeTransitionInProgress().get(); }
    bool isFast() { return observer_.currentInterval() == MissionControlObserver::kBurstInterval; }

    MissionControlObserver observer_{desktop_.runLoop, desktop_.overview, desktop_.defaults};
};

TEST_F(MissionControlObserverTests, ReadsTheDocksWindows) {
    struct Row {
        const char* name;
        Windows windows;
        bool active = false;
        std::size_t chips = 0;
        bool fallback = false;
    };
    const auto chip = [](double width, double height) {
        return Windows{SimulatedOverview::dockWindow(17, width, height)};
    };
    auto other = kChip;
    other.ownerName = "dock";
    auto nameless = kChip;
    nameless.ownerName.reset();
    auto layerless = kPlain;
    layerless.layer.reset();
    auto named = kFull;
    named.name = "Wallpaper";
    const Row rows[] = {{"nothing", {}},
                        {"the smallest chip", chip(40, 40), true, 1},
                        {"too narrow", chip(39, 40)},
                        {"the largest chip", chip(250, 250), true, 1},
                        {"too wide", chip(251, 100)},
                        {"no number", chip(NAN, 100)},
                        {"an icon", {kBottom, SimulatedOverview::dockWindow(0, 1, 1, "appicon")}, true},
                        {"another's chips", {other, nameless}},
                        {"one that fills the screen", join(times(4, kPlain), kFull), true, 0, true},
                        {"a named one", {named}},
                        {"with one at the bottom", {kFull, kBottom}},
                        {"with one of no layer", {kFull, layerless}},
                        {"among twenty", join(times(19, kPlain), kFull), true, 0, true},
                        {"among too many", join(times(20, kPlain), kFull)}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto detection = read(row.windows);
        EXPECT_EQ(detection.active, row.active);
        EXPECT_EQ(detection.l17ChipCount, row.chips);
        EXPECT_EQ(detection.l3Fallback, row.fallback);
        EXPECT_EQ(read(row.windows, false).active, row.active && !row.fallback);
    }
    EXPECT_EQ(summary(dockWindows(std::vector{kChip}).front()), "L17 α1.00 120x80@40,300 name=\"\"");
    EXPECT_EQ(summary(DockWindow()), "L0 α-1.00 -1x-1@-1,-1 name=\"\"");
}

TEST_F(MissionControlObserverTests, OpensAtOnceAndClosesWhenItLasts) {
    std::vector<bool> told;
    const auto subscription = observer_.isActive().subscribe([&](bool active) { told.push_back(active); });
    observer_.start();
    show({kChip, kPlain});
    wait(0.017);
    EXPECT_TRUE(isOpen());
    show(times(3, kPlain));
    wait(5);
    EXPECT_TRUE(isOpen()) << "neither active nor idle";
    show({});
    wait(0.2);
    show(times(2, kPlain));
    wait(0.1);
    show({});
    wait(0.25);
    EXPECT_TRUE(isOpen()) << "a reading between began the wait anew";
    wait(0.05);
    EXPECT_FALSE(isOpen());
    show({kChip});
    wait(0.017);
    desktop_.overview.windows.reset();
    wait(0.3);
    EXPECT_FALSE(isOpen()) << "without an answer the Dock is idle";
    EXPECT_EQ(told, (std::vector{false, true, false, true, false}));
    const auto lines = messages();
    const std::string markers =
        "OBSERVER: detector markers: dockWindows=2 appicon=false l17Chips=1 nonPositiveLayer=false "
        "l3Fallback=false";
    const std::string aborted =
        "OBSERVER: close debounce ABORTED — non-idle reading (dockWindows=2 nonPositive=false l17=0)";
    EXPECT_EQ(Texts(lines.begin(), lines.begin() + 7),
              (Texts{markers, "OBSERVER:   • L17 α1.00 120x80@40,300 name=\"\"",
                     "OBSERVER:   • L20 α1.00 300x60@40,300 name=\"\"", "OBSERVER: MC open detected (poll)",
                     "OBSERVER: MC close detected (idle dock), starting 250ms debounce", aborted,
                     "OBSERVER: MC close detected (idle dock), starting 250ms debounce"}));
}

TEST_F(MissionControlObserverTests, TellsASwipe) {
    std::vector<bool> told;
    observer_.start();
    const auto subscription =
        observer_.swipeTransitionInProgress().subscribe([&](bool swiping) { told.push_back(swiping); });
    for (const auto& [windows, swiping] : {std::pair(times(21, kPlain), true),
                                           {times(1, kPlain), false},
                                           {times(20, kPlain), false},
                                           {Windows{kBottom}, true},
                                           {Windows{kBottom, kChip}, false}}) {
        show(windows);
        wait(0.05);
        EXPECT_EQ(isSwiping(), swiping) << windows.size();
    }
    EXPECT_EQ(told, (std::vector{false, true, false, true, false}));
}

TEST_F(MissionControlObserverTests, IgnoresWeakReadingsWhileSuppressed) {
    observer_.start();
    observer_.suppressDetection(seconds(1));
    for (const auto& windows : {Windows{kFull}, {kChip, kBottom}, times(21, kPlain)}) {
        show(windows);
        wait(0.1);
        EXPECT_FALSE(isOpen());
        EXPECT_FALSE(isSwiping());
    }
    show({kChip, kChip});
    wait(0.02);
    EXPECT_TRUE(isOpen()) << "an unmistakable reading";
    EXPECT_FALSE(observer_.isSuppressed());
    EXPECT_EQ(messages().front(),
              "OBSERVER: suppression BYPASSED by strong MC signature (chips=2 dockWindows=2)");
    observer_.suppressDetection(seconds(1));
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(messages().back(), "OBSERVER: suppress armed while MC active — leaving isActive=true");
    show({kFull});
    wait(0.99);
    EXPECT_TRUE(observer_.isSuppressed());
    wait(0.02);
    EXPECT_FALSE(observer_.isSuppressed());
}

TEST_F(MissionControlObserverTests, PollsOnlyAsOftenAsNeeded) {
    const auto pollsIn = [&](double time) {
        const int before = desktop_.overview.reads;
        wait(time);
        return desktop_.overview.reads - before;
    };
    EXPECT_EQ(pollsIn(1), 0);
    observer_.start();
    EXPECT_EQ(desktop_.overview.reads, 1) << "a poll at once";
    EXPECT_NEAR(pollsIn(1), 60, 1);
    wait(0.6);
    EXPECT_FALSE(isFast());
    EXPECT_EQ(pollsIn(1), 10);
    show({kPlain});
    wait(0.1);
    EXPECT_TRUE(isFast()) << "another number of windows";
    wait(2);
    EXPECT_FALSE(isFast());
    observer_.expectChange();
    EXPECT_TRUE(isFast());
    show({kChip});
    wait(0.1);
    observer_.pause();
    show({});
    EXPECT_EQ(pollsIn(1), 0);
    EXPECT_TRUE(isOpen()) << "a pause changes nothing";
    observer_.suppressDetection(seconds(1));
    EXPECT_TRUE(observer_.isPolling()) << "a Space switch ends a pause";
}

TEST_F(MissionControlObserverTests, RestsWhereTheListTellsOfItsChanges) {
    desktop_.overview.tellChanges();
    MissionControlObserver observer(desktop_.runLoop, desktop_.overview, desktop_.defaults);
    desktop_.overview.setOpen(true);
    EXPECT_EQ(desktop_.overview.reads, 0) << "not before it has been started";
    desktop_.overview.setOpen(false);
    observer.start();
    for (int round = 0; round < 2; ++round) {
        wait(2);
        EXPECT_EQ(desktop_.runLoop.pendingTimers(), 0U);
        EXPECT_TRUE(observer.isPolling());
        desktop_.overview.setOpen(true);
        EXPECT_TRUE(observer.isActive().get()) << "at once";
        desktop_.overview.setOpen(false);
        wait(0.3);
        EXPECT_FALSE(observer.isActive().get()) << "when it has lasted";
    }
    show({kPlain});
    observer.expectChange();
    wait(3);
    EXPECT_EQ(desktop_.runLoop.pendingTimers(), 1U) << "what is on the screen may change its meaning";
}

TEST_F(MissionControlObserverTests, TakesTheFallbackUnlessItIsSwitchedOff) {
    for (const auto& [value, open] : std::vector<std::pair<std::optional<platform::DefaultsValue>, bool>>{
             {std::nullopt, true}, {false, false}, {std::string("no"), true}, {true, true}}) {
        if (value)
            desktop_.defaults.set("classifierAcceptL3Fallback", *value);
        else
            desktop_.defaults.remove("classifierAcceptL3Fallback");
        MissionControlObserver observer(desktop_.runLoop, desktop_.overview, desktop_.defaults);
        show({kFull});
        observer.start();
        EXPECT_EQ(observer.isActive().get(), open);
    }
}

}  // namespace
}  // namespace orvellos
