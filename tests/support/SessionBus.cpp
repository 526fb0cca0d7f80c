#include "tests/support/SessionBus.h"

#include <cstdlib>
#include <stdexcept>

namespace desktop_test {

namespace {
constexpr std::uint64_t kAnswerMicroseconds = 5'000'000;
}

SessionBus::SessionBus(const std::string& address) {
    sd_bus* bus = nullptr;
    sd_bus_new(&bus);
    bus_.reset(bus);
    if (sd_bus_set_address(bus, address.c_str()) < 0 || sd_bus_set_bus_client(bus, 1) < 0 ||
        sd_bus_start(bus) < 0) {
        throw std::runtime_error("cannot reach the message bus " + address);
    }
    sd_bus_set_method_call_timeout(bus, kAnswerMicroseconds);
}

bool SessionBus::hasOwner(const std::string& name) {
    return sd_bus_get_name_creds(bus_.get(), name.c_str(), 0, nullptr) >= 0;
}

bool SessionBus::call(const std::string& destination, const std::string& path, const std::string& interface,
                      const std::string& method, const std::optional<std::string>& argument) {
    const char* types = argument ? "s" : "";
    return sd_bus_call_method(bus_.get(), destination.c_str(), path.c_str(), interface.c_str(),
                              method.c_str(), nullptr, nullptr, types,
                              argument ? argument->c_str() : nullptr) >= 0;
}

std::optional<std::vector<std::string>> SessionBus::stringList(const std::string& destination,
                                                               const std::string& path,
                                                               const std::string& interface,
                                                               const std::string& property) {
    char** strings = nullptr;
    if (sd_bus_get_property_strv(bus_.get(), destination.c_str(), path.c_str(), interface.c_str(),
                                 property.c_str(), nullptr, &strings) < 0) {
        return std::nullopt;
    }
    std::vector<std::string> result;
    for (char** string = strings; string != nullptr && *string != nullptr; ++string) {
        result.emplace_back(*string);
        std::free(*string);
    }
    std::free(strings);
    return result;
}

}  // namespace desktop_test
