#include "platform/x11/input/X11KeyNames.h"

#include <xkbcommon/xkbcommon.h>

#include <array>

#include "platform/x11/input/KeyCodes.h"

namespace platform::x11 {

std::string X11KeyNames::textOf(std::uint16_t keyCode) const {
    const auto code = xKeyCode(keyCode);
    if (!code) return {};
    std::array<char, 8> text{};
    const int length = xkb_keysym_to_utf8(keyboard_.symbolOf(*code), text.data(), text.size());
    const bool isPrinted = length > 1 && static_cast<unsigned char>(text[0]) > ' ';
    return isPrinted ? std::string(text.data()) : std::string();
}

}  // namespace platform::x11
