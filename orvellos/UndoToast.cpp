#include "orvellos/UndoToast.h"

#include <utility>

namespace orvellos {

void UndoToast::show(const std::string& message, std::function<void()> onUndo) {
    dismiss();
    window_ = makeWindow_({message, [this, onUndo = std::move(onUndo)]() mutable {
                               if (const auto undo = std::exchange(onUndo, nullptr)) {
                                   undo();
                                   dismiss();
                               }
                           }});
    if (const auto screen = screens_.mainScreen()) {
        const auto& area = screen->visibleFrame;
        window_->setFrameOrigin(
            {area.midX() - window_->fittingSize().width / 2, area.minY() + kDistanceFromBottom});
    }
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
