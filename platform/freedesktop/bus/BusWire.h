#pragma once

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "platform/freedesktop/bus/BusMessage.h"

namespace platform::freedesktop {

// The part of the bus's wire format (D-Bus Specification, "Message Protocol") that one question takes.

// The bytes of a method call; its arguments are texts.
[[nodiscard]] std::string wireCall(const BusCall& call, std::uint32_t serial);

// Reads values in the byte order of this machine. What is not there, or would reach beyond the end, is zero
// or empty, and makes `isWhole` false from then on.
class WireReader {
  public:
    explicit WireReader(std::string_view bytes) : bytes_(bytes) {}

    [[nodiscard]] bool isWhole() const { return isWhole_; }
    [[nodiscard]] std::size_t position() const { return at_; }
    void align(std::size_t size);
    [[nodiscard]] std::uint8_t byte();
    [[nodiscard]] std::uint32_t number() { return fixed<std::uint32_t>(); }
    // A number of its own size, which it is aligned to.
    template <typename T>
    [[nodiscard]] T fixed() {
        T value{};
        align(sizeof value);
        const auto bytes = take(sizeof value);
        if (!bytes.empty()) std::memcpy(&value, bytes.data(), sizeof value);
        return value;
    }
    [[nodiscard]] std::string_view text() { return counted(number()); }
    [[nodiscard]] std::string_view signature() { return counted(byte()); }
    [[nodiscard]] std::string_view take(std::size_t size);

  private:
    // That many bytes and the zero after them.
    [[nodiscard]] std::string_view counted(std::size_t size);

    std::string_view bytes_;
    std::size_t at_ = 0;
    bool isWhole_ = true;
};

// What answers a call.
struct WireAnswer {
    bool isError = false;
    std::string_view signature;
    std::string_view body;
};

// How long the message at the beginning of `bytes` is; absent when too little is there to tell, and zero when
// this is no message, or one of another byte order, or unreasonably large.
[[nodiscard]] std::optional<std::size_t> wireLength(std::string_view bytes);
// What a whole message says; absent when it is not the answer to the call of that serial.
[[nodiscard]] std::optional<WireAnswer> wireAnswer(std::string_view message, std::uint32_t serial);
// The values of those types; absent when the bytes do not hold them.
[[nodiscard]] std::optional<BusArguments> wireArguments(const WireAnswer& answer);

}  // namespace platform::freedesktop
