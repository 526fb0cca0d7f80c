#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/System.h"
#include "platform/freedesktop/bus/MessageBus.h"

namespace platform::freedesktop {

// Updates by the system's package manager, asked through PackageKit on the system's bus.
class PackageKitUpdates final : public UpdateService {
  public:
    // `packageNames` are what this program may be called in a distribution.
    PackageKitUpdates(MessageBus& systemBus, std::vector<std::string> packageNames)
        : bus_(systemBus), packageNames_(std::move(packageNames)) {}

    // Fails where no package manager answers to PackageKit.
    void startUpdater(std::function<void(const MaybeError&)> started) override;
    // Starts PackageKit if need be.
    void checkForUpdates(std::function<void(const UpdateAnswer&)> answered) override;

  private:
    void followTransaction(const std::string& path);
    void followEnd();
    void handlePackage(const BusArguments& arguments);
    void finish(const MaybeError& error);

    MessageBus& bus_;
    std::vector<std::string> packageNames_;
    std::function<void(const UpdateAnswer&)> answered_;
    std::optional<std::string> newVersion_;
    Subscription starting_;
    Subscription question_;
    std::vector<Subscription> signals_;
};

}  // namespace platform::freedesktop
