#include "orvellos/AppDelegate.h"

#include "tests/support/ManagerTest.h"

namespace orvellos {
namespace {

class AppDelegateTests : public ManagerTest {
  protected:
    bool started() { return !desktop_.windowSystem.windows.empty(); }

    bool ended_ = false;
    AppDelegate delegate_{{identifier_, desktop_.runLoop, desktop_.applications,
                           [this]() -> TagManager& { return manager_; }, [this] { ended_ = true; }}};
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
        int starts = 0;
        ended_ = false;
        AppDelegate delegate({identifier_, desktop_.runLoop, desktop_.applications,
                              [&]() -> TagManager& {
                                  ++starts;
                                  return manager_;
                              },
                              [&] { ended_ = true; }});
        delegate.applicationDidFinishLaunching();
        const double checks[] = {row.starts - 0.001, row.starts + 0.001};
        double now = 0;
        for (const double time : {row.ends, checks[0], checks[1], 4.0}) {
            if (time <= now) continue;
            wait(time - now);
            now = time;
            if (now >= row.ends) std::erase_if(running, [](const auto& each) { return each.second == 7; });
            EXPECT_EQ(starts, !row.flavour || (row.starts > 0 && now > row.starts) ? 1 : 0) << now;
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

}  // namespace
}  // namespace orvellos
