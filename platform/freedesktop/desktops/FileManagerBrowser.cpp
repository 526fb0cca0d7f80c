#include "platform/freedesktop/desktops/FileManagerBrowser.h"

#include <utility>
#include <vector>

#include "platform/freedesktop/files/Quoting.h"
#include "platform/freedesktop/processes/Spawn.h"

namespace platform::freedesktop {

namespace {

// Nobody waits for it, and a file manager may have to be started first.
constexpr Duration kLongestStart = std::chrono::seconds(10);

BusCall showItem(const std::filesystem::path& file) {
    return {.service = "org.freedesktop.FileManager1",
            .path = "/org/freedesktop/FileManager1",
            .interface = "org.freedesktop.FileManager1",
            .member = "ShowItems",
            .arguments = {std::vector<std::string>{fileUri(file)}, std::string()},
            .startsService = true,
            .timeout = kLongestStart};
}

}  // namespace

std::string fileUri(const std::filesystem::path& path) {
    return "file://" + percentEncoded(path.native());
}

FileManagerBrowser::FileManagerBrowser(MessageBus& bus, OpenFolder openFolder)
    : bus_(bus), openFolder_(std::move(openFolder)) {}

void FileManagerBrowser::reveal(const std::filesystem::path& file) {
    pending_ = bus_.call(showItem(file), [this, folder = file.parent_path()](const auto& answer) {
        if (!answer) openFolder_(folder);
    });
}

void FileManagerBrowser::openWithXdgOpen(const std::filesystem::path& folder) {
    const std::vector<std::string> arguments = {folder.native()};
    (void)startDetached("xdg-open", arguments);
}

}  // namespace platform::freedesktop
