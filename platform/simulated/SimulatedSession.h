#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Observers.h"
#include "platform/Panels.h"
#include "platform/Session.h"

namespace platform::simulated {

// A login session whose events a test sends.
class SimulatedSession final : public SessionMonitor {
  public:
    std::optional<bool> onConsole = true;

    Subscription onEvent(std::function<void(SessionEvent)> action) override {
        return events_.subscribe(std::move(action));
    }
    [[nodiscard]] std::optional<bool> isOnConsole() const override { return onConsole; }
    void send(SessionEvent event) { events_.notify(event); }

  private:
    Observers<SessionEvent> events_;
};

// A login item that counts how often it is switched, and fails when it is told to.
class SimulatedLoginItem final : public LoginItem {
  public:
    [[nodiscard]] bool isEnabled() const override { return enabled; }
    [[nodiscard]] MaybeError enable() override { return switchTo(true); }
    [[nodiscard]] MaybeError disable() override { return switchTo(false); }

    bool enabled = false;
    int switches = 0;
    MaybeError failure;

  private:
    MaybeError switchTo(bool wanted) {
        ++switches;
        if (!failure) enabled = wanted;
        return failure;
    }
};

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
