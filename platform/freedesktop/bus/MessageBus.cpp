#include "platform/freedesktop/bus/MessageBus.h"

#include <poll.h>

#include <cstdint>
#include <map>
#include <utility>

#include "platform/Observers.h"
#include "platform/linux/Backoff.h"

namespace platform::freedesktop {

namespace {
constexpr Duration kLongestConnecting = std::chrono::seconds(1);
constexpr Duration kPauseAfterFailure = std::chrono::seconds(1);
constexpr Duration kFirstReconnectDelay = std::chrono::seconds(1);
constexpr Duration kLongestReconnectDelay = std::chrono::minutes(1);
constexpr int kMostMessagesATurn = 32;  // so that a flood of messages does not hold up the main loop
}  // namespace

class MessageBus::Connection : public std::enable_shared_from_this<Connection> {
  public:
    Connection(SystemdLibrary& library, DescriptorWatcher& descriptors, RunLoop& runLoop, Address address)
        : library_(library), descriptors_(descriptors), runLoop_(runLoop), address_(std::move(address)) {}

    Subscription call(const BusCall& call, Reply reply);
    Subscription subscribe(const BusSignal& signal, Handler handler);
    Subscription onConnectionChanged(std::function<void(bool)> action);

  private:
    // A call until its answer has been delivered. Its address is what the bus knows it by.
    struct PendingCall {
        Connection& connection;
        std::uint64_t id;
        Reply reply;
        BusSlotPointer slot{};
        Timer timeout{};
        std::optional<BusArguments> arguments{};
        bool finished = false;
    };

    // A subscription to signals. Its address is what the bus knows it by.
    struct Listener {
        Connection& connection;
        std::uint64_t id;
        BusSignal signal;
        Handler handler;
        BusSlotPointer slot{};
    };

    static int handleSignal(sd_bus_message* message, void* listener, sd_bus_error* error);
    static int handleReply(sd_bus_message* message, void* pendingCall, sd_bus_error* error);
    void send(PendingCall& pending, const BusCall& call);
    void finish(PendingCall& pending, std::optional<BusArguments> arguments);
    void deliver(std::uint64_t id);
    void listen(Listener& listener);
    void tellConnected(bool connected);
    bool ensureConnected();
    void disconnect();
    void reconnectLater();
    void process();
    void processLater();
    void watch();

