#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "KeyboardShortcuts/Registry.h"
#include "platform/Keys.h"
#include "platform/Panels.h"

namespace keyboard_shortcuts {

// Tells which keys the application itself uses.
class KeyUses {
  public:
    virtual ~KeyUses() = default;
    // The title of what is done on these keys, other than by that name; absent when nothing is.
    [[nodiscard]] virtual std::optional<std::string> useOf(const platform::KeyEvent& keys,
                                                           const Name& name) const = 0;
};

// The logic of a field in which the user presses the keys that are to be a name's shortcut. Main thread only.
class Recorder {
  public:
    // The registry outlives the recorder's alerts, too.
    struct Services {
        Registry& registry;
        const platform::KeyNames& keyNames;
        platform::SystemShortcuts& systemShortcuts;
        platform::Alerts& alerts;
        const KeyUses& ownUses;
    };
    Recorder(const Services& services, const Name& name);
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    // Takes the next keys, even those of other shortcuts, until the user has chosen or the recording is
    // ended.
    void begin();
    void end();
    [[nodiscard]] bool isRecording() const { return isRecording_; }

    // False for a key that the recorder leaves to others: Tab, and every key while it does not record.
    // Modifier keys are not to be passed. Captured keys count when the key comes up, for a held key must not
    // act at once.
    bool keyDown(const platform::KeyEvent& keys);
    void keyUp();
    // The user's wish to have no shortcut.
    void clear();

    // The field's text: the shortcut, or the one that is being recorded; empty without one.
    [[nodiscard]] std::string text() const;
    [[nodiscard]] std::string_view placeholder() const;
    // Why the keys that were pressed last, or the shortcut, do not work; empty when they do.
    [[nodiscard]] std::string warning() const;
    // Called whenever the field may have to show something else.
    platform::Subscription subscribe(std::function<void()> callback) {
        return changed_.subscribe(std::move(callback));
    }

  private:
    void choose(const Shortcut& shortcut);
    void warnOfOwnUse(const Shortcut& shortcut, const std::string& title);
    void warnOfSystemUse(const Shortcut& shortcut, const std::string& action);
    [[nodiscard]] std::string shown(const Shortcut& shortcut) const;

    Services services_;
    Name name_;
    bool isRecording_ = false;
    std::optional<Shortcut> captured_;    // while its key is down
    std::optional<Shortcut> checked_;     // while the system is asked about it
    std::optional<Shortcut> disallowed_;  // pressed last
    platform::Observers<> changed_;
    platform::Subscription registryChanges_;
    platform::Subscription systemAnswer_;
};

}  // namespace keyboard_shortcuts
