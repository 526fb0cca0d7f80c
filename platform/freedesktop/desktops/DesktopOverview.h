#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/WindowList.h"
#include "platform/freedesktop/bus/BusMessage.h"
#include "platform/linux/OverviewSource.h"

namespace platform::freedesktop {

// An overview that belongs to a desktop on the session bus.
class BusOverview : public OverviewSource {
  public:
    // The desktop's, for people to read.
    [[nodiscard]] virtual std::string name() const = 0;
    // The call that opens it; absent while there is no such desktop.
    [[nodiscard]] virtual std::optional<BusCall> openingCall() const = 0;
};

// The desktop's overview as the application knows it: while one is open, a window of the Dock is on the
// screen that stands for a Space. Other windows are not in the list.
class DesktopOverview final : public OnScreenWindows {
  public:
    explicit DesktopOverview(std::vector<OverviewSource*> sources);

    [[nodiscard]] std::optional<std::vector<OnScreenWindow>> copyOnScreenWindows() const override;
    Subscription onChanged(std::function<void()> action) override {
        return changed_.subscribe(std::move(action));
    }
    // Tells at once and on every change whether there is anything that could open an overview.
    Subscription followMayOpen(const std::function<void(bool mayOpen)>& action);

  private:
    void update();

    std::vector<OverviewSource*> sources_;
    std::vector<Subscription> sourceChanges_;
    bool isOpen_ = false;
    bool mayOpen_ = false;
    Observers<> changed_;
    Observers<bool> mayOpenChanged_;
};

}  // namespace platform::freedesktop
