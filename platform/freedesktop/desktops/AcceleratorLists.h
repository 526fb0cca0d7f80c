#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/freedesktop/bus/BusMessage.h"

namespace platform::freedesktop {

// One of a desktop's own shortcuts, in GTK's spelling.
struct Accelerator {
    std::string keys;
    std::string name;    // the desktop's own: of a setting, or a command
    std::string action;  // what it does, as a user would write it
    bool operator==(const Accelerator&) const = default;
};

// The shortcuts in force among the properties of Xfce's channel "xfce4-keyboard-shortcuts", as pairs of path
// and value. The user's own list takes the place of the default one where it says so.
[[nodiscard]] std::vector<Accelerator> acceleratorsOfXfce(const BusArguments& properties);

// The shortcuts in what `gsettings list-recursively` prints of a schema of keys: "schema name ['<Alt>Tab']".
[[nodiscard]] std::vector<Accelerator> acceleratorsOfGsettings(std::string_view output);

}  // namespace platform::freedesktop
