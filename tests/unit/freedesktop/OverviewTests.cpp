#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>

#include "orvellos/overview/MissionControlObserver.h"
#include "platform/freedesktop/desktops/DesktopOverview.h"
#include "platform/freedesktop/desktops/KwinOverview.h"
#include "platform/freedesktop/desktops/ShellOverview.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "tests/support/MainLoop.h"
#include "tests/support/PrivateBus.h"

namespace platform::freedesktop {
namespace {

using desktop_test::answerWith;
using desktop_test::StandInService;
using Effects = std::vector<const char*>;

constexpr const char* kQuestion = "/Effects org.freedesktop.DBus.Properties.Get";

class OverviewTests : public testing::Test {
  protected:
    // KWin's answer while these effects are active.
    static StandInService::Answer active(const Effects& effects) {
        return [effects](auto*, auto* reply) {
            sd_bus_message_open_container(reply, 'v', "as");
            sd_bus_message_open_container(reply, 'a', "s");
            for (const auto* effect : effects) sd_bus_message_append(reply, "s", effect);
            sd_bus_message_close_container(reply);
            return sd_bus_message_close_container(reply);
        };
    }

    desktop_test::PrivateBus daemon_;
    desktop_test::MainLoop mainLoop_;
    ui::QtRunLoop& runLoop_ = mainLoop_.runLoop;
    simulated::SimulatedRunLoop time_;
    SystemdLibrary library_;
    MessageBus bus_{library_, runLoop_, runLoop_, [this] { return daemon_.address(); }};
};

TEST_F(OverviewTests, ShowsAWindowOfTheDockWhileAnyOverviewIsOpen) {
    struct Source final : OverviewSource {
        [[nodiscard]] bool mayOpen() const override { return isThere; }
        [[nodiscard]] bool isOverviewOpen() const override { return isOpen; }
        void setOpen(bool open) {
            isOpen = open;
            tellOverviewChanged();
        }
        void setThere(bool there) {
            isThere = there;
            tellOverviewChanged();
        }
        bool isOpen = false;
        bool isThere = false;
    };
    Source first, second;
    DesktopOverview overview({&first, &second});
    int changes = 0;
    const auto subscription = overview.onChanged([&] { ++changes; });
    for (const auto& [firstIsOpen, secondIsOpen, changed] : {std::tuple(true, false, true),
                                                             {true, true, false},
                                                             {false, true, false},
                                                             {false, false, true},
                                                             {false, true, true}}) {
        changes = 0;
        first.setOpen(firstIsOpen);
        second.setOpen(secondIsOpen);
        EXPECT_EQ(overview.copyOnScreenWindows()->size(), firstIsOpen || secondIsOpen ? 1U : 0U);
        EXPECT_EQ(changes, changed ? 1 : 0);
    }
    const auto detection = orvellos::classify(orvellos::dockWindows(*overview.copyOnScreenWindows()), false);
    EXPECT_TRUE(detection.sawAppIcon);
    EXPECT_EQ(detection.l17ChipCount, 1U) << "without a doubt";
    EXPECT_FALSE(detection.sawNonPositiveLayer);

    std::vector<bool> told;
    const auto mayOpen = overview.followMayOpen([&](bool may) { told.push_back(may); });
    first.setThere(true);
    second.setThere(true);
    first.setThere(false);
    second.setThere(false);
    EXPECT_EQ(told, std::vector({false, true, false}));
}

TEST_F(OverviewTests, KnowsKwinsOverviewsByTheirNames) {
    struct Row {
        const char* name;
        StandInService::Answer answer;
        bool isOpen;
        bool canBeOpened;
    };
    const Row rows[] = {
        {"the overview", active({"overview"}), true, true},
        {"the grid, among others", active({"blur", "desktopgrid"}), true, true},
        {"the cube", active({"cube"}), true, true},
        {"none", active({}), false, true},
        {"others", active({"windowview", "overview2", ""}), false, true},
        {"a text", answerWith("v", "s", "overview"), false, false},
        {"numbers", answerWith("v", "au", 1, 1U), false, true},
        {"nothing", [](auto*, auto*) { return 0; }, false, false},
        {"an error", [](auto*, auto*) { return -1; }, false, false},
    };
    KwinOverview kwin(bus_, runLoop_);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const StandInService service(daemon_.address(), "org.kde.KWin", row.answer);
        kwin.expectChange();
        EXPECT_TRUE(mainLoop_.runUntil([&] { return service.calls().size() > 2; }));
        EXPECT_EQ(kwin.isOverviewOpen(), row.isOpen);
        EXPECT_EQ(kwin.openingCall().has_value(), row.canBeOpened);
        EXPECT_TRUE(kwin.mayOpen());
    }
    EXPECT_TRUE(mainLoop_.runUntil([&] { return !kwin.mayOpen(); }));
    EXPECT_FALSE(kwin.openingCall());
}

TEST_F(OverviewTests, AsksKwinOftenOnlyWhileThereIsReasonTo) {
    using std::chrono_literals::operator""ms;
    std::atomic<bool> isOpen = false;
    StandInService service(daemon_.address(), "org.kde.KWin", [&](auto* call, auto* reply) {
        return active(isOpen ? Effects{"overview"} : Effects{})(call, reply);
    });
    KwinOverview kwin(bus_, time_);
    EXPECT_TRUE(mainLoop_.runUntil([&] { return kwin.openingCall().has_value(); }));
    // Everything sent to the service so far is answered when it has answered this.
    const auto settle = [&] {
        bool answered = false;
        const auto marker =
            bus_.call({"org.kde.KWin", "/", "i.f", "M"}, [&](const auto&) { answered = true; });
        EXPECT_TRUE(mainLoop_.runUntil([&] { return answered; }));
    };
    struct Row {
        const char* name;
        std::function<void()> action;
        Duration duration;
        int questions;
    };
    const Row rows[] = {
        {"nothing happens", [] {}, 3000ms, 3},
        {"a hint", [&] { kwin.overviewMayHaveChanged(); }, 1000ms, 1 + 5},
        {"the user is about to open it", [&] { kwin.expectChange(); }, 2000ms, 1 + 30},
        {"it is open",
         [&] {
             isOpen = true;
             kwin.overviewMayHaveChanged();
         },
         3000ms, 1 + 60},
        {"nobody says that it has closed", [&] { isOpen = false; }, 1000ms, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto before = std::ranges::count(service.calls(), kQuestion);
        row.action();
        settle();
        for (Duration passed{}; passed < row.duration; passed += 50ms) {
            time_.advance(50ms);
            settle();
        }
        EXPECT_EQ(std::ranges::count(service.calls(), kQuestion) - before, row.questions);
        EXPECT_EQ(kwin.isOverviewOpen(), isOpen);
    }
}

TEST_F(OverviewTests, ForgivesKwinOneQuestionWithoutAnAnswer) {
    std::atomic<int> refusals = 0;
    StandInService service(daemon_.address(), "org.kde.KWin", [&](auto* call, auto* reply) {
        return refusals-- > 0 ? -1 : active({"overview"})(call, reply);
    });
    KwinOverview kwin(bus_, runLoop_);
    EXPECT_TRUE(mainLoop_.runUntil([&] { return kwin.isOverviewOpen(); }));
    refusals = 1;
    EXPECT_TRUE(mainLoop_.runUntil([&] {
        EXPECT_TRUE(kwin.isOverviewOpen());
        return refusals < -1;
    }));
    refusals = 1000000;
    EXPECT_TRUE(mainLoop_.runUntil([&] { return !kwin.isOverviewOpen(); }));
    EXPECT_FALSE(kwin.openingCall());
}

TEST_F(OverviewTests, HasOneQuestionToAKwinThatHangs) {
    StandInService silent(daemon_.address(), "org.kde.KWin", nullptr);
    KwinOverview kwin(bus_, runLoop_);
    EXPECT_TRUE(mainLoop_.runUntil([&] { return silent.calls().size() == 1; }));
    for (int i = 0; i < 5; ++i) kwin.overviewMayHaveChanged();
    const auto marker = bus_.call({"org.kde.KWin", "/marker", "i.f", "M"}, [](const auto&) {});
    EXPECT_TRUE(mainLoop_.runUntil([&] { return silent.calls().size() == 2; }));
    EXPECT_EQ(silent.calls().back(), "/marker i.f.M");
    EXPECT_FALSE(kwin.isOverviewOpen());
}

TEST_F(OverviewTests, FollowsTheShellsProperties) {
    struct Row {
        ShellOverview::Shell shell;
        const char* property = nullptr;
    };
    const Row rows[] = {{ShellOverview::gnomeShell(), "OverviewActive"},
                        {ShellOverview::cinnamon(), "OverviewActive"},
                        {ShellOverview::cinnamon(), "ExpoActive"}};
    for (const auto& row : rows) {
        const auto& shell = row.shell;
        SCOPED_TRACE(shell.name + row.property);
        const auto change = [&](const char* type, int value) {
            return [=, path = shell.path.c_str(), interface = shell.service.c_str(),
                    name = row.property](sd_bus* b) {
                sd_bus_emit_signal(b, path, "org.freedesktop.DBus.Properties", "PropertiesChanged",
                                   "sa{sv}as", interface, 1, name, type, value, 0);
            };
        };
        const ShellOverview overview(bus_, shell);
        EXPECT_FALSE(overview.openingCall());
        {
            // Open already when the shell appears.
            StandInService service(daemon_.address(), shell.service, answerWith("v", "b", 1));
            EXPECT_TRUE(mainLoop_.runUntil([&] { return overview.isOverviewOpen(); }));
        }
        EXPECT_TRUE(mainLoop_.runUntil([&] { return !overview.isOverviewOpen(); }));
        StandInService service(daemon_.address(), shell.service, answerWith("v", "b", 0));
        EXPECT_TRUE(mainLoop_.runUntil([&] { return overview.openingCall().has_value(); }));
        for (const bool open : {true, false, true}) {
            service.run(change("b", open));
            EXPECT_TRUE(mainLoop_.runUntil([&] { return overview.isOverviewOpen() == open; }));
        }
        service.run(change("u", 1));
        EXPECT_TRUE(mainLoop_.runUntil([&] { return !overview.isOverviewOpen(); }));
    }
}

}  // namespace
}  // namespace platform::freedesktop
