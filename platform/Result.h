#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace platform {

// Why an operation failed, in words for a log or an alert.
struct Error {
    std::string description;
    bool operator==(const Error&) const = default;
};

// The outcome of a write: nothing when it worked.
using MaybeError = std::optional<Error>;

// The value of an operation, or why there is none.
template <typename T>
class [[nodiscard]] Result {
  public:
    Result(T value) : content_(std::move(value)) {}
    Result(Error error) : content_(std::move(error)) {}

    explicit operator bool() const { return std::holds_alternative<T>(content_); }
    [[nodiscard]] const T& value() const { return std::get<T>(content_); }
    [[nodiscard]] T& value() { return std::get<T>(content_); }
    [[nodiscard]] const Error& error() const { return std::get<Error>(content_); }

  private:
    std::variant<T, Error> content_;
};

}  // namespace platform
