#include "platform/x11/windows/X11WindowSystem.h"

#include <xcb/xcb_cursor.h>

#include "platform/x11/spaces/EwmhDesktops.h"

namespace platform::x11 {

namespace {

constexpr auto kCompositorStartTime = std::chrono::milliseconds(500);
// Loading the cursor earlier would delay the first label, and no pointer is on a label before that.
constexpr auto kCursorLoadDelay = std::chrono::milliseconds(100);

xcb_cursor_t loadOpenHand(XConnection& connection) {
    xcb_cursor_context_t* cursors = nullptr;
    auto* screen = const_cast<xcb_screen_t*>(&connection.screen());
    if (xcb_cursor_context_new(connection.get(), screen, &cursors) < 0) return XCB_CURSOR_NONE;
    xcb_cursor_t cursor = XCB_CURSOR_NONE;
    for (const char* name : {"openhand", "grab", "hand1"}) {
        cursor = xcb_cursor_load_cursor(cursors, name);
        if (cursor != XCB_CURSOR_NONE) break;
    }
    xcb_cursor_context_free(cursors);
    return cursor;
}

// The window of an event; XCB_WINDOW_NONE for an event of no window.
xcb_window_t windowOf(const xcb_generic_event_t& event) {
    switch (XEvents::type(event)) {
        case XCB_BUTTON_PRESS:
        case XCB_BUTTON_RELEASE:
        case XCB_MOTION_NOTIFY:
            return reinterpret_cast<const xcb_button_press_event_t&>(event).event;
        case XCB_CONFIGURE_NOTIFY:
            return reinterpret_cast<const xcb_configure_notify_event_t&>(event).window;
        case XCB_REPARENT_NOTIFY:
            return reinterpret_cast<const xcb_reparent_notify_event_t&>(event).window;
        case XCB_MAP_NOTIFY:
            return reinterpret_cast<const xcb_map_notify_event_t&>(event).window;
        case XCB_PROPERTY_NOTIFY:
            return reinterpret_cast<const xcb_property_notify_event_t&>(event).window;
        case XCB_CLIENT_MESSAGE:
            return reinterpret_cast<const xcb_client_message_event_t&>(event).window;
        default:
            return XCB_WINDOW_NONE;
    }
}

}  // namespace

X11WindowSystem::X11WindowSystem(XConnection& connection, const Atoms& atoms, XEvents& events,
                                 RunLoop& runLoop, X11Screens& screens, LayerPainter& painter,
                                 const DesktopSource& desktops)
    : context_{.connection = connection,
               .atoms = atoms,
               .runLoop = runLoop,
               .screens = screens,
               .painter = painter,
               .desktops = desktops},
      fullScreenWindows_(connection, atoms, events, runLoop, [this] { surroundingsChanged(); }),
      events_(events.subscribe([this](const auto& event) { handle(event); })),
      screensChanged_(screens.onParametersChanged([this] { refresh(); })),
      compositor_(connection, events, atoms[Atom::NetWmCmSelection],
                  [this](xcb_window_t owner) { followCompositor(owner != XCB_WINDOW_NONE); }) {
    context_.fullScreenWindows = &fullScreenWindows_;
    context_.composited = compositor_.owner() != XCB_WINDOW_NONE;
    context_.forget = [this](xcb_window_t window) { surfaces_.erase(window); };
    chooseVisual();
    cursorTimer_ = runLoop.after(kCursorLoadDelay, [this] { showOpenHand(); });
}

X11WindowSystem::~X11WindowSystem() {
    if (context_.openHand != XCB_CURSOR_NONE) xcb_free_cursor(context_.connection.get(), context_.openHand);
}

void X11WindowSystem::showOpenHand() {
    context_.openHand = loadOpenHand(context_.connection);
    for (const auto& [window, surface] : surfaces_) surface->showCursor();
    context_.connection.flush();
}

// Takes a visual with an alpha channel where the server has one, else the root window's.
void X11WindowSystem::chooseVisual() {
    auto& connection = context_.connection;
    context_.visual = connection.screen().root_visual;
    context_.depth = connection.screen().root_depth;
    for (auto depth = xcb_screen_allowed_depths_iterator(&connection.screen()); depth.rem > 0;
         xcb_depth_next(&depth)) {
        if (depth.data->depth != 32) continue;
        for (auto visual = xcb_depth_visuals_iterator(depth.data); visual.rem > 0;
             xcb_visualtype_next(&visual)) {
            if (visual.data->_class != XCB_VISUAL_CLASS_TRUE_COLOR || visual.data->red_mask != 0xFF0000)
                continue;
            context_.visual = visual.data->visual_id;
            context_.depth = 32;
        }
    }
    context_.colormap = xcb_generate_id(connection.get());
    xcb_create_colormap(connection.get(), XCB_COLORMAP_ALLOC_NONE, context_.colormap, connection.root(),
                        context_.visual);
}

std::unique_ptr<TagSurface> X11WindowSystem::makeTagSurface(const Rect& frame, bool acceptsMouse,
                                                            TagWindowDelegate& delegate) {
    auto surface = std::make_unique<X11TagSurface>(context_, frame, acceptsMouse, delegate);
    surfaces_[static_cast<xcb_window_t>(surface->number().value)] = surface.get();
    return surface;
}

void X11WindowSystem::setOverview(OverviewKind kind) {
    if (std::exchange(context_.overview, kind) != kind) surroundingsChanged();
}

void X11WindowSystem::setOverviewMayOpen(bool may) {
    if (std::exchange(context_.overviewMayOpen, may) != may) surroundingsChanged();
}

void X11WindowSystem::surroundingsChanged() {
    for (const auto& [window, surface] : surfaces_) surface->surroundingsChanged();
}

X11TagSurface* X11WindowSystem::find(WindowNumber window) const {
    const auto found = surfaces_.find(static_cast<xcb_window_t>(window.value));
    return found == surfaces_.end() ? nullptr : found->second;
}

std::vector<ManagedSpaceId> X11WindowSystem::copySpacesForWindow(WindowNumber window) const {
    const auto* surface = find(window);
    return surface ? managedSpaceIds(surface->desktop(), context_.desktops.facts().count)
                   : std::vector<ManagedSpaceId>();
}

void X11WindowSystem::addWindowToSpace(WindowNumber window, ManagedSpaceId space) {
    auto* surface = find(window);
    if (surface && space.value > 0) surface->moveToDesktop(static_cast<std::uint32_t>(space.value - 1));
}

void X11WindowSystem::removeWindowFromSpace(WindowNumber /*window*/, ManagedSpaceId /*space*/) {}

void X11WindowSystem::handle(const xcb_generic_event_t& event) {
    if (auto* surface = find({windowOf(event)})) surface->handle(event);
}

// A compositor announces itself before it composites. Until it does, a window without its silhouette would
// show its margin as a black box.
void X11WindowSystem::followCompositor(bool composited) {
    compositorStarts_ = {};
    const auto follow = [this, composited] {
        context_.composited = composited;
        refresh();
        compositingChanged_.notify(composited);
    };
    if (!composited) return follow();
    compositorStarts_ = context_.runLoop.after(kCompositorStartTime, follow);
}

Subscription X11WindowSystem::followCompositing(const std::function<void(bool)>& action) {
    action(context_.composited);
    return compositingChanged_.subscribe(action);
}

void X11WindowSystem::refresh() {
    for (const auto& [window, surface] : surfaces_) surface->refresh();
}

void X11WindowSystem::desktopsWereRenumbered() {
    for (const auto& [window, surface] : surfaces_) surface->desktopsWereRenumbered();
}

void X11WindowSystem::reassertStates() {
    for (const auto& [window, surface] : surfaces_) surface->reassertStates();
}

}  // namespace platform::x11
