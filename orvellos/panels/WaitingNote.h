#pragma once

#include <string>
#include <utility>

#include "orvellos/panels/UndoToast.h"

namespace orvellos {

// A note that something is under way, above the place of the undo toast.
class WaitingNote {
  public:
    static constexpr double kDistanceFromBottom = 100;  // points, of the main screen's visible frame

    WaitingNote(const platform::Screens& screens, MakeToastWindow makeWindow)
        : screens_(screens), makeWindow_(std::move(makeWindow)) {}

    // Replaces the current note.
    void show(const std::string& message) {
        window_ = makeWindow_({.message = message});
        placeToast(*window_, screens_, kDistanceFromBottom);
        window_->orderFrontRegardless();
    }
    void dismiss() { window_.reset(); }

  private:
    const platform::Screens& screens_;
    MakeToastWindow makeWindow_;
    std::unique_ptr<platform::ToastWindow> window_;
};

}  // namespace orvellos
