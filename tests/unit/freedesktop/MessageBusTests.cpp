#include "platform/freedesktop/bus/MessageBus.h"

#include <gtest/gtest.h>

#include <atomic>

#include "platform/freedesktop/bus/BusService.h"
#include "platform/freedesktop/desktops/KwinDesktops.h"
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

class MessageBusTests : public testing::Test {
  protected:
    struct Answer {
        bool delivered = false;
        std::optional<json> arguments;
    };

    MessageBus makeBus() {
        return MessageBus(library_, runLoop_, runLoop_, [this] {
            ++attempts_;
            return daemon_.address();
        });
    }

    static MessageBus::Reply into(Answer& answer) {
        return [&answer](const auto& arguments) { answer = {true, arguments}; };
    }

    Answer answerTo(MessageBus& bus, const BusCall& call) {
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

TEST_F(MessageBusTests, ReadsAnswersOfEveryType) {
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

TEST_F(MessageBusTests, SendsArgumentsWithTheirTypes) {
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

TEST_F(MessageBusTests, AnswersAbsentWithoutWaitingWhenNobodyCan) {
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
    MessageBus without(missing, runLoop_, runLoop_);
    EXPECT_FALSE(answerTo(without, exampleCall()).arguments);
}

TEST_F(MessageBusTests, ComesBackWithTheBusAndDoesNotTryAllTheTime) {
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

TEST_F(MessageBusTests, DeliversNothingAfterTheSubscriptionOrTheBusEnds) {
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

TEST_F(MessageBusTests, DeliversTheSignalsThatWereAskedFor) {
    auto bus = makeBus();
    const BusSignal all{.sender = kService, .path = "/p", .interface = "i.f", .member = "M"};
    auto one = all;
    one.firstArgument = "a";
    std::vector<json> received, narrow, cancelled;
    const auto listening = bus.subscribe(all, [&](const auto& arguments) { received.push_back(arguments); });
    const auto listeningNarrowly =
        bus.subscribe(one, [&](const auto& arguments) { narrow.push_back(arguments); });
    Subscription ending;
    ending = bus.subscribe(all, [&](const auto& arguments) {
        cancelled.push_back(arguments);
        ending.cancel();
    });
    EXPECT_TRUE(answerTo(bus, {"org.freedesktop.DBus", "/", "org.freedesktop.DBus", "GetId"}).arguments);

    StandInService other(daemon_.address(), "org.example.Other", nullptr);
    other.run([](auto* b) { sd_bus_emit_signal(b, "/p", "i.f", "M", "s", "another's"); });
    StandInService service(daemon_.address(), kService, nullptr);
    service.run([](auto* b) {
        sd_bus_emit_signal(b, "/q", "i.f", "M", "s", "path");
        sd_bus_emit_signal(b, "/p", "i.g", "M", "s", "interface");
        sd_bus_emit_signal(b, "/p", "i.f", "N", "s", "member");
        sd_bus_emit_signal(b, "/p", "i.f", "M", "sb", "b", 1);
        sd_bus_emit_signal(b, "/p", "i.f", "M", "s", "a");
    });
    EXPECT_TRUE(mainLoop_.runUntil([&] { return received.size() == 2; }));
    EXPECT_EQ(received, (std::vector<json>{{"b", true}, {"a"}}));
    EXPECT_EQ(narrow, (std::vector<json>{{"a"}}));
    EXPECT_EQ(cancelled, (std::vector<json>{{"b", true}}));
}

TEST_F(MessageBusTests, KeepsListeningWhenTheBusOrTheServiceComesAnew) {
    auto bus = makeBus();
    std::vector<bool> running, connected;
    std::vector<json> texts;
    const auto connection = bus.onConnectionChanged([&](bool is) { connected.push_back(is); });
    const auto listening = bus.subscribe({.sender = kService, .member = "M"},
                                         [&](const auto& a) { texts.push_back(a.front()); });
    const BusServiceWatch watch(bus, kService, [&](bool is) { running.push_back(is); });
    const auto signalWithin = [&](const char* text) {
        StandInService service(daemon_.address(), kService, nullptr);
        EXPECT_TRUE(mainLoop_.runUntil([&] { return watch.isRunning(); }));
        service.run([&](auto* b) { sd_bus_emit_signal(b, "/p", "i.f", "M", "s", text); });
        EXPECT_TRUE(mainLoop_.runUntil([&] { return !texts.empty() && texts.back() == text; }));
    };
    signalWithin("first");
    EXPECT_TRUE(mainLoop_.runUntil([&] { return !watch.isRunning(); }));
    signalWithin("second");
    EXPECT_TRUE(mainLoop_.runUntil([&] { return !watch.isRunning(); }));
    daemon_.restart();
    signalWithin("third");
    daemon_.end();
    EXPECT_TRUE(mainLoop_.runUntil([&] { return !watch.isRunning(); }));
    EXPECT_EQ(running, (std::vector{true, false, true, false, true, false}));
    EXPECT_EQ(connected, (std::vector{true, false, true, false}));
    EXPECT_EQ(texts, (std::vector<json>{"first", "second", "third"}));
}

TEST_F(MessageBusTests, KnowsAServiceThatWasThereBeforeAndOneThatIsReplaced) {
    auto bus = makeBus();
    StandInService service(daemon_.address(), kService, nullptr);
    service.run([](auto* b) {
        sd_bus_release_name(b, kService);
        sd_bus_request_name(b, kService, SD_BUS_NAME_ALLOW_REPLACEMENT);
    });
    std::vector<bool> running;
    const BusServiceWatch watch(bus, kService, [&](bool is) { running.push_back(is); });
    EXPECT_TRUE(mainLoop_.runUntil([&] { return watch.isRunning(); }));
    StandInService successor(daemon_.address(), "org.example.Successor", nullptr);
    successor.run([](auto* b) { sd_bus_request_name(b, kService, SD_BUS_NAME_REPLACE_EXISTING); });
    EXPECT_TRUE(mainLoop_.runUntil([&] { return running.size() == 3; }));
    EXPECT_EQ(running, (std::vector{true, false, true}));
}

TEST_F(MessageBusTests, FollowsAProperty) {
    const auto change = [](const char* changed, const char* invalidated) {
        return [=](sd_bus* b) {
            sd_bus_emit_signal(b, "/p", "org.freedesktop.DBus.Properties", "PropertiesChanged", "sa{sv}as",
                               "i.f", 2, "Other", "b", 1, changed, "u", 8U, invalidated ? 1 : 0, invalidated);
        };
    };
    auto bus = makeBus();
    std::vector<json> values;
    const BusProperty property(bus, {kService, "/p", "i.f", "Number"},
                               [&] { values.push_back(property.value()); });
    {
        std::atomic<unsigned> number = 7;
        StandInService service(daemon_.address(), kService, [&](auto*, auto* reply) {
            return sd_bus_message_append(reply, "v", "u", number.load());
        });
        EXPECT_TRUE(mainLoop_.runUntil([&] { return property.value() == 7; }));
        service.run(change("Another", nullptr));
        service.run(change("Number", nullptr));
        EXPECT_TRUE(mainLoop_.runUntil([&] { return property.value() == 8; }));
        number = 9;
        service.run(change("Another", "Number"));
        EXPECT_TRUE(mainLoop_.runUntil([&] { return property.value() == 9; }));
    }
    EXPECT_TRUE(mainLoop_.runUntil([&] { return property.value().is_null(); }));
    EXPECT_EQ(values, (std::vector<json>{7, 8, 9, nullptr}));
}

TEST_F(MessageBusTests, TakesNoHarmFromSignalsThatAreNotAsTheyShouldBe) {
    auto bus = makeBus();
    const BusProperty property(bus, {kService, "/p", "i.f", "Number"}, [] {});
    StandInService service(daemon_.address(), kService, answerWith("v", "u", 7U));
    EXPECT_TRUE(mainLoop_.runUntil([&] { return property.value() == 7; }));
    service.run([](auto* b) {
        const auto send = [&](const char* types, auto... values) {
            sd_bus_emit_signal(b, "/p", "org.freedesktop.DBus.Properties", "PropertiesChanged", types,
                               values...);
        };
        send("s", "i.f");
        send("sss", "i.f", "Number", "Number");
        send("sasas", "i.f", 2, "Number", "x", 0);
        send("sa(su)u", "i.f", 1, "Another", 1U, 5U);
        send("sa{su}as", "i.f", 1, "Number", 8U, 0);
    });
    EXPECT_TRUE(mainLoop_.runUntil([&] { return property.value() == 8; }));
}

TEST_F(MessageBusTests, RequestsKwinsDesktops) {
    auto bus = makeBus();
    KwinDesktops kwin(bus);
    std::vector<std::optional<DesktopRow>> answers;
    const auto request = [&] {
        const auto count = answers.size();
        const auto pending = kwin.request([&](const auto& row) { answers.push_back(row); });
        EXPECT_TRUE(mainLoop_.runUntil([&] { return answers.size() > count; }));
    };
    request();
    const StandInService service(daemon_.address(), "org.kde.KWin",
                                 answerWith("a{sv}", 1, "desktops", "a(uss)", 2, 1U, "b", "B", 0U, "a", "A"));
    request();
    EXPECT_EQ(answers, (std::vector<std::optional<DesktopRow>>{std::nullopt, DesktopRow{{"a", "b"}}}));
}

}  // namespace
}  // namespace platform::freedesktop
