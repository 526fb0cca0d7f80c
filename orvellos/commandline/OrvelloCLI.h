#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "orvellos/spaces/SpaceIdentifier.h"
#include "platform/Processes.h"
#include "platform/WindowList.h"

namespace orvellos {

// One line of `dump`; the index counts from 1.
struct SpaceRow {
    std::int64_t index = 0;
    std::string uuid;
    bool current = false;
    std::optional<std::string> tag;
};

// One line of `windows`. Coordinates as in platform::WindowInfo, truncated toward zero.
struct WindowRow {
    std::int64_t cgwindowid = 0;
    std::int64_t pid = -1;
    std::optional<std::string> owner;
    std::int64_t x = 0;
    std::int64_t y = 0;
    std::int64_t w = 0;
    std::int64_t h = 0;
    std::optional<std::int64_t> spaceIndex;
    std::optional<std::string> space;
};

// The commands for scripts: what the Spaces and windows are, and switching to a Space. Reads no setting,
// keeps nothing between runs.
class OrvelloCLI {
  public:
    enum class Command { Dump, Goto, Windows };

    // The command that the arguments (without the program path) name; absent when it is the application's
    // turn.
    [[nodiscard]] static std::optional<Command> commandOf(std::span<const std::string_view> arguments);

    struct Services {
        const SpaceIdentifier& spaces;
        const platform::WindowList& windows;
        platform::ChildProcesses& childProcesses;
        std::function<std::optional<std::string>()> readTagFile;  // absent when it cannot be read
        std::function<bool(const std::string& uuid)> switchToSpace;
        std::function<void(std::string_view)> standardOutput;
        std::function<void(std::string_view)> standardError;
    };
    explicit OrvelloCLI(Services services) : services_(std::move(services)) {}

    // Runs the command and gives the exit status, 0 or 1.
    [[nodiscard]] int run(Command command, std::span<const std::string_view> arguments) const;

  private:
    void dump() const;
    [[nodiscard]] bool goTo(std::string_view target) const;
    void windows() const;

    [[nodiscard]] std::optional<std::string> resolve(std::string_view target,
                                                     const std::vector<std::string>& ordered) const;
    [[nodiscard]] bool switchByScript(const std::string& uuid) const;
    [[nodiscard]] std::optional<WindowRow> row(const platform::WindowInfo& window,
                                               const std::vector<std::string>& ordered) const;
    void complain(std::string_view message) const;

    Services services_;
};

}  // namespace orvellos
