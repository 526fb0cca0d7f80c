#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "platform/Keys.h"
#include "platform/x11/input/KeyChord.h"
#include "platform/x11/input/RawInput.h"
#include "platform/x11/input/X11Keyboard.h"

namespace platform::x11 {

// Watches the keys through the server's raw events, without a grab. It repeats a held key as the server does
// for the program that has the keyboard, because raw events leave repeats out.
class X11KeyMonitor final : public KeyMonitor {
  public:
    // `ownWindowHasFocus` says whether this program has the keyboard, without asking the server; empty: it
    // never has.
    X11KeyMonitor(RawInput& input, const X11Keyboard& keyboard, RunLoop& runLoop,
                  std::function<bool()> ownWindowHasFocus = nullptr);

    Subscription addGlobalKeyDownMonitor(std::function<void(const KeyEvent&)> handler) override;

    // Replaces the desktop's own shortcuts.
    void setShortcuts(std::vector<TranslatedShortcut> shortcuts) { shortcuts_ = std::move(shortcuts); }

  private:
    void handle(const RawInputEvent& event);
    void press(std::uint32_t key);
    void release(std::uint32_t key);
    void repeat();
    void reportPress(std::uint32_t key);
    void report(const KeyEvent& event);
    // Absent for a key that is none of the desktop's shortcuts.
    [[nodiscard]] std::optional<KeyEvent> meaningOf(std::uint32_t key, KeyChord::When when) const;

    RawInput& input_;
    const X11Keyboard& keyboard_;
    RunLoop& runLoop_;
    std::function<bool()> ownWindowHasFocus_;
    std::vector<TranslatedShortcut> shortcuts_;
    std::uint32_t tappedKey_ = 0;  // the latest press, with nothing after it
    std::uint32_t heldKey_ = 0;    // the key that repeats
    Instant heldSince_;
    Timer repeatTimer_;
    Observers<const KeyEvent&> handlers_;
    Subscription events_;
};

}  // namespace platform::x11
