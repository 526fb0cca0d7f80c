#pragma once

#include <functional>
#include <optional>
#include <utility>

#include "orvellos/SpaceIdentifier.h"
#include "orvellos/TagManager.h"
#include "platform/RunLoop.h"
#include "platform/RunningApplications.h"

namespace orvellos {

// The life of the running application: lets only one instance run, starts the core, and stops it at the end.
class AppDelegate {
  public:
    struct Services {
        const SpaceIdentifier& spaces;
        platform::RunLoop& runLoop;
        platform::RunningApplications& applications;
        // Called once, when the core starts: only then the user's tags are loaded. The manager outlives the
        // delegate.
        std::function<TagManager&()> makeTagManager;
        std::function<void()> terminate;  // ends this application
    };
    explicit AppDelegate(Services services) : services_(std::move(services)) {}

    // Starts the core, at once or when another instance has ended. When it stays, this application ends.
    void applicationDidFinishLaunching();
    // Nothing is saved here: every change was written when it was made.
    void applicationWillTerminate();

  private:
    [[nodiscard]] std::optional<platform::ProcessId> findOtherInstance() const;
    void waitForExit(platform::ProcessId other, platform::Instant deadline);
    void deferTo(platform::ProcessId other);
    void startCore();
    void probeSpaceReader() const;

    Services services_;
    TagManager* tagManager_ = nullptr;  // from the start of the core on
    bool coreStarted_ = false;
    platform::Timer waiting_;
};

}  // namespace orvellos
