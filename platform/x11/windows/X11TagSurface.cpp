#include "platform/x11/windows/X11TagSurface.h"

#include <unistd.h>
#include <xcb/shape.h>
#include <xcb/xcb_icccm.h>

#include <array>
#include <cmath>
#include <cstring>
#include <utility>

#include "platform/x11/spaces/EwmhDesktops.h"

namespace platform::x11 {

namespace {

constexpr auto kPlacementSettles = std::chrono::milliseconds(250);
constexpr int kMostInsistences = 4;
constexpr int kMostReturns = 4;
constexpr auto kReturnsAreForgotten = std::chrono::seconds(10);
constexpr auto kManagedWithin = std::chrono::milliseconds(500);
constexpr auto kLongestManagedWithin = std::chrono::seconds(16);
constexpr auto kWithdrawnWithin = std::chrono::seconds(3);
constexpr auto kWithdrawingSettles = std::chrono::milliseconds(20);
constexpr auto kManagerHasTakenOver = std::chrono::milliseconds(400);
constexpr auto kRaisePause = std::chrono::milliseconds(100);
constexpr auto kLongestRaisePause = std::chrono::seconds(2);
constexpr auto kClearedIsDrawn = std::chrono::milliseconds(500);
// EWMH source indications. A window manager may take a raise asked for by an application for a call for
// attention; one that a pager asks for is the user's.
constexpr std::uint32_t kSourceApplication = 1;
constexpr std::uint32_t kSourcePager = 2;

}  // namespace

X11TagSurface::X11TagSurface(TagSurfaceContext& context, const Rect& frame, bool acceptsMouse,
                             TagWindowDelegate& delegate)
    : context_(context),
      delegate_(delegate),
      acceptsMouse_(acceptsMouse),
      frame_(frame),
      gesture_(context, delegate) {
    create();
    writeInitialProperties();
}

X11TagSurface::~X11TagSurface() {
    context_.forget(window_);
    xcb_destroy_window(context_.connection.get(), window_);
    context_.connection.flush();
}

void X11TagSurface::create() {
    auto* connection = context_.connection.get();
    window_ = xcb_generate_id(connection);
    placed_ = wantedPlace();
    constexpr std::uint32_t mask =
        XCB_CW_BACK_PIXMAP | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP | XCB_CW_CURSOR;
    const std::array<std::uint32_t, 5> values = {
        XCB_BACK_PIXMAP_NONE, 0,
        XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_BUTTON_1_MOTION |
            XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE,
        context_.colormap, acceptsMouse_ ? context_.openHand : xcb_cursor_t{0}};
    xcb_create_window(connection, context_.depth, window_, context_.connection.root(),
                      static_cast<std::int16_t>(placed_.x), static_cast<std::int16_t>(placed_.y),
                      static_cast<std::uint16_t>(placed_.width), static_cast<std::uint16_t>(placed_.height),
                      0, XCB_WINDOW_CLASS_INPUT_OUTPUT, context_.visual, mask, values.data());
}

void X11TagSurface::showCursor() const {
    const std::uint32_t cursor = context_.openHand;
    if (acceptsMouse_)
        xcb_change_window_attributes(context_.connection.get(), window_, XCB_CW_CURSOR, &cursor);
}

template <typename T>
void X11TagSurface::change32(xcb_atom_t property, xcb_atom_t type, std::initializer_list<T> values) {
    static_assert(sizeof(T) == 4);
    xcb_change_property(context_.connection.get(), XCB_PROP_MODE_REPLACE, window_, property, type, 32,
                        static_cast<std::uint32_t>(values.size()), values.begin());
}

void X11TagSurface::writeInitialProperties() {
    const auto& atoms = context_.atoms;
    change32(atoms[Atom::WmProtocols], XCB_ATOM_ATOM, {atoms[Atom::WmDeleteWindow], atoms[Atom::NetWmPing]});
    change32(atoms[Atom::NetWmUserTime], XCB_ATOM_CARDINAL, {0U});
    change32(atoms[Atom::NetWmPid], XCB_ATOM_CARDINAL, {static_cast<std::uint32_t>(getpid())});
    change32(atoms[Atom::MotifWmHints], atoms[Atom::MotifWmHints],
             {3U, 0U, 0U, 0U, 0U});  // no functions, no decorations
    auto* connection = context_.connection.get();
    xcb_icccm_wm_hints_t hints{};
    xcb_icccm_wm_hints_set_input(&hints, 0);
    xcb_icccm_set_wm_hints(connection, window_, &hints);
    constexpr std::string_view wmClass("orvello\0orvellos\0", 17);
    xcb_icccm_set_wm_class(connection, window_, wmClass.size(), wmClass.data());
    std::array<char, 256> host{};
    if (gethostname(host.data(), host.size() - 1) == 0)
        xcb_icccm_set_wm_client_machine(connection, window_, XCB_ATOM_STRING, 8,
                                        static_cast<std::uint32_t>(std::strlen(host.data())), host.data());
    writeHints();
}

// A window manager removes these from a window that is withdrawn (EWMH, ICCCM 4.1.4).
void X11TagSurface::writeStates() {
    const auto& atoms = context_.atoms;
    if (role_ == Role::OverFullScreen)
        change32(
            atoms[Atom::NetWmWindowType], XCB_ATOM_ATOM,
            {atoms[Atom::KdeNetWmWindowTypeCriticalNotification], atoms[Atom::NetWmWindowTypeNotification]});
    else
        change32(atoms[Atom::NetWmWindowType], XCB_ATOM_ATOM,
                 {role_ == Role::PartOfDesktop ? atoms[Atom::NetWmWindowTypeDesktop]
                                               : atoms[Atom::NetWmWindowTypeNotification]});
    change32(atoms[Atom::NetWmState], XCB_ATOM_ATOM,
             {lowered_ ? atoms[Atom::NetWmStateBelow] : atoms[Atom::NetWmStateAbove],
              atoms[Atom::NetWmStateSkipTaskbar], atoms[Atom::NetWmStateSkipPager],
              atoms[Atom::KdeNetWmStateSkipSwitcher]});
    if (const auto own = desktop_.wanted()) change32(atoms[Atom::NetWmDesktop], XCB_ATOM_CARDINAL, {*own});
}

// The place and size are meant: as the user's own they are kept by every window manager.
void X11TagSurface::writeHints() {
    xcb_size_hints_t hints{};
    hints.flags = XCB_ICCCM_SIZE_HINT_US_POSITION | XCB_ICCCM_SIZE_HINT_US_SIZE |
                  XCB_ICCCM_SIZE_HINT_P_POSITION | XCB_ICCCM_SIZE_HINT_P_SIZE |
                  XCB_ICCCM_SIZE_HINT_P_WIN_GRAVITY;
    hints.x = placed_.x;
    hints.y = placed_.y;
    hints.width = placed_.width;
    hints.height = placed_.height;
    hints.win_gravity = XCB_GRAVITY_STATIC;
    xcb_icccm_set_wm_normal_hints(context_.connection.get(), window_, &hints);
}

void X11TagSurface::writeTitle() {
    auto* connection = context_.connection.get();
    const auto length = static_cast<std::uint32_t>(title_.size());
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window_, context_.atoms[Atom::NetWmName],
                        context_.atoms[Atom::Utf8String], 8, length, title_.data());
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_NAME,
                        context_.atoms[Atom::Utf8String], 8, length, title_.data());
    titleChanged_ = false;
}

