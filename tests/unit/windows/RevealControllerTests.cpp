#include "orvellos/windows/RevealController.h"

#include "tests/support/ApplicationTest.h"

namespace orvellos {
namespace {

class RevealControllerTests : public ApplicationTest, private RevealedTags, private Reconciler {
  protected:
    void wait(double time) { desktop_.runLoop.advance(platform::seconds(time)); }
    bool isRevealed() { return reveal_.transientRevealActive(); }

    const std::vector<Tag>& tagsProvider() const override { return tags_; }
    TagWindow* windowFor(const TagID& /*id*/) const override { return nullptr; }
    platform::Rect homeTargetFrame(const Tag& /*tag*/, TagSize /*size*/) const override { return {}; }
    void reconcile() override { ++reconciled_; }

    int reconciled_ = 0;
    std::vector<Tag> tags_;
    RevealController reveal_{desktop_.runLoop, settings_, *this, *this};
};

// What is done at which second, and until when the tags are revealed.
TEST_F(RevealControllerTests, EndsAReveal) {
    enum class Do { Glance, Lock, Unlock, EndPeek };
    using enum Do;
    struct Row {
        const char* name;
        std::vector<std::pair<double, Do>> steps;
        double end;
    };
    const Row rows[] = {
        {"a glance", {{0, Glance}}, 0.25},
        {"two Space switches make one", {{0, Glance}, {0.1, Glance}}, 0.35},
        {"a peek", {{0, Lock}, {3, EndPeek}}, 4.5},
        {"a Space switch does not shorten a peek", {{0, Lock}, {1, Glance}, {3, EndPeek}}, 4.5},
        {"a swipe", {{0, Lock}, {0.4, Unlock}}, 0.65},
        {"a glance that is locked", {{0, Glance}, {0.1, Lock}, {2, Unlock}}, 2.25},
        {"a lock that nobody ends", {{0, Lock}, {12, EndPeek}}, 10.25},
        {"which a Space switch prolongs", {{0, Lock}, {5, Glance}}, 15.25},
        {"an unlock of nothing", {{0, Glance}, {0.1, EndPeek}}, 0.25},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        reconciled_ = 0;
        double now = 0;
        const auto advanceTo = [&](double time) {
            wait(time - now);
            now = time;
        };
        for (const auto& [time, step] : row.steps) {
            advanceTo(time);
            if (step == Glance) reveal_.beginTransientReveal(false);
            if (step == Lock) reveal_.beginTransientReveal(true);
            if (step == Unlock) reveal_.unlockTransientReveal();
            if (step == EndPeek) reveal_.unlockTransientReveal(RevealController::kPeekHideDelay);
        }
        if (now < row.end) {
            advanceTo(row.end - 0.001);
            EXPECT_TRUE(isRevealed());
            advanceTo(row.end);
        }
        EXPECT_FALSE(isRevealed());
        EXPECT_EQ(
            reconciled_,
            1 + std::ranges::count_if(
                    row.steps, [](const auto& step) { return step.second == Glance || step.second == Lock; }))
            << "every beginning and the end";
        wait(20);
        EXPECT_EQ(desktop_.runLoop.pendingTimers(), 0U);
    }
}

}  // namespace
}  // namespace orvellos
