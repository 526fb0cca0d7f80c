#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

// Starts applications of the desktop.
class ApplicationLauncher {
  public:
    virtual ~ApplicationLauncher() = default;

    // Where the application with this bundle identifier is; absent when there is none. The answer means
    // something to `open` only.
    [[nodiscard]] virtual std::optional<std::string> urlForApplication(
        std::string_view bundleIdentifier) const = 0;
    // Opens the application without activating it. `completion` is called once on the main queue, with a text
    // when it failed; never when the launcher is gone by then.
    virtual void open(const std::string& url,
                      std::function<void(const std::optional<std::string>& error)> completion) = 0;
};

}  // namespace platform
