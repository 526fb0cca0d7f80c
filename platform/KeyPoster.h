#pragma once

#include "platform/KeyMonitor.h"

namespace platform {

// Puts keys into the system as if the user had pressed them.
class KeyPoster {
  public:
    virtual ~KeyPoster() = default;

    enum class Direction { Down, Up };
    // False when there can be no such event; whether anybody takes it does not show here.
    [[nodiscard]] virtual bool post(const KeyEvent& event, Direction direction) = 0;
};

}  // namespace platform
