#pragma once

#include <string>
#include <vector>

#include "platform/Panels.h"
#include "platform/Session.h"

namespace platform::simulated {

// Permissions that a test gives and takes, and what was asked of the user, in order.
class SimulatedPermissions final : public Permissions, public ApplicationActivation {
  public:
    bool accessibilityTrusted = true;
    bool inputMonitoringTrusted = true;
    std::vector<std::string> asked;

    [[nodiscard]] bool isAccessibilityTrusted() const override { return accessibilityTrusted; }
    [[nodiscard]] bool isInputMonitoringTrusted() const override { return inputMonitoringTrusted; }
    void promptAccessibility() override { asked.emplace_back("prompt for Accessibility"); }
    void requestInputMonitoring() override { asked.emplace_back("prompt for Input Monitoring"); }

    [[nodiscard]] ActivationPolicy policy() const override { return policy_; }
    void setPolicy(ActivationPolicy policy) override {
        policy_ = policy;
        asked.emplace_back(policy == ActivationPolicy::Regular ? "regular" : "accessory");
    }
    void activate() override { asked.emplace_back("activate"); }

  private:
    ActivationPolicy policy_ = ActivationPolicy::Accessory;
};

}  // namespace platform::simulated
