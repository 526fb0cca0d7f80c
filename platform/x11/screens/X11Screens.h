#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/Screens.h"
#include "platform/linux/Backoff.h"
#include "platform/x11/connection/Atoms.h"
#include "platform/x11/connection/XEvents.h"
#include "platform/x11/screens/CoordinateSpace.h"

namespace platform::x11 {

// The RandR monitors, read again whenever the server tells of a change; in between every answer but the
// pointer's comes from memory. A server without monitors (RandR 1.5) has one screen, its root window.
class X11Screens final : public Screens {
  public:
    // `scale` is the desktop's device pixels per point.
    X11Screens(XConnection& connection, const Atoms& atoms, XEvents& events, RunLoop& runLoop, double scale);

    [[nodiscard]] std::vector<Screen> screens() const override { return screens_; }
    [[nodiscard]] std::optional<Screen> mainScreen() const override;
    [[nodiscard]] DisplayId mainDisplayId() const override;
    [[nodiscard]] std::optional<std::string> displayUuid(DisplayId display) const override;
    Subscription onParametersChanged(std::function<void()> action) override;
    [[nodiscard]] Point pointerLocation() const override;

    [[nodiscard]] const CoordinateSpace& coordinates() const { return coordinates_; }

  private:
    struct Monitor;
    struct Desktop;
    void selectEvents(XEvents& events);
    void handle(const xcb_generic_event_t& event);
    void readLater(Duration delay);
    void readAndTell();
    [[nodiscard]] bool read();
    void setScreens(const std::vector<Monitor>& monitors);
    [[nodiscard]] Desktop readDesktop();
    [[nodiscard]] std::vector<Monitor> readMonitors(const PixelRect& root);
    void nameMonitors(std::vector<Monitor>& monitors);
    void cutOutPanels(std::vector<Monitor>& monitors, const Desktop& desktop);

    XConnection& connection_;
    const Atoms& atoms_;
    RunLoop& runLoop_;
    double scale_;
    std::uint8_t randrEvents_ = 0;
    bool hasMonitors_ = false;
    std::vector<Screen> screens_;
    std::map<DisplayId, std::string> uuids_;
    CoordinateSpace coordinates_;
    bool workAreasDiffer_ = false;  // from desktop to desktop
    mutable Point lastLocation_;
    Observers<> changed_;
    Backoff backoff_;
    Timer readTimer_;
    Subscription subscription_;
};

}  // namespace platform::x11
