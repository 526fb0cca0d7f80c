#include "orvellos/spaces/SpaceSwitcher.h"

#include <fmt/format.h>
#include <charconv>
#include <cstdlib>
#include <optional>

#include "orvellos/base/DebugLog.h"

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

SpaceScript SpaceScript::forDistance(int spaces) {
    return {spaces < 0 ? Direction::Left : Direction::Right, std::abs(spaces)};
}

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

using platform::ManagedSpaceId;

namespace {

struct Target {
    std::string displayIdentifier;
    ManagedSpaceId space;
};

std::optional<Target> findTarget(const SpaceSnapshot& snapshot, const std::string& uuid) {
    for (const auto& display : snapshot.displays) {
        if (!display.displayIdentifier) continue;
        for (const auto& space : display.spaces)
            if (space.uuid == uuid && space.managedSpaceID)
                return Target{*display.displayIdentifier, *space.managedSpaceID};
    }
    return std::nullopt;
}

}  // namespace

bool switchToSpace(const SpaceIdentifier& spaces, const std::string& uuid) {
    const auto target = findTarget(spaces.snapshot(), uuid);
    if (!target) return false;
    const auto& setCurrent = spaces.setCurrentSpaceEntry();
    if (!setCurrent) {
        logVerbose("switchToSpace: SetCurrentSpace symbol not found");
        return false;
    }
    const auto id = target->space;
    const auto connection = spaces.mainConnectionID();
    const auto previous = spaces.currentManagedSpaceID();
    logVerbose("switchToSpace: display={} target={} prev={}", target->displayIdentifier, id.value,
               previous ? std::to_string(previous->value) : "nil");
    if (const auto& show = spaces.showSpacesEntry()) {
        show(connection, {&id, 1});
        logVerbose("  called Show({})", id.value);
    } else {
        logVerbose("  Show symbol MISSING");
    }
    setCurrent(connection, target->displayIdentifier, id);
    logVerbose("  called SetCurrent({})", id.value);
    if (const auto& hide = spaces.hideSpacesEntry(); !hide) {
        logVerbose("  Hide symbol MISSING");
    } else if (previous && *previous != id) {
        hide(connection, {&*previous, 1});
        logVerbose("  called Hide({})", previous->value);
    }
    return true;
}

}  // namespace orvellos
