#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "orvellos/spaces/SpaceIdentifier.h"

namespace orvellos {

// A script for System Events that presses Control-Left or Control-Right a number of times.
struct SpaceScript {
    enum class Direction { Left, Right };
    enum class Layout { CommandLine, Navigation };  // how the lines are indented

    Direction direction = Direction::Right;
    int count = 1;

    // That many Spaces to the right or, when negative, to the left.
    [[nodiscard]] static SpaceScript forDistance(int spaces);

    // The key code of the arrow key: 123 to the left, 124 to the right.
    [[nodiscard]] int keyCode() const { return direction == Direction::Left ? 123 : 124; }
    [[nodiscard]] std::string text(Layout layout) const;
    bool operator==(const SpaceScript&) const = default;
};

// Runs a script.
inline constexpr const char* kScriptRunner = "/usr/bin/osascript";
// Every Space between the first and the last of the largest desktop.
inline constexpr int kMostScriptedSteps = 512;

// Reads a script back. Only a text that SpaceScript itself writes, in either layout and with 1 to
// kMostScriptedSteps presses, is a script; anything else is refused.
class ScriptParser {
  public:
    [[nodiscard]] static std::optional<SpaceScript> parse(std::string_view text);
};

// Switches to the Space through the window server's entry points. True when the set-current entry point was
// called; false when there is no such Space or no such entry point. Whether the Space changed shows later.
bool switchToSpace(const SpaceIdentifier& spaces, const std::string& uuid);

}  // namespace orvellos
