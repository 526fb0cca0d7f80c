#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/RunLoop.h"
#include "platform/freedesktop/bus/BusMessage.h"
#include "platform/freedesktop/bus/SystemdLibrary.h"
#include "platform/linux/DescriptorWatcher.h"

namespace platform::freedesktop {

// The application's connection to a message bus, the session's or, at its address, the system's, driven by
// the main loop and never waited for. It is made when something is first asked, given up when it does not
// come about within a second, and made anew by a later call; after a failed attempt the calls of the next
// second fail without another. While somebody listens it is made anew by itself. Main thread only.
class MessageBus {
  public:
    // The answer's arguments; absent when there is no bus, an error came back, or nothing in time.
    using Reply = std::function<void(const std::optional<BusArguments>& arguments)>;
    using Handler = std::function<void(const BusArguments& arguments)>;
    using Address = std::function<std::string()>;

    MessageBus(
        SystemdLibrary& library, DescriptorWatcher& descriptors, RunLoop& runLoop,
        Address address = [] { return sessionBusAddress(); });
    ~MessageBus();
    MessageBus(const MessageBus&) = delete;
    MessageBus& operator=(const MessageBus&) = delete;

    // Sends the call and delivers its answer once, at a later turn of the main loop; never when the
    // subscription ends before. The call itself is not taken back.
    Subscription call(const BusCall& call, Reply reply);

    // Delivers every such signal at a later turn of the main loop, from each connection that is made.
    Subscription subscribe(const BusSignal& signal, Handler handler);

    // Tells at a later turn of the main loop when there is a new connection, the one that is there already
    // included, and when it is lost: signals may have been missed in between.
    Subscription onConnectionChanged(std::function<void(bool connected)> action);

  private:
    class Connection;
    std::shared_ptr<Connection> connection_;
};

}  // namespace platform::freedesktop
