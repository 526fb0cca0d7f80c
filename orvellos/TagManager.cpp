#include "orvellos/TagManager.h"

#include <fmt/format.h>

#include <algorithm>

#include "orvellos/DebugLog.h"
#include "orvellos/Describe.h"

namespace orvellos {

namespace {

using platform::Rect;

constexpr auto kSpaceChangeDebounce = platform::seconds(0.08);
constexpr double kHeaderBarFraction = 0.2;
constexpr double kSmallestHeaderBar = 80;

}  // namespace

TagManager::TagManager(const Services& services, TagStore& store)
    : services_(services),
      store_(store),
      settings_(services.windows.settings),
      binding_(
          services.spaces, [this] { return tags(); }, [this](const TagID& id) { return windowFor(id); }),
      position_(services.spaces, services.screens, services.windows.textMeasurer, settings_),
      clickThrough_(services.windows.runLoop, services.pointer, [this] { return mainWindows(); }) {}

TagManager::~TagManager() {
    stop();
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

void TagManager::start() {
    for (const auto& tag : tags()) makeWindow(tag);
    binding_.recomputeSpaceOrphans();
    hideFromTheStart();
    for (const auto& tag : tags()) sendHome(tag);
    bringInPlacedWindows();
    binding_.enforce();
    observe();
    clickThrough_.start(ClickThroughController::kIdleHz);
    clickThrough_.tick();
    reconcile();
}

void TagManager::stop() {
    subscriptions_.clear();
    spaceChangeDebounce_.cancel();
    clickThrough_.stop();
}

void TagManager::observe() {
    const auto add = [this](platform::Subscription subscription) {
        subscriptions_.push_back(std::move(subscription));
    };
    add(services_.spaceNotifications.onActiveSpaceChanged([this] { onActiveSpaceChanged(); }));
    add(services_.screens.onParametersChanged([this] { onScreenParametersChanged(); }));
    add(settings_.visibilityMode.subscribe([this](auto) { reconcile(); }));
    add(settings_.killSwitchActive.subscribe([this](auto) { reconcile(); }));
    add(services_.windows.editingContext.isActive().subscribe([this](bool active) {
        log(LogCategory::Nav, fmt::format("SINK: editingContext.isActive={}", active));
        reconcile();
    }));
    add(settings_.embiggenAllTags.subscribe([this](auto) {
        applyTagSize();
        reconcile();
    }));
    add(settings_.missionControlStyle.subscribe([this](auto) {
        syncAllMCBackups();
        for (auto* window : mainWindows()) window->mcBackup()->refreshShape();
    }));
    add(settings_.tagSize.subscribe([this](auto) { applyTagSize(); }));
    add(settings_.globalTagShape.subscribe([this](auto) { refreshAllWindowShapes(); }));
}

void TagManager::makeWindow(const Tag& tag) {
    auto window = std::make_unique<TagWindow>(services_.windows, tag, settings_.tagSize.get(),
                                              windows_.size(), nullptr, [this] {
                                                  if (onTagClicked) onTagClicked();
                                              });
    window->setPreferredScreenProvider([this, id = tag.id]() -> std::optional<platform::Screen> {
        const auto found = std::ranges::find(tags(), id, &Tag::id);
        return found == tags().end() ? std::nullopt : position_.preferredScreen(*found);
    });
    windows_[tag.id] = std::move(window);
}

// What the first decision would fade out must not be seen before it.
void TagManager::hideFromTheStart() {
    const bool hidden = decideVisibility(visibilityInputs()) == TagVisibility::Hide;
    for (const auto& [id, window] : windows_) {
        if (!hidden && !binding_.orphanedTagIDs().get().contains(id)) continue;
        window->setAlphaValue(0);
        window->setIgnoresMouseEvents(true);
        window->mcBackup()->setAlphaValue(0);
    }
}

// A window whose Space cannot be told yet would come up on whatever Space is current, so it waits.
void TagManager::bringInPlacedWindows() {
    for (const auto& tag : tags()) {
        auto* window = windowFor(tag.id);
        if (!window || window->state().visible) continue;
        if (tag.spaceUUID && !services_.spaces.managedSpaceID(*tag.spaceUUID)) continue;
        window->orderFrontRegardless();
        window->mcBackup()->orderFrontRegardless();
    }
}

void TagManager::sendHome(const Tag& tag) {
    auto* window = windowFor(tag.id);
    if (!window) return;
    const Rect home = position_.homeTargetFrame(tag, window->currentSize(), window->frame());
    window->setFrameWithoutPersisting(home, false);
    syncMCBackupFrame(tag);
}

void TagManager::applyTagSize() {
    for (const auto& tag : tags()) {
        auto* window = windowFor(tag.id);
        if (!window) continue;
        const auto size = settings_.tagSize.get();
        const Rect home = position_.homeTargetFrame(tag, size, window->frame());
        if (home == window->targetFrame() && size == window->currentSize()) continue;
        window->applyFrameAndSize(size, tag.label, home, true);
        syncMCBackupFrame(tag);
    }
}

void TagManager::syncAllMCBackups() {
    for (const auto& tag : tags()) syncMCBackupFrame(tag);
}

void TagManager::syncMCBackupFrame(const Tag& tag) {
    auto* window = windowFor(tag.id);
    auto* backup = window ? window->mcBackup() : nullptr;
    if (!backup) return;
    const Rect requested = backupFrame(tag, window->frame());
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
    if (debugEchoEnabled())
        log(LogCategory::General, fmt::format("refreshAllWindowShapes: shape={} ({} windows)",
                                              rawValue(settings_.globalTagShape.get()), windows_.size()));
    for (auto* window : mainWindows()) window->refreshShape();
}

void TagManager::onActiveSpaceChanged() {
    log(LogCategory::Nav,
        fmt::format("onActiveSpaceChanged FIRED current={} mode={} kill={}",
                    services_.spaces.currentSpaceUUID().value_or("nil"),
                    rawValue(settings_.visibilityMode.get()), settings_.killSwitchActive.get()));
    spaceChangeDebounce_ = services_.windows.runLoop.after(kSpaceChangeDebounce, [this] {
        binding_.recomputeSpaceOrphans();
        bringInPlacedWindows();
        reconcile();
        binding_.enforce();
    });
}

void TagManager::onScreenParametersChanged() {
    if (debugEchoEnabled())
        log(LogCategory::General, "screen parameters changed, healing + re-applying size");
    applyTagSize();
    syncAllMCBackups();
}

VisibilityInputs TagManager::visibilityInputs() const {
    return {settings_.visibilityMode.get(), settings_.killSwitchActive.get(), settings_.embiggenAllTags.get(),
            services_.windows.editingContext.isActive().get()};
}

void TagManager::reconcile() {
    const auto inputs = visibilityInputs();
    const auto decision = decideVisibility(inputs);
    log(LogCategory::Nav, fmt::format("reconcile: mode={} kill={} editing={} embiggen={} orphaned={}",
                                      rawValue(inputs.mode), inputs.killSwitch, inputs.editing,
                                      inputs.embiggen, binding_.orphanedTagIDs().get().size()));
    for (const auto& tag : tags()) reconcileTag(tag, decision);
}

void TagManager::reconcileTag(const Tag& tag, TagVisibility decision) {
    const bool orphaned = binding_.orphanedTagIDs().get().contains(tag.id);
    log(LogCategory::Nav,
        fmt::format("  tag='{}' uuid={} decision={}", redactedLabel(tag.label), tag.spaceUUID.value_or("nil"),
                    orphaned ? "orphan-hide" : caseName(decision)));
    auto* window = windowFor(tag.id);
    if (!window) return;
    auto& backup = *window->mcBackup();
    if (orphaned) {
        if (!window->restsAtAlpha(0)) window->fade(false);
        backup.setAlphaValue(0);
    } else if (decision == TagVisibility::Show && settings_.embiggenAllTags.get()) {
        window->setAlphaValue(0);
        window->setIgnoresMouseEvents(true);
        backup.setAlphaValue(1);
    } else {
        const bool show = decision == TagVisibility::Show;
        if (!window->restsAtAlpha(show ? 1 : 0)) window->fade(show);
        if (!backup.restsAtAlpha(0)) backup.fade(false);
    }
}

}  // namespace orvellos
