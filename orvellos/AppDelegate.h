#pragma once

#include <functional>
#include <utility>

#include "orvellos/SpaceIdentifier.h"
#include "orvellos/TagManager.h"

namespace orvellos {

// The life of the running application: starts the core, and stops it at the end.
class AppDelegate {
  public:
    // `makeTagManager` is called once, when the core starts: only then the user's tags are loaded. The
    // manager outlives the delegate.
    AppDelegate(const SpaceIdentifier& spaces, std::function<TagManager&()> makeTagManager)
        : spaces_(spaces), makeTagManager_(std::move(makeTagManager)) {}

    void applicationDidFinishLaunching();
    // Nothing is saved here: every change was written when it was made.
    void applicationWillTerminate();

  private:
    void startCore();
    void probeSpaceReader() const;

    const SpaceIdentifier& spaces_;
    std::function<TagManager&()> makeTagManager_;
    TagManager* tagManager_ = nullptr;  // from the start of the core on
    bool coreStarted_ = false;
};

}  // namespace orvellos
