#include "orvellos/windows/TagManager.h"

#include <algorithm>

#include "orvellos/base/DebugLog.h"
#include "orvellos/tags/Labels.h"

namespace orvellos {

TagManager::TagManager(const Services& services, TagStore& store)
    : store_(store),
      spaces_(services.spaces),
      settings_(services.windows.settings),
      windows_(services.windows, services.spaces, store, position_, changed_,
               [this] {
                   if (onTagClicked) onTagClicked();
               }),
      clickThrough_(services.windows.runLoop, services.screens, [this] { return windows_.mainWindows(); }),
      visibility_({.spaces = services.spaces,
                   .settings = services.windows.settings,
                   .editingContext = services.windows.editingContext,
                   .windows = windows_,
                   .binding = binding_,
                   .reveal = reveal_,
                   .clickThrough = clickThrough_},
                  changed_),
      missionControl_(services.windows.runLoop, services.onScreenWindows,
                      services.windows.settings.defaults()),
      binding_(services.spaces, services.screens, services.windows.runLoop, missionControl_, windows_,
               visibility_),
      reveal_(services.windows.runLoop, services.windows.settings, windows_, visibility_),
      position_(services.spaces, services.screens, services.windows.textMeasurer, services.windows.settings,
                windows_),
      navigation_(services.spaces, services.windows.runLoop, services.windows.settings, services.navigation,
                  *this),
      preview_({.runLoop = services.windows.runLoop,
                .launcher = services.launcher,
                .settings = services.windows.settings,
                .missionControl = missionControl_,
                .reveal = reveal_}),
      events_({.runLoop = services.windows.runLoop,
               .windowSystem = services.windows.windowSystem,
               .spaceNotifications = services.spaceNotifications,
               .screens = services.screens,
               .session = services.session,
               .keys = services.keys,
               .settings = services.windows.settings,
               .editingContext = services.windows.editingContext},
              {.spaces = services.spaces,
               .windows = windows_,
               .binding = binding_,
               .reveal = reveal_,
               .reconciler = visibility_,
               .navigation = navigation_,
               .missionControl = missionControl_,
               .preview = preview_,
               .clickThrough = clickThrough_}) {}

TagManager::~TagManager() {
    stop();
}

void TagManager::start() {
    orphansChanged_ = binding_.orphanedTagIDs().subscribe([this](const auto&) { changed_.notify(); });
    for (const auto& tag : tags()) windows_.make(tag);
    binding_.recomputeSpaceOrphans();
    visibility_.hideFromTheStart();
    windows_.bringInPlacedWindows();
    windows_.sendHome();
    binding_.relocate();
    events_.start();
    reconcile();
}

void TagManager::stop() {
    orphansChanged_.cancel();
    events_.stop();
    preview_.cancelTimers();
    navigation_.cancel();
    reveal_.cancelTimers();
    binding_.cancelTimers();
}

// What the user does with tags.

std::optional<std::string> TagManager::spaceForNewTag() const {
    auto space = spaces_.currentSpaceUUIDOnPointerDisplay();
    return space ? space : spaces_.currentSpaceUUID();
}

void TagManager::showNewWindow(const Tag& tag) {
    auto& window = windows_.make(tag);
    if (settings_.killSwitchActive.get()) window.hideInstantly();
    windows_.bringToFront(tag);
    windows_.syncMCBackupFrame(tag);
    if (tag.spaceUUID) windows_.pinToSpace(window, *tag.spaceUUID);
    binding_.recomputeSpaceOrphans();
    reconcile();
}

Tag TagManager::createTag(const std::string& label, const std::string& colorHex,
                          std::optional<std::string> spaceUUID) {
    if (!spaceUUID) spaceUUID = spaceForNewTag();
    Tag tag{TagID::random(), label, colorHex, {}, std::move(spaceUUID)};
    store_.add(tag);
    changed_.notify();
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
        changed_.notify();
        if (former && former != target) windows_.removeFromSpace(*window, *former);
        windows_.pinToSpace(*window, *target);
        binding_.recomputeSpaceOrphans();
    }
    windows_.bringToFront(*tagWithID(tags(), id));
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
    changed_.notify();
    if (auto* window = windowFor(id)) window->update(tag);
    windows_.syncMCBackupFrame(tag);
}

void TagManager::deleteTag(const TagID& id) {
    const auto* known = tagWithID(tags(), id);
    if (!known) return;
    const Tag tag = *known;
    windows_.remove(id);
    store_.remove(tag.id);
    changed_.notify();
    reconcile();
    if (showUndoToast) showUndoToast("Deleted " + quotedLabel(tag.label), [this, tag] { restoreTag(tag); });
}

void TagManager::restoreTag(const Tag& tag) {
    if (tagWithID(tags(), tag.id)) return;
    store_.add(tag);
    changed_.notify();
    showNewWindow(tag);
}

// What panels and menus ask.

std::vector<MenuSpaceRow> TagManager::menuRows(
    const std::function<std::vector<std::string>()>& orderedSpaceUUIDs) const {
    const auto uuids = orderedSpaceUUIDs();
    if (uuids.empty()) return {};
    const auto current = spaces_.currentSpaceUUIDOnPointerDisplay();
    std::vector<MenuSpaceRow> rows;
    for (const auto& uuid : uuids) {
        const auto* tag = firstTagOfSpace(tags(), uuid);
        rows.push_back({uuid, rows.size() + 1, tag ? std::optional(*tag) : std::nullopt, uuid == current});
    }
    return rows;
}

std::optional<TagID> TagManager::tagIDForCurrentSpace() const {
    const auto current = spaces_.currentSpaceUUIDOnPointerDisplay();
    if (!current) return activeTagID();
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

// Peeking.

void TagManager::peekBegin() {
    if (settings_.killSwitchActive.get()) {
        logTimeline("peek: suppressed (kill switch active)");
        return;
    }
    logTimeline("peek: begin (hold)");
    reveal_.beginTransientReveal(true);
}

void TagManager::peekEnd() {
    reveal_.unlockTransientReveal(RevealController::kPeekHideDelay);
}

}  // namespace orvellos
