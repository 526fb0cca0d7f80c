#pragma once

#include <functional>
#include <string_view>
#include <utility>

#include "orvellos/base/Published.h"
#include "orvellos/settings/DefaultsCoding.h"
#include "platform/Files.h"

namespace orvellos {

// One field of the settings. An assignment tells the field's subscribers, then the observers of the object it
// belongs to, and then writes the value to the defaults store, changed or not.
template <typename T>
class Setting {
  public:
    // `key` lives as long as the setting. `initial` is not written.
    Setting(platform::DefaultsStore& defaults, const Observers<>& object, std::string_view key, T initial)
        : defaults_(defaults), object_(object), key_(key), value_(std::move(initial)) {}
    Setting(const Setting&) = delete;
    Setting& operator=(const Setting&) = delete;

    [[nodiscard]] const T& get() const { return value_.get(); }
    void set(T value) {
        value_.set(std::move(value));
        object_.notify();
        storeValue(defaults_, key_, value_.get());  // what a subscriber has assigned meanwhile counts
    }
    // Delivers the current value at once and then every value assigned, on the assigning thread.
    platform::Subscription subscribe(std::function<void(const T&)> callback) {
        return value_.subscribe(std::move(callback));
    }

  private:
    platform::DefaultsStore& defaults_;
    const Observers<>& object_;
    std::string_view key_;
    Published<T> value_;
};

}  // namespace orvellos
