#pragma once

#include <optional>
#include <string>

#include "orvellos/Settings.h"
#include "orvellos/SpaceIdentifier.h"
#include "orvellos/Tag.h"
#include "orvellos/TagSize.h"
#include "platform/Screens.h"
#include "platform/TextMeasurer.h"

namespace orvellos {

// Decides where on which screen a tag window belongs. Keeps no state: the shared position is a setting, a
// tag's own frame is in the tag.
class PositionController {
  public:
    PositionController(const SpaceIdentifier& spaces, const platform::Screens& screens,
                       const platform::TextMeasurer& textMeasurer, const Settings& settings)
        : spaces_(spaces), screens_(screens), textMeasurer_(textMeasurer), settings_(settings) {}

    // The screen that shows the tag's Space; none while the screens share their Spaces.
    [[nodiscard]] std::optional<platform::Screen> preferredScreen(const Tag& tag) const;
    // The frame of the tag's window at this size: around its own saved frame's centre, or at the shared
    // position on its screen, or else around the centre of the present frame.
    [[nodiscard]] platform::Rect homeTargetFrame(const Tag& tag, TagSize size,
                                                 const platform::Rect& currentFrame) const;

  private:
    const SpaceIdentifier& spaces_;
    const platform::Screens& screens_;
    const platform::TextMeasurer& textMeasurer_;
    const Settings& settings_;
};

}  // namespace orvellos
