#include "KeyboardShortcuts/Shortcut.h"

#include <fmt/format.h>
#include <utf8proc.h>

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

namespace {

constexpr std::array<std::pair<std::int32_t, std::string_view>, 4> kModifierGlyphs = {
    {{carbon::kControl, "⌃"}, {carbon::kOption, "⌥"}, {carbon::kShift, "⇧"}, {carbon::kCommand, "⌘"}}};

struct SpecialKey {
    std::int32_t keyCode;
    std::string_view glyph;
};

// The keys that say the same in every layout.
constexpr std::array<SpecialKey, 53> kSpecialKeys = {{
    {36, "↩"},    {48, "⇥"},    {49, "Space"}, {51, "⌫"},    {53, "⎋"},    {117, "⌦"},   {114, "?⃝"},
    {115, "↖"},   {119, "↘"},   {116, "⇞"},    {121, "⇟"},   {123, "←"},   {124, "→"},   {125, "↓"},
    {126, "↑"},   {122, "F1"},  {120, "F2"},   {99, "F3"},   {118, "F4"},  {96, "F5"},   {97, "F6"},
    {98, "F7"},   {100, "F8"},  {101, "F9"},   {109, "F10"}, {103, "F11"}, {111, "F12"}, {105, "F13"},
    {107, "F14"}, {113, "F15"}, {106, "F16"},  {64, "F17"},  {79, "F18"},  {80, "F19"},  {90, "F20"},
    {65, "⌨."},   {67, "⌨*"},   {69, "⌨+"},    {71, "⌧"},    {75, "⌨/"},   {76, "⌤"},    {78, "⌨-"},
    {81, "⌨="},   {82, "⌨0"},   {83, "⌨1"},    {84, "⌨2"},   {85, "⌨3"},   {86, "⌨4"},   {87, "⌨5"},
    {88, "⌨6"},   {89, "⌨7"},   {91, "⌨8"},    {92, "⌨9"},
}};

std::string upperCased(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        utf8proc_int32_t point = 0;
        const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                             static_cast<utf8proc_ssize_t>(text.size()), &point);
        if (length <= 0) break;
        std::array<utf8proc_uint8_t, 4> bytes{};
        const auto written = utf8proc_encode_char(utf8proc_toupper(point), bytes.data());
        result.append(bytes.begin(), bytes.begin() + written);
        text.remove_prefix(static_cast<std::size_t>(length));
    }
    return result;
}

std::string keyName(const Shortcut& shortcut, const platform::KeyNames& names) {
    const auto* special = std::ranges::find(kSpecialKeys, shortcut.carbonKeyCode, &SpecialKey::keyCode);
    if (special != kSpecialKeys.end()) return std::string(special->glyph);
    const auto event = keyEventOf(shortcut);
    const auto text = event ? upperCased(names.textOf(event->keyCode)) : std::string();
    return text.empty() ? fmt::format("#{}", shortcut.carbonKeyCode) : text;
}

}  // namespace

std::string displayForm(const Shortcut& shortcut, const platform::KeyNames& names) {
    std::string text;
    for (const auto& [modifier, glyph] : kModifierGlyphs)
        if ((shortcut.carbonModifiers & modifier) != 0) text += glyph;
    return text + keyName(shortcut, names);
}

}  // namespace keyboard_shortcuts
