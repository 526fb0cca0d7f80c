#include "orvellos/spaces/SpaceScript.h"

#include <fmt/format.h>

#include <charconv>

namespace orvellos {

namespace {

constexpr std::string_view kRepeat = "repeat ";

// The decimal number after the first "repeat "; 0 when there is none.
int repeatCount(std::string_view text) {
    const auto start = text.find(kRepeat);
    int count = 0;
    if (start != std::string_view::npos)
        std::from_chars(text.data() + start + kRepeat.size(), text.data() + text.size(), count);
    return count;
}

}  // namespace

std::string SpaceScript::text(Layout layout) const {
    const int step = layout == Layout::CommandLine ? 2 : 4;
    return fmt::format(
        "tell application \"System Events\"\n{0:{1}}{2}{3} times\n{0:{4}}key code {5} using {{control "
        "down}}\n"
        "{0:{4}}delay 0.2\n{0:{1}}end repeat\nend tell",
        "", step, kRepeat, count, 2 * step, keyCode());
}

std::optional<SpaceScript> ScriptParser::parse(std::string_view text) {
    using enum SpaceScript::Direction;
    using enum SpaceScript::Layout;
    const int count = repeatCount(text);
    if (count < 1 || count > kMostScriptedSteps) return std::nullopt;
    for (const auto direction : {Left, Right})
        for (const auto layout : {CommandLine, Navigation})
            if (const SpaceScript script{direction, count}; script.text(layout) == text) return script;
    return std::nullopt;
}

}  // namespace orvellos
