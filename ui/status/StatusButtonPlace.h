#pragma once

#include <optional>
#include <string>

#include "orvellos/settings/AnchoredPosition.h"
#include "platform/Files.h"
#include "platform/Screens.h"

namespace ui {

// Where on the screens the status button is: where the user has put it last, as far from the same edges of
// the same screen, and on the main screen while that one is not there; at first in the lower right corner,
// away from the buttons in windows' title bars. It is always in sight.
class StatusButtonPlace {
  public:
    // The screens outlive the place.
    explicit StatusButtonPlace(const platform::Screens& screens);

    // Goes by what is stored there, and stores there what the user does. The store outlives the place.
    void rememberIn(platform::DefaultsStore& defaults);
    // For a button of that size; absent while there is no screen.
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
