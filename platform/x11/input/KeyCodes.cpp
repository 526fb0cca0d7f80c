#include "platform/x11/input/KeyCodes.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <utility>

namespace platform::x11 {

namespace {

constexpr std::uint32_t kEvdevToX = 8;

struct KeyPlace {
    std::uint16_t virtualCode;
    std::uint16_t evdevCode;
};

constexpr KeyPlace kKeyPlaces[] = {
    // the writing block, by the keys of the US layout
    {0, KEY_A},
    {1, KEY_S},
    {2, KEY_D},
    {3, KEY_F},
    {4, KEY_H},
    {5, KEY_G},
    {6, KEY_Z},
    {7, KEY_X},
    {8, KEY_C},
    {9, KEY_V},
    {10, KEY_102ND},
    {11, KEY_B},
    {12, KEY_Q},
    {13, KEY_W},
    {14, KEY_E},
    {15, KEY_R},
    {16, KEY_Y},
    {17, KEY_T},
    {18, KEY_1},
    {19, KEY_2},
    {20, KEY_3},
    {21, KEY_4},
    {22, KEY_6},
    {23, KEY_5},
    {24, KEY_EQUAL},
    {25, KEY_9},
    {26, KEY_7},
    {27, KEY_MINUS},
    {28, KEY_8},
    {29, KEY_0},
    {30, KEY_RIGHTBRACE},
    {31, KEY_O},
    {32, KEY_U},
    {33, KEY_LEFTBRACE},
    {34, KEY_I},
    {35, KEY_P},
    {36, KEY_ENTER},
    {37, KEY_L},
    {38, KEY_J},
    {39, KEY_APOSTROPHE},
    {40, KEY_K},
    {41, KEY_SEMICOLON},
    {42, KEY_BACKSLASH},
    {43, KEY_COMMA},
    {44, KEY_SLASH},
    {45, KEY_N},
    {46, KEY_M},
    {47, KEY_DOT},
    {48, KEY_TAB},
    {49, KEY_SPACE},
    {50, KEY_GRAVE},
    {51, KEY_BACKSPACE},
    {53, KEY_ESC},
    // the number pad; its Clear key is where others have Num Lock
    {65, KEY_KPDOT},
    {67, KEY_KPASTERISK},
    {69, KEY_KPPLUS},
    {71, KEY_NUMLOCK},
    {75, KEY_KPSLASH},
    {76, KEY_KPENTER},
    {78, KEY_KPMINUS},
    {81, KEY_KPEQUAL},
    {82, KEY_KP0},
    {83, KEY_KP1},
    {84, KEY_KP2},
    {85, KEY_KP3},
    {86, KEY_KP4},
    {87, KEY_KP5},
    {88, KEY_KP6},
    {89, KEY_KP7},
    {91, KEY_KP8},
    {92, KEY_KP9},
    // Japanese keyboards
    {93, KEY_YEN},
    {94, KEY_RO},
    {95, KEY_KPJPCOMMA},
    {102, KEY_HANJA},
    {104, KEY_HANGEUL},
    // function keys
    {122, KEY_F1},
    {120, KEY_F2},
    {key::kF3, KEY_F3},
    {118, KEY_F4},
    {96, KEY_F5},
    {97, KEY_F6},
    {98, KEY_F7},
    {100, KEY_F8},
    {101, KEY_F9},
    {109, KEY_F10},
    {103, KEY_F11},
    {111, KEY_F12},
    {105, KEY_F13},
    {107, KEY_F14},
    {113, KEY_F15},
    {106, KEY_F16},
    {64, KEY_F17},
    {79, KEY_F18},
    {80, KEY_F19},
    {90, KEY_F20},
    {72, KEY_VOLUMEUP},
    {73, KEY_VOLUMEDOWN},
    {74, KEY_MUTE},
    {key::kMissionControl, KEY_SCALE},
    // between the blocks; Help is where others have Insert
    {110, KEY_COMPOSE},
    {114, KEY_INSERT},
    {115, KEY_HOME},
    {116, KEY_PAGEUP},
    {117, KEY_DELETE},
    {119, KEY_END},
    {121, KEY_PAGEDOWN},
    {key::kLeftArrow, KEY_LEFT},
    {key::kRightArrow, KEY_RIGHT},
    {key::kDownArrow, KEY_DOWN},
    {key::kUpArrow, KEY_UP},
};

constexpr std::pair<std::uint16_t, std::uint64_t> kModifiers[] = {
    {XCB_MOD_MASK_SHIFT, modifier::kShift},     {XCB_MOD_MASK_LOCK, modifier::kCapsLock},
    {XCB_MOD_MASK_CONTROL, modifier::kControl}, {XCB_MOD_MASK_1, modifier::kOption},
    {XCB_MOD_MASK_4, modifier::kCommand},
};

}  // namespace

std::optional<std::uint16_t> virtualKeyCode(std::uint32_t xKeyCode) {
    const auto* found = std::ranges::find_if(
        kKeyPlaces, [&](const KeyPlace& place) { return place.evdevCode + kEvdevToX == xKeyCode; });
    return found == std::end(kKeyPlaces) ? std::nullopt : std::optional(found->virtualCode);
}

std::optional<xcb_keycode_t> xKeyCode(std::uint16_t virtualKeyCode) {
    const auto* found = std::ranges::find(kKeyPlaces, virtualKeyCode, &KeyPlace::virtualCode);
    if (found == std::end(kKeyPlaces)) return std::nullopt;
    return static_cast<xcb_keycode_t>(found->evdevCode + kEvdevToX);
}

std::uint64_t modifierFlags(std::uint32_t xState) {
    std::uint64_t flags = 0;
    for (const auto& [x, flag] : kModifiers)
        if ((xState & x) != 0) flags |= flag;
    return flags;
}

std::uint16_t xModifiers(std::uint64_t modifierFlags) {
    std::uint16_t state = 0;
    for (const auto& [x, flag] : kModifiers)
        if ((modifierFlags & flag) != 0) state |= x;
    return state;
}

}  // namespace platform::x11
