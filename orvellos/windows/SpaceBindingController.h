#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "orvellos/base/Published.h"
#include "orvellos/spaces/SpaceIdentifier.h"
#include "orvellos/tags/Tag.h"
#include "orvellos/windows/TagWindow.h"
#include "platform/Spaces.h"

namespace orvellos {

// A tag whose window is on a Space other than the stored one.
struct WindowDrift {
    TagID tagID;
    std::string storedUUID;
    std::string actualUUID;
    bool operator==(const WindowDrift&) const = default;
};

// Finds tag windows that are on another Space than theirs, and tells those that the user moved from those
// that the desktop moved.
class DriftDetector {
  public:
    struct Input {
        TagID tagID;
        std::string tagLabel;
        std::string storedUUID;
        platform::ManagedSpaceId storedManagedID;           // of the stored Space now
        std::vector<platform::ManagedSpaceId> currentPins;  // the Spaces that the window is on
        bool operator==(const Input&) const = default;
    };
    using UuidLookup = std::function<std::optional<std::string>(platform::ManagedSpaceId)>;

    // A window that is on its Space and on another one as well has drifted.
    [[nodiscard]] static std::vector<WindowDrift> detect(std::span<const Input> inputs,
                                                         const UuidLookup& spaceUUID);
    // The drifts to follow, in order: while Mission Control is, or was just, open, and each the only one
    // into its Space. A desktop that closes a Space moves all of its windows at once.
    [[nodiscard]] static std::vector<WindowDrift> acceptedDrifts(std::span<const WindowDrift> drifts,
                                                                 bool missionControlRecentlyActive);
};

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
