#include "orvellos/base/DebugLog.h"

#include <thread>

#include "tests/support/ApplicationTest.h"

namespace orvellos {
namespace {

class DebugLogTests : public ApplicationTest {};

TEST_F(DebugLogTests, WritesEachCategoryWhereItBelongs) {
    struct Row {
        LogCategory category;
        std::string systemLogCategory, timelineLabel, echo;
    };
    const Row rows[] = {{LogCategory::General, "general", "gen", ""},
                        {LogCategory::Nav, "nav", "nav", "orvello-nav: hello {}\n"},
                        {LogCategory::Mc, "mc", "mc", "orvello-mc: hello {}\n"}};
    desktop_.runLoop.setWallNow(desktop_.runLoop.wallNow() + std::chrono::microseconds(27518999));
    for (const auto& row : rows) {
        for (const bool debugging : {false, true}) {
            connectLog(debugging);
            echo_.clear();
            log(row.category, "hello {}");
            EXPECT_EQ(desktop_.systemLog.entries().back(),
                      std::pair(row.systemLogCategory, std::string("hello {}")));
            EXPECT_EQ(timelineSnapshot(), Texts{"[14:30:27.518] " + row.timelineLabel + " hello {}"});
            EXPECT_EQ(echo_, debugging ? row.echo : "");
        }
    }
    connectLog(true);
    echo_.clear();
    logGeneral("orvello: hello");
    EXPECT_EQ(desktop_.systemLog.general(), Texts{"orvello: hello"});
    EXPECT_TRUE(timelineSnapshot().empty());
    EXPECT_EQ(echo_, "");
}

TEST_F(DebugLogTests, StampsWithTheTimeOfDayOrTheMillisecondsSinceTheReference) {
    logMC(std::nullopt, "m");
    for (const double elapsed : {0.0, 0.0125, 1.234, 100.0})
        logMC(desktop_.runLoop.now() - platform::seconds(elapsed), "m");
    EXPECT_EQ(logged(), (Texts{"[14:30:00.000] m", "[+   0.0ms] m", "[+  12.5ms] m", "[+1234.0ms] m",
                               "[+100000.0ms] m"}));
}

TEST_F(DebugLogTests, KeepsTheLastTenThousandLinesOfAllThreads) {
    for (int i = 1; i <= 10001; ++i) log(LogCategory::Nav, std::to_string(i));
    ASSERT_EQ(logged().size(), 10000U);
    EXPECT_EQ(logged().front(), "2");
    EXPECT_EQ(logged().back(), "10001");

    connectLog(false);
    std::vector<std::jthread> threads(4);
    for (auto& thread : threads)
        thread = std::jthread([] {
            for (int i = 0; i < 1000; ++i) log(LogCategory::Mc, "line");
        });
    threads.clear();
    EXPECT_EQ(logged(), Texts(4000, "line"));
    EXPECT_EQ(desktop_.systemLog.entries().size(), 14001U);
}

TEST_F(DebugLogTests, HashesLabelsUnlessDebugging) {
    const std::pair<std::string, std::string> rows[] = {
        {"", "#9dc5"}, {"a", "#292c"}, {"foobar", "#f968"}, {"Büro", "#5905"}};
    for (const auto& [label, hash] : rows) {
        connectLog(false);
        EXPECT_EQ(redactedLabel(label), hash);
        connectLog(true);
        EXPECT_EQ(redactedLabel(label), label);
    }
    EXPECT_TRUE(asksForDebugEcho("1"));
    for (const char* text : {static_cast<const char*>(nullptr), "", "0", "01", "1 ", "true"})
        EXPECT_FALSE(asksForDebugEcho(text));
}

}  // namespace
}  // namespace orvellos
