#include "orvellos/windows/TagManager.h"

#include <fmt/format.h>

#include <algorithm>

#include "orvellos/base/DebugLog.h"
#include "orvellos/base/Describe.h"
#include "orvellos/tags/Labels.h"

namespace orvellos {

namespace {

using platform::Rect;

constexpr double kHeaderBarFraction = 0.2;
constexpr double kSmallestHeaderBar = 80;

// How a reveal finds a window, for the log.
std::string revealCase(double alpha) {
    if (alpha >= 1) return "reforce@1";
    return alpha <= 0 ? "fresh" : fmt::format("cancel-fade@{:.2f}", alpha);
}

}  // namespace

TagManager::TagManager(const Services& services, TagStore& store)
    : services_(services),
      store_(store),
      settings_(services.windows.settings),
      runLoop_(services.windows.runLoop),
      binding_(services.spaces, services.screens, runLoop_, bindingCallbacks()),
      reveal_(runLoop_, settings_, revealCallbacks()),
      position_(services.spaces, services.screens, services.windows.textMeasurer, settings_,
                positionCallbacks()),
      navigation_(services.spaces, runLoop_, settings_, services.navigation, navCallbacks()),
      missionControl_(runLoop_, services.onScreenWindows, settings_.defaults()),
      missionControlKey_(services.keys, runLoop_),
      clickThrough_(runLoop_, services.screens, [this] { return mainWindows(); }) {}

TagManager::~TagManager() {
    stop();
}

BindingCallbacks TagManager::bindingCallbacks() {
    return {[this] { return tags(); },
            [this](const TagID& id) { return windowFor(id); },
            [this](const TagID& id, const std::string& uuid) { store_.updateSpaceUUID(id, uuid); },
            [this](const TagID& id) { store_.clearFrame(id); },
            [this] { tagsChanged(); },
            [this] { reconcile(); },
            [this] { return missionControlRecentlyActive(); }};
}

PositionCallbacks TagManager::positionCallbacks() {
    return {[this] { return tags(); },
            [this](const TagID& id) { return windowFor(id); },
            [this](const TagID& id, const Rect& frame) { store_.updateFrame(id, frame); },
            [this](const TagID& id) { store_.clearFrame(id); },
            [this] { tagsChanged(); },
            [this](const Tag& tag) { syncMCBackupFrame(tag); },
            [this] { syncAllMCBackups(); }};
}

RevealCallbacks TagManager::revealCallbacks() {
    return {[this] { return tags(); }, [this](const Tag& tag) { return windowFor(tag.id); },
            [this](const Tag& tag, TagSize size) {
                const auto* window = windowFor(tag.id);
                return position_.homeTargetFrame(tag, size, window ? window->frame() : Rect());
            },
            [this] { reconcile(); }};
}

NavCallbacks TagManager::navCallbacks() {
    return {[this] { return tags(); }, [this] { binding_.relocate(); },
            [this] { reveal_.beginTransientReveal(false); }};
}

TagWindow* TagManager::windowFor(const TagID& id) const {
    const auto found = windows_.find(id);
    return found == windows_.end() ? nullptr : found->second.get();
}

std::vector<TagWindow*> TagManager::mainWindows() const {
    std::vector<TagWindow*> windows;
    for (const auto& [id, window] : windows_) windows.push_back(window.get());
    return windows;
}

bool TagManager::isTagWindow(platform::WindowNumber number) const {
    return std::ranges::any_of(windows_, [&](const auto& entry) {
        const auto& window = *entry.second;
        return window.windowNumber() == number || window.mcBackup()->windowNumber() == number;
    });
}

void TagManager::tagsChanged() {
    changed_.notify();
}

// Windows.

void TagManager::makeWindow(const Tag& tag) {
    auto window = std::make_unique<TagWindow>(
        services_.windows, tag, settings_.tagSize.get(), windows_.size(),
        [this, id = tag.id](const Rect& frame, bool shift) { position_.tagFrameChanged(id, frame, shift); },
        [this] {
            if (onTagClicked) onTagClicked();
        });
    window->setPreferredScreenProvider([this, id = tag.id]() -> std::optional<platform::Screen> {
        const auto* known = tagWithID(tags(), id);
        return known ? position_.preferredScreen(*known) : std::nullopt;
    });
    windows_[tag.id] = std::move(window);
}

// What the first decision would fade out must not be seen before it.
void TagManager::hideFromTheStart() {
    const bool hidden = decideVisibility(visibilityInputs()) == TagVisibility::Hide;
    for (const auto& [id, window] : windows_)
        if (hidden || binding_.orphanedTagIDs().get().contains(id)) hideAtOnce(*window);
}

void TagManager::hideAtOnce(TagWindow& window) {
    window.setAlphaValue(0);
    window.setIgnoresMouseEvents(true);
    window.mcBackup()->setAlphaValue(0);
}

void TagManager::bringInPlacedWindows() {
    for (const auto& tag : tags()) {
        const auto* window = windowFor(tag.id);
        if (window && !window->state().visible) bringToFront(tag);
    }
}

// A window whose Space cannot be told yet would come up on whatever Space is current, so it waits.
void TagManager::bringToFront(const Tag& tag) {
    auto& window = *windowFor(tag.id);
    const bool isPlaced = !tag.spaceUUID || services_.spaces.managedSpaceID(*tag.spaceUUID);
    if (!isPlaced && !window.state().visible) return;
    window.orderFrontRegardless();
    window.mcBackup()->orderFrontRegardless();
}

void TagManager::showNewWindow(const Tag& tag) {
    makeWindow(tag);
    auto& window = *windowFor(tag.id);
    if (settings_.killSwitchActive.get()) hideAtOnce(window);
    bringToFront(tag);
    syncMCBackupFrame(tag);
    if (tag.spaceUUID) pinToSpace(window, *tag.spaceUUID);
    binding_.recomputeSpaceOrphans();
    reconcile();
}

void TagManager::pinToSpace(const TagWindow& window, const std::string& spaceUUID) const {
    services_.spaces.moveWindow(window.windowNumber(), spaceUUID);
    services_.spaces.moveWindow(window.mcBackup()->windowNumber(), spaceUUID);
}

void TagManager::sendHome(const Tag& tag) {
    auto* window = windowFor(tag.id);
    if (!window) return;
    const Rect home = position_.homeTargetFrame(tag, window->currentSize(), window->frame());
    window->setFrameWithoutPersisting(home, false);
    syncMCBackupFrame(tag);
}

void TagManager::syncAllMCBackups() {
    for (const auto& tag : tags()) syncMCBackupFrame(tag);
}

void TagManager::syncMCBackupFrame(const Tag& tag, const std::optional<Rect>& base) {
    auto* window = windowFor(tag.id);
    auto* backup = window ? window->mcBackup() : nullptr;
    if (!backup) return;
    const Rect requested = backupFrame(tag, base.value_or(window->frame()));
    backup->setFrameWithoutPersisting(requested, false);
    if (debugEchoEnabled())
        log(LogCategory::Mc,
            fmt::format("[verbose] syncMCBackupFrame[{}] style={} requested={} actual={}",
                        redactedLabel(tag.label), rawValue(settings_.missionControlStyle.get()),
                        describe(requested), describe(backup->frame())));
}

Rect TagManager::backupFrame(const Tag& tag, const Rect& base) const {
    const auto style = settings_.missionControlStyle.get();
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

void TagManager::refreshAllWindowShapes() {
    logVerbose("refreshAllWindowShapes: shape={} ({} windows)", rawValue(settings_.globalTagShape.get()),
               windows_.size());
    for (auto* window : mainWindows()) window->refreshShape();
}

// What the user does with tags.

std::optional<std::string> TagManager::spaceForNewTag() const {
    auto space = services_.spaces.currentSpaceUUIDOnPointerDisplay();
    return space ? space : services_.spaces.currentSpaceUUID();
}

Tag TagManager::createTag(const std::string& label, const std::string& colorHex,
                          std::optional<std::string> spaceUUID) {
    if (!spaceUUID) spaceUUID = spaceForNewTag();
    Tag tag{TagID::random(), label, colorHex, {}, std::move(spaceUUID)};
    store_.add(tag);
    tagsChanged();
    showNewWindow(tag);
    return tag;
}

void TagManager::assignTagToSpace(const TagID& id, std::optional<std::string> spaceUUID) {
    auto* window = windowFor(id);
    const auto* tag = tagWithID(tags(), id);
    if (!window || !tag) return;
    const auto target = spaceUUID ? std::move(spaceUUID) : spaceForNewTag();
    if (target) {
        const auto former = tag->spaceUUID;
        store_.updateSpaceUUID(id, *target);
        tagsChanged();
        if (former && former != target) {
            services_.spaces.removeWindow(window->windowNumber(), *former);
            services_.spaces.removeWindow(window->mcBackup()->windowNumber(), *former);
        }
        pinToSpace(*window, *target);
        binding_.recomputeSpaceOrphans();
    }
    bringToFront(*tagWithID(tags(), id));
    window->flash();
    reconcile();
}

void TagManager::updateTag(const TagID& id, const std::string& label, const std::string& colorHex) {
    const auto* known = tagWithID(tags(), id);
    if (!known) return;
    Tag tag = *known;
    tag.label = label;
    tag.colorHex = colorHex;
    store_.update(tag);
    tagsChanged();
    if (auto* window = windowFor(id)) window->update(tag);
    syncMCBackupFrame(tag);
}

void TagManager::deleteTag(const TagID& id) {
    const auto* known = tagWithID(tags(), id);
    if (!known) return;
    const Tag tag = *known;
    if (const auto window = windows_.extract(id)) {
        window.mapped()->mcBackup()->orderOut();
        window.mapped()->orderOut();
    }
    store_.remove(tag.id);
    tagsChanged();
    reconcile();
    if (showUndoToast) showUndoToast("Deleted " + quotedLabel(tag.label), [this, tag] { restoreTag(tag); });
}

void TagManager::restoreTag(const Tag& tag) {
    if (tagWithID(tags(), tag.id)) return;
    store_.add(tag);
    tagsChanged();
    showNewWindow(tag);
}

// What panels and menus ask.

std::vector<MenuSpaceRow> TagManager::menuRows(
    const std::function<std::vector<std::string>()>& orderedSpaceUUIDs) const {
    const auto uuids = orderedSpaceUUIDs();
    if (uuids.empty()) return {};
    const auto current = services_.spaces.currentSpaceUUIDOnPointerDisplay();
    std::vector<MenuSpaceRow> rows;
    for (const auto& uuid : uuids) {
        const auto* tag = firstTagOfSpace(tags(), uuid);
        rows.push_back({uuid, rows.size() + 1, tag ? std::optional(*tag) : std::nullopt, uuid == current});
    }
    return rows;
}

std::optional<TagID> TagManager::tagIDForCurrentSpace() const {
    const auto current = services_.spaces.currentSpaceUUIDOnPointerDisplay();
    if (!current) return activeTagID_;
    const auto* tag = firstTagOfSpace(tags(), current);
    return tag ? std::optional(tag->id) : std::nullopt;
}

std::vector<Tag> TagManager::tagsSortedBySpaceOrder(std::span<const std::string> spaceUUIDs) const {
    const auto place = [&](const Tag& tag) {
        return tag.spaceUUID ? std::ranges::find(spaceUUIDs, *tag.spaceUUID) : spaceUUIDs.end();
    };
    auto sorted = tags();
    std::ranges::stable_sort(sorted, {}, place);
    return sorted;
}

// What is seen.

VisibilityInputs TagManager::visibilityInputs() const {
    return {settings_.visibilityMode.get(),  settings_.killSwitchActive.get(),
            reveal_.transientRevealActive(), services_.windows.editingContext.isActive().get(),
            reveal_.missionControlActive,    settings_.embiggenAllTags.get()};
}

void TagManager::reconcile() {
    const auto inputs = visibilityInputs();
    if (debugEchoEnabled())
        logVerbose("reconcile: mode={} kill={} mcActive={} privateAPI=true currentUUID={}",
                   rawValue(inputs.mode), inputs.killSwitch, inputs.missionControl,
                   services_.spaces.currentSpaceUUID().value_or("nil"));
    log(LogCategory::Nav,
        fmt::format("reconcile: mode={} kill={} transientReveal={} editing={} mcActive={} embiggen={} "
                    "orphaned={}",
                    rawValue(inputs.mode), inputs.killSwitch, inputs.transientReveal, inputs.editing,
                    inputs.missionControl, inputs.embiggen, binding_.orphanedTagIDs().get().size()));
    for (const auto& tag : tags()) {
        if (binding_.orphanedTagIDs().get().contains(tag.id))
            hideOrphan(tag);
        else
            reconcileTag(tag, inputs);
    }
    // A window that was shown takes the mouse until it is known where the pointer is: at once, so that
    // nothing is asked of the window system for nothing.
    if (clickThrough_.timerHz() > 0) clickThrough_.tick();
    updateActiveTag();
}

void TagManager::hideOrphan(const Tag& tag) {
    log(LogCategory::Nav, fmt::format("  tag='{}' uuid={} decision=orphan-hide", redactedLabel(tag.label),
                                      tag.spaceUUID.value_or("nil")));
    auto* window = windowFor(tag.id);
    if (!window) return;
    if (!window->restsAtAlpha(0)) window->fade(false);
    window->mcBackup()->setAlphaValue(0);
}

void TagManager::reconcileTag(const Tag& tag, const VisibilityInputs& inputs) {
    const auto decision = decideVisibility(inputs);
    const auto label = redactedLabel(tag.label);
    log(LogCategory::Nav, fmt::format("  tag='{}' uuid={} decision={}", label, tag.spaceUUID.value_or("nil"),
                                      caseName(decision)));
    auto* window = windowFor(tag.id);
    if (!window) return;
    auto& backup = *window->mcBackup();
    const bool seenThroughBackup = decision == TagVisibility::Show && showsBackups(inputs);
    if (seenThroughBackup) {
        window->setAlphaValue(0);
        window->setIgnoresMouseEvents(true);
        backup.setAlphaValue(1);
    } else if (decision == TagVisibility::Show) {
        showWindow(tag, *window, inputs.transientReveal);
    } else if (!window->restsAtAlpha(0)) {
        logTimeline(fmt::format("hide '{}': fade-out alpha={:.2f}", label, window->alphaValue()));
        window->fade(false);
    }
    if (!seenThroughBackup && !backup.restsAtAlpha(0)) backup.fade(false);
    log(LogCategory::Nav,
        fmt::format("    window α={:#} backup α={:#} frame={} onActiveSpace={}", window->alphaValue(),
                    backup.alphaValue(), describe(window->frame()), window->state().onActiveSpace));
}

void TagManager::showWindow(const Tag& tag, TagWindow& window, bool transientReveal) const {
    const auto alpha = window.alphaValue();
    if (transientReveal) {
        const auto state = window.state();
        logTimeline(fmt::format("reveal '{}': instant {} onSpace={} occ={}", redactedLabel(tag.label),
                                revealCase(alpha), state.onActiveSpace ? "Y" : "N",
                                state.unobscured ? "vis" : "hidden"));
        window.revealInstantly();
    } else if (!window.restsAtAlpha(1)) {
        logTimeline(fmt::format("reveal '{}': fade-in alpha={:.2f}", redactedLabel(tag.label), alpha));
        window.fade(true);
    }
}

void TagManager::updateActiveTag() {
    const auto* active = firstTagOfSpace(tags(), services_.spaces.currentSpaceUUID());
    if (!active) {
        const auto isSeen = [this](const Tag& tag) {
            const auto* window = windowFor(tag.id);
            const auto state = window ? window->state() : platform::WindowState();
            return state.visible && state.onActiveSpace;
        };
        const auto seen = std::ranges::find_if(tags(), isSeen);
        if (seen != tags().end()) active = &*seen;
    }
    const auto id = active ? std::optional(active->id) : std::nullopt;
    if (id == activeTagID_) return;
    activeTagID_ = id;
    changed_.notify();
}

}  // namespace orvellos