WindowState X11TagSurface::state() const {
    const auto current = context_.currentDesktop();
    const auto own = desktop();
    const bool onActiveSpace = own && (own == kEveryDesktop || own == current);
    return {orderedIn_, onActiveSpace, orderedIn_ && onActiveSpace && alpha_ > 0};
}

void X11TagSurface::setFrame(const Rect& frame) {
    frame_ = frame;
    refusedPlace_.reset();
    insistences_ = 0;
    commitLater();
}

void X11TagSurface::setAlpha(double alpha) {
    const double before = std::exchange(alpha_, std::clamp(alpha, 0.0, 1.0));
    if (alpha_ != before) commitLater();
}

void X11TagSurface::setIgnoresMouseEvents(bool ignores) {
    if (std::exchange(ignoresMouse_, ignores) != ignores) commitLater();
}

void X11TagSurface::setContents(const TagLayers& layers, const std::string& title) {
    titleChanged_ = titleChanged_ || title != title_;
    contentsChanged_ = contentsChanged_ || layers != layers_;
    silhouetteChanged_ = silhouetteChanged_ || layers.tintLayer != layers_.tintLayer;
    layers_ = layers;
    title_ = title;
    commitLater();
}

void X11TagSurface::setContentScale(double scale) {
    contentScale_ = scale;
    commitLater();
}

void X11TagSurface::setOrderedIn(bool orderedIn) {
    orderedIn_ = orderedIn;
    raise_ = orderedIn;
    commitLater();
}

