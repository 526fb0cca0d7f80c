#include "platform/x11/X11SpaceServer.h"

#include <array>

namespace platform::x11 {

namespace {

constexpr auto kFrame = std::chrono::milliseconds(16);
constexpr auto kRetry = std::chrono::milliseconds(250);
constexpr auto kTakeover =
    std::chrono::milliseconds(300);  // a new window manager has its desktops in order by then

}  // namespace

X11SpaceServer::X11SpaceServer(XConnection& connection, const Atoms& atoms, XEvents& events, RunLoop& runLoop,
                               RequestKwinIds requestKwinIds)
    : connection_(connection), atoms_(atoms), runLoop_(runLoop), requestKwinIds_(std::move(requestKwinIds)) {
    constexpr std::array<std::string_view, 1> names = {"_NET_DESKTOP_NAMES"};
    desktopNames_ = connection_.intern(names).front();
    events.selectOnRoot(XCB_EVENT_MASK_PROPERTY_CHANGE);
    subscription_ = events.subscribe([this](const auto& event) { handle(event); });
    read();
    started_ = true;
}

DesktopFacts X11SpaceServer::facts() const {
    return desktops_ ? DesktopFacts{desktops_->count, desktops_->current} : DesktopFacts{};
}

void X11SpaceServer::handle(const xcb_generic_event_t& event) {
    if (XEvents::type(event) != XCB_PROPERTY_NOTIFY) return;
    const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (property.window != connection_.root()) return;
    lastTime_ = property.time;
    const auto is = [&](Atom atom) { return property.atom == atoms_[atom]; };
    if (property.atom == desktopNames_ || is(Atom::NetNumberOfDesktops))
        kwinIds_.reset();  // they may have moved
    if (property.atom == desktopNames_ || is(Atom::NetNumberOfDesktops) || is(Atom::NetCurrentDesktop) ||
        is(Atom::NetSupportingWmCheck) || is(Atom::NetSupported))
        readSoon();
}

void X11SpaceServer::readSoon() {
    if (readTimer_.isActive()) return;
    const auto now = runLoop_.now();
    const auto wait = lastRead_ && now - *lastRead_ < kFrame ? *lastRead_ + kFrame - now : Duration::zero();
    readTimer_ = runLoop_.after(wait, [this] {
        readTimer_ = {};
        read();
    });
}

void X11SpaceServer::read() {
    lastRead_ = runLoop_.now();
    const auto root = readRoot(connection_, atoms_);
    if (root.state == EwmhRoot::State::Plausible) return takeRoot(root);
    desktops_.reset();
    windowManager_ = XCB_WINDOW_NONE;
    // Nothing tells when a window manager that is starting has become whole.
    if (root.state == EwmhRoot::State::Inconsistent && !connection_.isBroken())
        readTimer_ = runLoop_.after(kRetry, [this] {
            readTimer_ = {};
            read();
        });
    compose();
}

void X11SpaceServer::takeRoot(const EwmhRoot& root) {
    const bool takenOver = windowManager_ != root.checkWindow;
    windowManager_ = root.checkWindow;
    desktops_ = root.desktops;
    if (takenOver) {
        kwinIds_.reset();
        if (started_)
            settleTimer_ = runLoop_.after(kTakeover, [this] {
                settleTimer_ = {};
                compose();
                windowManagerChanged_.notify();
            });
    }
    if (desktops_->isKwin() && (!kwinIds_ || kwinIdsAreOld_)) askKwin();
    compose();
}

void X11SpaceServer::askKwin() {
    kwinRetry_ = {};
    kwinIdsAreOld_ = false;
    requestKwinIds_([this](KwinIds ids) { takeKwinIds(std::move(ids)); });
}

void X11SpaceServer::takeKwinIds(KwinIds ids) {
    if (!desktops_ || !desktops_->isKwin()) return;
    if (ids && ids->size() == desktops_->count) {
        kwinIds_ = std::move(ids);
        compose();
    } else {
        kwinRetry_ = runLoop_.after(kRetry, [this] { askKwin(); });
    }
}

// Puts together what is known and tells when it differs from before.
void X11SpaceServer::compose() {
    std::optional<ManagedDisplaySpaces> answer;
    if (desktops_ && !settleTimer_.isActive()) {
        if (!desktops_->isKwin()) {
            answer = managedDisplaySpaces(*desktops_, desktopNumberUuids(desktops_->count));
        } else if (kwinIds_ && kwinIds_->size() == desktops_->count) {
            answer = managedDisplaySpaces(*desktops_, *kwinIds_);
        }
    }
    if (answer == answer_) return;
    answer_ = std::move(answer);
    changed_.notify();
}

}  // namespace platform::x11
