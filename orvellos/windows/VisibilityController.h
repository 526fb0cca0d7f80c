#pragma once

#include <optional>

#include "orvellos/spaces/SpaceIdentifier.h"
#include "orvellos/windows/ClickThroughController.h"
#include "orvellos/windows/RevealController.h"
#include "orvellos/windows/SpaceBindingController.h"
#include "orvellos/windows/TagVisibility.h"
#include "orvellos/windows/TagWindows.h"

namespace orvellos {

// Decides what is seen of each tag: its window, its Mission Control backup or nothing; and which tag is the
// active one. Keeps nothing but the latter; everything else is read at every decision. Main thread only.
class VisibilityController final : public Reconciler {
  public:
    // What a decision reads and acts on.
    struct Services {
        const SpaceIdentifier& spaces;
        const Settings& settings;
        EditingContext& editingContext;
        const TagWindows& windows;
        const SpaceBindingController& binding;  // knows the orphans
        const RevealController& reveal;
        ClickThroughController& clickThrough;
    };
    // `changed` is notified when another tag becomes the active one. None of the services is asked for
    // anything before the first decision.
    VisibilityController(const Services& services, const Observers<>& changed)
        : services_(services), changed_(changed) {}

    void reconcile() override;
    // Hides at once what the first decision would fade out.
    void hideFromTheStart();
    // The tag of the current Space.
    [[nodiscard]] const std::optional<TagID>& activeTagID() const { return activeTagID_; }

  private:
    [[nodiscard]] VisibilityInputs inputs() const;
    [[nodiscard]] bool isOrphaned(const Tag& tag) const;
    void reconcileTag(const Tag& tag, const VisibilityInputs& inputs) const;
    void hideOrphan(const Tag& tag) const;
    void updateActiveTag();
    [[nodiscard]] const Tag* firstSeenTag() const;

    Services services_;
    const Observers<>& changed_;
    std::optional<TagID> activeTagID_;
};

}  // namespace orvellos
