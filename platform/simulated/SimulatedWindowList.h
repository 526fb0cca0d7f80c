#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Observers.h"
#include "platform/WindowList.h"

namespace platform::simulated {

// A window list that says what a test has put there.
class SimulatedWindowList final : public WindowList {
  public:
    void set(std::optional<std::vector<WindowInfo>> windows) { windows_ = std::move(windows); }

    [[nodiscard]] std::optional<std::vector<WindowInfo>> copyWindowsExcludingDesktopElements()
        const override {
        return windows_;
    }

  private:
    std::optional<std::vector<WindowInfo>> windows_{std::in_place};
};

// The on-screen window list in memory, empty at the start.
class SimulatedOverview final : public OnScreenWindows {
  public:
    // A window of the Dock.
    static OnScreenWindow dockWindow(std::int64_t layer, double width, double height, std::string name = "") {
        return {"Dock", layer, OnScreenBounds{40, 300, width, height}, 1, std::move(name)};
    }
    // Shows what an open Mission Control does, or nothing.
    void setOpen(bool open) {
        windows = open ? std::vector{dockWindow(17, 120, 80, "appicon")} : std::vector<OnScreenWindow>();
        changed_.notify();
    }
    // From now on those who ask to be are told of changes.
    void tellChanges() { tellsChanges_ = true; }

    std::optional<std::vector<OnScreenWindow>> windows = std::vector<OnScreenWindow>();  // absent: no answer
    mutable int reads = 0;

    [[nodiscard]] std::optional<std::vector<OnScreenWindow>> copyOnScreenWindows() const override {
        ++reads;
        return windows;
    }
    Subscription onChanged(std::function<void()> action) override {
        return tellsChanges_ ? changed_.subscribe(std::move(action)) : Subscription();
    }

  private:
    bool tellsChanges_ = false;
    Observers<> changed_;
};

}  // namespace platform::simulated
