#pragma once

#include <concepts>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "orvellos/base/Describe.h"
#include "orvellos/base/Published.h"
#include "orvellos/settings/AnchoredPosition.h"
#include "platform/Files.h"

namespace orvellos {

// How a value is kept in the defaults store: booleans, integers and texts as they are, enumerations as their
// raw strings, a position as data that holds its JSON. `encode` is absent for a value that the store cannot
// keep, `decode` for one of another kind.

template <typename T>
concept StoredAsItself =
    std::same_as<T, bool> || std::same_as<T, std::int64_t> || std::same_as<T, std::string>;
template <typename T>
concept StoredAsRawString = requires {
    RawValues<T>::cases;
};

template <typename T>
struct DefaultsCoding;

template <StoredAsItself T>
struct DefaultsCoding<T> {
    static std::optional<platform::DefaultsValue> encode(const T& value) { return value; }
    static std::optional<T> decode(const platform::DefaultsValue& stored) {
        const auto* value = std::get_if<T>(&stored);
        return value ? std::optional(*value) : std::nullopt;
    }
};

template <StoredAsRawString T>
struct DefaultsCoding<T> {
    static std::optional<platform::DefaultsValue> encode(T value) { return std::string(rawValue(value)); }
    static std::optional<T> decode(const platform::DefaultsValue& stored) {
        const auto* raw = std::get_if<std::string>(&stored);
        return raw ? fromRawValue<T>(*raw) : std::nullopt;
    }
};

template <>
struct DefaultsCoding<AnchoredPosition> {
    static std::optional<platform::DefaultsValue> encode(const AnchoredPosition& position);
    static std::optional<AnchoredPosition> decode(const platform::DefaultsValue& stored);
};

template <typename T>
struct DefaultsCoding<std::optional<T>> {
    static std::optional<platform::DefaultsValue> encode(const std::optional<T>& value) {
        return value ? DefaultsCoding<T>::encode(*value) : std::nullopt;
    }
};

// The value under the key; absent when there is none of this kind.
template <typename T>
[[nodiscard]] std::optional<T> storedValue(const platform::DefaultsStore& defaults, std::string_view key) {
    const auto stored = defaults.value(key);
    return stored ? DefaultsCoding<T>::decode(*stored) : std::nullopt;
}

// Writes the value under the key, or removes the key when there is nothing to keep.
template <typename T>
void storeValue(platform::DefaultsStore& defaults, std::string_view key, const T& value) {
    if (auto encoded = DefaultsCoding<T>::encode(value))
        defaults.set(key, std::move(*encoded));
    else
        defaults.remove(key);
}

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
