#include "orvellos/windows/TagWindows.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "orvellos/base/DebugLog.h"
#include "orvellos/base/Describe.h"

namespace orvellos {

using platform::Rect;

namespace {

constexpr double kHeaderBarFraction = 0.2;
constexpr double kSmallestHeaderBar = 80;

}  // namespace

TagWindows::TagWindows(const TagWindowServices& services, const SpaceIdentifier& spaces, TagStore& store,
                       PositionController& position, const Observers<>& changed,
                       std::function<void()> onTagClicked)
    : services_(services),
      spaces_(spaces),
      store_(store),
      position_(position),
      changed_(changed),
      onTagClicked_(std::move(onTagClicked)) {}

TagWindow* TagWindows::windowFor(const TagID& id) const {
    const auto found = windows_.find(id);
    return found == windows_.end() ? nullptr : found->second.get();
}

std::vector<TagWindow*> TagWindows::mainWindows() const {
    std::vector<TagWindow*> windows;
    for (const auto& [id, window] : windows_) windows.push_back(window.get());
    return windows;
}

bool TagWindows::isTagWindow(platform::WindowNumber number) const {
    return std::ranges::any_of(windows_, [&](const auto& entry) {
        const auto& window = *entry.second;
        return window.windowNumber() == number || window.mcBackup()->windowNumber() == number;
    });
}

// From the first window to the last.

TagWindow& TagWindows::make(const Tag& tag) {
    TagWindowOwner& owner = *this;
    auto window =
        std::make_unique<TagWindow>(services_, owner, tag, services_.settings.tagSize.get(), windows_.size());
    return *(windows_[tag.id] = std::move(window));
}

void TagWindows::remove(const TagID& id) {
    if (const auto window = windows_.extract(id)) {
        window.mapped()->mcBackup()->orderOut();
        window.mapped()->orderOut();
    }
}

void TagWindows::bringToFront(const Tag& tag) const {
    auto& window = *windowFor(tag.id);
    const bool isPlaced = !tag.spaceUUID || spaces_.managedSpaceID(*tag.spaceUUID);
    if (!isPlaced && !window.state().visible) return;
    window.orderFrontRegardless();
    window.mcBackup()->orderFrontRegardless();
}

void TagWindows::bringInPlacedWindows() const {
    for (const auto& tag : tagsProvider()) {
        const auto* window = windowFor(tag.id);
        if (window && !window->state().visible) bringToFront(tag);
    }
}

void TagWindows::pinToSpace(const TagWindow& window, const std::string& spaceUUID) const {
    spaces_.moveWindow(window.windowNumber(), spaceUUID);
    spaces_.moveWindow(window.mcBackup()->windowNumber(), spaceUUID);
}

void TagWindows::removeFromSpace(const TagWindow& window, const std::string& spaceUUID) const {
    spaces_.removeWindow(window.windowNumber(), spaceUUID);
    spaces_.removeWindow(window.mcBackup()->windowNumber(), spaceUUID);
}

// Places and shapes.

void TagWindows::sendHome() {
    for (const auto& tag : tagsProvider()) {
        auto* window = windowFor(tag.id);
        if (!window) continue;
        window->setFrameWithoutPersisting(homeTargetFrame(tag, window->currentSize()), false);
        syncMCBackupFrame(tag);
    }
}

Rect TagWindows::homeTargetFrame(const Tag& tag, TagSize size) const {
    const auto* window = windowFor(tag.id);
    return position_.homeTargetFrame(tag, size, window ? window->frame() : Rect());
}

void TagWindows::syncMCBackupFrame(const Tag& tag, const std::optional<Rect>& base) {
    const auto* window = windowFor(tag.id);
    auto* backup = window ? window->mcBackup() : nullptr;
    if (!backup) return;
    const Rect requested = backupFrame(tag, base.value_or(window->frame()));
    backup->setFrameWithoutPersisting(requested, false);
    if (debugEchoEnabled())
        log(LogCategory::Mc,
            fmt::format("[verbose] syncMCBackupFrame[{}] style={} requested={} actual={}",
                        redactedLabel(tag.label), rawValue(services_.settings.missionControlStyle.get()),
                        describe(requested), describe(backup->frame())));
}

void TagWindows::syncAllMCBackups() {
    for (const auto& tag : tagsProvider()) syncMCBackupFrame(tag);
}

Rect TagWindows::backupFrame(const Tag& tag, const Rect& base) const {
    const auto style = services_.settings.missionControlStyle.get();
    if (style == MissionControlStyle::Pill)
        return position_.homeTargetFrame(tag, TagSize::MissionControl, base);
    const auto preferred = position_.preferredScreen(tag);
    const auto screen = preferred ? preferred : services_.screens.mainScreen();
    if (!screen) return base;
    const Rect& frame = screen->frame;
    if (style == MissionControlStyle::Fullscreen) return frame;
    const double height = std::max(frame.height * kHeaderBarFraction, kSmallestHeaderBar);
    return {frame.minX(), frame.maxY() - height, frame.width, height};
}

void TagWindows::refreshAllWindowShapes() {
    logVerbose("refreshAllWindowShapes: shape={} ({} windows)",
               rawValue(services_.settings.globalTagShape.get()), windows_.size());
    for (auto* window : mainWindows()) window->refreshShape();
}

// What becomes known of a tag.

void TagWindows::updateSpaceUUIDInStore(const TagID& id, const std::string& spaceUUID) {
    store_.updateSpaceUUID(id, spaceUUID);
}

void TagWindows::updateFrameInStore(const TagID& id, const Rect& frame) {
    store_.updateFrame(id, frame);
}

void TagWindows::clearFrameInStore(const TagID& id) {
    store_.clearFrame(id);
}

void TagWindows::onFrameChange(const TagID& id, const Rect& frame, bool shiftHeld) {
    position_.tagFrameChanged(id, frame, shiftHeld);
}

std::optional<platform::Screen> TagWindows::preferredScreenProvider(const TagID& id) const {
    const auto* known = tagWithID(tagsProvider(), id);
    return known ? position_.preferredScreen(*known) : std::nullopt;
}

}  // namespace orvellos
