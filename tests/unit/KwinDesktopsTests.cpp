#include "platform/freedesktop/KwinDesktops.h"

#include <gtest/gtest.h>

#include "tests/support/PrivateBus.h"

namespace platform::freedesktop {
namespace {

using desktop_test::PrivateBus;
using desktop_test::StandInService;
using Clock = std::chrono::steady_clock;

constexpr const char* kKwin = "org.kde.KWin";
constexpr Duration kPatience = std::chrono::seconds(20);
constexpr Duration kImpatience = std::chrono::milliseconds(150);

struct AnswerRow {
    const char* name;
    StandInService::Answer answer;
    std::optional<KwinDesktopIds> expected;
};

int appendDesktops(sd_bus_message* reply, const char* type,
                   const std::vector<std::pair<int, const char*>>& ids) {
    const std::string array = "a(" + std::string(type) + "ss)";
    sd_bus_message_open_container(reply, 'v', array.c_str());
    sd_bus_message_open_container(reply, 'a', array.c_str() + 1);
    for (const auto& [position, id] : ids)
        sd_bus_message_append(reply, array.c_str() + 1, position, id, "a name");
    sd_bus_message_close_container(reply);
    return sd_bus_message_close_container(reply);
}

StandInService::Answer desktops(const char* type, std::vector<std::pair<int, const char*>> ids) {
    return [type, ids = std::move(ids)](sd_bus_message*, sd_bus_message* reply) {
        return appendDesktops(reply, type, ids);
    };
}

TEST(KwinDesktopsTests, ReadsTheDesktopIdsInTheirOrder) {
    const AnswerRow rows[] = {
        {"unsigned positions", desktops("u", {{0, "a"}, {1, "b"}, {2, "c"}}), {{"a", "b", "c"}}},
        {"signed positions", desktops("i", {{0, "a"}, {1, "b"}}), {{"a", "b"}}},
        {"out of order", desktops("u", {{2, "c"}, {0, "a"}, {1, "b"}}), {{"a", "b", "c"}}},
        {"no desktop", desktops("u", {}), std::nullopt},
        {"an empty id", desktops("u", {{0, "a"}, {1, ""}}), std::nullopt},
        {"textual positions",
         [](auto*, auto* reply) { return sd_bus_message_append(reply, "v", "a(sss)", 1, "0", "a", "n"); },
         std::nullopt},
        {"numeric ids",
         [](auto*, auto* reply) { return sd_bus_message_append(reply, "v", "a(uus)", 1, 0, 1, "n"); },
         std::nullopt},
        {"a text", [](auto*, auto* reply) { return sd_bus_message_append(reply, "v", "s", "a"); },
         std::nullopt},
        {"nothing", [](auto*, auto*) { return 0; }, std::nullopt},
        {"an error", [](auto*, auto*) { return -1; }, std::nullopt},
    };
    const PrivateBus bus;
    SystemdLibrary library;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const StandInService kwin(bus.address(), kKwin, row.answer);
        EXPECT_EQ(readKwinDesktopIds(library, kPatience, bus.address()), row.expected);
        EXPECT_EQ(kwin.calls(),
                  std::vector<std::string>{"/VirtualDesktopManager org.freedesktop.DBus.Properties.Get"});
    }
}

TEST(KwinDesktopsTests, RefusesAnUnreasonableNumberOfDesktops) {
    const PrivateBus bus;
    SystemdLibrary library;
    const std::vector<std::pair<int, const char*>> tooMany(1001, {0, "a"});
    const StandInService kwin(bus.address(), kKwin, desktops("u", tooMany));
    EXPECT_EQ(readKwinDesktopIds(library, kPatience, bus.address()), std::nullopt);
}

TEST(KwinDesktopsTests, FindsNothingWithoutKwinABusOrTheLibrary) {
    PrivateBus bus;
    SystemdLibrary library;
    SystemdLibrary missing("libsystemd-that-is-not-there.so.0");
    EXPECT_EQ(readKwinDesktopIds(library, kPatience, bus.address()), std::nullopt);
    EXPECT_EQ(readKwinDesktopIds(missing, kPatience, bus.address()), std::nullopt);
    EXPECT_EQ(readKwinDesktopIds(library, kPatience, ""), std::nullopt);
    EXPECT_EQ(readKwinDesktopIds(library, kPatience, "unix:path=relative"), std::nullopt);
    bus.end();
    EXPECT_EQ(readKwinDesktopIds(library, kPatience, bus.address()), std::nullopt);
}

TEST(KwinDesktopsTests, GivesUpInTimeWhenNobodyAnswers) {
    const PrivateBus bus;
    SystemdLibrary library;
    const StandInService silent(bus.address(), kKwin, nullptr);
    for (const bool stopped : {false, true}) {
        if (stopped) bus.stop();
        const auto start = Clock::now();
        EXPECT_EQ(readKwinDesktopIds(library, kImpatience, bus.address()), std::nullopt);
        EXPECT_GE(Clock::now() - start, kImpatience);
        EXPECT_LT(Clock::now() - start, kPatience);
    }
    bus.resume();
}

TEST(KwinDesktopsTests, TakesUnixSocketsAloneForTheSessionBus) {
    struct Row {
        const char* busAddress;
        const char* runtimeFolder;
        const char* expected;
    };
    const Row rows[] = {{"unix:path=/a", "/run/user/1", "unix:path=/a"},
                        {"tcp:host=h;unix:abstract=b,guid=1;unixexec:path=/x;unix:path=/c;", nullptr,
                         "unix:abstract=b,guid=1;unix:path=/c"},
                        {"autolaunch:", "/run/user/1", ""},
                        {"", "/run/user/1", "unix:path=/run/user/1/bus"},
                        {nullptr, "/run/a b;c", "unix:path=/run/a%20b%3Bc/bus"},
                        {nullptr, "", ""},
                        {nullptr, nullptr, ""}};
    for (const auto& row : rows)
        EXPECT_EQ(sessionBusAddress(row.busAddress, row.runtimeFolder), row.expected);
}

}  // namespace
}  // namespace platform::freedesktop
