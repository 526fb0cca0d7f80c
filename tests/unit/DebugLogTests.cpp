#include "orvellos/DebugLog.h"

#include <gtest/gtest.h>

#include <thread>

#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/simulated/SimulatedSystemLog.h"
#include "tests/support/TimeZone.h"

namespace orvellos {
namespace {

using platform::seconds;

class DebugLogTests : public testing::Test {
  protected:
    void TearDown() override { connectDebugLog({}); }

    void connect(bool echoEnabled) {
        connectDebugLog({.systemLog = &systemLog_,
                         .standardError = [this](std::string_view text) { echo_ += text; },
                         .clock = &runLoop_,
                         .echoEnabled = echoEnabled});
    }

    platform::simulated::SimulatedRunLoop runLoop_;
    platform::simulated::SimulatedSystemLog systemLog_;
    std::string echo_;
};

TEST_F(DebugLogTests, WritesEachCategoryWhereItBelongs) {
    struct Row {
        LogCategory category;
        std::string systemLogCategory, timelineStart, echo;
    };
    const Row rows[] = {{LogCategory::General, "general", "gen", ""},
                        {LogCategory::Nav, "nav", "nav", "orvello-nav: hello {}\n"},
                        {LogCategory::Mc, "mc", "mc", "orvello-mc: hello {}\n"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.systemLogCategory);
        for (const bool echoEnabled : {false, true}) {
            connect(echoEnabled);
            echo_.clear();
            log(row.category, "hello {}");
            EXPECT_EQ(systemLog_.entries().back(), std::pair(row.systemLogCategory, std::string("hello {}")));
            ASSERT_EQ(timelineSnapshot().size(), 1U);
            EXPECT_EQ(timelineSnapshot()[0].substr(14), " " + row.timelineStart + " hello {}");
            EXPECT_EQ(echo_, echoEnabled ? row.echo : "");
        }
    }
}

TEST_F(DebugLogTests, StampsLinesWithTheLocalTimeOfDay) {
    const desktop_test::TimeZone ahead("TEST-5:30");  // five and a half hours ahead of UTC
    connect(false);
    runLoop_.setWallNow(runLoop_.wallNow() + std::chrono::minutes(3) + std::chrono::microseconds(27518999));
    log(LogCategory::Nav, "x");
    logMC(std::nullopt, "y");
    EXPECT_EQ(timelineSnapshot(),
              (std::vector<std::string>{"[14:33:27.518] nav x", "[14:33:27.518] mc [14:33:27.518] y"}));
}

TEST_F(DebugLogTests, StampsWithTheMillisecondsSinceTheReference) {
    const std::pair<double, std::string> rows[] = {
        {0, "[+   0.0ms] m"}, {0.0125, "[+  12.5ms] m"}, {1.234, "[+1234.0ms] m"}, {100, "[+100000.0ms] m"}};
    connect(false);
    for (const auto& [elapsed, expected] : rows) {
        logMC(runLoop_.now() - seconds(elapsed), "m");
        EXPECT_EQ(systemLog_.entries().back().second, expected);
    }
}

TEST_F(DebugLogTests, KeepsTheLastTenThousandLinesOfAllThreads) {
    connect(false);
    for (int i = 1; i <= 10001; ++i) log(LogCategory::Nav, std::to_string(i));
    ASSERT_EQ(timelineSnapshot().size(), 10000U);
    EXPECT_TRUE(timelineSnapshot().front().ends_with(" nav 2"));
    EXPECT_TRUE(timelineSnapshot().back().ends_with(" nav 10001"));

    connect(false);
    std::vector<std::jthread> threads;
    threads.reserve(4);
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([] {
            for (int i = 0; i < 1000; ++i) log(LogCategory::Mc, "line");
        });
    threads.clear();
    EXPECT_EQ(timelineSnapshot().size(), 4000U);
    EXPECT_EQ(systemLog_.entries().size(), 14001U);
}

TEST_F(DebugLogTests, HashesLabelsUnlessDebugging) {
    const std::pair<std::string, std::string> rows[] = {
        {"", "#9dc5"}, {"a", "#292c"}, {"foobar", "#f968"}, {"Büro", "#5905"}};
    for (const auto& [label, hash] : rows) {
        connect(false);
        EXPECT_EQ(redactedLabel(label), hash);
        connect(true);
        EXPECT_EQ(redactedLabel(label), label);
    }
}

TEST_F(DebugLogTests, EchoesForTheOneTextOnly) {
    EXPECT_TRUE(asksForDebugEcho("1"));
    for (const char* text : {static_cast<const char*>(nullptr), "", "0", "01", "1 ", "true"})
        EXPECT_FALSE(asksForDebugEcho(text));
}

TEST_F(DebugLogTests, KeepsProcessMessagesOutOfTheTimeline) {
    connect(true);
    logGeneral("orvello: hello");
    EXPECT_EQ(systemLog_.general(), std::vector<std::string>{"orvello: hello"});
    EXPECT_TRUE(timelineSnapshot().empty());
    EXPECT_EQ(echo_, "");
}

}  // namespace
}  // namespace orvellos
