#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "platform/Keys.h"
#include "platform/RunLoop.h"

namespace platform::simulated {

// Shortcuts of a desktop that a test gives. Answers at the next turn.
class SimulatedSystemShortcuts final : public SystemShortcuts {
  public:
    explicit SimulatedSystemShortcuts(RunLoop& runLoop) : runLoop_(runLoop) {}

    [[nodiscard]] Subscription findUse(const KeyEvent& keys, Answer answer) override {
        return runLoop_.after(Duration::zero(), [this, keys, answer = std::move(answer)] {
            const auto found = std::ranges::find(used, keys, &std::pair<KeyEvent, std::string>::first);
            answer(found == used.end() ? std::nullopt : std::optional(found->second));
        });
    }

    std::vector<std::pair<KeyEvent, std::string>> used;

  private:
    RunLoop& runLoop_;
};

}  // namespace platform::simulated
