#include "platform/freedesktop/bus/SystemdLibrary.h"

#include <dlfcn.h>

#include <cstdint>
#include <utility>
#include <variant>
#include <vector>

namespace platform::freedesktop {

namespace {

template <typename Function>
bool resolve(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    return function != nullptr;
}

constexpr int kMostValues = 100000;

// Appends arguments to a message under construction; `ok` turns false at the first that does not fit.
class Writer {
  public:
    Writer(const SystemdFunctions& systemd, sd_bus_message* message) : systemd_(systemd), message_(message) {}
    bool ok = true;

    void operator()(bool value) {
        const int number = value;
        append('b', &number);
    }
    void operator()(std::int32_t value) { append('i', &value); }
    void operator()(std::uint32_t value) { append('u', &value); }
    void operator()(std::uint64_t value) { append('t', &value); }
    void operator()(const std::string& value) { append('s', value.c_str()); }
    void operator()(const std::vector<std::string>& values) {
        check(systemd_.sd_bus_message_open_container(message_, 'a', "s"));
        for (const auto& value : values) (*this)(value);
        check(systemd_.sd_bus_message_close_container(message_));
    }
    void operator()(const BusVariant& variant) {
        static constexpr const char* kTypes[] = {"b", "i", "u", "s"};
        check(systemd_.sd_bus_message_open_container(message_, 'v', kTypes[variant.value.index()]));
        std::visit(*this, variant.value);
        check(systemd_.sd_bus_message_close_container(message_));
    }

  private:
    void check(int result) { ok = ok && result >= 0; }
    void append(char type, const void* value) {
        if (ok) check(systemd_.sd_bus_message_append_basic(message_, type, value));
    }

    const SystemdFunctions& systemd_;
    sd_bus_message* message_;
};

// Turns a message's values into JSON. An absent value ends the reading: the rest cannot be trusted.
class Reader {
  public:
    Reader(const SystemdFunctions& systemd, sd_bus_message* message) : systemd_(systemd), message_(message) {}

    // The values up to the end of the message or of the container.
    std::optional<nlohmann::json> values() {
        auto list = nlohmann::json::array();
        char type = 0;
        const char* contents = nullptr;
        int more = 0;
        while ((more = systemd_.sd_bus_message_peek_type(message_, &type, &contents)) > 0) {
            if (++count_ > kMostValues) return std::nullopt;
            auto element = value(type, contents);
            if (!element) return std::nullopt;
            list.push_back(std::move(*element));
        }
        if (more < 0) return std::nullopt;
        return list;
    }

  private:
    std::optional<nlohmann::json> value(char type, const char* contents) {
        switch (type) {
            case 's':
            case 'o':
            case 'g':
                return basic<const char*>(type);
            case 'b':
                return boolean();
            case 'y':
                return basic<std::uint8_t>(type);
            case 'n':
                return basic<std::int16_t>(type);
            case 'q':
                return basic<std::uint16_t>(type);
            case 'i':
                return basic<std::int32_t>(type);
            case 'u':
                return basic<std::uint32_t>(type);
            case 'x':
                return basic<std::int64_t>(type);
            case 't':
                return basic<std::uint64_t>(type);
            case 'd':
                return basic<double>(type);
            case 'h':
                return descriptor();
            default:
                return container(type, contents);
        }
    }

    template <typename T>
    std::optional<nlohmann::json> basic(char type) {
        T read{};
        if (systemd_.sd_bus_message_read_basic(message_, type, &read) < 0) return std::nullopt;
        return nlohmann::json(read);
    }

    std::optional<nlohmann::json> boolean() {
        int read = 0;
        if (systemd_.sd_bus_message_read_basic(message_, 'b', &read) < 0) return std::nullopt;
        return nlohmann::json(read != 0);
    }

    std::optional<nlohmann::json> descriptor() {
        if (systemd_.sd_bus_message_skip(message_, "h") < 0) return std::nullopt;
        return nlohmann::json(nullptr);
    }

