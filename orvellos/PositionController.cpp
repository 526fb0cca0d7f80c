#include "orvellos/PositionController.h"

#include <fmt/format.h>

#include <algorithm>

#include "orvellos/DebugLog.h"
#include "orvellos/Describe.h"
#include "orvellos/HomeTarget.h"
#include "orvellos/TagLayout.h"

namespace orvellos {

using platform::Rect;
using platform::Screen;

namespace {

std::string describeAnchor(const AnchoredPosition& position) {
    return fmt::format("({} {:.1f}, {} {:.1f})", rawValue(position.hEdge), position.hOffset,
                       rawValue(position.vEdge), position.vOffset);
}

}  // namespace

std::optional<Screen> PositionController::preferredScreen(const Tag& tag) const {
    const auto say = [&](const std::string& text) {
        log(LogCategory::Nav, fmt::format("preferredScreen[{}]: {}", redactedLabel(tag.label), text));
    };
    if (spaces_.isSharedSpacesMode()) {
        say("sharedSpacesMode — no preferred display");
        return std::nullopt;
    }
    if (!tag.spaceUUID) {
        say("no spaceUUID");
        return std::nullopt;
    }
    const auto display = spaces_.displayID(*tag.spaceUUID);
    if (!display) {
        say("cgDisplayID nil for uuid=" + *tag.spaceUUID);
        return std::nullopt;
    }
    const auto screens = screens_.screens();
    const auto found = std::ranges::find(screens, display, &Screen::displayId);
    const bool matched = found != screens.end();
    say(fmt::format("displayID={} matchedScreen={}", display->value,
                    matched ? describe(found->frame) : "nil"));
    return matched ? std::optional(*found) : std::nullopt;
}

Rect PositionController::homeTargetFrame(const Tag& tag, TagSize size, const Rect& currentFrame) const {
    const auto main = screens_.mainScreen();
    const auto windowSize =
        tagWindowSize(tag.label, baseHeight(size, main), settings_.globalTagShape.get(), textMeasurer_);
    const auto preferred = preferredScreen(tag);
    const auto screens = screens_.screens();
    const auto current = std::ranges::find_if(
        screens, [&](const Screen& screen) { return screen.frame.contains(currentFrame.center()); });
    const auto underTag = current == screens.end() ? main : std::optional(*current);
    const auto screen = preferred ? preferred : underTag;
    const auto& anchor = settings_.globalAnchoredPosition.get();

    Rect home = detachedFrame(windowSize, currentFrame);
    if (tag.frame) {
        home = detachedFrame(windowSize, *tag.frame);
    } else if (anchor && screen) {
        home = anchoredFrame(windowSize, *anchor, ScreenContext(*screen));
    }
    log(LogCategory::Nav, fmt::format("homeTargetFrame[{}]: detached={} anchored={} preferredCtx={} -> {}",
                                      redactedLabel(tag.label), tag.frame ? describe(*tag.frame) : "nil",
                                      anchor ? describeAnchor(*anchor) : "nil",
                                      preferred ? describe(preferred->visibleFrame) : "nil", describe(home)));
    return home;
}

}  // namespace orvellos
