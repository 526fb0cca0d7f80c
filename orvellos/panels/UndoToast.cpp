#include "orvellos/panels/UndoToast.h"

#include <utility>

namespace orvellos {

void placeToast(platform::ToastWindow& toast, const platform::Screens& screens, double distanceFromBottom) {
    const auto screen = screens.mainScreen();
    if (!screen) return;
    const auto& area = screen->visibleFrame;
    toast.setFrameOrigin({area.midX() - toast.fittingSize().width / 2, area.minY() + distanceFromBottom});
}

void UndoToast::show(const std::string& message, std::function<void()> onUndo) {
    dismiss();
    window_ = makeWindow_({message, [this, onUndo = std::move(onUndo)]() mutable {
                               if (const auto undo = std::exchange(onUndo, nullptr)) {
                                   undo();
                                   dismiss();
                               }
                           }});
    placeToast(*window_, screens_, kDistanceFromBottom);
    window_->orderFrontRegardless();
    dismissal_ = runLoop_.after(kLifetime, [this] { dismiss(); });
}

// The press of its button may be what ends it, so it goes at a later turn.
void UndoToast::dismiss() {
    dismissal_.cancel();
    if (!window_) return;
    dismissed_ = std::move(window_);
    clearing_ = runLoop_.after(platform::Duration::zero(), [this] { dismissed_.reset(); });
}

}  // namespace orvellos
