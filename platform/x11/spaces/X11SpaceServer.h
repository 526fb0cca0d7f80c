#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/Spaces.h"
#include "platform/linux/Backoff.h"
#include "platform/x11/connection/XEvents.h"
#include "platform/x11/spaces/EwmhDesktops.h"
#include "platform/x11/spaces/EwmhSpaceLayout.h"

namespace platform::x11 {

// The Space layout for a program that runs on: read when the window manager tells of a change, at most once a
// frame, and answered from memory in between. The layout is absent while there is no window manager, while
// one takes over from another, and on KWin until the ids of its desktops have come, at first and after every
// change of them: a window that KWin takes off a desktop that goes must not seem to have been moved by the
// user. It stays what it was while the X server does not answer.
class X11SpaceServer final : public SpaceLayout, public SpaceNotifications, public DesktopSource {
  public:
    using KwinRow = std::optional<DesktopRow>;
    // Asks KWin for its desktops; the answer comes later, on the main thread. Asking again takes back a
    // question that has not been answered.
    using RequestKwinRow = std::function<void(std::function<void(KwinRow)>)>;

    X11SpaceServer(XConnection& connection, const Atoms& atoms, XEvents& events, RunLoop& runLoop,
                   RequestKwinRow requestKwinRow);

    [[nodiscard]] std::optional<ManagedDisplaySpaces> copyManagedDisplaySpaces() const override;
    Subscription onActiveSpaceChanged(std::function<void()> action) override {
        return changed_.subscribe(std::move(action));
    }
    // KWin's desktops have other numbers than when they were last known, which windows on them are not told.
    // Delivered before the change of the Spaces.
    Subscription onDesktopsRenumbered(std::function<void()> action) {
        return renumbered_.subscribe(std::move(action));
    }
    // A window manager has come, or taken over from another.
    Subscription onWindowManagerChanged(std::function<void()> action) {
        return windowManagerChanged_.subscribe(std::move(action));
    }

    [[nodiscard]] DesktopFacts facts() const override;
    // False while there is a window manager that does not say so. One that has not come yet may.
    [[nodiscard]] bool canSwitch() const override { return !desktops_ || desktops_->canSwitch; }
    // The server time of the root window's latest change.
    [[nodiscard]] xcb_timestamp_t lastTime() const override { return lastTime_; }

  private:
    void handle(const xcb_generic_event_t& event);
    void handleRootProperty(xcb_atom_t property);
    void readSoon();
    void readAfter(Duration delay);
    void read();
    void watch(xcb_window_t checkWindow);
    void handleRoot(const EwmhRoot& root);
    void askKwin();
    void handleKwinRow(KwinRow row);
    [[nodiscard]] std::optional<std::uint32_t> current() const;
    void compose();

    XConnection& connection_;
    const Atoms& atoms_;
    RunLoop& runLoop_;
    RequestKwinRow requestKwinRow_;
    xcb_window_t watched_ = XCB_WINDOW_NONE;        // the check window whose events are selected
    xcb_window_t windowManager_ = XCB_WINDOW_NONE;  // the check window of the manager that told `desktops_`
    std::optional<EwmhDesktops> desktops_;
    KwinRow kwinRow_;                      // the last that this window manager has told
    std::vector<std::string> numberedAs_;  // the last ids that any has told, in the order of the numbers
    bool kwinRowIsOld_ = false;            // the desktops have changed since KWin was last asked
    bool isCurrentOld_ = false;            // the root window's current desktop is a number from before that
    bool kwinIsAsked_ = false;
    bool started_ = false;
    std::optional<ManagedDisplaySpaces> answer_;
    xcb_timestamp_t lastTime_ = XCB_CURRENT_TIME;
    std::optional<Instant> lastRead_;
    Backoff readBackoff_;
    Backoff kwinBackoff_;
    Timer readTimer_;
    Timer settleTimer_;
    Timer kwinRetry_;
    Observers<> changed_;
    Observers<> renumbered_;
    Observers<> windowManagerChanged_;
    Subscription subscription_;
};

}  // namespace platform::x11
