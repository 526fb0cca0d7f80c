#include "platform/freedesktop/KdeOverviewKeys.h"

#include <gtest/gtest.h>

#include "tests/support/MainLoop.h"
#include "tests/support/PrivateBus.h"

namespace platform::freedesktop {
namespace {

using desktop_test::StandInService;
using Keys = std::vector<std::uint32_t>;

class KdeOverviewKeysTest : public testing::Test {
  protected:
    std::optional<Keys> request() {
        std::optional<Keys> answer;
        overviewKeys_.request([&](const auto& keys) { answer = keys; });
        EXPECT_FALSE(answer);
        EXPECT_TRUE(loop_.runUntil([&] { return answer.has_value(); }));
        return answer;
    }

    desktop_test::PrivateBus daemon_;
    desktop_test::MainLoop loop_;
    SystemdLibrary library_;
    SessionBus bus_{library_, loop_.runLoop, loop_.runLoop, [this] { return daemon_.address(); }};
    KdeOverviewKeys overviewKeys_{bus_};
};

// The keys of each action by its name, as the daemon is asked for them.
int answerByAction(sd_bus_message* call, sd_bus_message* reply) {
    char** action = nullptr;
    if (sd_bus_message_read_strv(call, &action) < 0) return -1;
    const std::string component = action[0], name = action[1];
    for (char** part = action; *part; ++part) std::free(*part);
    std::free(static_cast<void*>(action));
    if (component != "kwin") return -1;
    if (name == "Overview") return sd_bus_message_append(reply, "ai", 2, 0x10000057, 0);
    if (name == "ShowDesktopGrid") return sd_bus_message_append(reply, "ai", 2, 0x11000037, -2);
    if (name == "Cube") return sd_bus_message_append(reply, "s", "0x10000043");
    return -1;
}

TEST_F(KdeOverviewKeysTest, GathersTheKeysOfAllOverviews) {
    const StandInService service(daemon_.address(), "org.kde.kglobalaccel", answerByAction);
    const Keys expected{0x10000057, 0x11000037, 0xFFFFFFFE};
    EXPECT_EQ(request(), expected);
    EXPECT_EQ(request(), expected) << "asked again";
    EXPECT_EQ(service.calls().front(), "/kglobalaccel org.kde.KGlobalAccel.shortcut");
}

TEST_F(KdeOverviewKeysTest, FindsNoneWithoutTheDaemon) {
    EXPECT_EQ(request(), Keys{});
}

TEST_F(KdeOverviewKeysTest, ForgetsAQuestionThatIsAskedAgain) {
    const StandInService service(daemon_.address(), "org.kde.kglobalaccel", answerByAction);
    bool former = false;
    overviewKeys_.request([&](const auto& /*keys*/) { former = true; });
    EXPECT_EQ(request().value().size(), 3U);
    EXPECT_FALSE(former);
}

}  // namespace
}  // namespace platform::freedesktop
