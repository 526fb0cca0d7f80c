#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string_view>

#include "orvellos/spaces/SpaceSwitcher.h"
#include "platform/x11/connection/XEvents.h"
#include "platform/x11/spaces/EwmhDesktops.h"
#include "programs/Alarm.h"

// Stands in for the script runner: does what a script of the application asks of the Space keys, in one step,
// and ends with status 0 when the Space has changed. Knows no other script.

namespace {

using orvellos::SpaceScript;
using namespace platform::x11;

constexpr std::chrono::milliseconds kPatience(1500);

std::optional<std::uint32_t> currentDesktop(const EwmhDesktops& desktops) {
    const char* told = std::getenv(kCurrentDesktopVariable);
    std::uint32_t number = 0;
    if (!told || std::from_chars(told, told + std::strlen(told), number).ec != std::errc() ||
        number >= desktops.count)
        return desktops.current;
    return number;
}

// Pressing the keys at the first or last Space stays there.
std::uint32_t targetOf(const SpaceScript& script, std::uint32_t current, std::uint32_t count) {
    const auto steps = static_cast<std::uint32_t>(script.count);
    if (script.direction == SpaceScript::Direction::Left) return current - std::min(current, steps);
    return std::min(current + steps, count - 1);
}

bool waitForDesktop(XConnection& connection, const Atoms& atoms, std::uint32_t target,
                    platform::Instant end) {
    while (const auto event = connection.nextEvent(end)) {
        const auto* change = reinterpret_cast<const xcb_property_notify_event_t*>(event.get());
        if (XEvents::type(*event) != XCB_PROPERTY_NOTIFY || change->atom != atoms[Atom::NetCurrentDesktop])
            continue;
        const auto cookie = requestProperty(connection, connection.root(), atoms[Atom::NetCurrentDesktop],
                                            XCB_ATOM_CARDINAL, 1);
        const auto current = connection.reply<xcb_get_property_reply_t>(cookie);
        if (value32(current.get(), XCB_ATOM_CARDINAL) == target) return true;
    }
    return false;
}

bool perform(const SpaceScript& script) {
    const auto end = monotonicNow() + kPatience;
    const auto connection = XConnection::open(nullptr, kPatience);
    if (!connection) return false;
    // Every wait may cost a turn of a busy machine's scheduler, so what can be asked together is.
    const auto timeWindow = requestServerTime(*connection);
    const auto atoms = Atoms::internForCommand(*connection);
    const auto time = awaitServerTime(*connection, timeWindow, end);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection->get(), connection->root(), XCB_CW_EVENT_MASK, &events);
    const auto root = readRootProperties(*connection, atoms);
    const auto& desktops = root.desktops;
    if (root.state != EwmhRoot::State::Plausible || !desktops.canSwitch) return false;
    const auto current = currentDesktop(desktops);
    if (!current) return false;
    const auto target = targetOf(script, *current, desktops.count);
    if (target == *current) return true;
    sendCurrentDesktop(*connection, atoms, target, time);
    return waitForDesktop(*connection, atoms, target, end);
}

}  // namespace

int main(int argc, char** argv) {
    std::optional<SpaceScript> script;
    if (argc == 3 && std::string_view(argv[1]) == "-e") script = orvellos::ScriptParser::parse(argv[2]);
    if (!script) {
        std::fputs("osascript: only the scripts that orvello writes can be run\n", stderr);
        return 1;
    }
    // Nothing that this program waits for can keep it.
    const programs::Alarm patience(kPatience, [](int) { _exit(1); });
    return perform(*script) ? 0 : 1;
}
