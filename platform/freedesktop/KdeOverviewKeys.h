#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "platform/freedesktop/SessionBus.h"

namespace platform::freedesktop {

// The keys with which KWin opens its overviews, as Qt's key codes with modifiers, asked of KDE's shortcut
// daemon.
class KdeOverviewKeys {
  public:
    using Callback = std::function<void(const std::vector<std::uint32_t>& qtKeys)>;

    explicit KdeOverviewKeys(SessionBus& bus) : bus_(bus) {}

    // Delivers once, at a later turn of the main loop, unless it is asked again before. Empty without the
    // daemon, where the user has taken the keys away, and until KWin has told the daemon of its actions.
    void request(const Callback& callback);

  private:
    SessionBus& bus_;
    std::vector<Subscription> calls_;
    std::size_t answersMissing_ = 0;
    std::vector<std::uint32_t> keys_;
};

}  // namespace platform::freedesktop
