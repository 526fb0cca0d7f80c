#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/Keys.h"
#include "platform/Panels.h"
#include "platform/System.h"

namespace platform::simulated {

// A system that lets its Spaces be switched by keys, as far as a test allows it.
class SimulatedShortcuts final : public SpaceShortcuts {
  public:
    bool canPost = true;
    std::map<int, bool> enabled;     // what is not in it the system does not say
    std::vector<KeyEvent> pressed;   // keys that went down
    mutable std::vector<int> asked;  // numbers of shortcuts, in order

    [[nodiscard]] bool post(const KeyEvent& event, Direction direction) override {
        if (canPost && direction == Direction::Down) pressed.push_back(event);
        return canPost;
    }
    [[nodiscard]] std::optional<bool> isEnabled(int number) const override {
        asked.push_back(number);
        const auto found = enabled.find(number);
        return found == enabled.end() ? std::nullopt : std::optional(found->second);
    }
};

// Alerts that stay up until a test answers them.
class SimulatedAlerts final : public Alerts {
  public:
    std::vector<Alert> shown;

    void runModal(const Alert& alert, std::function<void(std::size_t)> answered) override {
        shown.push_back(alert);
        answered_ = std::move(answered);
    }
    // Answers the last one.
    void answer(std::size_t button) { std::exchange(answered_, nullptr)(button); }

  private:
    std::function<void(std::size_t)> answered_;
};

class SimulatedUrlOpener final : public UrlOpener {
  public:
    std::vector<std::string> opened;
    void openUrl(std::string_view url) override { opened.emplace_back(url); }
};

}  // namespace platform::simulated
