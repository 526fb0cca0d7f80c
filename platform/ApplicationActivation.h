#pragma once

namespace platform {

// How much of a place the application has among those that the user works with.
enum class ActivationPolicy { Regular, Accessory };

class ApplicationActivation {
  public:
    virtual ~ApplicationActivation() = default;
    [[nodiscard]] virtual ActivationPolicy policy() const = 0;
    virtual void setPolicy(ActivationPolicy policy) = 0;
    // Brings the application's windows to the front, with the keyboard.
    virtual void activate() = 0;
};

}  // namespace platform
