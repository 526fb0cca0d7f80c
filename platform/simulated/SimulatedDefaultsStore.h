#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/Files.h"

namespace platform::simulated {

// A defaults store in memory that remembers which keys were written.
class SimulatedDefaultsStore final : public DefaultsStore {
  public:
    using Values = std::map<std::string, DefaultsValue, std::less<>>;

    SimulatedDefaultsStore() = default;
    explicit SimulatedDefaultsStore(Values stored) : values(std::move(stored)) {}

    [[nodiscard]] std::optional<DefaultsValue> value(std::string_view key) const override {
        const auto found = values.find(key);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    void set(std::string_view key, DefaultsValue value) override {
        values.insert_or_assign(std::string(key), std::move(value));
        writes.emplace_back(key);
    }
    void remove(std::string_view key) override {
        const auto found = values.find(key);
        if (found == values.end()) return;
        values.erase(found);
        writes.emplace_back(key);
    }

    Values values;
    std::vector<std::string> writes;  // the keys set, and those removed that were there, oldest first
};

}  // namespace platform::simulated
