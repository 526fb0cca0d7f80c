#include "KeyboardShortcuts/Registry.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>
#include <variant>

namespace keyboard_shortcuts {

namespace {

std::string keyOf(const Name& name) {
    return fmt::format("KeyboardShortcuts_{}", name.rawValue);
}

}  // namespace

Registry::Registry(Services services)
    : services_(std::move(services)),
      events_(services_.hotKeys.onHotKey([this](const auto& event) { deliver(event); })) {}

Registry::~Registry() {
    for (const auto& [shortcut, hotKey] : hotKeys_) services_.hotKeys.unregisterHotKey(hotKey.carbonHotKeyId);
}

Registry::Actions& Registry::actionsOf(const Name& name) {
    auto& actions = actions_[name.rawValue];
    actions.name = name;
    return actions;
}

void Registry::create(const Name& name) {
    actionsOf(name);
    if (name.defaultShortcut && !services_.defaults.value(keyOf(name))) store(*name.defaultShortcut, name);
}

std::optional<Shortcut> Registry::getShortcut(const Name& name) const {
    const auto value = services_.defaults.value(keyOf(name));
    const auto* json = value ? std::get_if<std::string>(&*value) : nullptr;
    return json ? decode(*json) : std::nullopt;
}

void Registry::setShortcut(const std::optional<Shortcut>& shortcut, const Name& name) {
    const auto former = getShortcut(name);
    if (former && former != shortcut) letGo(*former, actionsOf(name).onKeyUp);
    if (shortcut) {
        refused_.erase(*shortcut);  // it may be free now
        store(*shortcut, name);
    } else {
        if (!former) return;
        if (name.defaultShortcut)
            services_.defaults.set(keyOf(name), false);
        else
            services_.defaults.remove(keyOf(name));
    }
    if (former) unregisterUnused(*former);
    changed_.notify(name.rawValue);
}

// A held key whose name loses it comes up first, for what it does then must not be missed.
void Registry::letGo(const Shortcut& shortcut, const Action& onKeyUp) const {
    const auto found = hotKeys_.find(shortcut);
    if (found == hotKeys_.end() || !found->second.isDown) return;
    for (const auto& handler : Action(onKeyUp)) handler();
}

void Registry::store(const Shortcut& shortcut, const Name& name) {
    services_.defaults.set(keyOf(name), encode(shortcut));
    registerShortcut(shortcut);
}

void Registry::onKeyDown(const Name& name, std::function<void()> handler) {
    actionsOf(name).onKeyDown.push_back(std::move(handler));
    if (const auto shortcut = getShortcut(name)) registerShortcut(*shortcut);
}

void Registry::onKeyUp(const Name& name, std::function<void()> handler) {
    actionsOf(name).onKeyUp.push_back(std::move(handler));
    if (const auto shortcut = getShortcut(name)) registerShortcut(*shortcut);
}

void Registry::registerShortcut(const Shortcut& shortcut) {
    if (hotKeys_.contains(shortcut) || refused_.contains(shortcut)) return;
    const auto keys = keyEventOf(shortcut);
    const auto id = ++lastId_;
    const auto status = keys && isAllowed(shortcut) ? services_.hotKeys.registerHotKey(id, *keys)
                                                    : platform::hot_key_status::kNoSuchKey;
    if (status == platform::hot_key_status::kRegistered) {
        hotKeys_.emplace(shortcut,
                         HotKey{shortcut, id, false, [this, shortcut] { run(shortcut, &Actions::onKeyDown); },
                                [this, shortcut] { run(shortcut, &Actions::onKeyUp); }});
        return;
    }
    refused_.emplace(shortcut, status);
    services_.standardOutput(
        fmt::format("Error registering hotkey {}: {}\n", displayForm(shortcut, services_.keyNames), status));
}

void Registry::unregisterUnused(const Shortcut& shortcut) {
    const bool isUsed = std::ranges::any_of(
        actions_, [&](const auto& each) { return getShortcut(each.second.name) == shortcut; });
    if (isUsed) return;
    const auto found = hotKeys_.extract(shortcut);
    if (found.empty()) return;
    services_.hotKeys.unregisterHotKey(found.mapped().carbonHotKeyId);
}

// A handler may change the very shortcut that runs it.
void Registry::run(const Shortcut& shortcut, Action Actions::*which) const {
    Action handlers;
    for (const auto& [rawValue, actions] : actions_)
        if (getShortcut(actions.name) == shortcut)
            handlers.insert(handlers.end(), (actions.*which).begin(), (actions.*which).end());
    for (const auto& handler : handlers) handler();
}

void Registry::deliver(const platform::HotKeyEvent& event) {
    const auto found = std::ranges::find_if(
        hotKeys_, [&](const auto& each) { return each.second.carbonHotKeyId == event.id; });
    if (found == hotKeys_.end()) return;
    // A key that was down before the recording still comes up for its name.
    if (const auto onKey = onRecordedKey_; onKey && !found->second.isDown) {
        if (const auto keys = keyEventOf(found->first)) onKey(*keys, event.isPressed);
        return;
    }
    if (!event.isPressed && !found->second.isDown) return;  // went down while it was recorded
    found->second.isDown = event.isPressed;
    const auto action = event.isPressed ? found->second.onKeyDown : found->second.onKeyUp;
    action();
}

void Registry::startRecording(std::function<void(const platform::KeyEvent&, bool)> onKey) {
    onRecordedKey_ = std::move(onKey);
    recorderChanged_.notify(true);
}

void Registry::stopRecording() {
    onRecordedKey_ = nullptr;
    recorderChanged_.notify(false);
}

std::optional<std::string> Registry::displayText(const Name& name) const {
    const auto shortcut = getShortcut(name);
    return shortcut ? std::optional(displayForm(*shortcut, services_.keyNames)) : std::nullopt;
}

std::optional<std::int32_t> Registry::refusal(const Name& name) const {
    const auto shortcut = getShortcut(name);
    const auto found = shortcut ? refused_.find(*shortcut) : refused_.end();
    return found == refused_.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace keyboard_shortcuts
