#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "orvellos/base/DeferredDeletion.h"
#include "platform/Panels.h"
#include "platform/RunLoop.h"
#include "platform/Screens.h"

namespace orvellos {

// The content of a toast: a message, and a button that undoes the reported action.
struct UndoToastView {
    static constexpr std::string_view kButton = "Undo";

    std::string message;
    std::function<void()> onUndo = nullptr;  // without one there is no button
};

// Makes the windows of toasts.
class ToastHost {
  public:
    virtual ~ToastHost() = default;
    // A toast on the screen of its own, made off the screen.
    [[nodiscard]] virtual std::unique_ptr<platform::ToastWindow> makeToast(const UndoToastView& view) = 0;
};

// The toast after a tag was deleted: for five seconds the user can undo that. At most one at a time.
class UndoToast {
  public:
    static constexpr platform::Duration kLifetime = platform::seconds(5);
    static constexpr double kDistanceFromBottom = 48;  // points, of the main screen's visible frame

    UndoToast(platform::RunLoop& runLoop, const platform::Screens& screens, ToastHost& host)
        : runLoop_(runLoop), screens_(screens), host_(host) {}

    // Replaces the current toast. `onUndo` runs once at most.
    void show(const std::string& message, std::function<void()> onUndo);
    void dismiss();

  private:
    platform::RunLoop& runLoop_;
    const platform::Screens& screens_;
    ToastHost& host_;
    std::unique_ptr<platform::ToastWindow> window_;
    DeferredDeletion<platform::ToastWindow> dismissed_{runLoop_};
    platform::Timer dismissal_;
};

// A note that something is under way, above the place of the undo toast.
class WaitingNote {
  public:
    static constexpr double kDistanceFromBottom = 100;  // points, of the main screen's visible frame

    WaitingNote(const platform::Screens& screens, ToastHost& host) : screens_(screens), host_(host) {}

    // Replaces the current note.
    void show(const std::string& message);
    void dismiss() { window_.reset(); }

  private:
    const platform::Screens& screens_;
    ToastHost& host_;
    std::unique_ptr<platform::ToastWindow> window_;
};

}  // namespace orvellos
