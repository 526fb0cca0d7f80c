#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/Result.h"

namespace platform {

// What was found when updates were looked for.
struct UpdateAnswer {
    std::optional<std::string> newVersion;  // absent when there is none
    MaybeError error;
};

// The system's way of bringing newer versions of the application.
class UpdateService {
  public:
    virtual ~UpdateService() = default;

    // Makes ready to look for updates. `started` is called once, later on the main thread, with what stands
    // in the way. Nothing is shown to the user.
    virtual void startUpdater(std::function<void(const MaybeError& error)> started) = 0;
    // Looks for a newer version, once it has started. `answered` is called once, later on the main thread,
    // unless another check is asked for before. It installs nothing.
    virtual void checkForUpdates(std::function<void(const UpdateAnswer& answer)> answered) = 0;
};

}  // namespace platform
