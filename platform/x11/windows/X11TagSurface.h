#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/RunLoop.h"
#include "platform/Spaces.h"
#include "platform/Windows.h"
#include "platform/x11/windows/MouseGesture.h"
#include "platform/x11/windows/TagSurfaceContext.h"

namespace platform::x11 {

// A tag's X window: managed, of the notification type, on one desktop. Changes are collected and sent
// together at the end of the turn of the main loop, in the order that shows nothing half done: pixels, place,
// opacity, shape, mapping.
class X11TagSurface final : public TagSurface {
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

    // The desktop the window is on by its property; absent before it has one, and while the property may be
    // older than the numbers of the desktops.
    [[nodiscard]] std::optional<std::uint32_t> desktop() const { return desktop_.get(); }
    // Asks for a desktop: by the property while withdrawn, of the window manager afterwards.
    void moveToDesktop(std::uint32_t desktop);
    // The desktops have other numbers now; the window's property is as it was.
    void desktopsWereRenumbered() { desktop_.outdate(); }
    void handle(const xcb_generic_event_t& event);
    // A compositor came or went, or the coordinates changed: draws and places the window anew.
    void refresh();
    // The desktop shows another overview, or other windows in full screen are in front.
    void surroundingsChanged() { commitLater(); }
    // Shows the open hand where the window takes the mouse, when the hand has been loaded.
    void showCursor() const;
    // Tells a new window manager the states again.
    void reassertStates();

  private:
    // What a window is to the window manager. One that takes no mouse is in the desktop grid, which draws no
    // tags, a part of the desktop's background, and in another overview in front of what is in full screen.
    enum class Role { Tag, PartOfDesktop, OverFullScreen };
    enum class LifeCycle {
        Withdrawn,
        Withdrawing,  // until the window manager has let go of it
        Mapped,
        Managed,  // a window manager has taken it over
    };
    enum class BoundingShape { Unset, Empty, Silhouette, Whole };
    enum class InputShape { Unset, Empty, Silhouette };

    void create();
    void writeInitialProperties();
    void writeStates();
    void writeTitle();
    void writeHints();
    void commitLater();
    void commit();
    void upload();
    void releasePixels();
    void applyBoundingShape();
    void applyInputShape();
    void applyMapping();
    void applyStacking();
    void sendStacking();
    void mapUntilManaged(Duration patience);
    void raise();
    void raiseAboveWallpaper(Duration pause);
    void withdraw();
    void endWithdrawing();
    void setShape(std::uint8_t kind, const std::vector<PixelRect>& rectangles);
    void becomeManaged();
    void askForDesktop(std::uint32_t desktop);
    void readDesktop();
    void takeDesktop(std::uint32_t desktop);
    void verifyPlacement();
    // A window that can neither be seen nor clicked keeps the pixel in the middle of its place, so that
    // neither the server nor a compositor spends memory on the rest, and it still is on the same screen.
    // (KWin lets a part of the desktop keep the size that it came with.)
    [[nodiscard]] bool isParked() const {
        return alpha_ <= 0 && !acceptsMouse_ && role_ != Role::PartOfDesktop;
    }
    [[nodiscard]] bool isMapped() const {
        return state_ == LifeCycle::Mapped || state_ == LifeCycle::Managed;
    }
    [[nodiscard]] Role wantedRole() const;
    [[nodiscard]] FullScreenWindows::Subject self() const { return {window_, desktop(), placed_}; }
    [[nodiscard]] PixelRect wantedPlace() const;
    [[nodiscard]] PaintGeometry geometry() const;
    template <typename T>
    void change32(xcb_atom_t property, xcb_atom_t type, std::initializer_list<T> values);

    TagSurfaceContext& context_;
    TagWindowDelegate& delegate_;
    const bool acceptsMouse_;
    xcb_window_t window_ = 0;
    Rect frame_;
    TagLayers layers_;
    std::string title_;
    double alpha_ = 1;
    double contentScale_ = 1;
    bool ignoresMouse_ = false;
    bool orderedIn_ = false;
    LifeCycle state_ = LifeCycle::Withdrawn;
    Role role_ = Role::Tag;
    Role mappedRole_ = Role::Tag;
    bool raise_ = false;
    bool lowered_ = false;  // below all windows, since one in full screen has to cover it
    bool titleChanged_ = true;
    bool contentsChanged_ = true;
    bool silhouetteChanged_ = true;
    std::optional<PaintGeometry>
        painted_;  // what the window's pixels were drawn for; absent when it keeps none
    PixelRect placed_;
    std::optional<double> sentAlpha_;
    BoundingShape bounding_ = BoundingShape::Unset;
    InputShape input_ = InputShape::Unset;
    SpaceNumber<std::uint32_t> desktop_;
    int returns_ = 0;  // from all desktops to its own, one soon after the other
    Instant lastReturn_{};
    std::optional<PixelRect> refusedPlace_;  // where the window manager wants the window, taken as its frame
    int insistences_ = 0;                    // on the wanted frame
    MouseGesture gesture_;
    Timer commitTimer_;
    Timer stateTimer_;  // maps a mapped window again, raises a managed one, ends the withdrawing
    Timer shapeTimer_;
    Timer clearedTimer_;  // runs while the window is still there, but transparent
    Timer placementTimer_;
    Timer desktopTimer_;
};

}  // namespace platform::x11
