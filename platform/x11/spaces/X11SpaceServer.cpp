#include "platform/x11/spaces/X11SpaceServer.h"

#include <algorithm>

namespace platform::x11 {

namespace {

constexpr auto kFrame = std::chrono::milliseconds(16);
constexpr auto kLongestReadPause = std::chrono::seconds(1);
constexpr auto kFirstKwinPause = std::chrono::milliseconds(250);
constexpr auto kLongestKwinPause = std::chrono::seconds(8);
// A new window manager has its desktops in order by then.
constexpr auto kTakeoverDelay = std::chrono::milliseconds(300);

// Whether a desktop that is in both has another number.
bool areRenumbered(const std::vector<std::string>& before, const std::vector<std::string>& now) {
    for (std::size_t number = 0; number < before.size(); ++number) {
        const auto found = std::ranges::find(now, before[number]);
        if (found != now.end() && found - now.begin() != static_cast<std::ptrdiff_t>(number)) return true;
    }
    return false;
}

}  // namespace

X11SpaceServer::X11SpaceServer(XConnection& connection, const Atoms& atoms, XEvents& events, RunLoop& runLoop,
                               RequestKwinRow requestKwinRow)
    : connection_(connection),
      atoms_(atoms),
      runLoop_(runLoop),
      requestKwinRow_(std::move(requestKwinRow)),
      readBackoff_(kFrame, kLongestReadPause),
      kwinBackoff_(kFirstKwinPause, kLongestKwinPause) {
    events.selectOnRoot(XCB_EVENT_MASK_PROPERTY_CHANGE);
    subscription_ = events.subscribe([this](const auto& event) { handle(event); });
    read();
    started_ = true;
}

std::optional<ManagedDisplaySpaces> X11SpaceServer::copyManagedDisplaySpaces() const {
    const bool isUncertain = desktops_ && desktops_->isKwin() && (kwinRowIsOld_ || kwinIsAsked_);
    return isUncertain ? std::nullopt : answer_;
}

DesktopFacts X11SpaceServer::facts() const {
    return desktops_ ? DesktopFacts{desktops_->count, current()} : DesktopFacts{};
}

// KWin tells no new number of the current desktop when one is inserted in front of it.
std::optional<std::uint32_t> X11SpaceServer::current() const {
    const bool isKwins = isCurrentOld_ && desktops_->isKwin() && kwinRow_ && kwinRow_->current;
    return isKwins ? kwinRow_->current : desktops_->current;
}

void X11SpaceServer::handle(const xcb_generic_event_t& event) {
    if (XEvents::type(event) == XCB_DESTROY_NOTIFY) {
        const auto window = reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window;
        if (window != watched_) return;
        // The next window manager may get the same window number.
        watched_ = XCB_WINDOW_NONE;
        windowManager_ = XCB_WINDOW_NONE;
        readSoon();
    } else if (XEvents::type(event) == XCB_PROPERTY_NOTIFY) {
        const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (property.window == connection_.root()) {
            lastTime_ = property.time;
            handleRootProperty(property.atom);
        } else if (property.window == watched_) {
            readSoon();  // a window manager that starts names its check window late
        }
    }
}

void X11SpaceServer::handleRootProperty(xcb_atom_t property) {
    const auto is = [&](Atom atom) { return property == atoms_[atom]; };
    const bool mayMoveDesktops = is(Atom::NetDesktopNames) || is(Atom::NetNumberOfDesktops);
    if (mayMoveDesktops) kwinRowIsOld_ = isCurrentOld_ = true;
    if (is(Atom::NetCurrentDesktop)) isCurrentOld_ = false;
    if (mayMoveDesktops || is(Atom::NetCurrentDesktop) || is(Atom::NetSupportingWmCheck) ||
        is(Atom::NetSupported))
        readSoon();
}

void X11SpaceServer::readSoon() {
    if (readTimer_.isActive()) return;
    const auto now = runLoop_.now();
    readAfter(lastRead_ && now - *lastRead_ < kFrame ? *lastRead_ + kFrame - now : Duration::zero());
}

void X11SpaceServer::readAfter(Duration delay) {
    readTimer_ = runLoop_.after(delay, [this] {
        readTimer_ = {};
        read();
    });
}

void X11SpaceServer::read() {
    auto root = readRootProperties(connection_, atoms_);
    if (root.state == EwmhRoot::State::Plausible) {
        watch(root.checkWindow);
        readCheckWindow(connection_, atoms_, root);
    }
    lastRead_ = runLoop_.now();
    if (root.state == EwmhRoot::State::Unanswered) return readAfter(readBackoff_.next());
    readBackoff_.reset();
    if (root.state == EwmhRoot::State::Plausible) return handleRoot(root);
    desktops_.reset();
    windowManager_ = XCB_WINDOW_NONE;
    compose();
}

// Nothing else tells that a window manager has died. Selected before the window is read, so that its end is
// seen either way.
void X11SpaceServer::watch(xcb_window_t checkWindow) {
    if (std::exchange(watched_, checkWindow) == checkWindow) return;
    const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection_.get(), checkWindow, XCB_CW_EVENT_MASK, &events);
}

void X11SpaceServer::handleRoot(const EwmhRoot& root) {
    const bool takenOver = windowManager_ != root.checkWindow;
    windowManager_ = root.checkWindow;
    desktops_ = root.desktops;
    if (takenOver) {
        kwinRow_.reset();
        kwinRowIsOld_ = isCurrentOld_ = true;
        if (started_)
            settleTimer_ = runLoop_.after(kTakeoverDelay, [this] {
                settleTimer_ = {};
                compose();
                windowManagerChanged_.notify();
            });
    }
    if (desktops_->isKwin() && kwinRowIsOld_) {
        kwinBackoff_.reset();
        askKwin();
    }
    compose();
}

void X11SpaceServer::askKwin() {
    kwinRetry_ = {};
    kwinRowIsOld_ = false;
    kwinIsAsked_ = true;
    requestKwinRow_([this](KwinRow row) { handleKwinRow(std::move(row)); });
}

void X11SpaceServer::handleKwinRow(KwinRow row) {
    // When the desktops have changed since it was asked, the next read asks again.
    if (!desktops_ || !desktops_->isKwin() || kwinRowIsOld_) return;
    kwinIsAsked_ = false;
    kwinRow_ = std::move(row);
    if (!kwinRow_ || kwinRow_->ids.size() != desktops_->count) {
        kwinRow_.reset();
        kwinRetry_ = runLoop_.after(kwinBackoff_.next(), [this] { askKwin(); });
    } else {
        const auto before = std::exchange(numberedAs_, kwinRow_->ids);
        if (areRenumbered(before, numberedAs_)) renumbered_.notify();
    }
    compose();
}

// Makes the answer from the window manager's desktops and KWin's row, and tells of a change.
void X11SpaceServer::compose() {
    std::optional<ManagedDisplaySpaces> answer;
    if (desktops_ && !settleTimer_.isActive()) {
        if (!desktops_->isKwin()) {
            answer = managedDisplaySpaces({desktopNumberUuids(desktops_->count), desktops_->current});
        } else if (kwinRow_) {
            if (kwinRow_->ids.size() != desktops_->count) return;  // KWin is being asked for those of now
            answer = managedDisplaySpaces({kwinRow_->ids, current()});
        }
    }
    if (answer == answer_) return;
    answer_ = std::move(answer);
    changed_.notify();
}

}  // namespace platform::x11
