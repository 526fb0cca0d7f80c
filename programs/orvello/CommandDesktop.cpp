#include "programs/orvello/CommandDesktop.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <utility>

#include "platform/freedesktop/desktops/KwinDesktopRow.h"
#include "programs/Alarm.h"

using namespace platform;
using namespace platform::x11;

namespace {

constexpr std::chrono::milliseconds kPatience(2000);
constexpr Duration kBusPatience = std::chrono::seconds(1);

char** argumentsOfStart = nullptr;

// Replaces the process by itself without a display: what it could not find out from a server that does not
// answer, it then does not ask. Runs in a signal handler: nothing here allocates.
void startOver(int /*signal*/) {
    char** kept = environ;
    for (char** variable = environ; *variable; ++variable)
        if (std::strncmp(*variable, "DISPLAY=", 8) != 0) *kept++ = *variable;
    *kept = nullptr;
    execve("/proc/self/exe", argumentsOfStart, environ);
    _exit(1);
}

}  // namespace

struct CommandDesktop::Connected final : DesktopSource {
    Connected(std::unique_ptr<XConnection> opened, Instant end)
        : connection(std::move(opened)), deadline(end) {}

    std::unique_ptr<XConnection> connection;
    Instant deadline;
    Atoms atoms = internWithWindowList(*connection);
    EwmhSpaceLayout layout{*connection, atoms, [this] { return askKwin(); }};
    X11WindowList windows{*connection, atoms};
    EwmhSpaceSwitching switching{*connection, atoms, *this};

    static Atoms internWithWindowList(XConnection& connection) {
        X11WindowList::prefetch(connection);
        return Atoms::internForCommand(connection);
    }
    // Each of these asks the server.
    [[nodiscard]] DesktopFacts facts() const override {
        const auto desktops = readRoot(*connection, atoms).desktops;
        return {.count = desktops.count, .current = desktops.current};
    }
    [[nodiscard]] bool canSwitch() const override { return readRoot(*connection, atoms).desktops.canSwitch; }
    [[nodiscard]] xcb_timestamp_t lastTime() const override {
        return awaitServerTime(*connection, requestServerTime(*connection), deadline);
    }

    std::optional<DesktopRow> askKwin() {
        const auto left = deadline - monotonicNow();
        if (left <= Duration::zero()) return std::nullopt;
        return freedesktop::readKwinDesktops(std::min(left, kBusPatience));
    }
};

CommandDesktop::CommandDesktop(char** argv) {
    argumentsOfStart = argv;
}
CommandDesktop::~CommandDesktop() = default;

CommandDesktop::Connected* CommandDesktop::connected() const {
    if (std::exchange(hasConnected_, true)) return connected_.get();
    const auto deadline = monotonicNow() + kPatience;
    std::unique_ptr<XConnection> connection;
    {
        const programs::Alarm unlessAnswered(kPatience, startOver);
        connection = XConnection::open(nullptr, kPatience);
    }
    if (!connection) return nullptr;
    connection->setDeadline(deadline);
    auto made = std::make_unique<Connected>(std::move(connection), deadline);
    if (!made->connection->isLate()) connected_ = std::move(made);  // else not even the atoms have come
    return connected_.get();
}

std::optional<ManagedDisplaySpaces> CommandDesktop::copyManagedDisplaySpaces() const {
    if (!layout_) {
        const auto* desktop = connected();
        layout_.emplace(desktop ? desktop->layout.copyManagedDisplaySpaces() : std::nullopt);
    }
    return *layout_;
}

std::optional<std::uint32_t> CommandDesktop::currentDesktop() const {
    const auto spaces = copyManagedDisplaySpaces();
    if (!spaces || spaces->empty() || !spaces->front().currentSpace) return std::nullopt;
    return static_cast<std::uint32_t>(spaces->front().currentSpace->managedSpaceId->value - 1);
}

std::vector<ManagedSpaceId> CommandDesktop::copySpacesForWindow(WindowNumber window) const {
    const auto* desktop = connected();
    return desktop ? desktop->windows.copySpacesForWindow(window) : std::vector<ManagedSpaceId>();
}

ConnectionId CommandDesktop::mainConnectionId() const {
    const auto* desktop = connected();
    return desktop ? desktop->switching.mainConnectionId() : 0;
}

SetCurrentSpaceEntry CommandDesktop::resolveSetCurrentSpace(std::string_view name) const {
    auto* desktop = connected();
    const auto entry = desktop ? desktop->switching.resolveSetCurrentSpace(name) : SetCurrentSpaceEntry();
    if (!entry) return {};
    return [desktop, entry](ConnectionId id, const std::string& display, ManagedSpaceId space) {
        entry(id, display, space);
        desktop->connection->synchronize();  // the program may end right after
    };
}

SpaceListEntry CommandDesktop::resolveSpaceList(std::string_view name) const {
    const auto* desktop = connected();
    return desktop ? desktop->switching.resolveSpaceList(name) : SpaceListEntry();
}

std::optional<std::vector<WindowInfo>> CommandDesktop::copyWindowsExcludingDesktopElements() const {
    const auto* desktop = connected();
    return desktop ? desktop->windows.copyWindowsExcludingDesktopElements() : std::nullopt;
}

std::vector<Screen> CommandScreen::screens() const {
    constexpr Rect kAround{-1, -1, 2, 2};
    return {Screen{mainDisplayId(), kAround, kAround, 1}};
}
