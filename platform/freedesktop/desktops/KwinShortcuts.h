#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/freedesktop/bus/MessageBus.h"

namespace platform::freedesktop {

// One of KWin's own shortcuts.
struct KwinShortcut {
    std::string action;       // KWin's own name for it, never translated
    std::uint32_t qtKey = 0;  // Qt's key code with its modifiers
    bool operator==(const KwinShortcut&) const = default;
};

// KWin's own shortcuts, asked of KDE's shortcut daemon.
class KwinShortcuts {
  public:
    using Callback = std::function<void(const std::vector<KwinShortcut>&)>;

    explicit KwinShortcuts(MessageBus& bus) : bus_(bus) {}

    // Delivers once, at a later turn of the main loop, unless it is asked again before. Without the daemon,
    // and until KWin has told it of its actions, it never delivers.
    void request(Callback callback);
    // Calls `action` when the user has given one of them other keys. What KWin gives them itself, when it
    // starts or loads an effect, the daemon does not announce.
    Subscription onChange(std::function<void()> action);

  private:
    MessageBus& bus_;
    Subscription call_;
};

}  // namespace platform::freedesktop
