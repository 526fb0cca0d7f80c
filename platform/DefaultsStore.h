#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace platform {

struct DefaultsData {
    std::string bytes;
    bool operator==(const DefaultsData&) const = default;
};
using DefaultsDictionary = std::map<std::string, double>;
using DefaultsValue = std::variant<bool, std::int64_t, double, std::string, DefaultsData, DefaultsDictionary>;

// The user's settings by key, each value with its type. Every change is written before the call returns; a
// value that cannot be written stays in memory for this run.
class DefaultsStore {
  public:
    virtual ~DefaultsStore() = default;

    [[nodiscard]] virtual std::optional<DefaultsValue> value(std::string_view key) const = 0;
    virtual void set(std::string_view key, DefaultsValue value) = 0;
    virtual void remove(std::string_view key) = 0;
};

}  // namespace platform
