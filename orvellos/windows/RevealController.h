#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "orvellos/settings/Settings.h"
#include "orvellos/tags/Tag.h"
#include "orvellos/tags/TagStyle.h"
#include "orvellos/windows/TagWindow.h"
#include "platform/RunLoop.h"

namespace orvellos {

// What a reveal controller is given by its owner.
struct RevealCallbacks {
    std::function<std::vector<Tag>()> tagsProvider;
    std::function<TagWindow*(const Tag&)> windowFor;  // null for a tag without a window
    std::function<platform::Rect(const Tag&, TagSize)> homeTargetFrame;
    std::function<void()> reconcile;
};

// Keeps the two short-lived states that show tags which the visibility mode hides: Mission Control, and the
// reveal of a moment, which ends by itself unless it is locked. Decides nothing about any tag. Main thread
// only.
class RevealController {
  public:
    static constexpr platform::Duration kGlance = platform::seconds(0.25);
    static constexpr platform::Duration kAfterPeek = platform::seconds(1.5);
    static constexpr platform::Duration kLockSafetyTimeout = platform::seconds(10);

    RevealController(platform::RunLoop& runLoop, Settings& settings, RevealCallbacks callbacks,
                     platform::Duration lockSafetyTimeout = kLockSafetyTimeout)
        : runLoop_(runLoop),
          settings_(settings),
          callbacks_(std::move(callbacks)),
          lockSafetyTimeout_(lockSafetyTimeout) {}

    bool missionControlActive = false;  // written by the owner
    [[nodiscard]] bool transientRevealActive() const { return transientRevealActive_; }

    // Reveals the tags: for a glance, or until it is unlocked. A lock that is held stays.
    void beginTransientReveal(bool lock);
    // Ends a locked reveal when `delay` has passed; nothing when there is none.
    void unlockTransientReveal(platform::Duration delay = kGlance);
    // Lays every tag window out for this size, at its place.
    void applySize(TagSize size, bool animate);
    // The same for the user's size, animated.
    void applyEffectiveSize();
    void cancelTimers();

  private:
    void scheduleAutoHide(platform::Duration delay);
    void autoHide();
    void forceUnlock();

    platform::RunLoop& runLoop_;
    Settings& settings_;
    RevealCallbacks callbacks_;
    const platform::Duration lockSafetyTimeout_;
    bool transientRevealActive_ = false;
    bool transientRevealLocked_ = false;
    platform::Timer transientRevealTimer_;
    platform::Timer lockSafetyTimer_;
};

}  // namespace orvellos
