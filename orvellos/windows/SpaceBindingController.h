#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "orvellos/base/Published.h"
#include "orvellos/overview/MissionControlObserver.h"
#include "orvellos/spaces/SpaceIdentifier.h"
#include "orvellos/tags/Tag.h"
#include "orvellos/windows/TagVisibility.h"
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

// Finds tag windows that are on another Space than their tag's, and tells a move by the user from one by the
// desktop.
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

// The tags and their windows, as a binding controller needs them.
class BoundTags {
  public:
    virtual ~BoundTags() = default;

    [[nodiscard]] virtual const std::vector<Tag>& tagsProvider() const = 0;
    // Null for a tag without a window.
    [[nodiscard]] virtual TagWindow* windowFor(const TagID& id) const = 0;
    virtual void updateSpaceUUIDInStore(const TagID& id, const std::string& spaceUUID) = 0;
    virtual void clearFrameInStore(const TagID& id) = 0;
    // Tells that stored tags have changed.
    virtual void refreshTagsFromStore() = 0;
};

// Keeps tag windows and stored bindings in agreement: pins every window to its tag's Space, lets the binding
// follow a window that the user moved, knows the tags whose Space is gone, and takes back saved places that
// lie on no screen. Owns no tags. Main thread only.
class SpaceBindingController {
  public:
    SpaceBindingController(const SpaceIdentifier& spaces, const platform::Screens& screens,
                           platform::RunLoop& runLoop, const MissionControlObserver& missionControl,
                           BoundTags& tags, Reconciler& reconciler)
        : spaces_(spaces),
          screens_(screens),
          runLoop_(runLoop),
          missionControl_(missionControl),
          tags_(tags),
          reconciler_(reconciler) {}

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
    [[nodiscard]] const Published<std::set<TagID>>& orphanedTagIDs() const { return orphanedTagIDs_; }

    // Clears saved frames whose centre is on no screen. Without any screen nothing is touched: a screen that
    // is being switched is gone for a moment.
    void healOrphanedDetachedTags();

  private:
    void follow(const WindowDrift& drift);
    void pin(const Tag& tag, platform::WindowNumber window, platform::ManagedSpaceId space,
             const char* which);

    const SpaceIdentifier& spaces_;
    const platform::Screens& screens_;
    platform::RunLoop& runLoop_;
    const MissionControlObserver& missionControl_;
    BoundTags& tags_;
    Reconciler& reconciler_;
    Published<std::set<TagID>> orphanedTagIDs_;
    platform::Timer orphanRecomputeDebounce_;
};

}  // namespace orvellos