void X11TagSurface::refresh() {
    insistences_ = 0;
    contentsChanged_ = true;
    silhouetteChanged_ = true;
    commitLater();
}

X11TagSurface::Role X11TagSurface::wantedRole() const {
    if (acceptsMouse_ || context_.overview == OverviewKind::None) return Role::Tag;
    if (context_.overview == OverviewKind::DesktopGrid) return Role::PartOfDesktop;
    return context_.fullScreenWindows->covers(self()) ? Role::OverFullScreen : Role::Tag;
}

PixelRect X11TagSurface::wantedPlace() const {
    const auto place = context_.screens.coordinates().toPixels(frame_);
    if (!isParked()) return place;
    return {place.x + place.width / 2, place.y + place.height / 2, 1, 1};
}

PaintGeometry X11TagSurface::geometry() const {
    return {placed_.width, placed_.height, context_.screens.coordinates().scale(), contentScale_};
}

void X11TagSurface::commitLater() {
    if (!commitTimer_.isActive())
        commitTimer_ = context_.runLoop.after(Duration::zero(), [this] { commit(); });
}

void X11TagSurface::commit() {
    commitTimer_ = {};
    role_ = wantedRole();
    if (titleChanged_) writeTitle();
    const auto place = wantedPlace();
    const bool moved = place != placed_;
    silhouetteChanged_ = silhouetteChanged_ || place.width != placed_.width || place.height != placed_.height;
    placed_ = place;
    const bool repaint = alpha_ > 0 && (contentsChanged_ || painted_ != geometry());
    if (repaint) {
        silhouetteChanged_ = silhouetteChanged_ || !painted_ || painted_->contentScale != contentScale_;
        upload();
    }
    auto* connection = context_.connection.get();
    if (moved) {
        writeHints();
        constexpr std::uint16_t mask =
            XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT;
        const std::array<std::int32_t, 4> values = {place.x, place.y, place.width, place.height};
        xcb_configure_window(connection, window_, mask, values.data());
    }
    if (alpha_ > 0 && sentAlpha_ != alpha_) {
        change32(context_.atoms[Atom::NetWmWindowOpacity], XCB_ATOM_CARDINAL,
                 {static_cast<std::uint32_t>(std::lround(alpha_ * 4294967295.0))});
        sentAlpha_ = alpha_;
    }
    if (alpha_ > 0) clearedTimer_.cancel();
    if (alpha_ <= 0 && painted_) releasePixels();
    applyBoundingShape();
    applyInputShape();
    silhouetteChanged_ = false;
    if (repaint) xcb_clear_area(connection, 0, window_, 0, 0, 0, 0);
    applyMapping();
    applyStacking();
    context_.connection.flush();
}

void X11TagSurface::upload() {
    auto* connection = context_.connection.get();
    const auto image = context_.painter.paint(layers_, geometry(), context_.composited);
    const xcb_pixmap_t pixmap = xcb_generate_id(connection);
    const auto width = static_cast<std::uint16_t>(image.width);
    xcb_create_pixmap(connection, context_.depth, pixmap, window_, width,
                      static_cast<std::uint16_t>(image.height));
    const xcb_gcontext_t gc = xcb_generate_id(connection);
    xcb_create_gc(connection, gc, pixmap, 0, nullptr);
    // A request carries a bounded number of bytes, so tall images travel in bands.
    const auto most = static_cast<std::int32_t>(xcb_get_maximum_request_length(connection)) - 64;
    const auto band = std::max(most / std::max(image.width, 1), 1);
    for (std::int32_t y = 0; y < image.height; y += band) {
        const auto rows = std::min(band, image.height - y);
        const auto first = static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width);
        const auto count = static_cast<std::uint32_t>(rows * image.width * 4);
        xcb_put_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, gc, width,
                      static_cast<std::uint16_t>(rows), 0, static_cast<std::int16_t>(y), 0, context_.depth,
                      count, reinterpret_cast<const std::uint8_t*>(image.pixels.data() + first));
    }
    xcb_change_window_attributes(connection, window_, XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_free_gc(connection, gc);
    xcb_free_pixmap(connection, pixmap);
    painted_ = geometry();
    contentsChanged_ = false;
}

