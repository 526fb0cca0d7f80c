#include "orvellos/panels/Toasts.h"

#include <utility>

namespace orvellos {

namespace {

// In the middle of the main screen, that many points above the bottom of its visible frame; a toast stays
// where it is when there is no screen.
void place(platform::ToastWindow& toast, const platform::Screens& screens, double distanceFromBottom) {
    const auto screen = screens.mainScreen();
    if (!screen) return;
    const auto& area = screen->visibleFrame;
    toast.setFrameOrigin({area.midX() - toast.fittingSize().width / 2, area.minY() + distanceFromBottom});
}

}  // namespace

void UndoToast::show(const std::string& message, std::function<void()> onUndo) {
    dismiss();
    window_ = host_.makeToast({message, [this, onUndo = std::move(onUndo)]() mutable {
                                   if (const auto undo = std::exchange(onUndo, nullptr)) {
                                       undo();
                                       dismiss();
                                   }
                               }});
    place(*window_, screens_, kDistanceFromBottom);
    window_->orderFrontRegardless();
    dismissal_ = runLoop_.after(kLifetime, [this] { dismiss(); });
}

// The press of its button may be what ends it.
void UndoToast::dismiss() {
    dismissal_.cancel();
    if (window_) dismissed_.add(std::move(window_));
}

void WaitingNote::show(const std::string& message) {
    window_ = host_.makeToast({.message = message});
    place(*window_, screens_, kDistanceFromBottom);
    window_->orderFrontRegardless();
}

}  // namespace orvellos
