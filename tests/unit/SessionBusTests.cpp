#include "platform/freedesktop/SessionBus.h"

#include <gtest/gtest.h>

#include "platform/freedesktop/KwinDesktops.h"
#include "tests/support/MainLoop.h"
#include "tests/support/PrivateBus.h"

namespace platform::freedesktop {
namespace {

using desktop_test::answerWith;
using desktop_test::StandInService;
using nlohmann::json;

constexpr const char* kService = "org.example.Service";

BusCall exampleCall(std::vector<BusArgument> arguments = {}) {
    return {.service = kService,
            .path = "/path",
            .interface = "org.example.Interface",
            .member = "Member",
            .arguments = std::move(arguments)};
}

class SessionBusTests : public testing::Test {
  protected:
    struct Answer {
        bool delivered = false;
        std::optional<json> arguments;
    };

    SessionBus makeBus() {
        return SessionBus(library_, runLoop_, runLoop_, [this] {
            ++attempts_;
            return daemon_.address();
        });
    }

    static SessionBus::Reply into(Answer& answer) {
        return [&answer](const auto& arguments) { answer = {true, arguments}; };
    }

    Answer answerTo(SessionBus& bus, const BusCall& call) {
        Answer answer;
        const auto pending = bus.call(call, into(answer));
        EXPECT_FALSE(answer.delivered);
        EXPECT_TRUE(mainLoop_.runUntil([&] { return answer.delivered; }));
        return answer;
    }