// A compositor's overview draws what it last saw of a window, and does not look again at one that has become
// nothing. So the window is seen cleared for a while before it does.
void X11TagSurface::releasePixels() {
    const std::uint32_t transparent = 0;
    xcb_change_window_attributes(context_.connection.get(), window_, XCB_CW_BACK_PIXEL, &transparent);
    painted_.reset();
    if (!context_.composited) return;
    xcb_clear_area(context_.connection.get(), 0, window_, 0, 0, 0, 0);
    clearedTimer_ = context_.runLoop.after(kClearedIsDrawn, [this] {
        clearedTimer_.cancel();
        commitLater();
    });
}

void X11TagSurface::applyBoundingShape() {
    const bool nothing = alpha_ <= 0 && !(context_.composited && clearedTimer_.isActive());
    const auto wanted = nothing               ? BoundingShape::Empty
                        : context_.composited ? BoundingShape::Whole
                                              : BoundingShape::Silhouette;
    if (wanted == bounding_ && !(wanted == BoundingShape::Silhouette && silhouetteChanged_)) return;
    bounding_ = wanted;
    if (wanted == BoundingShape::Whole) {
        xcb_shape_mask(context_.connection.get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, window_, 0, 0,
                       XCB_PIXMAP_NONE);
    } else if (wanted == BoundingShape::Silhouette) {
        setShape(XCB_SHAPE_SK_BOUNDING, context_.painter.silhouette(layers_, geometry()));
    } else {
        setShape(XCB_SHAPE_SK_BOUNDING, {});
    }
}

void X11TagSurface::applyInputShape() {
    // A press that has begun keeps the pointer until its release, whatever the shape.
    const auto wanted = acceptsMouse_ && !ignoresMouse_ ? InputShape::Silhouette : InputShape::Empty;
    if (wanted == input_ && !(wanted == InputShape::Silhouette && silhouetteChanged_)) return;
    input_ = wanted;
    auto natural = geometry();
    natural.contentScale = 1;
    setShape(XCB_SHAPE_SK_INPUT, wanted == InputShape::Silhouette
                                     ? context_.painter.silhouette(layers_, natural)
                                     : std::vector<PixelRect>{});
}

void X11TagSurface::setShape(std::uint8_t kind, const std::vector<PixelRect>& rectangles) {
    std::vector<xcb_rectangle_t> list;
    list.reserve(rectangles.size());
    for (const auto& r : rectangles)
        list.push_back({static_cast<std::int16_t>(r.x), static_cast<std::int16_t>(r.y),
                        static_cast<std::uint16_t>(r.width), static_cast<std::uint16_t>(r.height)});
    xcb_shape_rectangles(context_.connection.get(), XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_UNSORTED,
                         window_, 0, 0, static_cast<std::uint32_t>(list.size()), list.data());
}

void X11TagSurface::applyMapping() {
    // A window that cannot be seen is mapped in advance only where an overview may have to draw it.
    const bool wanted = orderedIn_ && (!isParked() || context_.overviewMayOpen);
    if (isMapped() && (!wanted || role_ != mappedRole_)) withdraw();
    if (wanted && state_ == LifeCycle::Withdrawn) {
        writeStates();
        mapUntilManaged(kManagedWithin);
        state_ = LifeCycle::Mapped;
        mappedRole_ = role_;
    } else if (isMapped() && raise_) {
        raise();
    }
    raise_ = false;
}

// A window manager that keeps a tag in front of a full-screen window, where others let it be covered, is
// asked to put it below all windows for that time. While it is there nothing else tells that it would be in
// front.
void X11TagSurface::applyStacking() {
    const auto& fullScreen = *context_.fullScreenWindows;
    const bool lowered = lowered_ ? fullScreen.covers(self()) : fullScreen.liesBefore(self());
    if (std::exchange(lowered_, lowered) != lowered && isMapped()) sendStacking();
}

// xfwm4 takes the one state only from a window that has not the other.
void X11TagSurface::sendStacking() {
    const auto& atoms = context_.atoms;
    constexpr std::uint32_t remove = 0;
    constexpr std::uint32_t add = 1;
    const auto former = lowered_ ? atoms[Atom::NetWmStateAbove] : atoms[Atom::NetWmStateBelow];
    const auto wanted = lowered_ ? atoms[Atom::NetWmStateBelow] : atoms[Atom::NetWmStateAbove];
    for (const auto& [action, state] : {std::pair(remove, former), std::pair(add, wanted)}) {
        const std::array<std::uint32_t, 4> data = {action, state, XCB_ATOM_NONE, kSourceApplication};
        sendRootMessage(context_.connection, window_, atoms[Atom::NetWmState], data);
    }
}

