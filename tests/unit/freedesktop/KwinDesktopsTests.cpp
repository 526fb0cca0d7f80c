#include "platform/freedesktop/desktops/KwinDesktopRow.h"

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

// KWin's answer: its properties, of which one is an array of (position, id, name), where the position is of
// that type.
StandInService::Answer desktops(const std::string& type, const Positions& ids, const char* current = "a") {
    return [array = "a(" + type + "ss)", ids, current](auto*, auto* reply) {
        const char* element = array.c_str() + 1;
        sd_bus_message_open_container(reply, 'a', "{sv}");
        sd_bus_message_append(reply, "{sv}", "current", "s", current);
        sd_bus_message_open_container(reply, 'e', "sv");
        sd_bus_message_append(reply, "s", "desktops");
        sd_bus_message_open_container(reply, 'v', array.c_str());
        sd_bus_message_open_container(reply, 'a', element);
        for (const auto& [position, id] : ids) sd_bus_message_append(reply, element, position, id, "a name");
        for (int opened = 0; opened < 4; ++opened) sd_bus_message_close_container(reply);
        return 1;
    };
}

TEST(KwinDesktopsTests, ReadsTheDesktopIdsInTheirOrder) {
    struct Row {
        const char* name;
        StandInService::Answer answer;
        std::optional<DesktopRow> expected;
    };
    const auto row = [](std::vector<std::string> ids, std::optional<std::uint32_t> current) {
        return DesktopRow{std::move(ids), current};
    };
    const auto properties = [](auto... values) { return answerWith("a{sv}", 1, "desktops", values...); };
    const Row rows[] = {
        {"unsigned positions", desktops("u", {{0, "a"}, {1, "b"}}), row({"a", "b"}, 0)},
        {"signed positions", desktops("i", {{0, "a"}, {1, "b"}}, "b"), row({"a", "b"}, 1)},
        {"out of order", desktops("u", {{2, "c"}, {0, "a"}, {1, "b"}}, "c"), row({"a", "b", "c"}, 2)},
        {"a current one that is none of them", desktops("u", {{0, "a"}}, "x"), row({"a"}, {})},
        {"no desktop", desktops("u", {}), std::nullopt},
        {"too many desktops", desktops("u", Positions(1001, {0, "a"})), std::nullopt},
        {"an empty id", desktops("u", {{0, "a"}, {1, ""}}), std::nullopt},
        {"textual positions", properties("a(sss)", 1, "0", "a", "n"), std::nullopt},
        {"numeric ids", properties("a(uus)", 1, 0, 1, "n"), std::nullopt},
        {"a text", properties("s", "a"), std::nullopt},
        {"no properties", answerWith("as", 1, "desktops"), std::nullopt},
        {"nothing", [](auto*, auto*) { return 0; }, std::nullopt},
        {"an error", [](auto*, auto*) { return -1; }, std::nullopt},
    };
    const PrivateBus bus;
    for (const auto& each : rows) {
        SCOPED_TRACE(each.name);
        const StandInService kwin(bus.address(), kKwin, each.answer);
        EXPECT_EQ(readKwinDesktops(kPatience, bus.address()), each.expected);
        EXPECT_EQ(kwin.calls(),
                  std::vector<std::string>{"/VirtualDesktopManager org.freedesktop.DBus.Properties.GetAll"});
    }
    const StandInService kwin(bus.address(), kKwin, rows[0].answer);
    auto escaped = bus.address();
    escaped.replace(escaped.rfind("/bus"), 4, "%2fbus,guid=0");
    EXPECT_EQ(readKwinDesktops(kPatience, "unix:abstract=nobody;" + escaped), rows[0].expected);
}

TEST(KwinDesktopsTests, FindsNothingWithoutKwinOrABus) {
    PrivateBus bus;
    EXPECT_EQ(readKwinDesktops(kPatience, bus.address()), std::nullopt);
    EXPECT_EQ(readKwinDesktops(kPatience, ""), std::nullopt);
    EXPECT_EQ(readKwinDesktops(kPatience, "unix:path=relative"), std::nullopt);
    bus.end();
    EXPECT_EQ(readKwinDesktops(kPatience, bus.address()), std::nullopt);
}

TEST(KwinDesktopsTests, GivesUpInTimeWhenNobodyAnswers) {
    const PrivateBus bus;
    const StandInService silent(bus.address(), kKwin, nullptr);
    for (const bool stopped : {false, true}) {
        if (stopped) bus.stop();
        const auto start = Clock::now();
        EXPECT_EQ(readKwinDesktops(kImpatience, bus.address()), std::nullopt);
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
