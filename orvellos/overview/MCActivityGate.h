#pragma once

#include <optional>

#include "platform/RunLoop.h"

namespace orvellos {

// Remembers whether Mission Control is open and when it last closed.
struct MCActivityGate {
    static constexpr platform::Duration kRecently = platform::seconds(2);

    bool isActive = false;
    std::optional<platform::Instant> lastCloseAt;

    void update(bool active, platform::Instant now) {
        if (!active && isActive) lastCloseAt = now;
        isActive = active;
    }
    // Open, or closed at most two seconds ago.
    [[nodiscard]] bool wasActiveRecently(platform::Instant now) const {
        return isActive || (lastCloseAt && now >= *lastCloseAt && now - *lastCloseAt <= kRecently);
    }
};

}  // namespace orvellos
