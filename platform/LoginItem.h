#pragma once

#include "platform/Result.h"

namespace platform {

// Whether this application starts when the user logs in.
class LoginItem {
  public:
    virtual ~LoginItem() = default;

    [[nodiscard]] virtual bool isEnabled() const = 0;
    [[nodiscard]] virtual MaybeError enable() = 0;
    [[nodiscard]] virtual MaybeError disable() = 0;
};

}  // namespace platform
