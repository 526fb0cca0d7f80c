#include "KeyboardShortcuts/Shortcut.h"

#include <algorithm>
#include <array>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>

namespace keyboard_shortcuts {

namespace {

constexpr std::array<std::pair<std::int32_t, std::uint64_t>, 4> kModifiers = {{
    {carbon::kCommand, platform::modifier::kCommand},
    {carbon::kShift, platform::modifier::kShift},
    {carbon::kOption, platform::modifier::kOption},
    {carbon::kControl, platform::modifier::kControl},
}};

// The virtual key codes of F1 to F20.
constexpr std::array<std::int32_t, 20> kFunctionKeys = {122, 120, 99,  118, 96,  97,  98, 100, 101, 109,
                                                        103, 111, 105, 107, 113, 106, 64, 79,  80,  90};

std::optional<std::int32_t> integer(const nlohmann::json& object, const char* key) {
    const auto found = object.find(key);
    if (found == object.end() || !found->is_number_integer()) return std::nullopt;
    if (found->is_number_unsigned() && found->get<std::uint64_t>() > std::numeric_limits<std::int32_t>::max())
        return std::nullopt;
    const auto value = found->get<std::int64_t>();
    if (!std::in_range<std::int32_t>(value)) return std::nullopt;
    return static_cast<std::int32_t>(value);
}

}  // namespace

Shortcut shortcutOf(const platform::KeyEvent& event) {
    Shortcut shortcut{event.keyCode, 0};
    for (const auto& [carbon, flag] : kModifiers)
        if ((event.modifierFlags & flag) != 0) shortcut.carbonModifiers |= carbon;
    return shortcut;
}

std::optional<platform::KeyEvent> keyEventOf(const Shortcut& shortcut) {
    if (!std::in_range<std::uint16_t>(shortcut.carbonKeyCode)) return std::nullopt;
    platform::KeyEvent event{static_cast<std::uint16_t>(shortcut.carbonKeyCode), 0};
    for (const auto& [carbon, flag] : kModifiers)
        if ((shortcut.carbonModifiers & carbon) != 0) event.modifierFlags |= flag;
    return event;
}

bool isAllowed(const Shortcut& shortcut) {
    const auto event = keyEventOf(shortcut);
    if (!event) return false;
    const bool types = (event->modifierFlags & ~platform::modifier::kShift) == 0;
    return !types || std::ranges::find(kFunctionKeys, shortcut.carbonKeyCode) != kFunctionKeys.end();
}

std::string encode(const Shortcut& shortcut) {
    return nlohmann::json{{"carbonKeyCode", shortcut.carbonKeyCode},
                          {"carbonModifiers", shortcut.carbonModifiers}}
        .dump();
}

std::optional<Shortcut> decode(std::string_view json) {
    const auto object = nlohmann::json::parse(json, nullptr, false);
    if (!object.is_object()) return std::nullopt;
    const auto keyCode = integer(object, "carbonKeyCode");
    const auto modifiers = integer(object, "carbonModifiers");
    if (!keyCode || !modifiers) return std::nullopt;
    return Shortcut{*keyCode, *modifiers};
}

}  // namespace keyboard_shortcuts
