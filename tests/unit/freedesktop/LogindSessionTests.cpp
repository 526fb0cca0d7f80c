#include "platform/freedesktop/session/LogindSession.h"

#include <gtest/gtest.h>

#include <atomic>
#include <set>

#include "tests/support/MainLoop.h"
#include "tests/support/PrivateBus.h"

namespace platform::freedesktop {
namespace {

using desktop_test::StandInService;
using enum SessionEvent;

constexpr const char* kService = "org.freedesktop.login1";
constexpr const char* kSessionPath = "/org/freedesktop/login1/session/_34";

class LogindSessionTests : public testing::Test {
  protected:
    // logind, which finds the session "4" in these ways: by the "process", by the "id", as that of the
    // "user".
    StandInService::Answer logind(std::set<std::string> ways) {
        return [this, ways = std::move(ways)](auto* call, auto* reply) {
            const std::string member = sd_bus_message_get_member(call);
            const std::string path = sd_bus_message_get_path(call);
            if (member == "GetSessionByPID")
                return ways.contains("process") ? sd_bus_message_append(reply, "o", kSessionPath) : -1;
            if (member == "GetSession") {
                const char* id = nullptr;
                sd_bus_message_read(call, "s", &id);
                return std::string_view("4") == id ? sd_bus_message_append(reply, "o", kSessionPath) : -1;
            }
            if (path.ends_with("/auto"))
                return ways.contains("user") ? sd_bus_message_append(reply, "v", "s", "4") : -1;
            return path == kSessionPath ? sd_bus_message_append(reply, "v", "b", isActive_ ? 1 : 0) : -1;
        };
    }
    static auto activeChanged(const char* type, int value) {
        return [=](sd_bus* b) {
            sd_bus_emit_signal(b, kSessionPath, "org.freedesktop.DBus.Properties", "PropertiesChanged",
                               "sa{sv}as", "org.freedesktop.login1.Session", 1, "Active", type, value, 0);
        };
    }
    static auto prepareForSleep(const char* type, int value) {
        return [=](sd_bus* b) {
            sd_bus_emit_signal(b, "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                               "PrepareForSleep", type, value);
        };
    }
    bool waitFor(const std::vector<SessionEvent>& expected) {
        return mainLoop_.runUntil([&] { return events_ == expected; });
    }

    desktop_test::PrivateBus daemon_;
    desktop_test::MainLoop mainLoop_;
    SystemdLibrary library_;
    MessageBus bus_{library_, mainLoop_.runLoop, mainLoop_.runLoop, [this] { return daemon_.address(); }};
    std::atomic<bool> isActive_ = true;
    std::vector<SessionEvent> events_;
};

TEST_F(LogindSessionTests, FindsItsSession) {
    struct Row {
        const char* name;
        std::set<std::string> ways;
        std::optional<std::string> sessionId;
        bool isFound;
    };
    const Row rows[] = {{"by the process", {"process"}, std::nullopt, true},
                        {"by the id", {}, "4", true},
                        {"as the user's", {"user"}, std::nullopt, true},
                        {"as the user's after a wrong id", {"user"}, "5", true},
                        {"not at all", {}, "5", false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const StandInService service(daemon_.address(), kService, logind(row.ways));
        const LogindSession session(bus_, row.sessionId);
        EXPECT_EQ(session.isOnConsole(), std::nullopt);
        EXPECT_TRUE(mainLoop_.runUntil([&] {
            return row.isFound
                       ? session.isOnConsole().has_value()
                       : !service.calls().empty() && service.calls().back().ends_with("Properties.Get");
        }));
        EXPECT_EQ(session.isOnConsole(), row.isFound ? std::optional(true) : std::nullopt);
    }
}

TEST_F(LogindSessionTests, TellsWhenTheSessionLeavesTheScreensAndComesBack) {
    LogindSession session(bus_, std::nullopt);
    const auto subscription = session.onEvent([&](auto event) { events_.push_back(event); });
    {
        isActive_ = false;
        StandInService service(daemon_.address(), kService, logind({"process"}));
        EXPECT_TRUE(waitFor({SessionDidResignActive})) << "as it is at the start";
        EXPECT_EQ(session.isOnConsole(), false);
        service.run(activeChanged("b", 1));
        EXPECT_TRUE(waitFor({SessionDidResignActive, SessionDidBecomeActive}));
        EXPECT_EQ(session.isOnConsole(), true);
        events_.clear();
        service.run(activeChanged("b", 1));
        service.run(activeChanged("b", 0));
        EXPECT_TRUE(waitFor({SessionDidResignActive}));
    }
    EXPECT_TRUE(waitFor({SessionDidResignActive, SessionDidBecomeActive})) << "nobody can tell any more";
    EXPECT_EQ(session.isOnConsole(), std::nullopt);
    isActive_ = true;
    StandInService service(daemon_.address(), kService, logind({}));
    EXPECT_TRUE(mainLoop_.runUntil([&] { return session.isOnConsole() == true; }));
    service.run(activeChanged("u", 1));
    EXPECT_TRUE(mainLoop_.runUntil([&] { return !session.isOnConsole(); }));
    EXPECT_EQ(events_.size(), 2U);
}

TEST_F(LogindSessionTests, TellsWhenTheMachineSleeps) {
    LogindSession session(bus_, std::nullopt);
    const auto subscription = session.onEvent([&](auto event) { events_.push_back(event); });
    {
        StandInService service(daemon_.address(), kService, logind({"process"}));
        EXPECT_TRUE(mainLoop_.runUntil([&] { return session.isOnConsole() == true; }));
        service.run(prepareForSleep("b", 0));
        service.run(prepareForSleep("u", 1));
        service.run(prepareForSleep("b", 1));
        service.run(prepareForSleep("b", 1));
        service.run(prepareForSleep("b", 0));
        EXPECT_TRUE(waitFor({WillSleep, DidWake}));
        service.run(prepareForSleep("b", 1));
        EXPECT_TRUE(waitFor({WillSleep, DidWake, WillSleep}));
    }
    EXPECT_TRUE(waitFor({WillSleep, DidWake, WillSleep, DidWake})) << "logind has gone away";
}

TEST_F(LogindSessionTests, KnowsNothingOfALogindThatHangs) {
    const StandInService silent(daemon_.address(), kService, nullptr);
    const LogindSession session(bus_, "4");
    EXPECT_TRUE(mainLoop_.runUntil([&] { return !silent.calls().empty(); }));
    EXPECT_EQ(session.isOnConsole(), std::nullopt);
}

TEST_F(LogindSessionTests, IsOneMonitorTogetherWithTheScreensPower) {
    LogindSession session(bus_, std::nullopt);
    Observers<SessionEvent> screens;
    SessionEvents all(session, {[&](auto action) { return screens.subscribe(std::move(action)); }});
    const auto subscription = all.onEvent([&](auto event) { events_.push_back(event); });
    screens.notify(ScreensDidSleep);
    isActive_ = false;
    const StandInService service(daemon_.address(), kService, logind({"process"}));
    EXPECT_TRUE(waitFor({ScreensDidSleep, SessionDidResignActive}));
    EXPECT_EQ(all.isOnConsole(), false);
}

}  // namespace
}  // namespace platform::freedesktop
