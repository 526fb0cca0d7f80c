#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/Keys.h"
#include "platform/Observers.h"
#include "platform/RunLoop.h"

namespace platform::simulated {

// A keyboard whose keys a test presses.
class SimulatedKeyboard final : public KeyMonitor {
  public:
    Subscription addGlobalKeyDownMonitor(std::function<void(const KeyEvent&)> handler) override {
        return monitors_.subscribe(std::move(handler));
    }
    void press(std::uint16_t keyCode, std::uint64_t modifierFlags = 0) {
        monitors_.notify({keyCode, modifierFlags});
    }

  private:
    Observers<const KeyEvent&> monitors_;
};

// Hot keys that a test presses and releases.
class SimulatedHotKeys final : public HotKeyService {
  public:
    [[nodiscard]] std::int32_t registerHotKey(std::uint32_t id, const KeyEvent& keys) override {
        if (takenKeyCodes.contains(keys.keyCode)) return hot_key_status::kAlreadyTaken;
        registered[id] = keys;
        return hot_key_status::kRegistered;
    }
    void unregisterHotKey(std::uint32_t id) override { registered.erase(id); }
    Subscription onHotKey(std::function<void(const HotKeyEvent&)> handler) override {
        return handlers_.subscribe(std::move(handler));
    }

    // Whether a registration with these keys was told of it.
    bool press(const KeyEvent& keys) { return tell(keys, true); }
    bool release(const KeyEvent& keys) { return tell(keys, false); }

    std::map<std::uint32_t, KeyEvent> registered;
    std::set<std::uint16_t> takenKeyCodes;  // another program has them

  private:
    bool tell(const KeyEvent& keys, bool isPressed) {
        for (const auto& [id, each] : std::map(registered)) {
            if (each != keys) continue;
            handlers_.notify({id, isPressed});
            return true;
        }
        return false;
    }

    Observers<const HotKeyEvent&> handlers_;
};

// The names of keys that a test gives.
class SimulatedKeyNames final : public KeyNames {
  public:
    [[nodiscard]] std::string textOf(std::uint16_t keyCode) const override {
        const auto found = texts.find(keyCode);
        return found == texts.end() ? std::string() : found->second;
    }
    std::map<std::uint16_t, std::string> texts = {{4, "h"}, {17, "t"}, {27, "-"}, {35, "p"}};
};

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
