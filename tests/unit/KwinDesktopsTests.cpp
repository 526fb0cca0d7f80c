#include "platform/freedesktop/KwinDesktops.h"

#include <gtest/gtest.h>

#include "tests/support/PrivateBus.h"

namespace platform::freedesktop {
namespace {

using desktop_test::answerWith;
using desktop_test::PrivateBus;
using desktop_test::StandInService;
using Clock = std::chrono::steady_clock;

constexpr const char* kKwin = "org.kde.KWin";
constexpr Duration kPatience = std::chrono::seconds(20);
constexpr Duration kImpatience = std::chrono::milliseconds(150);

using Positions = std::vector<std::pair<int, const char*>>;

// KWin's answer: a variant with an array of (position, id, name), where the position is of that type.
StandInService::Answer desktops(const std::string& type, const Positions& ids) {
    return [array = "a(" + type + "ss)", ids](auto*, auto* reply) {
        const char* element = array.c_str() + 1;
        sd_bus_message_open_container(reply, 'v', array.c_str());
        sd_bus_message_open_container(reply, 'a', element);
        for (const auto& [position, id] : ids) sd_bus_message_append(reply, element, position, id, "a name");
        sd_bus_message_close_container(reply);
        return sd_bus_message_close_container(reply);
    };
}

TEST(KwinDesktopsTests, ReadsTheDesktopIdsInTheirOrder) {
    struct Row {
        const char* name;
        StandInService::Answer answer;
        std::optional<KwinDesktopIds> expected;
    };
    const Row rows[] = {
        {"unsigned positions", desktops("u", {{0, "a"}, {1, "b"}}), {{"a", "b"}}},
        {"signed positions", desktops("i", {{0, "a"}, {1, "b"}}), {{"a", "b"}}},
        {"out of order", desktops("u", {{2, "c"}, {0, "a"}, {1, "b"}}), {{"a", "b", "c"}}},
        {"no desktop", desktops("u", {}), std::nullopt},
        {"too many desktops", desktops("u", Positions(1001, {0, "a"})), std::nullopt},
        {"an empty id", desktops("u", {{0, "a"}, {1, ""}}), std::nullopt},
        {"textual positions", answerWith("v", "a(sss)", 1, "0", "a", "n"), std::nullopt},
        {"numeric ids", answerWith("v", "a(uus)", 1, 0, 1, "n"), std::nullopt},
        {"a text", answerWith("v", "s", "a"), std::nullopt},
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
    EXPECT_EQ(systemBusAddress("tcp:host=h;unix:path=/a"), "unix:path=/a");
    for (const char* unset : {"", static_cast<const char*>(nullptr)})
        EXPECT_EQ(systemBusAddress(unset), "unix:path=/run/dbus/system_bus_socket");
}

}  // namespace
}  // namespace platform::freedesktop
