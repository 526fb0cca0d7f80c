#include "orvellos/app/Updater.h"

#include "tests/support/ApplicationTest.h"
#include "tests/support/SimulatedPanelHost.h"

namespace orvellos {
namespace {

using platform::Error;
using platform::MaybeError;

class UpdaterTest : public ApplicationTest {
  protected:
    void answerStart(const MaybeError& error) { std::exchange(updates_.started, nullptr)(error); }
    Texts told() {
        Texts messages;
        for (const auto& alert : desktop_.alerts.shown) messages.push_back(alert.message);
        desktop_.alerts.shown.clear();
        return messages;
    }

    // What the note on the screen says; "" while there is none.
    std::string note() { return host_.toasts.empty() ? "" : host_.toasts.begin()->second->view.message; }

    platform::simulated::SimulatedUpdates& updates_ = desktop_.updates;
    SimulatedPanelHost host_;
    WaitingNote note_{desktop_.screens, host_};
    Updater updater_{updates_, desktop_.alerts, note_};
};

TEST_F(UpdaterTest, AFailedStartIsToldOnlyWhenItFailsAgain) {
    answerStart(Error{"no PackageKit"});
    EXPECT_TRUE(told().empty());
    EXPECT_EQ(note(), "");
    updater_.checkForUpdates();
    EXPECT_EQ(updates_.starts, 2);
    EXPECT_EQ(note(), "Checking for updates…");
    answerStart(Error{"still none"});
    EXPECT_EQ(note(), "");
    ASSERT_EQ(desktop_.alerts.shown.size(), 1U);
    EXPECT_EQ(
        desktop_.alerts.shown[0].informativeText,
        "orvellos can’t check for updates from where it’s running now. Make sure orvellos is in your "
        "Applications folder (not the disk image or Downloads folder), then quit and reopen it.\n\n(still "
        "none)");
    EXPECT_EQ(told(), Texts{"Couldn’t start the updater"});
    updater_.checkForUpdates();
    answerStart(std::nullopt);
    EXPECT_TRUE(told().empty());
    EXPECT_TRUE(updates_.answered) << "a retry that works goes straight on";
}

TEST_F(UpdaterTest, ACheckWaitsForTheStart) {
    updater_.checkForUpdates();
    EXPECT_EQ(updates_.starts, 1);
    EXPECT_FALSE(updates_.answered);
    answerStart(std::nullopt);
    ASSERT_TRUE(updates_.answered);
    EXPECT_EQ(note(), "Checking for updates…");
    updater_.checkForUpdates();
    EXPECT_EQ(host_.toasts.size(), 1U) << "asked for again";
    updates_.answered({"9.1", {}});
    EXPECT_EQ(note(), "");
    updates_.answered({{}, {}});
    updates_.answered({"9.1", Error{"broken"}});
    EXPECT_EQ(told(),
              (Texts{"orvellos 9.1 is available", "orvellos is up to date", "Couldn’t check for updates"}));
}

TEST_F(UpdaterTest, AFailedStartIsLoggedForThoseWhoDebug) {
    answerStart(Error{"no PackageKit"});
    EXPECT_FALSE(hasLogged("Updater failed to start (suppressed at launch): no PackageKit"));
    connectLog(true);
    updater_.checkForUpdates();
    answerStart(Error{"no PackageKit"});
    EXPECT_TRUE(hasLogged("Updater failed to start (suppressed at launch): no PackageKit"));
}

}  // namespace
}  // namespace orvellos
