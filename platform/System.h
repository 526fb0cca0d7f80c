#pragma once

#include <ctime>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Result.h"
#include "platform/RunLoop.h"

namespace platform {

// Facts about the system and this process that no run changes.
class SystemInformation {
  public:
    virtual ~SystemInformation() = default;

    // The operating system's name and version as a person would read them; never empty.
    [[nodiscard]] virtual std::string operatingSystemVersion() const = 0;
    // The program that is running; absent when the system does not tell.
    [[nodiscard]] virtual std::optional<std::filesystem::path> executablePath() const = 0;
};

// The system's log. Thread-safe; never fails toward the caller.
class SystemLog {
  public:
    virtual ~SystemLog() = default;

    // One entry of the program's own log, in a category ("general", "nav", "mc").
    virtual void write(std::string_view category, std::string_view message) = 0;
    // One process-level entry, which also goes to standard error with a line feed.
    virtual void writeGeneral(std::string_view message) = 0;
};

// The time of day in the local time zone, in a strftime format of numeric fields only, whose text no locale
// changes. Fractions of a second are cut off. Thread-safe.
[[nodiscard]] inline std::string localTimeText(WallTime time, const char* format) {
    const std::time_t whole =
        std::chrono::floor<std::chrono::seconds>(time).time_since_epoch() / std::chrono::seconds(1);
    std::tm fields{};
    localtime_r(&whole, &fields);
    char text[64];
    return {text, std::strftime(text, sizeof text, format, &fields)};
}

// What was found when updates were looked for.
struct UpdateAnswer {
    std::optional<std::string> newVersion;  // absent when there is none
    MaybeError error;
};

// The system's way of bringing newer versions of the application.
class UpdateService {
  public:
    virtual ~UpdateService() = default;

    // Makes ready to look for updates. `started` is called once, later on the main thread, with what stands
    // in the way. Nothing is shown to the user.
    virtual void startUpdater(std::function<void(const MaybeError& error)> started) = 0;
    // Looks for a newer version, once it has started. `answered` is called once, later on the main thread,
    // unless another check is asked for before. It installs nothing.
    virtual void checkForUpdates(std::function<void(const UpdateAnswer& answer)> answered) = 0;
};

// Opens pages of the system's settings and the like in the program that is meant for them.
class UrlOpener {
  public:
    virtual ~UrlOpener() = default;
    // Returns at once. Nothing happens when nothing on this desktop opens such a page.
    virtual void openUrl(std::string_view url) = 0;
};

}  // namespace platform
