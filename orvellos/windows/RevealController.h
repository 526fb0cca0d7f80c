#pragma once

#include <vector>

#include "orvellos/settings/Settings.h"
#include "orvellos/tags/Tag.h"
#include "orvellos/tags/TagStyle.h"
#include "orvellos/windows/TagVisibility.h"
#include "orvellos/windows/TagWindow.h"
#include "platform/RunLoop.h"

namespace orvellos {

// The tags and their windows, as a reveal controller needs them.
class RevealedTags {
  public:
    virtual ~RevealedTags() = default;

    [[nodiscard]] virtual const std::vector<Tag>& tagsProvider() const = 0;
    // Null for a tag without a window.
    [[nodiscard]] virtual TagWindow* windowFor(const TagID& id) const = 0;
    // The frame of the tag's window at this size, at its place.
    [[nodiscard]] virtual platform::Rect homeTargetFrame(const Tag& tag, TagSize size) const = 0;
};

// Keeps the two short-lived states that show tags which the visibility mode hides: Mission Control, and the
// reveal of a moment, which ends by itself unless it is locked. Decides nothing about any tag. Main thread
// only.
class RevealController {
  public:
    static constexpr platform::Duration kGlanceDuration = platform::seconds(0.25);
    static constexpr platform::Duration kPeekHideDelay = platform::seconds(1.5);
    static constexpr platform::Duration kLockSafetyTimeout = platform::seconds(10);

    RevealController(platform::RunLoop& runLoop, Settings& settings, RevealedTags& tags,
                     Reconciler& reconciler, platform::Duration lockSafetyTimeout = kLockSafetyTimeout)
        : runLoop_(runLoop),
          settings_(settings),
          tags_(tags),
          reconciler_(reconciler),
          lockSafetyTimeout_(lockSafetyTimeout) {}

    // Whether Mission Control is on the screen, or about to be.
    [[nodiscard]] bool missionControlActive() const { return missionControlActive_; }
    void setMissionControlActive(bool active) { missionControlActive_ = active; }
    [[nodiscard]] bool transientRevealActive() const { return transientRevealActive_; }

    // Reveals the tags: for a glance, or until it is unlocked. A lock that is held stays.
    void beginTransientReveal(bool lock);
    // Ends a locked reveal when `delay` has passed; nothing when there is none.
    void unlockTransientReveal(platform::Duration delay = kGlanceDuration);
    // Lays every tag window out for this size, at its place.
    void applySize(TagSize size, bool animate);
    // The same for the user's size, animated.
    void applyEffectiveSize();
    // The same, and decides anew what each tag shows.
    void applySizeAndReconcile();
    void cancelTimers();

  private:
    void scheduleAutoHide(platform::Duration delay);
    void autoHide();
    void forceUnlock();

    platform::RunLoop& runLoop_;
    Settings& settings_;
    RevealedTags& tags_;
    Reconciler& reconciler_;
    const platform::Duration lockSafetyTimeout_;
    bool missionControlActive_ = false;
    bool transientRevealActive_ = false;
    bool transientRevealLocked_ = false;
    platform::Timer transientRevealTimer_;
    platform::Timer lockSafetyTimer_;
};

}  // namespace orvellos
