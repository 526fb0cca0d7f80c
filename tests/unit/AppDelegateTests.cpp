#include "orvellos/AppDelegate.h"

#include "tests/support/ManagerTest.h"
#include "tests/support/SimulatedPanelHost.h"

namespace orvellos {
namespace {

class AppDelegateTests : public ManagerTest {
  protected:
    bool started() { return !desktop_.windowSystem.windows.empty(); }

    AppDelegate::Services services() {
        return {identifier_,
                desktop_.runLoop,
                desktop_.applications,
                desktop_.screens,
                {host_, desktop_.mouse, desktop_.statusItem, desktop_.menuBar},
                [this] {
                    ++starts_;
                    return AppDelegate::Core{manager_, settings_, editing_, [] {}};
                },
                [this] { ended_ = true; }};
    }

    int starts_ = 0;
    bool ended_ = false;
    SimulatedPanelHost host_;
    AppDelegate delegate_{services()};
};

TEST_F(AppDelegateTests, OnlyOneInstanceRuns) {
    struct Row {
        const char* name;
        const char* flavour;
        double ends;  // seconds after the launch
        double starts;
    };
    for (const Row& row : {Row{"none runs", nullptr, 0, 0},
                           {"it ends soon", "org.norvath.orvello", 1.05, 1.2},
                           {"the other flavour", "org.norvath.orvello.pro", 0.1, 0.2},
                           {"at the last check", "org.norvath.orvello", 2.9, 3},
                           {"too late", "org.norvath.orvello", 3.1, 0}}) {
        SCOPED_TRACE(row.name);
        manager_.stop();
        desktop_.runLoop.advance(platform::seconds(1));
        auto& running = desktop_.applications.running;
        running.clear();
        running.emplace("org.norvath.orvello", desktop_.applications.currentProcess());
        if (row.flavour) running.emplace(row.flavour, 7);
        starts_ = 0;
        ended_ = false;
        AppDelegate delegate(services());
        delegate.applicationDidFinishLaunching();
        const double checks[] = {row.starts - 0.001, row.starts + 0.001};
        double now = 0;
        for (const double time : {row.ends, checks[0], checks[1], 4.0}) {
            if (time <= now) continue;
            wait(time - now);
            now = time;
            if (now >= row.ends) std::erase_if(running, [](const auto& each) { return each.second == 7; });
            EXPECT_EQ(starts_, !row.flavour || (row.starts > 0 && now > row.starts) ? 1 : 0) << now;
        }
        EXPECT_EQ(ended_, row.flavour && row.starts == 0);
        EXPECT_EQ(desktop_.applications.activated.empty(), !ended_);
        delegate.applicationWillTerminate();
    }
    EXPECT_EQ(desktop_.systemLog.general().back(),
              "orvello: deferring to running instance (pid 7) and quitting");
}

TEST_F(AppDelegateTests, EndingDuringTheWaitStopsNothing) {
    desktop_.applications.running.emplace("org.norvath.orvello", 7);
    delegate_.applicationDidFinishLaunching();
    EXPECT_EQ(desktop_.systemLog.general(),
              Texts{"orvello: another instance detected (pid 7) — waiting to see if it exits"});
    delegate_.applicationWillTerminate();
    wait(5);
    EXPECT_FALSE(ended_);
    EXPECT_FALSE(started());
}

TEST_F(AppDelegateTests, SaysWhatItFindsOfTheSpaces) {
    delegate_.applicationDidFinishLaunching();
    EXPECT_TRUE(started());
    const auto lines = desktop_.systemLog.general();
    EXPECT_EQ(lines.at(0), "orvello-pro: SkyLight bridge OK, active space UUID=A");
    EXPECT_EQ(
        lines.at(1),
        "orvello-pro: switch symbols — setCurrent=SLSManagedDisplaySetCurrentSpace  show=SLSShowSpaces  "
        "hide=SLSHideSpaces");
}

TEST_F(AppDelegateTests, TagsOpenTheListAndDeletedOnesCanBeTakenBack) {
    delegate_.applicationDidFinishLaunching();
    EXPECT_EQ(logged().front(), "installed main menu: 2 top-level items");
    manager_.onTagClicked();
    ASSERT_TRUE(host_.titled("Edit Tag"));
    manager_.onTagClicked();
    EXPECT_FALSE(host_.titled("Edit Tag") && host_.titled("Edit Tag")->visible);

    const Tag mail = tag(0);
    manager_.deleteTag(mail.id);
    ASSERT_EQ(host_.toasts.size(), 1U);
    EXPECT_EQ(host_.toasts.begin()->second->view.message, "Deleted “Mail”");
    const auto undo = host_.toasts.begin()->second->view.onUndo;
    undo();
    undo();
    wait(1);
    EXPECT_EQ(std::ranges::count(store_.tags, mail), 1) << "pressed twice";
    EXPECT_TRUE(host_.toasts.empty());

    EXPECT_EQ(desktop_.menuBar.menus.at(0).items.at(0).title, "Quit orvellos");
    std::get<1>(desktop_.menuBar.menus[0].items[0].action)();
    EXPECT_TRUE(ended_);
}

}  // namespace
}  // namespace orvellos