    desktop_test::PrivateBus daemon_;
    desktop_test::MainLoop mainLoop_;
    ui::QtRunLoop& runLoop_ = mainLoop_.runLoop;
    SystemdLibrary library_;
    int attempts_ = 0;
};

TEST_F(SessionBusTests, ReadsAnswersOfEveryType) {
    struct Row {
        const char* name;
        StandInService::Answer answer;
        const char* expected;  // JSON; null for an absent answer
    };
    const Row rows[] = {
        {"nothing", [](auto*, auto*) { return 0; }, "[]"},
        {"numbers", answerWith("ynqiuxtdb", 255, -1, 65535, -2, 3000000000U, int64_t{-3}, UINT64_MAX, 0.5, 1),
         "[255, -1, 65535, -2, 3000000000, -3, 18446744073709551615, 0.5, true]"},
        {"texts", answerWith("sog", "é", "/a", "a{sv}"), R"(["é", "/a", "a{sv}"])"},
        {"a variant in a variant", answerWith("v", "v", "b", 0), "[false]"},
        {"a dictionary", answerWith("a{sv}", 2, "a", "u", 1U, "b", "s", "x"), R"([[["a", 1], ["b", "x"]]])"},
        {"structures", answerWith("a(is)", 2, 7, "s", 8, "t"), R"([[[7, "s"], [8, "t"]]])"},
        {"a descriptor", answerWith("hs", 0, "after"), R"([null, "after"])"},
        {"an error", [](auto*, auto*) { return -1; }, nullptr},
        {"too many values",
         [](auto*, auto* r) {
             const std::vector<char> bytes(200000);
             return sd_bus_message_append_array(r, 'y', bytes.data(), bytes.size());
         },
         nullptr},
    };
    auto bus = makeBus();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const StandInService service(daemon_.address(), kService, row.answer);
        EXPECT_EQ(answerTo(bus, exampleCall()).arguments,
                  row.expected ? std::optional(json::parse(row.expected)) : std::nullopt);
    }
    EXPECT_EQ(attempts_, 1);
}

TEST_F(SessionBusTests, SendsArgumentsWithTheirTypes) {
    const StandInService echo(daemon_.address(), kService, [](auto* call, auto* reply) {
        sd_bus_message_append(reply, "s", sd_bus_message_get_signature(call, 1));
        return sd_bus_message_copy(reply, call, 1);
    });
    auto bus = makeBus();
    const auto call =
        exampleCall({true, std::int32_t{-1}, std::uint32_t{2}, std::string("t"),
                     std::vector<std::string>{"a", "b"}, BusVariant{false}, BusVariant{std::string("v")}});
    EXPECT_EQ(answerTo(bus, call).arguments, json({"biusasvv", true, -1, 2, "t", {"a", "b"}, false, "v"}));
    EXPECT_EQ(echo.calls(), std::vector<std::string>{"/path org.example.Interface.Member"});
    EXPECT_FALSE(answerTo(bus, exampleCall({std::string("\xff")})).arguments);
    EXPECT_EQ(echo.calls().size(), 1U);
}

TEST_F(SessionBusTests, AnswersAbsentWithoutWaitingWhenNobodyCan) {
    const StandInService silent(daemon_.address(), "org.example.Silent", nullptr);
    auto silentCall = exampleCall();
    silentCall.service = "org.example.Silent";
    silentCall.timeout = std::chrono::milliseconds(50);
    auto bus = makeBus();
    EXPECT_FALSE(answerTo(bus, exampleCall()).arguments);
    EXPECT_FALSE(answerTo(bus, silentCall).arguments);

    daemon_.stop();
    auto other = makeBus();
    EXPECT_FALSE(answerTo(other, exampleCall()).arguments);
    EXPECT_LT(mainLoop_.longestTurn, kLongestBusCall);
    daemon_.resume();

    SystemdLibrary missing("libsystemd-that-is-not-there.so.0");
    SessionBus without(missing, runLoop_, runLoop_);
    EXPECT_FALSE(answerTo(without, exampleCall()).arguments);
}

TEST_F(SessionBusTests, ComesBackWithTheBusAndDoesNotTryAllTheTime) {
    auto bus = makeBus();
    Answer inFlight;
    {
        const StandInService silent(daemon_.address(), kService, nullptr);
        auto call = exampleCall();
        call.timeout = desktop_test::kGenerousDeadline * 2;
        const auto pending = bus.call(call, into(inFlight));
        EXPECT_TRUE(mainLoop_.runUntil([&] { return silent.calls().size() == 1; }));
        daemon_.end();
        EXPECT_TRUE(mainLoop_.runUntil([&] { return inFlight.delivered; }));
        EXPECT_FALSE(inFlight.arguments);
    }
    attempts_ = 0;
    const auto start = runLoop_.now();
    for (int i = 0; i < 10; ++i) EXPECT_FALSE(answerTo(bus, exampleCall()).arguments);
    EXPECT_LE(attempts_, 1 + (runLoop_.now() - start) / std::chrono::seconds(1));

    daemon_.restart();
    const StandInService service(daemon_.address(), kService, answerWith("s", "here"));
    EXPECT_TRUE(mainLoop_.runUntil([&] { return answerTo(bus, exampleCall()).arguments == json({"here"}); }));
}

TEST_F(SessionBusTests, DeliversNothingAfterTheSubscriptionOrTheBusEnds) {
    const StandInService service(daemon_.address(), kService, [](auto*, auto*) { return 0; });
    Answer cancelled, orphaned;
    Subscription outliving;
    {
        auto gone = makeBus();
        outliving = gone.call(exampleCall(), into(orphaned));
    }
    auto bus = makeBus();
    bus.call(exampleCall(), into(cancelled)).cancel();
    EXPECT_TRUE(answerTo(bus, exampleCall()).arguments);
    EXPECT_FALSE(cancelled.delivered || orphaned.delivered);
}

TEST_F(SessionBusTests, RequestsKwinDesktopIds) {
    auto bus = makeBus();
    KwinDesktops kwin(bus);
    std::vector<std::optional<KwinDesktopIds>> answers;
    const auto request = [&] {
        const auto count = answers.size();
        const auto pending = kwin.requestIds([&](const auto& ids) { answers.push_back(ids); });
        EXPECT_TRUE(mainLoop_.runUntil([&] { return answers.size() > count; }));
    };
    request();
    const StandInService service(daemon_.address(), "org.kde.KWin",
                                 answerWith("v", "a(uss)", 2, 1U, "b", "B", 0U, "a", "A"));
    request();
    EXPECT_EQ(answers, (std::vector<std::optional<KwinDesktopIds>>{std::nullopt, {{"a", "b"}}}));
}

}  // namespace
}  // namespace platform::freedesktop
