#include "platform/x11/input/KeyShortcut.h"

#include <gtest/gtest.h>

namespace platform::x11 {
namespace {

TEST(KeyShortcutTest, ReadsQtsKeyCodes) {
    using namespace modifier;
    struct Row {
        const char* name;
        std::uint32_t qtKey;
        xcb_keysym_t symbol;  // as in the X protocol's list of symbols; 0 for no shortcut
        std::uint64_t modifierFlags;
    };
    constexpr Row kRows[] = {
        {"Meta+W", 0x10000057, 'w', kCommand},
        {"Meta+F8", 0x11000037, 0xFFC5, kCommand},
        {"Ctrl+F10", 0x05000039, 0xFFC7, kControl},
        {"Shift+Alt+Up", 0x0B000013, 0xFF52, kShift | kOption},
        {"Page Down", 0x01000017, 0xFF56, 0},
        {"F35", 0x01000052, 0xFFE0, 0},
        {"Launch (C)", 0x010000AE, 0x1008FF4C, 0},
        {"Meta+Tab", 0x11000001, 0xFF09, kCommand},
        {"Meta+1", 0x10000031, '1', kCommand},
        {"Alt+Ä", 0x080000C4, 0xE4, kOption},
        {"×", 0xD7, 0xD7, 0},
        {"Meta+Ж", 0x10000416, 0x06D6, kCommand},
        {"Meta+Ω", 0x100003A9, 0x07F9, kCommand},
        {"Meta+Ә", 0x100004D8, 0x010004D9, kCommand},
        {"a key on the number pad", 0x30000035, '5', kCommand},
        {"no key", 0, 0, 0},
        {"a modifier alone", 0x10000000, 0, 0},
        {"a key that X has no symbol for", 0x01FFFFFF, 0, 0},
    };
    for (const auto& [name, qtKey, symbol, modifierFlags] : kRows) {
        const auto expected = symbol == 0 ? std::nullopt : std::optional(KeyShortcut{symbol, modifierFlags});
        EXPECT_EQ(shortcutOfQtKey(qtKey), expected) << name;
        constexpr std::uint32_t kNumberPad = 0x20000000;
        if (expected) {
            EXPECT_EQ(qtKeyOf(*expected), qtKey & ~kNumberPad) << name;
        }
    }
}

}  // namespace
}  // namespace platform::x11
