#pragma once

#include <memory>
#include <vector>

#include "platform/freedesktop/bus/BusService.h"
#include "platform/freedesktop/desktops/DesktopOverview.h"

namespace platform::freedesktop {

// The overview of a desktop shell that says on the session bus, in properties of its own, whether it is open,
// and that opens it when the first of them is set.
class ShellOverview final : public BusOverview {
  public:
    struct Shell {
        std::string name;
        std::string service;  // its interface's name too
        std::string path;
        std::vector<std::string> properties;
    };
    [[nodiscard]] static Shell gnomeShell();
    [[nodiscard]] static Shell cinnamon();

    ShellOverview(MessageBus& bus, Shell shell);

    [[nodiscard]] bool mayOpen() const override { return properties_.front()->isServiceRunning(); }
    [[nodiscard]] bool isOverviewOpen() const override { return isOpen_; }
    [[nodiscard]] std::string name() const override { return shell_.name; }
    [[nodiscard]] std::optional<BusCall> openingCall() const override;

  private:
    Shell shell_;
    bool isOpen_ = false;
    std::vector<std::unique_ptr<BusProperty>> properties_;
};

}  // namespace platform::freedesktop