void X11TagSurface::raise() {
    const std::array<std::uint32_t, 3> data = {kSourcePager, XCB_WINDOW_NONE, XCB_STACK_MODE_ABOVE};
    sendRootMessage(context_.connection, window_, context_.atoms[Atom::NetRestackWindow], data);
}

// A window manager puts a new window that does not ask for the focus below the active one, at a time of its
// own, and that may be the desktop's background itself.
void X11TagSurface::raiseAboveWallpaper(Duration pause) {
    if (mappedRole_ != Role::PartOfDesktop || pause > kLongestRaisePause) return;
    raise();
    context_.connection.flush();
    stateTimer_ = context_.runLoop.after(pause, [this, pause] { raiseAboveWallpaper(4 * pause); });
}

// Takes the window off the screen (ICCCM 4.1.4). It may be mapped again when the window manager has let go of
// it, which takes the properties away one by one that the next mapping needs.
void X11TagSurface::withdraw() {
    auto* connection = context_.connection.get();
    stateTimer_.cancel();
    const bool wasManaged = state_ == LifeCycle::Managed;
    state_ = wasManaged ? LifeCycle::Withdrawing : LifeCycle::Withdrawn;
    if (wasManaged) stateTimer_ = context_.runLoop.after(kWithdrawnWithin, [this] { endWithdrawing(); });
    xcb_unmap_window(connection, window_);
    xcb_unmap_notify_event_t withdrawn{};
    withdrawn.response_type = XCB_UNMAP_NOTIFY;
    withdrawn.event = context_.connection.root();
    withdrawn.window = window_;
    xcb_send_event(connection, 0, context_.connection.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&withdrawn));
}

void X11TagSurface::endWithdrawing() {
    state_ = LifeCycle::Withdrawn;
    stateTimer_.cancel();
    commitLater();
}

// A window manager that is just starting may overlook a window that is mapped meanwhile. To map a window
// again that a window manager has taken over would ask for its activation.
void X11TagSurface::mapUntilManaged(Duration patience) {
    xcb_map_window(context_.connection.get(), window_);
    context_.connection.flush();
    if (patience > kLongestManagedWithin) return;
    stateTimer_ = context_.runLoop.after(patience, [this, patience] { mapUntilManaged(2 * patience); });
}

void X11TagSurface::moveToDesktop(std::uint32_t desktop) {
    desktop_.ask(desktop);
    if (isMapped()) {
        // A window manager does not answer where the window is there already, so it goes by a detour.
        if (desktop_.isOutdated()) askForDesktop(kEveryDesktop);
        askForDesktop(desktop);
    } else {
        change32(context_.atoms[Atom::NetWmDesktop], XCB_ATOM_CARDINAL, {desktop});
        desktop_.tell(desktop);
    }
    context_.connection.flush();
}

void X11TagSurface::askForDesktop(std::uint32_t desktop) {
    const std::array<std::uint32_t, 2> data = {desktop, kSourceApplication};
    sendRootMessage(context_.connection, window_, context_.atoms[Atom::NetWmDesktop], data);
}

void X11TagSurface::reassertStates() {
    if (!isMapped()) return;
    if (state_ == LifeCycle::Mapped) mapUntilManaged(kManagedWithin);
    const auto& atoms = context_.atoms;
    constexpr std::uint32_t add = 1;
    const std::array<std::uint32_t, 4> first = {
        add, lowered_ ? atoms[Atom::NetWmStateBelow] : atoms[Atom::NetWmStateAbove],
        atoms[Atom::NetWmStateSkipTaskbar], kSourceApplication};
    const std::array<std::uint32_t, 4> second = {add, atoms[Atom::NetWmStateSkipPager],
                                                 atoms[Atom::KdeNetWmStateSkipSwitcher], kSourceApplication};
    sendRootMessage(context_.connection, window_, atoms[Atom::NetWmState], first);
    sendRootMessage(context_.connection, window_, atoms[Atom::NetWmState], second);
    context_.connection.flush();
}

