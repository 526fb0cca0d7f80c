#pragma once

namespace platform {

// What the user has allowed the application to do with their system.
class Permissions {
  public:
    virtual ~Permissions() = default;
    // Whether keys may be put into the system, which switching Spaces takes.
    [[nodiscard]] virtual bool isAccessibilityTrusted() const = 0;
    // Whether keys that are pressed in other programs may be seen.
    [[nodiscard]] virtual bool isInputMonitoringTrusted() const = 0;
};

// The system's own ways of asking the user for a permission that is missing. Both return at once; whatever
// the user answers shows in Permissions.
class PermissionPrompts {
  public:
    virtual ~PermissionPrompts() = default;
    virtual void promptAccessibility() = 0;
    virtual void requestInputMonitoring() = 0;
};

}  // namespace platform
