#pragma once

#include <systemd/sd-bus.h>

#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "platform/freedesktop/bus/BusMessage.h"

namespace platform::freedesktop {

// The functions of libsystemd that this layer uses, by their own names.
#define PLATFORM_SYSTEMD_FUNCTIONS(X) \
    X(sd_bus_new)                     \
    X(sd_bus_set_address)             \
    X(sd_bus_set_bus_client)          \
    X(sd_bus_start)                   \
    X(sd_bus_close_unref)             \
    X(sd_bus_is_ready)                \
    X(sd_bus_get_fd)                  \
    X(sd_bus_get_events)              \
    X(sd_bus_process)                 \
    X(sd_bus_call_async)              \
    X(sd_bus_add_match_async)         \
    X(sd_bus_slot_unref)              \
    X(sd_bus_message_new_method_call) \
    X(sd_bus_message_set_auto_start)  \
    X(sd_bus_message_unref)           \
    X(sd_bus_message_append_basic)    \
    X(sd_bus_message_open_container)  \
    X(sd_bus_message_close_container) \
    X(sd_bus_message_is_method_error) \
    X(sd_bus_message_peek_type)       \
    X(sd_bus_message_read_basic)      \
    X(sd_bus_message_enter_container) \
    X(sd_bus_message_exit_container)  \
    X(sd_bus_message_skip)

struct SystemdFunctions {
// NOLINTNEXTLINE(bugprone-macro-parentheses): the name is declared
#define PLATFORM_DECLARE_FUNCTION(name) decltype(&::name) name = nullptr;
    PLATFORM_SYSTEMD_FUNCTIONS(PLATFORM_DECLARE_FUNCTION)
#undef PLATFORM_DECLARE_FUNCTION
};

// libsystemd, loaded when it is first needed: a program that never asks the bus does not pay for it, and one
// without the library still runs. May be used from any thread.
class SystemdLibrary {
  public:
    explicit SystemdLibrary(std::string name = "libsystemd.so.0") : name_(std::move(name)) {}

    // Null when the library, or one of the functions, is missing. Valid until the process ends.
    [[nodiscard]] const SystemdFunctions* functions();

  private:
    void load();

    std::string name_;
    std::once_flag loaded_;
    std::optional<SystemdFunctions> functions_;
};

struct BusDeleter {
    const SystemdFunctions* systemd = nullptr;
    void operator()(sd_bus* bus) const { systemd->sd_bus_close_unref(bus); }
    void operator()(sd_bus_message* message) const { systemd->sd_bus_message_unref(message); }
    void operator()(sd_bus_slot* slot) const { systemd->sd_bus_slot_unref(slot); }
};
using BusPointer = std::unique_ptr<sd_bus, BusDeleter>;
using BusMessagePointer = std::unique_ptr<sd_bus_message, BusDeleter>;
using BusSlotPointer = std::unique_ptr<sd_bus_slot, BusDeleter>;

// Begins to connect, without waiting; null when that fails at once.
[[nodiscard]] BusPointer connectToBus(const SystemdFunctions& systemd, const std::string& address);

// Queues the call, without waiting; null when the call is malformed or the bus is gone. `handler` is called
// while the bus is processed, unless the slot is destroyed first. The connection itself sets no limit of
// time.
[[nodiscard]] BusSlotPointer sendCall(const SystemdFunctions& systemd, sd_bus* bus, const BusCall& call,
                                      sd_bus_message_handler_t handler, void* userData);

// Asks for the signals, without waiting; null when that cannot be asked. `handler` is called for each while
// the bus is processed, unless the slot is destroyed first.
[[nodiscard]] BusSlotPointer addMatch(const SystemdFunctions& systemd, sd_bus* bus, const BusSignal& signal,
                                      sd_bus_message_handler_t handler, void* userData);

// The arguments of an answer or a signal; absent when it is an error, is malformed or is unreasonably large.
[[nodiscard]] std::optional<BusArguments> readArguments(const SystemdFunctions& systemd,
                                                        sd_bus_message* message);

}  // namespace platform::freedesktop
