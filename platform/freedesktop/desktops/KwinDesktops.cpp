#include "platform/freedesktop/desktops/KwinDesktops.h"

#include <utility>

namespace platform::freedesktop {

Subscription KwinDesktops::request(Callback callback) {
    return bus_.call(kwinDesktopsCall(), [callback = std::move(callback)](const auto& answer) {
        callback(answer ? kwinDesktopRow(*answer) : std::nullopt);
    });
}

}  // namespace platform::freedesktop
