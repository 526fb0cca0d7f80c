#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "KeyboardShortcuts/Shortcut.h"
#include "platform/Files.h"
#include "platform/Keys.h"
#include "platform/Observers.h"

namespace keyboard_shortcuts {

// The registration of one shortcut with the system.
struct HotKey {
    Shortcut shortcut;
    std::uint32_t carbonHotKeyId = 0;  // unique per registration
    bool isDown = false;
    std::function<void()> onKeyDown;
    std::function<void()> onKeyUp;
};

// The shortcuts of the application's actions: stored by name in the user's defaults, registered with the
// system and delivered to handlers, all on the main thread. Names with the same shortcut share its
// registration.
class Registry {
  public:
    struct Services {
        platform::DefaultsStore& defaults;
        platform::HotKeyService& hotKeys;
        const platform::KeyNames& keyNames;
        std::function<void(std::string_view)> standardOutput;
    };
    explicit Registry(Services services);
    ~Registry();
    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;

    // Makes a name known. Its default is stored, and registered, unless something is stored already.
    void create(const Name& name);
    // The shortcut stored under the name; absent when something else or nothing is stored.
    [[nodiscard]] std::optional<Shortcut> getShortcut(const Name& name) const;
    // Stores, registers and announces the shortcut. Without one the former is removed, for good if it was the
    // default.
    void setShortcut(const std::optional<Shortcut>& shortcut, const Name& name);
    // Handlers are called in the order in which they were added, and for good.
    void onKeyDown(const Name& name, std::function<void()> handler);
    void onKeyUp(const Name& name, std::function<void()> handler);

    // The shortcut in words, as "⌃⌥⌘H"; absent without one.
    [[nodiscard]] std::optional<std::string> displayText(const Name& name) const;
    // Why the system refused the name's shortcut, as one of platform::hot_key_status; absent without one, and
    // when it did not.
    [[nodiscard]] std::optional<std::int32_t> refusal(const Name& name) const;
    // Until it is stopped, keys that go down run no handler. `onKey` gets the keys of registered shortcuts,
    // which a recorder would not see, as they go down and come up.
    void startRecording(std::function<void(const platform::KeyEvent& keys, bool isPressed)> onKey);
    void stopRecording();
    // Calls `handler` when a recorder starts and when it stops.
    platform::Subscription recorderActiveStatusDidChange(std::function<void(bool isActive)> handler) {
        return recorderChanged_.subscribe(std::move(handler));
    }
    // Calls `handler` with the raw value of every name whose shortcut changes.
    platform::Subscription shortcutByNameDidChange(std::function<void(std::string_view)> handler) {
        return changed_.subscribe(std::move(handler));
    }

  private:
    using Action = std::vector<std::function<void()>>;
    struct Actions {
        Name name;
        Action onKeyDown;
        Action onKeyUp;
    };

    Actions& actionsOf(const Name& name);
    void store(const Shortcut& shortcut, const Name& name);
    void registerShortcut(const Shortcut& shortcut);
    void letGo(const Shortcut& shortcut, const Action& onKeyUp) const;
    void unregisterUnused(const Shortcut& shortcut);
    void run(const Shortcut& shortcut, Action Actions::*which) const;
    void deliver(const platform::HotKeyEvent& event);

    Services services_;
    std::map<std::string_view, Actions> actions_;  // by the name's raw value
    std::map<Shortcut, HotKey> hotKeys_;
    std::map<Shortcut, std::int32_t> refused_;  // with the status
    std::uint32_t lastId_ = 0;
    std::function<void(const platform::KeyEvent&, bool)> onRecordedKey_;
    platform::Observers<std::string_view> changed_;
    platform::Observers<bool> recorderChanged_;
    platform::Subscription events_;
};

}  // namespace keyboard_shortcuts
