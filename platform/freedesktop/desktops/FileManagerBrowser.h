#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "platform/Files.h"
#include "platform/Observers.h"
#include "platform/freedesktop/bus/MessageBus.h"

namespace platform::freedesktop {

// The file manager that the session bus knows (org.freedesktop.FileManager1), which is started if need be;
// where there is none, the desktop's program for folders (xdg-open), which selects nothing.
class FileManagerBrowser final : public FileBrowser {
  public:
    using OpenFolder = std::function<void(const std::filesystem::path& folder)>;

    explicit FileManagerBrowser(MessageBus& bus, OpenFolder openFolder = openWithXdgOpen);

    void reveal(const std::filesystem::path& file) override;

    static void openWithXdgOpen(const std::filesystem::path& folder);

  private:
    MessageBus& bus_;
    OpenFolder openFolder_;
    Subscription pending_;
};

// The file URI (RFC 8089) of an absolute path, whatever bytes it holds.
[[nodiscard]] std::string fileUri(const std::filesystem::path& path);

}  // namespace platform::freedesktop
