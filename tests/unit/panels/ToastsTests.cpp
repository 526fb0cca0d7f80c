#include "orvellos/panels/Toasts.h"

#include "tests/support/ApplicationTest.h"
#include "tests/support/SimulatedPanelHost.h"

namespace orvellos {
namespace {

class UndoToastTest : public ApplicationTest {
  protected:
    void wait(double time) { desktop_.runLoop.advance(platform::seconds(time)); }
    void show(const std::string& message) {
        toast_.show(message, [this, message] { undone_.push_back(message); });
    }

    Texts undone_;
    SimulatedPanelHost host_;
    UndoToast toast_{desktop_.runLoop, desktop_.screens, host_};
};

TEST_F(UndoToastTest, ANewerToastReplacesTheOlderAndLastsItsOwnTime) {
    desktop_.screens.setScreens({{{}, {0, 0, 1440, 900}, {0, 40, 1440, 860}, 1}});
    show("first");
    EXPECT_EQ(host_.toasts.begin()->second->origin, (platform::Point{620, 88}));
    EXPECT_TRUE(host_.toasts.begin()->second->visible);
    wait(2);
    show("second");
    wait(4.9);
    ASSERT_EQ(host_.toasts.size(), 1U);
    EXPECT_EQ(host_.toasts.begin()->second->view.message, "second");
    wait(0.2);
    EXPECT_TRUE(host_.toasts.empty());
    EXPECT_TRUE(undone_.empty());
}

TEST_F(UndoToastTest, UndoRunsOnceAndEndsIt) {
    show("deleted");
    const auto undo = host_.toasts.begin()->second->view.onUndo;
    EXPECT_EQ(host_.toasts.begin()->second->origin, (platform::Point{-1, -1})) << "there is no screen";
    undo();
    undo();
    EXPECT_EQ(undone_, Texts{"deleted"});
    wait(0.01);
    EXPECT_TRUE(host_.toasts.empty());
}

}  // namespace
}  // namespace orvellos
