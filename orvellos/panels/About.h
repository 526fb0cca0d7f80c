#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "KeyboardShortcuts/Registry.h"

namespace orvellos {

// The texts of the about window.
struct About {
    static constexpr std::string_view kName = "orvellos";
    static constexpr std::string_view kTagline = "Persistent floating labels for your Spaces.";
    static constexpr std::string_view kFootnote = "All shortcuts are rebindable in Settings.";

    struct ShortcutRow {
        std::string title;
        std::string keys;  // empty while none are recorded
        bool operator==(const ShortcutRow&) const = default;
    };

    std::string buildText;  // two lines
    std::vector<ShortcutRow> shortcuts;
};

// With the shortcuts recorded now. `buildDate` is absent when it cannot be found.
[[nodiscard]] About makeAbout(const keyboard_shortcuts::Registry& hotkeys,
                              const std::optional<std::string>& buildDate);

}  // namespace orvellos
