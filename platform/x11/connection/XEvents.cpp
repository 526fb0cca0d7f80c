#include "platform/x11/connection/XEvents.h"

namespace platform::x11 {

namespace {
constexpr int kEventsATurn = 4096;
}

XEvents::XEvents(XConnection& connection, DescriptorWatcher& watcher, RunLoop& runLoop)
    : connection_(connection),
      runLoop_(runLoop),
      readable_(watcher.watchReadable(connection.descriptor(), [this] { drain(); })) {
    connection_.setAfterWait([this] { followWait(); });
}

XEvents::~XEvents() {
    connection_.setAfterWait(nullptr);
}

Subscription XEvents::subscribe(std::function<void(const xcb_generic_event_t&)> handler) {
    return handlers_.subscribe(std::move(handler));
}

Subscription XEvents::onBroken(std::function<void()> action) {
    return broken_.subscribe(std::move(action));
}

void XEvents::selectOnRoot(std::uint32_t eventMask) {
    rootMask_ |= eventMask;
    xcb_change_window_attributes(connection_.get(), connection_.root(), XCB_CW_EVENT_MASK, &rootMask_);
    connection_.flush();
}

// Begins another turn when events came with the reply, and when much of the patience is used up: while no
// event comes nothing else renews it.
void XEvents::followWait() {
    if (!first_) first_.reset(xcb_poll_for_queued_event(connection_.get()));
    if (first_ || connection_.isTurnLong() || connection_.isBroken()) drainLater();
}

Reply<xcb_generic_event_t> XEvents::next() {
    if (first_) return std::move(first_);
    return Reply<xcb_generic_event_t>(xcb_poll_for_event(connection_.get()));
}

void XEvents::drain() {
    later_ = {};
    connection_.beginTurn();
    for (int count = 0; count < kEventsATurn; ++count) {
        const auto event = next();
        if (!event) {
            if (connection_.isBroken() && !std::exchange(isBroken_, true)) {
                readable_.cancel();
                broken_.notify();
            }
            connection_.flush();
            return;
        }
        if (type(*event) != 0) handlers_.notify(*event);  // type 0 is an error nobody waited for
    }
    drainLater();
}

void XEvents::drainLater() {
    if (!later_.isActive()) later_ = runLoop_.after(Duration::zero(), [this] { drain(); });
}

}  // namespace platform::x11
