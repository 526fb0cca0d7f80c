#include "platform/x11/input/KeyCodes.h"

#include <gtest/gtest.h>

#include <set>

namespace platform::x11 {
namespace {

TEST(KeyCodesTest, GiveEveryVirtualKeyAPlaceOfItsOwn) {
    std::set<xcb_keycode_t> places;
    std::size_t keys = 0;
    for (std::uint32_t code = 0; code <= 0xFFFF; ++code) {
        const auto place = xKeyCode(static_cast<std::uint16_t>(code));
        if (!place) continue;
        ++keys;
        EXPECT_TRUE(places.insert(*place).second) << code;
        EXPECT_EQ(virtualKeyCode(*place), code);
    }
    EXPECT_GT(keys, 100U);
    for (std::uint32_t place = 0; place < 1024; ++place) {
        const auto code = virtualKeyCode(place);
        EXPECT_EQ(code.has_value(), place < 256 && places.contains(static_cast<xcb_keycode_t>(place)));
    }
}

TEST(KeyCodesTest, PlaceTheKeysAsTheServerNumbersThem) {
    struct Row {
        const char* name;
        std::uint16_t virtualCode;
        std::uint32_t xCode;  // from the names in the keyboard rules' evdev keycodes
    };
    constexpr Row kRows[] = {
        {"AC01, A", 0, 38}, {"AC02, S", 1, 39}, {"AE05, 5", 23, 14}, {"AE06, 6", 22, 15},
        {"RTRN", 36, 36},   {"TAB", 48, 23},    {"SPCE", 49, 65},    {"BKSP", 51, 22},
        {"ESC", 53, 9},     {"FK01", 122, 67},  {"FK03", 99, 69},    {"FK10", 109, 76},
        {"FK11", 103, 95},  {"FK12", 111, 96},  {"KPEN", 76, 104},   {"KP5", 87, 84},
        {"HOME", 115, 110}, {"DELE", 117, 119}, {"LEFT", 123, 113},  {"RGHT", 124, 114},
        {"DOWN", 125, 116}, {"UP", 126, 111},   {"LSGT", 10, 94},    {"I128, overview", 160, 128},
    };
    for (const auto& [name, virtualCode, xCode] : kRows)
        EXPECT_EQ(virtualKeyCode(xCode), virtualCode) << name;
    for (const std::uint32_t modifierKey : {37U, 50U, 64U, 66U, 108U, 133U})
        EXPECT_EQ(virtualKeyCode(modifierKey), std::nullopt) << modifierKey;
}

TEST(KeyCodesTest, TranslateModifiersBothWays) {
    struct Row {
        std::uint16_t xState;
        std::uint64_t flags;
    };
    constexpr Row kRows[] = {{1, 0x20000},   {2, 0x10000}, {4, 0x40000},  {8, 0x80000},
                             {64, 0x100000}, {0, 0},       {79, 0x1F0000}};
    for (const auto& [xState, flags] : kRows) {
        EXPECT_EQ(modifierFlags(xState), flags);
        EXPECT_EQ(xModifiers(flags), xState);
    }
    EXPECT_EQ(modifierFlags(0xFFB0), 0U) << "Num Lock, other modifiers, groups and buttons";
    EXPECT_EQ(xModifiers(0xFFFFFFFFFFE0FFFF), 0U);
}

}  // namespace
}  // namespace platform::x11
