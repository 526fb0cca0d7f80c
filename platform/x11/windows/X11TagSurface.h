#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>

#include "platform/RunLoop.h"
#include "platform/Spaces.h"
#include "platform/Windows.h"
#include "platform/x11/windows/MouseGesture.h"
#include "platform/x11/windows/TagDesktop.h"
#include "platform/x11/windows/TagPixels.h"
#include "platform/x11/windows/TagPlacement.h"
#include "platform/x11/windows/TagSurfaceContext.h"
#include "platform/x11/windows/TagSurfaceOwner.h"

namespace platform::x11 {

// A tag's X window: managed, of the notification type, on one desktop. Changes are collected and sent
// together at the end of the turn of the main loop, in the order that shows nothing half done: pixels, place,
// opacity, shape, mapping.
class X11TagSurface final : public TagSurface, private TagSurfaceOwner {
  public:
    X11TagSurface(TagSurfaceContext& context, const Rect& frame, bool acceptsMouse,
                  TagWindowDelegate& delegate);
    ~X11TagSurface() override;

    [[nodiscard]] WindowNumber number() const override { return {window_}; }
    [[nodiscard]] WindowState state() const override;
    void setFrame(const Rect& frame) override;
    void setAlpha(double alpha) override;
    void setIgnoresMouseEvents(bool ignores) override;
    void setContents(const TagLayers& layers, const std::string& title) override;
    void setContentScale(double scale) override;
    void setOrderedIn(bool orderedIn) override;

    // As TagDesktop's operations.
    [[nodiscard]] std::optional<std::uint32_t> desktop() const { return desktop_.get(); }
    void moveToDesktop(std::uint32_t desktop) { desktop_.moveTo(desktop); }
    void desktopsWereRenumbered() { desktop_.outdate(); }
    void handle(const xcb_generic_event_t& event);
    // Draws and places the window anew, after a compositor has come or gone or the coordinates have changed.
    void refresh();
    // To be called when the desktop shows another overview or other windows in full screen are in front.
    void surroundingsChanged() { commitLater(); }
    // Shows the open hand where the window takes the mouse, when the hand has been loaded.
    void showCursor() const;
    // Tells a new window manager the states again.
    void reassertStates();

  private:
    // How the window manager knows the window. A window that takes no mouse is a part of the desktop's
    // background in the desktop grid, which draws no tags, and lies over full-screen windows in other
    // overviews.
    enum class Role { Tag, PartOfDesktop, OverFullScreen };
    enum class LifeCycle {
        Withdrawn,
        Withdrawing,  // unmapped, and the window manager has not let go of it yet
        Mapped,       // no window manager has taken it over yet
        Managed,
    };

    void create();
    void writeInitialProperties();
    void writeStates();
    void writeTitle();
    void commitLater() override;
    void commit();
    void applyMapping();
    void applyStacking();
    void sendStacking();
    void mapUntilManaged(Duration patience);
    void raise();
    void raiseAboveWallpaper(Duration pause);
    void withdraw();
    void endWithdrawing();
    void becomeManaged();
    // An invisible window that takes no mouse keeps the pixel in the middle of its place: it stays on its
    // screen, and neither the server nor a compositor spends memory on the rest. (KWin lets a part of the
    // desktop keep the size that it came with.)
    [[nodiscard]] bool isParked() const {
        return pixels_.alpha() <= 0 && !acceptsMouse_ && role_ != Role::PartOfDesktop;
    }
    [[nodiscard]] bool isMapped() const override {
        return state_ == LifeCycle::Mapped || state_ == LifeCycle::Managed;
    }
    [[nodiscard]] bool isAtRest() const override {
        return isMapped() && !gesture_.isHeld() && !isParked() && !commitTimer_.isActive();
    }
    [[nodiscard]] Role wantedRole() const;
    [[nodiscard]] FullScreenWindows::Subject self() const {
        return {window_, desktop(), placement_.current()};
    }
    void setProperty(Atom property, xcb_atom_t type, std::initializer_list<std::uint32_t> values) const {
        setProperty32(context_.connection, window_, context_.atoms[property], type, values);
    }

    TagSurfaceContext& context_;
    const bool acceptsMouse_;
    const xcb_window_t window_;
    TagPlacement placement_;
    TagPixels pixels_;
    TagDesktop desktop_;
    std::string title_;
    bool orderedIn_ = false;
    LifeCycle state_ = LifeCycle::Withdrawn;
    Role role_ = Role::Tag;
    Role mappedRole_ = Role::Tag;
    bool raise_ = false;
    bool lowered_ = false;  // below all windows, so that a full-screen window covers it
    bool titleChanged_ = true;
    MouseGesture gesture_;
    Timer commitTimer_;
    Timer stateTimer_;  // maps a mapped window again, raises a managed one, ends the withdrawing
};

}  // namespace platform::x11
