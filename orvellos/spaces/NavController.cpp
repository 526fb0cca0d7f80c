#include "orvellos/spaces/NavController.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <algorithm>
#include <array>
#include <cstdlib>

#include "orvellos/base/DebugLog.h"
#include "orvellos/spaces/SpaceSwitcher.h"
#include "orvellos/tags/Labels.h"

namespace orvellos {

namespace {

constexpr int kMoveLeftASpace = 79;
constexpr int kMoveRightASpace = 81;
constexpr auto kKeyInterval = platform::seconds(0.22);
constexpr auto kCgsWait = platform::seconds(0.4);

constexpr std::string_view kShortcutsAreOff =
    "macOS's space shortcuts are turned off. Enable them in System Settings › Keyboard › Keyboard "
    "Shortcuts › Mission Control (“Move left/right a space”).";
constexpr std::string_view kNotTrusted =
    "Accessibility permission isn't granted. CGEventPost can't inject keyboard events without it. Open "
    "Settings › Privacy & Security › Accessibility and enable orvellos.";
constexpr std::string_view kCgsSucceeded =
    "Also tried the CGS private-API path; it returned success but the Space didn't actually change. This is "
    "a known macOS 26 issue with programmatic Space switching.";
constexpr std::string_view kCgsFailed =
    "The CGS private-API fallback also failed. Private symbols may not have resolved — check the console "
    "for “SkyLight bridge” log lines.";

template <typename... Arguments>
void say(fmt::format_string<Arguments...> format, Arguments&&... arguments) {
    log(LogCategory::Nav, fmt::format(format, std::forward<Arguments>(arguments)...));
}

constexpr std::string_view arrowOf(int delta) {
    return delta < 0 ? "⌃←" : "⌃→";
}

platform::Duration waitFor(int steps) {
    return std::max(steps * kKeyInterval + platform::seconds(0.25), platform::seconds(0.3));
}

std::string firstParagraph(bool shortcutsOK, bool accessibilityOK, int steps, std::string_view direction) {
    if (!shortcutsOK) return std::string(kShortcutsAreOff);
    if (!accessibilityOK) return std::string(kNotTrusted);
    return fmt::format(
        "Tried simulating {}× {} — macOS accepted the events but didn't change the Space. Something else is "
        "consuming them (Karabiner, BetterTouchTool, another accessibility app).",
        steps, direction);
}

std::optional<NavRemedy> remedyFor(bool accessibilityOK, bool shortcutsOK) {
    if (!accessibilityOK) return NavRemedy::Accessibility;
    return shortcutsOK ? std::nullopt : std::optional(NavRemedy::KeyboardShortcuts);
}

}  // namespace

// Where a navigation begins.

bool NavController::navigateToTagID(const TagID& id) {
    const auto* tag = tagWithID(tags_.tagsProvider(), id);
    if (!tag) return false;
    const auto name = quotedLabel(tag->label);
    if (!tag->spaceUUID) {
        warn("No Space bound to this tag",
             fmt::format("The {} tag hasn't been assigned to a Space yet. Use “Reassign … here” from the "
                         "menu to bind it to the current Space.",
                         name));
        return false;
    }
    const std::string uuid = *tag->spaceUUID;  // pinning the tags may change the tag's
    if (hasReached(uuid)) return true;
    const auto target = indexOf(uuid);
    if (!target) {
        warn("Target Space not found",
             fmt::format("The Space that {} was assigned to doesn't exist on this display anymore. It may "
                         "have been closed, or it's on another monitor. Reassign it to the current Space "
                         "from the menu to re-bind.",
                         name));
        return false;
    }
    say("navigate(toTagID): tag={} uuid={}", redactedLabel(tag->label), uuid);
    start(uuid, target, name);
    return true;
}

bool NavController::navigateToSpace(const std::string& uuid) {
    if (hasReached(uuid)) return true;
    say("navigate(toSpace): uuid={}", uuid);
    start(uuid, indexOf(uuid), "that Space");
    return true;
}

void NavController::cancel() {
    navigations_.clear();
    keySequences_.clear();
}

void NavController::warn(std::string message, std::string informativeText) {
    services_.alerts.runModal({std::move(message), std::move(informativeText), {"OK"}}, [](std::size_t) {});
}

bool NavController::hasReached(const std::string& uuid) const {
    const auto current = spaces_.currentSpaceUUIDs();
    return current.empty() ? spaces_.currentSpaceUUID() == uuid : current.contains(uuid);
}

std::optional<std::size_t> NavController::indexOf(const std::string& uuid) const {
    const auto list = spaces_.orderedSpaceUUIDsOnPointerDisplay();
    const auto found = std::ranges::find(list, uuid);
    if (found == list.end()) return std::nullopt;
    return static_cast<std::size_t>(found - list.begin());
}

// What the system allows.

bool NavController::isSymbolicHotKeyEnabled(int number) const {
    return services_.shortcuts.isEnabled(number).value_or(true);
}

bool NavController::areShortcutsEnabled() const {
    return isSymbolicHotKeyEnabled(kMoveLeftASpace) && isSymbolicHotKeyEnabled(kMoveRightASpace);
}

std::optional<NavRemedy> NavController::neededRemedy() const {
    return remedyFor(services_.permissions.isAccessibilityTrusted(), areShortcutsEnabled());
}

// The navigation's own course.

void NavController::start(const std::string& uuid, std::optional<std::size_t> target,
                          std::string displayName) {
    const auto current = spaces_.currentSpaceIndexOnPointerDisplay().value_or(0);
    const int delta = target ? Distance{current, *target}.delta() : 0;
    tags_.relocate();
    if (settings_.showRevealOnSwipe.get() && !settings_.killSwitchActive.get()) tags_.beginTransientReveal();
    const bool shortcutsOK = areShortcutsEnabled();
    const bool accessibilityOK = services_.permissions.isAccessibilityTrusted();
    say("  delta={} shortcutsOK={} accessibilityOK={}", delta, shortcutsOK, accessibilityOK);
    const auto id = ++lastNavigation_;
    auto& navigation = navigations_[id] = {uuid,
                                           std::move(displayName),
                                           target ? std::abs(delta) : 1,
                                           delta > 0 ? "⌃→ (right)" : "⌃← (left)",
                                           shortcutsOK,
                                           accessibilityOK};
    navigation.attempts = attemptsOf(id);
    navigation.timer = runLoop_.after(platform::Duration::zero(), [this, id] { tryNext(id, 0); });
}

std::vector<NavController::Attempt> NavController::attemptsOf(NavigationId id) {
    const auto& navigation = navigations_.at(id);
    const auto& uuid = navigation.uuid;
    const auto wait = waitFor(navigation.steps);
    std::vector<Attempt> attempts;
    if (navigation.shortcutsOK) {
        attempts.push_back({"osascript", [this, uuid] { navigateViaOSAScript(uuid); }, wait});
        const auto pressKeys = [this, uuid, id] {
            const auto former = generation_;
            navigateViaKeyboard(uuid);
            if (generation_ != former) navigations_.at(id).keys = generation_;
        };
        attempts.push_back({"CGEvent", pressKeys, wait});
    }
    attempts.push_back({"CGS switchToSpace",
                        [this, uuid, id] { navigations_.at(id).cgsSucceeded = switchToSpace(spaces_, uuid); },
                        kCgsWait});
    return attempts;
}

void NavController::tryNext(NavigationId id, std::size_t next) {
    auto& navigation = navigations_.at(id);
    if (next == navigation.attempts.size()) return fail(id);
    navigation.tried = next;
    const auto& attempt = navigation.attempts[next];
    say("  attempt: {}", attempt.label);
    attempt.run();
    navigation.timer = runLoop_.after(attempt.wait, [this, id] { checkArrival(id); });
}

bool NavController::endIfReached(NavigationId id) {
    const auto& navigation = navigations_.at(id);
    if (!navigation.tried || !hasReached(navigation.uuid)) return false;
    say("  {} reached target ✓", navigation.attempts[*navigation.tried].label);
    if (navigation.keys) keySequences_.erase(*navigation.keys);
    navigations_.erase(id);
    return true;
}

void NavController::activeSpaceChanged() {
    std::vector<NavigationId> ids;
    for (const auto& [id, navigation] : navigations_) ids.push_back(id);
    for (const auto id : ids) (void)endIfReached(id);
}

void NavController::checkArrival(NavigationId id) {
    if (endIfReached(id)) return;
    const auto& navigation = navigations_.at(id);
    const auto tried = *navigation.tried;
    say("  {} did not reach target", navigation.attempts[tried].label);
    tryNext(id, tried + 1);
}

void NavController::fail(NavigationId id) {
    say("  ALL paths failed — showing alert");
    const auto extracted = navigations_.extract(id);
    const auto& navigation = extracted.mapped();
    const auto remedy = remedyFor(navigation.accessibilityOK, navigation.shortcutsOK);
    platform::Alert alert{"Couldn't switch to " + navigation.displayName,
                          firstParagraph(navigation.shortcutsOK, navigation.accessibilityOK, navigation.steps,
                                         navigation.direction),
                          {"OK"}};
    if (const auto cgs = navigation.cgsSucceeded)
        alert.informativeText += fmt::format("\n\n{}", *cgs ? kCgsSucceeded : kCgsFailed);
    if (remedy) alert.buttons.insert(alert.buttons.begin(), std::string(buttonTitle(*remedy)));
    services_.alerts.runModal(alert, [urls = &services_.urls, remedy](std::size_t button) {
        if (button == 0 && remedy) urls->openUrl(settingsUrl(*remedy));
    });
}

// The ways.

std::optional<NavController::Distance> NavController::distanceTo(const std::string& uuid) const {
    const auto target = indexOf(uuid);
    const auto current = spaces_.currentSpaceIndexOnPointerDisplay();
    if (target && current) return Distance{*current, *target};
    say("  FAIL: can't locate current or target in ordered list");
    return std::nullopt;
}

bool NavController::navigateViaOSAScript(const std::string& uuid) {
    say("navigateViaOSAScript START uuid={}", uuid);
    const auto distance = distanceTo(uuid);
    if (!distance) return false;
    if (distance->delta() == 0) {
        say("  already on target");
        return true;
    }
    const auto script = SpaceScript::forDistance(distance->delta());
    say("  osascript: {}× key code {} control-down", script.count, script.keyCode());
    const std::array<std::string, 2> arguments = {"-e", script.text(SpaceScript::Layout::Navigation)};
    const auto error = services_.processes.start(kScriptRunner, arguments, [](const auto& ended) {
        say("  osascript exit={} stderr={}", ended.status.value_or(-1), ended.standardError);
    });
    if (error) say("  FAIL: osascript launch threw {}", *error);
    return !error;
}

bool NavController::navigateViaKeyboard(const std::string& uuid) {
    say("navigateViaKeyboard START uuid={} current={}", uuid, spaces_.currentSpaceUUID().value_or("nil"));
    const auto list = spaces_.orderedSpaceUUIDsOnPointerDisplay();
    say("  ordered spaces ({}): {}", list.size(), list);
    const auto distance = distanceTo(uuid);
    if (!distance) return false;
    const int delta = distance->delta();
    say("  currentIdx={} targetIdx={} delta={}", distance->from, distance->to, delta);
    if (delta == 0) {
        say("  already on target, no-op success");
        return true;
    }
    const auto keyCode = delta < 0 ? platform::key::kLeftArrow : platform::key::kRightArrow;
    say("  posting {}× {} (keyCode={}) via CGEvent", distance->steps(), arrowOf(delta), keyCode);
    postSpaceKey(keyCode, distance->steps(), arrowOf(delta), ++generation_);
    return true;
}

void NavController::postSpaceKey(std::uint16_t keyCode, int remaining, std::string_view arrow,
                                 std::int64_t generation) {
    using platform::SpaceShortcuts;
    const auto finished = keySequences_.extract(generation);  // runs this very call, so it ends with it
    if (generation != generation_) return say("  postSpaceKey: cancelled (superseded by a newer navigation)");
    if (remaining < 1)
        return say("  postSpaceKey: done, current={}", spaces_.currentSpaceUUID().value_or("nil"));
    const platform::KeyEvent key{keyCode, platform::modifier::kControl};
    if (!services_.shortcuts.post(key, SpaceShortcuts::Direction::Down))
        return say("  FAIL: CGEvent keyDown creation returned nil");
    say("  posted {} keyDown (nil source) to cghidEventTap", arrow);
    if (services_.shortcuts.post(key, SpaceShortcuts::Direction::Up))
        say("  posted {} keyUp (nil source) to cghidEventTap", arrow);
    if (remaining == 1) return;
    keySequences_[generation] =
        runLoop_.after(kKeyInterval, [=, this] { postSpaceKey(keyCode, remaining - 1, arrow, generation); });
}

}  // namespace orvellos
