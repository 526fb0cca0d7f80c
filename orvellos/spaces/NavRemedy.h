#pragma once

#include <string_view>

namespace orvellos {

// What a user can do about Spaces that cannot be switched.
enum class NavRemedy { Accessibility, KeyboardShortcuts };

[[nodiscard]] constexpr std::string_view buttonTitle(NavRemedy remedy) {
    return remedy == NavRemedy::Accessibility ? "Open Accessibility Settings" : "Open Keyboard Shortcuts";
}

// The page of the system's settings where they do it.
[[nodiscard]] constexpr std::string_view settingsUrl(NavRemedy remedy) {
    return remedy == NavRemedy::Accessibility
               ? "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"
               : "x-apple.systempreferences:com.apple.Keyboard-Settings.extension";
}

}  // namespace orvellos
