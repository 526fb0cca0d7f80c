#pragma once

#include <map>
#include <memory>

#include "platform/Observers.h"
#include "platform/Spaces.h"
#include "platform/x11/connection/SelectionWatch.h"
#include "platform/x11/spaces/EwmhDesktops.h"
#include "platform/x11/windows/X11TagSurface.h"

namespace platform::x11 {

// Makes the tag windows and tells on which Spaces they are; knows no windows of other programs.
class X11WindowSystem final : public WindowSystem, public WindowSpaces {
  public:
    // `desktops` answers without asking the server.
    X11WindowSystem(XConnection& connection, const Atoms& atoms, XEvents& events, RunLoop& runLoop,
                    X11Screens& screens, LayerPainter& painter, const DesktopSource& desktops);
    ~X11WindowSystem() override;
    X11WindowSystem(const X11WindowSystem&) = delete;
    X11WindowSystem& operator=(const X11WindowSystem&) = delete;

    std::unique_ptr<TagSurface> makeTagSurface(const Rect& frame, bool acceptsMouse,
                                               TagWindowDelegate& delegate) override;
    [[nodiscard]] bool takesClicksOnOutlineOnly() const override { return true; }
    [[nodiscard]] std::vector<ManagedSpaceId> copySpacesForWindow(WindowNumber window) const override;
    void addWindowToSpace(WindowNumber window, ManagedSpaceId space) override;
    // A window lives on one desktop, so adding it elsewhere has removed it already.
    void removeWindowFromSpace(WindowNumber window, ManagedSpaceId space) override;

    // Tells which overview the desktop shows. The windows that take no mouse become windows that this
    // overview draws in front of all else.
    void setOverview(OverviewKind kind);
    // Tells whether the desktop has an overview. Without one the windows that take no mouse are not mapped
    // while they are invisible.
    void setOverviewMayOpen(bool may);
    // To be called when the desktops have other numbers: a window's Spaces are unknown until it is put on one
    // again.
    void desktopsWereRenumbered();
    // Tells at once and on every change whether a compositor shows the windows.
    Subscription followCompositing(const std::function<void(bool isComposited)>& action);
    // Tells a window manager that has taken over from another the states of the tag windows.
    void reassertStates();

  private:
    void chooseVisual();
    void showOpenHand();
    void handle(const xcb_generic_event_t& event);
    void followCompositor(bool composited);
    void refresh();
    void surroundingsChanged();
    [[nodiscard]] X11TagSurface* find(WindowNumber window) const;

    TagSurfaceContext context_;
    std::map<xcb_window_t, X11TagSurface*> surfaces_;
    FullScreenWindows fullScreenWindows_;
    Subscription events_;
    Subscription screensChanged_;
    Observers<bool> compositingChanged_;
    SelectionWatch compositor_;
    Timer compositorStarts_;
    Timer cursorTimer_;
};

}  // namespace platform::x11
