#pragma once

#include <optional>
#include <string>

#include "orvellos/settings/AnchoredPosition.h"
#include "platform/Files.h"
#include "platform/Screens.h"

namespace ui {

// The place of the status button: where the user put it last, as far from the same edges of the same screen,
// or of the main screen while that screen is missing; at first the lower right corner, away from the buttons
// in windows' title bars. It is always in sight.
class StatusButtonPlace {
  public:
    explicit StatusButtonPlace(const platform::Screens& screens);

    // Takes the place from the store, and keeps it there from now on.
    void rememberIn(platform::DefaultsStore& defaults);
    // The frame of a button of that size; absent while there is no screen.
    [[nodiscard]] std::optional<platform::Rect> frame(platform::Size size) const;
    // The user has put the button there.
    void put(const platform::Rect& frame);

  private:
    [[nodiscard]] std::optional<platform::Screen> nearestScreen(platform::Point place) const;
    [[nodiscard]] std::optional<platform::Screen> screenOf(const std::string& display) const;

    const platform::Screens& screens_;
    platform::DefaultsStore* defaults_ = nullptr;
    std::string display_;
    orvellos::AnchoredPosition corner_;  // of the button's corner that is nearest to the edges
};

}  // namespace ui
