#include "KeyboardShortcuts/Recorder.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

namespace keyboard_shortcuts {

namespace {

// The recorder's texts by key. The first pair of braces in a text stands for the shortcut, the second for the
// action that uses it.
struct LocalizedText {
    std::string_view key;
    std::string_view text;
};
constexpr std::array kLocalizedTexts = {
    LocalizedText{"record_shortcut", "Record Shortcut"},
    LocalizedText{"press_shortcut", "Type Shortcut…"},
    LocalizedText{"ok", "OK"},
    LocalizedText{"cancel", "Cancel"},
    LocalizedText{"keyboard_shortcut_used_by_menu_item", "{} is already used by “{}”."},
    LocalizedText{"choose_other_keys", "Choose other keys, or change the ones over there first."},
    LocalizedText{"keyboard_shortcut_used_by_system", "The desktop already uses {}."},
    LocalizedText{"keyboard_shortcut_used_by_system_for", "The desktop already uses {} for “{}”."},
    LocalizedText{
        "keyboard_shortcuts_can_be_changed",
        "Most of the desktop’s own shortcuts can be changed in its keyboard settings. Used here as well, "
        "these keys may reach only one of the two."},
    LocalizedText{"force_use_shortcut", "Use Anyway"},
    LocalizedText{
        "keyboard_shortcut_disallowed",
        "{} alone would no longer type. Hold Control, Alt or Super with it, or choose a function key."},
    LocalizedText{"keyboard_shortcut_refused", "Not in effect: another program has taken these keys."},
    LocalizedText{"keyboard_shortcut_impossible", "Not in effect: no such keys can be taken."}};

consteval std::string_view localizedText(std::string_view key) {
    return std::ranges::find(kLocalizedTexts, key, &LocalizedText::key)->text;
}

namespace key = platform::key;

bool isPlain(const platform::KeyEvent& keys) {
    return shortcutOf(keys).carbonModifiers == 0;
}

bool leavesTheField(const platform::KeyEvent& keys) {
    return keys.keyCode == key::kTab && (shortcutOf(keys).carbonModifiers & ~carbon::kShift) == 0;
}

}  // namespace

Recorder::Recorder(const Services& services, const Name& name)
    : services_(services),
      name_(name),
      registryChanges_(services_.registry.shortcutByNameDidChange([this](auto) { changed_.notify(); })) {}

Recorder::~Recorder() {
    if (isRecording_) services_.registry.stopRecording();
}

void Recorder::begin() {
    if (isRecording_) return;
    isRecording_ = true;
    systemAnswer_.cancel();
    checked_.reset();
    services_.registry.startRecording([this](const platform::KeyEvent& keys, bool isPressed) {
        if (isPressed)
            keyDown(keys);
        else
            keyUp();
    });
    changed_.notify();
}

void Recorder::end() {
    if (!isRecording_) return;
    isRecording_ = false;
    disallowed_.reset();
    services_.registry.stopRecording();
    if (const auto chosen = std::exchange(captured_, std::nullopt)) choose(*chosen);
    changed_.notify();
}

bool Recorder::keyDown(const platform::KeyEvent& keys) {
    if (!isRecording_ || leavesTheField(keys)) return false;
    if (captured_) return true;
    if (isPlain(keys) && keys.keyCode == key::kEscape) {
        end();
    } else if (isPlain(keys) && (keys.keyCode == key::kDelete || keys.keyCode == key::kForwardDelete)) {
        clear();
    } else if (const auto pressed = shortcutOf(keys); isAllowed(pressed)) {
        captured_ = pressed;
        disallowed_.reset();
    } else {
        disallowed_ = pressed;
    }
    changed_.notify();
    return true;
}

void Recorder::keyUp() {
    if (captured_) end();
}

void Recorder::clear() {
    captured_.reset();
    end();
    systemAnswer_.cancel();
    checked_.reset();
    services_.registry.setShortcut(std::nullopt, name_);
    changed_.notify();
}

void Recorder::choose(const Shortcut& shortcut) {
    auto& registry = services_.registry;
    const bool isInForce = registry.getShortcut(name_) == shortcut && !registry.refusal(name_);
    const auto keys = keyEventOf(shortcut);
    if (isInForce || !keys) return;
    if (const auto title = services_.ownUses.useOf(*keys, name_)) return warnOfOwnUse(shortcut, *title);
    checked_ = shortcut;
    systemAnswer_ = services_.systemShortcuts.findUse(*keys, [this, shortcut](const auto& action) {
        checked_.reset();
        if (action)
            warnOfSystemUse(shortcut, *action);
        else
            services_.registry.setShortcut(shortcut, name_);
        changed_.notify();
    });
}

void Recorder::warnOfOwnUse(const Shortcut& shortcut, const std::string& title) {
    services_.alerts.runModal(
        {.message = fmt::format(localizedText("keyboard_shortcut_used_by_menu_item"), shown(shortcut), title),
         .informativeText = std::string(localizedText("choose_other_keys")),
         .buttons = {std::string(localizedText("ok"))}},
        [](std::size_t /*button*/) {});
}

// The settings window may be gone by the time the user answers.
void Recorder::warnOfSystemUse(const Shortcut& shortcut, const std::string& action) {
    services_.alerts.runModal(
        {.message = action.empty()
                        ? fmt::format(localizedText("keyboard_shortcut_used_by_system"), shown(shortcut))
                        : fmt::format(localizedText("keyboard_shortcut_used_by_system_for"), shown(shortcut),
                                      action),
         .informativeText = std::string(localizedText("keyboard_shortcuts_can_be_changed")),
         .buttons = {std::string(localizedText("force_use_shortcut")), std::string(localizedText("cancel"))}},
        [&registry = services_.registry, shortcut, name = name_](std::size_t button) {
            if (button == 0) registry.setShortcut(shortcut, name);
        });
}

std::string Recorder::shown(const Shortcut& shortcut) const {
    return displayForm(shortcut, services_.keyNames);
}

std::string Recorder::text() const {
    if (captured_) return shown(*captured_);
    if (checked_) return shown(*checked_);
    return isRecording_ ? "" : services_.registry.displayText(name_).value_or("");
}

std::string_view Recorder::placeholder() const {
    return isRecording_ ? localizedText("press_shortcut") : localizedText("record_shortcut");
}

std::string Recorder::warning() const {
    if (disallowed_) return fmt::format(localizedText("keyboard_shortcut_disallowed"), shown(*disallowed_));
    const auto refusal = services_.registry.refusal(name_);
    if (!refusal) return "";
    return std::string(*refusal == platform::hot_key_status::kAlreadyTaken
                           ? localizedText("keyboard_shortcut_refused")
                           : localizedText("keyboard_shortcut_impossible"));
}

}  // namespace keyboard_shortcuts
