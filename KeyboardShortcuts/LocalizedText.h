#pragma once

#include <string_view>

namespace keyboard_shortcuts {

// The recorder's text of that key; empty for an unknown one. A pair of braces in a text is the shortcut or,
// as the second one, what uses it.
[[nodiscard]] std::string_view localizedText(std::string_view key);

}  // namespace keyboard_shortcuts
