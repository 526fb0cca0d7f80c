#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/Observers.h"
#include "platform/RunLoop.h"
#include "platform/Screens.h"

namespace platform::simulated {

// Screens in memory, the first of them the main one, and a pointer at the origin.
class SimulatedScreens final : public Screens {
  public:
    explicit SimulatedScreens(RunLoop& runLoop) : runLoop_(runLoop) {}

    // Adds a screen whose visible frame is its frame; its display id is the next number from 1.
    void addScreen(const Rect& frame, std::optional<std::string> displayUuid = std::nullopt);
    // Replaces the screens and tells the listeners.
    void setScreens(std::vector<Screen> screens);
    void setDisplayUuid(DisplayId display, std::string uuid) { uuids_[display] = std::move(uuid); }
    void movePointer(Point location) { pointer_ = location; }

    [[nodiscard]] std::vector<Screen> screens() const override { return screens_; }
    [[nodiscard]] std::optional<Screen> mainScreen() const override;
    [[nodiscard]] DisplayId mainDisplayId() const override;
    [[nodiscard]] std::optional<std::string> displayUuid(DisplayId display) const override;
    Subscription onParametersChanged(std::function<void()> action) override {
        return parametersChanged_.subscribe(std::move(action));
    }
    [[nodiscard]] Point pointerLocation() const override { return pointer_; }

  private:
    RunLoop& runLoop_;
    std::vector<Screen> screens_;
    std::map<DisplayId, std::string> uuids_;
    Point pointer_;
    Observers<> parametersChanged_;
};

}  // namespace platform::simulated
