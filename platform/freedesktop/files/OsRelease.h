#pragma once

#include <string>
#include <string_view>

#include "platform/Files.h"
#include "platform/System.h"

namespace platform::freedesktop {

// The value of a field in the text of an os-release file (os-release(5)), without its quotes; empty when the
// field is missing. Fields are assignments as a shell would read them.
[[nodiscard]] std::string osReleaseField(std::string_view text, std::string_view field);

// The distribution's name and version with the kernel's: "Debian GNU/Linux 12 (bookworm), Linux 6.1.0".
class OsRelease final : public SystemInformation {
  public:
    explicit OsRelease(const FileSystem& files) : files_(files) {}

    [[nodiscard]] std::string operatingSystemVersion() const override;
    // A link that the kernel follows to the running program even when its file has been replaced since.
    [[nodiscard]] std::optional<std::filesystem::path> executablePath() const override;

  private:
    const FileSystem& files_;
};

}  // namespace platform::freedesktop
