#pragma once

#include <systemd/sd-bus.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace desktop_test {

// A connection of the test's own to a message bus. Every call waits for its answer, five seconds at most; a
// failed one gives an absent or false answer.
class SessionBus {
  public:
    // Throws std::runtime_error when there is no bus at the address.
    explicit SessionBus(const std::string& address);

    [[nodiscard]] bool hasOwner(const std::string& name);
    // Calls a method that takes nothing or one string, ignoring what it returns.
    bool call(const std::string& destination, const std::string& path, const std::string& interface,
              const std::string& method, const std::optional<std::string>& argument = std::nullopt);
    // A property of type "as".
    [[nodiscard]] std::optional<std::vector<std::string>> stringList(const std::string& destination,
                                                                     const std::string& path,
                                                                     const std::string& interface,
                                                                     const std::string& property);
    [[nodiscard]] sd_bus* connection() const { return bus_.get(); }

  private:
    struct Close {
        void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }
    };
    std::unique_ptr<sd_bus, Close> bus_;
};

}  // namespace desktop_test
