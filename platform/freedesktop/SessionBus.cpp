#include "platform/freedesktop/SessionBus.h"

#include <poll.h>

#include <cstdint>
#include <map>
#include <utility>

namespace platform::freedesktop {

namespace {
constexpr Duration kLongestConnecting = std::chrono::seconds(1);
constexpr Duration kPauseAfterFailure = std::chrono::seconds(1);
constexpr int kMostMessagesATurn = 32;  // so that a flood of messages does not hold up the main loop
}  // namespace

class SessionBus::Connection : public std::enable_shared_from_this<Connection> {
  public:
    Connection(SystemdLibrary& library, DescriptorWatcher& descriptors, RunLoop& runLoop, Address address)
        : library_(library), descriptors_(descriptors), runLoop_(runLoop), address_(std::move(address)) {}

    Subscription call(const BusCall& call, Reply reply);

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

    static int handleReply(sd_bus_message* message, void* pendingCall, sd_bus_error* error);
    void send(PendingCall& pending, const BusCall& call);
    void finish(PendingCall& pending, std::optional<BusArguments> arguments);
    void deliver(std::uint64_t id);
    bool ensureConnected();
    void disconnect();
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
    std::uint64_t nextId_ = 0;
    int watchedDescriptor_ = -1;
    Subscription readable_;
    Subscription writable_;
    Timer connectTimeout_;
    std::optional<Instant> pauseEnds_;
};

SessionBus::SessionBus(SystemdLibrary& library, DescriptorWatcher& descriptors, RunLoop& runLoop,
                       Address address)
    : connection_(std::make_shared<Connection>(library, descriptors, runLoop, std::move(address))) {}

SessionBus::~SessionBus() = default;

Subscription SessionBus::call(const BusCall& call, Reply reply) {
    return connection_->call(call, std::move(reply));
}

Subscription SessionBus::Connection::call(const BusCall& call, Reply reply) {
    const auto id = nextId_++;
    auto& pending = calls_.emplace(id, PendingCall{*this, id, std::move(reply)}).first->second;
    send(pending, call);
    return Subscription([weak = weak_from_this(), id] {
        if (const auto self = weak.lock()) self->calls_.erase(id);
    });
}

void SessionBus::Connection::send(PendingCall& pending, const BusCall& call) {
    if (ensureConnected()) pending.slot = sendCall(*systemd_, bus_.get(), call, &handleReply, &pending);
    if (!pending.slot) {
        finish(pending, std::nullopt);
        return;
    }
    pending.timeout =
        runLoop_.after(call.timeout, [&pending] { pending.connection.finish(pending, std::nullopt); });
    watch();
}

int SessionBus::Connection::handleReply(sd_bus_message* message, void* pendingCall, sd_bus_error* /*error*/) {
    auto& pending = *static_cast<PendingCall*>(pendingCall);
    pending.connection.finish(pending, readArguments(*pending.connection.systemd_, message));
    return 1;
}

// Answers are delivered from the main queue, so that what they set off never runs inside the bus library.
void SessionBus::Connection::finish(PendingCall& pending, std::optional<BusArguments> arguments) {
    if (std::exchange(pending.finished, true)) return;
    pending.arguments = std::move(arguments);
    pending.slot.reset();
    runLoop_.post([weak = weak_from_this(), id = pending.id] {
        if (const auto self = weak.lock()) self->deliver(id);
    });
}

void SessionBus::Connection::deliver(std::uint64_t id) {
    const auto done = calls_.extract(id);
    if (done) done.mapped().reply(done.mapped().arguments);
}

bool SessionBus::Connection::ensureConnected() {
    if (bus_) return true;
    if (pauseEnds_ && runLoop_.now() < *pauseEnds_) return false;
    systemd_ = library_.functions();
    if (systemd_) bus_ = connectToBus(*systemd_, address_());
    if (!bus_) {
        pauseEnds_ = runLoop_.now() + kPauseAfterFailure;
        return false;
    }
    connectTimeout_ = runLoop_.after(kLongestConnecting, [this] { disconnect(); });
    return true;
}

void SessionBus::Connection::disconnect() {
    if (connectTimeout_.isActive()) pauseEnds_ = runLoop_.now() + kPauseAfterFailure;
    connectTimeout_.cancel();
    readable_.cancel();
    writable_.cancel();
    watchedDescriptor_ = -1;
    for (auto& [id, pending] : calls_) finish(pending, std::nullopt);
    bus_.reset();
}

void SessionBus::Connection::process() {
    if (!bus_) return;
    int processed = 1;
    for (int count = 0; processed > 0 && count < kMostMessagesATurn; ++count)
        processed = systemd_->sd_bus_process(bus_.get(), nullptr);
    if (processed < 0) {
        disconnect();
        return;
    }
    if (connectTimeout_.isActive() && systemd_->sd_bus_is_ready(bus_.get()) > 0) connectTimeout_.cancel();
    if (processed > 0) processLater();
    watch();
}

void SessionBus::Connection::processLater() {
    runLoop_.post([weak = weak_from_this()] {
        if (const auto self = weak.lock()) self->process();
    });
}

// Waits for what the bus waits for now: the descriptor changes while it connects, the direction as it sends.
void SessionBus::Connection::watch() {
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
