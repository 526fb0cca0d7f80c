#pragma once

#include <systemd/sd-bus.h>

#include <mutex>
#include <optional>
#include <string>

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
    X(sd_bus_wait)                    \
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

}  // namespace platform::freedesktop
