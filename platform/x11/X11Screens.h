#pragma once

#include <vector>

#include "platform/Screens.h"
#include "platform/x11/CoordinateSpace.h"
#include "platform/x11/XEvents.h"

namespace platform::x11 {

// The RandR monitors (RandR 1.5), read again whenever the server tells of a change; in between every answer
// comes from memory.
class X11Screens final : public Screens, public Pointer {
  public:
    // `scale` is the desktop's device pixels per point.
    X11Screens(XConnection& connection, XEvents& events, RunLoop& runLoop, double scale);

    [[nodiscard]] std::vector<Screen> screens() const override { return screens_; }
    [[nodiscard]] std::optional<Screen> mainScreen() const override;
    [[nodiscard]] DisplayId mainDisplayId() const override;
    [[nodiscard]] std::optional<std::string> displayUuid(DisplayId display) const override;
    Subscription onParametersChanged(std::function<void()> action) override;
    [[nodiscard]] Point location() const override;

    [[nodiscard]] const CoordinateSpace& coordinates() const { return coordinates_; }

  private:
    struct Monitor;
    void handle(const xcb_generic_event_t& event);
    void readLater();
    bool read();
    [[nodiscard]] std::optional<std::vector<Monitor>> readMonitors();
    void cutOutPanels(std::vector<Monitor>& monitors);

    XConnection& connection_;
    RunLoop& runLoop_;
    double scale_;
    std::uint8_t randrEvents_ = 0;
    xcb_atom_t workArea_ = 0;
    xcb_atom_t clientList_ = 0;
    xcb_atom_t strut_ = 0;
    xcb_atom_t strutPartial_ = 0;
    std::vector<Screen> screens_;
    CoordinateSpace coordinates_;
    mutable Point lastLocation_;
    Observers<> changed_;
    Timer readTimer_;
    Subscription subscription_;
};

}  // namespace platform::x11