    std::optional<nlohmann::json> container(char type, const char* contents) {
        if (systemd_.sd_bus_message_enter_container(message_, type, contents) < 0) return std::nullopt;
        auto inner = values();
        if (!inner || systemd_.sd_bus_message_exit_container(message_) < 0) return std::nullopt;
        if (type == 'v' && !inner->empty()) return std::move(inner->front());
        return inner;
    }

    const SystemdFunctions& systemd_;
    sd_bus_message* message_;
    int count_ = 0;
};

// The match rule (D-Bus Specification, "Match Rules") for the signals.
std::string matchRule(const BusSignal& signal) {
    std::string rule = "type='signal'";
    const auto add = [&](const char* key, const std::string& value) {
        if (!value.empty()) rule.append(",").append(key).append("='").append(value).append("'");
    };
    add("sender", signal.sender);
    add("path", signal.path);
    add("interface", signal.interface);
    add("member", signal.member);
    add("arg0", signal.firstArgument);
    return rule;
}

// The bus library closes a connection that may not add a match unless somebody takes note.
int ignoreOutcome(sd_bus_message* /*message*/, void* /*userData*/, sd_bus_error* /*error*/) {
    return 1;
}

}  // namespace

void SystemdLibrary::load() {
    void* library = dlopen(name_.c_str(), RTLD_LAZY | RTLD_LOCAL);
    if (!library) return;
    SystemdFunctions found;
    bool complete = true;
#define PLATFORM_RESOLVE_FUNCTION(name) complete = resolve(library, #name, found.name) && complete;
    PLATFORM_SYSTEMD_FUNCTIONS(PLATFORM_RESOLVE_FUNCTION)
#undef PLATFORM_RESOLVE_FUNCTION
    if (complete) functions_ = found;
}

const SystemdFunctions* SystemdLibrary::functions() {
    std::call_once(loaded_, [this] { load(); });
    return functions_ ? &*functions_ : nullptr;
}

BusPointer connectToBus(const SystemdFunctions& systemd, const std::string& address) {
    if (address.empty()) return nullptr;
    sd_bus* made = nullptr;
    if (systemd.sd_bus_new(&made) < 0) return nullptr;
    BusPointer bus(made, {&systemd});
    if (systemd.sd_bus_set_address(made, address.c_str()) < 0) return nullptr;
    if (systemd.sd_bus_set_bus_client(made, 1) < 0) return nullptr;
    if (systemd.sd_bus_start(made) < 0) return nullptr;
    return bus;
}

BusSlotPointer sendCall(const SystemdFunctions& systemd, sd_bus* bus, const BusCall& call,
                        sd_bus_message_handler_t handler, void* userData) {
    sd_bus_message* made = nullptr;
    if (systemd.sd_bus_message_new_method_call(bus, &made, call.service.c_str(), call.path.c_str(),
                                               call.interface.c_str(), call.member.c_str()) < 0)
        return nullptr;
    const BusMessagePointer message(made, {&systemd});
    if (systemd.sd_bus_message_set_auto_start(made, call.startsService) < 0) return nullptr;
    Writer writer(systemd, made);
    for (const auto& argument : call.arguments) std::visit(writer, argument);
    if (!writer.ok) return nullptr;
    sd_bus_slot* slot = nullptr;
    if (systemd.sd_bus_call_async(bus, &slot, made, handler, userData, UINT64_MAX) < 0) return nullptr;
    return BusSlotPointer(slot, {&systemd});
}

BusSlotPointer addMatch(const SystemdFunctions& systemd, sd_bus* bus, const BusSignal& signal,
                        sd_bus_message_handler_t handler, void* userData) {
    sd_bus_slot* slot = nullptr;
    const auto rule = matchRule(signal);
    if (systemd.sd_bus_add_match_async(bus, &slot, rule.c_str(), handler, &ignoreOutcome, userData) < 0)
        return nullptr;
    return BusSlotPointer(slot, {&systemd});
}

std::optional<BusArguments> readArguments(const SystemdFunctions& systemd, sd_bus_message* message) {
    if (systemd.sd_bus_message_is_method_error(message, nullptr)) return std::nullopt;
    return Reader(systemd, message).values();
}

}  // namespace platform::freedesktop