    SystemdLibrary& library_;
    DescriptorWatcher& descriptors_;
    RunLoop& runLoop_;
    Address address_;
    const SystemdFunctions* systemd_ = nullptr;
    BusPointer bus_;
    std::map<std::uint64_t, PendingCall> calls_;
    std::map<std::uint64_t, Listener> listeners_;
    Observers<bool> connectionChanged_;
    std::uint64_t nextId_ = 0;
    int watchedDescriptor_ = -1;
    Subscription readable_;
    Subscription writable_;
    Timer connectTimeout_;
    std::optional<Instant> pauseEnds_;
    Backoff reconnectBackoff_{kFirstReconnectDelay, kLongestReconnectDelay};
    Timer reconnect_;
};

MessageBus::MessageBus(SystemdLibrary& library, DescriptorWatcher& descriptors, RunLoop& runLoop,
                       Address address)
    : connection_(std::make_shared<Connection>(library, descriptors, runLoop, std::move(address))) {}

MessageBus::~MessageBus() = default;

Subscription MessageBus::call(const BusCall& call, Reply reply) {
    return connection_->call(call, std::move(reply));
}

Subscription MessageBus::subscribe(const BusSignal& signal, Handler handler) {
    return connection_->subscribe(signal, std::move(handler));
}

Subscription MessageBus::onConnectionChanged(std::function<void(bool)> action) {
    return connection_->onConnectionChanged(std::move(action));
}

Subscription MessageBus::Connection::call(const BusCall& call, Reply reply) {
    const auto id = nextId_++;
    auto& pending = calls_.emplace(id, PendingCall{*this, id, std::move(reply)}).first->second;
    send(pending, call);
    return Subscription([weak = weak_from_this(), id] {
        if (const auto self = weak.lock()) self->calls_.erase(id);
    });
}

void MessageBus::Connection::send(PendingCall& pending, const BusCall& call) {
    if (ensureConnected()) pending.slot = sendCall(*systemd_, bus_.get(), call, &handleReply, &pending);
    if (!pending.slot) {
        finish(pending, std::nullopt);
        return;
    }
    pending.timeout =
        runLoop_.after(call.timeout, [&pending] { pending.connection.finish(pending, std::nullopt); });
    watch();
}

int MessageBus::Connection::handleReply(sd_bus_message* message, void* pendingCall, sd_bus_error* /*error*/) {
    auto& pending = *static_cast<PendingCall*>(pendingCall);
    pending.connection.finish(pending, readArguments(*pending.connection.systemd_, message));
    return 1;
}

// Answers are delivered from the main queue, so that what they set off never runs inside the bus library.
void MessageBus::Connection::finish(PendingCall& pending, std::optional<BusArguments> arguments) {
    if (std::exchange(pending.finished, true)) return;
    pending.arguments = std::move(arguments);
    pending.slot.reset();
    runLoop_.post([weak = weak_from_this(), id = pending.id] {
        if (const auto self = weak.lock()) self->deliver(id);
    });
}

void MessageBus::Connection::deliver(std::uint64_t id) {
    const auto done = calls_.extract(id);
    if (done) done.mapped().reply(done.mapped().arguments);
}

Subscription MessageBus::Connection::subscribe(const BusSignal& signal, Handler handler) {
    const auto id = nextId_++;
    const bool connected = bus_ != nullptr;
    auto& listener = listeners_.emplace(id, Listener{*this, id, signal, std::move(handler)}).first->second;
    if (connected) listen(listener);
    if (ensureConnected()) watch();
    return Subscription([weak = weak_from_this(), id] {
        if (const auto self = weak.lock()) self->listeners_.erase(id);
    });
}

void MessageBus::Connection::listen(Listener& listener) {
    listener.slot = addMatch(*systemd_, bus_.get(), listener.signal, &handleSignal, &listener);
}

int MessageBus::Connection::handleSignal(sd_bus_message* message, void* listener, sd_bus_error* /*error*/) {
    const auto& [connection, id, signal, handler, slot] = *static_cast<Listener*>(listener);
    auto arguments = readArguments(*connection.systemd_, message);
    if (!arguments) return 0;
    connection.runLoop_.post(
        [weak = connection.weak_from_this(), id = id, arguments = *std::move(arguments)] {
            const auto self = weak.lock();
            if (!self) return;
            const auto found = self->listeners_.find(id);
            if (found == self->listeners_.end()) return;
            const auto deliver = found->second.handler;  // which may end its own subscription
            deliver(arguments);
        });
    return 0;
}

// Every state is told to all observers; each passes on the changes of the state that it was told last.
Subscription MessageBus::Connection::onConnectionChanged(std::function<void(bool)> action) {
    const auto known = std::make_shared<bool>(false);
    auto subscription = connectionChanged_.subscribe([known, action = std::move(action)](bool connected) {
        if (std::exchange(*known, connected) != connected) action(connected);
    });
    if (bus_) tellConnected(true);
    if (ensureConnected()) watch();
    return subscription;
}

void MessageBus::Connection::tellConnected(bool connected) {
    runLoop_.post([weak = weak_from_this(), connected] {
        if (const auto self = weak.lock()) self->connectionChanged_.notify(connected);
    });
}

bool MessageBus::Connection::ensureConnected() {
    if (bus_) return true;
    if (pauseEnds_ && runLoop_.now() < *pauseEnds_) return false;
    systemd_ = library_.functions();
    if (!systemd_) return false;
    bus_ = connectToBus(*systemd_, address_());
    if (!bus_) {
        pauseEnds_ = runLoop_.now() + kPauseAfterFailure;
        reconnectLater();
        return false;
    }
    connectTimeout_ = runLoop_.after(kLongestConnecting, [this] { disconnect(); });
    reconnect_.cancel();
    for (auto& [id, listener] : listeners_) listen(listener);
    tellConnected(true);
    return true;
}

void MessageBus::Connection::disconnect() {
    if (connectTimeout_.isActive()) pauseEnds_ = runLoop_.now() + kPauseAfterFailure;
    connectTimeout_.cancel();
    readable_.cancel();
    writable_.cancel();
    watchedDescriptor_ = -1;
    for (auto& [id, pending] : calls_) finish(pending, std::nullopt);
    for (auto& [id, listener] : listeners_) listener.slot.reset();
    bus_.reset();
    tellConnected(false);
    reconnectLater();
}

void MessageBus::Connection::reconnectLater() {
    if (reconnect_.isActive() || (listeners_.empty() && connectionChanged_.isEmpty())) return;
    reconnect_ = runLoop_.after(reconnectBackoff_.next(), [this] {
        reconnect_.cancel();
        pauseEnds_.reset();
        if (ensureConnected()) watch();
    });
}

void MessageBus::Connection::process() {
    if (!bus_) return;
    int processed = 1;
    for (int count = 0; processed > 0 && count < kMostMessagesATurn; ++count)
        processed = systemd_->sd_bus_process(bus_.get(), nullptr);
    if (processed < 0) {
        disconnect();
        return;
    }
    if (connectTimeout_.isActive() && systemd_->sd_bus_is_ready(bus_.get()) > 0) {
        connectTimeout_.cancel();
        reconnectBackoff_.reset();
    }
    if (processed > 0) processLater();
    watch();
}

void MessageBus::Connection::processLater() {
    runLoop_.post([weak = weak_from_this()] {
        if (const auto self = weak.lock()) self->process();
    });
}

// Waits for what the bus waits for now: the descriptor changes while it connects, the direction as it sends.
void MessageBus::Connection::watch() {
    const int descriptor = systemd_->sd_bus_get_fd(bus_.get());
    const int events = systemd_->sd_bus_get_events(bus_.get());
    if (descriptor < 0 || events < 0) {
        disconnect();
        return;
    }
    if (descriptor != watchedDescriptor_) {
        writable_.cancel();
        readable_ = descriptors_.watchReadable(descriptor, [this] { process(); });
        watchedDescriptor_ = descriptor;
    }
    if ((events & POLLOUT) == 0)
        writable_.cancel();
    else if (!writable_.isActive())
        writable_ = descriptors_.watchWritable(descriptor, [this] { process(); });
}

}  // namespace platform::freedesktop
