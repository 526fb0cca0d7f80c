#include "tests/support/PrivateBus.h"

#include <fmt/format.h>
#include <poll.h>

#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace desktop_test {

namespace {

// One bus socket in the folder, open to the tests alone, and no services to start.
constexpr const char* kConfiguration =
    R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path={0}/bus</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

Process startDaemon(const TemporaryFolder& folder) {
    const auto file = folder.path() / "bus.conf";
    writeFile(file, fmt::format(kConfiguration, folder.path().string()));
    std::filesystem::remove(folder.path() / "bus");
    Process daemon(
        {"dbus-daemon", "--nofork", "--nopidfile", "--print-address", "--config-file=" + file.string()}, {});
    if (!waitUntil([&] { return !daemon.standardOutput().empty() || !daemon.isRunning(); }) ||
        daemon.standardOutput().empty())
        throw std::runtime_error("dbus-daemon does not start: " + daemon.standardError());
    return daemon;
}

void require(int result, const char* what) {
    if (result < 0) throw std::runtime_error(what);
}

}  // namespace

PrivateBus::PrivateBus()
    : address_("unix:path=" + folder_.path().string() + "/bus"), daemon_(startDaemon(folder_)) {}

void PrivateBus::restart() {
    daemon_.stop();
    daemon_ = startDaemon(folder_);
}

StandInService::StandInService(const std::string& address, const std::string& name, Answer answer)
    : answer_(std::move(answer)) {
    require(sd_bus_new(&bus_), "no bus object");
    require(sd_bus_set_address(bus_, address.c_str()), "bad bus address");
    require(sd_bus_set_bus_client(bus_, 1), "not a bus client");
    require(sd_bus_start(bus_), "no bus");
    require(sd_bus_add_filter(bus_, nullptr, &StandInService::handle, this), "no filter");
    require(sd_bus_request_name(bus_, name.c_str(), 0), "the name is taken");
    thread_ = std::jthread([this](const std::stop_token& stopped) { serve(stopped); });
}

StandInService::~StandInService() {
    thread_.request_stop();
    thread_.join();
    sd_bus_close_unref(bus_);
}

void StandInService::run(const std::function<void(sd_bus*)>& action) {
    const std::scoped_lock guard(busLock_);
    action(bus_);
    require(sd_bus_flush(bus_), "the bus does not take it");
}

std::vector<std::string> StandInService::calls() const {
    const std::scoped_lock guard(lock_);
    return calls_;
}

int StandInService::handle(sd_bus_message* call, void* self, sd_bus_error* /*error*/) {
    if (!sd_bus_message_is_method_call(call, nullptr, nullptr)) return 0;
    auto& service = *static_cast<StandInService*>(self);
    {
        const std::scoped_lock guard(service.lock_);
        service.calls_.push_back(fmt::format("{} {}.{}", sd_bus_message_get_path(call),
                                             sd_bus_message_get_interface(call),
                                             sd_bus_message_get_member(call)));
    }
    if (!service.answer_) return 1;
    sd_bus_message* reply = nullptr;
    if (sd_bus_message_new_method_return(call, &reply) < 0) return 1;
    const int filled = service.answer_(call, reply);
    if (filled < 0)
        sd_bus_reply_method_errorf(call, "org.example.Refused", "refused");
    else
        sd_bus_send(service.bus_, reply, nullptr);
    sd_bus_message_unref(reply);
    return 1;
}

void StandInService::serve(const std::stop_token& stopped) {
    constexpr int kMillisecondsToNoticeTheStop = 20;
    const auto process = [this] {
        const std::scoped_lock guard(busLock_);
        return sd_bus_process(bus_, nullptr);
    };
    pollfd readable{sd_bus_get_fd(bus_), POLLIN, 0};
    while (!stopped.stop_requested()) {
        const int processed = process();
        if (processed < 0) return;
        if (processed == 0) ::poll(&readable, 1, kMillisecondsToNoticeTheStop);
    }
}

}  // namespace desktop_test
