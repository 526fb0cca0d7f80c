#include "orvellos/panels/About.h"

#include <fmt/format.h>

#include "orvellos/base/ApplicationVersion.h"
#include "orvellos/settings/HotkeyNames.h"

namespace orvellos {

About makeAbout(const keyboard_shortcuts::Registry& hotkeys, const std::optional<std::string>& buildDate) {
    const auto keys = [&](const auto& name) { return hotkeys.displayText(name).value_or(""); };
    return {fmt::format("{}\nbuilt {}", applicationVersionText(), buildDate.value_or("unknown")),
            {{"Tag this Space", keys(hotkey::tagThisSpace)},
             {"Peek at hidden tags", keys(hotkey::peekTags)},
             {"Hide for screen-sharing", keys(hotkey::toggleKillSwitch)},
             {"Settings", "⌘,"}}};
}

}  // namespace orvellos
