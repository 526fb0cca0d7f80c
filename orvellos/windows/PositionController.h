#pragma once

#include <optional>
#include <vector>

#include "orvellos/settings/Settings.h"
#include "orvellos/spaces/SpaceIdentifier.h"
#include "orvellos/tags/Tag.h"
#include "orvellos/tags/TagStyle.h"
#include "orvellos/windows/TagWindow.h"
#include "platform/Screens.h"
#include "platform/Windows.h"

namespace orvellos {

// The tags and their windows, as a position controller needs them.
class PlacedTags {
  public:
    virtual ~PlacedTags() = default;

    [[nodiscard]] virtual const std::vector<Tag>& tagsProvider() const = 0;
    // Null for a tag without a window.
    [[nodiscard]] virtual TagWindow* windowFor(const TagID& id) const = 0;
    virtual void updateFrameInStore(const TagID& id, const platform::Rect& frame) = 0;
    virtual void clearFrameInStore(const TagID& id) = 0;
    // Tells that stored tags have changed.
    virtual void refreshTagsFromStore() = 0;
    // Places the Mission Control backup of the tag's window for where the window is.
    virtual void syncMCBackup(const Tag& tag) = 0;
    virtual void syncAllMCBackups() = 0;
};

// Decides where on which screen a tag window belongs. A tag is anchored, at the one position that all such
// tags share, or detached, with a frame of its own. Keeps no state: the shared position and its screen are
// settings, a tag's own frame is in the tag.
class PositionController {
  public:
    PositionController(const SpaceIdentifier& spaces, const platform::Screens& screens,
                       const platform::TextMeasurer& textMeasurer, Settings& settings, PlacedTags& tags)
        : spaces_(spaces), screens_(screens), textMeasurer_(textMeasurer), settings_(settings), tags_(tags) {}

    // The screen that shows the tag's Space; none while the screens share their Spaces.
    [[nodiscard]] std::optional<platform::Screen> preferredScreen(const Tag& tag) const;
    // The frame of the tag's window at this size: around its own saved frame's centre, or at the shared
    // position on its screen (the preferred one, that of the position, the one under it), or else around the
    // centre of the present frame.
    [[nodiscard]] platform::Rect homeTargetFrame(const Tag& tag, TagSize size,
                                                 const platform::Rect& currentFrame) const;

    // The user dragged the tag's window there. With Shift the tag becomes detached; without, an anchored tag
    // takes the shared position along.
    void tagFrameChanged(const TagID& id, const platform::Rect& newFrame, bool shiftHeld);
    // Moves the anchored tags, but for one, to the shared position.
    void reapplyAnchoredFrames(const TagID& except);
    // Makes a detached tag anchored again.
    void relinkToSharedPosition(const TagID& id);
    // Makes this tag's place the shared position and anchors every tag.
    void alignAllToTag(const TagID& id);

  private:
    [[nodiscard]] std::optional<Tag> tag(const TagID& id) const;
    [[nodiscard]] std::optional<platform::Screen> anchorScreen(platform::Point center) const;
    void setSharedPosition(const Tag& tag, const platform::Rect& frame);
    void moveHome(const Tag& tag, TagWindow& window) const;

    const SpaceIdentifier& spaces_;
    const platform::Screens& screens_;
    const platform::TextMeasurer& textMeasurer_;
    Settings& settings_;
    PlacedTags& tags_;
};

}  // namespace orvellos
