#include "orvellos/windows/PositionController.h"

#include <fmt/format.h>

#include <algorithm>

#include "orvellos/base/DebugLog.h"
#include "orvellos/base/Describe.h"
#include "orvellos/tags/TagLayout.h"
#include "orvellos/windows/HomeTarget.h"

namespace orvellos {

using platform::Rect;
using platform::Screen;

namespace {

std::string describeAnchor(const AnchoredPosition& position) {
    return fmt::format("({} {:.1f}, {} {:.1f})", rawValue(position.hEdge), position.hOffset,
                       rawValue(position.vEdge), position.vOffset);
}

std::optional<Screen> screenUnderOrMain(const platform::Screens& screens, platform::Point point) {
    const auto under = screenUnder(screens, point);
    return under ? under : screens.mainScreen();
}

}  // namespace

std::optional<Tag> PositionController::tag(const TagID& id) const {
    const auto* found = tagWithID(tags_.tagsProvider(), id);
    return found ? std::optional(*found) : std::nullopt;
}

// Screens that share their Spaces share the anchored tags, too: the tags are on the screen that the user has
// put them on or, while it is not there, each where it is.
std::optional<Screen> PositionController::anchorScreen(platform::Point center) const {
    const auto chosen = screenOfDisplay(screens_, settings_.globalAnchoredDisplay.get());
    return chosen ? chosen : screenUnderOrMain(screens_, center);
}

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
    const auto screen = preferred ? preferred : anchorScreen(currentFrame.center());
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

void PositionController::tagFrameChanged(const TagID& id, const Rect& newFrame, bool shiftHeld) {
    const auto moved = tag(id);
    if (!moved) return;
    if (shiftHeld || moved->frame) {
        tags_.updateFrameInStore(id, newFrame);
        tags_.refreshTagsFromStore();
    } else {
        setSharedPosition(*moved, newFrame);
        reapplyAnchoredFrames(id);
    }
    if (const auto now = tag(id)) tags_.syncMCBackup(*now);
}

void PositionController::setSharedPosition(const Tag& tag, const Rect& frame) {
    const auto preferred = preferredScreen(tag);
    const auto screen = preferred ? preferred : screenUnderOrMain(screens_, frame.center());
    if (!screen) return;
    settings_.globalAnchoredPosition.set(anchoredPositionFromPoint(frame.center(), screen->visibleFrame));
    if (spaces_.isSharedSpacesMode() && screen->displayId)
        settings_.globalAnchoredDisplay.set(screens_.displayUuid(*screen->displayId));
}

void PositionController::reapplyAnchoredFrames(const TagID& except) {
    for (const auto& tag : tags_.tagsProvider()) {
        auto* window = tags_.windowFor(tag.id);
        if (tag.id == except || tag.frame || !window) continue;
        moveHome(tag, *window);
        tags_.syncMCBackup(tag);
    }
}

void PositionController::relinkToSharedPosition(const TagID& id) {
    tags_.clearFrameInStore(id);
    tags_.refreshTagsFromStore();
    const auto linked = tag(id);
    auto* window = tags_.windowFor(id);
    if (!linked || !window || !settings_.globalAnchoredPosition.get()) return;
    moveHome(*linked, *window);
    tags_.syncMCBackup(*linked);
}

void PositionController::alignAllToTag(const TagID& id) {
    const auto model = tag(id);
    const auto* modelWindow = tags_.windowFor(id);
    if (!model || !modelWindow) return;
    setSharedPosition(*model, modelWindow->frame());
    for (const auto& tag : tags_.tagsProvider())
        if (tag.frame) tags_.clearFrameInStore(tag.id);
    tags_.refreshTagsFromStore();
    for (const auto& tag : tags_.tagsProvider())
        if (auto* window = tags_.windowFor(tag.id)) moveHome(tag, *window);
    tags_.syncAllMCBackups();
}

void PositionController::moveHome(const Tag& tag, TagWindow& window) const {
    window.setFrameWithoutPersisting(homeTargetFrame(tag, window.currentSize(), window.frame()), true);
}

}  // namespace orvellos
