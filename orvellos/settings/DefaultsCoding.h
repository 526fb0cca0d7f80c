#pragma once

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "orvellos/base/RawValues.h"
#include "orvellos/settings/AnchoredPosition.h"
#include "platform/Files.h"

namespace orvellos {

// How a value is kept in the defaults store: booleans, integers and texts as they are, enumerations as their
// raw strings, a position as data that holds its JSON. `encode` is absent for what the store cannot keep,
// `decode` for what is of another kind.

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

}  // namespace orvellos
