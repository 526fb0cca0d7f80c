#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Panels.h"
#include "platform/RunLoop.h"
#include "platform/Screens.h"

namespace orvellos {

// What a toast shows: a message, and a button that takes back what it tells of.
struct UndoToastView {
    static constexpr std::string_view kButton = "Undo";

    std::string message;
    std::function<void()> onUndo = nullptr;  // none: there is no button
};

using MakeToastWindow = std::function<std::unique_ptr<platform::ToastWindow>(const UndoToastView&)>;

// Puts a toast in the middle of the main screen, that many points above the bottom of its visible frame; it
// stays where it is when there is no screen.
void placeToast(platform::ToastWindow& toast, const platform::Screens& screens, double distanceFromBottom);

// The note after a tag was deleted: for five seconds the user can take that back. At most one at a time.
class UndoToast {
  public:
    static constexpr platform::Duration kLifetime = platform::seconds(5);
    static constexpr double kDistanceFromBottom = 48;  // points, of the main screen's visible frame

    UndoToast(platform::RunLoop& runLoop, const platform::Screens& screens, MakeToastWindow makeWindow)
        : runLoop_(runLoop), screens_(screens), makeWindow_(std::move(makeWindow)) {}

    // Replaces the current toast. `onUndo` runs once at most.
    void show(const std::string& message, std::function<void()> onUndo);
    void dismiss();
    // Null while there is none.
    [[nodiscard]] const platform::ToastWindow* window() const { return window_.get(); }

  private:
    platform::RunLoop& runLoop_;
    const platform::Screens& screens_;
    MakeToastWindow makeWindow_;
    std::unique_ptr<platform::ToastWindow> window_;
    std::unique_ptr<platform::ToastWindow> dismissed_;
    platform::Timer dismissal_;
    platform::Timer clearing_;
};

}  // namespace orvellos