void X11TagSurface::handle(const xcb_generic_event_t& event) {
    switch (XEvents::type(event)) {
        case XCB_BUTTON_PRESS:
        case XCB_BUTTON_RELEASE:
        case XCB_MOTION_NOTIFY:
            gesture_.handle(event);
            break;
        case XCB_REPARENT_NOTIFY:
            if (reinterpret_cast<const xcb_reparent_notify_event_t&>(event).parent ==
                context_.connection.root())
                break;
            // KWin writes no WM_STATE on a window that is not on the current desktop.
            becomeManaged();
            // The input shape that a window comes with may be overlooked; a change is followed. Not at once:
            // when a window manager ends soon, openbox hangs if that is the last event that it gets.
            shapeTimer_ = context_.runLoop.after(kManagerHasTakenOver, [this] {
                input_ = InputShape::Unset;
                commitLater();
            });
            break;
        case XCB_CONFIGURE_NOTIFY:
            placementTimer_ = context_.runLoop.after(kPlacementSettles, [this] { verifyPlacement(); });
            break;
        case XCB_PROPERTY_NOTIFY: {
            const auto atom = reinterpret_cast<const xcb_property_notify_event_t&>(event).atom;
            const auto& atoms = context_.atoms;
            const bool isManagers = atom == atoms[Atom::WmState] || atom == atoms[Atom::NetWmDesktop] ||
                                    atom == atoms[Atom::NetWmState];
            if (isManagers && state_ == LifeCycle::Withdrawing)
                stateTimer_ = context_.runLoop.after(kWithdrawingSettles, [this] { endWithdrawing(); });
            else if (atom == atoms[Atom::WmState])
                becomeManaged();
            if (atom == atoms[Atom::NetWmDesktop]) {
                readDesktop();
                commitLater();
            }
            break;
        }
        case XCB_CLIENT_MESSAGE: {
            auto message = reinterpret_cast<const xcb_client_message_event_t&>(event);
            if (message.type != context_.atoms[Atom::WmProtocols] ||
                message.data.data32[0] != context_.atoms[Atom::NetWmPing])
                break;
            message.window = context_.connection.root();
            sendRootMessage(context_.connection, message.window, message.type, message.data.data32);
            break;
        }
        default:
            break;
    }
}

void X11TagSurface::becomeManaged() {
    if (state_ != LifeCycle::Mapped) return;
    state_ = LifeCycle::Managed;
    stateTimer_.cancel();
    raiseAboveWallpaper(kRaisePause);
}

void X11TagSurface::readDesktop() {
    const auto cookie = requestProperty(context_.connection, window_, context_.atoms[Atom::NetWmDesktop],
                                        XCB_ATOM_CARDINAL, 1);
    const auto reply = context_.connection.reply<xcb_get_property_reply_t>(cookie);
    if (const auto value = value32(reply.get(), XCB_ATOM_CARDINAL)) takeDesktop(*value);
    if (context_.connection.isLate())
        desktopTimer_ = context_.runLoop.after(kPlacementSettles, [this] { readDesktop(); });
}

// A tag belongs to one desktop: one that is put on all of them, as KWin does with a part of the desktop whose
// own it has overlooked, asks for its own again. Where that is refused time after time it is seen everywhere.
void X11TagSurface::takeDesktop(std::uint32_t desktop) {
    const auto own = this->desktop();
    if (desktop != kEveryDesktop || !own) return desktop_.tell(desktop);
    if (!isMapped() || own == kEveryDesktop) return;
    const auto now = context_.runLoop.now();
    if (now - lastReturn_ > kReturnsAreForgotten) returns_ = 0;
    lastReturn_ = now;
    if (returns_++ >= kMostReturns) return;
    askForDesktop(*own);
    context_.connection.flush();
}

// A window manager that moves the window, as some do when a monitor goes, is asked for the wanted place
// again, some times; then its place is where the window is.
void X11TagSurface::verifyPlacement() {
    if (!isMapped() || gesture_.isHeld() || isParked() || commitTimer_.isActive()) return;
    auto* connection = context_.connection.get();
    const auto originCookie =
        xcb_translate_coordinates(connection, window_, context_.connection.root(), 0, 0);
    const auto sizeCookie = xcb_get_geometry(connection, window_);
    const auto origin = context_.connection.reply<xcb_translate_coordinates_reply_t>(originCookie);
    const auto size = context_.connection.reply<xcb_get_geometry_reply_t>(sizeCookie);
    if (context_.connection.isLate())
        placementTimer_ = context_.runLoop.after(kPlacementSettles, [this] { verifyPlacement(); });
    if (!origin || !size) return;
    const PixelRect actual{origin->dst_x, origin->dst_y, size->width, size->height};
    if (actual == placed_ || refusedPlace_ == actual) return;
    placed_ = actual;
    if (insistences_++ < kMostInsistences) return commitLater();
    refusedPlace_ = actual;
    frame_ = delegate_.constrainFrame(context_.screens.coordinates().toPoints(actual));
    commitLater();
}

}  // namespace platform::x11
