#pragma once

#include <xcb/xcb.h>

#include <functional>

#include "platform/Observers.h"
#include "platform/RunLoop.h"
#include "platform/linux/DescriptorWatcher.h"
#include "platform/x11/connection/XConnection.h"

namespace platform::x11 {

// Delivers the events of a connection on the main thread, a bounded number a turn, and begins the
// connection's turns. All selections on the root window share one event mask through it.
class XEvents {
  public:
    XEvents(XConnection& connection, DescriptorWatcher& watcher, RunLoop& runLoop);
    ~XEvents();
    XEvents(const XEvents&) = delete;
    XEvents& operator=(const XEvents&) = delete;

    // Every event goes to every handler.
    Subscription subscribe(std::function<void(const xcb_generic_event_t&)> handler);
    // Called once when the server has gone away.
    Subscription onBroken(std::function<void()> action);
    // Adds to the events selected on the root window.
    void selectOnRoot(std::uint32_t eventMask);

    [[nodiscard]] static std::uint8_t type(const xcb_generic_event_t& event) {
        return event.response_type & 0x7F;
    }

  private:
    void drain();
    void drainLater();
    void followWait();
    [[nodiscard]] Reply<xcb_generic_event_t> next();

    XConnection& connection_;
    RunLoop& runLoop_;
    Observers<const xcb_generic_event_t&> handlers_;
    Observers<> broken_;
    std::uint32_t rootMask_ = 0;
    bool isBroken_ = false;
    Reply<xcb_generic_event_t> first_;  // read into memory while a reply was waited for
    Timer later_;
    Subscription readable_;
};

}  // namespace platform::x11
