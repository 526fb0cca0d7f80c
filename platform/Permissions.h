#pragma once

namespace platform {

// What the user has allowed the application to do with their system.
class Permissions {
  public:
    virtual ~Permissions() = default;
    // Whether keys may be put into the system, which switching Spaces takes.
    [[nodiscard]] virtual bool isAccessibilityTrusted() const = 0;
};

}  // namespace platform
