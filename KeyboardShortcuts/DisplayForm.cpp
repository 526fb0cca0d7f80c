#include "KeyboardShortcuts/DisplayForm.h"

#include <fmt/format.h>
#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace keyboard_shortcuts {

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
