#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "orvellos/base/Published.h"
#include "orvellos/spaces/SpaceIdentifier.h"
#include "orvellos/tags/Tag.h"
#include "orvellos/windows/DriftDetector.h"
#include "orvellos/windows/TagWindow.h"

namespace orvellos {

// What a binding controller is given by its owner.
struct BindingCallbacks {
    std::function<std::vector<Tag>()> tagsProvider;
    std::function<TagWindow*(const TagID&)> windowFor;  // null for a tag without a window
    std::function<void(const TagID&, const std::string& spaceUUID)> updateSpaceUUIDInStore;
    std::function<void(const TagID&)> clearFrameInStore;
    std::function<void()> refreshTagsFromStore;
    std::function<void()> reconcile;
    std::function<bool()> missionControlRecentlyActive;
};

// Keeps tag windows and stored bindings in agreement: pins every window to its tag's Space, lets the binding
// follow a window that the user moved, knows the tags whose Space is gone, and takes back saved places that
// lie on no screen. Owns no tags. Main thread only.
class SpaceBindingController {
  public:
    SpaceBindingController(const SpaceIdentifier& spaces, const platform::Screens& screens,
                           platform::RunLoop& runLoop, BindingCallbacks callbacks)
        : spaces_(spaces), screens_(screens), runLoop_(runLoop), callbacks_(std::move(callbacks)) {}

    // Follows the drifts to accept, then pins every window.
    void relocate();
    // Pins every tag window, and its backup, that is not on its stored Space.
    void enforce();
    [[nodiscard]] std::vector<WindowDrift> detectDrifts() const;

    // Finds the tags whose Space does not exist; while no Space can be listed the set stays as it is.
    void recomputeSpaceOrphans();
    // The same a moment later, once for a burst of calls, with a visibility pass when the set changed.
    void scheduleOrphanRecompute();
    void cancelTimers() { orphanRecomputeDebounce_.cancel(); }
    [[nodiscard]] Published<std::set<TagID>>& orphanedTagIDs() { return orphanedTagIDs_; }

    // Takes saved places away whose centre is on no screen. Without any screen nothing is touched: that is
    // how a screen looks that is being switched.
    void healOrphanedDetachedTags();

  private:
    void follow(const WindowDrift& drift);
    void pin(const Tag& tag, platform::WindowNumber window, platform::ManagedSpaceId space,
             const char* which);

    const SpaceIdentifier& spaces_;
    const platform::Screens& screens_;
    platform::RunLoop& runLoop_;
    BindingCallbacks callbacks_;
    Published<std::set<TagID>> orphanedTagIDs_;
    platform::Timer orphanRecomputeDebounce_;
};

}  // namespace orvellos
