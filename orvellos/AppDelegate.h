#pragma once

#include "orvellos/SpaceIdentifier.h"
#include "orvellos/TagManager.h"

namespace orvellos {

// The life of the running application: starts the core, and stops it at the end.
class AppDelegate {
  public:
    AppDelegate(const SpaceIdentifier& spaces, TagManager& tagManager)
        : spaces_(spaces), tagManager_(tagManager) {}

    void applicationDidFinishLaunching();
    // Nothing is saved here: every change was written when it was made.
    void applicationWillTerminate();

  private:
    void startCore();
    void probeSpaceReader() const;

    const SpaceIdentifier& spaces_;
    TagManager& tagManager_;
    bool coreStarted_ = false;
};

}  // namespace orvellos
