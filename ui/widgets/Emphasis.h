#pragma once

#include <QString>
#include <string_view>

namespace ui {

// A text as markup for a label: bold what is between two asterisks each, in the font of one width what is
// between two backticks. Everything else is shown as it is.
[[nodiscard]] QString emphasized(std::string_view text);
// The same as it is read aloud.
[[nodiscard]] QString withoutEmphasis(std::string_view text);

}  // namespace ui
