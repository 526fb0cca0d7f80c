#include "platform/x11/windows/X11TagSurface.h"

#include <unistd.h>
#include <xcb/xcb_icccm.h>

#include <array>
#include <cstring>
#include <utility>

#include "platform/x11/spaces/EwmhDesktops.h"

namespace platform::x11 {

namespace {

constexpr auto kManagingPatience = std::chrono::milliseconds(500);
constexpr auto kLongestManagingPatience = std::chrono::seconds(16);
constexpr auto kWithdrawingPatience = std::chrono::seconds(3);
constexpr auto kWithdrawingSettlingTime = std::chrono::milliseconds(20);
constexpr auto kRaisePause = std::chrono::milliseconds(100);
constexpr auto kLongestRaisePause = std::chrono::seconds(2);

}  // namespace

X11TagSurface::X11TagSurface(TagSurfaceContext& context, const Rect& frame, bool acceptsMouse,
                             TagWindowDelegate& delegate)
    : context_(context),
      acceptsMouse_(acceptsMouse),
      window_(xcb_generate_id(context.connection.get())),
      placement_(context, *this, delegate, window_, frame),
      pixels_(context, *this, window_),
      desktop_(context, *this, window_),
      gesture_(context, delegate) {
    pixels_.setTakesMouse(acceptsMouse);
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
    const auto& place = placement_.current();
    constexpr std::uint32_t mask =
        XCB_CW_BACK_PIXMAP | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP | XCB_CW_CURSOR;
    const std::array<std::uint32_t, 5> values = {
        XCB_BACK_PIXMAP_NONE, 0,
        XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_BUTTON_1_MOTION |
            XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE,
        context_.colormap, acceptsMouse_ ? context_.openHand : xcb_cursor_t{0}};
    xcb_create_window(connection, context_.depth, window_, context_.connection.root(),
                      static_cast<std::int16_t>(place.x), static_cast<std::int16_t>(place.y),
                      static_cast<std::uint16_t>(place.width), static_cast<std::uint16_t>(place.height), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, context_.visual, mask, values.data());
}

void X11TagSurface::showCursor() const {
    const std::uint32_t cursor = context_.openHand;
    if (acceptsMouse_)
        xcb_change_window_attributes(context_.connection.get(), window_, XCB_CW_CURSOR, &cursor);
}

void X11TagSurface::writeInitialProperties() {
    const auto& atoms = context_.atoms;
    setProperty(Atom::WmProtocols, XCB_ATOM_ATOM, {atoms[Atom::WmDeleteWindow], atoms[Atom::NetWmPing]});
    setProperty(Atom::NetWmUserTime, XCB_ATOM_CARDINAL, {0U});
    setProperty(Atom::NetWmPid, XCB_ATOM_CARDINAL, {static_cast<std::uint32_t>(getpid())});
    setProperty(Atom::MotifWmHints, atoms[Atom::MotifWmHints],
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
    placement_.writeHints();
}

// The properties that a window manager removes from a withdrawn window (EWMH, ICCCM 4.1.4).
void X11TagSurface::writeStates() {
    const auto& atoms = context_.atoms;
    if (role_ == Role::OverFullScreen)
        setProperty(
            Atom::NetWmWindowType, XCB_ATOM_ATOM,
            {atoms[Atom::KdeNetWmWindowTypeCriticalNotification], atoms[Atom::NetWmWindowTypeNotification]});
    else
        setProperty(Atom::NetWmWindowType, XCB_ATOM_ATOM,
                    {role_ == Role::PartOfDesktop ? atoms[Atom::NetWmWindowTypeDesktop]
                                                  : atoms[Atom::NetWmWindowTypeNotification]});
    setProperty(Atom::NetWmState, XCB_ATOM_ATOM,
                {lowered_ ? atoms[Atom::NetWmStateBelow] : atoms[Atom::NetWmStateAbove],
                 atoms[Atom::NetWmStateSkipTaskbar], atoms[Atom::NetWmStateSkipPager],
                 atoms[Atom::KdeNetWmStateSkipSwitcher]});
    desktop_.write();
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
    const auto current = context_.desktops.facts().current;
    const auto own = desktop();
    const bool onActiveSpace = own && (own == kEveryDesktop || own == current);
    return {orderedIn_, onActiveSpace, orderedIn_ && onActiveSpace && pixels_.alpha() > 0};
}

void X11TagSurface::setFrame(const Rect& frame) {
    placement_.setFrame(frame);
    commitLater();
}

void X11TagSurface::setAlpha(double alpha) {
    if (pixels_.setAlpha(alpha)) commitLater();
}

void X11TagSurface::setIgnoresMouseEvents(bool ignores) {
    if (pixels_.setTakesMouse(acceptsMouse_ && !ignores)) commitLater();
}

void X11TagSurface::setContents(const TagLayers& layers, const std::string& title) {
    titleChanged_ = titleChanged_ || title != title_;
    title_ = title;
    pixels_.setLayers(layers);
    commitLater();
}

void X11TagSurface::setContentScale(double scale) {
    pixels_.setContentScale(scale);
    commitLater();
}

void X11TagSurface::setOrderedIn(bool orderedIn) {
    orderedIn_ = orderedIn;
    raise_ = orderedIn;
    commitLater();
}

void X11TagSurface::refresh() {
    placement_.forgetInsistences();
    pixels_.outdate();
    commitLater();
}

X11TagSurface::Role X11TagSurface::wantedRole() const {
    if (acceptsMouse_ || context_.overview == OverviewKind::None) return Role::Tag;
    if (context_.overview == OverviewKind::DesktopGrid) return Role::PartOfDesktop;
    return context_.fullScreenWindows->covers(self()) ? Role::OverFullScreen : Role::Tag;
}

void X11TagSurface::commitLater() {
    if (!commitTimer_.isActive())
        commitTimer_ = context_.runLoop.after(Duration::zero(), [this] { commit(); });
}

void X11TagSurface::commit() {
    commitTimer_ = {};
    role_ = wantedRole();
    if (titleChanged_) writeTitle();
    const auto place = placement_.wanted(isParked());
    const bool hasPixelsToShow = pixels_.upload(place);
    placement_.moveTo(place);
    pixels_.sendOpacityAndShapes();
    if (hasPixelsToShow) pixels_.show();
    applyMapping();
    applyStacking();
    context_.connection.flush();
}

void X11TagSurface::applyMapping() {
    // An invisible window is mapped in advance only where an overview may have to draw it.
    const bool wanted = orderedIn_ && (!isParked() || context_.overviewMayOpen);
    if (isMapped() && (!wanted || role_ != mappedRole_)) withdraw();
    if (wanted && state_ == LifeCycle::Withdrawn) {
        writeStates();
        mapUntilManaged(kManagingPatience);
        state_ = LifeCycle::Mapped;
        mappedRole_ = role_;
    } else if (isMapped() && raise_) {
        raise();
    }
    raise_ = false;
}

// A window manager that keeps a tag in front of a full-screen window, where others let it be covered, is
// asked to put it below all windows for that time. While the tag is below, only the full-screen window's
// being there tells that the tag has to stay there.
void X11TagSurface::applyStacking() {
    const auto& fullScreen = *context_.fullScreenWindows;
    const bool lowered = lowered_ ? fullScreen.covers(self()) : fullScreen.liesBefore(self());
    if (std::exchange(lowered_, lowered) != lowered && isMapped()) sendStacking();
}

// xfwm4 sets either state only on a window without the other.
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

// A window manager puts a new window without focus below the active one, at a time of its own, and the active
// one may be the desktop's background.
void X11TagSurface::raiseAboveWallpaper(Duration pause) {
    if (mappedRole_ != Role::PartOfDesktop || pause > kLongestRaisePause) return;
    raise();
    context_.connection.flush();
    stateTimer_ = context_.runLoop.after(pause, [this, pause] { raiseAboveWallpaper(4 * pause); });
}

// Takes the window off the screen (ICCCM 4.1.4). The next mapping waits until the window manager has let go
// of the window, which removes, one by one, the properties that this mapping writes.
void X11TagSurface::withdraw() {
    auto* connection = context_.connection.get();
    stateTimer_.cancel();
    const bool wasManaged = state_ == LifeCycle::Managed;
    state_ = wasManaged ? LifeCycle::Withdrawing : LifeCycle::Withdrawn;
    if (wasManaged) stateTimer_ = context_.runLoop.after(kWithdrawingPatience, [this] { endWithdrawing(); });
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

// A window manager that is just starting may overlook a window that is mapped meanwhile. Mapping a managed
// window again would ask for its activation.
void X11TagSurface::mapUntilManaged(Duration patience) {
    xcb_map_window(context_.connection.get(), window_);
    context_.connection.flush();
    if (patience > kLongestManagingPatience) return;
    stateTimer_ = context_.runLoop.after(patience, [this, patience] { mapUntilManaged(2 * patience); });
}

void X11TagSurface::reassertStates() {
    if (!isMapped()) return;
    if (state_ == LifeCycle::Mapped) mapUntilManaged(kManagingPatience);
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
            // A window manager may overlook a new window's input shape and follows a change of it. The change
            // comes later, because an openbox that is about to end hangs when it is the last event.
            pixels_.resendInputShapeLater();
            break;
        case XCB_CONFIGURE_NOTIFY:
            placement_.verifyLater();
            break;
        case XCB_PROPERTY_NOTIFY: {
            const auto atom = reinterpret_cast<const xcb_property_notify_event_t&>(event).atom;
            const auto& atoms = context_.atoms;
            const bool isManagers = atom == atoms[Atom::WmState] || atom == atoms[Atom::NetWmDesktop] ||
                                    atom == atoms[Atom::NetWmState];
            if (isManagers && state_ == LifeCycle::Withdrawing)
                stateTimer_ = context_.runLoop.after(kWithdrawingSettlingTime, [this] { endWithdrawing(); });
            else if (atom == atoms[Atom::WmState])
                becomeManaged();
            if (atom == atoms[Atom::NetWmDesktop]) {
                desktop_.read();
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

}  // namespace platform::x11
